// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Signed and enveloped messages.
 *
 *  The messages are those of RFC 5652 (Cryptographic Message Syntax). A leading option is handed to the maker
 *  toolkit only, unless the function says otherwise. File functions take path texts. A function whose name holds
 *  WithContent works on a message that includes its content, its sibling on a detached one.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 *
 *  What the arguments mean is the toolkit's to define. The open toolkit takes these; a licensed toolkit may have other
 *  numbers for options and algorithms, other forms of keys, lists and times, and limits for the size of files:
 *  - certificate: DER or PEM. privateKey: a PrivateKeyInfo in DER, as PriKeyDecrypt hands it out; 2005 when it does not
 *    belong to the certificate. recipients: a list in the form of CertAddCert and UTILAddObject, or one certificate.
 *  - message: BER or DER; what it writes is DER. Hash, RSA scheme and padding are those of HV_SetHashAlg,
 *    CRYPTSetRSAVersion and CRYPTSetPaddingType.
 *  - algorithm: a SigilToolkitCipher of <sigildesk/open_toolkit.h>, 0 is SEED; 3400 for others.
 *  - signingTime in: "YYYY-MM-DD HH:MM:SS" in local standard time, empty: the time of the call (3007 for other texts). Out:
 *    the same form in a buffer of at least 25 bytes, empty when the message says none; may be null.
 *  - path: bytes of the file system, below the folder of MediaLoad when it is relative. Files may have any size; what is
 *    written appears whole or not at all. Making a message replaces a file or a link of that name in one step; the content of
 *    a message replaces nothing, its path must be free (3302). 3000 when two files that are needed would be one; 3300 a file
 *    that is not there, 3301 one that cannot be read or changes meanwhile, 3302 one that cannot be written.
 *  - byte strings in are not empty (3000); a file may be. A record that is written holds nothing on entry, or its bytes
 *    leak, unless the function says that it replaces them.
 *  - everything in a message but its content: at most 8 MiB, which bounds signers and recipients.
 *  Its codes: 3900 not a message or damaged; 3901 the content is missing or not the one that was signed; 3902 no such signer
 *  or recipient; 3903 no such attribute; 3904 a message of another type; 3402 cannot be decrypted; 3403 a wrong
 *  signature; 3006 an option that is unknown or that the function cannot follow.
 */
#ifndef SIGILDESK_CRYPTO_CMS_H
#define SIGILDESK_CRYPTO_CMS_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Signs content into a new message.
 *  @param option         SigilToolkitMessageOption bits, for the maker toolkit alone; the GPKI library does as with 0
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param content        content
 *  @param signingTime    time to be told in the message, required; empty: now
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p signingTime is null */
SIGIL_EXPORT int CMSMakeSignedData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* content, char* signingTime, BINSTR* signedMessage);

/** Adds one signer to a signed message; content, certificates and the other signatures stay as they are. With the open toolkit
 *  a detached message must have a signer with the same hash and signed attributes (3901).
 *  @param option         SigilToolkitMessageOption bits, for the maker toolkit alone; the GPKI library does as with 0
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param message        signed message that gets the signer
 *  @param signingTime    time to be told in the message, required; empty: now
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p signingTime is null */
SIGIL_EXPORT int CMSMakeSignedDataWithAddSigner(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, char* signingTime, BINSTR* signedMessage);

/** Verifies a signed message and takes its content out.
 *  @param option       for the maker toolkit alone: 0 verifies every signature with the certificates in the message, 1 the
 *                      signers' certificates too, under CertSetVerifyEnv and CertAddTrustedCert (3200 to 3208)
 *  @param message      message
 *  @param content      holds the content of a detached message; is replaced by that of another one. Release it with
 *                      HV_BINSTR_Delete on the same handle
 *  @param signerCount  number of signers; may be null
 *  @return the common codes; 1001 when @p message is empty */
SIGIL_EXPORT int CMSProcessSignedData(void* handle, int option, BINSTR* message, BINSTR* content, int* signerCount);

/** Gives one signer of the message that was processed last. Both toolkits receive @p index. Adding a signer to a message may
 *  move the others. 3902 outside, and before any message was verified.
 *  @param index        position of the signer in the message, from 0
 *  @param certificate  receives the signer's certificate, may be null; release it with HV_BINSTR_Delete on the same handle
 *  @param signingTime  buffer of at least 25 bytes, may be null
 *  @return the common codes */
SIGIL_EXPORT int CMSGetSignerCert(void* handle, int index, BINSTR* certificate, char* signingTime);

