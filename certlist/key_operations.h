// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Work on the private keys of a listed certificate.
 */
#pragma once

#include "certlist/entry.h"
#include "certlist/error_log.h"

#include <sigildesk/binary.h>

namespace sigil {

/** Part of the loaders, under whose operations' names it reports trouble. What has been decrypted is kept in the entry,
 *  also when a later step fails. */
class KeyOperations {
public:
    /** @param toolkit  façade handle */
    KeyOperations(void* toolkit, ErrorLog& log)
        : m_toolkit(toolkit)
        , m_log(log)
    {
    }

    /** Decrypts one key into its place in the entry; nothing is logged. @return 0; a toolkit code */
    int decryptOne(tagCERTINFO& entry, const EntryField& stored, const EntryField& key, char* szPassword);
    /** Decrypts the keys. @return 0; 1113; 1114; a toolkit code */
    int decrypt(tagCERTINFO& entry, char* szPassword, CBinary& signKey, CBinary& kmKey);
    /** Takes the identity random value out of the signing key, which is decrypted first when it is not yet.
     *  @return 0; 1118; 1119 */
    int takeRandom(tagCERTINFO& entry, char* szPassword);
    /** The same from a key that is decrypted.
     *  @param where  name of the calling function in the log
     *  @return 0; 1118 the key holds none; 1119 it could not be read */
    int readRandom(tagCERTINFO& entry, const char* where);
    /** @return 0; 1114; 1118; 1119; 1132 */
    int verifyIdentity(tagCERTINFO& entry, char* szIdn, char* szPassword);
    /** Encrypts the key files anew. Nothing is undone when the second file fails. @return 0; 1113; 1123; 1124; 1131 */
    int changePassword(tagCERTINFO& entry, char* szOldPassword, char* szNewPassword);
    /** Algorithm code with which the key of a certificate is encrypted for a copy. @return 0; 1001; 1122 */
    int algorithmFor(const CBinary& certificate, int& algorithm);

private:
    int decryptForRandom(tagCERTINFO& entry, char* szPassword);
    int decryptForIdentity(tagCERTINFO& entry, char* szPassword);
    int changeFile(
        tagCERTINFO& entry, const EntryField& stored, char* path, char* szOldPassword, char* szNewPassword);

    void* m_toolkit;
    ErrorLog& m_log;
};

} // namespace sigil
