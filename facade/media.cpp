// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Storage media.

#include "facade/row.h"

#include <sigildesk/crypto/media.h>

using namespace sigil;

namespace {

// The GPKI library has one set of storage functions; the medium code tells it where to look.
constexpr int mediumDisk = 1;
constexpr int mediumCard = 2;

} // namespace

int MediaLoad(void* handle, char* name)
{
    return row(handle, {need(name)}, maker(SYMBOL(HVTK_MEDIA_Load), name), gpki(SYMBOL(GPKI_STORAGE_Load), name));
}

int MediaUnLoad(void* handle)
{
    return row(handle, {}, maker(SYMBOL(HVTK_MEDIA_Unload)), gpki(SYMBOL(GPKI_STORAGE_Unload)));
}

int MediaDiskReadFile(void* handle, char* path, BINSTR* data)
{
    return row(handle, {need(path)}, maker(SYMBOL(HVTK_MEDIA_DISK_ReadFile), path, data),
        gpki(SYMBOL(GPKI_STORAGE_ReadFile), path, data));
}

int MediaDiskWriteFile(void* handle, char* path, BINSTR* data)
{
    return row(handle, {need(path), need(data)}, maker(SYMBOL(HVTK_MEDIA_DISK_WriteFile), path, data),
        gpki(SYMBOL(GPKI_STORAGE_WriteFile), path, data));
}

int MediaDiskReadCert(void* handle, char* path, int kind, BINSTR* certificate)
{
    return row(handle, {need(path)}, maker(SYMBOL(HVTK_MEDIA_DISK_ReadCert), path, certificate),
        gpki(SYMBOL(GPKI_STORAGE_ReadCert), mediumDisk, path, kind, certificate));
}

int MediaDiskReadPriKey(void* handle, char* path, char* password, int kind, BINSTR* privateKey)
{
    return secretRow(handle, {need(path), need(password)},
        maker(SYMBOL(HVTK_MEDIA_DISK_ReadPriKey), path, password, privateKey),
        gpki(SYMBOL(GPKI_STORAGE_ReadPriKey), mediumDisk, path, password, kind, privateKey));
}

int MediaDiskWriteCert(void* handle, char* path, int kind, BINSTR* certificate)
{
    return row(handle, {need(path), need(certificate)}, maker(SYMBOL(HVTK_MEDIA_DISK_WriteCert), path, certificate),
        gpki(SYMBOL(GPKI_STORAGE_WriteCert), mediumDisk, path, kind, certificate));
}

int MediaDiskWritePriKey(void* handle, int algorithm, char* path, int kind, char* password, BINSTR* privateKey)
{
    return secretRow(handle, {need(path), need(password), need(privateKey)},
        maker(SYMBOL(HVTK_MEDIA_DISK_WritePriKey), algorithm, path, password, privateKey),
        gpki(SYMBOL(GPKI_STORAGE_WritePriKey), mediumDisk, path, password, kind, algorithm, privateKey));
}

int MediaDiskDeleteCert(void* handle, char* path, int kind)
{
    return row(handle, {need(path)}, maker(SYMBOL(HVTK_MEDIA_DISK_DeleteCert), path),
        gpki(SYMBOL(GPKI_STORAGE_DeleteCert), mediumDisk, path, kind));
}

int MediaDiskDeletePriKey(void* handle, char* password, int kind, char* path)
{
    return secretRow(handle, {need(path)},
        maker(SYMBOL(HVTK_MEDIA_DISK_DeletePriKey), {need(password)}, password, path),
        gpki(SYMBOL(GPKI_STORAGE_DeletePriKey), {need(password)}, mediumDisk, path, password, kind));
}

int MediaCardReadCert(void* handle, int slot, char* path, BINSTR* certificate)
{
    return row(handle, {need(path)}, maker(SYMBOL(HVTK_MEDIA_CARD_ReadCert), slot, path, certificate),
        gpki(SYMBOL(GPKI_STORAGE_ReadCert), mediumCard, path, slot, certificate));
}

int MediaCardReadPriKey(void* handle, int slot, char* path, char* password, BINSTR* privateKey)
{
    return secretRow(handle, {need(path), need(password)},
        maker(SYMBOL(HVTK_MEDIA_CARD_ReadPriKey), slot, path, password, privateKey),
        gpki(SYMBOL(GPKI_STORAGE_ReadPriKey), mediumCard, path, password, slot, privateKey));
}

int MediaCardWriteCert(void* handle, int slot, char* path, BINSTR* certificate)
{
    return row(handle, {need(path), need(certificate)},
        maker(SYMBOL(HVTK_MEDIA_CARD_WriteCert), slot, path, certificate),
        gpki(SYMBOL(GPKI_STORAGE_WriteCert), mediumCard, path, slot, certificate));
}

int MediaCardWritePriKey(void* handle, int slot, int algorithm, char* path, char* password, BINSTR* privateKey)
{
    return secretRow(handle, {need(path), need(password), need(privateKey)},
        maker(SYMBOL(HVTK_MEDIA_CARD_WritePriKey), slot, algorithm, path, password, privateKey),
        gpki(SYMBOL(GPKI_STORAGE_WritePriKey), mediumCard, path, password, slot, algorithm, privateKey));
}

int MediaCardDeleteCert(void* handle, int slot, char* path)
{
    return row(handle, {need(path)}, maker(SYMBOL(HVTK_MEDIA_CARD_DeleteCert), slot, path),
        gpki(SYMBOL(GPKI_STORAGE_DeleteCert), mediumCard, path, slot));
}

int MediaCareDeletePriKey(void* handle, int slot, char* path, char* password)
{
    return secretRow(handle, {need(path), need(password)},
        maker(SYMBOL(HVTK_MEDIA_CARD_DeletePriKey), slot, path, password),
        gpki(SYMBOL(GPKI_STORAGE_DeletePriKey), mediumCard, path, password, slot));
}

int MediaWinsWirteCertKey(void* handle, int store, char* password, BINSTR* pfx)
{
    return secretRow(handle, {need(password), need(pfx)},
        maker(SYMBOL(HVTK_MEDIA_WINS_WriteCertAndPriKey), store, password, pfx), absent);
}

int MediaWinsWirteCert(void* handle, BINSTR* certificate)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_MEDIA_WINS_WriteCert), certificate), absent);
}

int MediaWinsCertCnt(void* handle, char* store, int* count)
{
    return row(
        handle, {need(store)}, maker(SYMBOL(HVTK_MEDIA_WINS_GetCertCnt), {need(count)}, store, count), absent);
}

int MediaWinsCertDN(void* handle, int index, int* kind, char* subject, char* issuer)
{
    return row(handle, {}, maker(SYMBOL(HVTK_MEDIA_WINS_GetCertDN), index, kind, subject, issuer), absent);
}

int MediaWinsReadCert(void* handle, int index, BINSTR* certificate)
{
    return row(handle, {}, maker(SYMBOL(HVTK_MEDIA_WINS_ReadCert), index, certificate), absent);
}

int MediaWinsReadPrikey(void* handle, int index, BINSTR* privateKey)
{
    return secretRow(handle, {}, maker(SYMBOL(HVTK_MEDIA_WINS_ReadPriKey), index, privateKey), absent);
}

int MediaWinsReadCaPubs(void* handle, int index, BINSTR* certificates)
{
    // Intended: the toolkit serves both with one function.
    return row(handle, {}, maker(SYMBOL(HVTK_MEDIA_WINS_ReadPriKey), index, certificates), absent);
}
