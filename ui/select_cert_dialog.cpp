#include "ui/select_cert_dialog.h"

#include "foundation/text_field.h"
#include "ui/cert_records.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/dialog_support.h"
#include "ui/language_texts.h"
#include "ui/media_button_style.h"
#include "ui_select_cert_dialog.h"

#include <sigildesk/certlist.h>

#include <QItemSelection>
#include <QKeyEvent>
#include <cstdio>

namespace {

template <class Record>
void clear(Record& record)
{
    sigil::wipe(&record, sizeof record);
}

} // namespace

SelectCertDialog::SelectCertDialog(QWidget* parent)
    : QDialog(parent)
    , m_Form(std::make_unique<Ui_SelectCertDialog>())
{
    m_Form->setupUi(this);
    sigil::letReturnPressButtons(this);
    // OK is not the default button, and Qt would mark Cancel as what Return does. The hidden one takes that mark.
    auto* unmarked = new QPushButton(this);
    unmarked->hide();
    unmarked->setDefault(true);
    for (QPushButton* button : m_Form->groupBox->findChildren<QPushButton*>()) {
        auto* style = new sigil::MediaButtonStyle; // owned by the button
        style->setParent(button);
        button->setStyle(style);
    }
    InitVariable();
    m_nMedium = 1;
    qRegisterMetaType<QItemSelection>("QItemSelection");
}

SelectCertDialog::~SelectCertDialog()
{
    CLP_UnInitalize(m_hProcessor);
    sigil::wipeField(m_Form->lineEdit_password);
    ForgetKeys();
    clear(m_szRememberedPassword);
}

void SelectCertDialog::InitVariable()
{
    m_nRv = 0;
    m_nFinish = 1;
    m_nMedium = 0;
    m_nAccepted = undecided;
    m_Entries.clear();
    m_byMemoryFlag = 0;
    m_nMemoryItem1Len = 0;
    m_nMemoryItem2Len = 0;
    clear(m_LoadOptions);
    clear(m_InitOptions);
    clear(m_SelectOptions);
    clear(m_byMemoryItem1);
    clear(m_byMemoryItem2);
    clear(m_ExtraOptions);
    clear(m_Staging);
    clear(m_szLangFile);
    clear(m_szLastError);
    clear(m_szRememberedPassword);
}

void SelectCertDialog::SetLibraryFolder(std::string_view folder) { sigil::copyText(m_szLibraryFolder, folder); }

int SelectCertDialog::Initalize()
{
    m_nRv = CLP_Initalize(&m_hProcessor, nullptr, 0, m_InitOptions.nLanguage, m_InitOptions.szLibraryFolder);
    if (m_nRv != 0) {
        std::printf("Initalize() CLP_Initalize = %d\n", m_nRv);
        return m_nRv;
    }
    m_nRv = CLP_SetType(m_hProcessor, &m_LoadOptions);
    if (m_nRv != 0)
        std::printf("Initalize() CLP_SetType = %d\n", m_nRv);
    return m_nRv;
}

void SelectCertDialog::keyPressEvent(QKeyEvent* event)
{
    sigil::takeKey(
        event, [this] { on_pushButton_cancel_clicked(); }, [this] { on_pushButton_ok_clicked(); });
}

void SelectCertDialog::on_pushButton_cancel_clicked() { reject(); }

void SelectCertDialog::reject()
{
    sigil::wipeField(m_Form->lineEdit_password);
    m_nAccepted = 0;
    QDialog::reject();
}

void SelectCertDialog::on_tableView_certlist_doubleClicked(const QModelIndex&) { on_pushButton_view_clicked(); }

void SelectCertDialog::on_pushButton_view_clicked()
{
    const int row = SelectedRow();
    if (row < 0) {
        ShowMessage("MSG_SELECTCERT_NOTSELECTCERT");
        return;
    }
    CertViewMainDialog viewer(this);
    viewer.SetCertificate(m_szLangFile, m_hProcessor, &m_Entries[static_cast<std::size_t>(row)]);
    viewer.InitSetControl();
    viewer.setModal(true);
    viewer.exec();
}

void SelectCertDialog::StartCall()
{
    m_nFinish = 0;
    m_nAccepted = undecided;
}

void SelectCertDialog::ForgetKeys()
{
    clear(m_Staging);
    clear(m_byMemoryItem1);
    clear(m_byMemoryItem2);
    m_nMemoryItem1Len = 0;
    m_nMemoryItem2Len = 0;
    for (tagCERTINFO& entry : m_Entries)
        sigil::wipeKeys(entry);
}

sigil::LanguageTexts SelectCertDialog::Texts() { return {m_Util, m_szLangFile}; }

void SelectCertDialog::ShowStatus(const char* messageKey)
{
    m_Form->lineEdit_msg->setText(Texts().message(messageKey));
}

void SelectCertDialog::ShowMessage(const char* messageKey, const char* captionKey)
{
    sigil::showInformation(this, Texts().ui(captionKey), Texts().message(messageKey));
}

int SelectCertDialog::SelectedRow() const
{
    const QModelIndexList selected = m_Form->tableView_certlist->selectionModel()
        ? m_Form->tableView_certlist->selectionModel()->selectedIndexes()
        : QModelIndexList();
    const int row = selected.isEmpty() ? -1 : selected.first().row();
    return row < CertCount() ? row : -1;
}
