// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Fixed records that cross the library's boundary.
 *
 *  Every record is packed: its members follow each other without padding, so that a host built with another compiler
 *  sees the same layout. Integers are 32-bit signed. A character array holds a text that is terminated within the
 *  array; texts are CP949 (Korean multibyte) unless said otherwise. A byte array holds raw bytes whose number stands in
 *  an integer of its own. The caller owns every record that it passes; no record holds a pointer.
 *
 *  The header compiles as C and as C++11.
 */
#ifndef SIGILDESK_RECORDS_H
#define SIGILDESK_RECORDS_H

#include <sigildesk/layout.h>

#pragma pack(push, 1)

/** One certificate with its private key: an entry of the certificate list.
 *
 *  "Listing" below means CLP_LoadCertList or CLP_LoadMemoryCert. CLP_GetCertInfo copies only what an entry holds, so a
 *  host zero-fills the record before each call.
 *
 *  A record may hold decrypted private keys, the identity random value and a password: overwrite it after use. */
typedef struct tagCERTINFO {
    int nPKIType;                        /**< family: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI; of the folder, or of the
                                              subject's "o=" for a certificate handed over in memory */
    unsigned char bySignCert[4096];      /**< signing certificate, X.509 in DER, as read */
    unsigned char bySignPriKey[4096];    /**< decrypted signing key, PKCS#8 PrivateKeyInfo in DER; filled by
                                              CLP_DecryptPriKey and its like, empty after listing from a disk */
    unsigned char byKmCert[4096];        /**< key-management (encryption) certificate in DER, when there is one */
    unsigned char byKmPriKey[4096];      /**< decrypted key-management key, as bySignPriKey */
    int nSignCertLen;                    /**< bytes in bySignCert */
    int nSignPriKeyLen;                  /**< bytes in bySignPriKey */
    int nKmCertLen;                      /**< bytes in byKmCert */
    int nKmPriKeyLen;                    /**< bytes in byKmPriKey */
    unsigned char byEncSignPriKey[4096]; /**< signing key file as stored: PKCS#8 EncryptedPrivateKeyInfo in DER */
    unsigned char byEncKmPriKey[4096];   /**< key-management key file as stored */
    int nEncSignPriKeyLen;               /**< bytes in byEncSignPriKey */
    int nEncKmPriKeyLen;                 /**< bytes in byEncKmPriKey */
    char szVersion[1024];                /**< "V" and the X.509 version, for example "V3" */
    char szSerialNum[2048];              /**< serial number as the toolkit prints it */
    char szSignAlg[1024];                /**< signature algorithm as the toolkit prints it */
    char szSubjectDN[1024];              /**< subject, "cn=...,ou=...,o=...,c=KR" */
    char szUID[1024];                    /**< unique identifier of the subject */
    char szPubKey[2048];                 /**< public key as text */
    char szPubKeyAlg[1024];              /**< public key algorithm */
    char szKeyLength[1024];              /**< key length, for example "2048 Bits" */
    char szKeyUsage[1024];               /**< key usage names such as "digitalSignature" */
    char szCRLDP[1024];                  /**< CRL distribution point */
    char szCertPolicy[1024];             /**< certificate policies with their qualifiers */
    char szPolicyID[1024];               /**< policy OID, numbers separated by blanks: "1 2 410 100001 5 3" */
    char szIssuerDN[1024];               /**< issuer, in the form of szSubjectDN */
    char szIssuerName[1024];      /**< issuer as shown: szIssuerCN, or its name in the issuer settings file */
    char szIssuerCN[1024];        /**< "cn=" value of szIssuerDN */
    char szPolicyName[1024];      /**< policy as shown: its name in the policy settings file, else szPolicyID */
    char szSignCertPath[260];     /**< file of bySignCert; empty for a certificate handed over in memory */
    char szSignPriKeyPath[260];   /**< file of byEncSignPriKey */
    char szKmCertPath[260];       /**< file of byKmCert, or empty */
    char szKmPriKeyPath[260];     /**< file of byEncKmPriKey, or empty */
    char szNotBefore[1024];       /**< start of validity, "YYYY-MM-DD HH:MM:SS" in local standard time */
    char szNotAfter[1024];        /**< end of validity, as szNotBefore */
    char szValidFrom[1024];       /**< date of szNotBefore, "YYYY-MM-DD" */
    char szValidTo[1024];         /**< date of szNotAfter, "YYYY-MM-DD" */
    unsigned char byRandom[1024]; /**< random value of the signing key for identity checks; filled by
                                              CLP_GetPriKeyRandom and CLP_VerifyVID */
    int nRandomLen;               /**< bytes in byRandom */
    char szSubjectAltName[1024];  /**< subject alternative name, empty when absent */
    char szAuthKeyID[1024];       /**< authority key identifier */
    char szSubKeyID[1024];        /**< subject key identifier */
    char szAIA[1024];             /**< authority information access, empty when absent */
    int nStatusFlag;              /**< 0 after listing; read by the certificate viewer */
    int nValidStatus;             /**< 3 valid, 4 expires soon, 5 expired; from memory with a key that is not
                                              of 2048 bits: 0, 1, 2 in the same meanings */
    int nRemainDays;              /**< days until expiry, set only when the certificate expires soon */
    int nExpired;                 /**< 1 when nValidStatus is 2 or 5, else 0 */
    int nMediaType;               /**< medium that the entry was listed from: 1 hard disk, 2 removable disk,
                                              6 memory */
    char szMediaText1[260];       /**< reserved for token media; empty */
    char szMediaText2[260];       /**< reserved for token media; never written by CLP_GetCertInfo */
    char szMediaText3[2048];      /**< reserved for token media; empty */
    char szPassword[2048];        /**< new password after a password change, else empty */
} tagCERTINFO;

