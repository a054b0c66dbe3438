// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What an entry shows beside its fields: names of policies and issuers, and whether it is valid.

#include "tests/certlist/parsing.h"

#include "certlist/policy_table.h"

namespace fs = std::filesystem;

namespace {

/** The name that @p table has for @p oid, "(none)" when it has none. */
std::string nameIn(const sigil::PolicyTable& table, std::string_view oid)
{
    const std::string* name = table.nameOf(oid);
    return name ? *name : "(none)";
}

TEST(PolicyFile, Lines)
{
    sigil::PolicyTable table;
    table.build(
        "1.2=first\n1.2.3=one=two\nno equals sign\n 1.4 = spaced \n1.2=again\n=nobody\n1.5=lost: no line feed");
    const std::pair<const char*, const char*> names[] = {
        {"1 2 3", "one=two"},
        {"1.2.3", "(none)"}, // kept with blanks
        {" 1 4 ", " spaced "},
        {"1 4", "(none)"}, // nothing is trimmed
        {"1 2", "again"},  // the last of equal OIDs
        {"", "nobody"},
        {"no equals sign", "(none)"},
        {"1 5", "(none)"},
    };
    for (const auto& [oid, name] : names)
        EXPECT_EQ(nameIn(table, oid), name) << oid;
    table.build("1.1=new\n");
    EXPECT_EQ(nameIn(table, "1 1"), "new");
    EXPECT_EQ(nameIn(table, "1 2 3"), "(none)") << "a table that is built again forgets the old one";
}

TEST(PolicyFile, OidsAreComparedIgnoringCase)
{
    sigil::PolicyTable table;
    table.build("Any.Policy=first\nANY.POLICY=last\n");
    EXPECT_EQ(nameIn(table, "any policy"), "last");
    EXPECT_EQ(nameIn(table, "any policies"), "(none)");
}

TEST(PolicyFile, LongPartsAreCut)
{
    sigil::PolicyTable table;
    table.build(std::string(40, '1') + "=" + std::string(80, 'n') + "\n");
    EXPECT_EQ(nameIn(table, std::string(29, '1')), std::string(59, 'n'));
    EXPECT_EQ(nameIn(table, std::string(40, '1')), "(none)");
}

TEST_F(Parsing, PolicyOfALastLineWithoutALineFeedShowsItsOid)
{
    writeFile(library / "Policy_KOR.conf", "1.1=x\n1.2.410.200005.1.1.1=lost");
    EXPECT_STREQ(parsed()->szPolicyName, "1 2 410 200005 1 1 1");
}

TEST_F(Parsing, TradeSignCertificatesKeepTheSecondOfTheirPolicies)
{
    const auto info = parsed({{"issuer", "cn=TradeSignCA,ou=AccreditedCA,o=TradeSign,c=KR"},
        {"policyId", "1 2 3, 1 2 410 200005 1 1 1"}});
    EXPECT_STREQ(info->szPolicyID, "1 2 410 200005 1 1 1");
    EXPECT_STREQ(info->szPolicyName, "personal");
}

TEST_F(Parsing, IssuerNameIsThatOfTheLastSection)
{
    writeFile(library / "Issuer_KOR.conf",
        "[Info_count]\nIssuer_Info=3\n[Issuer_Info1]\ncn=YESSIGNCA class 1\nname=first\n"
        "[Issuer_Info2]\ncn=yessignCA Class 1\nname=second\n[Issuer_Info3]\ncn=other\nname=third\n");
    const auto info = parsed();
    EXPECT_STREQ(info->szIssuerCN, "yessignCA Class 1");
    EXPECT_STREQ(info->szIssuerName, "second");
}

TEST_F(Parsing, IssuerCountBelowOneIsNoTable)
{
    writeFile(library / "Issuer_KOR.conf", "[Info_count]\nIssuer_Info=0\n[Issuer_Info1]\ncn=a\nname=b\n");
    EXPECT_STREQ(parsed()->szIssuerName, "yessignCA Class 1");
}

TEST_F(Parsing, IssuerWithoutACommonName)
{
    const auto info = parsed({{"issuer", "o=yessign,c=KR"}});
    EXPECT_STREQ(info->szIssuerCN, "");
    EXPECT_STREQ(info->szIssuerName, "");
}

TEST_F(Parsing, ValidityStates)
{
    struct Row {
        const char *notAfter, *policy;
        bool government;
        int state, days, expired;
    };
    const char personal[] = "1 2 410 200005 1 1 1";
    const Row rows[] = {
        {"2024-12-31 23:59:59", personal, false, 3, 0, 0},
        {"2024-06-02 10:00:00", personal, false, 4, 1, 0},                // tomorrow
        {"2024-05-31 10:00:00", personal, false, 5, 0, 1},                // yesterday
        {"2024-09-05 10:00:00", "1 2 410 100001 5 3 1 1", true, 3, 0, 0}, // warned 90 days ahead
        {"2024-09-05 10:00:00", "1 2 410 100001 2 2 1", true, 4, 96, 0},  // 100 days
    };
    for (const Row& row : rows) {
        const fake::Fields changes{{"notAfter", row.notAfter}, {"policyId", row.policy}};
        fs::remove_all(home / "NPKI");
        fs::remove_all(home / "GPKI");
        if (row.government)
            addGpki("g", changes);
        else
            addNpki("n", changes);
        if (!clp)
            start();
        ASSERT_EQ(load(), 0) << row.notAfter;
        EXPECT_EQ(entry()->nValidStatus, row.state) << row.notAfter;
        EXPECT_EQ(entry()->nRemainDays, row.days) << row.notAfter;
        EXPECT_EQ(entry()->nExpired, row.expired) << row.notAfter;
    }
}

} // namespace
