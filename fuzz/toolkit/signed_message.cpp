// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a signed message: verified, read into, with the first time-stamp token put back, and as the answer to a challenge.

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/messages/challenge.h"
#include "toolkit/engine/messages/sealed.h"
#include "toolkit/engine/messages/signed.h"
#include "toolkit/engine/messages/time_stamps.h"

FUZZ_TARGET(toolkit_signed_message, input)
{
    const toolkit::Bytes bytes = fuzz::der(input);
    const toolkit::Input content(toolkit::view("content"));
    const toolkit::Bytes challenge = toolkit::der::element(toolkit::der::Sequence,
        {toolkit::der::element(toolkit::der::Integer, {toolkit::Bytes{1}}),
            toolkit::der::element(toolkit::der::OctetString, {toolkit::Bytes(32, 0x11)})});
    fuzz::attempt([&] { toolkit::verifyAnswer(fuzz::library(), bytes, bytes); });
    fuzz::attempt([&] { toolkit::verifyAnswer(fuzz::library(), challenge, bytes); });
    fuzz::attempt([&] {
        const toolkit::Message message{toolkit::Input(bytes)};
        fuzz::attempt([&] { toolkit::verifyMessage(fuzz::library(), message, nullptr, {}); });
        fuzz::attempt([&] { toolkit::withTimeStamp(fuzz::library(), message, 0, bytes); });
        const auto verified = toolkit::verifyMessage(fuzz::library(), message, &content, {});
        toolkit::withTimeStamp(fuzz::library(), message, 0, verified.signers.front().timeStampToken);
    });
}
