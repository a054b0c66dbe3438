// From a certificate file to an entry: fields, filters, names, validity.

#include "tests/certlist/scripted.h"

#include "certlist/policy_table.h"

#include <algorithm>
#include <cstring>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

class Parsing : public Scripted {
protected:
    /** The only certificate of a new listing. */
    std::unique_ptr<tagCERTINFO> parsed(const fake::Fields& changes = {})
    {
        addNpki("a", changes);
        if (!clp)
            start();
        EXPECT_EQ(load(), 0);
        return entry();
    }
    /** Result of listing the store and the last record of the log. */
    std::pair<int, std::string> result()
    {
        const int rc = load();
        return {rc, lastLog()};
    }
};

TEST_F(Parsing, FillsEveryField)
{
    const auto info = parsed();
    EXPECT_STREQ(info->szVersion, "V3");
    EXPECT_STREQ(info->szSerialNum, "1001");
    EXPECT_STREQ(info->szSignAlg, "sha256WithRSAEncryption");
    EXPECT_STREQ(info->szSubjectDN, "cn=Hong,ou=personal,o=yessign,c=KR");
    EXPECT_STREQ(info->szUID, "Hong");
    EXPECT_STREQ(info->szPubKey, "30 82 01 0A");
    EXPECT_STREQ(info->szPubKeyAlg, "rsaEncryption");
    EXPECT_STREQ(info->szKeyLength, "2048 Bits");
    EXPECT_STREQ(info->szKeyUsage, "digitalSignature, nonRepudiation");
    EXPECT_STREQ(info->szCRLDP, "ldap://ds.example:389/ou=dp1");
    EXPECT_STREQ(info->szCertPolicy, "policy qualifiers");
    EXPECT_STREQ(info->szPolicyID, "1 2 410 200005 1 1 1");
    EXPECT_STREQ(info->szPolicyName, "personal");
    EXPECT_STREQ(info->szIssuerDN, "cn=yessignCA Class 1,ou=AccreditedCA,o=yessign,c=KR");
    EXPECT_STREQ(info->szIssuerCN, "yessignCA Class 1");
    EXPECT_STREQ(info->szIssuerName, "yessignCA Class 1");
    EXPECT_STREQ(info->szNotBefore, "2024-01-01 00:00:00");
    EXPECT_STREQ(info->szNotAfter, "2024-12-31 23:59:59");
    EXPECT_STREQ(info->szValidFrom, "2024-01-01");
    EXPECT_STREQ(info->szValidTo, "2024-12-31");
    EXPECT_STREQ(info->szSubjectAltName, "alternative name");
    EXPECT_STREQ(info->szAuthKeyID, "A1 A2");
    EXPECT_STREQ(info->szSubKeyID, "B1 B2");
    EXPECT_STREQ(info->szAIA, "http://ocsp.example");
    EXPECT_EQ(info->nValidStatus, 3);
    EXPECT_EQ(info->nExpired, 0);
    EXPECT_EQ(info->nRemainDays, 0);
    EXPECT_EQ(info->nStatusFlag, 0);
    EXPECT_EQ(info->nMediaType, 1);
    const std::string certificate(reinterpret_cast<char*>(info->bySignCert), info->nSignCertLen);
    EXPECT_EQ(certificate, fake::certificate());
    const std::string key(reinterpret_cast<char*>(info->byEncSignPriKey), info->nEncSignPriKeyLen);
    EXPECT_EQ(key, fake::encrypted(fake::key(), goodPassword));
    EXPECT_EQ(info->nSignPriKeyLen, 0);
    EXPECT_EQ(info->nKmCertLen, 0);
    EXPECT_EQ(info->nRandomLen, 0);
    EXPECT_STREQ(info->szPassword, "");
}

