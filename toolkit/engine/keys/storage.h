// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates and keys as files: what the media functions of both faces do on the disk.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/context.h"
#include "toolkit/engine/base/library.h"

#include <string>
#include <string_view>

namespace toolkit {

/** A certificate file as DER. Throws SIGIL_TK_CERT_MALFORMED when it is not a certificate. */
Bytes readCertificate(const Library& library, const std::string& path);
void writeCertificate(const Library& library, const std::string& path, View certificate);

/** The decrypted key of a key file. */
Secret readPrivateKey(const Library& library, const std::string& path, std::string_view password);
/** @param algorithm a SigilToolkitKeyEncryption */
void writePrivateKey(
    const Library& library, int algorithm, const std::string& path, std::string_view password, View keyInfo);

/** Deletes a key file that @p password opens; a wrong password leaves it. */
void deletePrivateKey(const Library& library, const std::string& path, std::string_view password);

/** Makes relative paths begin at @p folder; an empty text goes back to the process's folder. Throws
 *  SIGIL_TK_FILE_NOT_FOUND unless it is a folder. */
void loadMedium(Context& context, std::string_view folder);

} // namespace toolkit
