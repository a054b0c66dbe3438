// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/select_cert_dialog.h"

#include "foundation/secret.h"
#include "foundation/text_field.h"
#include "ui/caps_lock_hint.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/contrast.h"
#include "ui/dialog_support.h"
#include "ui/file_chooser.h"
#include "ui/korean_font.h"
#include "ui/large_type.h"
#include "ui/listing_turns.h"
#include "ui/password_buffer.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"
#include "ui_select_cert_dialog.h"

#include <QItemSelectionModel>
#include <QScopedValueRollback>

using sigil::Outcome;
using sigil::outcomeOf;
using sigil::Step;
namespace code = sigil::code;

namespace {

/** What is told at most, in bytes: language files are input. */
constexpr std::size_t longestMessage = 1023;

std::unique_ptr<Ui_SelectCertDialog> formOf(QDialog* dialog)
{
    auto form = std::make_unique<Ui_SelectCertDialog>();
    form->setupUi(dialog);
    sigil::fitForm(dialog);
    return form;
}

} // namespace

SelectCertDialog::SelectCertDialog(QWidget* parent)
    : QDialog(parent)
    , m_Form(formOf(this))
    , m_Table(m_Form->tableView_certlist)
    , m_MediaButtons(*m_Form)
    , m_Logo(m_Form->label_logo)
{
    sigil::giveRoom(m_Form->lineEdit_password);
    sigil::giveIcon(this);
    sigil::letReturnPressButtons(this);
    sigil::makeSelectionsReadable(this);
    // OK is not the default button, and Qt would mark Cancel as what Return does. The hidden one takes that mark.
    auto* unmarked = new QPushButton(this);
    unmarked->hide();
    unmarked->setDefault(true);
    new sigil::CapsLockHint(m_Form->lineEdit_password, [this](bool on) { // owned by the field
        sigil::guard(*this, [&] { ShowStatus(on ? m_Texts.message("MSG_SELECTCERT_CAPSLOCK") : m_Status); });
    });
    qRegisterMetaType<QItemSelection>("QItemSelection");
    // A row can also be selected with the keyboard or by a load; the field must not stay as the row before left it. The
    // selected row counts, not the current one: that is the one that OK takes.
    connect(m_Form->tableView_certlist->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        [this] { sigil::guard(*this, [this] { LockPassword(m_Table.selectedRow()); }); });
}

SelectCertDialog::~SelectCertDialog()
{
    const sigil::TracesCleared cleared;
    sigil::wipeField(m_Form->lineEdit_password);
}

void SelectCertDialog::SetLibraryFolder(std::string_view folder) { sigil::copyText(m_szLibraryFolder, folder); }

int SelectCertDialog::SetInitOption(tagINITOPT* init, tagLOADSELECTCERTOPTION* load, tagEXTRAOPTION* extra)
{
    return m_Selection.options().take(init, load, extra);
}

void SelectCertDialog::InitSetControl()
{
    const int language = sigil::readableLanguage(m_Selection.language());
    m_Texts = sigil::LanguageTexts(sigil::languageFile(m_Selection.options().init.szLibraryFolder, language));
    m_Form->lineEdit_password->setEchoMode(QLineEdit::Password);
    // Intended: never shown, and one more on every call. The dialog owns them.
    auto* title = new QLabel(this);
    title->setWindowTitle(QStringLiteral("인증서 선택창"));
    title->hide();

    SetControlTexts();
    m_Table.setColumns(m_Texts);
    SetButtonImage(1, 1, language);
    SetButtonImage(1, 2, language);
    for (int bit : {8, 4, 16, 32})
        SetButtonImage(0, bit, language);
    SetLogoImage();
    m_Form->lineEdit_password->setEnabled(true); // an earlier call may have left it locked
    m_Form->lineEdit_password->setFocus();
}

void SelectCertDialog::SetControlTexts()
{
    setWindowTitle(sigil::withReason(m_Texts.ui("DLG_SELCERT_CAPITON"), m_Selection.language(), m_Texts));
    m_Form->groupBox->setTitle(m_Texts.ui("DLG_GROUPBOX_MEDIA"));
    m_Form->label_find->setText(m_Texts.ui("DLG_FINDCERT_TEXT"));
    m_Form->pushButton_find->setText(m_Texts.ui("DLG_BUTTON_FIND"));
    m_Form->label_pwd->setText(m_Texts.ui("DLG_STATIC_CERTPASSWORD"));
    m_Form->pushButton_ok->setText(m_Texts.ui("DLG_BUTTON_OK"));
    m_Form->pushButton_cancel->setText(m_Texts.ui("DLG_BUTTON_CANCEL"));
    m_Form->pushButton_view->setText(m_Texts.ui("DLG_BUTTON_VIEW"));
    m_Form->tableView_certlist->setAccessibleName(m_Texts.ui("DLG_ACCESS_CERTLIST"));
    m_Form->lineEdit_password->setAccessibleName(m_Form->label_pwd->text());
    m_Form->lineEdit_msg->setAccessibleName(m_Texts.ui("DLG_ACCESS_STATUS"));
    m_Form->label_logo->setAccessibleName(m_Texts.ui("DLG_ACCESS_BANNER"));
}

