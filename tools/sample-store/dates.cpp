// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/dates.h"

#include <stdexcept>

namespace sample {

namespace {

std::tm fieldsOf(std::time_t time)
{
    std::tm fields{};
    gmtime_r(&time, &fields);
    return fields;
}

std::string dayText(std::time_t time)
{
    const std::tm fields = fieldsOf(time);
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d", &fields));
}

} // namespace

std::time_t parseDay(const std::string& text)
{
    std::tm fields{};
    const char* end = strptime(text.c_str(), "%Y-%m-%d", &fields);
    const std::time_t day = timegm(&fields);
    // A day that the calendar lacks, such as 30 February, comes back as another one.
    const bool exact = end && *end == '\0' && dayText(day) == text;
    if (!exact || fields.tm_year < 70 || fields.tm_year > 137)
        throw std::invalid_argument("not a day YYYY-MM-DD: " + text);
    return day;
}

bool isDay(const std::string& text)
{
    try {
        parseDay(text);
        return true;
    } catch (const std::invalid_argument&) {
        return false;
    }
}

std::string dateText(std::time_t time)
{
    const std::tm fields = fieldsOf(time);
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &fields));
}

} // namespace sample
