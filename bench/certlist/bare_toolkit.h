// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The least that listing a certificate can cost: the toolkit's own functions, looked up once, and no library around them.
 */
#pragma once

#include <memory>
#include <string>

/** Files of one certificate; the last two are empty without a key-management pair. */
struct CertificateFiles {
    std::string signCert;
    std::string signKey;
    std::string kmCert;
    std::string kmKey;
};

class BareToolkit {
public:
    explicit BareToolkit(const std::string& library);
    ~BareToolkit();
    BareToolkit(const BareToolkit&) = delete;
    BareToolkit& operator=(const BareToolkit&) = delete;

    /** Reads the files and every text that an entry of the list has. @return whether the toolkit took them */
    bool read(const CertificateFiles& files);

private:
    struct Functions;

    void* m_library;
    void* m_context = nullptr;
    std::unique_ptr<Functions> m_functions;
};
