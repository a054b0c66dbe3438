/** @file
 *  The dialog in which the user picks a storage medium and a certificate and types its password.
 *
 *  Set-up, in this order: constructor, SetLibraryFolder, SetInitOption, InitSetControl, Initalize, SetInitMediaCert;
 *  then exec(). After acceptance GetSelectCertinfo hands out the result.
 *
 *  The class is written in six files: select_cert_dialog.cpp (life, keys), select_cert_options.cpp (what the caller
 *  asked for: options, texts, images), select_cert_logo.cpp (a logo as text), select_cert_media.cpp (media and list), select_cert_confirm.cpp (password and
 *  result), select_cert_import.cpp (PKCS#12 files).
 */
#pragma once

#include "foundation/secret.h"

#include <sigildesk/dialogs.h>
#include <sigildesk/records.h>
#include <sigildesk/util.h>

#include <QDialog>
#include <QFont>
#include <QStandardItemModel>
#include <memory>
#include <string_view>
#include <vector>

class QItemSelection;
class QPixmap;
class Ui_SelectCertDialog;

namespace sigil {
class LanguageTexts;
}

class SelectCertDialog : public QDialog {
    Q_OBJECT

public:
    explicit SelectCertDialog(QWidget* parent = nullptr);
    ~SelectCertDialog() override;

    /** Puts everything but the form back to its start; run once, by the constructor. */
    void InitVariable();
    /** The folder that the password and the removable-disk dialogs are given; at most 259 characters. */
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
    /** Lists the certificates of a disk. @param drive mount folder of medium 2, else null
     *  @return 0, else the processor's code; 1115 no certificate */
    int LoadCertDisk(int medium, char* drive);
    /** Takes a certificate from memory as the only entry; the list on the screen is left alone.
     *  @return 0; 1115 not accepted; else the processor's code */
    int LoadMemoryCert(
        char* item1, int length1, char* item2, int length2, char* item3, int length3, char* item4, int length4);
    /** Text and picture of a media button. @param state 0 disabled, 1 enabled, 2 enabled and in use
     *  @param bit 1 hard disk, 2 removable disk, 4 USIM, 8 token, 16 smart card, 32 phone; others: nothing happens */
    void SetButtonImage(int state, int bit, int language);
    void SetLogoImage();
    /** Shows a logo given as a BMP image in base64. @return whether it is shown */
    bool LoadDataforSetPixmap(char* text, int length);
    /** Copies one entry of the processor into the dialog's own list. */
    void CopyCertInfoList(int index, tagCERTINFO* entry);
    /** Appends a row for each entry. */
    void SetItemTableView();
    /** Tells about an expired certificate and locks the password field, as far as the options ask for it. */
    void SetExpiredCert(int row);

    /** Unlocks the certificate of @p row and stages the result; failures are shown to the user.
     *  @return 0, else the processor's code; 1114 no signing key, or one too long for the result */
    int SetSelectCertInfo(int row, char* password);
    /** Stages the entry of @p row. The password is not looked at. */
    void CopySelectCertInfo(int row, char* password);
    /** Hands the staged result out; the record is zero-filled first. Null is ignored. */
    void GetSelectCertinfo(tagSELCERTINFO* result);
    /** Imports a PKCS#12 file into the list. @return 0, else the code of CLP_ImportPFX or LoadMemoryCert */
    int LoadCertPKCS12(char* path, char* password);

    /** A call of ShowUserCert begins: nothing is decided, and from now on ShowUserCertInit stays in its loop. */
    void StartCall();
    /** Overwrites the keys that a call left in the dialog: the caller's, the decrypted and the staged ones. */
    void ForgetKeys();

    int LastResult() const { return m_nRv; }
    int FinishFlag() const { return m_nFinish; }
    int AcceptedFlag() const { return m_nAccepted; }
    /** Whether the user has chosen or given up. */
    bool IsDecided() const { return m_nAccepted != undecided; }
    int Medium() const { return m_nMedium; }
    int CertCount() const { return static_cast<int>(m_Entries.size()); }
    /** What the last load failed with: "LoadCertDisk() m_nRv : 1115". */
    const char* LastError() const { return m_szLastError; }
    /** What the processor is asked to list. */
    const tagLOADCERTOPT& LoadOptions() const { return m_LoadOptions; }

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

private:
    sigil::LanguageTexts Texts();
    void SetControlTexts();
    void SetAccessibleNames();
    void SetListColumns();
    void CopyLoadOptions(const tagLOADSELECTCERTOPTION& load);
    void BuildProcessorOptions();
    void CopyMemoryItems(const tagLOADSELECTCERTOPTION& load);
    bool ShowLogo(const QPixmap& logo);
    int LoadList(int medium, char* drive);
    /** @return the result of the last entry */
    int ReadEntries(int count);
    void ClearList();
    void TellExpired(int row);
    /** Whether the certificate of @p row has expired and the options keep such a one from being used. */
    bool IsLocked(int row) const;
    /** Lets a password be typed unless the certificate of @p row is locked; what was typed before is then wiped. */
    void LockPassword(int row);
    void ShowStatus(const char* messageKey);
    void ShowMessage(const char* messageKey, const char* captionKey = "DLG_SELCERT_CAPITON");
    /** Row of the first selected index, or -1 without a selection. */
    int SelectedRow() const;
    int DecryptKeys(int row, char* password);
    /** A host must never be told of success without a key. @return 0; 1114, told to the user, when the signing key is
     *  missing or does not fit the result */
    int RequireSignKey(int row);
    int FetchRandom(int row, char* password);
    int ShowImported(char* signCert, int signCertLength, char* signKey, int signKeyLength, char* kmCert,
        int kmCertLength, char* kmKey, int kmKeyLength);
    void ReportImport(int result);

    static constexpr int undecided = -1;

    int m_nRv;       ///< result of the last operation
    int m_nFinish;   ///< 0 once ShowUserCert has run the dialog: ShowUserCertInit then stays in its loop
    int m_nMedium;   ///< medium that is listed: 0 none, 1 hard disk, 2 removable disk, 6 memory
    int m_nAccepted; ///< -1 not decided yet, 0 given up, 1 a certificate was unlocked
    char m_szLibraryFolder[260] = {};
    std::unique_ptr<Ui_SelectCertDialog> m_Form;
    QStandardItemModel m_Model;
    QFont m_ListFont;
    void* m_hProcessor = nullptr; ///< from CLP_Initalize
    CUtil m_Util;
    tagLOADCERTOPT m_LoadOptions;
    tagINITOPT m_InitOptions;
    tagLOADSELECTCERTOPTION m_SelectOptions; ///< without the memory items, which are kept once, below
    unsigned char m_byMemoryItem1[4096];
    unsigned char m_byMemoryItem2[4096];
    int m_nMemoryItem1Len;
    int m_nMemoryItem2Len;
    tagEXTRAOPTION m_ExtraOptions;
    tagSELCERTINFO m_Staging;
    std::vector<tagCERTINFO, sigil::WipingAllocator<tagCERTINFO>>
        m_Entries;                ///< of the current medium, in list order
    unsigned char m_byMemoryFlag; ///< 1: the caller handed over a certificate
    char m_szLangFile[260];
    char m_szLastError[1024];
    char m_szRememberedPassword[1024]; ///< of the last successful import
};
