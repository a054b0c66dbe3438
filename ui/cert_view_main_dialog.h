// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Shows one certificate: a summary, its fields, and whether it can be verified.
 */
#pragma once

#include "ui/language_texts.h"

#include <sigildesk/records.h>

#include <QDialog>
#include <memory>

class CertViewDetailForm;
class CertViewNormalForm;
class Ui_CertViewMainDialog;

class CertViewMainDialog : public QDialog {
    Q_OBJECT

public:
    explicit CertViewMainDialog(QWidget* parent = nullptr);
    ~CertViewMainDialog() override;

    /** What is shown; before InitSetControl.
     *  @param texts     in the language of the caller
     *  @param processor verifies the certificate; stays the caller's
     *  @param entry     stays the caller's and must outlive the dialog; verifying sets its status */
    void SetCertificate(const sigil::LanguageTexts& texts, void* processor, tagCERTINFO* entry);
    /** Texts, and both tabs. */
    void InitSetControl();
    /** What the processor answered to the last verification, 0 before the first. */
    int LastResult() const { return m_nRv; }

public slots: // NOLINT(readability-redundant-access-specifiers): the slots must be told apart
    void on_pushButton_verify_clicked();
    void on_pushButton_ok_clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    /** Escape and Return close, every other key ends here. */
    void keyPressEvent(QKeyEvent* event) override;

private:
    CertViewNormalForm* m_NormalForm = nullptr; ///< owned by its tab
    CertViewDetailForm* m_DetailForm = nullptr; ///< owned by its tab
    int m_nRv = 0;
    void* m_hProcessor = nullptr;
    tagCERTINFO* m_Entry = nullptr;
    sigil::LanguageTexts m_Texts;
    std::unique_ptr<Ui_CertViewMainDialog> m_Form;
};
