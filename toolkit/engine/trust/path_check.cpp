// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/trust/path_check.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/trust/issuer.h"
#include "toolkit/engine/trust/soundness.h"

#include <openssl/objects.h>

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

using ContextHandle = Handle<X509_STORE_CTX, X509_STORE_CTX_free>;

struct VerifyCode {
    int reason;
    int code;
};

constexpr std::array verifyCodes{
    VerifyCode{X509_V_ERR_OUT_OF_MEM, SIGIL_TK_NO_MEMORY},
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_CERT_HAS_EXPIRED, SIGIL_TK_VERIFY_EXPIRED},
    VerifyCode{X509_V_ERR_CERT_NOT_YET_VALID, SIGIL_TK_VERIFY_NOT_YET},
    VerifyCode{X509_V_ERR_CERT_REVOKED, SIGIL_TK_VERIFY_REVOKED},
    VerifyCode{X509_V_ERR_CERT_SIGNATURE_FAILURE, SIGIL_TK_VERIFY_SIGNATURE},
    VerifyCode{X509_V_ERR_CRL_SIGNATURE_FAILURE, SIGIL_TK_VERIFY_SIGNATURE},
    VerifyCode{X509_V_ERR_NO_EXPLICIT_POLICY, SIGIL_TK_VERIFY_POLICY},
    VerifyCode{X509_V_ERR_INVALID_POLICY_EXTENSION, SIGIL_TK_VERIFY_POLICY},
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_CRL, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_CRL_ISSUER, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_CRL_HAS_EXPIRED, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_CRL_NOT_YET_VALID, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_DIFFERENT_CRL_SCOPE, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_KEYUSAGE_NO_CRL_SIGN, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_UNHANDLED_CRITICAL_CRL_EXTENSION, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_CRL_PATH_VALIDATION_ERROR, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_ERROR_IN_CRL_LAST_UPDATE_FIELD, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_ERROR_IN_CRL_NEXT_UPDATE_FIELD, SIGIL_TK_VERIFY_NO_CRL},
};

int codeOf(int reason)
{
    const auto* const found = std::find_if(
        verifyCodes.begin(), verifyCodes.end(), [&](const VerifyCode& entry) { return entry.reason == reason; });
    return found == verifyCodes.end() ? static_cast<int>(SIGIL_TK_VERIFY_FAILED) : found->code;
}

/** What the callbacks of one run know. */
struct Run {
    const Path& path;
    const RevocationRules& revocation;
    std::vector<const X509*> unlisted;
    bool outOfMemory = false;
};

/** The signer of a list has a path of its own, which is verified in a context below the one of the run. */
X509_STORE_CTX* topOf(X509_STORE_CTX* context)
{
    while (X509_STORE_CTX* const parent = X509_STORE_CTX_get0_parent_ctx(context))
        context = parent;
    return context;
}

Run& runOf(X509_STORE_CTX* context) { return *static_cast<Run*>(X509_STORE_CTX_get_app_data(topOf(context))); }

bool isNextInPath(const Path& path, const X509* subject, const X509* issuer)
{
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        if (X509_cmp(path[i]->get(), subject) == 0)
            return X509_cmp(path[i + 1]->get(), issuer) == 0;
    return false;
}

/** Keeps OpenSSL on the path that was found; the paths of lists' signers it looks for itself. */
int isIssuer(X509_STORE_CTX* context, X509* subject, X509* issuer)
{
    if (topOf(context) == context && X509_cmp(subject, issuer) != 0)
        return isNextInPath(runOf(context).path, subject, issuer);
    return X509_check_issued(issuer, subject) == X509_V_OK && hasSigned(issuer, subject) &&
        !isShortKey(X509_get0_pubkey(subject));
}

int accept(X509_STORE_CTX* context)
{
    X509_STORE_CTX_set_error(context, X509_V_OK);
    return 1;
}

/** OpenSSL wants a list for the end of the path too, but what is trusted needs no proof. */
bool isAnchor(X509_STORE_CTX* context)
{
    return topOf(context) == context &&
        X509_STORE_CTX_get_error_depth(context) == sk_X509_num(X509_STORE_CTX_get0_chain(context)) - 1;
}

void noteUnlisted(Run& run, const X509* certificate)
{
    try {
        run.unlisted.push_back(certificate);
    } catch (const std::bad_alloc&) {
        run.outOfMemory = true;
    }
}

