// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Private keys and their encryption in forms that hardly anybody writes, and in damaged ones.

#include "tests/toolkit/failure.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/derivation.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/key_numbers.h"
#include "toolkit/engine/keys/pbe.h"
#include "toolkit/engine/keys/private_key.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

using namespace toolkit;
using toolkit_test::codeOf;
using toolkit_test::stringOf;

namespace {

constexpr const char* aesCbc = "2.16.840.1.101.3.4.1.42";
constexpr const char* aesGcm = "2.16.840.1.101.3.4.1.46";

Bytes sequence(std::initializer_list<View> parts) { return der::element(der::Sequence, parts); }
Bytes octets(View content) { return der::element(der::OctetString, {content}); }
Bytes octets(std::size_t count) { return octets(Bytes(count, 1)); }
Bytes bits(View content) { return der::element(der::BitString, {Bytes(1), content}); }
Bytes integer(std::initializer_list<unsigned char> content) { return der::element(der::Integer, {Bytes(content)}); }

const Bytes& rounds()
{
    static const Bytes two = integer({2});
    return two;
}

Bytes scheme(const char* id, View parameters) { return sequence({der::oid(id), parameters}); }

/** An algorithm of PBES2. */
Bytes pbes2(View derivation, View cipher) { return scheme(oid::pbes2, sequence({derivation, cipher})); }

Bytes pbkdf2Of(std::initializer_list<View> parameters) { return scheme(oid::pbkdf2, sequence(parameters)); }
Bytes pbkdf2Of() { return pbkdf2Of({octets(8), rounds()}); }
Bytes scryptOf(std::initializer_list<View> parameters)
{
    return pbes2(scheme(oid::scrypt, sequence(parameters)), scheme(aesCbc, octets(16)));
}
Bytes seed(std::initializer_list<View> parameters) { return scheme(oid::seedCbcWithSha1, sequence(parameters)); }
Bytes gcm(std::initializer_list<View> parameters)
{
    return pbes2(pbkdf2Of(), scheme(aesGcm, sequence(parameters)));
}

/** A key file of this algorithm; what it encrypts is nothing. */
Bytes fileUnder(View algorithm, std::size_t encrypted = 32) { return sequence({algorithm, octets(encrypted)}); }

class OddKeys : public testing::Test {
protected:
    int opening(View file)
    {
        return codeOf([&] { decryptKeyFile(library, file, "password"); });
    }
    int loading(View keyInfo)
    {
        return codeOf([&] { loadPrivateKey(library, keyInfo); });
    }
    int encrypting(View keyInfo)
    {
        return codeOf([&] { encryptKeyFile(library, SIGIL_TK_KEY_SEED, keyInfo, "password"); });
    }
    int lookingForRandom(View keyInfo)
    {
        return codeOf([&] { identityRandom(keyInfo); });
    }
    Secret ecKey(int kind = SIGIL_TK_KEYPAIR_P256) { return generateKeyPair(library, kind).privateKey; }
    KeyHandle edwardsKey() { return KeyHandle(EVP_PKEY_Q_keygen(library.context(), nullptr, "ED25519")); }

    Library library;
};

/** A PrivateKeyInfo around the content of its OCTET STRING. */
Bytes keyInfoOf(View algorithm, View key) { return sequence({integer({0}), algorithm, octets(key)}); }
Bytes ecAlgorithm(const char* curve = "1.2.840.10045.3.1.7") { return scheme(oid::ec, der::oid(curve)); }

/** The scalar and the bits of the public point of an EC key. */
struct EcParts {
    Bytes scalar;
    Bytes point;
};

EcParts partsOf(View keyInfo)
{
    der::Reader fields(*der::Reader(keyInfo).take(der::Sequence));
    fields.next();
    fields.next();
    const View key = *fields.take(der::OctetString);
    der::Reader numbers(*der::Reader(key).take(der::Sequence));
    numbers.next();
    return {toBytes(*numbers.take(der::OctetString)), *ecPublicKey(key)};
}

/** An ECPrivateKey; @p others follow the scalar. */
Bytes ecPrivateKey(View scalar, View others = {}) { return sequence({integer({1}), octets(scalar), others}); }

} // namespace

