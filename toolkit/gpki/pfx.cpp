// GPKI_PFX_: PKCS#12 files with a signing pair and, when there is one, a key-management pair.

#include "toolkit/calls/pfx.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_PFX_Export(void* context, char* password, BINSTR* signCertificate, BINSTR* signKey,
    BINSTR* kmCertificate, BINSTR* kmKey, BINSTR* out)
{
    return call(context, calls::pfxExportPairs, password, signCertificate, signKey, kmCertificate, kmKey, out);
}

TOOLKIT_FUNCTION GPKI_PFX_Import(void* context, char* password, BINSTR* file, BINSTR* signCertificate,
    BINSTR* signKey, BINSTR* kmCertificate, BINSTR* kmKey)
{
    return call(context, calls::pfxImportPairs, password, file, signCertificate, signKey, kmCertificate, kmKey);
}
