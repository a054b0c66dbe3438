// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: dates and periods of validity.

#include <sigildesk/codes.h>
#include <sigildesk/util.h>

#include "foundation/ascii.h"
#include "foundation/families.h"
#include "foundation/local_time.h"
#include "foundation/text_field.h"
#include "foundation/validity.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

namespace {

constexpr std::size_t longestTimeText = 29;
constexpr int fieldCount = 6;
constexpr int notATime = 6;

/** Splits a time text into its numbers. @return 0; the number (from 1) of the first missing field */
int splitTime(std::string_view text, int (&fields)[fieldCount])
{
    constexpr std::string_view separators = "-: ";
    for (int i = 0; i < fieldCount; ++i) {
        text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
        const std::string field(text.substr(0, text.find_first_of(separators)));
        if (field.empty())
            return i + 1;
        fields[i] = sigil::toInt(field.c_str());
        text.remove_prefix(field.size());
    }
    return 0;
}

int clamped(long value) { return static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX)); }

/** The local standard time as seconds since the epoch; notATime when there is none. */
std::time_t toSeconds(tm local)
{
    local.tm_wday = -1;
    const std::time_t seconds = mktime(&local);
    // -1 alone may be the second before the epoch; only a failure leaves the week day as it was.
    return seconds == -1 && local.tm_wday == -1 ? notATime : seconds;
}

/** The same in the zone that the process last noticed, while mktime looks for another each time: outside of summer time,
 *  and of the hours around a change of the zone, its offset tells the time. */
std::time_t toSecondsInKnownZone(const tm& local)
{
    tm fields = local;
    const std::time_t asUtc = timegm(&fields);
    const long offset = sigil::localTimeInKnownZone(asUtc).tm_gmtoff;
    const tm found = sigil::localTimeInKnownZone(asUtc - offset);
    const bool same = found.tm_gmtoff == offset && found.tm_isdst == 0 && found.tm_year == fields.tm_year;
    return same ? asUtc - offset : toSeconds(local);
}

/** CUtil::str2time in the zone that the process last noticed. */
std::time_t readTime(const char* text)
{
    const std::string_view whole = sigil::textOf(text);
    if (whole.empty() || whole.size() > longestTimeText)
        return SIGIL_BAD_ARGUMENT;
    int fields[fieldCount];
    if (const int missing = splitTime(whole, fields))
        return missing;

    tm local{};
    local.tm_year = clamped(fields[0] - 1900L);
    local.tm_mon = clamped(fields[1] - 1L);
    local.tm_mday = fields[2];
    local.tm_hour = fields[3];
    local.tm_min = fields[4];
    local.tm_sec = fields[5];
    local.tm_isdst = 0;
    return toSecondsInKnownZone(local);
}

constexpr long leapYearsUpTo(long year) { return year / 4 - year / 100 + year / 400; }

constexpr bool isLeapYear(long year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysOf(int month)
{
    switch (month) {
    case 2:
        return 28;
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    default:
        return 31;
    }
}

/** Days of a year, leap years left aside, before the first of @p month. */
long daysBefore(int month)
{
    long days = 0;
    for (int m = 1; m < std::min(month, 13); ++m)
        days += daysOf(m);
    return days + 31 * std::max(month - 13L, 0L);
}

int leapDays(const tm& now, Calc target)
{
    const long from = now.tm_year + 1900L;
    const long to = target.year;
    if (to < from)
        return 0;
    long days = leapYearsUpTo(to) - leapYearsUpTo(from - 1);
    if (isLeapYear(from) && now.tm_mon > 1) // this year's 29 February is over
        --days;
    if (isLeapYear(to) && target.month <= 2) // that of the target year has not come
        --days;
    return clamped(days);
}

int daysUntil(Calc target, const tm& now)
{
    const long years = target.year - (now.tm_year + 1900L);
    if (years < 0)
        return 0;
    const long days =
        years * 365 + daysBefore(target.month) - daysBefore(now.tm_mon + 1) + target.day - now.tm_mday;
    return clamped(days + leapDays(now, target));
}

SigilValidity judge(std::time_t notAfter, tm notAfterDate, std::time_t now, tm warningEnd, int warning)
{
    if (notAfter < now)
        return SIGIL_VALIDITY_EXPIRED;
    warningEnd.tm_mday += warning;
    // Two readings of the clock on the wall, so that the days count the same across a change of summer time.
    return timegm(&notAfterDate) > timegm(&warningEnd) ? SIGIL_VALIDITY_VALID : SIGIL_VALIDITY_EXPIRES_SOON;
}

void copyDate(const tm& date, int size, char* out)
{
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d", &date);
    sigil::limitedCopy(out, size, {text, length});
}

} // namespace

time_t CUtil::str2time(char* text)
{
    sigil::noticeZone();
    return readTime(text);
}

int CUtil::GetCurrentTimeDay(char* out)
{
    if (!out)
        return -1;
    // Year and month only; the rest of the text is deliberately left out, and so is a terminator.
    sigil::currentTimeText("%Y_%m_%d_%H_%M_%S").copy(out, std::strlen("2024_03_"));
    return 0;
}

int CUtil::day(int month) { return daysOf(month); }

int CUtil::yun(tm* now, Calc target) { return now ? leapDays(*now, target) : 0; }

int CUtil::CalcDay(int year, int month, int day)
{
    return daysUntil({year, month, day}, sigil::localTime(sigil::currentTime()));
}

int CUtil::GetValidity(bool bOtherKeySize, int certKind, char* policyText, char* notBefore, char* notAfter,
    int fromSize, char* fromOut, int toSize, char* toOut, int* remainDays, int* state)
{
    sigil::noticeZone();
    return sigil::validityInKnownZone(bOtherKeySize, certKind, policyText, notBefore, notAfter, fromSize, fromOut,
        toSize, toOut, remainDays, state);
}

int sigil::validityInKnownZone(bool otherKeySize, int family, const char* policyText, const char* notBefore,
    const char* notAfter, int fromSize, char* fromOut, int toSize, char* toOut, int* remainDays, int* state)
{
    const std::time_t end = readTime(notAfter);
    const tm endDate = localTimeInKnownZone(end);
    copyDate(localTimeInKnownZone(readTime(notBefore)), fromSize, fromOut);
    copyDate(endDate, toSize, toOut);

    const std::time_t now = currentTime();
    const tm today = localTimeInKnownZone(now);
    const SigilValidity validity = judge(end, endDate, now, today, warningDays(family, textOf(policyText)));
    if (state)
        *state = otherKeySize ? validity - SIGIL_VALIDITY_VALID + SIGIL_VALIDITY_OTHER_VALID : validity;
    if (validity == SIGIL_VALIDITY_EXPIRES_SOON && remainDays)
        *remainDays = daysUntil({endDate.tm_year + 1900, endDate.tm_mon + 1, endDate.tm_mday}, today);
    return 0;
}
