// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token_certificates.h"

#include "toolkit/engine/base/error.h"

#include <algorithm>

namespace toolkit {
namespace {

Template anyCertificate()
{
    Template wanted;
    wanted.add(CKA_CLASS, CKO_CERTIFICATE).add(CKA_CERTIFICATE_TYPE, CKC_X_509);
    return wanted;
}

/** Nothing when the object holds none: an address in its place, or damage. */
std::optional<Certificate> read(const Library& library, const TokenSession& session, CK_OBJECT_HANDLE object)
{
    const auto value = session.attribute(object, CKA_VALUE);
    if (!value || value->empty())
        return {};
    try {
        return Certificate(library, *value);
    } catch (const Error& error) {
        requireMemory(error);
        return {};
    }
}

TokenCertificate identified(const TokenSession& session, CK_OBJECT_HANDLE object, Certificate certificate)
{
    return {object, toBytes(session.attribute(object, CKA_ID).value_or(Secret())), std::move(certificate)};
}

} // namespace

std::vector<TokenCertificate> tokenCertificates(const Library& library, const TokenSession& session)
{
    std::vector<TokenCertificate> all;
    for (const CK_OBJECT_HANDLE object : session.find(anyCertificate()))
        if (auto certificate = read(library, session, object))
            all.push_back(identified(session, object, std::move(*certificate)));
    return all;
}

std::optional<TokenCertificate> labelledCertificate(
    const Library& library, const TokenSession& session, std::string_view label)
{
    Template wanted = anyCertificate();
    wanted.add(CKA_LABEL, view(label));
    for (const CK_OBJECT_HANDLE object : session.find(wanted))
        if (auto certificate = read(library, session, object))
            return identified(session, object, std::move(*certificate));
    return {};
}

Certificate tokenCertificate(const Library& library, const TokenSession& session, View id)
{
    for (const CK_OBJECT_HANDLE object : session.find(anyCertificate().add(CKA_ID, id)))
        if (auto certificate = read(library, session, object))
            return std::move(*certificate);
    fail(SIGIL_TK_TOKEN_OBJECT, "certificate");
}

int kindOf(const Certificate& certificate)
{
    constexpr unsigned signing = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
    constexpr unsigned management = KU_KEY_ENCIPHERMENT | KU_DATA_ENCIPHERMENT | KU_KEY_AGREEMENT;
    const unsigned usage = certificate.usageBits().value_or(signing);
    return (usage & signing) == 0 && (usage & management) != 0 ? SIGIL_TK_TOKEN_KEY_MANAGEMENT
                                                               : SIGIL_TK_TOKEN_SIGNING;
}

} // namespace toolkit
