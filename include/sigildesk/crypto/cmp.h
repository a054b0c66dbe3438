// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificate management: certificates from an authority, renewed and revoked.
 *
 *  The protocol is that of RFC 4210. Which CA products and protocol versions there are, what ports and selectors mean, and
 *  which keys are made is the licensed toolkit's matter; what is said of the open toolkit below it may do otherwise.
 *
 *  With the open toolkit:
 *  - Messages go over HTTP (RFC 6712). An address is "http://host[:port]/path", or a host alone, which is asked on the port
 *    of the call. A call spends at most 30 seconds on an authority, waiting included: 4104 when the authority wants to be asked
 *    later than that, 3601 when it does not answer.
 *  - Certificates are DER, or PEM when they go in. Private keys come out as key files (PriKeyDecrypt opens them).
 *  - Subjects are "cn=...,ou=...,o=...,c=KR" in UTF-8 or CP949, most specific first; a comma belongs to a value unless "type="
 *    follows it.
 *  - Outputs are written when all went well, and none of them otherwise.
 *  - Codes of its own, for all functions: 3000 an argument is missing or out of range, 3201 to 3208 what an answer is signed
 *    with or holds does not lead to the certificate that is trusted, 3600 not an http address, 3601 the authority cannot be
 *    reached or falls silent, 4100 its answer is damaged, 4101 it refuses (its PKIStatusInfo is in the text of
 *    HV_GetErrInfo2), 4102 its answer is not protected as it must be (a wrong secret, another signer), 4103 it hands out a
 *    certificate for another subject or key, 4104 see above.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_CMP_H
#define SIGILDESK_CRYPTO_CMP_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Chooses the protocol of later requests.
 *  @param protocol  number of the toolkit; open toolkit: SigilToolkitCmpProtocol, another is 3006
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CMPSetProtocol(void* handle, int protocol);

/** Chooses the CA of later requests.
 *  @param ca  number of the toolkit; open toolkit: SigilToolkitCmpAuthority, another is 3006
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CMPSetCA(void* handle, int ca);

/** Requests certificates for new keys.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param reference      reference number that the CA gave beforehand, terminated
 *  @param secret         authentication code that goes with it, terminated; open toolkit: protects the messages, never sent
 *  @param subject        fourth text; open toolkit: the name wanted, 4103 when the CA gives another; empty: the CA's choice
 *  @param password       fifth text; open toolkit: password of the key files that come out
 *  @param caCertificate  CA certificate; open toolkit: may be null; one certificate or a list to which what is handed out must
 *                        lead, or an empty record. Afterwards it holds the certificate of the issuer, when that came along or
 *                        was given; what it held is released
 *  @param certificate    filled by the toolkit; open toolkit: for signing, with a fresh RSA key of 2048 bits; release it with
 *                        HV_BINSTR_Delete on the same handle
 *  @param privateKey     filled by the toolkit; open toolkit: its key file; release it likewise
 *  @param kmCertificate  filled by the toolkit; open toolkit: may be null; else a certificate for key management is asked for
 *                        too, with the new key, and the record is emptied when that brings none; release it likewise
 *  @param kmPrivateKey   filled by the toolkit; open toolkit: its key file; may be null with @p kmCertificate; release it likewise
 *  @return the common codes; 1001 when @p address, @p reference, @p secret, @p subject or @p password is null; 1003
 *          on the GPKI library */
SIGIL_EXPORT int CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey);

/** Requests certificates for new keys without naming the CA certificate. Open toolkit: the secret alone vouches for the CA.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param reference      reference number that the CA gave beforehand, terminated
 *  @param secret         authentication code that goes with it, terminated; open toolkit: protects the messages, never sent
 *  @param subject        fourth text; open toolkit: the name wanted, 4103 when the CA gives another; empty: the CA's choice
 *  @param password       fifth text; open toolkit: password of the key files that come out
 *  @param certificate    filled by the toolkit; open toolkit: for signing, with a fresh RSA key of 2048 bits; release it with
 *                        HV_BINSTR_Delete on the same handle
 *  @param privateKey     filled by the toolkit; open toolkit: its key file; release it likewise
 *  @param kmCertificate  filled by the toolkit; open toolkit: may be null; else a certificate for key management is asked for
 *                        too, with the new key, and the record is emptied when that brings none; release it likewise
 *  @param kmPrivateKey   filled by the toolkit; open toolkit: its key file; may be null with @p kmCertificate; release it likewise
 *  @return the common codes; 1001 when @p address, @p reference, @p secret, @p subject or @p password is null; 1003
 *          on the GPKI library */
