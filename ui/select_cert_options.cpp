// SelectCertDialog: what the caller asked for.

#include "ui/select_cert_dialog.h"

#include "foundation/text_field.h"
#include "ui/dialog_support.h"
#include "ui/language_texts.h"
#include "ui_select_cert_dialog.h"

#include <QItemSelectionModel>
#include <QPixmap>
#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr int badArgument = 1001;
constexpr int korean = 1;

/** A caller's text is taken only when it is given. */
template <std::size_t N, std::size_t M>
void take(char (&to)[N], const char (&from)[M], std::size_t atMost = N - 1)
{
    const std::string_view text = sigil::fieldText(from);
    if (!text.empty())
        sigil::copyText(to, text.substr(0, atMost));
}

struct MediaButton {
    int bit;
    QPushButton* Ui_SelectCertDialog::*button;
    const char* image;
    const char* textKey;
};

constexpr MediaButton mediaButtons[] = {
    {1, &Ui_SelectCertDialog::pushButton_hdd, "HDD", "DLG_BUTTONMEDIA_HDD"},
    {2, &Ui_SelectCertDialog::pushButton_remove, "MOVE", "DLG_BUTTONMEDIA_REMOVE"},
    {4, &Ui_SelectCertDialog::pushButton_smcert, "USIM", "DLG_BUTTONMEDIA_USIM"},
    {8, &Ui_SelectCertDialog::pushButton_token, "TOKEN", "DLG_BUTTONMEDIA_PKCS11"},
    {16, &Ui_SelectCertDialog::pushButton_smcard, "SMCARD", "DLG_BUTTONMEDIA_SMCARD"},
    {32, &Ui_SelectCertDialog::pushButton_phone, "PHONE", "DLG_BUTTONMEDIA_PHONE"},
};

/** "HDD_N.png": N normal or P pressed, with an E in English. */
QString imagePath(const char* stem, int state, int language)
{
    return QString(":/png/image/%1_%2%3.png").arg(stem, state > 1 ? "P" : "N", language == korean ? "" : "E");
}

/** By value: a number of a packed record may lie where no reference to it can be made. */
int bounded(int length, std::size_t capacity) { return std::min(length, static_cast<int>(capacity)); }

/** What follows the last "/" or "\" of a path. */
QString lastComponent(const QString& path)
{
    return path.mid(std::max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1);
}

} // namespace

int SelectCertDialog::SetInitOption(tagINITOPT* init, tagLOADSELECTCERTOPTION* load, tagEXTRAOPTION* extra)
{
    if (!init)
        return badArgument;
    if (init->ullReserved != 0)
        m_InitOptions.ullReserved = init->ullReserved;
    take(m_InitOptions.szLibraryFolder, init->szLibraryFolder);
    m_InitOptions.nLanguage = init->nLanguage;
    if (load) {
        CopyLoadOptions(*load);
        BuildProcessorOptions();
        CopyMemoryItems(*load);
    }
    if (extra) {
        take(m_ExtraOptions.szData, extra->szData);
        std::copy(std::begin(extra->byReserved), std::end(extra->byReserved), m_ExtraOptions.byReserved);
    }
    return 0;
}

void SelectCertDialog::CopyLoadOptions(const tagLOADSELECTCERTOPTION& load)
{
    tagLOADSELECTCERTOPTION& own = m_SelectOptions;
    own.nPKITypes = load.nPKITypes;
    own.nKeyPairType = load.nKeyPairType;
    own.nSelectFlags = load.nSelectFlags;
    take(own.szShortOption, load.szShortOption);
    take(own.szSerialNum, load.szSerialNum);
    take(own.szSubjectDN, load.szSubjectDN);
    take(own.szPolicyIDs, load.szPolicyIDs);
    take(own.szOption, load.szOption);
    take(own.szReserved1, load.szReserved1);
    take(own.szReserved2, load.szReserved2);
    std::memcpy(own.nReserved1, load.nReserved1, sizeof own.nReserved1);
    take(own.szReserved3, load.szReserved3);
    own.nReserved2 = load.nReserved2;
    take(own.szReserved4, load.szReserved4);
    take(own.szReserved5, load.szReserved5);
    take(own.szReserved6, load.szReserved6);
    take(own.szLogo, load.szLogo);
    take(own.szReserved7, load.szReserved7);
    own.nMessageFlags = load.nMessageFlags;
    own.byReserved = load.byReserved;
    take(own.szReserved8, load.szReserved8, 1023);
    own.byMemoryCert = load.byMemoryCert;
    own.byCivicLogo = load.byCivicLogo;
}

