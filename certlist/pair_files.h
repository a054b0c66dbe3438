// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates and keys as files: write, read, delete.
 */
#pragma once

#include "certlist/cert_n_key.h"
#include "certlist/copy_target.h"
#include "certlist/error_log.h"

#include <sigildesk/records.h>

namespace sigil {

/** Part of the disk loader, under whose operations' names it reports trouble. */
class PairFiles {
public:
    /** @param toolkit  façade handle */
    PairFiles(void* toolkit, ErrorLog& log)
        : m_toolkit(toolkit)
        , m_log(log)
    {
    }

    /** What is written of a pair. */
    struct Contents {
        bool certificateOnly = false; ///< leave out the key
        bool keyAsIs = false;         ///< the key is encrypted already
    };
    /** Writes a certificate and its key. @return 0; 1001 something is missing; 1124 */
    int write(Contents contents, char* szPassword, int algorithm, char* certPath, char* keyPath,
        const CBinary& certificate, const CBinary& key);
    /** Writes the pairs of a copy, the keys encrypted anew: all of them, or those of before come back.
     *  @return 0; 1001 something is missing; 1124 */
    int writeCopy(char* szPassword, int algorithm, CertPaths& paths, const CertNKey& source);
    /** Writes an exported file as a whole. @return 0; 1124 it could not be brought to the disk; a toolkit code */
    int writeExport(const CBinary& pfx, char* path);
    /** Reads a certificate and a key file. @return 0; 1123 */
    int read(char* certPath, char* keyPath, CBinary& certificate, CBinary& key);
    /** Deletes an entry's files. @return 0; 1113; 1125 */
    int remove(tagCERTINFO& entry, char* szPassword);

private:
    int writeLogged(const CBinary& data, char* path);
    int writeEncrypted(const CBinary& key, char* szPassword, int algorithm, char* path);
    int readLogged(char* path, CBinary& out);
    int notOnDisk(const char* where, const char* errorName, int result);
    int checkDeletion(tagCERTINFO& entry, char* szPassword);
    int deletePairs(tagCERTINFO& entry, char* szPassword);
    int deletePair(char* szPassword, int kind, char* keyPath, char* certPath);

    void* m_toolkit;
    ErrorLog& m_log;
};

} // namespace sigil
