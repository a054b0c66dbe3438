// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/store/system_store.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/helper_program.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>

namespace toolkit {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds longestVisit{30};

/** What the environment says, as NSS's own programs do; else what the system knows of the user. */
std::string homeFolder()
{
    const char* const home = std::getenv("HOME");
    if (home && *home)
        return home;
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 4096> room{};
    getpwuid_r(geteuid(), &entry, room.data(), room.size(), &found);
    if (!found || !found->pw_dir)
        fail(SIGIL_TK_MEDIUM, "the user has no home folder");
    return found->pw_dir;
}

/** The answer behind its code. Throws what the code means. */
Secret answerIn(const Secret& bytes)
{
    const auto end = std::find(bytes.begin(), bytes.end(), '\n');
    const std::string digits(bytes.begin(), end);
    int code = SIGIL_TK_INTERNAL;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), code);
    require(end != bytes.end() && parsed.ec == std::errc(), SIGIL_TK_MEDIUM, "nss-store answers nothing");
    Secret rest(end + 1, bytes.end());
    require(code == SIGIL_TK_OK, code, {chars(rest), rest.size()});
    return rest;
}

/** Lets the program do one thing with a database. */
Secret ask(const char* operation, const std::string& folder, View request)
{
    const HelperAnswer answer = askHelper("nss-store", {operation, folder}, request, longestVisit);
    require(answer.end != HelperEnd::Absent, SIGIL_TK_MEDIUM, "nss-store does not run");
    require(answer.end != HelperEnd::Silent, SIGIL_TK_MEDIUM, "the database hangs");
    require(answer.end != HelperEnd::Crashed, SIGIL_TK_MEDIUM, "the database lets its module crash");
    return answerIn(answer.bytes);
}

/** Whether there is a file. Something else in its place, on which the module could wait for ever, throws SIGIL_TK_MEDIUM. */
bool hasFile(const fs::path& path)
{
    std::error_code failure;
    const fs::file_type type = fs::status(path, failure).type();
    require(type == fs::file_type::regular || type == fs::file_type::not_found, SIGIL_TK_MEDIUM,
        path.string() + " is not a file, or not for this user");
    return type == fs::file_type::regular;
}

std::vector<Bytes> elementsOf(View bytes)
{
    std::vector<Bytes> all;
    der::Reader reader(bytes);
    while (const auto element = reader.next())
        all.push_back(toBytes(element->whole));
    return all;
}

} // namespace

void SystemStore::choose(std::string folder)
{
    m_folder = std::move(folder);
    m_listed = false;
}

std::string SystemStore::folder() const { return m_folder.empty() ? homeFolder() + "/.pki/nssdb" : m_folder; }

bool SystemStore::exists() const
{
    std::error_code failure;
    const fs::path place = folder();
    const fs::file_type type = fs::status(place, failure).type();
    require(type == fs::file_type::directory || type == fs::file_type::not_found, SIGIL_TK_MEDIUM,
        place.string() + " is not a folder, or not for this user");
    hasFile(place / "key4.db");
    return hasFile(place / "cert9.db");
}

const std::optional<std::vector<Bytes>>& SystemStore::certificates()
{
    if (!m_listed) {
        m_certificates = exists() ? std::optional(elementsOf(ask("list", folder(), {}))) : std::nullopt;
        m_listed = true;
    }
    return m_certificates;
}

const Bytes& SystemStore::certificate(int index)
{
    const auto& all = certificates();
    require(all.has_value(), SIGIL_TK_MEDIUM, "there is no database in " + folder());
    require(index >= 0 && static_cast<std::size_t>(index) < all->size(), SIGIL_TK_INDEX);
    return (*all)[static_cast<std::size_t>(index)];
}

void SystemStore::add(View certificate)
{
    m_listed = false;
    exists();
    ask("add", folder(), certificate);
}

void SystemStore::import(View file, std::string_view password)
{
    const auto request = der::element<Secret>(der::Sequence,
        {der::element<Secret>(der::OctetString, {view(password)}), der::element<Secret>(der::OctetString, {file})});
    m_listed = false;
    exists();
    ask("import", folder(), request);
}

} // namespace toolkit
