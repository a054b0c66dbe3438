// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/* The codes and options are for hosts in C too. */

#include <sigildesk/open_toolkit.h>

int codeOfWrongPasswordInC(void);

int codeOfWrongPasswordInC(void) { return SIGIL_TK_KEY_WRONG_PASSWORD; }
