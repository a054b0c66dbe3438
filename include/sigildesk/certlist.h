// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The certificate list: find the user's certificates on the hard disk, on a removable disk or in memory, read the
 *  list, and decrypt, check, export, import, copy and delete an entry by its index.
 *
 *  A host calls, in this order: CLP_Initalize, CLP_SetType, CLP_SetMediaType, CLP_LoadCertList, CLP_GetCertCount,
 *  CLP_GetCertInfo for 0 <= index < count, operations on an index, CLP_UnInitalize.
 *
 *  Rules that hold for every function:
 *  - The handle comes first: made by CLP_Initalize, invalid after CLP_UnInitalize. A handle is used from one thread at
 *    a time; handles are independent of each other.
 *  - The result is 0 for success or a code of the list below; a value outside it is the toolkit's own code, passed
 *    through unchanged. No exception leaves a function.
 *  - Texts are zero-terminated CP949; paths are bytes as the file system has them (at most 259). A password is the bytes
 *    that the user typed, usually UTF-8 today, up to a zero byte: they reach the toolkit unchanged, and a key opens with
 *    the bytes that it was protected with. The functions do not change an input and keep no pointer to it.
 *  - Media: 1 hard disk (the user's home folder), 2 removable disk (a mounted folder), 6 memory.
 *  - A buffer handed out is an array of length+1 bytes whose last byte is zero; release it with CLP_MemFree, which
 *    overwrites it. Copies that the host made of a private key, a random value or a password are the host's to overwrite.
 *  - An index outside the current list is refused with 1001.
 *
 *  Codes, with their names in <sigildesk/codes.h>: 1000 out of memory; 1001 bad argument; 1003 not supported; 1005 not possible on this medium; 1007 the toolkit
 *  refused to start; 1008 null handle; 1010 the toolkit library could not be loaded; 1100 a settings file is missing or
 *  lacks an entry; 1102 a settings file is empty or unreadable; 1105 the medium is not memory; 1111 folder names could
 *  not be formed; 1113 wrong password; 1114 a key could not be decrypted; 1115 no certificate; 1117 a key-management
 *  pair is required; 1118 the key holds no random value; 1119 the random value could not be read; 1120 the certificate
 *  does not verify; 1122 a certificate could not be read; 1123, 1124, 1125 a file could not be read, written, deleted;
 *  1126, 1127, 1128 export: no data, no decrypted key, refused by the toolkit; 1129 import refused; 1130 certificate and
 *  key do not belong together; 1131 password change refused; 1132 identity check failed.
 */
#ifndef SIGILDESK_CERTLIST_H
#define SIGILDESK_CERTLIST_H

#include <sigildesk/codes.h>
#include <sigildesk/export.h>
#include <sigildesk/records.h>

/* ---- Start and end ------------------------------------------------------------------------------------------- */

/** Makes a processor, or starts an existing one again: binds the toolkit and reads "TWAPI_LOG.ini" (section "TW_Info",
 *  key "PATH": file of the error log, empty for none) and the policy and issuer names from the library folder.
 *  @param phCLP        handle variable; null in it makes a new processor. The processor stays in it when a later step
 *                      fails, and is released with CLP_UnInitalize. When it already holds a processor, the toolkit is
 *                      opened anew and the settings are not read again.
 *  @param pReserved    not used; may be null
 *  @param nToolkitType 0 the maker's toolkit, 1 the government PKI library
 *  @param nLanguage    2 English names ("Policy_ENG.conf", "Issuer_ENG.conf"), any other value Korean ("_KOR")
 *  @param szHomePath   library folder: toolkit libraries and settings files; cut at 259 bytes
 *  @return 0; 1000; 1001 @p phCLP null; 1007; 1008; 1010; 1100 no policy file, or an issuer section without "cn" or
 *          "name"; 1102 policy file empty or unreadable */
SIGIL_EXPORT int CLP_Initalize(void** phCLP, void* pReserved, int nToolkitType, int nLanguage, char* szHomePath);

/** Releases the processor, its list and its toolkit; keys and passwords in it are overwritten. Null is ignored.
 *  @return 0 */
SIGIL_EXPORT int CLP_UnInitalize(void* hCLP);

/** Overwrites and releases a buffer that another function handed out and sets the variable to null. The handle is not
 *  looked at.
 *  @return 0; 1001 @p ppBuf or the pointer in it null */
SIGIL_EXPORT int CLP_MemFree(void* hCLP, void** ppBuf);

/* ---- What to list -------------------------------------------------------------------------------------------- */

/** Chooses which certificates later listings take. Empty texts keep what an earlier call set; the policy filter is set
 *  by the first call that names a policy.
 *  @return 0; 1008; 1001 @p pOption null */
SIGIL_EXPORT int CLP_SetType(void* hCLP, tagLOADCERTOPT* pOption);

/** Chooses the medium.
 *  @param nMedia    1, 2 or 6; 0, 7 and other values are stored and list nothing; 3, 4 and 5 are refused
 *  @param szPath    mount folder for medium 2 (cut at 259 bytes); null or empty keeps the folder set before
 *  @param nReserved not used
 *  @return 0; 1008; 1001 medium 3, 4 or 5 (the medium stays as it was) */
SIGIL_EXPORT int CLP_SetMediaType(void* hCLP, int nMedia, char* szPath, int nReserved);

/** Number of mounted removable disks ("vfat", "fuseblk").
 *  @param pnCount receives the number; left as it is when the mount table cannot be read, so set it to 0 before
 *  @return 0; 1008; 1001 @p pnCount null */
SIGIL_EXPORT int CLP_GetRemDriveCount(void* hCLP, int* pnCount);

/** Fills one record per mounted removable disk.
 *  @param pArray  array of as many records as CLP_GetRemDriveCount counted last on this processor: of disks that were
 *                 mounted since, no more are filled in, and none when the mount table could not be read then.
 *                 Without a count on this processor, every disk is filled in
 *  @return 0; 1008; 1001 @p pArray null */
SIGIL_EXPORT int CLP_GetRemDrive(void* hCLP, tagDRIVEINFO* pArray);

/* ---- The list ------------------------------------------------------------------------------------------------ */

/** Lists the certificates of the current medium; the list of before is released, its keys overwritten. A certificate
 *  that cannot be read, or that the options leave out, is skipped. Order: GPKI, NPKI, MPKI, PPKI; then the folders of
 *  the family; then as the folder yields its entries.
 *  @return 0 (also on media 6 and 7, which are not scanned); 1008; 1000; 1001 no medium that can be listed; 1111;
 *          1115 no certificate; 1123 none found, and a folder could not be read to its end (the error log says why) */
SIGIL_EXPORT int CLP_LoadCertList(void* hCLP);

/** Takes one certificate with its key (not encrypted) from memory as the list of medium 6. A certificate that the
 *  options leave out, or that cannot be read, is refused silently: the result is 0 and the count is 0.
 *  @param pSignCert, nSignCertLen  signing certificate, DER, 1 to 4096 bytes
 *  @param pSignKey, nSignKeyLen    signing key, PKCS#8 PrivateKeyInfo in DER, 1 to 4096 bytes
 *  @param pKmCert, nKmCertLen      key-management certificate, at most 4096 bytes; null or length 0 for none
 *  @param pKmKey, nKmKeyLen        key-management key, likewise
 *  @return 0; 1008; 1000; 1001 a signing part missing, or a part over 4096 bytes; 1105; 1117 the options ask for a
 *          key-management pair (nKeyPairType 2), which this medium never serves */
SIGIL_EXPORT int CLP_LoadMemoryCert(void* hCLP, char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen,
    char* pKmCert, int nKmCertLen, char* pKmKey, int nKmKeyLen);

/** Number of entries in the list of the current medium.
 *  @return the count itself; 1008, as if it were a count, for a null handle */
SIGIL_EXPORT int CLP_GetCertCount(void* hCLP);

/** Copies an entry. Only fields that hold something are copied: zero-fill the record before the call.
 *  @param nIndex  0 <= nIndex < CLP_GetCertCount; on medium 6 the single entry is given for any index
 *  @param pInfo   caller's record
 *  @return 0 (also on media without a list: nothing is copied); 1008; 1001 */
SIGIL_EXPORT int CLP_GetCertInfo(void* hCLP, int nIndex, tagCERTINFO* pInfo);

/* ---- Private keys (media 1 and 2) ---------------------------------------------------------------------------- */

/** Decrypts the private keys of an entry (PKCS#8 EncryptedPrivateKeyInfo) and keeps them in the entry until the list is
 *  built again.
 *  @param szPassword   certificate password
 *  @param ppSignKey    receives a buffer with the signing key, PKCS#8 PrivateKeyInfo in DER; also after a failure:
 *                      then an empty buffer with length 0, to be released all the same
 *  @param pnSignKeyLen receives its length
 *  @param ppKmKey      receives a buffer with the key-management key; left alone when the entry has none
 *  @param pnKmKeyLen   receives its length
 *  @return 0; 1008; 1000; 1001; 1005; 1113; 1114; a toolkit code */
SIGIL_EXPORT int CLP_DecryptPriKey(
    void* hCLP, int nIndex, char* szPassword, char** ppSignKey, int* pnSignKeyLen, char** ppKmKey, int* pnKmKeyLen);

/** Takes the identity random value out of the signing key. A key decrypted before is used as it is, whatever the
 *  password; a wrong password shows as 1118 or 1119.
 *  @param szPassword  certificate password
 *  @param ppRandom  receives a buffer with the value; left alone when there is none and on other media
 *  @param pnLen     receives its length
 *  @return 0; 1008; 1000; 1001; 1118; 1119 */
SIGIL_EXPORT int CLP_GetPriKeyRandom(void* hCLP, int nIndex, char* szPassword, char** ppRandom, int* pnLen);

/** Checks that the holder of the certificate has an identity number (VID check). On a medium other than 1 to 4 the
 *  result is 0 without any check.
 *  @param szIdn      identity number, digits
 *  @param pReserved  not used
 *  @param szPassword certificate password
 *  @return 0; 1008; 1000; 1001; 1113; 1114; 1118; 1119; 1132; a toolkit code */
SIGIL_EXPORT int CLP_VerifyVID(void* hCLP, int nIndex, char* szIdn, void* pReserved, char* szPassword);

/* ---- Import, export, copy, delete ---------------------------------------------------------------------------- */

/** Reads the certificates and keys of a PKCS#12 file (RFC 7292); nothing is written to disk.
 *  @param szPfxPath, szPassword  file and its password
 *  @param ppSignCert, ppSignKey  receive buffers with the signing pair, both or neither; the key is not encrypted
 *  @param ppKmCert, ppKmKey      when the file also has a key-management pair, receive buffers with the signing pair
 *                                once more (intended: hosts rely on it); else left alone
 *  @param pnSignCertLen, pnSignKeyLen, pnKmCertLen, pnKmKeyLen  receive the lengths
 *  @return 0; 1008; 1000; 1001; 1113; 1115 no certificate, or not as many keys; 1129; a toolkit code */
SIGIL_EXPORT int CLP_ImportPFX(void* hCLP, char* szPfxPath, char* szPassword, char** ppSignCert, int* pnSignCertLen,
    char** ppSignKey, int* pnSignKeyLen, char** ppKmCert, int* pnKmCertLen, char** ppKmKey, int* pnKmKeyLen);

/** Writes an entry with its keys into a PKCS#12 file.
 *  @param szPassword  certificate password; it also protects the file
 *  @param szPfxPath   file to write, at most 259 bytes; an existing file is replaced, and stays when writing fails
 *  @return 0; 1008; 1000; 1001; 1113; 1114; 1124 not brought to the disk; 1126; 1127; 1128; a toolkit code */
SIGIL_EXPORT int CLP_ExportPFX(void* hCLP, int nIndex, char* szPassword, char* szPfxPath);

/** Copies an entry to a disk; keys are encrypted anew with the password. Missing folders are created. The medium of
 *  the processor becomes @p nSrcMedia. Result 0 means that the files are on the disk, readable for their owner alone.
 *  When a copy fails, the files that were there before come back. While it is under way their contents are noted in a
 *  file beside them, whose name ends in ".undo": of a process that is killed it stays, and the next copy to the same
 *  place undoes what that one began.
 *  @param nSrcMedia     medium of the entry: 1 or 2
 *  @param nTargetMedia  1 the user's home folder; 2 a removable disk
 *  @param szTargetPath  folder for medium 2
 *  @param szPassword    certificate password
 *  @return 0; 1008; 1000; 1001; 1005 source medium 3, 4 or 5; 1113; 1114; 1122; 1124; 1130; a toolkit code */
SIGIL_EXPORT int CLP_CopySelCertToDISK(
    void* hCLP, int nSrcMedia, int nIndex, int nTargetMedia, char* szTargetPath, char* szPassword);

/** Stages certificates and keys (not encrypted) for CLP_CopyCertToDISK. The key-management pair is replaced only when
 *  both of its parts are given. What is staged serves any number of copies and stays until it is replaced; it is wiped
 *  then, or by CLP_UnInitalize.
 *  @return 0; 1008; 1000; 1001 a signing part missing */
SIGIL_EXPORT int CLP_CopyforSetData(void* hCLP, char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen,
    char* pKmCert, int nKmCertLen, char* pKmKey, int nKmKeyLen);

/** Copies the staged certificates and keys to a disk, as CLP_CopySelCertToDISK does.
 *  @param nTargetMedia, szTargetPath  as there
 *  @param szPassword  protects the key files that are written
 *  @return as CLP_CopySelCertToDISK */
SIGIL_EXPORT int CLP_CopyCertToDISK(void* hCLP, int nTargetMedia, char* szTargetPath, char* szPassword);

/** Deletes an entry's files. The first entry of a list (index 0) cannot be deleted: 1001. The list itself stays as it
 *  is until it is built again. A wrong password and a folder that keeps its files are told before anything is deleted;
 *  what the toolkit has deleted before it fails stays deleted. When the process is killed meanwhile, the next listing
 *  or deletion brings the files back from a note beside them, whose name ends in ".undo".
 *  @param szPin       PIN of a token medium; not looked at on media 1 and 2
 *  @param szPassword  certificate password
 *  @return 0; 1008; 1001; 1005 medium 7; 1113; 1125 */
SIGIL_EXPORT int CLP_DeleteCert(void* hCLP, int nIndex, char* szPin, char* szPassword);

/* ---- Verification -------------------------------------------------------------------------------------------- */

/** Verifies a certificate against the root certificates that "HVCToolkitV30.conf" of the library folder names.
 *  @param pCert, nCertLen  certificate, DER
 *  @param nErrSize, szErr  size of the text buffer and the buffer; after a failure of the verification itself it holds
 *                          the toolkit's message, after another failure an empty text
 *  @return 0; 1008; 1000; 1001; 1120 */
SIGIL_EXPORT int CLP_VerifyCert(void* hCLP, char* pCert, int nCertLen, int nErrSize, char* szErr);

/* ---- Not supported ------------------------------------------------------------------------------------------- */

/** @name Always refused with 1003, after 1008 for a null handle
 *  @{ */
/** Would choose a USIM as medium. @return 1008 for a null handle, else 1003 */
SIGIL_EXPORT int CLP_USIMType(void* hCLP, tagSMCERTOPT* pOption);
/** Would copy staged certificates to a token. @return 1008 for a null handle, else 1003 */
SIGIL_EXPORT int CLP_CopyCertToPKCS11(void* hCLP, char* szPin, char* szTarget, char* szPassword);
/** Would copy staged certificates to a card. @return 1008 for a null handle, else 1003 */
SIGIL_EXPORT int CLP_CopyCertToSMCARD(void* hCLP, int nTargetMedia, char* szPin, char* szTarget, char* szPassword);
/** Would change the password of an entry's keys. @return 1008 for a null handle, else 1003 */
SIGIL_EXPORT int CLP_ChangePassword(void* hCLP, int nIndex, char* szOldPassword, char* szNewPassword);
/** @} */

/** @name Always refused with 1003, also for a null handle
 *  @{ */
/** Would connect to a medium that wants a PIN. @return 1003 */
SIGIL_EXPORT int CLP_MediaConnect(void* hCLP, char* szMedia, char* szPin);
/** Would end what CLP_MediaConnect began. @return 1003 */
SIGIL_EXPORT int CLP_MediaDisConnect(void* hCLP);
/** Would hand arguments to a token's driver. @return 1003 */
SIGIL_EXPORT int CLP_PKCS11SetArgs(void* hCLP, void* pArgs);
/** Would hand over the PIN of a card. @return 1003 */
SIGIL_EXPORT int CLP_SetCardPINumber(void* hCLP, char* szCard, char* szPin);
/** Would fetch a certificate from a telephone. @return 1003 */
SIGIL_EXPORT int CLP_Phone_UbiKey(void* hCLP, char* szUrl, void* pOption, char* szPin, char* szPassword,
    char** ppSignCert, int* pnSignCertLen, char** ppSignKey, int* pnSignKeyLen);
/** Would tell whether a root certificate is installed. @return 1003 */
SIGIL_EXPORT int CLP_SetNCheckRootCert(void* hCLP, tagROOTCERTINFO* pRoot, bool* pbInstalled);
/** Would describe a root certificate. @return 1003 */
SIGIL_EXPORT int CLP_GetRootCertInfo(void* hCLP, char** ppCert, int* pnCertLen, char** ppHash, int* pnHashLen,
    int nSubjectSize, char* szSubject, int nIssuerSize, char* szIssuer, int nFromSize, char* szFrom, int nToSize,
    char* szTo);
/** Would install a root certificate. @return 1003 */
SIGIL_EXPORT int CLP_InstallRootCert(void* hCLP, char* pCert, int nCertLen, char* pHash, int nHashLen);
/** Would log in on a token. @return 1003 */
SIGIL_EXPORT int CLP_PKCS11Login(void* hCLP, char* szPin);
/** Would count the tokens. @return 1003 */
SIGIL_EXPORT int CLP_GetPKCS11DeviceInfo(void* hCLP, bool bSlots, bool bTokens, bool bPresent, int* pnCount);
/** Would list the tokens. @return 1003 */
SIGIL_EXPORT int CLP_GetPKCS11DeviceList(void* hCLP, tagPKCS11DEVICELIST* pList);
/** Would verify a signature with a token. @return 1003 */
SIGIL_EXPORT int CLP_VerifyPKCS11Signature(void* hCLP, char* szCert, char* szData, char* szSignature);
/** Would describe a token. @return 1003 */
SIGIL_EXPORT int CLP_PKCS11TokenInfo(void* hCLP, char* szToken, int nLabelSize, char* szLabel, int nMakerSize,
    char* szMaker, int nSerialSize, char* szSerial);
/** @} */

#endif
