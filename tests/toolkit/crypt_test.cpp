// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Primitives against published vectors and the openssl command.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace toolkit_test;

namespace {

class Crypt : public testing::TestWithParam<const char*> {
protected:
    bool hvtk() const { return GetParam() == std::string("HVTK_"); }
    /** "EncryptFile" is "Encrypt_File" on the other face. */
    std::string fileName(const std::string& operation) const
    {
        return "CRYPT_" + (hvtk() ? operation : operation.substr(0, operation.size() - 4) + "_File");
    }
    void setKey(int cipher, const std::string& keyHex, const std::string& vectorHex)
    {
        ByteString key(toolkit, fromHex(keyHex));
        ByteString vector(toolkit, fromHex(vectorHex));
        ASSERT_EQ(toolkit("CRYPT_SetKeyAndIV", cipher, key.get(), vector.get()), 0) << toolkit.errorText();
    }
    std::string encryptHex(const std::string& plainHex)
    {
        ByteString plain(toolkit, fromHex(plainHex));
        ByteString out(toolkit);
        EXPECT_EQ(toolkit("CRYPT_Encrypt", plain.get(), out.get()), 0) << toolkit.errorText();
        return toHex(out.bytes());
    }
    std::string hashHex(int algorithm, const std::string& data)
    {
        ByteString in(toolkit, data);
        ByteString out(toolkit);
        EXPECT_EQ(toolkit("CRYPT_Hash", algorithm, in.get(), out.get()), 0) << toolkit.errorText();
        return toHex(out.bytes());
    }

