// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Identity verification (VID).
 *
 *  A certificate's subject identification binds it to an identity number through a random value R kept with the
 *  private key (RFC 4683).
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_VID_H
#define SIGILDESK_CRYPTO_VID_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Takes the random value R out of a private key.
 *  @param privateKey  private key in the clear
 *  @param random      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p privateKey is empty */
SIGIL_EXPORT int VIDGetRandomFromPriKey(void* handle, BINSTR* privateKey, BINSTR* random);

/** Checks an identity text against a certificate and R: 0 when they belong together.
 *  @param certificate  DER certificate
 *  @param random       random value R
 *  @param identity     identity text, terminated
 *  @return the common codes; 1001 when @p certificate or @p random is empty or @p identity is null */
SIGIL_EXPORT int VIDVerify(void* handle, BINSTR* certificate, BINSTR* random, char* identity);

/** Has an identity verification server check it.
 *  @param confFile        text that tells the toolkit how to reach the server
 *  @param certificate     DER certificate
 *  @param random          random value R
 *  @param identity        identity text, terminated
 *  @param ivsCertificate  certificate of the server
 *  @return the common codes; 1001 when @p certificate, @p random or @p ivsCertificate is empty or @p confFile or @p
 *          identity is null */
SIGIL_EXPORT int VIDVerifyByIVS(
    void* handle, char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate);

#endif
