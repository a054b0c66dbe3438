// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <cerrno>
#include <ctime>
#include <new>
#include <pwd.h>
#include <unistd.h>

// The linker sends every such look-up of the test program here.
extern "C" int __real_getpwuid_r(uid_t user, passwd* entry, char* room, std::size_t size, passwd** found);
extern "C" int __wrap_getpwuid_r(uid_t user, passwd* entry, char* room, std::size_t size, passwd** found);

namespace {

/** A password database that is not the machine's. */
struct Database {
    int failure = 0;
    std::size_t roomWanted = 0;
    bool hasUser = true;
    char* home = nullptr;
};

const Database* database = nullptr; // the machine's

std::string homeFolderIn(const Database& other)
{
    database = &other;
    std::string home;
    try {
        home = sigil::environment().homeFolder();
    } catch (const std::bad_alloc&) {
        home = "no memory";
    }
    database = nullptr;
    return home;
}

} // namespace

extern "C" int __wrap_getpwuid_r(uid_t user, passwd* entry, char* room, std::size_t size, passwd** found)
{
    if (!database)
        return __real_getpwuid_r(user, entry, room, size, found);
    const int failure = size < database->roomWanted ? ERANGE : database->failure;
    entry->pw_dir = database->home;
    *found = failure == 0 && database->hasUser ? entry : nullptr;
    return failure;
}

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

TEST(HomeFolder, IsFoundInAnEntryOfAnyLength)
{
    char home[] = "/home/user";
    for (const std::size_t room : {0, 1025, 1024 * 1024})
        EXPECT_EQ(homeFolderIn({.roomWanted = room, .home = home}), home) << room;
    EXPECT_EQ(homeFolderIn({.roomWanted = 1024 * 1024 + 1, .home = home}), "") << "no entry is so long";
}

TEST(HomeFolder, IsEmptyWhereTheDatabaseHasNone)
{
    char home[] = "/home/user";
    EXPECT_EQ(homeFolderIn({.hasUser = false, .home = home}), "");
    EXPECT_EQ(homeFolderIn({.home = nullptr}), "");
    EXPECT_EQ(homeFolderIn({.failure = EIO, .home = home}), "");
    EXPECT_EQ(homeFolderIn({.failure = ENOMEM, .home = home}), "no memory");
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
