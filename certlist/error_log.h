// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Records of what went wrong, in the error log that the settings name.
 */
#pragma once

#include "foundation/text_field.h"

#include <sigildesk/binary.h>
#include <sigildesk/util.h>

namespace sigil {

/** The toolkit's words on its last failure; @p out stays as it is when the toolkit has none.
 *  @return result of HV_GetErrInfo */
int toolkitErrorText(void* facade, CBinary& out);

/** Why a candidate is left out of the list. */
enum class Drop {
    None,
    FileNotRead,  ///< the toolkit could not read a file
    NotAFile,     ///< what lies in a file's place is none
    FileTooLarge, ///< for an entry
    NoKmPair,     ///< a key-management pair is wanted
    NotACertificate,
    FieldNotRead, ///< a field of the certificate
    OtherFamily,
    OtherSubject,
    OtherSerial,
    OtherPolicy,
    Expired,
};

/** What a candidate met with last. */
struct Reason {
    Drop drop = Drop::None;
    const char* what = nullptr; ///< the file's path in the entry, or the toolkit call that failed; null for none
    int code = 0;               ///< what the toolkit answered
};

/** Error log of one loader. Without a file nothing is written; the error text is kept all the same. */
class ErrorLog {
public:
    /** @param facade  handle whose error text goes into the records
     *  @param file    path of the log, cut to pathCapacity; null or empty leaves the path as it is */
    void bind(void* facade, const char* file);

    /** Records a failed toolkit call with the toolkit's text, which becomes the error text; none when it has none.
     *  @param where        the failing function, "CLoadDISK::ParsingCert()"
     *  @param errorName    null for none
     *  @param callee       the call that failed, "CertLoad()"
     *  @param toolkitCode  what it returned
     *  @param result       what the failing function is to return
     *  @return @p result; 1000 when the toolkit lacked memory, which is no refusal */
    int failed(const char* where, const char* errorName, const char* callee, int toolkitCode, int result);

    /** Records a refusal that no toolkit call is behind. @p message becomes the error text unless it is null.
     *  @return @p result */
    int refused(const char* where, const char* errorName, const char* callee, int result, const char* message);

    /** Notes why the candidate at hand is refused. @return @p result */
    int because(Drop drop, const char* what, int code, int result)
    {
        m_reason = {drop, what, code};
        return result;
    }
    const Reason& reason() const { return m_reason; }
    /** Another candidate is at hand, of which nothing was said yet. */
    void begin() { m_reason = {}; }

    /** The last error text. */
    CBinary& text() { return m_text; }

private:
    void write(const char* where, const char* errorName, const char* callee, int code, const char* message);

    void* m_facade = nullptr;
    char m_file[pathCapacity] = {};
    CBinary m_text;
    Reason m_reason;
    CUtil m_util{0, nullptr}; ///< without a language file
};

} // namespace sigil
