// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Private keys of listed certificates: decryption, identity random value, identity check, change of password.

#include "tests/certlist/scripted.h"

#include "certlist/processor.h"

#include <sigildesk/handles.h>

#include <tuple>

namespace {

class Keys : public Scripted {
protected:
    /** Entry 0 has a signing pair, entry 1 a key-management pair too. */
    Keys()
    {
        addNpki("a", {{"subject", "cn=a"}});
        addKm(addNpki("b", {{"subject", "cn=b"}}, "SignKorea"));
    }
    void SetUp() override
    {
        start();
        ASSERT_EQ(load(), 0);
        ASSERT_EQ(subjects(), (std::vector<std::string>{"cn=a", "cn=b"}));
    }
    int decrypt(int index, const std::string& password, Buffer& sign, Buffer& km)
    {
        return CLP_DecryptPriKey(clp, index, Text(password), sign.to(), sign.length(), km.to(), km.length());
    }
    int random(int index, const std::string& password, Buffer& out)
    {
        return CLP_GetPriKeyRandom(clp, index, Text(password), out.to(), out.length());
    }
};

TEST_F(Keys, DecryptGivesTheSigningKeyAndLeavesTheOtherOutputAlone)
{
    Buffer sign, km;
    EXPECT_EQ(decrypt(0, goodPassword, sign, km), 0);
    EXPECT_EQ(sign.text(), fake::key());
    EXPECT_EQ(sign.at(*sign.length()), '\0');
    EXPECT_FALSE(km.given());
    EXPECT_EQ(*km.length(), -1);
}

TEST_F(Keys, DecryptGivesBothKeysAndKeepsThemInTheEntry)
{
    Buffer sign, km;
    EXPECT_EQ(decrypt(1, goodPassword, sign, km), 0);
    EXPECT_EQ(sign.text(), fake::key());
    EXPECT_EQ(km.text(), "KEY(K1)");
    const auto kept = entry(1);
    EXPECT_EQ(kept->nSignPriKeyLen, *sign.length());
    EXPECT_EQ(kept->nKmPriKeyLen, *km.length());
}

TEST_F(Keys, WrongPasswordStillHandsBackAnEmptyBuffer)
{
    Buffer sign, km;
    EXPECT_EQ(decrypt(0, "wrong", sign, km), 1113);
    ASSERT_TRUE(sign.given());
    EXPECT_EQ(*sign.length(), 0);
    EXPECT_EQ(sign.at(0), '\0');
    EXPECT_EQ(lastLog(),
        "CLoadDISK::DecryptPriKey() - ERR_INVALIDPASSWORD >> PriKeyDecrypt() : 2004 (Msg : words of the toolkit)");
}

TEST_F(Keys, WrongPasswordAfterARightOneGivesNoKey)
{
    {
        Buffer sign, km;
        ASSERT_EQ(decrypt(1, goodPassword, sign, km), 0);
    }
    Buffer sign, km;
    EXPECT_EQ(decrypt(1, "wrong", sign, km), 1113);
    EXPECT_EQ(*sign.length(), 0);
    EXPECT_FALSE(km.given());
    const std::string file = (disk / "out.pfx").string();
    EXPECT_EQ(CLP_ExportPFX(clp, 1, Text("wrong"), Text(file)), 1113);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 1, 2, Text(disk.string()), Text("wrong")), 1113);
    EXPECT_TRUE(doubles::callsOf("HVTK_MEDIA_DISK_WriteFile").empty());
}

TEST_F(Keys, DecryptMapsTheToolkitsCodes)
{
    struct Row {
        int toolkit, result;
        const char* name;
    };
    const Row rows[] = {{2004, 1113, "ERR_INVALIDPASSWORD"}, {2000, 1114, "ERR_DECRYPTPRIKEY"},
        {2001, 1114, "ERR_DECRYPTPRIKEY"}, {77, 77, "ERR_DECRYPTPRIKEY"}};
    for (const Row& row : rows) {
        doubles::answer("HVTK_PRIKEY_Decrypt", row.toolkit);
        Buffer sign, km;
        EXPECT_EQ(decrypt(1, goodPassword, sign, km), row.result);
        EXPECT_EQ(sign.text(), "");
        EXPECT_FALSE(km.given());
        EXPECT_EQ(lastLog(),
            "CLoadDISK::DecryptPriKey() - " + std::string(row.name) +
                " >> PriKeyDecrypt() : " + std::to_string(row.toolkit) + " (Msg : words of the toolkit)");
    }
}

