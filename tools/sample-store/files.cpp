// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/files.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace sample {

namespace {

class Descriptor {
public:
    explicit Descriptor(const char* file)
        : m_descriptor(open(file, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR))
    {
    }
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool write(toolkit::View content)
    {
        while (m_descriptor >= 0 && !content.empty()) {
            const ssize_t written = ::write(m_descriptor, content.data(), content.size());
            if (written < 0)
                return false;
            content = content.subspan(static_cast<std::size_t>(written));
        }
        return m_descriptor >= 0;
    }

private:
    int m_descriptor;
};

} // namespace

void writeNewFile(const std::filesystem::path& file, toolkit::View content)
{
    if (!Descriptor(file.c_str()).write(content))
        throw std::system_error(errno, std::generic_category(), "cannot write " + file.string());
}

} // namespace sample
