// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/removeable_dialog.h"

#include "foundation/text_field.h"
#include "ui/contrast.h"
#include "ui/dialog_support.h"
#include "ui/korean_font.h"
#include "ui/large_type.h"
#include "ui_removeable_dialog.h"

#include <sigildesk/certlist.h>

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <new>

namespace {

/** The processor fills as many records as disks are mounted at that moment: room for those mounted since the count. */
constexpr std::size_t spareDrives = 16;

bool isArrow(QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    return key == Qt::Key_Up || key == Qt::Key_Down;
}

bool isFocusByKey(QEvent* event)
{
    if (event->type() != QEvent::FocusIn)
        return false;
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

} // namespace

RemoveableDialog::RemoveableDialog(QWidget* parent)
    : QDialog(parent)
    , m_Form(std::make_unique<Ui_RemoveableDialog>())
{
    m_Form->setupUi(this);
    sigil::fitForm(this);
    sigil::giveIcon(this);
    sigil::letReturnPressButtons(this);
    sigil::makeSelectionsReadable(this);
    m_Form->label_text->setFocus();
    m_Form->label_text->installEventFilter(this);
    m_Form->tableView_remobable->installEventFilter(this);
}

RemoveableDialog::~RemoveableDialog() = default;

void RemoveableDialog::SetCaller(int language, const char* folder, void* processor)
{
    m_nLanguage = language;
    sigil::copyText(m_szLibraryFolder, folder);
    m_hProcessor = processor;
}

void RemoveableDialog::InitSetControl()
{
    m_Texts = sigil::LanguageTexts(sigil::languageFile(m_szLibraryFolder, sigil::readableLanguage(m_nLanguage)));
    setWindowTitle(m_Texts.ui("DLG_REMOVABLE_CAPTION"));
    m_Form->label_text->setText(m_Texts.ui("DLG_REMOVABLE_TITLE"));
    m_Form->pushButton_ok->setText(m_Texts.ui("DLG_BUTTON_OK"));
    m_Form->pushButton_cancel->setText(m_Texts.ui("DLG_BUTTON_CANCEL"));
    m_Form->tableView_remobable->setAccessibleName(m_Texts.ui("DLG_REMOVABLE_LIST"));
}

int RemoveableDialog::GetRemovableDisk()
{
    int count = 0;
    m_nRv = CLP_GetRemDriveCount(m_hProcessor, &count);
    if (m_nRv == 0 && count > 0)
        m_nRv = ReadDrives(count);
    else
        m_nRv = SIGIL_FOLDERS_NOT_FORMED;
    if (m_nRv == 0)
        SetListItem();
    return m_nRv;
}

int RemoveableDialog::ReadDrives(int count)
{
    const auto counted = static_cast<std::size_t>(count);
    try {
        m_Drives.assign(counted + spareDrives, tagDRIVEINFO{});
    } catch (const std::bad_alloc&) {
        return SIGIL_NO_MEMORY;
    }
    const int rv = CLP_GetRemDrive(m_hProcessor, m_Drives.data());
    m_Drives.resize(counted);
    return rv == 0 ? 0 : SIGIL_FOLDERS_NOT_FORMED;
}

void RemoveableDialog::SetListItem()
{
    QTableView* list = m_Form->tableView_remobable;
    QFont font = list->font();
    font.setPointSize(8);
    list->setFont(font);
    sigil::showWholeRows(list);
    m_Model.clear();
    m_Model.setHorizontalHeaderLabels({m_Texts.ui("DLG_REMOVABLE_LIST")});
    list->setModel(&m_Model);
    list->setColumnWidth(0, sigil::scaled(list, 284));
    sigil::tipHeaders(m_Model);
    for (const tagDRIVEINFO& drive : m_Drives) {
        const int row = m_Model.rowCount();
        m_Model.insertRow(row);
        const QString shown = sigil::fromEucKr(sigil::fieldText(drive.szDisplay));
        m_Model.setData(m_Model.index(row, 0), shown);
        m_Model.setData(m_Model.index(row, 0), sigil::toolTipOf(shown), Qt::ToolTipRole);
    }
}

void RemoveableDialog::on_pushButton_ok_clicked()
{
    sigil::guard(*this, [this] { Confirm(); });
}

void RemoveableDialog::Confirm()
{
    const QItemSelectionModel* selection = m_Form->tableView_remobable->selectionModel();
    if (selection->hasSelection()) {
        const int row = selection->selectedIndexes().first().row();
        sigil::copyText(m_szChosenDrive, sigil::fieldText(m_Drives[static_cast<std::size_t>(row)].szMountDir));
        accept();
        return;
    }
    m_nBoxResult = sigil::showInformation(
        this, m_Texts, m_Texts.ui("DLG_REMOVABLE_CAPTION"), m_Texts.ui("DLG_REMOVABLE_TITLE"));
}

bool RemoveableDialog::eventFilter(QObject* watched, QEvent* event)
{
    QTableView* list = m_Form->tableView_remobable;
    if (watched == m_Form->label_text && isArrow(event)) {
        list->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    if (watched == list && isFocusByKey(event) && !list->selectionModel()->hasSelection())
        list->selectRow(0);
    return QDialog::eventFilter(watched, event);
}

void RemoveableDialog::on_pushButton_cancel_clicked() { reject(); }

void RemoveableDialog::on_tableView_remobable_doubleClicked(const QModelIndex&) { on_pushButton_ok_clicked(); }

void RemoveableDialog::keyPressEvent(QKeyEvent* event)
{
    sigil::takeKey(
        event, [this] { on_pushButton_cancel_clicked(); }, [this] { on_pushButton_ok_clicked(); });
}