TEST_F(Keys, KeyManagementKeyThatFailsLeavesTheSigningKeyInTheEntry)
{
    const auto folder = home / "NPKI/SignKorea/USER/b";
    writeFile(folder / "kmPri.key", fake::encrypted("KEY(K1)", "other"));
    ASSERT_EQ(load(), 0);
    Buffer sign, km;
    EXPECT_EQ(decrypt(1, goodPassword, sign, km), 1113);
    EXPECT_EQ(sign.text(), "");
    EXPECT_GT(entry(1)->nSignPriKeyLen, 0);
    EXPECT_EQ(entry(1)->nKmPriKeyLen, 0);
}

TEST_F(Keys, KeyThatDoesNotFitTheEntryIsRefused)
{
    doubles::answer("HVTK_PRIKEY_Decrypt", doubles::fills(2, std::string(5000, 'k')));
    Buffer sign, km;
    EXPECT_EQ(decrypt(0, goodPassword, sign, km), 1114);
    EXPECT_EQ(entry(0)->nSignPriKeyLen, 0);
}

TEST_F(Keys, OutputsMayBeLeftOut)
{
    EXPECT_EQ(CLP_DecryptPriKey(clp, 1, Text(goodPassword), nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(CLP_GetPriKeyRandom(clp, 1, Text(goodPassword), nullptr, nullptr), 0);
}

TEST_F(Keys, OffTheDisksNothingIsDecrypted)
{
    for (int medium : {0, 6, 7}) {
        ASSERT_EQ(CLP_SetMediaType(clp, medium, nullptr, 0), 0);
        Buffer sign, km, value;
        EXPECT_EQ(decrypt(0, goodPassword, sign, km), 1005);
        EXPECT_EQ(*sign.length(), 0);
        EXPECT_EQ(random(0, goodPassword, value), 0);
        EXPECT_FALSE(value.given());
        EXPECT_EQ(CLP_VerifyVID(clp, 0, Text("whatever"), nullptr, Text("any")), 0); // kept: no check at all
    }
}

TEST_F(Keys, RandomValue)
{
    Buffer value;
    ASSERT_EQ(random(1, goodPassword, value), 0);
    EXPECT_EQ(value.text(), "random of P1");
    EXPECT_EQ(value.at(*value.length()), '\0');
    EXPECT_EQ(entry(1)->nRandomLen, *value.length());
    EXPECT_GT(entry(1)->nKmPriKeyLen, 0);
    EXPECT_TRUE(log().empty());
}

TEST_F(Keys, RandomValueWithAWrongPassword)
{
    Buffer value;
    EXPECT_EQ(random(1, "wrong", value), 1119); // not 1113
    EXPECT_FALSE(value.given());
    const std::string decryption =
        "CLoadDISK::GetPrikeyRandom() - ERR_NOTEXISTRANDOM >> VIDGetRandomFromPriKey() : 2004 (Msg : words of the "
        "toolkit)";
    EXPECT_EQ(log(),
        (std::vector<std::string>{decryption, decryption,
            "CLoadDISK::GetPrikeyRandom() - ERR_GETRANDOM >> VIDGetRandomFromPriKey() : 1001 (Msg : words of the "
            "toolkit)"}));
}

TEST_F(Keys, RandomValueUsesACachedKeyWhateverThePassword)
{
    Buffer sign, km, value;
    ASSERT_EQ(decrypt(0, goodPassword, sign, km), 0);
    EXPECT_EQ(random(0, "wrong", value), 0);
    EXPECT_EQ(value.text(), "random of P1");
}

TEST_F(Keys, RandomValueThatIsNotThereOrCannotBeRead)
{
    const std::tuple<int, int, std::string> rows[] = {
        {3500, 1118, "ERR_NOTEXISTRANDOM"}, {77, 1119, "ERR_GETRANDOM"}};
    for (const auto& [toolkit, result, name] : rows) {
        doubles::answer("HVTK_VID_GetRandomFromPriKey", toolkit);
        Buffer value;
        EXPECT_EQ(random(0, goodPassword, value), result);
        EXPECT_FALSE(value.given());
        EXPECT_EQ(lastLog(),
            "CLoadDISK::GetPrikeyRandom() - " + name + " >> VIDGetRandomFromPriKey() : " + std::to_string(toolkit) +
                " (Msg : words of the toolkit)");
    }
    doubles::answer("HVTK_VID_GetRandomFromPriKey", doubles::fills(1, std::string(1025, 'r')));
    Buffer value;
    EXPECT_EQ(random(0, goodPassword, value), 1119);    // does not fit the entry
    doubles::answer("HVTK_VID_GetRandomFromPriKey", 0); // an empty value
    EXPECT_EQ(random(0, goodPassword, value), 0);
    EXPECT_FALSE(value.given());
}

TEST_F(Keys, IdentityCheck)
{
    EXPECT_EQ(CLP_VerifyVID(clp, 0, Text("0000001111111"), nullptr, Text(goodPassword)), 0);
    EXPECT_EQ(CLP_VerifyVID(clp, 0, Text("0000002222222"), nullptr, Text(goodPassword)), 1132);
    EXPECT_EQ(lastLog(), "CLoadDISK::VerifyVID() - ERR_GETDATA >> VIDVerify() : 3006 (Msg : words of the toolkit)");
    EXPECT_EQ(CLP_VerifyVID(clp, 0, Text("0000001111111"), nullptr, Text("wrong")), 1113);
}

TEST_F(Keys, IdentityCheckWithoutARandomValue)
{
    doubles::answer("HVTK_VID_GetRandomFromPriKey", 3500);
    EXPECT_EQ(CLP_VerifyVID(clp, 0, Text("0000001111111"), nullptr, Text(goodPassword)), 1118);
}

/** The disk loader's own operations, which the processor calls in one order only. */
class LoaderKeys : public Keys {
protected:
    void SetUp() override
    {
        ASSERT_EQ(sigildesk::initialise(toolkit, 0, Text(library.string())), 0);
        loader.bind(toolkit.get(), logFile.c_str());
        loader.setOptions(options);
        ASSERT_EQ(loader.LoadCertList(), 0);
    }
    std::unique_ptr<tagCERTINFO> kept(int index)
    {
        auto record = std::make_unique<tagCERTINFO>();
        loader.entry(index).copyTo(*record);
        return record;
    }
    int change(int index, const std::string& from, const std::string& to)
    {
        return loader.ChangePassword(index, Text(from), Text(to));
    }
    int algorithm(const fake::Fields& changes)
    {
        CBinary certificate;
        certificate = fake::certificate(changes).data();
        int code = -1;
        const int rc = loader.GetPrikeyAlg(certificate, &code);
        return rc == 0 ? code : rc;
    }

    sigildesk::CryptoHandle toolkit;
    CLoadDISK loader{1, library.c_str()};
};

TEST_F(LoaderKeys, KeysOfBeforeAreNotHandedOutForAWrongPassword)
{
    CBinary sign, km;
    ASSERT_EQ(loader.DecryptPriKey(0, Text(goodPassword), &sign, &km), 0);
    EXPECT_FALSE(sign.isEmpty());
    CBinary none, nothing;
    EXPECT_EQ(loader.DecryptPriKey(0, Text("wrong"), &none, &nothing), 1113);
    EXPECT_TRUE(none.isEmpty());
    EXPECT_TRUE(nothing.isEmpty());
}

TEST_F(LoaderKeys, IdentityCheckDecryptsWhatIsNotYetDecrypted)
{
    EXPECT_EQ(loader.VerifyVID(1, Text("0000001111111"), Text(goodPassword)), 0);
    EXPECT_GT(kept(1)->nSignPriKeyLen, 0);
    EXPECT_GT(kept(1)->nKmPriKeyLen, 0);
    doubles::forgetCalls();
    EXPECT_EQ(loader.VerifyVID(1, Text("0000001111111"), Text("unused now")), 0);
    EXPECT_TRUE(doubles::callsOf("HVTK_PRIKEY_Decrypt").empty());
    EXPECT_TRUE(doubles::callsOf("HVTK_VID_GetRandomFromPriKey").empty());
    EXPECT_EQ(loader.VerifyVID(0, Text("0000001111111"), Text("wrong")), 1114);
    EXPECT_EQ(lastLog(),
        "CLoadDISK::VerifyVID() - ERR_DECRYPTPRIKEY >> PriKeyDecrypt() : 2004 (Msg : words of the toolkit)");
    EXPECT_EQ(loader.VerifyVID(5, Text("1"), Text("1")), 1001);
}

TEST_F(LoaderKeys, ChangePasswordRewritesBothFilesAndTheEntry)
{
    ASSERT_EQ(change(1, goodPassword, "new one"), 0);
    const auto folder = home / "NPKI/SignKorea/USER/b";
    EXPECT_EQ(readFile(folder / "signPri.key"), fake::encrypted(fake::key(), "new one"));
    EXPECT_EQ(readFile(folder / "kmPri.key"), fake::encrypted("KEY(K1)", "new one"));
    EXPECT_STREQ(kept(1)->szPassword, "new one");
    const auto entry = kept(1);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(entry->byEncKmPriKey), entry->nEncKmPriKeyLen),
        fake::encrypted("KEY(K1)", "new one"));
    CBinary sign, km;
    EXPECT_EQ(loader.DecryptPriKey(1, Text("new one"), &sign, &km), 0);
}

