// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Written by scripts/generate-flat; change the headers that it reads, or the script, not this file.

/** @file
 *  The functions with C++ linkage, as C: the crypto façade, the certificate list, the profile files and the trace.
 *
 *  A host in C includes this header and links libSigilDesk.so.1, as one in C++ does: every declaration names the symbol
 *  that its function has there. What is C in any case comes along: the dialogs, sigil_code_text, the records. A language
 *  that looks functions up by their names while it runs loads libSigilDeskFlat.so.1, which has each of them by the
 *  plain name.
 *
 *  The rules, the arguments and the codes of a function stand in the header that is named above it. The functions keep
 *  their C++ habits: a text that is only read is a `char*` all the same, and `bool` is one byte, 0 or 1.
 *
 *  Plain C99 with the symbol names of GCC and Clang. For C++ it is the headers themselves.
 */
#ifndef SIGILDESK_FLAT_H
#define SIGILDESK_FLAT_H

#ifdef __cplusplus

#include <sigildesk/binstr.h>
#include <sigildesk/certlist.h>
#include <sigildesk/codes.h>
#include <sigildesk/crypto/base64.h>
#include <sigildesk/crypto/cert.h>
#include <sigildesk/crypto/cmp.h>
#include <sigildesk/crypto/cms.h>
#include <sigildesk/crypto/crypt.h>
#include <sigildesk/crypto/frame.h>
#include <sigildesk/crypto/hvap.h>
#include <sigildesk/crypto/media.h>
#include <sigildesk/crypto/ocsp.h>
#include <sigildesk/crypto/pfx.h>
#include <sigildesk/crypto/pkcs11.h>
#include <sigildesk/crypto/prikey.h>
#include <sigildesk/crypto/sigea.h>
#include <sigildesk/crypto/tsp.h>
#include <sigildesk/crypto/uni.h>
#include <sigildesk/crypto/util.h>
#include <sigildesk/crypto/vid.h>
#include <sigildesk/crypto/wpki.h>
#include <sigildesk/dialogs.h>
#include <sigildesk/export.h>
#include <sigildesk/log.h>
#include <sigildesk/profile.h>
#include <sigildesk/records.h>
#include <sigildesk/token_info.h>

#else

#include <stdbool.h>

#include <sigildesk/binstr.h>
#include <sigildesk/codes.h>
#include <sigildesk/dialogs.h>
#include <sigildesk/export.h>
#include <sigildesk/records.h>
#include <sigildesk/token_info.h>

// clang-format off

/* ---- <sigildesk/certlist.h> ---- */

SIGIL_EXPORT int CLP_Initalize(void** phCLP, void* pReserved, int nToolkitType, int nLanguage, char* szHomePath)
    __asm__("_Z13CLP_InitalizePPvS_iiPc");
SIGIL_EXPORT int CLP_UnInitalize(void* hCLP) __asm__("_Z15CLP_UnInitalizePv");
SIGIL_EXPORT int CLP_MemFree(void* hCLP, void** ppBuf) __asm__("_Z11CLP_MemFreePvPS_");
SIGIL_EXPORT int CLP_SetType(void* hCLP, tagLOADCERTOPT* pOption) __asm__("_Z11CLP_SetTypePvP14tagLOADCERTOPT");
SIGIL_EXPORT int CLP_SetMediaType(void* hCLP, int nMedia, char* szPath, int nReserved)
    __asm__("_Z16CLP_SetMediaTypePviPci");
SIGIL_EXPORT int CLP_GetRemDriveCount(void* hCLP, int* pnCount) __asm__("_Z20CLP_GetRemDriveCountPvPi");
SIGIL_EXPORT int CLP_GetRemDrive(void* hCLP, tagDRIVEINFO* pArray) __asm__("_Z15CLP_GetRemDrivePvP12tagDRIVEINFO");
SIGIL_EXPORT int CLP_LoadCertList(void* hCLP) __asm__("_Z16CLP_LoadCertListPv");
SIGIL_EXPORT int CLP_LoadMemoryCert(void* hCLP, char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen,
    char* pKmCert, int nKmCertLen, char* pKmKey, int nKmKeyLen) __asm__("_Z18CLP_LoadMemoryCertPvPciS0_iS0_iS0_i");
SIGIL_EXPORT int CLP_GetCertCount(void* hCLP) __asm__("_Z16CLP_GetCertCountPv");
SIGIL_EXPORT int CLP_GetCertInfo(void* hCLP, int nIndex, tagCERTINFO* pInfo)
    __asm__("_Z15CLP_GetCertInfoPviP11tagCERTINFO");
SIGIL_EXPORT int CLP_DecryptPriKey(void* hCLP, int nIndex, char* szPassword, char** ppSignKey, int* pnSignKeyLen,
    char** ppKmKey, int* pnKmKeyLen) __asm__("_Z17CLP_DecryptPriKeyPviPcPS0_PiS1_S2_");
SIGIL_EXPORT int CLP_GetPriKeyRandom(void* hCLP, int nIndex, char* szPassword, char** ppRandom, int* pnLen)
    __asm__("_Z19CLP_GetPriKeyRandomPviPcPS0_Pi");
SIGIL_EXPORT int CLP_VerifyVID(void* hCLP, int nIndex, char* szIdn, void* pReserved, char* szPassword)
    __asm__("_Z13CLP_VerifyVIDPviPcS_S0_");
SIGIL_EXPORT int CLP_ImportPFX(void* hCLP, char* szPfxPath, char* szPassword, char** ppSignCert,
    int* pnSignCertLen, char** ppSignKey, int* pnSignKeyLen, char** ppKmCert, int* pnKmCertLen, char** ppKmKey,
    int* pnKmKeyLen) __asm__("_Z13CLP_ImportPFXPvPcS0_PS0_PiS1_S2_S1_S2_S1_S2_");
SIGIL_EXPORT int CLP_ExportPFX(void* hCLP, int nIndex, char* szPassword, char* szPfxPath)
    __asm__("_Z13CLP_ExportPFXPviPcS0_");
SIGIL_EXPORT int CLP_CopySelCertToDISK(void* hCLP, int nSrcMedia, int nIndex, int nTargetMedia, char* szTargetPath,
    char* szPassword) __asm__("_Z21CLP_CopySelCertToDISKPviiiPcS0_");
SIGIL_EXPORT int CLP_CopyforSetData(void* hCLP, char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen,
    char* pKmCert, int nKmCertLen, char* pKmKey, int nKmKeyLen) __asm__("_Z18CLP_CopyforSetDataPvPciS0_iS0_iS0_i");
SIGIL_EXPORT int CLP_CopyCertToDISK(void* hCLP, int nTargetMedia, char* szTargetPath, char* szPassword)
    __asm__("_Z18CLP_CopyCertToDISKPviPcS0_");
SIGIL_EXPORT int CLP_DeleteCert(void* hCLP, int nIndex, char* szPin, char* szPassword)
    __asm__("_Z14CLP_DeleteCertPviPcS0_");
