// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One certificate as it is shown and used.
 */
#pragma once

#include "jobs/crypto.h"

#include <sigildesk/records.h>

#include <ctime>
#include <string>
#include <vector>

namespace host {

/** The files of a pair. Empty where there is none. */
struct PairFiles {
    std::string certificate, key, kmCertificate, kmKey;
};

/** A certificate; texts in UTF-8, paths as the file system has them. */
struct Certificate {
    int index = -1;     ///< in the list of its medium; -1 when it was named by its file
    std::string medium; ///< "disk", or the folder that was searched; empty when it was named by its file
    std::string name;   ///< common name of the subject
    std::string subject, issuer, issuerName;
    std::string serial; ///< hexadecimal
    std::string use;    ///< name of the policy
    std::string policy; ///< its OID, "1.2.410…"
    int family = 0;     ///< enum SigilFamily; 0 unknown
    std::time_t from = 0, to = 0;
    bool expired = false, expiresSoon = false;
    int daysLeft = 0; ///< whole days; negative when it has expired
    PairFiles files;
    std::string der, kmDer;

    std::string version, signatureAlgorithm, keyAlgorithm, keyLength, keyUsage, policies, alternativeName,
        authorityKeyId, subjectKeyId, revocationList, authorityAccess;
};

/** What a record of the library says. */
Certificate certificateOf(const tagCERTINFO& entry);

/** The certificate of a file or of standard input, read with the reader of the list. Throws Failure. */
Certificate readCertificate(const Setting& setting, const Crypto& crypto, const std::string& content);

/** "2026-01-31T23:59:59+09:00", in the machine's zone. */
std::string isoTime(std::time_t time);
/** The day alone. */
std::string day(std::time_t time);
/** A time of the library, "YYYY-MM-DD HH:MM:SS" in local standard time. */
std::time_t timeOf(const std::string& text);
/** A time for the library. */
std::string libraryTime(std::time_t time);

/** "npki"; empty for an unknown family. */
std::string familyName(int family);
/** 0 for an unknown name. */
int familyNamed(const std::string& name);

/** "1.2.3" of "1 2 3". */
std::string dotted(std::string oid);

} // namespace host