void SelectCertDialog::SetButtonImage(int state, int bit, int language)
{
    m_MediaButtons.SetButtonImage(state, bit, language, m_Texts);
}

void SelectCertDialog::SetLogoImage()
{
    m_Logo.SetLogoImage(m_Selection.options(), m_Form->pushButton_smcert->isEnabled());
}

int SelectCertDialog::Initalize() { return m_Selection.connect(); }

void SelectCertDialog::SetInitMediaCert(int which)
{
    if (which != SIGIL_MEDIUM_MEMORY)
        return OpenHardDisk();
    m_Table.clear();
    m_Selection.takeCallersCertificate();
}

void SelectCertDialog::on_pushButton_hdd_clicked()
{
    sigil::guard(*this, [this] { OpenHardDisk(); });
}

void SelectCertDialog::OpenHardDisk()
{
    m_Selection.turnTo(SIGIL_MEDIUM_HARD_DISK);
    SetButtonImage(2, 1, m_Selection.language());
    if (LoadCertDisk(SIGIL_MEDIUM_HARD_DISK, nullptr) == 0) {
        Tell(outcomeOf(Step::OpenHardDisk, SIGIL_SUCCESS));
        SetExpiredCert(0);
    }
    sigil::askForPassword(m_Form->lineEdit_password);
}

void SelectCertDialog::on_pushButton_remove_clicked()
{
    sigil::guard(*this, [this] { OpenRemovableDisk(); });
}

void SelectCertDialog::OpenRemovableDisk()
{
    RemoveableDialog chooser;
    chooser.SetCaller(m_Selection.language(), m_szLibraryFolder, m_Selection.processor());
    chooser.InitSetControl();
    if (chooser.GetRemovableDisk() != 0)
        return Tell(m_Selection.failDrives());
    m_Selection.turnTo(SIGIL_MEDIUM_REMOVABLE_DISK);
    if (chooser.exec() == Accepted) {
        SetButtonImage(1, 1, m_Selection.language());
        SetButtonImage(2, 2, m_Selection.language());
        LoadCertDisk(SIGIL_MEDIUM_REMOVABLE_DISK, chooser.ChosenDrive());
    }
    // The removable button can be used once, and the medium stays 2 also when no drive was chosen: intended.
    SetButtonImage(1, 1, m_Selection.language());
    SetButtonImage(0, 2, m_Selection.language());
    sigil::askForPassword(m_Form->lineEdit_password);
}

int SelectCertDialog::LoadCertDisk(int which, char* drive)
{
    const QScopedValueRollback<bool> listing(m_bListing, true);
    m_Table.clear();
    sigil::ListingTurns turns;
    const Outcome outcome = m_Selection.listDisk(which, drive, [&] {
        if (turns.isDue()) {
            GiveTime();
            turns.taken();
        }
        return !m_Selection.isGivenUp();
    });
    if (m_Busy) {
        PutStatus(m_Status);
        m_Busy.reset();
    }
    ShowList(outcome);
    Tell(outcome);
    return outcome.code;
}

void SelectCertDialog::GiveTime()
{
    if (!m_Busy) {
        m_Busy = std::make_unique<sigil::RestingControls>(this,
            std::vector<QWidget*>{m_Form->groupBox, m_Form->tableView_certlist, m_Form->pushButton_find,
                m_Form->lineEdit_password, m_Form->pushButton_ok, m_Form->pushButton_view},
            m_Form->lineEdit_msg);
        setModal(true); // the host's windows rest too, as they do while the dialog runs
        show();
        ShowStatus(m_Texts.message("MSG_SELECTCERT_LISTING"));
    }
    QCoreApplication::processEvents();
}

void SelectCertDialog::on_pushButton_find_clicked()
{
    const sigil::TracesCleared cleared;
    sigil::guard(*this, [this] { ImportFile(); });
}

void SelectCertDialog::ImportFile()
{
    const QString file =
        sigil::FileChooser(this, sigil::readableLanguage(m_Selection.language()), m_Texts).choose();
    if (file.isEmpty())
        return;
    char path[sigil::pathCapacity];
    sigil::copyText(path, file.toLocal8Bit().constData());

    PasswordDialog dialog;
    dialog.SetCaller(m_Selection.language(), m_szLibraryFolder);
    dialog.InitSetControl();
    if (dialog.exec() != Accepted)
        return;
    sigil::PasswordBuffer<1024> password;
    sigil::copyText(password.text, dialog.Password());
    const Outcome outcome = outcomeOf(Step::Import, LoadCertPKCS12(path, password.text));
    if (outcome.code == 0)
        m_Selection.rememberPassword(password.text);
    Tell(outcome);
    sigil::askForPassword(m_Form->lineEdit_password);
}

