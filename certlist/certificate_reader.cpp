// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/certificate_reader.h"

#include "certlist/codes.h"
#include "certlist/toolkit_calls.h"
#include "foundation/ascii.h"
#include "foundation/validity.h"

namespace sigil {

namespace {

constexpr int dateCapacity = 40;
constexpr char bits2048[] = "2048 Bits";

bool expired(int state) { return state == SIGIL_VALIDITY_EXPIRED || state == SIGIL_VALIDITY_OTHER_EXPIRED; }

} // namespace

int CertificateReader::read()
{
    // The order tells which reason a certificate with several faults is rejected for.
    static constexpr Step steps[] = {&CertificateReader::load, &CertificateReader::version,
        &CertificateReader::identity, &CertificateReader::family, &CertificateReader::subjectFilter,
        &CertificateReader::serialFilter, &CertificateReader::uid, &CertificateReader::publicKey,
        &CertificateReader::usageAndIssuer, &CertificateReader::issuerName, &CertificateReader::policies,
        &CertificateReader::policyFilter, &CertificateReader::policyName, &CertificateReader::keyIds,
        &CertificateReader::optionalTexts, &CertificateReader::validityTexts, &CertificateReader::validityState,
        &CertificateReader::expiry};
    for (Step step : steps) {
        const int rc = (this->*step)();
        if (rc != SIGIL_SUCCESS)
            return rc;
    }
    return SIGIL_SUCCESS;
}

int CertificateReader::load()
{
    const int rc = CertLoad(m_means.toolkit, m_certificate.get());
    return rc == SIGIL_SUCCESS ? SIGIL_SUCCESS : failed(Drop::NotACertificate, "CertLoad()", rc);
}

int CertificateReader::version()
{
    const int rc = CertGetVersion(m_means.toolkit, TextBuffer::capacity, m_text.cleared());
    if (rc == SIGIL_SUCCESS)
        setText(m_entry, field::version, "V" + std::string(m_text.text()));
    return isShortage(rc) ? failed(Drop::FieldNotRead, "CertGetVersion()", rc) : static_cast<int>(SIGIL_SUCCESS);
}

int CertificateReader::identity()
{
    static constexpr TextStep steps[] = {{CertGetSerialNum, "CertGetSerialNum()", field::serialNum},
        {CertGetSignatureAlgorithm, "CertGetSignatureAlgorithm()", field::signAlg},
        {CertGetSubjectName, "CertGetSubjectName()", field::subjectDn}};
    return readTexts(steps);
}

int CertificateReader::family()
{
    if (!m_style.familyFromSubject)
        return SIGIL_SUCCESS;
    char organisation[1024] = {};
    int type = 0;
    m_means.util.GetOString(m_entry.szSubjectDN, sizeof organisation, organisation);
    m_means.util.GetCertCAType(organisation, &type);
    m_entry.nPKIType = type;
    if (type & m_means.options.pkiTypes)
        return SIGIL_SUCCESS;
    return rejected(Drop::OtherFamily, m_style.filterFunction, error::notIncludeType, "Check DN pass", nullptr);
}

int CertificateReader::subjectFilter()
{
    if (!*m_means.options.subjectDn)
        return SIGIL_SUCCESS;
    char subject[2 * sizeof m_entry.szSubjectDN] = {}; // UTF-8 takes at most half as much again
    int length = 0;
    m_means.util.UTF8ToMultibyte(m_entry.szSubjectDN, subject, &length);
    if (equalsIgnoringCase(subject, m_means.options.subjectDn))
        return SIGIL_SUCCESS;
    return rejected(Drop::OtherSubject, m_style.function, error::pass, "DN Check pass", "DN Check pass");
}

int CertificateReader::serialFilter()
{
    const char* wanted = m_means.options.serialNum;
    if (!*wanted || equalsIgnoringCase(wanted, m_entry.szSerialNum))
        return SIGIL_SUCCESS;
    return rejected(Drop::OtherSerial, m_style.filterFunction, error::pass, "Check SerialNumber pass",
        "Check SerialNumber pass");
}

int CertificateReader::uid() { return readText({CertGetUID, "CertGetUID()", field::uid}); }

int CertificateReader::publicKey()
{
    TextBuffer& keyLength = m_means.texts[1];
    TextBuffer& algorithm = m_means.texts[2];
    ToolkitBytes der(m_means.toolkit);
    const int rc = CertGetPubKeyInfo(m_means.toolkit, algorithm.cleared(), keyLength.cleared(),
        TextBuffer::capacity, m_text.cleared(), der.get());
    if (rc != SIGIL_SUCCESS)
        return failed(Drop::FieldNotRead, "CertGetPubKeyInfo()", rc);
    setText(m_entry, field::pubKey, m_text.text());
    setText(m_entry, field::keyLength, keyLength.text());
    setText(m_entry, field::pubKeyAlg, algorithm.text());
    return SIGIL_SUCCESS;
}

int CertificateReader::usageAndIssuer()
{
    static constexpr TextStep steps[] = {{CertGetKeyUsage, "CertGetKeyUsage()", field::keyUsage},
        {CertGetCRLDP, "CertGetCRLDP()", field::crlDp},
        {CertGetIssuerName, "CertGetIssuerName()", field::issuerDn}};
    return readTexts(steps);
}

int CertificateReader::issuerName()
{
    m_means.util.GetCNString(m_entry.szIssuerDN, sizeof m_entry.szIssuerCN, m_entry.szIssuerCN);
    setText(m_entry, field::issuerName, value(m_entry, field::issuerCn));
    if (const std::string* name = m_means.issuers.nameOf(value(m_entry, field::issuerCn)))
        setText(m_entry, field::issuerName, *name);
    return SIGIL_SUCCESS;
}

int CertificateReader::policies()
{
    static constexpr TextStep steps[] = {{CertGetCertPolicy, "CertGetCertPolicy()", field::certPolicy},
        {CertGetPolicyID, "CertGetPolicyID()", field::policyId}};
    return readTexts(steps);
}

int CertificateReader::policyFilter()
{
    m_means.util.MakeCommonPolicyID(&m_entry);
    if (m_means.filter.accepts(m_entry.szPolicyID))
        return SIGIL_SUCCESS;
    return rejected(Drop::OtherPolicy, m_style.function, error::pass, "CheckPolicyID() check pass", nullptr);
}

int CertificateReader::policyName()
{
    const std::string_view id = value(m_entry, field::policyId);
    const std::string* name = m_means.policies.nameOf(id);
    setText(m_entry, field::policyName, name ? *name : id);
    return SIGIL_SUCCESS;
}

int CertificateReader::keyIds()
{
    static constexpr TextStep steps[] = {{CertGetAuthKeyID, "CertGetAuthKeyID()", field::authKeyId},
        {CertGetSubKeyID, "CertGetSubKeyID()", field::subKeyId}};
    return readTexts(steps);
}

int CertificateReader::optionalTexts()
{
    static constexpr TextStep steps[] = {{CertGetSubjectAltName, "CertGetSubjectAltName()", field::subjectAltName},
        {CertGetAIA, "CertGetAIA()", field::aia}};
    for (const TextStep& step : steps) {
        const int rc = step.get(m_means.toolkit, TextBuffer::capacity, m_text.cleared());
        if (isShortage(rc))
            return failed(Drop::FieldNotRead, step.call, rc);
        if (rc == SIGIL_SUCCESS)
            setText(m_entry, step.field, m_text.text());
    }
    return SIGIL_SUCCESS;
}

int CertificateReader::validityTexts()
{
    // The façade does not tell the toolkits how much room there is, so leave more than it was told.
    TextBuffer& notAfter = m_means.texts[1];
    const int rc =
        CertGetValidity(m_means.toolkit, dateCapacity, m_text.cleared(), dateCapacity, notAfter.cleared());
    if (rc != SIGIL_SUCCESS)
        return failed(Drop::FieldNotRead, "CertGetValidity()", rc);
    setText(m_entry, field::notBefore, m_text.text().substr(0, dateCapacity - 1));
    setText(m_entry, field::notAfter, notAfter.text().substr(0, dateCapacity - 1));
    return SIGIL_SUCCESS;
}

int CertificateReader::validityState()
{
    const bool otherKeySize = m_style.statesByKeySize && !equalsIgnoringCase(m_entry.szKeyLength, bits2048);
    int remainDays = 0;
    int state = 0;
    const int rc = validityInKnownZone(otherKeySize, m_entry.nPKIType, m_entry.szPolicyID, m_entry.szNotBefore,
        m_entry.szNotAfter, sizeof m_entry.szValidFrom, m_entry.szValidFrom, sizeof m_entry.szValidTo,
        m_entry.szValidTo, &remainDays, &state);
    if (rc != SIGIL_SUCCESS)
        return failed(Drop::FieldNotRead, "GetValidity() check err", rc);
    m_entry.nRemainDays = remainDays;
    m_entry.nValidStatus = state;
    return SIGIL_SUCCESS;
}

int CertificateReader::expiry()
{
    m_entry.nExpired = expired(m_entry.nValidStatus) ? 1 : 0;
    const bool leaveOut = m_style.mayExcludeExpired && m_means.options.excludeExpired;
    if (!leaveOut || m_entry.nExpired == 0)
        return SIGIL_SUCCESS;
    return m_means.log.because(Drop::Expired, nullptr, 0, SIGIL_FILTERED_OUT);
}

int CertificateReader::readTexts(std::span<const TextStep> steps)
{
    for (const TextStep& step : steps) {
        const int rc = readText(step);
        if (rc != SIGIL_SUCCESS)
            return rc;
    }
    return SIGIL_SUCCESS;
}

int CertificateReader::readText(const TextStep& step)
{
    const int rc = step.get(m_means.toolkit, TextBuffer::capacity, m_text.cleared());
    if (rc != SIGIL_SUCCESS)
        return failed(Drop::FieldNotRead, step.call, rc);
    setText(m_entry, step.field, m_text.text());
    return SIGIL_SUCCESS;
}

int CertificateReader::failed(Drop drop, const char* call, int toolkitCode)
{
    m_means.log.because(drop, call, toolkitCode, SIGIL_CERTIFICATE_UNREADABLE);
    return m_means.log.failed(m_style.function, m_style.errorName, call, toolkitCode, SIGIL_CERTIFICATE_UNREADABLE);
}

int CertificateReader::rejected(
    Drop drop, const char* function, const char* errorName, const char* what, const char* message)
{
    m_means.log.because(drop, nullptr, 0, SIGIL_FILTERED_OUT);
    return m_means.log.refused(function, errorName, what, SIGIL_FILTERED_OUT, message);
}

} // namespace sigil