TEST_F(OddKeys, SchemesWithDamagedParametersAreDamage)
{
    const Bytes none;
    const Bytes sixteen = octets(16);
    const Bytes three = integer({0x04});
    const std::pair<const char*, Bytes> damaged[] = {
        {"no rounds", seed({octets(8)})},
        {"an empty salt", seed({octets(std::size_t(0)), rounds()})},
        {"rounds without a digit", seed({octets(8), integer({})})},
        {"rounds of six bytes", seed({octets(8), integer({0, 0, 0, 0, 0, 1})})},
        {"a derivation without a name", pbes2(sequence({}), scheme(aesCbc, sixteen))},
        {"a cipher without a name", pbes2(pbkdf2Of(), sequence({}))},
        {"a vector of another kind", pbes2(pbkdf2Of(), scheme(aesCbc, integer({1})))},
        {"something after the pseudo-random function",
            pbes2(pbkdf2Of({octets(8), rounds(), octets(1)}), scheme(aesCbc, sixteen))},
        {"scrypt without a salt", scryptOf({three, rounds(), rounds()})},
        {"scrypt with an empty salt", scryptOf({octets(std::size_t(0)), three, rounds(), rounds()})},
        {"scrypt without its last number", scryptOf({octets(8), three, rounds()})},
        {"scrypt for a longer key", scryptOf({octets(8), three, rounds(), rounds(), integer({33})})},
        {"something after scrypt's numbers", scryptOf({octets(8), three, rounds(), rounds(), octets(1)})},
        {"GCM without a vector", gcm({integer({16})})},
        {"GCM with an empty vector", gcm({octets(std::size_t(0)), integer({16})})},
        {"GCM with a vector that is too long", gcm({octets(65), integer({16})})},
        {"GCM with a tag without a length", gcm({octets(12), integer({})})},
        {"GCM with a short tag", gcm({octets(12), integer({11})})},
        {"GCM with a long tag", gcm({octets(12), integer({17})})},
        {"RC2 without its version", pbes2(pbkdf2Of(), scheme(oid::rc2Cbc, sequence({octets(8)})))},
        {"RC2 without a vector", pbes2(pbkdf2Of(), scheme(oid::rc2Cbc, sequence({integer({58})})))},
    };
    for (const auto& [what, algorithm] : damaged)
        EXPECT_EQ(opening(fileUnder(algorithm)), SIGIL_TK_KEY_MALFORMED) << what;
}

TEST_F(OddKeys, SchemesThatNobodyKnowsAreUnsupported)
{
    const std::pair<const char*, Bytes> unknown[] = {
        {"a pseudo-random function without a name",
            pbes2(pbkdf2Of({octets(8), rounds(), sequence({})}), scheme(aesCbc, octets(16)))},
        {"RC2 with keys of another length",
            pbes2(pbkdf2Of(), scheme(oid::rc2Cbc, sequence({integer({1}), octets(8)})))},
        {"a cipher that needs no vector", pbes2(pbkdf2Of(), scheme("2.16.840.1.101.3.4.1.41", octets(16)))},
        {"a cipher of PBES1", scheme("1.2.840.113549.1.5.1", sequence({octets(8), rounds()}))},
        {"a scheme of PKCS#12", scheme("1.2.840.113549.1.12.1.7", sequence({octets(8), rounds()}))},
    };
    for (const auto& [what, algorithm] : unknown)
        EXPECT_EQ(opening(fileUnder(algorithm)), SIGIL_TK_KEY_UNSUPPORTED) << what;
}

TEST_F(OddKeys, Rc2MayHaveItsVectorAlone)
{
    const Bytes algorithm = pbes2(pbkdf2Of(), scheme(oid::rc2Cbc, octets(8)));
    EXPECT_EQ(opening(fileUnder(algorithm)), SIGIL_TK_KEY_WRONG_PASSWORD);
}

TEST_F(OddKeys, WhatIsEncryptedMustFillTheBlocksOfItsCipher)
{
    const Bytes blocks = pbes2(pbkdf2Of(), scheme(aesCbc, octets(16)));
    for (const std::size_t length : {0, 1, 15, 17, 31})
        EXPECT_EQ(opening(fileUnder(blocks, length)), SIGIL_TK_KEY_MALFORMED) << length;
    const Bytes tagged = gcm({octets(12), integer({16})});
    EXPECT_EQ(opening(fileUnder(tagged, 16)), SIGIL_TK_KEY_MALFORMED) << "nothing but the tag";
    EXPECT_EQ(opening(fileUnder(tagged, 17)), SIGIL_TK_KEY_WRONG_PASSWORD);
}