int SelectCertDialog::LoadCertPKCS12(char* path, char* password)
{
    const Outcome outcome = m_Selection.importFile(path, password);
    ShowList(outcome);
    Tell(outcome);
    return outcome.code;
}

void SelectCertDialog::ShowList(const Outcome& outcome)
{
    if (!outcome.relisted)
        return;
    m_Table.clear();
    if (outcome.code == 0)
        m_Table.SetItemTableView(m_Selection.rows(), m_Texts);
}

void SelectCertDialog::on_tableView_certlist_clicked(const QModelIndex&)
{
    sigil::guard(*this, [this] { ChooseRow(); });
}

void SelectCertDialog::ChooseRow()
{
    const int row = m_Table.selectedRow();
    if (row < 0)
        return Tell(outcomeOf(Step::ChooseRow, code::missing));
    SetExpiredCert(row);
    sigil::askForPassword(m_Form->lineEdit_password);
}

void SelectCertDialog::SetExpiredCert(int row)
{
    if (!m_Selection.holds(row))
        return;
    LockPassword(row);
    Tell(m_Selection.select(row));
}

void SelectCertDialog::LockPassword(int row)
{
    const bool locked = m_Selection.isLocked(row);
    if (locked)
        sigil::wipeField(m_Form->lineEdit_password); // typed for another certificate; none is taken for this one
    m_Form->lineEdit_password->setEnabled(!locked);
}

void SelectCertDialog::on_pushButton_ok_clicked()
{
    const sigil::TracesCleared cleared;
    sigil::guard(*this, [this] { Confirm(); });
}

void SelectCertDialog::Confirm()
{
    const sigil::TypedPassword typed(m_Form->lineEdit_password);
    const Outcome outcome = m_Selection.confirm(m_Table.selectedRow(), typed.bytes());
    Tell(outcome);
    if (outcome.code != 0)
        return sigil::askForPassword(m_Form->lineEdit_password);
    sigil::wipeField(m_Form->lineEdit_password);
    accept();
}

int SelectCertDialog::SetSelectCertInfo(int row, char* password)
{
    const Outcome outcome = m_Selection.unlock(row, password);
    Tell(outcome);
    return outcome.code;
}

void SelectCertDialog::GetSelectCertinfo(tagSELCERTINFO* result)
{
    const sigil::TracesCleared cleared;
    m_Selection.handOut(result);
}

void SelectCertDialog::keyPressEvent(QKeyEvent* event)
{
    sigil::takeKey(
        event, [this] { on_pushButton_cancel_clicked(); },
        [this] {
            if (!m_Busy)
                on_pushButton_ok_clicked();
        });
}

void SelectCertDialog::on_pushButton_cancel_clicked() { reject(); }

void SelectCertDialog::reject()
{
    const sigil::TracesCleared cleared;
    sigil::wipeField(m_Form->lineEdit_password);
    m_Selection.giveUp();
    QDialog::reject();
}

void SelectCertDialog::done(int result)
{
    if (result == SIGIL_NO_MEMORY)
        m_Selection.giveUp();
    QDialog::done(result);
}

void SelectCertDialog::on_tableView_certlist_doubleClicked(const QModelIndex&) { on_pushButton_view_clicked(); }

void SelectCertDialog::on_pushButton_view_clicked()
{
    sigil::guard(*this, [this] { ViewRow(); });
}

void SelectCertDialog::ViewRow()
{
    const int row = m_Table.selectedRow();
    if (!m_Selection.holds(row))
        return Tell(outcomeOf(Step::ChooseRow, code::missing));
    sigil::EntryRecord entry = m_Selection.entry(row);
    CertViewMainDialog viewer(this);
    viewer.SetCertificate(m_Texts, m_Selection.processor(), &*entry);
    viewer.InitSetControl();
    viewer.setModal(true);
    viewer.exec();
    m_Selection.keepStatus(row, *entry);
}

void SelectCertDialog::Tell(const Outcome& outcome)
{
    if (!outcome.telling)
        return;
    const std::string text = sigil::formatOneText(m_Texts.messageBytes(outcome.telling->textKey), outcome.value);
    const QString shown = sigil::fromEucKr(text.substr(0, longestMessage));
    if (outcome.telling->captionKey)
        sigil::showInformation(this, m_Texts, m_Texts.ui(outcome.telling->captionKey), shown);
    else
        ShowStatus(m_Status = shown);
}

void SelectCertDialog::PutStatus(const QString& text)
{
    m_Form->lineEdit_msg->setText(text);
    m_Form->lineEdit_msg->setCursorPosition(0); // a long text shows its beginning
    m_Form->lineEdit_msg->setToolTip(sigil::toolTipOf(text));
    m_Form->lineEdit_msg->setAccessibleDescription(text);
}

void SelectCertDialog::ShowStatus(const QString& text)
{
    PutStatus(text);
    sigil::announce(m_Form->lineEdit_msg, text);
}
