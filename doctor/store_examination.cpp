// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "doctor/doctor.h"

#include "certlist/processor.h"
#include "certlist/store_layout.h"
#include "doctor/certificate_damage.h"
#include "doctor/file_facts.h"
#include "doctor/hearing.h"
#include "doctor/store_place.h"
#include "foundation/ascii.h"
#include "foundation/environment.h"

#include <sigildesk/certlist.h>

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <system_error>

namespace sigil {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t deepestFolder = 12; // folders below a base folder: no layout has more than half of it

/** A list processor that tells @p hearing what it decides. */
class Listing {
public:
    Listing(const DoctorQuestion& question, Hearing& hearing)
    {
        std::string folder = question.libraryFolder;
        tagLOADCERTOPT wanted = question.wanted;
        m_code = CLP_Initalize(&m_handle, nullptr, question.toolkit, question.language, folder.data());
        if (m_code != SIGIL_SUCCESS)
            return;
        static_cast<CCertListProcInterface*>(m_handle)->observe(&hearing);
        m_code = CLP_SetType(m_handle, &wanted);
    }
    ~Listing() { CLP_UnInitalize(m_handle); }
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;

    int list(int medium, std::string base)
    {
        if (m_code != SIGIL_SUCCESS)
            return m_code;
        CLP_SetMediaType(m_handle, medium, base.data(), 0);
        return CLP_LoadCertList(m_handle);
    }

    /** Judges a pair that lies outside of all stores as one that a host hands over. */
    void judgePair(std::string certificate, std::string key)
    {
        if (m_code != SIGIL_SUCCESS)
            return;
        CLP_SetMediaType(m_handle, SIGIL_MEDIUM_MEMORY, nullptr, 0);
        CLP_LoadMemoryCert(m_handle, certificate.data(), static_cast<int>(certificate.size()), key.data(),
            static_cast<int>(key.size()), nullptr, 0, nullptr, 0);
    }

private:
    void* m_handle = nullptr;
    int m_code; ///< of the start
};

std::string contentOfFile(const std::string& path)
{
    constexpr std::size_t most = 65536;
    if (!fs::is_regular_file(path))
        return {};
    std::string content(most, '\0');
    std::ifstream in(path, std::ios::binary);
    in.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return content;
}

struct Item {
    std::string name;
    mode_t mode; ///< of a link: what it leads to, 0 for nowhere
    bool link;
};

/** The items of a folder by name. @param error  receives why it could not be read; 0 when it could */
std::vector<Item> itemsOf(const std::string& folder, int& error)
{
    std::vector<Item> items;
    errno = 0;
    const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(folder.c_str()), closedir);
    error = open ? 0 : errno;
    while (const dirent* entry = open ? readdir(open.get()) : nullptr) {
        const std::string name = entry->d_name;
        std::string path = folder;
        path.append("/").append(name);
        struct stat status { };
        if (name == "." || name == ".." || lstat(path.c_str(), &status) != 0)
            continue;
        const bool link = S_ISLNK(status.st_mode);
        if (link && stat(path.c_str(), &status) != 0)
            status.st_mode = 0;
        items.push_back({name, status.st_mode, link});
    }
    std::ranges::sort(items, {}, &Item::name);
    return items;
}

