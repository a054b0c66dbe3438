// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates from an authority: bodies of the functions of the HVTK_ face.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/enrolment/enrolment.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/x509/object_list.h"

#include <optional>

namespace toolkit::calls {

constexpr const char* recovery = "how an authority hands a user's key out again has no public definition";

inline void cmpSetProtocol(Context&, int protocol)
{
    require(protocol == SIGIL_TK_CMP_HTTP_DEFAULT || protocol == SIGIL_TK_CMP_HTTP, SIGIL_TK_OPTION, "protocol");
}

inline void cmpSetCA(Context&, int authority)
{
    require(authority == SIGIL_TK_CMP_ANY_AUTHORITY, SIGIL_TK_OPTION, "authority");
}

/** Trust in certificates that the caller names, at the time of the context. */
inline TrustStore trustIn(const Context& state, const BINSTR* certificates)
{
    TrustStore store;
    store.trusted = certificatesOf(state.library(), in(certificates));
    store.time = state.trust.time;
    return store;
}

/** Nothing when the caller names none. */
inline std::optional<TrustStore> optionalTrustIn(const Context& state, const BINSTR* certificates)
{
    return inOptional(certificates).empty() ? std::nullopt : std::optional(trustIn(state, certificates));
}

inline EnrolmentTerms termsOf(const Context& state, const Authority& authority, const TrustStore* trust)
{
    return {state.library(), authority, trust, resolveHash(state, SIGIL_TK_HASH_DEFAULT)};
}

/** Two records of a caller. */
struct PairRecords {
    BINSTR* certificate;
    BINSTR* key; ///< or what tells where the key is

    explicit operator bool() const { return certificate && key; }
};

/** A pair that waits to be handed out: the certificate, and the key as a key file. */
class HeldPair {
public:
    HeldPair(const Library& library, const EnrolledPair& pair, std::string_view password)
    {
        const Bytes file = encryptKeyFile(library, SIGIL_TK_KEY_DEFAULT, pair.key, password);
        put({{pair.certificate, m_certificate.get()}, {file, m_key.get()}});
    }
    void handOut(const PairRecords& records)
    {
        *records.certificate = m_certificate.take();
        *records.key = m_key.take();
    }

private:
    HeldBytes m_certificate;
    HeldBytes m_key;
};

/** @param trust null: the secret vouches
 *  @param issuer receives the certificate of the issuer in place of what it holds, when that is known; may be null
 *  @param keyManagement asked for when both records are there; emptied when the authority does not grant it */
inline void enrolInto(Context& state, const Authority& authority, const TrustStore* trust, Enrolment enrolment,
    std::string_view password, const PairRecords& signing, const PairRecords& keyManagement, BINSTR* issuer)
{
    require(static_cast<bool>(signing), SIGIL_TK_ARGUMENT, "byte string");
    enrolment.withKeyManagement = static_cast<bool>(keyManagement);
    const Enrolled enrolled = enrol(termsOf(state, authority, trust), enrolment);
    HeldPair first(state.library(), enrolled.signing, password);
    std::optional<HeldPair> second;
    if (enrolled.keyManagement)
        second.emplace(state.library(), *enrolled.keyManagement, password);
    if (issuer && !enrolled.issuer.empty())
        replace(enrolled.issuer, issuer);
    if (second)
        second->handOut(keyManagement);
    else if (keyManagement)
        *keyManagement.certificate = *keyManagement.key = {};
    first.handOut(signing);
}

inline void cmpCertRequest(Context& state, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey)
{
    const std::optional<TrustStore> trust = optionalTrustIn(state, caCertificate);
    enrolInto(state, {in(address), port}, trust ? &*trust : nullptr,
        {{in(reference), in(secret)}, in(subject), false}, in(password), {certificate, privateKey},
        {kmCertificate, kmPrivateKey}, caCertificate);
}

inline void cmpCertRequest2(Context& state, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey)
{
    enrolInto(state, {in(address), port}, nullptr, {{in(reference), in(secret)}, in(subject), false}, in(password),
        {certificate, privateKey}, {kmCertificate, kmPrivateKey}, nullptr);
}

/** A private key in a key file or as it is. */
inline Secret openedKey(const Library& library, View key, std::string_view password)
{
    return isPrivateKeyInfo(key) ? toSecret(key) : decryptKeyFile(library, key, password);
}

/** @param newPassword empty: the key file stays under @p password */
inline HeldPair renewed(Context& state, const Authority& authority, const TrustStore& trust, bool newKey,
    std::string_view password, std::string_view newPassword, BINSTR* certificate, BINSTR* privateKey)
{
    const Library& library = state.library();
    const Secret key = openedKey(library, in(privateKey), password);
    return {library, renew(termsOf(state, authority, &trust), {library, in(certificate)}, key, newKey),
        newPassword.empty() ? password : newPassword};
}

inline void cmpCertUpdate(Context& state, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    const PairRecords records{newCertificate, newPrivateKey};
    require(static_cast<bool>(records), SIGIL_TK_ARGUMENT, "byte string");
    renewed(state, {in(address), port}, trustIn(state, caCertificate), newKey, in(password), in(newPassword),
        certificate, privateKey)
        .handOut(records);
}

/** @param newCertificate the façade wants data in it; it is replaced */
inline void cmpCertUpdate2(Context& state, char* address, int port, bool newKey, char* password, char* newPassword,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey)
{
    const PairRecords records{newCertificate, newPrivateKey};
    require(static_cast<bool>(records), SIGIL_TK_ARGUMENT, "byte string");
    HeldPair pair = renewed(
        state, {in(address), port}, state.trust, newKey, in(password), in(newPassword), certificate, privateKey);
    release(newCertificate);
    pair.handOut(records);
}

/** @param result the façade wants data in it; it is replaced */
inline void revokeInto(Context& state, const Authority& authority, const TrustStore& trust, int reason,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* result)
{
    require(result != nullptr, SIGIL_TK_ARGUMENT, "byte string");
    replace(
        view(revoke(termsOf(state, authority, &trust), {state.library(), in(certificate)}, in(privateKey), reason)),
        result);
}

inline void cmpCertRevoke(Context& state, char* address, int port, int reason, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* caCertificate, BINSTR* result)
{
    revokeInto(state, {in(address), port}, trustIn(state, caCertificate), reason, certificate, privateKey, result);
}

inline void cmpCertRevoke2(
    Context& state, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result)
{
    revokeInto(state, {in(address), port}, state.trust, reason, certificate, privateKey, result);
}

} // namespace toolkit::calls