TEST_F(OddKeys, ScryptIsBoundedInEachOfItsNumbers)
{
    constexpr unsigned long huge = 1UL << 40;
    const auto costing = [&](const ScryptCost& cost) {
        return codeOf([&] { scrypt(library, view("password"), view("salt"), cost, 16); });
    };
    EXPECT_EQ(costing({2, 1, 1}), SIGIL_TK_OK);
    for (const ScryptCost& none : {ScryptCost{0, 1, 1}, {1, 1, 1}, {3, 1, 1}, {2, 0, 1}, {2, 1, 0}})
        EXPECT_EQ(costing(none), SIGIL_TK_KEY_MALFORMED);
    for (const ScryptCost& tooMuch :
        {ScryptCost{huge, 1, 1}, {2, huge, 1}, {2, 1, huge}, {1UL << 20, 8, 1}, {1UL << 14, 8, 1000}})
        EXPECT_EQ(costing(tooMuch), SIGIL_TK_KEY_UNSUPPORTED);
}

TEST_F(OddKeys, RareCiphersOfTheOpensslCommandAreRead)
{
    const toolkit_test::Workshop workshop;
    const Secret key = ecKey();
    workshop.write("key", stringOf(key));
    for (const std::string options : {"-v2 rc2", "-v2 rc2-40-cbc", "-v2 rc2-64-cbc", "-v2 aes-128-cfb",
             "-v2 aes-256-ofb", "-v1 PBE-SHA1-RC4-128", "-v1 PBE-SHA1-RC2-40", "-v1 PBE-SHA1-DES"}) {
        workshop.run("openssl pkcs8 -topk8 -inform DER -in key -outform DER -out file -passout pass:password "
                     "-provider legacy -provider default " +
            options);
        const std::string file = workshop.read("file");
        EXPECT_EQ(decryptKeyFile(library, view(file), "password"), key) << options;
        EXPECT_EQ(codeOf([&] { decryptKeyFile(library, view(file), "passwort"); }), SIGIL_TK_KEY_WRONG_PASSWORD)
            << options;
    }
}

TEST_F(OddKeys, AFileOfAnUnwrittenCipherIsEncryptedAsUsualUnderItsNewPassword)
{
    const Secret key = ecKey();
    const Bytes algorithm = pbes2(pbkdf2Of(), scheme("2.16.840.1.101.3.4.1.22", octets(16))); // AES with 192 bits
    const Bytes file =
        sequence({algorithm, octets(pbeEncrypt(library, parsePbeAlgorithm(algorithm), key, "password"))});
    const Bytes changed = changePassword(library, file, "password", "new");
    EXPECT_EQ(decryptKeyFile(library, changed, "new"), key);
    EXPECT_EQ(parsePbeAlgorithm(der::first(der::first(changed)->content)->whole).oid, oid::seedCbcWithSha1);
}

TEST_F(OddKeys, NothingIsWrittenWithATag)
{
    const Bytes algorithm = gcm({octets(12), integer({16})});
    EXPECT_EQ(codeOf([&] { pbeEncrypt(library, parsePbeAlgorithm(algorithm), ecKey(), "password"); }),
        SIGIL_TK_KEY_OPTION);
}

TEST_F(OddKeys, KeysOfAnotherFormAreNone)
{
    const Bytes algorithm = ecAlgorithm();
    const Bytes key = octets(4);
    const Bytes zero = integer({0});
    const Bytes brokenEnd{der::OctetString, 5};
    const std::pair<const char*, Bytes> damaged[] = {
        {"nothing", {}},
        {"no sequence", octets(4)},
        {"no version", sequence({algorithm, key})},
        {"a version without a digit", sequence({integer({}), algorithm, key})},
        {"a later version", sequence({integer({2}), algorithm, key})},
        {"no algorithm", sequence({zero, key})},
        {"no key", sequence({zero, algorithm})},
        {"an algorithm without a name", sequence({zero, sequence({zero}), key})},
        {"a broken attribute", sequence({zero, algorithm, key, der::element(der::Explicit0, {brokenEnd})})},
        {"a broken end", sequence({zero, algorithm, key, brokenEnd})},
    };
    for (const auto& [what, keyInfo] : damaged) {
        EXPECT_FALSE(isPrivateKeyInfo(keyInfo)) << what;
        EXPECT_EQ(loading(keyInfo), SIGIL_TK_KEY_UNUSABLE) << what;
        EXPECT_EQ(encrypting(keyInfo), SIGIL_TK_KEY_UNUSABLE) << what;
        EXPECT_EQ(lookingForRandom(keyInfo), SIGIL_TK_KEY_UNUSABLE) << what;
    }
}

