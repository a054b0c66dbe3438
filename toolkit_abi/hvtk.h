/** @file
 *  The functions of the maker's toolkit, libHVCToolkitV30.so, that the library binds at run time: their names and
 *  argument lists, said once. The façade's rows are checked against these declarations without linking them; the
 *  recording toolkit of the tests is made from them, and the open toolkit defines what it has of them.
 *
 *  Every function answers 0 or the toolkit's own code. The context that HVTK_API_Init made comes first, except for the
 *  byte strings. A capacity counts the bytes of the buffer that follows it; texts without one have a size that the
 *  family's public header states (<sigildesk/crypto.h>). Byte strings that a function fills are the toolkit's and go
 *  back through HVTK_BINSTR_Delete. What the functions mean to a caller stands with the exports that reach them.
 */
#pragma once

#include <sigildesk/binstr.h>

#include <cstdint>

struct PKCS11_TOKEN_INFO;

extern "C" {

// Life cycle and settings. Init fills the context and Finish ends it, so both take its address.
int HVTK_API_Init(void** context, char* folder);
int HVTK_API_Finish(void** context);
int HVTK_API_GetErrInfo(void* context, int capacity, char* text);
int HVTK_API_GetInfo(void* context, char* version, char* info);
int HVTK_API_SetConfFile(void* context, char* confFile);
int HVTK_API_SetHashAlgo(void* context, int hashAlgorithm);

// Byte strings in toolkit memory. SetData copies the bytes.
int HVTK_BINSTR_Create(BINSTR* binStr);
int HVTK_BINSTR_Delete(BINSTR* binStr);
int HVTK_BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr);

// Certificates: one is loaded per context, and the getters read from it
int HVTK_CERT_SetCaPubs(void* context, BINSTR* caPubs);
int HVTK_CERT_FreeCaPubs(void* context);
int HVTK_CERT_Load(void* context, BINSTR* certificate);
int HVTK_CERT_Unload(void* context);
int HVTK_CERT_GetUID(void* context, int capacity, char* text);
int HVTK_CERT_GetVersion(void* context, int* version);
int HVTK_CERT_GetSerialNum(void* context, int capacity, char* text);
int HVTK_CERT_GetSignatureAlgorithm(void* context, int capacity, char* text);
int HVTK_CERT_GetIssuerName(void* context, int capacity, char* text);
int HVTK_CERT_GetValidity(void* context, char* notBefore, char* notAfter);
int HVTK_CERT_GetSubjectName(void* context, int capacity, char* text);
int HVTK_CERT_GetPubKey(void* context, int capacity, char* algorithm, char* text);
int HVTK_CERT_GetPubKey2(void* context, char* algorithm, char* keyLength, BINSTR* publicKey);
int HVTK_CERT_GetSignature(void* context, int capacity, char* text);
int HVTK_CERT_GetKeyUsage(void* context, int capacity, char* text);
int HVTK_CERT_GetBasicConstraints(void* context, int capacity, char* text);
int HVTK_CERT_GetCertPolicy(void* context, int capacity, char* text);
int HVTK_CERT_GetCertPolicy_PolicyID(void* context, int capacity, char* text);
int HVTK_CERT_GetExtKeyUsage(void* context, int capacity, char* text);
int HVTK_CERT_GetSubjectAltName(void* context, int capacity, char* text);
int HVTK_CERT_GetIssuerAltName(void* context, int capacity, char* text);
int HVTK_CERT_GetAuthKeyID(void* context, int capacity, char* text);
int HVTK_CERT_GetSubKeyID(void* context, int capacity, char* text);
int HVTK_CERT_GetCRLDP(void* context, int capacity, char* text);
int HVTK_CERT_GetCRLDP_URL(void* context, int capacity, char* text);
int HVTK_CERT_GetAIA(void* context, int capacity, char* text);
int HVTK_CERT_GetRemainDays(void* context, BINSTR* certificate, int* days);
int HVTK_CERT_AddTrustedCert(void* context, BINSTR* certificate);
int HVTK_CERT_SetVerifyEnv1(void* context, int range, int statusCheck, bool useCache, char* confFile);
int HVTK_CERT_SetVerifyEnv2(void* context, char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates);
int HVTK_CERT_Verify(void* context, BINSTR* certificate, int purpose, char* time, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl);
int HVTK_CERT_Verify2(void* context, BINSTR* certificate, int purpose, char* time, char* confFile);
int HVTK_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate);
int HVTK_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* revocationTime, int* reason);
int HVTK_CERT_GetSubjectName_DERFormat(void* context, BINSTR* name);
int HVTK_CERT_GetPolicyConstraints(void* context, int capacity, char* text);