TEST_F(LoaderKeys, ChangePasswordFailures)
{
    EXPECT_EQ(change(7, goodPassword, "x"), 1001);
    EXPECT_EQ(change(0, "wrong", "new"), 1113);
    EXPECT_EQ(lastLog(),
        "CLoadDISK::ChangePassword() - ERR_INVALIDPASSWORD >> MediaDiskDeletePriKey() : 2004 (Msg : words of the "
        "toolkit)");
    doubles::answer("HVTK_PRIKEY_ChangePasswd", 77);
    EXPECT_EQ(change(0, goodPassword, "new"), 1131);
    EXPECT_EQ(lastLog(),
        "CLoadDISK::ChangePassword() - ERR_DELETECERTNKEY >> MediaDiskDeletePriKey() : 77 (Msg : words of the "
        "toolkit)");
    doubles::answer("HVTK_PRIKEY_ChangePasswd", doubles::fills(3, std::string(4097, 'k')));
    EXPECT_EQ(change(0, goodPassword, "new"), 1131); // would not fit the entry
    doubles::answer("HVTK_MEDIA_DISK_ReadFile", 77);
    EXPECT_EQ(change(0, goodPassword, "new"), 1123);
    EXPECT_EQ(lastLog(),
        "CLoadDISK::ChangePassword() - ERR_GETDATA >> MediaDiskReadFile() : 77 (Msg : words of the toolkit)");
    EXPECT_STREQ(kept(0)->szPassword, "");
}

