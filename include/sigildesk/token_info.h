// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The record of PKCS11GetTokenInfo. The header compiles as C and as C++11.
 */
#ifndef SIGILDESK_TOKEN_INFO_H
#define SIGILDESK_TOKEN_INFO_H

#include <sigildesk/layout.h>

/** What a token says of itself: CK_TOKEN_INFO of PKCS#11 2.40 byte for byte, 208 bytes on 64-bit machines. Texts are UTF-8,
 *  filled up with blanks and not terminated. Of the numbers, ~0 says that the token does not tell, and of the greatest
 *  numbers of sessions 0 says that there is no limit. */
typedef struct PKCS11_TOKEN_INFO {
    unsigned char label[32];          /**< the name that it was given when it was initialised */
    unsigned char manufacturerID[32]; /**< its maker */
    unsigned char model[16];          /**< its model */
    unsigned char serialNumber[16];   /**< its serial number, in characters */
    unsigned long flags; /**< CKF_ bits: 0x2 is write-protected, 0x4 wants a login before private objects are
                                             seen or made, 0x8 has a user PIN, 0x100 takes the PIN on a reader of its
                                             own, 0x400 is initialised, 0x10000 a wrong user PIN was tried, 0x20000 the
                                             next wrong one locks it, 0x40000 it is locked */
    unsigned long ulMaxSessionCount;    /**< sessions that one program may have open */
    unsigned long ulSessionCount;       /**< sessions that this program has open */
    unsigned long ulMaxRwSessionCount;  /**< of those, the ones that may write */
    unsigned long ulRwSessionCount;     /**< writing sessions that this program has open */
    unsigned long ulMaxPinLen;          /**< bytes of the longest PIN */
    unsigned long ulMinPinLen;          /**< bytes of the shortest PIN */
    unsigned long ulTotalPublicMemory;  /**< bytes for objects that everybody sees */
    unsigned long ulFreePublicMemory;   /**< bytes of those that are free */
    unsigned long ulTotalPrivateMemory; /**< bytes for objects that are seen after a login */
    unsigned long ulFreePrivateMemory;  /**< bytes of those that are free */
    struct {
        unsigned char major;   /**< the number before the point */
        unsigned char minor;   /**< hundredths behind it */
    } hardwareVersion,         /**< version of the device */
        firmwareVersion;       /**< version of the program in it */
    unsigned char utcTime[16]; /**< "YYYYMMDDhhmmss00" in UTC, when 0x40 is among the flags */
} PKCS11_TOKEN_INFO;

SIGIL_LAYOUT(sizeof(PKCS11_TOKEN_INFO) == 208);
SIGIL_LAYOUT(offsetof(PKCS11_TOKEN_INFO, flags) == 96);
SIGIL_LAYOUT(offsetof(PKCS11_TOKEN_INFO, ulTotalPublicMemory) == 152);
SIGIL_LAYOUT(offsetof(PKCS11_TOKEN_INFO, hardwareVersion) == 184);
SIGIL_LAYOUT(offsetof(PKCS11_TOKEN_INFO, firmwareVersion) == 186);
SIGIL_LAYOUT(offsetof(PKCS11_TOKEN_INFO, utcTime) == 188);

#endif
