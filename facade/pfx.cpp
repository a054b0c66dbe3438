// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// PKCS#12 files.

#include "facade/row.h"

#include <sigildesk/crypto/pfx.h>

using namespace sigil;

namespace {

// The one toolkit function that is called with two lists of arguments.
constexpr Symbol<HVTK_PFX_ExportMultiPair_WithOption> exportMultiPair{"HVTK_PFX_ExportMultiPair"};
constexpr Symbol<HVTK_PFX_ExportMultiPair_WithCaCertificates> exportMultiPair2{exportMultiPair.name};

} // namespace

int PFXExport(void* handle, int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* pfx)
{
    const auto toGpki = [=](CGPKIWrap& library) {
        // Only the GPKI library takes the key-management pair, and it takes no file without one, loaded or not.
        if (const int code = unmet({need(kmCertificate), need(kmPrivateKey)}))
            return code;
        return gpki(SYMBOL(GPKI_PFX_Export), password, certificate, privateKey, kmCertificate, kmPrivateKey, pfx)(
            library);
    };
    return secretRow(handle, {need(password), need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_PFX_Export), option, password, certificate, privateKey, pfx), toGpki);
}

int PFXExport2(void* handle, int /*option*/, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificates, BINSTR* pfx)
{
    return secretRow(handle, {need(password), need(certificate), need(privateKey), need(caCertificates)},
        maker(SYMBOL(HVTK_PFX_Export2), password, certificate, privateKey, caCertificates, pfx), absent);
}

int PFXImport(void* handle, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* caCertificates)
{
    return secretRow(handle, {need(password), need(pfx)},
        maker(SYMBOL(HVTK_PFX_Import), password, pfx, certificate, privateKey, caCertificates),
        gpki(SYMBOL(GPKI_PFX_Import), password, pfx, certificate, privateKey, kmCertificate, kmPrivateKey));
}

int PFXExportMultiPair(
    void* handle, int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx)
{
    return secretRow(handle, {need(password), need(certificates), need(privateKeys)},
        maker(exportMultiPair, option, password, certificates, privateKeys, pfx), absent);
}

int PFXExportMultiPair2(void* handle, int /*option*/, char* password, BINSTR* certificates, BINSTR* privateKeys,
    BINSTR* caCertificates, BINSTR* pfx)
{
    // Intended: the function of PFXExportMultiPair with another list of arguments.
    return secretRow(handle, {need(password), need(certificates), need(privateKeys), need(caCertificates)},
        maker(exportMultiPair2, password, certificates, privateKeys, caCertificates, pfx), absent);
}

int PFXImportMultiPair(
    void* handle, BINSTR* pfx, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates)
{
    // The three output records must hold data already; hosts put a placeholder into each.
    return secretRow(handle, {need(password), need(certificates), need(privateKeys), need(caCertificates)},
        maker(SYMBOL(HVTK_PFX_ImportMultiPair), {need(pfx)}, password, pfx, certificates, privateKeys,
            caCertificates),
        absent);
}

int PFXImportMultiPair2(void* handle, int mode, BINSTR* pfx, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates)
{
    return secretRow(handle, {need(password), need(certificates), need(privateKeys), need(caCertificates)},
        maker(SYMBOL(HVTK_PFX_ImportMultiPair2), {need(pfx)}, mode, password, pfx, certificates, privateKeys,
            caCertificates),
        absent);
}
