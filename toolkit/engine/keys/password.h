// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Passwords in the character set that PKCS#12 asks for.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <string_view>
#include <vector>

namespace toolkit {

/** What the bytes of a password may mean, as UTF-8 and likeliest first: UTF-8; bytes that are not are CP949, the character set
 *  of Korean hosts, and after that Latin-1. Never empty. */
std::vector<Secret> readingsOf(std::string_view password);

/** The BMPStrings of RFC 7292, two zero bytes at the end, for each reading. An empty password was taken in two ways: as an
 *  empty text, which is written, and as none. */
std::vector<Secret> bmpForms(std::string_view password);

} // namespace toolkit