// Signed and enveloped messages
int HVTK_CMS_MakeSignedData(void* context, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* content,
    char* signingTime, BINSTR* signedMessage);
int HVTK_CMS_MakeSignedDataWithAddSigner(void* context, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, char* signingTime, BINSTR* signedMessage);
int HVTK_CMS_ProcessSignedData(void* context, int option, BINSTR* message, BINSTR* content, int* signerCount);
int HVTK_CMS_GetSignerCert(void* context, int index, BINSTR* certificate, char* signingTime);
int HVTK_CMS_MakeTBSData(
    void* context, int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes);
int HVTK_CMS_ComposeSignedData(void* context, BINSTR* signature, BINSTR* signedMessage);
int HVTK_CMS_SetOption(void* context, int option);
int HVTK_CMS_MakeSignedData_File(void* context, BINSTR* certificate, BINSTR* privateKey, char* contentFile,
    char* signingTime, char* messageFile);
int HVTK_CMS_MakeSignedData_WithContent_File(void* context, BINSTR* certificate, BINSTR* privateKey,
    char* contentFile, char* signingTime, char* messageFile);
int HVTK_CMS_ProcessSignedData_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
int HVTK_CMS_MakeEnvelopedData(
    void* context, int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int HVTK_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int HVTK_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);
int HVTK_CMS_MakeEnvelopedData_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);
int HVTK_CMS_ProcessEnvelopedData_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);
int HVTK_CMS_ProcessEnvelopedData_WithContent_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* contentFile);
int HVTK_CMS_MakeSignedAndEnvData(void* context, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int HVTK_CMS_ProcessSignedAndEnvData(void* context, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, BINSTR* content, BINSTR* signerCertificate);
int HVTK_CMS_EncryptData(
    void* context, int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage);
int HVTK_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* content);
int HVTK_CMS_GetEnvDataRecipCnt(void* context, BINSTR* message, int* count);
int HVTK_CMS_GetEnvDataRecipInfo(
    void* context, int index, int capacity, char* issuer, char* serialNumber, char* algorithm);
int HVTK_CMS_MakeEnvelopedData_WithContent_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile);

// Online certificate status
int HVTK_OCSP_MakeOCSPReq(void* context, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request);
int HVTK_OCSP_SendAndRecv(void* context, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response);
int HVTK_OCSP_VerifyResMsg(void* context, BINSTR* certificate, BINSTR* response, BINSTR* responderCertificate);
int HVTK_OCSP_CheckCertStatus(
    void* context, char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey);

// Private keys
int HVTK_PRIKEY_Encrypt(void* context, int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey);
int HVTK_PRIKEY_Decrypt(void* context, char* password, BINSTR* encryptedKey, BINSTR* privateKey);
int HVTK_PRIKEY_ChangePasswd(
    void* context, char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey);
int HVTK_PRIKEY_CheckKeyPair(void* context, BINSTR* certificate, BINSTR* privateKey);

