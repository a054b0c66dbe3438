// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/korean_font.h"

#include "ui/language_texts.h"

#include <sigildesk/codes.h>

#include <QFontDatabase>
#include <QStringList>

namespace sigil {

namespace {

bool hasKoreanFont()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return !QFontDatabase().families(QFontDatabase::Korean).isEmpty();
#else
    return !QFontDatabase::families(QFontDatabase::Korean).isEmpty();
#endif
}

} // namespace

int readableLanguage(int language)
{
    return language == SIGIL_LANGUAGE_KOREAN && !hasKoreanFont() ? SIGIL_LANGUAGE_ENGLISH : language;
}

QString withReason(const QString& title, int language, const LanguageTexts& texts)
{
    return readableLanguage(language) == language ? title : title + " - " + texts.ui("DLG_NOKOREANFONT");
}

} // namespace sigil
