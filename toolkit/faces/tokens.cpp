// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// HVTK_PKCS11_ and GPKI_HSM_: tokens.

#include "toolkit/calls/tokens.h"
#include "toolkit/calls/token_enrolment.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_PKCS11_GetSlotList(void* context, unsigned long* slots, unsigned long* count)
{
    return call(context, calls::tokenGetSlotList, slots, count);
}
SAME_FUNCTION(GPKI_HSM_GetSlotList, HVTK_PKCS11_GetSlotList);

TOOLKIT_FUNCTION HVTK_PKCS11_GetTokenInfo(void* context, unsigned long slot, PKCS11_TOKEN_INFO* info)
{
    return call(context, calls::tokenGetInfo, slot, info);
}
SAME_FUNCTION(GPKI_HSM_GetTokenInfo, HVTK_PKCS11_GetTokenInfo);

TOOLKIT_FUNCTION GPKI_HSM_OpenSession(void* context, unsigned long slot, int flags)
{
    return call(context, calls::tokenOpenSession, slot, flags);
}

TOOLKIT_FUNCTION HVTK_PKCS11_InitToken(void* context, char* soPin, char* label)
{
    return call(context, calls::tokenInit, soPin, label);
}

TOOLKIT_FUNCTION HVTK_PKCS11_InitTokenWithSlotID(
    void* context, unsigned long slot, char* soPin, char* pin, char* label)
{
    return call(context, calls::tokenInitWithSlotID, slot, soPin, pin, label);
}

TOOLKIT_FUNCTION HVTK_PKCS11_OpenSession(void* context, char* pin)
{
    return call(context, calls::tokenOpenFirstSession, pin);
}

TOOLKIT_FUNCTION HVTK_PKCS11_OpenSessionWithSlotID(void* context, unsigned long slot, char* pin, int flags)
{
    return call(context, calls::tokenOpenSessionWithSlotID, slot, pin, flags);
}

TOOLKIT_FUNCTION HVTK_PKCS11_OpenSessionWithTokenName(void* context, char* token, int flags)
{
    return call(context, calls::tokenOpenSessionWithTokenName, token, flags);
}

TOOLKIT_FUNCTION HVTK_PKCS11_Login(void* context, char* pin) { return call(context, calls::tokenLogin, pin); }
SAME_FUNCTION(GPKI_HSM_Login, HVTK_PKCS11_Login);

TOOLKIT_FUNCTION HVTK_PKCS11_Logout(void* context) { return call(context, calls::tokenLogout); }
SAME_FUNCTION(GPKI_HSM_Logout, HVTK_PKCS11_Logout);

TOOLKIT_FUNCTION HVTK_PKCS11_CloseSession(void* context) { return call(context, calls::tokenCloseSession); }
SAME_FUNCTION(GPKI_HSM_CloseSession, HVTK_PKCS11_CloseSession);

TOOLKIT_FUNCTION HVTK_PKCS11_ChangePIN(void* context, char* oldPin, char* newPin)
{
    return call(context, calls::tokenChangePIN, oldPin, newPin);
}
SAME_FUNCTION(GPKI_HSM_ChangePIN, HVTK_PKCS11_ChangePIN);

TOOLKIT_FUNCTION HVTK_PKCS11_GetCertCnt(void* context, int* count)
{
    return call(context, calls::tokenGetCertCnt, count);
}
SAME_FUNCTION(GPKI_HSM_GetCertCnt, HVTK_PKCS11_GetCertCnt);

TOOLKIT_FUNCTION HVTK_PKCS11_GetCertInfo(void* context, int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    return call(context, calls::tokenGetCertInfo, index, kind, id, certificate);
}
SAME_FUNCTION(GPKI_HSM_GetCertInfo, HVTK_PKCS11_GetCertInfo);

TOOLKIT_FUNCTION HVTK_PKCS11_ReadCert(void* context, BINSTR* id, BINSTR* certificate)
{
    return call(context, calls::tokenReadCert, id, certificate);
}
SAME_FUNCTION(GPKI_HSM_ReadCert, HVTK_PKCS11_ReadCert);

TOOLKIT_FUNCTION HVTK_PKCS11_ReadRandomForVID(void* context, BINSTR* id, BINSTR* random)
{
    return call(context, calls::tokenReadRandomForVID, id, random);
}
SAME_FUNCTION(GPKI_HSM_ReadRandomForVID, HVTK_PKCS11_ReadRandomForVID);