TEST_F(OddKeys, BytesBehindAKeyAreNotEncryptedWithIt)
{
    Secret keyInfo = ecKey();
    const Secret key = keyInfo;
    keyInfo.push_back(0);
    EXPECT_EQ(loading(keyInfo), SIGIL_TK_KEY_UNUSABLE);
    const Bytes file = encryptKeyFile(library, SIGIL_TK_KEY_SEED, keyInfo, "password");
    EXPECT_EQ(decryptKeyFile(library, file, "password"), key);
}

TEST_F(OddKeys, NumbersThatMakeNoRsaKeyAreTakenForNone)
{
    const Bytes algorithm = sequence({der::oid(oid::rsa), der::element(der::Null, {})});
    const auto numbers = [](const Bytes& modulus, const Bytes& last = integer({1})) {
        const Bytes one = integer({3});
        return sequence({integer({0}), modulus, one, one, one, one, one, one, last});
    };
    const auto withModulus = [&](const Bytes& modulus, const Bytes& last = integer({1})) {
        return keyInfoOf(algorithm, numbers(modulus, last));
    };
    const auto behind = [](Bytes key) {
        key.push_back(0);
        return key;
    };
    const std::pair<const char*, Bytes> damaged[] = {
        {"a modulus below zero", withModulus(integer({0x80, 1}))},
        {"a modulus of zero", withModulus(integer({0, 0}))},
        {"a modulus without a digit", withModulus(integer({}))},
        {"a modulus of another kind", withModulus(octets(4))},
        {"no last number", withModulus(integer({15}), {})},
        {"one number too many", withModulus(integer({15}), Bytes{2, 1, 1, 2, 1, 1})},
        {"something behind no numbers", keyInfoOf(algorithm, Bytes{0x30, 0, 0})},
        {"something behind the numbers", keyInfoOf(algorithm, behind(numbers(integer({15}))))},
    };
    for (const auto& [what, keyInfo] : damaged)
        EXPECT_EQ(keyOfNumbers(library, keyInfo), nullptr) << what;
}

TEST_F(OddKeys, AnEcKeyWithoutItsPublicPointGetsIt)
{
    const Secret whole = ecKey();
    const EcParts parts = partsOf(whole);
    const auto pointed = [](View content) { return der::element(der::constructed(1), {content}); };
    Bytes compressed(parts.point.begin(), parts.point.begin() + 33);
    compressed.front() = static_cast<unsigned char>(2 | (parts.point.back() & 1));
    const std::pair<const char*, Bytes> forms[] = {
        {"none", {}},
        {"compressed", pointed(bits(compressed))},
        {"empty", pointed(bits({}))},
        {"of another kind", pointed(octets(parts.point))},
        {"with too many unused bits", pointed(der::element(der::BitString, {Bytes{8}, parts.point}))},
        {"broken", pointed(Bytes{der::BitString})},
    };
    for (const auto& [what, others] : forms) {
        const KeyHandle key = loadPrivateKey(library, keyInfoOf(ecAlgorithm(), ecPrivateKey(parts.scalar, others)));
        EXPECT_EQ(encodePrivateKey(key.get()), whole) << what;
    }
}

TEST_F(OddKeys, ScalarsThatMakeNoEcKeyAreUnusable)
{
    const Bytes scalar(32, 7);
    const std::pair<const char*, Bytes> damaged[] = {
        {"no numbers", keyInfoOf(ecAlgorithm(), Bytes{})},
        {"no scalar", keyInfoOf(ecAlgorithm(), sequence({integer({1})}))},
        {"no curve", keyInfoOf(scheme(oid::ec, integer({1})), ecPrivateKey(scalar))},
        {"a curve that nobody knows", keyInfoOf(ecAlgorithm("1.2.3.4"), ecPrivateKey(scalar))},
        {"a name that is no curve's", keyInfoOf(ecAlgorithm(aesCbc), ecPrivateKey(scalar))},
    };
    for (const auto& [what, keyInfo] : damaged)
        EXPECT_EQ(loading(keyInfo), SIGIL_TK_KEY_UNUSABLE) << what;
}

