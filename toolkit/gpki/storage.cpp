// GPKI_STORAGE_: certificates and keys on the disk, the only medium here. Which pair of a certificate is meant (`kind`)
// is already told by the path.

#include "toolkit/calls/media.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

namespace {

template <class Body, class... Arguments>
int onDisk(void* context, int medium, Body body, Arguments... arguments)
{
    return call(context, [&](Context& state) {
        require(medium == SIGIL_TK_MEDIUM_DISK, SIGIL_TK_MEDIUM);
        body(state, arguments...);
    });
}

} // namespace

TOOLKIT_FUNCTION GPKI_STORAGE_Load(void* context, char* folder) { return call(context, calls::mediaLoad, folder); }

TOOLKIT_FUNCTION GPKI_STORAGE_Unload(void* context) { return call(context, calls::mediaUnload); }

TOOLKIT_FUNCTION GPKI_STORAGE_ReadFile(void* context, char* path, BINSTR* out)
{
    return call(context, calls::mediaDiskReadFile, path, out);
}

TOOLKIT_FUNCTION GPKI_STORAGE_WriteFile(void* context, char* path, BINSTR* bytes)
{
    return call(context, calls::mediaDiskWriteFile, path, bytes);
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadCert(void* context, int medium, char* path, int, BINSTR* out)
{
    return onDisk(context, medium, calls::mediaDiskReadCert, path, out);
}

TOOLKIT_FUNCTION GPKI_STORAGE_WriteCert(void* context, int medium, char* path, int, BINSTR* certificate)
{
    return onDisk(context, medium, calls::mediaDiskWriteCert, path, certificate);
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeleteCert(void* context, int medium, char* path, int)
{
    return onDisk(context, medium, calls::mediaDiskDeleteCert, path);
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadPriKey(void* context, int medium, char* path, char* password, int, BINSTR* out)
{
    return onDisk(context, medium, calls::mediaDiskReadPriKey, path, password, out);
}

TOOLKIT_FUNCTION GPKI_STORAGE_WritePriKey(
    void* context, int medium, char* path, char* password, int, int algorithm, BINSTR* key)
{
    return onDisk(context, medium, calls::mediaDiskWritePriKey, algorithm, path, password, key);
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeletePriKey(void* context, int medium, char* path, char* password, int)
{
    return onDisk(context, medium, calls::mediaDiskDeletePriKey, password, path);
}
