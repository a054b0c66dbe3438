// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What is told from bytes that should be a certificate.

#include "doctor/certificate_damage.h"
#include "tests/doctor/der.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using sigil::Content;
using sigil::contentOf;
using sigil::damagedPlace;

const std::string whole("\x30\x06\x02\x01\x05\x04\x01\x41", 8);

TEST(Damage, WholeElementsHaveNone) { EXPECT_FALSE(damagedPlace(whole)); }

TEST(Damage, IsFoundAtTheElementThatDoesNotFit)
{
    std::string bytes = whole;
    bytes[6] = '\x09';
    const auto place = damagedPlace(bytes);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->offset, 5U);
    EXPECT_EQ(place->claimed, 9U);
    EXPECT_EQ(place->left, 1U);
}

TEST(Damage, IsFoundWhereTheFileEnds)
{
    const auto place = damagedPlace(whole.substr(0, 6));
    ASSERT_TRUE(place);
    EXPECT_EQ(place->offset, 0U);
    EXPECT_EQ(place->claimed, 6U);
    EXPECT_EQ(place->left, 4U);
    EXPECT_TRUE(place->cutShort());
}

TEST(Damage, IsFoundBehindTheEnd)
{
    const auto place = damagedPlace(whole + "xyz");
    ASSERT_TRUE(place);
    EXPECT_EQ(place->offset, whole.size());
    EXPECT_EQ(place->left, 3U);
    EXPECT_TRUE(place->behindTheEnd);
}

TEST(Damage, OfAHeadThatIsNotWhole)
{
    for (const std::string bytes : {"", "\x30", "\x30\x82\x01", "\x30\x80", "\x30\x89"}) {
        const auto place = damagedPlace(bytes);
        ASSERT_TRUE(place) << bytes.size();
        EXPECT_EQ(place->offset, 0U);
        EXPECT_EQ(place->claimed, 0U);
    }
}

TEST(Damage, OfAHeadThatIsNotWholeInside)
{
    const auto place = damagedPlace(std::string("\x30\x04\x02\x01\x05\x30", 6));
    ASSERT_TRUE(place);
    EXPECT_EQ(place->offset, 5U);
    EXPECT_EQ(place->claimed, 0U);
    EXPECT_EQ(place->left, 1U);
    EXPECT_FALSE(place->cutShort());
}

/** Damage within this many elements. */
std::string damagedWithin(int elements)
{
    std::string bytes("\x02\x05", 2);
    for (int i = 0; i < elements; ++i)
        bytes = derSequence(bytes);
    return bytes;
}

TEST(Damage, IsLookedForSixtyFourElementsDeep)
{
    EXPECT_TRUE(damagedPlace(damagedWithin(64)));
    EXPECT_FALSE(damagedPlace(damagedWithin(65)));
}

TEST(Damage, IsNotFollowedWithoutEnd)
{
    std::string bytes;
    for (int i = 0; i < 60; ++i)
        bytes = std::string("\x30", 1) + static_cast<char>(bytes.size()) + bytes;
    EXPECT_FALSE(damagedPlace(bytes));
    EXPECT_TRUE(damagedPlace(std::string(4096, '\x30')));
}

TEST(Content, OfNoCertificate)
{
    EXPECT_EQ(contentOf(""), Content::Empty);
    EXPECT_EQ(contentOf(std::string(10, '\0')), Content::Zeros);
    EXPECT_EQ(contentOf("<html>"), Content::Text);
    EXPECT_EQ(contentOf("0 and more text"), Content::Text);
    EXPECT_EQ(contentOf("-----BEGIN CERTIFICATE-----\n"), Content::Certificate);
    EXPECT_EQ(contentOf("-----BEGIN CMS-----\n"), Content::Pem);
    EXPECT_EQ(contentOf("\x31\x02\x05"), Content::Other);
    EXPECT_EQ(contentOf(whole), Content::Other);
    EXPECT_EQ(contentOf("one line\r\n\tand another\n"), Content::Text);
    EXPECT_EQ(contentOf("one line\aand another"), Content::Other);
}

TEST(Content, AsItsOuterElementsTell)
{
    const std::string integer("\x02\x01\x00", 3);
    const std::string oid("\x06\x01\x2A", 3);
    const std::string octets("\x04\x01x", 3);
    const std::string empty = derSequence("");
    const std::string utcTime = der(0x17, "200101000000Z");
    const std::string generalizedTime = der(0x18, "20500101000000Z");
    const auto isSigned = [](const std::string& what) { return derSequence(derSequence(what) + derSequence("")); };
    const std::pair<std::string, Content> rows[] = {
        {empty, Content::Other},
        {derSequence(derSequence(oid) + octets), Content::EncryptedKey},
        {derSequence(derSequence(integer) + octets), Content::Other},
        {derSequence(integer + empty + octets), Content::PlainKey},
        {derSequence(integer + integer + integer), Content::PlainKey},
        {derSequence(integer + empty), Content::Pkcs12},
        {derSequence(oid + octets), Content::Message},
        {isSigned(integer + empty + empty + der(0xA0, "")), Content::Request},
        {isSigned(integer + empty + empty + utcTime), Content::RevocationList},
        {isSigned(empty + empty + generalizedTime), Content::RevocationList},
        {isSigned(empty + empty), Content::Certificate},
        {isSigned(""), Content::Certificate},
    };
    for (const auto& [bytes, content] : rows)
        EXPECT_EQ(contentOf(bytes), content) << &bytes - &rows[0].first;
}

} // namespace
