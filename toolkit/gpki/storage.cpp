// GPKI_STORAGE_: certificates and keys on the disk, the only medium here. Which pair of a certificate is meant (`kind`)
// is already told by the path.

#include "toolkit/engine/keys/storage.h"
#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/file.h"

using namespace toolkit;

namespace {

template <class Body>
int onDisk(void* context, int medium, Body body)
{
    return call(context, [&](Context& state) {
        require(medium == SIGIL_TK_MEDIUM_DISK, SIGIL_TK_MEDIUM);
        body(state);
    });
}

} // namespace

TOOLKIT_FUNCTION GPKI_STORAGE_Load(void* context, char* folder)
{
    return call(context, [&](Context& state) { loadMedium(state, in(folder)); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_Unload(void* context)
{
    return call(context, [](Context& state) { state.mediaFolder.clear(); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadFile(void* context, char* path, BINSTR* out)
{
    return call(context, [&](Context& state) { put(readFile(inPath(state, path)), out); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_WriteFile(void* context, char* path, BINSTR* bytes)
{
    return call(context, [&](Context& state) { writeFile(inPath(state, path), in(bytes)); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadCert(void* context, int medium, char* path, int, BINSTR* out)
{
    return onDisk(
        context, medium, [&](Context& state) { put(readCertificate(state.library(), inPath(state, path)), out); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_WriteCert(void* context, int medium, char* path, int, BINSTR* certificate)
{
    return onDisk(context, medium,
        [&](Context& state) { writeCertificate(state.library(), inPath(state, path), in(certificate)); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeleteCert(void* context, int medium, char* path, int)
{
    return onDisk(context, medium, [&](Context& state) { deleteFile(inPath(state, path)); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadPriKey(void* context, int medium, char* path, char* password, int, BINSTR* out)
{
    return onDisk(context, medium,
        [&](Context& state) { put(readPrivateKey(state.library(), inPath(state, path), in(password)), out); });
}

TOOLKIT_FUNCTION GPKI_STORAGE_WritePriKey(
    void* context, int medium, char* path, char* password, int, int algorithm, BINSTR* key)
{
    return onDisk(context, medium, [&](Context& state) {
        writePrivateKey(state.library(), algorithm, inPath(state, path), in(password), in(key));
    });
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeletePriKey(void* context, int medium, char* path, char* password, int)
{
    return onDisk(context, medium,
        [&](Context& state) { deletePrivateKey(state.library(), inPath(state, path), in(password)); });
}