TEST_F(OddKeys, APublicKeyIsNoPrivateOne)
{
    for (const int kind : {SIGIL_TK_KEYPAIR_RSA1024, SIGIL_TK_KEYPAIR_P256}) {
        const Bytes publicKey = generateKeyPair(library, kind).publicKey;
        const unsigned char* at = publicKey.data();
        const KeyHandle key(d2i_PUBKEY(nullptr, &at, static_cast<long>(publicKey.size())));
        ASSERT_NE(key, nullptr);
        EXPECT_FALSE(encodeNumbers(key.get()).has_value()) << kind;
        EXPECT_EQ(keyOfNumbers(library, publicKey), nullptr) << kind;
    }
    EXPECT_EQ(keyOfNumbers(library, sequence({integer({0}), ecAlgorithm()})), nullptr) << "no key";
    EXPECT_EQ(keyOfNumbers(library, keyInfoOf(sequence({}), integer({1}))), nullptr) << "of no kind";
}

TEST_F(OddKeys, ACertificateAndAKeyInRareFormsAreComparedByOpenssl)
{
    const toolkit_test::Workshop workshop;
    workshop.certificate("rsa", "/CN=rsa", "keyUsage=digitalSignature");
    workshop.run("openssl ecparam -genkey -name prime256v1 -noout -out ec.pem &&"
                 " openssl pkcs8 -topk8 -nocrypt -in ec.pem -outform DER -out ec.key &&"
                 " openssl ec -in ec.pem -conv_form compressed -out compressed.pem &&"
                 " openssl req -x509 -new -key compressed.pem -subj /CN=ec -outform DER -out ec.crt");
    const std::string ec = workshop.read("ec.key");
    const Certificate compressed(library, view(workshop.read("ec.crt")));
    const auto checking = [&](const Certificate& certificate, View keyInfo) {
        return codeOf([&] { checkKeyPair(library, certificate, keyInfo); });
    };
    EXPECT_EQ(checking(compressed, view(ec)), SIGIL_TK_OK);
    EXPECT_EQ(checking(compressed, ecKey()), SIGIL_TK_KEY_MISMATCH);
    const Bytes algorithm = sequence({der::oid(oid::rsa), der::element(der::Null, {})});
    const Certificate rsa(library, view(workshop.read("rsa.crt")));
    EXPECT_EQ(checking(rsa, keyInfoOf(algorithm, view("no numbers"))), SIGIL_TK_KEY_UNUSABLE);
}