// There is no way back: the signing key file keeps the new password.
TEST_F(LoaderKeys, ChangePasswordStopsHalfWayWhenTheSecondFileCannotBeWritten)
{
    int writes = 0;
    doubles::answer("HVTK_MEDIA_DISK_WriteFile", [&](const doubles::Call& call) {
        if (++writes == 2)
            return fake::writeError;
        writeFile(call.pointer<char>(0), doubles::contents(call.pointer<BINSTR>(1)));
        return 0;
    });
    EXPECT_EQ(change(1, goodPassword, "new"), 1124);
    EXPECT_EQ(lastLog(),
        "CLoadDISK::ChangePassword() - ERR_GETDATA >> MediaDiskReadFile() : 3302 (Msg : words of the toolkit)");
    const auto folder = home / "NPKI/SignKorea/USER/b";
    EXPECT_EQ(readFile(folder / "signPri.key"), fake::encrypted(fake::key(), "new"));
    EXPECT_EQ(readFile(folder / "kmPri.key"), fake::encrypted("KEY(K1)", goodPassword));
    EXPECT_STREQ(kept(1)->szPassword, "");
    CBinary sign, km;
    EXPECT_EQ(loader.DecryptPriKey(1, Text("new"), &sign, &km), 1113);
    EXPECT_GT(sign.m_nLength, 0); // the entry holds the new signing key file
}

TEST_F(LoaderKeys, KeyAlgorithms)
{
    struct Row {
        const char *policy, *keyLength, *unit;
        int code;
    };
    const Row rows[] = {
        {"1 2 410 200005 1 1 1", "1024 Bits", "people", 48},
        {"1 2 410 200005 1 1 1", "2048 Bits", "people", 48},
        {"1 2 410 100001 2 2 1", "2048 BITS", "people", 64},
        {"1 2 410 100001 2 2 1", "1024 Bits", "People", 48},
        {"1 2 410 100001 2 2 1", "1024 Bits", "body", 224},
        {"1 2 410 200004 8 1", "1024 Bits", "body", 224},
        {"1 2 410 200004 8 1", "2048 Bits", "body", 64},
        {"1 2 410 100001 5 3", "1024 Bits", "body", 224}, // taken by the more general policy
        {"1 2 410 100001 5 3", "2048 Bits", "body", 64},
    };
    for (const Row& row : rows)
        EXPECT_EQ(algorithm({{"policyId", row.policy}, {"keyLength", row.keyLength},
                      {"subject", "cn=x,ou=" + std::string(row.unit) + ",o=y"}}),
            row.code)
            << row.policy << " " << row.keyLength << " " << row.unit;
}

