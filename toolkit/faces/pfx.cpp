// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// PFX_: PKCS#12 files. GPKI_PFX_: with a signing pair and, when there is one, a key-management pair.

#include "toolkit/calls/pfx.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_PFX_Export(
    void* context, int option, char* password, BINSTR* certificate, BINSTR* key, BINSTR* out)
{
    return call(context, calls::pfxExport, option, password, certificate, key, out);
}

TOOLKIT_FUNCTION GPKI_PFX_Export(void* context, char* password, BINSTR* signCertificate, BINSTR* signKey,
    BINSTR* kmCertificate, BINSTR* kmKey, BINSTR* out)
{
    return call(context, calls::pfxExportPairs, password, signCertificate, signKey, kmCertificate, kmKey, out);
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

TOOLKIT_FUNCTION GPKI_PFX_Import(void* context, char* password, BINSTR* file, BINSTR* signCertificate,
    BINSTR* signKey, BINSTR* kmCertificate, BINSTR* kmKey)
{
    return call(context, calls::pfxImportPairs, password, file, signCertificate, signKey, kmCertificate, kmKey);
}

/** In the protection of @p option, without other certificates. */
extern "C" [[gnu::used, gnu::visibility("hidden")]] int exportMultiPairWithOption(
    void* context, int option, char* password, BINSTR* certificates, BINSTR* keys, BINSTR* out)
{
    return call(
        context, calls::pfxExportLists, option, password, certificates, keys, static_cast<BINSTR*>(nullptr), out);
}

/** With other certificates, in the protection of SIGIL_TK_PFX_3DES. */
extern "C" [[gnu::used, gnu::visibility("hidden")]] int exportMultiPairWithOthers(
    void* context, char* password, BINSTR* certificates, BINSTR* keys, BINSTR* others, BINSTR* out)
{
    return call(context, calls::pfxExportLists, SIGIL_TK_PFX_3DES, password, certificates, keys, others, out);
}

// Both argument lists reach one symbol, HVTK_PFX_ExportMultiPair, and no C++ function has two. The choice stands in front of
// them and looks at the low 32 bits of the second argument alone: an option is a small number, with nothing defined above
// it in the register; a password is an address, beyond the first page.
#if defined(__x86_64__)
asm(R"(
    .text
    .globl HVTK_PFX_ExportMultiPair
    .type HVTK_PFX_ExportMultiPair, @function
HVTK_PFX_ExportMultiPair:
    endbr64
    cmpl $4096, %esi
    jb exportMultiPairWithOption
    jmp exportMultiPairWithOthers
    .size HVTK_PFX_ExportMultiPair, . - HVTK_PFX_ExportMultiPair
)");
#elif defined(__aarch64__)
asm(R"(
    .text
    .globl HVTK_PFX_ExportMultiPair
    .type HVTK_PFX_ExportMultiPair, %function
HVTK_PFX_ExportMultiPair:
    hint #34 // bti c
    cmp w1, #1, lsl #12
    b.lo exportMultiPairWithOption
    b exportMultiPairWithOthers
    .size HVTK_PFX_ExportMultiPair, . - HVTK_PFX_ExportMultiPair
)");
#else
#error "HVTK_PFX_ExportMultiPair: write the choice between the two argument lists for this processor"
#endif

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
