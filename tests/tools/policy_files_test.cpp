// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The policy files as delivered, held against the rules of their loader: one policy a line, the OID in dotted form,
// "=", the name; every line ends with a line feed; fields of 30 and 60 bytes.
#include "tests/support/cp949.h"
#include "tests/support/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Policy {
    std::string oid;
    std::string name;
};

std::string contentOf(const std::string& file) { return readFile(SIGILDESK_LIBRARY_FOLDER "/" + file); }

std::vector<Policy> policiesOf(const std::string& file)
{
    std::vector<Policy> policies;
    std::istringstream lines(contentOf(file));
    for (std::string line; std::getline(lines, line);) {
        const auto equals = line.find('=');
        EXPECT_NE(equals, std::string::npos) << file << ": " << line;
        policies.push_back({line.substr(0, equals), line.substr(equals + 1)});
    }
    return policies;
}

std::vector<std::string> oidsOf(const std::string& file)
{
    std::vector<std::string> oids;
    for (const Policy& policy : policiesOf(file))
        oids.push_back(policy.oid);
    return oids;
}

class PolicyFile : public testing::TestWithParam<const char*> { };

TEST_P(PolicyFile, EndsEveryLineWithALineFeedAlone)
{
    const std::string content = contentOf(GetParam());
    ASSERT_FALSE(content.empty());
    EXPECT_EQ(content.back(), '\n');
    EXPECT_EQ(content.find('\r'), std::string::npos);
}

TEST_P(PolicyFile, HoldsOidsAndNamesThatFitTheirFields)
{
    for (const Policy& policy : policiesOf(GetParam())) {
        EXPECT_THAT(policy.oid, testing::MatchesRegex("[0-2](\\.[0-9]+)+"));
        EXPECT_LE(policy.oid.size(), 29u) << policy.oid;
        EXPECT_FALSE(policy.name.empty()) << policy.oid;
        EXPECT_LE(policy.name.size(), 59u) << policy.oid;
        EXPECT_NE(policy.name.front(), ' ') << policy.oid;
        EXPECT_NE(policy.name.back(), ' ') << policy.oid;
    }
}

TEST_P(PolicyFile, NamesEachPolicyOnce)
{
    const auto oids = oidsOf(GetParam());
    EXPECT_EQ(std::set<std::string>(oids.begin(), oids.end()).size(), oids.size());
}

INSTANTIATE_TEST_SUITE_P(Delivered, PolicyFile, testing::Values("Policy_KOR.conf", "Policy_ENG.conf"));

TEST(PolicyFiles, NameTheSamePoliciesInBothLanguages)
{
    EXPECT_EQ(oidsOf("Policy_KOR.conf"), oidsOf("Policy_ENG.conf"));
}

// A few of each authority: the general purpose certificates, and one that only this authority issues.
TEST(PolicyFiles, CoverEveryAuthority)
{
    EXPECT_THAT(oidsOf("Policy_KOR.conf"),
        testing::IsSupersetOf({"1.2.410.200005.1.1.1", "1.2.410.200005.1.1.6.8", "1.2.410.200004.5.1.1.5",
            "1.2.410.200004.5.1.1.9.2", "1.2.410.200004.5.2.1.2", "1.2.410.200004.5.2.1.5001",
            "1.2.410.200004.5.3.1.9", "1.2.410.200004.5.4.1.1", "1.2.410.200004.5.4.1.104",
            "1.2.410.200004.5.5.1.1", "1.2.410.200012.1.1.1", "1.2.410.200012.1.1.4", "1.2.410.100001.2.1.1",
            "1.2.410.100001.2.2.1", "1.2.410.100001.5.3.1.3"}));
}

TEST(PolicyFiles, HoldKoreanAsCp949AndEnglishAsAscii)
{
    const std::vector<Policy> korean = policiesOf("Policy_KOR.conf");
    EXPECT_EQ(utf8FromCp949(korean.front().name), "개인 범용");
    EXPECT_EQ(korean.front().name, "\xB0\xB3\xC0\xCE \xB9\xFC\xBF\xEB");
    for (const Policy& policy : policiesOf("Policy_ENG.conf"))
        EXPECT_THAT(policy.name, testing::Each(testing::AllOf(testing::Ge(' '), testing::Le('~'))));
}

} // namespace
