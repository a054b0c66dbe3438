// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/util.h>

#include <climits>

namespace {

/** Zones with and without summer time, east and west, in both hemispheres. */
const char* const zones[] = {"UTC", "KST-9", "CET-1CEST,M3.5.0,M10.5.0/3", "EST5EDT,M3.2.0,M11.1.0",
    "AEST-10AEDT,M10.1.0,M4.1.0/3", "<+1245>-12:45", "<-12>12"};

class Time : public EnvironmentTest {
protected:
    /** Seconds of a UTC calendar time. */
    static time_t utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
    {
        tm fields{};
        fields.tm_year = year - 1900;
        fields.tm_mon = month - 1;
        fields.tm_mday = day;
        fields.tm_hour = hour;
        fields.tm_min = minute;
        fields.tm_sec = second;
        return timegm(&fields);
    }
};

struct Result {
    std::string from;
    std::string to;
    int remainDays; // 77: left as it was
    int state;
    bool operator==(const Result&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Result& r)
{
    return out << r.from << ' ' << r.to << ' ' << r.remainDays << ' ' << r.state;
}

Result validity(const char* notAfter, int kind, const char* policy, bool otherKeySize = false,
    const char* notBefore = "2020-06-30 10:00:00")
{
    char from[32] = "old";
    char to[32] = "old";
    int remainDays = 77;
    int state = 77;
    EXPECT_EQ(CUtil().GetValidity(otherKeySize, kind, Arg(policy), Arg(notBefore), Arg(notAfter), sizeof from, from,
                  sizeof to, to, &remainDays, &state),
        0);
    return {from, to, remainDays, state};
}

const char* const gpkiPolicy = "1 2 410 100001 5 3";

} // namespace

TEST_F(Time, Str2time)
{
    struct Case {
        const char* text;
        time_t expected;
    };
    const std::string longest = "2024-03-01 12:34:56" + std::string(10, ' ');
    const std::string tooLong = longest + " ";
    const Case cases[] = {
        {"2024-03-01 12:34:56", utc(2024, 3, 1, 12, 34, 56)},
        {"1970-01-01 00:00:00", 0},
        {"2024:03:01-12 34-56", utc(2024, 3, 1, 12, 34, 56)}, // any separator between any fields
        {"--2024- 03::01 12:34:56", utc(2024, 3, 1, 12, 34, 56)},
        {"2024-3-1 2:4:6", utc(2024, 3, 1, 2, 4, 6)},
        {"2024-03-01 12:34:56 999", utc(2024, 3, 1, 12, 34, 56)},
        {"2024-03-01 12:34:56xyz", utc(2024, 3, 1, 12, 34, 56)},
        {"2024-02-30 00:00:00", utc(2024, 3, 1)},
        {"2023-02-30 00:00:00", utc(2023, 3, 2)},
        {"2024-13-01 00:00:00", utc(2025, 1, 1)},
        {"2024-01-00 00:00:00", utc(2023, 12, 31)},
        {"2024-01-01 25:60:60", utc(2024, 1, 2, 2, 1)},
        {"1969-12-31 23:59:59", -1},
        {"2106-02-07 06:28:16", 4294967296},
        {longest.c_str(), utc(2024, 3, 1, 12, 34, 56)},
        {tooLong.c_str(), 1001},
        {nullptr, 1001},
        {"", 1001},
        {" ", 1},
        {"-: ", 1},
        {"2024", 2},
        {"2024-03", 3},
        {"2024-03-01", 4},
        {"2024-03-01 12", 5},
        {"2024-03-01 12:34", 6},
        {"2024-03-01 12:34:", 6},
        {"a-b-c d:e:f", utc(0, 0, 0)},
        {"1 99999999999 1 1 1 1", utc(178956971, 7, 1, 1, 1, 1)}, // cut to an int
        {"2147483647 2147483647 1 1 1 1", 6},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CUtil().str2time(Arg(c.text)), c.expected) << (c.text ? c.text : "null");
}

TEST_F(Time, Str2timeReadsTheSecondBeforeTheEpochInAnyZone)
{
    setZone("AEST-10AEDT,M10.1.0,M4.1.0/3"); // it lies in a summer
    EXPECT_EQ(CUtil().str2time(Arg("1970-01-01 09:59:59")), -1);
    EXPECT_EQ(CUtil().str2time(Arg("1970-01-01 10:00:00")), 0);
}

TEST_F(Time, Str2timeReadsLocalStandardTime)
{
    struct Case {
        const char* zone;
        time_t winter; // of 2024-01-15 12:00:00
        time_t summer; // of 2024-07-15 12:00:00, in standard time too
    };
    const Case cases[] = {
        {"UTC", utc(2024, 1, 15, 12), utc(2024, 7, 15, 12)},
        {"KST-9", utc(2024, 1, 15, 3), utc(2024, 7, 15, 3)},
        {"CET-1CEST,M3.5.0,M10.5.0/3", utc(2024, 1, 15, 11), utc(2024, 7, 15, 11)},
        {"EST5EDT,M3.2.0,M11.1.0", utc(2024, 1, 15, 17), utc(2024, 7, 15, 17)},
    };
    for (const Case& c : cases) {
        setZone(c.zone);
        EXPECT_EQ(CUtil().str2time(Arg("2024-01-15 12:00:00")), c.winter) << c.zone;
        EXPECT_EQ(CUtil().str2time(Arg("2024-07-15 12:00:00")), c.summer) << c.zone;
    }
}

TEST_F(Time, Str2timeAgreesWithTheSystemAtEveryHour)
{
    struct Case {
        const char* zone;
        int year;
    };
    // Seoul moved its zone by half an hour in 1954 and had summer time in 1988.
    for (const Case& c : {Case{"AEST-10AEDT,M10.1.0,M4.1.0/3", 2024}, {"Asia/Seoul", 1954}, {"Asia/Seoul", 1988}}) {
        setZone(c.zone);
        for (time_t hour = utc(c.year, 1, 1, 0, 30); hour < utc(c.year + 1, 1, 1); hour += 3600) {
            tm fields{};
            gmtime_r(&hour, &fields);
            char text[32];
            std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &fields);
            fields.tm_isdst = 0;
            const time_t expected = mktime(&fields);
            tm shown{};
            const time_t found = CUtil().str2time(text);
            localtime_r(&found, &shown);
            // An hour that the clocks went through twice is two times, and either will do.
            const bool twice = found != expected && shown.tm_isdst == 0 && shown.tm_hour == fields.tm_hour &&
                shown.tm_min == fields.tm_min && shown.tm_mday == fields.tm_mday;
            ASSERT_TRUE(found == expected || twice) << c.zone << ' ' << text;
        }
    }
}

