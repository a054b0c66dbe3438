/** @file
 *  The object behind a façade handle.
 */
#pragma once

#include "facade/argument.h"

#include <sigildesk/crypto/pkcs11.h>

#include <memory>

class CHVTKWrap;
class CGPKIWrap;

/** Holds a handle's toolkit and sends every operation to it. Operations are named as the exports that reach them; what
 *  each requires and what each toolkit receives stands in the family's source file, facade/<family>.cpp, and what a
 *  caller has to know in the family's public header. One thread at a time. */
class CWrapperAPI {
public:
    CWrapperAPI();
    ~CWrapperAPI();
    CWrapperAPI(const CWrapperAPI&) = delete;
    CWrapperAPI& operator=(const CWrapperAPI&) = delete;

    /** Binds the object to a toolkit: type 0 the maker toolkit, 1 the GPKI library, from @p libraryFolder (at most 259
     *  bytes of it). @return the backend's Init result; 1020 other type; 1021 folder null or empty */
    int Initalize(int toolkitType, char* libraryFolder);
    /** Ends the toolkits thoroughly, their finish functions included, and returns 0. HV_Finish deliberately does less. */
    int Finish();
    /** Whether the backend of the object's type is there; its library need not be loaded. */
    bool CheckInit() const
    {
        switch (m_nToolkitType) {
        case 0:
            return m_pHVTKWrap != nullptr;
        case 1:
            return m_pGPKIWrap != nullptr;
        default:
            return true; // Initalize lets no other type in
        }
    }

    int GetErrInfo(int length, char* buffer);
    int GetErrInfo2(int length, char* buffer);
    int GetVersion(int length, char* buffer);
    int SetOption(int option);
    int SetConfFile(char* confFile);
    int SetCaPubs(BINSTR* caPubs);
    int FreeCaPubs();
    int Str2Time(char* timeText, long* time);
    int SetHashAlg(int hashAlgorithm);
    int BINCreate(BINSTR* binStr);
    int BINDelete(BINSTR* binStr);
    int BINSetData(unsigned char* data, int length, BINSTR* binStr);

    // Certificate inspection and verification
    int CertLoad(BINSTR* certificate);
    int CertUnLoad();
    int CertGetUID(int capacity, char* text);
    int CertGetVersion(int capacity, char* text);
    int CertGetSerialNum(int capacity, char* text);
    int CertGetSignatureAlgorithm(int capacity, char* text);
    int CertGetIssuerName(int capacity, char* text);
    int CertGetValidity(int notBeforeCapacity, char* notBefore, int notAfterCapacity, char* notAfter);
    int CertGetSubjectName(int capacity, char* text);
    int CertGetPubKeyInfo(
        char* algorithm, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR* publicKeyDer);
    int CertGetSignature(int capacity, char* text);
    int CertGetKeyUsage(int capacity, char* text);
    int CertGetBasicConstraints(int capacity, char* text);
    int CertGetCertPolicy(int capacity, char* text);
    int CertGetPolicyID(int capacity, char* text);
    int CertGetExtKeyUsage(int capacity, char* text);
    int CertGetSubjectAltName(int capacity, char* text);
    int CertGetIssuerAltName(int capacity, char* text);
    int CertGetAuthKeyID(int capacity, char* text);
    int CertGetSubKeyID(int capacity, char* text);
    int CertGetCRLDP(int capacity, char* text);
    int CertGetCRLDPURL(int capacity, char* text);
    int CertGetAIA(int capacity, char* text);
    int CertGetRemainDays(BINSTR* certificate, int* days);
    int CertAddCert(BINSTR* certificate, BINSTR* list);
    int CertGetCertCount(BINSTR* list, int* count);
    int CertGetCert(BINSTR* list, int index, BINSTR* certificate);
    int CertAddTrustedCert(BINSTR* certificate);
    int CertSetVerifyEnv(int range, int statusCheck, bool useCache, char* cachePath, char* confFile);
    int CertSetVerifyEnv2(char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates);
    int CertVerify(BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
        BINSTR* intermediates, BINSTR* crl);
    int CertVerify2(BINSTR* certificate, int purpose, char* time, char* confFile);
    int CertVerifyByIVS(char* confFile, BINSTR* certificate, BINSTR* ivsCertificate);
    int CertCheckStatByOCSP(BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey,
        char* url, BINSTR* responderCertificate, char* revocationTime, int* reason);
    int CertCheckStatByCRL(BINSTR* certificate, char* revocationTime, int* reason);