// Storage media: disk, card slots and the system store
int HVTK_MEDIA_Load(void* context, char* name);
int HVTK_MEDIA_Unload(void* context);
int HVTK_MEDIA_DISK_ReadFile(void* context, char* path, BINSTR* data);
int HVTK_MEDIA_DISK_WriteFile(void* context, char* path, BINSTR* data);
int HVTK_MEDIA_DISK_ReadCert(void* context, char* path, BINSTR* certificate);
int HVTK_MEDIA_DISK_ReadPriKey(void* context, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_DISK_WriteCert(void* context, char* path, BINSTR* certificate);
int HVTK_MEDIA_DISK_WritePriKey(void* context, int algorithm, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_DISK_DeleteCert(void* context, char* path);
int HVTK_MEDIA_DISK_DeletePriKey(void* context, char* password, char* path);
int HVTK_MEDIA_CARD_ReadCert(void* context, int slot, char* path, BINSTR* certificate);
int HVTK_MEDIA_CARD_ReadPriKey(void* context, int slot, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_CARD_WriteCert(void* context, int slot, char* path, BINSTR* certificate);
int HVTK_MEDIA_CARD_WritePriKey(
    void* context, int slot, int algorithm, char* path, char* password, BINSTR* privateKey);
int HVTK_MEDIA_CARD_DeleteCert(void* context, int slot, char* path);
int HVTK_MEDIA_CARD_DeletePriKey(void* context, int slot, char* path, char* password);
int HVTK_MEDIA_WINS_WriteCertAndPriKey(void* context, int store, char* password, BINSTR* pfx);
int HVTK_MEDIA_WINS_WriteCert(void* context, BINSTR* certificate);
int HVTK_MEDIA_WINS_GetCertCnt(void* context, char* store, int* count);
int HVTK_MEDIA_WINS_GetCertDN(void* context, int index, int* kind, char* subject, char* issuer);
int HVTK_MEDIA_WINS_ReadCert(void* context, int index, BINSTR* certificate);
int HVTK_MEDIA_WINS_ReadPriKey(void* context, int index, BINSTR* privateKey);

// Identity verification with the random value of a key
int HVTK_VID_GetRandomFromPriKey(void* context, BINSTR* privateKey, BINSTR* random);
int HVTK_VID_Verify(void* context, BINSTR* certificate, BINSTR* random, char* identity);
int HVTK_VID_VerifyByIVS(
    void* context, char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate);

// PKCS#12 files
int HVTK_PFX_Export(
    void* context, int option, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* pfx);
int HVTK_PFX_Export2(
    void* context, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates, BINSTR* pfx);
int HVTK_PFX_Import(
    void* context, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates);
int HVTK_PFX_ExportMultiPair(void* context, std::intptr_t optionOrPassword, void* passwordOrCertificates,
    BINSTR* third, BINSTR* fourth, BINSTR* pfx);
int HVTK_PFX_ImportMultiPair(
    void* context, char* password, BINSTR* pfx, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates);
int HVTK_PFX_ImportMultiPair2(void* context, int mode, char* password, BINSTR* pfx, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates);

// PKCS#11 tokens
int HVTK_PKCS11_GetSlotList(void* context, unsigned long* slots, unsigned long* count);
int HVTK_PKCS11_GetTokenInfo(void* context, unsigned long slotId, PKCS11_TOKEN_INFO* info);
int HVTK_PKCS11_InitToken(void* context, char* soPin, char* label);
int HVTK_PKCS11_InitTokenWithSlotID(void* context, unsigned long slotId, char* soPin, char* pin, char* label);
int HVTK_PKCS11_OpenSessionWithSlotID(void* context, unsigned long slotId, char* pin, int flags);
int HVTK_PKCS11_OpenSessionWithTokenName(void* context, char* token, int flags);
int HVTK_PKCS11_Login(void* context, char* pin);
int HVTK_PKCS11_Logout(void* context);
int HVTK_PKCS11_CloseSession(void* context);
int HVTK_PKCS11_ChangePIN(void* context, char* oldPin, char* newPin);
int HVTK_PKCS11_GetCertCnt(void* context, int* count);
int HVTK_PKCS11_GetCertInfo(void* context, int index, int* kind, BINSTR* id, BINSTR* certificate);
int HVTK_PKCS11_ReadCert(void* context, BINSTR* id, BINSTR* certificate);
int HVTK_PKCS11_ReadRandomForVID(void* context, BINSTR* id, BINSTR* random);
int HVTK_PKCS11_WriteCertAndPriKey(void* context, BINSTR* certificate, BINSTR* privateKey);
int HVTK_PKCS11_DeleteCertAndPriKey(void* context, BINSTR* id);
int HVTK_PKCS11_GenKeyPair(void* context, int algorithm, int bits, BINSTR* publicKey);
int HVTK_PKCS11_Sign(void* context, BINSTR* id, BINSTR* data, BINSTR* signature);
int HVTK_PKCS11_Verify(void* context, BINSTR* id, BINSTR* data, BINSTR* signature);
int HVTK_PKCS11_Encrypt(void* context, BINSTR* id, BINSTR* data, BINSTR* cipher);
int HVTK_PKCS11_Decrypt(void* context, BINSTR* id, BINSTR* cipher, BINSTR* data);
int HVTK_PKCS11_SignData(void* context, BINSTR* id, BINSTR* data, BINSTR* signedMessage);
int HVTK_PKCS11_SignData_NoContent(void* context, BINSTR* id, BINSTR* data, BINSTR* signedMessage);
int HVTK_PKCS11_DecryptData(void* context, BINSTR* id, BINSTR* message, BINSTR* data);
int HVTK_PKCS11_SignAndEnvData(
    void* context, BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage);
int HVTK_PKCS11_VerifyAndDecData(
    void* context, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate);
int HVTK_PKCS11_VerifySignatureValue(void* context, char* hash, BINSTR* certificate, BINSTR* signature);
int HVTK_PKCS11_CMP_CertRequest(void* context, char* address, int port, char* reference, char* secret, char* pin,
    char* token, BINSTR* caCertificate, BINSTR* certificate);
int HVTK_PKCS11_CMP_CertUpdate(void* context, char* address, int port, bool newKey, char* pin, char* token,
    BINSTR* certificate, BINSTR* newCertificate);
int HVTK_PKCS11_CMP_CertUpdate2(void* context, char* address, int port, bool newKey, int keyBits, char* pin,
    char* token, BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId,
    BINSTR* kmCertificate, BINSTR* kmId);
int HVTK_PKCS11_CMP_CertRevoke(void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* id);
int HVTK_PKCS11_OpenSession(void* context, char* pin);

// Certificate management
int HVTK_CMP_SetProtocol(void* context, int protocol);
int HVTK_CMP_SetCA(void* context, int ca);
int HVTK_CMP_CertRequest(void* context, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey);
int HVTK_CMP_CertRequest2(void* context, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);
int HVTK_CMP_CertUpdate(void* context, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey);
int HVTK_CMP_CertUpdate2(void* context, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey);
int HVTK_CMP_CertRevoke(void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificate, BINSTR* result);
int HVTK_CMP_CertRevoke2(
    void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result);
int HVTK_CMP_CertRecovery(void* context, char* address, int port, char* reference, char* secret,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);

// Cryptographic primitives
int HVTK_CRYPT_SetRSAVersion(void* context, int version);
int HVTK_CRYPT_SetPaddingType(void* context, int padding);
int HVTK_CRYPT_SetEnvChangeIV(void* context);
int HVTK_CRYPT_GenRandom(void* context, int length, BINSTR* random);
int HVTK_CRYPT_GenKeyPair(void* context, int bits, BINSTR* publicKey, BINSTR* privateKey);
int HVTK_CRYPT_GenKeyAndIV(void* context, int algorithm);
int HVTK_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* iv);
int HVTK_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* iv);
int HVTK_CRYPT_ClearKeyAndIV(void* context);
int HVTK_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* cipher);
int HVTK_CRYPT_Decrypt(void* context, BINSTR* cipher, BINSTR* data);
int HVTK_CRYPT_EncryptFile(void* context, char* inputFile, char* outputFile);
int HVTK_CRYPT_DecryptFile(void* context, char* inputFile, char* outputFile);
int HVTK_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature);
int HVTK_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature);
int HVTK_CRYPT_VerifyFile(void* context, BINSTR* certificate, int hash, char* dataFile, char* signatureFile);
int HVTK_CRYPT_AsymEncrypt(void* context, int option, BINSTR* key, BINSTR* data, BINSTR* cipher);
int HVTK_CRYPT_AsymDecrypt(void* context, int option, BINSTR* key, BINSTR* cipher, BINSTR* data);
int HVTK_CRYPT_Hash(void* context, int hash, BINSTR* data, BINSTR* digest);
int HVTK_CRYPT_HashFile(void* context, int hash, char* inputFile, BINSTR* digest);
int HVTK_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int HVTK_CRYPT_GenMAC2(void* context, int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac);
int HVTK_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int HVTK_CRYPT_GenSharedKey(void* context, int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key);
int HVTK_CRYPT_SignFile(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile);

