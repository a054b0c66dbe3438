/** @file
 *  The backend of toolkit type 1: the government PKI API library, libgpkiapi_v15.so.
 */
#pragma once

#include "facade/backends/toolkit.h"

/** One method per library function, named after the library's groups: Storage (media), HSM (tokens), Crypt (primitives),
 *  LDAP (fetches), WCMS (wireless messages); the others are named as the exports. A method hands its arguments to the
 *  library in their order and returns the library's result unchanged; before that it answers 1024 while the library is
 *  not loaded, 1001 for a required argument that is null or empty, and 1003 when the library lacks the function. The
 *  symbol that each binds and what it requires stand in facade/backends/gpki_<family>.cpp. */
class CGPKIWrap {
public:
    CGPKIWrap() = default;
    /** The text is ignored; the object is as the default constructor makes it. */
    explicit CGPKIWrap(char* /*ignored*/) { }

    /** Loads "<folder>/libgpkiapi_v15.so". @return 0; 1024 not loaded; 1003 no init function; the library's code */
    int Init(char* folder) { return m_toolkit.Init(folder); }
    /** Has the library release its context, closes it, and returns 0. The destructor only closes. */
    int Finish() { return m_toolkit.Finish(); }
    int GetErrInfo(int length, char* buffer) { return m_toolkit.GetErrInfo(length, buffer); }
    /** The error text kept at the last failure. */
    std::string_view ErrorText() const { return m_toolkit.errorText(); }

