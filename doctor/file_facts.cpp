// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "doctor/file_facts.h"

#include <pwd.h>
#include <unistd.h>

#include <iomanip>
#include <sstream>

namespace sigil {

namespace {

std::string userName(uid_t user)
{
    constexpr std::size_t room = 16384;
    std::string texts(room, '\0');
    passwd entry{};
    passwd* found = nullptr;
    getpwuid_r(user, &entry, texts.data(), texts.size(), &found); // finds nobody where it fails
    return found ? found->pw_name : std::to_string(user);
}

} // namespace

const Rule& ruleOfKind(mode_t mode)
{
    if (S_ISDIR(mode))
        return ruleNamed("is_folder");
    if (S_ISFIFO(mode))
        return ruleNamed("is_pipe");
    return ruleNamed(S_ISSOCK(mode) ? "is_socket" : "is_device");
}

std::string ownerAndRights(const struct stat& status)
{
    std::ostringstream text;
    text << userName(status.st_uid) << ", " << std::oct << std::setfill('0') << std::setw(4)
         << (status.st_mode & 07777);
    return text.str();
}

std::string currentUser() { return userName(geteuid()); }

std::string plainPath(const std::string& path)
{
    std::string plain;
    for (const char c : path)
        if (c != '/' || plain.empty() || plain.back() != '/')
            plain += c;
    return plain;
}

} // namespace sigil
