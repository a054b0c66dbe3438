// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Makes the certificates and keys of a plan and writes them.
 */
#pragma once

#include "toolkit/engine/base/library.h"
#include "toolkit/engine/pkcs12/pkcs12.h"
#include "tools/sample-store/issuer.h"
#include "tools/sample-store/key_pool.h"
#include "tools/sample-store/layout.h"
#include "tools/sample-store/options.h"
#include "tools/sample-store/plan.h"

#include <filesystem>
#include <vector>

namespace sample {

class Store {
public:
    /** The folders of the plan are there: makeFolders(). */
    Store(const Options& options, const std::vector<PlannedCertificate>& plan);

    /** Makes and writes everything. Throws std::runtime_error or toolkit::Error; what was written so far stays. */
    void write();

private:
    toolkit::CertifiedKey makeSigningPair(const PlannedCertificate& planned, EVP_PKEY* key);
    toolkit::CertifiedKey makeKeyManagementPair(const PlannedCertificate& planned, EVP_PKEY* key);
    void writeCertificate(const PlannedCertificate& planned, std::size_t i);
    void writePair(const toolkit::CertifiedKey& pair, const std::filesystem::path& certFile,
        const std::filesystem::path& keyFile, int encryption);
    void writePfx(const PlannedCertificate& planned, const toolkit::Pkcs12Content& content);
    void writeIssuers();

    const Options& m_options;
    const std::vector<PlannedCertificate>& m_plan;
    toolkit::Library m_library;
    KeyPool m_keys;
    Issuers m_issuers;
};

} // namespace sample
