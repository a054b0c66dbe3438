// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A store whose secrets are known without ever having been in the memory that is searched: other processes make them.
 */
#pragma once

#include "tests/support/files.h"
#include "tests/support/mapped_file.h"
#include "tests/support/secret_hunt.h"

#include <map>
#include <memory>
#include <string>

/** One certificate of the family NPKI with two pairs of RSA keys of 2048 bits; its password is Korean. */
class SecretStore {
public:
    SecretStore();

    /** The store's own home folder. */
    std::string home() const { return m_folder.path("home"); }
    /** "signCert.der" and the like, or the only file of this ending. */
    std::string find(const std::string& name) const;
    /** Something else to be written below. */
    std::string path(const std::string& name) const { return m_folder.path(name); }

    /** "signCert.der", "signPri.key" and so on of the store, "pfx", and the secrets: "sign", "km" (keys, not encrypted),
     *  "random", "identity" (number), "password", "new", "wrong", each of the passwords also with ".UTF-16LE", ".UTF-16BE" and ".CP949". */
    MappedFile& operator[](const std::string& name);

    /** Of the keys their secret numbers. */
    SecretHunt hunt();

private:
    TemporaryFolder m_folder;
    std::map<std::string, std::unique_ptr<MappedFile>> m_mapped;
};
