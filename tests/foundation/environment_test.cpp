// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <ctime>
#include <pwd.h>
#include <unistd.h>

// Without a test in between, the library asks the machine, at the places that hosts and packagers know.

TEST(Environment, HasTheFixedPlaces)
{
    EXPECT_EQ(sigil::environment().mountTable, "/etc/mtab");
    EXPECT_EQ(sigil::environment().traceFolder, "/tmp");
    EXPECT_EQ(sigil::environment().pluginFolder, "/opt/CorvennaPlugin/i386");
}

TEST(Environment, HasTheMachinesClock)
{
    const std::time_t before = std::time(nullptr);
    const timespec now = sigil::environment().now();
    EXPECT_GE(now.tv_sec, before);
    EXPECT_LE(now.tv_sec, std::time(nullptr) + 1);
    EXPECT_LT(now.tv_nsec, 1'000'000'000);
}

TEST(HomeFolder, IsThatOfThePasswordDatabase)
{
    const passwd* entry = getpwuid(getuid());
    EXPECT_EQ(sigil::environment().homeFolder(), entry ? entry->pw_dir : "");
}

TEST(HomeFolder, LeavesTheEntryThatTheHostHasLookedUpAlone)
{
    const passwd* daemon = getpwnam("daemon");
    ASSERT_NE(daemon, nullptr);
    const std::string home = daemon->pw_dir;
    sigil::environment().homeFolder();
    EXPECT_STREQ(daemon->pw_name, "daemon");
    EXPECT_EQ(daemon->pw_dir, home);
}
