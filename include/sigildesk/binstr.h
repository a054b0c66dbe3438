// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The byte string in which the cryptographic toolkits take and return data.
 *
 *  Ownership: the memory behind a filled record belongs to the toolkit that filled it. Create a record with
 *  HV_BINSTR_Create, fill it with HV_BINSTR_SetData (the bytes are copied) or as an output of a façade function, and
 *  give it back with HV_BINSTR_Delete on the same handle. Never free the data pointer yourself.
 */
#ifndef SIGILDESK_BINSTR_H
#define SIGILDESK_BINSTR_H

#include <sigildesk/layout.h>

/** Toolkit byte string: 16 bytes, so arrays of it have a stride of 16. */
typedef struct BINSTR {
    unsigned char* pData; /**< bytes in toolkit memory, or null when empty */
    int nLength;          /**< number of bytes, 0 when empty */
} BINSTR;

SIGIL_LAYOUT(sizeof(BINSTR) == 16);
SIGIL_LAYOUT(offsetof(BINSTR, nLength) == 8);

#endif