    ToolkitLibrary toolkit{GetParam()};
};

struct BlockVector {
    int cipher;
    const char* key;
    const char* plain;
    const char* encrypted;
};

// One block in CBC under a zero vector is the block cipher itself.
const BlockVector blocks[]{
    // RFC 4269, appendix B
    {SIGIL_TK_CIPHER_SEED, "00000000000000000000000000000000", "000102030405060708090a0b0c0d0e0f",
        "5ebac6e0054e166819aff1cc6d346cdb"},
    {SIGIL_TK_CIPHER_SEED, "000102030405060708090a0b0c0d0e0f", "00000000000000000000000000000000",
        "c11f22f20140505084483597e4370f43"},
    {SIGIL_TK_CIPHER_SEED, "4706480851e61be85d74bfb3fd956185", "83a2f8a288641fb9a4e9a5cc2f131c7d",
        "ee54d13ebcae706d226bc3142cd40d4a"},
    {SIGIL_TK_CIPHER_SEED, "28dbc3bc49ffd87dcfa509b11d422be7", "b41e6be2eba84a148e2eed84593c5ec7",
        "9b9b7bfcd1813cb95d0b3618f40f5122"},
    // RFC 5794, appendix A
    {SIGIL_TK_CIPHER_ARIA128, "000102030405060708090a0b0c0d0e0f", "00112233445566778899aabbccddeeff",
        "d718fbd6ab644c739da95f3be6451778"},
    {SIGIL_TK_CIPHER_ARIA192, "000102030405060708090a0b0c0d0e0f1011121314151617",
        "00112233445566778899aabbccddeeff", "26449c1805dbe7aa25a468ce263a9e79"},
    {SIGIL_TK_CIPHER_ARIA256, "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f",
        "00112233445566778899aabbccddeeff", "f92bd7c79fb72e2f2b8f80c1972d24fc"},
    // FIPS 197, appendix C
    {SIGIL_TK_CIPHER_AES128, "000102030405060708090a0b0c0d0e0f", "00112233445566778899aabbccddeeff",
        "69c4e0d86a7b0430d8cdb78070b4c55a"},
    {SIGIL_TK_CIPHER_AES192, "000102030405060708090a0b0c0d0e0f1011121314151617", "00112233445566778899aabbccddeeff",
        "dda97ca4864cdfe06eaf70a0ec0d7191"},
    {SIGIL_TK_CIPHER_AES256, "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f",
        "00112233445566778899aabbccddeeff", "8ea2b7ca516745bfeafc49904b496089"},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Faces, Crypt, testing::Values("HVTK_", "GPKI_"), [](const auto& face) { return std::string(face.param, 4); });

TEST_P(Crypt, BlockCiphersMatchThePublishedVectors)
{
    for (const BlockVector& block : blocks) {
        setKey(block.cipher, block.key, std::string(32, '0'));
        const std::string out = encryptHex(block.plain);
        EXPECT_EQ(out.substr(0, 32), block.encrypted);
        EXPECT_EQ(out.size(), 64U) << "a whole block of padding follows";
        ByteString encrypted(toolkit, fromHex(out));
        ByteString back(toolkit);
        EXPECT_EQ(toolkit("CRYPT_Decrypt", encrypted.get(), back.get()), 0);
        EXPECT_EQ(toHex(back.bytes()), block.plain);
    }
}

TEST_P(Crypt, EncryptionMatchesTheOpensslCommand)
{
    const Workshop workshop;
    const std::string key = "0123456789abcdeffedcba9876543210";
    const std::string vector = "00112233445566778899aabbccddeeff";
    workshop.write("plain", "some text of any length");
    const std::pair<int, const char*> ciphers[]{{SIGIL_TK_CIPHER_SEED, "seed-cbc"},
        {SIGIL_TK_CIPHER_AES128, "aes-128-cbc"}, {SIGIL_TK_CIPHER_ARIA128, "aria-128-cbc"}};
    for (const auto& [code, name] : ciphers) {
        workshop.run("openssl enc -provider legacy -provider default -" + std::string(name) + " -K " + key +
            " -iv " + vector + " -in plain -out encrypted");
        setKey(code, key, vector);
        EXPECT_EQ(encryptHex(toHex(workshop.read("plain"))), toHex(workshop.read("encrypted"))) << name;
    }
    workshop.run(
        "openssl enc -des-ede3-cbc -K " + key + key.substr(0, 16) + " -iv 0011223344556677 -in plain -out e");
    setKey(SIGIL_TK_CIPHER_3DES, key + key.substr(0, 16), "0011223344556677");
    EXPECT_EQ(encryptHex(toHex(workshop.read("plain"))), toHex(workshop.read("e")));
}

TEST_P(Crypt, AKeyIsNeededAndItsSizeChecked)
{
    ByteString data(toolkit, "data");
    ByteString out(toolkit);
    EXPECT_EQ(toolkit("CRYPT_Encrypt", data.get(), out.get()), SIGIL_TK_NO_SESSION_KEY);
    EXPECT_EQ(toolkit("CRYPT_Decrypt", data.get(), out.get()), SIGIL_TK_NO_SESSION_KEY);
    ByteString key(toolkit, "0123456789abcdef");
    ByteString vector(toolkit, "short");
    EXPECT_EQ(toolkit("CRYPT_SetKeyAndIV", SIGIL_TK_CIPHER_SEED, key.get(), vector.get()), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(toolkit("CRYPT_SetKeyAndIV", 99, key.get(), key.get()), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(toolkit("CRYPT_GenKeyAndIV", 99), SIGIL_TK_ALGORITHM);
    int algorithm = 7;
    EXPECT_EQ(toolkit("CRYPT_GetKeyAndIV", &algorithm, out.get(), out.get()), SIGIL_TK_NO_SESSION_KEY);
    EXPECT_EQ(algorithm, 7);
    EXPECT_TRUE(out.empty());
}

TEST_P(Crypt, AGeneratedKeyIsHandedOutAndForgotten)
{
    for (int cipher = SIGIL_TK_CIPHER_SEED; cipher <= SIGIL_TK_CIPHER_ARIA256; ++cipher) {
        ASSERT_EQ(toolkit("CRYPT_GenKeyAndIV", cipher), 0);
        ByteString key(toolkit);
        ByteString vector(toolkit);
        int algorithm = 0;
        ASSERT_EQ(toolkit("CRYPT_GetKeyAndIV", &algorithm, key.get(), vector.get()), 0);
        EXPECT_EQ(algorithm, cipher);
        const std::string encrypted = encryptHex("00");
        ASSERT_EQ(toolkit("CRYPT_ClearKeyAndIV"), 0);
        ByteString in(toolkit, fromHex(encrypted));
        ByteString out(toolkit);
        EXPECT_EQ(toolkit("CRYPT_Decrypt", in.get(), out.get()), SIGIL_TK_NO_SESSION_KEY);
        ASSERT_EQ(toolkit("CRYPT_SetKeyAndIV", algorithm, key.get(), vector.get()), 0);
        EXPECT_EQ(toolkit("CRYPT_Decrypt", in.get(), out.get()), 0);
        EXPECT_EQ(out.bytes(), std::string(1, '\0'));
    }
}

TEST_P(Crypt, DamagedDataIsNotDecrypted)
{
    setKey(SIGIL_TK_CIPHER_SEED, std::string(32, '1'), std::string(32, '0'));
    ByteString damaged(toolkit, "not a whole number of blocks");
    ByteString out(toolkit);
    EXPECT_EQ(toolkit("CRYPT_Decrypt", damaged.get(), out.get()), SIGIL_TK_DECRYPT);
    EXPECT_TRUE(out.empty());
}

TEST_P(Crypt, FilesAreEncryptedAndDecrypted)
{
    const Workshop workshop;
    std::string content(200000, 'x');
    content[100000] = '\0';
    workshop.write("plain", content);
    setKey(SIGIL_TK_CIPHER_ARIA256, std::string(64, '7'), std::string(32, '0'));
    ASSERT_EQ(toolkit(fileName("EncryptFile"), text(workshop.path("plain")), text(workshop.path("closed"))), 0);
    workshop.run("openssl enc -d -aria-256-cbc -K " + std::string(64, '7') +
        " -iv 0 -in closed -out opened"
        " && cmp opened plain");
    ASSERT_EQ(toolkit(fileName("DecryptFile"), text(workshop.path("closed")), text(workshop.path("back"))), 0);
    EXPECT_EQ(workshop.read("back"), content);
    workshop.write("closed", workshop.read("closed").substr(0, 100));
    EXPECT_EQ(toolkit(fileName("DecryptFile"), text(workshop.path("closed")), text(workshop.path("none"))),
        SIGIL_TK_DECRYPT);
    EXPECT_FALSE(std::filesystem::exists(workshop.path("none")));
    EXPECT_EQ(toolkit(fileName("EncryptFile"), text(workshop.path("missing")), text(workshop.path("none"))),
        SIGIL_TK_FILE_NOT_FOUND);
    EXPECT_EQ(toolkit(fileName("EncryptFile"), text(workshop.path("plain")), static_cast<char*>(nullptr)),
        SIGIL_TK_ARGUMENT);
}

TEST_P(Crypt, HashesMatchThePublishedVectors)
{
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_SHA1, "abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_SHA224, "abc"), "23097d223405d8228642a477bda255b32aadbce4bda0b3f7e36c9da7");
    const std::string sha256 = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_SHA256, "abc"), sha256);
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_DEFAULT, "abc"), sha256);
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_SHA384, "abc").substr(0, 16), "cb00753f45a35e8b");
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_SHA512, "abc").substr(0, 16), "ddaf35a193617aba");
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_MD5, "abc"), "900150983cd24fb0d6963f7d28e17f72");
    ASSERT_EQ(toolkit("API_SetHashAlgo", SIGIL_TK_HASH_SHA1), 0);
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_DEFAULT, "abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(toolkit("API_SetHashAlgo", 99), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_DEFAULT, "abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(toolkit("API_SetHashAlgo", static_cast<int>(SIGIL_TK_HASH_DEFAULT)), 0);
    EXPECT_EQ(hashHex(SIGIL_TK_HASH_DEFAULT, "abc"), sha256);
    ByteString in(toolkit, "abc");
    ByteString out(toolkit);
    EXPECT_EQ(toolkit("CRYPT_Hash", 99, in.get(), out.get()), SIGIL_TK_ALGORITHM);
}

