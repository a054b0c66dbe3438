// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The extensions of a certificate as texts.

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/x509/general_name.h"
#include "toolkit/engine/x509/parsed_certificate.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/objects.h>

namespace toolkit {
namespace {

/** An extension decoded by OpenSSL; null when the certificate lacks it or when it is malformed. */
template <class T, auto Release>
Handle<T, Release> extension(const X509* certificate, int nid)
{
    Handle<T, Release> decoded(static_cast<T*>(X509_get_ext_d2i(certificate, nid, nullptr, nullptr)));
    if (!decoded)
        requireMemory();
    return decoded;
}

std::string objectName(const ASN1_OBJECT* object)
{
    const int nid = OBJ_obj2nid(object);
    return nid == NID_undef ? dottedOid(object) : OBJ_nid2sn(nid);
}

std::string integerText(const ASN1_INTEGER* integer)
{
    const NumberHandle number(ASN1_INTEGER_to_BN(integer, nullptr));
    const Handle<char, releaseBuffer> text(number ? BN_bn2dec(number.get()) : nullptr);
    require(text != nullptr, SIGIL_TK_INTERNAL, "number");
    return text.get();
}

std::string qualifierText(const POLICYQUALINFO* qualifier)
{
    if (OBJ_obj2nid(qualifier->pqualid) == NID_id_qt_cps)
        return "CPS: " + asn1Text(qualifier->d.cpsuri);
    if (OBJ_obj2nid(qualifier->pqualid) == NID_id_qt_unotice && qualifier->d.usernotice->exptext)
        return asn1Text(qualifier->d.usernotice->exptext);
    return {};
}

std::string policyInfo(const POLICYINFO* policy)
{
    std::vector<std::string> qualifiers;
    for (int i = 0; i < sk_POLICYQUALINFO_num(policy->qualifiers); ++i) {
        const std::string text = qualifierText(sk_POLICYQUALINFO_value(policy->qualifiers, i));
        if (!text.empty())
            qualifiers.push_back(text);
    }
    return policyText(blankOid(policy->policyid), qualifiers);
}

template <class Format>
std::string eachPolicy(const X509* certificate, Format format)
{
    const auto policies =
        extension<CERTIFICATEPOLICIES, CERTIFICATEPOLICIES_free>(certificate, NID_certificate_policies);
    std::vector<std::string> texts;
    for (int i = 0; policies && i < sk_POLICYINFO_num(policies.get()); ++i)
        texts.push_back(format(sk_POLICYINFO_value(policies.get(), i)));
    return join(texts, ", ");
}

std::vector<std::string> namesOf(const X509* certificate, int nid)
{
    const auto names = extension<GENERAL_NAMES, GENERAL_NAMES_free>(certificate, nid);
    return names ? generalNames(names.get()) : std::vector<std::string>();
}

template <class Visit>
void eachAccess(const X509* certificate, Visit visit)
{
    const auto access = extension<AUTHORITY_INFO_ACCESS, AUTHORITY_INFO_ACCESS_free>(certificate, NID_info_access);
    for (int i = 0; access && i < sk_ACCESS_DESCRIPTION_num(access.get()); ++i)
        visit(sk_ACCESS_DESCRIPTION_value(access.get(), i));
}

std::vector<std::string> accessUrls(const X509* certificate, int method)
{
    std::vector<std::string> urls;
    eachAccess(certificate, [&](const ACCESS_DESCRIPTION* access) {
        if (OBJ_obj2nid(access->method) == method && access->location->type == GEN_URI)
            urls.push_back(asn1Text(access->location->d.uniformResourceIdentifier));
    });
    return urls;
}

template <class Visit>
void eachCrlName(const X509* certificate, Visit visit)
{
    const auto points = extension<CRL_DIST_POINTS, CRL_DIST_POINTS_free>(certificate, NID_crl_distribution_points);
    for (int i = 0; points && i < sk_DIST_POINT_num(points.get()); ++i) {
        const DIST_POINT_NAME* name = sk_DIST_POINT_value(points.get(), i)->distpoint;
        if (!name || name->type != 0)
            continue;
        for (int j = 0; j < sk_GENERAL_NAME_num(name->name.fullname); ++j)
            visit(sk_GENERAL_NAME_value(name->name.fullname, j));
    }
}

} // namespace

std::optional<unsigned> ParsedCertificate::usageBits() const
{
    const auto bits = extension<ASN1_BIT_STRING, ASN1_BIT_STRING_free>(read(), NID_key_usage);
    if (!bits)
        return {};
    unsigned value = bits->length > 0 ? bits->data[0] : 0U;
    if (bits->length > 1)
        value |= static_cast<unsigned>(bits->data[1]) << 8;
    return value;
}

bool ParsedCertificate::isAuthority() const
{
    const auto constraints = extension<BASIC_CONSTRAINTS, BASIC_CONSTRAINTS_free>(read(), NID_basic_constraints);
    return constraints && constraints->ca != 0;
}

std::string ParsedCertificate::basicConstraints() const
{
    const auto constraints = extension<BASIC_CONSTRAINTS, BASIC_CONSTRAINTS_free>(read(), NID_basic_constraints);
    if (!constraints)
        return {};
    std::string text = constraints->ca ? "CA=TRUE" : "CA=FALSE";
    if (constraints->pathlen)
        text += ", pathLen=" + integerText(constraints->pathlen);
    return text;
}

std::string ParsedCertificate::policies() const { return eachPolicy(read(), policyInfo); }

std::string ParsedCertificate::policyIds() const
{
    return eachPolicy(read(), [](const POLICYINFO* policy) { return blankOid(policy->policyid); });
}

std::string ParsedCertificate::policyConstraints() const
{
    const auto constraints = extension<POLICY_CONSTRAINTS, POLICY_CONSTRAINTS_free>(read(), NID_policy_constraints);
    if (!constraints)
        return {};
    std::vector<std::string> parts;
    if (constraints->requireExplicitPolicy)
        parts.push_back("requireExplicitPolicy=" + integerText(constraints->requireExplicitPolicy));
    if (constraints->inhibitPolicyMapping)
        parts.push_back("inhibitPolicyMapping=" + integerText(constraints->inhibitPolicyMapping));
    return join(parts, ", ");
}

std::string ParsedCertificate::extendedKeyUsage() const
{
    const auto usages = extension<EXTENDED_KEY_USAGE, EXTENDED_KEY_USAGE_free>(read(), NID_ext_key_usage);
    std::vector<std::string> names;
    for (int i = 0; usages && i < sk_ASN1_OBJECT_num(usages.get()); ++i)
        names.push_back(objectName(sk_ASN1_OBJECT_value(usages.get(), i)));
    return join(names, ", ");
}

std::string ParsedCertificate::subjectAltName() const { return join(namesOf(read(), NID_subject_alt_name), ", "); }

std::string ParsedCertificate::issuerAltName() const { return join(namesOf(read(), NID_issuer_alt_name), ", "); }

std::string ParsedCertificate::authorityKeyId() const
{
    const auto id = extension<AUTHORITY_KEYID, AUTHORITY_KEYID_free>(read(), NID_authority_key_identifier);
    if (!id)
        return {};
    std::vector<std::string> parts;
    if (id->keyid)
        parts.push_back("KeyID=" + hexText(octets(id->keyid)));
    if (id->issuer)
        parts.push_back("issuer=" + join(generalNames(id->issuer), ", "));
    if (id->serial)
        parts.push_back("serial=" + hexText(octets(id->serial)));
    return join(parts, ", ");
}

std::string ParsedCertificate::subjectKeyId() const
{
    const auto id = extension<ASN1_OCTET_STRING, ASN1_OCTET_STRING_free>(read(), NID_subject_key_identifier);
    return id ? hexText(octets(id.get())) : std::string();
}

std::string ParsedCertificate::crlDistributionPoints() const
{
    std::vector<std::string> names;
    eachCrlName(read(), [&](const GENERAL_NAME* name) { names.push_back(generalName(name)); });
    return join(names, ", ");
}

std::vector<std::string> ParsedCertificate::crlUrls() const
{
    std::vector<std::string> urls;
    eachCrlName(read(), [&](const GENERAL_NAME* name) {
        if (name->type == GEN_URI)
            urls.push_back(asn1Text(name->d.uniformResourceIdentifier));
    });
    return urls;
}

std::string ParsedCertificate::authorityInfoAccess() const
{
    std::vector<std::string> parts;
    eachAccess(read(), [&](const ACCESS_DESCRIPTION* access) {
        parts.push_back(objectName(access->method) + "=" + generalName(access->location));
    });
    return join(parts, ", ");
}

std::vector<std::string> ParsedCertificate::issuerUrls() const { return accessUrls(read(), NID_ad_ca_issuers); }

std::vector<std::string> ParsedCertificate::responderUrls() const { return accessUrls(read(), NID_ad_OCSP); }

std::optional<Bytes> ParsedCertificate::identifyData() const
{
    const auto names = extension<GENERAL_NAMES, GENERAL_NAMES_free>(read(), NID_subject_alt_name);
    for (int i = 0; names && i < sk_GENERAL_NAME_num(names.get()); ++i) {
        auto data = toolkit::identifyData(sk_GENERAL_NAME_value(names.get(), i));
        if (data)
            return data;
    }
    return {};
}

} // namespace toolkit
