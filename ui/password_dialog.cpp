#include "ui/password_dialog.h"

#include "foundation/text_field.h"
#include "ui/caps_lock_hint.h"
#include "ui/contrast.h"
#include "ui/dialog_support.h"
#include "ui/korean_font.h"
#include "ui/language_texts.h"
#include "ui/large_type.h"
#include "ui_password_dialog.h"

PasswordDialog::PasswordDialog(QWidget* parent)
    : QDialog(parent)
    , m_Form(std::make_unique<Ui_PasswordDialog>())
{
    m_Form->setupUi(this);
    sigil::fitForm(this);
    sigil::giveIcon(this);
    sigil::letReturnPressButtons(this);
    sigil::makeSelectionsReadable(this);
    new sigil::CapsLockHint(m_Form->lineEdit_password, [this](bool on) { ShowTitle(on); }); // owned by the field
}

PasswordDialog::~PasswordDialog() { sigil::wipe(m_szPassword, sizeof m_szPassword); }

void PasswordDialog::SetCaller(int language, const char* folder)
{
    m_nLanguage = language;
    sigil::copyText(m_szLibraryFolder, folder ? folder : "");
}

void PasswordDialog::InitSetControl()
{
    sigil::copyText(m_szLangFile, sigil::languageFile(m_szLibraryFolder, sigil::readableLanguage(m_nLanguage)));
    m_Form->lineEdit_password->setEchoMode(QLineEdit::Password);
    const sigil::LanguageTexts texts(m_Util, m_szLangFile);
    setWindowTitle(texts.ui("DLG_CERTPASSWORD_CAPITON"));
    ShowTitle(false);
    m_Form->label_pwd->setText(texts.ui("DLG_STATIC_CERTPASSWORD"));
    m_Form->pushButton_ok->setText(texts.ui("DLG_BUTTON_OK"));
    m_Form->pushButton_cancel->setText(texts.ui("DLG_BUTTON_CANCEL"));
    m_Form->lineEdit_password->setAccessibleName(m_Form->label_pwd->text());
}

void PasswordDialog::on_pushButton_ok_clicked()
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
    const sigil::LanguageTexts texts(m_Util, m_szLangFile);
    m_Form->label_title->setText(
        capsLock ? texts.message("MSG_SELECTCERT_CAPSLOCK") : texts.ui("DLG_CERTPASSWORD_INPUT"));
}

void PasswordDialog::ShowMessage(const char* messageKey)
{
    const sigil::LanguageTexts texts(m_Util, m_szLangFile);
    sigil::showInformation(this, texts, texts.ui("DLG_SELCERT_CAPITON"), texts.message(messageKey));
    sigil::askForPassword(m_Form->lineEdit_password);
}

void PasswordDialog::on_pushButton_cancel_clicked() { reject(); }

void PasswordDialog::done(int result)
{
    sigil::wipeField(m_Form->lineEdit_password);
    QDialog::done(result);
}

void PasswordDialog::keyPressEvent(QKeyEvent* event)
{
    sigil::takeKey(
        event, [this] { on_pushButton_cancel_clicked(); }, [this] { on_pushButton_ok_clicked(); });
}
