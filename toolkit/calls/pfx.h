// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#12 files: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/pkcs12/pairs.h"
#include "toolkit/engine/pkcs12/pkcs12.h"

#include <initializer_list>
#include <vector>

namespace toolkit::calls {

inline Pkcs12Content onePair(const Context& context, BINSTR* certificate, BINSTR* key, BINSTR* others)
{
    return {
        {{toBytes(in(certificate)), toSecret(in(key))}}, otherCertificates(context.library(), inOptional(others))};
}

inline void pfxExport(Context& state, int option, char* password, BINSTR* certificate, BINSTR* key, BINSTR* out)
{
    put(writePkcs12(state.library(), onePair(state, certificate, key, nullptr), in(password), option), out);
}

/** With the certificates of authorities, in the protection of SIGIL_TK_PFX_3DES. */
inline void pfxExport2(
    Context& state, char* password, BINSTR* certificate, BINSTR* key, BINSTR* others, BINSTR* out)
{
    const Pkcs12Content content = onePair(state, certificate, key, others);
    put(writePkcs12(state.library(), content, in(password), SIGIL_TK_PFX_3DES), out);
}

inline void pfxImport(
    Context& state, char* password, BINSTR* file, BINSTR* certificate, BINSTR* key, BINSTR* others)
{
    const Pkcs12Content content = readPkcs12(state.library(), in(file), in(password), SIGIL_TK_PFX_STRICT);
    const CertifiedKey& pair = signingPair(state.library(), content);
    const Secret otherBytes = certificateList(content.others).encode();
    if (others)
        put({{pair.certificate, certificate}, {pair.keyInfo, key}, {otherBytes, others}});
    else
        put({{pair.certificate, certificate}, {pair.keyInfo, key}});
}

inline void pfxExportPairs(Context& state, char* password, BINSTR* signCertificate, BINSTR* signKey,
    BINSTR* kmCertificate, BINSTR* kmKey, BINSTR* out)
{
    Pkcs12Content content{{{toBytes(in(signCertificate)), toSecret(in(signKey))}}, {}};
    if (!inOptional(kmCertificate).empty())
        content.pairs.push_back({toBytes(in(kmCertificate)), toSecret(in(kmKey))});
    put(writePkcs12(state.library(), content, in(password), SIGIL_TK_PFX_3DES), out);
}

/** Several pairs: certificates beside certificates, keys beside keys. */
inline void pfxExportLists(Context& state, int option, const char* password, BINSTR* certificates, BINSTR* keys,
    BINSTR* others, BINSTR* out)
{

    const Pkcs12Content content{pairsOf(state.library(), in(certificates), in(keys)),
        otherCertificates(state.library(), inOptional(others))};
    put(writePkcs12(state.library(), content, in(password), option), out);
}

/** Lists come in records that hold something on entry, which is released. Either all are filled or none. */
inline void putLists(std::initializer_list<Output> lists)
{
    std::vector<BINSTR> before;
    for (const Output& list : lists)
        before.push_back(list.record ? *list.record : BINSTR{});
    put(lists);
    for (BINSTR& bytes : before)
        release(&bytes);
}

inline void pfxImportLists(Context& state, int mode, const char* password, BINSTR* file, BINSTR* certificates,
    BINSTR* keys, BINSTR* others)
{

    const Pkcs12Content content = readPkcs12(state.library(), in(file), in(password), mode);
    const Secret certificateBytes = certificateList(content.pairs).encode();
    const Secret keyBytes = keyList(content.pairs).encode();
    const Secret otherBytes = certificateList(content.others).encode();
    if (others)
        putLists({{certificateBytes, certificates}, {keyBytes, keys}, {otherBytes, others}});
    else
        putLists({{certificateBytes, certificates}, {keyBytes, keys}});
}

/** The records of the key-management pair stay as they are when the file has none. */
inline void pfxImportPairs(Context& state, char* password, BINSTR* file, BINSTR* signCertificate, BINSTR* signKey,
    BINSTR* kmCertificate, BINSTR* kmKey)
{
    const Pkcs12Content content = readPkcs12(state.library(), in(file), in(password), SIGIL_TK_PFX_STRICT);
    const CertifiedKey& sign = signingPair(state.library(), content);
    const CertifiedKey* const km = keyManagementPair(state.library(), content);
    if (km)
        put({{sign.certificate, signCertificate}, {sign.keyInfo, signKey}, {km->certificate, kmCertificate},
            {km->keyInfo, kmKey}});
    else
        put({{sign.certificate, signCertificate}, {sign.keyInfo, signKey}});
}

} // namespace toolkit::calls
