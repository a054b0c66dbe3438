// Certificate inspection and verification of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

#include "facade/backends/version_text.h"

using namespace sigil;

int CHVTKWrap::CertLoad(BINSTR* certificate)
{
    return m_toolkit.call("HVTK_CERT_Load", {need(certificate)}, certificate);
}

int CHVTKWrap::CertUnLoad() { return m_toolkit.call("HVTK_CERT_Unload", {}); }

int CHVTKWrap::CertGetUID(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetUID", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetVersion(int capacity, char* text)
{
    return versionText(m_toolkit, "HVTK_CERT_GetVersion", capacity, text);
}

int CHVTKWrap::CertGetSerialNum(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetSerialNum", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetSignatureAlgorithm(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetSignatureAlgorithm", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetIssuerName(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetIssuerName", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetValidity(char* notBefore, char* notAfter)
{
    return m_toolkit.call("HVTK_CERT_GetValidity", {need(notBefore), need(notAfter)}, notBefore, notAfter);
}

int CHVTKWrap::CertGetSubjectName(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetSubjectName", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetPubKey(int capacity, char* algorithm, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetPubKey", {need(algorithm), need(text)}, capacity, algorithm, text);
}

int CHVTKWrap::CertGetPubKey2(char* algorithm, char* keyLength, BINSTR* publicKey)
{
    return m_toolkit.call(
        "HVTK_CERT_GetPubKey2", {need(algorithm), need(keyLength)}, algorithm, keyLength, publicKey);
}

int CHVTKWrap::CertGetSignature(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetSignature", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetKeyUsage(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetKeyUsage", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetBasicConstraints(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetBasicConstraints", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetCertPolicy(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetCertPolicy", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetPolicyID(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetCertPolicy_PolicyID", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetExtKeyUsage(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetExtKeyUsage", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetSubjectAltName(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetSubjectAltName", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetIssuerAltName(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetIssuerAltName", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetAuthKeyID(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetAuthKeyID", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetSubKeyID(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetSubKeyID", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetCRLDP(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetCRLDP", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetCRLDPURL(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetCRLDP_URL", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetAIA(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetAIA", {need(text)}, capacity, text);
}

int CHVTKWrap::CertGetRemainDays(BINSTR* certificate, int* days)
{
    return m_toolkit.call("HVTK_CERT_GetRemainDays", {need(certificate), need(days)}, certificate, days);
}

int CHVTKWrap::CertAddTrustedCert(BINSTR* certificate)
{
    return m_toolkit.call("HVTK_CERT_AddTrustedCert", {need(certificate)}, certificate);
}

int CHVTKWrap::CertSetVerifyEnv(int range, int statusCheck, bool useCache, char* confFile)
{
    return m_toolkit.call("HVTK_CERT_SetVerifyEnv1", {}, range, statusCheck, useCache, confFile);
}

int CHVTKWrap::CertSetVerifyEnv2(char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates)
{
    return m_toolkit.call("HVTK_CERT_SetVerifyEnv2",
        {need(confFile), needRecord(trustedCertificates), needRecord(intermediates)}, confFile, trustedCertificates,
        intermediates);
}

int CHVTKWrap::CertVerify(
    BINSTR* certificate, int purpose, char* time, bool checkStatus, BINSTR* intermediates, BINSTR* crl)
{
    return m_toolkit.call(
        "HVTK_CERT_Verify", {need(certificate)}, certificate, purpose, time, checkStatus, intermediates, crl);
}

int CHVTKWrap::CertVerify2(BINSTR* certificate, int purpose, char* time, char* confFile)
{
    return m_toolkit.call("HVTK_CERT_Verify2", {need(certificate)}, certificate, purpose, time, confFile);
}

int CHVTKWrap::CertVerifyByIVS(char* confFile, BINSTR* certificate, BINSTR* ivsCertificate)
{
    return m_toolkit.call("HVTK_CERT_VerifyByIVS", {need(confFile), need(certificate), need(ivsCertificate)},
        confFile, certificate, ivsCertificate);
}

int CHVTKWrap::CertCheckStatByCRL(BINSTR* certificate, char* revocationTime, int* reason)
{
    return m_toolkit.call("HVTK_CERT_CheckStatByCRL", {need(certificate)}, certificate, revocationTime, reason);
}

int CHVTKWrap::CertGetSubjectName_DERFormat(BINSTR* name)
{
    return m_toolkit.call("HVTK_CERT_GetSubjectName_DERFormat", {}, name);
}

int CHVTKWrap::CertGetPolicyConstraints(int capacity, char* text)
{
    return m_toolkit.call("HVTK_CERT_GetPolicyConstraints", {need(text)}, capacity, text);
}
