// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Private key files against worked values, and what must not be taken for a key.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/keys/derivation.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/pbe.h"
#include "toolkit/engine/keys/private_key.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

using namespace toolkit;
using toolkit_test::ByteString;
using toolkit_test::fromHex;
using toolkit_test::randomHex;
using toolkit_test::sha256Hex;
using toolkit_test::stringOf;
using toolkit_test::text;
using toolkit_test::toHex;
using toolkit_test::ToolkitLibrary;

namespace {

constexpr const char* password = "Abcd1234!@";

// A PrivateKeyInfo with an RSA-1024 test key and the random value above.
constexpr const char* keyInfoBase64 =
    "MIICnwIBADANBgkqhkiG9w0BAQEFAASCAmAwggJcAgEAAoGBAPWqVtl2lQIKZAXixhANPLvb0uFfLUlr2Ug3aYweURAdNxnrTGI+"
    "b0WHsL64No3Kxx+bofqr/ZiLF27XNlOsaDOA9zcz2he/aeNT/jfYCao86JgplVsXSmOokO1xvMMmwW7m41eTI+WKSl/gW+iI9pDe"
    "JRRdkAO1qYstvuj0Mj+rAgMBAAECgYB03AWaRn1VTioMXraG1jUoy8XBrWu2fFYMs0dC/vzipHMcokBgj4CQ254o6yoQQwB7uaXQ"
    "v1XP5YJNGJTgMqgRwUmZQ2cdQU84FRnk3TUqLGpE1rBSpiKj7ldNErfiNd1fFDFE1Pj6w4qcD+y8kMahNHKU950EORg2GE7y58TS"
    "sQJBAP/ZQ8N2QVpYm5BwcGzM2/0K28CSL7/aSvn0rvBLZZc3vDBC3EEUj9vblofaAAVYQHqeQaAzDbw/Mp3nI9zDSikCQQD1z4hm"
    "PtSCxgiBp7IGzMUruB22CXC11lkaYxhxt7+ktgqyfD5F0VrZuMkUHSFRirRh0gOwJo9C5f8MzNBPoN2zAkEA3Q+q305kNV3uPCUK"
    "3tc7FS62pXMqUsiYk9R4+yMKSlhcAA8lJA5SJpNbQ1J3Rib0v33SEktKiObKI2k9sVgD0QJAKiKy/OPURb5wgtkeGTBMtBvRa/ze"
    "Ry1BBNbrv8KBpVhXKRVHD2y9qAiW303HAlVGamY3n6Bcelk2iRkqtBudJQJAdOEavGt0SymA0/6BjXNhuKUWRyvtNd5MIltN6jNc"
    "sHh1nTLxLcUyA1GcMRvPIoUkasC9RM4T6T5aiJnySbBAJaAnMCUGCiqDGoyaRAoBAQMxFwMVAKChoqOkpaanqKmqq6ytrq+wsbKz";

struct Scheme {
    const char* name;
    const char* algorithm;  // AlgorithmIdentifier with salt 0102030405060708 and 2048 rounds
    const char* smallFile;  // last bytes: the small message under the password
    const char* fileSha256; // of the file that holds the key above
    int code;               // writes it
};

const Scheme schemes[]{
    {"SeedCbcWithSha1", "301a06082a831a8c9a44010f300e0408010203040506070802020800",
        "d9dec6ab9e891378c213c14add22ca17e1954aad397de02aac43b4d66d19c6bc",
        "b97725266c15ce8410deb55de4b06085023f9b76aa4fbcb5c8077c2f23c3614b", SIGIL_TK_KEY_SEED},
    {"SeedFixedVector", "301a06082a831a8c9a440104300e0408010203040506070802020800",
        "c110599df5b9132e5fbd786b5b1061aca25560f010b10a3fa681c62302ac1bca",
        "1cdaf191d179a47297f28152de7cfdfca72d2be3c49c8e67eb6ecb33e71440e5", SIGIL_TK_KEY_SEED_FIXED_IV},
    {"Pbes2Seed",
        "304806092a864886f70d01050d303b301b06092a864886f70d01050c300e0408010203040506070802020800301c06082a831a8c9a"
        "44"
        "0104041000112233445566778899aabbccddeeff",
        "2a5499d992ca98b7ba5ccbb8f9d0549273453dd0def849ce31877ec2aae177fa",
        "6d346d6ec1a6360c1312f50a78efe7a76b3a0e88017d797d28e083c17737c4ee", SIGIL_TK_KEY_PBES2_SEED},
    {"Pbes2Aria256",
        "305706092a864886f70d01050d304a302906092a864886f70d01050c301c0408010203040506070802020800300c06082a864886f7"
        "0d"
        "02090500301d06092a831a8c9a6e01010c041000112233445566778899aabbccddeeff",
        "59913488176daac902c70e904c24ff3cb5cae5e946c75820e39700f4120993c3",
        "a79f2d528ddf62a8b39f49b59f29ebefd97a1b560fe94c44687dfc9d30a0f26b", SIGIL_TK_KEY_PBES2_ARIA256},
    {"Pbes2TripleDes",
        "304006092a864886f70d01050d3033301b06092a864886f70d01050c300e0408010203040506070802020800301406082a864886f7"
        "0d"
        "030704080011223344556677",
        "3322bd403bd0464297e9bf7a83c7cd630e164a5657811d4cea52f1d75b5ce1e2",
        "6088218750d4c9b01efdd54d175a6279a68cc303112ba7dc022019bead1b2a6a", SIGIL_TK_KEY_PBES2_3DES},
};

Bytes bytesOf(const std::string& text) { return toBytes(view(text)); }
class KeyFile : public testing::Test {
protected:
    Library library;
    Secret keyInfo = fromBase64(view(keyInfoBase64));

