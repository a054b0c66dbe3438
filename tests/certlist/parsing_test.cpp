// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// From a certificate file to an entry: its fields, and files that cannot be read.

#include "tests/certlist/parsing.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace fs = std::filesystem;

namespace {

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

TEST_F(Parsing, EachListingGoesByTheZoneOfItsTime)
{
    sigil::environment().now = [] { return timespec{1717243200, 0}; }; // noon of 1 June 2024 in Greenwich
    addNpki("a", {{"notAfter", "2024-06-01 18:00:00"}});
    start();
    for (const auto& [zone, state] : {std::pair("UTC", 4), std::pair("KST-9", 5), std::pair("UTC", 4)}) {
        setenv("TZ", zone, 1);
        EXPECT_EQ(load(), 0);
        EXPECT_EQ(entry()->nValidStatus, state) << zone;
    }
    unsetenv("TZ");
    tzset();
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

} // namespace
