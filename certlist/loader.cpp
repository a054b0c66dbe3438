// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/loader.h"

#include "certlist/codes.h"
#include "foundation/language_file.h"
#include "foundation/secret.h"
#include "foundation/text_field.h"

#include <malloc.h>

#include <string>

namespace sigil {

void formPath(char (&path)[pathCapacity], const char* folder, const std::string& name)
{
    copyText(path, std::string(folder) + "/" + name);
}

Loader::Loader(int language, const char* folder, const SettingsReporter& reporter)
    : m_reporter(reporter)
{
    const std::string ending = "_" + std::string(languageMark(language, SIGIL_LANGUAGE_KOREAN)) + ".conf";
    formPath(m_szPolicyConfPath, folder, "Policy" + ending);
    formPath(m_szIssuerConfPath, folder, "Issuer" + ending);
}

void Loader::bind(void* toolkit, const char* logPath)
{
    m_hToolkit = toolkit;
    m_log.bind(toolkit, logPath);
}

int Loader::SetInitalize()
{
    const int rc = SetPolicyIDNameList();
    return rc != SIGIL_SUCCESS ? rc : SetIssuerNameList();
}

void Loader::shareNames(const Loader& other)
{
    m_policies = other.m_policies;
    m_issuers = other.m_issuers;
}

int Loader::SetPolicyIDNameList()
{
    CBinary content;
    const PolicyFileResult read = readPolicyFile(m_szPolicyConfPath, content);
    if (read.code == SIGIL_SETTINGS_INCOMPLETE)
        return m_log.refused(m_reporter.policyOpen, error::loadConf, read.failedCall, read.code, nullptr);
    if (read.code != SIGIL_SUCCESS)
        return m_log.refused(m_reporter.policyRead, error::fileReadNoData, read.failedCall, read.code, nullptr);
    PolicyParingData(content);
    return SIGIL_SUCCESS;
}

void Loader::PolicyParingData(const CBinary& content)
{
    m_policies.build({content.m_pData, static_cast<std::size_t>(content.m_nLength)});
}

int Loader::SetIssuerNameList()
{
    const char* mistake = m_issuers.read(m_szIssuerConfPath);
    return mistake ? m_log.refused(m_reporter.issuer, error::loadConf, nullptr, SIGIL_SETTINGS_INCOMPLETE, mistake)
                   : SIGIL_SUCCESS;
}

int Loader::GetErrInfo(CBinary* out) { return toolkitErrorText(m_hToolkit, *out); }

int Loader::MemFree(void** ppBuf)
{
    if (!ppBuf || !*ppBuf)
        return SIGIL_BAD_ARGUMENT;
    auto* buffer = static_cast<char*>(*ppBuf);
    wipe(buffer, malloc_usable_size(buffer)); // the caller does not say how long it is, and it may hold a key
    delete[] buffer;                          // the contract of the buffers that are handed out
    *ppBuf = nullptr;
    return SIGIL_SUCCESS;
}

} // namespace sigil
