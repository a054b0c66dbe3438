// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/cms_parts.h"

#include "toolkit/engine/base/error.h"

namespace toolkit {

CmsHandle parseCms(const Library& library, View der, int malformed)
{
    const unsigned char* at = der.data();
    CmsHandle cms = decodeInto(CmsHandle(CMS_ContentInfo_new_ex(library.context(), nullptr)),
        [&](CMS_ContentInfo** target) { return d2i_CMS_ContentInfo(target, &at, static_cast<long>(der.size())); });
    require(cms && at == der.data() + der.size(), malformed);
    return cms;
}

Bytes encodeCms(const CMS_ContentInfo* cms)
{
    Bytes der = encode<Bytes>(cms, i2d_CMS_ContentInfo);
    require(!der.empty(), SIGIL_TK_INTERNAL, "message");
    return der;
}

std::vector<CMS_SignerInfo*> signersOf(CMS_ContentInfo* cms)
{
    std::vector<CMS_SignerInfo*> signers;
    STACK_OF(CMS_SignerInfo)* const found = CMS_get0_SignerInfos(cms);
    for (int i = 0; found && i < sk_CMS_SignerInfo_num(found); ++i)
        signers.push_back(sk_CMS_SignerInfo_value(found, i));
    return signers;
}

int digestNid(CMS_SignerInfo* signer)
{
    X509_ALGOR* algorithm = nullptr;
    CMS_SignerInfo_get0_algs(signer, nullptr, nullptr, &algorithm, nullptr);
    return OBJ_obj2nid(algorithm->algorithm);
}

} // namespace toolkit