    /** The file that holds @p plain under an algorithm that is given, vector and all. */
    Bytes fileWith(const std::string& algorithmHex, View plain, std::string_view secret = password)
    {
        const Bytes algorithm = bytesOf(fromHex(algorithmHex));
        const Secret encrypted = pbeEncrypt(library, parsePbeAlgorithm(algorithm), plain, secret);
        return der::element(der::Sequence, {algorithm, der::element(der::OctetString, {encrypted})});
    }
    int codeOf(View file, std::string_view secret = password)
    {
        try {
            decryptKeyFile(library, file, secret);
            return 0;
        } catch (const Error& error) {
            return error.code();
        }
    }
};

class KeyScheme : public KeyFile, public testing::WithParamInterface<Scheme> { };

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Variants, KeyScheme, testing::ValuesIn(schemes), [](const auto& variant) { return variant.param.name; });

TEST_P(KeyScheme, EncryptsTheSmallMessageToTheWorkedValue)
{
    const Bytes file = fileWith(GetParam().algorithm, view("Korean PKI key wrap test"));
    EXPECT_THAT(toHex(stringOf(file)), testing::EndsWith(GetParam().smallFile));
}

TEST_P(KeyScheme, MakesAndOpensTheWorkedFile)
{
    const Bytes file = fileWith(GetParam().algorithm, keyInfo);
    EXPECT_EQ(sha256Hex(stringOf(file)), GetParam().fileSha256);
    EXPECT_EQ(decryptKeyFile(library, file, password), keyInfo);
    EXPECT_EQ(codeOf(file, "wrong"), SIGIL_TK_KEY_WRONG_PASSWORD);
    EXPECT_EQ(codeOf(file, ""), SIGIL_TK_KEY_WRONG_PASSWORD);
}

TEST_P(KeyScheme, WhatIsWrittenIsReadAndItsAlgorithmKeptByAPasswordChange)
{
    const Bytes file = encryptKeyFile(library, GetParam().code, keyInfo, password);
    EXPECT_EQ(decryptKeyFile(library, file, password), keyInfo);
    EXPECT_NE(encryptKeyFile(library, GetParam().code, keyInfo, password), file) << "the salt is random";
    const Bytes changed = changePassword(library, file, password, "new");
    EXPECT_EQ(decryptKeyFile(library, changed, "new"), keyInfo);
    EXPECT_EQ(codeOf(changed), SIGIL_TK_KEY_WRONG_PASSWORD);
    const auto algorithmOf = [](const Bytes& whole) {
        return parsePbeAlgorithm(der::first(der::first(whole)->content)->whole).oid;
    };
    EXPECT_EQ(algorithmOf(changed), algorithmOf(file));
}

