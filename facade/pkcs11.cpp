// PKCS#11 tokens.

#include "facade/dispatch.h"

#include <sigildesk/crypto/pkcs11.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::PKCS11GetSlotList(unsigned long* slots, unsigned long* count)
{
    return pick({need(slots)}, to<&CHVTKWrap::PKCS11GetSlotList>(slots, count),
        to<&CGPKIWrap::HSMGetSlotList>(slots, count));
}

int CWrapperAPI::PKCS11GetTokenInfo(unsigned long slotId, PKCS11_TOKEN_INFO* info)
{
    return pick(
        {}, to<&CHVTKWrap::PKCS11GetTokenInfo>(slotId, info), to<&CGPKIWrap::HSMGetTokenInfo>(slotId, info));
}

int CWrapperAPI::PKCS11InitToken(char* soPin, char* label)
{
    return pick({need(soPin), need(label)}, to<&CHVTKWrap::PKCS11InitToken>(soPin, label), absent);
}

int CWrapperAPI::PKCS11InitTokenWithSlotID(unsigned long slotId, char* soPin, char* pin, char* label)
{
    return pick({need(soPin), need(pin), need(label)},
        to<&CHVTKWrap::PKCS11InitTokenWithSlotID>(slotId, soPin, pin, label), absent);
}

int CWrapperAPI::PKCS11OpenSessionWithSlotID(unsigned long slotId, char* pin, int flags)
{
    return pick({}, to<&CHVTKWrap::PKCS11OpenSessionWithSlotID>(slotId, pin, flags), [=](CGPKIWrap& gpki) {
        const int opened = gpki.HSMOpenSession(slotId, flags);
        return opened == Success && pin ? gpki.HSMLogin(pin) : opened;
    });
}

int CWrapperAPI::PKCS11OpenSessionWithTokenName(char* token, int flags)
{
    return pick({need(token)}, to<&CHVTKWrap::PKCS11OpenSessionWithTokenName>(token, flags), absent);
}

int CWrapperAPI::PKCS11Login(char* pin)
{
    return pick({need(pin)}, to<&CHVTKWrap::PKCS11Login>(pin), to<&CGPKIWrap::HSMLogin>(pin));
}

int CWrapperAPI::PKCS11Logout() { return pick({}, to<&CHVTKWrap::PKCS11Logout>(), to<&CGPKIWrap::HSMLogout>()); }

int CWrapperAPI::PKCS11CloseSession()
{
    return pick({}, to<&CHVTKWrap::PKCS11CloseSession>(), to<&CGPKIWrap::HSMCloseSession>());
}

int CWrapperAPI::PKCS11ChangePIN(char* oldPin, char* newPin)
{
    return pick({need(oldPin), need(newPin)}, to<&CHVTKWrap::PKCS11ChangePIN>(oldPin, newPin),
        to<&CGPKIWrap::HSMChangePIN>(oldPin, newPin));
}

int CWrapperAPI::PKCS11GetCertCnt(int* count)
{
    return pick({}, to<&CHVTKWrap::PKCS11GetCertCnt>(count), to<&CGPKIWrap::HSMGetCertCnt>(count));
}

int CWrapperAPI::PKCS11GetCertInfo(int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    return pick({}, to<&CHVTKWrap::PKCS11GetCertInfo>(index, kind, id, certificate),
        to<&CGPKIWrap::HSMGetCertInfo>(index, kind, id, certificate));
}

int CWrapperAPI::PKCS11ReadCert(BINSTR* id, BINSTR* certificate)
{
    return pick(
        {need(id)}, to<&CHVTKWrap::PKCS11ReadCert>(id, certificate), to<&CGPKIWrap::HSMReadCert>(id, certificate));
}

int CWrapperAPI::PKCS11ReadRandomForVID(BINSTR* id, BINSTR* random)
{
    return pick({need(id)}, to<&CHVTKWrap::PKCS11ReadRandomForVID>(id, random),
        to<&CGPKIWrap::HSMReadRandomForVID>(id, random));
}

int CWrapperAPI::PKCS11WriteCertAndPriKey(BINSTR* certificate, BINSTR* privateKey)
{
    return pick({need(certificate), need(privateKey)},
        to<&CHVTKWrap::PKCS11WriteCertAndPriKey>(certificate, privateKey),
        to<&CGPKIWrap::HSMWriteCertAndPriKey>(certificate, privateKey));
}

int CWrapperAPI::PKCS11DeleteCertAndPriKey(BINSTR* id)
{
    return pick(
        {need(id)}, to<&CHVTKWrap::PKCS11DeleteCertAndPriKey>(id), to<&CGPKIWrap::HSMDeleteCertAndPriKey>(id));
}

int CWrapperAPI::PKCS11GenKeyPair(int algorithm, int bits, BINSTR* publicKey)
{
    return pick({}, to<&CHVTKWrap::PKCS11GenKeyPair>(algorithm, bits, publicKey), absent);
}

