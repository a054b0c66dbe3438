// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificates handed over in memory.

#include "tests/certlist/scripted.h"

#include "certlist/load_memory.h"

#include <sigildesk/handles.h>

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <tuple>
#include <utility>

namespace {

class Memory : public Scripted {
protected:
    void SetUp() override
    {
        start();
        ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    }
    int take(const std::string& cert, const std::string& key = fake::key(), const std::string& kmCert = {},
        const std::string& kmKey = {})
    {
        return CLP_LoadMemoryCert(clp, Text(cert), int(cert.size()), Text(key), int(key.size()), Text(kmCert),
            int(kmCert.size()), Text(kmKey), int(kmKey.size()));
    }
};

TEST_F(Memory, TakesAllFourParts)
{
    ASSERT_EQ(take(fake::certificate(), fake::key(), "km certificate", "km key"), 0);
    ASSERT_EQ(count(), 1);
    const auto info = entry();
    EXPECT_EQ(std::string(reinterpret_cast<char*>(info->bySignCert), info->nSignCertLen), fake::certificate());
    EXPECT_EQ(std::string(reinterpret_cast<char*>(info->bySignPriKey), info->nSignPriKeyLen), fake::key());
    EXPECT_EQ(std::string(reinterpret_cast<char*>(info->byKmCert), info->nKmCertLen), "km certificate");
    EXPECT_EQ(std::string(reinterpret_cast<char*>(info->byKmPriKey), info->nKmPriKeyLen), "km key");
    EXPECT_EQ(info->nEncSignPriKeyLen, 0);
    EXPECT_EQ(info->nPKIType, 2); // by the subject's organisation
    EXPECT_EQ(info->nMediaType, 6);
    EXPECT_STREQ(info->szPolicyName, "personal");
    EXPECT_STREQ(info->szSignCertPath, "");
    EXPECT_STREQ(entry(17)->szUID, "Hong"); // whatever the index
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Memory, GoesByTheZoneOfItsTime)
{
    sigil::environment().now = [] { return timespec{1717243200, 0}; }; // noon of 1 June 2024 in Greenwich
    for (const auto& [zone, state] : {std::pair("UTC", 4), std::pair("KST-9", 5)}) {
        setenv("TZ", zone, 1);
        EXPECT_EQ(take(fake::certificate({{"notAfter", "2024-06-01 18:00:00"}})), 0);
        EXPECT_EQ(entry()->nValidStatus, state) << zone;
    }
    unsetenv("TZ");
    tzset();
}

TEST_F(Memory, FamilyComesFromTheOrganisation)
{
    const std::pair<const char*, int> organisations[] = {
        {"Government of Korea", 1}, {"KICA", 2}, {"Ministry of National Defense", 4}, {"Somebody else", 8}};
    for (const auto& [organisation, family] : organisations) {
        ASSERT_EQ(take(fake::certificate({{"subject", "cn=x,o=" + std::string(organisation) + ",c=KR"}})), 0);
        EXPECT_EQ(entry()->nPKIType, family);
    }
}

// Silently: the caller learns it from the count alone.
TEST_F(Memory, FamilyThatIsNotWantedIsRefusedSilently)
{
    ASSERT_EQ(take(fake::certificate()), 0);
    EXPECT_EQ(count(), 1);
    options.nPKITypes = 1;
    setOptions();
    EXPECT_EQ(take(fake::certificate()), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(lastLog(), "CLoadDISK::ParsingCert() - not include Type >> Check DN pass : 1502");
    // The family is looked at before the filters.
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "cn=other");
    setOptions();
    EXPECT_EQ(take(fake::certificate()), 0);
    EXPECT_EQ(lastLog(), "CLoadDISK::ParsingCert() - not include Type >> Check DN pass : 1502");
}

TEST_F(Memory, Filters)
{
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "cn=other");
    setOptions();
    EXPECT_EQ(take(fake::certificate()), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(lastLog(), "CLoadMemory::ParsingCert() - ERR_PASS >> DN Check pass : 1502 (Msg : DN Check pass)");
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "CN=Hong,ou=personal,o=yessign,c=KR");
    std::snprintf(options.szSerialNum, sizeof options.szSerialNum, "%s", "9");
    setOptions();
    EXPECT_EQ(take(fake::certificate()), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(lastLog(),
        "CLoadDISK::ParsingCert() - ERR_PASS >> Check SerialNumber pass : 1502 (Msg : Check SerialNumber pass)");
    std::snprintf(options.szSerialNum, sizeof options.szSerialNum, "%s", "1001");
    std::snprintf(options.szPolicyIDs, sizeof options.szPolicyIDs, "%s", "1 2|");
    setOptions();
    EXPECT_EQ(take(fake::certificate()), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(lastLog(), "CLoadMemory::ParsingCert() - ERR_PASS >> CheckPolicyID() check pass : 1502");
}

TEST_F(Memory, UnreadableCertificateIsRefusedSilentlyAndLogged)
{
    doubles::answer("HVTK_CERT_GetKeyUsage", 77);
    EXPECT_EQ(take(fake::certificate()), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(lastLog(),
        "CLoadMemory::ParsingCert() - ERR_PARSINGCERT >> CertGetKeyUsage() : 77 (Msg : words of the toolkit)");
    EXPECT_EQ(doubles::callsOf("HVTK_CERT_Unload").size(), 1u);
}

TEST_F(Memory, KeyManagementPairsAreNeverServed)
{
    ASSERT_EQ(take(fake::certificate()), 0);
    ASSERT_EQ(count(), 1);
    options.nKeyPairType = 2;
    setOptions();
    EXPECT_EQ(take(fake::certificate()), 1117);
    EXPECT_EQ(take(fake::certificate(), fake::key(), "km certificate", "km key"), 1117);
    EXPECT_EQ(lastLog(), "CLoadMemory::LoadCertList() - ERR_NOTEXISTKMCERT >>");
    EXPECT_EQ(count(), 0); // the entry of before is gone too
}

TEST_F(Memory, PartsThatDoNotFitLeaveTheEntryOfBefore)
{
    ASSERT_EQ(take(fake::certificate()), 0);
    const std::string exact(4096, 'x');
    const std::string over(4097, 'x');
    EXPECT_EQ(take(over), 1001);
    EXPECT_EQ(take(fake::certificate(), over), 1001);
    EXPECT_EQ(take(fake::certificate(), fake::key(), over, "k"), 1001);
    EXPECT_EQ(take(fake::certificate(), fake::key(), "c", over), 1001);
    EXPECT_EQ(lastLog(), "CLoadMemory::LoadCertList() - ERR_INVALIDINPUT >>");
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(take(fake::certificate(), exact, exact, exact), 0);
    EXPECT_EQ(entry()->nSignPriKeyLen, 4096);
}

TEST_F(Memory, ValidityStatesByKeySize)
{
    struct Row {
        const char *keyLength, *notAfter;
        int state, expired;
    };
    const Row rows[] = {{"2048 BITS", "2024-12-31 00:00:00", 3, 0}, {"2048 Bits", "2024-06-11 00:00:00", 4, 0},
        {"2048 Bits", "2024-05-01 00:00:00", 5, 1}, {"1024 Bits", "2024-12-31 00:00:00", 0, 0},
        {"1024 Bits", "2024-06-11 00:00:00", 1, 0}, {"1024 Bits", "2024-05-01 00:00:00", 2, 1}};
    options.bExcludeExpired = 1; // heeded by the disk loader alone
    setOptions();
    for (const Row& row : rows) {
        ASSERT_EQ(take(fake::certificate({{"keyLength", row.keyLength}, {"notAfter", row.notAfter}})), 0);
        ASSERT_EQ(count(), 1);
        EXPECT_EQ(entry()->nValidStatus, row.state) << row.keyLength << row.notAfter;
        EXPECT_EQ(entry()->nExpired, row.expired);
    }
}

/** The loader's own operations that no export reaches. */
class LoaderMemory : public Scripted {
protected:
    void SetUp() override
    {
        ASSERT_EQ(sigildesk::initialise(toolkit, 0, Text(library.string())), 0);
        loader.bind(toolkit.get(), logFile.c_str());
        loader.setOptions(options);
    }
    int take(const std::string& cert, const std::string& key)
    {
        return loader.LoadCertList(
            cert.data(), int(cert.size()), key.data(), int(key.size()), nullptr, 5, nullptr, 5);
    }

    sigildesk::CryptoHandle toolkit;
    CLoadMemory loader{1, library.c_str()};
};

TEST_F(LoaderMemory, SigningPartsAreNecessary)
{
    ASSERT_EQ(take(fake::certificate(), fake::key()), 0);
    EXPECT_EQ(take("", fake::key()), 1001);
    EXPECT_EQ(take(fake::certificate(), ""), 1001);
    EXPECT_EQ(lastLog(), "CLoadMemory::LoadCertList() - ERR_INVALIDINPUT >>");
    EXPECT_EQ(loader.count(), 1); // the entry of before stays
}

TEST_F(LoaderMemory, RandomValue)
{
    EXPECT_EQ(loader.GetPrikeyRandom(), 1001); // no entry
    ASSERT_EQ(take(fake::certificate(), fake::key()), 0);
    EXPECT_EQ(loader.GetPrikeyRandom(), 0);
    tagCERTINFO record{};
    loader.entry().copyTo(record);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(record.byRandom), record.nRandomLen), "random of P1");
    const std::tuple<int, int, std::string> rows[] = {
        {3500, 1118, "ERR_NOTEXISTRANDOM"}, {77, 1119, "ERR_GETRANDOM"}};
    for (const auto& [toolkitCode, result, name] : rows) {
        doubles::answer("HVTK_VID_GetRandomFromPriKey", toolkitCode);
        EXPECT_EQ(loader.GetPrikeyRandom(), result);
        EXPECT_EQ(lastLog(),
            "CLoadMemory::GetPrikeyRandom() - " + name +
                " >> VIDGetRandomFromPriKey() : " + std::to_string(toolkitCode) + " (Msg : words of the toolkit)");
    }
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(LoaderMemory, ClearCertInfo)
{
    tagCERTINFO record;
    std::memset(&record, 'x', sizeof record);
    CLoadMemory::ClearCertInfo(&record);
    const auto* bytes = reinterpret_cast<const char*>(&record);
    EXPECT_TRUE(std::all_of(bytes, bytes + sizeof record, [](char c) { return c == 0; }));
}

TEST_F(LoaderMemory, SettingsAreReportedUnderItsOwnName)
{
    writeFile(library / "Policy_KOR.conf", "");
    EXPECT_EQ(loader.SetInitalize(), 1102);
    EXPECT_EQ(lastLog(), "CLoadMemory::SetPolicyIDNameList() - ERR_FILEREAD_NODATA >> fseek : 1102");
}

} // namespace