TEST_P(KeyScheme, EveryTruncationIsDamageAndNoCrash)
{
    const Bytes file = fileWith(GetParam().algorithm, view("Korean PKI key wrap test"));
    for (std::size_t length = 0; length < file.size(); ++length)
        EXPECT_EQ(codeOf(View(file).first(length)), SIGIL_TK_KEY_MALFORMED) << length;
}

TEST_F(KeyFile, WrongPasswordsWithValidPaddingAreWrongPasswordsToo)
{
    const Bytes a = fileWith(schemes[0].algorithm, keyInfo);
    EXPECT_EQ(codeOf(a, "wrong1"), SIGIL_TK_KEY_WRONG_PASSWORD);
    EXPECT_EQ(codeOf(a, "wrong592"), SIGIL_TK_KEY_WRONG_PASSWORD);
    const Bytes c = fileWith(schemes[2].algorithm, keyInfo);
    EXPECT_EQ(codeOf(c, "wrong8"), SIGIL_TK_KEY_WRONG_PASSWORD);
    EXPECT_EQ(codeOf(c, "wrong7"), SIGIL_TK_KEY_WRONG_PASSWORD);
}

TEST_F(KeyFile, BytesAfterTheFirstElementAreIgnored)
{
    Bytes file = fileWith(schemes[0].algorithm, keyInfo);
    file.insert(file.end(), 46, 0x5A);
    EXPECT_EQ(decryptKeyFile(library, file, password), keyInfo);
}

TEST_F(KeyFile, AnExplicitKeyLengthMustMatch)
{
    const std::string with16 =
        "304b06092a864886f70d01050d303e301e06092a864886f70d01050c301104080102030405060708020208"
        "00020110301c06082a831a8c9a440104041000112233445566778899aabbccddeeff";
    const Bytes file = fileWith(with16, keyInfo);
    EXPECT_EQ(decryptKeyFile(library, file, password), keyInfo);
    Bytes with24 = file;
    with24[der::first(file)->content.data() - file.data() + 45] = 24;
    ASSERT_NE(with24, file);
    EXPECT_EQ(codeOf(with24), SIGIL_TK_KEY_MALFORMED) << "an INTEGER of 24 bytes";
    with24 = file;
    with24[der::first(file)->content.data() - file.data() + 46] = 24;
    EXPECT_EQ(codeOf(with24), SIGIL_TK_KEY_MALFORMED) << "the number 24";
}

TEST_F(KeyFile, ParametersOutOfBoundsAreDamage)
{
    const auto withAlgorithm = [](const std::string& hex) {
        return der::element(der::Sequence, {bytesOf(fromHex(hex)), der::element(der::OctetString, {Bytes(16)})});
    };
    const char* const damaged[]{
        "301906082a831a8c9a44010f300d04080102030405060708020100",           // no rounds
        "301906082a831a8c9a44010f300d040801020304050607080201ff",           // negative
        "301c06082a831a8c9a44010f3010040801020304050607080204009896 81",    // 10,000,001
        "301206082a831a8c9a44010f30060400020208 00",                        // no salt
        "300a06082a831a8c9a44010f",                                         // no parameters
        "301d06092a864886f70d01050d3010300e06092a864886f70d01050c04010102", // PBKDF2 without its parameters
        "304706092a864886f70d01050d303a301b06092a864886f70d01050c300e0408010203040506070802020800301b06082a831a8c9a"
        "44"
        "0104040f00112233445566778899aabbccddee", // a vector of 15 bytes
    };
    for (std::string hex : damaged) {
        std::erase(hex, ' ');
        EXPECT_EQ(codeOf(withAlgorithm(hex)), SIGIL_TK_KEY_MALFORMED) << hex;
    }
}

