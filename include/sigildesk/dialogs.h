// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The certificate dialogs: let the user pick a certificate, unlock its private key, and hand both back.
 *
 *  Plain C: a C host includes this header and calls the three functions.
 *
 *  Two ways of running the dialog:
 *  - self-contained: the host owns the Qt application and calls ShowUserCert_T(), which does everything;
 *  - shared: the host calls ShowUserCertInit(), which makes the Qt application and runs its event loop; from inside
 *    that loop ShowUserCert() is called as often as needed.
 *
 *  Everything runs on the thread that owns the Qt application; nothing here is locked.
 *
 *  Rules for the records: texts are NUL-terminated byte strings in EUC-KR unless said otherwise. A text whose first
 *  byte is 0 counts as not given and leaves the dialog's own value in place. Numbers are native-endian. The records
 *  are packed: the fields follow one another without gaps. All records belong to the caller; nothing is kept of them
 *  but copies. Fill unused fields with zeros. Wipe tagSELCERTINFO after use: it holds private keys.
 */
#ifndef SIGILDESK_DIALOGS_H
#define SIGILDESK_DIALOGS_H

#include <sigildesk/codes.h>
#include <sigildesk/export.h>
#include <sigildesk/layout.h>

/** Bits of tagLOADSELECTCERTOPTION::nSelectFlags. */
#define SIGIL_SELECT_EXCLUDE_EXPIRED 0x1u /**< bit 0: expired certificates are not listed */
#define SIGIL_SELECT_LOCK_EXPIRED 0x2u    /**< bit 1: no password can be typed while an expired one is selected */

/** Bit of tagLOADSELECTCERTOPTION::nMessageFlags. */
#define SIGIL_MESSAGE_EXPIRED 0x4u /**< bit 2: a message box tells that the selected certificate has expired */

/** Value of tagLOADSELECTCERTOPTION::szLogo that takes the logo from tagEXTRAOPTION::szData. */
#define SIGIL_LOGO_FROM_DATA "LOAD_DATA"

#pragma pack(push, 1)

/** How the dialog starts. 272 bytes. */
typedef struct tagINITOPT {
    unsigned long long ullReserved; /**< kept when not 0; no dialog reads it */
    char szLibraryFolder[260];      /**< folder of the toolkit libraries, the settings files, KOR.ini and ENG.ini;
                                         at most 259 characters, no "/" at the end */
    int nLanguage;                  /**< 1: Korean texts and images; any other value: English ones */
} tagINITOPT;

/** What the dialog lists and how it behaves. 21570 bytes. */
typedef struct tagLOADSELECTCERTOPTION {
    unsigned int nPKITypes;     /**< bits of the families to list: 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI */
    unsigned int nKeyPairType;  /**< 2: only certificates that have a key-management pair too; else: all */
    unsigned int nSelectFlags;  /**< SIGIL_SELECT_EXCLUDE_EXPIRED, SIGIL_SELECT_LOCK_EXPIRED */
    char szShortOption[256];    /**< option text of the list processor (up to 255); used when szOption is empty */
    char szSerialNum[1024];     /**< list only the certificate with this serial number (up to 1023) */
    char szSubjectDN[1024];     /**< list only the certificate with this subject name (up to 1023) */
    char szPolicyIDs[2048];     /**< list only certificates with one of these policies (up to 2047) */
    char szOption[260];         /**< option text of the list processor (up to 259); wins over szShortOption */
    char szReserved1[260];      /**< kept, not read (up to 259) */
    char szReserved2[260];      /**< kept, not read (up to 259) */
    unsigned int nReserved1[4]; /**< kept, not read */
    char szReserved3[1024];     /**< kept, not read (up to 1023) */
    unsigned int nReserved2;    /**< kept, not read */
    char szReserved4[1024];     /**< kept, not read (up to 1023) */
    char szReserved5[1024];     /**< kept, not read (up to 1023) */
    char szReserved6[1024];     /**< kept, not read (up to 1023) */
    char szLogo[1024];          /**< empty: the default logo; "LOAD_DATA": the image in tagEXTRAOPTION; else a file
                                     name whose last path component names a logo inside the library (up to 1023) */
    char szReserved7[1024];     /**< kept, not read (up to 1023) */
    unsigned int nMessageFlags; /**< SIGIL_MESSAGE_EXPIRED */
    unsigned char byReserved;   /**< kept, not read */
    char szReserved8[2048];     /**< kept, not read (up to 1023) */
    unsigned char byGap[7];     /**< never read */
    unsigned char byMemoryCert; /**< not 0: open on the certificate of the next four fields, not on the hard disk */
    unsigned char byMemorySignCert[4096];   /**< signing certificate, DER */
    unsigned char byMemorySignPriKey[4096]; /**< its private key, ready for use */
    int nMemorySignCertLen;                 /**< bytes in byMemorySignCert; taken only when above 0 */
    int nMemorySignPriKeyLen;               /**< bytes in byMemorySignPriKey; taken only when above 0 */
    unsigned char byCivicLogo;              /**< not 0: show the public-agency logo, whatever szLogo says */
} tagLOADSELECTCERTOPTION;

