// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// DER elements in their only form, and object identifiers by number, against OpenSSL's own.

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/handles.h"

#include <gtest/gtest.h>
#include <openssl/err.h>
#include <openssl/objects.h>

#include <random>

namespace der = toolkit::der;
using toolkit::Bytes;

namespace {

/** An element of zeros with this many octets of length, of which some are more than it takes. */
Bytes element(std::size_t size, int octets)
{
    Bytes bytes{
        der::OctetString, static_cast<unsigned char>(octets == 0 ? size : 0x80U + static_cast<unsigned>(octets))};
    for (int octet = octets - 1; octet >= 0; --octet)
        bytes.push_back(static_cast<unsigned char>(size >> (8 * octet)));
    bytes.resize(bytes.size() + size);
    return bytes;
}

toolkit::ObjectHandle object(toolkit::View content)
{
    const Bytes whole = der::element(der::Oid, {content});
    const unsigned char* at = whole.data();
    toolkit::ObjectHandle found(d2i_ASN1_OBJECT(nullptr, &at, static_cast<long>(whole.size())));
    ERR_clear_error();
    return found;
}

} // namespace

TEST(ShortestElement, HasTheShortestLengthAndOneIdentifierOctet)
{
    for (const std::size_t size : {0U, 1U, 127U, 128U, 255U, 256U, 65535U, 65536U}) {
        const int fewest = size < 128 ? 0 : size < 256 ? 1 : size < 65536 ? 2 : 3;
        for (int octets = size < 128 ? 0 : fewest; octets <= 4; ++octets) {
            Bytes bytes = element(size, octets);
            const auto read = der::shortest(bytes);
            ASSERT_EQ(read.has_value(), octets == fewest) << size << " in " << octets;
            if (read) {
                EXPECT_EQ(read->content.size(), size);
                EXPECT_EQ(read->whole.size(), bytes.size());
            }
            bytes.pop_back();
            EXPECT_FALSE(der::shortest(bytes)) << "cut";
        }
    }
    EXPECT_FALSE(der::shortest({}));
    EXPECT_FALSE(der::shortest(Bytes{0x30, 0x80, 0x00, 0x00})) << "indefinite";
    EXPECT_FALSE(der::shortest(Bytes{0x1F, 0x20, 0x00})) << "two identifier octets";
    EXPECT_FALSE(der::shortest(Bytes{0x30, 0x85, 0x01, 0x00, 0x00, 0x00, 0x00})) << "more than memory holds";
}

TEST(Oid, IsOneWhereOpenSslTakesIt)
{
    std::mt19937 random(2);
    int taken = 0;
    for (int i = 0; i < 20000; ++i) {
        Bytes content(random() % 8);
        for (unsigned char& octet : content)
            octet = static_cast<unsigned char>(random() % 3 == 0 ? 0x80 : random());
        EXPECT_EQ(der::isOid(content), object(content) != nullptr);
        taken += der::isOid(content) ? 1 : 0;
    }
    EXPECT_GT(taken, 1000);
    EXPECT_FALSE(der::isOid(Bytes(65, 0x01))) << "longer than any in use";
}

TEST(Oid, HasTheNumberThatOpenSslGivesIt)
{
    for (int nid = 1; nid < 1200; ++nid) {
        const toolkit::View content = OBJ_nid2obj(nid) ? der::oidContent(nid) : toolkit::View();
        if (!content.empty()) {
            EXPECT_EQ(der::nidOf(content), OBJ_obj2nid(object(content).get()));
        }
    }
    ERR_clear_error();
    EXPECT_EQ(der::nidOf(Bytes{0x2A, 0x83, 0x1A, 0x8C, 0x9A, 0x44, 0x01}), NID_undef);
    EXPECT_EQ(der::nidOf({}), NID_undef);
}
