// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/enrolment/token_enrolment.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/remote_key.h"
#include "toolkit/engine/tokens/token_keys.h"
#include "toolkit/engine/tokens/token_objects.h"

#include <initializer_list>
#include <utility>

namespace toolkit {
namespace {

/** A key pair that was made on a token, and goes away again unless it is kept. */
class FreshTokenKey {
public:
    FreshTokenKey(const Library& library, const TokenSession& session, int algorithm, int bits)
        : m_session(session)
        , m_key(generateTokenKey(library, session, algorithm, bits))
    {
    }
    ~FreshTokenKey()
    {
        if (!m_kept)
            remove();
    }
    FreshTokenKey(const FreshTokenKey&) = delete;
    FreshTokenKey& operator=(const FreshTokenKey&) = delete;

    const PublicTokenKey& get() const { return m_key; }
    void keep() { m_kept = true; }

private:
    void remove() noexcept
    {
        try {
            deletePair(m_session, m_key.id);
        } catch (...) {
            return; // the token is gone, and what made the key useless is told already
        }
    }

    const TokenSession& m_session;
    PublicTokenKey m_key;
    bool m_kept = false;
};

RemoteKey remoteKey(const Library& library, const TokenSession& session, const PublicTokenKey& key)
{
    return {library, key.info,
        [signer = TokenKey(library, session, key.id)](View data) { return signer.signPlain(data); }};
}

/** Asks an authority. When a key could not sign, its failure counts, and not what came of that. */
template <class Request>
auto ask(std::initializer_list<const RemoteKey*> keys, Request request)
{
    try {
        return request();
    } catch (const Error& error) {
        requireMemory(error);
        for (const RemoteKey* key : keys)
            key->rethrowFailure();
        throw;
    }
}

/** The certificate's own public key, with the identifier of its private key. */
PublicTokenKey keyOf(const Library& library, const TokenSession& session, const Certificate& certificate, View id)
{
    return {id.empty() ? keyIdOf(library, session, certificate) : toBytes(id), certificate.publicKeyDer()};
}

int algorithmOf(const EVP_PKEY* key)
{
    return EVP_PKEY_is_a(key, "EC") == 1 ? SIGIL_TK_TOKEN_EC : SIGIL_TK_TOKEN_RSA;
}

TokenPair renewWithFreshKey(const EnrolmentTerms& terms, const TokenSession& session, const KeyOwner& owner,
    const RemoteKey& old, View oldId, int bits)
{
    FreshTokenKey fresh(terms.library, session, algorithmOf(old.get()), bits == 0 ? kindLike(old.get()) : bits);
    const RemoteKey key = remoteKey(terms.library, session, fresh.get());
    Certificate certificate = ask({&old, &key}, [&] { return requestRenewal(terms, owner, key.get()); });
    inheritTokenRandom(session, oldId, fresh.get().id);
    writeCertificateOfKey(terms.library, session, certificate, fresh.get().id);
    fresh.keep();
    return {std::move(certificate), fresh.get().id};
}

TokenPair renewWithSameKey(const EnrolmentTerms& terms, const TokenSession& session, const KeyOwner& owner,
    const RemoteKey& key, const Bytes& id)
{
    Certificate certificate = ask({&key}, [&] { return requestRenewal(terms, owner, key.get()); });
    writeCertificateOfKey(terms.library, session, certificate, id);
    return {std::move(certificate), id};
}

/** A pair for key management, asked for with the signing pair. */
std::optional<TokenPair> enrolKeyManagement(
    const EnrolmentTerms& terms, const TokenSession& session, const TokenPair& signing)
{
    try {
        const RemoteKey signer =
            remoteKey(terms.library, session, keyOf(terms.library, session, signing.certificate, signing.id));
        FreshTokenKey fresh(terms.library, session, SIGIL_TK_TOKEN_RSA, SIGIL_TK_KEYPAIR_RSA2048);
        const RemoteKey key = remoteKey(terms.library, session, fresh.get());
        Certificate certificate = requestKeyManagement(terms, {signing.certificate, signer.get()}, key.get());
        writeCertificateOfKey(terms.library, session, certificate, fresh.get().id);
        fresh.keep();
        return TokenPair{std::move(certificate), fresh.get().id};
    } catch (const Error& error) {
        requireMemory(error);
        return {};
    }
}

} // namespace

EnrolledOnToken enrolOnToken(const EnrolmentTerms& terms, const TokenSession& session, const SharedSecret& secret)
{
    FreshTokenKey fresh(terms.library, session, SIGIL_TK_TOKEN_RSA, SIGIL_TK_KEYPAIR_RSA2048);
    const RemoteKey key = remoteKey(terms.library, session, fresh.get());
    Introduction answer = ask({&key}, [&] { return introduce(terms, secret, "", key.get()); });
    writeCertificateOfKey(terms.library, session, answer.certificate, fresh.get().id);
    fresh.keep();
    return {{std::move(answer.certificate), fresh.get().id}, std::move(answer.issuer)};
}

RenewedOnToken renewOnToken(const EnrolmentTerms& terms, const TokenSession& session,
    const Certificate& certificate, const TokenRenewal& renewal)
{
    const PublicTokenKey known = keyOf(terms.library, session, certificate, {});
    const RemoteKey old = remoteKey(terms.library, session, known);
    const KeyOwner owner{certificate, old.get()};
    RenewedOnToken renewed{renewal.freshKey ? renewWithFreshKey(terms, session, owner, old, known.id, renewal.bits)
                                            : renewWithSameKey(terms, session, owner, old, known.id),
        {}};
    if (renewal.withKeyManagement)
        renewed.keyManagement = enrolKeyManagement(terms, session, renewed.signing);
    return renewed;
}

std::string revokeOnToken(
    const EnrolmentTerms& terms, const TokenSession& session, const Certificate& certificate, View id, int reason)
{
    const RemoteKey key = remoteKey(terms.library, session, keyOf(terms.library, session, certificate, id));
    return ask({&key}, [&] { return requestRevocation(terms, {certificate, key.get()}, reason); });
}

} // namespace toolkit
