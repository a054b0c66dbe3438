// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include <sigildesk/log.h>

#include "foundation/environment.h"
#include "foundation/file.h"
#include "foundation/local_time.h"

#include <cstdarg>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t longestMessage = 4095;

std::string_view afterLast(std::string_view text, char mark)
{
    // npos + 1 is 0: without the mark the whole text stays.
    return text.substr(text.rfind(mark) + 1);
}

std::string_view fileName(std::string_view path)
{
    return afterLast(path, path.find('/') != std::string_view::npos ? '/' : '\\');
}

std::string clockText(const timespec& now)
{
    const std::string milliseconds = std::to_string(1000 + now.tv_nsec / 1000000 % 1000).substr(1);
    return sigil::formatTime(sigil::localTime(now.tv_sec), "%H:%M:%S.") + milliseconds;
}

std::string traceRecord(const char* level, const char* file, long line, const char* func, const char* message)
{
    std::string record = "[tw4np][" + clockText(sigil::environment().now()) + "][" + level + "][";
    record += fileName(file);
    record += ':' + std::to_string(static_cast<int>(line)) + "][";
    record += afterLast(func, ':');
    return record + "] " + message + '\n';
}

} // namespace

void LOG_LEVEL(const char* level, const char* file, long line, const char* func, const char* fmt, ...)
{
    if (!level || !file || !func)
        return;

    va_list arguments;
    va_start(arguments, fmt);
    sigil::logQuietly([&] {
        char message[longestMessage + 1] = "";
        if (fmt)
            // Longer ones are cut. The list was started above.
            static_cast<void>(
                std::vsnprintf(message, sizeof message, fmt, arguments)); // NOLINT(clang-analyzer-valist.*)
        const std::string record = traceRecord(level, file, line, func, message);
        // The folder is open to all users of the machine: a link planted there must not lead the trace elsewhere.
        const std::string path = sigil::environment().traceFolder + sigil::currentTimeText("/tarnwick_%Y%m%d.log");
        sigil::appendToLog(path, sigil::LogOwner::userAlone, record);
        return 0;
    });
    va_end(arguments);
}