// Base64 texts
int HVTK_BASE64_Encode(void* context, BINSTR* data, BINSTR* text);
int HVTK_BASE64_Decode(void* context, BINSTR* text, BINSTR* data);

// PEM texts
int HVTK_PEM_Encode(void* context, int kind, BINSTR* data, BINSTR* text);
int HVTK_PEM_Decode(void* context, BINSTR* text, BINSTR* data);

// Directory and URL fetches
int HVTK_HVAP_GetDataByURL(void* context, int kind, char* url, BINSTR* data);
int HVTK_HVAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* crl);

// Time stamps
int HVTK_TSP_TimeStampData(void* context, char* address, int port, int hash, char* policy, BINSTR* data,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token);
int HVTK_TSP_TimeStampFile(void* context, char* address, int port, int hash, char* policy, char* dataFile,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token);
int HVTK_TSP_MakeReqMsg(void* context, BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* request);
int HVTK_TSP_SendAndRecv(void* context, char* address, int port, BINSTR* request, BINSTR* response);
int HVTK_TSP_VerifyResMsg(void* context, BINSTR* response, BINSTR* token, BINSTR* certificate);
int HVTK_TSP_VerifyToken(void* context, BINSTR* token, BINSTR* certificate);
int HVTK_TSP_VerifyToken2(void* context, char* dataFile, BINSTR* token);
int HVTK_TSP_GetTokenInfo(void* context, BINSTR* token, int capacity, char* text3, char* text4, char* text5,
    char* text6, char* text7, char* text8, BINSTR* certificate);

