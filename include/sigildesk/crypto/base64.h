// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Base64 and PEM.
 *
 *  Base64 is that of RFC 4648, PEM that of RFC 7468.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_BASE64_H
#define SIGILDESK_CRYPTO_BASE64_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Encodes bytes as Base64.
 *  @param data  bytes
 *  @param text  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data is empty */
SIGIL_EXPORT int Base64Encode(void* handle, BINSTR* data, BINSTR* text);

/** Decodes Base64.
 *  @param text  text, as bytes
 *  @param data  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p text is empty */
SIGIL_EXPORT int Base64Decode(void* handle, BINSTR* text, BINSTR* data);

/** Encodes an object as PEM.
 *  @param kind  kind of the object, a number of the toolkit
 *  @param data  bytes
 *  @param text  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PEMEncode(void* handle, int kind, BINSTR* data, BINSTR* text);

/** Decodes PEM. The second record must hold data when the function is called, else the answer is 1001.
 *  @param text  PEM text; the toolkit checks it
 *  @param data  second byte string of the toolkit, must hold data on entry; filled by the toolkit; release it with
 *               HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PEMDecode(void* handle, BINSTR* text, BINSTR* data);

#endif
