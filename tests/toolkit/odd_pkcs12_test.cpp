// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// PKCS#12 files in forms that hardly any program writes, and damaged ones, put together by hand.

#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/pkcs12/pkcs12.h"

#include <gtest/gtest.h>

#include <utility>

namespace odd_pkcs12 {
namespace {

using namespace toolkit;

constexpr const char* keyBag = "1.2.840.113549.1.12.10.1.1";
constexpr const char* nestedBags = "1.2.840.113549.1.12.10.1.6";
constexpr const char* secretBag = "1.2.840.113549.1.12.10.1.5";
constexpr const char* password = "secret1!";

Bytes sequence(std::initializer_list<View> parts) { return der::element(der::Sequence, parts); }
Bytes octets(View content) { return der::element(der::OctetString, {content}); }
Bytes explicit0(View content) { return der::element(der::Explicit0, {content}); }
Bytes dataOf(View content) { return sequence({der::oid(oid::data), explicit0(octets(content))}); }

/** A bag with or without attributes. */
Bytes bag(const char* kind, View value, View attributes = {})
{
    return sequence({der::oid(kind), explicit0(value), attributes});
}
Bytes keyId(View value)
{
    const Bytes values = der::element(der::Set, {value});
    return der::element(der::Set, {sequence({der::oid(oid::localKeyId), values})});
}

/** A file of these safes, without a code over them. */
Bytes fileOfSafes(View safes) { return sequence({Bytes{2, 1, 3}, dataOf(sequence({safes}))}); }
Bytes fileOf(std::initializer_list<View> bags) { return fileOfSafes(dataOf(sequence(bags))); }

Bytes sha1() { return sequence({der::oid(oid::sha1), Bytes{5, 0}}); }

/** A file with a code over its content. */
Bytes withMac(View content, View salt, View iterations)
{
    const Bytes digest = sequence({sha1(), octets(Bytes(20))});
    return sequence({Bytes{2, 1, 3}, content, sequence({digest, octets(salt), iterations})});
}

class OddPkcs12 : public testing::Test {
protected:
    static const toolkit_test::Workshop& workshop()
    {
        static const toolkit_test::Workshop made;
        static const bool ready = [] {
            made.certificate("sign", "/C=KR/CN=sign", "keyUsage=digitalSignature");
            made.certificate("km", "/C=KR/CN=km", "keyUsage=keyEncipherment");
            return true;
        }();
        EXPECT_TRUE(ready);
        return made;
    }
    static Bytes file(const std::string& name) { return toBytes(view(workshop().read(name))); }
    static Bytes certificateBag(const std::string& name, View attributes = {})
    {
        const Bytes value = sequence({der::oid(oid::x509Certificate), explicit0(octets(file(name + ".crt")))});
        return bag(oid::certificateBag, value, attributes);
    }
    static Bytes bareKeyBag(const std::string& name) { return bag(keyBag, file(name + ".key")); }

    Pkcs12Content read(View pfx) const { return readPkcs12(library, pfx, password, SIGIL_TK_PFX_WITHOUT_MAC); }
    int codeOf(View pfx) const
    {
        try {
            read(pfx);
            return SIGIL_TK_OK;
        } catch (const Error& error) {
            return error.code();
        }
    }

