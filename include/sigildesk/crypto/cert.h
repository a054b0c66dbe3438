// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificate inspection and verification.
 *
 *  The toolkit holds one loaded certificate per handle: CertLoad replaces it, CertUnLoad releases it, and the
 *  getters read from it. The getters take the capacity before the buffer and pass both on unchanged; the toolkit
 *  decides the format of the text and honours the capacity.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_CERT_H
#define SIGILDESK_CRYPTO_CERT_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Loads a certificate into the toolkit, in place of the one loaded before.
 *  @param certificate  DER certificate
 *  @return the common codes; 1001 when @p certificate is empty, from the backend */
SIGIL_EXPORT int CertLoad(void* handle, BINSTR* certificate);

/** Releases the loaded certificate.
 *  @return the common codes */
SIGIL_EXPORT int CertUnLoad(void* handle);

/** Unique identifier of the loaded certificate's holder.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetUID(void* handle, int capacity, char* text);

/** Version of the loaded certificate as the toolkit reports it, in decimal (for example "3"). The number is written
 *  whether or not the toolkit succeeded: a failed call leaves "0" or what the toolkit had reached.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetVersion(void* handle, int capacity, char* text);

/** Serial number of the loaded certificate.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetSerialNum(void* handle, int capacity, char* text);

/** Algorithm with which the loaded certificate is signed.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetSignatureAlgorithm(void* handle, int capacity, char* text);

/** Distinguished name of the issuer.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetIssuerName(void* handle, int capacity, char* text);

/** First and last moment at which the loaded certificate is valid.
 *  On the maker toolkit both capacities must be at least 25 (else 1001); the toolkit receives the two buffers alone. The
 *  GPKI library writes one text, "A ~ B", which is split: A goes to @p notBefore without a terminator (zero the buffer
 *  first), B with its terminator to @p notAfter. It is told @p notBeforeCapacity only, so give both buffers that size.
 *  @param notBeforeCapacity  bytes in @p notBefore
 *  @param notBefore          caller's buffer; receives the first moment
 *  @param notAfterCapacity   bytes in @p notAfter; tested on the maker toolkit only
 *  @param notAfter           caller's buffer; receives the last moment
 *  @return the common codes; 1000 when @p notAfter or @p notBefore is null, or when there is no memory for the GPKI
 *          library's text; 1001 when a capacity is too small (maker toolkit) or the text holds no two dates (GPKI
 *          library) */
SIGIL_EXPORT int CertGetValidity(
    void* handle, int notBeforeCapacity, char* notBefore, int notAfterCapacity, char* notAfter);

/** Distinguished name of the subject.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetSubjectName(void* handle, int capacity, char* text);

/** Algorithm, length and value of the loaded certificate's public key.
 *  Nothing is written to @p algorithm when the toolkit fails; a null @p algorithm or @p keyLength is left out.
 *  @param algorithm          caller's buffer of at least 49 bytes; when there is an algorithm text exactly 49 bytes are
 *                            written
 *  @param keyLength          caller's buffer. On the GPKI library at least 19 bytes: exactly 19 are written when there is
 *                            a length text. The maker toolkit writes it directly and requires it (null: 1001)
 *  @param publicKeyCapacity  bytes in @p publicKey, terminator included; handed to the toolkit as it is
 *  @param publicKey          caller's buffer; receives the key as text
 *  @param publicKeyDer       receives the key as bytes on the maker toolkit, untouched on the GPKI library; release it
 *                            with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1000 when @p publicKey is null */
SIGIL_EXPORT int CertGetPubKeyInfo(
    void* handle, char* algorithm, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR* publicKeyDer);

/** Signature value of the loaded certificate.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetSignature(void* handle, int capacity, char* text);

/** Key usage extension (RFC 5280, 4.2.1.3).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetKeyUsage(void* handle, int capacity, char* text);

/** Basic constraints extension (RFC 5280, 4.2.1.9).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetBasicConstraints(void* handle, int capacity, char* text);

/** Certificate policies extension (RFC 5280, 4.2.1.4), with its qualifiers.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetCertPolicy(void* handle, int capacity, char* text);

/** Object identifiers of the certificate policies.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetPolicyID(void* handle, int capacity, char* text);

/** Extended key usage extension (RFC 5280, 4.2.1.12).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetExtKeyUsage(void* handle, int capacity, char* text);

/** Subject alternative name extension (RFC 5280, 4.2.1.6).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetSubjectAltName(void* handle, int capacity, char* text);

/** Issuer alternative name extension (RFC 5280, 4.2.1.7).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null; 1003 on the GPKI library */
SIGIL_EXPORT int CertGetIssuerAltName(void* handle, int capacity, char* text);

