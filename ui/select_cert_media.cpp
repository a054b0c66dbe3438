// SelectCertDialog: the storage media and the list of certificates.

#include "ui/select_cert_dialog.h"

#include "foundation/text_field.h"
#include "ui/cert_records.h"
#include "ui/dialog_support.h"
#include "ui/language_texts.h"
#include "ui/removeable_dialog.h"
#include "ui_select_cert_dialog.h"

#include <sigildesk/certlist.h>

#include <QItemSelectionModel>
#include <cstdio>

namespace {

constexpr int hardDisk = 1;
constexpr int removableDisk = 2;
constexpr int memory = 6;

constexpr int noDrive = 1111;
constexpr int noCertificate = 1115;

bool isExpired(const tagCERTINFO& entry) { return entry.nValidStatus == 2 || entry.nValidStatus == 5; }

} // namespace

void SelectCertDialog::SetInitMediaCert(int medium)
{
    if (medium != memory)
        return on_pushButton_hdd_clicked();
    ClearList(); // a row of an earlier call must not stand for the caller's certificate
    LoadMemoryCert(reinterpret_cast<char*>(m_byMemoryItem1), m_nMemoryItem1Len,
        reinterpret_cast<char*>(m_byMemoryItem2), m_nMemoryItem2Len, nullptr, 0, nullptr, 0);
}

void SelectCertDialog::on_pushButton_hdd_clicked()
{
    m_nRv = 0;
    m_nMedium = hardDisk;
    SetButtonImage(2, 1, m_InitOptions.nLanguage);
    if (LoadCertDisk(hardDisk, nullptr) == 0) {
        ShowStatus("MSG_SELECTCERT_SELCERTINPUTPWD");
        SetExpiredCert(0);
    }
}

void SelectCertDialog::on_pushButton_remove_clicked()
{
    RemoveableDialog chooser;
    chooser.SetCaller(m_InitOptions.nLanguage, m_szLibraryFolder, m_hProcessor);
    chooser.InitSetControl();
    if (chooser.GetRemovableDisk() != 0) {
        m_nRv = noDrive;
        ShowMessage("MSG_SELECTCERT_REMDRIVE_GETINFOFAIL", "DLG_REMOVABLE_CAPTION");
        return;
    }
    m_nMedium = removableDisk;
    if (chooser.exec() == Accepted) {
        SetButtonImage(1, 1, m_InitOptions.nLanguage);
        SetButtonImage(2, 2, m_InitOptions.nLanguage);
        LoadCertDisk(removableDisk, chooser.ChosenDrive());
    }
    // The removable button can be used once, and the medium stays 2 also when no drive was chosen: intended.
    SetButtonImage(1, 1, m_InitOptions.nLanguage);
    SetButtonImage(0, 2, m_InitOptions.nLanguage);
}

int SelectCertDialog::LoadCertDisk(int medium, char* drive)
{
    ClearList();
    m_nRv = LoadList(medium, drive);
    if (m_nRv == noCertificate)
        ShowStatus("MSG_SELECTCERT_NOCERT");
    if (m_nRv != 0)
        static_cast<void>(std::snprintf(m_szLastError, sizeof m_szLastError, "LoadCertDisk() m_nRv : %d", m_nRv));
    return m_nRv;
}

int SelectCertDialog::LoadList(int medium, char* drive)
{
    int rv = CLP_SetMediaType(m_hProcessor, medium, drive, 0);
    if (rv == 0)
        rv = CLP_LoadCertList(m_hProcessor);
    if (rv != 0)
        return rv;
    const int count = CLP_GetCertCount(m_hProcessor);
    if (count <= 0)
        return noCertificate;
    ReadEntries(count);
    SetItemTableView();
    m_Form->tableView_certlist->selectRow(0);
    return 0;
}

