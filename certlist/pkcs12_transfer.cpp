// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/pkcs12_transfer.h"

#include "certlist/codes.h"
#include "certlist/entry.h"
#include "certlist/public_part.h"
#include "certlist/searched_folder.h"
#include "certlist/toolkit_calls.h"

#include <cstring>
#include <deque>
#include <map>
#include <string_view>
#include <vector>

namespace sigil {

namespace {

constexpr char getPkcs12[] = "CLoadDISK::GetPKCS12()";
constexpr char makePkcs12[] = "CLoadDISK::MakePKCS12()";

/** Modes of PFXImportMultiPair2: the usual one, and the one for files that it does not read. */
constexpr int usualMode = 0;
constexpr int otherMode = 16;

/** A check takes milliseconds: a file that asks for more of them would hold the host up. No user has as many keys. */
constexpr int mostChecks = 1000;

/** What leads nowhere is left to the toolkit, which has words for it. */
bool isFileOrMissing(const char* path)
{
    struct stat status;
    return !SearchedFolder().statusOf(path, status) || S_ISREG(status.st_mode);
}

/** An output that the façade requires to hold data. It is toolkit memory, because a toolkit may release what it
 *  replaces; one that the toolkit left alone is taken out again. */
class FilledOutput {
public:
    explicit FilledOutput(ToolkitBytes& record)
        : m_record(record)
    {
        fill(m_record, std::string_view("\0", 1));
        m_placeholder = *m_record.get();
    }
    ~FilledOutput()
    {
        const BINSTR& now = *m_record.get();
        if (now.pData == m_placeholder.pData && now.nLength == m_placeholder.nLength)
            m_record.clear();
    }
    FilledOutput(const FilledOutput&) = delete;
    FilledOutput& operator=(const FilledOutput&) = delete;

private:
    ToolkitBytes& m_record;
    BINSTR m_placeholder{};
};

/** The keys of a file, each taken out of the list once. */
class PfxKeys {
public:
    /** Takes the keys. @return 0; what UTILGetObject gave */
    int take(void* facade, ToolkitBytes& list, int count)
    {
        for (int i = static_cast<int>(m_keys.size()); i < count; ++i) {
            const int rc = UTILGetObject(facade, list.get(), i, m_keys.emplace_back(facade).get());
            if (rc != SIGIL_SUCCESS)
                return rc;
            m_byPublicPart.emplace(publicPartOfKey(bytesOf(m_keys.back())), &m_keys.back());
        }
        return SIGIL_SUCCESS;
    }

