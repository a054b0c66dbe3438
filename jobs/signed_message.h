// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Signed messages that are verified (CMS SignedData).
 */
#pragma once

#include "jobs/stamping.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/** What is verified. */
struct MessageInput {
    std::string messageFile, contentFile; ///< where it comes from, if it does from files
    std::string message, content;
    bool beside; ///< the content is the one beside the message
};

/** One signature of a message. */
struct Signature {
    std::string certificate; ///< DER
    std::time_t time;        ///< 0 when the message says none
};

/** A time stamp in a message. */
struct JudgedStamp {
    int code;         ///< how its verification went
    std::string said; ///< by the toolkit, about a failure
    Stamp stamp;
};

/** A message verified with one handle. */
class SignedMessage {
public:
    /** @param input  must outlive the message */
    SignedMessage(const Setting& setting, int toolkit, const MessageInput& input);

    /** Result of the verification; throws Failure for what is no signed message at all. */
    int code() const;
    int signers() const { return m_signers; }
    /** The content that stands beside the message is not the one in it: what was verified says nothing of it. */
    bool holdsOtherContent() const { return m_input.beside && content() != m_input.content; }
    std::string_view content() const { return view(m_content); }
    const Crypto& crypto() const { return m_crypto; }

    Signature signature(int index) const;
    /** Judges the time stamp of a signature; only the government library hands it out. None when there is none. */
    std::optional<JudgedStamp> stamp(int index) const;

private:
    void verifyWithEmptyFile();

    const MessageInput& m_input;
    Crypto m_crypto;
    Bytes m_message;
    Bytes m_content;
    int m_signers = 0;
    int m_code = 0;
};

} // namespace host