/** Makes the data that a signer elsewhere is to sign. The stray k of the name is part of the interface.
 *  @param option            SigilToolkitMessageOption bits; a message without signed attributes is 3006
 *  @param certificate       certificate
 *  @param content           content
 *  @param signingTime       time to be told in the message, required; empty: now
 *  @param signedAttributes  receives the DER of the signed attributes (SET OF), to be hashed and signed as it is; release it
 *                           with HV_BINSTR_Delete on the same handle. One message waits per handle: a second call drops
 *                           the first
 *  @return the common codes; 1001 when @p certificate or @p content is empty or @p signingTime is null; 1003 on the
 *          GPKI library */
SIGIL_EXPORT int CMSMakekTBSData(
    void* handle, int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes);

/** Makes the signed message from a signature made elsewhere.
 *  @param signature      raw signature over the data of CMSMakekTBSData (ECDSA: DER). It is verified; a wrong one is 3403 and
 *                        the message goes on waiting. 3901 when none waits
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p signature is empty; 1003 on the GPKI library */
SIGIL_EXPORT int CMSComposeSignedData(void* handle, BINSTR* signature, BINSTR* signedMessage);

/** Sets an option of the message functions.
 *  @param option  SigilToolkitMessageOption bits that all later signatures of the handle have in addition; 0 takes them back
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CMSSetOption(void* handle, int option);

/** Signs a file into a detached message.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param contentFile  path of the content, read
 *  @param signingTime  time to be told in the message, required; empty: now
 *  @param messageFile  path of the message, written
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p contentFile, @p signingTime
 *          or @p messageFile is null */
SIGIL_EXPORT int CMSMakeSignedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile);

/** Signs a file into a message that includes it.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param contentFile  path of the content, read
 *  @param signingTime  time to be told in the message, required; empty: now
 *  @param messageFile  path of the message, written
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p contentFile, @p signingTime
 *          or @p messageFile is null */
SIGIL_EXPORT int CMSMakeSignedDataFileWithContent(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile);

/** Verifies a detached signed message of a file.
 *  @param contentFile  path of the content, required. The open toolkit goes by the message: when it has its content in it,
 *                      that is written here, where nothing may be yet (3302)
 *  @param messageFile  path of the message, required
 *  @param certificate  receives the first signer's certificate, may be null; release it with HV_BINSTR_Delete on the same
 *                      handle. CMSGetSignerCert tells the others
 *  @param signingTime  buffer of at least 25 bytes, may be null; receives the first signer's time
 *  @return the common codes; 1001 when @p contentFile or @p messageFile is null */
SIGIL_EXPORT int CMSProcessSignedDataFile(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);

/** Verifies a signed message that includes its content. The maker toolkit has one function for this and for
 *  CMSProcessSignedDataFile.
 *  @param contentFile  path for the content, required, where nothing may be yet (3302)
 *  @param messageFile  path of the message, required
 *  @param certificate  receives the first signer's certificate, may be null; release it with HV_BINSTR_Delete on the same
 *                      handle. CMSGetSignerCert tells the others
 *  @param signingTime  buffer of at least 25 bytes, may be null; receives the first signer's time
 *  @return the common codes; 1001 when @p contentFile or @p messageFile is null */
SIGIL_EXPORT int CMSProcessSignedDataFileWithContent(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);

/** Gives the certificates of the message that was processed last that are no signer's. 3902 before any message was verified.
 *  @param certificates  receives a list in the form of CertAddCert, which may be an empty one; release it with
 *                       HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetSignerCaPubs(void* handle, BINSTR* certificates);

/** Gives the data of one signer that is to be time-stamped: the bytes of its signature. 3902 outside, and before any message was
 *  verified.
 *  @param index  position of the signer in the message, from 0
 *  @param data   receives the signature, as TSPMakeReqMsg takes it; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetTBTData(void* handle, int index, BINSTR* data);

/** Gives the time-stamp token of one signer (RFC 3161) of the message that was processed last, unverified: TSPVerifyToken2
 *  verifies it over the data of CMSGetTBTData. 3902 outside, 3903 when the signer has none.
 *  @param index  position of the signer in the message, from 0
 *  @param token  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetTimeStampToken1(void* handle, int index, BINSTR* token);

/** Puts a time-stamp token into a signed message. Despite its name it sets the token; one that the signer had is replaced.
 *  @param message         signed message, need not have been processed
 *  @param index           position of the signer in the message, from 0; 3902 outside
 *  @param token           time-stamp token (4000 when it is none) of this signer's signature, by a hash that is not broken
 *                         (4004); the token's own signature is not verified
 *  @param stampedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p message or @p token is empty; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetTimeStampToken2(
    void* handle, BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage);

/** Encrypts content for one recipient.
 *  @param option            SigilToolkitEnvelopeOption, for the maker toolkit alone: 0 names recipients by issuer and serial
 *                           number, 1 by subject key identifier, which the certificate must have (3006)
 *  @param recipient         recipient's certificate
 *  @param content           content
 *  @param algorithm         SigilToolkitCipher, 0 is SEED
 *  @param envelopedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p recipient or @p content is empty */
