// Private keys of listed certificates: decryption, identity random value, identity check, change of password.

#include "certlist/codes.h"
#include "certlist/load_disk.h"
#include "certlist/toolkit_calls.h"
#include "foundation/ascii.h"

#include <cstring>

using namespace sigil;

namespace {

constexpr char bits2048[] = "2048 Bits";

/** Algorithm codes of PriKeyEncrypt. */
enum KeyAlgorithm : int { algorithm48 = 48, algorithm64 = 64, algorithm224 = 224 };

int governmentAlgorithm(bool has2048Bits, const char* organisationUnit)
{
    if (has2048Bits)
        return algorithm64;
    return equalsIgnoringCase(organisationUnit, "people") ? algorithm48 : algorithm224;
}

int keyAlgorithm(const char* policyId, const char* keyLength, const char* organisationUnit)
{
    const auto policyHas = [&](const char* oid) { return std::strstr(policyId, oid) != nullptr; };
    const bool has2048Bits = equalsIgnoringCase(keyLength, bits2048);
    if (policyHas("1 2 410 100001") || policyHas("1 2 410 200004 8"))
        return governmentAlgorithm(has2048Bits, organisationUnit);
    // Kept as written, although the first test takes every policy of this kind.
    if (policyHas("1 2 410 100001 5 3"))
        return has2048Bits ? algorithm64 : algorithm48;
    return algorithm48;
}

/** Maps what PriKeyDecrypt returned: the result, and the name of the error in the log. */
struct Refusal {
    int result;
    const char* errorName;
};

Refusal decryptRefusal(int toolkitCode)
{
    switch (toolkitCode) {
    case toolkitWrongPassword:
        return {SIGIL_WRONG_PASSWORD, error::invalidPassword};
    case toolkitKeyDamaged:
    case toolkitKeyUnknown:
        return {SIGIL_KEY_NOT_DECRYPTED, error::decryptPriKey};
    default:
        return {toolkitCode, error::decryptPriKey};
    }
}

} // namespace

int CLoadDISK::decryptKey(tagCERTINFO& entry, const EntryField& stored, const EntryField& key, char* szPassword)
{
    ToolkitBytes encrypted(m_hToolkit);
    ToolkitBytes decrypted(m_hToolkit);
    fill(encrypted, value(entry, stored));
    const int rc = PriKeyDecrypt(m_hToolkit, szPassword, encrypted.get(), decrypted.get());
    if (rc != SIGIL_SUCCESS)
        return rc;
    // A key that does not fit into its place in the entry was not decrypted from what fitted.
    return setBytes(entry, key, bytesOf(decrypted)) ? SIGIL_SUCCESS : toolkitKeyDamaged;
}

