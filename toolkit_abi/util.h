// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Object lists, names, certificate paths and trust.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_UTIL_AddObject(void* context, BINSTR* object, BINSTR* list);
int HVTK_UTIL_GetObjectCount(void* context, BINSTR* list, int* count);
int HVTK_UTIL_GetObject(void* context, BINSTR* list, int index, BINSTR* object);
int HVTK_UTIL_CompareDN(void* context, char* name1, char* name2);
int HVTK_UTIL_GetCertPath(void* context, BINSTR* certificate, BINSTR* path);
int HVTK_UTIL_GetRootCert(void* context, BINSTR* certificate, BINSTR* root);
int HVTK_UTIL_IsTrustCert(void* context, BINSTR* certificate, BINSTR* trusted, bool* isTrusted);

} // extern "C"
