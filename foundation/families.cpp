// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/families.h"

#include "foundation/ascii.h"

#include <algorithm>

namespace sigil {

namespace {

constexpr const char* government[] = {"Government of Korea"};
constexpr const char* accredited[] = {
    "yessign", "SignKorea", "TradeSign", "CrossCert", "SignGate", "KICA", "NCASign"};
constexpr const char* defence[] = {"Ministry of National Defense"};
constexpr const char* privateCa[] = {"Halvard"};

constexpr const char* gpkiFolders[] = {"/GPKI/Certificate/class1/", "/GPKI/Certificate/class2/"};
constexpr const char* npkiFolders[] = {"/NPKI/yessign/USER/", "/NPKI/SignKorea/USER/", "/NPKI/TradeSign/USER/",
    "/NPKI/CrossCert/USER/", "/NPKI/SignGate/USER/", "/NPKI/KICA/USER/", "/NPKI/NCASign/USER/"};
constexpr const char* mpkiFolders[] = {"/MPKI/USER/"};
constexpr const char* ppkiFolders[] = {"/Halvard/TALOCERT/TALO/", "/NPKI/TALO/User/"};
constexpr const char* ppkiRemovableFolders[] = {"/Halvard/TALOCERT/TALO/", "/NPKI/TALO/User/", "/TALO/User/"};

consteval CertificateFiles filesInAFolder(const char* separator, bool probesKmCert)
{
    return {.mark = nullptr,
        .separator = separator,
        .signCert = "/signCert.der",
        .signKey = "/signPri.key",
        .kmCert = "/kmCert.der",
        .kmKey = "/kmPri.key",
        .probesKmCert = probesKmCert};
}

// Copies go to places that listing does not read, with other separators and capital letters: the layout is that of other
// systems' media and is kept exactly so.
constexpr CopyPart organisationAndDn[] = {CopyPart::Organisation, CopyPart::Dn};
constexpr CopyPart classAndCn[] = {CopyPart::ClassFolder, CopyPart::Cn};
constexpr CopyPart cnAlone[] = {CopyPart::Cn};

constexpr CopyLayout accreditedCopy{.signCert = "%s\\NPKI\\%s\\User\\%s\\SignCert.der",
    .signKey = "%s\\NPKI\\%s\\User\\%s\\SignPri.key",
    .kmCert = "%s\\NPKI\\%s\\User\\%s\\KmCert.der",
    .kmKey = "%s\\NPKI\\%s\\User\\%s\\KmPri.key",
    .parts = organisationAndDn};
constexpr CopyLayout bodyOnHardDisk{.signCert = "%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_sig.cer",
    .signKey = "%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_sig.key",
    .kmCert = "%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_env.cer",
    .kmKey = "%sLibrary/Preferences/GPKI/Certificate/%s/class2/%s_env.key",
    .parts = classAndCn};
// The signing certificates of persons alone have a "/" behind the base folder; kept so.
constexpr CopyLayout personOnHardDisk{.signCert = "%s/Library/Preferences/GPKI/Certificate/%s/class2/%s_sig.cer",
    .signKey = bodyOnHardDisk.signKey,
    .kmCert = bodyOnHardDisk.kmCert,
    .kmKey = bodyOnHardDisk.kmKey,
    .parts = classAndCn};
constexpr CopyLayout bodyOnRemovable{.signCert = "%s\\GPKI\\Certificate\\class1\\%s_sig.cer",
    .signKey = "%s\\GPKI\\Certificate\\class1\\%s_sig.key",
    .kmCert = "%s\\GPKI\\Certificate\\class1\\%s_env.cer",
    .kmKey = "%s\\GPKI\\Certificate\\class1\\%s_env.key",
    .parts = cnAlone};
constexpr CopyLayout personOnRemovable{.signCert = "%s\\GPKI\\Certificate\\class2\\%s_sig.cer",
    .signKey = "%s\\GPKI\\Certificate\\class2\\%s_sig.key",
    .kmCert = "%s\\GPKI\\Certificate\\class2\\%s_env.cer",
    .kmKey = "%s\\GPKI\\Certificate\\class2\\%s_env.key",
    .parts = cnAlone};
constexpr CopyLayouts accreditedCopies{.hardDisk = &accreditedCopy,
    .removable = &accreditedCopy,
    .personOnHardDisk = &accreditedCopy,
    .personOnRemovable = &accreditedCopy};
constexpr CopyLayouts noCopies{};

constexpr WarningPeriod usualWarning{.days = 30, .policy = nullptr, .daysWithThatPolicy = 0};

// Kept so: PPKI has two unused places in its hard-disk list, and although its folders on a removable disk are known, it
// has no place in the list there and is not searched. MPKI and PPKI paths carry a doubled "/".
constexpr Family table[] = {
    {.code = SIGIL_FAMILY_GPKI,
        .organisations = government,
        .hardDisk = {.folders = gpkiFolders, .places = 2},
        .removable = {.folders = gpkiFolders, .places = 2},
        .files = {.mark = "_sig.cer",
            .separator = "",
            .signCert = "",
            .signKey = ".key",
            .kmCert = "_env.cer",
            .kmKey = "_env.key",
            .probesKmCert = false},
        .copies = {.hardDisk = &bodyOnHardDisk,
            .removable = &bodyOnRemovable,
            .personOnHardDisk = &personOnHardDisk,
            .personOnRemovable = &personOnRemovable},
        .warning = {.days = 100, .policy = "1 2 410 100001 5 3", .daysWithThatPolicy = 90}},
    {.code = SIGIL_FAMILY_NPKI,
        .organisations = accredited,
        .hardDisk = {.folders = npkiFolders, .places = 7},
        .removable = {.folders = npkiFolders, .places = 7},
        .files = filesInAFolder("", true),
        .copies = accreditedCopies,
        .warning = usualWarning},
    {.code = SIGIL_FAMILY_MPKI,
        .organisations = defence,
        .hardDisk = {.folders = mpkiFolders, .places = 1},
        .removable = {.folders = mpkiFolders, .places = 1},
        .files = filesInAFolder("/", true),
        .copies = accreditedCopies,
        .warning = usualWarning},
    {.code = SIGIL_FAMILY_PPKI,
        .organisations = privateCa,
        .hardDisk = {.folders = ppkiFolders, .places = 4},
        .removable = {.folders = ppkiRemovableFolders, .places = 0},
        .files = filesInAFolder("/", false),
        .copies = noCopies,
        .warning = usualWarning},
};

/** The first row for which @p fits; null for none. */
template <class Condition>
const Family* firstFamily(Condition fits)
{
    const Family* found = std::find_if(std::begin(table), std::end(table), fits);
    return found == std::end(table) ? nullptr : found;
}

} // namespace

std::span<const Family> families() { return table; }

const Family* familyWithCode(int code)
{
    return firstFamily([&](const Family& family) { return family.code == code; });
}

const Family* familyOfOrganisation(std::string_view organisation)
{
    return firstFamily([&](const Family& family) {
        return std::any_of(family.organisations.begin(), family.organisations.end(),
            [&](const char* name) { return equalsIgnoringCase(name, organisation); });
    });
}

int warningDays(int family, std::string_view policy)
{
    const Family* row = familyWithCode(family);
    const WarningPeriod& period = row ? row->warning : usualWarning;
    return period.policy && policy.find(period.policy) != policy.npos ? period.daysWithThatPolicy : period.days;
}

} // namespace sigil
