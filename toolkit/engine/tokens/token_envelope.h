// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Enveloped messages for the holder of a key on a token: the token opens the content's key, and nothing else.
 */
#pragma once

#include "toolkit/engine/messages/enveloped.h"
#include "toolkit/engine/tokens/token_keys.h"

namespace toolkit {

/** What a message holds for one of its recipients (RFC 5652, section 6.2; RFC 5753), all of it as it was encoded. */
struct RecipientKey {
    View algorithm;    ///< AlgorithmIdentifier of the key's encryption or agreement
    View encryptedKey; ///< octets
    View originator;   ///< the sender's public point; empty for key transport
    View userKeying;   ///< octets that both sides mix in; often empty
    View content;      ///< EncryptedContentInfo
};

/** Finds a recipient in a DER message. Throws SIGIL_TK_CMS_MALFORMED.
 *  @param der must outlive the answer */
RecipientKey recipientKeyIn(View der, const RecipientPlace& place);

/** Opens messages with the key; both must outlive what it makes. */
EnvelopeOpener tokenOpener(const TokenKey& key);

} // namespace toolkit
