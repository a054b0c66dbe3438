// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Directory and URL fetches.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_HVAP_GetDataByURL(void* context, int kind, char* url, BINSTR* data);
int HVTK_HVAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* crl);

int GPKI_LDAP_GetDataByURL(void* context, int kind, char* url, BINSTR* data);
int GPKI_LDAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* crl);
int GPKI_LDAP_GetDataByCN(
    void* context, char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data);
int GPKI_LDAP_GetAnyDataByURL(void* context, char* url, char* attribute, BINSTR* data);
int GPKI_LDAP_GetCertPath(void* context, BINSTR* certificate, char* address, BINSTR* path);

} // extern "C"
