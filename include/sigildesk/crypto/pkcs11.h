// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#11 tokens.
 *
 *  Sessions, objects and cryptography on a token, after the PKCS#11 standard (Cryptoki). One session is open per
 *  handle. A login is the token's, for the whole process.
 *  What is said of the open toolkit: its codes are those of SigilToolkitCode, 4200 to 4208 among them. An identifier is the
 *  CKA_ID of certificate and key, bytes; PKCS11GetCertInfo tells it.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_PKCS11_H
#define SIGILDESK_CRYPTO_PKCS11_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>
#include <sigildesk/token_info.h>

/** Lists the slots.
 *  @param slots  first pointer of the toolkit, required; open toolkit: room for the numbers of the slots that hold a token;
 *                what p11-kit has the system's trusted roots in (trust-policy) is no token
 *  @param count  second pointer of the toolkit; open toolkit: required; how many numbers @p slots has room for, and then how
 *                many there are
 *  @return the common codes; 1001 when @p slots is null; open toolkit: 3003 when there is too little room, with the number in
 *          @p count */
SIGIL_EXPORT int PKCS11GetSlotList(void* handle, unsigned long* slots, unsigned long* count);

/** Describes the token in a slot.
 *  @param slotId  slot identifier of PKCS11GetSlotList
 *  @param info    record of the toolkit's PKCS#11 binding, filled; the façade does not read it
 *  @return the common codes; open toolkit: 4200 when the slot holds no token */
SIGIL_EXPORT int PKCS11GetTokenInfo(void* handle, unsigned long slotId, PKCS11_TOKEN_INFO* info);

/** Initialises a token.
 *  @param soPin  first text of the toolkit; open toolkit: the security officer's PIN to be, of the first token that was never
 *                initialised
 *  @param label  second text of the toolkit; open toolkit: name of the token, UTF-8 or CP949, at most 32 bytes of UTF-8
 *  @return the common codes; 1001 when @p soPin or @p label is null; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11InitToken(void* handle, char* soPin, char* label);

/** Initialises the token in a slot.
 *  @param slotId  slot identifier
 *  @param soPin   first text of the toolkit; open toolkit: the security officer's PIN, the one in use where there is one
 *  @param pin     second text of the toolkit; open toolkit: the user's PIN to be
 *  @param label   third text of the toolkit; open toolkit: as PKCS11InitToken takes it. All that the token holds is lost
 *  @return the common codes; 1001 when @p soPin, @p pin or @p label is null; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11InitTokenWithSlotID(void* handle, unsigned long slotId, char* soPin, char* pin, char* label);

/** Opens a session with the token in a slot. The GPKI library opens the session and, when that succeeded and @p pin
 *  is not null, logs in; the result is then the login's.
 *  @param slotId  slot identifier
 *  @param pin     PIN, terminated; null opens without logging in
 *  @param flags   flags of the toolkit; open toolkit: 0 to read, and to write if the token allows it, 4 to read, 2 or 6 to write
 *  @return the common codes; open toolkit: 4201 for a wrong PIN, when the session is open and not logged in */
SIGIL_EXPORT int PKCS11OpenSessionWithSlotID(void* handle, unsigned long slotId, char* pin, int flags);

/** Opens a session with a token by its name.
 *  @param token  token name; open toolkit: its label, UTF-8 or CP949
 *  @param flags  flags of the toolkit, as above
 *  @return the common codes; 1001 when @p token is null; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11OpenSessionWithTokenName(void* handle, char* token, int flags);

/** Logs in on the open session.
 *  @param pin  PIN, terminated
 *  @return the common codes; 1001 when @p pin is null */
SIGIL_EXPORT int PKCS11Login(void* handle, char* pin);

/** Logs out of the open session.
 *  @return the common codes */
SIGIL_EXPORT int PKCS11Logout(void* handle);

/** Closes the open session.
 *  @return the common codes */
SIGIL_EXPORT int PKCS11CloseSession(void* handle);

/** Changes the PIN.
 *  @param oldPin  PIN in use, terminated
 *  @param newPin  PIN to be, terminated
 *  @return the common codes; 1001 when @p oldPin or @p newPin is null */
SIGIL_EXPORT int PKCS11ChangePIN(void* handle, char* oldPin, char* newPin);

/** Counts the certificates on the token.
 *  @param count  receives the number; null answers 1001
 *  @return the common codes; 1001 when @p count is null, from the backend */
SIGIL_EXPORT int PKCS11GetCertCnt(void* handle, int* count);

/** Gives one certificate of the token.
 *  @param index        position of the certificate; the toolkit says where it counts from; open toolkit: 0
 *  @param kind         number that the toolkit may write; open toolkit: required, a SigilToolkitTokenCertificate
 *  @param id           filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes */
SIGIL_EXPORT int PKCS11GetCertInfo(void* handle, int index, int* kind, BINSTR* id, BINSTR* certificate);

/** Reads a certificate by its identifier.
 *  @param id           identifier of the object
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id is empty */
SIGIL_EXPORT int PKCS11ReadCert(void* handle, BINSTR* id, BINSTR* certificate);

/** Reads the random value R of a key on the token (see VIDVerify).
 *  @param id      identifier of the object
 *  @param random  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id is empty */
SIGIL_EXPORT int PKCS11ReadRandomForVID(void* handle, BINSTR* id, BINSTR* random);

/** Writes a pair to the token.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty */
SIGIL_EXPORT int PKCS11WriteCertAndPriKey(void* handle, BINSTR* certificate, BINSTR* privateKey);

/** Deletes a pair from the token.
 *  @param id  identifier of the object
 *  @return the common codes; 1001 when @p id is empty */
SIGIL_EXPORT int PKCS11DeleteCertAndPriKey(void* handle, BINSTR* id);

/** Generates a key pair on the token.
 *  @param algorithm  first number of the toolkit; open toolkit: a SigilToolkitTokenKey
 *  @param bits       second number of the toolkit; open toolkit: RSA 1024, 2048, 3072 or 4096, EC 256 or 384
 *  @param publicKey  SubjectPublicKeyInfo with the open toolkit; filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11GenKeyPair(void* handle, int algorithm, int bits, BINSTR* publicKey);

/** Signs data with a key on the token.
 *  @param id         identifier of the key
 *  @param data       data
 *  @param signature  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id or @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11Sign(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature);

/** Verifies a signature with a key on the token.
 *  @param id         identifier of the key
 *  @param data       data
 *  @param signature  signature
 *  @return the common codes; 1001 when @p id, @p data or @p signature is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11Verify(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature);

/** Encrypts data with a key on the token.
 *  @param id      identifier of the key
 *  @param data    data
 *  @param cipher  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id or @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11Encrypt(void* handle, BINSTR* id, BINSTR* data, BINSTR* cipher);

/** Decrypts data with a key on the token.
 *  @param id      identifier of the key
 *  @param cipher  encrypted data
 *  @param data    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id or @p cipher is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11Decrypt(void* handle, BINSTR* id, BINSTR* cipher, BINSTR* data);

/** Makes a signed message (RFC 5652) with a key on the token.
 *  @param id             identifier of the key
 *  @param data           data
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id or @p data is empty */
SIGIL_EXPORT int PKCS11SignData(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage);

/** Makes a detached signed message with a key on the token.
 *  @param id             identifier of the key
 *  @param data           data
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id or @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11SignDataNoContent(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage);

/** Decrypts an enveloped message (RFC 5652) with a key on the token.
 *  @param id       identifier of the key
 *  @param message  enveloped message
 *  @param data     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id or @p message is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11DecryptData(void* handle, BINSTR* id, BINSTR* message, BINSTR* data);

/** Signs data with a key on the token and encrypts it for a recipient.
 *  @param id                identifier of the key
 *  @param recipient         recipient's certificate
 *  @param data              data
 *  @param envelopedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id, @p recipient or @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11SignAndEnvData(
    void* handle, BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage);

/** Decrypts a message of PKCS11SignAndEnvData and verifies it.
 *  @param id                 identifier of the key
 *  @param message            signed-and-enveloped message
 *  @param data               filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param signerCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p id or @p message is empty; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11VerifyAndDecData(
    void* handle, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate);

/** Verifies a bare signature value.
 *  @param hash         text of the toolkit; open toolkit: the hash that was signed, in hexadecimal, of the size of
 *                      HV_SetHashAlg's
 *  @param certificate  certificate
 *  @param signature    signature
 *  @return the common codes; 1001 when @p certificate or @p signature is empty or @p hash is null; 1003 on the GPKI
 *          library */
SIGIL_EXPORT int PKCS11VerifySignatureValue(void* handle, char* hash, BINSTR* certificate, BINSTR* signature);