void SelectCertDialog::BuildProcessorOptions()
{
    m_LoadOptions.nPKITypes = static_cast<int>(m_SelectOptions.nPKITypes);
    m_LoadOptions.nKeyPairType = static_cast<int>(m_SelectOptions.nKeyPairType);
    m_LoadOptions.bExcludeExpired = m_SelectOptions.nSelectFlags & SIGIL_SELECT_EXCLUDE_EXPIRED ? 1 : 0;
    take(m_LoadOptions.szPolicyIDs, m_SelectOptions.szPolicyIDs);
    take(m_LoadOptions.szSerialNum, m_SelectOptions.szSerialNum);
    take(m_LoadOptions.szSubjectDN, m_SelectOptions.szSubjectDN);
    // The processor has one option text for the two of the caller; the one of the same width wins.
    take(m_LoadOptions.szOption, m_SelectOptions.szShortOption);
    take(m_LoadOptions.szOption, m_SelectOptions.szOption);
}

void SelectCertDialog::CopyMemoryItems(const tagLOADSELECTCERTOPTION& load)
{
    m_byMemoryFlag = load.byMemoryCert != 0 ? 1 : 0;
    if (m_byMemoryFlag == 0)
        return;
    // Unlike a text, an item that is not given does not keep its earlier value: a certificate must never be paired
    // with the key of an earlier call.
    m_nMemoryItem1Len = 0;
    m_nMemoryItem2Len = 0;
    if (load.nMemorySignCertLen > 0) {
        std::memcpy(m_byMemoryItem1, load.byMemorySignCert, sizeof m_byMemoryItem1);
        m_nMemoryItem1Len = bounded(load.nMemorySignCertLen, sizeof m_byMemoryItem1);
    }
    if (load.nMemorySignPriKeyLen > 0) {
        std::memcpy(m_byMemoryItem2, load.byMemorySignPriKey, sizeof m_byMemoryItem2);
        m_nMemoryItem2Len = bounded(load.nMemorySignPriKeyLen, sizeof m_byMemoryItem2);
    }
}

void SelectCertDialog::InitSetControl()
{
    m_ListFont.setPointSize(8);
    sigil::copyText(m_szLangFile, sigil::languageFile(m_InitOptions.szLibraryFolder, m_InitOptions.nLanguage));
    m_Form->lineEdit_password->setEchoMode(QLineEdit::Password);
    // Intended: never shown, and one more on every call. The dialog owns them.
    auto* title = new QLabel(this);
    title->setWindowTitle(QStringLiteral("인증서 선택창"));
    title->hide();

    SetControlTexts();
    SetListColumns();
    SetButtonImage(1, 1, m_InitOptions.nLanguage);
    SetButtonImage(1, 2, m_InitOptions.nLanguage);
    for (int bit : {8, 4, 16, 32})
        SetButtonImage(0, bit, m_InitOptions.nLanguage);
    SetLogoImage();
    SetAccessibleNames();
    m_Form->lineEdit_password->setEnabled(true); // an earlier call may have left it locked
    m_Form->lineEdit_password->setFocus();
}

