// GPKI_PRIKEY_ and GPKI_VID_: private keys and the identity of their holders.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/status/ivs.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_PRIKEY_Encrypt(void* context, int algorithm, char* password, BINSTR* key, BINSTR* out)
{
    return call(context,
        [&](Context& state) { put(encryptKeyFile(state.library(), algorithm, in(key), in(password)), out); });
}

TOOLKIT_FUNCTION GPKI_PRIKEY_Decrypt(void* context, char* password, BINSTR* file, BINSTR* out)
{
    return call(
        context, [&](Context& state) { put(decryptKeyFile(state.library(), in(file), in(password)), out); });
}

TOOLKIT_FUNCTION GPKI_PRIKEY_ChangePasswd(
    void* context, char* oldPassword, char* newPassword, BINSTR* file, BINSTR* out)
{
    return call(context, [&](Context& state) {
        put(changePassword(state.library(), in(file), in(oldPassword), in(newPassword)), out);
    });
}

TOOLKIT_FUNCTION GPKI_PRIKEY_CheckKeyPair(void* context, BINSTR* certificate, BINSTR* key)
{
    return call(context, [&](Context& state) {
        checkKeyPair(state.library(), {state.library(), in(certificate)}, in(key));
    });
}

TOOLKIT_FUNCTION GPKI_VID_GetRandomFromPriKey(void* context, BINSTR* key, BINSTR* out)
{
    return call(context, [&](Context&) { put(identityRandom(in(key)), out); });
}

TOOLKIT_FUNCTION GPKI_VID_Verify(void* context, BINSTR* certificate, BINSTR* random, char* idn)
{
    return call(context, [&](Context& state) {
        verifyIdentity(state.library(), {state.library(), in(certificate)}, in(random), in(idn));
    });
}

TOOLKIT_FUNCTION GPKI_VID_VerifyByIVS(
    void* context, char* confFile, BINSTR* certificate, BINSTR* random, char* idn, BINSTR* server)
{
    return call(context, [&](Context& state) {
        verifyIdentityByIvs(state.library(), inPath(state, confFile), {state.library(), in(certificate)},
            in(random), in(idn), {state.library(), in(server)});
    });
}
