// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/extensions.h"

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"
#include "tools/sample-store/check.h"

#include <openssl/sha.h>
#include <openssl/x509v3.h>

#include <array>
#include <string>

namespace sample {

namespace {

using toolkit::Handle;
using toolkit::ObjectHandle;

using StringHandle = Handle<ASN1_STRING, ASN1_STRING_free>;
using IntegerHandle = Handle<ASN1_INTEGER, ASN1_INTEGER_free>;

// Shown by viewers of the certificate: "This certificate is a sample for trying things out and has no legal effect."
constexpr std::string_view notice = "이 인증서는 시험용 견본이며 법적 효력이 없습니다.";

void add(X509* cert, int nid, void* value, bool critical)
{
    check(X509_add1_ext_i2d(cert, nid, value, critical, X509V3_ADD_DEFAULT), "add an extension");
}

ASN1_OBJECT* object(std::string_view dotted)
{
    return check(OBJ_txt2obj(std::string(dotted).c_str(), 1), "read an object identifier");
}

ASN1_STRING* string(int type, std::string_view bytes)
{
    StringHandle text(check(ASN1_STRING_type_new(type), "allocate a string"));
    check(ASN1_STRING_set(text.get(), bytes.data(), static_cast<int>(bytes.size())), "fill a string");
    return text.release();
}

ASN1_STRING* bmpString(std::string_view utf8)
{
    ASN1_STRING* text = nullptr;
    check(ASN1_mbstring_copy(&text, reinterpret_cast<const unsigned char*>(utf8.data()),
              static_cast<int>(utf8.size()), MBSTRING_UTF8, B_ASN1_BMPSTRING),
        "encode a notice");
    return text;
}

POLICYQUALINFO* newQualifier(int nid)
{
    POLICYQUALINFO* qualifier = check(POLICYQUALINFO_new(), "allocate a policy qualifier");
    qualifier->pqualid = OBJ_nid2obj(nid);
    return qualifier;
}

void addQualifiers(POLICYINFO* policy, std::string_view cpsUrl)
{
    policy->qualifiers = check(sk_POLICYQUALINFO_new_null(), "allocate policy qualifiers");
    POLICYQUALINFO* cps = newQualifier(NID_id_qt_cps);
    sk_POLICYQUALINFO_push(policy->qualifiers, cps);
    cps->d.cpsuri = string(V_ASN1_IA5STRING, cpsUrl);

    POLICYQUALINFO* user = newQualifier(NID_id_qt_unotice);
    sk_POLICYQUALINFO_push(policy->qualifiers, user);
    user->d.usernotice = check(USERNOTICE_new(), "allocate a notice");
    user->d.usernotice->exptext = bmpString(notice);
}

GENERAL_NAME* urlName(std::string_view url)
{
    GENERAL_NAME* name = check(GENERAL_NAME_new(), "allocate a name");
    GENERAL_NAME_set0_value(name, GEN_URI, string(V_ASN1_IA5STRING, url));
    return name;
}

} // namespace

void addKeyUsage(X509* cert, std::initializer_list<KeyUsage> bits)
{
    const Handle<ASN1_BIT_STRING, ASN1_BIT_STRING_free> usage(ASN1_BIT_STRING_new());
    for (const KeyUsage bit : bits)
        check(ASN1_BIT_STRING_set_bit(usage.get(), bit, 1), "set a key usage");
    add(cert, NID_key_usage, usage.get(), true);
}

void addPolicies(X509* cert, std::span<const std::string_view> oids, std::string_view cpsUrl, bool critical)
{
    const Handle<CERTIFICATEPOLICIES, CERTIFICATEPOLICIES_free> policies(CERTIFICATEPOLICIES_new());
    for (const std::string_view oid : oids) {
        if (oid.empty())
            continue;
        POLICYINFO* policy = check(POLICYINFO_new(), "allocate a policy");
        sk_POLICYINFO_push(policies.get(), policy);
        policy->policyid = object(oid);
        if (!cpsUrl.empty())
            addQualifiers(policy, cpsUrl);
    }
    add(cert, NID_certificate_policies, policies.get(), critical);
}

void addSubjectKeyId(X509* cert)
{
    const ASN1_BIT_STRING* key = X509_get0_pubkey_bitstr(cert);
    std::array<unsigned char, SHA_DIGEST_LENGTH> hash;
    SHA1(ASN1_STRING_get0_data(key), static_cast<std::size_t>(ASN1_STRING_length(key)), hash.data());
    const StringHandle id(string(V_ASN1_OCTET_STRING, {reinterpret_cast<const char*>(hash.data()), hash.size()}));
    add(cert, NID_subject_key_identifier, id.get(), false);
}

void addAuthorityKeyId(X509* cert, const X509* issuer)
{
    const Handle<AUTHORITY_KEYID, AUTHORITY_KEYID_free> id(AUTHORITY_KEYID_new());
    id->keyid = ASN1_OCTET_STRING_dup(X509_get0_subject_key_id(const_cast<X509*>(issuer)));
    id->serial = ASN1_INTEGER_dup(X509_get0_serialNumber(issuer));
    id->issuer = check(GENERAL_NAMES_new(), "allocate names");
    GENERAL_NAME* name = check(GENERAL_NAME_new(), "allocate a name");
    sk_GENERAL_NAME_push(id->issuer, name);
    GENERAL_NAME_set0_value(name, GEN_DIRNAME, X509_NAME_dup(X509_get_issuer_name(issuer)));
    add(cert, NID_authority_key_identifier, id.get(), false);
}

void addCrlDistributionPoint(X509* cert, std::string_view url)
{
    const Handle<CRL_DIST_POINTS, CRL_DIST_POINTS_free> points(CRL_DIST_POINTS_new());
    DIST_POINT* point = check(DIST_POINT_new(), "allocate a distribution point");
    sk_DIST_POINT_push(points.get(), point);
    point->distpoint = check(DIST_POINT_NAME_new(), "allocate a distribution point");
    point->distpoint->type = 0;
    point->distpoint->name.fullname = check(GENERAL_NAMES_new(), "allocate names");
    sk_GENERAL_NAME_push(point->distpoint->name.fullname, urlName(url));
    add(cert, NID_crl_distribution_points, points.get(), false);
}

void addStatusResponder(X509* cert, std::string_view url)
{
    const Handle<AUTHORITY_INFO_ACCESS, AUTHORITY_INFO_ACCESS_free> access(AUTHORITY_INFO_ACCESS_new());
    ACCESS_DESCRIPTION* responder = check(ACCESS_DESCRIPTION_new(), "allocate an access description");
    sk_ACCESS_DESCRIPTION_push(access.get(), responder);
    responder->method = OBJ_nid2obj(NID_ad_OCSP);
    GENERAL_NAME_free(responder->location);
    responder->location = urlName(url);
    add(cert, NID_info_access, access.get(), false);
}

void addIdentityData(X509* cert, toolkit::View identifyData)
{
    const Handle<GENERAL_NAMES, GENERAL_NAMES_free> names(GENERAL_NAMES_new());
    GENERAL_NAME* name = check(GENERAL_NAME_new(), "allocate a name");
    sk_GENERAL_NAME_push(names.get(), name);
    ASN1_TYPE* value = check(ASN1_TYPE_new(), "allocate a value");
    ASN1_TYPE_set(
        value, V_ASN1_SEQUENCE, string(V_ASN1_SEQUENCE, {toolkit::chars(identifyData), identifyData.size()}));
    check(GENERAL_NAME_set0_othername(name, object(toolkit::oid::identifyData), value), "set the identity data");
    add(cert, NID_subject_alt_name, names.get(), false);
}

void addAuthorityConstraints(X509* cert, long pathLength)
{
    const Handle<BASIC_CONSTRAINTS, BASIC_CONSTRAINTS_free> constraints(BASIC_CONSTRAINTS_new());
    constraints->ca = 0xFF;
    if (pathLength >= 0) {
        constraints->pathlen = check(ASN1_INTEGER_new(), "allocate a number");
        ASN1_INTEGER_set(constraints->pathlen, pathLength);
    }
    add(cert, NID_basic_constraints, constraints.get(), true);
}

void addPolicyConstraints(X509* cert)
{
    const Handle<POLICY_CONSTRAINTS, POLICY_CONSTRAINTS_free> constraints(POLICY_CONSTRAINTS_new());
    constraints->requireExplicitPolicy = check(ASN1_INTEGER_new(), "allocate a number");
    ASN1_INTEGER_set(constraints->requireExplicitPolicy, 0);
    add(cert, NID_policy_constraints, constraints.get(), true);
}

} // namespace sample
