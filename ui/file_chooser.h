// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Asks for a PKCS#12 file.
 */
#pragma once

#include "ui/qt_texts.h"

#include <QFileDialog>

namespace sigil {

class LanguageTexts;

/** Qt's file dialog, in the language of the dialog that opens it: not in the application's, as Qt would have it, nor in
 *  the desktop's, which its own file dialog speaks. */
class FileChooser : public QFileDialog {
public:
    /** @param texts must outlive the chooser */
    FileChooser(QWidget* parent, int language, const LanguageTexts& texts);

    /** @return the path of the chosen file; empty when none was chosen */
    QString choose();

    /** Tells by itself that there is no file of the typed name: Qt would do so in the language of the application. */
    void accept() override;

private:
    void translateControls();

    const LanguageTexts& m_texts;
    QtTexts m_qtTexts;
};

} // namespace sigil
