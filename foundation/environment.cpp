// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/environment.h"

#include <cerrno>
#include <new>
#include <pwd.h>
#include <unistd.h>

namespace sigil {

namespace {

timespec machineClock()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

std::chrono::milliseconds machineUptime()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

/** The C library crashes when memory runs out while it sets its name service up, which it does at the first look-up. So
 *  that one is made while the library is loaded. Root stands in the machine's own file: no other service is asked. */
[[gnu::constructor]] void setNameServiceUp()
{
    passwd entry{};
    char room[1024];
    passwd* root = nullptr;
    static_cast<void>(getpwuid_r(0, &entry, room, sizeof room, &root));
}

/** By the reentrant call, whose room is ours: getpwuid shares one entry with the whole host program. */
std::string passwdHomeFolder()
{
    constexpr std::size_t mostRoom = 1024UL * 1024;
    passwd entry{};
    passwd* user = nullptr;
    std::string room(1024, '\0');
    int failure = 0;
    while ((failure = getpwuid_r(getuid(), &entry, room.data(), room.size(), &user)) == ERANGE &&
        room.size() < mostRoom)
        room.resize(2 * room.size());
    if (failure == ENOMEM)
        throw std::bad_alloc();
    return user && user->pw_dir ? user->pw_dir : "";
}

} // namespace

Environment& environment()
{
    static Environment machine{
        machineClock, machineUptime, passwdHomeFolder, "/etc/mtab", "/tmp", "/opt/CorvennaPlugin/i386"};
    return machine;
}

} // namespace sigil