SIGIL_EXPORT int CLP_VerifyCert(void* hCLP, char* pCert, int nCertLen, int nErrSize, char* szErr)
    __asm__("_Z14CLP_VerifyCertPvPciiS0_");
SIGIL_EXPORT int CLP_USIMType(void* hCLP, tagSMCERTOPT* pOption) __asm__("_Z12CLP_USIMTypePvP12tagSMCERTOPT");
SIGIL_EXPORT int CLP_CopyCertToPKCS11(void* hCLP, char* szPin, char* szTarget, char* szPassword)
    __asm__("_Z20CLP_CopyCertToPKCS11PvPcS0_S0_");
SIGIL_EXPORT int CLP_CopyCertToSMCARD(void* hCLP, int nTargetMedia, char* szPin, char* szTarget, char* szPassword)
    __asm__("_Z20CLP_CopyCertToSMCARDPviPcS0_S0_");
SIGIL_EXPORT int CLP_ChangePassword(void* hCLP, int nIndex, char* szOldPassword, char* szNewPassword)
    __asm__("_Z18CLP_ChangePasswordPviPcS0_");
SIGIL_EXPORT int CLP_MediaConnect(void* hCLP, char* szMedia, char* szPin) __asm__("_Z16CLP_MediaConnectPvPcS0_");
SIGIL_EXPORT int CLP_MediaDisConnect(void* hCLP) __asm__("_Z19CLP_MediaDisConnectPv");
SIGIL_EXPORT int CLP_PKCS11SetArgs(void* hCLP, void* pArgs) __asm__("_Z17CLP_PKCS11SetArgsPvS_");
SIGIL_EXPORT int CLP_SetCardPINumber(void* hCLP, char* szCard, char* szPin)
    __asm__("_Z19CLP_SetCardPINumberPvPcS0_");
SIGIL_EXPORT int CLP_Phone_UbiKey(void* hCLP, char* szUrl, void* pOption, char* szPin, char* szPassword,
    char** ppSignCert, int* pnSignCertLen, char** ppSignKey, int* pnSignKeyLen)
    __asm__("_Z16CLP_Phone_UbiKeyPvPcS_S0_S0_PS0_PiS1_S2_");
SIGIL_EXPORT int CLP_SetNCheckRootCert(void* hCLP, tagROOTCERTINFO* pRoot, bool* pbInstalled)
    __asm__("_Z21CLP_SetNCheckRootCertPvP15tagROOTCERTINFOPb");
SIGIL_EXPORT int CLP_GetRootCertInfo(void* hCLP, char** ppCert, int* pnCertLen, char** ppHash, int* pnHashLen,
    int nSubjectSize, char* szSubject, int nIssuerSize, char* szIssuer, int nFromSize, char* szFrom, int nToSize,
    char* szTo) __asm__("_Z19CLP_GetRootCertInfoPvPPcPiS1_S2_iS0_iS0_iS0_iS0_");
SIGIL_EXPORT int CLP_InstallRootCert(void* hCLP, char* pCert, int nCertLen, char* pHash, int nHashLen)
    __asm__("_Z19CLP_InstallRootCertPvPciS0_i");
SIGIL_EXPORT int CLP_PKCS11Login(void* hCLP, char* szPin) __asm__("_Z15CLP_PKCS11LoginPvPc");
SIGIL_EXPORT int CLP_GetPKCS11DeviceInfo(void* hCLP, bool bSlots, bool bTokens, bool bPresent, int* pnCount)
    __asm__("_Z23CLP_GetPKCS11DeviceInfoPvbbbPi");
SIGIL_EXPORT int CLP_GetPKCS11DeviceList(void* hCLP, tagPKCS11DEVICELIST* pList)
    __asm__("_Z23CLP_GetPKCS11DeviceListPvP19tagPKCS11DEVICELIST");
SIGIL_EXPORT int CLP_VerifyPKCS11Signature(void* hCLP, char* szCert, char* szData, char* szSignature)
    __asm__("_Z25CLP_VerifyPKCS11SignaturePvPcS0_S0_");
SIGIL_EXPORT int CLP_PKCS11TokenInfo(void* hCLP, char* szToken, int nLabelSize, char* szLabel, int nMakerSize,
    char* szMaker, int nSerialSize, char* szSerial) __asm__("_Z19CLP_PKCS11TokenInfoPvPciS0_iS0_iS0_");

/* ---- <sigildesk/log.h> ---- */

SIGIL_EXPORT void LOG_LEVEL(const char* level, const char* file, long line, const char* func, const char* fmt, ...)
    __asm__("_Z9LOG_LEVELPKcS0_lS0_S0_z") __attribute__((format(printf, 5, 6)));

/* ---- <sigildesk/profile.h> ---- */

SIGIL_EXPORT int FileGetPrivateProfileString(char* section, char* key, char* defaultValue, char* out, int outSize,
    char* path) __asm__("_Z27FileGetPrivateProfileStringPcS_S_S_iS_");
SIGIL_EXPORT int FileGetPrivateProfileInt(char* section, char* key, int defaultValue, char* path)
    __asm__("_Z24FileGetPrivateProfileIntPcS_iS_");
SIGIL_EXPORT int StrTrimString(char* text) __asm__("_Z13StrTrimStringPc");

/* ---- <sigildesk/crypto/base64.h> ---- */

SIGIL_EXPORT int Base64Encode(void* handle, BINSTR* data, BINSTR* text) __asm__("_Z12Base64EncodePvP6BINSTRS1_");
SIGIL_EXPORT int Base64Decode(void* handle, BINSTR* text, BINSTR* data) __asm__("_Z12Base64DecodePvP6BINSTRS1_");
SIGIL_EXPORT int PEMEncode(void* handle, int kind, BINSTR* data, BINSTR* text)
    __asm__("_Z9PEMEncodePviP6BINSTRS1_");
SIGIL_EXPORT int PEMDecode(void* handle, BINSTR* text, BINSTR* data) __asm__("_Z9PEMDecodePvP6BINSTRS1_");

/* ---- <sigildesk/crypto/cert.h> ---- */

SIGIL_EXPORT int CertLoad(void* handle, BINSTR* certificate) __asm__("_Z8CertLoadPvP6BINSTR");
SIGIL_EXPORT int CertUnLoad(void* handle) __asm__("_Z10CertUnLoadPv");
SIGIL_EXPORT int CertGetUID(void* handle, int capacity, char* text) __asm__("_Z10CertGetUIDPviPc");
SIGIL_EXPORT int CertGetVersion(void* handle, int capacity, char* text) __asm__("_Z14CertGetVersionPviPc");
SIGIL_EXPORT int CertGetSerialNum(void* handle, int capacity, char* text) __asm__("_Z16CertGetSerialNumPviPc");
SIGIL_EXPORT int CertGetSignatureAlgorithm(void* handle, int capacity, char* text)
    __asm__("_Z25CertGetSignatureAlgorithmPviPc");
SIGIL_EXPORT int CertGetIssuerName(void* handle, int capacity, char* text) __asm__("_Z17CertGetIssuerNamePviPc");
SIGIL_EXPORT int CertGetValidity(void* handle, int notBeforeCapacity, char* notBefore, int notAfterCapacity,
    char* notAfter) __asm__("_Z15CertGetValidityPviPciS0_");
