// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The certificates that the programs of a desktop share: the user's NSS database. The program `nss-store` opens it.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/** Codes: SIGIL_TK_MEDIUM when the database cannot be opened or written, SIGIL_TK_TOKEN_LOGIN when it has a password. */
class SystemStore {
public:
    /** Goes to another database, which need not exist. @param folder empty: the user's */
    void choose(std::string folder);

    /** DER of all certificates, as they are when this is called for the first time after choose() or a change of the toolkit's own;
     *  nothing when there is no database. */
    const std::optional<std::vector<Bytes>>& certificates();
    /** One of them. Throws SIGIL_TK_INDEX, and SIGIL_TK_MEDIUM when there is no database. */
    const Bytes& certificate(int index);

    /** Adds a certificate; makes the database when there is none. Throws SIGIL_TK_CERT_MALFORMED. */
    void add(View certificate);
    /** Adds what a PKCS#12 file holds, all or nothing. Codes of readPkcs12(). */
    void import(View file, std::string_view password);

private:
    std::string folder() const;
    /** Throws SIGIL_TK_MEDIUM when something else stands in the place of a database. */
    bool exists() const;

    std::string m_folder; ///< empty: the user's
    bool m_listed = false;
    std::optional<std::vector<Bytes>> m_certificates;
};

} // namespace toolkit
