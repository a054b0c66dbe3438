// Online certificate status of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::OCSPMakeOCSPReq(
    BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey, BINSTR* request)
{
    return m_toolkit.call("HVTK_OCSP_MakeOCSPReq", {need(certificate), need(signerCertificate), need(signerKey)},
        certificate, signRequest, signerCertificate, signerKey, request);
}

int CHVTKWrap::OCSPSendAndRecv(char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    return m_toolkit.call("HVTK_OCSP_SendAndRecv", {need(url), need(certificate), need(request)}, url, certificate,
        request, response);
}

int CHVTKWrap::OCSPVerifyResMsg(BINSTR* certificate, BINSTR* response, BINSTR* responderCertificate)
{
    return m_toolkit.call(
        "HVTK_OCSP_VerifyResMsg", {need(certificate), need(response)}, certificate, response, responderCertificate);
}

int CHVTKWrap::OCSPCheckCertStatus(
    char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey)
{
    return m_toolkit.call("HVTK_OCSP_CheckCertStatus", {need(url), need(certificate)}, url, certificate,
        signRequest, signerCertificate, signerKey);
}