// Wireless PKI
int HVTK_WPKI_SignData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message);
int HVTK_WPKI_VerifyData(void* context, BINSTR* message, BINSTR* data, BINSTR* certificate);
int HVTK_WPKI_EncryptData(void* context, BINSTR* certificate, BINSTR* privateKey, int algorithm, BINSTR* recipient,
    BINSTR* data, BINSTR* message);
int HVTK_WPKI_DecryptData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);
int HVTK_WPKI_VerifyCert(void* context, BINSTR* certificate);

// Viewing and verification
int HVTK_UNI_ViewCert(void* context, BINSTR* certificate, char* text);
int HVTK_UNI_VerifySignData(void* context, BINSTR* message, BINSTR* data, BINSTR* certificate);
int HVTK_UNI_DecryptEnvData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);

// Object lists, names, certificate paths and trust
int HVTK_UTIL_AddObject(void* context, BINSTR* object, BINSTR* list);
int HVTK_UTIL_GetObjectCount(void* context, BINSTR* list, int* count);
int HVTK_UTIL_GetObject(void* context, BINSTR* list, int index, BINSTR* object);
int HVTK_UTIL_CompareDN(void* context, char* name1, char* name2);
int HVTK_UTIL_GetCertPath(void* context, BINSTR* certificate, BINSTR* path);
int HVTK_UTIL_GetRootCert(void* context, BINSTR* certificate, BINSTR* root);
int HVTK_UTIL_IsTrustCert(void* context, BINSTR* certificate, BINSTR* trusted, bool* isTrusted);

} // extern "C"

/** @name The two argument lists with which HVTK_PFX_ExportMultiPair is called
 *  The one function that has two: its declaration above takes what either list puts in each place, as the machine hands
 *  it over. An option is an int, of which only the low 32 bits count. @{ */
using HVTK_PFX_ExportMultiPair_WithOption = int(
    void* context, int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx);
using HVTK_PFX_ExportMultiPair_WithCaCertificates = int(
    void* context, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates, BINSTR* pfx);
/** @} */
