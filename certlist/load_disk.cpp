// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/load_disk.h"

#include "certlist/codes.h"
#include "certlist/pair_reader.h"
#include "certlist/store_layout.h"
#include "certlist/store_repair.h"
#include "certlist/toolkit_calls.h"
#include "foundation/environment.h"
#include "foundation/local_time.h"
#include "foundation/text_field.h"

#include <unistd.h>

#include <algorithm>
#include <new>

using namespace sigil;

namespace {

constexpr SettingsReporter diskReporter{
    "CLoadDISK::SetPolicyIDNameList()", "CLoadDISK::SetPolicyIDNameList()", "CLoadDISK::SetIssuerNameList()"};

constexpr char parsingCert[] = "CLoadDISK::ParsingCert()";
constexpr ReaderStyle diskStyle{parsingCert, parsingCert, nullptr, false, false, true};

} // namespace

CLoadDISK::CLoadDISK(int nLanguage, const char* szHomePath)
    : CertificateLoader(nLanguage, szHomePath, diskReporter)
{
    m_nMediaType = SIGIL_MEDIUM_HARD_DISK;
}

void CLoadDISK::setDrive(const char* szPath) { copyText(m_szDrivePath, szPath); }

int CLoadDISK::GetDirectoryCount(int nPKIType) const
{
    const Family* family = familyWithCode(nPKIType);
    return family ? foldersOf(*family, m_nMediaType).places : 0;
}

int CLoadDISK::GetCertDirectory(int nPKIType)
{
    const Family* family = familyWithCode(nPKIType);
    if (!family)
        return SIGIL_SUCCESS;
    const std::string home = environment().homeFolder();
    const std::string base = m_nMediaType == SIGIL_MEDIUM_REMOVABLE_DISK ? m_szDrivePath : home;
    if (home.empty() || base.empty())
        return SIGIL_FOLDERS_NOT_FORMED;
    std::vector<std::string>& list = m_folders[nPKIType];
    auto place = list.begin();
    for (const char* folder : foldersOf(*family, m_nMediaType).folders)
        if (place != list.end())
            *place++ = cutPath(base + folder);
    return SIGIL_SUCCESS;
}

int CLoadDISK::LoadCertList()
{
    m_search.begin();
    m_check = {};
    noticeZone();
    std::vector<const Family*> found;
    int total = 0;
    for (const Family& family : families()) {
        const int before = total;
        const int rc = m_options.pkiTypes & family.code ? countFamily(family, total) : SIGIL_SUCCESS;
        if (rc != SIGIL_SUCCESS)
            return rc;
        if (total > before)
            found.push_back(&family);
    }
    if (m_search.isGivenUp())
        return SIGIL_CANCELLED;
    if (total == 0)
        return m_search.nothingFound();
    fillList(found, total);
    if (m_search.isGivenUp()) {
        ClearCertList();
        return SIGIL_CANCELLED;
    }
    return m_nCount > 0 ? SIGIL_SUCCESS : m_search.nothingFound();
}

int CLoadDISK::countFamily(const Family& family, int& total)
{
    const int places = GetDirectoryCount(family.code);
    if (places < 1)
        return SIGIL_SUCCESS;
    m_folders[family.code].assign(static_cast<std::size_t>(places), {});
    const int rc = GetCertDirectory(family.code);
    if (rc != SIGIL_SUCCESS)
        return rc;
    // Files that a killed operation left half changed are put back once, before anything is judged.
    for (const std::string& folder : m_folders[family.code])
        if (!folder.empty()) // some families have places without a folder
            repairStore(family, folder, [this] { return m_search.goesOn(); });
    search(family, true, [&total](const tagCERTINFO&) { ++total; });
    return SIGIL_SUCCESS;
}

void CLoadDISK::fillList(const std::vector<const Family*>& found, int total)
{
    ClearCertList();
    m_entries.resize(std::max(m_entries.size(), static_cast<std::size_t>(total)));
    m_nCount = total;
    m_check.isNeeded = m_check.metUnfit;
    int next = 0;
    // Files that came after the counting find no place in the list and are left for the next listing.
    const auto keep = [&](const tagCERTINFO& entry) {
        if (next < m_nCount)
            CopyCertInfo(next++, &entry);
    };
    try {
        for (const Family* family : found)
            search(*family, false, keep);
        m_nCount = next;              // fewer than were counted when files went in between
    } catch (const std::bad_alloc&) { // half a list would show certificates without a name
        ClearCertList();
        throw;
    }
}

