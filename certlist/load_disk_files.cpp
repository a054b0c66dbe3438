// Files of certificates and keys: write, read, delete, and where copies go.

#include "certlist/codes.h"
#include "certlist/load_disk.h"
#include "certlist/toolkit_calls.h"
#include "certlist/undoable_files.h"
#include "foundation/environment.h"
#include "foundation/families.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

using namespace sigil;

namespace {

/** Kinds of key and certificate that the toolkit's deleting functions take. */
constexpr int signing = 1;
constexpr int keyManagement = 2;

constexpr char writeCertNKey[] = "CLoadDISK::WriteCertNKey()";
constexpr char deleteCertNKey[] = "CLoadDISK::DeleteCertNKey()";

std::vector<PairPaths> pairsOf(const tagCERTINFO& entry)
{
    std::vector<PairPaths> pairs{{entry.szSignCertPath, entry.szSignPriKeyPath}};
    if (*entry.szKmPriKeyPath && *entry.szKmCertPath)
        pairs.push_back({entry.szKmCertPath, entry.szKmPriKeyPath});
    return pairs;
}

/** False for a file that is there and that its folder will not let go. */
bool mayBeDeleted(const std::string& path)
{
    const std::string folder = path.substr(0, path.rfind('/'));
    return faccessat(AT_FDCWD, path.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) != 0 ||
        faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

} // namespace

int CLoadDISK::WriteFile(const CBinary& data, char* szPath)
{
    if (bytesOf(data).empty())
        return SIGIL_BAD_ARGUMENT;
    ToolkitBytes bytes(m_hToolkit, data.m_pData, data.m_nLength);
    return MediaDiskWriteFile(m_hToolkit, szPath, bytes.get());
}

int CLoadDISK::WriteCertNKey(bool bCertOnly, bool bKeyAsIs, char* szPassword, int nAlg, char* szCertPath,
    char* szKeyPath, const CBinary& certificate, const CBinary& key)
{
    if (!szCertPath || bytesOf(certificate).empty())
        return SIGIL_BAD_ARGUMENT;
    if (!bCertOnly && (!szPassword || !szKeyPath || bytesOf(key).empty()))
        return SIGIL_BAD_ARGUMENT;
    const int rc = writeLogged(certificate, szCertPath);
    if (rc != SIGIL_SUCCESS || bCertOnly)
        return rc;
    return bKeyAsIs ? writeLogged(key, szKeyPath) : writeEncrypted(key, szPassword, nAlg, szKeyPath);
}

// The old keys go before the first new certificate is written.
int CLoadDISK::writeCopy(char* szPassword, int nAlg, CertPaths& paths, const CertNKey& source)
{
    std::vector<PairPaths> pairs{{paths.signCert, paths.signKey}, {paths.kmCert, paths.kmKey}};
    for (const PairPaths& pair : pairs) {
        createFoldersOf(pair.certificate.c_str());
        createFoldersOf(pair.key.c_str());
    }
    UndoableFiles::undoInterrupted(pairs);
    if (!source.hasKmPair())
        pairs.pop_back();
    UndoableFiles files(pairs);
    if (!files.begin() || !files.removeKeys())
        return notOnDisk(writeCertNKey, error::writeCertNKey, SIGIL_FILE_NOT_WRITTEN);
    int rc = WriteCertNKey(
        false, false, szPassword, nAlg, paths.signCert, paths.signKey, source.signCert, source.signKey);
    if (rc == SIGIL_SUCCESS && source.hasKmPair())
        rc = WriteCertNKey(false, false, szPassword, nAlg, paths.kmCert, paths.kmKey, source.kmCert, source.kmKey);
    if (rc == SIGIL_SUCCESS && !files.keep())
        return notOnDisk(writeCertNKey, error::writeCertNKey, SIGIL_FILE_NOT_WRITTEN);
    return rc;
}

// Also where the old file cannot be noted: the toolkit has words for what is wrong there.
int CLoadDISK::writeExport(const CBinary& pfx, char* szPath)
{
    UndoableFiles file(std::vector<PairPaths>{{szPath, {}}});
    file.begin();
    const int rc = WriteFile(pfx, szPath);
    if (rc == SIGIL_SUCCESS && !file.keep())
        return notOnDisk("CLoadDISK::WriteFile()", error::writeCertNKey, SIGIL_FILE_NOT_WRITTEN);
    return rc;
}

int CLoadDISK::notOnDisk(const char* where, const char* errorName, int result)
{
    const std::string reason = std::generic_category().message(errno);
    return m_log.refused(where, errorName, "fsync()", result, reason.c_str());
}

int CLoadDISK::writeLogged(const CBinary& data, char* path)
{
    const int rc = WriteFile(data, path);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(writeCertNKey, error::writeCertNKey, "MediaDiskWriteFile()", rc, SIGIL_FILE_NOT_WRITTEN);
}

int CLoadDISK::writeEncrypted(const CBinary& key, char* szPassword, int nAlg, char* path)
{
    ToolkitBytes plain(m_hToolkit, key.m_pData, key.m_nLength);
    ToolkitBytes encrypted(m_hToolkit);
    const int rc = PriKeyEncrypt(m_hToolkit, nAlg, szPassword, plain.get(), encrypted.get());
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(writeCertNKey, error::writeCertNKey, "PriKeyEncrypt()", rc, SIGIL_FILE_NOT_WRITTEN);
    return writeLogged(encrypted.copy(), path);
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
    constexpr char where[] = "CLoadDISK::ReadCertNKeyFromPath()";
    const auto read = [&](char* path, CBinary& out) {
        ToolkitBytes content(m_hToolkit);
        const int rc = MediaDiskReadFile(m_hToolkit, path, content.get());
        assign(out, bytesOf(content));
        return rc == SIGIL_SUCCESS
            ? SIGIL_SUCCESS
            : m_log.failed(where, error::readCertNKey, "MediaDiskReadFile()", rc, SIGIL_FILE_NOT_READ);
    };
    int rc = read(szCertPath, certificate);
    if (rc == SIGIL_SUCCESS)
        rc = read(szKeyPath, key);
    if (rc == SIGIL_SUCCESS && (bytesOf(certificate).empty() || bytesOf(key).empty()))
        rc = m_log.refused(where, error::readCertNKey, nullptr, SIGIL_FILE_NOT_READ, "Cert&Key data is null");
    return rc;
}

// The first entry of a list cannot be deleted; dialogs rely on it.
int CLoadDISK::DeleteCertNKey(int nIndex, char* szPassword)
{
    if (!szPassword || nIndex < 1 || !hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry(this->entry(nIndex));
    int rc = checkDeletion(*entry, szPassword);
    if (rc == SIGIL_SUCCESS)
        rc = deletePairs(*entry, szPassword);
    // Removes nothing but an empty home folder: the certificate's own folder stays, deliberately.
    if (rc == SIGIL_SUCCESS && (entry->nPKIType == SIGIL_FAMILY_NPKI || entry->nPKIType == SIGIL_FAMILY_PPKI))
        rmdir(environment().homeFolder().c_str());
    return rc;
}

// What the toolkit will say of the second pair is known before the first one is gone.
int CLoadDISK::checkDeletion(tagCERTINFO& entry, char* szPassword)
{
    for (const PairPaths& pair : pairsOf(entry))
        if (!mayBeDeleted(pair.key) || !mayBeDeleted(pair.certificate))
            return m_log.refused(
                deleteCertNKey, error::deleteCertNKey, "access()", SIGIL_FILE_NOT_DELETED, nullptr);
    if (entry.nEncKmPriKeyLen < 1)
        return SIGIL_SUCCESS;
    const int rc = decryptKey(entry, field::encKmKey, field::kmKey, szPassword);
    return rc == toolkitWrongPassword
        ? m_log.failed(deleteCertNKey, error::invalidPassword, "MediaDiskDeletePriKey()", rc, SIGIL_WRONG_PASSWORD)
        : SIGIL_SUCCESS;
}

// When the toolkit fails, what it has deleted stays deleted; when the process is killed, everything comes back. A disk
// that has no room for the notes must not keep anybody from deleting.
int CLoadDISK::deletePairs(tagCERTINFO& entry, char* szPassword)
{
    UndoableFiles files(pairsOf(entry));
    files.begin();
    int rc = deletePair(szPassword, signing, entry.szSignPriKeyPath, entry.szSignCertPath);
    if (rc == SIGIL_SUCCESS && *entry.szKmPriKeyPath && *entry.szKmCertPath)
        rc = deletePair(szPassword, keyManagement, entry.szKmPriKeyPath, entry.szKmCertPath);
    const bool onDisk = files.letGo();
    return rc == SIGIL_SUCCESS && !onDisk ? notOnDisk(deleteCertNKey, error::deleteCertNKey, SIGIL_FILE_NOT_DELETED)
                                          : rc;
}

int CLoadDISK::deletePair(char* szPassword, int kind, char* keyPath, char* certPath)
{
    int rc = MediaDiskDeletePriKey(m_hToolkit, szPassword, kind, keyPath);
    if (rc == toolkitWrongPassword)
        return m_log.failed(
            deleteCertNKey, error::invalidPassword, "MediaDiskDeletePriKey()", rc, SIGIL_WRONG_PASSWORD);
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(
            deleteCertNKey, error::deleteCertNKey, "MediaDiskDeletePriKey()", rc, SIGIL_FILE_NOT_DELETED);
    rc = MediaDiskDeleteCert(m_hToolkit, certPath, kind);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(deleteCertNKey, error::deleteCertNKey, "MediaDiskDeleteCert()", rc, SIGIL_FILE_NOT_DELETED);
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