TEST_F(KeyFile, UnknownAlgorithmsAreUnsupported)
{
    const auto withAlgorithm = [](const std::string& hex) {
        return der::element(der::Sequence, {bytesOf(fromHex(hex)), der::element(der::OctetString, {Bytes(16)})});
    };
    const char* const unknown[]{
        "301a06082a831a8c9a44010a300e0408010203040506070802020800", // HAS-160
        "301a06082a831a8c9a447f0f300e0408010203040506070802020800",
        // PBES2 with an unknown cipher, an unknown PRF, an unknown derivation
        "304806092a864886f70d01050d303b301b06092a864886f70d01050c300e0408010203040506070802020800301c06082a831a8c9a"
        "44"
        "017f041000112233445566778899aabbccddeeff",
        "305706092a864886f70d01050d304a302906092a864886f70d01050c301c0408010203040506070802020800300c06082a864886f7"
        "0d"
        "027f0500301d06092a831a8c9a6e01010c041000112233445566778899aabbccddeeff",
        "304806092a864886f70d01050d303b301b06092a864886f70d01057f300e0408010203040506070802020800301c06082a831a8c9a"
        "44"
        "0104041000112233445566778899aabbccddeeff",
    };
    for (const std::string hex : unknown)
        EXPECT_EQ(codeOf(withAlgorithm(hex)), SIGIL_TK_KEY_UNSUPPORTED) << hex;
}

TEST_F(KeyFile, Pkcs12EncryptionMatchesTheWorkedValue)
{
    const std::string algorithm = "301c060a2a864886f70d010c0103300e0408010203040506070802020800";
    EXPECT_THAT(toHex(stringOf(fileWith(algorithm, view("Korean PKI key wrap test")))),
        testing::EndsWith("5d29a3e3408ecac3ba0cb148d5238eb7c8e47f2b2d09de79c3849095aaa8ea1d"));
    EXPECT_EQ(decryptKeyFile(library, fileWith(algorithm, keyInfo), password), keyInfo);
}

TEST_F(KeyFile, AKoreanPasswordOfPkcs12IsTheSameInBothCharacterSets)
{
    const Bytes file = encryptKeyFile(library, SIGIL_TK_KEY_PKCS12_3DES, keyInfo, "비밀번호");
    EXPECT_EQ(decryptKeyFile(library, file, "\xBA\xF1\xB9\xD0\xB9\xF8\xC8\xA3"), keyInfo);
}

TEST_F(KeyFile, AnEmptyPasswordOfPkcs12IsReadInBothFormsAndWrittenAsAnEmptyText)
{
    const std::string algorithm = "301c060a2a864886f70d010c0103300e0408010203040506070802020800";
    const DigestHandle hash = library.digest("SHA1");
    const Bytes salt = bytesOf(fromHex("0102030405060708"));
    const auto encryptedUnder = [&](View form) {
        WorkBudget budget;
        const auto derive = [&](Pkcs12Purpose purpose, std::size_t length) {
            return pkcs12Derive(hash.get(), purpose, form, {salt, 2048}, length, budget);
        };
        const CipherContextHandle cipher(EVP_CIPHER_CTX_new());
        EVP_CipherInit_ex2(cipher.get(), library.cipher("DES-EDE3-CBC").get(),
            derive(Pkcs12Purpose::Key, 24).data(), derive(Pkcs12Purpose::Vector, 8).data(), 1, nullptr);
        Secret encrypted;
        EXPECT_TRUE(runCipher(cipher.get(), keyInfo, encrypted));
        return der::element(
            der::Sequence, {bytesOf(fromHex(algorithm)), der::element(der::OctetString, {encrypted})});
    };
    EXPECT_EQ(decryptKeyFile(library, encryptedUnder({}), ""), keyInfo) << "no password";
    const Bytes emptyText(2, 0);
    EXPECT_EQ(decryptKeyFile(library, encryptedUnder(emptyText), ""), keyInfo);
    EXPECT_EQ(fileWith(algorithm, keyInfo, ""), encryptedUnder(emptyText)) << "what is written";
    EXPECT_EQ(codeOf(encryptedUnder({}), "x"), SIGIL_TK_KEY_WRONG_PASSWORD);
}

