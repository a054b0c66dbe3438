// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a key file, and what opens as the key inside.

#include "toolkit/engine/keys/key_file.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/keys/private_key.h"

FUZZ_TARGET(toolkit_key_file, input)
{
    const toolkit::Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] { toolkit::identityRandom(toolkit::decryptKeyFile(fuzz::library(), bytes, "password")); });
    fuzz::attempt([&] { toolkit::identityRandom(bytes); });
    fuzz::attempt([&] { toolkit::loadPrivateKey(fuzz::library(), bytes); });
    fuzz::attempt([&] { toolkit::identityRandom(toolkit::withIdentityRandom(bytes, toolkit::view("random"))); });
}
