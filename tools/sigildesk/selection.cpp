// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "selection.h"

#include "certlist/store_layout.h"
#include "certlist/store_repair.h"
#include "files.h"
#include "foundation/ascii.h"
#include "foundation/environment.h"
#include "foundation/families.h"
#include "jobs/filters.h"
#include "jobs/store_list.h"

#include <sigildesk/codes.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr Words nothingFits{"no certificate fits {}", "{}에 맞는 인증서가 없습니다"};
constexpr Words severalFit{"{} certificates fit {}; name one by its index or its serial number",
    "인증서 {}개가 {}에 맞습니다. 번호나 일련번호로 하나를 지정하십시오"};
constexpr Words noPairInFolder{"{} holds no certificate", "{} 폴더에 인증서가 없습니다"};
constexpr Words leftOut{"{} is not among those that the options take", "{}은(는) 옵션이 고른 인증서가 아닙니다"};

bool isOfFamily(const Certificate& certificate, const std::string& names)
{
    bool found = false;
    std::size_t start = 0;
    while (start <= names.size()) {
        const std::size_t end = std::min(names.find(',', start), names.size());
        found = found || familyNamed(names.substr(start, end - start)) == certificate.family;
        start = end + 1;
    }
    return found;
}

/** One option that leaves certificates out. */
struct Filter {
    const char* option;
    const char* rule; ///< the doctor's name for it
    bool (*takes)(const Certificate&, const std::string& value);
};

constexpr Filter filters[] = {
    {"--family", "family_not_wanted", isOfFamily},
    {"--issuer", "issuer_not_wanted", isFromIssuer},
    {"--policy", "policy_not_wanted", hasPolicy},
    {"--subject", "subject_not_wanted", hasSubject},
    {"--serial", "serial_not_wanted", hasSerial},
    {"--expired", "not_expired", [](const Certificate& c, const std::string&) { return c.expired; }},
    {"--valid", "expired_left_out", [](const Certificate& c, const std::string&) { return isValidNow(c); }},
    {"--expires-within", "not_expiring",
        [](const Certificate& c, const std::string& days) { return endsWithin(c, std::stoi(days)); }},
};

bool isTaken(const Session& session, const Certificate& certificate) { return !ruleAgainst(session, certificate); }

bool onHardDisk(const Session& session)
{
    const std::string medium = session.arguments.text("--media");
    return medium.empty() || medium == "disk";
}

std::string described(const Certificate& certificate)
{
    return (certificate.index < 0 ? std::string() : std::to_string(certificate.index) + "  ") + certificate.name +
        "  " + certificate.serial + "  " + day(certificate.to) + "  " + certificate.issuerName;
}

Certificate theOnly(const std::vector<Certificate>& found, const std::string& cert)
{
    if (found.empty())
        throw Failure(no, "no_match", nothingFits, {cert});
    if (found.size() == 1)
        return found.front();
    Json candidates = Json::array();
    std::vector<std::string> lines;
    for (const Certificate& certificate : found) {
        candidates.push_back(jsonOf(certificate));
        lines.push_back(described(certificate));
    }
    throw Failure(no, "ambiguous", severalFit, {std::to_string(found.size()), cert})
        .with("candidates", candidates)
        .withLines(lines);
}

template <class Condition>
Certificate theOnlyThat(const Session& session, const std::string& cert, Condition fits)
{
    std::vector<Certificate> found = listed(session);
    found.erase(
        std::remove_if(found.begin(), found.end(), [&](const Certificate& c) { return !fits(c); }), found.end());
    return theOnly(found, cert);
}

/** The name in the folder that equals @p name but for the case of letters; empty for none. */
std::string existing(const fs::path& folder, const std::string& name)
{
    std::error_code error;
    if (fs::is_regular_file(folder / name, error))
        return (folder / name).string();
    for (const fs::directory_entry& item : fs::directory_iterator(folder, error))
        if (sigil::equalsIgnoringCase(item.path().filename().string(), name) && item.is_regular_file(error))
            return item.path().string();
    return {};
}

/** A name of the layout without the "/" before it. */
std::string bare(const char* name) { return *name == '/' ? name + 1 : name; }

/** The files beside a certificate whose name is that of a pair in one family's layout. False when it is not. */
bool completePair(const sigil::CertificateFiles& layout, const fs::path& file, PairFiles& files)
{
    const std::string name = file.filename().string();
    const auto endsIn = [&](const std::string& ending) {
        return name.size() >= ending.size() &&
            sigil::equalsIgnoringCase(std::string_view(name).substr(name.size() - ending.size()), ending);
    };
    const std::string sign = layout.mark ? layout.mark : bare(layout.signCert);
    const std::string km = bare(layout.kmCert);
    const bool isKm = layout.mark ? endsIn(km) : sigil::equalsIgnoringCase(name, km);
    if (!isKm && !(layout.mark ? endsIn(sign) : sigil::equalsIgnoringCase(name, sign)))
        return false;
    const std::string stem = layout.mark ? name.substr(0, name.size() - (isKm ? km : sign).size()) : "";
    const auto beside = [&](const std::string& other) {
        return existing(file.parent_path().empty() ? "." : file.parent_path(), other);
    };
    const std::string signKey = layout.mark ? stem + "_sig.key" : bare(layout.signKey);
    const std::string kmKey = layout.mark ? stem + bare(layout.kmKey) : bare(layout.kmKey);
    files.certificate = file.string();
    files.key = beside(isKm ? kmKey : signKey);
    if (isKm)
        return true;
    files.kmCertificate = beside(layout.mark ? stem + km : km);
    files.kmKey = beside(kmKey);
    return true;
}

