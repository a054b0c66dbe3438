// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Which certificates the caller's options leave in the list.

#include "tests/certlist/parsing.h"

#include "certlist/policy_table.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

TEST_F(Parsing, TheFirstFaultIsTheOneThatIsLogged)
{
    addNpki("a", {{"serial", "1"}, {"policyId", "1 2 3"}});
    start();
    std::snprintf(options.szSerialNum, sizeof options.szSerialNum, "%s", "2");
    setOptions();
    doubles::answer("HVTK_CERT_GetUID", 77);
    EXPECT_EQ(result().second,
        "CLoadDISK::ParsingCert() - ERR_PASS >> Check SerialNumber pass : 1502 (Msg : Check SerialNumber pass)");
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "cn=other");
    setOptions();
    EXPECT_EQ(result().second, "CLoadDISK::ParsingCert() - ERR_PASS >> DN Check pass : 1502 (Msg : DN Check pass)");
    fake::install();
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "cn=Hong,ou=personal,o=yessign,c=KR");
    std::snprintf(options.szSerialNum, sizeof options.szSerialNum, "%s", "1");
    std::snprintf(options.szPolicyIDs, sizeof options.szPolicyIDs, "%s", "9 9|");
    setOptions();
    doubles::answer("HVTK_CERT_GetAuthKeyID", 77);
    EXPECT_EQ(result().second, "CLoadDISK::ParsingCert() - ERR_PASS >> CheckPolicyID() check pass : 1502");
}

TEST_F(Parsing, PairsOfTypeTwoNeedAKeyManagementPair)
{
    addNpki("alone", {{"subject", "cn=alone"}});
    addKm(addNpki("pair", {{"subject", "cn=pair"}}, "SignKorea"));
    const fs::path broken = addNpki("broken", {{"subject", "cn=broken"}}, "TradeSign");
    addKm(broken);
    fs::remove(broken / "kmPri.key"); // its path was recorded, and reading it fails
    addGpki("g", {{"subject", "cn=government"}});
    addGpki("k", {{"subject", "cn=key without its certificate"}});
    writeFile(home / "GPKI/Certificate/class2/k_env.key", fake::encrypted("KEY(K1)", goodPassword));
    options.nKeyPairType = 2;
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=pair"});
    EXPECT_TRUE(log().empty());
}

TEST_F(Parsing, SubjectFilterComparesUtf8IgnoringCase)
{
    addNpki("a", {{"subject", "cn=\xb0\xa1,o=yessign"}}); // a Hangul syllable in CP949
    addNpki("b", {{"subject", "cn=other"}}, "SignKorea");
    start();
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "CN=\xea\xb0\x80,O=YesSign");
    setOptions();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=\xb0\xa1,o=yessign"});
    EXPECT_EQ(lastLog(), "CLoadDISK::ParsingCert() - ERR_PASS >> DN Check pass : 1502 (Msg : DN Check pass)");
}

TEST_F(Parsing, SubjectThatIsNoKoreanTextPassesNoFilter)
{
    addNpki("a", {{"subject", "cn=\xca\xa1"}});
    start();
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "cn=\xca\xa1");
    setOptions();
    EXPECT_EQ(load(), 1115);
}

TEST_F(Parsing, SerialFilterIgnoresCase)
{
    addNpki("a", {{"serial", "0aBc"}});
    addNpki("b", {{"serial", "0abd"}}, "SignKorea");
    start();
    std::snprintf(options.szSerialNum, sizeof options.szSerialNum, "%s", "0ABC");
    setOptions();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(count(), 1);
    EXPECT_STREQ(entry()->szSerialNum, "0aBc");
    EXPECT_EQ(lastLog(),
        "CLoadDISK::ParsingCert() - ERR_PASS >> Check SerialNumber pass : 1502 (Msg : Check SerialNumber pass)");
}

TEST_F(Parsing, EmptyOptionTextsKeepTheEarlierChoice)
{
    addNpki("a", {{"serial", "1"}, {"subject", "cn=one"}});
    addNpki("b", {{"serial", "2"}, {"subject", "cn=two"}}, "SignKorea");
    start();
    std::snprintf(options.szSerialNum, sizeof options.szSerialNum, "%s", "2");
    setOptions();
    options.szSerialNum[0] = '\0';
    setOptions();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=two"});
}

