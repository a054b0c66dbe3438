/** @file
 *  The functions of the government PKI library, libgpkiapi_v15.so, that the library binds at run time: their names and
 *  argument lists, said once. The façade's rows are checked against these declarations without linking them; the
 *  recording toolkit of the tests is made from them, and the open toolkit defines what it has of them.
 *
 *  Every function answers 0 or the library's own code. The context that GPKI_API_Init made comes first, except for the
 *  byte strings. A capacity counts the bytes of the buffer that follows it. Byte strings that a function fills are the
 *  library's and go back through GPKI_BINSTR_Delete. What the functions mean to a caller stands with the exports that
 *  reach them (<sigildesk/crypto.h>).
 */
#pragma once

#include <sigildesk/binstr.h>

struct PKCS11_TOKEN_INFO;

extern "C" {

// Life cycle and settings. Init fills the context and Finish ends it, so both take its address.
int GPKI_API_Init(void** context, char* folder);
int GPKI_API_Finish(void** context);
int GPKI_API_GetErrInfo(void* context, int capacity, char* text);
int GPKI_API_GetVersion(void* context, int capacity, char* text);
int GPKI_API_GetInfo(void* context, int kind, char* text);
int GPKI_API_SetOption(void* context, int option);
int GPKI_API_SetConfFile(void* context, char* confFile);
int GPKI_API_SetCaPubs(void* context, BINSTR* caPubs);
int GPKI_API_FreeCaPubs(void* context);
int GPKI_API_Str2Time(void* context, char* timeText, long* time);
int GPKI_API_SetHashAlgo(void* context, int hashAlgorithm);

// Byte strings in toolkit memory. SetData copies the bytes.
int GPKI_BINSTR_Create(BINSTR* binStr);
int GPKI_BINSTR_Delete(BINSTR* binStr);
int GPKI_BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr);

// Certificates: one is loaded per context, and the getters read from it
int GPKI_CERT_Load(void* context, BINSTR* certificate);
int GPKI_CERT_Unload(void* context);
int GPKI_CERT_GetUID(void* context, int capacity, char* text);
int GPKI_CERT_GetVersion(void* context, int* version);
int GPKI_CERT_GetSerialNum(void* context, int capacity, char* text);
int GPKI_CERT_GetSignatureAlgorithm(void* context, int capacity, char* text);
int GPKI_CERT_GetIssuerName(void* context, int capacity, char* text);
int GPKI_CERT_GetValidity(void* context, int capacity, char* text);
int GPKI_CERT_GetSubjectName(void* context, int capacity, char* text);
int GPKI_CERT_GetPubKeyAlg(void* context, int capacity, char* text);
int GPKI_CERT_GetPubKeyLen(void* context, int capacity, char* text);
int GPKI_CERT_GetPubKey(void* context, int capacity, char* text);
int GPKI_CERT_GetSignature(void* context, int capacity, char* text);
int GPKI_CERT_GetKeyUsage(void* context, int capacity, char* text);
int GPKI_CERT_GetBasicConstraints(void* context, int capacity, char* text);
int GPKI_CERT_GetCertPolicy(void* context, int capacity, char* text);
int GPKI_CERT_GetCertPolicyID(void* context, int capacity, char* text);
int GPKI_CERT_GetExtKeyUsage(void* context, int capacity, char* text);
int GPKI_CERT_GetSubjectAltName(void* context, int capacity, char* text);
int GPKI_CERT_GetAuthKeyID(void* context, int capacity, char* text);
int GPKI_CERT_GetSubKeyID(void* context, int capacity, char* text);
int GPKI_CERT_GetCRLDP(void* context, int capacity, char* text);
int GPKI_CERT_GetAIA(void* context, int capacity, char* text);
int GPKI_CERT_GetRemainDays(void* context, BINSTR* certificate, int* days);
int GPKI_CERT_AddCert(void* context, BINSTR* certificate, BINSTR* list);
int GPKI_CERT_GetCertCount(void* context, BINSTR* list, int* count);
int GPKI_CERT_GetCert(void* context, BINSTR* list, int index, BINSTR* certificate);
int GPKI_CERT_AddTrustedCert(void* context, BINSTR* certificate);
int GPKI_CERT_SetVerifyEnv(
    void* context, int range, int statusCheck, bool useCache, char* cachePath, char* confFile);
int GPKI_CERT_Verify(void* context, BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl);
int GPKI_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate);
int GPKI_CERT_CheckStatByOCSP(void* context, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* reason);
int GPKI_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* revocationTime, int* reason);

