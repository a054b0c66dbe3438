// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the tests of the foundations share.
 */
#pragma once

#include "tests/support/files.h"

#include "foundation/environment.h"

#include <sigildesk/binary.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

inline CBinary binary(std::string bytes) { return CBinary(bytes.data(), static_cast<int>(bytes.size())); }

inline std::string bytesOf(const CBinary& b)
{
    return b.m_pData ? std::string(b.m_pData, static_cast<std::size_t>(b.m_nLength)) : std::string();
}

/** A text for a `char*` parameter; lives to the end of the full expression. */
class Arg {
public:
    Arg(std::string_view text)
        : m_text(text)
    {
    }
    Arg(const char* text)
        : m_text(text ? text : "")
        , m_null(!text)
    {
    }
    Arg(const std::string& text)
        : m_text(text)
    {
    }
    operator char*() { return m_null ? nullptr : m_text.data(); }

private:
    std::string m_text;
    bool m_null = false;
};

/** Clock, folders and time zone of the library for one test; the machine's own come back at its end. */
class EnvironmentTest : public testing::Test {
protected:
    EnvironmentTest()
        : m_saved(sigil::environment())
    {
        const char* zone = std::getenv("TZ");
        m_hadZone = zone != nullptr;
        m_zone = zone ? zone : "";
        sigil::environment().now = [] { return s_now; };
        setZone("UTC");
    }
    ~EnvironmentTest() override
    {
        sigil::environment() = m_saved;
        m_hadZone ? setenv("TZ", m_zone.c_str(), 1) : unsetenv("TZ");
        tzset();
    }

    static void setZone(const char* zone)
    {
        setenv("TZ", zone, 1);
        tzset();
    }
    /** Sets the clock to a local time of the zone in use, "2024-03-01 12:00:00". */
    static void setClock(const char* localTime, long nanoseconds = 0)
    {
        tm local{};
        ASSERT_NE(strptime(localTime, "%Y-%m-%d %H:%M:%S", &local), nullptr) << localTime;
        local.tm_isdst = -1;
        s_now = {mktime(&local), nanoseconds};
    }

    TemporaryFolder folder;

private:
    static inline timespec s_now{};
    sigil::Environment m_saved;
    std::string m_zone;
    bool m_hadZone = false;
};