int CWrapperAPI::PKCS11Sign(BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return pick({need(id), need(data)}, to<&CHVTKWrap::PKCS11Sign>(id, data, signature), absent);
}

int CWrapperAPI::PKCS11Verify(BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return pick({need(id), need(data), need(signature)}, to<&CHVTKWrap::PKCS11Verify>(id, data, signature), absent);
}

int CWrapperAPI::PKCS11Encrypt(BINSTR* id, BINSTR* data, BINSTR* cipher)
{
    return pick({need(id), need(data)}, to<&CHVTKWrap::PKCS11Encrypt>(id, data, cipher), absent);
}

int CWrapperAPI::PKCS11Decrypt(BINSTR* id, BINSTR* cipher, BINSTR* data)
{
    return pick({need(id), need(cipher)}, to<&CHVTKWrap::PKCS11Decrypt>(id, cipher, data), absent);
}

int CWrapperAPI::PKCS11SignData(BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return pick({need(id), need(data)}, to<&CHVTKWrap::PKCS11SignData>(id, data, signedMessage),
        to<&CGPKIWrap::HSMSignData>(id, data, signedMessage));
}

int CWrapperAPI::PKCS11SignDataNoContent(BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return pick({need(id), need(data)}, to<&CHVTKWrap::PKCS11SignDataNoContent>(id, data, signedMessage), absent);
}

int CWrapperAPI::PKCS11DecryptData(BINSTR* id, BINSTR* message, BINSTR* data)
{
    return pick({need(id), need(message)}, to<&CHVTKWrap::PKCS11DecryptData>(id, message, data), absent);
}

int CWrapperAPI::PKCS11SignAndEnvData(BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage)
{
    return pick({need(id), need(recipient), need(data)},
        to<&CHVTKWrap::PKCS11SignAndEnvData>(id, recipient, data, envelopedMessage), absent);
}

int CWrapperAPI::PKCS11VerifyAndDecData(BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate)
{
    return pick({need(id), need(message)},
        to<&CHVTKWrap::PKCS11VerifyAndDecData>(id, message, data, signerCertificate), absent);
}

int CWrapperAPI::PKCS11VerifySignatureValue(char* hash, BINSTR* certificate, BINSTR* signature)
{
    return pick({need(hash), need(certificate), need(signature)},
        to<&CHVTKWrap::PKCS11VerifySignatureValue>(hash, certificate, signature), absent);
}

int CWrapperAPI::PKCS11CMPCertRequest(char* address, int port, char* reference, char* secret, char* pin,
    char* token, BINSTR* caCertificate, BINSTR* certificate)
{
    return pick({need(address), need(reference), need(secret), need(pin), need(token)},
        to<&CHVTKWrap::PKCS11CMPCertRequest>(
            address, port, reference, secret, pin, token, caCertificate, certificate),
        absent);
}

int CWrapperAPI::PKCS11CMPCertUpdate(
    char* address, int port, bool newKey, char* pin, char* token, BINSTR* certificate, BINSTR* newCertificate)
{
    return pick({need(address), need(pin), need(token), need(certificate), need(newCertificate)},
        to<&CHVTKWrap::PKCS11CMPCertUpdate>(address, port, newKey, pin, token, certificate, newCertificate),
        absent);
}

int CWrapperAPI::PKCS11CMPCertUpdate2(char* address, int port, bool newKey, int keyBits, char* pin, char* token,
    BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId, BINSTR* kmCertificate,
    BINSTR* kmId)
{
    return pick({need(address), need(pin), need(token), need(certificate), need(caCertificate)},
        to<&CHVTKWrap::PKCS11CMPCertUpdate2>(address, port, newKey, keyBits, pin, token, certificate, caCertificate,
            newCertificate, newId, kmCertificate, kmId),
        absent);
}

int CWrapperAPI::PKCS11CMPCertRevoke(char* address, int port, int reason, BINSTR* certificate, BINSTR* id)
{
    return pick(
        {need(address)}, to<&CHVTKWrap::PKCS11CMPCertRevoke>(address, port, reason, certificate, id), absent);
}

// Exports

int PKCS11GetSlotList(void* handle, unsigned long* slots, unsigned long* count)
{
    return via(handle, &CWrapperAPI::PKCS11GetSlotList, slots, count);
}

int PKCS11GetTokenInfo(void* handle, unsigned long slotId, PKCS11_TOKEN_INFO* info)
{
    return via(handle, &CWrapperAPI::PKCS11GetTokenInfo, slotId, info);
}

int PKCS11InitToken(void* handle, char* soPin, char* label)
{
    return via(handle, &CWrapperAPI::PKCS11InitToken, soPin, label);
}

int PKCS11InitTokenWithSlotID(void* handle, unsigned long slotId, char* soPin, char* pin, char* label)
{
    return via(handle, &CWrapperAPI::PKCS11InitTokenWithSlotID, slotId, soPin, pin, label);
}

