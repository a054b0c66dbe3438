// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// PKCS#11 tokens.

#include "facade/row.h"

#include <sigildesk/crypto/pkcs11.h>

using namespace sigil;

int PKCS11GetSlotList(void* handle, unsigned long* slots, unsigned long* count)
{
    return row(handle, {need(slots)}, maker(SYMBOL(HVTK_PKCS11_GetSlotList), slots, count),
        gpki(SYMBOL(GPKI_HSM_GetSlotList), slots, count));
}

int PKCS11GetTokenInfo(void* handle, unsigned long slotId, PKCS11_TOKEN_INFO* info)
{
    return row(handle, {}, maker(SYMBOL(HVTK_PKCS11_GetTokenInfo), slotId, info),
        gpki(SYMBOL(GPKI_HSM_GetTokenInfo), slotId, info));
}

int PKCS11InitToken(void* handle, char* soPin, char* label)
{
    return secretRow(
        handle, {need(soPin), need(label)}, maker(SYMBOL(HVTK_PKCS11_InitToken), soPin, label), absent);
}

int PKCS11InitTokenWithSlotID(void* handle, unsigned long slotId, char* soPin, char* pin, char* label)
{
    return secretRow(handle, {need(soPin), need(pin), need(label)},
        maker(SYMBOL(HVTK_PKCS11_InitTokenWithSlotID), slotId, soPin, pin, label), absent);
}

int CWrapperAPI::PKCS11OpenSessionWithSlotID(unsigned long slotId, char* pin, int flags)
{
    const auto openAndLogIn = [=](CGPKIWrap& library) {
        const int opened = gpki(SYMBOL(GPKI_HSM_OpenSession), slotId, flags)(library);
        return opened == SIGIL_SUCCESS && pin ? gpki(SYMBOL(GPKI_HSM_Login), pin)(library) : opened;
    };
    return pick({}, maker(SYMBOL(HVTK_PKCS11_OpenSessionWithSlotID), slotId, pin, flags), openAndLogIn);
}

int PKCS11OpenSessionWithSlotID(void* handle, unsigned long slotId, char* pin, int flags)
{
    return via(handle, &CWrapperAPI::PKCS11OpenSessionWithSlotID, slotId, pin, flags);
}

int PKCS11OpenSessionWithTokenName(void* handle, char* token, int flags)
{
    return secretRow(
        handle, {need(token)}, maker(SYMBOL(HVTK_PKCS11_OpenSessionWithTokenName), token, flags), absent);
}

int PKCS11Login(void* handle, char* pin)
{
    return secretRow(handle, {need(pin)}, maker(SYMBOL(HVTK_PKCS11_Login), pin), gpki(SYMBOL(GPKI_HSM_Login), pin));
}

int PKCS11Logout(void* handle)
{
    return secretRow(handle, {}, maker(SYMBOL(HVTK_PKCS11_Logout)), gpki(SYMBOL(GPKI_HSM_Logout)));
}

int PKCS11CloseSession(void* handle)
{
    return row(handle, {}, maker(SYMBOL(HVTK_PKCS11_CloseSession)), gpki(SYMBOL(GPKI_HSM_CloseSession)));
}

int PKCS11ChangePIN(void* handle, char* oldPin, char* newPin)
{
    return secretRow(handle, {need(oldPin), need(newPin)}, maker(SYMBOL(HVTK_PKCS11_ChangePIN), oldPin, newPin),
        gpki(SYMBOL(GPKI_HSM_ChangePIN), oldPin, newPin));
}

int PKCS11GetCertCnt(void* handle, int* count)
{
    return row(handle, {}, maker(SYMBOL(HVTK_PKCS11_GetCertCnt), {need(count)}, count),
        gpki(SYMBOL(GPKI_HSM_GetCertCnt), {need(count)}, count));
}

int PKCS11GetCertInfo(void* handle, int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    return row(handle, {}, maker(SYMBOL(HVTK_PKCS11_GetCertInfo), index, kind, id, certificate),
        gpki(SYMBOL(GPKI_HSM_GetCertInfo), index, kind, id, certificate));
}

int PKCS11ReadCert(void* handle, BINSTR* id, BINSTR* certificate)
{
    return row(handle, {need(id)}, maker(SYMBOL(HVTK_PKCS11_ReadCert), id, certificate),
        gpki(SYMBOL(GPKI_HSM_ReadCert), id, certificate));
}

int PKCS11ReadRandomForVID(void* handle, BINSTR* id, BINSTR* random)
{
    return secretRow(handle, {need(id)}, maker(SYMBOL(HVTK_PKCS11_ReadRandomForVID), id, random),
        gpki(SYMBOL(GPKI_HSM_ReadRandomForVID), id, random));
}

