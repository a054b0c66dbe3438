// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Qt's own texts in the language of a dialog, whichever translators the host has installed.
 */
#pragma once

#include <QString>
#include <QTranslator>

namespace sigil {

class QtTexts {
public:
    /** @param language 1 Korean, from the translations that Qt is shipped with, else English, as in Qt's sources */
    explicit QtTexts(int language);

    /** @p source as Qt looks it up in @p context; itself without a translation. */
    QString operator()(const char* context, const char* source) const;

private:
    QTranslator m_translator; ///< never installed: translators of an application are the host's
};

} // namespace sigil
