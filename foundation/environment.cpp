#include "foundation/environment.h"

#include "foundation/file.h"

#include <cerrno>
#include <cstdio>
#include <memory>
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

/** One entry of a password database with room for its texts. The reentrant look-ups fill it: the others share one
 *  entry with the whole host program. */
class PasswordEntry {
public:
    /** Calls @p read(entry, room, size, result) until the room suffices. @return whether there is an entry */
    template <class Read>
    bool fill(Read read)
    {
        passwd* result = nullptr;
        int failure = 0;
        while ((failure = read(&m_entry, m_room.get(), m_size, &result)) == ERANGE && m_size < mostRoom)
            enlarge();
        if (failure == ENOMEM)
            throw std::bad_alloc();
        return result != nullptr;
    }
    uid_t user() const { return m_entry.pw_uid; }
    std::string homeFolder() const { return m_entry.pw_dir ? m_entry.pw_dir : ""; }
    /** True for a line like "+user", which stands for entries of another database. */
    bool refersElsewhere() const { return *m_entry.pw_name == '+' || *m_entry.pw_name == '-'; }

private:
    static constexpr std::size_t mostRoom = 1024UL * 1024;

    void enlarge()
    {
        m_room = std::make_unique_for_overwrite<char[]>(2 * m_size);
        m_size *= 2;
    }

    passwd m_entry{};
    std::size_t m_size = 1024;
    std::unique_ptr<char[]> m_room = std::make_unique_for_overwrite<char[]>(m_size);
};

/** Fills @p entry with that of @p user in the password file. @return whether it is there */
bool findInPasswordFile(uid_t user, PasswordEntry& entry)
{
    char buffer[4096];
    const File file(std::fopen(environment().passwordFile.c_str(), "re"));
    if (!file) {
        if (errno == ENOMEM)
            throw std::bad_alloc();
        return false;
    }
    static_cast<void>(std::setvbuf(file.get(), buffer, _IOFBF, sizeof buffer));
    const auto next = [&](passwd* into, char* room, std::size_t size, passwd** result) {
        return fgetpwent_r(file.get(), into, room, size, result);
    };
    while (entry.fill(next))
        if (entry.user() == user && !entry.refersElsewhere())
            return true;
    return false;
}

/** Fills @p entry by the machine's name service, which knows the users of a directory too. */
bool findByNameService(uid_t user, PasswordEntry& entry)
{
    // The C library crashes when memory runs out while it loads the services, so that it is asked for before.
    constexpr std::size_t memoryOfServices = 256UL * 1024;
    ::operator delete(::operator new(memoryOfServices));
    return entry.fill([user](passwd* into, char* room, std::size_t size, passwd** result) {
        return getpwuid_r(user, into, room, size, result);
    });
}

/** The file is asked first: nearly every user stands there, and no service has to be loaded for it. */
std::string passwdHomeFolder()
{
    PasswordEntry entry;
    const uid_t user = getuid();
    return findInPasswordFile(user, entry) || findByNameService(user, entry) ? entry.homeFolder() : "";
}

} // namespace

Environment& environment()
{
    static Environment machine{
        machineClock, passwdHomeFolder, "/etc/passwd", "/etc/mtab", "/tmp", "/opt/CorvennaPlugin/i386"};
    return machine;
}

} // namespace sigil
