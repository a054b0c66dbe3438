// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/error_log.h"

#include "facade/toolkit_bytes.h"
#include "foundation/text_field.h"

#include <sigildesk/crypto.h>

#include <cstring>

namespace sigil {

int toolkitErrorText(void* facade, CBinary& out)
{
    constexpr int capacity = 2048;
    char text[capacity + 1] = {}; // one more: a text of the full capacity comes without a terminator
    const int rc = HV_GetErrInfo(facade, capacity, text);
    if (rc == 0)
        out.set(text, static_cast<int>(std::strlen(text)));
    return rc;
}

void ErrorLog::bind(void* facade, const char* file)
{
    m_facade = facade;
    if (file && *file)
        copyText(m_file, file);
}

int ErrorLog::failed(const char* where, const char* errorName, const char* callee, int toolkitCode, int result)
{
    m_text.empty(); // a toolkit without words must not be given those of an earlier failure
    toolkitErrorText(m_facade, m_text);
    write(where, errorName, callee, toolkitCode, m_text.toString());
    return isShortage(toolkitCode) ? static_cast<int>(SIGIL_NO_MEMORY) : result;
}

int ErrorLog::refused(const char* where, const char* errorName, const char* callee, int result, const char* message)
{
    if (message)
        m_text = const_cast<char*>(message);
    write(where, errorName, callee, result, message);
    return result;
}

void ErrorLog::write(const char* where, const char* errorName, const char* callee, int code, const char* message)
{
    const auto text = [](const char* s) { return const_cast<char*>(s); }; // the logger only reads them
    m_util.SetLogInfo(m_file, text(where), text(errorName), text(callee), code, text(message));
}

} // namespace sigil