TEST_P(Crypt, MacsMatchThePublishedVector)
{
    // RFC 4231, test case 2
    ByteString data(toolkit, "what do ya want for nothing?");
    ByteString mac(toolkit);
    ASSERT_EQ(toolkit("CRYPT_GenMAC", SIGIL_TK_HASH_SHA256, text("Jefe"), data.get(), mac.get()), 0);
    EXPECT_EQ(toHex(mac.bytes()), "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
    EXPECT_EQ(toolkit("CRYPT_VerifyMAC", SIGIL_TK_HASH_SHA256, text("Jefe"), data.get(), mac.get()), 0);
    EXPECT_EQ(toolkit("CRYPT_VerifyMAC", SIGIL_TK_HASH_SHA256, text("Jeff"), data.get(), mac.get()), SIGIL_TK_MAC);
    ByteString cut(toolkit, mac.bytes().substr(1));
    EXPECT_EQ(toolkit("CRYPT_VerifyMAC", SIGIL_TK_HASH_SHA256, text("Jefe"), data.get(), cut.get()), SIGIL_TK_MAC);
}

TEST_P(Crypt, RandomBytesHaveTheWantedLength)
{
    ByteString first(toolkit);
    ByteString second(toolkit);
    ASSERT_EQ(toolkit("CRYPT_GenRandom", 32, first.get()), 0);
    ASSERT_EQ(toolkit("CRYPT_GenRandom", 32, second.get()), 0);
    EXPECT_EQ(first.bytes().size(), 32U);
    EXPECT_NE(first.bytes(), second.bytes());
    EXPECT_EQ(toolkit("CRYPT_GenRandom", 0, first.get()), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit("CRYPT_GenRandom", -1, first.get()), SIGIL_TK_ARGUMENT);
}

TEST_P(Crypt, FilesAreSignedAndVerified)
{
    const Workshop workshop;
    workshop.certificate("rsa", "/CN=rsa", "");
    workshop.certificate("ec", "/CN=ec", "", "", "-days 1", "ec -pkeyopt ec_paramgen_curve:P-256");
    workshop.write("data", std::string(100000, 'd'));
    for (const std::string kind : {"rsa", "ec"}) {
        ByteString certificate(toolkit, workshop.read(kind + ".crt"));
        ByteString key(toolkit, workshop.read(kind + ".key"));
        ASSERT_EQ(toolkit(fileName("SignFile"), certificate.get(), key.get(), SIGIL_TK_HASH_SHA384,
                      text(workshop.path("data")), text(workshop.path("signature"))),
            0);
        workshop.run("openssl x509 -in " + kind +
            ".pem -noout -pubkey > public.pem && "
            "openssl dgst -sha384 -verify public.pem -signature signature data");
        EXPECT_EQ(toolkit(fileName("VerifyFile"), certificate.get(), SIGIL_TK_HASH_SHA384,
                      text(workshop.path("data")), text(workshop.path("signature"))),
            0);
        EXPECT_EQ(toolkit(fileName("VerifyFile"), certificate.get(), SIGIL_TK_HASH_SHA256,
                      text(workshop.path("data")), text(workshop.path("signature"))),
            SIGIL_TK_SIGNATURE);
    }
}

TEST_P(Crypt, KeysEncryptForTheirHolder)
{
    const Workshop workshop;
    workshop.certificate("user", "/CN=user", "");
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ByteString key(toolkit, workshop.read("user.key"));
    ByteString data(toolkit, "for the holder");
    ByteString closed(toolkit);
    ASSERT_EQ(toolkit("CRYPT_AsymEncrypt", SIGIL_TK_ASYM_PUBLIC, certificate.get(), data.get(), closed.get()), 0);
    workshop.write("closed", closed.bytes());
    EXPECT_EQ(workshop.run("openssl pkeyutl -decrypt -inkey user.key.pem -in closed"), "for the holder");
    ByteString opened(toolkit);
    ASSERT_EQ(toolkit("CRYPT_AsymDecrypt", SIGIL_TK_ASYM_PRIVATE, key.get(), closed.get(), opened.get()), 0);
    EXPECT_EQ(opened.bytes(), "for the holder");
    ByteString byPrivate(toolkit);
    ASSERT_EQ(toolkit("CRYPT_AsymEncrypt", SIGIL_TK_ASYM_PRIVATE, key.get(), data.get(), byPrivate.get()), 0);
    ByteString recovered(toolkit);
    ASSERT_EQ(
        toolkit("CRYPT_AsymDecrypt", SIGIL_TK_ASYM_PUBLIC, certificate.get(), byPrivate.get(), recovered.get()), 0);
    EXPECT_EQ(recovered.bytes(), "for the holder");
    ByteString none(toolkit);
    EXPECT_EQ(
        toolkit("CRYPT_AsymDecrypt", SIGIL_TK_ASYM_PRIVATE, key.get(), data.get(), none.get()), SIGIL_TK_DECRYPT);
    EXPECT_EQ(toolkit("CRYPT_AsymEncrypt", 9, key.get(), data.get(), none.get()), SIGIL_TK_OPTION);
    EXPECT_TRUE(none.empty());
}

TEST(HvtkCrypt, SchemesCanBeChosen)
{
    const ToolkitLibrary toolkit("HVTK_");
    const Workshop workshop;
    workshop.certificate("user", "/CN=user", "");
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ByteString key(toolkit, workshop.read("user.key"));
    ByteString data(toolkit, "data");
    EXPECT_EQ(toolkit("CRYPT_SetRSAVersion", 3), SIGIL_TK_OPTION);
    EXPECT_EQ(toolkit("CRYPT_SetPaddingType", 3), SIGIL_TK_OPTION);
    ASSERT_EQ(toolkit("CRYPT_SetRSAVersion", SIGIL_TK_RSA_PSS), 0);
    ASSERT_EQ(toolkit("CRYPT_SetPaddingType", SIGIL_TK_PADDING_OAEP), 0);
    ByteString signature(toolkit);
    ASSERT_EQ(toolkit("CRYPT_Sign", certificate.get(), key.get(), 0, data.get(), signature.get()), 0);
    EXPECT_EQ(toolkit("CRYPT_Verify", certificate.get(), 0, data.get(), signature.get()), 0);
    ByteString closed(toolkit);
    ASSERT_EQ(toolkit("CRYPT_AsymEncrypt", 0, certificate.get(), data.get(), closed.get()), 0);
    workshop.write("data", "data");
    workshop.write("signature", signature.bytes());
    workshop.write("closed", closed.bytes());
    workshop.run("openssl x509 -in user.pem -noout -pubkey > public.pem && openssl dgst -sha256 -sigopt "
                 "rsa_padding_mode:pss -sigopt rsa_pss_saltlen:-1 -verify public.pem -signature signature data");
    EXPECT_EQ(workshop.run("openssl pkeyutl -decrypt -inkey user.key.pem -in closed -pkeyopt rsa_padding_mode:oaep "
                           "-pkeyopt rsa_oaep_md:sha256"),
        "data");
    ByteString none(toolkit);
    EXPECT_EQ(
        toolkit("CRYPT_AsymEncrypt", SIGIL_TK_ASYM_PRIVATE, key.get(), data.get(), none.get()), SIGIL_TK_OPTION);
    ASSERT_EQ(toolkit("CRYPT_SetRSAVersion", SIGIL_TK_RSA_V15), 0);
    EXPECT_EQ(toolkit("CRYPT_Verify", certificate.get(), 0, data.get(), signature.get()), SIGIL_TK_SIGNATURE);
}

TEST(HvtkCrypt, AFreshVectorForEveryEncryption)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString data(toolkit, "data");
    ByteString none(toolkit);
    ASSERT_EQ(toolkit("CRYPT_SetEnvChangeIV"), 0);
    EXPECT_EQ(toolkit("CRYPT_Encrypt", data.get(), none.get()), SIGIL_TK_NO_SESSION_KEY);
    ASSERT_EQ(toolkit("CRYPT_ClearKeyAndIV"), 0);
    ASSERT_EQ(toolkit("CRYPT_GenKeyAndIV", SIGIL_TK_CIPHER_SEED), 0);
    const auto encrypt = [&] {
        ByteString out(toolkit);
        EXPECT_EQ(toolkit("CRYPT_Encrypt", data.get(), out.get()), 0);
        return out.bytes();
    };
    EXPECT_EQ(encrypt(), encrypt());
    ASSERT_EQ(toolkit("CRYPT_SetEnvChangeIV"), 0);
    EXPECT_NE(encrypt(), encrypt());
    ByteString last(toolkit, encrypt());
    ByteString back(toolkit);
    EXPECT_EQ(toolkit("CRYPT_Decrypt", last.get(), back.get()), 0) << "the last vector is the one in use";
    EXPECT_EQ(back.bytes(), "data");
}

