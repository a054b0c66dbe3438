// PKCS#12 files of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::PFXExport(int option, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* pfx)
{
    return m_toolkit.call("HVTK_PFX_Export", {need(password), need(certificate), need(privateKey)}, option,
        password, certificate, privateKey, pfx);
}

int CHVTKWrap::PFXExport2(
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates, BINSTR* pfx)
{
    return m_toolkit.call("HVTK_PFX_Export2",
        {need(password), need(certificate), need(privateKey), need(caCertificates)}, password, certificate,
        privateKey, caCertificates, pfx);
}

int CHVTKWrap::PFXImport(
    char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates)
{
    return m_toolkit.call(
        "HVTK_PFX_Import", {need(password), need(pfx)}, password, pfx, certificate, privateKey, caCertificates);
}

int CHVTKWrap::PFXExportMultiPair(
    int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx)
{
    return m_toolkit.call("HVTK_PFX_ExportMultiPair", {need(password), need(certificates), need(privateKeys)},
        option, password, certificates, privateKeys, pfx);
}

int CHVTKWrap::PFXExportMultiPair2(
    char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates, BINSTR* pfx)
{
    // Intended: the function of PFXExportMultiPair with another list of arguments.
    return m_toolkit.call("HVTK_PFX_ExportMultiPair",
        {need(password), need(certificates), need(privateKeys), need(caCertificates)}, password, certificates,
        privateKeys, caCertificates, pfx);
}

int CHVTKWrap::PFXImportMultiPair(
    char* password, BINSTR* pfx, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates)
{
    // The three output records must hold data already; hosts put a placeholder into each.
    return m_toolkit.call("HVTK_PFX_ImportMultiPair",
        {need(password), need(pfx), need(certificates), need(privateKeys), need(caCertificates)}, password, pfx,
        certificates, privateKeys, caCertificates);
}

int CHVTKWrap::PFXImportMultiPair2(
    int mode, char* password, BINSTR* pfx, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates)
{
    return m_toolkit.call("HVTK_PFX_ImportMultiPair2",
        {need(password), need(pfx), need(certificates), need(privateKeys), need(caCertificates)}, mode, password,
        pfx, certificates, privateKeys, caCertificates);
}