TEST_F(Time, GetCurrentTimeDay)
{
    for (const char* zone : zones) {
        setZone(zone);
        setClock("2024-03-31 23:59:59");
        std::string out(16, '#');
        EXPECT_EQ(CUtil().GetCurrentTimeDay(out.data()), 0);
        EXPECT_EQ(out, "2024_03_########") << zone; // deliberately not terminated
    }
    EXPECT_EQ(CUtil().GetCurrentTimeDay(nullptr), -1);
}

TEST_F(Time, AChangeOfTheZoneIsNoticed)
{
    struct Case {
        const char* zone;
        const char* month;
        time_t noon; // of 2024-04-01
        int days;    // from today to 2024-04-10
        int state;
    };
    setClock("2024-03-31 20:00:00"); // in Seoul it is 1 April already
    const Case cases[] = {
        {"UTC", "2024_03_", utc(2024, 4, 1, 12), 10, 4},
        {"KST-9", "2024_04_", utc(2024, 4, 1, 3), 9, 5},
        {"UTC", "2024_03_", utc(2024, 4, 1, 12), 10, 4},
    };
    for (const Case& c : cases) {
        char month[16] = {};
        setenv("TZ", c.zone, 1);
        CUtil().GetCurrentTimeDay(month);
        EXPECT_STREQ(month, c.month);
    }
    for (const Case& c : cases) {
        setenv("TZ", c.zone, 1);
        EXPECT_EQ(CUtil().str2time(Arg("2024-04-01 12:00:00")), c.noon) << c.zone;
    }
    for (const Case& c : cases) {
        setenv("TZ", c.zone, 1);
        EXPECT_EQ(CUtil().CalcDay(2024, 4, 10), c.days) << c.zone;
    }
    for (const Case& c : cases) {
        setenv("TZ", c.zone, 1);
        EXPECT_EQ(validity("2024-04-01 01:00:00", 2, "").state, c.state) << c.zone;
    }
}