TEST(HvtkCrypt, KeyPairsAndSharedKeys)
{
    const ToolkitLibrary toolkit("HVTK_");
    const Workshop workshop;
    for (const int kind : {SIGIL_TK_KEYPAIR_RSA2048, SIGIL_TK_KEYPAIR_P256, SIGIL_TK_KEYPAIR_P384}) {
        ByteString publicKey(toolkit);
        ByteString privateKey(toolkit);
        ASSERT_EQ(toolkit("CRYPT_GenKeyPair", kind, publicKey.get(), privateKey.get()), 0);
        workshop.write("private", privateKey.bytes());
        workshop.write("public", publicKey.bytes());
        workshop.run("openssl pkey -inform DER -in private -pubout -outform DER -out again && cmp again public");
        if (kind == SIGIL_TK_KEYPAIR_RSA2048)
            continue;
        ByteString peerPublic(toolkit);
        ByteString peerPrivate(toolkit);
        ASSERT_EQ(toolkit("CRYPT_GenKeyPair", kind, peerPublic.get(), peerPrivate.get()), 0);
        ByteString mine(toolkit);
        ByteString theirs(toolkit);
        ASSERT_EQ(toolkit("CRYPT_GenSharedKey", 0, privateKey.get(), peerPublic.get(), mine.get()), 0);
        ASSERT_EQ(toolkit("CRYPT_GenSharedKey", 0, peerPrivate.get(), publicKey.get(), theirs.get()), 0);
        EXPECT_EQ(mine.bytes(), theirs.bytes());
        workshop.write("peer", peerPublic.bytes());
        workshop.run("openssl pkeyutl -derive -keyform DER -inkey private -peerform DER -peerkey peer -out shared");
        EXPECT_EQ(mine.bytes(), workshop.read("shared"));
        ByteString hashed(toolkit);
        ASSERT_EQ(
            toolkit("CRYPT_GenSharedKey", SIGIL_TK_HASH_SHA256, privateKey.get(), peerPublic.get(), hashed.get()),
            0);
        EXPECT_EQ(toHex(hashed.bytes()), sha256Hex(mine.bytes()));
    }
    ByteString one(toolkit);
    ByteString two(toolkit);
    for (const int kind : {12, 1000, 1500, 5120})
        EXPECT_EQ(toolkit("CRYPT_GenKeyPair", kind, one.get(), two.get()), SIGIL_TK_ALGORITHM) << kind;
    EXPECT_TRUE(one.empty() && two.empty());
}

TEST(HvtkCrypt, MacsUnderAKeyAndHashesOfFiles)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString key(toolkit, fromHex("0b0b0b0b0b0b0b0b0b0b0b0b0b0b0b0b0b0b0b0b")); // RFC 4231, test case 1
    ByteString data(toolkit, "Hi There");
    ByteString mac(toolkit);
    ASSERT_EQ(toolkit("CRYPT_GenMAC2", SIGIL_TK_HASH_SHA256, key.get(), data.get(), mac.get()), 0);
    EXPECT_EQ(toHex(mac.bytes()), "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
    const Workshop workshop;
    workshop.write("file", "abc");
    ByteString hash(toolkit);
    ASSERT_EQ(toolkit("CRYPT_HashFile", 0, text(workshop.path("file")), hash.get()), 0);
    EXPECT_EQ(toHex(hash.bytes()), sha256Hex("abc"));
    EXPECT_EQ(toolkit("CRYPT_HashFile", 0, text(workshop.path("none")), hash.get()), SIGIL_TK_FILE_NOT_FOUND);
}
