// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Asks for the password of a PKCS#12 file.
 *
 *  Order of use: SetCaller, InitSetControl, exec(); when that returned 1, Password.
 */
#pragma once

#include "ui/language_texts.h"

#include <QDialog>
#include <memory>

class Ui_PasswordDialog;

class PasswordDialog : public QDialog {
    Q_OBJECT

public:
    explicit PasswordDialog(QWidget* parent = nullptr);
    /** Overwrites the password. */
    ~PasswordDialog() override;

    /** @param folder of the language files, at most 1023 characters */
    void SetCaller(int language, const char* folder);
    /** Texts in the caller's language. */
    void InitSetControl();
    /** The password in the local 8-bit encoding, at most 1023 bytes; empty before one was confirmed. */
    const char* Password() const { return m_szPassword; }

public slots: // NOLINT(readability-redundant-access-specifiers): the slots must be told apart
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();
    /** Escape cancels, Return confirms, every other key ends here. */
    void keyPressEvent(QKeyEvent* event) override;
    /** Leaves no password in the field, whichever way the dialog ends. */
    void done(int result) override;

private:
    void Confirm();
    /** The title, or in its place the hint that Caps Lock is on. */
    void ShowTitle(bool capsLock);
    void ShowMessage(const char* messageKey);

    int m_nLanguage = 0;
    char m_szLibraryFolder[1024] = {};
    char m_szPassword[1024] = {};
    sigil::LanguageTexts m_Texts;
    std::unique_ptr<Ui_PasswordDialog> m_Form;
};
