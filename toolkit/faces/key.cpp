// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// PRIKEY_ and VID_: private keys and the identity of their holders.

#include "toolkit/calls/key.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_PRIKEY_Encrypt(void* context, int algorithm, char* password, BINSTR* key, BINSTR* out)
{
    return call(context, calls::prikeyEncrypt, algorithm, password, key, out);
}
SAME_FUNCTION(GPKI_PRIKEY_Encrypt, HVTK_PRIKEY_Encrypt);

TOOLKIT_FUNCTION HVTK_PRIKEY_Decrypt(void* context, char* password, BINSTR* file, BINSTR* out)
{
    return call(context, calls::prikeyDecrypt, password, file, out);
}
SAME_FUNCTION(GPKI_PRIKEY_Decrypt, HVTK_PRIKEY_Decrypt);

TOOLKIT_FUNCTION HVTK_PRIKEY_ChangePasswd(
    void* context, char* oldPassword, char* newPassword, BINSTR* file, BINSTR* out)
{
    return call(context, calls::prikeyChangePasswd, oldPassword, newPassword, file, out);
}
SAME_FUNCTION(GPKI_PRIKEY_ChangePasswd, HVTK_PRIKEY_ChangePasswd);

TOOLKIT_FUNCTION HVTK_PRIKEY_CheckKeyPair(void* context, BINSTR* certificate, BINSTR* key)
{
    return call(context, calls::prikeyCheckKeyPair, certificate, key);
}
SAME_FUNCTION(GPKI_PRIKEY_CheckKeyPair, HVTK_PRIKEY_CheckKeyPair);

TOOLKIT_FUNCTION HVTK_VID_GetRandomFromPriKey(void* context, BINSTR* key, BINSTR* out)
{
    return call(context, calls::vidGetRandomFromPriKey, key, out);
}
SAME_FUNCTION(GPKI_VID_GetRandomFromPriKey, HVTK_VID_GetRandomFromPriKey);

TOOLKIT_FUNCTION HVTK_VID_Verify(void* context, BINSTR* certificate, BINSTR* random, char* idn)
{
    return call(context, calls::vidVerify, certificate, random, idn);
}
SAME_FUNCTION(GPKI_VID_Verify, HVTK_VID_Verify);

TOOLKIT_FUNCTION HVTK_VID_VerifyByIVS(
    void* context, char* confFile, BINSTR* certificate, BINSTR* random, char* idn, BINSTR* server)
{
    return call(context, calls::vidVerifyByIVS, confFile, certificate, random, idn, server);
}
SAME_FUNCTION(GPKI_VID_VerifyByIVS, HVTK_VID_VerifyByIVS);