void SelectCertDialog::SetControlTexts()
{
    const sigil::LanguageTexts texts = Texts();
    setWindowTitle(texts.ui("DLG_SELCERT_CAPITON"));
    m_Form->groupBox->setTitle(texts.ui("DLG_GROUPBOX_MEDIA"));
    m_Form->label_find->setText(texts.ui("DLG_FINDCERT_TEXT"));
    m_Form->pushButton_find->setText(texts.ui("DLG_BUTTON_FIND"));
    m_Form->label_pwd->setText(texts.ui("DLG_STATIC_CERTPASSWORD"));
    m_Form->pushButton_ok->setText(texts.ui("DLG_BUTTON_OK"));
    m_Form->pushButton_cancel->setText(texts.ui("DLG_BUTTON_CANCEL"));
    m_Form->pushButton_view->setText(texts.ui("DLG_BUTTON_VIEW"));
}

void SelectCertDialog::SetAccessibleNames()
{
    m_Form->tableView_certlist->setAccessibleName(windowTitle());
    m_Form->lineEdit_password->setAccessibleName(m_Form->label_pwd->text());
    m_Form->lineEdit_msg->setAccessibleName(windowTitle());
    m_Form->label_logo->setAccessibleName(windowTitle());
}

void SelectCertDialog::SetListColumns()
{
    struct Column {
        const char* key;
        int width;
    };
    static constexpr Column columns[] = {{"DLG_CERTLISTCTRL_DN", 95}, {"DLG_CERTLISTCTRL_ISSUER", 92},
        {"DLG_CERTLISTCTRL_USAGE", 92}, {"DLG_CERTLISTCTRL_VALIDITYTO", 75}};
    QTableView* list = m_Form->tableView_certlist;
    sigil::showWholeRows(list);
    QStringList headers;
    for (const Column& column : columns)
        headers << Texts().ui(column.key);
    m_Model.setHorizontalHeaderLabels(headers);
    if (list->model() != &m_Model) {
        list->setModel(&m_Model);
        // A row can also be selected with the keyboard or by a load; the field must not stay as the row before left
        // it. The selected row counts, not the current one: that is the one that OK takes.
        connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { LockPassword(SelectedRow()); });
    }
    for (int i = 0; i < headers.size(); ++i)
        list->setColumnWidth(i, columns[i].width);
    list->setFont(m_ListFont);
}

void SelectCertDialog::SetButtonImage(int state, int bit, int language)
{
    const auto media = std::find_if(
        std::begin(mediaButtons), std::end(mediaButtons), [&](const MediaButton& b) { return b.bit == bit; });
    if (media == std::end(mediaButtons))
        return;
    QPushButton* button = m_Form.get()->*media->button;
    QIcon icon;
    icon.addPixmap(QPixmap(imagePath(media->image, state, language)), QIcon::Normal, QIcon::On);
    button->setText(Texts().ui(media->textKey));
    button->setIcon(icon);
    button->setIconSize(state == 2 ? QSize(52, 62) : QSize(50, 60));
    button->setEnabled(state == 1 || state == 2);
}

void SelectCertDialog::SetLogoImage()
{
    const QString source = sigil::fromEucKr(sigil::fieldText(m_SelectOptions.szLogo));
    bool shown = false;
    if (m_SelectOptions.byCivicLogo != 0)
        shown = ShowLogo(QPixmap(":/bmp/image/CivicLogo.bmp"));
    else if (source == SIGIL_LOGO_FROM_DATA)
        shown = LoadDataforSetPixmap(m_ExtraOptions.szData, static_cast<int>(std::strlen(m_ExtraOptions.szData)));
    else if (!source.isEmpty())
        shown = ShowLogo(QPixmap(":/bmp/image/" + lastComponent(source)));
    if (!shown) {
        const bool usim = m_Form->pushButton_smcert->isEnabled();
        ShowLogo(QPixmap(usim ? ":/bmp/image/QuorraLogo.bmp" : ":/bmp/image/Logo.bmp"));
    }
    m_Form->label_logo->show();
}

bool SelectCertDialog::ShowLogo(const QPixmap& logo)
{
    if (logo.isNull())
        return false;
    m_Form->label_logo->setPixmap(logo);
    return true;
}
