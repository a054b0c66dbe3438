// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Storage media: disk, card slots and the system store. The government's library takes the medium as a number, 1 for the
 *  disk and 2 for a card.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_MEDIA_Load(void* context, char* name);
int HVTK_MEDIA_Unload(void* context);
int HVTK_MEDIA_DISK_ReadFile(void* context, char* path, BINSTR* data);
int HVTK_MEDIA_DISK_WriteFile(void* context, char* path, BINSTR* data);
int HVTK_MEDIA_DISK_ReadCert(void* context, char* path, BINSTR* certificate);
int HVTK_MEDIA_DISK_ReadPriKey(void* context, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_DISK_WriteCert(void* context, char* path, BINSTR* certificate);
int HVTK_MEDIA_DISK_WritePriKey(void* context, int algorithm, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_DISK_DeleteCert(void* context, char* path);
int HVTK_MEDIA_DISK_DeletePriKey(void* context, char* password, char* path);
int HVTK_MEDIA_CARD_ReadCert(void* context, int slot, char* path, BINSTR* certificate);
int HVTK_MEDIA_CARD_ReadPriKey(void* context, int slot, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_CARD_WriteCert(void* context, int slot, char* path, BINSTR* certificate);
int HVTK_MEDIA_CARD_WritePriKey(
    void* context, int slot, int algorithm, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_CARD_DeleteCert(void* context, int slot, char* path);
int HVTK_MEDIA_CARD_DeletePriKey(void* context, int slot, char* path, char* password);
int HVTK_MEDIA_WINS_WriteCertAndPriKey(void* context, int store, char* password, BINSTR* pfx);
int HVTK_MEDIA_WINS_WriteCert(void* context, BINSTR* certificate);
int HVTK_MEDIA_WINS_GetCertCnt(void* context, char* store, int* count);
int HVTK_MEDIA_WINS_GetCertDN(void* context, int index, int* kind, char* subject, char* issuer);
int HVTK_MEDIA_WINS_ReadCert(void* context, int index, BINSTR* certificate);
int HVTK_MEDIA_WINS_ReadPriKey(void* context, int index, BINSTR* privateKey);

int GPKI_STORAGE_Load(void* context, char* name);
int GPKI_STORAGE_Unload(void* context);
int GPKI_STORAGE_ReadFile(void* context, char* path, BINSTR* data);
int GPKI_STORAGE_WriteFile(void* context, char* path, BINSTR* data);
int GPKI_STORAGE_ReadCert(void* context, int medium, char* path, int kind, BINSTR* certificate);
int GPKI_STORAGE_ReadPriKey(void* context, int medium, char* path, char* password, int kind, BINSTR* privateKey);
int GPKI_STORAGE_WriteCert(void* context, int medium, char* path, int kind, BINSTR* certificate);
int GPKI_STORAGE_WritePriKey(
    void* context, int medium, char* path, char* password, int kind, int algorithm, BINSTR* privateKey);
int GPKI_STORAGE_DeleteCert(void* context, int medium, char* path, int kind);
int GPKI_STORAGE_DeletePriKey(void* context, int medium, char* path, char* password, int kind);

} // extern "C"
