// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Challenge-response authentication.
 *
 *  GPKI library only. The open toolkit's form is its own: challenge and response of ISO/IEC 9798-3 in two passes, the response
 *  a signed message (docs/toolkit.md). A licensed library has another one.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_SIGEA_H
#define SIGILDESK_CRYPTO_SIGEA_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Makes a challenge. The record must hold data when the function is called, else the answer is 1001.
 *  @param challenge  must hold data on entry, which the challenge replaces
 *  @return the common codes; 1001 when @p challenge is empty; 1003 on the maker toolkit */
SIGIL_EXPORT int SIGEAMakeChallenge(void* handle, BINSTR* challenge);

/** Answers a challenge.
 *  @param challenge    challenge; 3007 with the open toolkit when it is none
 *  @param certificate  certificate of whoever answers, DER or PEM
 *  @param privateKey   its private key, PrivateKeyInfo in DER; 2005 when it does not belong to the certificate
 *  @param response     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p challenge, @p certificate or @p privateKey is empty; 1003 on the maker
 *          toolkit */
SIGIL_EXPORT int SIGEAMakeResponse(
    void* handle, BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response);

/** Verifies the answer to a challenge: 0 when it is good.
 *  @param challenge    the challenge that was made
 *  @param response     the answer to it; 3403 for the answer to another one or a wrong signature, 3900 when it is none
 *  @param certificate  required. With the open toolkit the certificate that must have answered (3902 for another); data that
 *                      are no certificate are replaced by the one that did. When certificates are trusted
 *                      (CertAddTrustedCert), its path is verified too (3200 to 3208)
 *  @return the common codes; 1001 when @p challenge, @p response or @p certificate is empty; 1003 on the maker
 *          toolkit */
SIGIL_EXPORT int SIGEAVerifyResponse(void* handle, BINSTR* challenge, BINSTR* response, BINSTR* certificate);

#endif
