// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a private key that is taken apart by its numbers: what is put together from them is the same key.

#include "toolkit/engine/keys/key_numbers.h"
#include "fuzz/toolkit/input.h"

FUZZ_TARGET(toolkit_key_numbers, input)
{
    using namespace toolkit;
    const Bytes bytes = fuzz::der(input);
    rsaNumbers(bytes);
    ecPublicKey(bytes);
    fuzz::attempt([&] {
        const KeyHandle key = keyOfNumbers(fuzz::library(), bytes);
        const auto encoded = key ? encodeNumbers(key.get()) : std::nullopt;
        if (!encoded)
            return;
        const KeyHandle again = keyOfNumbers(fuzz::library(), *encoded);
        require(again && EVP_PKEY_eq(again.get(), key.get()) == 1, "a key that is written is read as the same key");
    });
}
