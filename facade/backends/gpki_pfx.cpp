// PKCS#12 files of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::PFXExport(char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey, BINSTR* pfx)
{
    return m_toolkit.call("GPKI_PFX_Export",
        {need(password), need(certificate), need(privateKey), need(kmCertificate), need(kmPrivateKey)}, password,
        certificate, privateKey, kmCertificate, kmPrivateKey, pfx);
}

int CGPKIWrap::PFXImport(char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    return m_toolkit.call("GPKI_PFX_Import", {need(password), need(pfx)}, password, pfx, certificate, privateKey,
        kmCertificate, kmPrivateKey);
}
