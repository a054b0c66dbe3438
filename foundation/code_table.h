// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Every result code in words: those of the façade, the certificate list, the dialogs and the open toolkit. Whoever adds a
 *  code adds its row.
 */
#pragma once

#include <span>

namespace sigil {

struct CodeWords {
    const char* sentence; ///< what happened; UTF-8, one sentence
    const char* advice;   ///< what to do about it; UTF-8
};

struct CodeRow {
    int code;
    const char* name;  ///< as in <sigildesk/codes.h> or <sigildesk/open_toolkit.h>
    const char* layer; ///< who answers it: "all", "facade", "list", "dialogs", "toolkit", "c"
    CodeWords english;
    CodeWords korean;
};

/** All codes, by number. */
std::span<const CodeRow> codeRows();

} // namespace sigil