TEST_F(OddKeys, AKeyForAgreementsAloneSignsNothing)
{
    const KeyHandle key(EVP_PKEY_Q_keygen(library.context(), nullptr, "X25519"));
    const Secret keyInfo = encodePrivateKey(key.get());
    const SignatureScheme scheme{SIGIL_TK_HASH_SHA256, SIGIL_TK_RSA_V15};
    EXPECT_EQ(codeOf([&] { sign(library, scheme, keyInfo, view("a text")); }), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(codeOf([&] { signDigest(library, scheme, keyInfo, Bytes(32)); }), SIGIL_TK_ALGORITHM);
}

TEST_F(OddKeys, AnEmptyScalarIsTakenForNone)
{
    EXPECT_EQ(keyOfNumbers(library, keyInfoOf(ecAlgorithm(), ecPrivateKey({}))), nullptr);
}

TEST_F(OddKeys, KeysOfOtherKindsAreWrittenAndReadToo)
{
    const KeyHandle key = edwardsKey();
    const Secret keyInfo = encodePrivateKey(key.get());
    EXPECT_FALSE(encodeNumbers(key.get()).has_value());
    EXPECT_EQ(EVP_PKEY_eq(loadPrivateKey(library, keyInfo).get(), key.get()), 1);
}

TEST_F(OddKeys, KeysAreComparedWithTheirCertificatesInEveryForm)
{
    const toolkit_test::Workshop workshop;
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -conv_form compressed -out ec.pem");
    workshop.run("openssl req -x509 -new -key ec.pem -subj /CN=ec -days 2 -outform DER -out ec.crt");
    workshop.run("openssl pkcs8 -topk8 -nocrypt -in ec.pem -outform DER -out ec.key");
    workshop.run(
        "openssl req -x509 -newkey ed25519 -nodes -keyout ed.pem -subj /CN=ed -days 2 -outform DER -out ed.crt");
    workshop.run("openssl pkcs8 -topk8 -nocrypt -in ed.pem -outform DER -out ed.key");
    const auto check = [&](const std::string& certificate, View keyInfo) {
        return codeOf([&] {
            checkKeyPair(library, Certificate(library, view(workshop.read(certificate + ".crt"))), keyInfo);
        });
    };
    const std::string ec = workshop.read("ec.key");
    const std::string edwards = workshop.read("ed.key");
    EXPECT_EQ(check("ec", view(ec)), SIGIL_TK_OK);
    EXPECT_EQ(check("ed", view(edwards)), SIGIL_TK_OK);
    EXPECT_EQ(check("ec", view(edwards)), SIGIL_TK_KEY_MISMATCH);
    EXPECT_EQ(check("ed", view(ec)), SIGIL_TK_KEY_MISMATCH);
    EXPECT_EQ(check("ec", ecKey()), SIGIL_TK_KEY_MISMATCH) << "of the same curve";
    EXPECT_EQ(check("ec", ecKey(SIGIL_TK_KEYPAIR_P384)), SIGIL_TK_KEY_MISMATCH) << "of another curve";
    EXPECT_EQ(check("ed", encodePrivateKey(edwardsKey().get())), SIGIL_TK_KEY_MISMATCH);
    EXPECT_EQ(check("ec", octets(4)), SIGIL_TK_KEY_UNUSABLE);
}

TEST_F(OddKeys, ARandomValueIsFoundAmongOtherAttributesAndReplacedAlone)
{
    const auto attribute = [](const char* id, View value) {
        return sequence({der::oid(id), der::element(der::Set, {value})});
    };
    const Bytes other = attribute("1.2.3.4", integer({9}));
    const Bytes publicKey = der::element(der::primitive(1), {Bytes(3, 5)});
    const auto keyInfo = [&](std::initializer_list<View> attributes) {
        return sequence(
            {integer({1}), ecAlgorithm(), octets(4), der::element(der::Explicit0, attributes), publicKey});
    };
    const Bytes random(20, 0xAB);
    const Bytes ours = attribute(oid::randomNumber, bits(random));
    EXPECT_EQ(identityRandom(keyInfo({other, ours})), toSecret(random));
    const Secret changed =
        withIdentityRandom(keyInfo({other, attribute(oid::randomNumber, bits(Bytes{1}))}), random);
    EXPECT_EQ(stringOf(changed), stringOf(keyInfo({ours, other})));

    const std::pair<const char*, Bytes> without[] = {
        {"no attribute", other},
        {"one of another form", octets(2)},
        {"one without a name", sequence({integer({1})})},
        {"no value", sequence({der::oid(oid::randomNumber)})},
        {"a value of another kind", attribute(oid::randomNumber, octets(20))},
        {"too many unused bits", attribute(oid::randomNumber, der::element(der::BitString, {Bytes{8, 1}}))},
        {"no bit", attribute(oid::randomNumber, bits({}))},
    };
    for (const auto& [what, only] : without)
        EXPECT_EQ(lookingForRandom(keyInfo({only})), SIGIL_TK_VID_NO_RANDOM) << what;
}

TEST_F(OddKeys, PairsOfEveryLengthAreMadeAndNoOthers)
{
    for (const int kind : {SIGIL_TK_KEYPAIR_RSA1024, SIGIL_TK_KEYPAIR_P256, SIGIL_TK_KEYPAIR_P384}) {
        const KeyPair pair = generateKeyPair(library, kind);
        EXPECT_EQ(EVP_PKEY_get_bits(loadPrivateKey(library, pair.privateKey).get()), kind);
    }
    for (const int kind : {0, 512, 2047, 8192})
        EXPECT_EQ(codeOf([&] { generateKeyPair(library, kind); }), SIGIL_TK_ALGORITHM) << kind;
}

TEST_F(OddKeys, AKeyIsSharedOnOneCurveOnly)
{
    const KeyPair own = generateKeyPair(library, SIGIL_TK_KEYPAIR_P256);
    const KeyPair other = generateKeyPair(library, SIGIL_TK_KEYPAIR_P256);
    const KeyPair larger = generateKeyPair(library, SIGIL_TK_KEYPAIR_P384);
    const auto share = [&](const KeyPair& mine, const KeyPair& theirs) {
        return sharedKey(library, SIGIL_TK_SHARED_RAW, mine.privateKey, theirs.publicKey);
    };
    EXPECT_EQ(share(own, other), share(other, own));
    EXPECT_EQ(codeOf([&] { share(own, larger); }), SIGIL_TK_ALGORITHM);
}

TEST_F(OddKeys, RandomBytesAreAFewAtLeastAndNotTooMany)
{
    EXPECT_EQ(randomBytes(library, 1).size(), 1U);
    for (const int count : {-1, 0, 1 << 30})
        EXPECT_EQ(codeOf([&] { randomBytes(library, count); }), SIGIL_TK_ARGUMENT) << count;
}
