// HVTK_MEDIA_ and GPKI_STORAGE_: files, certificates and keys on the disk, the only medium here. Which pair of a
// certificate GPKI_STORAGE_ means (`kind`) is already told by the path.

#include "toolkit/calls/media.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

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

TOOLKIT_FUNCTION HVTK_MEDIA_Load(void* context, char* folder) { return call(context, calls::mediaLoad, folder); }
SAME_FUNCTION(GPKI_STORAGE_Load, HVTK_MEDIA_Load);

TOOLKIT_FUNCTION HVTK_MEDIA_Unload(void* context) { return call(context, calls::mediaUnload); }
SAME_FUNCTION(GPKI_STORAGE_Unload, HVTK_MEDIA_Unload);

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadFile(void* context, char* path, BINSTR* out)
{
    return call(context, calls::mediaDiskReadFile, path, out);
}
SAME_FUNCTION(GPKI_STORAGE_ReadFile, HVTK_MEDIA_DISK_ReadFile);

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WriteFile(void* context, char* path, BINSTR* bytes)
{
    return call(context, calls::mediaDiskWriteFile, path, bytes);
}
SAME_FUNCTION(GPKI_STORAGE_WriteFile, HVTK_MEDIA_DISK_WriteFile);

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadCert(void* context, char* path, BINSTR* out)
{
    return call(context, calls::mediaDiskReadCert, path, out);
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadCert(void* context, int medium, char* path, int, BINSTR* out)
{
    return onDisk(context, medium, calls::mediaDiskReadCert, path, out);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WriteCert(void* context, char* path, BINSTR* certificate)
{
    return call(context, calls::mediaDiskWriteCert, path, certificate);
}

TOOLKIT_FUNCTION GPKI_STORAGE_WriteCert(void* context, int medium, char* path, int, BINSTR* certificate)
{
    return onDisk(context, medium, calls::mediaDiskWriteCert, path, certificate);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeleteCert(void* context, char* path)
{
    return call(context, calls::mediaDiskDeleteCert, path);
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeleteCert(void* context, int medium, char* path, int)
{
    return onDisk(context, medium, calls::mediaDiskDeleteCert, path);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadPriKey(void* context, char* path, char* password, BINSTR* out)
{
    return call(context, calls::mediaDiskReadPriKey, path, password, out);
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadPriKey(void* context, int medium, char* path, char* password, int, BINSTR* out)
{
    return onDisk(context, medium, calls::mediaDiskReadPriKey, path, password, out);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WritePriKey(void* context, int algorithm, char* path, char* password, BINSTR* key)
{
    return call(context, calls::mediaDiskWritePriKey, algorithm, path, password, key);
}

TOOLKIT_FUNCTION GPKI_STORAGE_WritePriKey(
    void* context, int medium, char* path, char* password, int, int algorithm, BINSTR* key)
{
    return onDisk(context, medium, calls::mediaDiskWritePriKey, algorithm, path, password, key);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeletePriKey(void* context, char* password, char* path)
{
    return call(context, calls::mediaDiskDeletePriKey, password, path);
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeletePriKey(void* context, int medium, char* path, char* password, int)
{
    return onDisk(context, medium, calls::mediaDiskDeletePriKey, password, path);
}
