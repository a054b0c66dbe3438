// HVTK_PFX_: PKCS#12 files.

#include "toolkit/calls/pfx.h"
#include "toolkit/engine/base/face.h"

#include <cstdint>

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_PFX_Export(
    void* context, int option, char* password, BINSTR* certificate, BINSTR* key, BINSTR* out)
{
    return call(context, calls::pfxExport, option, password, certificate, key, out);
}

TOOLKIT_FUNCTION HVTK_PFX_Export2(
    void* context, char* password, BINSTR* certificate, BINSTR* key, BINSTR* others, BINSTR* out)
{
    return call(context, calls::pfxExport2, password, certificate, key, others, out);
}

TOOLKIT_FUNCTION HVTK_PFX_Import(
    void* context, char* password, BINSTR* file, BINSTR* certificate, BINSTR* key, BINSTR* others)
{
    return call(context, calls::pfxImport, password, file, certificate, key, others);
}

/** Two argument lists reach this symbol: (option, password, certificates, keys, out), and (password, certificates, keys,
 *  others, out) in the protection of SIGIL_TK_PFX_3DES. Options are small numbers and a password is a pointer, so the
 *  first argument tells which one it is; all six arguments travel in registers on LP64 machines. */
TOOLKIT_FUNCTION HVTK_PFX_ExportMultiPair(void* context, std::intptr_t optionOrPassword,
    void* passwordOrCertificates, BINSTR* third, BINSTR* fourth, BINSTR* out)
{
    constexpr std::intptr_t lowestAddress = 4096;
    if (optionOrPassword >= 0 && optionOrPassword < lowestAddress)
        return call(context, calls::pfxExportLists, static_cast<int>(optionOrPassword),
            static_cast<const char*>(passwordOrCertificates), third, fourth, static_cast<BINSTR*>(nullptr), out);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a pointer that came as a number
    const char* password = reinterpret_cast<const char*>(optionOrPassword);
    return call(context, calls::pfxExportLists, SIGIL_TK_PFX_3DES, password,
        static_cast<BINSTR*>(passwordOrCertificates), third, fourth, out);
}

TOOLKIT_FUNCTION HVTK_PFX_ImportMultiPair(
    void* context, char* password, BINSTR* file, BINSTR* certificates, BINSTR* keys, BINSTR* others)
{
    return call(context, calls::pfxImportLists, SIGIL_TK_PFX_STRICT, password, file, certificates, keys, others);
}

TOOLKIT_FUNCTION HVTK_PFX_ImportMultiPair2(
    void* context, int mode, char* password, BINSTR* file, BINSTR* certificates, BINSTR* keys, BINSTR* others)
{
    return call(context, calls::pfxImportLists, mode, password, file, certificates, keys, others);
}