TOOLKIT_FUNCTION HVTK_PKCS11_WriteCertAndPriKey(void* context, BINSTR* certificate, BINSTR* key)
{
    return call(context, calls::tokenWriteCertAndPriKey, certificate, key);
}
SAME_FUNCTION(GPKI_HSM_WriteCertAndPriKey, HVTK_PKCS11_WriteCertAndPriKey);

TOOLKIT_FUNCTION HVTK_PKCS11_DeleteCertAndPriKey(void* context, BINSTR* id)
{
    return call(context, calls::tokenDeleteCertAndPriKey, id);
}
SAME_FUNCTION(GPKI_HSM_DeleteCertAndPriKey, HVTK_PKCS11_DeleteCertAndPriKey);

TOOLKIT_FUNCTION HVTK_PKCS11_GenKeyPair(void* context, int algorithm, int bits, BINSTR* publicKey)
{
    return call(context, calls::tokenGenKeyPair, algorithm, bits, publicKey);
}

TOOLKIT_FUNCTION HVTK_PKCS11_Sign(void* context, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::tokenSign, id, data, signature);
}

TOOLKIT_FUNCTION HVTK_PKCS11_Verify(void* context, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::tokenVerify, id, data, signature);
}

TOOLKIT_FUNCTION HVTK_PKCS11_Encrypt(void* context, BINSTR* id, BINSTR* data, BINSTR* out)
{
    return call(context, calls::tokenEncrypt, id, data, out);
}

TOOLKIT_FUNCTION HVTK_PKCS11_Decrypt(void* context, BINSTR* id, BINSTR* cipher, BINSTR* out)
{
    return call(context, calls::tokenDecrypt, id, cipher, out);
}

TOOLKIT_FUNCTION HVTK_PKCS11_SignData(void* context, BINSTR* id, BINSTR* data, BINSTR* out)
{
    return call(context, calls::tokenSignData, id, data, out);
}
SAME_FUNCTION(GPKI_HSM_SignData, HVTK_PKCS11_SignData);

TOOLKIT_FUNCTION HVTK_PKCS11_SignData_NoContent(void* context, BINSTR* id, BINSTR* data, BINSTR* out)
{
    return call(context, calls::tokenSignDataNoContent, id, data, out);
}

TOOLKIT_FUNCTION HVTK_PKCS11_SignAndEnvData(void* context, BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* out)
{
    return call(context, calls::tokenSignAndEnvData, id, recipient, data, out);
}

TOOLKIT_FUNCTION HVTK_PKCS11_DecryptData(void* context, BINSTR* id, BINSTR* message, BINSTR* data)
{
    return call(context, calls::tokenDecryptData, id, message, data);
}

TOOLKIT_FUNCTION HVTK_PKCS11_VerifyAndDecData(
    void* context, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signer)
{
    return call(context, calls::tokenVerifyAndDecData, id, message, data, signer);
}

TOOLKIT_FUNCTION HVTK_PKCS11_VerifySignatureValue(
    void* context, char* digest, BINSTR* certificate, BINSTR* signature)
{
    return call(context, calls::tokenVerifySignatureValue, digest, certificate, signature);
}

TOOLKIT_FUNCTION HVTK_PKCS11_CMP_CertRequest(void* context, char* address, int port, char* reference, char* secret,
    char* pin, char* token, BINSTR* caCertificate, BINSTR* certificate)
{
    return call(
        context, calls::tokenCertRequest, address, port, reference, secret, pin, token, caCertificate, certificate);
}

TOOLKIT_FUNCTION HVTK_PKCS11_CMP_CertUpdate(void* context, char* address, int port, bool newKey, char* pin,
    char* token, BINSTR* certificate, BINSTR* newCertificate)
{
    return call(context, calls::tokenCertUpdate, address, port, newKey, pin, token, certificate, newCertificate);
}

TOOLKIT_FUNCTION HVTK_PKCS11_CMP_CertUpdate2(void* context, char* address, int port, bool newKey, int keyBits,
    char* pin, char* token, BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId,
    BINSTR* kmCertificate, BINSTR* kmId)
{
    return call(context, calls::tokenCertUpdate2, address, port, newKey, keyBits, pin, token, certificate,
        caCertificate, newCertificate, newId, kmCertificate, kmId);
}

TOOLKIT_FUNCTION HVTK_PKCS11_CMP_CertRevoke(
    void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* id)
{
    return call(context, calls::tokenCertRevoke, address, port, reason, certificate, id);
}
