// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Object identifiers as texts, against OpenSSL's own.

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"

#include <gtest/gtest.h>
#include <openssl/err.h>
#include <openssl/objects.h>

#include <array>
#include <random>

namespace {

/** What OpenSSL makes of the content; empty when it refuses it. */
std::string openSslText(toolkit::View content)
{
    const toolkit::Bytes der = toolkit::der::element(toolkit::der::Oid, {content});
    const unsigned char* at = der.data();
    const toolkit::ObjectHandle object(d2i_ASN1_OBJECT(nullptr, &at, static_cast<long>(der.size())));
    std::array<char, 1024> text{};
    if (object)
        OBJ_obj2txt(text.data(), static_cast<int>(text.size()), object.get(), 1);
    ERR_clear_error();
    return text.data();
}

} // namespace

TEST(Oid, TextsAreThoseOfOpenSsl)
{
    std::mt19937 random(1);
    int common = 0;
    for (int i = 0; i < 30000; ++i) {
        toolkit::Bytes content(1 + random() % 12);
        for (unsigned char& octet : content) // large and small numbers, and the octet that must not begin one
            octet = static_cast<unsigned char>(random() % 8 == 0 ? 0x80 : random());
        if (random() % 4 != 0)
            content.back() &= 0x7F;
        const std::string expected = openSslText(content);
        const auto text = toolkit::commonOid(content);
        if (text) {
            EXPECT_EQ(*text, expected);
        }
        EXPECT_EQ(toolkit::der::oidText(content), expected);
        common += text ? 1 : 0;
    }
    EXPECT_GT(common, 3000);
}

TEST(Oid, NumbersOfAnySizeAreRead)
{
    const toolkit::Bytes content{0x2A, 0x81, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x00};
    EXPECT_FALSE(toolkit::commonOid(content));
    EXPECT_EQ(toolkit::der::oidText(content), "1.2.9223372036854775808");
    EXPECT_EQ(toolkit::der::oidText(toolkit::Bytes(300, 0x01)).size(), 2U * 301 - 1);
    EXPECT_FALSE(toolkit::commonOid({}));
}