TEST_F(LoaderKeys, KeyAlgorithmFailures)
{
    CBinary none;
    int code = 0;
    EXPECT_EQ(loader.GetPrikeyAlg(none, &code), 1001);
    const std::pair<const char*, const char*> rows[] = {{"HVTK_CERT_Load", "CertLoad()"},
        {"HVTK_CERT_GetCertPolicy_PolicyID", "CertGetPolicyID()"},
        {"HVTK_CERT_GetSubjectName", "CertGetSubjectName()"}, {"HVTK_CERT_GetPubKey", "CertGetPubKeyInfo()"}};
    for (const auto& [symbol, callee] : rows) {
        fake::install();
        doubles::answer(symbol, 77);
        EXPECT_EQ(algorithm({}), 1122) << symbol;
        EXPECT_EQ(lastLog(),
            "CLoadSMCard::GetPrikeyAlg() - ERR_PARSINGCERT >> " + std::string(callee) +
                " : 77 (Msg : words of the toolkit)");
        EXPECT_EQ(doubles::callsOf("HVTK_CERT_Unload").size(), 1u);
    }
}

TEST_F(LoaderKeys, ToolkitErrorText)
{
    CBinary text;
    EXPECT_EQ(loader.GetErrInfo(&text), 0);
    EXPECT_STREQ(text.toString(), "words of the toolkit");
}

TEST_F(Keys, ProcessorsChangeOfPasswordIsNotReachableByHosts)
{
    auto& processor = *static_cast<CCertListProcInterface*>(clp);
    EXPECT_EQ(processor.ChangePassword(0, nullptr, Text("x")), 1001);
    EXPECT_EQ(processor.ChangePassword(0, Text("x"), Text("")), 1001);
    EXPECT_EQ(processor.ChangePassword(-1, Text("x"), Text("y")), 1001);
    EXPECT_EQ(processor.ChangePassword(0, Text(goodPassword), Text("new")), 0);
    EXPECT_STREQ(entry(0)->szPassword, "new");
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    EXPECT_EQ(processor.ChangePassword(0, Text("new"), Text("newer")), 1005);
}

TEST_F(Keys, ProcessorLooksAtItsArgumentsItself)
{
    auto& processor = *static_cast<CCertListProcInterface*>(clp);
    sigil::CertNKey imported;
    EXPECT_EQ(processor.SetLoadCertType(nullptr), 1001);
    EXPECT_EQ(processor.GetRemDriveCount(nullptr), 1001);
    EXPECT_EQ(processor.GetRemDriveList(nullptr), 1001);
    EXPECT_EQ(processor.ImportPFX(nullptr, Text("p"), imported), 1001);
    EXPECT_EQ(processor.VerifyVID(0, nullptr, nullptr, Text(goodPassword)), 1001);
    EXPECT_EQ(processor.VerifyVID(0, Text("1"), nullptr, nullptr), 1001);
    EXPECT_EQ(processor.VerifyVID(-1, Text("1"), nullptr, Text(goodPassword)), 1001);
}

/** The boundary lets no such medium in; a copy that is refused leaves the processor with it. */
TEST_F(Keys, ProcessorOnMediaThatCannotBeChosen)
{
    auto& processor = *static_cast<CCertListProcInterface*>(clp);
    const auto turnTo = [&](int medium) {
        EXPECT_EQ(processor.CopyCertToDISK(false, medium, 0, Text("p"), 2, Text(disk.string())), 1001);
    };
    for (const int token : {3, 4}) {
        turnTo(token);
        CBinary random;
        EXPECT_EQ(processor.VerifyVID(0, Text("1"), nullptr, Text(goodPassword)), 1001) << token;
        EXPECT_EQ(processor.GetPriKeyRandom(0, Text(goodPassword), &random), 0) << token;
        EXPECT_TRUE(random.isEmpty()) << token;
        EXPECT_EQ(processor.GetCertCount(), 2) << token;
    }
    turnTo(5);
    EXPECT_EQ(processor.GetCertCount(), 0) << "memory holds none";
}

TEST_F(Keys, ProcessorOperationsOfNoExport)
{
    auto& processor = *static_cast<CCertListProcInterface*>(clp);
    CBinary text;
    EXPECT_EQ(processor.GetErrInfo(&text), 0);
    EXPECT_STREQ(text.toString(), "words of the toolkit");
    void* buffer = new char[1];
    EXPECT_EQ(processor.MemFree(&buffer), 0);
    EXPECT_EQ(processor.MemFree(&buffer), 1001);
}

} // namespace
