// SelectCertDialog: certificates out of PKCS#12 files.

#include "ui/select_cert_dialog.h"

#include "foundation/text_field.h"
#include "ui/dialog_support.h"
#include "ui/password_dialog.h"
#include "ui/processor_bytes.h"
#include "ui_select_cert_dialog.h"

#include <sigildesk/certlist.h>

#include <QFileDialog>

namespace {

constexpr int cancelled = -1;
constexpr int wrongPassword = 1113;
constexpr int noCertificate = 1115;

} // namespace

void SelectCertDialog::on_pushButton_find_clicked()
{
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Open File..."), "/", tr("PFX(*.PFX *.pfx);;p12(*.P12 *.p12)"));
    if (file.isEmpty())
        return;
    char path[260];
    sigil::copyText(path, file.toLocal8Bit().constData());

    PasswordDialog dialog;
    dialog.SetCaller(m_InitOptions.nLanguage, m_szLibraryFolder);
    dialog.InitSetControl();
    if (dialog.exec() != Accepted)
        return;
    sigil::PasswordBuffer<1024> password;
    sigil::copyText(password.text, dialog.Password());
    const int result = LoadCertPKCS12(path, password.text);
    if (result == 0) {
        ShowStatus("MSG_SELECTCERT_SELCERTINPUTPWD");
        std::copy(std::begin(password.text), std::end(password.text), m_szRememberedPassword);
    } else {
        ReportImport(result);
    }
}

void SelectCertDialog::ReportImport(int result)
{
    if (result == wrongPassword)
        ShowMessage("MSG_SELECTCERT_PASSWORD_DIFFERENT");
    else if (result == cancelled)
        ShowMessage("MSG_MANAGEUSER_ALERTCANCEL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT");
    else
        ShowMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT");
}

int SelectCertDialog::LoadCertPKCS12(char* path, char* password)
{
    sigil::ProcessorBytes signCert(m_hProcessor), signKey(m_hProcessor), kmCert(m_hProcessor), kmKey(m_hProcessor);
    m_nRv = CLP_ImportPFX(m_hProcessor, path, password, &signCert.data, &signCert.length, &signKey.data,
        &signKey.length, &kmCert.data, &kmCert.length, &kmKey.data, &kmKey.length);
    if (m_nRv != 0)
        return m_nRv;
    if (signCert.isEmpty() || signKey.isEmpty()) {
        // The import itself succeeded, so 0 is what the caller sees: intended.
        ShowMessage("MSG_SELECTCERT_NOCERT_SIGN");
        return m_nRv;
    }
    ClearList();
    LoadMemoryCert(signCert.data, signCert.length, signKey.data, signKey.length, kmCert.data, kmCert.length,
        kmKey.data, kmKey.length);
    if (m_nRv == 0) {
        SetItemTableView();
        m_Form->tableView_certlist->selectRow(0);
    } else if (m_nRv == noCertificate) {
        ShowMessage("MSG_SELECTCERT_NOCERT");
    } else {
        ShowMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT");
    }
    return m_nRv;
}
