// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the command says to people, in both of its languages. All of it is UTF-8.
 */
#pragma once

#include <sigildesk/codes.h>

#include <string>
#include <string_view>
#include <vector>

namespace host {

/** The language of names and messages, as the library counts them. */
enum class Language { Korean = SIGIL_LANGUAGE_KOREAN, English = SIGIL_LANGUAGE_ENGLISH };

/** One text in both languages. */
struct Words {
    const char* english;
    const char* korean;

    const char* in(Language language) const { return language == Language::Korean ? korean : english; }
};

/** @p text with each "{}" replaced by the next of @p values. */
std::string filled(std::string_view text, const std::vector<std::string>& values);

} // namespace host