int CLoadDISK::DecryptPriKey(int nIndex, char* szPassword, CBinary* pSignKey, CBinary* pKmKey)
{
    if (!hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry(this->entry(nIndex));
    // A key that was decrypted before is not handed out again for a password that does not open it.
    const auto decrypt = [&](const EntryField& stored, const EntryField& key, CBinary* out) {
        const int rc = decryptKey(*entry, stored, key, szPassword);
        if (rc == SIGIL_SUCCESS)
            assign(*out, value(*entry, key));
        return rc;
    };
    int rc = decrypt(field::encSignKey, field::signKey, pSignKey);
    if (rc == SIGIL_SUCCESS && entry->nEncKmPriKeyLen >= 1)
        rc = decrypt(field::encKmKey, field::kmKey, pKmKey);
    if (rc != SIGIL_SUCCESS) {
        const Refusal refusal = decryptRefusal(rc);
        rc = m_log.failed("CLoadDISK::DecryptPriKey()", refusal.errorName, "PriKeyDecrypt()", rc, refusal.result);
    }
    CopyCertInfo(nIndex, &*entry); // also what was decrypted before a failure
    return rc;
}

int CLoadDISK::GetPrikeyRandom(int nIndex, char* szPassword)
{
    if (!hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry(this->entry(nIndex));
    if (entry->nSignPriKeyLen < 1)
        decryptForRandom(*entry, szPassword);
    const int rc = readRandom(*entry, "CLoadDISK::GetPrikeyRandom()");
    CopyCertInfo(nIndex, &*entry);
    return rc;
}

// A key that cannot be decrypted is only noted: the empty key then yields no random value, which is what the caller
// is told.
void CLoadDISK::decryptForRandom(tagCERTINFO& entry, char* szPassword)
{
    const auto decrypt = [&](const EntryField& stored, const EntryField& key) {
        const int rc = decryptKey(entry, stored, key, szPassword);
        if (rc != SIGIL_SUCCESS)
            m_log.failed("CLoadDISK::GetPrikeyRandom()", error::notExistRandom, "VIDGetRandomFromPriKey()", rc, rc);
    };
    decrypt(field::encSignKey, field::signKey);
    if (entry.nEncKmPriKeyLen > 0)
        decrypt(field::encKmKey, field::kmKey);
}

int CLoadDISK::VerifyVID(int nIndex, char* szIdn, char* szPassword)
{
    if (!hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    int rc = decryptForIdentity(nIndex, szPassword);
    if (rc == SIGIL_SUCCESS && ScratchEntry(entry(nIndex))->nRandomLen < 1)
        rc = GetPrikeyRandom(nIndex, szPassword);
    if (rc != SIGIL_SUCCESS)
        return rc;
    ScratchEntry entry(this->entry(nIndex));
    ToolkitBytes certificate(m_hToolkit);
    ToolkitBytes random(m_hToolkit);
    fill(certificate, value(*entry, field::signCert));
    fill(random, value(*entry, field::random));
    rc = VIDVerify(m_hToolkit, certificate.get(), random.get(), szIdn);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed("CLoadDISK::VerifyVID()", error::getData, "VIDVerify()", rc, SIGIL_IDENTITY_MISMATCH);
}

int CLoadDISK::decryptForIdentity(int nIndex, char* szPassword)
{
    ScratchEntry entry(this->entry(nIndex));
    const auto decrypt = [&](const EntryField& stored, const EntryField& key) {
        const bool needed = !value(*entry, stored).empty() && value(*entry, key).empty();
        return needed ? decryptKey(*entry, stored, key, szPassword) : SIGIL_SUCCESS;
    };
    int rc = decrypt(field::encSignKey, field::signKey);
    if (rc == SIGIL_SUCCESS)
        rc = decrypt(field::encKmKey, field::kmKey);
    CopyCertInfo(nIndex, &*entry);
    return rc == SIGIL_SUCCESS ? SIGIL_SUCCESS
                               : m_log.failed("CLoadDISK::VerifyVID()", error::decryptPriKey, "PriKeyDecrypt()", rc,
                                     SIGIL_KEY_NOT_DECRYPTED);
}

int CLoadDISK::ChangePassword(int nIndex, char* szOldPassword, char* szNewPassword)
{
    if (!hasEntry(nIndex))
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry(this->entry(nIndex));
    int rc = changeKeyFile(*entry, field::encSignKey, entry->szSignPriKeyPath, szOldPassword, szNewPassword);
    if (rc == SIGIL_SUCCESS && *entry->szKmPriKeyPath)
        rc = changeKeyFile(*entry, field::encKmKey, entry->szKmPriKeyPath, szOldPassword, szNewPassword);
    if (rc == SIGIL_SUCCESS)
        setText(*entry, field::password, szNewPassword);
    CopyCertInfo(nIndex, &*entry); // the signing key stays changed when the key-management key fails
    return rc;
}

int CLoadDISK::changeKeyFile(
    tagCERTINFO& entry, const EntryField& stored, char* path, char* szOldPassword, char* szNewPassword)
{
    constexpr char where[] = "CLoadDISK::ChangePassword()";
    ToolkitBytes old(m_hToolkit);
    ToolkitBytes changed(m_hToolkit);
    int rc = MediaDiskReadFile(m_hToolkit, path, old.get());
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(where, error::getData, "MediaDiskReadFile()", rc, SIGIL_FILE_NOT_READ);
    rc = PriKeyChangePasswd(m_hToolkit, szOldPassword, szNewPassword, old.get(), changed.get());
    // Both records name the deletion of a key; readers of the log know them so.
    if (rc == toolkitWrongPassword)
        return m_log.failed(where, error::invalidPassword, "MediaDiskDeletePriKey()", rc, SIGIL_WRONG_PASSWORD);
    if (rc != SIGIL_SUCCESS || bytesOf(changed).size() > stored.capacity)
        return m_log.failed(
            where, error::deleteCertNKey, "MediaDiskDeletePriKey()", rc, SIGIL_PASSWORD_NOT_CHANGED);
    rc = WriteFile(changed.copy(), path);
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(where, error::getData, "MediaDiskReadFile()", rc, SIGIL_FILE_NOT_WRITTEN);
    setBytes(entry, stored, bytesOf(changed));
    return SIGIL_SUCCESS;
}

int CLoadDISK::GetPrikeyAlg(const CBinary& certificate, int* pnAlg)
{
    if (bytesOf(certificate).empty())
        return SIGIL_BAD_ARGUMENT;
    constexpr int policyCapacity = 40;
    constexpr int subjectCapacity = 260;
    constexpr int keyCapacity = 1024;
    char policyId[policyCapacity + 1] = {};
    char subject[subjectCapacity + 1] = {};
    char algorithm[2048] = {};
    char keyLength[2048] = {};
    char key[keyCapacity + 1] = {};
    const CertificateUnloader unload(m_hToolkit);
    ToolkitBytes record(m_hToolkit, certificate.m_pData, certificate.m_nLength);
    ToolkitBytes der(m_hToolkit);
    const CallResult read = callAll({
        {"CertLoad()", [&] { return CertLoad(m_hToolkit, record.get()); }},
        {"CertGetPolicyID()", [&] { return CertGetPolicyID(m_hToolkit, policyCapacity, policyId); }},
        {"CertGetSubjectName()", [&] { return CertGetSubjectName(m_hToolkit, subjectCapacity, subject); }},
        {"CertGetPubKeyInfo()",
            [&] { return CertGetPubKeyInfo(m_hToolkit, algorithm, keyLength, keyCapacity, key, der.get()); }},
    });
    if (read.code != SIGIL_SUCCESS) // the name in the record is one that readers of the log know
        return m_log.failed(
            "CLoadSMCard::GetPrikeyAlg()", error::parsingCert, read.name, read.code, SIGIL_CERTIFICATE_UNREADABLE);
    char organisationUnit[subjectCapacity] = {};
    m_Util.GetOUString(subject, sizeof organisationUnit, organisationUnit);
    *pnAlg = keyAlgorithm(policyId, keyLength, organisationUnit);
    return SIGIL_SUCCESS;
}
