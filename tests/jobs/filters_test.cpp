// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Which certificates somebody means, however it is written.

#include "jobs/filters.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace {

constexpr std::time_t day = 24L * 60 * 60;

struct Written {
    const char* text;
    bool meant;
};

host::Certificate holder()
{
    host::Certificate certificate;
    certificate.name = "Hong Gildong";
    certificate.subject = "cn=Hong Gildong,ou=people,o=Some CA,c=KR";
    certificate.issuer = "cn=Some CA Class 1,o=Some CA,c=KR";
    certificate.issuerName = "섬씨에이";
    certificate.serial = "00 1A 2b";
    certificate.policy = "1.2.410.1, 1.2.410.2\n1.2.410.3";
    return certificate;
}

} // namespace

TEST(ASerial, IsComparedByItsDigits)
{
    for (const Written& row :
        {Written{"1a2b", true}, Written{"1A:2B", true}, Written{"0x1a2b", true}, Written{"0X001A2B", true},
            Written{"1a 2b", true}, Written{"01a02b", false}, Written{"1a2", false}, Written{"", false}})
        EXPECT_EQ(host::hasSerial(holder(), row.text), row.meant) << row.text;
}

TEST(ASubject, IsComparedWithoutCaseAndWithoutBlanksBehindCommas)
{
    for (const Written& row : {Written{"CN=Hong Gildong, OU=people, O=Some CA,  C=KR", true},
             Written{" cn=hong gildong,ou=people,o=some ca,c=kr", true},
             Written{"cn=HongGildong,ou=people,o=Some CA,c=KR", false}, Written{"cn=Hong Gildong", false}})
        EXPECT_EQ(host::hasSubject(holder(), row.text), row.meant) << row.text;
}

TEST(AName, IsComparedWithoutCase)
{
    EXPECT_TRUE(host::isNamed(holder(), "hong gildong"));
    EXPECT_FALSE(host::isNamed(holder(), "hong"));
}

TEST(AnIssuer, IsMeantByAPartOfItsNames)
{
    for (const Written& row : {Written{"some ca class", true}, Written{"씨에", true}, Written{"another", false}})
        EXPECT_EQ(host::isFromIssuer(holder(), row.text), row.meant) << row.text;
}

TEST(APolicy, IsOneOfThoseOfTheCertificate)
{
    for (const Written& row : {Written{"1.2.410.1", true}, Written{"1 2 410 3", true}, Written{"1.2.410", false},
             Written{"1.2.410.4", false}, Written{"", false}})
        EXPECT_EQ(host::hasPolicy(holder(), row.text), row.meant) << row.text;
}

TEST(TheTime, DecidesWhetherACertificateIsValidAndHowLong)
{
    const std::time_t now = std::time(nullptr);
    host::Certificate certificate = holder();
    certificate.from = now - day;
    certificate.to = now + 10 * day;
    EXPECT_TRUE(host::isValidNow(certificate));
    EXPECT_TRUE(host::endsWithin(certificate, 11));
    EXPECT_FALSE(host::endsWithin(certificate, 9));
    certificate.from = now + day;
    EXPECT_FALSE(host::isValidNow(certificate)) << "not yet";
    certificate.from = now - day;
    certificate.expired = true;
    EXPECT_FALSE(host::isValidNow(certificate));
    EXPECT_FALSE(host::endsWithin(certificate, 11)) << "it has ended";
}
