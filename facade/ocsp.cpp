// Online certificate status.

#include "facade/dispatch.h"

#include <sigildesk/crypto/ocsp.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::OCSPMakeOCSPReq(
    BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey, BINSTR* request)
{
    return pick({need(certificate), need(signerCertificate), need(signerKey)},
        to<&CHVTKWrap::OCSPMakeOCSPReq>(certificate, signRequest, signerCertificate, signerKey, request),
        to<&CGPKIWrap::OCSPMakeOCSPReq>(certificate, signRequest, signerCertificate, signerKey, request));
}

int CWrapperAPI::OCSPSendAndRecv(char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    return pick({need(url), need(certificate), need(request)},
        to<&CHVTKWrap::OCSPSendAndRecv>(url, certificate, request, response),
        to<&CGPKIWrap::OCSPSendAndRecv>(url, certificate, request, response));
}

int CWrapperAPI::OCSPVerifyResMsg(BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate)
{
    return pick({need(certificate), need(response)},
        to<&CHVTKWrap::OCSPVerifyResMsg>(certificate, response, responderCertificate),
        to<&CGPKIWrap::OCSPVerifyResMsg>(certificate, response, status, responderCertificate));
}

int CWrapperAPI::OCSPGetCertStatus(int index, int* status, char* revocationTime, int* reason)
{
    return pick({}, absent, to<&CGPKIWrap::OCSPGetCertStatus>(index, status, revocationTime, reason));
}

// Exports

int OCSPMakeOCSPReq(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request)
{
    return via(
        handle, &CWrapperAPI::OCSPMakeOCSPReq, certificate, signRequest, signerCertificate, signerKey, request);
}

int OCSPSendAndRecv(void* handle, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    return via(handle, &CWrapperAPI::OCSPSendAndRecv, url, certificate, request, response);
}

int OCSPVerifyResMsg(void* handle, BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate)
{
    return via(handle, &CWrapperAPI::OCSPVerifyResMsg, certificate, response, status, responderCertificate);
}

int OCSPGetCertStatus(void* handle, int index, int* status, char* revocationTime, int* reason)
{
    return via(handle, &CWrapperAPI::OCSPGetCertStatus, index, status, revocationTime, reason);
}