TEST_F(KeyFile, BytesThatMayBeCp949AreTriedAsLatin1Too)
{
    const std::string algorithm = "301c060a2a864886f70d010c0103300e0408010203040506070802020800";
    const std::string bytes = "\xC4\xE9"; // a syllable in CP949, two letters in Latin-1, nothing in UTF-8
    EXPECT_EQ(decryptKeyFile(library, fileWith(algorithm, keyInfo, "Äé"), bytes), keyInfo);
    EXPECT_EQ(decryptKeyFile(library, fileWith(algorithm, keyInfo, "켜"), "\xC4\xD1"), keyInfo);
}

TEST_F(KeyFile, ScryptIsReadWithinBounds)
{
    const toolkit_test::Workshop workshop;
    workshop.write("key.der", stringOf(keyInfo));
    const auto fileOf = [&](const std::string& cost) {
        workshop.run("openssl pkcs8 -topk8 -inform DER -in key.der -outform DER -out s.key -passout pass:" +
            std::string(password) + " -v2 aes-256-cbc -scrypt " + cost);
        return bytesOf(workshop.read("s.key"));
    };
    const Bytes file = fileOf("");
    EXPECT_EQ(encodePrivateKey(loadPrivateKey(library, decryptKeyFile(library, file, password)).get()),
        encodePrivateKey(loadPrivateKey(library, keyInfo).get()));
    EXPECT_EQ(codeOf(file, "wrong"), SIGIL_TK_KEY_WRONG_PASSWORD);
    Bytes costly = file; // N = 0x4000 becomes 0x40000000
    const Bytes small = bytesOf(fromHex("02024000"));
    const auto at = std::search(costly.begin(), costly.end(), small.begin(), small.end());
    ASSERT_NE(at, costly.end());
    *(at + 2) = 0x7F;
    *(at + 3) = 0xFF;
    EXPECT_EQ(codeOf(costly), SIGIL_TK_KEY_MALFORMED) << "no power of two";
    EXPECT_THROW(scrypt(library, view("p"), view("salt"), {1UL << 20, 8, 1}, 16), Error) << "1 GiB";
    EXPECT_THROW(scrypt(library, view("p"), view("salt"), {1UL << 14, 8, 1000}, 16), Error) << "a minute";
}

TEST_F(KeyFile, GcmIsReadAsTheStandardAndAsBotanWritesIt)
{
    const Bytes salt = bytesOf(fromHex("0102030405060708"));
    const Bytes vector(12, 7);
    WorkBudget budget;
    const Secret key = pbkdf2(library, "SHA256", view(password), {salt, 2048}, 32, budget);
    const auto fileOf = [&](const Bytes& parameters, int tagLength) {
        const CipherContextHandle cipher(EVP_CIPHER_CTX_new());
        EVP_CipherInit_ex2(
            cipher.get(), library.cipher("AES-256-GCM").get(), key.data(), vector.data(), 1, nullptr);
        Secret encrypted;
        EXPECT_TRUE(runCipher(cipher.get(), keyInfo, encrypted));
        Bytes tag(static_cast<std::size_t>(tagLength));
        EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_AEAD_GET_TAG, tagLength, tag.data());
        encrypted.insert(encrypted.end(), tag.begin(), tag.end());
        const Bytes prf = bytesOf(fromHex("300c06082a864886f70d02090500"));
        const Bytes count = bytesOf(fromHex("02020800"));
        const Bytes derivation = der::element(der::Sequence,
            {der::oid("1.2.840.113549.1.5.12"),
                der::element(der::Sequence, {der::element(der::OctetString, {salt}), count, prf})});
        const Bytes scheme = der::element(der::Sequence, {der::oid("2.16.840.1.101.3.4.1.46"), parameters});
        const Bytes algorithm = der::element(
            der::Sequence, {der::oid("1.2.840.113549.1.5.13"), der::element(der::Sequence, {derivation, scheme})});
        return der::element(der::Sequence, {algorithm, der::element(der::OctetString, {encrypted})});
    };
    const Bytes bare = der::element(der::OctetString, {vector});
    const Bytes sixteen = bytesOf(fromHex("020110"));
    EXPECT_EQ(decryptKeyFile(library, fileOf(bare, 16), password), keyInfo);
    EXPECT_EQ(decryptKeyFile(library, fileOf(der::element(der::Sequence, {bare, sixteen}), 16), password), keyInfo);
    EXPECT_EQ(decryptKeyFile(library, fileOf(der::element(der::Sequence, {bare}), 12), password), keyInfo);
    EXPECT_EQ(codeOf(fileOf(bare, 16), "wrong"), SIGIL_TK_KEY_WRONG_PASSWORD);
    EXPECT_EQ(codeOf(fileOf({}, 16)), SIGIL_TK_KEY_MALFORMED);
}

