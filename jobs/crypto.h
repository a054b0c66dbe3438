// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The façade's handle for as long as it is used, with failures as exceptions.
 */
#pragma once

#include "jobs/setting.h"

#include "facade/toolkit_bytes.h"
#include "foundation/secret.h"

#include <sigildesk/crypto.h>

#include <string>
#include <string_view>

namespace host {

/** Bytes in toolkit memory; wiped when they go. */
using Bytes = sigil::ToolkitBytes;

inline std::string_view view(const Bytes& bytes)
{
    return bytes.empty() ? std::string_view()
                         : std::string_view(bytes.data(), static_cast<std::size_t>(bytes.size()));
}

class Crypto {
public:
    /** Binds the setting's toolkit, or @p toolkit. Throws Failure when it cannot be loaded. */
    explicit Crypto(const Setting& setting);
    Crypto(const Setting& setting, int toolkit);
    ~Crypto();
    Crypto(const Crypto&) = delete;
    Crypto& operator=(const Crypto&) = delete;

    void* handle() const { return m_handle; }
    /** Throws Failure for every result but 0. */
    void check(int code) const;
    /** What the toolkit said about its last failure, in UTF-8. */
    std::string errorText() const;

private:
    void* m_handle = nullptr;
};

/** Fills bytes of the toolkit. */
void set(const Crypto& crypto, Bytes& bytes, std::string_view content);

/** Several certificates in one byte string, in the form of the setting's toolkit, and out of one. */
void setList(
    const Setting& setting, const Crypto& crypto, const std::vector<std::string>& certificates, Bytes& list);
std::vector<std::string> itemsOf(const Setting& setting, const Crypto& crypto, Bytes& list);

/** The certificate in DER, whether it came as DER or as PEM. Throws Failure for what is neither. */
std::string derOf(const Crypto& crypto, std::string_view content);

/** All certificates of a file that holds one in DER or several in PEM. */
std::vector<std::string> allDer(const Crypto& crypto, std::string_view content);

/** A PEM block (RFC 7468). The text may be a key: it wipes itself. */
sigil::SecretBytes pem(const Crypto& crypto, const char* label, Bytes& content);

/** Digest of @p content in hexadecimal, "AB:CD:…". */
std::string fingerprint(const Crypto& crypto, int hash, std::string_view content);

} // namespace host
