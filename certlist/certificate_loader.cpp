// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/certificate_loader.h"

#include "certlist/codes.h"
#include "certlist/entry.h"
#include "certlist/toolkit_calls.h"
#include "foundation/text_field.h"

namespace sigil {

namespace {

template <std::size_t N, std::size_t M>
bool take(char (&to)[N], const char (&from)[M])
{
    const std::string_view text = fieldText(from);
    if (!text.empty())
        copyText(to, text);
    return !text.empty();
}

} // namespace

void CertificateLoader::setOptions(const tagLOADCERTOPT& options)
{
    m_options.pkiTypes = options.nPKITypes;
    m_options.keyPairType = options.nKeyPairType;
    m_options.excludeExpired = options.bExcludeExpired != 0;
    if (take(m_options.policyIds, options.szPolicyIDs))
        SetPolicyIDS();
    take(m_options.serialNum, options.szSerialNum);
    take(m_options.subjectDn, options.szSubjectDN);
}

int CertificateLoader::SetPolicyIDS()
{
    m_filter.choose(m_options.policyIds);
    return SIGIL_SUCCESS;
}

int CertificateLoader::read(const ReaderStyle& style, ToolkitBytes& certificate, tagCERTINFO& entry)
{
    const ReaderMeans means{.toolkit = m_hToolkit,
        .log = m_log,
        .options = m_options,
        .filter = m_filter,
        .policies = m_policies,
        .issuers = m_issuers,
        .util = m_Util,
        .texts = m_texts};
    return CertificateReader(means, style, certificate, entry).read();
}

} // namespace sigil