/** Bulky extras. 200003 bytes. */
typedef struct tagEXTRAOPTION {
    char szData[200000];         /**< logo for szLogo "LOAD_DATA": a BMP image in base64 (up to 199999) */
    unsigned char byReserved[3]; /**< kept, not read */
} tagEXTRAOPTION;

/** The certificate that the user chose and its keys. 24380 bytes.
 *  Zero-filled by the library before it is filled. A data item longer than its field is left out whole:
 *  its length is 0. A certificate whose signing key is too long for bySignPriKey cannot be chosen. */
typedef struct tagSELCERTINFO {
    unsigned int nMediaType;             /**< 1 hard disk, 2 removable disk, 6 memory */
    unsigned char bySignCert[4096];      /**< signing certificate, DER */
    int nSignCertLen;                    /**< bytes in bySignCert */
    unsigned char bySignPriKey[2048];    /**< its private key, decrypted */
    int nSignPriKeyLen;                  /**< bytes in bySignPriKey */
    unsigned char byEncSignPriKey[2048]; /**< always empty: the dialog does not keep the encrypted key */
    int nEncSignPriKeyLen;               /**< 0 */
    unsigned char byKmCert[4096];        /**< key-management certificate, DER, when there is one */
    int nKmCertLen;                      /**< bytes in byKmCert */
    unsigned char byKmPriKey[2048];      /**< its private key, decrypted with the same password */
    int nKmPriKeyLen;                    /**< bytes in byKmPriKey */
    unsigned char byEncKmPriKey[2048];   /**< always empty: the dialog does not keep the encrypted key */
    int nEncKmPriKeyLen;                 /**< 0 */
    char szSubjectDN[260];               /**< subject distinguished name in UTF-8 (up to 259 bytes) */
    char szSubjectName[260];             /**< subject as the list shows it, EUC-KR */
    char szIssuerDN[1024];               /**< issuer distinguished name, EUC-KR */
    char szIssuerName[1024];             /**< issuer as the viewer shows it, EUC-KR */
    unsigned char byRandom[1024];        /**< random value of the private key, for identity checks */
    int nRandomLen;                      /**< bytes in byRandom */
    char szSignCertPath[260];            /**< media 1 and 2: file of the signing certificate */
    char szSignPriKeyPath[260];          /**< media 1 and 2: file of its key; given only with szSignCertPath */
    char szKmCertPath[260];              /**< media 1 and 2: file of the key-management certificate */
    char szKmPriKeyPath[260];            /**< media 1 and 2: file of its key */
    char szCertPolicy[256];              /**< certificate policy in UTF-8 (up to 255 bytes) */
    char szSerialNum[256];               /**< serial number */
    char szValidFrom[1024];              /**< first day of validity, "2026-01-31" */
    char szValidTo[1024];                /**< last day of validity, as the list shows it */
    char szMediaText1[512];              /**< media 3 and 4 only; empty in this version */
    char szMediaText2[260];              /**< media 3, 4 and 7 only; empty in this version */
} tagSELCERTINFO;

