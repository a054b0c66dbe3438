// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a context keeps of messages between calls.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace toolkit {

/** One signer of a message whose signature was verified. */
struct SignerRecord {
    Bytes certificate;
    std::optional<std::time_t> signingTime;
    Bytes signature;
    Bytes timeStampToken; ///< empty when there is none
};

/** A message that was verified, for the getters. */
struct VerifiedMessage {
    std::vector<SignerRecord> signers; ///< in the order of the message
    std::vector<Bytes> others;         ///< certificates in the message that are no signer's
};

/** A message that lacks its signature, which is made elsewhere. */
struct PendingMessage {
    Bytes skeleton;
    std::optional<Bytes> content; ///< nothing: a detached message
    Bytes certificate;
};

/** A recipient as a message names it. */
struct Recipient {
    std::string issuer;       ///< as in certificates; empty when a key identifier names it
    std::string serialNumber; ///< or the key identifier; hexadecimal
    std::string algorithm;    ///< of the key's encryption
};

/** What a context knows about messages. */
struct MessageState {
    int options = 0; ///< SigilToolkitMessageOption bits of CMS_SetOption
    VerifiedMessage verified;
    std::optional<PendingMessage> pending;
    std::vector<Recipient> recipients; ///< of the message that was looked into last
};

} // namespace toolkit
