// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "sigil/nameless_file.h"

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
    : m_file(memfd_create("sigil", MFD_CLOEXEC))
{
    if (!m_file.isOpen() || sigil::writeAll(m_file, content) != content.size())
        fail("memory");
}

std::string NamelessFile::path() const { return "/proc/self/fd/" + std::to_string(m_file.get()); }

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
