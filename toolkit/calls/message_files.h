// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Messages in files of any size: bodies of the functions that both faces export. What a function writes appears when all
 *  went well, and whole.
 */
#pragma once

#include "toolkit/calls/messages.h"
#include "toolkit/engine/base/digest.h"

namespace toolkit::calls {

/** Writes a message around a content that comes in pieces. */
template <class Content>
void writeMessage(FileWriter& file, const MessageLayout& layout, std::uint64_t size, Content content)
{
    file.write(layout.prefix(size));
    content([&](View piece) { file.write(piece); });
    file.write(layout.after);
}

/** Copies the signed content into its message; it must still be what was hashed before. */
inline void copyContent(const Context& state, const SigningRequest& request, const Input& content,
    const Bytes& signedHash, const Sink& take)
{
    Hasher hasher(state.library(), request.scheme.hash);
    content.pieces([&](View piece) {
        hasher.update(piece);
        take(piece);
    });
    require(hasher.finish() == signedHash, SIGIL_TK_FILE_READ, "the file changed while it was signed");
}

/** @param attached whether the content goes into the message, whatever the context's options say for messages in memory */
inline void signFile(const Context& state, BINSTR* certificate, BINSTR* key, char* contentFile, char* time,
    char* messageFile, bool attached)
{
    const Certificate signer(state.library(), in(certificate));
    const SigningRequest request = signingRequest(state, signer, 0, time, attached ? SIGIL_TK_MESSAGE_DETACHED : 0);
    const std::string path = inPath(state, contentFile);
    if (!attached) // what was signed must outlive its signature
        requireApart(inPath(state, messageFile), path);
    const Input content = Input::file(path);
    const Bytes digest = digestOf(state.library(), request.scheme.hash, content);
    const MessageLayout layout =
        signContent(state.library(), request, digestSigner(state.library(), request, in(key)), digest);
    FileWriter file(inPath(state, messageFile));
    if (attached)
        writeMessage(file, layout, content.size(),
            [&](const Sink& take) { copyContent(state, request, content, digest, take); });
    else
        file.write(layout.skeleton());
    file.commit();
}

inline void cmsMakeSignedDataFile(
    Context& state, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    signFile(state, certificate, key, contentFile, time, messageFile, false);
}

inline void cmsMakeSignedDataWithContentFile(
    Context& state, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    signFile(state, certificate, key, contentFile, time, messageFile, true);
}

/** The message decides: a detached one is verified with the content file, the content of another is written there, where
 *  nothing may be yet. */
inline void cmsProcessSignedDataFile(
    Context& state, char* contentFile, char* messageFile, BINSTR* certificate, char* time)
{
    state.messages.verified = {};
    const std::string path = inPath(state, contentFile);
    const Message message(Input::file(inPath(state, messageFile)));
    if (message.require(oid::signedData).hasContent()) {
        FileWriter file(path);
        state.messages.verified =
            verifyMessage(state.library(), message, nullptr, [&](View piece) { file.write(piece); });
        file.commitNew();
    } else {
        const Input content = Input::file(path);
        state.messages.verified = verifyMessage(state.library(), message, &content, {});
    }
    putSigner(signerAt(state, 0), certificate, time);
}

/** Encrypts a file piece by piece. */
inline void encryptPieces(Encryption& encryption, const Input& content, const Sink& take)
{
    content.pieces([&](View piece) { encryption.cipher.update(piece, take); });
    encryption.cipher.finish(take);
}

inline Encryption envelopeFor(const Context& state, BINSTR* recipient, int cipher)
{
    std::vector<Certificate> recipients;
    recipients.emplace_back(state.library(), in(recipient));
    return startEnvelope(state.library(), {recipients, cipher, encryptionScheme(state)});
}

/** The ordinary message. */
inline void cmsMakeEnvelopedDataWithContentFile(
    Context& state, BINSTR* recipient, char* contentFile, int cipher, char* messageFile)
{
    Encryption encryption = envelopeFor(state, recipient, cipher);
    const Input content = Input::file(inPath(state, contentFile));
    FileWriter file(inPath(state, messageFile));
    writeMessage(file, encryption.layout, encryption.sizeOf(content.size()),
        [&](const Sink& take) { encryptPieces(encryption, content, take); });
    file.commit();
}

/** The message without its encrypted content, which goes into a file of its own as it is. */
inline void cmsMakeEnvelopedDataFile(
    Context& state, BINSTR* recipient, char* contentFile, int cipher, char* messageFile, char* cipherFile)
{
    requireApart(inPath(state, messageFile), inPath(state, cipherFile));
    Encryption encryption = envelopeFor(state, recipient, cipher);
    FileWriter message(inPath(state, messageFile));
    FileWriter ciphertext(inPath(state, cipherFile));
    encryptPieces(
        encryption, Input::file(inPath(state, contentFile)), [&](View piece) { ciphertext.write(piece); });
    message.write(encryption.layout.skeleton());
    ciphertext.commit();
    message.commit();
}

/** Decrypts into a file that is not there yet. @param ciphertext hands out the encrypted content */
template <class Ciphertext>
void openInto(const Context& state, BINSTR* certificate, BINSTR* key, const Message& message,
    const std::string& contentFile, Ciphertext ciphertext)
{
    FileWriter file(contentFile);
    openEnvelope(state.library(), message.require(oid::envelopedData).layout().skeleton(),
        {state.library(), in(certificate)}, openerWith(in(key)), ciphertext,
        [&](View piece) { file.write(piece); });
    file.commitNew();
}

inline void cmsProcessEnvelopedDataWithContentFile(
    Context& state, BINSTR* certificate, BINSTR* key, char* messageFile, char* contentFile)
{
    const Message message(Input::file(inPath(state, messageFile)));
    openInto(state, certificate, key, message, inPath(state, contentFile),
        [&](const Sink& take) { message.content(take); });
}

/** @param cipherFile not read when the message has its encrypted content in it */
inline void cmsProcessEnvelopedDataFile(
    Context& state, BINSTR* certificate, BINSTR* key, char* messageFile, char* cipherFile, char* contentFile)
{
    const Message message(Input::file(inPath(state, messageFile)));
    const std::string cipherPath = inPath(state, cipherFile);
    openInto(state, certificate, key, message, inPath(state, contentFile), [&](const Sink& take) {
        if (message.hasContent())
            message.content(take);
        else
            Input::file(cipherPath).pieces(take);
    });
}

} // namespace toolkit::calls
