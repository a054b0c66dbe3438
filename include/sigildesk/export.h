// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Marks what a host may use. Everything else in the library has hidden visibility.
 */
#ifndef SIGILDESK_EXPORT_H
#define SIGILDESK_EXPORT_H

/** Of the interface. */
#define SIGIL_EXPORT __attribute__((visibility("default")))

#endif