/** Authority key identifier extension (RFC 5280, 4.2.1.1).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetAuthKeyID(void* handle, int capacity, char* text);

/** Subject key identifier extension (RFC 5280, 4.2.1.2).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetSubKeyID(void* handle, int capacity, char* text);

/** CRL distribution points extension (RFC 5280, 4.2.1.13).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetCRLDP(void* handle, int capacity, char* text);

/** Address of the CRL distribution point alone.
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null; 1003 on the GPKI library */
SIGIL_EXPORT int CertGetCRLDPURL(void* handle, int capacity, char* text);

/** Authority information access extension (RFC 5280, 4.2.2.1).
 *  @param capacity  bytes in @p text, terminator included; handed to the toolkit as it is
 *  @param text      caller's buffer; the toolkit writes the text into it
 *  @return the common codes; 1000 when @p text is null */
SIGIL_EXPORT int CertGetAIA(void* handle, int capacity, char* text);

/** Days that the given certificate is still valid.
 *  @param certificate  DER certificate
 *  @param days         receives the number of days
 *  @return the common codes; 1000 when @p certificate is empty; 1001 when @p days is null, from the backend */
SIGIL_EXPORT int CertGetRemainDays(void* handle, BINSTR* certificate, int* days);

/** Appends a certificate to a list of certificates.
 *  @param certificate  DER certificate
 *  @param list         list that grows; create it with HV_BINSTR_Create before the first call, release it with
 *                      HV_BINSTR_Delete
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the maker toolkit */
SIGIL_EXPORT int CertAddCert(void* handle, BINSTR* certificate, BINSTR* list);

/** Number of certificates in a list.
 *  @param list   list of certificates in one byte string
 *  @param count  receives the number
 *  @return the common codes; 1001 when @p list is empty; 1001 when @p count is null, from the backend; 1003 on the
 *          maker toolkit */
SIGIL_EXPORT int CertGetCertCount(void* handle, BINSTR* list, int* count);

/** Takes one certificate out of a list. The record that receives it must already hold data when the function is
 *  called, else the answer is 1001.
 *  @param list         list of certificates in one byte string
 *  @param index        position in the list; the toolkit says where it counts from
 *  @param certificate  output that must hold data on entry; filled by the toolkit; release it with HV_BINSTR_Delete
 *                      on the same handle
 *  @return the common codes; 1000 when @p list is empty; 1001 when @p certificate is empty, from the backend; 1003
 *          on the maker toolkit */
SIGIL_EXPORT int CertGetCert(void* handle, BINSTR* list, int index, BINSTR* certificate);

/** Adds a certificate to those that the toolkit trusts when it verifies.
 *  @param certificate  DER certificate
 *  @return the common codes; 1001 when @p certificate is empty */
SIGIL_EXPORT int CertAddTrustedCert(void* handle, BINSTR* certificate);

/** Sets the environment of later verifications. The maker toolkit does not receive @p cachePath. The names of the arguments
 *  are a licensed toolkit's; what the open toolkit takes them for stands behind "open toolkit:".
 *  @param range        first option of the toolkit: how far the path is checked; open toolkit: SigilToolkitPathSource, where
 *                      missing issuers come from
 *  @param statusCheck  second option of the toolkit: how revocation is checked; open toolkit: SigilToolkitRevocation
 *  @param useCache     flag of the toolkit; open toolkit: whether a missing revocation list is tolerated
 *  @param cachePath    text of the GPKI library, may be null; open toolkit: not read
 *  @param confFile     text of both toolkits, may be null; open toolkit: the time of verification, "YYYY-MM-DD HH:MM:SS", now
 *                      when it is null or empty
 *  @return the common codes; open toolkit: 3006 for an unknown option, 3007 for a text that is not a time */
SIGIL_EXPORT int CertSetVerifyEnv(
    void* handle, int range, int statusCheck, bool useCache, char* cachePath, char* confFile);

