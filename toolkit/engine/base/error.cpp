// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/error.h"

#include <openssl/err.h>

#include <algorithm>
#include <array>
#include <new>

namespace toolkit {
namespace {

constexpr std::string_view detailSeparator = ": ";

struct CodeText {
    int code;
    std::string_view text;
};

constexpr std::array codeTexts{
    CodeText{SIGIL_TK_OK, "Success"},
    CodeText{SIGIL_TK_KEY_MALFORMED, "The private key file is damaged"},
    CodeText{SIGIL_TK_KEY_UNSUPPORTED, "The private key is encrypted with an unsupported algorithm"},
    CodeText{SIGIL_TK_KEY_WRONG_PASSWORD, "The password does not open the private key"},
    CodeText{SIGIL_TK_KEY_MISMATCH, "The certificate and the private key do not belong together"},
    CodeText{SIGIL_TK_KEY_UNUSABLE, "The private key cannot be used"},
    CodeText{SIGIL_TK_KEY_OPTION, "Unknown key encryption algorithm"},
    CodeText{SIGIL_TK_ARGUMENT, "A required argument is missing or out of range"},
    CodeText{SIGIL_TK_CONTEXT, "The toolkit context is not initialised"},
    CodeText{SIGIL_TK_NO_MEMORY, "Out of memory"},
    CodeText{SIGIL_TK_BUFFER_TOO_SMALL, "The output buffer is too small"},
    CodeText{SIGIL_TK_INTERNAL, "The operation failed"},
    CodeText{SIGIL_TK_NO_PROVIDER, "An OpenSSL provider cannot be loaded"},
    CodeText{SIGIL_TK_OPTION, "Unknown option value"},
    CodeText{SIGIL_TK_ENCODING, "The input is not well encoded"},
    CodeText{SIGIL_TK_INDEX, "The index lies outside the list"},
    CodeText{SIGIL_TK_NAMES_DIFFER, "The distinguished names are different"},
    CodeText{SIGIL_TK_NOT_OFFERED, "The open toolkit does not offer this"},
    CodeText{SIGIL_TK_CERT_NOT_LOADED, "No certificate is loaded"},
    CodeText{SIGIL_TK_CERT_MALFORMED, "The certificate is damaged"},
    CodeText{SIGIL_TK_CRL_MALFORMED, "The revocation list is damaged"},
    CodeText{SIGIL_TK_VERIFY_FAILED, "The certificate does not verify"},
    CodeText{SIGIL_TK_VERIFY_NO_ISSUER, "No path to a trusted certificate was found"},
    CodeText{SIGIL_TK_VERIFY_EXPIRED, "The certificate or one of its issuers has expired"},
    CodeText{SIGIL_TK_VERIFY_NOT_YET, "The certificate or one of its issuers is not valid yet"},
    CodeText{SIGIL_TK_VERIFY_REVOKED, "The certificate or one of its issuers is revoked"},
    CodeText{SIGIL_TK_VERIFY_SIGNATURE, "A signature in the certification path is wrong"},
    CodeText{SIGIL_TK_VERIFY_USAGE, "The certificate is not meant for this usage"},
    CodeText{SIGIL_TK_VERIFY_POLICY, "The certification path is not valid under the wanted policies"},
    CodeText{SIGIL_TK_VERIFY_NO_CRL, "No usable revocation list was found"},
    CodeText{SIGIL_TK_FILE_NOT_FOUND, "The file or folder does not exist"},
    CodeText{SIGIL_TK_FILE_READ, "The file cannot be read"},
    CodeText{SIGIL_TK_FILE_WRITE, "The file cannot be written"},
    CodeText{SIGIL_TK_FILE_DELETE, "The file cannot be deleted"},
    CodeText{SIGIL_TK_MEDIUM, "The storage medium is not available"},
    CodeText{SIGIL_TK_ALGORITHM, "Unknown algorithm, or wrong key for it"},
    CodeText{SIGIL_TK_NO_SESSION_KEY, "No symmetric key is set"},
    CodeText{SIGIL_TK_DECRYPT, "The data cannot be decrypted"},
    CodeText{SIGIL_TK_SIGNATURE, "The signature is wrong"},
    CodeText{SIGIL_TK_MAC, "The message authentication code is wrong"},
    CodeText{SIGIL_TK_VID_NO_RANDOM, "The private key holds no random value"},
    CodeText{SIGIL_TK_VID_NO_DATA, "The certificate holds no identity data"},
    CodeText{SIGIL_TK_VID_MISMATCH, "The identity number does not belong to the certificate"},
    CodeText{SIGIL_TK_URL, "The address is not an ldap, http or https address"},
    CodeText{SIGIL_TK_FETCH, "The server cannot be reached"},
    CodeText{SIGIL_TK_NOT_FOUND, "The server has no such entry"},
    CodeText{SIGIL_TK_OCSP_MALFORMED, "The responder's answer is damaged"},
    CodeText{SIGIL_TK_OCSP_REFUSED, "The responder refuses to answer"},
    CodeText{SIGIL_TK_OCSP_SIGNER, "The responder's answer is not signed by whom it must be"},
    CodeText{SIGIL_TK_OCSP_NONCE, "The responder's answer belongs to another request"},
    CodeText{SIGIL_TK_OCSP_STALE, "The responder's answer is not current"},
    CodeText{SIGIL_TK_OCSP_NO_ANSWER, "The responder's answer is about another certificate"},
    CodeText{SIGIL_TK_OCSP_UNKNOWN, "The responder does not know the certificate"},
    CodeText{SIGIL_TK_IVS_MALFORMED, "The validation server's answer is damaged"},
    CodeText{SIGIL_TK_IVS_REFUSED, "The validation server refuses to answer"},
    CodeText{SIGIL_TK_IVS_SIGNER, "The validation server's answer is not signed with the given certificate"},
    CodeText{SIGIL_TK_IVS_OTHER_REQUEST, "The validation server's answer belongs to another request"},
    CodeText{SIGIL_TK_IVS_STALE, "The validation server's answer is not current"},
    CodeText{SIGIL_TK_IVS_NO_ANSWER, "The validation server's answer is about something else"},
    CodeText{SIGIL_TK_IVS_INVALID, "The validation server does not accept the certificate"},
    CodeText{SIGIL_TK_CMS_MALFORMED, "The message is damaged"},
    CodeText{SIGIL_TK_CMS_CONTENT, "The content is missing or not the one that was signed"},
    CodeText{SIGIL_TK_CMS_NOBODY, "The message has no such signer or recipient"},
    CodeText{SIGIL_TK_CMS_ATTRIBUTE, "The signer has no such attribute"},
    CodeText{SIGIL_TK_CMS_TYPE, "The message is of another type"},
    CodeText{SIGIL_TK_TSP_MALFORMED, "The time stamp is damaged"},
    CodeText{SIGIL_TK_TSP_REFUSED, "The time-stamping authority refuses"},
    CodeText{SIGIL_TK_TSP_SIGNER, "The time stamp is not signed by a time-stamping authority"},
    CodeText{SIGIL_TK_TSP_NONCE, "The time stamp belongs to another request"},
    CodeText{SIGIL_TK_TSP_IMPRINT, "The time stamp is about other data"},
    CodeText{SIGIL_TK_TSP_POLICY, "The time stamp was made under another policy"},
    CodeText{SIGIL_TK_TSP_TIME, "The time-stamping authority's certificate was not valid then"},
    CodeText{SIGIL_TK_CMP_MALFORMED, "The certification authority's answer is damaged"},
    CodeText{SIGIL_TK_CMP_REFUSED, "The certification authority refuses"},
    CodeText{SIGIL_TK_CMP_PROTECTION, "The certification authority's answer is not protected as it must be"},
    CodeText{
        SIGIL_TK_CMP_OTHER_CERT, "The certification authority hands out another certificate than was asked for"},
    CodeText{SIGIL_TK_CMP_WAITING, "The certification authority wants to be asked later"},
    CodeText{SIGIL_TK_TOKEN_ABSENT, "There is no such token"},
    CodeText{SIGIL_TK_TOKEN_PIN, "The PIN is wrong"},
    CodeText{SIGIL_TK_TOKEN_LOCKED, "The token's PIN is locked"},
    CodeText{SIGIL_TK_TOKEN_LOGIN, "The token wants a login first"},
    CodeText{SIGIL_TK_TOKEN_OBJECT, "The token has no such object"},
    CodeText{SIGIL_TK_TOKEN_FULL, "The token takes no more"},
    CodeText{SIGIL_TK_TOKEN_MECHANISM, "The token cannot do this"},
    CodeText{SIGIL_TK_TOKEN_SESSION, "No session with a token is open"},
    CodeText{SIGIL_TK_TOKEN_MODULE, "The token's module fails"},
    CodeText{SIGIL_TK_PFX_MALFORMED, "The PKCS#12 file is damaged"},
    CodeText{SIGIL_TK_PFX_UNSUPPORTED, "The PKCS#12 file is protected with an unsupported algorithm"},
    CodeText{SIGIL_TK_PFX_NO_PAIR, "The PKCS#12 file holds no certificate with its private key"},
    CodeText{SIGIL_TK_PFX_NO_MAC, "The PKCS#12 file has no integrity protection"},
    CodeText{SIGIL_TK_PFX_WRONG_PASSWORD, "The password does not open the PKCS#12 file"},
};

std::string sentence(int code, std::string_view detail)
{
    std::string text(codeText(code));
    if (!detail.empty())
        text.append(detailSeparator).append(detail);
    return text;
}

} // namespace

std::string_view codeText(int code)
{
    for (const CodeText& entry : codeTexts)
        if (entry.code == code)
            return entry.text;
    return {};
}

Error::Error(int code, std::string_view detail, unsigned long reason)
    : std::runtime_error(sentence(code, detail))
    , m_code(code)
    , m_reason(reason)
{
}

std::string_view Error::detail() const
{
    std::string_view text = what();
    text.remove_prefix(codeText(m_code).size());
    return text.substr(std::min(text.size(), detailSeparator.size()));
}

void requireMemory()
{
    // What OpenSSL says of a failed allocation lies somewhere in its queue; the allocator itself leaves this.
    if (errno == ENOMEM)
        throw std::bad_alloc();
}

void fail(int code, std::string_view detail)
{
    requireMemory();
    throw Error(code, detail, ERR_peek_last_error());
}

void requireMemory(const Error& error)
{
    if (error.code() == SIGIL_TK_NO_MEMORY)
        throw Error(error);
}

void failAs(int code, const Error& error) { throw Error(code, error.detail(), error.reason()); }

// Only a queue that is not empty, which is rare, can be marked.
ErrorScope::ErrorScope()
    : m_hostError(ERR_set_mark() ? ERR_peek_last_error() : 0)
{
}

ErrorScope::~ErrorScope() { ERR_pop_to_mark(); }

std::string_view ErrorScope::reasonOf(const Error& error) const
{
    const char* const reason = error.reason() == m_hostError ? nullptr : ERR_reason_error_string(error.reason());
    return reason ? std::string_view(reason) : std::string_view();
}

void ErrorText::set(std::initializer_list<std::string_view> parts) noexcept
{
    m_length = 0;
    for (const std::string_view part : parts)
        m_length += part.copy(m_text.data() + m_length, m_text.size() - m_length);
}

} // namespace toolkit
