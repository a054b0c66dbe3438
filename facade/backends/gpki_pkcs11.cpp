// PKCS#11 tokens of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::HSMGetSlotList(unsigned long* slots, unsigned long* count)
{
    return m_toolkit.call("GPKI_HSM_GetSlotList", {need(slots)}, slots, count);
}

int CGPKIWrap::HSMGetTokenInfo(unsigned long slotId, PKCS11_TOKEN_INFO* info)
{
    return m_toolkit.call("GPKI_HSM_GetTokenInfo", {}, slotId, info);
}

int CGPKIWrap::HSMOpenSession(unsigned long slotId, int flags)
{
    return m_toolkit.call("GPKI_HSM_OpenSession", {}, slotId, flags);
}

int CGPKIWrap::HSMLogin(char* pin) { return m_toolkit.call("GPKI_HSM_Login", {need(pin)}, pin); }

int CGPKIWrap::HSMLogout() { return m_toolkit.call("GPKI_HSM_Logout", {}); }

int CGPKIWrap::HSMCloseSession() { return m_toolkit.call("GPKI_HSM_CloseSession", {}); }

int CGPKIWrap::HSMChangePIN(char* oldPin, char* newPin)
{
    return m_toolkit.call("GPKI_HSM_ChangePIN", {need(oldPin), need(newPin)}, oldPin, newPin);
}

int CGPKIWrap::HSMGetCertCnt(int* count) { return m_toolkit.call("GPKI_HSM_GetCertCnt", {need(count)}, count); }

int CGPKIWrap::HSMGetCertInfo(int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_HSM_GetCertInfo", {}, index, kind, id, certificate);
}

int CGPKIWrap::HSMReadCert(BINSTR* id, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_HSM_ReadCert", {need(id)}, id, certificate);
}

int CGPKIWrap::HSMReadRandomForVID(BINSTR* id, BINSTR* random)
{
    return m_toolkit.call("GPKI_HSM_ReadRandomForVID", {need(id)}, id, random);
}

int CGPKIWrap::HSMWriteCertAndPriKey(BINSTR* certificate, BINSTR* privateKey)
{
    return m_toolkit.call(
        "GPKI_HSM_WriteCertAndPriKey", {need(certificate), need(privateKey)}, certificate, privateKey);
}

int CGPKIWrap::HSMDeleteCertAndPriKey(BINSTR* id)
{
    return m_toolkit.call("GPKI_HSM_DeleteCertAndPriKey", {need(id)}, id);
}

int CGPKIWrap::HSMSignData(BINSTR* id, BINSTR* data, BINSTR* signedMessage)
{
    return m_toolkit.call("GPKI_HSM_SignData", {need(id), need(data)}, id, data, signedMessage);
}