TEST_F(Time, AClockBeyondAllYearsCountsAsTheEpoch)
{
    sigil::environment().now = [] { return timespec{LONG_MAX, 0}; };
    char out[16] = {};
    EXPECT_EQ(CUtil().GetCurrentTimeDay(out), 0);
    EXPECT_STREQ(out, "1970_01_");
}

TEST_F(Time, DaysOfAMonth)
{
    const int days[] = {31, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 31};
    for (int month = 0; month < 14; ++month)
        EXPECT_EQ(CUtil().day(month), days[month]) << month;
    EXPECT_EQ(CUtil().day(-2), 31);
    EXPECT_EQ(CUtil().day(INT_MAX), 31);
}

TEST_F(Time, LeapDays)
{
    struct Case {
        int fromYear, fromMonth;
        Calc target;
        int days;
    };
    const Case cases[] = {
        {2023, 6, {2023, 12, 31}, 0},
        {2023, 6, {2024, 2, 29}, 0},
        {2023, 6, {2024, 3, 1}, 1},
        {2024, 1, {2024, 2, 28}, 0},
        {2024, 2, {2024, 3, 1}, 1},
        {2024, 3, {2024, 4, 1}, 0},
        {2024, 3, {2024, 2, 1}, -1},
        {2024, 3, {2028, 2, 29}, 0},
        {2024, 3, {2028, 3, 1}, 1},
        {2024, 2, {2028, 3, 1}, 2},
        {2024, 2, {2028, 1, 1}, 1},
        {1999, 1, {2001, 1, 1}, 1}, // 2000 is a leap year
        {1999, 1, {2000, 2, 29}, 0},
        {1999, 1, {2000, 3, 1}, 1},
        {2000, 3, {2001, 1, 1}, 0},
        {2099, 1, {2101, 1, 1}, 0}, // 2100 is none
        {2099, 1, {2100, 2, 28}, 0},
        {2001, 1, {2401, 1, 1}, 97},
        {2024, 1, {2023, 1, 1}, 0},
    };
    for (const Case& c : cases) {
        tm now{};
        now.tm_year = c.fromYear - 1900;
        now.tm_mon = c.fromMonth - 1;
        EXPECT_EQ(CUtil().yun(&now, c.target), c.days)
            << c.fromYear << '-' << c.fromMonth << " to " << c.target.year << '-' << c.target.month;
    }
    EXPECT_EQ(CUtil().yun(nullptr, Calc{2024, 1, 1}), 0);
}