bool endsIgnoringCase(std::string_view name, std::string_view ending)
{
    return name.size() >= ending.size() && equalsIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

bool endsInOneOf(std::string_view name, std::initializer_list<std::string_view> endings)
{
    return std::ranges::any_of(endings, [&](std::string_view ending) { return endsIgnoringCase(name, ending); });
}

std::string lowered(std::string text)
{
    std::ranges::transform(text, text.begin(), toLower);
    return text;
}

/** Looks at a store file by file, and tells of each candidate what the list said, or why the list never saw it. */
class Examination {
public:
    Examination(const DoctorQuestion& question, int medium, std::string base)
        : m_question(question)
        , m_base(std::move(base))
        , m_place{medium, question.wanted.nPKITypes}
        , m_hearing(question.leftOut)
        , m_listing(question, m_hearing)
    {
        m_report.code = m_listing.list(medium, m_base);
    }

    void stores()
    {
        int error = 0;
        for (const Item& item : itemsOf(m_base, error))
            if (beginsAStore(item.name))
                step(m_base, {}, item);
        if (error != 0)
            unreadable(m_base, error);
        for (const CopyPlace& place : copyPlaces(m_base))
            copies(place, 0);
    }
    /** Everything at @p folder, which is in no store. */
    void outside(const std::string& folder) { walk(folder, {}); }

    StoreReport report()
    {
        for (const Judged& judged : m_hearing.candidates())
            if (!judged.certificate.empty() && judged.hasFiles && !m_told.contains(judged.certificate))
                tell(judged, {});
        m_report.folders = m_hearing.places();
        for (SearchedPlace& place : m_report.folders)
            place.path = plainPath(place.path);
        return std::move(m_report);
    }

private:
    using Names = std::map<std::string, std::string>; // proper name to the one that is there

    void find(const std::string& path, bool listed, const Diagnosis& diagnosis)
    {
        const int language = m_question.language;
        m_report.findings.push_back(
            {plainPath(path), listed, diagnosis.rule->name, diagnosis.rule->detail.in(language, diagnosis.values),
                diagnosis.rule->mend.in(language, diagnosis.values)});
    }

    void unreadable(const std::string& folder, int error)
    {
        struct stat status { };
        const bool known = stat(folder.c_str(), &status) == 0;
        find(folder, false,
            by("folder_unreadable",
                {folder, currentUser(),
                    known && error == EACCES ? ownerAndRights(status) : std::generic_category().message(error)}));
    }

    void walk(const std::string& folder, const Steps& steps)
    {
        struct stat status { };
        if (steps.size() > deepestFolder || stat(folder.c_str(), &status) != 0 ||
            !m_seen.emplace(status.st_dev, status.st_ino).second)
            return;
        int error = 0;
        const std::vector<Item> items = itemsOf(folder, error);
        if (error != 0)
            return unreadable(folder, error);
        ownFolder(folder, steps, items);
        sharedFolder(folder, steps, items);
        for (const Item& item : items)
            step(folder, steps, item);
    }

    void step(const std::string& folder, Steps steps, const Item& item)
    {
        const std::string path = folder + "/" + item.name;
        const bool inStoreFolder = holdsCertificates(steps, false);
        steps.push_back(item.name);
        const bool entered = !item.link || isOnTheWay(steps);
        if (item.link && item.mode == 0 && isOnTheWay(steps))
            find(path, false, by("link_leads_nowhere", {path}));
        else if (S_ISDIR(item.mode) && entered)
            walk(path, steps);
        else if (S_ISDIR(item.mode) && inStoreFolder && holdsPair(path))
            find(path, false, by("link", {path}));
        else if (!S_ISDIR(item.mode) && isOnTheWay(steps))
            find(path, false, by("not_a_folder", {path}));
        else if (S_ISREG(item.mode) && endsInOneOf(item.name, {".pfx", ".p12"}))
            find(path, false, by("pkcs12_file", {path}));
    }

    static bool holdsPair(const std::string& folder)
    {
        int error = 0;
        return std::ranges::any_of(
            itemsOf(folder, error), [](const Item& item) { return ownFolderNames().proper(item.name); });
    }

    /** Files with the names of a certificate's own folder. */
    void ownFolder(const std::string& folder, const Steps& steps, const std::vector<Item>& items)
    {
        Names names;
        for (const Item& item : items)
            if (const char* proper = ownFolderNames().proper(item.name); proper && names[proper] != proper)
                names[proper] = item.name;
        if (names.empty())
            return strangeNames(folder, steps, items);
        const std::string certificate = folder + "/" + ownFolderNames().signCert;
        if (const Judged* judged = m_hearing.of(certificate))
            return tell(*judged, names);
        const std::string& name =
            names.contains(ownFolderNames().signCert) ? names[ownFolderNames().signCert] : names.begin()->second;
        notJudged(folder + "/" + name, certificate, steps, false, names);
    }

    /** A certificate in a folder of its own, or among those that share one, under a name that nobody looks for. */
    void strangeNames(const std::string& folder, const Steps& steps, const std::vector<Item>& items)
    {
        const bool ownFolder = !steps.empty() && holdsCertificates({steps.begin(), steps.end() - 1}, false);
        if (!ownFolder && !holdsCertificates(steps, true))
            return;
        const std::string wanted = ownFolder ? ownFolderNames().signCert : "*" + sharedFolderEndings().signCert;
        for (const Item& item : items)
            if (S_ISREG(item.mode) && !isSharedName(item.name) &&
                endsInOneOf(item.name, {".der", ".cer", ".crt", ".pem"}) &&
                contentOf(contentOfFile(folder + "/" + item.name)) == Content::Certificate)
                find(folder + "/" + item.name, false, by("file_name_not_known", {item.name, wanted}));
    }

    static bool isSharedName(const std::string& name)
    {
        const SharedFolderEndings endings = sharedFolderEndings();
        return findIgnoringCase(name, endings.signCert) != name.npos ||
            endsInOneOf(name, {endings.signKey, endings.kmCert, endings.kmKey});
    }

    /** Files with the names of certificates that share a folder. */
    void sharedFolder(const std::string& folder, const Steps& steps, const std::vector<Item>& items)
    {
        const SharedFolderEndings endings = sharedFolderEndings();
        std::set<std::string> stems;
        for (const Item& item : items) {
            const std::size_t mark = findIgnoringCase(item.name, endings.signCert);
            if (mark == item.name.npos)
                continue;
            stems.insert(lowered(item.name.substr(0, mark)));
            sharedCertificate(folder, steps, item);
        }
        for (const Item& item : items)
            if (endsInOneOf(item.name, {endings.signKey, endings.kmCert, endings.kmKey}) &&
                stems.insert(lowered(item.name.substr(0, item.name.size() - endings.signKey.size()))).second)
                find(folder + "/" + item.name, false,
                    by("certificate_missing",
                        {folder + "/" + item.name.substr(0, item.name.size() - endings.signKey.size()) +
                            endings.signCert}));
    }

    void sharedCertificate(const std::string& folder, const Steps& steps, const Item& item)
    {
        const std::string path = folder + "/" + item.name;
        if (const Judged* judged = m_hearing.of(path); judged && !item.link)
            return tell(*judged, {});
        if (holdsCertificates(steps, true)) {
            if (item.link)
                return find(path, false, item.mode == 0 ? by("link_leads_nowhere", {path}) : by("link", {path}));
            if (!S_ISREG(item.mode))
                return find(path, false, {&ruleOfKind(item.mode), {path}});
        }
        Names names;
        if (item.name.find(sharedFolderEndings().signCert) == item.name.npos)
            names["*" + sharedFolderEndings().signCert] = item.name;
        notJudged(path, path, steps, true, names);
    }

    /** Why the list never saw the pair at @p path. @param names  those that stand in other letter case, and others */
    void notJudged(
        const std::string& path, const std::string& formed, const Steps& steps, bool fileStyle, const Names& names)
    {
        if (steps.empty() || !isInStore(steps))
            return outsidePair(path, names);
        if (plainPath(formed) != cutPath(plainPath(formed)))
            return find(path, false, by("path_too_long", {std::to_string(formed.size())}));
        Diagnosis why = whyNotSearched(m_place, steps, fileStyle);
        if (why.rule == &ruleNamed("folder_not_searched")) {
            if (fileStyle && !names.empty())
                why = wrongCase(*names.begin());
            else if (!listWasBuilt())
                why = by("list_not_built", {sentence(m_report.code), std::to_string(m_report.code)});
        }
        find(path, false, why);
    }

    static bool isInStore(const Steps& steps) { return beginsAStore(steps.front()); }

    bool listWasBuilt() const { return m_report.code == SIGIL_SUCCESS || m_report.code == SIGIL_NO_CERTIFICATE; }

    std::string sentence(int code) const
    {
        SigilCodeText text{};
        sigil_code_text(code, m_question.language, &text);
        return text.sentence;
    }

    static Diagnosis wrongCase(const Names::value_type& name)
    {
        return by("file_letter_case", {name.second, name.first});
    }

    /** The name in another letter case that a missing file has; none when it is missing. */
    static const Names::value_type* otherCase(const Names& names, const char* proper)
    {
        const auto found = names.find(proper);
        return found != names.end() && found->second != proper ? &*found : nullptr;
    }

    void tell(const Judged& judged, const Names& names)
    {
        m_told.insert(judged.certificate);
        const OwnFolderNames proper = ownFolderNames();
        Diagnosis why = judged.diagnosis;
        std::string path = judged.certificate;
        const std::string folder = path.substr(0, path.rfind('/') + 1);
        const auto respell = [&](const char* rule, const char* name) {
            const Names::value_type* other = why.rule == &ruleNamed(rule) ? otherCase(names, name) : nullptr;
            if (!other)
                return;
            path = folder + other->second;
            why = wrongCase(*other);
        };
        respell("certificate_missing", proper.signCert);
        respell("key_missing", proper.signKey);
        if (why.rule == &ruleNamed("certificate_missing") && !names.empty())
            path = folder + names.begin()->second;
        find(path, judged.listed, why);
        for (const auto& [file, trouble] : judged.troubles)
            find(file, true, trouble);
        if (judged.listed)
            kmNames(folder, names);
    }

    /** Key-management files that the list did not find, or one without the other. */
    void kmNames(const std::string& folder, const Names& names)
    {
        const OwnFolderNames proper = ownFolderNames();
        for (const char* name : {proper.kmCert, proper.kmKey})
            if (const Names::value_type* other = otherCase(names, name))
                find(folder + other->second, true, wrongCase(*other));
        if (names.contains(proper.kmKey) && !names.contains(proper.kmCert))
            find(folder + names.at(proper.kmKey), true, by("km_certificate_missing", {folder + proper.kmCert}));
    }

    /** A pair outside of all stores is judged as one that a host hands over. */
    void outsidePair(const std::string& path, const Names& names)
    {
        const std::string folder = path.substr(0, path.rfind('/') + 1);
        const std::size_t before = m_hearing.candidates().size();
        m_listing.judgePair(contentOfFile(path), contentOfFile(keyBeside(folder, path, names)));
        if (m_hearing.candidates().size() > before && !m_hearing.candidates().back().listed) {
            Diagnosis why = m_hearing.candidates().back().diagnosis;
            if (!why.values.empty() && why.values[0].empty())
                why.values[0] = path;
            return find(path, false, why);
        }
        find(path, false, whyNotSearched(m_place, {}, false));
    }

    static std::string keyBeside(const std::string& folder, const std::string& path, const Names& names)
    {
        if (const auto key = names.find(ownFolderNames().signKey); key != names.end())
            return folder + key->second;
        const SharedFolderEndings endings = sharedFolderEndings();
        return path.substr(0, path.size() - std::min(path.size(), endings.signKey.size())).append(endings.signKey);
    }

    /** Copies whose places no list reads. */
    void copies(const CopyPlace& place, std::size_t depth)
    {
        int error = 0;
        for (const Item& item : itemsOf(place.folder, error)) {
            const std::string path = place.folder + item.name;
            if (!item.name.starts_with(place.prefix) || depth > deepestFolder || item.link)
                continue;
            if (S_ISREG(item.mode) && endsIgnoringCase(item.name, place.ending))
                find(path, false, by("copied_elsewhere", {path}));
            else if (S_ISDIR(item.mode) && place.prefix.empty())
                copies({path + "/", "", place.ending}, depth + 1);
        }
    }

    const DoctorQuestion& m_question;
    std::string m_base;
    StorePlace m_place;
    Hearing m_hearing;
    Listing m_listing;
    StoreReport m_report;
    std::set<std::pair<dev_t, ino_t>> m_seen; // links may lead in circles
    std::set<std::string> m_told;
};

StoreReport examineStores(const DoctorQuestion& question, int medium, const std::string& base)
{
    Examination examination(question, medium, base);
    examination.stores();
    return examination.report();
}

/** The folder that the store around @p path begins in; empty when it is in none. A name that is spelt as the layout has
 *  it counts more than one further up that is not: somebody's home folder may be called "gpki". */
fs::path baseAround(const fs::path& path)
{
    fs::path exact;
    fs::path inAnyCase;
    fs::path soFar;
    for (const fs::path& part : path) {
        if (exact.empty() && isOnTheWay({part.string()}))
            exact = soFar;
        if (inAnyCase.empty() && beginsAStore(part.string()))
            inAnyCase = soFar;
        soFar /= part;
    }
    return exact.empty() ? inAnyCase : exact;
}

bool holdsStores(const fs::path& folder)
{
    int error = 0;
    return std::ranges::any_of(
        itemsOf(folder.string(), error), [](const Item& item) { return beginsAStore(item.name); });
}

/** The part of a report that is about @p path. */
void keepBelow(StoreReport& report, const std::string& path)
{
    const bool isFolder = fs::is_directory(path);
    const std::string name = fs::path(path).filename().string();
    std::string prefix = isFolder ? path + "/" : path;
    if (!isFolder && ownFolderNames().proper(name))
        prefix = path.substr(0, path.rfind('/') + 1);
    else if (!isFolder && endsInOneOf(name, {".cer", ".key"}) && name.size() > 8)
        prefix = path.substr(0, path.size() - 8); // the stem that the files of a certificate share
    const auto isElsewhere = [&](const std::string& other) { return other != path && !other.starts_with(prefix); };
    std::erase_if(report.findings, [&](const Finding& finding) { return isElsewhere(finding.path); });
    std::erase_if(report.folders,
        [&](const SearchedPlace& place) { return isElsewhere(place.path) && !path.starts_with(place.path); });
}

} // namespace

