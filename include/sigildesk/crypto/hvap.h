// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Directory and URL fetches.
 *
 *  The HVAP functions exist on both toolkits (the GPKI library calls them LDAP), the LDAP functions on the GPKI
 *  library only.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_HVAP_H
#define SIGILDESK_CRYPTO_HVAP_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Fetches the entry that an address names.
 *  @param kind  kind of data, a number of the toolkit
 *  @param url   address, as text
 *  @param data  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p url is null */
SIGIL_EXPORT int HVAPGetDataByURL(void* handle, int kind, char* url, BINSTR* data);

/** Fetches the revocation list that a certificate points to.
 *  @param certificate  DER certificate
 *  @param crl          filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate is empty */
SIGIL_EXPORT int HVAPGetCRLByCert(void* handle, BINSTR* certificate, BINSTR* crl);

/** Fetches an entry by its common name.
 *  @param address     first text: directory address
 *  @param port        first number of the toolkit
 *  @param commonName  second text: common name
 *  @param kind        second number of the toolkit
 *  @param baseName    third text of the toolkit, may be null
 *  @param data        filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p address or @p commonName is null; 1003 on the maker toolkit */
SIGIL_EXPORT int LDAPGetDataByCN(
    void* handle, char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data);

/** Fetches one attribute of the entry that an address names.
 *  @param url        address, as text
 *  @param attribute  attribute name
 *  @param data       filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p url or @p attribute is null; 1003 on the maker toolkit */
SIGIL_EXPORT int LDAPGetAnyDataByURL(void* handle, char* url, char* attribute, BINSTR* data);

/** Fetches the certificates above a certificate.
 *  @param certificate  DER certificate
 *  @param address      text of the toolkit
 *  @param path         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate is empty or @p address is null; 1003 on the maker toolkit */
SIGIL_EXPORT int LDAPGetCertPath(void* handle, BINSTR* certificate, char* address, BINSTR* path);

#endif