void CLoadDISK::search(const Family& family, bool countOnly, const StoreSearch::Keep& keep)
{
    // The second pass judges as the first one did, and nobody wants to hear it again.
    m_search.look(
        family, m_folders[family.code], [&](tagCERTINFO& entry) { return ParsingCert(countOnly, &entry); }, keep,
        countOnly ? m_observer : nullptr);
}

void CLoadDISK::ClearCertList()
{
    for (PackedEntry& entry : m_entries)
        entry.clear();
    m_nCount = 0;
}

void CLoadDISK::ClearCertInfo(tagCERTINFO* pEntry) { wipe(pEntry, sizeof *pEntry); }

void CLoadDISK::CopyCertInfo(int nIndex, const tagCERTINFO* pEntry)
{
    if (pEntry && hasEntry(nIndex))
        m_entries[static_cast<std::size_t>(nIndex)].store(*pEntry);
}

// Counting and filling judge a certificate alike, so that the second pass finds what the first one counted.
int CLoadDISK::ParsingCert(bool /*bCountOnly*/, tagCERTINFO* pEntry)
{
    ToolkitBytes certificate(m_hToolkit);
    const CertificateUnloader unload(m_hToolkit);
    pEntry->nMediaType = m_nMediaType;
    const int rc =
        PairReader(m_hToolkit, m_log, m_search.folder(), m_check).read(certificate, m_options.keyPairType, *pEntry);
    return rc == SIGIL_SUCCESS ? read(diskStyle, certificate, *pEntry) : rc;
}