/** Which certificates to list. An empty text leaves the value of an earlier CLP_SetType in place. */
typedef struct tagLOADCERTOPT {
    int nPKITypes;                 /**< families to search, added up: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI */
    int nKeyPairType;              /**< 2: only certificates that have a key-management pair too; other values: the
                                        signing pair suffices */
    char szPolicyIDs[2048];        /**< policies to accept, each OID followed by a bar:
                                        "1 2 410 200004 5 2 1 2|1 2 410 200005 1 1 1|"; empty: every policy */
    char szSerialNum[2048];        /**< only this serial number (at most 1023 characters count); empty: every one */
    char szSubjectDN[1024];        /**< only this subject, in UTF-8; empty: every one */
    char szOption[260];            /**< kept by the loaders, not consulted */
    unsigned char bExcludeExpired; /**< non-zero: expired certificates are left out */
    unsigned char bRemovableFlag;  /**< passed to the listing of removable disks, which does not use it */
} tagLOADCERTOPT;

/** A mounted removable disk. */
typedef struct tagDRIVEINFO {
    int nIndex;           /**< 0, 1, 2 ... in the order of the mount table */
    char szMountDir[260]; /**< mount folder: the folder text of medium 2 */
    char szName[260];     /**< last part of szMountDir with its "/" */
    char szDisplay[260];  /**< name and folder as shown: "/USB (/media/USB)" */
} tagDRIVEINFO;

#pragma pack(pop)

/** Of CLP_USIMType, which is not supported: nothing in it is read or written. */
typedef struct tagSMCERTOPT {
    int nReserved; /**< not used */
} tagSMCERTOPT;
/** Of CLP_SetNCheckRootCert, which is not supported: nothing in it is read or written. */
typedef struct tagROOTCERTINFO {
    int nReserved; /**< not used */
} tagROOTCERTINFO;
/** Of CLP_GetPKCS11DeviceList, which is not supported: nothing in it is read or written. */
typedef struct tagPKCS11DEVICELIST {
    int nReserved; /**< not used */
} tagPKCS11DEVICELIST;

SIGIL_LAYOUT(sizeof(tagCERTINFO) == 57932);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nPKIType) == 0);
SIGIL_LAYOUT(offsetof(tagCERTINFO, bySignCert) == 4);
SIGIL_LAYOUT(offsetof(tagCERTINFO, bySignPriKey) == 4100);
SIGIL_LAYOUT(offsetof(tagCERTINFO, byKmCert) == 8196);
SIGIL_LAYOUT(offsetof(tagCERTINFO, byKmPriKey) == 12292);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nSignCertLen) == 16388);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nSignPriKeyLen) == 16392);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nKmCertLen) == 16396);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nKmPriKeyLen) == 16400);
SIGIL_LAYOUT(offsetof(tagCERTINFO, byEncSignPriKey) == 16404);
SIGIL_LAYOUT(offsetof(tagCERTINFO, byEncKmPriKey) == 20500);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nEncSignPriKeyLen) == 24596);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nEncKmPriKeyLen) == 24600);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szVersion) == 24604);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szSerialNum) == 25628);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szSignAlg) == 27676);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szSubjectDN) == 28700);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szUID) == 29724);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szPubKey) == 30748);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szPubKeyAlg) == 32796);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szKeyLength) == 33820);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szKeyUsage) == 34844);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szCRLDP) == 35868);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szCertPolicy) == 36892);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szPolicyID) == 37916);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szIssuerDN) == 38940);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szIssuerName) == 39964);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szIssuerCN) == 40988);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szPolicyName) == 42012);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szSignCertPath) == 43036);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szSignPriKeyPath) == 43296);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szKmCertPath) == 43556);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szKmPriKeyPath) == 43816);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szNotBefore) == 44076);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szNotAfter) == 45100);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szValidFrom) == 46124);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szValidTo) == 47148);
SIGIL_LAYOUT(offsetof(tagCERTINFO, byRandom) == 48172);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nRandomLen) == 49196);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szSubjectAltName) == 49200);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szAuthKeyID) == 50224);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szSubKeyID) == 51248);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szAIA) == 52272);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nStatusFlag) == 53296);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nValidStatus) == 53300);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nRemainDays) == 53304);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nExpired) == 53308);
SIGIL_LAYOUT(offsetof(tagCERTINFO, nMediaType) == 53312);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szMediaText1) == 53316);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szMediaText2) == 53576);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szMediaText3) == 53836);
SIGIL_LAYOUT(offsetof(tagCERTINFO, szPassword) == 55884);
SIGIL_LAYOUT(sizeof(tagLOADCERTOPT) == 5390);
SIGIL_LAYOUT(offsetof(tagLOADCERTOPT, nKeyPairType) == 4);
SIGIL_LAYOUT(offsetof(tagLOADCERTOPT, szPolicyIDs) == 8);
SIGIL_LAYOUT(offsetof(tagLOADCERTOPT, szSerialNum) == 2056);
SIGIL_LAYOUT(offsetof(tagLOADCERTOPT, szSubjectDN) == 4104);
SIGIL_LAYOUT(offsetof(tagLOADCERTOPT, szOption) == 5128);
SIGIL_LAYOUT(offsetof(tagLOADCERTOPT, bExcludeExpired) == 5388);
SIGIL_LAYOUT(offsetof(tagLOADCERTOPT, bRemovableFlag) == 5389);

SIGIL_LAYOUT(sizeof(tagDRIVEINFO) == 784);
SIGIL_LAYOUT(offsetof(tagDRIVEINFO, szMountDir) == 4);
SIGIL_LAYOUT(offsetof(tagDRIVEINFO, szName) == 264);
SIGIL_LAYOUT(offsetof(tagDRIVEINFO, szDisplay) == 524);

#endif
