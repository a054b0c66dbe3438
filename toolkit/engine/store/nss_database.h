// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  An NSS database (cert9.db, key4.db), opened by NSS's own softokn module. That is one for the whole process: hosts may use
 *  it themselves, so that only a program of the toolkit's own does it here.
 */
#pragma once

#include "toolkit/engine/base/library.h"
#include "toolkit/engine/pkcs12/pkcs12.h"
#include "toolkit/engine/tokens/token_objects.h"
#include "toolkit/engine/tokens/token_session.h"

#include <string>
#include <vector>

namespace toolkit {

/** Without a password: a database that has one throws SIGIL_TK_TOKEN_LOGIN, one that cannot be opened SIGIL_TK_MEDIUM. One in a
 *  process. */
class NssDatabase {
public:
    enum class Access { Reading, Writing };

    /** @param folder is made, and a database without a password in it, when it is opened for writing and there is none */
    NssDatabase(const Library& library, const std::string& folder, Access access);

    /** DER of all certificates, in the order of the module. */
    std::vector<Bytes> certificates() const;
    /** Adds certificates and keys, all or none; what is there already stays as it is. */
    void add(const Pkcs12Content& content) const;

private:
    ObjectName nameFor(const Certificate& certificate) const;
    void addCertificate(ObjectWriting& writing, View der) const;
    void addKey(ObjectWriting& writing, const CertifiedKey& pair) const;

    const Library& m_library;
    TokenSession m_session;
};

} // namespace toolkit
