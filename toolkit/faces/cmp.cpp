// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CMP_: certificates from an authority.

#include "toolkit/calls/enrolment.h"
#include "toolkit/calls/not_offered.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CMP_SetProtocol(void* context, int protocol)
{
    return call(context, calls::cmpSetProtocol, protocol);
}

TOOLKIT_FUNCTION HVTK_CMP_SetCA(void* context, int ca) { return call(context, calls::cmpSetCA, ca); }

TOOLKIT_FUNCTION HVTK_CMP_CertRequest(void* context, char* address, int port, char* reference, char* secret,
    char* subject, char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return call(context, calls::cmpCertRequest, address, port, reference, secret, subject, password, caCertificate,
        certificate, privateKey, kmCertificate, kmPrivateKey);
}

TOOLKIT_FUNCTION HVTK_CMP_CertRequest2(void* context, char* address, int port, char* reference, char* secret,
    char* subject, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey)
{
    return call(context, calls::cmpCertRequest2, address, port, reference, secret, subject, password, certificate,
        privateKey, kmCertificate, kmPrivateKey);
}

TOOLKIT_FUNCTION HVTK_CMP_CertUpdate(void* context, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate,
    BINSTR* newPrivateKey)
{
    return call(context, calls::cmpCertUpdate, address, port, newKey, password, newPassword, certificate,
        privateKey, caCertificate, newCertificate, newPrivateKey);
}

TOOLKIT_FUNCTION HVTK_CMP_CertUpdate2(void* context, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return call(context, calls::cmpCertUpdate2, address, port, newKey, password, newPassword, certificate,
        privateKey, newCertificate, newPrivateKey);
}

TOOLKIT_FUNCTION HVTK_CMP_CertRevoke(void* context, char* address, int port, int reason, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* caCertificate, BINSTR* result)
{
    return call(
        context, calls::cmpCertRevoke, address, port, reason, certificate, privateKey, caCertificate, result);
}

TOOLKIT_FUNCTION HVTK_CMP_CertRevoke2(
    void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result)
{
    return call(context, calls::cmpCertRevoke2, address, port, reason, certificate, privateKey, result);
}

TOOLKIT_FUNCTION HVTK_CMP_CertRecovery(void* context, char*, int, char*, char*, BINSTR*, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::recovery);
}
