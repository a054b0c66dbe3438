// GPKI_PFX_: PKCS#12 files with a signing pair and, when there is one, a key-management pair.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/pkcs12/pkcs12.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_PFX_Export(void* context, char* password, BINSTR* signCertificate, BINSTR* signKey,
    BINSTR* kmCertificate, BINSTR* kmKey, BINSTR* out)
{
    return call(context, [&](Context& state) {
        Pkcs12Content content{{{toBytes(in(signCertificate)), toSecret(in(signKey))}}, {}};
        if (!inOptional(kmCertificate).empty())
            content.pairs.push_back({toBytes(in(kmCertificate)), toSecret(in(kmKey))});
        put(writePkcs12(state.library(), content, in(password), SIGIL_TK_PFX_3DES), out);
    });
}

/** The records of the key-management pair stay as they are when the file has none. */
TOOLKIT_FUNCTION GPKI_PFX_Import(void* context, char* password, BINSTR* file, BINSTR* signCertificate,
    BINSTR* signKey, BINSTR* kmCertificate, BINSTR* kmKey)
{
    return call(context, [&](Context& state) {
        const Pkcs12Content content = readPkcs12(state.library(), in(file), in(password), SIGIL_TK_PFX_STRICT);
        const CertifiedKey& sign = signingPair(state.library(), content);
        const CertifiedKey* const km = keyManagementPair(state.library(), content);
        if (km)
            put({{sign.certificate, signCertificate}, {sign.keyInfo, signKey}, {km->certificate, kmCertificate},
                {km->keyInfo, kmKey}});
        else
            put({{sign.certificate, signCertificate}, {sign.keyInfo, signKey}});
    });
}
