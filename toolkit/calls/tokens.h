// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Tokens: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/calls/messages.h"
#include "toolkit/calls/sealed_messages.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/tokens/token.h"
#include "toolkit/engine/tokens/token_certificates.h"
#include "toolkit/engine/tokens/token_envelope.h"
#include "toolkit/engine/tokens/token_keys.h"
#include "toolkit/engine/tokens/token_objects.h"

#include <algorithm>
#include <cstring>

/** Of the public header, where it is CK_TOKEN_INFO byte for byte. */
struct PKCS11_TOKEN_INFO;

namespace toolkit::calls {

/** @param count in: how many numbers @p slots has room for; out: how many there are */
inline void tokenGetSlotList(Context& state, unsigned long* slots, unsigned long* count)
{
    require(slots && count, SIGIL_TK_ARGUMENT);
    const std::vector<unsigned long> numbers = state.tokens.modules()->slots();
    const unsigned long room = std::exchange(*count, numbers.size());
    require(room >= numbers.size(), SIGIL_TK_BUFFER_TOO_SMALL);
    std::copy(numbers.begin(), numbers.end(), slots);
}

inline void tokenGetInfo(Context& state, unsigned long slot, PKCS11_TOKEN_INFO* out)
{
    require(out != nullptr, SIGIL_TK_ARGUMENT);
    const CK_TOKEN_INFO info = tokenInfo(state.tokens.modules()->slot(slot));
    std::memcpy(static_cast<void*>(out), &info, sizeof info);
}

inline void tokenInit(Context& state, char* soPin, char* label)
{
    initialiseToken(state.tokens, in(soPin), in(label));
}

inline void tokenInitWithSlotID(Context& state, unsigned long slot, char* soPin, char* pin, char* label)
{
    initialiseToken(state.tokens, state.tokens.modules()->slot(slot), in(soPin), in(pin), in(label));
}

inline void tokenOpenSession(Context& state, unsigned long slot, int flags)
{
    state.tokens.open(state.tokens.modules()->slot(slot), flags);
}

inline void tokenLogin(Context& state, char* pin) { state.tokens.session().login(in(pin)); }

/** @param pin may be null: no login. After a wrong one the session is open. */
inline void tokenOpenSessionWithSlotID(Context& state, unsigned long slot, char* pin, int flags)
{
    tokenOpenSession(state, slot, flags);
    if (pin)
        tokenLogin(state, pin);
}

inline void tokenOpenSessionWithTokenName(Context& state, char* token, int flags)
{
    state.tokens.open(slotOfToken(state.tokens, in(token)), flags);
}

/** With the first token that there is. @param pin may be null */
inline void tokenOpenFirstSession(Context& state, char* pin)
{
    state.tokens.open(firstToken(state.tokens), 0);
    if (pin)
        tokenLogin(state, pin);
}

inline void tokenLogout(Context& state) { state.tokens.session().logout(); }

inline void tokenCloseSession(Context& state)
{
    state.tokens.session();
    state.tokens.close();
}

inline void tokenChangePIN(Context& state, char* oldPin, char* newPin)
{
    state.tokens.session().changePin(in(oldPin), in(newPin));
}

inline void tokenGetCertCnt(Context& state, int* count)
{
    putValue(static_cast<int>(tokenCertificates(state.library(), state.tokens.session()).size()), count);
}

inline void tokenGetCertInfo(Context& state, int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    require(kind != nullptr, SIGIL_TK_ARGUMENT);
    const auto all = tokenCertificates(state.library(), state.tokens.session());
    require(index >= 0 && static_cast<std::size_t>(index) < all.size(), SIGIL_TK_INDEX);
    const TokenCertificate& found = all[static_cast<std::size_t>(index)];
    put({{found.id, id}, {found.certificate.der(), certificate}});
    *kind = kindOf(found.certificate);
}

inline void tokenReadCert(Context& state, BINSTR* id, BINSTR* certificate)
{
    put(tokenCertificate(state.library(), state.tokens.session(), in(id)).der(), certificate);
}

inline void tokenReadRandomForVID(Context& state, BINSTR* id, BINSTR* random)
{
    put(tokenRandom(state.tokens.session(), in(id)), random);
}

/** @param key PrivateKeyInfo; its identity random value comes along */
inline void tokenWriteCertAndPriKey(Context& state, BINSTR* certificate, BINSTR* key)
{
    writePair(state.library(), state.tokens.session(), {state.library(), in(certificate)}, in(key));
}

inline void tokenDeleteCertAndPriKey(Context& state, BINSTR* id) { deletePair(state.tokens.session(), in(id)); }

inline void tokenGenKeyPair(Context& state, int algorithm, int bits, BINSTR* publicKey)
{
    require(publicKey != nullptr, SIGIL_TK_ARGUMENT);
    put(generateTokenKey(state.library(), state.tokens.session(), algorithm, bits).info, publicKey);
}

inline TokenKey tokenKey(Context& state, View id) { return {state.library(), state.tokens.session(), id}; }

inline void tokenSign(Context& state, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    const SignatureScheme scheme = signatureScheme(state, SIGIL_TK_HASH_DEFAULT);
    put(tokenKey(state, in(id)).signDigest(scheme, hash(state.library(), scheme.hash, in(data))), signature);
}

inline void tokenVerify(Context& state, BINSTR* id, BINSTR* data, BINSTR* signature)
{
    verify(state.library(), signatureScheme(state, SIGIL_TK_HASH_DEFAULT),
        tokenPublicKey(state.library(), state.tokens.session(), in(id)), in(data), in(signature));
}

inline void tokenEncrypt(Context& state, BINSTR* id, BINSTR* data, BINSTR* out)
{
    put(asymmetricEncrypt(state.library(), encryptionScheme(state), SIGIL_TK_ASYM_PUBLIC,
            tokenPublicKey(state.library(), state.tokens.session(), in(id)), in(data)),
        out);
}

inline void tokenDecrypt(Context& state, BINSTR* id, BINSTR* cipher, BINSTR* out)
{
    put(tokenKey(state, in(id)).decrypt(encryptionScheme(state), in(cipher)), out);
}

/** Signs a message with the key and the certificate of one identifier. */
inline MessageLayout tokenSignBytes(Context& state, View id, View content, const SigningRequest& request)
{
    const TokenKey key = tokenKey(state, id);
    return signContent(
        state.library(), request, [&](View digest) { return key.signDigest(request.scheme, digest); },
        digestOf(state.library(), request.scheme.hash, Input(content)));
}

/** @param option SigilToolkitMessageOption bits */
inline void tokenSignMessage(Context& state, int option, BINSTR* id, BINSTR* data, BINSTR* out)
{
    const Certificate signer = tokenCertificate(state.library(), state.tokens.session(), in(id));
    const SigningRequest request = signingRequest(state, signer, option, "");
    const MessageLayout layout = tokenSignBytes(state, in(id), in(data), request);
    putSigned(layout, in(data), (request.options & SIGIL_TK_MESSAGE_DETACHED) != 0, out);
}

inline void tokenSignData(Context& state, BINSTR* id, BINSTR* data, BINSTR* out)
{
    tokenSignMessage(state, SIGIL_TK_MESSAGE_PLAIN, id, data, out);
}

inline void tokenSignDataNoContent(Context& state, BINSTR* id, BINSTR* data, BINSTR* out)
{
    tokenSignMessage(state, SIGIL_TK_MESSAGE_DETACHED, id, data, out);
}

inline void tokenSignAndEnvData(Context& state, BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* out)
{
    const Certificate signer = tokenCertificate(state.library(), state.tokens.session(), in(id));
    const SigningRequest request = signingRequest(state, signer, 0, "", SIGIL_TK_MESSAGE_DETACHED);
    std::vector<Certificate> recipients;
    recipients.emplace_back(state.library(), in(recipient));
    const Secret signedMessage = withContent(tokenSignBytes(state, in(id), in(data), request), in(data));
    put(envelope(state, SIGIL_TK_ENVELOPE_ISSUER, recipients, signedMessage, 0), out);
}

/** Opens a message for the certificate of an identifier. */
inline Secret tokenOpenMessage(Context& state, View id, View message)
{
    const Message given{Input(message)};
    const Certificate recipient = tokenCertificate(state.library(), state.tokens.session(), id);
    const TokenKey key = tokenKey(state, id);
    return openMessage(state.library(), given, recipient, tokenOpener(key));
}

inline void tokenDecryptData(Context& state, BINSTR* id, BINSTR* message, BINSTR* data)
{
    put(tokenOpenMessage(state, in(id), in(message)), data);
}

/** @param signer may be null */
inline void tokenVerifyAndDecData(Context& state, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signer)
{
    state.messages.verified = {};
    putOpened(state, SIGIL_TK_CHECK_SIGNATURES, tokenOpenMessage(state, in(id), in(message)), data, signer);
}

/** @param digest the hash in hexadecimal */
inline void tokenVerifySignatureValue(Context& state, char* digest, BINSTR* certificate, BINSTR* signature)
{
    verifyDigest(state.library(), signatureScheme(state, SIGIL_TK_HASH_DEFAULT), {state.library(), in(certificate)},
        bytesOfHex(in(digest)), in(signature));
}

} // namespace toolkit::calls
