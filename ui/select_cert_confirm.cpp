// SelectCertDialog: the password, the keys and the result.

#include "ui/select_cert_dialog.h"

#include "foundation/ascii.h"
#include "foundation/text_field.h"
#include "ui/cert_records.h"
#include "ui/dialog_support.h"
#include "ui/processor_bytes.h"
#include "ui_select_cert_dialog.h"

#include <sigildesk/certlist.h>

namespace {

constexpr int badArgument = 1001;
constexpr int wrongPassword = 1113;
constexpr int noKey = 1114;
constexpr int keyNotAvailable = 1164;

bool isDisk(int medium) { return medium == 1 || medium == 2; }
bool isMemory(int medium) { return medium == 5 || medium == 6; }

} // namespace

void SelectCertDialog::on_pushButton_ok_clicked()
{
    const sigil::TypedPassword typed(m_Form->lineEdit_password);
    sigil::PasswordBuffer<1024> password;
    if (typed.bytes().empty())
        return ShowMessage("MSG_SELECTCERT_INPUTPASSWORD");
    if (typed.bytes().size() >= sizeof password.text)
        return ShowMessage("MSG_SELECTCERT_PASSWORD_MAX");
    sigil::copyText(password.text, typed.bytes());
    // An imported certificate has no encrypted key to try the password on; it must be that of the import.
    if (isMemory(m_nMedium) && !sigil::equalsIgnoringCase(password.text, m_szRememberedPassword))
        return ShowMessage("MSG_SELECTCERT_PASSWORD_DIFFERENT");
    const int row = SelectedRow();
    if (row < 0)
        return ShowMessage("MSG_SELECTCERT_NOTSELECTCERT");
    if (IsLocked(row))
        return TellExpired(row);
    m_nRv = SetSelectCertInfo(row, password.text);
    if (m_nRv != 0)
        return;
    sigil::wipeField(m_Form->lineEdit_password);
    m_nAccepted = 1;
    accept();
}

int SelectCertDialog::SetSelectCertInfo(int row, char* password)
{
    m_nRv = 0;
    if (row < 0 || row >= CertCount())
        return m_nRv = badArgument;
    if (isDisk(m_nMedium))
        m_nRv = DecryptKeys(row, password);
    if (m_nRv == 0)
        m_nRv = RequireSignKey(row);
    if (m_nRv == 0)
        m_nRv = FetchRandom(row, password);
    return m_nRv;
}

int SelectCertDialog::DecryptKeys(int row, char* password)
{
    sigil::ProcessorBytes signKey(m_hProcessor);
    sigil::ProcessorBytes kmKey(m_hProcessor);
    const int rv =
        CLP_DecryptPriKey(m_hProcessor, row, password, &signKey.data, &signKey.length, &kmKey.data, &kmKey.length);
    if (rv == wrongPassword)
        ShowMessage("MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR");
    if (rv == keyNotAvailable)
        ShowMessage("MSG_SELECTCERT_GETPRIKEY");
    if (rv != 0)
        return rv;
    tagCERTINFO& entry = m_Entries[static_cast<std::size_t>(row)];
    if (!kmKey.isEmpty())
        entry.nKmPriKeyLen = sigil::setItem(entry.byKmPriKey, sizeof entry.byKmPriKey, kmKey.data, kmKey.length);
    entry.nSignPriKeyLen =
        sigil::setItem(entry.bySignPriKey, sizeof entry.bySignPriKey, signKey.data, signKey.length);
    return 0;
}

int SelectCertDialog::RequireSignKey(int row)
{
    const int length = m_Entries[static_cast<std::size_t>(row)].nSignPriKeyLen;
    if (length > 0 && static_cast<std::size_t>(length) <= sizeof m_Staging.bySignPriKey)
        return 0;
    ShowMessage("DLG_CERTPASSWORD_WRONG_PKCS11");
    return noKey;
}

int SelectCertDialog::FetchRandom(int row, char* password)
{
    sigil::ProcessorBytes random(m_hProcessor);
    const int rv = CLP_GetPriKeyRandom(m_hProcessor, row, password, &random.data, &random.length);
    if (rv == wrongPassword && isDisk(m_nMedium))
        ShowMessage("MSG_SELECTCERT_PASSWORD_DIFFERENT");
    if (rv == keyNotAvailable)
        ShowMessage("DLG_CERTPASSWORD_WRONG_PKCS11");
    if (rv != 0)
        return rv;
    CopySelectCertInfo(row, password);
    if (!random.isEmpty())
        m_Staging.nRandomLen =
            sigil::setItem(m_Staging.byRandom, sizeof m_Staging.byRandom, random.data, random.length);
    return 0;
}

void SelectCertDialog::CopySelectCertInfo(int row, char*)
{
    if (row >= 0 && row < CertCount())
        sigil::stageResult(m_Entries[static_cast<std::size_t>(row)], m_nMedium, m_Staging);
}

void SelectCertDialog::GetSelectCertinfo(tagSELCERTINFO* result)
{
    if (result)
        sigil::handOutResult(m_Staging, *result);
}
