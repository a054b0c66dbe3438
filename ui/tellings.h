// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the selection dialog tells its user: one table of step, code and text.
 */
#pragma once

#include <sigildesk/codes.h>

#include <string>

namespace sigil {

/** What was being done when a code came up. */
enum class Step {
    TypePassword,
    ChooseRow,
    UseRow,
    DecryptKeys,
    UseKey,
    UseKmKey,
    FetchRandom,
    FetchRandomOfDisk,
    ListDrives,
    ListDisk,
    OpenHardDisk,
    TakePair, ///< the certificates and keys that an import yielded
    Import,   ///< the whole of finding a file and importing it
};

/** What the dialog finds out by itself, beside the results of <sigildesk/codes.h>. */
namespace code {
constexpr int missing = -2;
constexpr int tooLong = -3;
constexpr int expired = -4;
constexpr int anyOther = -5; ///< in the table: every code but 0 that has no line of its own for the step
} // namespace code

/** A line of the table. */
struct Telling {
    Step step;
    int code;
    const char* textKey;    ///< of a message text
    const char* captionKey; ///< of a UI text; null: no box, the text goes to the status line
};

/** What the user is told about a code; null: nothing. */
const Telling* tellingOf(Step step, int code);

/** What an operation ended with. */
struct Outcome {
    int code = SIGIL_SUCCESS;
    const Telling* telling = nullptr; ///< null: nothing is told
    std::string value = {};           ///< for the "%s" of the text, EUC-KR
    bool relisted = false;            ///< the entries are others now
};

/** The outcome of @p step that ended with @p code. */
inline Outcome outcomeOf(Step step, int code) { return {code, tellingOf(step, code)}; }

} // namespace sigil
