// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificate management.

#include "facade/row.h"

#include <sigildesk/crypto/cmp.h>

using namespace sigil;

int CMPSetProtocol(void* handle, int protocol)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CMP_SetProtocol), protocol), absent);
}

int CMPSetCA(void* handle, int ca) { return row(handle, {}, maker(SYMBOL(HVTK_CMP_SetCA), ca), absent); }

int CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey)
{
    return secretRow(handle, {need(address), need(reference), need(secret), need(subject), need(password)},
        maker(SYMBOL(HVTK_CMP_CertRequest), address, port, reference, secret, subject, password, caCertificate,
            certificate, privateKey, kmCertificate, kmPrivateKey),
        absent);
}

int CMPCertRequest2(void* handle, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return secretRow(handle, {need(address), need(reference), need(secret), need(subject), need(password)},
        maker(SYMBOL(HVTK_CMP_CertRequest2), address, port, reference, secret, subject, password, certificate,
            privateKey, kmCertificate, kmPrivateKey),
        absent);
}

int CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return secretRow(handle,
        {need(address), need(password), need(newPassword), need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_CMP_CertUpdate), address, port, newKey, password, newPassword, certificate, privateKey,
            caCertificate, newCertificate, newPrivateKey),
        absent);
}

int CMPCertUpdate2(void* handle, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    return secretRow(handle,
        {need(address), need(password), need(newPassword), need(certificate), need(privateKey),
            need(newCertificate)},
        maker(SYMBOL(HVTK_CMP_CertUpdate2), address, port, newKey, password, newPassword, certificate, privateKey,
            newCertificate, newPrivateKey),
        absent);
}

int CMPCertCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificate, BINSTR* result)
{
    return secretRow(handle,
        {need(address), need(certificate), need(privateKey), need(caCertificate), need(result)},
        maker(SYMBOL(HVTK_CMP_CertRevoke), address, port, reason, certificate, privateKey, caCertificate, result),
        absent);
}

int CMPCertCertRevoke2(
    void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result)
{
    return secretRow(handle, {need(address), need(certificate), need(privateKey), need(result)},
        maker(SYMBOL(HVTK_CMP_CertRevoke2), address, port, reason, certificate, privateKey, result), absent);
}

int CMPCertCertRecovery(void* handle, char* address, int port, char* reference, char* secret, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return secretRow(handle, {need(address), need(reference), need(secret), need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_CMP_CertRecovery), address, port, reference, secret, certificate, privateKey,
            kmCertificate, kmPrivateKey),
        absent);
}
