// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/key_operations.h"

#include "certlist/codes.h"
#include "certlist/toolkit_calls.h"
#include "foundation/ascii.h"

#include <sigildesk/util.h>

#include <cstring>

namespace sigil {

namespace {

constexpr char bits2048[] = "2048 Bits";

constexpr char getPrikeyRandom[] = "CLoadDISK::GetPrikeyRandom()";
constexpr char verifyVid[] = "CLoadDISK::VerifyVID()";
constexpr char vidGetRandom[] = "VIDGetRandomFromPriKey()";

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
    return policyHas("1 2 410 100001 5 3") && has2048Bits ? algorithm64 : algorithm48;
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

int KeyOperations::decryptOne(tagCERTINFO& entry, const EntryField& stored, const EntryField& key, char* szPassword)
{
    ToolkitBytes encrypted(m_toolkit);
    ToolkitBytes decrypted(m_toolkit);
    fill(encrypted, value(entry, stored));
    const int rc = PriKeyDecrypt(m_toolkit, szPassword, encrypted.get(), decrypted.get());
    if (rc != SIGIL_SUCCESS)
        return rc;
    // A key that does not fit into its place in the entry was not decrypted from what fitted.
    return setBytes(entry, key, bytesOf(decrypted)) ? SIGIL_SUCCESS : toolkitKeyDamaged;
}

int KeyOperations::decrypt(tagCERTINFO& entry, char* szPassword, CBinary& signKey, CBinary& kmKey)
{
    // A key that was decrypted before is not handed out again for a password that does not open it.
    const auto decryptInto = [&](const EntryField& stored, const EntryField& key, CBinary& out) {
        const int rc = decryptOne(entry, stored, key, szPassword);
        if (rc == SIGIL_SUCCESS)
            assign(out, value(entry, key));
        return rc;
    };
    int rc = decryptInto(field::encSignKey, field::signKey, signKey);
    if (rc == SIGIL_SUCCESS && entry.nEncKmPriKeyLen >= 1)
        rc = decryptInto(field::encKmKey, field::kmKey, kmKey);
    if (rc == SIGIL_SUCCESS)
        return SIGIL_SUCCESS;
    const Refusal refusal = decryptRefusal(rc);
    return m_log.failed("CLoadDISK::DecryptPriKey()", refusal.errorName, "PriKeyDecrypt()", rc, refusal.result);
}

int KeyOperations::takeRandom(tagCERTINFO& entry, char* szPassword)
{
    const int rc = entry.nSignPriKeyLen < 1 ? decryptForRandom(entry, szPassword) : SIGIL_SUCCESS;
    return rc == SIGIL_SUCCESS ? readRandom(entry, getPrikeyRandom) : rc;
}

// A key that cannot be decrypted is only noted: the empty key then yields no random value, which is what the caller
// is told. A lack of memory alone is told as such.
int KeyOperations::decryptForRandom(tagCERTINFO& entry, char* szPassword)
{
    const auto decryptNoted = [&](const EntryField& stored, const EntryField& key) {
        const int rc = decryptOne(entry, stored, key, szPassword);
        return rc == SIGIL_SUCCESS
            ? SIGIL_SUCCESS
            : m_log.failed(getPrikeyRandom, error::notExistRandom, vidGetRandom, rc, SIGIL_SUCCESS);
    };
    const int rc = decryptNoted(field::encSignKey, field::signKey);
    return rc == SIGIL_SUCCESS && entry.nEncKmPriKeyLen > 0 ? decryptNoted(field::encKmKey, field::kmKey) : rc;
}

int KeyOperations::readRandom(tagCERTINFO& entry, const char* where)
{
    ToolkitBytes key(m_toolkit);
    ToolkitBytes random(m_toolkit);
    fill(key, value(entry, field::signKey));
    const int rc = VIDGetRandomFromPriKey(m_toolkit, key.get(), random.get());
    if (rc == SIGIL_SUCCESS && setBytes(entry, field::random, bytesOf(random)))
        return SIGIL_SUCCESS;
    const bool none = rc == toolkitNoRandom;
    return m_log.failed(where, none ? error::notExistRandom : error::getRandom, vidGetRandom, rc,
        none ? SIGIL_NO_RANDOM_IN_KEY : SIGIL_RANDOM_NOT_READ);
}

int KeyOperations::verifyIdentity(tagCERTINFO& entry, char* szIdn, char* szPassword)
{
    int rc = decryptForIdentity(entry, szPassword);
    if (rc == SIGIL_SUCCESS && entry.nRandomLen < 1)
        rc = takeRandom(entry, szPassword);
    if (rc != SIGIL_SUCCESS)
        return rc;
    ToolkitBytes certificate(m_toolkit);
    ToolkitBytes random(m_toolkit);
    fill(certificate, value(entry, field::signCert));
    fill(random, value(entry, field::random));
    rc = VIDVerify(m_toolkit, certificate.get(), random.get(), szIdn);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(verifyVid, error::getData, "VIDVerify()", rc, SIGIL_IDENTITY_MISMATCH);
}

int KeyOperations::decryptForIdentity(tagCERTINFO& entry, char* szPassword)
{
    const auto decryptMissing = [&](const EntryField& stored, const EntryField& key) {
        const bool needed = !value(entry, stored).empty() && value(entry, key).empty();
        return needed ? decryptOne(entry, stored, key, szPassword) : SIGIL_SUCCESS;
    };
    int rc = decryptMissing(field::encSignKey, field::signKey);
    if (rc == SIGIL_SUCCESS)
        rc = decryptMissing(field::encKmKey, field::kmKey);
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(verifyVid, error::decryptPriKey, "PriKeyDecrypt()", rc, SIGIL_KEY_NOT_DECRYPTED);
}

int KeyOperations::changePassword(tagCERTINFO& entry, char* szOldPassword, char* szNewPassword)
{
    int rc = changeFile(entry, field::encSignKey, entry.szSignPriKeyPath, szOldPassword, szNewPassword);
    if (rc == SIGIL_SUCCESS && *entry.szKmPriKeyPath) // the signing key stays changed when this one fails
        rc = changeFile(entry, field::encKmKey, entry.szKmPriKeyPath, szOldPassword, szNewPassword);
    if (rc == SIGIL_SUCCESS)
        setText(entry, field::password, szNewPassword);
    return rc;
}

int KeyOperations::changeFile(
    tagCERTINFO& entry, const EntryField& stored, char* path, char* szOldPassword, char* szNewPassword)
{
    constexpr char where[] = "CLoadDISK::ChangePassword()";
    ToolkitBytes old(m_toolkit);
    ToolkitBytes changed(m_toolkit);
    int rc = MediaDiskReadFile(m_toolkit, path, old.get());
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(where, error::getData, "MediaDiskReadFile()", rc, SIGIL_FILE_NOT_READ);
    rc = PriKeyChangePasswd(m_toolkit, szOldPassword, szNewPassword, old.get(), changed.get());
    // Both records name the deletion of a key; readers of the log know them so.
    if (rc == toolkitWrongPassword)
        return m_log.failed(where, error::invalidPassword, "MediaDiskDeletePriKey()", rc, SIGIL_WRONG_PASSWORD);
    if (rc != SIGIL_SUCCESS || bytesOf(changed).size() > stored.capacity)
        return m_log.failed(
            where, error::deleteCertNKey, "MediaDiskDeletePriKey()", rc, SIGIL_PASSWORD_NOT_CHANGED);
    rc = writeFile(m_toolkit, changed.copy(), path);
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(where, error::getData, "MediaDiskReadFile()", rc, SIGIL_FILE_NOT_WRITTEN);
    setBytes(entry, stored, bytesOf(changed));
    return SIGIL_SUCCESS;
}

int KeyOperations::algorithmFor(const CBinary& certificate, int& algorithm)
{
    if (bytesOf(certificate).empty())
        return SIGIL_BAD_ARGUMENT;
    constexpr int policyCapacity = 40;
    constexpr int subjectCapacity = 260;
    constexpr int keyCapacity = 1024;
    char policyId[policyCapacity + 1] = {};
    char subject[subjectCapacity + 1] = {};
    char keyKind[2048] = {};
    char keyLength[2048] = {};
    char key[keyCapacity + 1] = {};
    const CertificateUnloader unload(m_toolkit);
    ToolkitBytes record(m_toolkit, certificate.m_pData, certificate.m_nLength);
    ToolkitBytes der(m_toolkit);
    const CallResult read = callAll({
        {"CertLoad()", [&] { return CertLoad(m_toolkit, record.get()); }},
        {"CertGetPolicyID()", [&] { return CertGetPolicyID(m_toolkit, policyCapacity, policyId); }},
        {"CertGetSubjectName()", [&] { return CertGetSubjectName(m_toolkit, subjectCapacity, subject); }},
        {"CertGetPubKeyInfo()",
            [&] { return CertGetPubKeyInfo(m_toolkit, keyKind, keyLength, keyCapacity, key, der.get()); }},
    });
    if (read.code != SIGIL_SUCCESS) // the name in the record is one that readers of the log know
        return m_log.failed(
            "CLoadSMCard::GetPrikeyAlg()", error::parsingCert, read.name, read.code, SIGIL_CERTIFICATE_UNREADABLE);
    char organisationUnit[subjectCapacity] = {};
    CUtil(0, nullptr).GetOUString(subject, sizeof organisationUnit, organisationUnit);
    algorithm = keyAlgorithm(policyId, keyLength, organisationUnit);
    return SIGIL_SUCCESS;
}

} // namespace sigil