TEST_F(KeyFile, Pbes2WithoutAnInitialVectorIsMalformed)
{
    const Bytes algorithm = bytesOf(fromHex("303606092a864886f70d01050d3029301b06092a864886f70d01050c300e0408010203"
                                            "040506070802020800300a06082a831a8c9a440104"));
    const Bytes file = der::element(der::Sequence, {algorithm, der::element(der::OctetString, {Bytes(32)})});
    EXPECT_EQ(codeOf(file), SIGIL_TK_KEY_MALFORMED);
}

TEST_F(KeyFile, TheWorkOfOneFileIsBoundedByTime)
{
    // Ten million rounds of HMAC with SHA-512 take far longer.
    const std::string slow =
        "305706092a864886f70d01050d304a302906092a864886f70d01050c301c04080102030405060708020398967f"
        "300c06082a864886f70d020b0500301d06092a831a8c9a6e01010c041000112233445566778899aabbccddeeff";
    std::string fixed = slow; // the count has a byte more than in the worked files
    fixed.replace(2, 2, "58");
    fixed.replace(28, 2, "4b");
    fixed.replace(32, 2, "2a");
    fixed.replace(58, 2, "1d");
    const Bytes file =
        der::element(der::Sequence, {bytesOf(fromHex(fixed)), der::element(der::OctetString, {Bytes(32)})});
    const std::clock_t start = std::clock();
    EXPECT_EQ(codeOf(file), SIGIL_TK_KEY_MALFORMED);
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 2.5);
}

TEST_F(KeyFile, DerivationsMatchOpenSsl)
{
    const Bytes salt = bytesOf(fromHex("0102030405060708"));
    const std::string longPassword(100, 'p');
    for (const std::string& secret : {std::string(password), longPassword, std::string()}) {
        for (const char* hash : {"SHA1", "SHA256", "SHA224", "SHA512"}) {
            WorkBudget budget;
            Secret expected(50);
            PKCS5_PBKDF2_HMAC(secret.c_str(), static_cast<int>(secret.size()), salt.data(),
                static_cast<int>(salt.size()), 100, EVP_get_digestbyname(hash), 50, expected.data());
            EXPECT_EQ(pbkdf2(library, hash, view(secret), {salt, 100}, 50, budget), expected) << hash;
        }
        for (const char* hash : {"SHA1", "SHA256", "SHA512", "MD5"}) {
            WorkBudget budget;
            Secret expected(90);
            std::string bmp;
            for (const char c : secret + '\0')
                bmp += std::string(1, '\0') + c;
            PKCS12_key_gen_uni(reinterpret_cast<unsigned char*>(bmp.data()), static_cast<int>(bmp.size()),
                const_cast<unsigned char*>(salt.data()), static_cast<int>(salt.size()), 2, 100, 90, expected.data(),
                EVP_get_digestbyname(hash));
            EXPECT_EQ(
                pkcs12Derive(library.digest(hash).get(), Pkcs12Purpose::Vector, view(bmp), {salt, 100}, 90, budget),
                expected)
                << hash;
        }
    }
}

