// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/read_file.h"

#include "foundation/file.h"
#include "jobs/failure.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace host {

namespace {

constexpr Words cannotRead{"cannot read {}: {}", "{} 파일을 읽을 수 없습니다: {}"};
constexpr Words notThere{"{} does not exist", "{}이(가) 없습니다"};
constexpr Words tooLarge{"{} has more than {} bytes, and is needed in one piece",
    "{} 파일이 {}바이트보다 큽니다. 한 번에 처리해야 하는 작업입니다"};
constexpr Words emptyContent{"{} is empty, and empty content cannot be taken here",
    "{} 파일이 비어 있습니다. 이 작업은 빈 내용을 받지 않습니다"};

template <class Buffer>
Buffer contentOf(const std::string& path)
{
    constexpr std::size_t most = 0x7FFFFFFE; // what the façade's lengths can tell
    mustExist(path);
    const sigil::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen())
        throw Failure(failed, "file_not_read", cannotRead, {path, reason(errno)});
    struct stat status { };
    static_cast<void>(fstat(file.get(), &status)); // of what is open; without an answer it would be no regular file
    if (!S_ISREG(status.st_mode))
        throw Failure(
            failed, "file_not_read", cannotRead, {path, reason(S_ISDIR(status.st_mode) ? EISDIR : EINVAL)});
    if (static_cast<std::size_t>(status.st_size) > most)
        throw Failure(failed, "file_too_large", tooLarge, {path, std::to_string(most)});
    Buffer content;
    content.reserve(static_cast<std::size_t>(status.st_size) + 65536 + 1); // no reallocation leaves a copy behind
    if (const int error = readAll(file.get(), content, most); error != 0)
        throw Failure(failed, "file_not_read", cannotRead, {path, reason(error)});
    return content;
}

} // namespace

void mustExist(const std::string& path)
{
    struct stat status { };
    if (stat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR))
        throw Failure(failed, "not_found", notThere, {path});
}

std::string readFile(const std::string& path) { return contentOf<std::string>(path); }

std::string readContent(const std::string& path)
{
    std::string content = readFile(path);
    mustHoldSomething(content, path);
    return content;
}

void mustHoldSomething(const std::string& content, const std::string& path)
{
    if (content.empty())
        throw Failure(failed, "empty_file", emptyContent, {path});
}

std::string reason(int error) { return std::generic_category().message(error); }

sigil::SecretBytes readSecretFile(const std::string& path) { return contentOf<sigil::SecretBytes>(path); }

} // namespace host
