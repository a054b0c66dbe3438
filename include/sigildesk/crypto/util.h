// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Object lists, names and trust.
 *
 *  Maker toolkit only. An object list is one byte string that holds several, for example the pairs of a PKCS#12
 *  file.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_UTIL_H
#define SIGILDESK_CRYPTO_UTIL_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Appends an object to a list.
 *  @param object  object
 *  @param list    list that grows; create it with HV_BINSTR_Create before the first call, release it with
 *                 HV_BINSTR_Delete
 *  @return the common codes; 1001 when @p object is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UTILAddObject(void* handle, BINSTR* object, BINSTR* list);

/** Number of objects in a list.
 *  @param list   object list
 *  @param count  receives the number; null answers 1001
 *  @return the common codes; 1001 when @p list is empty; 1001 when @p count is null, from the backend; 1003 on the
 *          GPKI library */
SIGIL_EXPORT int UTILGetObjectCount(void* handle, BINSTR* list, int* count);

/** Takes one object out of a list.
 *  @param list    object list
 *  @param index   position in the list; the toolkit says where it counts from
 *  @param object  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p list is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UTILGetObject(void* handle, BINSTR* list, int index, BINSTR* object);

/** Compares two distinguished names: 0 when they are the same.
 *  @param name1  first name
 *  @param name2  second name
 *  @return the common codes; 1001 when @p name1 or @p name2 is null; 1003 on the GPKI library */
SIGIL_EXPORT int UTILCompareDN(void* handle, char* name1, char* name2);

/** Gives the certificates above a certificate.
 *  @param certificate  DER certificate
 *  @param path         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UTILGetCertPath(void* handle, BINSTR* certificate, BINSTR* path);

/** Gives the root certificate above a certificate.
 *  @param certificate  DER certificate
 *  @param root         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UTILGetRootCert(void* handle, BINSTR* certificate, BINSTR* root);

/** Tells whether a certificate is among the trusted ones.
 *  @param certificate  DER certificate
 *  @param trusted      trusted certificates
 *  @param isTrusted    receives the answer; null answers 1001
 *  @return the common codes; 1001 when @p certificate or @p trusted is empty; 1001 when @p isTrusted is null, from
 *          the backend; 1003 on the GPKI library */
SIGIL_EXPORT int UTILIsTrustCert(void* handle, BINSTR* certificate, BINSTR* trusted, bool* isTrusted);

#endif