int judge(int ok, X509_STORE_CTX* context)
{
    if (ok == 1)
        return ok;
    Run& run = runOf(context);
    const int code = codeOf(X509_STORE_CTX_get_error(context));
    if (code == SIGIL_TK_VERIFY_NO_CRL) {
        if (!run.revocation.nothingElse && isAnchor(context))
            return accept(context);
        noteUnlisted(run, X509_STORE_CTX_get_current_cert(context));
        return run.revocation.toleratesMissing ? accept(context) : 0;
    }
    const bool isAboutRevocation = code == SIGIL_TK_VERIFY_REVOKED || code == SIGIL_TK_VERIFY_SIGNATURE;
    return run.revocation.nothingElse && topOf(context) == context && !isAboutRevocation ? accept(context) : 0;
}

void setPolicies(X509_VERIFY_PARAM* parameters, const std::vector<std::string>& policies)
{
    const auto add = [&](const std::string& policy) {
        ObjectHandle object(OBJ_txt2obj(policy.c_str(), 1));
        require(object != nullptr, SIGIL_TK_ARGUMENT, "policy " + policy);
        require(X509_VERIFY_PARAM_add0_policy(parameters, object.get()) == 1, SIGIL_TK_NO_MEMORY);
        static_cast<void>(object.release());
    };
    std::for_each(policies.begin(), policies.end(), add);
    if (policies.empty())
        add("2.5.29.32.0"); // anyPolicy
    // An authority may insist on policies when the caller does not, so they are processed in any case.
    X509_VERIFY_PARAM_set_flags(
        parameters, X509_V_FLAG_POLICY_CHECK | (policies.empty() ? 0UL : X509_V_FLAG_EXPLICIT_POLICY));
}

unsigned long revocationFlags(int range)
{
    constexpr unsigned long leaf =
        X509_V_FLAG_CRL_CHECK | X509_V_FLAG_EXTENDED_CRL_SUPPORT | X509_V_FLAG_USE_DELTAS;
    switch (range) {
    case SIGIL_TK_REVOCATION_PATH:
        return leaf | X509_V_FLAG_CRL_CHECK_ALL;
    case SIGIL_TK_REVOCATION_LEAF:
        return leaf;
    default:
        return 0;
    }
}

} // namespace

PathCheck::PathCheck(const Library& library, const Path& path, const std::vector<const Certificate*>& others)
    : m_library(library)
    , m_path(path)
    , m_anchor(X509_STORE_new())
    , m_others(sk_X509_new_null())
{
    require(
        m_anchor && m_others && X509_STORE_add_cert(m_anchor.get(), path.back()->get()) == 1, SIGIL_TK_NO_MEMORY);
    X509_STORE_set_check_issued(m_anchor.get(), isIssuer);
    const auto add = [&](const Certificate* certificate) {
        require(X509_add_cert(m_others.get(), certificate->get(), X509_ADD_FLAG_UP_REF | X509_ADD_FLAG_NO_DUP) == 1,
            SIGIL_TK_NO_MEMORY);
    };
    std::for_each(path.begin(), path.end(), add);
    std::for_each(others.begin(), others.end(), add);
}

Verdict PathCheck::run(const PathRules& rules, const RevocationRules& revocation) const
{
    const ContextHandle context(X509_STORE_CTX_new_ex(m_library.context(), nullptr));
    require(
        context && X509_STORE_CTX_init(context.get(), m_anchor.get(), m_path.front()->get(), m_others.get()) == 1,
        SIGIL_TK_NO_MEMORY);
    X509_VERIFY_PARAM* const parameters = X509_STORE_CTX_get0_param(context.get());
    X509_VERIFY_PARAM_set_flags(parameters, X509_V_FLAG_PARTIAL_CHAIN | revocationFlags(revocation.range));
    X509_VERIFY_PARAM_set_time(parameters, rules.time);
    X509_VERIFY_PARAM_set_auth_level(parameters, 0); // old certificates are signed with SHA-1
    setPolicies(parameters, rules.policies);
    X509_STORE_CTX_set0_crls(context.get(), const_cast<STACK_OF(X509_CRL)*>(revocation.lists));
    Run run{m_path, revocation, {}};
    X509_STORE_CTX_set_app_data(context.get(), &run);
    X509_STORE_CTX_set_verify_cb(context.get(), judge);
    const bool good = X509_verify_cert(context.get()) == 1;
    require(!run.outOfMemory, SIGIL_TK_NO_MEMORY);
    const int reason = X509_STORE_CTX_get_error(context.get());
    return good ? Verdict{SIGIL_TK_OK, {}, std::move(run.unlisted)}
                : Verdict{codeOf(reason), X509_verify_cert_error_string(reason), std::move(run.unlisted)};
}

void requireGood(const Verdict& verdict) { require(verdict.code == SIGIL_TK_OK, verdict.code, verdict.reason); }

} // namespace toolkit