#pragma pack(pop)

SIGIL_LAYOUT(sizeof(int) == 4 && sizeof(long long) == 8);
SIGIL_LAYOUT(sizeof(tagINITOPT) == 272);
SIGIL_LAYOUT(offsetof(tagINITOPT, szLibraryFolder) == 8);
SIGIL_LAYOUT(offsetof(tagINITOPT, nLanguage) == 268);

SIGIL_LAYOUT(sizeof(tagLOADSELECTCERTOPTION) == 21570);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, szShortOption) == 12);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, szPolicyIDs) == 2316);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, szOption) == 4364);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, nReserved1) == 5144);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, szLogo) == 9260);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, nMessageFlags) == 11308);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, szReserved8) == 11313);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, byMemoryCert) == 13368);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, byMemorySignCert) == 13369);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, byMemorySignPriKey) == 17465);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, nMemorySignCertLen) == 21561);
SIGIL_LAYOUT(offsetof(tagLOADSELECTCERTOPTION, byCivicLogo) == 21569);

SIGIL_LAYOUT(sizeof(tagEXTRAOPTION) == 200003);
SIGIL_LAYOUT(offsetof(tagEXTRAOPTION, byReserved) == 200000);

SIGIL_LAYOUT(sizeof(tagSELCERTINFO) == 24380);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, bySignPriKey) == 4104);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, byEncSignPriKey) == 6156);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, byKmCert) == 8208);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, byKmPriKey) == 12308);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, byEncKmPriKey) == 14360);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, szSubjectDN) == 16412);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, szIssuerDN) == 16932);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, byRandom) == 18980);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, szSignCertPath) == 20008);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, szCertPolicy) == 21048);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, szValidFrom) == 21560);
SIGIL_LAYOUT(offsetof(tagSELCERTINFO, szMediaText1) == 23608);

#ifdef __cplusplus
extern "C" {
#endif

/** Makes the shared dialog and the Qt application, then runs the application's event loop.
 *
 *  Returns only when the event loop has ended while no ShowUserCert() was ever called: the first ShowUserCert() call
 *  keeps the loop going for the rest of the process, so that the closing of the dialog, the last window, does not end
 *  the service. On return the dialog and the application are gone.
 *  @param argc,argv the program's arguments; Qt takes its own options from them
 *  @return the last result of the event loop (QApplication::exec); 1000 when memory runs out */
SIGIL_EXPORT int ShowUserCertInit(int argc, char** argv);

/** Runs the shared dialog until the user has chosen a certificate or given up.
 *
 *  Call it from inside the event loop that ShowUserCertInit() runs. Before ShowUserCertInit() it never returns.
 *  A store that takes long to list is listed with the window open, and events of the program are handled in between.
 *  @param pReserved1,pReserved2,pReserved3 not read
 *  @param pInit    folder and language; must not be null
 *  @param pLoad    what to list; may be null
 *  @param pExtra   logo data; may be null
 *  @param pResult  caller's; filled only when 0 is returned
 *  @return 0 a certificate was chosen and unlocked; -1 the user cancelled or closed the dialog, or it is just listing for
 *          another call; 1000 memory ran out, and an open dialog was closed; 1001 @p pInit is null; any other value is
 *          the code of CLP_Initalize or CLP_SetType (see certlist.h) */
SIGIL_EXPORT int ShowUserCert(void* pReserved1, void* pReserved2, tagINITOPT* pInit, tagLOADSELECTCERTOPTION* pLoad,
    void* pReserved3, tagEXTRAOPTION* pExtra, tagSELCERTINFO* pResult);

/** As ShowUserCert(), with a dialog that lives only for this call. The host must have made a QApplication. */
SIGIL_EXPORT int ShowUserCert_T(tagINITOPT* pInit, tagLOADSELECTCERTOPTION* pLoad, void* pReserved,
    tagEXTRAOPTION* pExtra, tagSELCERTINFO* pResult);

#ifdef __cplusplus
}
#endif

#endif
