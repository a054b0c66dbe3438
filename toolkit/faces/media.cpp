// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// HVTK_MEDIA_ and GPKI_STORAGE_: files on the disk, objects on cards, and the system's certificate store. `place` of GPKI_STORAGE_ is
// the slot of a card; for the disk it tells which pair is meant, and the path says that already.

#include "toolkit/calls/media.h"
#include "toolkit/calls/system_store.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

namespace {

/** Does what the medium needs. */
template <class Disk, class Card>
int onMedium(void* context, int medium, Disk disk, Card card)
{
    return call(context, [&](Context& state) {
        require(medium == SIGIL_TK_MEDIUM_DISK || medium == SIGIL_TK_MEDIUM_CARD, SIGIL_TK_MEDIUM);
        if (medium == SIGIL_TK_MEDIUM_DISK)
            disk(state);
        else
            card(state);
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

TOOLKIT_FUNCTION HVTK_MEDIA_CARD_ReadCert(void* context, int slot, char* path, BINSTR* out)
{
    return call(context, calls::mediaCardReadCert, slot, path, out);
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadCert(void* context, int medium, char* path, int place, BINSTR* out)
{
    return onMedium(
        context, medium, [&](Context& state) { calls::mediaDiskReadCert(state, path, out); },
        [&](Context& state) { calls::mediaCardReadCert(state, place, path, out); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WriteCert(void* context, char* path, BINSTR* certificate)
{
    return call(context, calls::mediaDiskWriteCert, path, certificate);
}

TOOLKIT_FUNCTION HVTK_MEDIA_CARD_WriteCert(void* context, int slot, char* path, BINSTR* certificate)
{
    return call(context, calls::mediaCardWriteCert, slot, path, certificate);
}

TOOLKIT_FUNCTION GPKI_STORAGE_WriteCert(void* context, int medium, char* path, int place, BINSTR* certificate)
{
    return onMedium(
        context, medium, [&](Context& state) { calls::mediaDiskWriteCert(state, path, certificate); },
        [&](Context& state) { calls::mediaCardWriteCert(state, place, path, certificate); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeleteCert(void* context, char* path)
{
    return call(context, calls::mediaDiskDeleteCert, path);
}

TOOLKIT_FUNCTION HVTK_MEDIA_CARD_DeleteCert(void* context, int slot, char* path)
{
    return call(context, calls::mediaCardDeleteCert, slot, path);
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeleteCert(void* context, int medium, char* path, int place)
{
    return onMedium(
        context, medium, [&](Context& state) { calls::mediaDiskDeleteCert(state, path); },
        [&](Context& state) { calls::mediaCardDeleteCert(state, place, path); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_ReadPriKey(void* context, char* path, char* password, BINSTR* out)
{
    return call(context, calls::mediaDiskReadPriKey, path, password, out);
}

TOOLKIT_FUNCTION HVTK_MEDIA_CARD_ReadPriKey(void* context, int, char*, char*, BINSTR*)
{
    return call(context, calls::mediaCardReadPriKey);
}

TOOLKIT_FUNCTION GPKI_STORAGE_ReadPriKey(void* context, int medium, char* path, char* password, int, BINSTR* out)
{
    return onMedium(
        context, medium, [&](Context& state) { calls::mediaDiskReadPriKey(state, path, password, out); },
        [&](Context& state) { calls::mediaCardReadPriKey(state); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_WritePriKey(void* context, int algorithm, char* path, char* password, BINSTR* key)
{
    return call(context, calls::mediaDiskWritePriKey, algorithm, path, password, key);
}

TOOLKIT_FUNCTION HVTK_MEDIA_CARD_WritePriKey(void* context, int slot, int, char* path, char* password, BINSTR* key)
{
    return call(context, calls::mediaCardWritePriKey, slot, path, password, key);
}

TOOLKIT_FUNCTION GPKI_STORAGE_WritePriKey(
    void* context, int medium, char* path, char* password, int place, int algorithm, BINSTR* key)
{
    return onMedium(
        context, medium,
        [&](Context& state) { calls::mediaDiskWritePriKey(state, algorithm, path, password, key); },
        [&](Context& state) { calls::mediaCardWritePriKey(state, place, path, password, key); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_DISK_DeletePriKey(void* context, char* password, char* path)
{
    return call(context, calls::mediaDiskDeletePriKey, password, path);
}

TOOLKIT_FUNCTION HVTK_MEDIA_CARD_DeletePriKey(void* context, int slot, char* path, char* password)
{
    return call(context, calls::mediaCardDeletePriKey, slot, path, password);
}

TOOLKIT_FUNCTION GPKI_STORAGE_DeletePriKey(void* context, int medium, char* path, char* password, int place)
{
    return onMedium(
        context, medium, [&](Context& state) { calls::mediaDiskDeletePriKey(state, password, path); },
        [&](Context& state) { calls::mediaCardDeletePriKey(state, place, path, password); });
}

TOOLKIT_FUNCTION HVTK_MEDIA_WINS_WriteCertAndPriKey(void* context, int, char* password, BINSTR* pfx)
{
    return call(context, calls::mediaWinsWriteCertAndPriKey, password, pfx);
}

TOOLKIT_FUNCTION HVTK_MEDIA_WINS_WriteCert(void* context, BINSTR* certificate)
{
    return call(context, calls::mediaWinsWriteCert, certificate);
}

TOOLKIT_FUNCTION HVTK_MEDIA_WINS_GetCertCnt(void* context, char* store, int* count)
{
    return call(context, calls::mediaWinsGetCertCnt, store, count);
}

TOOLKIT_FUNCTION HVTK_MEDIA_WINS_GetCertDN(void* context, int index, int* kind, char* subject, char* issuer)
{
    return call(context, calls::mediaWinsGetCertDN, index, kind, subject, issuer);
}

TOOLKIT_FUNCTION HVTK_MEDIA_WINS_ReadCert(void* context, int index, BINSTR* certificate)
{
    return call(context, calls::mediaWinsReadCert, index, certificate);
}

TOOLKIT_FUNCTION HVTK_MEDIA_WINS_ReadPriKey(void* context, int, BINSTR*)
{
    return call(context, calls::mediaWinsReadPriKey);
}