template <class Operation>
int CLoadDISK::onEntry(int nIndex, Operation operation)
{
    if (!hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry(this->entry(nIndex));
    const int rc = operation(*entry);
    CopyCertInfo(nIndex, &*entry); // also what was done before a failure
    return rc;
}

int CLoadDISK::DecryptPriKey(int nIndex, char* szPassword, CBinary* pSignKey, CBinary* pKmKey)
{
    return onEntry(
        nIndex, [&](tagCERTINFO& entry) { return keys().decrypt(entry, szPassword, *pSignKey, *pKmKey); });
}

int CLoadDISK::GetPrikeyRandom(int nIndex, char* szPassword)
{
    return onEntry(nIndex, [&](tagCERTINFO& entry) { return keys().takeRandom(entry, szPassword); });
}

int CLoadDISK::VerifyVID(int nIndex, char* szIdn, char* szPassword)
{
    return onEntry(nIndex, [&](tagCERTINFO& entry) { return keys().verifyIdentity(entry, szIdn, szPassword); });
}

int CLoadDISK::ChangePassword(int nIndex, char* szOldPassword, char* szNewPassword)
{
    return onEntry(
        nIndex, [&](tagCERTINFO& entry) { return keys().changePassword(entry, szOldPassword, szNewPassword); });
}

int CLoadDISK::GetPrikeyAlg(const CBinary& certificate, int* pnAlg)
{
    return keys().algorithmFor(certificate, *pnAlg);
}

int CLoadDISK::GetPKCS12(char* szPath, char* szPassword, CertNKey& out)
{
    return Pkcs12Transfer(m_hToolkit, m_log).read(szPath, szPassword, out);
}

int CLoadDISK::MakePKCS12(int nIndex, char* szPassword, CBinary& pfx)
{
    if (!hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    return Pkcs12Transfer(m_hToolkit, m_log).write(*ScratchEntry(entry(nIndex)), szPassword, pfx);
}

int CLoadDISK::WriteFile(const CBinary& data, char* szPath) { return writeFile(m_hToolkit, data, szPath); }

int CLoadDISK::writeExport(const CBinary& pfx, char* szPath) { return files().writeExport(pfx, szPath); }

int CLoadDISK::writeCopy(char* szPassword, int nAlg, CertPaths& paths, const CertNKey& source)
{
    return files().writeCopy(szPassword, nAlg, paths, source);
}

int CLoadDISK::WriteCertNKey(bool bCertOnly, bool bKeyAsIs, char* szPassword, int nAlg, char* szCertPath,
    char* szKeyPath, const CBinary& certificate, const CBinary& key)
{
    return files().write({.certificateOnly = bCertOnly, .keyAsIs = bKeyAsIs}, szPassword, nAlg, szCertPath,
        szKeyPath, certificate, key);
}

int CLoadDISK::ReadCertNKey(bool bStoredKey, int nIndex, CertNKey& out)
{
    if (nIndex < 0 || nIndex > count())
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry;
    if (hasEntry(nIndex))
        this->entry(nIndex).copyTo(*entry);
    assign(out.signCert, value(*entry, field::signCert));
    assign(out.signKey, value(*entry, bStoredKey ? field::encSignKey : field::signKey));
    assign(out.kmCert, value(*entry, field::kmCert));
    assign(out.kmKey, value(*entry, bStoredKey ? field::encKmKey : field::kmKey));
    return SIGIL_SUCCESS;
}

int CLoadDISK::ReadCertNKeyFromPath(char* szCertPath, char* szKeyPath, CBinary& certificate, CBinary& key)
{
    return files().read(szCertPath, szKeyPath, certificate, key);
}

// The first entry of a list cannot be deleted; dialogs rely on it.
int CLoadDISK::DeleteCertNKey(int nIndex, char* szPassword)
{
    if (!szPassword || nIndex < 1 || !hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry(this->entry(nIndex));
    const int rc = files().remove(*entry, szPassword);
    // Removes nothing but an empty home folder: the certificate's own folder stays, deliberately.
    if (rc == SIGIL_SUCCESS && (entry->nPKIType == SIGIL_FAMILY_NPKI || entry->nPKIType == SIGIL_FAMILY_PPKI))
        rmdir(environment().homeFolder().c_str());
    return rc;
}

int CLoadDISK::MakeCertPath(
    int nTargetMedia, const char* szTargetPath, const CBinary& certificate, CertPaths& paths)
{
    constexpr int subjectCapacity = 1024;
    constexpr int keyCapacity = 2048;
    char subject[subjectCapacity + 1] = {};
    char algorithm[keyCapacity] = {};
    char keyLength[keyCapacity] = {};
    char key[keyCapacity + 1] = {};
    const CertificateUnloader unload(m_hToolkit);
    ToolkitBytes record(m_hToolkit, certificate.m_pData, certificate.m_nLength);
    ToolkitBytes der(m_hToolkit);
    int rc = CertLoad(m_hToolkit, record.get());
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(
            "CLoadDISK::MakeCertPath()", error::parsingCert, "CertLoad()", rc, SIGIL_CERTIFICATE_UNREADABLE);
    const CallResult read = callAll({
        {"CertGetSubjectName()", [&] { return CertGetSubjectName(m_hToolkit, subjectCapacity, subject); }},
        {"CertGetPubKeyInfo()",
            [&] { return CertGetPubKeyInfo(m_hToolkit, algorithm, keyLength, keyCapacity, key, der.get()); }},
    });
    if (read.code != SIGIL_SUCCESS) // the name in the record is one that readers of the log know
        return m_log.failed(
            "CLoadDISK::ParsingCert()", error::parsingCert, read.name, read.code, SIGIL_CERTIFICATE_UNREADABLE);
    char cn[subjectCapacity] = {};
    char organisation[subjectCapacity] = {};
    char organisationUnit[subjectCapacity] = {};
    m_Util.GetCNString(subject, sizeof cn, cn);
    m_Util.GetOString(subject, sizeof organisation, organisation);
    m_Util.GetOUString(subject, sizeof organisationUnit, organisationUnit);
    const bool toHardDisk = nTargetMedia == SIGIL_MEDIUM_HARD_DISK;
    const std::string base = toHardDisk ? environment().homeFolder() : szTargetPath ? szTargetPath : "";
    formCopyPaths(toHardDisk, base.c_str(), {subject, cn, organisation, organisationUnit}, paths);
    return SIGIL_SUCCESS;
}
