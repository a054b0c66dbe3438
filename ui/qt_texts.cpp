// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/qt_texts.h"

#include <sigildesk/codes.h>

#include <QLibraryInfo>

namespace sigil {

namespace {

QString translationsFolder()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
}

} // namespace

QtTexts::QtTexts(int language)
{
    if (language == SIGIL_LANGUAGE_KOREAN)
        (void)m_translator.load("qtbase_ko", translationsFolder());
}

QString QtTexts::operator()(const char* context, const char* source) const
{
    const QString text = m_translator.translate(context, source);
    return text.isEmpty() ? QString(source) : text;
}

} // namespace sigil