SIGIL_EXPORT int CertGetSubjectName(void* handle, int capacity, char* text) __asm__("_Z18CertGetSubjectNamePviPc");
SIGIL_EXPORT int CertGetPubKeyInfo(void* handle, char* algorithm, char* keyLength, int publicKeyCapacity,
    char* publicKey, BINSTR* publicKeyDer) __asm__("_Z17CertGetPubKeyInfoPvPcS0_iS0_P6BINSTR");
SIGIL_EXPORT int CertGetSignature(void* handle, int capacity, char* text) __asm__("_Z16CertGetSignaturePviPc");
SIGIL_EXPORT int CertGetKeyUsage(void* handle, int capacity, char* text) __asm__("_Z15CertGetKeyUsagePviPc");
SIGIL_EXPORT int CertGetBasicConstraints(void* handle, int capacity, char* text)
    __asm__("_Z23CertGetBasicConstraintsPviPc");
SIGIL_EXPORT int CertGetCertPolicy(void* handle, int capacity, char* text) __asm__("_Z17CertGetCertPolicyPviPc");
SIGIL_EXPORT int CertGetPolicyID(void* handle, int capacity, char* text) __asm__("_Z15CertGetPolicyIDPviPc");
SIGIL_EXPORT int CertGetExtKeyUsage(void* handle, int capacity, char* text) __asm__("_Z18CertGetExtKeyUsagePviPc");
SIGIL_EXPORT int CertGetSubjectAltName(void* handle, int capacity, char* text)
    __asm__("_Z21CertGetSubjectAltNamePviPc");
SIGIL_EXPORT int CertGetIssuerAltName(void* handle, int capacity, char* text)
    __asm__("_Z20CertGetIssuerAltNamePviPc");
SIGIL_EXPORT int CertGetAuthKeyID(void* handle, int capacity, char* text) __asm__("_Z16CertGetAuthKeyIDPviPc");
SIGIL_EXPORT int CertGetSubKeyID(void* handle, int capacity, char* text) __asm__("_Z15CertGetSubKeyIDPviPc");
SIGIL_EXPORT int CertGetCRLDP(void* handle, int capacity, char* text) __asm__("_Z12CertGetCRLDPPviPc");
SIGIL_EXPORT int CertGetCRLDPURL(void* handle, int capacity, char* text) __asm__("_Z15CertGetCRLDPURLPviPc");
SIGIL_EXPORT int CertGetAIA(void* handle, int capacity, char* text) __asm__("_Z10CertGetAIAPviPc");
SIGIL_EXPORT int CertGetRemainDays(void* handle, BINSTR* certificate, int* days)
    __asm__("_Z17CertGetRemainDaysPvP6BINSTRPi");
SIGIL_EXPORT int CertAddCert(void* handle, BINSTR* certificate, BINSTR* list)
    __asm__("_Z11CertAddCertPvP6BINSTRS1_");
SIGIL_EXPORT int CertGetCertCount(void* handle, BINSTR* list, int* count)
    __asm__("_Z16CertGetCertCountPvP6BINSTRPi");
SIGIL_EXPORT int CertGetCert(void* handle, BINSTR* list, int index, BINSTR* certificate)
    __asm__("_Z11CertGetCertPvP6BINSTRiS1_");
SIGIL_EXPORT int CertAddTrustedCert(void* handle, BINSTR* certificate) __asm__("_Z18CertAddTrustedCertPvP6BINSTR");
SIGIL_EXPORT int CertSetVerifyEnv(void* handle, int range, int statusCheck, bool useCache, char* cachePath,
    char* confFile) __asm__("_Z16CertSetVerifyEnvPviibPcS0_");
SIGIL_EXPORT int CertSetVerifyEnv2(void* handle, char* confFile, BINSTR* trustedCertificates,
    BINSTR* intermediates) __asm__("_Z17CertSetVerifyEnv2PvPcP6BINSTRS2_");
SIGIL_EXPORT int CertVerify(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile,
    bool checkStatus, BINSTR* intermediates, BINSTR* crl) __asm__("_Z10CertVerifyPvP6BINSTRiPcS2_bS1_S1_");
SIGIL_EXPORT int CertVerify2(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile)
    __asm__("_Z11CertVerify2PvP6BINSTRiPcS2_");
SIGIL_EXPORT int CertVerifyByIVS(void* handle, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate)
    __asm__("_Z15CertVerifyByIVSPvPcP6BINSTRS2_");
SIGIL_EXPORT int CertCheckStatByOCSP(void* handle, BINSTR* certificate, bool signRequest,
    BINSTR* signerCertificate, BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime,
    int* reason) __asm__("_Z19CertCheckStatByOCSPPvP6BINSTRbS1_S1_PcS1_S2_Pi");
SIGIL_EXPORT int CertCheckStatByCRL(void* handle, BINSTR* certificate, char* revocationTime, int* reason)
    __asm__("_Z18CertCheckStatByCRLPvP6BINSTRPcPi");

/* ---- <sigildesk/crypto/cmp.h> ---- */

SIGIL_EXPORT int CMPSetProtocol(void* handle, int protocol) __asm__("_Z14CMPSetProtocolPvi");
SIGIL_EXPORT int CMPSetCA(void* handle, int ca) __asm__("_Z8CMPSetCAPvi");
SIGIL_EXPORT int CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret,
    char* subject, char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey) __asm__("_Z14CMPCertRequestPvPciS0_S0_S0_S0_P6BINSTRS2_S2_S2_S2_");
SIGIL_EXPORT int CMPCertRequest2(void* handle, char* address, int port, char* reference, char* secret,
    char* subject, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey) __asm__("_Z15CMPCertRequest2PvPciS0_S0_S0_S0_P6BINSTRS2_S2_S2_");
SIGIL_EXPORT int CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate,
    BINSTR* newPrivateKey) __asm__("_Z13CMPCertUpdatePvPcibS0_S0_P6BINSTRS2_S2_S2_S2_");
SIGIL_EXPORT int CMPCertUpdate2(void* handle, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey)
    __asm__("_Z14CMPCertUpdate2PvPcibS0_S0_P6BINSTRS2_S2_S2_");
SIGIL_EXPORT int CMPCertCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* caCertificate, BINSTR* result)
    __asm__("_Z17CMPCertCertRevokePvPciiP6BINSTRS2_S2_S2_");
SIGIL_EXPORT int CMPCertCertRevoke2(void* handle, char* address, int port, int reason, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* result) __asm__("_Z18CMPCertCertRevoke2PvPciiP6BINSTRS2_S2_");
SIGIL_EXPORT int CMPCertCertRecovery(void* handle, char* address, int port, char* reference, char* secret,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
    __asm__("_Z19CMPCertCertRecoveryPvPciS0_S0_P6BINSTRS2_S2_S2_");

/* ---- <sigildesk/crypto/cms.h> ---- */

SIGIL_EXPORT int CMSMakeSignedData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* content, char* signingTime, BINSTR* signedMessage)
    __asm__("_Z17CMSMakeSignedDataPviP6BINSTRS1_S1_PcS1_");
