// PKCS#12 files.

#include "facade/dispatch.h"

#include <sigildesk/crypto/pfx.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::PFXExport(int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* pfx)
{
    return pick({need(password), need(certificate), need(privateKey)},
        to<&CHVTKWrap::PFXExport>(option, password, certificate, privateKey, pfx), [=](CGPKIWrap& gpki) {
            // Only the GPKI library takes the key-management pair, and it takes no file without one.
            const Needs needs{need(kmCertificate), need(kmPrivateKey)};
            if (needs.unmet)
                return needs.unmet;
            return gpki.PFXExport(password, certificate, privateKey, kmCertificate, kmPrivateKey, pfx);
        });
}

int CWrapperAPI::PFXExport2(
    int /*option*/, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates, BINSTR* pfx)
{
    return pick({need(password), need(certificate), need(privateKey), need(caCertificates)},
        to<&CHVTKWrap::PFXExport2>(password, certificate, privateKey, caCertificates, pfx), absent);
}

int CWrapperAPI::PFXImport(char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* caCertificates)
{
    return pick({need(password), need(pfx)},
        to<&CHVTKWrap::PFXImport>(password, pfx, certificate, privateKey, caCertificates),
        to<&CGPKIWrap::PFXImport>(password, pfx, certificate, privateKey, kmCertificate, kmPrivateKey));
}

int CWrapperAPI::PFXExportMultiPair(
    int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx)
{
    return pick({need(password), need(certificates), need(privateKeys)},
        to<&CHVTKWrap::PFXExportMultiPair>(option, password, certificates, privateKeys, pfx), absent);
}

int CWrapperAPI::PFXExportMultiPair2(
    int /*option*/, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates, BINSTR* pfx)
{
    return pick({need(password), need(certificates), need(privateKeys), need(caCertificates)},
        to<&CHVTKWrap::PFXExportMultiPair2>(password, certificates, privateKeys, caCertificates, pfx), absent);
}

int CWrapperAPI::PFXImportMultiPair(
    BINSTR* pfx, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates)
{
    return pick({need(password), need(certificates), need(privateKeys), need(caCertificates)},
        to<&CHVTKWrap::PFXImportMultiPair>(password, pfx, certificates, privateKeys, caCertificates), absent);
}

int CWrapperAPI::PFXImportMultiPair2(
    int mode, BINSTR* pfx, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates)
{
    return pick({need(password), need(certificates), need(privateKeys), need(caCertificates)},
        to<&CHVTKWrap::PFXImportMultiPair2>(mode, password, pfx, certificates, privateKeys, caCertificates),
        absent);
}

// Exports

int PFXExport(void* handle, int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* pfx)
{
    return via(handle, &CWrapperAPI::PFXExport, option, password, certificate, privateKey, kmCertificate,
        kmPrivateKey, pfx);
}

int PFXExport2(void* handle, int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificates, BINSTR* pfx)
{
    return via(handle, &CWrapperAPI::PFXExport2, option, password, certificate, privateKey, caCertificates, pfx);
}

int PFXImport(void* handle, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* caCertificates)
{
    return via(handle, &CWrapperAPI::PFXImport, password, pfx, certificate, privateKey, kmCertificate, kmPrivateKey,
        caCertificates);
}

int PFXExportMultiPair(
    void* handle, int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx)
{
    return via(handle, &CWrapperAPI::PFXExportMultiPair, option, password, certificates, privateKeys, pfx);
}

int PFXExportMultiPair2(void* handle, int option, char* password, BINSTR* certificates, BINSTR* privateKeys,
    BINSTR* caCertificates, BINSTR* pfx)
{
    return via(handle, &CWrapperAPI::PFXExportMultiPair2, option, password, certificates, privateKeys,
        caCertificates, pfx);
}

int PFXImportMultiPair(
    void* handle, BINSTR* pfx, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates)
{
    return via(handle, &CWrapperAPI::PFXImportMultiPair, pfx, password, certificates, privateKeys, caCertificates);
}

int PFXImportMultiPair2(void* handle, int mode, BINSTR* pfx, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates)
{
    return via(
        handle, &CWrapperAPI::PFXImportMultiPair2, mode, pfx, password, certificates, privateKeys, caCertificates);
}
