// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/load_memory.h"

#include "certlist/codes.h"
#include "certlist/key_operations.h"
#include "certlist/toolkit_calls.h"
#include "foundation/local_time.h"

using namespace sigil;

namespace {

constexpr SettingsReporter memoryReporter{
    "CLoadMemory::SetPolicyIDNameList()", "CLoadMemory::SetPolicyIDNameList()", "CLoadMemory::SetIssuerNameList()"};

// Two records name the disk loader; readers of the log know them so.
constexpr ReaderStyle memoryStyle{
    "CLoadMemory::ParsingCert()", "CLoadDISK::ParsingCert()", error::parsingCert, true, true, false};

constexpr char loadCertList[] = "CLoadMemory::LoadCertList()";

/** The bytes handed over; none for a null pointer or a length below 1. */
std::string_view part(const char* data, int length)
{
    return data && length > 0 ? std::string_view(data, static_cast<std::size_t>(length)) : std::string_view();
}

} // namespace

CLoadMemory::CLoadMemory(int nLanguage, const char* szHomePath)
    : CertificateLoader(nLanguage, szHomePath, memoryReporter)
{
}

int CLoadMemory::LoadCertList(const char* signCert, int signCertLen, const char* signKey, int signKeyLen,
    const char* kmCert, int kmCertLen, const char* kmKey, int kmKeyLen)
{
    ScratchEntry entry;
    const std::string_view certificate = part(signCert, signCertLen);
    const std::string_view key = part(signKey, signKeyLen);
    const bool fits = setBytes(*entry, field::signCert, certificate) && setBytes(*entry, field::signKey, key) &&
        setBytes(*entry, field::kmCert, part(kmCert, kmCertLen)) &&
        setBytes(*entry, field::kmKey, part(kmKey, kmKeyLen));
    if (certificate.empty() || key.empty() || !fits)
        return m_log.refused(loadCertList, error::invalidInput, nullptr, SIGIL_BAD_ARGUMENT, nullptr);
    clear();
    // Deliberately refused even when all four parts are there.
    if (m_options.keyPairType == SIGIL_KEY_PAIR_BOTH)
        return m_log.refused(loadCertList, error::notExistKmCert, nullptr, SIGIL_KM_PAIR_REQUIRED, nullptr);
    m_log.begin();
    noticeZone();
    const int rc = ParsingCert(&*entry);
    if (m_observer)
        m_observer->judged(*entry, rc, m_log);
    if (rc == SIGIL_SUCCESS) {
        CopyCertInfo(&*entry);
        m_bLoaded = true;
    }
    // Also after a refusal, which the caller learns from the count.
    return rc == SIGIL_NO_MEMORY ? SIGIL_NO_MEMORY : SIGIL_SUCCESS;
}

int CLoadMemory::ParsingCert(tagCERTINFO* entry)
{
    ToolkitBytes certificate(m_hToolkit);
    const CertificateUnloader unload(m_hToolkit);
    entry->nMediaType = m_nMediaType;
    fill(certificate, value(*entry, field::signCert));
    return read(memoryStyle, certificate, *entry);
}

void CLoadMemory::CopyCertInfo(const tagCERTINFO* entry) { m_entry.store(*entry); }

void CLoadMemory::ClearCertInfo(tagCERTINFO* entry) { wipe(entry, sizeof *entry); }

int CLoadMemory::GetPrikeyRandom()
{
    if (!m_bLoaded)
        return SIGIL_BAD_ARGUMENT;
    ScratchEntry entry(m_entry);
    const int rc = KeyOperations(m_hToolkit, m_log).readRandom(*entry, "CLoadMemory::GetPrikeyRandom()");
    m_entry.store(*entry);
    return rc;
}

void CLoadMemory::clear()
{
    m_entry = PackedEntry();
    m_bLoaded = false;
}
