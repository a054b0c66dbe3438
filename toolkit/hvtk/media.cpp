// HVTK_MEDIA_: files on the disk. Cards and the system's certificate store are not served.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/keys/storage.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_MEDIA_Load(void* context, char* folder)
{
    return call(context, [&](Context& state) { loadMedium(state, in(folder)); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_Unload(void* context)
{
    return call(context, [](Context& state) { state.mediaFolder.clear(); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadFile(void* context, char* path, BINSTR* out)
{
    return call(context, [&](Context& state) { put(readFile(inPath(state, path)), out); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WriteFile(void* context, char* path, BINSTR* bytes)
{
    return call(context, [&](Context& state) { writeFile(inPath(state, path), in(bytes)); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadCert(void* context, char* path, BINSTR* out)
{
    return call(context, [&](Context& state) { put(readCertificate(state.library(), inPath(state, path)), out); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WriteCert(void* context, char* path, BINSTR* certificate)
{
    return call(
        context, [&](Context& state) { writeCertificate(state.library(), inPath(state, path), in(certificate)); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeleteCert(void* context, char* path)
{
    return call(context, [&](Context& state) { deleteFile(inPath(state, path)); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadPriKey(void* context, char* path, char* password, BINSTR* out)
{
    return call(context,
        [&](Context& state) { put(readPrivateKey(state.library(), inPath(state, path), in(password)), out); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WritePriKey(void* context, int algorithm, char* path, char* password, BINSTR* key)
{
    return call(context, [&](Context& state) {
        writePrivateKey(state.library(), algorithm, inPath(state, path), in(password), in(key));
    });
}

/** The only one that takes the password before the path: so its callers pass them. */
TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeletePriKey(void* context, char* password, char* path)
{
    return call(
        context, [&](Context& state) { deletePrivateKey(state.library(), inPath(state, path), in(password)); });
}
