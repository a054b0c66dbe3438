// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Where the files of a store lie, and the promise that no existing store is touched.
 */
#pragma once

#include "tools/sample-store/plan.h"

#include <filesystem>
#include <vector>

namespace sample {

/** The four files of one certificate. */
struct CertificateFiles {
    std::filesystem::path signCert;
    std::filesystem::path signKey;
    std::filesystem::path kmCert;
    std::filesystem::path kmKey;
};

/** Families with a folder for each certificate name it after the subject: …/<subject>/signCert.der, signPri.key,
 *  kmCert.der, kmPri.key. The government family puts …/<CN>_sig.cer, _sig.key, _env.cer and _env.key side by side. */
CertificateFiles filesOf(const std::filesystem::path& target, const PlannedCertificate& planned);

/** The PKCS#12 file of a certificate, pfx/<CN>_<serial number in hex>.pfx. */
std::filesystem::path pfxFileOf(const std::filesystem::path& target, const PlannedCertificate& planned);

/** Folder of the issuers' certificates. */
std::filesystem::path issuerFolder(const std::filesystem::path& target);

/** Makes every folder of the store, for the user alone. Throws std::runtime_error before anything is made when the
 *  target holds a store already (NPKI, GPKI, MPKI, Halvard, ca or pfx, as far as the plan needs them, exists in
 *  whatever form), or when a path would be longer than the library reads. */
void makeFolders(const std::filesystem::path& target, const std::vector<PlannedCertificate>& plan, bool pfx);

} // namespace sample
