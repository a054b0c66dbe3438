// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Lets the user choose one of the mounted removable disks.
 *
 *  Order of use: SetCaller, InitSetControl, GetRemovableDisk; when that returned 0, exec(); when that returned 1,
 *  ChosenDrive.
 */
#pragma once

#include "foundation/text_field.h"
#include "ui/language_texts.h"

#include <sigildesk/records.h>

#include <QDialog>
#include <QStandardItemModel>
#include <memory>
#include <vector>

class Ui_RemoveableDialog;

class RemoveableDialog : public QDialog {
    Q_OBJECT

public:
    explicit RemoveableDialog(QWidget* parent = nullptr);
    ~RemoveableDialog() override;

    /** @param folder of the language files, at most 1023 characters  @param processor stays the caller's */
    void SetCaller(int language, const char* folder, void* processor);
    /** Texts in the caller's language. */
    void InitSetControl();
    /** Lists the drives. @return 0; 1000 no memory; 1111 no drive, or the processor could not list them */
    int GetRemovableDisk();
    /** Mount folder of the chosen drive; empty before one was chosen. */
    char* ChosenDrive() { return m_szChosenDrive; }
    /** The button that closed the last information box, 0 before the first. */
    int BoxResult() const { return m_nBoxResult; }
    int LastResult() const { return m_nRv; }

public slots: // NOLINT(readability-redundant-access-specifiers): the slots must be told apart
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();
    void on_tableView_remobable_doubleClicked(const QModelIndex& index);
    /** Escape cancels, Return confirms, every other key ends here. */
    void keyPressEvent(QKeyEvent* event) override;

protected:
    /** The focus begins on the text above the list, where an arrow key reaches the list all the same; a list that is
     *  reached with the keyboard begins on its first row. */
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Confirm();
    int ReadDrives(int count);
    void SetListItem();

    int m_nRv = 0;
    int m_nLanguage = 0;
    char m_szLibraryFolder[1024] = {};
    char m_szChosenDrive[sigil::pathCapacity] = {};
    void* m_hProcessor = nullptr;
    std::unique_ptr<Ui_RemoveableDialog> m_Form;
    int m_nBoxResult = 0;
    QStandardItemModel m_Model;
    std::vector<tagDRIVEINFO> m_Drives;
    sigil::LanguageTexts m_Texts;
};