// Signed and enveloped messages
int GPKI_CMS_MakeSignedData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* content,
    char* signingTime, BINSTR* signedMessage);
int GPKI_CMS_MakeSignedDataWithAddSigner(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    char* signingTime, BINSTR* signedMessage);
int GPKI_CMS_ProcessSignedData2(void* context, BINSTR* message, BINSTR* content, int* signerCount);
int GPKI_CMS_GetSigner(void* context, int index, BINSTR* certificate, char* signingTime);
int GPKI_CMS_MakeSignedData_NoContent_File(void* context, BINSTR* certificate, BINSTR* privateKey,
    char* contentFile, char* signingTime, char* messageFile);
int GPKI_CMS_MakeSignedData_File(void* context, BINSTR* certificate, BINSTR* privateKey, char* contentFile,
    char* signingTime, char* messageFile);
int GPKI_CMS_ProcessSignedData_NoContent_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
int GPKI_CMS_ProcessSignedData_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
int GPKI_CMS_GetSignerCaPubs(void* context, BINSTR* certificates);
int GPKI_CMS_GetTBTData(void* context, int index, BINSTR* data);
int GPKI_CMS_GetTimeStampToken(void* context, int index, BINSTR* token);
int GPKI_CMS_SetTimeStampToken(void* context, BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage);
int GPKI_CMS_MakeEnvelopedData(
    void* context, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int GPKI_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int GPKI_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);
int GPKI_CMS_MakeEnvelopedData_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile);
int GPKI_CMS_ProcessEnvelopedData_NoContent_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);
int GPKI_CMS_ProcessEnvelopedData_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* contentFile);
int GPKI_CMS_MakeSignedAndEnvData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient,
    BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int GPKI_CMS_ProcessSignedAndEnvData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* content, BINSTR* signerCertificate);
int GPKI_CMS_MakeEncryptedData(void* context, BINSTR* content, BINSTR* encryptedMessage);
int GPKI_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* content);
int GPKI_CMS_ProcessSignedData(
    void* context, BINSTR* message, BINSTR* content, BINSTR* certificate, char* signingTime);
int GPKI_CMS_MakeEnvelopedData_NoContent_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);

// Online certificate status
int GPKI_OCSP_MakeOCSPReq(void* context, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request);
int GPKI_OCSP_SendAndRecv(void* context, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response);
int GPKI_OCSP_VerifyResMsg(
    void* context, BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate);
int GPKI_OCSP_GetCertStatus(void* context, int index, int* status, char* revocationTime, int* reason);

// Private keys
int GPKI_PRIKEY_Encrypt(void* context, int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey);
int GPKI_PRIKEY_Decrypt(void* context, char* password, BINSTR* encryptedKey, BINSTR* privateKey);
int GPKI_PRIKEY_ChangePasswd(
    void* context, char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey);
int GPKI_PRIKEY_CheckKeyPair(void* context, BINSTR* certificate, BINSTR* privateKey);

// Storage media: the medium is 1 for the disk, 2 for a card
int GPKI_STORAGE_Load(void* context, char* name);
int GPKI_STORAGE_Unload(void* context);
int GPKI_STORAGE_ReadFile(void* context, char* path, BINSTR* data);
int GPKI_STORAGE_WriteFile(void* context, char* path, BINSTR* data);
int GPKI_STORAGE_ReadCert(void* context, int medium, char* path, int kind, BINSTR* certificate);
int GPKI_STORAGE_ReadPriKey(void* context, int medium, char* path, char* password, int kind, BINSTR* privateKey);
int GPKI_STORAGE_WriteCert(void* context, int medium, char* path, int kind, BINSTR* certificate);
int GPKI_STORAGE_WritePriKey(
    void* context, int medium, char* path, char* password, int kind, int algorithm, BINSTR* privateKey);
int GPKI_STORAGE_DeleteCert(void* context, int medium, char* path, int kind);
int GPKI_STORAGE_DeletePriKey(void* context, int medium, char* path, char* password, int kind);

// Identity verification with the random value of a key
int GPKI_VID_GetRandomFromPriKey(void* context, BINSTR* privateKey, BINSTR* random);
int GPKI_VID_Verify(void* context, BINSTR* certificate, BINSTR* random, char* identity);
int GPKI_VID_VerifyByIVS(
    void* context, char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate);

// PKCS#12 files
int GPKI_PFX_Export(void* context, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey, BINSTR* pfx);
int GPKI_PFX_Import(void* context, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey);

