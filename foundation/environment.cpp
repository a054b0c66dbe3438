#include "foundation/environment.h"

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

std::string passwdHomeFolder()
{
    const passwd* entry = getpwuid(getuid());
    return entry && entry->pw_dir ? entry->pw_dir : "";
}

} // namespace

Environment& environment()
{
    static Environment machine{machineClock, passwdHomeFolder, "/etc/mtab", "/tmp", "/opt/CorvennaPlugin/i386"};
    return machine;
}

} // namespace sigil
