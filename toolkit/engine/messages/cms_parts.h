// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Small steps into OpenSSL's CMS structures.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/cms.h>

#include <vector>

namespace toolkit {

/** Throws @p malformed. */
CmsHandle parseCms(const Library& library, View der, int malformed = SIGIL_TK_CMS_MALFORMED);
Bytes encodeCms(const CMS_ContentInfo* cms);

/** The signers in the order of the message; owned by it. */
std::vector<CMS_SignerInfo*> signersOf(CMS_ContentInfo* cms);
/** NID of the hash that a signer uses. */
int digestNid(CMS_SignerInfo* signer);

/** The value of an attribute that occurs once with one value of @p type; null otherwise. */
template <class Getter>
void* onlyAttribute(Getter getter, const CMS_SignerInfo* signer, int nid, int type)
{
    constexpr int onlyOne = -3;
    return getter(const_cast<CMS_SignerInfo*>(signer), OBJ_nid2obj(nid), onlyOne, type);
}

} // namespace toolkit
