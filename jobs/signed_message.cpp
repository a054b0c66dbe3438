// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/signed_message.h"

#include "jobs/failure.h"

#include <sigildesk/open_toolkit.h>

#include <array>

namespace host {

SignedMessage::SignedMessage(const Setting& setting, int toolkit, const MessageInput& input)
    : m_input(input)
    , m_crypto(setting, toolkit)
    , m_message(m_crypto.handle())
    , m_content(m_crypto.handle())
{
    set(m_crypto, m_message, input.message);
    set(m_crypto, m_content, input.content);
    m_code = CMSProcessSignedData(
        m_crypto.handle(), SIGIL_TK_CHECK_SIGNATURES, m_message.get(), m_content.get(), &m_signers);
    if (m_code == SIGIL_TK_CMS_CONTENT && !input.contentFile.empty() && input.content.empty())
        verifyWithEmptyFile();
}

int SignedMessage::code() const
{
    if (m_code != SIGIL_SUCCESS && exitOf(m_code) != no)
        m_crypto.check(m_code);
    return m_code;
}

Signature SignedMessage::signature(int index) const
{
    std::array<char, 64> time{};
    Bytes certificate(m_crypto.handle());
    m_crypto.check(CMSGetSignerCert(m_crypto.handle(), index, certificate.get(), time.data()));
    return {std::string(view(certificate)), time[0] ? timeOf(time.data()) : 0};
}

std::optional<JudgedStamp> SignedMessage::stamp(int index) const
{
    Bytes token(m_crypto.handle());
    Bytes signature(m_crypto.handle());
    Bytes authority(m_crypto.handle());
    if (CMSGetTimeStampToken1(m_crypto.handle(), index, token.get()) != SIGIL_SUCCESS)
        return {};
    int code = CMSGetTBTData(m_crypto.handle(), index, signature.get());
    if (code == SIGIL_SUCCESS)
        code = TSPVerifyToken2(m_crypto.handle(), nullptr, signature.get(), token.get(), authority.get());
    const std::string said = code == SIGIL_SUCCESS ? std::string() : m_crypto.errorText();
    return JudgedStamp{code, said, stampOf(m_crypto, token)};
}

/** An empty record means no content at all; a file can be empty. */
void SignedMessage::verifyWithEmptyFile()
{
    std::string content = m_input.contentFile;
    std::string message = m_input.messageFile;
    m_code = CMSProcessSignedDataFile(m_crypto.handle(), content.data(), message.data(), nullptr, nullptr);
    for (m_signers = 0; m_code == SIGIL_SUCCESS; ++m_signers) {
        Bytes certificate(m_crypto.handle());
        if (CMSGetSignerCert(m_crypto.handle(), m_signers, certificate.get(), nullptr) != SIGIL_SUCCESS)
            return;
    }
}

} // namespace host
