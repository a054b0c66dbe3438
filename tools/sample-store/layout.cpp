// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/layout.h"

#include "tools/sample-store/hex.h"

#include <set>
#include <stdexcept>

namespace sample {

namespace fs = std::filesystem;

namespace {

/** The list processor forms paths in fields of 260 bytes, and doubles a "/" in some of them. */
constexpr std::size_t longestPath = 258;

fs::path certificateFolder(const fs::path& target, const PlannedCertificate& planned)
{
    const fs::path folder = target / planned.kind->folder;
    return planned.kind->family == Family::Gpki ? folder : folder / planned.subject.text();
}

fs::path pfxFolder(const fs::path& target) { return target / "pfx"; }

/** Folders right below the target; none of them may exist. */
std::set<fs::path> topFolders(const fs::path& target, const std::vector<PlannedCertificate>& plan, bool pfx)
{
    std::set<fs::path> tops = {issuerFolder(target)};
    for (const PlannedCertificate& planned : plan)
        tops.insert(target / *fs::path(planned.kind->folder).begin());
    if (pfx)
        tops.insert(pfxFolder(target));
    return tops;
}

void requireShortPaths(const fs::path& target, const std::vector<PlannedCertificate>& plan)
{
    for (const PlannedCertificate& planned : plan)
        if (filesOf(target, planned).signCert.native().size() > longestPath)
            throw std::runtime_error(
                "the target's path is too long: the library reads certificate paths of at most " +
                std::to_string(longestPath) + " bytes");
}

} // namespace

CertificateFiles filesOf(const fs::path& target, const PlannedCertificate& planned)
{
    const fs::path folder = certificateFolder(target, planned);
    if (planned.kind->family != Family::Gpki)
        return {folder / "signCert.der", folder / "signPri.key", folder / "kmCert.der", folder / "kmPri.key"};
    const std::string id = planned.subject.commonName();
    return {folder / (id + "_sig.cer"), folder / (id + "_sig.key"), folder / (id + "_env.cer"),
        folder / (id + "_env.key")};
}

fs::path pfxFileOf(const fs::path& target, const PlannedCertificate& planned)
{
    return pfxFolder(target) / (planned.subject.commonName() + "_" + hexText(planned.serial) + ".pfx");
}

fs::path issuerFolder(const fs::path& target) { return target / "ca"; }

void makeFolders(const fs::path& target, const std::vector<PlannedCertificate>& plan, bool pfx)
{
    const std::set<fs::path> tops = topFolders(target, plan, pfx);
    for (const fs::path& top : tops)
        if (fs::exists(fs::symlink_status(top)))
            throw std::runtime_error(top.string() +
                " exists already. sample-store never writes into an existing certificate folder: choose another "
                "--target. Nothing was written.");
    requireShortPaths(target, plan);
    fs::create_directories(target);
    for (const fs::path& top : tops)
        if (!fs::create_directory(top))
            throw std::runtime_error(top.string() + " was made by someone else at the same time");
    for (const PlannedCertificate& planned : plan)
        fs::create_directories(certificateFolder(target, planned));
}

} // namespace sample