PairFiles filesOf(const std::string& path)
{
    PairFiles files;
    for (const sigil::Family& family : sigil::families())
        if (completePair(family.files, path, files))
            return files;
    files.certificate = path;
    return files;
}

/** The certificates of a folder: that of its pair, or those of a folder that many share. */
std::vector<std::string> certificatesIn(const fs::path& folder)
{
    std::vector<std::string> found;
    for (const sigil::Family& family : sigil::families()) {
        if (family.files.mark)
            continue;
        const std::string file = existing(folder, bare(family.files.signCert));
        if (!file.empty())
            return {file};
    }
    std::error_code error;
    for (const fs::directory_entry& item : fs::directory_iterator(folder, error))
        for (const sigil::Family& family : sigil::families())
            if (family.files.mark && item.path().filename().string().ends_with(family.files.mark))
                found.push_back(item.path().string());
    std::sort(found.begin(), found.end());
    return found;
}

Certificate readPair(const Session& session, const Crypto& crypto, const std::string& path)
{
    const PairFiles files = filesOf(path);
    Certificate certificate = readCertificate(session, crypto, readContent(path));
    certificate.files = files;
    if (!files.kmCertificate.empty())
        certificate.kmDer = derOf(crypto, readFile(files.kmCertificate));
    return certificate;
}

Certificate atPath(const Session& session, const std::string& path)
{
    std::error_code error;
    const bool isFolder = fs::is_directory(path, error);
    sigil::repairPairsIn(isFolder ? path : fs::path(path).parent_path().string());
    mustExist(path);
    const Crypto crypto(session);
    const std::vector<std::string> files = isFolder ? certificatesIn(path) : std::vector<std::string>{path};
    if (files.empty())
        throw Failure(no, "no_match", noPairInFolder, {path});
    std::vector<Certificate> found;
    found.reserve(files.size());
    for (const std::string& file : files)
        found.push_back(readPair(session, crypto, file));
    return theOnly(found, path);
}

Certificate onStandardInput(const Session& session)
{
    const Crypto crypto(session);
    return readCertificate(session, crypto, readStandardInput());
}

bool isIndex(const std::string& cert)
{
    return !cert.empty() && cert.size() < 10 && cert.find_first_not_of("0123456789") == std::string::npos;
}

/** What stands behind @p prefix; null when the text does not begin with it. */
const char* behind(const char* prefix, const std::string& cert)
{
    return cert.starts_with(prefix) ? cert.c_str() + std::char_traits<char>::length(prefix) : nullptr;
}

Certificate named(const Session& session, const std::string& cert)
{
    if (isIndex(cert))
        return theOnlyThat(session, cert, [&](const Certificate& c) { return c.index == std::stoi(cert); });
    if (const char* serial = behind("serial:", cert))
        return theOnlyThat(session, cert, [&](const Certificate& c) { return hasSerial(c, serial); });
    if (const char* name = behind("cn:", cert))
        return theOnlyThat(session, cert, [&](const Certificate& c) { return isNamed(c, name); });
    Certificate certificate = cert == "-" ? onStandardInput(session) : atPath(session, cert);
    if (!isTaken(session, certificate))
        throw Failure(no, "no_match", leftOut, {cert});
    return certificate;
}

} // namespace

std::string mediumFolder(const Session& session)
{
    if (onHardDisk(session))
        return {};
    std::string folder = session.arguments.text("--media");
    mustBeMedium(folder);
    return folder;
}

const char* ruleAgainst(const Session& session, const Certificate& certificate)
{
    const auto against = std::find_if(std::begin(filters), std::end(filters), [&](const Filter& filter) {
        return session.arguments.has(filter.option) &&
            !filter.takes(certificate, session.arguments.text(filter.option));
    });
    return against == std::end(filters) ? nullptr : against->rule;
}

std::vector<Certificate> listed(const Session& session)
{
    std::vector<Certificate> list = storeList(session, mediumFolder(session));
    list.erase(std::remove_if(list.begin(), list.end(), [&](const Certificate& c) { return !isTaken(session, c); }),
        list.end());
    return list;
}

std::vector<std::string> searchedFolders(const Session& session)
{
    const std::string base =
        onHardDisk(session) ? sigil::environment().homeFolder() : session.arguments.text("--media");
    const int medium = onHardDisk(session) ? SIGIL_MEDIUM_HARD_DISK : SIGIL_MEDIUM_REMOVABLE_DISK;
    std::vector<std::string> folders;
    for (const sigil::Family& family : sigil::families())
        if (const sigil::StoreFolders& places = sigil::foldersOf(family, medium); places.places > 0)
            for (const char* folder : places.folders)
                folders.push_back(base + folder);
    return folders;
}

Certificate chosen(const Session& session, const std::string& cert) { return named(session, cert); }

} // namespace host
