// Certificate management of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::CMPSetProtocol(int protocol) { return m_toolkit.call("HVTK_CMP_SetProtocol", {}, protocol); }

int CHVTKWrap::CMPSetCA(int ca) { return m_toolkit.call("HVTK_CMP_SetCA", {}, ca); }

int CHVTKWrap::CMPCertRequest(char* address, int port, char* reference, char* secret, char* subject, char* password,
    BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return m_toolkit.call("HVTK_CMP_CertRequest",
        {need(address), need(reference), need(secret), need(subject), need(password)}, address, port, reference,
        secret, subject, password, caCertificate, certificate, privateKey, kmCertificate, kmPrivateKey);
}

int CHVTKWrap::CMPCertRequest2(char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return m_toolkit.call("HVTK_CMP_CertRequest2",
        {need(address), need(reference), need(secret), need(subject), need(password)}, address, port, reference,
        secret, subject, password, certificate, privateKey, kmCertificate, kmPrivateKey);
}

int CHVTKWrap::CMPCertUpdate(char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return m_toolkit.call("HVTK_CMP_CertUpdate",
        {need(address), need(password), need(newPassword), need(certificate), need(privateKey)}, address, port,
        newKey, password, newPassword, certificate, privateKey, caCertificate, newCertificate, newPrivateKey);
}

int CHVTKWrap::CMPCertUpdate2(char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return m_toolkit.call("HVTK_CMP_CertUpdate2",
        {need(address), need(password), need(newPassword), need(certificate), need(privateKey),
            need(newCertificate)},
        address, port, newKey, password, newPassword, certificate, privateKey, newCertificate, newPrivateKey);
}

int CHVTKWrap::CMPCertCertRevoke(char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificate, BINSTR* result)
{
    return m_toolkit.call("HVTK_CMP_CertRevoke",
        {need(address), need(certificate), need(privateKey), need(caCertificate), need(result)}, address, port,
        reason, certificate, privateKey, caCertificate, result);
}

int CHVTKWrap::CMPCertCertRevoke2(
    char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result)
{
    return m_toolkit.call("HVTK_CMP_CertRevoke2",
        {need(address), need(certificate), need(privateKey), need(result)}, address, port, reason, certificate,
        privateKey, result);
}

int CHVTKWrap::CMPCertCertRecovery(char* address, int port, char* reference, char* secret, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return m_toolkit.call("HVTK_CMP_CertRecovery",
        {need(address), need(reference), need(secret), need(certificate), need(privateKey)}, address, port,
        reference, secret, certificate, privateKey, kmCertificate, kmPrivateKey);
}