TEST_F(Time, CalcDay)
{
    struct Case {
        const char* today;
        Calc target;
        int days;
    };
    const Case cases[] = {
        {"2024-02-01 00:00:00", {2024, 2, 1}, 0},
        {"2024-02-01 23:59:59", {2024, 3, 1}, 29},
        {"2023-02-01 12:00:00", {2023, 3, 1}, 28},
        {"2024-02-29 12:00:00", {2024, 3, 1}, 1},
        {"2024-02-29 12:00:00", {2025, 2, 28}, 365},
        {"2023-12-31 12:00:00", {2024, 1, 1}, 1},
        {"2024-03-01 12:00:00", {2024, 2, 1}, -29},
        {"2024-12-31 12:00:00", {2024, 1, 1}, -365},
        {"2024-05-10 12:00:00", {2024, 5, 1}, -9},
        {"2024-05-10 12:00:00", {2023, 5, 1}, 0},
        {"2024-05-10 12:00:00", {INT_MIN, 5, 1}, 0},
        {"2024-05-10 12:00:00", {INT_MAX, 5, 1}, INT_MAX}, // bounded, and not counted year by year
        {"2024-01-01 12:00:00", {2024, 14, 1}, 397},
        {"2024-01-01 12:00:00", {2024, 0, 0}, -1},
        {"2024-01-01 12:00:00", {2024, INT_MIN, 1}, 0},
    };
    for (const char* zone : zones) {
        setZone(zone);
        for (const Case& c : cases) {
            setClock(c.today);
            EXPECT_EQ(CUtil().CalcDay(c.target.year, c.target.month, c.target.day), c.days)
                << c.today << ' ' << zone;
        }
    }
}

TEST_F(Time, CalcDayAgreesWithTheCalendar)
{
    for (const char* today : {"2023-12-31 12:00:00", "2024-02-28 12:00:00", "2024-02-29 12:00:00",
             "2024-03-01 12:00:00", "2099-06-30 12:00:00"}) {
        setClock(today);
        const time_t start = sigil::environment().now().tv_sec;
        for (int days = 0; days < 2000; ++days) {
            const time_t then = start + days * 86400L;
            tm date{};
            gmtime_r(&then, &date);
            ASSERT_EQ(CUtil().CalcDay(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday), days) << today;
        }
    }
}

TEST_F(Time, ValidityStates)
{
    struct Case {
        const char* notAfter;
        int kind;
        const char* policy;
        int remainDays;
        int state; // 0 valid, 1 expires soon, 2 expired
    };
    const Case cases[] = {
        // today is 2024-02-01 12:00:00
        {"2024-03-02 12:00:01", 2, "", 77, 0},
        {"2024-03-02 12:00:00", 2, "", 30, 1},
        {"2024-03-02 11:59:59", 2, "", 30, 1},
        {"2024-02-02 00:00:00", 2, "", 1, 1},
        {"2024-02-01 12:00:00", 2, "", 0, 1},
        {"2024-02-01 11:59:59", 2, "", 77, 2},
        {"2023-12-31 23:59:59", 2, "", 77, 2},
        {"2030-01-01 00:00:00", 2, "", 77, 0},
        // the government's certificates are warned of earlier
        {"2024-05-06 00:00:00", 1, gpkiPolicy, 77, 0},
        {"2024-05-06 00:00:00", 1, "", 95, 1},
        {"2024-05-06 00:00:00", 1, nullptr, 95, 1},
        {"2024-05-06 00:00:00", 1, "9 9, 1 2 410 100001 5 3 1", 77, 0},
        {"2024-05-06 00:00:00", 1, "1 2 410 100001 5 4", 95, 1},
        {"2024-05-01 12:00:00", 1, gpkiPolicy, 90, 1},
        {"2024-05-01 12:00:01", 1, gpkiPolicy, 77, 0},
        {"2024-05-11 12:00:00", 1, "", 100, 1},
        {"2024-05-11 12:00:01", 1, "", 77, 0},
        // the policy alone changes nothing
        {"2024-05-01 12:00:00", 2, gpkiPolicy, 77, 0},
        {"2024-03-10 12:00:00", 4, "", 77, 0},
        {"2024-03-01 12:00:00", 8, "", 29, 1},
        {"2024-03-01 12:00:00", 0, "", 29, 1},
    };
    for (const char* zone : zones) {
        setZone(zone);
        setClock("2024-02-01 12:00:00");
        for (const Case& c : cases)
            for (bool otherKeySize : {false, true}) {
                // What summer time shifts is tested below.
                if (std::string(zone).find(',') != std::string::npos && std::string(c.notAfter) > "2024-03-03")
                    continue;
                if (std::string(zone).starts_with("AEST"))
                    continue;
                const Result result = validity(c.notAfter, c.kind, c.policy, otherKeySize);
                EXPECT_EQ(result.state, c.state + (otherKeySize ? 0 : 3)) << c.notAfter << ' ' << zone;
                EXPECT_EQ(result.remainDays, c.remainDays) << c.notAfter << ' ' << zone;
            }
    }
}

