// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/challenge.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/messages/sealed.h"

#include <algorithm>

namespace toolkit {
namespace {

constexpr std::size_t randomLength = 32;
constexpr unsigned char version[]{1};

Bytes randomElement(const Library& library)
{
    return der::element(der::OctetString, {randomBytes(library, static_cast<int>(randomLength))});
}

bool isRandom(der::Reader& fields)
{
    const auto random = fields.take(der::OctetString);
    return random && random->size() == randomLength && fields.atEnd();
}

bool isChallenge(View bytes)
{
    der::Reader whole(bytes);
    const auto content = whole.take(der::Sequence);
    if (!content || !whole.atEnd())
        return false;
    der::Reader fields(*content);
    const auto number = fields.take(der::Integer);
    return number && std::equal(number->begin(), number->end(), std::begin(version), std::end(version)) &&
        isRandom(fields);
}

/** The challenge in what a response signs. */
Bytes challengeIn(View content)
{
    der::Reader whole(content);
    const auto fieldBytes = whole.take(der::Sequence);
    require(fieldBytes && whole.atEnd(), SIGIL_TK_CMS_MALFORMED, "response");
    der::Reader fields(*fieldBytes);
    const auto challenge = fields.next();
    require(challenge && isChallenge(challenge->whole) && isRandom(fields), SIGIL_TK_CMS_MALFORMED, "response");
    return toBytes(challenge->whole);
}

} // namespace

Bytes makeChallenge(const Library& library)
{
    return der::element(der::Sequence, {der::element(der::Integer, {version}), randomElement(library)});
}

Secret answerChallenge(
    const Library& library, const SigningRequest& request, const DigestSigner& signer, View challenge)
{
    require(isChallenge(challenge), SIGIL_TK_ENCODING, "challenge");
    const Bytes content = der::element(der::Sequence, {challenge, randomElement(library)});
    const Bytes digest = digestOf(library, request.scheme.hash, Input(content));
    return withContent(signContent(library, request, signer, digest), content);
}

VerifiedMessage verifyAnswer(const Library& library, View challenge, View response)
{
    require(isChallenge(challenge), SIGIL_TK_ENCODING, "challenge");
    Bytes content;
    VerifiedMessage verified = verifyMessage(library, Message(Input(response)), nullptr,
        [&](View piece) { content.insert(content.end(), piece.begin(), piece.end()); });
    require(challengeIn(content) == toBytes(challenge), SIGIL_TK_SIGNATURE, "the answer to another challenge");
    require(verified.signers.size() == 1, SIGIL_TK_CMS_NOBODY, "one signer answers");
    return verified;
}

} // namespace toolkit
