/** @file
 *  Signed and enveloped messages.
 *
 *  The messages are those of RFC 5652 (Cryptographic Message Syntax). A leading option is handed to the maker
 *  toolkit only, unless the function says otherwise. File functions take path texts. A function whose name holds
 *  WithContent works on a message that includes its content, its sibling on a detached one.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_CMS_H
#define SIGILDESK_CRYPTO_CMS_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Signs content into a new message.
 *  @param option         option of the maker toolkit, not passed to the GPKI library
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param content        content
 *  @param signingTime    text of the toolkit, required
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p signingTime is null */
SIGIL_EXPORT int CMSMakeSignedData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* content, char* signingTime, BINSTR* signedMessage);

/** Adds one signer to a signed message.
 *  @param option         option of the maker toolkit, not passed to the GPKI library
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param message        signed message that gets the signer
 *  @param signingTime    text of the toolkit, required
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p signingTime is null */
SIGIL_EXPORT int CMSMakeSignedDataWithAddSigner(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, char* signingTime, BINSTR* signedMessage);

/** Verifies a signed message and takes its content out.
 *  @param option       option of the maker toolkit, not passed to the GPKI library
 *  @param message      message
 *  @param content      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param signerCount  number that the toolkit may write
 *  @return the common codes; 1001 when @p message is empty */
SIGIL_EXPORT int CMSProcessSignedData(void* handle, int option, BINSTR* message, BINSTR* content, int* signerCount);

/** Gives one signer of the message that was processed last. Both toolkits receive @p index.
 *  @param index        position of the signer; the toolkit says where it counts from
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param signingTime  text that the toolkit may write
 *  @return the common codes */
SIGIL_EXPORT int CMSGetSignerCert(void* handle, int index, BINSTR* certificate, char* signingTime);

/** Makes the data that a signer elsewhere is to sign. The stray k of the name is part of the interface.
 *  @param option            option of the maker toolkit, not passed to the GPKI library
 *  @param certificate       certificate
 *  @param content           content
 *  @param signingTime       text of the toolkit, required
 *  @param signedAttributes  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p content is empty or @p signingTime is null; 1003 on the
 *          GPKI library */
SIGIL_EXPORT int CMSMakekTBSData(
    void* handle, int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes);

/** Makes the signed message from a signature made elsewhere.
 *  @param signature      signature over the data of CMSMakekTBSData
 *  @param signedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p signature is empty; 1003 on the GPKI library */
SIGIL_EXPORT int CMSComposeSignedData(void* handle, BINSTR* signature, BINSTR* signedMessage);

/** Sets an option of the message functions.
 *  @param option  option of the maker toolkit
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CMSSetOption(void* handle, int option);

/** Signs a file into a detached message.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param contentFile  path of the content
 *  @param signingTime  text of the toolkit, required
 *  @param messageFile  path of the message
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p contentFile, @p signingTime
 *          or @p messageFile is null */
SIGIL_EXPORT int CMSMakeSignedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile);

/** Signs a file into a message that includes it.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param contentFile  path of the content
 *  @param signingTime  text of the toolkit, required
 *  @param messageFile  path of the message
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p contentFile, @p signingTime
 *          or @p messageFile is null */
SIGIL_EXPORT int CMSMakeSignedDataFileWithContent(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile);

/** Verifies a detached signed message of a file.
 *  @param contentFile  first path text, required
 *  @param messageFile  second path text, required
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param signingTime  text that the toolkit may write
 *  @return the common codes; 1001 when @p contentFile or @p messageFile is null */
SIGIL_EXPORT int CMSProcessSignedDataFile(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);

/** Verifies a signed message that includes its content. The maker toolkit has one function for this and for
 *  CMSProcessSignedDataFile.
 *  @param contentFile  first path text, required
 *  @param messageFile  second path text, required
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param signingTime  text that the toolkit may write
 *  @return the common codes; 1001 when @p contentFile or @p messageFile is null */
SIGIL_EXPORT int CMSProcessSignedDataFileWithContent(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);