SIGIL_EXPORT int CMSMakeSignedDataWithAddSigner(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, char* signingTime, BINSTR* signedMessage)
    __asm__("_Z30CMSMakeSignedDataWithAddSignerPviP6BINSTRS1_S1_PcS1_");
SIGIL_EXPORT int CMSProcessSignedData(void* handle, int option, BINSTR* message, BINSTR* content, int* signerCount)
    __asm__("_Z20CMSProcessSignedDataPviP6BINSTRS1_Pi");
SIGIL_EXPORT int CMSGetSignerCert(void* handle, int index, BINSTR* certificate, char* signingTime)
    __asm__("_Z16CMSGetSignerCertPviP6BINSTRPc");
SIGIL_EXPORT int CMSMakekTBSData(void* handle, int option, BINSTR* certificate, BINSTR* content, char* signingTime,
    BINSTR* signedAttributes) __asm__("_Z15CMSMakekTBSDataPviP6BINSTRS1_PcS1_");
SIGIL_EXPORT int CMSComposeSignedData(void* handle, BINSTR* signature, BINSTR* signedMessage)
    __asm__("_Z20CMSComposeSignedDataPvP6BINSTRS1_");
SIGIL_EXPORT int CMSSetOption(void* handle, int option) __asm__("_Z12CMSSetOptionPvi");
SIGIL_EXPORT int CMSMakeSignedDataFile(void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile,
    char* signingTime, char* messageFile) __asm__("_Z21CMSMakeSignedDataFilePvP6BINSTRS1_PcS2_S2_");
SIGIL_EXPORT int CMSMakeSignedDataFileWithContent(void* handle, BINSTR* certificate, BINSTR* privateKey,
    char* contentFile, char* signingTime, char* messageFile)
    __asm__("_Z32CMSMakeSignedDataFileWithContentPvP6BINSTRS1_PcS2_S2_");
SIGIL_EXPORT int CMSProcessSignedDataFile(void* handle, char* contentFile, char* messageFile, BINSTR* certificate,
    char* signingTime) __asm__("_Z24CMSProcessSignedDataFilePvPcS0_P6BINSTRS0_");
SIGIL_EXPORT int CMSProcessSignedDataFileWithContent(void* handle, char* contentFile, char* messageFile,
    BINSTR* certificate, char* signingTime) __asm__("_Z35CMSProcessSignedDataFileWithContentPvPcS0_P6BINSTRS0_");
SIGIL_EXPORT int CMSGetSignerCaPubs(void* handle, BINSTR* certificates) __asm__("_Z18CMSGetSignerCaPubsPvP6BINSTR");
SIGIL_EXPORT int CMSGetTBTData(void* handle, int index, BINSTR* data) __asm__("_Z13CMSGetTBTDataPviP6BINSTR");
SIGIL_EXPORT int CMSGetTimeStampToken1(void* handle, int index, BINSTR* token)
    __asm__("_Z21CMSGetTimeStampToken1PviP6BINSTR");
SIGIL_EXPORT int CMSGetTimeStampToken2(void* handle, BINSTR* message, int index, BINSTR* token,
    BINSTR* stampedMessage) __asm__("_Z21CMSGetTimeStampToken2PvP6BINSTRiS1_S1_");
SIGIL_EXPORT int CMSMakeEnvelopedData(void* handle, int option, BINSTR* recipient, BINSTR* content, int algorithm,
    BINSTR* envelopedMessage) __asm__("_Z20CMSMakeEnvelopedDataPviP6BINSTRS1_iS1_");
SIGIL_EXPORT int CMSMakeEnvDataWithMultiRec(void* handle, int option, BINSTR* recipients, BINSTR* content,
    int algorithm, BINSTR* envelopedMessage) __asm__("_Z26CMSMakeEnvDataWithMultiRecPviP6BINSTRS1_iS1_");
SIGIL_EXPORT int CMSProcessEnvelopedData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* content) __asm__("_Z23CMSProcessEnvelopedDataPvP6BINSTRS1_S1_S1_");
SIGIL_EXPORT int CMSMakeEnvelopedDataFile(void* handle, BINSTR* recipient, char* contentFile, int algorithm,
    char* messageFile, char* cipherFile) __asm__("_Z24CMSMakeEnvelopedDataFilePvP6BINSTRPciS2_S2_");
SIGIL_EXPORT int CMSProcessEnvelopedDataFile(void* handle, BINSTR* certificate, BINSTR* privateKey,
    char* messageFile, char* cipherFile, char* contentFile)
    __asm__("_Z27CMSProcessEnvelopedDataFilePvP6BINSTRS1_PcS2_S2_");
SIGIL_EXPORT int CMSProcessEnvDataFileWithContent(void* handle, BINSTR* certificate, BINSTR* privateKey,
    char* messageFile, char* cipherFile, char* contentFile)
    __asm__("_Z32CMSProcessEnvDataFileWithContentPvP6BINSTRS1_PcS2_S2_");
SIGIL_EXPORT int CMSMakeSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
    __asm__("_Z23CMSMakeSignedAndEnvDataPviP6BINSTRS1_S1_S1_iS1_");
SIGIL_EXPORT int CMSProcessSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, BINSTR* content, BINSTR* signerCertificate)
    __asm__("_Z26CMSProcessSignedAndEnvDataPviP6BINSTRS1_S1_S1_S1_");
SIGIL_EXPORT int CMSMakeEncryptedData(void* handle, int option, BINSTR* key, BINSTR* content, int algorithm,
    BINSTR* encryptedMessage) __asm__("_Z20CMSMakeEncryptedDataPviP6BINSTRS1_iS1_");
SIGIL_EXPORT int CMSProcessEncryptedData(void* handle, BINSTR* key, BINSTR* message, BINSTR* content)
    __asm__("_Z23CMSProcessEncryptedDataPvP6BINSTRS1_S1_");

/* ---- <sigildesk/crypto/crypt.h> ---- */

SIGIL_EXPORT int CRYPTSetRSAVersion(void* handle, int version) __asm__("_Z18CRYPTSetRSAVersionPvi");
SIGIL_EXPORT int CRYPTSetPaddingType(void* handle, int padding) __asm__("_Z19CRYPTSetPaddingTypePvi");
SIGIL_EXPORT int CRYPTSetEnvChangeIV(void* handle) __asm__("_Z19CRYPTSetEnvChangeIVPv");
SIGIL_EXPORT int CRYPTGenRandom(void* handle, int length, BINSTR* random) __asm__("_Z14CRYPTGenRandomPviP6BINSTR");
SIGIL_EXPORT int CRYPTGenKeyPair(void* handle, int bits, BINSTR* publicKey, BINSTR* privateKey)
    __asm__("_Z15CRYPTGenKeyPairPviP6BINSTRS1_");
