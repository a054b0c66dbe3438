// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Signed, enveloped and encrypted messages in memory: bodies of the functions that both faces export. Where a face has no
 *  option, it passes 0.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/messages/enveloped.h"
#include "toolkit/engine/messages/sealed.h"
#include "toolkit/engine/messages/signed.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <algorithm>

namespace toolkit::calls {

/** How a context signs messages. @param contradicting options that the calling function cannot follow */
inline SigningRequest signingRequest(
    const Context& state, const Certificate& certificate, int option, const char* time, int contradicting = 0)
{
    const int options = option | state.messages.options;
    requireMessageOptions(options, contradicting);
    return {certificate, signatureScheme(state, SIGIL_TK_HASH_DEFAULT), optionalTime(in(time)), options,
        state.trust.authorities};
}

/** Collects pieces. */
inline Sink into(Secret& out)
{
    return [&out](View piece) { out.insert(out.end(), piece.begin(), piece.end()); };
}

inline Secret contentOf(const Message& message)
{
    Secret content;
    message.content(into(content));
    return content;
}

inline void putSigned(const MessageLayout& layout, View content, bool detached, BINSTR* out)
{
    put(detached ? toSecret(layout.skeleton()) : withContent(layout, content), out);
}

inline void cmsSetOption(Context& state, int options)
{
    requireMessageOptions(options);
    state.messages.options = options;
}

/** Signs bytes in memory. */
inline MessageLayout signBytes(const Context& state, const SigningRequest& request, View key, View content)
{
    return signContent(state.library(), request, digestSigner(state.library(), request, key),
        digestOf(state.library(), request.scheme.hash, Input(content)));
}

inline void cmsMakeSignedData(
    Context& state, int option, BINSTR* certificate, BINSTR* key, BINSTR* content, char* time, BINSTR* out)
{
    const Certificate signer(state.library(), in(certificate));
    const SigningRequest request = signingRequest(state, signer, option, time);
    const MessageLayout layout = signBytes(state, request, in(key), in(content));
    putSigned(layout, in(content), (request.options & SIGIL_TK_MESSAGE_DETACHED) != 0, out);
}

/** The message decides whether its content is in it: an option that says otherwise is refused. */
inline void cmsMakeSignedDataWithAddSigner(
    Context& state, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, char* time, BINSTR* out)
{
    const Message old{Input(in(message))};
    const Certificate signer(state.library(), in(certificate));
    const SigningRequest request =
        signingRequest(state, signer, option, time, old.hasContent() ? SIGIL_TK_MESSAGE_DETACHED : 0);
    const MessageLayout layout =
        addSigner(state.library(), request, digestSigner(state.library(), request, in(key)), old);
    putSigned(layout, old.hasContent() ? contentOf(old) : Secret(), !old.hasContent(), out);
}

/** Verifies a message and keeps it for the getters.
 *  @param option a SigilToolkitMessageCheck
 *  @return the content, empty for a detached message */
inline Secret verifyAndKeep(Context& state, int option, const Message& message, const Input* detached)
{
    require(option == SIGIL_TK_CHECK_SIGNATURES || option == SIGIL_TK_CHECK_PATHS, SIGIL_TK_OPTION,
        "option " + std::to_string(option));
    Secret content;
    VerifiedMessage verified =
        verifyMessage(state.library(), message, detached, message.hasContent() ? into(content) : Sink());
    if (option == SIGIL_TK_CHECK_PATHS)
        verifySigners(state.library(), state.trust, verified);
    state.messages.verified = std::move(verified);
    return content;
}

/** The same for a message and, when that is detached, its content in a record; the record receives the content of another
 *  message, and is not needed for it. A failure leaves the getters without a message. */
inline void verifyRecord(Context& state, int option, BINSTR* message, BINSTR* inOut)
{
    state.messages.verified = {};
    const Message given{Input(in(message))};
    const View detached = inOptional(inOut);
    const Input input(detached);
    const Secret content = verifyAndKeep(state, option, given, detached.empty() ? nullptr : &input);
    if (given.hasContent() && inOut)
        replace(content, inOut);
}

inline void cmsProcessSignedData(Context& state, int option, BINSTR* message, BINSTR* content, int* signerCount)
{
    verifyRecord(state, option, message, content);
    if (signerCount)
        *signerCount = static_cast<int>(state.messages.verified.signers.size());
}

inline const SignerRecord& signerAt(const Context& state, int index)
{
    const auto& signers = state.messages.verified.signers;
    require(index >= 0 && static_cast<std::size_t>(index) < signers.size(), SIGIL_TK_CMS_NOBODY);
    return signers[static_cast<std::size_t>(index)];
}

/** The certificate and signing time of a signer, as far as the caller wants them. */
inline void putSigner(const SignerRecord& signer, BINSTR* certificate, char* time)
{
    if (certificate)
        put(signer.certificate, certificate);
    if (time)
        putText(signer.signingTime ? timeText(*signer.signingTime) : "", timeCapacity, time);
}

inline void cmsGetSignerCert(Context& state, int index, BINSTR* certificate, char* time)
{
    putSigner(signerAt(state, index), certificate, time);
}

/** The form of the GPKI library that no export of the façade reaches: the first signer comes with the content. */
inline void cmsProcessSignedDataOfOne(
    Context& state, BINSTR* message, BINSTR* content, BINSTR* certificate, char* time)
{
    verifyRecord(state, SIGIL_TK_CHECK_SIGNATURES, message, content);
    putSigner(signerAt(state, 0), certificate, time);
}

inline void cmsGetSignerCaPubs(Context& state, BINSTR* out)
{
    signerAt(state, 0);
    ObjectList list;
    for (const Bytes& certificate : state.messages.verified.others)
        list.add(certificate);
    put(list.encode(), out);
}

inline void cmsGetTBTData(Context& state, int index, BINSTR* out) { put(signerAt(state, index).signature, out); }

inline void cmsMakeTBSData(
    Context& state, int option, BINSTR* certificate, BINSTR* content, char* time, BINSTR* out)
{
    const Certificate signer(state.library(), in(certificate));
    const SigningRequest request = signingRequest(state, signer, option, time, SIGIL_TK_MESSAGE_NO_ATTRIBUTES);
    MessageLayout layout;
    const Bytes digest = digestOf(state.library(), request.scheme.hash, Input(in(content)));
    const Bytes attributes = prepareSignature(state.library(), request, digest, layout);
    put(attributes, out);
    PendingMessage pending{layout.skeleton(), {}, signer.der()};
    if ((request.options & SIGIL_TK_MESSAGE_DETACHED) == 0)
        pending.content = toBytes(in(content));
    state.messages.pending = std::move(pending);
}

/** A wrong signature leaves the pending message, a right one takes it. */
inline void cmsComposeSignedData(Context& state, BINSTR* signature, BINSTR* out)
{
    const auto& pending = state.messages.pending;
    require(pending.has_value(), SIGIL_TK_CMS_CONTENT, "no message waits for a signature");
    const MessageLayout layout = completeSignature(state.library(), *pending, in(signature));
    putSigned(layout, pending->content ? View(*pending->content) : View(), !pending->content, out);
    state.messages.pending.reset();
}

/** Encrypts bytes in memory. */
inline Secret encryptAll(Encryption encryption, View content)
{
    Secret ciphertext;
    Input(content).pieces([&](View piece) { encryption.cipher.update(piece, into(ciphertext)); });
    encryption.cipher.finish(into(ciphertext));
    return withContent(encryption.layout, ciphertext);
}

inline Secret envelope(
    const Context& state, int option, const std::vector<Certificate>& recipients, View content, int cipher)
{
    return encryptAll(
        startEnvelope(state.library(), {recipients, cipher, encryptionScheme(state), option}), content);
}

inline void cmsMakeEnvelopedData(
    Context& state, int option, BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    std::vector<Certificate> recipients;
    recipients.emplace_back(state.library(), in(recipient));
    put(envelope(state, option, recipients, in(content), cipher), out);
}

/** @param recipients a list, or one certificate */
inline void cmsMakeEnvelopedDataWithMultiRecipients(
    Context& state, int option, BINSTR* recipients, BINSTR* content, int cipher, BINSTR* out)
{
    put(envelope(state, option, certificatesOf(state.library(), in(recipients)), in(content), cipher), out);
}

inline void cmsProcessEnvelopedData(Context& state, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* out)
{
    const Message given{Input(in(message))};
    Secret content;
    openEnvelope(
        state.library(), given.require(oid::envelopedData).layout().skeleton(), {state.library(), in(certificate)},
        openerWith(in(key)), [&](const Sink& take) { given.content(take); }, into(content));
    put(content, out);
}

inline void cmsGetEnvDataRecipCnt(Context& state, BINSTR* message, int* count)
{
    state.messages.recipients = recipientsOf(state.library(), Message(Input(in(message))));
    putValue(static_cast<int>(state.messages.recipients.size()), count);
}

/** A recipient of the message that was counted last; each text has room for @p capacity bytes. */
inline void cmsGetEnvDataRecipInfo(
    Context& state, int index, int capacity, char* issuer, char* serialNumber, char* algorithm)
{
    const auto& recipients = state.messages.recipients;
    require(index >= 0 && static_cast<std::size_t>(index) < recipients.size(), SIGIL_TK_CMS_NOBODY);
    require(issuer && serialNumber && algorithm, SIGIL_TK_ARGUMENT);
    const Recipient& recipient = recipients[static_cast<std::size_t>(index)];
    require(std::max(recipient.issuer.size(), recipient.serialNumber.size()) <
            static_cast<std::size_t>(std::max(capacity, 0)),
        SIGIL_TK_BUFFER_TOO_SMALL);
    putText(recipient.issuer, capacity, issuer);
    putText(recipient.serialNumber, capacity, serialNumber);
    putText(recipient.algorithm, capacity, algorithm);
}

/** @param option 0
 *  @param key the bytes of a key for the cipher; empty: the session key, with its cipher when @p cipher is 0 */
inline void cmsEncryptData(Context& state, int option, BINSTR* key, BINSTR* content, int cipher, BINSTR* out)
{
    require(option == 0, SIGIL_TK_OPTION, "option " + std::to_string(option));
    const View given = inOptional(key);
    const bool fromSession = given.empty();
    const int algorithm = fromSession && cipher == 0 ? state.sessionCipher.algorithm() : cipher;
    const View bytes = fromSession ? View(state.sessionCipher.key()) : given;
    put(encryptAll(startEncryption(state.library(), algorithm, bytes), in(content)), out);
}

inline void cmsMakeEncryptedData(Context& state, BINSTR* content, BINSTR* out)
{
    cmsEncryptData(state, 0, nullptr, content, 0, out);
}

inline void decryptWith(const Context& state, View key, BINSTR* message, BINSTR* out)
{
    Secret content;
    openEncrypted(state.library(), Message(Input(in(message))), key, into(content));
    put(content, out);
}

inline void cmsProcessEncryptedData(Context& state, BINSTR* key, BINSTR* message, BINSTR* out)
{
    decryptWith(state, in(key), message, out);
}

/** @param key not read */
inline void cmsProcessEncryptedDataOfSession(Context& state, BINSTR* /*key*/, BINSTR* message, BINSTR* out)
{
    decryptWith(state, state.sessionCipher.key(), message, out);
}

} // namespace toolkit::calls