TEST_F(KeyFile, OnlyAPrivateKeyInfoIsEncrypted)
{
    for (const int code : {0, 1, 2, 3, 4, 5, 6, 48, 64, 224})
        EXPECT_EQ(decryptKeyFile(library, encryptKeyFile(library, code, keyInfo, password), password), keyInfo)
            << code;
    EXPECT_THROW(encryptKeyFile(library, 7, keyInfo, password), Error);
    EXPECT_THROW(encryptKeyFile(library, 48, view("garbage"), password), Error);
}

TEST_F(KeyFile, TheRandomValueSurvivesAndIsFound)
{
    EXPECT_EQ(toHex(stringOf(identityRandom(keyInfo))), randomHex);
    const Secret other = withIdentityRandom(keyInfo, view(fromHex("00ff")));
    EXPECT_EQ(toHex(stringOf(identityRandom(other))), "00ff");
    EXPECT_EQ(withIdentityRandom(other, view(fromHex(randomHex))), keyInfo);
    const Secret plain = encodePrivateKey(loadPrivateKey(library, keyInfo).get());
    EXPECT_EQ(withIdentityRandom(plain, view(fromHex(randomHex))), keyInfo);
}

class KeyFace : public testing::TestWithParam<const char*> { };

INSTANTIATE_TEST_SUITE_P(
    Faces, KeyFace, testing::Values("HVTK_", "GPKI_"), [](const auto& face) { return std::string(face.param, 4); });

TEST_P(KeyFace, ChangesAPassword)
{
    const ToolkitLibrary toolkit(GetParam());
    ByteString key(toolkit, stringOf(fromBase64(view(keyInfoBase64))));
    ByteString file(toolkit);
    ASSERT_EQ(toolkit("PRIKEY_Encrypt", 64, text(password), key.get(), file.get()), 0);
    ByteString changed(toolkit);
    EXPECT_EQ(toolkit("PRIKEY_ChangePasswd", text("wrong"), text("new"), file.get(), changed.get()), 2004);
    EXPECT_TRUE(changed.empty());
    ASSERT_EQ(toolkit("PRIKEY_ChangePasswd", text(password), text("new"), file.get(), changed.get()), 0);
    ByteString opened(toolkit);
    EXPECT_EQ(toolkit("PRIKEY_Decrypt", text(password), changed.get(), opened.get()), 2004);
    ASSERT_EQ(toolkit("PRIKEY_Decrypt", text("new"), changed.get(), opened.get()), 0);
    EXPECT_EQ(opened.bytes(), key.bytes());
}

TEST_P(KeyFace, GivesTheCodesThatTheProcessorKnows)
{
    const ToolkitLibrary toolkit(GetParam());
    ByteString key(toolkit, stringOf(fromBase64(view(keyInfoBase64))));
    ByteString file(toolkit);
    ASSERT_EQ(toolkit("PRIKEY_Encrypt", 48, text(password), key.get(), file.get()), 0);
    ByteString opened(toolkit);
    EXPECT_EQ(toolkit("PRIKEY_Decrypt", text("nope"), file.get(), opened.get()), 2004);
    EXPECT_TRUE(opened.empty());
    EXPECT_EQ(toolkit.errorText().find("nope"), std::string::npos);
    ByteString garbage(toolkit, "garbage");
    EXPECT_EQ(toolkit("PRIKEY_Decrypt", text(password), garbage.get(), opened.get()), 2000);
    EXPECT_TRUE(opened.empty());
    ASSERT_EQ(toolkit("PRIKEY_Decrypt", text(password), file.get(), opened.get()), 0);
    EXPECT_EQ(opened.bytes(), key.bytes());
    ByteString random(toolkit);
    ASSERT_EQ(toolkit("VID_GetRandomFromPriKey", opened.get(), random.get()), 0);
    EXPECT_EQ(toHex(random.bytes()), randomHex);

    Library library;
    ByteString bare(toolkit, stringOf(encodePrivateKey(loadPrivateKey(library, view(key.bytes())).get())));
    ByteString none(toolkit);
    EXPECT_EQ(toolkit("VID_GetRandomFromPriKey", bare.get(), none.get()), 3500);
    EXPECT_TRUE(none.empty());
    EXPECT_NE(toolkit("VID_GetRandomFromPriKey", garbage.get(), none.get()), 3500);
}