SIGIL_EXPORT int CRYPTGenKeyAndIV(void* handle, int algorithm) __asm__("_Z16CRYPTGenKeyAndIVPvi");
SIGIL_EXPORT int CRYPTSetKeyAndIV(void* handle, int algorithm, BINSTR* key, BINSTR* iv)
    __asm__("_Z16CRYPTSetKeyAndIVPviP6BINSTRS1_");
SIGIL_EXPORT int CRYPTGetKeyAndIV(void* handle, int* algorithm, BINSTR* key, BINSTR* iv)
    __asm__("_Z16CRYPTGetKeyAndIVPvPiP6BINSTRS2_");
SIGIL_EXPORT int CRYPTClearKeyAndIV(void* handle) __asm__("_Z18CRYPTClearKeyAndIVPv");
SIGIL_EXPORT int CRYPTEncrypt(void* handle, BINSTR* data, BINSTR* cipher) __asm__("_Z12CRYPTEncryptPvP6BINSTRS1_");
SIGIL_EXPORT int CRYPTDecrypt(void* handle, BINSTR* cipher, BINSTR* data) __asm__("_Z12CRYPTDecryptPvP6BINSTRS1_");
SIGIL_EXPORT int CRYPTEncryptFile(void* handle, char* inputFile, char* outputFile)
    __asm__("_Z16CRYPTEncryptFilePvPcS0_");
SIGIL_EXPORT int CRYPTDecryptFile(void* handle, char* inputFile, char* outputFile)
    __asm__("_Z16CRYPTDecryptFilePvPcS0_");
SIGIL_EXPORT int CRYPTSign(void* handle, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data,
    BINSTR* signature) __asm__("_Z9CRYPTSignPvP6BINSTRS1_iS1_S1_");
SIGIL_EXPORT int CRYPTVerify(void* handle, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
    __asm__("_Z11CRYPTVerifyPvP6BINSTRiS1_S1_");
SIGIL_EXPORT int CRYPTVerifyFile(void* handle, BINSTR* certificate, int hash, char* dataFile, char* signatureFile)
    __asm__("_Z15CRYPTVerifyFilePvP6BINSTRiPcS2_");
SIGIL_EXPORT int CRYPTAsymEncrypt(void* handle, int option, BINSTR* key, BINSTR* data, BINSTR* cipher)
    __asm__("_Z16CRYPTAsymEncryptPviP6BINSTRS1_S1_");
SIGIL_EXPORT int CRYPTAsymDecrypt(void* handle, int option, BINSTR* key, BINSTR* cipher, BINSTR* data)
    __asm__("_Z16CRYPTAsymDecryptPviP6BINSTRS1_S1_");
SIGIL_EXPORT int CRYPTHash(void* handle, int hash, BINSTR* data, BINSTR* digest)
    __asm__("_Z9CRYPTHashPviP6BINSTRS1_");
SIGIL_EXPORT int CRYPTHashFile(void* handle, int hash, char* inputFile, BINSTR* digest)
    __asm__("_Z13CRYPTHashFilePviPcP6BINSTR");
SIGIL_EXPORT int CRYPTGenMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac)
    __asm__("_Z11CRYPTGenMACPviPcP6BINSTRS2_");
SIGIL_EXPORT int CRYPTGenMAC2(void* handle, int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac)
    __asm__("_Z12CRYPTGenMAC2PviP6BINSTRS1_S1_");
SIGIL_EXPORT int CRYPTVerifyMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac)
    __asm__("_Z14CRYPTVerifyMACPviPcP6BINSTRS2_");
SIGIL_EXPORT int CRYPTGenSharedKey(void* handle, int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key)
    __asm__("_Z17CRYPTGenSharedKeyPviP6BINSTRS1_S1_");

/* ---- <sigildesk/crypto/frame.h> ---- */

SIGIL_EXPORT int HV_Initalize(void** handle, int toolkitType, char* libraryFolder)
    __asm__("_Z12HV_InitalizePPviPc");
SIGIL_EXPORT void HV_Finish(void* handle) __asm__("_Z9HV_FinishPv");
SIGIL_EXPORT int HV_GetErrInfo(void* handle, int bufferLength, char* buffer) __asm__("_Z13HV_GetErrInfoPviPc");
SIGIL_EXPORT int HV_GetErrInfo2(void* handle, int bufferLength, char* buffer) __asm__("_Z14HV_GetErrInfo2PviPc");
SIGIL_EXPORT int HV_GetVersion(void* handle, int bufferLength, char* buffer) __asm__("_Z13HV_GetVersionPviPc");
SIGIL_EXPORT int HV_SetOption(void* handle, int option) __asm__("_Z12HV_SetOptionPvi");
SIGIL_EXPORT int HV_SetConfFile(void* handle, char* confFile) __asm__("_Z14HV_SetConfFilePvPc");
SIGIL_EXPORT int HV_SetCaPubs(void* handle, BINSTR* caPubs) __asm__("_Z12HV_SetCaPubsPvP6BINSTR");
SIGIL_EXPORT int HV_FreeCaPubs(void* handle) __asm__("_Z13HV_FreeCaPubsPv");
SIGIL_EXPORT int HV_Str2Time(void* handle, char* timeText, long* time) __asm__("_Z11HV_Str2TimePvPcPl");
SIGIL_EXPORT int HV_SetHashAlg(void* handle, int hashAlgorithm) __asm__("_Z13HV_SetHashAlgPvi");
SIGIL_EXPORT int HV_BINSTR_Create(void* handle, BINSTR* binStr) __asm__("_Z16HV_BINSTR_CreatePvP6BINSTR");
SIGIL_EXPORT int HV_BINSTR_Delete(void* handle, BINSTR* binStr) __asm__("_Z16HV_BINSTR_DeletePvP6BINSTR");
SIGIL_EXPORT int HV_BINSTR_SetData(void* handle, unsigned char* data, int length, BINSTR* binStr)
    __asm__("_Z17HV_BINSTR_SetDataPvPhiP6BINSTR");

/* ---- <sigildesk/crypto/hvap.h> ---- */

SIGIL_EXPORT int HVAPGetDataByURL(void* handle, int kind, char* url, BINSTR* data)
    __asm__("_Z16HVAPGetDataByURLPviPcP6BINSTR");
SIGIL_EXPORT int HVAPGetCRLByCert(void* handle, BINSTR* certificate, BINSTR* crl)
    __asm__("_Z16HVAPGetCRLByCertPvP6BINSTRS1_");
SIGIL_EXPORT int LDAPGetDataByCN(void* handle, char* address, int port, char* commonName, int kind, char* baseName,
    BINSTR* data) __asm__("_Z15LDAPGetDataByCNPvPciS0_iS0_P6BINSTR");
SIGIL_EXPORT int LDAPGetAnyDataByURL(void* handle, char* url, char* attribute, BINSTR* data)
    __asm__("_Z19LDAPGetAnyDataByURLPvPcS0_P6BINSTR");
SIGIL_EXPORT int LDAPGetCertPath(void* handle, BINSTR* certificate, char* address, BINSTR* path)
    __asm__("_Z15LDAPGetCertPathPvP6BINSTRPcS1_");