int PKCS11WriteCertAndPriKey(void* handle, BINSTR* certificate, BINSTR* privateKey)
{
    return secretRow(handle, {need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_PKCS11_WriteCertAndPriKey), certificate, privateKey),
        gpki(SYMBOL(GPKI_HSM_WriteCertAndPriKey), certificate, privateKey));
}

int PKCS11DeleteCertAndPriKey(void* handle, BINSTR* id)
{
    return secretRow(handle, {need(id)}, maker(SYMBOL(HVTK_PKCS11_DeleteCertAndPriKey), id),
        gpki(SYMBOL(GPKI_HSM_DeleteCertAndPriKey), id));
}

int PKCS11GenKeyPair(void* handle, int algorithm, int bits, BINSTR* publicKey)
{
    return secretRow(handle, {}, maker(SYMBOL(HVTK_PKCS11_GenKeyPair), algorithm, bits, publicKey), absent);
}

int PKCS11Sign(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return secretRow(handle, {need(id), need(data)}, maker(SYMBOL(HVTK_PKCS11_Sign), id, data, signature), absent);
}

int PKCS11Verify(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return row(handle, {need(id), need(data), need(signature)},
        maker(SYMBOL(HVTK_PKCS11_Verify), id, data, signature), absent);
}

int PKCS11Encrypt(void* handle, BINSTR* id, BINSTR* data, BINSTR* cipher)
{
    return secretRow(handle, {need(id), need(data)}, maker(SYMBOL(HVTK_PKCS11_Encrypt), id, data, cipher), absent);
}

int PKCS11Decrypt(void* handle, BINSTR* id, BINSTR* cipher, BINSTR* data)
{
    return secretRow(
        handle, {need(id), need(cipher)}, maker(SYMBOL(HVTK_PKCS11_Decrypt), id, cipher, data), absent);
}

int PKCS11SignData(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return secretRow(handle, {need(id), need(data)}, maker(SYMBOL(HVTK_PKCS11_SignData), id, data, signedMessage),
        gpki(SYMBOL(GPKI_HSM_SignData), id, data, signedMessage));
}

int PKCS11SignDataNoContent(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return secretRow(handle, {need(id), need(data)},
        maker(SYMBOL(HVTK_PKCS11_SignData_NoContent), id, data, signedMessage), absent);
}

int PKCS11DecryptData(void* handle, BINSTR* id, BINSTR* message, BINSTR* data)
{
    return secretRow(
        handle, {need(id), need(message)}, maker(SYMBOL(HVTK_PKCS11_DecryptData), id, message, data), absent);
}

int PKCS11SignAndEnvData(void* handle, BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage)
{
    return secretRow(handle, {need(id), need(recipient), need(data)},
        maker(SYMBOL(HVTK_PKCS11_SignAndEnvData), id, recipient, data, envelopedMessage), absent);
}

int PKCS11VerifyAndDecData(void* handle, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate)
{
    return secretRow(handle, {need(id), need(message)},
        maker(SYMBOL(HVTK_PKCS11_VerifyAndDecData), id, message, data, signerCertificate), absent);
}

int PKCS11VerifySignatureValue(void* handle, char* hash, BINSTR* certificate, BINSTR* signature)
{
    return row(handle, {need(hash), need(certificate), need(signature)},
        maker(SYMBOL(HVTK_PKCS11_VerifySignatureValue), hash, certificate, signature), absent);
}

int PKCS11CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret, char* pin,
    char* token, BINSTR* caCertificate, BINSTR* certificate)
{
    return secretRow(handle, {need(address), need(reference), need(secret), need(pin), need(token)},
        maker(SYMBOL(HVTK_PKCS11_CMP_CertRequest), address, port, reference, secret, pin, token, caCertificate,
            certificate),
        absent);
}

int PKCS11CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* pin, char* token,
    BINSTR* certificate, BINSTR* newCertificate)
{
    return secretRow(handle, {need(address), need(pin), need(token), need(certificate), need(newCertificate)},
        maker(SYMBOL(HVTK_PKCS11_CMP_CertUpdate), address, port, newKey, pin, token, certificate, newCertificate),
        absent);
}

int PKCS11CMPCertUpdate2(void* handle, char* address, int port, bool newKey, int keyBits, char* pin, char* token,
    BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId, BINSTR* kmCertificate,
    BINSTR* kmId)
{
    return secretRow(handle, {need(address), need(pin), need(token), need(certificate), need(caCertificate)},
        maker(SYMBOL(HVTK_PKCS11_CMP_CertUpdate2), address, port, newKey, keyBits, pin, token, certificate,
            caCertificate, newCertificate, newId, kmCertificate, kmId),
        absent);
}

int PKCS11CMPCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* id)
{
    return secretRow(handle, {need(address)},
        maker(SYMBOL(HVTK_PKCS11_CMP_CertRevoke), address, port, reason, certificate, id), absent);
}
