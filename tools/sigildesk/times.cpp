// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "times.h"

#include "jobs/failure.h"

#include <string>

namespace host {

namespace {

constexpr Words noTime{"{} is not a time such as 2026-01-31 or 2026-01-31T12:00:00+09:00",
    "{}은(는) 2026-01-31이나 2026-01-31T12:00:00+09:00 같은 시각이 아닙니다"};

/** Whether the whole text is of this form. */
bool read(const std::string& text, const char* format, tm& fields)
{
    fields = {};
    fields.tm_mday = 1;
    const char* rest = strptime(text.c_str(), format, &fields);
    return rest && !*rest;
}

} // namespace

std::time_t timeArgument(const Session& session, const char* option)
{
    if (!session.arguments.has(option))
        return std::time(nullptr);
    const std::string text = session.arguments.text(option);
    tm fields{};
    for (const char* format : {"%Y-%m-%dT%H:%M:%S%z", "%Y-%m-%d %H:%M:%S%z"})
        if (read(text, format, fields)) {
            const long shift = fields.tm_gmtoff; // timegm forgets it
            return timegm(&fields) - shift;
        }
    for (const char* format : {"%Y-%m-%dT%H:%M:%S", "%Y-%m-%d %H:%M:%S", "%Y-%m-%d"})
        if (read(text, format, fields)) {
            fields.tm_isdst = -1;
            return std::mktime(&fields);
        }
    throw Failure(wrongUse, "wrong_use", noTime, {text});
}

} // namespace host