/** Requests a certificate for a key made on the token (RFC 4210). <sigildesk/crypto/cmp.h> says how an authority is asked, and
 *  what codes that has.
 *
 *  Open toolkit, for this function and the next two: the token is found by its label. The session of the handle is used when it
 *  is with this token, else one for the call alone; who was not logged in before is not afterwards. The certificate lies beside
 *  its key under the key's identifier. A call that fails leaves neither key nor certificate behind. Codes of their own: 2005 a
 *  key that is not the certificate's, 4200 no such token, 4201 or 4202 the PIN, 4204 no such key, 4205 the token is full or for
 *  reading only.
 *  @param address        first text: address of the CA
 *  @param port           number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param reference      second text: reference number; open toolkit: asked for as the name too, of which the CA decides
 *  @param secret         third text: authentication code; open toolkit: protects the messages, never sent
 *  @param pin            fourth text; open toolkit: the token's PIN
 *  @param token          fifth text; open toolkit: the token's label, UTF-8 or CP949
 *  @param caCertificate  first byte string of the toolkit; open toolkit: as in CMPCertRequest; may be null
 *  @param certificate    second byte string; filled by the toolkit; open toolkit: for a fresh RSA key of 2048 bits; release it
 *                        with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p address, @p reference, @p secret, @p pin or @p token is null; 1003 on the
 *          GPKI library */
SIGIL_EXPORT int PKCS11CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret,
    char* pin, char* token, BINSTR* caCertificate, BINSTR* certificate);

/** Renews a certificate on the token (RFC 4210). Open toolkit: the request is signed with the certificate's key on the token; the
 *  answer must lead to a certificate of CertAddTrustedCert.
 *  @param address         first text: address of the CA
 *  @param port            number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param newKey          flag of the toolkit; open toolkit: a fresh key of the same kind, made on the token, which inherits the
 *                         identity random value, and the old pair stays; false: the same key, and the new certificate takes
 *                         the place of the old one
 *  @param pin             second text; open toolkit: the token's PIN
 *  @param token           third text; open toolkit: the token's label, UTF-8 or CP949
 *  @param certificate     first byte string, required; open toolkit: the certificate that is renewed
 *  @param newCertificate  second byte string, required by the façade: it must hold data on entry (any byte, put in with
 *                         HV_BINSTR_SetData); filled by the toolkit (the open toolkit releases what it held); release it with
 *                         HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p newCertificate is empty or @p address, @p pin or @p
 *          token is null; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* pin, char* token,
    BINSTR* certificate, BINSTR* newCertificate);

/** Renews the certificates on the token (RFC 4210).
 *  @param address         first text: address of the CA
 *  @param port            first number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param newKey          flag of the toolkit; open toolkit: as in PKCS11CMPCertUpdate
 *  @param keyBits         second number of the toolkit; open toolkit: size of the fresh key as PKCS11GenKeyPair takes it; 0: as
 *                         the old one, RSA with 2048 bits at least
 *  @param pin             second text; open toolkit: the token's PIN
 *  @param token           third text; open toolkit: the token's label, UTF-8 or CP949
 *  @param certificate     first byte string, required; open toolkit: the certificate that is renewed
 *  @param caCertificate   second byte string, required; open toolkit: CA certificate or a list, to which the answer's signer
 *                         and the new certificates must lead
 *  @param newCertificate  third byte string; filled by the toolkit; release it with HV_BINSTR_Delete on the same
 *                         handle
 *  @param newId           fourth byte string; filled by the toolkit; open toolkit: identifier of its key; release it with
 *                         HV_BINSTR_Delete on the same handle
 *  @param kmCertificate   fifth byte string; filled by the toolkit; open toolkit: may be null; else a certificate for key
 *                         management is asked for too, with a fresh RSA key of 2048 bits, and the record is emptied when that
 *                         brings none; release it with HV_BINSTR_Delete on the same handle
 *  @param kmId            sixth byte string; filled by the toolkit; open toolkit: identifier of its key; may be null with
 *                         @p kmCertificate; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p caCertificate is empty or @p address, @p pin or @p
 *          token is null; 1003 on the GPKI library */
SIGIL_EXPORT int PKCS11CMPCertUpdate2(void* handle, char* address, int port, bool newKey, int keyBits, char* pin,
    char* token, BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId,
    BINSTR* kmCertificate, BINSTR* kmId);

/** Revokes a certificate of the token (RFC 4210). Open toolkit: signed with its key in the open session, logged in; the answer must
 *  lead to a certificate of CertAddTrustedCert.
 *  @param address      address of the CA
 *  @param port         first number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param reason       second number of the toolkit; open toolkit: CRLReason of RFC 5280, 0 to 10 without 7 (3000)
 *  @param certificate  first byte string of the toolkit; open toolkit: the certificate that is revoked, required (3000)
 *  @param id           second byte string of the toolkit; open toolkit: identifier of its key; null or empty: it is looked for
 *  @return the common codes; 1001 when @p address is null; 1003 on the GPKI library. Open toolkit: also 4207 without a
 *          session, 4203 without a login, 4204 and 2005 for the key */
SIGIL_EXPORT int PKCS11CMPCertRevoke(
    void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* id);

#endif
