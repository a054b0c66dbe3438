// PKCS#11 tokens of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::PKCS11GetSlotList(unsigned long* slots, unsigned long* count)
{
    return m_toolkit.call("HVTK_PKCS11_GetSlotList", {need(slots)}, slots, count);
}

int CHVTKWrap::PKCS11GetTokenInfo(unsigned long slotId, PKCS11_TOKEN_INFO* info)
{
    return m_toolkit.call("HVTK_PKCS11_GetTokenInfo", {}, slotId, info);
}

int CHVTKWrap::PKCS11InitToken(char* soPin, char* label)
{
    return m_toolkit.call("HVTK_PKCS11_InitToken", {need(soPin), need(label)}, soPin, label);
}

int CHVTKWrap::PKCS11InitTokenWithSlotID(unsigned long slotId, char* soPin, char* pin, char* label)
{
    return m_toolkit.call(
        "HVTK_PKCS11_InitTokenWithSlotID", {need(soPin), need(pin), need(label)}, slotId, soPin, pin, label);
}

int CHVTKWrap::PKCS11OpenSessionWithSlotID(unsigned long slotId, char* pin, int flags)
{
    return m_toolkit.call("HVTK_PKCS11_OpenSessionWithSlotID", {}, slotId, pin, flags);
}

int CHVTKWrap::PKCS11OpenSessionWithTokenName(char* token, int flags)
{
    return m_toolkit.call("HVTK_PKCS11_OpenSessionWithTokenName", {need(token)}, token, flags);
}

int CHVTKWrap::PKCS11Login(char* pin) { return m_toolkit.call("HVTK_PKCS11_Login", {need(pin)}, pin); }

int CHVTKWrap::PKCS11Logout() { return m_toolkit.call("HVTK_PKCS11_Logout", {}); }

int CHVTKWrap::PKCS11CloseSession() { return m_toolkit.call("HVTK_PKCS11_CloseSession", {}); }

int CHVTKWrap::PKCS11ChangePIN(char* oldPin, char* newPin)
{
    return m_toolkit.call("HVTK_PKCS11_ChangePIN", {need(oldPin), need(newPin)}, oldPin, newPin);
}

int CHVTKWrap::PKCS11GetCertCnt(int* count)
{
    return m_toolkit.call("HVTK_PKCS11_GetCertCnt", {need(count)}, count);
}

int CHVTKWrap::PKCS11GetCertInfo(int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_PKCS11_GetCertInfo", {}, index, kind, id, certificate);
}

int CHVTKWrap::PKCS11ReadCert(BINSTR* id, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_PKCS11_ReadCert", {need(id)}, id, certificate);
}

int CHVTKWrap::PKCS11ReadRandomForVID(BINSTR* id, BINSTR* random)
{
    return m_toolkit.call("HVTK_PKCS11_ReadRandomForVID", {need(id)}, id, random);
}

int CHVTKWrap::PKCS11WriteCertAndPriKey(BINSTR* certificate, BINSTR* privateKey)
{
    return m_toolkit.call(
        "HVTK_PKCS11_WriteCertAndPriKey", {need(certificate), need(privateKey)}, certificate, privateKey);
}

int CHVTKWrap::PKCS11DeleteCertAndPriKey(BINSTR* id)
{
    return m_toolkit.call("HVTK_PKCS11_DeleteCertAndPriKey", {need(id)}, id);
}

int CHVTKWrap::PKCS11GenKeyPair(int algorithm, int bits, BINSTR* publicKey)
{
    return m_toolkit.call("HVTK_PKCS11_GenKeyPair", {}, algorithm, bits, publicKey);
}

int CHVTKWrap::PKCS11Sign(BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return m_toolkit.call("HVTK_PKCS11_Sign", {need(id), need(data)}, id, data, signature);
}

int CHVTKWrap::PKCS11Verify(BINSTR* id, BINSTR* data, BINSTR* signature)
{
    return m_toolkit.call("HVTK_PKCS11_Verify", {need(id), need(data), need(signature)}, id, data, signature);
}

int CHVTKWrap::PKCS11Encrypt(BINSTR* id, BINSTR* data, BINSTR* cipher)
{
    return m_toolkit.call("HVTK_PKCS11_Encrypt", {need(id), need(data)}, id, data, cipher);
}

int CHVTKWrap::PKCS11Decrypt(BINSTR* id, BINSTR* cipher, BINSTR* data)
{
    return m_toolkit.call("HVTK_PKCS11_Decrypt", {need(id), need(cipher)}, id, cipher, data);
}

int CHVTKWrap::PKCS11SignData(BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return m_toolkit.call("HVTK_PKCS11_SignData", {need(id), need(data)}, id, data, signedMessage);
}

int CHVTKWrap::PKCS11SignDataNoContent(BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return m_toolkit.call("HVTK_PKCS11_SignData_NoContent", {need(id), need(data)}, id, data, signedMessage);
}

int CHVTKWrap::PKCS11DecryptData(BINSTR* id, BINSTR* message, BINSTR* data)
{
    return m_toolkit.call("HVTK_PKCS11_DecryptData", {need(id), need(message)}, id, message, data);
}

int CHVTKWrap::PKCS11SignAndEnvData(BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage)
{
    return m_toolkit.call("HVTK_PKCS11_SignAndEnvData", {need(id), need(recipient), need(data)}, id, recipient,
        data, envelopedMessage);
}

int CHVTKWrap::PKCS11VerifyAndDecData(BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate)
{
    return m_toolkit.call(
        "HVTK_PKCS11_VerifyAndDecData", {need(id), need(message)}, id, message, data, signerCertificate);
}

int CHVTKWrap::PKCS11VerifySignatureValue(char* hash, BINSTR* certificate, BINSTR* signature)
{
    return m_toolkit.call("HVTK_PKCS11_VerifySignatureValue", {need(hash), need(certificate), need(signature)},
        hash, certificate, signature);
}

int CHVTKWrap::PKCS11CMPCertRequest(char* address, int port, char* reference, char* secret, char* pin, char* token,
    BINSTR* caCertificate, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_PKCS11_CMP_CertRequest",
        {need(address), need(reference), need(secret), need(pin), need(token)}, address, port, reference, secret,
        pin, token, caCertificate, certificate);
}

int CHVTKWrap::PKCS11CMPCertUpdate(
    char* address, int port, bool newKey, char* pin, char* token, BINSTR* certificate, BINSTR* newCertificate)
{
    return m_toolkit.call("HVTK_PKCS11_CMP_CertUpdate",
        {need(address), need(pin), need(token), need(certificate), need(newCertificate)}, address, port, newKey,
        pin, token, certificate, newCertificate);
}

int CHVTKWrap::PKCS11CMPCertUpdate2(char* address, int port, bool newKey, int keyBits, char* pin, char* token,
    BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId, BINSTR* kmCertificate,
    BINSTR* kmId)
{
    return m_toolkit.call("HVTK_PKCS11_CMP_CertUpdate2",
        {need(address), need(pin), need(token), need(certificate), need(caCertificate)}, address, port, newKey,
        keyBits, pin, token, certificate, caCertificate, newCertificate, newId, kmCertificate, kmId);
}

int CHVTKWrap::PKCS11CMPCertRevoke(char* address, int port, int reason, BINSTR* certificate, BINSTR* id)
{
    return m_toolkit.call("HVTK_PKCS11_CMP_CertRevoke", {need(address)}, address, port, reason, certificate, id);
}

int CHVTKWrap::PKCS11OpenSession(char* pin) { return m_toolkit.call("HVTK_PKCS11_OpenSession", {need(pin)}, pin); }
