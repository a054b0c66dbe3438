// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "selection.h"

#include "certlist/entry.h"
#include "certlist/store_layout.h"
#include "certlist/store_repair.h"
#include "files.h"
#include "foundation/ascii.h"
#include "foundation/environment.h"
#include "foundation/families.h"
#include "text.h"

#include <sigildesk/certlist.h>

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
constexpr Words pathTooLong{"{} is longer than 259 bytes", "{} 경로가 259바이트보다 깁니다"};
constexpr Words leftOut{"{} is not among those that the options take", "{}은(는) 옵션이 고른 인증서가 아닙니다"};
constexpr Words unknownFamily{"{} is no family; npki, gpki, mpki and ppki are",
    "{}은(는) 없는 계열입니다. npki, gpki, mpki, ppki가 있습니다"};

/** The list processor for as long as it is used. */
class Processor {
public:
    explicit Processor(const Session& session)
    {
        std::string folder = session.folder;
        const int code =
            CLP_Initalize(&m_handle, nullptr, session.toolkit, static_cast<int>(session.language()), folder.data());
        if (code == SIGIL_SUCCESS)
            return;
        CLP_UnInitalize(m_handle);
        throw Failure::ofCode(code, folder);
    }
    ~Processor() { CLP_UnInitalize(m_handle); }
    Processor(const Processor&) = delete;
    Processor& operator=(const Processor&) = delete;

    void* handle() const { return m_handle; }
    static void check(int code)
    {
        if (code != SIGIL_SUCCESS)
            throw Failure::ofCode(code);
    }

private:
    void* m_handle = nullptr;
};

std::string lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
        [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/** A serial number without what people write between its digits. */
std::string plainSerial(const std::string& text)
{
    std::string digits;
    for (const char c : lowered(text.substr(text.starts_with("0x") || text.starts_with("0X") ? 2 : 0)))
        if (c != ':' && c != ' ' && !(c == '0' && digits.empty()))
            digits += c;
    return digits;
}

/** A name without the blanks that people write after its commas. */
std::string plainName(const std::string& text)
{
    std::string name;
    for (const char c : lowered(text)) {
        if (c == ' ' && (name.empty() || name.back() == ','))
            continue;
        name += c;
    }
    return name;
}

bool holds(const std::string& text, const std::string& part)
{
    return lowered(text).find(lowered(part)) != std::string::npos;
}

bool hasPolicy(const Certificate& certificate, const std::string& wanted)
{
    std::string rest = certificate.policy;
    std::replace(rest.begin(), rest.end(), ',', '\n');
    const std::string oid = dotted(wanted);
    std::size_t start = 0;
    while (start < rest.size()) {
        const std::size_t end = std::min(rest.find('\n', start), rest.size());
        std::string one = rest.substr(start, end - start);
        one.erase(0, one.find_first_not_of('.')); // of the blank behind the comma
        if (one == oid)
            return true;
        start = end + 1;
    }
    return false;
}

bool isOfFamily(const Certificate& certificate, const std::string& names)
{
    bool found = false;
    std::size_t start = 0;
    while (start <= names.size()) {
        const std::size_t end = std::min(names.find(',', start), names.size());
        const std::string name = names.substr(start, end - start);
        const int family = familyNamed(name);
        if (family == 0)
            throw Failure(wrongUse, "wrong_use", unknownFamily, {name});
        found = found || family == certificate.family;
        start = end + 1;
    }
    return found;
}

bool endsWithin(const Certificate& certificate, int days)
{
    constexpr std::time_t secondsOfADay = 24L * 60 * 60;
    return !certificate.expired && certificate.to <= std::time(nullptr) + days * secondsOfADay;
}

/** One option that leaves certificates out. */
struct Filter {
    const char* option;
    const char* rule; ///< the doctor's name for it
    bool (*takes)(const Certificate&, const std::string& value);
};

constexpr Filter filters[] = {
    {"--family", "family_not_wanted", isOfFamily},
    {"--issuer", "issuer_not_wanted",
        [](const Certificate& c, const std::string& text) {
            return holds(c.issuer, text) || holds(c.issuerName, text);
        }},
    {"--policy", "policy_not_wanted", hasPolicy},
    {"--subject", "subject_not_wanted",
        [](const Certificate& c, const std::string& text) { return plainName(c.subject) == plainName(text); }},
    {"--serial", "serial_not_wanted",
        [](const Certificate& c, const std::string& text) { return plainSerial(c.serial) == plainSerial(text); }},
    {"--expired", "not_expired", [](const Certificate& c, const std::string&) { return c.expired; }},
    {"--valid", "expired_left_out",
        [](const Certificate& c, const std::string&) { return !c.expired && c.from <= std::time(nullptr); }},
    {"--expires-within", "not_expiring",
        [](const Certificate& c, const std::string& days) { return endsWithin(c, std::stoi(days)); }},
};

bool isTaken(const Session& session, const Certificate& certificate) { return !ruleAgainst(session, certificate); }

bool onHardDisk(const Session& session)
{
    const std::string medium = session.arguments.text("--media");
    return medium.empty() || medium == "disk";
}

std::vector<Certificate> wholeList(const Session& session)
{
    const Processor processor(session);
    tagLOADCERTOPT all = everything();
    Processor::check(CLP_SetType(processor.handle(), &all));
    std::string folder = mediumFolder(session);
    Processor::check(CLP_SetMediaType(processor.handle(),
        folder.empty() ? SIGIL_MEDIUM_HARD_DISK : SIGIL_MEDIUM_REMOVABLE_DISK, folder.data(), 0));
    const int code = CLP_LoadCertList(processor.handle());
    if (code == SIGIL_NO_CERTIFICATE)
        return {};
    Processor::check(code);
    std::vector<Certificate> list;
    sigil::ScratchEntry entry;
    for (int i = 0; i < CLP_GetCertCount(processor.handle()); ++i) {
        entry.clear();
        Processor::check(CLP_GetCertInfo(processor.handle(), i, &*entry));
        list.push_back(certificateOf(*entry));
        list.back().index = i;
        list.back().medium = folder.empty() ? "disk" : folder;
    }
    return list;
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
    if (fs::is_regular_file(folder / name))
        return (folder / name).string();
    std::error_code error;
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
    const bool isFolder = fs::is_directory(path);
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
        return theOnlyThat(
            session, cert, [&](const Certificate& c) { return plainSerial(c.serial) == plainSerial(serial); });
    if (const char* name = behind("cn:", cert))
        return theOnlyThat(session, cert, [&](const Certificate& c) { return lowered(c.name) == lowered(name); });
    Certificate certificate = cert == "-" ? onStandardInput(session) : atPath(session, cert);
    if (!isTaken(session, certificate))
        throw Failure(no, "no_match", leftOut, {cert});
    return certificate;
}

} // namespace

tagLOADCERTOPT everything()
{
    tagLOADCERTOPT all{};
    all.nPKITypes = SIGIL_FAMILY_GPKI | SIGIL_FAMILY_NPKI | SIGIL_FAMILY_MPKI | SIGIL_FAMILY_PPKI;
    return all;
}

std::string mediumFolder(const Session& session)
{
    if (onHardDisk(session))
        return {};
    std::string folder = session.arguments.text("--media");
    mustExist(folder);
    if (folder.size() >= sizeof(tagDRIVEINFO::szMountDir))
        throw Failure(failed, "path_too_long", pathTooLong, {folder});
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
    std::vector<Certificate> list = wholeList(session);
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