StoreReport examineHome(const DoctorQuestion& question)
{
    return examineStores(question, SIGIL_MEDIUM_HARD_DISK, environment().homeFolder());
}

StoreReport examineDisk(const DoctorQuestion& question, const std::string& folder)
{
    return examineStores(question, SIGIL_MEDIUM_REMOVABLE_DISK, folder);
}

StoreReport examinePath(const DoctorQuestion& question, const std::string& path)
{
    const fs::path whole = fs::path(plainPath(fs::absolute(path).lexically_normal().string()));
    const fs::path asked = whole.has_filename() ? whole : whole.parent_path();
    const fs::path around = baseAround(asked);
    const fs::path base = around.empty() ? asked : around;
    std::error_code error; // of a folder that is not there, which is not the home folder
    const bool home = fs::equivalent(base, environment().homeFolder(), error);
    const int medium = home ? SIGIL_MEDIUM_HARD_DISK : SIGIL_MEDIUM_REMOVABLE_DISK;
    if (around.empty() && !holdsStores(asked)) {
        Examination examination(question, medium, base.string());
        examination.outside((fs::is_directory(asked) ? asked : asked.parent_path()).string());
        StoreReport report = examination.report();
        keepBelow(report, asked.string());
        return report;
    }
    StoreReport report = examineStores(question, medium, base.string());
    if (!around.empty())
        keepBelow(report, asked.string());
    return report;
}

} // namespace sigil
