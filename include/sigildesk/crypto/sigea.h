/** @file
 *  Challenge-response authentication.
 *
 *  GPKI library only.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_SIGEA_H
#define SIGILDESK_CRYPTO_SIGEA_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Makes a challenge. The record must hold data when the function is called, else the answer is 1001.
 *  @param challenge  byte string of the toolkit, must hold data on entry
 *  @return the common codes; 1001 when @p challenge is empty; 1003 on the maker toolkit */
SIGIL_EXPORT int SIGEAMakeChallenge(void* handle, BINSTR* challenge);

/** Answers a challenge.
 *  @param challenge    challenge
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param response     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p challenge, @p certificate or @p privateKey is empty; 1003 on the maker
 *          toolkit */
SIGIL_EXPORT int SIGEAMakeResponse(
    void* handle, BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response);

/** Verifies the answer to a challenge: 0 when it is good.
 *  @param challenge    challenge
 *  @param response     response
 *  @param certificate  third byte string of the toolkit, required
 *  @return the common codes; 1001 when @p challenge, @p response or @p certificate is empty; 1003 on the maker
 *          toolkit */
SIGIL_EXPORT int SIGEAVerifyResponse(void* handle, BINSTR* challenge, BINSTR* response, BINSTR* certificate);

#endif
