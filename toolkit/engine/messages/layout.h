// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Where a message (RFC 5652) keeps its content. The content may be larger than memory, so it never stands in the structure
 *  that OpenSSL parses: reading takes it out of the message, writing puts it between the bytes around it.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/messages/input.h"

#include <optional>
#include <string>

namespace toolkit {

/** The fields of a message as they are encoded, without the content itself. */
struct MessageLayout {
    std::string type;  ///< of the ContentInfo, dotted
    Bytes before;      ///< fields before the one that holds the content; a signed message names each hash once
    Bytes holder;      ///< fields of that one, without the content
    Bytes after;       ///< fields behind it
    std::string holds; ///< type of the content, dotted

    /** The whole message with an empty place for the content: what OpenSSL reads. */
    Bytes skeleton() const;
    /** The bytes around a content of @p size bytes; @return those before it, those behind it are `after`. */
    Bytes prefix(std::uint64_t size) const;
};

/** A message that was read. */
class Message {
public:
    /** BER or DER. Throws SIGIL_TK_CMS_MALFORMED for anything but one message, also for bytes behind it, and
     *  SIGIL_TK_CMS_TYPE for a type of message that has no content of these forms. */
    explicit Message(Input input);

    const MessageLayout& layout() const { return m_layout; }
    /** Throws SIGIL_TK_CMS_TYPE for another type. */
    const Message& require(const char* type) const;
    bool hasContent() const { return m_content.has_value(); }
    /** Hands out the content in pieces. */
    void content(const Sink& take) const;

private:
    Input m_input;
    MessageLayout m_layout;
    std::optional<std::uint64_t> m_content; ///< where its element begins
};

/** The layout of an encoded message that has no content. */
MessageLayout layoutOf(View der);

} // namespace toolkit
