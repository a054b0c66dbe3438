// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Base64 (RFC 4648) and PEM (RFC 7468).
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <string>
#include <string_view>

namespace toolkit {

/** Base64 without line breaks. */
std::string base64(View bytes);
/** Strict but for white space, which is skipped. Throws SIGIL_TK_ENCODING. */
Secret fromBase64(View text);

/** @param type a SigilToolkitPemType; throws SIGIL_TK_OPTION for another. */
std::string pemEncode(int type, View der);
/** The first PEM block of @p text, whatever its label. Throws SIGIL_TK_ENCODING. */
Secret pemDecode(View text);

/** DER of bytes that are DER or PEM. Throws @p code when a PEM marker is there but no block. */
Bytes derOf(View bytes, int code);

} // namespace toolkit