    Library library;
};

} // namespace

TEST_F(OddPkcs12, BagsOfNoUseArePassedOver)
{
    const Bytes text = der::element(der::Ia5String, {view("sdsi")});
    const Bytes otherCertificate = sequence({der::oid("1.2.840.113549.1.9.22.2"), explicit0(text)});
    const Bytes secret = sequence({der::oid("1.2.3.4"), explicit0(text)});
    const Pkcs12Content content = read(fileOf({bag(secretBag, secret), bag(oid::certificateBag, otherCertificate),
        bareKeyBag("sign"), certificateBag("sign")}));
    ASSERT_EQ(content.pairs.size(), 1U);
    EXPECT_EQ(content.pairs[0].certificate, file("sign.crt"));
    EXPECT_TRUE(content.others.empty());
}

TEST_F(OddPkcs12, BagsMayBeNestedEightTimes)
{
    const auto nested = [&](int times) {
        Bytes bags = sequence({bareKeyBag("sign"), certificateBag("sign")});
        for (int i = 0; i < times; ++i)
            bags = sequence({bag(nestedBags, bags)});
        return fileOfSafes(dataOf(bags));
    };
    EXPECT_EQ(read(nested(8)).pairs.size(), 1U);
    EXPECT_EQ(codeOf(nested(9)), SIGIL_TK_PFX_MALFORMED);
}

TEST_F(OddPkcs12, KeysThatNobodyKnowsAreTheCertificatesOfTheirIdentifier)
{
    const Bytes unknown = sequence({Bytes{2, 1, 0}, sequence({der::oid("1.2.3.4")}), octets(Bytes(4))});
    const Bytes id = keyId(octets(Bytes{1}));
    const Pkcs12Content content = read(fileOf({bag(keyBag, unknown, id), certificateBag("sign", id)}));
    ASSERT_EQ(content.pairs.size(), 1U);
    EXPECT_EQ(content.pairs[0].keyInfo, toSecret(unknown));
    const Bytes none;
    const Bytes other = keyId(octets(Bytes{2}));
    const Bytes number = keyId(Bytes{2, 1, 1});
    for (const View attributes : {View(none), View(other), View(number)})
        EXPECT_EQ(
            codeOf(fileOf({bag(keyBag, unknown, attributes), certificateBag("sign", id)})), SIGIL_TK_PFX_NO_PAIR);
    EXPECT_EQ(codeOf(fileOf({bag(keyBag, unknown, number), certificateBag("sign", number)})), SIGIL_TK_PFX_NO_PAIR)
        << "an identifier of another kind is none";
    EXPECT_EQ(codeOf(fileOf({bag(keyBag, file("km.key"), id), certificateBag("sign", id)})), SIGIL_TK_PFX_NO_PAIR)
        << "a known key of another certificate";
}

TEST_F(OddPkcs12, WhatCannotBeOpenedSaysWhy)
{
    const auto shroudedIn = [](View algorithm, std::size_t size) {
        return fileOf({bag(oid::shroudedKeyBag, sequence({algorithm, octets(Bytes(size))}))});
    };
    const auto shrouded = [&](View algorithm) { return shroudedIn(algorithm, 16); };
    const Bytes tripleDes =
        sequence({der::oid("1.2.840.113549.1.12.1.3"), sequence({octets(Bytes(8)), Bytes{2, 1, 1}})});
    EXPECT_EQ(codeOf(shroudedIn(tripleDes, 17)), SIGIL_TK_PFX_MALFORMED) << "no whole blocks";
    EXPECT_EQ(codeOf(shrouded(sequence({der::oid("1.2.3.4")}))), SIGIL_TK_PFX_UNSUPPORTED);
    EXPECT_EQ(codeOf(shrouded(sequence({der::oid(oid::seedCbc)}))), SIGIL_TK_PFX_MALFORMED);
    const Bytes algorithm = sequence({der::oid("1.2.3.4")});
    const auto encrypted = [&](View parts) {
        const Bytes fields = sequence({Bytes{2, 1, 0}, sequence({der::oid(oid::data), algorithm, parts})});
        return fileOfSafes(sequence({der::oid(oid::encryptedData), explicit0(fields)}));
    };
    EXPECT_EQ(codeOf(encrypted(der::element(der::Implicit0OctetString, {Bytes(16)}))), SIGIL_TK_PFX_UNSUPPORTED);
    EXPECT_EQ(codeOf(encrypted({})), SIGIL_TK_PFX_MALFORMED) << "nothing is encrypted";
    EXPECT_EQ(codeOf(fileOfSafes(dataOf(view("no bags")))), SIGIL_TK_PFX_MALFORMED);
    for (const char* const kind : {oid::data, oid::encryptedData})
        EXPECT_EQ(codeOf(fileOfSafes(sequence({der::oid(kind)}))), SIGIL_TK_PFX_MALFORMED) << "an empty " << kind;
}

TEST_F(OddPkcs12, ACodeOverTheFileNeedsItsParameters)
{
    const Bytes content = dataOf(sequence({}));
    EXPECT_EQ(codeOf(withMac(content, Bytes(8), {})), SIGIL_TK_PFX_WRONG_PASSWORD) << "of one round";
    EXPECT_EQ(codeOf(withMac(content, Bytes(8), Bytes{2, 1, 2})), SIGIL_TK_PFX_WRONG_PASSWORD);
    const auto withParts = [&](std::initializer_list<View> parts) {
        return sequence({Bytes{2, 1, 3}, content, sequence(parts)});
    };
    const std::pair<const char*, Bytes> damaged[] = {
        {"no salt", withMac(content, {}, {})},
        {"no round", withMac(content, Bytes(8), Bytes{2, 1, 0})},
        {"less than a round", withMac(content, Bytes(8), Bytes{2, 1, 0xFF})},
        {"too many rounds", withMac(content, Bytes(8), Bytes{2, 4, 0, 0x98, 0x96, 0x81})},
        {"no content", withMac(sequence({der::oid(oid::data)}), Bytes(8), {})},
        {"no salt at all", withParts({sequence({sha1(), octets(Bytes(20))})})},
        {"no hash", withParts({sequence({sequence({}), octets(Bytes(20))}), octets(Bytes(8))})},
        {"no value", withParts({sequence({sha1()}), octets(Bytes(8))})},
    };
    for (const auto& [what, pfx] : damaged)
        EXPECT_EQ(codeOf(pfx), SIGIL_TK_PFX_MALFORMED) << what;
    const Bytes unknown = sequence({sequence({der::oid("1.2.3.4")}), octets(Bytes(20))});
    EXPECT_EQ(codeOf(withParts({unknown, octets(Bytes(8))})), SIGIL_TK_PFX_UNSUPPORTED) << "an unknown hash";
}

TEST_F(OddPkcs12, APasswordInAnOlderCharacterSetOpensWhatIsInside)
{
    const auto opens = [&](const std::string& written, const std::string& typed) {
        workshop().run(
            "openssl pkcs12 -export -in sign.pem -inkey sign.key.pem -nomac -keypbe AES-256-CBC -certpbe "
            "AES-256-CBC -out old.pfx -passout pass:" +
            written);
        try {
            return !readPkcs12(library, file("old.pfx"), typed, SIGIL_TK_PFX_WITHOUT_MAC).pairs.empty();
        } catch (const Error& error) {
            EXPECT_EQ(error.code(), SIGIL_TK_PFX_WRONG_PASSWORD);
            return false;
        }
    };
    EXPECT_TRUE(opens("비밀", "\xBA\xF1\xB9\xD0")) << "CP949";
    EXPECT_TRUE(opens("Äé", "\xC4\xE9")) << "Latin-1, which may be CP949 as well";
    EXPECT_TRUE(opens("ÿ", "\xFF")) << "Latin-1, which is no CP949";
    EXPECT_FALSE(opens("Äé", "\xC4\xE8"));
}

TEST_F(OddPkcs12, WithoutAKeyForSignaturesTheFirstPairIsTaken)
{
    const auto pairs = [&](std::initializer_list<View> bags) { return read(fileOf(bags)); };
    const Pkcs12Content alone = pairs({bareKeyBag("km"), certificateBag("km")});
    EXPECT_EQ(&signingPair(library, alone), &alone.pairs[0]);
    EXPECT_EQ(keyManagementPair(library, alone), nullptr);
    const Pkcs12Content both =
        pairs({bareKeyBag("km"), certificateBag("km"), bareKeyBag("sign"), certificateBag("sign")});
    EXPECT_EQ(signingPair(library, both).certificate, file("sign.crt"));
    EXPECT_EQ(keyManagementPair(library, both), &both.pairs[0]);
    const Pkcs12Content twice = pairs({bareKeyBag("sign"), certificateBag("sign"), certificateBag("sign")});
    EXPECT_EQ(twice.pairs.size(), 2U);
    EXPECT_EQ(keyManagementPair(library, twice), nullptr) << "both sign";
}

} // namespace odd_pkcs12