/** A toolkit call whose failure makes a certificate unreadable, and its name in the log. */
const std::pair<const char*, const char*> necessary[] = {
    {"HVTK_CERT_Load", "CertLoad()"},
    {"HVTK_CERT_GetSerialNum", "CertGetSerialNum()"},
    {"HVTK_CERT_GetSignatureAlgorithm", "CertGetSignatureAlgorithm()"},
    {"HVTK_CERT_GetSubjectName", "CertGetSubjectName()"},
    {"HVTK_CERT_GetUID", "CertGetUID()"},
    {"HVTK_CERT_GetPubKey", "CertGetPubKeyInfo()"},
    {"HVTK_CERT_GetPubKey2", "CertGetPubKeyInfo()"},
    {"HVTK_CERT_GetKeyUsage", "CertGetKeyUsage()"},
    {"HVTK_CERT_GetCRLDP", "CertGetCRLDP()"},
    {"HVTK_CERT_GetIssuerName", "CertGetIssuerName()"},
    {"HVTK_CERT_GetCertPolicy", "CertGetCertPolicy()"},
    {"HVTK_CERT_GetCertPolicy_PolicyID", "CertGetPolicyID()"},
    {"HVTK_CERT_GetAuthKeyID", "CertGetAuthKeyID()"},
    {"HVTK_CERT_GetSubKeyID", "CertGetSubKeyID()"},
    {"HVTK_CERT_GetValidity", "CertGetValidity()"},
};

TEST_F(Parsing, EveryTextIsAskedForInClearedRoom)
{
    addNpki("a");
    addNpki("b");
    start();
    std::vector<std::string> dirty;
    const auto checkRoom = [&](const doubles::Call& call, std::size_t argument, std::size_t size) {
        const char* room = call.pointer<char>(argument);
        if (std::any_of(room, room + size, [](char c) { return c != 0; }))
            dirty.push_back(call.symbol);
    };
    // Each fills all the room that it is offered, without a terminator.
    for (const char* text : {"SerialNum", "SignatureAlgorithm", "SubjectName", "UID", "KeyUsage", "CRLDP",
             "IssuerName", "CertPolicy", "CertPolicy_PolicyID", "AuthKeyID", "SubKeyID", "SubjectAltName", "AIA"})
        doubles::answer(std::string("HVTK_CERT_Get") + text, [&](const doubles::Call& call) {
            EXPECT_EQ(call.integer(0), 2048) << call.symbol;
            checkRoom(call, 1, 2048);
            std::memset(call.pointer<char>(1), 'x', 2048);
            return 0;
        });
    doubles::answer("HVTK_CERT_GetPubKey", [&](const doubles::Call& call) {
        EXPECT_EQ(call.integer(0), 2048);
        checkRoom(call, 2, 2048);
        std::memset(call.pointer<char>(2), 'k', 2048);
        return 0;
    });
    doubles::answer("HVTK_CERT_GetValidity", [&](const doubles::Call& call) {
        for (std::size_t date : {0, 1}) {
            checkRoom(call, date, 40);
            std::memset(call.pointer<char>(date), '9', 40);
        }
        return 0;
    });
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(dirty, std::vector<std::string>());
    EXPECT_EQ(entry(1)->szPubKey, std::string(2047, 'k'));
    EXPECT_EQ(entry(1)->szSerialNum, std::string(2047, 'x'));
    EXPECT_EQ(entry(1)->szNotBefore, std::string(39, '9'));
}

TEST_F(Parsing, EveryNecessaryCallThatFailsIsLoggedWithoutAnErrorName)
{
    addNpki("a");
    start();
    for (const auto& [symbol, callee] : necessary) {
        fake::install();
        doubles::answer(symbol, 77);
        EXPECT_EQ(result(),
            std::make_pair(
                1115, "CLoadDISK::ParsingCert() >> " + std::string(callee) + " : 77 (Msg : words of the toolkit)"))
            << symbol;
        EXPECT_EQ(doubles::callsOf("HVTK_CERT_Unload").size(), 1u) << symbol;
        EXPECT_EQ(doubles::liveByteStrings(), 0) << symbol;
    }
}

TEST_F(Parsing, FieldsThatMayBeMissing)
{
    const auto info = parsed({{"version", "absent"}, {"altName", "absent"}, {"access", "absent"}});
    EXPECT_STREQ(info->szVersion, "");
    EXPECT_STREQ(info->szSubjectAltName, "");
    EXPECT_STREQ(info->szAIA, "");
    EXPECT_TRUE(log().empty());
}

