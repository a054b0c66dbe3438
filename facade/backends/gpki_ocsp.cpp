// Online certificate status of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::OCSPMakeOCSPReq(
    BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey, BINSTR* request)
{
    return m_toolkit.call("GPKI_OCSP_MakeOCSPReq", {need(certificate), need(signerCertificate), need(signerKey)},
        certificate, signRequest, signerCertificate, signerKey, request);
}

int CGPKIWrap::OCSPSendAndRecv(char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    return m_toolkit.call("GPKI_OCSP_SendAndRecv", {need(url), need(certificate), need(request)}, url, certificate,
        request, response);
}

int CGPKIWrap::OCSPVerifyResMsg(BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate)
{
    return m_toolkit.call("GPKI_OCSP_VerifyResMsg", {need(certificate), need(response)}, certificate, response,
        status, responderCertificate);
}

int CGPKIWrap::OCSPGetCertStatus(int index, int* status, char* revocationTime, int* reason)
{
    return m_toolkit.call("GPKI_OCSP_GetCertStatus", {}, index, status, revocationTime, reason);
}
