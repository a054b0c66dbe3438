// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates and keys as the PKCS#12 functions of the faces receive them.
 */
#pragma once

#include "toolkit/engine/pkcs12/pkcs12.h"
#include "toolkit/engine/x509/object_list.h"

namespace toolkit {

/** Pairs of two lists: every certificate with the key that belongs to it. Throws SIGIL_TK_ARGUMENT when the lists are not
 *  equally long and SIGIL_TK_KEY_MISMATCH when a certificate has no key. */
std::vector<CertifiedKey> pairsOf(const Library& library, View certificates, View keys);
/** The certificates of an optional list. */
std::vector<Bytes> otherCertificates(const Library& library, View list);

ObjectList certificateList(const std::vector<CertifiedKey>& pairs);
ObjectList keyList(const std::vector<CertifiedKey>& pairs);
ObjectList certificateList(const std::vector<Bytes>& certificates);

} // namespace toolkit