    // Signed and enveloped messages
    int CMSMakeSignedData(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* content, char* signingTime,
        BINSTR* signedMessage);
    int CMSMakeSignedDataWithAddSigner(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
        char* signingTime, BINSTR* signedMessage);
    int CMSProcessSignedData(int option, BINSTR* message, BINSTR* content, int* signerCount);
    int CMSGetSignerCert(int index, BINSTR* certificate, char* signingTime);
    int CMSMakekTBSData(
        int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes);
    int CMSComposeSignedData(BINSTR* signature, BINSTR* signedMessage);
    int CMSSetOption(int option);
    int CMSMakeSignedDataFile(
        BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile);
    int CMSMakeSignedDataFileWithContent(
        BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile);
    int CMSProcessSignedDataFile(char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
    int CMSProcessSignedDataFileWithContent(
        char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
    int CMSGetSignerCaPubs(BINSTR* certificates);
    int CMSGetTBTData(int index, BINSTR* data);
    int CMSGetTimeStampToken(int index, BINSTR* token);
    int CMSGetTimeStampToken(BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage);
    int CMSMakeEnvelopedData(
        int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
    int CMSMakeEnvDataWithMultiRec(
        int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
    int CMSProcessEnvelopedData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);
    int CMSMakeEnvelopedDataFile(
        BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);
    int CMSProcessEnvelopedDataFile(
        BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);
    int CMSProcessEnvDataWithContentFile(
        BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);
    int CMSMakeSignedAndEnvData(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient,
        BINSTR* content, int algorithm, BINSTR* envelopedMessage);
    int CMSProcessSignedAndEnvData(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
        BINSTR* content, BINSTR* signerCertificate);
    int CMSMakeEncryptedData(int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage);
    int CMSProcessEncryptedData(BINSTR* key, BINSTR* message, BINSTR* content);

    // Online certificate status
    int OCSPMakeOCSPReq(
        BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey, BINSTR* request);
    int OCSPSendAndRecv(char* url, BINSTR* certificate, BINSTR* request, BINSTR* response);
    int OCSPVerifyResMsg(BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate);
    int OCSPGetCertStatus(int index, int* status, char* revocationTime, int* reason);

    // Private keys
    int PriKeyEncrypt(int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey);
    int PriKeyDecrypt(char* password, BINSTR* encryptedKey, BINSTR* privateKey);
    int PriKeyChangePasswd(char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey);
    int PriKeyCheckKeyPair(BINSTR* certificate, BINSTR* privateKey);

    // Storage media
    int MediaLoad(char* name);
    int MediaUnLoad();
    int MediaDiskReadFile(char* path, BINSTR* data);
    int MediaDiskWriteFile(char* path, BINSTR* data);
    int MediaDiskReadCert(char* path, int kind, BINSTR* certificate);
    int MediaDiskReadPriKey(char* path, char* password, int kind, BINSTR* privateKey);
    int MediaDiskWriteCert(char* path, int kind, BINSTR* certificate);
    int MediaDiskWritePriKey(int algorithm, char* path, int kind, char* password, BINSTR* privateKey);
    int MediaDiskDeleteCert(char* path, int kind);
    int MediaDiskDeletePriKey(char* password, int kind, char* path);
    int MediaCardReadCert(int slot, char* path, BINSTR* certificate);
    int MediaCardReadPriKey(int slot, char* path, char* password, BINSTR* privateKey);
    int MediaCardWriteCert(int slot, char* path, BINSTR* certificate);
    int MediaCardWritePriKey(int slot, int algorithm, char* path, char* password, BINSTR* privateKey);
    int MediaCardDeleteCert(int slot, char* path);
    int MediaCareDeletePriKey(int slot, char* path, char* password);
    int MediaWinsWirteCertKey(int store, char* password, BINSTR* pfx);
    int MediaWinsWirteCert(BINSTR* certificate);
    int MediaWinsCertCnt(char* store, int* count);
    int MediaWinsCertDN(int index, int* kind, char* subject, char* issuer);
    int MediaWinsReadCert(int index, BINSTR* certificate);
    int MediaWinsReadPrikey(int index, BINSTR* privateKey);
    int MediaWinsReadCaPubs(int index, BINSTR* certificates);

    // Identity verification (VID)
    int VIDGetRandomFromPriKey(BINSTR* privateKey, BINSTR* random);
    int VIDVerify(BINSTR* certificate, BINSTR* random, char* identity);
    int VIDVerifyByIVS(char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate);

    // PKCS#12 files
    int PFXExport(int option, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
        BINSTR* kmPrivateKey, BINSTR* pfx);
    int PFXExport2(
        int option, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificates, BINSTR* pfx);
    int PFXImport(char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
        BINSTR* kmPrivateKey, BINSTR* caCertificates);
    int PFXExportMultiPair(int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx);
    int PFXExportMultiPair2(
        int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates, BINSTR* pfx);
    int PFXImportMultiPair(
        BINSTR* pfx, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates);
    int PFXImportMultiPair2(
        int mode, BINSTR* pfx, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates);

    // PKCS#11 tokens
    int PKCS11GetSlotList(unsigned long* slots, unsigned long* count);
    int PKCS11GetTokenInfo(unsigned long slotId, PKCS11_TOKEN_INFO* info);
    int PKCS11InitToken(char* soPin, char* label);
    int PKCS11InitTokenWithSlotID(unsigned long slotId, char* soPin, char* pin, char* label);
    int PKCS11OpenSessionWithSlotID(unsigned long slotId, char* pin, int flags);
    int PKCS11OpenSessionWithTokenName(char* token, int flags);
    int PKCS11Login(char* pin);
    int PKCS11Logout();
    int PKCS11CloseSession();
    int PKCS11ChangePIN(char* oldPin, char* newPin);
    int PKCS11GetCertCnt(int* count);
    int PKCS11GetCertInfo(int index, int* kind, BINSTR* id, BINSTR* certificate);
    int PKCS11ReadCert(BINSTR* id, BINSTR* certificate);
    int PKCS11ReadRandomForVID(BINSTR* id, BINSTR* random);
    int PKCS11WriteCertAndPriKey(BINSTR* certificate, BINSTR* privateKey);
    int PKCS11DeleteCertAndPriKey(BINSTR* id);
    int PKCS11GenKeyPair(int algorithm, int bits, BINSTR* publicKey);
    int PKCS11Sign(BINSTR* id, BINSTR* data, BINSTR* signature);
    int PKCS11Verify(BINSTR* id, BINSTR* data, BINSTR* signature);
    int PKCS11Encrypt(BINSTR* id, BINSTR* data, BINSTR* cipher);
    int PKCS11Decrypt(BINSTR* id, BINSTR* cipher, BINSTR* data);
    int PKCS11SignData(BINSTR* id, BINSTR* data, BINSTR* signedMessage);
    int PKCS11SignDataNoContent(BINSTR* id, BINSTR* data, BINSTR* signedMessage);
    int PKCS11DecryptData(BINSTR* id, BINSTR* message, BINSTR* data);
    int PKCS11SignAndEnvData(BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage);
    int PKCS11VerifyAndDecData(BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate);
    int PKCS11VerifySignatureValue(char* hash, BINSTR* certificate, BINSTR* signature);
    int PKCS11CMPCertRequest(char* address, int port, char* reference, char* secret, char* pin, char* token,
        BINSTR* caCertificate, BINSTR* certificate);
    int PKCS11CMPCertUpdate(
        char* address, int port, bool newKey, char* pin, char* token, BINSTR* certificate, BINSTR* newCertificate);
    int PKCS11CMPCertUpdate2(char* address, int port, bool newKey, int keyBits, char* pin, char* token,
        BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId, BINSTR* kmCertificate,
        BINSTR* kmId);
    int PKCS11CMPCertRevoke(char* address, int port, int reason, BINSTR* certificate, BINSTR* id);

    // Certificate management
    int CMPSetProtocol(int protocol);
    int CMPSetCA(int ca);
    int CMPCertRequest(char* address, int port, char* reference, char* secret, char* subject, char* password,
        BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
        BINSTR* kmPrivateKey);
    int CMPCertRequest2(char* address, int port, char* reference, char* secret, char* subject, char* password,
        BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);
    int CMPCertUpdate(char* address, int port, bool newKey, char* password, char* newPassword, BINSTR* certificate,
        BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey);
    int CMPCertUpdate2(char* address, int port, bool newKey, char* password, char* newPassword, BINSTR* certificate,
        BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey);
    int CMPCertCertRevoke(char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey,
        BINSTR* caCertificate, BINSTR* result);
    int CMPCertCertRevoke2(
        char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result);
    int CMPCertCertRecovery(char* address, int port, char* reference, char* secret, BINSTR* certificate,
        BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);

    // Cryptographic primitives
    int CRYPTSetRSAVersion(int version);
    int CRYPTSetPaddingType(int padding);
    int CRYPTSetEnvChangeIV();
    int CRYPTGenRandom(int length, BINSTR* random);
    int CRYPTGenKeyPair(int bits, BINSTR* publicKey, BINSTR* privateKey);
    int CRYPTGenKeyAndIV(int algorithm);
    int CRYPTSetKeyAndIV(int algorithm, BINSTR* key, BINSTR* iv);
    int CRYPTGetKeyAndIV(int* algorithm, BINSTR* key, BINSTR* iv);
    int CRYPTClearKeyAndIV();
    int CRYPTEncrypt(BINSTR* data, BINSTR* cipher);
    int CRYPTDecrypt(BINSTR* cipher, BINSTR* data);
    int CRYPTEncryptFile(char* inputFile, char* outputFile);
    int CRYPTDecryptFile(char* inputFile, char* outputFile);
    int CRYPTSign(BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature);
    int CRYPTVerify(BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature);
    int CRYPTVerifyFile(BINSTR* certificate, int hash, char* dataFile, char* signatureFile);
    int CRYPTAsymEncrypt(int option, BINSTR* key, BINSTR* data, BINSTR* cipher);
    int CRYPTAsymDecrypt(int option, BINSTR* key, BINSTR* cipher, BINSTR* data);
    int CRYPTHash(int hash, BINSTR* data, BINSTR* digest);
    int CRYPTHashFile(int hash, char* inputFile, BINSTR* digest);
    int CRYPTGenMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac);
    int CRYPTGenMAC2(int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac);
    int CRYPTVerifyMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac);
    int CRYPTGenSharedKey(int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key);

    // Base64 and PEM
    int Base64Encode(BINSTR* data, BINSTR* text);
    int Base64Decode(BINSTR* text, BINSTR* data);
    int PEMEncode(int kind, BINSTR* data, BINSTR* text);
    int PEMDecode(BINSTR* text, BINSTR* data);

    // Directory and URL fetches
    int HVAPGetDataByURL(int kind, char* url, BINSTR* data);
    int HVAPGetCRLByCert(BINSTR* certificate, BINSTR* crl);
    int LDAPGetDataByCN(char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data);
    int LDAPGetAnyDataByURL(char* url, char* attribute, BINSTR* data);
    int LDAPGetCertPath(BINSTR* certificate, char* address, BINSTR* path);

    // Time stamps
    int TSPTimeStampData(char* address, int port, int hash, char* policy, BINSTR* data, bool useNonce,
        BINSTR* certificate, BINSTR* privateKey, BINSTR* token);
    int TSPTimeStampFile(char* address, int port, int hash, char* policy, char* dataFile, bool useNonce,
        BINSTR* certificate, BINSTR* privateKey, BINSTR* token);
    int TSPMakeReqMsg(BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate, BINSTR* privateKey,
        BINSTR* request);
    int TSPSendAndRecv(char* address, int port, BINSTR* request, BINSTR* response);
    int TSPSendAndRecv(BINSTR* response, BINSTR* token, BINSTR* certificate);
    int TSPVerifyToken(BINSTR* token, BINSTR* certificate);
    int TSPVerifyToken2(char* dataFile, BINSTR* data, BINSTR* token, BINSTR* certificate);
    int TSPGetTokenInfo(BINSTR* token, int capacity, char* text1, char* text2, char* text3, char* text4,
        char* text5, char* text6, char* text7, char* text8, BINSTR* certificate);

    // Challenge-response authentication
    int SIGEAMakeChallenge(BINSTR* challenge);
    int SIGEAMakeResponse(BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response);
    int SIGEAVerifyResponse(BINSTR* challenge, BINSTR* response, BINSTR* certificate);

    // Wireless PKI
    int WPKISignData(BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message);
    int WPKIVerifyData(BINSTR* message, BINSTR* data, BINSTR* certificate);
    int WPKIEncryptData(
        BINSTR* certificate, BINSTR* privateKey, int algorithm, BINSTR* recipient, BINSTR* data, BINSTR* message);
    int WPKIDecryptData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);
    int WPKIVerifyCert(BINSTR* certificate);

    // Universal view, verification and decryption
    int UNIViewCert(BINSTR* certificate, char* text);
    int UNIVerifySignData(BINSTR* message, BINSTR* data, BINSTR* certificate);
    int UNIDecryptEnvData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);

    // Object lists, names and trust
    int UTILAddObject(BINSTR* object, BINSTR* list);
    int UTILGetObjectCount(BINSTR* list, int* count);
    int UTILGetObject(BINSTR* list, int index, BINSTR* object);
    int UTILCompareDN(char* name1, char* name2);
    int UTILGetCertPath(BINSTR* certificate, BINSTR* path);
    int UTILGetRootCert(BINSTR* certificate, BINSTR* root);
    int UTILIsTrustCert(BINSTR* certificate, BINSTR* trusted, bool* isTrusted);

private:
    /** Sends a call to the backend of the object's type; see facade/dispatch.h. */
    template <class Maker, class Gpki>
    int pick(sigil::Needs needs, const Maker& maker, const Gpki& gpki);

    int m_nToolkitType = 0;
    char m_szFolder[260] = {};
    std::unique_ptr<CHVTKWrap> m_pHVTKWrap;
    std::unique_ptr<CGPKIWrap> m_pGPKIWrap;
};
