// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/key_file.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/pbe.h"
#include "toolkit/engine/keys/private_key.h"

namespace toolkit {
namespace {

/** An EncryptedPrivateKeyInfo taken apart. */
struct EncryptedKey {
    PbeAlgorithm algorithm;
    View data;
};

EncryptedKey parseEncryptedKey(View file)
{
    const auto outer = der::Reader(file).take(der::Sequence);
    require(outer.has_value(), SIGIL_TK_KEY_MALFORMED, "EncryptedPrivateKeyInfo");
    der::Reader fields(*outer);
    const auto algorithm = fields.next();
    const auto data = fields.take(der::OctetString);
    require(algorithm && data, SIGIL_TK_KEY_MALFORMED, "EncryptedPrivateKeyInfo");
    return {parsePbeAlgorithm(algorithm->whole), *data};
}

} // namespace

Secret decryptKeyFile(const Library& library, View file, std::string_view password)
{
    WorkBudget budget;
    return decryptKeyFile(library, file, password, budget);
}

Secret decryptKeyFile(const Library& library, View file, std::string_view password, WorkBudget& budget)
{
    const EncryptedKey key = parseEncryptedKey(file);
    const auto holdsKey = [](View plain) {
        const auto first = der::first(plain);
        return first && isPrivateKeyInfo(first->whole);
    };
    const Secret plain = pbeDecrypt(library, key.algorithm, key.data, password, budget, holdsKey);
    return toSecret(der::first(plain)->whole);
}

Bytes encryptKeyFile(const Library& library, int algorithm, View keyInfo, std::string_view password)
{
    const auto first = der::first(keyInfo);
    require(first && isPrivateKeyInfo(first->whole), SIGIL_TK_KEY_UNUSABLE, "PrivateKeyInfo");
    const Bytes identifier = makePbeAlgorithm(library, algorithm);
    const Secret encrypted = pbeEncrypt(library, parsePbeAlgorithm(identifier), first->whole, password);
    return der::element(der::Sequence, {identifier, der::element(der::OctetString, {encrypted})});
}

Bytes changePassword(const Library& library, View file, std::string_view oldPassword, std::string_view newPassword)
{
    const Secret keyInfo = decryptKeyFile(library, file, oldPassword);
    const int algorithm = pbeCode(library, parseEncryptedKey(file).algorithm);
    return encryptKeyFile(library, algorithm, keyInfo, newPassword);
}

} // namespace toolkit
