// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Small helpers for calls of the façade.
 */
#pragma once

#include "certlist/bytes.h"
#include "facade/toolkit_bytes.h"

#include <sigildesk/codes.h>
#include <sigildesk/crypto.h>

#include <functional>
#include <initializer_list>
#include <string_view>

namespace sigil {

inline std::string_view bytesOf(const ToolkitBytes& bytes)
{
    return bytes.empty() ? std::string_view()
                         : std::string_view(bytes.data(), static_cast<std::size_t>(bytes.size()));
}

/** Copies @p bytes into toolkit memory. @return result of HV_BINSTR_SetData; 1001 for no bytes */
inline int fill(ToolkitBytes& record, std::string_view bytes)
{
    return record.set(bytes.data(), static_cast<int>(bytes.size()));
}

/** Writes a file through the toolkit. @return 0; 1001 nothing to write; a toolkit code */
inline int writeFile(void* facade, const CBinary& data, char* path)
{
    if (bytesOf(data).empty())
        return SIGIL_BAD_ARGUMENT;
    ToolkitBytes bytes(facade, data.m_pData, data.m_nLength);
    return MediaDiskWriteFile(facade, path, bytes.get());
}

/** Unloads the toolkit's current certificate on every path, also when none could be loaded. */
class CertificateUnloader {
public:
    explicit CertificateUnloader(void* facade)
        : m_facade(facade)
    {
    }
    ~CertificateUnloader() { CertUnLoad(m_facade); }
    CertificateUnloader(const CertificateUnloader&) = delete;
    CertificateUnloader& operator=(const CertificateUnloader&) = delete;

private:
    void* m_facade;
};

/** A call of the façade with its name in the log. */
struct NamedCall {
    const char* name;
    std::function<int()> call;
};

/** What the first failing call returned, 0 with a null name when all went well. */
struct CallResult {
    int code;
    const char* name;
};

/** Makes the calls in order until one fails. */
inline CallResult callAll(std::initializer_list<NamedCall> calls)
{
    for (const NamedCall& step : calls)
        if (const int rc = step.call(); rc != 0)
            return {rc, step.name};
    return {0, nullptr};
}

} // namespace sigil
