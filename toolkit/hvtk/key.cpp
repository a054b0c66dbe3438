// HVTK_PRIKEY_ and HVTK_VID_: private keys and the identity of their holders.

#include "toolkit/calls/key.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_PRIKEY_Encrypt(void* context, int algorithm, char* password, BINSTR* key, BINSTR* out)
{
    return call(context, calls::prikeyEncrypt, algorithm, password, key, out);
}

TOOLKIT_FUNCTION HVTK_PRIKEY_Decrypt(void* context, char* password, BINSTR* file, BINSTR* out)
{
    return call(context, calls::prikeyDecrypt, password, file, out);
}

TOOLKIT_FUNCTION HVTK_PRIKEY_ChangePasswd(
    void* context, char* oldPassword, char* newPassword, BINSTR* file, BINSTR* out)
{
    return call(context, calls::prikeyChangePasswd, oldPassword, newPassword, file, out);
}

TOOLKIT_FUNCTION HVTK_PRIKEY_CheckKeyPair(void* context, BINSTR* certificate, BINSTR* key)
{
    return call(context, calls::prikeyCheckKeyPair, certificate, key);
}

TOOLKIT_FUNCTION HVTK_VID_GetRandomFromPriKey(void* context, BINSTR* key, BINSTR* out)
{
    return call(context, calls::vidGetRandomFromPriKey, key, out);
}

TOOLKIT_FUNCTION HVTK_VID_Verify(void* context, BINSTR* certificate, BINSTR* random, char* idn)
{
    return call(context, calls::vidVerify, certificate, random, idn);
}

TOOLKIT_FUNCTION HVTK_VID_VerifyByIVS(
    void* context, char* confFile, BINSTR* certificate, BINSTR* random, char* idn, BINSTR* server)
{
    return call(context, calls::vidVerifyByIVS, confFile, certificate, random, idn, server);
}
