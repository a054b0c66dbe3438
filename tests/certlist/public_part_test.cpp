// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What certificates and keys tell of the key that they have in common.

#include "certlist/public_part.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using sigil::publicPartOfCertificate;
using sigil::publicPartOfKey;
using namespace std::string_literals;

std::string element(int tag, const std::string& content)
{
    std::string length(1, static_cast<char>(content.size()));
    if (content.size() >= 128)
        length = "\x82"s + static_cast<char>(content.size() >> 8) + static_cast<char>(content.size());
    return static_cast<char>(tag) + length + content;
}
std::string sequence(const std::string& content) { return element(0x30, content); }
std::string integer(const std::string& number) { return element(0x02, number); }

/** A certificate of the parts that count. */
std::string certificate(const std::string& publicKey, const std::string& version = element(0xA0, integer("\x02")))
{
    const std::string some = sequence("x");
    const std::string subjectKey = sequence(some + element(0x03, "\0"s + publicKey));
    return sequence(sequence(version + integer("1") + some + some + some + some + subjectKey));
}
std::string keyInfo(const std::string& key)
{
    return sequence(integer("\0"s) + sequence("algorithm") + element(0x04, key));
}

const std::string modulus(256, '\xB7');
const std::string rsaPublic = sequence(integer("\0"s + modulus) + integer("\1\0\1"s));
const std::string rsaPrivate = keyInfo(sequence(integer("\0"s) + integer("\0"s + modulus) + integer("\1\0\1"s)));
const std::string x(32, 'x');
const std::string y(32, 'y');

std::string curvePrivate(const std::string& parameters, const std::string& point)
{
    const std::string told = point.empty() ? "" : element(0xA1, element(0x03, "\0"s + point));
    return keyInfo(sequence(integer("\1") + element(0x04, "secret") + parameters + told));
}

TEST(PublicPart, OfRsa)
{
    EXPECT_EQ(publicPartOfCertificate(certificate(rsaPublic)), modulus);
    EXPECT_EQ(publicPartOfCertificate(certificate(rsaPublic, "")), modulus); // of the first version
    EXPECT_EQ(publicPartOfKey(rsaPrivate), modulus);
}

TEST(PublicPart, OfACurve)
{
    EXPECT_EQ(publicPartOfCertificate(certificate("\4" + x + y)), x);
    EXPECT_EQ(publicPartOfCertificate(certificate("\2" + x)), x);
    EXPECT_EQ(publicPartOfCertificate(certificate("\3" + x)), x);
    const std::string curve = element(0xA0, "curve");
    EXPECT_EQ(publicPartOfKey(curvePrivate(curve, "\4" + x + y)), x);
    EXPECT_EQ(publicPartOfKey(curvePrivate("", "\2" + x)), x);
    EXPECT_EQ(publicPartOfKey(curvePrivate(curve, "")), "");
}

TEST(PublicPart, OfWhatIsNoSuchThing)
{
    EXPECT_EQ(publicPartOfKey(keyInfo(integer("a number alone"))), "");
    for (const std::string& bytes : {""s, "text"s, "\x30"s, "\x30\x85\1\1\1\1\1"s, "\x30\x84\xff\xff\xff\xff"s}) {
        EXPECT_EQ(publicPartOfCertificate(bytes), "");
        EXPECT_EQ(publicPartOfKey(bytes), "");
    }
}

TEST(PublicPart, OfBytesThatWereCutOrDamaged)
{
    for (const std::string& whole : {certificate(rsaPublic), certificate("\4" + x + y), rsaPrivate}) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string cut = whole.substr(0, length);
            EXPECT_EQ(publicPartOfCertificate(cut), "") << length;
            EXPECT_EQ(publicPartOfKey(cut), "") << length;
        }
        for (std::size_t i = 0; i < whole.size() * 256; ++i) { // nothing is read outside of the bytes
            std::string damaged = whole;
            damaged[i / 256] = static_cast<char>(i % 256);
            EXPECT_LE(publicPartOfCertificate(damaged).size(), damaged.size());
            EXPECT_LE(publicPartOfKey(damaged).size(), damaged.size());
        }
    }
}

} // namespace
