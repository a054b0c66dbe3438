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

void checkBlocks(const EVP_CIPHER_CTX* cipher, View data)
{
    const auto block = static_cast<std::size_t>(EVP_CIPHER_CTX_get_block_size(cipher));
    require(!data.empty() && data.size() % block == 0, SIGIL_TK_KEY_MALFORMED, "length of the encrypted data");
}

} // namespace

Secret decryptKeyFile(const Library& library, View file, std::string_view password)
{
    const EncryptedKey key = parseEncryptedKey(file);
    const CipherContextHandle cipher = startPbe(library, key.algorithm, password, Direction::Decrypt);
    checkBlocks(cipher.get(), key.data);
    Secret plain;
    require(runCipher(cipher.get(), key.data, plain), SIGIL_TK_KEY_WRONG_PASSWORD);
    // A wrong password gives valid padding about once in 256 times; the content is noise then.
    const auto keyInfo = der::first(plain);
    require(keyInfo && isPrivateKeyInfo(keyInfo->whole), SIGIL_TK_KEY_WRONG_PASSWORD);
    return toSecret(keyInfo->whole);
}

Bytes encryptKeyFile(const Library& library, int algorithm, View keyInfo, std::string_view password)
{
    const auto first = der::first(keyInfo);
    require(first && isPrivateKeyInfo(first->whole), SIGIL_TK_KEY_UNUSABLE, "PrivateKeyInfo");
    const Bytes identifier = makePbeAlgorithm(library, algorithm);
    const CipherContextHandle cipher =
        startPbe(library, parsePbeAlgorithm(identifier), password, Direction::Encrypt);
    Secret encrypted;
    require(runCipher(cipher.get(), first->whole, encrypted), SIGIL_TK_INTERNAL, "encryption");
    return der::element(der::Sequence, {identifier, der::element(der::OctetString, {encrypted})});
}

Bytes changePassword(const Library& library, View file, std::string_view oldPassword, std::string_view newPassword)
{
    const Secret keyInfo = decryptKeyFile(library, file, oldPassword);
    const int algorithm = pbeCode(library, parseEncryptedKey(file).algorithm);
    return encryptKeyFile(library, algorithm, keyInfo, newPassword);
}

} // namespace toolkit