/* ---- <sigildesk/crypto/media.h> ---- */

SIGIL_EXPORT int MediaLoad(void* handle, char* name) __asm__("_Z9MediaLoadPvPc");
SIGIL_EXPORT int MediaUnLoad(void* handle) __asm__("_Z11MediaUnLoadPv");
SIGIL_EXPORT int MediaDiskReadFile(void* handle, char* path, BINSTR* data)
    __asm__("_Z17MediaDiskReadFilePvPcP6BINSTR");
SIGIL_EXPORT int MediaDiskWriteFile(void* handle, char* path, BINSTR* data)
    __asm__("_Z18MediaDiskWriteFilePvPcP6BINSTR");
SIGIL_EXPORT int MediaDiskReadCert(void* handle, char* path, int kind, BINSTR* certificate)
    __asm__("_Z17MediaDiskReadCertPvPciP6BINSTR");
SIGIL_EXPORT int MediaDiskReadPriKey(void* handle, char* path, char* password, int kind, BINSTR* privateKey)
    __asm__("_Z19MediaDiskReadPriKeyPvPcS0_iP6BINSTR");
SIGIL_EXPORT int MediaDiskWriteCert(void* handle, char* path, int kind, BINSTR* certificate)
    __asm__("_Z18MediaDiskWriteCertPvPciP6BINSTR");
SIGIL_EXPORT int MediaDiskWritePriKey(void* handle, int algorithm, char* path, int kind, char* password,
    BINSTR* privateKey) __asm__("_Z20MediaDiskWritePriKeyPviPciS0_P6BINSTR");
SIGIL_EXPORT int MediaDiskDeleteCert(void* handle, char* path, int kind) __asm__("_Z19MediaDiskDeleteCertPvPci");
SIGIL_EXPORT int MediaDiskDeletePriKey(void* handle, char* password, int kind, char* path)
    __asm__("_Z21MediaDiskDeletePriKeyPvPciS0_");
SIGIL_EXPORT int MediaCardReadCert(void* handle, int slot, char* path, BINSTR* certificate)
    __asm__("_Z17MediaCardReadCertPviPcP6BINSTR");
SIGIL_EXPORT int MediaCardReadPriKey(void* handle, int slot, char* path, char* password, BINSTR* privateKey)
    __asm__("_Z19MediaCardReadPriKeyPviPcS0_P6BINSTR");
SIGIL_EXPORT int MediaCardWriteCert(void* handle, int slot, char* path, BINSTR* certificate)
    __asm__("_Z18MediaCardWriteCertPviPcP6BINSTR");
SIGIL_EXPORT int MediaCardWritePriKey(void* handle, int slot, int algorithm, char* path, char* password,
    BINSTR* privateKey) __asm__("_Z20MediaCardWritePriKeyPviiPcS0_P6BINSTR");
SIGIL_EXPORT int MediaCardDeleteCert(void* handle, int slot, char* path) __asm__("_Z19MediaCardDeleteCertPviPc");
SIGIL_EXPORT int MediaCareDeletePriKey(void* handle, int slot, char* path, char* password)
    __asm__("_Z21MediaCareDeletePriKeyPviPcS0_");
SIGIL_EXPORT int MediaWinsWirteCertKey(void* handle, int store, char* password, BINSTR* pfx)
    __asm__("_Z21MediaWinsWirteCertKeyPviPcP6BINSTR");
SIGIL_EXPORT int MediaWinsWirteCert(void* handle, BINSTR* certificate) __asm__("_Z18MediaWinsWirteCertPvP6BINSTR");
SIGIL_EXPORT int MediaWinsCertCnt(void* handle, char* store, int* count) __asm__("_Z16MediaWinsCertCntPvPcPi");
SIGIL_EXPORT int MediaWinsCertDN(void* handle, int index, int* kind, char* subject, char* issuer)
    __asm__("_Z15MediaWinsCertDNPviPiPcS1_");
SIGIL_EXPORT int MediaWinsReadCert(void* handle, int index, BINSTR* certificate)
    __asm__("_Z17MediaWinsReadCertPviP6BINSTR");
SIGIL_EXPORT int MediaWinsReadPrikey(void* handle, int index, BINSTR* privateKey)
    __asm__("_Z19MediaWinsReadPrikeyPviP6BINSTR");
SIGIL_EXPORT int MediaWinsReadCaPubs(void* handle, int index, BINSTR* certificates)
    __asm__("_Z19MediaWinsReadCaPubsPviP6BINSTR");

/* ---- <sigildesk/crypto/ocsp.h> ---- */

