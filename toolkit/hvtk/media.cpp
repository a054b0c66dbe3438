// HVTK_MEDIA_: files on the disk. Cards and the system's certificate store are not served.

#include "toolkit/calls/media.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_MEDIA_Load(void* context, char* folder) { return call(context, calls::mediaLoad, folder); }

TOOLKIT_FUNCTION HVTK_MEDIA_Unload(void* context) { return call(context, calls::mediaUnload); }

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadFile(void* context, char* path, BINSTR* out)
{
    return call(context, calls::mediaDiskReadFile, path, out);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WriteFile(void* context, char* path, BINSTR* bytes)
{
    return call(context, calls::mediaDiskWriteFile, path, bytes);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadCert(void* context, char* path, BINSTR* out)
{
    return call(context, calls::mediaDiskReadCert, path, out);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WriteCert(void* context, char* path, BINSTR* certificate)
{
    return call(context, calls::mediaDiskWriteCert, path, certificate);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeleteCert(void* context, char* path)
{
    return call(context, calls::mediaDiskDeleteCert, path);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadPriKey(void* context, char* path, char* password, BINSTR* out)
{
    return call(context, calls::mediaDiskReadPriKey, path, password, out);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WritePriKey(void* context, int algorithm, char* path, char* password, BINSTR* key)
{
    return call(context, calls::mediaDiskWritePriKey, algorithm, path, password, key);
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeletePriKey(void* context, char* password, char* path)
{
    return call(context, calls::mediaDiskDeletePriKey, password, path);
}
