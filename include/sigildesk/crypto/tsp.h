// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Time stamps.
 *
 *  The protocol is that of RFC 3161. With the open toolkit a hash of 0 is that of HV_SetHashAlg, an address that is neither of
 *  the web nor a host alone is 3600, a server that does not answer within twenty seconds 3601, and what is empty where
 *  something is needed 3000.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_TSP_H
#define SIGILDESK_CRYPTO_TSP_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Gets a time stamp for data in one step.
 *  @param address      address of the authority; open toolkit: "http://host[:port]/path", https too, or a host alone
 *  @param port         port or other number of the toolkit; open toolkit: of a host alone, 0 for 80
 *  @param hash         hash algorithm, a number of the toolkit; open toolkit: SigilToolkitHash
 *  @param policy       text of the toolkit, required; open toolkit: the policy wanted, dotted or with blanks, empty for any
 *  @param data         data to be stamped
 *  @param useNonce     flag of the toolkit; open toolkit: whether the request has a nonce, which must come back
 *  @param certificate  certificate; open toolkit: not used, requests are unsigned
 *  @param privateKey   private key; open toolkit: not used
 *  @param token        filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data, @p certificate or @p privateKey is empty or @p address or @p policy
 *          is null; 1003 on the GPKI library */
SIGIL_EXPORT int TSPTimeStampData(void* handle, char* address, int port, int hash, char* policy, BINSTR* data,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token);

/** Gets a time stamp for a file in one step.
 *  @param address      address of the authority; open toolkit: "http://host[:port]/path", https too, or a host alone
 *  @param port         port or other number of the toolkit; open toolkit: of a host alone, 0 for 80
 *  @param hash         hash algorithm, a number of the toolkit; open toolkit: SigilToolkitHash
 *  @param policy       text of the toolkit, required; open toolkit: the policy wanted, dotted or with blanks, empty for any
 *  @param dataFile     path of the file
 *  @param useNonce     flag of the toolkit; open toolkit: whether the request has a nonce, which must come back
 *  @param certificate  certificate; open toolkit: not used, requests are unsigned
 *  @param privateKey   private key; open toolkit: not used
 *  @param token        filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p address, @p policy or @p
 *          dataFile is null; 1003 on the GPKI library */
SIGIL_EXPORT int TSPTimeStampFile(void* handle, char* address, int port, int hash, char* policy, char* dataFile,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token);

/** Makes a request.
 *  @param data         data to be stamped
 *  @param hash         hash algorithm, a number of the toolkit; open toolkit: SigilToolkitHash
 *  @param policy       text of the toolkit, required; open toolkit: the policy wanted, dotted or with blanks, empty for any
 *  @param useNonce     flag of the toolkit; open toolkit: whether the request has a nonce, which must come back
 *  @param certificate  certificate; open toolkit: not used, requests are unsigned
 *  @param privateKey   private key; open toolkit: not used
 *  @param request      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data, @p certificate or @p privateKey is empty or @p policy is null */
SIGIL_EXPORT int TSPMakeReqMsg(void* handle, BINSTR* data, int hash, char* policy, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* request);

/** Sends a request to the authority and receives its response.
 *  @param address   address of the authority, as in TSPTimeStampData
 *  @param port      port or other number of the toolkit, as there
 *  @param request   request
 *  @param response  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p request is empty or @p address is null */
SIGIL_EXPORT int TSPSendAndRecv1(void* handle, char* address, int port, BINSTR* request, BINSTR* response);

/** Verifies a response and takes its token out. Despite its name it sends nothing. The open toolkit verifies it against the last
 *  request of the handle.
 *  @param response     response of the authority
 *  @param token        receives the token; may be null for the open toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param certificate  receives the authority's certificate; may be null for the open toolkit; release it with
 *                      HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p response is empty; open toolkit: 4000 to 4006, 3403 for a wrong signature, and with
 *          trusted certificates 3200 to 3208 for the authority's path */
SIGIL_EXPORT int TSPSendAndRecv2(void* handle, BINSTR* response, BINSTR* token, BINSTR* certificate);

/** Verifies a token.
 *  @param token        time-stamp token
 *  @param certificate  receives the authority's certificate; may be null for the open toolkit; release it with
 *                      HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p token is empty; open toolkit: as TSPSendAndRecv2 */
SIGIL_EXPORT int TSPVerifyToken(void* handle, BINSTR* token, BINSTR* certificate);

/** Verifies a token against what was stamped: a text on the maker toolkit, a byte string on the GPKI library.
 *  @param dataFile     text, for the maker toolkit only
 *  @param data         first byte string, for the GPKI library only
 *  @param token        second byte string, required
 *  @param certificate  third byte string, for the GPKI library only; filled by the toolkit; release it with
 *                      HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p token is empty; open toolkit: as TSPVerifyToken, 4004 when it is about other data */
SIGIL_EXPORT int TSPVerifyToken2(void* handle, char* dataFile, BINSTR* data, BINSTR* token, BINSTR* certificate);

/** Reads the fields of a token. The GPKI library writes all eight texts and not the byte string, the maker toolkit
 *  the last six texts and the byte string.
 *  @param token        time-stamp token
 *  @param capacity     number of both toolkits: bytes in each text
 *  @param text1        text that the GPKI library may write; open toolkit: version
 *  @param text2        text that the GPKI library may write; open toolkit: accuracy in seconds, "1.5", empty when not told
 *  @param text3        text that the toolkit may write; open toolkit: policy with blanks, "1 2 3"
 *  @param text4        text that the toolkit may write; open toolkit: name of the hash, "SHA256"
 *  @param text5        text that the toolkit may write; open toolkit: the hash stamped, hexadecimal
 *  @param text6        text that the toolkit may write; open toolkit: serial number, hexadecimal
 *  @param text7        text that the toolkit may write; open toolkit: "YYYY-MM-DD HH:MM:SS" in local standard time
 *  @param text8        text that the toolkit may write; open toolkit: nonce, hexadecimal, empty when there is none
 *  @param certificate  maker toolkit only; filled by the toolkit; release it with HV_BINSTR_Delete on the same
 *                      handle
 *  @return the common codes; 1001 when @p token is empty; open toolkit: 4000, and 3003 when a text does not fit whole. The token
 *          is not verified; a null text is left out */
SIGIL_EXPORT int TSPGetTokenInfo(void* handle, BINSTR* token, int capacity, char* text1, char* text2, char* text3,
    char* text4, char* text5, char* text6, char* text7, char* text8, BINSTR* certificate);

#endif
