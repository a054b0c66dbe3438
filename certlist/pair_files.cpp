// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/pair_files.h"

#include "certlist/codes.h"
#include "certlist/key_operations.h"
#include "certlist/toolkit_calls.h"
#include "certlist/undoable_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace sigil {

namespace {

/** Kinds of key and certificate that the toolkit's deleting functions take. */
constexpr int signing = 1;
constexpr int keyManagement = 2;

constexpr char writeCertNKey[] = "CLoadDISK::WriteCertNKey()";
constexpr char readCertNKey[] = "CLoadDISK::ReadCertNKeyFromPath()";
constexpr char deleteCertNKey[] = "CLoadDISK::DeleteCertNKey()";

std::vector<PairPaths> pairsOf(const tagCERTINFO& entry)
{
    std::vector<PairPaths> pairs{{entry.szSignCertPath, entry.szSignPriKeyPath}};
    if (*entry.szKmCertPath) // an entry has both of the paths, or none
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

int PairFiles::write(Contents contents, char* szPassword, int algorithm, char* certPath, char* keyPath,
    const CBinary& certificate, const CBinary& key)
{
    if (!certPath || bytesOf(certificate).empty())
        return SIGIL_BAD_ARGUMENT;
    if (!contents.certificateOnly && (!szPassword || !keyPath || bytesOf(key).empty()))
        return SIGIL_BAD_ARGUMENT;
    const int rc = writeLogged(certificate, certPath);
    if (rc != SIGIL_SUCCESS || contents.certificateOnly)
        return rc;
    return contents.keyAsIs ? writeLogged(key, keyPath) : writeEncrypted(key, szPassword, algorithm, keyPath);
}

// The old keys go before the first new certificate is written.
int PairFiles::writeCopy(char* szPassword, int algorithm, CertPaths& paths, const CertNKey& source)
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
    int rc = write({}, szPassword, algorithm, paths.signCert, paths.signKey, source.signCert, source.signKey);
    if (rc == SIGIL_SUCCESS && source.hasKmPair())
        rc = write({}, szPassword, algorithm, paths.kmCert, paths.kmKey, source.kmCert, source.kmKey);
    if (rc == SIGIL_SUCCESS && !files.keep())
        return notOnDisk(writeCertNKey, error::writeCertNKey, SIGIL_FILE_NOT_WRITTEN);
    return rc;
}

// Also where the old file cannot be noted: the toolkit has words for what is wrong there.
int PairFiles::writeExport(const CBinary& pfx, char* path)
{
    UndoableFiles file(std::vector<PairPaths>{{path, {}}});
    file.begin();
    const int rc = writeFile(m_toolkit, pfx, path);
    if (rc == SIGIL_SUCCESS && !file.keep())
        return notOnDisk("CLoadDISK::WriteFile()", error::writeCertNKey, SIGIL_FILE_NOT_WRITTEN);
    return isShortage(rc) ? static_cast<int>(SIGIL_NO_MEMORY) : rc;
}

int PairFiles::notOnDisk(const char* where, const char* errorName, int result)
{
    const std::string reason = std::generic_category().message(errno);
    return m_log.refused(where, errorName, "fsync()", result, reason.c_str());
}

int PairFiles::writeLogged(const CBinary& data, char* path)
{
    const int rc = writeFile(m_toolkit, data, path);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(writeCertNKey, error::writeCertNKey, "MediaDiskWriteFile()", rc, SIGIL_FILE_NOT_WRITTEN);
}

int PairFiles::writeEncrypted(const CBinary& key, char* szPassword, int algorithm, char* path)
{
    ToolkitBytes plain(m_toolkit, key.m_pData, key.m_nLength);
    ToolkitBytes encrypted(m_toolkit);
    const int rc = PriKeyEncrypt(m_toolkit, algorithm, szPassword, plain.get(), encrypted.get());
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(writeCertNKey, error::writeCertNKey, "PriKeyEncrypt()", rc, SIGIL_FILE_NOT_WRITTEN);
    return writeLogged(encrypted.copy(), path);
}

int PairFiles::read(char* certPath, char* keyPath, CBinary& certificate, CBinary& key)
{
    int rc = readLogged(certPath, certificate);
    if (rc == SIGIL_SUCCESS)
        rc = readLogged(keyPath, key);
    if (rc == SIGIL_SUCCESS && (bytesOf(certificate).empty() || bytesOf(key).empty()))
        rc =
            m_log.refused(readCertNKey, error::readCertNKey, nullptr, SIGIL_FILE_NOT_READ, "Cert&Key data is null");
    return rc;
}

int PairFiles::readLogged(char* path, CBinary& out)
{
    ToolkitBytes content(m_toolkit);
    const int rc = MediaDiskReadFile(m_toolkit, path, content.get());
    assign(out, bytesOf(content));
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(readCertNKey, error::readCertNKey, "MediaDiskReadFile()", rc, SIGIL_FILE_NOT_READ);
}

int PairFiles::remove(tagCERTINFO& entry, char* szPassword)
{
    const int rc = checkDeletion(entry, szPassword);
    return rc == SIGIL_SUCCESS ? deletePairs(entry, szPassword) : rc;
}

// What the toolkit will say of the second pair is known before the first one is gone.
int PairFiles::checkDeletion(tagCERTINFO& entry, char* szPassword)
{
    for (const PairPaths& pair : pairsOf(entry))
        if (!mayBeDeleted(pair.key) || !mayBeDeleted(pair.certificate))
            return m_log.refused(
                deleteCertNKey, error::deleteCertNKey, "access()", SIGIL_FILE_NOT_DELETED, nullptr);
    if (entry.nEncKmPriKeyLen < 1)
        return SIGIL_SUCCESS;
    const int rc = KeyOperations(m_toolkit, m_log).decryptOne(entry, field::encKmKey, field::kmKey, szPassword);
    return rc == toolkitWrongPassword || isShortage(rc)
        ? m_log.failed(deleteCertNKey, error::invalidPassword, "MediaDiskDeletePriKey()", rc, SIGIL_WRONG_PASSWORD)
        : SIGIL_SUCCESS;
}

// When the toolkit fails, what it has deleted stays deleted; when the process is killed, everything comes back. A disk
// that has no room for the notes must not keep anybody from deleting.
int PairFiles::deletePairs(tagCERTINFO& entry, char* szPassword)
{
    UndoableFiles files(pairsOf(entry));
    files.begin();
    int rc = deletePair(szPassword, signing, entry.szSignPriKeyPath, entry.szSignCertPath);
    if (rc == SIGIL_SUCCESS && *entry.szKmCertPath)
        rc = deletePair(szPassword, keyManagement, entry.szKmPriKeyPath, entry.szKmCertPath);
    const bool onDisk = files.letGo();
    return rc == SIGIL_SUCCESS && !onDisk ? notOnDisk(deleteCertNKey, error::deleteCertNKey, SIGIL_FILE_NOT_DELETED)
                                          : rc;
}

int PairFiles::deletePair(char* szPassword, int kind, char* keyPath, char* certPath)
{
    int rc = MediaDiskDeletePriKey(m_toolkit, szPassword, kind, keyPath);
    if (rc == toolkitWrongPassword)
        return m_log.failed(
            deleteCertNKey, error::invalidPassword, "MediaDiskDeletePriKey()", rc, SIGIL_WRONG_PASSWORD);
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(
            deleteCertNKey, error::deleteCertNKey, "MediaDiskDeletePriKey()", rc, SIGIL_FILE_NOT_DELETED);
    rc = MediaDiskDeleteCert(m_toolkit, certPath, kind);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(deleteCertNKey, error::deleteCertNKey, "MediaDiskDeleteCert()", rc, SIGIL_FILE_NOT_DELETED);
}

} // namespace sigil