    // Settings and byte strings
    int GetVersion(int length, char* buffer);
    int GetInfo(char* buffer);
    int SetOption(int option);
    int SetConfFile(char* confFile);
    int SetCaPubs(BINSTR* caPubs);
    int FreeCaPubs();
    int Str2Time(char* timeText, long* time);
    int SetHashAlgo(int hashAlgorithm);
    int BINSTR_Create(BINSTR* binStr);
    int BINSTR_Delete(BINSTR* binStr);
    int BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr);

    // Certificate inspection and verification
    int CertLoad(BINSTR* certificate);
    int CertUnLoad();
    int CertGetUID(int capacity, char* text);
    int CertGetVersion(int capacity, char* text);
    int CertGetSerialNum(int capacity, char* text);
    int CertGetSignatureAlgorithm(int capacity, char* text);
    int CertGetIssuerName(int capacity, char* text);
    int CertGetValidity(int capacity, char* text);
    int CertGetSubjectName(int capacity, char* text);
    int CertGetPubKeyAlg(int capacity, char* text);
    int CertGetPubKeyLen(int capacity, char* text);
    int CertGetPubKey(int capacity, char* text);
    int CertGetSignature(int capacity, char* text);
    int CertGetKeyUsage(int capacity, char* text);
    int CertGetBasicConstraints(int capacity, char* text);
    int CertGetCertPolicy(int capacity, char* text);
    int CertGetPolicyID(int capacity, char* text);
    int CertGetExtKeyUsage(int capacity, char* text);
    int CertGetSubjectAltName(int capacity, char* text);
    int CertGetAuthKeyID(int capacity, char* text);
    int CertGetSubKeyID(int capacity, char* text);
    int CertGetCRLDP(int capacity, char* text);
    int CertGetAIA(int capacity, char* text);
    int CertGetRemainDays(BINSTR* certificate, int* days);
    int CertAddCert(BINSTR* certificate, BINSTR* list);
    int CertGetCertCount(BINSTR* list, int* count);
    int CertGetCert(BINSTR* list, int index, BINSTR* certificate);
    int CertAddTrustedCert(BINSTR* certificate);
    int CertSetVerifyEnv(int range, int statusCheck, bool useCache, char* cachePath, char* confFile);
    int CertVerify(BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
        BINSTR* intermediates, BINSTR* crl);
    int CertVerifyByIVS(char* confFile, BINSTR* certificate, BINSTR* ivsCertificate);
    int CertCheckStatByOCSP(BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey,
        char* url, BINSTR* responderCertificate, char* revocationTime, int* reason);
    int CertCheckStatByCRL(BINSTR* certificate, char* revocationTime, int* reason);

    // Signed and enveloped messages
    int CMSMakeSignedData(
        BINSTR* certificate, BINSTR* privateKey, BINSTR* content, char* signingTime, BINSTR* signedMessage);
    int CMSMakeSignedDataWithAddSigner(
        BINSTR* certificate, BINSTR* privateKey, BINSTR* message, char* signingTime, BINSTR* signedMessage);
    int CMSProcessSignedData2(BINSTR* message, BINSTR* content, int* signerCount);
    int CMSGetSigner(int index, BINSTR* certificate, char* signingTime);
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
    int CMSSetTimeStampToken(BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage);
    int CMSMakeEnvelopedData(BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
    int CMSMakeEnvDataWithMultiRec(BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
    int CMSProcessEnvelopedData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);
    int CMSMakeEnvelopedDataFile(BINSTR* recipient, char* contentFile, int algorithm, char* messageFile);
    int CMSProcessEnvelopedDataFile(
        BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);
    int CMSProcessEnvDataWithContentFile(
        BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* contentFile);
    int CMSMakeSignedAndEnvData(BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient, BINSTR* content,
        int algorithm, BINSTR* envelopedMessage);
    int CMSProcessSignedAndEnvData(
        BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content, BINSTR* signerCertificate);
    int CMSMakeEncryptedData(BINSTR* content, BINSTR* encryptedMessage);
    int CMSProcessEncryptedData(BINSTR* key, BINSTR* message, BINSTR* content);
    int CMSProcessSignedData(BINSTR* message, BINSTR* content, BINSTR* certificate, char* signingTime);
    int CMSMakeEnvelopedDataNoContentFile(
        BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);

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
    int StorageLoad(char* name);
    int StorageUnLoad();
    int StorageReadFile(char* path, BINSTR* data);
    int StorageWriteFile(char* path, BINSTR* data);
    int StorageReadCert(int medium, char* path, int kind, BINSTR* certificate);
    int StorageReadPriKey(int medium, char* path, char* password, int kind, BINSTR* privateKey);
    int StorageWriteCert(int medium, char* path, int kind, BINSTR* certificate);
    int StorageWritePriKey(int medium, char* path, char* password, int kind, int algorithm, BINSTR* privateKey);
    int StorageDeleteCert(int medium, char* path, int kind);
    int StorageDeletePriKey(int medium, char* path, char* password, int kind);

    // Identity verification (VID)
    int VIDGetRandomFromPriKey(BINSTR* privateKey, BINSTR* random);
    int VIDVerify(BINSTR* certificate, BINSTR* random, char* identity);
    int VIDVerifyByIVS(char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate);

    // PKCS#12 files
    int PFXExport(char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
        BINSTR* kmPrivateKey, BINSTR* pfx);
    int PFXImport(char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
        BINSTR* kmPrivateKey);

    // PKCS#11 tokens
    int HSMGetSlotList(unsigned long* slots, unsigned long* count);
    int HSMGetTokenInfo(unsigned long slotId, PKCS11_TOKEN_INFO* info);
    int HSMOpenSession(unsigned long slotId, int flags);
    int HSMLogin(char* pin);
    int HSMLogout();
    int HSMCloseSession();
    int HSMChangePIN(char* oldPin, char* newPin);
    int HSMGetCertCnt(int* count);
    int HSMGetCertInfo(int index, int* kind, BINSTR* id, BINSTR* certificate);
    int HSMReadCert(BINSTR* id, BINSTR* certificate);
    int HSMReadRandomForVID(BINSTR* id, BINSTR* random);
    int HSMWriteCertAndPriKey(BINSTR* certificate, BINSTR* privateKey);
    int HSMDeleteCertAndPriKey(BINSTR* id);
    int HSMSignData(BINSTR* id, BINSTR* data, BINSTR* signedMessage);

    // Cryptographic primitives
    int CryptGenRandom(int length, BINSTR* random);
    int CryptGenKeyAndIV(int algorithm);
    int CryptSetKeyAndIV(int algorithm, BINSTR* key, BINSTR* iv);
    int CryptGetKeyAndIV(int* algorithm, BINSTR* key, BINSTR* iv);
    int CryptClearKeyAndIV();
    int CryptEncrypt(BINSTR* data, BINSTR* cipher);
    int CryptDecrypt(BINSTR* cipher, BINSTR* data);
    int CryptEncryptFile(char* inputFile, char* outputFile);
    int CryptDecryptFile(char* inputFile, char* outputFile);
    int CryptSign(BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature);
    int CryptVerify(BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature);
    int CryptVerifyFile(BINSTR* certificate, int hash, char* dataFile, char* signatureFile);
    int CryptAsymEncrypt(int option, BINSTR* key, BINSTR* data, BINSTR* cipher);
    int CryptAsymDecrypt(int option, BINSTR* key, BINSTR* cipher, BINSTR* data);
    int CryptHash(int hash, BINSTR* data, BINSTR* digest);
    int CryptGenMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac);
    int CryptVerifyMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac);
    int CryptSignFile(BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile);

    // Base64 and PEM
    int Base64Encode(BINSTR* data, BINSTR* text);
    int Base64Decode(BINSTR* text, BINSTR* data);

    // Directory and URL fetches
    int LDAPGetDataByURL(int kind, char* url, BINSTR* data);
    int LDAPGetCRLByCert(BINSTR* certificate, BINSTR* crl);
    int LDAPGetDataByCN(char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data);
    int LDAPGetAnyDataByURL(char* url, char* attribute, BINSTR* data);
    int LDAPGetCertPath(BINSTR* certificate, char* address, BINSTR* path);

    // Time stamps
    int TSPMakeReqMsg(BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate, BINSTR* privateKey,
        BINSTR* request);
    int TSPSendAndRecv(char* address, int port, BINSTR* request, BINSTR* response);
    int TSPVerifyResMsg(BINSTR* response, BINSTR* token, BINSTR* certificate);
    int TSPVerifyToken(BINSTR* token, BINSTR* certificate);
    int TSPVerifyToken2(BINSTR* data, BINSTR* token, BINSTR* certificate);
    int TSPGetTokenInfo(BINSTR* token, int capacity, char* text1, char* text2, char* text3, char* text4,
        char* text5, char* text6, char* text7, char* text8);

    // Challenge-response authentication
    int SIGEAMakeChallenge(BINSTR* challenge);
    int SIGEAMakeResponse(BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response);
    int SIGEAVerifyResponse(BINSTR* challenge, BINSTR* response, BINSTR* certificate);

    // Wireless message formats (no export reaches them)
    int WCMSMakeSignedContent(BINSTR* certificate, BINSTR* privateKey, BINSTR* content, BINSTR* message);
    int WCMSProcessSignedContent(BINSTR* message, BINSTR* content, BINSTR* certificate);
    int WCMSMakeWapEnvelopedData(BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* message);
    int WCMSProcessWapEnvelopedData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);

private:
    sigil::Toolkit<sigil::gpkiToolkit> m_toolkit;
};
