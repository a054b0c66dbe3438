// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Messages that are signed and enveloped, messages of any kind, and time stamps inside messages: bodies of the functions
 *  that both faces export.
 */
#pragma once

#include "toolkit/calls/messages.h"
#include "toolkit/engine/messages/sealed.h"
#include "toolkit/engine/messages/time_stamps.h"

namespace toolkit::calls {

/** @param option a SigilToolkitEnvelopeOption; the signature follows the options of the context */
inline void cmsMakeSignedAndEnvData(Context& state, int option, BINSTR* certificate, BINSTR* key, BINSTR* recipient,
    BINSTR* content, int cipher, BINSTR* out)
{
    const Certificate signer(state.library(), in(certificate));
    const SigningRequest request = signingRequest(state, signer, 0, "", SIGIL_TK_MESSAGE_DETACHED);
    const Secret signedMessage = withContent(signBytes(state, request, in(key), in(content)), in(content));
    std::vector<Certificate> recipients;
    recipients.emplace_back(state.library(), in(recipient));
    put(envelope(state, option, recipients, signedMessage, cipher), out);
}

/** Verifies the signed message that was opened, and hands out its content and its first signer.
 *  @param option a SigilToolkitMessageCheck
 *  @param signer may be null */
inline void putOpened(Context& state, int option, View opened, BINSTR* content, BINSTR* signer)
{
    const Secret bytes = verifyAndKeep(state, option, signedWithin(opened), nullptr);
    if (signer)
        put({{bytes, content}, {signerAt(state, 0).certificate, signer}});
    else
        put(bytes, content);
}

/** @param option a SigilToolkitMessageCheck
 *  @param signer may be null */
inline void cmsProcessSignedAndEnvData(
    Context& state, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* content, BINSTR* signer)
{
    state.messages.verified = {};
    const Message given{Input(in(message))};
    const Secret opened =
        openMessage(state.library(), given, {state.library(), in(certificate)}, openerWith(in(key)));
    putOpened(state, option, opened, content, signer);
}

/** As CMS_ProcessSignedData; the first signer's certificate comes with the content. */
inline void uniVerifySignData(Context& state, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    cmsProcessSignedDataOfOne(state, message, data, certificate, nullptr);
}

inline void uniDecryptEnvData(Context& state, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* out)
{
    const Message given{Input(in(message))};
    put(openMessage(state.library(), given, {state.library(), in(certificate)}, openerWith(in(key))), out);
}

inline void cmsGetTimeStampToken(Context& state, int index, BINSTR* token)
{
    const Bytes& found = signerAt(state, index).timeStampToken;
    require(!found.empty(), SIGIL_TK_CMS_ATTRIBUTE, "time-stamp token");
    put(found, token);
}

inline void cmsSetTimeStampToken(Context& state, BINSTR* message, int index, BINSTR* token, BINSTR* out)
{
    const Message old{Input(in(message))};
    const MessageLayout layout = withTimeStamp(state.library(), old, index, in(token));
    putSigned(layout, old.hasContent() ? contentOf(old) : Secret(), !old.hasContent(), out);
}

} // namespace toolkit::calls
