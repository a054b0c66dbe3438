// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The rule that chooses a language's files in the library folder.
 */
#pragma once

#include <sigildesk/codes.h>

#include <string>
#include <string_view>

namespace sigil {

/** Hosts may ask for any language, and only two have files. What stands in for another differs between the layers,
 *  deliberately: English in the dialogs, Korean in the certificate list, none in CUtil. */
constexpr int noLanguage = 0;

/** How the files of a language are marked, "KOR" or "ENG"; of @p standIn when @p language has none; empty for none. */
constexpr std::string_view languageMark(int language, int standIn)
{
    for (int each : {language, standIn}) {
        if (each == SIGIL_LANGUAGE_KOREAN)
            return "KOR";
        if (each == SIGIL_LANGUAGE_ENGLISH)
            return "ENG";
    }
    return {};
}

/** Path of the language file, "FOLDER/KOR.ini" or "FOLDER/ENG.ini"; empty for none. */
inline std::string languageFile(std::string_view folder, int language, int standIn)
{
    const std::string_view mark = languageMark(language, standIn);
    return mark.empty() ? std::string() : std::string(folder).append("/").append(mark).append(".ini");
}

} // namespace sigil
