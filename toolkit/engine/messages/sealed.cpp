// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/sealed.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/messages/cms_parts.h"

namespace toolkit {
namespace {

constexpr unsigned char version0[]{der::Integer, 1, 0};
constexpr unsigned char version1[]{der::Integer, 1, 1};

Bytes joined(View left, View right)
{
    Bytes bytes = toBytes(left);
    bytes.insert(bytes.end(), right.begin(), right.end());
    return bytes;
}

/** The PKCS#7 type as the two messages that it consists of. */
struct Halves {
    MessageLayout enveloped;
    MessageLayout signedPart;
};

Halves halvesOf(const MessageLayout& layout)
{
    der::Reader fields(layout.before);
    const bool versioned = fields.take(der::Integer).has_value();
    const auto recipients = fields.next();
    const auto hashes = fields.next();
    require(versioned && hashes && recipients->tag == der::Set && hashes->tag == der::Set && fields.atEnd(),
        SIGIL_TK_CMS_MALFORMED, "signed-and-enveloped");
    return {{oid::envelopedData, joined(version0, recipients->whole), layout.holder, {}, layout.holds},
        {oid::signedData, joined(version1, hashes->whole), der::oid(layout.holds.c_str()), layout.after,
            layout.holds}};
}

/** @p layout with every signature decrypted by @p open. */
template <class Open>
MessageLayout decryptSignatures(const Library& library, const MessageLayout& layout, Open open)
{
    const CmsHandle cms = parseCms(library, layout.skeleton());
    for (CMS_SignerInfo* signer : signersOf(cms.get())) {
        ASN1_OCTET_STRING* const signature = CMS_SignerInfo_get0_signature(signer);
        const Secret bare = open(toBytes(octets(signature)));
        require(ASN1_STRING_set(signature, bare.data(), static_cast<int>(bare.size())) == 1, SIGIL_TK_NO_MEMORY);
    }
    return layoutOf(encodeCms(cms.get()));
}

bool verifies(const Library& library, View message)
{
    try {
        verifyMessage(library, Message(Input(message)), nullptr, {});
        return true;
    } catch (const Error& error) {
        if (error.code() != SIGIL_TK_SIGNATURE)
            throw;
        return false;
    }
}

Secret openPkcs7(
    const Library& library, const Message& message, const Certificate& certificate, const EnvelopeOpener& opener)
{
    const Halves halves = halvesOf(message.layout());
    const Bytes skeleton = halves.enveloped.skeleton();
    Secret content;
    openEnvelope(
        library, skeleton, certificate, opener, [&](const Sink& take) { message.content(take); },
        [&](View piece) { content.insert(content.end(), piece.begin(), piece.end()); });
    Secret bare = withContent(halves.signedPart, content);
    if (verifies(library, bare))
        return bare;
    const MessageLayout decrypted = decryptSignatures(library, halves.signedPart, [&](const Bytes& signature) {
        Secret out;
        openEnvelope(
            library, skeleton, certificate, opener, [&](const Sink& take) { take(signature); },
            [&](View piece) { out.insert(out.end(), piece.begin(), piece.end()); });
        return out;
    });
    return withContent(decrypted, content);
}

/** Under the type id-signedData the content is a SignedData, but some programs write a whole message. */
Secret asMessage(Secret content)
{
    const auto element = der::first(content);
    const auto field = element ? der::first(element->content) : std::nullopt;
    if (!field || field->tag != der::Integer)
        return content;
    const auto wrapped = der::element<Secret>(der::Explicit0, {element->whole});
    return der::element<Secret>(der::Sequence, {der::oid(oid::signedData), wrapped});
}

} // namespace

Secret withContent(const MessageLayout& layout, View content)
{
    const Bytes prefix = layout.prefix(content.size());
    Secret message;
    message.reserve(prefix.size() + content.size() + layout.after.size());
    for (const View part : {View(prefix), content, View(layout.after)})
        message.insert(message.end(), part.begin(), part.end());
    return message;
}

Secret verifiableForm(View signedMessage, int malformed)
{
    try {
        const Message message{Input(signedMessage)};
        Secret content;
        message.require(oid::signedData).content([&](View piece) {
            content.insert(content.end(), piece.begin(), piece.end());
        });
        return withContent(message.layout(), content);
    } catch (const Error& error) {
        requireMemory(error);
        fail(malformed, error.what());
    }
}

Secret openMessage(
    const Library& library, const Message& message, const Certificate& certificate, const EnvelopeOpener& opener)
{
    if (message.layout().type == oid::signedAndEnvelopedData)
        return openPkcs7(library, message, certificate, opener);
    Secret content;
    openEnvelope(
        library, message.require(oid::envelopedData).layout().skeleton(), certificate, opener,
        [&](const Sink& take) { message.content(take); },
        [&](View piece) { content.insert(content.end(), piece.begin(), piece.end()); });
    return message.layout().holds == oid::signedData ? asMessage(std::move(content)) : content;
}

Message signedWithin(View opened)
{
    try {
        Message message{Input(opened)};
        message.require(oid::signedData);
        return message;
    } catch (const Error& error) {
        fail(SIGIL_TK_CMS_TYPE, error.what());
    }
}

} // namespace toolkit
