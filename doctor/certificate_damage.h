// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What is wrong with bytes that should be a certificate or a key file.
 */
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sigil {

/** Kinds of content that are met in the place of certificates and keys. */
enum class Content {
    Empty,
    Certificate,
    EncryptedKey,
    PlainKey,
    Pkcs12,
    Message,
    Request,
    RevocationList,
    Pem,   ///< with another label than the one wanted
    Text,  ///< a web page, for example
    Zeros, ///< what a disk leaves that was not written to the end
    Other,
};

/** The kind, as the outer elements tell it; damaged content has its kind as long as these are whole. */
Content contentOf(std::string_view bytes);

/** Where the elements of DER content are not whole: the first byte of the element that does not fit, or the first one
 *  behind the end. None when all of them fit. */
struct DamagedPlace {
    std::size_t offset;
    std::size_t claimed; ///< bytes that the element says it has; 0 for bytes behind the end or a broken head
    std::size_t left;    ///< bytes that there are
    bool behindTheEnd = false;

    /** The file ends before the whole of it does. */
    bool cutShort() const { return offset == 0 && claimed > left; }
};
std::optional<DamagedPlace> damagedPlace(std::string_view bytes);

} // namespace sigil