int SelectCertDialog::ReadEntries(int count)
{
    m_Entries.assign(static_cast<std::size_t>(count), tagCERTINFO{});
    std::vector<tagCERTINFO, sigil::WipingAllocator<tagCERTINFO>> scratch(1);
    int rv = 0;
    for (int index = 0; index < count; ++index) {
        // Cleared for each certificate, not once: the processor leaves a field alone that a certificate lacks, and
        // the host must not be handed the key-management pair or the paths of the one before.
        scratch[0] = tagCERTINFO{};
        rv = CLP_GetCertInfo(m_hProcessor, index, &scratch[0]);
        if (rv == 0)
            CopyCertInfoList(index, &scratch[0]);
    }
    return rv;
}

int SelectCertDialog::LoadMemoryCert(
    char* item1, int length1, char* item2, int length2, char* item3, int length3, char* item4, int length4)
{
    m_nMedium = memory;
    m_nRv = CLP_SetMediaType(m_hProcessor, memory, nullptr, 0);
    if (m_nRv == 0)
        m_nRv = CLP_LoadMemoryCert(m_hProcessor, item1, length1, item2, length2, item3, length3, item4, length4);
    if (m_nRv != 0)
        return m_nRv;
    const int count = CLP_GetCertCount(m_hProcessor);
    m_nRv = count > 0 ? ReadEntries(count) : noCertificate;
    return m_nRv;
}

void SelectCertDialog::CopyCertInfoList(int index, tagCERTINFO* entry)
{
    if (entry && index >= 0 && index < CertCount())
        sigil::copyEntry(*entry, m_Entries[static_cast<std::size_t>(index)]);
}

void SelectCertDialog::SetItemTableView()
{
    for (const tagCERTINFO& entry : m_Entries) {
        const QString columns[] = {sigil::fromEucKr(sigil::subjectName(entry)),
            sigil::fromEucKr(sigil::fieldText(entry.szIssuerName)),
            sigil::fromEucKr(sigil::fieldText(entry.szPolicyName)),
            sigil::fromEucKr(sigil::fieldText(entry.szValidTo))};
        const int row = m_Model.rowCount();
        m_Model.insertRow(row);
        for (int column = 0; column < 4; ++column)
            m_Model.setData(m_Model.index(row, column), columns[column]);
    }
}

void SelectCertDialog::ClearList()
{
    m_Model.removeRows(0, m_Model.rowCount());
    m_Entries.clear();
    m_Entries.shrink_to_fit(); // gives the memory back, which wipes it
}

void SelectCertDialog::on_tableView_certlist_clicked(const QModelIndex&)
{
    const int row = SelectedRow();
    if (row < 0)
        ShowMessage("MSG_SELECTCERT_NOTSELECTCERT");
    else
        SetExpiredCert(row);
}

void SelectCertDialog::SetExpiredCert(int row)
{
    if (row < 0 || row >= CertCount())
        return;
    LockPassword(row);
    if (isExpired(m_Entries[static_cast<std::size_t>(row)]) &&
        (m_SelectOptions.nMessageFlags & SIGIL_MESSAGE_EXPIRED))
        TellExpired(row);
}

void SelectCertDialog::TellExpired(int row)
{
    const tagCERTINFO& entry = m_Entries[static_cast<std::size_t>(row)];
    const std::string text =
        sigil::formatOneText(Texts().messageBytes("MSG_SELECTCERT_EXIRED"), sigil::fieldText(entry.szValidTo));
    sigil::showInformation(this, Texts().ui("DLG_SELCERT_CAPITON"), sigil::fromEucKr(text.substr(0, 1023)));
}

bool SelectCertDialog::IsLocked(int row) const
{
    return (m_SelectOptions.nSelectFlags & SIGIL_SELECT_LOCK_EXPIRED) && row >= 0 && row < CertCount() &&
        isExpired(m_Entries[static_cast<std::size_t>(row)]);
}

void SelectCertDialog::LockPassword(int row)
{
    const bool locked = IsLocked(row);
    if (locked)
        sigil::wipeField(m_Form->lineEdit_password); // typed for another certificate; none is taken for this one
    m_Form->lineEdit_password->setEnabled(!locked);
}
