// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#12 files.
 */
#pragma once

#include <sigildesk/binstr.h>

#include <cstdint>

extern "C" {

int HVTK_PFX_Export(
    void* context, int option, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* pfx);
int HVTK_PFX_Export2(
    void* context, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates, BINSTR* pfx);
int HVTK_PFX_Import(
    void* context, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates);
int HVTK_PFX_ExportMultiPair(void* context, std::intptr_t optionOrPassword, void* passwordOrCertificates,
    BINSTR* third, BINSTR* fourth, BINSTR* pfx);
int HVTK_PFX_ImportMultiPair(
    void* context, char* password, BINSTR* pfx, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates);
int HVTK_PFX_ImportMultiPair2(void* context, int mode, char* password, BINSTR* pfx, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates);

int GPKI_PFX_Export(void* context, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey, BINSTR* pfx);
int GPKI_PFX_Import(void* context, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey);

} // extern "C"

/** @name The two argument lists with which HVTK_PFX_ExportMultiPair is called
 *  The one function that has two: its declaration above takes what either list puts in each place, as the machine hands
 *  it over. An option is an int, of which only the low 32 bits count. @{ */
using HVTK_PFX_ExportMultiPair_WithOption = int(
    void* context, int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx);
using HVTK_PFX_ExportMultiPair_WithCaCertificates = int(
    void* context, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates, BINSTR* pfx);
/** @} */
