// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as an enveloped message whose key a token is to open: what is found in it lies inside it.

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/tokens/token_envelope.h"

using namespace toolkit;

namespace {

void requireInside(View part, View whole)
{
    if (!part.empty() && (part.data() < whole.data() || part.data() + part.size() > whole.data() + whole.size()))
        std::abort();
}

} // namespace

FUZZ_TARGET(toolkit_recipient_key, input)
{
    const Bytes message = fuzz::der(input);
    for (const RecipientPlace& place : {RecipientPlace{0, 0}, RecipientPlace{0, 1}, RecipientPlace{1, 0}})
        fuzz::attempt([&] {
            const RecipientKey found = recipientKeyIn(message, place);
            for (const View part :
                {found.algorithm, found.encryptedKey, found.originator, found.userKeying, found.content})
                requireInside(part, message);
        });
}