TEST_F(Time, ValidityShowsLocalDates)
{
    for (const char* zone : {"UTC", "KST-9", "<-12>12"}) {
        setZone(zone);
        setClock("2024-02-01 12:00:00");
        EXPECT_EQ(validity("2030-12-31 23:59:59", 2, "", false, "2020-02-29 00:00:00"),
            (Result{"2020-02-29", "2030-12-31", 77, 3}))
            << zone;
    }
    // The texts are standard time: in summer the local clock is an hour ahead of them.
    setZone("CET-1CEST,M3.5.0,M10.5.0/3");
    setClock("2024-02-01 12:00:00");
    EXPECT_EQ(validity("2030-12-31 23:30:00", 2, "", false, "2024-07-01 23:30:00").from, "2024-07-02");
}

TEST_F(Time, TheWarningEndsAtTheSameHourAcrossSummerTime)
{
    setZone("CET-1CEST,M3.5.0,M10.5.0/3");
    setClock("2024-03-20 12:00:00"); // summer time begins on 31 March
    // 30 days later at 12:00 summer time, which is 11:00 standard time
    EXPECT_EQ(validity("2024-04-19 11:00:00", 2, "").state, 4);
    EXPECT_EQ(validity("2024-04-19 11:00:01", 2, "").state, 3);
}

TEST_F(Time, ValidityNeedsNeitherDaysNorState)
{
    setClock("2024-02-01 12:00:00");
    char from[16] = {};
    char to[16] = {};
    EXPECT_EQ(CUtil().GetValidity(false, 2, nullptr, Arg("2020-01-01 00:00:00"), Arg("2024-02-10 12:00:00"),
                  sizeof from, from, sizeof to, to, nullptr, nullptr),
        0);
    EXPECT_STREQ(to, "2024-02-10");
}

TEST_F(Time, ValidityStaysWithinItsOutputs)
{
    setClock("2024-02-01 12:00:00");
    const std::string old(12, '#');
    struct Case {
        int size;
        const char* out;
    };
    const Case cases[] = {
        {-1, "############"},
        {0, "############"},
        {5, "2020-#######"},
        {9, "2020-01-0###"},
        {10, "2020-01-01##"}, // the date fills its output and is deliberately not terminated
        {11, "2020-01-01\0#"},
        {12, "2020-01-01\0#"},
    };
    for (const Case& c : cases) {
        std::string from = old;
        std::string to = old;
        const std::string expected(c.out, old.size());
        CUtil().GetValidity(false, 2, Arg(""), Arg("2020-01-01 00:00:00"), Arg("2020-01-01 00:00:00"), c.size,
            from.data(), 0, to.data(), nullptr, nullptr);
        EXPECT_EQ(from, expected) << c.size;
        EXPECT_EQ(to, old);
        CUtil().GetValidity(false, 2, Arg(""), Arg("2030-01-01 00:00:00"), Arg("2020-01-01 00:00:00"), 0,
            from.data(), c.size, to.data(), nullptr, nullptr);
        EXPECT_EQ(to, expected) << c.size;
        EXPECT_EQ(from, expected);
    }
    int days = 77;
    CUtil().GetValidity(
        false, 2, Arg(""), Arg("x"), Arg("2024-02-10 00:00:00"), 16, nullptr, 16, nullptr, &days, nullptr);
    EXPECT_EQ(days, 9);
}

TEST_F(Time, ValidityOfATimeBeyondAllYears)
{
    setClock("2024-02-01 12:00:00");
    const Result result = validity("2147483647-2147483647-1 1:1:1", 2, "");
    EXPECT_EQ(result.to, "1970-01-01");
    EXPECT_EQ(result.state, 5);
}
