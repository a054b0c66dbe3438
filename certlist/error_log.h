/** @file
 *  Records of what went wrong, in the error log that the settings name.
 */
#pragma once

#include <sigildesk/binary.h>
#include <sigildesk/util.h>

namespace sigil {

/** The toolkit's words on its last failure; @p out stays as it is when the toolkit has none.
 *  @return result of HV_GetErrInfo */
int toolkitErrorText(void* facade, CBinary& out);

/** Error log of one loader. Without a file nothing is written; the error text is kept all the same. */
class ErrorLog {
public:
    /** @param facade  handle whose error text goes into the records
     *  @param file    path of the log (at most 259 bytes); null or empty leaves the path as it is */
    void bind(void* facade, const char* file);

    /** Records a failed toolkit call with the toolkit's text, which becomes the error text; none when it has none.
     *  @param where        the failing function, "CLoadDISK::ParsingCert()"
     *  @param errorName    null for none
     *  @param callee       the call that failed, "CertLoad()"
     *  @param toolkitCode  what it returned
     *  @param result       what the failing function is to return
     *  @return @p result */
    int failed(const char* where, const char* errorName, const char* callee, int toolkitCode, int result);

    /** Records a refusal that no toolkit call is behind. @p message becomes the error text unless it is null.
     *  @return @p result */
    int refused(const char* where, const char* errorName, const char* callee, int result, const char* message);

    /** The last error text. */
    CBinary& text() { return m_text; }

private:
    void write(const char* where, const char* errorName, const char* callee, int code, const char* message);

    void* m_facade = nullptr;
    char m_file[260] = {};
    CBinary m_text;
    CUtil m_util;
};

} // namespace sigil
