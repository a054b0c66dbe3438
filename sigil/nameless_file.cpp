// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "sigil/nameless_file.h"

#include "foundation/file.h"
#include "jobs/failure.h"
#include "jobs/read_file.h"

#include <cstdlib>
#include <filesystem>
#include <sys/mman.h>

namespace host {

namespace {

constexpr Words cannotWrite{"cannot write {}: {}", "{} 파일을 쓸 수 없습니다: {}"};

[[noreturn]] void fail(const std::string& path)
{
    throw Failure(failed, "file_not_written", cannotWrite, {path, reason(errno)});
}

} // namespace

NamelessFile::NamelessFile(std::string_view content)
    : m_descriptor(memfd_create("sigil", MFD_CLOEXEC))
{
    if (m_descriptor < 0)
        fail("memory");
    while (!content.empty()) {
        const ssize_t count = ::write(m_descriptor, content.data(), content.size());
        if (count < 0 && errno != EINTR) {
            const int error = errno;
            ::close(m_descriptor);
            errno = error;
            fail("memory");
        }
        content.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

NamelessFile::~NamelessFile() { ::close(m_descriptor); }

std::string NamelessFile::path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

WorkFolder::WorkFolder()
    : m_path((std::filesystem::temp_directory_path() / "sigil-XXXXXX").string())
{
    if (!mkdtemp(m_path.data()))
        fail(m_path);
}

WorkFolder::~WorkFolder()
{
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
}

} // namespace host
