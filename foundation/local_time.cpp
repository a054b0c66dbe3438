// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/local_time.h"

#include "foundation/environment.h"

namespace sigil {

tm localTime(std::time_t seconds)
{
    noticeZone(); // localtime_r need not
    return localTimeInKnownZone(seconds);
}

void noticeZone() { tzset(); }

tm localTimeInKnownZone(std::time_t seconds)
{
    tm local{};
    if (!localtime_r(&seconds, &local)) {
        const std::time_t epoch = 0;
        localtime_r(&epoch, &local);
    }
    return local;
}

std::time_t currentTime() { return environment().now().tv_sec; }

// The formats are checked where the functions are called.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

std::string formatTime(const tm& time, const char* format)
{
    char text[128];
    return {text, std::strftime(text, sizeof text, format, &time)};
}

std::string currentTimeText(const char* format) { return formatTime(localTime(currentTime()), format); }

#pragma GCC diagnostic pop

} // namespace sigil