TEST_F(Parsing, OptionTextsWithoutATerminator)
{
    addNpki("a");
    std::fill(std::begin(options.szSerialNum), std::end(options.szSerialNum), '1');
    std::fill(std::begin(options.szSubjectDN), std::end(options.szSubjectDN), '1');
    std::fill(std::begin(options.szPolicyIDs), std::end(options.szPolicyIDs), '1');
    std::fill(std::begin(options.szOption), std::end(options.szOption), '1');
    start();
    EXPECT_EQ(load(), 1115);
}

TEST_F(Parsing, ASerialFilterKeepsItsFirst1023Characters)
{
    addNpki("a", {{"serial", std::string(1023, '1')}});
    start();
    std::fill(std::begin(options.szSerialNum), std::end(options.szSerialNum) - 1, '1');
    setOptions();
    EXPECT_EQ(load(), 0);
}

TEST_F(Parsing, PolicyFilter)
{
    addNpki("a", {{"subject", "cn=a"}, {"policyId", "1 2 3"}});
    addNpki("b", {{"subject", "cn=b"}, {"policyId", "1 2 4"}}, "SignKorea");
    start();
    std::snprintf(options.szPolicyIDs, sizeof options.szPolicyIDs, "%s", "9 9|1 2 4|");
    setOptions();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=b"});
    EXPECT_EQ(lastLog(), "CLoadDISK::ParsingCert() - ERR_PASS >> CheckPolicyID() check pass : 1502");
}

TEST_F(Parsing, PolicyFilterWithoutABarIsNone)
{
    addNpki("a", {{"policyId", "7 7"}});
    std::snprintf(options.szPolicyIDs, sizeof options.szPolicyIDs, "%s", "1 2 410 100001 5 3");
    start();
    EXPECT_EQ(load(), 0);
}

// The first choice of policies stays: later ones only change how many of them count.
TEST_F(Parsing, PolicyFilterIsFilledOnlyOnce)
{
    addNpki("a", {{"subject", "cn=a"}, {"policyId", "1 1"}});
    addNpki("b", {{"subject", "cn=b"}, {"policyId", "2 2"}}, "SignKorea");
    addNpki("c", {{"subject", "cn=c"}, {"policyId", "3 3"}}, "TradeSign");
    start();
    const std::pair<const char*, Names> choices[] = {{"1 1|2 2|", {"cn=a", "cn=b"}}, {"3 3|", {"cn=a"}},
        {"3 3|3 3|3 3|", {"cn=a", "cn=b"}}, {"no bar", {"cn=a", "cn=b", "cn=c"}}};
    for (const auto& [choice, names] : choices) {
        std::snprintf(options.szPolicyIDs, sizeof options.szPolicyIDs, "%s", choice);
        setOptions();
        ASSERT_EQ(load(), 0) << choice;
        EXPECT_EQ(subjects(), names) << choice;
    }
}

TEST(PolicyFilterSyntax, Items)
{
    const std::pair<const char*, int> lists[] = {
        {"", 0}, {"1 2", 0}, {"1 2|", 1}, {"1 2|3", 1}, {"1 2|3 4|", 2}, {"|1 2|", 1}, {"1||2|", 3}};
    for (const auto& [list, items] : lists)
        EXPECT_EQ(sigil::PolicyFilter().ParsingPolicyIDS(list, false), items) << list;
}

TEST(PolicyFilterSyntax, ItemsAreCutAt39Bytes)
{
    sigil::PolicyFilter filter;
    filter.choose(std::string(50, '1') + "|");
    EXPECT_TRUE(filter.accepts(Text(std::string(39, '1'))));
    EXPECT_FALSE(filter.accepts(Text(std::string(50, '1'))));
}

TEST_F(Parsing, ExpiredCertificatesAreLeftOutOnRequest)
{
    addNpki("old", {{"subject", "cn=old"}, {"notAfter", "2024-05-31 10:00:00"}});
    addNpki("tomorrow", {{"subject", "cn=tomorrow"}, {"notAfter", "2024-06-02 10:00:00"}}, "SignKorea");
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(count(), 2);
    options.bExcludeExpired = 1;
    setOptions();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=tomorrow"});
    EXPECT_EQ(entry()->nValidStatus, 4);
    EXPECT_TRUE(log().empty());
}

} // namespace