// PKCS#11 tokens
int GPKI_HSM_GetSlotList(void* context, unsigned long* slots, unsigned long* count);
int GPKI_HSM_GetTokenInfo(void* context, unsigned long slotId, PKCS11_TOKEN_INFO* info);
int GPKI_HSM_OpenSession(void* context, unsigned long slotId, int flags);
int GPKI_HSM_Login(void* context, char* pin);
int GPKI_HSM_Logout(void* context);
int GPKI_HSM_CloseSession(void* context);
int GPKI_HSM_ChangePIN(void* context, char* oldPin, char* newPin);
int GPKI_HSM_GetCertCnt(void* context, int* count);
int GPKI_HSM_GetCertInfo(void* context, int index, int* kind, BINSTR* id, BINSTR* certificate);
int GPKI_HSM_ReadCert(void* context, BINSTR* id, BINSTR* certificate);
int GPKI_HSM_ReadRandomForVID(void* context, BINSTR* id, BINSTR* random);
int GPKI_HSM_WriteCertAndPriKey(void* context, BINSTR* certificate, BINSTR* privateKey);
int GPKI_HSM_DeleteCertAndPriKey(void* context, BINSTR* id);
int GPKI_HSM_SignData(void* context, BINSTR* id, BINSTR* data, BINSTR* signedMessage);

// Cryptographic primitives
int GPKI_CRYPT_GenRandom(void* context, int length, BINSTR* random);
int GPKI_CRYPT_GenKeyAndIV(void* context, int algorithm);
int GPKI_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* iv);
int GPKI_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* iv);
int GPKI_CRYPT_ClearKeyAndIV(void* context);
int GPKI_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* cipher);
int GPKI_CRYPT_Decrypt(void* context, BINSTR* cipher, BINSTR* data);
int GPKI_CRYPT_Encrypt_File(void* context, char* inputFile, char* outputFile);
int GPKI_CRYPT_Decrypt_File(void* context, char* inputFile, char* outputFile);
int GPKI_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature);
int GPKI_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature);
int GPKI_CRYPT_Verify_File(void* context, BINSTR* certificate, int hash, char* dataFile, char* signatureFile);
int GPKI_CRYPT_AsymEncrypt(void* context, int option, BINSTR* key, BINSTR* data, BINSTR* cipher);
int GPKI_CRYPT_AsymDecrypt(void* context, int option, BINSTR* key, BINSTR* cipher, BINSTR* data);
int GPKI_CRYPT_Hash(void* context, int hash, BINSTR* data, BINSTR* digest);
int GPKI_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int GPKI_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int GPKI_CRYPT_Sign_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile);

// Base64 texts
int GPKI_BASE64_Encode(void* context, BINSTR* data, BINSTR* text);
int GPKI_BASE64_Decode(void* context, BINSTR* text, BINSTR* data);

// Directory fetches
int GPKI_LDAP_GetDataByURL(void* context, int kind, char* url, BINSTR* data);
int GPKI_LDAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* crl);
int GPKI_LDAP_GetDataByCN(
    void* context, char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data);
int GPKI_LDAP_GetAnyDataByURL(void* context, char* url, char* attribute, BINSTR* data);
int GPKI_LDAP_GetCertPath(void* context, BINSTR* certificate, char* address, BINSTR* path);

// Time stamps
int GPKI_TSP_MakeReqMsg(void* context, BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* request);
int GPKI_TSP_SendAndRecv(void* context, char* address, int port, BINSTR* request, BINSTR* response);
int GPKI_TSP_VerifyResMsg(void* context, BINSTR* response, BINSTR* token, BINSTR* certificate);
int GPKI_TSP_VerifyToken(void* context, BINSTR* token, BINSTR* certificate);
int GPKI_TSP_VerifyToken2(void* context, BINSTR* data, BINSTR* token, BINSTR* certificate);
int GPKI_TSP_GetTokenInfo(void* context, BINSTR* token, int capacity, char* text1, char* text2, char* text3,
    char* text4, char* text5, char* text6, char* text7, char* text8);

// Challenge and response
int GPKI_SIGEA_MakeChallenge(void* context, BINSTR* challenge);
int GPKI_SIGEA_MakeResponse(
    void* context, BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response);
int GPKI_SIGEA_VerifyResponse(void* context, BINSTR* challenge, BINSTR* response, BINSTR* certificate);

// Wireless messages
int GPKI_WCMS_MakeSignedContent(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* content, BINSTR* message);
int GPKI_WCMS_ProcessSignedContent(void* context, BINSTR* message, BINSTR* content, BINSTR* certificate);
int GPKI_WCMS_MakeWapEnvelopedData(
    void* context, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* message);
int GPKI_WCMS_ProcessWapEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);

} // extern "C"
