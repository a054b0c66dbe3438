// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: the language file and the texts in it.

#include <sigildesk/codes.h>
#include <sigildesk/profile.h>
#include <sigildesk/util.h>

#include "foundation/ascii.h"
#include "foundation/environment.h"
#include "foundation/language_file.h"
#include "foundation/text_field.h"

#include <algorithm>
#include <string>

namespace {

int lookUp(const char* sectionName, char* langFile, char* key, int size, char* out)
{
    std::string section = sectionName;
    char none[] = "";
    char text[1024] = "";
    FileGetPrivateProfileString(section.data(), key, none, text, sizeof text, langFile);
    if (out && size > 0) {
        std::fill_n(out, size, '\0');
        sigil::limitedCopy(out, size, text);
    }
    return 0;
}

} // namespace

CUtil::CUtil()
    : CUtil(SIGIL_LANGUAGE_KOREAN, (sigil::environment().homeFolder() + "/HalvardSafe/Corvenna").data())
{
}

CUtil::CUtil(int language, char* folder)
    : m_szLangFile{}
{
    sigil::copyText(m_szLangFile, sigil::languageFile(sigil::textOf(folder), language, sigil::noLanguage));
}

CUtil::~CUtil() = default;

int CUtil::GetLanguageUIText(char* langFile, char* key, int size, char* out)
{
    return lookUp("UserInterface", langFile, key, size, out);
}

int CUtil::GetLanguageMessageText(char* langFile, char* key, int size, char* out)
{
    return lookUp("Message", langFile, key, size, out);
}

int CUtil::GetLanguageCode() { return 100; }
