// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/text.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <thread>

using namespace toolkit;

namespace {

/** The time zone of the process for one test. */
class Zone {
public:
    explicit Zone(const char* name)
    {
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone()
    {
        unsetenv("TZ");
        tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;
};

constexpr std::time_t julyNoon = 1720612800;    // 2024-07-10 12:00:00 UTC
constexpr std::time_t januaryNoon = 1704888000; // 2024-01-10 12:00:00 UTC

/** What the readers of these texts do. */
std::time_t readBack(const std::string& text)
{
    std::tm fields{};
    strptime(text.c_str(), "%Y-%m-%d %H:%M:%S", &fields);
    fields.tm_isdst = 0;
    return std::mktime(&fields);
}

} // namespace

TEST(TimeText, IsLocalTime)
{
    const Zone seoul("Asia/Seoul");
    EXPECT_EQ(timeText(julyNoon), "2024-07-10 21:00:00");
    EXPECT_EQ(readBack(timeText(julyNoon)), julyNoon);
}

TEST(TimeText, IsNeverShiftedByDaylightSaving)
{
    const Zone newYork("America/New_York");
    EXPECT_EQ(timeText(januaryNoon), "2024-01-10 07:00:00");
    EXPECT_EQ(timeText(julyNoon), "2024-07-10 07:00:00");
    EXPECT_EQ(readBack(timeText(julyNoon)), julyNoon);
    EXPECT_EQ(readBack(timeText(januaryNoon)), januaryNoon);
    EXPECT_EQ(timeFromText("2024-07-10 07:00:00"), julyNoon);
}

TEST(TimeText, OtherFormsAreRefused)
{
    EXPECT_FALSE(timeFromText("2024-07-10"));
    EXPECT_FALSE(timeFromText("2024-07-10 07:00:00 and more"));
    EXPECT_FALSE(timeFromText(""));
    EXPECT_FALSE(timeFromText("2024-7-1 07:00:00"));
    EXPECT_FALSE(timeFromText("2024-07-10T07:00:00"));
    EXPECT_FALSE(timeFromText("+024-07-10 07:00:00"));
}

TEST(TimeText, DaysAndHoursThatAreNotAreRefused)
{
    for (const char* text : {"2025-13-01 00:00:00", "2025-13-45 00:00:00", "2025-00-10 00:00:00",
             "2025-02-30 00:00:00", "2025-02-29 00:00:00", "2025-04-31 00:00:00", "2025-01-00 00:00:00",
             "2025-01-01 24:00:00", "2025-01-01 00:60:00", "2025-01-01 00:00:60"})
        EXPECT_FALSE(timeFromText(text)) << text;
    EXPECT_TRUE(timeFromText("2024-02-29 23:59:59"));
}

TEST(TimeText, HasNineteenCharactersInEveryZoneAndYear)
{
    constexpr std::time_t never = 253402300799; // 9999-12-31 23:59:59 UTC
    constexpr std::time_t yearZero = -62167219200;
    for (const char* name : {"Asia/Seoul", "America/New_York", "Pacific/Kiritimati", "UTC"}) {
        const Zone zone(name);
        for (const std::time_t time : {never, never - 43200, yearZero, std::time_t(-40000000000), julyNoon})
            EXPECT_EQ(timeText(time).size(), 19U) << name << " " << time << " " << timeText(time);
    }
    const Zone seoul("Asia/Seoul");
    EXPECT_EQ(timeText(never), "9999-12-31 23:59:59");
    const Zone newYork("America/New_York");
    EXPECT_EQ(timeText(yearZero), "0000-01-01 00:00:00");
}

TEST(Cp949, HangulAndAsciiAreConverted)
{
    EXPECT_EQ(cp949FromUtf8("cn=홍길동"), "cn=\xC8\xAB\xB1\xE6\xB5\xBF");
    EXPECT_EQ(cp949FromUtf8("똠방각하"), "\x8C\x63\xB9\xE6\xB0\xA2\xC7\xCF"); // outside KS X 1001
    EXPECT_EQ(utf8FromCp949("\xC8\xAB\xB1\xE6\xB5\xBF"), "홍길동");
}

TEST(Cp949, WhatCannotBeConvertedBecomesAQuestionMark)
{
    EXPECT_EQ(cp949FromUtf8("a😀b"), "a?b");
    EXPECT_EQ(cp949FromUtf8("a\xFF\xFE가"), "a??\xB0\xA1");
    EXPECT_EQ(cp949FromUtf8(std::string_view("a\0\nb", 4)), "a??b");
    EXPECT_FALSE(utf8FromCp949("\xC8"));
}

TEST(Cp949, NothingIsLeftOfATextThatStoppedInACharacter)
{
    EXPECT_FALSE(utf8FromCp949("\xC8"));
    EXPECT_EQ(utf8FromCp949("\xAB\xB1"), "ケ") << "not the rest of the character before";
    EXPECT_EQ(cp949FromUtf8("\xED\x99"), "?");
    EXPECT_EQ(cp949FromUtf8("홍"), "\xC8\xAB");
}

TEST(Cp949, ThreadsConvertAtTheSameTime)
{
    std::string utf8;
    std::string cp949;
    for (int i = 0; i < 2000; ++i) {
        utf8 += "홍길동";
        cp949 += "\xC8\xAB\xB1\xE6\xB5\xBF";
    }
    std::atomic<int> right = 0;
    const auto convert = [&] {
        for (int i = 0; i < 20; ++i)
            right += cp949FromUtf8(utf8) == cp949 && utf8FromCp949(cp949) == utf8 ? 1 : 0;
    };
    std::thread other(convert);
    convert();
    other.join();
    EXPECT_EQ(right, 40);
}

TEST(Asn1Text, EveryStringTypeBecomesCp949)
{
    const auto textOf = [](int type, const std::string& bytes) {
        const std::unique_ptr<ASN1_STRING, decltype(&ASN1_STRING_free)> string(
            ASN1_STRING_type_new(type), ASN1_STRING_free);
        ASN1_STRING_set(string.get(), bytes.data(), static_cast<int>(bytes.size()));
        return asn1Text(string.get());
    };
    const std::string hong = "\xC8\xAB"; // 홍 in CP949
    EXPECT_EQ(textOf(V_ASN1_UTF8STRING, "홍"), hong);
    EXPECT_EQ(textOf(V_ASN1_BMPSTRING, "\xD6\x4D"), hong);
    EXPECT_EQ(textOf(V_ASN1_PRINTABLESTRING, "KR"), "KR");
    EXPECT_EQ(textOf(V_ASN1_T61STRING, hong), hong) << "old certificates hold Korean bytes here";
    EXPECT_EQ(textOf(V_ASN1_PRINTABLESTRING, "홍길동"), "\xC8\xAB\xB1\xE6\xB5\xBF") << "or UTF-8";
    EXPECT_EQ(textOf(V_ASN1_IA5STRING, "홍길"), "\xC8\xAB\xB1\xE6");
    EXPECT_EQ(textOf(V_ASN1_T61STRING, "은행"), "\xC0\xBA\xC7\xE0");
    EXPECT_EQ(textOf(V_ASN1_T61STRING, "\xC4\xAB"), "\xC4\xAB") << "카, which would also be a letter in UTF-8";
    EXPECT_EQ(textOf(V_ASN1_T61STRING, "Jos\xE9"), "Jos?") << "neither: Latin-1, whose letter CP949 lacks";
    const std::string gildong = "\xB1\xE6\xB5\xBF";
    EXPECT_EQ(textOf(V_ASN1_UTF8STRING, gildong), gildong) << "and here, against the standard";
    EXPECT_EQ(textOf(V_ASN1_UTF8STRING, "a\xFF"), "a?");
    EXPECT_EQ(textOf(V_ASN1_BMPSTRING, "odd"), "odd") << "half a character is no BMPString";
    EXPECT_EQ(textOf(V_ASN1_UTF8STRING, std::string("a\0b", 3)), "a?b") << "a zero byte would hide what follows";
    EXPECT_EQ(textOf(V_ASN1_UTF8STRING, ""), "");
}

TEST(CutText, NeverCutsACharacter)
{
    const std::string name = cp949FromUtf8("a홍길");
    EXPECT_EQ(cutText(name, 5), name);
    EXPECT_EQ(cutText(name, 4), name.substr(0, 3));
    EXPECT_EQ(cutText(name, 2), "a");
    EXPECT_EQ(cutText(name, 0), "");
    EXPECT_EQ(cutText("a\xC8", 9), "a");
}
