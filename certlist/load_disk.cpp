#include "certlist/load_disk.h"

#include "certlist/codes.h"
#include "certlist/store_layout.h"
#include "certlist/toolkit_calls.h"
#include "foundation/environment.h"
#include "foundation/text_field.h"

#include <algorithm>
#include <new>
#include <system_error>

using namespace sigil;

namespace {

constexpr SettingsReporter reporter{
    "CLoadDISK::SetPolicyIDNameList()", "CLoadDISK::SetPolicyIDNameList()", "CLoadDISK::SetIssuerNameList()"};

constexpr char parsingCert[] = "CLoadDISK::ParsingCert()";
constexpr ReaderStyle readerStyle{parsingCert, parsingCert, nullptr, false, false, true};

/** False for what is no file or would not fit into an entry; a path that leads nowhere is left to the toolkit. */
bool mayBeRead(const SearchedFolder& folder, const char* path)
{
    struct stat status;
    if (!folder.statusOf(path, status))
        return true;
    return S_ISREG(status.st_mode) && status.st_size <= static_cast<off_t>(field::signCert.capacity);
}

} // namespace

CLoadDISK::CLoadDISK(int nLanguage, const char* szHomePath)
    : CertificateLoader(nLanguage, szHomePath, reporter)
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

void CLoadDISK::search(const Family& family, bool countOnly, int& next)
{
    ScratchEntry entry;
    for (const std::string& path : m_folders[family.code]) {
        m_searched = SearchedFolder(path);
        while (const dirent* item = m_searched.next()) {
            if (!isCandidate(family, m_searched, *item))
                continue;
            entry.clear();
            entry->nPKIType = family.code;
            setPaths(family, m_searched, item->d_name, *entry);
            int rc = ParsingCert(countOnly, &*entry);
            if (rc == SIGIL_CERTIFICATE_UNREADABLE &&
                UndoableFiles::undoInterrupted(pairsOf(family, m_searched, item->d_name))) {
                setPaths(family, m_searched, item->d_name, *entry);
                rc = ParsingCert(countOnly, &*entry);
            }
            if (rc != SIGIL_SUCCESS)
                continue;
            // Files that came after the counting find no place in the list and are left for the next listing.
            if (!countOnly && next == count())
                continue;
            if (!countOnly)
                CopyCertInfo(next, &*entry);
            ++next;
        }
        if (m_searched.error() != 0)
            noteUnreadFolder();
    }
    m_searched = SearchedFolder();
}

void CLoadDISK::noteUnreadFolder()
{
    const std::string reason = std::generic_category().message(m_searched.error());
    m_log.refused("CLoadDISK::LoadCertList()", error::getData, "readdir()", SIGIL_FILE_NOT_READ, reason.c_str());
    m_folderUnread = true;
}

// Where a folder was not read to its end there may be certificates that nobody saw.
int CLoadDISK::nothingFound() const { return m_folderUnread ? SIGIL_FILE_NOT_READ : SIGIL_NO_CERTIFICATE; }

int CLoadDISK::LoadCertList()
{
    m_folderUnread = false;
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
    if (total == 0)
        return nothingFound();
    ClearCertList();
    m_entries.resize(std::max(m_entries.size(), static_cast<std::size_t>(total)));
    m_nCount = total;
    try {
        int next = 0;
        for (const Family* family : found)
            search(*family, false, next);
        m_nCount = next;              // fewer than were counted when files went in between
    } catch (const std::bad_alloc&) { // half a list would show certificates without a name
        ClearCertList();
        throw;
    }
    return m_nCount > 0 ? SIGIL_SUCCESS : nothingFound();
}

int CLoadDISK::countFamily(const Family& family, int& total)
{
    const int places = GetDirectoryCount(family.code);
    if (places < 1)
        return SIGIL_SUCCESS;
    m_folders[family.code].assign(static_cast<std::size_t>(places), {});
    const int rc = GetCertDirectory(family.code);
    if (rc == SIGIL_SUCCESS)
        search(family, true, total);
    return rc;
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
    int rc = readSignPair(certificate, *pEntry);
    if (rc == SIGIL_SUCCESS)
        rc = readKmPair(*pEntry);
    return rc == SIGIL_SUCCESS ? read(readerStyle, certificate, *pEntry) : rc;
}

int CLoadDISK::readFile(char* path, const EntryField& field, tagCERTINFO& entry)
{
    ToolkitBytes content(m_hToolkit);
    return readFile(path, field, content, entry);
}

int CLoadDISK::readFile(char* path, const EntryField& field, ToolkitBytes& content, tagCERTINFO& entry)
{
    if (!mayBeRead(m_searched, path))
        return SIGIL_CERTIFICATE_UNREADABLE;
    const int rc = MediaDiskReadFile(m_hToolkit, path, content.get());
    if (rc != SIGIL_SUCCESS)
        return rc;
    return setBytes(entry, field, bytesOf(content)) ? SIGIL_SUCCESS : SIGIL_CERTIFICATE_UNREADABLE;
}

int CLoadDISK::readSignPair(ToolkitBytes& certificate, tagCERTINFO& entry)
{
    int rc = readFile(entry.szSignCertPath, field::signCert, certificate, entry);
    if (rc != SIGIL_SUCCESS) // the shortened name is the one that readers of the log know
        return unreadable("MediaDiskReadFil()", rc);
    rc = readFile(entry.szSignPriKeyPath, field::encSignKey, entry);
    return rc == SIGIL_SUCCESS ? SIGIL_SUCCESS : unreadable("MediaDiskReadFile()", rc);
}

int CLoadDISK::unreadable(const char* callee, int rc)
{
    if (rc == SIGIL_CERTIFICATE_UNREADABLE) // our own refusal: the toolkit has no words on it
        return m_log.refused(parsingCert, nullptr, callee, rc, nullptr);
    return m_log.failed(parsingCert, nullptr, callee, rc, SIGIL_CERTIFICATE_UNREADABLE);
}

// A missing file is no news, but one that is there and has no room costs the certificate its pair.
int CLoadDISK::readKmFile(char* path, const EntryField& field, tagCERTINFO& entry)
{
    const int rc = readFile(path, field, entry);
    return rc == SIGIL_CERTIFICATE_UNREADABLE ? m_log.refused(parsingCert, nullptr, "MediaDiskReadFile()", rc,
                                                    "key-management file is no file or too large")
                                              : rc;
}

int CLoadDISK::readKmPair(tagCERTINFO& entry)
{
    const bool wanted = m_options.keyPairType == SIGIL_KEY_PAIR_BOTH;
    if (!*entry.szKmCertPath || !*entry.szKmPriKeyPath)
        return wanted ? SIGIL_FILTERED_OUT : SIGIL_SUCCESS;
    const int certificate = readKmFile(entry.szKmCertPath, field::kmCert, entry);
    const int key = readKmFile(entry.szKmPriKeyPath, field::encKmKey, entry);
    if (!wanted || (certificate == SIGIL_SUCCESS && key == SIGIL_SUCCESS))
        return SIGIL_SUCCESS;
    setText(entry, field::kmCertPath, {});
    setText(entry, field::kmKeyPath, {});
    return SIGIL_FILTERED_OUT;
}

int CLoadDISK::MakePKCS12(int nIndex, char* szPassword, CBinary& pfx)
{
    return hasEntry(nIndex) ? m_pkcs12.write(*ScratchEntry(entry(nIndex)), szPassword, pfx) : SIGIL_BAD_ARGUMENT;
}
