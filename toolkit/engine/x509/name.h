// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Distinguished names from text.
 */
#pragma once

#include "toolkit/engine/base/handles.h"

#include <string_view>

namespace toolkit {

using NameHandle = Handle<X509_NAME, X509_NAME_free>;

/** The name that a text of the form of nameText() stands for: "cn=...,ou=...,o=...,c=KR", most specific first; a text that
 *  begins with the country is read in its own order. A comma belongs to a value unless "type=" follows it.
 *  @param text UTF-8 or CP949
 *  Throws SIGIL_TK_ARGUMENT for a text that is none, an unknown type and a value that its type does not allow. */
NameHandle nameFromText(std::string_view text);

} // namespace toolkit