    /** The keys that may belong to @p certificate, in the order of the file: all of them when it does not tell its
     *  public key, else those with the same public key and those that do not tell theirs. */
    std::vector<ToolkitBytes*> candidatesFor(const ToolkitBytes& certificate)
    {
        std::vector<ToolkitBytes*> found;
        const std::string_view part = publicPartOfCertificate(bytesOf(certificate));
        if (part.empty()) {
            for (ToolkitBytes& key : m_keys)
                found.push_back(&key);
            return found;
        }
        for (std::string_view told : {part, std::string_view()})
            for (auto [key, end] = m_byPublicPart.equal_range(told); key != end; ++key)
                found.push_back(key->second);
        return found;
    }

private:
    std::deque<ToolkitBytes> m_keys;
    std::multimap<std::string_view, ToolkitBytes*> m_byPublicPart;
};

} // namespace

/** The lists that a PKCS#12 file holds, in the toolkit's form. */
struct Pkcs12Transfer::PfxLists {
    explicit PfxLists(void* facade)
        : certificates(facade)
        , keys(facade)
        , extra(facade)
    {
    }
    ToolkitBytes certificates;
    ToolkitBytes keys;
    ToolkitBytes extra;
    int count = 0;
    PfxKeys pairable;
    int checks = 0; ///< whether a certificate and a key belong together, asked so far
};

int Pkcs12Transfer::read(char* szPath, char* szPassword, CertNKey& out)
{
    const CertificateUnloader unload(m_toolkit);
    PfxLists lists(m_toolkit);
    int rc = openPfx(szPath, szPassword, lists);
    if (rc == SIGIL_SUCCESS)
        rc = countPairs(lists);
    for (int i = 0; rc == SIGIL_SUCCESS && i < lists.count; ++i)
        rc = takePair(lists, i, out);
    return rc;
}

int Pkcs12Transfer::openPfx(char* szPath, char* szPassword, PfxLists& lists)
{
    if (!isFileOrMissing(szPath)) // a toolkit may wait for ever for what a pipe does not bring
        return m_log.refused(
            getPkcs12, error::importCert, "MediaDiskReadFile()", SIGIL_IMPORT_REFUSED, "not a regular file");
    ToolkitBytes file(m_toolkit);
    int rc = MediaDiskReadFile(m_toolkit, szPath, file.get());
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(getPkcs12, error::readCertNKey, "MediaDiskReadFile()", rc, rc);
    rc = importPfx(usualMode, file, szPassword, lists);
    if (rc == toolkitWrongPfxPassword)
        return m_log.failed(getPkcs12, error::invalidPassword, "PFXImportMultiPair2()", rc, SIGIL_WRONG_PASSWORD);
    if (rc != SIGIL_SUCCESS)
        rc = importPfx(otherMode, file, szPassword, lists);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(getPkcs12, error::importCert, "PFXImportMultiPair2()", rc, SIGIL_IMPORT_REFUSED);
}

int Pkcs12Transfer::importPfx(int mode, ToolkitBytes& file, char* szPassword, PfxLists& lists)
{
    lists.certificates.clear();
    lists.keys.clear();
    lists.extra.clear();
    const FilledOutput certificates(lists.certificates);
    const FilledOutput keys(lists.keys);
    const FilledOutput extra(lists.extra);
    return PFXImportMultiPair2(
        m_toolkit, mode, file.get(), szPassword, lists.certificates.get(), lists.keys.get(), lists.extra.get());
}

int Pkcs12Transfer::countPairs(PfxLists& lists)
{
    int keys = 0;
    const CallResult counted = callAll({
        {"UTILGetObjectCount()",
            [&] { return UTILGetObjectCount(m_toolkit, lists.certificates.get(), &lists.count); }},
        {"UTILGetObjectCount()", [&] { return UTILGetObjectCount(m_toolkit, lists.keys.get(), &keys); }},
    });
    if (counted.code != SIGIL_SUCCESS)
        return m_log.failed(getPkcs12, error::importCert, counted.name, counted.code, SIGIL_IMPORT_REFUSED);
    if (lists.count > mostChecks)
        return tooMany();
    if (lists.count < 1 || lists.count != keys)
        return m_log.refused(getPkcs12, error::notExistCert, "UTILGetObjectCount()", SIGIL_NO_CERTIFICATE, nullptr);
    return SIGIL_SUCCESS;
}

int Pkcs12Transfer::takePair(PfxLists& lists, int index, CertNKey& out)
{
    constexpr int usageCapacity = 1024;
    char usage[usageCapacity + 1] = {};
    ToolkitBytes certificate(m_toolkit);
    const CallResult read = callAll({
        {"UTILGetObject()",
            [&] { return UTILGetObject(m_toolkit, lists.certificates.get(), index, certificate.get()); }},
        {"CertLoad()", [&] { return CertLoad(m_toolkit, certificate.get()); }},
        {"CertGetKeyUsage()", [&] { return CertGetKeyUsage(m_toolkit, usageCapacity, usage); }},
    });
    if (read.code != SIGIL_SUCCESS)
        return m_log.failed(getPkcs12, error::importCert, read.name, read.code, read.code);
    const bool signs = std::strstr(usage, "digitalSignature");
    return takeKeyOf(certificate, lists, signs ? out.signCert : out.kmCert, signs ? out.signKey : out.kmKey);
}

// A certificate without a key in the file is passed over.
int Pkcs12Transfer::takeKeyOf(ToolkitBytes& certificate, PfxLists& lists, CBinary& certOut, CBinary& keyOut)
{
    int rc = lists.pairable.take(m_toolkit, lists.keys, lists.count);
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(getPkcs12, error::importCert, "UTILGetObject()", rc, rc);
    for (ToolkitBytes* key : lists.pairable.candidatesFor(certificate)) {
        if (++lists.checks > mostChecks)
            return tooMany();
        rc = PriKeyCheckKeyPair(m_toolkit, certificate.get(), key->get());
        if (isShortage(rc))
            return m_log.failed(getPkcs12, error::importCert, "PriKeyCheckKeyPair()", rc, rc);
        if (rc != SIGIL_SUCCESS)
            continue;
        assign(certOut, bytesOf(certificate));
        assign(keyOut, bytesOf(*key));
        break;
    }
    return SIGIL_SUCCESS;
}

int Pkcs12Transfer::tooMany()
{
    return m_log.refused(
        getPkcs12, error::importCert, "PriKeyCheckKeyPair()", SIGIL_IMPORT_REFUSED, "too many pairs");
}

int Pkcs12Transfer::write(const tagCERTINFO& entry, char* szPassword, CBinary& pfx)
{
    if (entry.nSignPriKeyLen < 1)
        return SIGIL_NO_DECRYPTED_KEY;
    ToolkitBytes out(m_toolkit);
    const bool hasKmPair = entry.nKmCertLen >= 1 && entry.nKmPriKeyLen >= 1;
    const int rc = hasKmPair ? exportTwoPairs(entry, szPassword, out) : exportOnePair(entry, szPassword, out);
    if (rc == SIGIL_SUCCESS)
        assign(pfx, bytesOf(out));
    return rc;
}

int Pkcs12Transfer::exportOnePair(const tagCERTINFO& entry, char* szPassword, ToolkitBytes& out)
{
    ToolkitBytes certificate(m_toolkit);
    ToolkitBytes key(m_toolkit);
    ToolkitBytes none(m_toolkit);
    fill(certificate, value(entry, field::signCert));
    fill(key, value(entry, field::signKey));
    const int rc =
        PFXExport(m_toolkit, 0, szPassword, certificate.get(), key.get(), none.get(), none.get(), out.get());
    // The record names another export; readers of the log know it so.
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(makePkcs12, error::exportCert, "PFXExport2()", rc, SIGIL_EXPORT_REFUSED);
}

int Pkcs12Transfer::exportTwoPairs(const tagCERTINFO& entry, char* szPassword, ToolkitBytes& out)
{
    ToolkitBytes certificates(m_toolkit);
    ToolkitBytes keys(m_toolkit);
    const auto add = [&](const EntryField& field, ToolkitBytes& list) {
        ToolkitBytes object(m_toolkit);
        fill(object, value(entry, field));
        return UTILAddObject(m_toolkit, object.get(), list.get());
    };
    const CallResult made = callAll({
        {"UTILAddObject()", [&] { return add(field::signCert, certificates); }},
        {"UTILAddObject()", [&] { return add(field::kmCert, certificates); }},
        {"UTILAddObject()", [&] { return add(field::signKey, keys); }},
        {"UTILAddObject()", [&] { return add(field::kmKey, keys); }},
        {"PFXExportMultiPair()",
            [&] {
                return PFXExportMultiPair(m_toolkit, 0, szPassword, certificates.get(), keys.get(), out.get());
            }},
    });
    return made.code == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(makePkcs12, error::exportCert, made.name, made.code, SIGIL_EXPORT_REFUSED);
}

} // namespace sigil
