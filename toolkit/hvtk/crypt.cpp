// HVTK_CRYPT_: signatures, hashes, codes and encryption.

#include "toolkit/engine/asymmetric.h"
#include "toolkit/engine/digest.h"
#include "toolkit/engine/face.h"
#include "toolkit/engine/private_key.h"
#include "toolkit/engine/settings.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CRYPT_GenRandom(void* context, int length, BINSTR* out)
{
    return call(context, [&](Context& state) { put(randomBytes(state.library(), length), out); });
}

/** The certificate must belong to the key: a signature under the wrong one would verify nowhere. */
TOOLKIT_FUNCTION HVTK_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* key, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, [&](Context& state) {
        checkKeyPair(state.library(), {state.library(), in(certificate)}, in(key));
        put(sign(state.library(), signatureScheme(state, hash), in(key), in(data)), signature);
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, [&](Context& state) {
        verify(state.library(), signatureScheme(state, hash), {state.library(), in(certificate)}, in(data),
            in(signature));
    });
}
