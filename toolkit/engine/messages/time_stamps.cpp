// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/time_stamps.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/messages/cms_parts.h"
#include "toolkit/engine/time/time_stamp_token.h"

namespace toolkit {

MessageLayout withTimeStamp(const Library& library, const Message& message, int index, View token)
{
    const CmsHandle cms = parseCms(library, message.require(oid::signedData).layout().skeleton());
    const auto signers = signersOf(cms.get());
    require(index >= 0 && static_cast<std::size_t>(index) < signers.size(), SIGIL_TK_CMS_NOBODY);
    CMS_SignerInfo* const signer = signers[static_cast<std::size_t>(index)];
    TimeStampToken(library, token).requireAbout(library, octets(CMS_SignerInfo_get0_signature(signer)));
    constexpr int kind = NID_id_smime_aa_timeStampToken;
    for (int at = 0; (at = CMS_unsigned_get_attr_by_NID(signer, kind, -1)) >= 0;)
        X509_ATTRIBUTE_free(CMS_unsigned_delete_attr(signer, at));
    require(CMS_unsigned_add1_attr_by_NID(
                signer, kind, V_ASN1_SEQUENCE, token.data(), static_cast<int>(token.size())) == 1,
        SIGIL_TK_INTERNAL, "attribute");
    return layoutOf(encodeCms(cms.get()));
}

} // namespace toolkit
