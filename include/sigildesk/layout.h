// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Holds the records that cross the library's boundary to their layout, in C99 as in C++11: one definition serves both
 *  languages, and both compilers check it.
 */
#ifndef SIGILDESK_LAYOUT_H
#define SIGILDESK_LAYOUT_H

#include <stddef.h>

/** A condition on a record's size or on the place of one of its fields; without it the header does not compile. */
#ifdef __cplusplus
#define SIGIL_LAYOUT(condition) static_assert(condition, "the record crosses the library's boundary")
#else
/* C has the word since C11; compilers lend it to C99. */
#define SIGIL_LAYOUT(condition) __extension__ _Static_assert(condition, "the record crosses the library's boundary")
#endif

#endif