SIGIL_EXPORT int CMPCertRequest2(void* handle, char* address, int port, char* reference, char* secret,
    char* subject, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey);

/** Renews a certificate. Open toolkit: the request is signed with the old key.
 *  @param address         address of the CA
 *  @param port            port or other number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param newKey          flag of the toolkit; open toolkit: a fresh key of the same kind, which keeps the identity random
 *                         value of the old one; false: the same key
 *  @param password        password of the key, terminated
 *  @param newPassword     third text; open toolkit: password of the key file that comes out; empty: @p password
 *  @param certificate     certificate that is renewed; open toolkit: the new one has its subject
 *  @param privateKey      private key; open toolkit: its key file, or PrivateKeyInfo
 *  @param caCertificate   third byte string of the toolkit; open toolkit: CA certificate or a list, required (3000), to which
 *                         the answer's signer and the new certificate must lead
 *  @param newCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param newPrivateKey   filled by the toolkit; open toolkit: key file; release it likewise
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p address, @p password or @p
 *          newPassword is null; 1003 on the GPKI library. Open toolkit: also 2000 to 2005 for the key */
SIGIL_EXPORT int CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate,
    BINSTR* newPrivateKey);

/** Renews a certificate without naming the CA certificate. The first output must hold data on entry. Open toolkit: the
 *  answer must lead to a certificate of CertAddTrustedCert.
 *  @param address         address of the CA
 *  @param port            port or other number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param newKey          flag of the toolkit; open toolkit: as in CMPCertUpdate
 *  @param password        password of the key, terminated
 *  @param newPassword     third text; open toolkit: as in CMPCertUpdate
 *  @param certificate     certificate that is renewed
 *  @param privateKey      private key; open toolkit: its key file, or PrivateKeyInfo
 *  @param newCertificate  output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit (the open toolkit releases what it held); release it with HV_BINSTR_Delete on the
 *                         same handle
 *  @param newPrivateKey   filled by the toolkit; open toolkit: key file; release it likewise
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p newCertificate is empty or @p address,
 *          @p password or @p newPassword is null; 1003 on the GPKI library. Open toolkit: also 2000 to 2005 for the key */
SIGIL_EXPORT int CMPCertUpdate2(void* handle, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey);

/** Revokes a certificate. The doubled word of the name is part of the interface.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param reason         reason, a number of the toolkit; open toolkit: CRLReason of RFC 5280, 0 to 10 without 7 (3000)
 *  @param certificate    certificate that is revoked
 *  @param privateKey     private key; open toolkit: its PrivateKeyInfo, which signs the request
 *  @param caCertificate  CA certificate; open toolkit: or a list; the answer's signer must lead to it
 *  @param result         fourth byte string of the toolkit, required; open toolkit: replaced by the status in words, CP949
 *                        without a terminator, as "PKIStatus: accepted"; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey, @p caCertificate or @p result is empty or @p
 *          address is null; 1003 on the GPKI library. Open toolkit: also 2005 for another key */
SIGIL_EXPORT int CMPCertCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* caCertificate, BINSTR* result);

/** Revokes a certificate without naming the CA certificate. The doubled word of the name is part of the interface. Open
 *  toolkit: the answer must lead to a certificate of CertAddTrustedCert.
 *  @param address      address of the CA
 *  @param port         port or other number of the toolkit; open toolkit: port of a host alone, 0 for 80
 *  @param reason       reason, a number of the toolkit; open toolkit: as in CMPCertCertRevoke
 *  @param certificate  certificate that is revoked
 *  @param privateKey   private key; open toolkit: its PrivateKeyInfo, which signs the request
 *  @param result       third byte string of the toolkit, required; open toolkit: as in CMPCertCertRevoke
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p result is empty or @p address is null;
 *          1003 on the GPKI library. Open toolkit: also 2005 for another key */
SIGIL_EXPORT int CMPCertCertRevoke2(
    void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result);

/** Recovers a key-management pair. The doubled word of the name is part of the interface. Open toolkit: 3010, since how a CA
 *  hands a key out again has no public definition; its arguments are not looked at.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit
 *  @param reference      reference number
 *  @param secret         authentication code
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param kmCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param kmPrivateKey   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p address, @p reference or @p
 *          secret is null; 1003 on the GPKI library */
SIGIL_EXPORT int CMPCertCertRecovery(void* handle, char* address, int port, char* reference, char* secret,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);

#endif