TEST_F(Parsing, TextsAreCutToTheirFields)
{
    const std::string endless(2047, 'x');
    const auto info = parsed({{"serial", endless}, {"uid", endless.substr(0, 1100)}});
    EXPECT_EQ(std::string(info->szSerialNum), endless);
    EXPECT_EQ(std::string(info->szUID), endless.substr(0, 1023));
}

TEST_F(Parsing, ToolkitsThatFillTheWholeBuffer)
{
    addNpki("a");
    start();
    doubles::answer("HVTK_CERT_GetUID", [](const doubles::Call& call) {
        std::fill_n(call.pointer<char>(1), call.integer(0), 'u'); // no room left for a terminator
        return 0;
    });
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(std::string(entry()->szUID), std::string(1023, 'u'));
}

TEST_F(Parsing, FilesThatDoNotFitTheRecordAreUnreadable)
{
    addNpki("exact");
    const fs::path exact = home / "NPKI/yessign/USER/exact";
    const std::string certificate = fake::certificate();
    writeFile(exact / "signCert.der", certificate + std::string(4096 - certificate.size(), '\n'));
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(entry()->nSignCertLen, 4096);
    writeFile(exact / "signCert.der", certificate + std::string(4097 - certificate.size(), '\n'));
    // The toolkit was not asked for the file, so the record has none of its words.
    EXPECT_EQ(result(), std::make_pair(1115, std::string("CLoadDISK::ParsingCert() >> MediaDiskReadFil() : 1122")));
    writeFile(exact / "signCert.der", certificate);
    writeFile(exact / "signPri.key", std::string(4097, 'k'));
    EXPECT_EQ(load(), 1115);
}

TEST_F(Parsing, KeyManagementFilesThatDoNotFitAreLeftOutAndLogged)
{
    const fs::path folder = addNpki("a");
    addKm(folder);
    start();
    const std::string record = "CLoadDISK::ParsingCert() >> MediaDiskReadFile() : 1122"
                               " (Msg : key-management file is no file or too large)";
    for (const char* name : {"kmCert.der", "kmPri.key"}) {
        addKm(folder);
        writeFile(folder / name, std::string(4097, 'k'));
        ASSERT_EQ(load(), 0);
        EXPECT_EQ(entry()->nKmCertLen > 0, std::string(name) == "kmPri.key");
        EXPECT_EQ(log(), (std::vector<std::string>{record, record})); // both passes
    }
    addKm(folder);
    fs::remove(folder / "kmPri.key"); // a missing one is no news
    ASSERT_EQ(load(), 0);
    EXPECT_TRUE(log().empty());
}

TEST_F(Parsing, FilesThatGrowWhileTheyAreRead)
{
    addNpki("a");
    start();
    doubles::answer("HVTK_MEDIA_DISK_ReadFile", doubles::fills(1, std::string(5000, 'g')));
    EXPECT_EQ(load(), 1115);
}

TEST_F(Parsing, EmptyCertificateFile)
{
    writeFile(addNpki("a") / "signCert.der", "");
    start();
    EXPECT_EQ(result(),
        std::make_pair(
            1115, std::string("CLoadDISK::ParsingCert() >> CertLoad() : 1001 (Msg : words of the toolkit)")));
}

TEST_F(Parsing, KeyManagementPairIsReadWhenItIsThere)
{
    const fs::path folder = addNpki("a");
    addKm(folder);
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_GT(entry()->nKmCertLen, 0);
    EXPECT_GT(entry()->nEncKmPriKeyLen, 0);
    fs::remove(folder / "kmPri.key"); // a read error of an optional pair is ignored
    ASSERT_EQ(load(), 0);
    EXPECT_GT(entry()->nKmCertLen, 0);
    EXPECT_EQ(entry()->nEncKmPriKeyLen, 0);
    writeFile(folder / "kmPri.key", std::string(4097, 'k')); // does not fit: as if it could not be read
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(entry()->nEncKmPriKeyLen, 0);
}

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
