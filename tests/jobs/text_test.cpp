// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Charsets, times and names of families.

#include "jobs/certificate.h"
#include "jobs/text_conversion.h"

#include <sigildesk/codes.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <string>

namespace {

/** The machine's zone, for as long as the object lives. */
class Zone {
public:
    explicit Zone(const char* name)
        : m_before(std::getenv("TZ") ? std::getenv("TZ") : "")
    {
        set(name);
    }
    ~Zone() { set(m_before.c_str()); }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

private:
    static void set(const char* name)
    {
        if (*name)
            setenv("TZ", name, 1);
        else
            unsetenv("TZ");
        tzset();
    }

    std::string m_before;
};

} // namespace

TEST(ATextOfTheLibrary, BecomesUtf8WithAMarkForWhatIsNoCharacter)
{
    EXPECT_EQ(host::utf8("\xC8\xAB"
                         "a"),
        "홍a");
    EXPECT_EQ(host::utf8("a\xFF\xFF"
                         "b"),
        "a?b")
        << "two bytes that are no character";
    EXPECT_EQ(host::utf8("a\xFF"
                         "b"),
        "a?b")
        << "one, and an ordinary one";
    EXPECT_EQ(host::utf8("a\xC8"), "a?") << "cut";
    EXPECT_EQ(host::utf8(""), "");
}

TEST(AConversion, ThatTheMachineLacksIsRefused)
{
    EXPECT_THROW(host::Converter("UTF-8", "no-such-charset"), std::runtime_error);
}

TEST(ATimeOfTheLibrary, KnowsNoSummer)
{
    const Zone zone("XST5XDT,M3.2.0,M11.1.0");
    constexpr std::time_t inJuly = 1720627200;    // 2024-07-10 16:00:00 UTC
    constexpr std::time_t inJanuary = 1704902400; // 2024-01-10 16:00:00 UTC
    EXPECT_EQ(host::libraryTime(inJuly), "2024-07-10 11:00:00");
    EXPECT_EQ(host::libraryTime(inJanuary), "2024-01-10 11:00:00");
    for (const std::time_t time : {inJuly, inJanuary})
        EXPECT_EQ(host::timeOf(host::libraryTime(time)), time);
}

TEST(AFamily, HasAName)
{
    EXPECT_EQ(host::familyName(SIGIL_FAMILY_GPKI), "gpki");
    EXPECT_EQ(host::familyName(0), "");
    EXPECT_EQ(host::familyNamed("PPKI"), SIGIL_FAMILY_PPKI);
    EXPECT_EQ(host::familyNamed("xpki"), 0);
}
