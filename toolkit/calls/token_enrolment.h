// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates from an authority for keys on a token: bodies of the functions of the HVTK_ face.
 */
#pragma once

#include "toolkit/calls/enrolment.h"
#include "toolkit/engine/enrolment/token_enrolment.h"
#include "toolkit/engine/tokens/token_visit.h"

namespace toolkit::calls {

/** @param caCertificate as cmpCertRequest() takes it */
inline void tokenCertRequest(Context& state, char* address, int port, char* reference, char* secret, char* pin,
    char* token, BINSTR* caCertificate, BINSTR* certificate)
{
    require(certificate != nullptr, SIGIL_TK_ARGUMENT, "byte string");
    const std::optional<TrustStore> trust = optionalTrustIn(state, caCertificate);
    const Authority authority(in(address), port);
    const SharedSecret shared{in(reference), in(secret)};
    const TokenVisit visit(state.tokens, in(token), in(pin));
    const EnrolledOnToken enrolled =
        enrolOnToken(termsOf(state, authority, trust ? &*trust : nullptr), visit.session(), shared);
    HeldBytes held;
    put(enrolled.pair.certificate.der(), held.get());
    if (caCertificate && !enrolled.issuer.empty())
        replace(enrolled.issuer, caCertificate);
    *certificate = held.take();
}

/** @param newCertificate the façade wants data in it; it is replaced */
inline void tokenCertUpdate(Context& state, char* address, int port, bool newKey, char* pin, char* token,
    BINSTR* certificate, BINSTR* newCertificate)
{
    require(newCertificate != nullptr, SIGIL_TK_ARGUMENT, "byte string");
    const Authority authority(in(address), port);
    const Certificate old(state.library(), in(certificate));
    const TokenVisit visit(state.tokens, in(token), in(pin));
    const RenewedOnToken renewed =
        renewOnToken(termsOf(state, authority, &state.trust), visit.session(), old, {newKey, 0, false});
    replace(renewed.signing.certificate.der(), newCertificate);
}

/** Hands out certificates and identifiers, all or none. @param keyManagement emptied when there is no such pair */
inline void putPairs(const RenewedOnToken& renewed, const PairRecords& signing, const PairRecords& keyManagement)
{
    const auto& second = renewed.keyManagement;
    const Bytes first = renewed.signing.certificate.der();
    const Bytes other = second ? second->certificate.der() : Bytes();
    if (keyManagement)
        put({{first, signing.certificate}, {renewed.signing.id, signing.key}, {other, keyManagement.certificate},
            {second ? second->id : Bytes(), keyManagement.key}});
    else
        put({{first, signing.certificate}, {renewed.signing.id, signing.key}});
}

/** @param kmCertificate with @p kmId, asked for when both are there; emptied when the authority does not grant it */
inline void tokenCertUpdate2(Context& state, char* address, int port, bool newKey, int keyBits, char* pin,
    char* token, BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId,
    BINSTR* kmCertificate, BINSTR* kmId)
{
    require(newCertificate && newId, SIGIL_TK_ARGUMENT, "byte string");
    const TrustStore trust = trustIn(state, caCertificate);
    const Authority authority(in(address), port);
    const Certificate old(state.library(), in(certificate));
    const PairRecords keyManagement{kmCertificate, kmId};
    const TokenVisit visit(state.tokens, in(token), in(pin));
    const RenewedOnToken renewed = renewOnToken(termsOf(state, authority, &trust), visit.session(), old,
        {newKey, keyBits, static_cast<bool>(keyManagement)});
    putPairs(renewed, {newCertificate, newId}, keyManagement);
}

/** Signs with the open session. @param id may be null or empty: the certificate tells its key */
inline void tokenCertRevoke(Context& state, char* address, int port, int reason, BINSTR* certificate, BINSTR* id)
{
    revokeOnToken(termsOf(state, {in(address), port}, &state.trust), state.tokens.session(),
        {state.library(), in(certificate)}, inOptional(id), reason);
}

} // namespace toolkit::calls
