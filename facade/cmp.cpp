// Certificate management.

#include "facade/dispatch.h"

#include <sigildesk/crypto/cmp.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::CMPSetProtocol(int protocol) { return pick({}, to<&CHVTKWrap::CMPSetProtocol>(protocol), absent); }

int CWrapperAPI::CMPSetCA(int ca) { return pick({}, to<&CHVTKWrap::CMPSetCA>(ca), absent); }

int CWrapperAPI::CMPCertRequest(char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey)
{
    return pick({need(address), need(reference), need(secret), need(subject), need(password)},
        to<&CHVTKWrap::CMPCertRequest>(address, port, reference, secret, subject, password, caCertificate,
            certificate, privateKey, kmCertificate, kmPrivateKey),
        absent);
}

int CWrapperAPI::CMPCertRequest2(char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return pick({need(address), need(reference), need(secret), need(subject), need(password)},
        to<&CHVTKWrap::CMPCertRequest2>(address, port, reference, secret, subject, password, certificate,
            privateKey, kmCertificate, kmPrivateKey),
        absent);
}

int CWrapperAPI::CMPCertUpdate(char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return pick({need(address), need(password), need(newPassword), need(certificate), need(privateKey)},
        to<&CHVTKWrap::CMPCertUpdate>(address, port, newKey, password, newPassword, certificate, privateKey,
            caCertificate, newCertificate, newPrivateKey),
        absent);
}

int CWrapperAPI::CMPCertUpdate2(char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return pick({need(address), need(password), need(newPassword), need(certificate), need(privateKey),
                    need(newCertificate)},
        to<&CHVTKWrap::CMPCertUpdate2>(
            address, port, newKey, password, newPassword, certificate, privateKey, newCertificate, newPrivateKey),
        absent);
}

int CWrapperAPI::CMPCertCertRevoke(char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificate, BINSTR* result)
{
    return pick({need(address), need(certificate), need(privateKey), need(caCertificate), need(result)},
        to<&CHVTKWrap::CMPCertCertRevoke>(address, port, reason, certificate, privateKey, caCertificate, result),
        absent);
}

int CWrapperAPI::CMPCertCertRevoke2(
    char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result)
{
    return pick({need(address), need(certificate), need(privateKey), need(result)},
        to<&CHVTKWrap::CMPCertCertRevoke2>(address, port, reason, certificate, privateKey, result), absent);
}

int CWrapperAPI::CMPCertCertRecovery(char* address, int port, char* reference, char* secret, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return pick({need(address), need(reference), need(secret), need(certificate), need(privateKey)},
        to<&CHVTKWrap::CMPCertCertRecovery>(
            address, port, reference, secret, certificate, privateKey, kmCertificate, kmPrivateKey),
        absent);
}

// Exports

int CMPSetProtocol(void* handle, int protocol) { return via(handle, &CWrapperAPI::CMPSetProtocol, protocol); }

int CMPSetCA(void* handle, int ca) { return via(handle, &CWrapperAPI::CMPSetCA, ca); }

int CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey)
{
    return via(handle, &CWrapperAPI::CMPCertRequest, address, port, reference, secret, subject, password,
        caCertificate, certificate, privateKey, kmCertificate, kmPrivateKey);
}

int CMPCertRequest2(void* handle, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return via(handle, &CWrapperAPI::CMPCertRequest2, address, port, reference, secret, subject, password,
        certificate, privateKey, kmCertificate, kmPrivateKey);
}

int CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return via(handle, &CWrapperAPI::CMPCertUpdate, address, port, newKey, password, newPassword, certificate,
        privateKey, caCertificate, newCertificate, newPrivateKey);
}

int CMPCertUpdate2(void* handle, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return via(handle, &CWrapperAPI::CMPCertUpdate2, address, port, newKey, password, newPassword, certificate,
        privateKey, newCertificate, newPrivateKey);
}

int CMPCertCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificate, BINSTR* result)
{
    return via(handle, &CWrapperAPI::CMPCertCertRevoke, address, port, reason, certificate, privateKey,
        caCertificate, result);
}

int CMPCertCertRevoke2(
    void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result)
{
    return via(handle, &CWrapperAPI::CMPCertCertRevoke2, address, port, reason, certificate, privateKey, result);
}

int CMPCertCertRecovery(void* handle, char* address, int port, char* reference, char* secret, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return via(handle, &CWrapperAPI::CMPCertCertRecovery, address, port, reference, secret, certificate, privateKey,
        kmCertificate, kmPrivateKey);
}
