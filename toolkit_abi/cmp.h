// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificate management.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_CMP_SetProtocol(void* context, int protocol);
int HVTK_CMP_SetCA(void* context, int ca);
int HVTK_CMP_CertRequest(void* context, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey);
int HVTK_CMP_CertRequest2(void* context, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);
int HVTK_CMP_CertUpdate(void* context, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey);
int HVTK_CMP_CertUpdate2(void* context, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey);
int HVTK_CMP_CertRevoke(void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificate, BINSTR* result);
int HVTK_CMP_CertRevoke2(
    void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result);
int HVTK_CMP_CertRecovery(void* context, char* address, int port, char* reference, char* secret,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);

} // extern "C"
