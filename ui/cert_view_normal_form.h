/** @file
 *  The summary tab of the certificate viewer.
 */
#pragma once

#include "foundation/text_field.h"

#include <sigildesk/records.h>
#include <sigildesk/util.h>

#include <QStringListModel>
#include <QWidget>
#include <memory>

class Ui_CertViewNormalForm;

namespace sigil {
class LanguageTexts;
}

class CertViewNormalForm : public QWidget {
    Q_OBJECT

public:
    explicit CertViewNormalForm(QWidget* parent = nullptr);
    ~CertViewNormalForm() override;

    /** What is shown; see CertViewMainDialog::SetCertificate. */
    void SetCertificate(const char* langFile, void* processor, tagCERTINFO* entry);
    /** Captions, values, status and key usages. */
    void InitSetControl();
    /** Shows the entry's own status; the argument is deliberately not looked at. */
    void SetCertStatus(int status);
    /** Has the processor verify the signing certificate and shows the outcome. @return the processor's code */
    int VerifyCert();

private:
    void SetCaptions(const sigil::LanguageTexts& texts);
    void SetValues();
    void SetKeyUsages(const sigil::LanguageTexts& texts);
    void ShowStatus(const QString& text);
    void ShowFailure(const char* error);

    int m_nRv = 0;
    char m_szLangFile[sigil::pathCapacity] = {};
    tagCERTINFO* m_Entry = nullptr;
    void* m_hProcessor = nullptr;
    std::unique_ptr<Ui_CertViewNormalForm> m_Form;
    CUtil m_Util;
    QStringListModel m_KeyUsages;
};
