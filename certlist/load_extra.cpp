// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/load_extra.h"

#include "certlist/authorities.h"
#include "certlist/codes.h"
#include "certlist/toolkit_calls.h"
#include "foundation/text_field.h"

#include <sigildesk/profile.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace sigil;

namespace {

// One record names the disk loader; readers of the log know it so.
constexpr SettingsReporter extraReporter{
    "CLoadDISK::SetPolicyIDNameList()", "CLoadExtra::SetPolicyIDNameList()", "CLoadExtra::SetIssuerNameList()"};

constexpr char verifyCert[] = "CLoadExtra::VerifyCert()";

} // namespace

CLoadExtra::CLoadExtra(int language, const char* folder)
    : Loader(language, folder, extraReporter)
{
    formPath(m_szConfFile, folder, "HVCToolkitV30.conf");
}

int CLoadExtra::GetRootCertCount(const char* confFile, int* count)
{
    constexpr char where[] = "CLoadExtra::GetRootCertCount()";
    if (isEmpty(confFile))
        return m_log.refused(where, error::invalidInput, nullptr, SIGIL_BAD_ARGUMENT, nullptr);
    const std::vector<Authority> authorities = readAuthorities(confFile);
    if (authorities.empty())
        return m_log.refused(
            where, error::loadConf, "FileGetPrivateProfileInt()", SIGIL_SETTINGS_INCOMPLETE, nullptr);
    *count = static_cast<int>(std::count_if(
        authorities.begin(), authorities.end(), [](const Authority& authority) { return authority.isRoot(); }));
    return SIGIL_SUCCESS;
}

int CLoadExtra::GetRootCertURL(const char* confFile, std::span<tagROOTCERTURLINFO> list)
{
    if (isEmpty(confFile))
        return m_log.refused(
            "CLoadExtra::GetRootCertURL()", error::invalidInput, nullptr, SIGIL_BAD_ARGUMENT, nullptr);
    const std::vector<Authority> authorities = readAuthorities(confFile);
    if (authorities.empty())
        return SIGIL_SETTINGS_INCOMPLETE;
    auto next = list.begin();
    for (const Authority& authority : authorities) {
        if (!authority.isRoot() || next == list.end())
            continue;
        copyText(next->szDN, authority.dn);
        copyText(next->szURL, authority.url);
        ++next;
    }
    return SIGIL_SUCCESS;
}

int CLoadExtra::VerifyCert(const char* cert, int len, CBinary* errText)
{
    if (!cert)
        return m_log.refused(verifyCert, error::invalidInput, nullptr, SIGIL_BAD_ARGUMENT, nullptr);
    const int rc = trustRoots();
    return rc == SIGIL_SUCCESS ? verify(cert, len, errText) : rc;
}

int CLoadExtra::trustRoots()
{
    int count = 0;
    std::vector<tagROOTCERTURLINFO> roots;
    const CallResult trusted = callAll({
        {"GetRootCertCount()", [&] { return GetRootCertCount(m_szConfFile, &count); }},
        {"GetRootCertURL()",
            [&] {
                roots.resize(static_cast<std::size_t>(count));
                return GetRootCertURL(m_szConfFile, roots);
            }},
        {"CertAddTrustedCert()", [&] { return trustAll(roots); }},
    });
    return trusted.code == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed(verifyCert, error::verifyCert, trusted.name, trusted.code, SIGIL_NOT_VERIFIED);
}

int CLoadExtra::trustAll(std::span<const tagROOTCERTURLINFO> roots)
{
    for (const tagROOTCERTURLINFO& root : roots)
        if (const int rc = trustRoot(root); rc != SIGIL_SUCCESS)
            return rc;
    return SIGIL_SUCCESS;
}

// A root that cannot be fetched is passed over, unless for lack of memory: the certificate may verify without it.
int CLoadExtra::trustRoot(const tagROOTCERTURLINFO& root)
{
    if (!mayBeFetched(root.szDN))
        return SIGIL_SUCCESS;
    char address[1024];
    copyText(address, std::string(root.szURL) + "/" + root.szDN);
    ToolkitBytes certificate(m_hToolkit);
    if (const int rc = HVAPGetDataByURL(m_hToolkit, 1, address, certificate.get()); rc != SIGIL_SUCCESS)
        return isShortage(rc) ? rc : SIGIL_SUCCESS;
    return CertAddTrustedCert(m_hToolkit, certificate.get());
}

int CLoadExtra::verify(const char* cert, int len, CBinary* errText)
{
    int rc = CertSetVerifyEnv(m_hToolkit, 0, 2, false, nullptr, nullptr);
    if (rc != SIGIL_SUCCESS)
        return m_log.failed(verifyCert, error::verifyCert, "CertSetVerifyEnv()", rc, SIGIL_NOT_VERIFIED);
    ToolkitBytes certificate(m_hToolkit, cert, len);
    rc = CertVerify(m_hToolkit, certificate.get(), 1, nullptr, m_szConfFile, false, nullptr, nullptr);
    if (rc == SIGIL_SUCCESS)
        return SIGIL_SUCCESS;
    rc = m_log.failed(verifyCert, error::verifyCert, "CertVerify()", rc, SIGIL_NOT_VERIFIED);
    *errText = m_log.text();
    return rc;
}

int CLoadExtra::CheckKeyPair(const CertNKey& pairs)
{
    if (!pairs.hasSignPair())
        return m_log.refused(
            "CLoadExtra::CheckKeyPair()", error::invalidInput, nullptr, SIGIL_BAD_ARGUMENT, nullptr);
    const int rc = checkPair(pairs.signCert, pairs.signKey, "PriKeyCheckKeyPair( usage : sign )");
    if (rc != SIGIL_SUCCESS || !pairs.hasKmPair())
        return rc;
    return checkPair(pairs.kmCert, pairs.kmKey, "PriKeyCheckKeyPair( usage : km )");
}

int CLoadExtra::checkPair(const CBinary& certificate, const CBinary& key, const char* callee)
{
    ToolkitBytes certificateRecord(m_hToolkit, certificate.m_pData, certificate.m_nLength);
    ToolkitBytes keyRecord(m_hToolkit, key.m_pData, key.m_nLength);
    const int rc = PriKeyCheckKeyPair(m_hToolkit, certificateRecord.get(), keyRecord.get());
    // The record deliberately names another operation.
    return rc == SIGIL_SUCCESS
        ? SIGIL_SUCCESS
        : m_log.failed("CLoadExtra::GetRootCertInfo()", error::diffCertKeyPair, callee, rc, SIGIL_PAIR_MISMATCH);
}
