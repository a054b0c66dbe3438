// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The summary tab of the certificate viewer.
 */
#pragma once

#include "ui/language_texts.h"

#include <sigildesk/records.h>

#include <QStringListModel>
#include <QWidget>
#include <memory>

class Ui_CertViewNormalForm;

class CertViewNormalForm : public QWidget {
    Q_OBJECT

public:
    explicit CertViewNormalForm(QWidget* parent = nullptr);
    ~CertViewNormalForm() override;

    /** What is shown; see CertViewMainDialog::SetCertificate. */
    void SetCertificate(const sigil::LanguageTexts& texts, void* processor, tagCERTINFO* entry);
    /** Captions, values, status and key usages. */
    void InitSetControl();
    /** Shows the entry's own status; the argument is deliberately not looked at. */
    void SetCertStatus(int status);
    /** Has the processor verify the signing certificate and shows the outcome. @return the processor's code */
    int VerifyCert();

private:
    void SetCaptions();
    void SetValues();
    void SetKeyUsages();
    void ShowStatus(const QString& text);
    void ShowFailure(const char* error);

    int m_nRv = 0;
    sigil::LanguageTexts m_Texts;
    tagCERTINFO* m_Entry = nullptr;
    void* m_hProcessor = nullptr;
    std::unique_ptr<Ui_CertViewNormalForm> m_Form;
    QStringListModel m_KeyUsages;
};