/** Sets the environment of later verifications from a settings file and byte strings. The open toolkit replaces the time, the
 *  trusted certificates and the revocation lists at hand.
 *  @param confFile             text, required; open toolkit: the time as in CertSetVerifyEnv, it may be empty
 *  @param trustedCertificates  record of a byte string, required; it may be empty for the licensed toolkit; open toolkit: one
 *                              certificate or a list of them (UTILAddObject), DER, at least one
 *  @param intermediates        record of a byte string, required; it may be empty; open toolkit: one revocation list or a list
 *                              of them, DER, and no certificates
 *  @return the common codes; 1001 when @p confFile, @p trustedCertificates or @p intermediates is null, from the
 *          backend; 1003 on the GPKI library; open toolkit: 3000 without a trusted certificate, 3007, 3101 and 3102 for what
 *          cannot be read */
SIGIL_EXPORT int CertSetVerifyEnv2(
    void* handle, char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates);

/** Verifies a certificate in the environment set before. The maker toolkit does not receive @p confFile.
 *  @param certificate    DER certificate
 *  @param purpose        option of the toolkit; open toolkit: SigilToolkitUsage
 *  @param time           text of both toolkits, may be null; open toolkit: the policies of which one must hold, OIDs dotted or
 *                        with blanks, separated by "|". Naming some makes an explicit policy required: a path without policies
 *                        fails with 3207 then. Null or empty: any policy or none, unless an authority of the path itself
 *                        requires one. The time is that of CertSetVerifyEnv
 *  @param confFile       text of the GPKI library, may be null; open toolkit: not read
 *  @param checkStatus    flag of the toolkit; open toolkit: whether the revocation of the whole path is checked, whatever
 *                        CertSetVerifyEnv said
 *  @param intermediates  byte string, may be null; open toolkit: one more authority or a list of them
 *  @param crl            byte string, may be null; open toolkit: no list but an output, the path that was verified as a list of
 *                        certificates, @p certificate first. Pass an empty record and release it with HV_BINSTR_Delete on the
 *                        same handle. A failure leaves it as it was
 *  @return the common codes; 1001 when @p certificate is empty; open toolkit: 3101, 3200 to 3208 */
SIGIL_EXPORT int CertVerify(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile,
    bool checkStatus, BINSTR* intermediates, BINSTR* crl);

/** Verifies a certificate with the maker toolkit's second method.
 *  @param certificate  DER certificate
 *  @param purpose      option of the toolkit; open toolkit: SigilToolkitUsage
 *  @param time         text of the toolkit, may be null; open toolkit: the policies as in CertVerify
 *  @param confFile     text of the toolkit, may be null; open toolkit: the time of this verification, as in CertSetVerifyEnv
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the GPKI library; open toolkit: as CertVerify, 3007 for
 *          a text that is not a time */
SIGIL_EXPORT int CertVerify2(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile);

/** Has a certificate verified by an identity verification server.
 *  @param confFile        text that tells the toolkit how to reach the server
 *  @param certificate     DER certificate
 *  @param ivsCertificate  byte string, certificate of the server
 *  @return the common codes; 1000 when @p certificate or @p ivsCertificate is empty or @p confFile is null */
SIGIL_EXPORT int CertVerifyByIVS(void* handle, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate);

/** Asks an OCSP responder (RFC 6960) for the state of a certificate.
 *  @param certificate           DER certificate
 *  @param signRequest           whether the request is signed
 *  @param signerCertificate     DER certificate of whoever signs the request; may be empty when nobody does
 *  @param signerKey             its private key (PrivateKeyInfo of PKCS#8, DER); never empty, even when nobody signs
 *  @param url                   http or https address of the responder
 *  @param responderCertificate  DER certificate that must have signed the response
 *  @param revocationTime        caller's buffer of at least 25 bytes; "YYYY-MM-DD HH:MM:SS", empty when not revoked
 *  @param reason                receives the state: 0 good, 1 revoked
 *  @return the common codes; 1001 when @p certificate, @p signerKey or @p responderCertificate is empty or @p
 *          url is null; 1003 on the maker toolkit */
SIGIL_EXPORT int CertCheckStatByOCSP(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* reason);

/** Looks a certificate up in its revocation list (RFC 5280, 5).
 *  @param certificate     DER certificate
 *  @param revocationTime  text that the toolkit may write; open toolkit: an input, the address of the list; null or empty for the
 *                         lists of CertSetVerifyEnv2 and the addresses in the certificate
 *  @param reason          number that the toolkit may write; open toolkit: the state, 0 good, 1 revoked
 *  @return the common codes; 1001 when @p certificate is empty; open toolkit: 3201, 3205, 3208 */
SIGIL_EXPORT int CertCheckStatByCRL(void* handle, BINSTR* certificate, char* revocationTime, int* reason);

#endif
