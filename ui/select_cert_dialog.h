// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The dialog in which the user picks a storage medium and a certificate and types its password.
 *
 *  Set-up, in this order: constructor, SetLibraryFolder, SetInitOption, InitSetControl, Initalize, SetInitMediaCert;
 *  then exec(). After acceptance GetSelectCertinfo hands out the result.
 *
 *  The dialog shows; what is listed, unlocked and told is decided by its Selection.
 */
#pragma once

#include "foundation/text_field.h"
#include "ui/certificate_table.h"
#include "ui/language_texts.h"
#include "ui/media_buttons.h"
#include "ui/resting_controls.h"
#include "ui/selection.h"
#include "ui/selection_logo.h"

#include <sigildesk/dialogs.h>

#include <QDialog>
#include <memory>
#include <string_view>

class Ui_SelectCertDialog;

class SelectCertDialog : public QDialog {
    Q_OBJECT

public:
    explicit SelectCertDialog(QWidget* parent = nullptr);
    ~SelectCertDialog() override;

    /** The folder that the password and the removable-disk dialogs are given, cut to pathCapacity. */
    void SetLibraryFolder(std::string_view folder);
    /** Takes copies of the caller's options. Texts that are empty leave the value of an earlier call.
     *  @return 0; 1001 @p init null */
    int SetInitOption(tagINITOPT* init, tagLOADSELECTCERTOPTION* load, tagEXTRAOPTION* extra);
    /** Texts, list and images in the language of the options. */
    void InitSetControl();
    /** Connects to the certificate-list processor. @return 0, else the code of CLP_Initalize or CLP_SetType */
    int Initalize();
    /** Opens on the memory certificate (6) or, for any other value, on the hard disk. */
    void SetInitMediaCert(int medium);
    /** Lists the certificates of a disk. When that takes long, the dialog shows itself meanwhile: it is painted and moved,
     *  and the user may give up.
     *  @param drive mount folder of medium 2, else null
     *  @return 0, else the processor's code; 1115 no certificate; -1 given up */
    int LoadCertDisk(int medium, char* drive);
    /** Imports a PKCS#12 file into the list. @return 0, else the code of CLP_ImportPFX or CLP_LoadMemoryCert */
    int LoadCertPKCS12(char* path, char* password);
    /** See MediaButtons. */
    void SetButtonImage(int state, int bit, int language);
    void SetLogoImage();
    /** Tells about an expired certificate and locks the password field, as far as the options ask for it. */
    void SetExpiredCert(int row);
    /** Unlocks the certificate of @p row and stages the result; failures are shown to the user.
     *  @return as Selection::unlock() */
    int SetSelectCertInfo(int row, char* password);
    /** Hands the staged result out; the record is zero-filled first. Null is ignored. */
    void GetSelectCertinfo(tagSELCERTINFO* result);
    /** What this dialog shows. */
    sigil::Selection& State() { return m_Selection; }
    /** Certificates are being listed: the host was called from in between. */
    bool IsListing() const { return m_bListing; }

public slots: // NOLINT(readability-redundant-access-specifiers): the slots must be told apart
    void on_pushButton_hdd_clicked();
    void on_pushButton_remove_clicked();
    void on_pushButton_ok_clicked();
    void on_pushButton_find_clicked();
    void on_pushButton_cancel_clicked();
    void on_pushButton_view_clicked();
    void on_tableView_certlist_doubleClicked(const QModelIndex& index);
    void on_tableView_certlist_clicked(const QModelIndex& index);
    /** Escape cancels, Return confirms, every other key ends here. */
    void keyPressEvent(QKeyEvent* event) override;
    /** Every way of giving up ends here, the window's close button too. */
    void reject() override;
    /** Every way of closing ends here; with 1000 when memory ran out, which is no choice of a certificate. */
    void done(int result) override;

private:
    void SetControlTexts();
    void OpenHardDisk();
    void OpenRemovableDisk();
    void ImportFile();
    void ChooseRow();
    void Confirm();
    void ViewRow();
    /** Shows the entries of an operation that changed them. */
    void ShowList(const sigil::Outcome& outcome);
    /** Lets a password be typed unless the certificate of @p row is locked; what was typed before is then wiped. */
    void LockPassword(int row);
    /** Lets the window live for a moment while it is busy. */
    void GiveTime();
    void PutStatus(const QString& text);
    /** Puts it into the status line and has it said. */
    void ShowStatus(const QString& text);
    /** Shows what there is to tell, in a box or in the status line. */
    void Tell(const sigil::Outcome& outcome);

    char m_szLibraryFolder[sigil::pathCapacity] = {};
    sigil::LanguageTexts m_Texts; ///< in the language of the call
    QString m_Status;             ///< what the status line shows unless a hint does
    sigil::Selection m_Selection;
    bool m_bListing = false;
    std::unique_ptr<sigil::RestingControls> m_Busy; ///< while a listing takes long
    std::unique_ptr<Ui_SelectCertDialog> m_Form;
    sigil::CertificateTable m_Table;
    sigil::MediaButtons m_MediaButtons;
    sigil::SelectionLogo m_Logo;
};
