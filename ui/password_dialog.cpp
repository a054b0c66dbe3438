// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/password_dialog.h"

#include "foundation/secret.h"
#include "foundation/text_field.h"
#include "ui/caps_lock_hint.h"
#include "ui/contrast.h"
#include "ui/dialog_support.h"
#include "ui/korean_font.h"
#include "ui/large_type.h"
#include "ui_password_dialog.h"

PasswordDialog::PasswordDialog(QWidget* parent)
    : QDialog(parent)
    , m_Form(std::make_unique<Ui_PasswordDialog>())
{
    m_Form->setupUi(this);
    sigil::giveRoom(m_Form->lineEdit_password);
    sigil::fitForm(this);
    sigil::giveIcon(this);
    sigil::letReturnPressButtons(this);
    sigil::makeSelectionsReadable(this);
    new sigil::CapsLockHint(m_Form->lineEdit_password,
        [this](bool on) { sigil::guard(*this, [this, on] { ShowTitle(on); }); }); // owned by the field
}

PasswordDialog::~PasswordDialog() { sigil::wipe(m_szPassword, sizeof m_szPassword); }

void PasswordDialog::SetCaller(int language, const char* folder)
{
    m_nLanguage = language;
    sigil::copyText(m_szLibraryFolder, folder);
}

void PasswordDialog::InitSetControl()
{
    m_Texts = sigil::LanguageTexts(sigil::languageFile(m_szLibraryFolder, sigil::readableLanguage(m_nLanguage)));
    m_Form->lineEdit_password->setEchoMode(QLineEdit::Password);
    setWindowTitle(m_Texts.ui("DLG_CERTPASSWORD_CAPITON"));
    ShowTitle(false);
    m_Form->label_pwd->setText(m_Texts.ui("DLG_STATIC_CERTPASSWORD"));
    m_Form->pushButton_ok->setText(m_Texts.ui("DLG_BUTTON_OK"));
    m_Form->pushButton_cancel->setText(m_Texts.ui("DLG_BUTTON_CANCEL"));
    m_Form->lineEdit_password->setAccessibleName(m_Form->label_pwd->text());
}

void PasswordDialog::on_pushButton_ok_clicked()
{
    const sigil::TracesCleared cleared;
    sigil::guard(*this, [this] { Confirm(); });
}

void PasswordDialog::Confirm()
{
    const sigil::TypedPassword typed(m_Form->lineEdit_password);
    if (typed.bytes().empty())
        return ShowMessage("MSG_SELECTCERT_INPUTPASSWORD");
    if (typed.bytes().size() >= sizeof m_szPassword)
        return ShowMessage("MSG_SELECTCERT_PASSWORD_MAX");
    sigil::copyText(m_szPassword, typed.bytes());
    accept();
}

void PasswordDialog::ShowTitle(bool capsLock)
{
    m_Form->label_title->setText(
        capsLock ? m_Texts.message("MSG_SELECTCERT_CAPSLOCK") : m_Texts.ui("DLG_CERTPASSWORD_INPUT"));
}

void PasswordDialog::ShowMessage(const char* messageKey)
{
    sigil::showInformation(this, m_Texts, m_Texts.ui("DLG_SELCERT_CAPITON"), m_Texts.message(messageKey));
    sigil::askForPassword(m_Form->lineEdit_password);
}

void PasswordDialog::on_pushButton_cancel_clicked() { reject(); }

void PasswordDialog::done(int result)
{
    const sigil::TracesCleared cleared;
    sigil::wipeField(m_Form->lineEdit_password);
    QDialog::done(result);
}

void PasswordDialog::keyPressEvent(QKeyEvent* event)
{
    sigil::takeKey(
        event, [this] { on_pushButton_cancel_clicked(); }, [this] { on_pushButton_ok_clicked(); });
}
