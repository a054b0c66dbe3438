// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "doctor/store_place.h"

#include "certlist/store_layout.h"
#include "foundation/ascii.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace sigil {

namespace {

/** How near a place comes to a folder that is searched, the nearest last. */
enum class Nearness { None, SomeSteps, OtherStyle, TooDeep, NoOwnFolder, LetterCase, Exact };

struct Match {
    Nearness nearness = Nearness::None;
    std::size_t common = 0;         ///< steps that are the same but for letter case
    const Family* family = nullptr; ///< set with every nearness but None
    std::string folder;
    bool searchedHere = false; ///< on this medium
};

std::size_t commonSteps(const Steps& a, const Steps& b)
{
    std::size_t common = 0;
    while (common < a.size() && common < b.size() && equalsIgnoringCase(a[common], b[common]))
        ++common;
    return common;
}

Nearness nearnessOf(const Steps& place, const Steps& folder, std::size_t common, bool styleFits, std::size_t own)
{
    if (common == 0)
        return Nearness::None;
    if (common < folder.size())
        return Nearness::SomeSteps;
    if (!styleFits)
        return Nearness::OtherStyle;
    if (place.size() < folder.size() + own)
        return Nearness::NoOwnFolder;
    if (place.size() > folder.size() + own)
        return Nearness::TooDeep;
    const bool exact = std::equal(folder.begin(), folder.end(), place.begin());
    return exact ? Nearness::Exact : Nearness::LetterCase;
}

bool isNearer(const Match& a, const Match& b)
{
    if (a.nearness != b.nearness)
        return a.nearness > b.nearness;
    return a.common != b.common ? a.common > b.common : a.searchedHere && !b.searchedHere;
}

template <class Visit>
void forEachFolder(Visit visit)
{
    for (const Family& family : families())
        for (const StoreFolders* folders : {&family.hardDisk, &family.removable})
            for (const char* folder : folders->folders)
                visit(family, *folders, folder);
}

Match nearest(const StorePlace& place, const Steps& steps, bool fileStyle)
{
    Match best;
    forEachFolder([&](const Family& family, const StoreFolders& folders, const char* folder) {
        const Steps wanted = stepsOf(folder);
        const std::size_t common = commonSteps(steps, wanted);
        const bool styleFits = (family.files.mark != nullptr) == fileStyle;
        const Match match{nearnessOf(steps, wanted, common, styleFits, fileStyle ? 0 : 1), common, &family, folder,
            &folders == &foldersOf(family, place.medium) && folders.places > 0};
        if (isNearer(match, best))
            best = match;
    });
    return best;
}

/** What may stand in the place of the first step that leads nowhere. */
std::string knownNames(const Steps& steps, std::size_t common)
{
    std::set<std::string> names;
    forEachFolder([&](const Family&, const StoreFolders&, const char* folder) {
        const Steps wanted = stepsOf(folder);
        if (commonSteps(steps, wanted) == common) // and goes on, or it were the nearest
            names.insert(wanted[common]);
    });
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

std::string joined(const Steps& steps)
{
    std::string text;
    for (const std::string& step : steps)
        text += "/" + step;
    return text + "/";
}

/** True when the families' folders of this medium hold the folder of @p match. */
bool isSearched(const StorePlace& place, const Match& match)
{
    const StoreFolders& folders = foldersOf(*match.family, place.medium);
    return folders.places > 0 &&
        std::ranges::any_of(folders.folders, [&](const char* folder) { return match.folder == folder; });
}

Diagnosis explained(const StorePlace& place, const Steps& steps, const Match& match)
{
    switch (match.nearness) {
    case Nearness::Exact:
        if (!isSearched(place, match))
            return by("family_not_on_medium", {familyName(match.family->code), match.folder});
        return (place.wantedFamilies & match.family->code) == 0
            ? by("family_not_wanted", {familyName(match.family->code)})
            : by("folder_not_searched", {match.folder});
    case Nearness::LetterCase:
        return by("folder_letter_case",
            {joined({steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(match.common)}), match.folder});
    case Nearness::NoOwnFolder:
        return by("no_folder_of_its_own", {match.folder});
    case Nearness::TooDeep:
        return by("too_deep", {match.folder});
    case Nearness::OtherStyle:
        return by("names_of_other_family", {familyName(match.family->code), match.folder});
    case Nearness::SomeSteps:
        return by("folder_not_known",
            {steps.size() > match.common ? steps[match.common] : "/", knownNames(steps, match.common)});
    default:
        return by("outside_store", {knownNames({}, 0)});
    }
}

/** The files of the families whose certificates share a folder, or have one each. */
const CertificateFiles& filesOf(bool shared)
{
    return std::ranges::find_if(families(), [&](const Family& family) {
        return (family.files.mark != nullptr) == shared;
    })->files;
}

/** What a format of the copies' paths begins with. */
CopyPlace placeOf(const std::string& base, std::string_view format)
{
    constexpr std::string_view value = "%s";
    const std::size_t second = format.find(value, value.size());
    const std::string fixed = base + std::string(format.substr(value.size(), second - value.size()));
    const std::size_t slash = fixed.rfind('/') + 1;
    return {fixed.substr(0, slash), fixed.substr(slash),
        std::string(format.substr(format.rfind(value) + value.size()))};
}

} // namespace

Steps stepsOf(std::string_view folder)
{
    Steps steps;
    while (!folder.empty()) {
        const std::size_t end = std::min(folder.find('/'), folder.size());
        if (end > 0)
            steps.emplace_back(folder.substr(0, end));
        folder.remove_prefix(std::min(end + 1, folder.size()));
    }
    return steps;
}

Diagnosis whyNotSearched(const StorePlace& place, const Steps& steps, bool fileStyle)
{
    return explained(place, steps, nearest(place, steps, fileStyle));
}

bool isOnTheWay(const Steps& steps)
{
    bool found = false;
    forEachFolder([&](const Family&, const StoreFolders&, const char* folder) {
        const Steps wanted = stepsOf(folder);
        found = found || (steps.size() <= wanted.size() && std::equal(steps.begin(), steps.end(), wanted.begin()));
    });
    return found;
}

bool holdsCertificates(const Steps& steps, bool fileStyle)
{
    bool found = false;
    forEachFolder([&](const Family& family, const StoreFolders&, const char* folder) {
        const Steps wanted = stepsOf(folder);
        found = found ||
            ((family.files.mark != nullptr) == fileStyle && steps.size() == wanted.size() &&
                commonSteps(steps, wanted) == wanted.size());
    });
    return found;
}

bool beginsAStore(std::string_view name)
{
    bool found = false;
    forEachFolder([&](const Family&, const StoreFolders&, const char* folder) {
        found = found || equalsIgnoringCase(stepsOf(folder).front(), name);
    });
    return found;
}

const char* OwnFolderNames::proper(std::string_view name) const
{
    for (const char* known : {signCert, signKey, kmCert, kmKey})
        if (equalsIgnoringCase(name, known))
            return known;
    return nullptr;
}

OwnFolderNames ownFolderNames()
{
    const CertificateFiles& files = filesOf(false);
    return {files.signCert + 1, files.signKey + 1, files.kmCert + 1, files.kmKey + 1}; // behind the "/"
}

SharedFolderEndings sharedFolderEndings()
{
    const CertificateFiles& files = filesOf(true);
    const std::string mark = files.mark;
    const auto ending = [&](std::string_view replaced) {
        return mark.substr(0, mark.size() - replaced.size()).append(replaced);
    };
    return {mark, ending(files.signKey), ending(files.kmCert), ending(files.kmKey)};
}

std::vector<CopyPlace> copyPlaces(const std::string& base)
{
    std::vector<CopyPlace> places;
    for (const Family& family : families())
        for (const CopyLayout* layout : {family.copies.hardDisk, family.copies.removable,
                 family.copies.personOnHardDisk, family.copies.personOnRemovable}) {
            if (!layout)
                continue;
            CopyPlace place = placeOf(base, layout->signCert);
            const bool known = std::ranges::any_of(
                places, [&](const CopyPlace& p) { return p.folder == place.folder && p.prefix == place.prefix; });
            if (!known)
                places.push_back(std::move(place));
        }
    return places;
}

} // namespace sigil
