/** @file
 *  Passwords in the character set that PKCS#12 asks for.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <string_view>

namespace toolkit {

/** A password as UTF-8, from which OpenSSL makes the BMPString of RFC 7292. Bytes that are not UTF-8 are taken as CP949,
 *  the character set of Korean hosts, and else as Latin-1 (which OpenSSL does by itself). */
Secret utf8Password(std::string_view password);

} // namespace toolkit