SIGIL_EXPORT int OCSPMakeOCSPReq(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request) __asm__("_Z15OCSPMakeOCSPReqPvP6BINSTRbS1_S1_S1_");
SIGIL_EXPORT int OCSPSendAndRecv(void* handle, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
    __asm__("_Z15OCSPSendAndRecvPvPcP6BINSTRS2_S2_");
SIGIL_EXPORT int OCSPVerifyResMsg(void* handle, BINSTR* certificate, BINSTR* response, int* status,
    BINSTR* responderCertificate) __asm__("_Z16OCSPVerifyResMsgPvP6BINSTRS1_PiS1_");
SIGIL_EXPORT int OCSPGetCertStatus(void* handle, int index, int* status, char* revocationTime, int* reason)
    __asm__("_Z17OCSPGetCertStatusPviPiPcS0_");

/* ---- <sigildesk/crypto/pfx.h> ---- */

SIGIL_EXPORT int PFXExport(void* handle, int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* pfx) __asm__("_Z9PFXExportPviPcP6BINSTRS2_S2_S2_S2_");
SIGIL_EXPORT int PFXExport2(void* handle, int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificates, BINSTR* pfx) __asm__("_Z10PFXExport2PviPcP6BINSTRS2_S2_S2_");
SIGIL_EXPORT int PFXImport(void* handle, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* caCertificates)
    __asm__("_Z9PFXImportPvPcP6BINSTRS2_S2_S2_S2_S2_");
SIGIL_EXPORT int PFXExportMultiPair(void* handle, int option, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* pfx) __asm__("_Z18PFXExportMultiPairPviPcP6BINSTRS2_S2_");
SIGIL_EXPORT int PFXExportMultiPair2(void* handle, int option, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates, BINSTR* pfx)
    __asm__("_Z19PFXExportMultiPair2PviPcP6BINSTRS2_S2_S2_");
SIGIL_EXPORT int PFXImportMultiPair(void* handle, BINSTR* pfx, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates) __asm__("_Z18PFXImportMultiPairPvP6BINSTRPcS1_S1_S1_");
SIGIL_EXPORT int PFXImportMultiPair2(void* handle, int mode, BINSTR* pfx, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates) __asm__("_Z19PFXImportMultiPair2PviP6BINSTRPcS1_S1_S1_");

/* ---- <sigildesk/crypto/pkcs11.h> ---- */

SIGIL_EXPORT int PKCS11GetSlotList(void* handle, unsigned long* slots, unsigned long* count)
    __asm__("_Z17PKCS11GetSlotListPvPmS0_");
SIGIL_EXPORT int PKCS11GetTokenInfo(void* handle, unsigned long slotId, PKCS11_TOKEN_INFO* info)
    __asm__("_Z18PKCS11GetTokenInfoPvmP17PKCS11_TOKEN_INFO");
SIGIL_EXPORT int PKCS11InitToken(void* handle, char* soPin, char* label) __asm__("_Z15PKCS11InitTokenPvPcS0_");
SIGIL_EXPORT int PKCS11InitTokenWithSlotID(void* handle, unsigned long slotId, char* soPin, char* pin, char* label)
    __asm__("_Z25PKCS11InitTokenWithSlotIDPvmPcS0_S0_");
SIGIL_EXPORT int PKCS11OpenSessionWithSlotID(void* handle, unsigned long slotId, char* pin, int flags)
    __asm__("_Z27PKCS11OpenSessionWithSlotIDPvmPci");
SIGIL_EXPORT int PKCS11OpenSessionWithTokenName(void* handle, char* token, int flags)
    __asm__("_Z30PKCS11OpenSessionWithTokenNamePvPci");
SIGIL_EXPORT int PKCS11Login(void* handle, char* pin) __asm__("_Z11PKCS11LoginPvPc");
SIGIL_EXPORT int PKCS11Logout(void* handle) __asm__("_Z12PKCS11LogoutPv");
SIGIL_EXPORT int PKCS11CloseSession(void* handle) __asm__("_Z18PKCS11CloseSessionPv");
SIGIL_EXPORT int PKCS11ChangePIN(void* handle, char* oldPin, char* newPin) __asm__("_Z15PKCS11ChangePINPvPcS0_");
SIGIL_EXPORT int PKCS11GetCertCnt(void* handle, int* count) __asm__("_Z16PKCS11GetCertCntPvPi");
SIGIL_EXPORT int PKCS11GetCertInfo(void* handle, int index, int* kind, BINSTR* id, BINSTR* certificate)
    __asm__("_Z17PKCS11GetCertInfoPviPiP6BINSTRS2_");
SIGIL_EXPORT int PKCS11ReadCert(void* handle, BINSTR* id, BINSTR* certificate)
    __asm__("_Z14PKCS11ReadCertPvP6BINSTRS1_");
SIGIL_EXPORT int PKCS11ReadRandomForVID(void* handle, BINSTR* id, BINSTR* random)
    __asm__("_Z22PKCS11ReadRandomForVIDPvP6BINSTRS1_");
SIGIL_EXPORT int PKCS11WriteCertAndPriKey(void* handle, BINSTR* certificate, BINSTR* privateKey)
    __asm__("_Z24PKCS11WriteCertAndPriKeyPvP6BINSTRS1_");
SIGIL_EXPORT int PKCS11DeleteCertAndPriKey(void* handle, BINSTR* id)
    __asm__("_Z25PKCS11DeleteCertAndPriKeyPvP6BINSTR");
SIGIL_EXPORT int PKCS11GenKeyPair(void* handle, int algorithm, int bits, BINSTR* publicKey)
    __asm__("_Z16PKCS11GenKeyPairPviiP6BINSTR");
SIGIL_EXPORT int PKCS11Sign(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
    __asm__("_Z10PKCS11SignPvP6BINSTRS1_S1_");
SIGIL_EXPORT int PKCS11Verify(void* handle, BINSTR* id, BINSTR* data, BINSTR* signature)
    __asm__("_Z12PKCS11VerifyPvP6BINSTRS1_S1_");
SIGIL_EXPORT int PKCS11Encrypt(void* handle, BINSTR* id, BINSTR* data, BINSTR* cipher)
    __asm__("_Z13PKCS11EncryptPvP6BINSTRS1_S1_");
SIGIL_EXPORT int PKCS11Decrypt(void* handle, BINSTR* id, BINSTR* cipher, BINSTR* data)
    __asm__("_Z13PKCS11DecryptPvP6BINSTRS1_S1_");
SIGIL_EXPORT int PKCS11SignData(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage)
    __asm__("_Z14PKCS11SignDataPvP6BINSTRS1_S1_");
SIGIL_EXPORT int PKCS11SignDataNoContent(void* handle, BINSTR* id, BINSTR* data, BINSTR* signedMessage)
    __asm__("_Z23PKCS11SignDataNoContentPvP6BINSTRS1_S1_");
SIGIL_EXPORT int PKCS11DecryptData(void* handle, BINSTR* id, BINSTR* message, BINSTR* data)
    __asm__("_Z17PKCS11DecryptDataPvP6BINSTRS1_S1_");
SIGIL_EXPORT int PKCS11SignAndEnvData(void* handle, BINSTR* id, BINSTR* recipient, BINSTR* data,
    BINSTR* envelopedMessage) __asm__("_Z20PKCS11SignAndEnvDataPvP6BINSTRS1_S1_S1_");
SIGIL_EXPORT int PKCS11VerifyAndDecData(void* handle, BINSTR* id, BINSTR* message, BINSTR* data,
    BINSTR* signerCertificate) __asm__("_Z22PKCS11VerifyAndDecDataPvP6BINSTRS1_S1_S1_");
SIGIL_EXPORT int PKCS11VerifySignatureValue(void* handle, char* hash, BINSTR* certificate, BINSTR* signature)
    __asm__("_Z26PKCS11VerifySignatureValuePvPcP6BINSTRS2_");
SIGIL_EXPORT int PKCS11CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret,
    char* pin, char* token, BINSTR* caCertificate, BINSTR* certificate)
    __asm__("_Z20PKCS11CMPCertRequestPvPciS0_S0_S0_S0_P6BINSTRS2_");
SIGIL_EXPORT int PKCS11CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* pin, char* token,
    BINSTR* certificate, BINSTR* newCertificate) __asm__("_Z19PKCS11CMPCertUpdatePvPcibS0_S0_P6BINSTRS2_");
SIGIL_EXPORT int PKCS11CMPCertUpdate2(void* handle, char* address, int port, bool newKey, int keyBits, char* pin,
    char* token, BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId,
    BINSTR* kmCertificate, BINSTR* kmId) __asm__("_Z20PKCS11CMPCertUpdate2PvPcibiS0_S0_P6BINSTRS2_S2_S2_S2_S2_");
SIGIL_EXPORT int PKCS11CMPCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate,
    BINSTR* id) __asm__("_Z19PKCS11CMPCertRevokePvPciiP6BINSTRS2_");

/* ---- <sigildesk/crypto/prikey.h> ---- */

SIGIL_EXPORT int PriKeyEncrypt(void* handle, int algorithm, char* password, BINSTR* privateKey,
    BINSTR* encryptedKey) __asm__("_Z13PriKeyEncryptPviPcP6BINSTRS2_");
SIGIL_EXPORT int PriKeyDecrypt(void* handle, char* password, BINSTR* encryptedKey, BINSTR* privateKey)
    __asm__("_Z13PriKeyDecryptPvPcP6BINSTRS2_");