SIGIL_EXPORT int CMSMakeEnvelopedData(
    void* handle, int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);

/** Encrypts content for several recipients.
 *  @param option            SigilToolkitEnvelopeOption, for the maker toolkit alone: 0 names recipients by issuer and serial
 *                           number, 1 by subject key identifier, which the certificate must have (3006)
 *  @param recipients        list of recipients' certificates
 *  @param content           content
 *  @param algorithm         SigilToolkitCipher, 0 is SEED
 *  @param envelopedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p recipients or @p content is empty */
SIGIL_EXPORT int CMSMakeEnvDataWithMultiRec(
    void* handle, int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);

/** Decrypts an enveloped message. The open toolkit answers 3402 alike for a wrong key and a wrong padding; what comes out is
 *  not authenticated unless it is signed.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param message      message
 *  @param content      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p message is empty */
SIGIL_EXPORT int CMSProcessEnvelopedData(
    void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);

/** Encrypts a file for one recipient. The GPKI library does not receive the last text.
 *  @param recipient    recipient's certificate
 *  @param contentFile  path of the content, read
 *  @param algorithm    SigilToolkitCipher, 0 is SEED
 *  @param messageFile  path of the message, written: on the maker toolkit without the encrypted content, on the GPKI library
 *                      an ordinary one with it
 *  @param cipherFile   path of the bare encrypted content, required, written by the maker toolkit only
 *  @return the common codes; 1001 when @p recipient is empty or @p contentFile, @p messageFile or @p cipherFile is
 *          null */
SIGIL_EXPORT int CMSMakeEnvelopedDataFile(
    void* handle, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);

/** Decrypts an enveloped message whose encrypted content lies in a file of its own.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param messageFile  path of the message, read
 *  @param cipherFile   path of the encrypted content, read when it is not in the message
 *  @param contentFile  path of the content, written, where nothing may be yet (3302)
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p messageFile, @p cipherFile or
 *          @p contentFile is null */
SIGIL_EXPORT int CMSProcessEnvelopedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);

/** Decrypts an enveloped message that includes its encrypted content. Neither toolkit receives the second text.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param messageFile  path of the message, read
 *  @param cipherFile   ignored, may be null
 *  @param contentFile  path of the content, written, where nothing may be yet (3302)
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p messageFile or @p contentFile
 *          is null */
SIGIL_EXPORT int CMSProcessEnvDataFileWithContent(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);

/** Signs content and encrypts it for a recipient in one message: with the open toolkit a signed message inside an enveloped
 *  one, signed now and as CMSSetOption says.
 *  @param option            SigilToolkitEnvelopeOption, for the maker toolkit alone: 0 names recipients by issuer and serial
 *                           number, 1 by subject key identifier, which the certificate must have (3006)
 *  @param certificate       certificate
 *  @param privateKey        private key
 *  @param recipient         recipient's certificate
 *  @param content           content
 *  @param algorithm         SigilToolkitCipher, 0 is SEED
 *  @param envelopedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey, @p recipient or @p content is empty */
SIGIL_EXPORT int CMSMakeSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);

/** Decrypts a signed-and-enveloped message and verifies its signature. The open toolkit also reads the PKCS#7 type (RFC 2315).
 *  @param option             as for CMSProcessSignedData
 *  @param certificate        certificate
 *  @param privateKey         private key
 *  @param message            message
 *  @param content            filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param signerCertificate  receives the first signer's certificate, may be null; release it with HV_BINSTR_Delete on the
 *                            same handle. CMSGetSignerCert tells the others
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p message is empty */
SIGIL_EXPORT int CMSProcessSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, BINSTR* content, BINSTR* signerCertificate);

/** Encrypts content under a symmetric key. The GPKI library receives only @p content and @p encryptedMessage, and takes the
 *  key of CRYPTSetKeyAndIV (3401 without one).
 *  @param option            0
 *  @param key               for the maker toolkit only: the bytes of a key for @p algorithm; empty: the key of
 *                           CRYPTSetKeyAndIV
 *  @param content           content
 *  @param algorithm         for the maker toolkit only: SigilToolkitCipher; 0 is SEED, or the cipher of CRYPTSetKeyAndIV when
 *                           its key is taken
 *  @param encryptedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p content is empty */
SIGIL_EXPORT int CMSMakeEncryptedData(
    void* handle, int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage);

/** Decrypts a message of CMSMakeEncryptedData.
 *  @param key      the bytes of the key; the GPKI library takes the key of CRYPTSetKeyAndIV instead
 *  @param message  message
 *  @param content  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p key or @p message is empty */
SIGIL_EXPORT int CMSProcessEncryptedData(void* handle, BINSTR* key, BINSTR* message, BINSTR* content);

#endif