int PKCS11OpenSessionWithSlotID(void* handle, unsigned long slotId, char* pin, int flags)
{
    return via(handle, &CWrapperAPI::PKCS11OpenSessionWithSlotID, slotId, pin, flags);
}

int PKCS11OpenSessionWithTokenName(void* handle, char* token, int flags)
{
    return via(handle, &CWrapperAPI::PKCS11OpenSessionWithTokenName, token, flags);
}

int PKCS11Login(void* handle, char* pin) { return via(handle, &CWrapperAPI::PKCS11Login, pin); }

int PKCS11Logout(void* handle) { return via(handle, &CWrapperAPI::PKCS11Logout); }

int PKCS11CloseSession(void* handle) { return via(handle, &CWrapperAPI::PKCS11CloseSession); }

int PKCS11ChangePIN(void* handle, char* oldPin, char* newPin)
{
    return via(handle, &CWrapperAPI::PKCS11ChangePIN, oldPin, newPin);
}

int PKCS11GetCertCnt(void* handle, int* count) { return via(handle, &CWrapperAPI::PKCS11GetCertCnt, count); }

int PKCS11GetCertInfo(void* handle, int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::PKCS11GetCertInfo, index, kind, id, certificate);
}

int PKCS11ReadCert(void* handle, BINSTR* id, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::PKCS11ReadCert, id, certificate);
}

int PKCS11ReadRandomForVID(void* handle, BINSTR* id, BINSTR* random)
{
    return via(handle, &CWrapperAPI::PKCS11ReadRandomForVID, id, random);
}

int PKCS11WriteCertAndPriKey(void* handle, BINSTR* certificate, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::PKCS11WriteCertAndPriKey, certificate, privateKey);
}

int PKCS11DeleteCertAndPriKey(void* handle, BINSTR* id)
{
    return via(handle, &CWrapperAPI::PKCS11DeleteCertAndPriKey, id);
}

int PKCS11GenKeyPair(void* handle, int algorithm, int bits, BINSTR* publicKey)
{
    return via(handle, &CWrapperAPI::PKCS11GenKeyPair, algorithm, bits, publicKey);
}

int PKCS11Sign(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return via(handle, &CWrapperAPI::PKCS11Sign, id, data, signature);
}

int PKCS11Verify(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return via(handle, &CWrapperAPI::PKCS11Verify, id, data, signature);
}

int PKCS11Encrypt(void* handle, BINSTR* id, BINSTR* data, BINSTR* cipher)
{
    return via(handle, &CWrapperAPI::PKCS11Encrypt, id, data, cipher);
}

int PKCS11Decrypt(void* handle, BINSTR* id, BINSTR* cipher, BINSTR* data)
{
    return via(handle, &CWrapperAPI::PKCS11Decrypt, id, cipher, data);
}

int PKCS11SignData(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return via(handle, &CWrapperAPI::PKCS11SignData, id, data, signedMessage);
}

int PKCS11SignDataNoContent(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return via(handle, &CWrapperAPI::PKCS11SignDataNoContent, id, data, signedMessage);
}

int PKCS11DecryptData(void* handle, BINSTR* id, BINSTR* message, BINSTR* data)
{
    return via(handle, &CWrapperAPI::PKCS11DecryptData, id, message, data);
}

int PKCS11SignAndEnvData(void* handle, BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage)
{
    return via(handle, &CWrapperAPI::PKCS11SignAndEnvData, id, recipient, data, envelopedMessage);
}

int PKCS11VerifyAndDecData(void* handle, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate)
{
    return via(handle, &CWrapperAPI::PKCS11VerifyAndDecData, id, message, data, signerCertificate);
}

int PKCS11VerifySignatureValue(void* handle, char* hash, BINSTR* certificate, BINSTR* signature)
{
    return via(handle, &CWrapperAPI::PKCS11VerifySignatureValue, hash, certificate, signature);
}

int PKCS11CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret, char* pin,
    char* token, BINSTR* caCertificate, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::PKCS11CMPCertRequest, address, port, reference, secret, pin, token,
        caCertificate, certificate);
}

int PKCS11CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* pin, char* token,
    BINSTR* certificate, BINSTR* newCertificate)
{
    return via(
        handle, &CWrapperAPI::PKCS11CMPCertUpdate, address, port, newKey, pin, token, certificate, newCertificate);
}

int PKCS11CMPCertUpdate2(void* handle, char* address, int port, bool newKey, int keyBits, char* pin, char* token,
    BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId, BINSTR* kmCertificate,
    BINSTR* kmId)
{
    return via(handle, &CWrapperAPI::PKCS11CMPCertUpdate2, address, port, newKey, keyBits, pin, token, certificate,
        caCertificate, newCertificate, newId, kmCertificate, kmId);
}

int PKCS11CMPCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* id)
{
    return via(handle, &CWrapperAPI::PKCS11CMPCertRevoke, address, port, reason, certificate, id);
}