SIGIL_EXPORT int PriKeyChangePasswd(void* handle, char* oldPassword, char* newPassword, BINSTR* encryptedKey,
    BINSTR* changedKey) __asm__("_Z18PriKeyChangePasswdPvPcS0_P6BINSTRS2_");
SIGIL_EXPORT int PriKeyCheckKeyPair(void* handle, BINSTR* certificate, BINSTR* privateKey)
    __asm__("_Z18PriKeyCheckKeyPairPvP6BINSTRS1_");

/* ---- <sigildesk/crypto/sigea.h> ---- */

SIGIL_EXPORT int SIGEAMakeChallenge(void* handle, BINSTR* challenge) __asm__("_Z18SIGEAMakeChallengePvP6BINSTR");
SIGIL_EXPORT int SIGEAMakeResponse(void* handle, BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* response) __asm__("_Z17SIGEAMakeResponsePvP6BINSTRS1_S1_S1_");
SIGIL_EXPORT int SIGEAVerifyResponse(void* handle, BINSTR* challenge, BINSTR* response, BINSTR* certificate)
    __asm__("_Z19SIGEAVerifyResponsePvP6BINSTRS1_S1_");

/* ---- <sigildesk/crypto/tsp.h> ---- */

SIGIL_EXPORT int TSPTimeStampData(void* handle, char* address, int port, int hash, char* policy, BINSTR* data,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
    __asm__("_Z16TSPTimeStampDataPvPciiS0_P6BINSTRbS2_S2_S2_");
SIGIL_EXPORT int TSPTimeStampFile(void* handle, char* address, int port, int hash, char* policy, char* dataFile,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
    __asm__("_Z16TSPTimeStampFilePvPciiS0_S0_bP6BINSTRS2_S2_");
SIGIL_EXPORT int TSPMakeReqMsg(void* handle, BINSTR* data, int hash, char* policy, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* request) __asm__("_Z13TSPMakeReqMsgPvP6BINSTRiPcbS1_S1_S1_");
SIGIL_EXPORT int TSPSendAndRecv1(void* handle, char* address, int port, BINSTR* request, BINSTR* response)
    __asm__("_Z15TSPSendAndRecv1PvPciP6BINSTRS2_");
SIGIL_EXPORT int TSPSendAndRecv2(void* handle, BINSTR* response, BINSTR* token, BINSTR* certificate)
    __asm__("_Z15TSPSendAndRecv2PvP6BINSTRS1_S1_");
SIGIL_EXPORT int TSPVerifyToken(void* handle, BINSTR* token, BINSTR* certificate)
    __asm__("_Z14TSPVerifyTokenPvP6BINSTRS1_");
SIGIL_EXPORT int TSPVerifyToken2(void* handle, char* dataFile, BINSTR* data, BINSTR* token, BINSTR* certificate)
    __asm__("_Z15TSPVerifyToken2PvPcP6BINSTRS2_S2_");
SIGIL_EXPORT int TSPGetTokenInfo(void* handle, BINSTR* token, int capacity, char* text1, char* text2, char* text3,
    char* text4, char* text5, char* text6, char* text7, char* text8, BINSTR* certificate)
    __asm__("_Z15TSPGetTokenInfoPvP6BINSTRiPcS2_S2_S2_S2_S2_S2_S2_S1_");

/* ---- <sigildesk/crypto/uni.h> ---- */

SIGIL_EXPORT int UNIViewCert(void* handle, BINSTR* certificate, char* text) __asm__("_Z11UNIViewCertPvP6BINSTRPc");
SIGIL_EXPORT int UNIVerifySignData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
    __asm__("_Z17UNIVerifySignDataPvP6BINSTRS1_S1_");
SIGIL_EXPORT int UNIDecryptEnvData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* data) __asm__("_Z17UNIDecryptEnvDataPvP6BINSTRS1_S1_S1_");

/* ---- <sigildesk/crypto/util.h> ---- */

SIGIL_EXPORT int UTILAddObject(void* handle, BINSTR* object, BINSTR* list)
    __asm__("_Z13UTILAddObjectPvP6BINSTRS1_");
SIGIL_EXPORT int UTILGetObjectCount(void* handle, BINSTR* list, int* count)
    __asm__("_Z18UTILGetObjectCountPvP6BINSTRPi");
SIGIL_EXPORT int UTILGetObject(void* handle, BINSTR* list, int index, BINSTR* object)
    __asm__("_Z13UTILGetObjectPvP6BINSTRiS1_");
SIGIL_EXPORT int UTILCompareDN(void* handle, char* name1, char* name2) __asm__("_Z13UTILCompareDNPvPcS0_");
SIGIL_EXPORT int UTILGetCertPath(void* handle, BINSTR* certificate, BINSTR* path)
    __asm__("_Z15UTILGetCertPathPvP6BINSTRS1_");
SIGIL_EXPORT int UTILGetRootCert(void* handle, BINSTR* certificate, BINSTR* root)
    __asm__("_Z15UTILGetRootCertPvP6BINSTRS1_");
SIGIL_EXPORT int UTILIsTrustCert(void* handle, BINSTR* certificate, BINSTR* trusted, bool* isTrusted)
    __asm__("_Z15UTILIsTrustCertPvP6BINSTRS1_Pb");

/* ---- <sigildesk/crypto/vid.h> ---- */

SIGIL_EXPORT int VIDGetRandomFromPriKey(void* handle, BINSTR* privateKey, BINSTR* random)
    __asm__("_Z22VIDGetRandomFromPriKeyPvP6BINSTRS1_");
SIGIL_EXPORT int VIDVerify(void* handle, BINSTR* certificate, BINSTR* random, char* identity)
    __asm__("_Z9VIDVerifyPvP6BINSTRS1_Pc");
SIGIL_EXPORT int VIDVerifyByIVS(void* handle, char* confFile, BINSTR* certificate, BINSTR* random, char* identity,
    BINSTR* ivsCertificate) __asm__("_Z14VIDVerifyByIVSPvPcP6BINSTRS2_S0_S2_");

/* ---- <sigildesk/crypto/wpki.h> ---- */

SIGIL_EXPORT int WPKISignData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message)
    __asm__("_Z12WPKISignDataPvP6BINSTRS1_S1_S1_");
SIGIL_EXPORT int WPKIVerifyData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
    __asm__("_Z14WPKIVerifyDataPvP6BINSTRS1_S1_");
SIGIL_EXPORT int WPKIEncryptData(void* handle, BINSTR* certificate, BINSTR* privateKey, int algorithm,
    BINSTR* recipient, BINSTR* data, BINSTR* message) __asm__("_Z15WPKIEncryptDataPvP6BINSTRS1_iS1_S1_S1_");
SIGIL_EXPORT int WPKIDecryptData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* data) __asm__("_Z15WPKIDecryptDataPvP6BINSTRS1_S1_S1_");
SIGIL_EXPORT int WPKIVerifyCert(void* handle, BINSTR* certificate) __asm__("_Z14WPKIVerifyCertPvP6BINSTR");

// clang-format on

#endif

#endif
