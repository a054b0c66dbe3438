// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/file_chooser.h"

#include "ui/dialog_support.h"
#include "ui/language_texts.h"

#include <QAction>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QListView>
#include <QToolButton>
#include <QUrl>

namespace sigil {

namespace {

constexpr char context[] = "QFileDialog";

struct NamedText {
    const char* name; ///< of a widget or action of Qt's dialog
    const char* source;
};

constexpr NamedText buttonTips[] = {
    {"backButton", "Back"},
    {"forwardButton", "Forward"},
    {"toParentButton", "Parent Directory"},
    {"newFolderButton", "Create New Folder"},
    {"listModeButton", "List View"},
    {"detailModeButton", "Detail View"},
};

constexpr NamedText actionTexts[] = {
    {"qt_rename_action", "&Rename"},
    {"qt_delete_action", "&Delete"},
    {"qt_show_hidden_action", "Show &hidden files"},
    {"qt_new_folder_action", "&New Folder"},
};

/** The list of files with its headers, and the kinds of files, in the language of the dialog. */
class FileColumns : public QIdentityProxyModel {
public:
    FileColumns(const QtTexts& texts, QObject* parent)
        : QIdentityProxyModel(parent)
        , m_folder(texts(context, "Folder"))
        , m_file(texts(context, "%1 File"))
    {
        for (const char* header : {"Name", "Size", "Type", "Date Modified"})
            m_headers << texts("QFileSystemModel", header);
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < m_headers.size())
            return m_headers.at(section);
        return QIdentityProxyModel::headerData(section, orientation, role);
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        constexpr int kind = 2;
        if (index.column() != kind || role != Qt::DisplayRole)
            return QIdentityProxyModel::data(index, role);
        const QFileInfo file(index.data(QFileSystemModel::FilePathRole).toString());
        return file.isDir() ? m_folder : m_file.arg(file.suffix());
    }

private:
    QStringList m_headers;
    QString m_folder, m_file;
};

/** The whole machine has no name of its own among the places. */
void nameComputer(QAbstractItemModel& places, const QString& name)
{
    constexpr int url = Qt::UserRole + 1;
    for (int row = 0; row < places.rowCount(); ++row)
        if (const QModelIndex place = places.index(row, 0); place.data(url).toUrl() == QUrl("file:"))
            places.setData(place, name);
}

} // namespace

FileChooser::FileChooser(QWidget* parent, int language, const LanguageTexts& texts)
    : QFileDialog(parent, texts.ui("DLG_FINDFILE_CAPTION"), "/")
    , m_texts(texts)
    , m_qtTexts(language)
{
    setOption(DontUseNativeDialog);
    setOption(ReadOnly); // a file is picked here; nothing is renamed or deleted
    setFileMode(ExistingFile);
    setNameFilters(
        {texts.ui("DLG_FINDFILE_PFX") + "(*.PFX *.pfx)", texts.ui("DLG_FINDFILE_P12") + "(*.P12 *.p12)"});
    setProxyModel(new FileColumns(m_qtTexts, this));
    translateControls();
}

QString FileChooser::choose() { return exec() == Accepted ? selectedFiles().value(0) : QString(); }

void FileChooser::translateControls()
{
    setLabelText(LookIn, m_qtTexts(context, "Look in:"));
    setLabelText(FileName, m_qtTexts(context, "File &name:"));
    setLabelText(FileType, m_qtTexts(context, "Files of type:"));
    setLabelText(Accept, m_qtTexts(context, "&Open"));
    setLabelText(Reject, m_qtTexts("QPlatformTheme", "Cancel"));
    // Names are not promised: another Qt may have other controls.
    for (const NamedText& button : buttonTips)
        for (auto* widget : findChildren<QToolButton*>(button.name)) {
            widget->setToolTip(m_qtTexts(context, button.source));
            widget->setAccessibleName(widget->toolTip());
        }
    for (const NamedText& action : actionTexts)
        for (auto* entry : findChildren<QAction*>(action.name))
            entry->setText(m_qtTexts(context, action.source));
    for (const auto* places : findChildren<QListView*>("sidebar"))
        nameComputer(*places->model(), m_qtTexts("QFileSystemModel", "Computer"));
}

void FileChooser::accept()
{
    const QString file = selectedFiles().value(0);
    if (file.isEmpty() || QFileInfo::exists(file))
        return QFileDialog::accept();
    const char* const missing = "%1\nFile not found.\nPlease verify the correct file name was given.";
    showInformation(this, m_texts, windowTitle(), m_qtTexts(context, missing).arg(file));
}

} // namespace sigil
