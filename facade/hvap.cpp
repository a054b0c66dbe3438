// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Directory and URL fetches.

#include "facade/row.h"

#include <sigildesk/crypto/hvap.h>

using namespace sigil;

int HVAPGetDataByURL(void* handle, int kind, char* url, BINSTR* data)
{
    return row(handle, {need(url)}, maker(SYMBOL(HVTK_HVAP_GetDataByURL), kind, url, data),
        gpki(SYMBOL(GPKI_LDAP_GetDataByURL), kind, url, data));
}

int HVAPGetCRLByCert(void* handle, BINSTR* certificate, BINSTR* crl)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_HVAP_GetCRLByCert), certificate, crl),
        gpki(SYMBOL(GPKI_LDAP_GetCRLByCert), certificate, crl));
}

int LDAPGetDataByCN(void* handle, char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data)
{
    return row(handle, {need(address), need(commonName)}, absent,
        gpki(SYMBOL(GPKI_LDAP_GetDataByCN), address, port, commonName, kind, baseName, data));
}

int LDAPGetAnyDataByURL(void* handle, char* url, char* attribute, BINSTR* data)
{
    return row(handle, {need(url), need(attribute)}, absent,
        gpki(SYMBOL(GPKI_LDAP_GetAnyDataByURL), url, attribute, data));
}

int LDAPGetCertPath(void* handle, BINSTR* certificate, char* address, BINSTR* path)
{
    return row(handle, {need(certificate), need(address)}, absent,
        gpki(SYMBOL(GPKI_LDAP_GetCertPath), certificate, address, path));
}
