// Certificate inspection and verification of the GPKI library.

#include "facade/backends/gpki_wrap.h"

#include "facade/backends/version_text.h"

using namespace sigil;

int CGPKIWrap::CertLoad(BINSTR* certificate)
{
    return m_toolkit.call("GPKI_CERT_Load", {need(certificate)}, certificate);
}

int CGPKIWrap::CertUnLoad() { return m_toolkit.call("GPKI_CERT_Unload", {}); }

int CGPKIWrap::CertGetUID(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetUID", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetVersion(int capacity, char* text)
{
    return versionText(m_toolkit, "GPKI_CERT_GetVersion", capacity, text);
}

int CGPKIWrap::CertGetSerialNum(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetSerialNum", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetSignatureAlgorithm(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetSignatureAlgorithm", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetIssuerName(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetIssuerName", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetValidity(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetValidity", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetSubjectName(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetSubjectName", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetPubKeyAlg(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetPubKeyAlg", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetPubKeyLen(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetPubKeyLen", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetPubKey(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetPubKey", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetSignature(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetSignature", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetKeyUsage(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetKeyUsage", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetBasicConstraints(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetBasicConstraints", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetCertPolicy(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetCertPolicy", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetPolicyID(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetCertPolicyID", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetExtKeyUsage(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetExtKeyUsage", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetSubjectAltName(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetSubjectAltName", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetAuthKeyID(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetAuthKeyID", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetSubKeyID(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetSubKeyID", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetCRLDP(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetCRLDP", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetAIA(int capacity, char* text)
{
    return m_toolkit.call("GPKI_CERT_GetAIA", {need(text)}, capacity, text);
}

int CGPKIWrap::CertGetRemainDays(BINSTR* certificate, int* days)
{
    return m_toolkit.call("GPKI_CERT_GetRemainDays", {need(certificate), need(days)}, certificate, days);
}

int CGPKIWrap::CertAddCert(BINSTR* certificate, BINSTR* list)
{
    return m_toolkit.call("GPKI_CERT_AddCert", {need(certificate)}, certificate, list);
}

int CGPKIWrap::CertGetCertCount(BINSTR* list, int* count)
{
    return m_toolkit.call("GPKI_CERT_GetCertCount", {need(list), need(count)}, list, count);
}

int CGPKIWrap::CertGetCert(BINSTR* list, int index, BINSTR* certificate)
{
    // Intended: the output record must hold data already; hosts fill it before they call.
    return m_toolkit.call("GPKI_CERT_GetCert", {need(list), need(certificate)}, list, index, certificate);
}

int CGPKIWrap::CertAddTrustedCert(BINSTR* certificate)
{
    return m_toolkit.call("GPKI_CERT_AddTrustedCert", {need(certificate)}, certificate);
}

int CGPKIWrap::CertSetVerifyEnv(int range, int statusCheck, bool useCache, char* cachePath, char* confFile)
{
    return m_toolkit.call("GPKI_CERT_SetVerifyEnv", {}, range, statusCheck, useCache, cachePath, confFile);
}

int CGPKIWrap::CertVerify(BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl)
{
    return m_toolkit.call("GPKI_CERT_Verify", {need(certificate)}, certificate, purpose, time, confFile,
        checkStatus, intermediates, crl);
}

int CGPKIWrap::CertVerifyByIVS(char* confFile, BINSTR* certificate, BINSTR* ivsCertificate)
{
    return m_toolkit.call("GPKI_CERT_VerifyByIVS", {need(confFile), need(certificate), need(ivsCertificate)},
        confFile, certificate, ivsCertificate);
}

int CGPKIWrap::CertCheckStatByOCSP(BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* reason)
{
    return m_toolkit.call("GPKI_CERT_CheckStatByOCSP",
        {need(certificate), need(signerKey), need(url), need(responderCertificate)}, certificate, signRequest,
        signerCertificate, signerKey, url, responderCertificate, revocationTime, reason);
}

int CGPKIWrap::CertCheckStatByCRL(BINSTR* certificate, char* revocationTime, int* reason)
{
    return m_toolkit.call("GPKI_CERT_CheckStatByCRL", {need(certificate)}, certificate, revocationTime, reason);
}
