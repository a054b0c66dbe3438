// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Messages that are signed and enveloped.
 */
#pragma once

#include "toolkit/engine/messages/enveloped.h"
#include "toolkit/engine/messages/layout.h"
#include "toolkit/engine/messages/signed.h"

namespace toolkit {

/** A message with its content in place. */
Secret withContent(const MessageLayout& layout, View content);

/** A signed message in the form that OpenSSL verifies in a bounded time. Throws @p malformed when it is none. */
Secret verifiableForm(View signedMessage, int malformed);

/** The content of an enveloped message, and the signed message of a signed-and-enveloped one: a whole message as enveloped
 *  data, a SignedData under its own type, or the type of PKCS#7 (RFC 2315, section 11), whose signature may be
 *  encrypted or bare. Throws what openEnvelope() throws. */
Secret openMessage(
    const Library& library, const Message& message, const Certificate& certificate, const EnvelopeOpener& opener);

/** The signed message that was opened. Throws SIGIL_TK_CMS_TYPE when it is anything else. */
Message signedWithin(View opened);

} // namespace toolkit
