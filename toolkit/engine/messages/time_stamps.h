// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Time-stamp tokens (RFC 3161) inside signed messages.
 */
#pragma once

#include "toolkit/engine/base/library.h"
#include "toolkit/engine/messages/layout.h"

namespace toolkit {

/** @p message with a token for the signature of signer @p index; one that was there is replaced. Throws
 *  SIGIL_TK_CMS_NOBODY, SIGIL_TK_TSP_MALFORMED and, when the token stamps something else, SIGIL_TK_TSP_IMPRINT. */
MessageLayout withTimeStamp(const Library& library, const Message& message, int index, View token);

} // namespace toolkit