/** Gives the CA certificates in the message that was processed last.
 *  @param certificates  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetSignerCaPubs(void* handle, BINSTR* certificates);

/** Gives the data of one signer that is to be time-stamped.
 *  @param index  position of the signer; the toolkit says where it counts from
 *  @param data   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetTBTData(void* handle, int index, BINSTR* data);

/** Gives the time-stamp token of one signer (RFC 3161).
 *  @param index  position of the signer; the toolkit says where it counts from
 *  @param token  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetTimeStampToken1(void* handle, int index, BINSTR* token);

/** Puts a time-stamp token into a signed message. Despite its name it sets the token.
 *  @param message         signed message
 *  @param index           position of the signer; the toolkit says where it counts from
 *  @param token           time-stamp token
 *  @param stampedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p message or @p token is empty; 1003 on the maker toolkit */
SIGIL_EXPORT int CMSGetTimeStampToken2(
    void* handle, BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage);

/** Encrypts content for one recipient.
 *  @param option            option of the maker toolkit, not passed to the GPKI library
 *  @param recipient         recipient's certificate
 *  @param content           content
 *  @param algorithm         encryption algorithm, a number of the toolkit
 *  @param envelopedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p recipient or @p content is empty */
SIGIL_EXPORT int CMSMakeEnvelopedData(
    void* handle, int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);

/** Encrypts content for several recipients.
 *  @param option            option of the maker toolkit, not passed to the GPKI library
 *  @param recipients        list of recipients' certificates
 *  @param content           content
 *  @param algorithm         encryption algorithm, a number of the toolkit
 *  @param envelopedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p recipients or @p content is empty */
SIGIL_EXPORT int CMSMakeEnvDataWithMultiRec(
    void* handle, int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);

/** Decrypts an enveloped message.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param message      message
 *  @param content      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p message is empty */
SIGIL_EXPORT int CMSProcessEnvelopedData(
    void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);

/** Encrypts a file for one recipient. The GPKI library does not receive the last text.
 *  @param recipient    recipient's certificate
 *  @param contentFile  path of the content
 *  @param algorithm    encryption algorithm, a number of the toolkit
 *  @param messageFile  second path text, required
 *  @param cipherFile   third path text, required, for the maker toolkit only
 *  @return the common codes; 1001 when @p recipient is empty or @p contentFile, @p messageFile or @p cipherFile is
 *          null */
SIGIL_EXPORT int CMSMakeEnvelopedDataFile(
    void* handle, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);

/** Decrypts an enveloped message whose encrypted content lies in a file of its own.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param messageFile  path of the message
 *  @param cipherFile   path of the encrypted content
 *  @param contentFile  path of the content
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p messageFile, @p cipherFile or
 *          @p contentFile is null */
SIGIL_EXPORT int CMSProcessEnvelopedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);

/** Decrypts an enveloped message that includes its encrypted content. Neither toolkit receives the second text.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param messageFile  path of the message
 *  @param cipherFile   ignored, may be null
 *  @param contentFile  path of the content
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p messageFile or @p contentFile
 *          is null */
SIGIL_EXPORT int CMSProcessEnvDataFileWithContent(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);

/** Signs content and encrypts it for a recipient in one message.
 *  @param option            option of the maker toolkit, not passed to the GPKI library
 *  @param certificate       certificate
 *  @param privateKey        private key
 *  @param recipient         recipient's certificate
 *  @param content           content
 *  @param algorithm         encryption algorithm, a number of the toolkit
 *  @param envelopedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey, @p recipient or @p content is empty */
SIGIL_EXPORT int CMSMakeSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);

/** Decrypts a signed-and-enveloped message and verifies its signature.
 *  @param option             option of the maker toolkit, not passed to the GPKI library
 *  @param certificate        certificate
 *  @param privateKey         private key
 *  @param message            message
 *  @param content            filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param signerCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p message is empty */
SIGIL_EXPORT int CMSProcessSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, BINSTR* content, BINSTR* signerCertificate);

/** Encrypts content under a symmetric key. The GPKI library receives only @p content and @p encryptedMessage.
 *  @param option            option of the maker toolkit, not passed to the GPKI library
 *  @param key               key, for the maker toolkit only
 *  @param content           content
 *  @param algorithm         encryption algorithm, a number of the maker toolkit
 *  @param encryptedMessage  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p content is empty */
SIGIL_EXPORT int CMSMakeEncryptedData(
    void* handle, int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage);

/** Decrypts a message of CMSMakeEncryptedData.
 *  @param key      key
 *  @param message  message
 *  @param content  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p key or @p message is empty */
SIGIL_EXPORT int CMSProcessEncryptedData(void* handle, BINSTR* key, BINSTR* message, BINSTR* content);

#endif
