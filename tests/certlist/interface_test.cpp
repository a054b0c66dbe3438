// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The boundary: checks before every operation, and what CLP_GetCertInfo copies.

#include "tests/certlist/scripted.h"

#include <cstring>
#include <functional>

namespace {

char some[] = "x";
char none[] = "";
char* out = nullptr;
int length = 0;
int number = 0;
bool flag = false;
tagCERTINFO record;
tagDRIVEINFO drives[1];
tagLOADCERTOPT option;
std::string longPath(260, 'p');

/** One refusal: a call with one wrong argument, and the code that it gives. */
struct Refusal {
    const char* what;
    std::function<int(void*)> call;
    int code;
};

/** Every function with valid arguments, and what it answers to a null handle. */
const Refusal nullHandles[] = {
    {"SetType", [](void* h) { return CLP_SetType(h, &option); }, 1008},
    {"USIMType", [](void* h) { return CLP_USIMType(h, nullptr); }, 1008},
    {"GetRemDriveCount", [](void* h) { return CLP_GetRemDriveCount(h, &number); }, 1008},
    {"GetRemDrive", [](void* h) { return CLP_GetRemDrive(h, drives); }, 1008},
    {"SetMediaType", [](void* h) { return CLP_SetMediaType(h, 1, some, 0); }, 1008},
    {"LoadCertList", [](void* h) { return CLP_LoadCertList(h); }, 1008},
    {"GetCertCount", [](void* h) { return CLP_GetCertCount(h); }, 1008},
    {"GetCertInfo", [](void* h) { return CLP_GetCertInfo(h, 0, &record); }, 1008},
    {"LoadMemoryCert", [](void* h) { return CLP_LoadMemoryCert(h, some, 1, some, 1, some, 1, some, 1); }, 1008},
    {"ImportPFX",
        [](void* h) {
            return CLP_ImportPFX(h, some, some, &out, &length, &out, &length, &out, &length, &out, &length);
        },
        1008},
    {"ExportPFX", [](void* h) { return CLP_ExportPFX(h, 0, some, some); }, 1008},
    {"VerifyCert", [](void* h) { return CLP_VerifyCert(h, some, 1, 1, some); }, 1008},
    {"DecryptPriKey", [](void* h) { return CLP_DecryptPriKey(h, 0, some, &out, &length, &out, &length); }, 1008},
    {"GetPriKeyRandom", [](void* h) { return CLP_GetPriKeyRandom(h, 0, some, &out, &length); }, 1008},
    {"DeleteCert", [](void* h) { return CLP_DeleteCert(h, 1, some, some); }, 1008},
    {"CopySelCertToDISK", [](void* h) { return CLP_CopySelCertToDISK(h, 1, 0, 1, some, some); }, 1008},
    {"CopyforSetData", [](void* h) { return CLP_CopyforSetData(h, some, 1, some, 1, some, 1, some, 1); }, 1008},
    {"CopyCertToDISK", [](void* h) { return CLP_CopyCertToDISK(h, 1, some, some); }, 1008},
    {"CopyCertToPKCS11", [](void* h) { return CLP_CopyCertToPKCS11(h, some, some, some); }, 1008},
    {"CopyCertToSMCARD", [](void* h) { return CLP_CopyCertToSMCARD(h, 1, some, some, some); }, 1008},
    {"ChangePassword", [](void* h) { return CLP_ChangePassword(h, 0, some, some); }, 1008},
    {"VerifyVID", [](void* h) { return CLP_VerifyVID(h, 0, some, nullptr, some); }, 1008},
    // The plain stubs do not look at the handle.
    {"MediaConnect", [](void* h) { return CLP_MediaConnect(h, some, some); }, 1003},
    {"MediaDisConnect", [](void* h) { return CLP_MediaDisConnect(h); }, 1003},
    {"PKCS11SetArgs", [](void* h) { return CLP_PKCS11SetArgs(h, nullptr); }, 1003},
    {"SetCardPINumber", [](void* h) { return CLP_SetCardPINumber(h, some, some); }, 1003},
    {"Phone_UbiKey",
        [](void* h) { return CLP_Phone_UbiKey(h, some, nullptr, some, some, &out, &length, &out, &length); }, 1003},
    {"SetNCheckRootCert", [](void* h) { return CLP_SetNCheckRootCert(h, nullptr, &flag); }, 1003},
    {"GetRootCertInfo",
        [](void* h) {
            return CLP_GetRootCertInfo(h, &out, &length, &out, &length, 1, some, 1, some, 1, some, 1, some);
        },
        1003},
    {"InstallRootCert", [](void* h) { return CLP_InstallRootCert(h, some, 1, some, 1); }, 1003},
    {"PKCS11Login", [](void* h) { return CLP_PKCS11Login(h, some); }, 1003},
    {"GetPKCS11DeviceInfo", [](void* h) { return CLP_GetPKCS11DeviceInfo(h, true, true, true, &number); }, 1003},
    {"GetPKCS11DeviceList", [](void* h) { return CLP_GetPKCS11DeviceList(h, nullptr); }, 1003},
    {"VerifyPKCS11Signature", [](void* h) { return CLP_VerifyPKCS11Signature(h, some, some, some); }, 1003},
    {"PKCS11TokenInfo", [](void* h) { return CLP_PKCS11TokenInfo(h, some, 1, some, 1, some, 1, some); }, 1003},
};

const Refusal badArguments[] = {
    {"SetType record", [](void* h) { return CLP_SetType(h, nullptr); }, 1001},
    {"GetRemDriveCount pointer", [](void* h) { return CLP_GetRemDriveCount(h, nullptr); }, 1001},
    {"GetRemDrive pointer", [](void* h) { return CLP_GetRemDrive(h, nullptr); }, 1001},
    {"GetCertInfo record", [](void* h) { return CLP_GetCertInfo(h, 0, nullptr); }, 1001},
    {"LoadMemoryCert null certificate",
        [](void* h) { return CLP_LoadMemoryCert(h, nullptr, 1, some, 1, nullptr, 0, nullptr, 0); }, 1001},
    {"LoadMemoryCert certificate length",
        [](void* h) { return CLP_LoadMemoryCert(h, some, 0, some, 1, nullptr, 0, nullptr, 0); }, 1001},
    {"LoadMemoryCert null key",
        [](void* h) { return CLP_LoadMemoryCert(h, some, 1, nullptr, 1, nullptr, 0, nullptr, 0); }, 1001},
    {"LoadMemoryCert key length",
        [](void* h) { return CLP_LoadMemoryCert(h, some, 1, some, -1, nullptr, 0, nullptr, 0); }, 1001},
    {"LoadMemoryCert medium",
        [](void* h) { return CLP_LoadMemoryCert(h, some, 1, some, 1, nullptr, 0, nullptr, 0); }, 1105},
    {"ImportPFX null path",
        [](void* h) {
            return CLP_ImportPFX(h, nullptr, some, &out, &length, &out, &length, &out, &length, &out, &length);
        },
        1001},
    {"ImportPFX empty path",
        [](void* h) {
            return CLP_ImportPFX(h, none, some, &out, &length, &out, &length, &out, &length, &out, &length);
        },
        1001},
    {"ImportPFX null password",
        [](void* h) {
            return CLP_ImportPFX(h, some, nullptr, &out, &length, &out, &length, &out, &length, &out, &length);
        },
        1001},
    {"ImportPFX empty password",
        [](void* h) {
            return CLP_ImportPFX(h, some, none, &out, &length, &out, &length, &out, &length, &out, &length);
        },
        1001},
    {"ImportPFX output 1",
        [](void* h) {
            return CLP_ImportPFX(h, some, some, nullptr, &length, &out, &length, &out, &length, &out, &length);
        },
        1001},
    {"ImportPFX output 2",
        [](void* h) {
            return CLP_ImportPFX(h, some, some, &out, &length, nullptr, &length, &out, &length, &out, &length);
        },
        1001},
    {"ImportPFX output 3",
        [](void* h) {
            return CLP_ImportPFX(h, some, some, &out, &length, &out, &length, nullptr, &length, &out, &length);
        },
        1001},
    {"ImportPFX output 4",
        [](void* h) {
            return CLP_ImportPFX(h, some, some, &out, &length, &out, &length, &out, &length, nullptr, &length);
        },
        1001},
    {"ExportPFX null password", [](void* h) { return CLP_ExportPFX(h, 0, nullptr, some); }, 1001},
    {"ExportPFX empty password", [](void* h) { return CLP_ExportPFX(h, 0, none, some); }, 1001},
    {"ExportPFX index", [](void* h) { return CLP_ExportPFX(h, -1, some, some); }, 1001},
    {"ExportPFX null path", [](void* h) { return CLP_ExportPFX(h, 0, some, nullptr); }, 1001},
    {"ExportPFX empty path", [](void* h) { return CLP_ExportPFX(h, 0, some, none); }, 1001},
    {"ExportPFX path of 260", [](void* h) { return CLP_ExportPFX(h, 0, some, longPath.data()); }, 1001},
    {"VerifyCert null certificate", [](void* h) { return CLP_VerifyCert(h, nullptr, 1, 1, some); }, 1001},
    {"VerifyCert length", [](void* h) { return CLP_VerifyCert(h, some, 0, 1, some); }, 1001},
    {"VerifyCert text size", [](void* h) { return CLP_VerifyCert(h, some, 1, 0, some); }, 1001},
    {"VerifyCert null text", [](void* h) { return CLP_VerifyCert(h, some, 1, 1, nullptr); }, 1001},
    {"DecryptPriKey null password",
        [](void* h) { return CLP_DecryptPriKey(h, 0, nullptr, &out, &length, &out, &length); }, 1001},
    {"DecryptPriKey empty password",
        [](void* h) { return CLP_DecryptPriKey(h, 0, none, &out, &length, &out, &length); }, 1001},
    {"DecryptPriKey index", [](void* h) { return CLP_DecryptPriKey(h, -1, some, &out, &length, &out, &length); },
        1001},
    {"GetPriKeyRandom null password", [](void* h) { return CLP_GetPriKeyRandom(h, 0, nullptr, &out, &length); },
        1001},
    {"GetPriKeyRandom empty password", [](void* h) { return CLP_GetPriKeyRandom(h, 0, none, &out, &length); },
        1001},
    {"GetPriKeyRandom index", [](void* h) { return CLP_GetPriKeyRandom(h, -1, some, &out, &length); }, 1001},
    {"DeleteCert index", [](void* h) { return CLP_DeleteCert(h, -1, some, some); }, 1001},
    {"CopySelCertToDISK from 3", [](void* h) { return CLP_CopySelCertToDISK(h, 3, -1, 1, some, some); }, 1005},
    {"CopySelCertToDISK from 4", [](void* h) { return CLP_CopySelCertToDISK(h, 4, 0, 1, some, some); }, 1005},
    {"CopySelCertToDISK from 5", [](void* h) { return CLP_CopySelCertToDISK(h, 5, 0, 1, some, some); }, 1005},
    {"CopySelCertToDISK index", [](void* h) { return CLP_CopySelCertToDISK(h, 1, -1, 1, some, some); }, 1001},
    {"CopyforSetData null certificate",
        [](void* h) { return CLP_CopyforSetData(h, nullptr, 1, some, 1, some, 1, some, 1); }, 1001},
    {"CopyforSetData certificate length",
        [](void* h) { return CLP_CopyforSetData(h, some, 0, some, 1, some, 1, some, 1); }, 1001},
    {"CopyforSetData null key",
        [](void* h) { return CLP_CopyforSetData(h, some, 1, nullptr, 1, some, 1, some, 1); }, 1001},
    {"CopyforSetData key length", [](void* h) { return CLP_CopyforSetData(h, some, 1, some, 0, some, 1, some, 1); },
        1001},
    {"CopyCertToDISK null password", [](void* h) { return CLP_CopyCertToDISK(h, 1, some, nullptr); }, 1001},
    {"CopyCertToDISK empty password", [](void* h) { return CLP_CopyCertToDISK(h, 1, some, none); }, 1001},
    {"CopyCertToDISK null folder", [](void* h) { return CLP_CopyCertToDISK(h, 2, nullptr, some); }, 1001},
    {"CopyCertToDISK empty folder", [](void* h) { return CLP_CopyCertToDISK(h, 2, none, some); }, 1001},
    {"VerifyVID null number", [](void* h) { return CLP_VerifyVID(h, 0, nullptr, nullptr, some); }, 1001},
    {"VerifyVID empty number", [](void* h) { return CLP_VerifyVID(h, 0, none, nullptr, some); }, 1001},
    {"VerifyVID index", [](void* h) { return CLP_VerifyVID(h, -1, some, nullptr, some); }, 1001},
    {"VerifyVID password", [](void* h) { return CLP_VerifyVID(h, 0, some, nullptr, none); }, 1001},
    {"MediaConnect", [](void* h) { return CLP_MediaConnect(h, some, some); }, 1003},
    {"USIMType", [](void* h) { return CLP_USIMType(h, nullptr); }, 1003},
    {"CopyCertToPKCS11", [](void* h) { return CLP_CopyCertToPKCS11(h, some, some, some); }, 1003},
    {"CopyCertToSMCARD", [](void* h) { return CLP_CopyCertToSMCARD(h, 1, some, some, some); }, 1003},
    {"ChangePassword", [](void* h) { return CLP_ChangePassword(h, 0, some, some); }, 1003},
};

using Interface = Scripted;

TEST(InterfaceWithoutHandle, AnswersEveryFunction)
{
    for (const Refusal& refusal : nullHandles)
        EXPECT_EQ(refusal.call(nullptr), refusal.code) << refusal.what;
    EXPECT_EQ(CLP_UnInitalize(nullptr), 0);
}

TEST(InterfaceWithoutHandle, LooksAtTheHandleBeforeTheArguments)
{
    for (const Refusal& refusal : badArguments) {
        if (refusal.code != 1003) {
            EXPECT_EQ(refusal.call(nullptr), 1008) << refusal.what;
        }
    }
}

TEST_F(Interface, RefusesBadArgumentsWithoutAToolkitCall)
{
    addNpki("a");
    start();
    ASSERT_EQ(load(), 0);
    doubles::forgetCalls();
    for (const Refusal& refusal : badArguments) {
        EXPECT_EQ(refusal.call(clp), refusal.code) << refusal.what;
        EXPECT_TRUE(doubles::calls().empty()) << refusal.what; // with its right arguments each of them makes some
        doubles::forgetCalls();
    }
    EXPECT_STREQ(some, "x"); // no refusal writes into it
    EXPECT_EQ(out, nullptr);
}

TEST_F(Interface, MemFreeReleasesAndClears)
{
    void* nothing = nullptr;
    EXPECT_EQ(CLP_MemFree(nullptr, nullptr), 1001);
    EXPECT_EQ(CLP_MemFree(nullptr, &nothing), 1001);
    void* buffer = new char[3];
    EXPECT_EQ(CLP_MemFree(nullptr, &buffer), 0);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(Interface, IndexOutsideTheListIsRefused)
{
    addNpki("a");
    start();
    ASSERT_EQ(load(), 0);
    ASSERT_STREQ(some, "x");
    doubles::forgetCalls();
    EXPECT_EQ(CLP_GetCertInfo(clp, 1, &record), 1001);
    EXPECT_EQ(CLP_GetCertInfo(clp, -1, &record), 1001);
    EXPECT_EQ(CLP_DecryptPriKey(clp, 1, some, &out, &length, nullptr, nullptr), 1001);
    CLP_MemFree(clp, reinterpret_cast<void**>(&out));
    EXPECT_EQ(CLP_GetPriKeyRandom(clp, 1, some, &out, &length), 1001);
    EXPECT_EQ(CLP_VerifyVID(clp, 1, some, nullptr, some), 1001);
    EXPECT_EQ(CLP_ExportPFX(clp, 1, some, some), 1001);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, some), 1001);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 1, 1, some, some), 1001);
    EXPECT_TRUE(doubles::calls().empty());
}

// A record that is not cleared keeps what the new entry does not have: hosts clear it themselves.
TEST_F(Interface, GetCertInfoLeavesFieldsThatTheEntryDoesNotHold)
{
    addKm(addNpki("a", {{"subject", "cn=full"}, {"altName", "kept"}}));
    addNpki("b", {{"subject", "cn=bare"}, {"altName", "absent"}}, "SignKorea");
    start();
    ASSERT_EQ(load(), 0);
    tagCERTINFO info{};
    std::strcpy(info.szMediaText2, "host's own");
    ASSERT_EQ(CLP_GetCertInfo(clp, 0, &info), 0);
    const int kmLength = info.nKmCertLen;
    ASSERT_GT(kmLength, 0);
    ASSERT_EQ(CLP_GetCertInfo(clp, 1, &info), 0);
    EXPECT_STREQ(info.szSubjectDN, "cn=bare");
    EXPECT_STREQ(info.szSubjectAltName, "kept");
    EXPECT_EQ(info.nKmCertLen, kmLength);
    EXPECT_STRNE(info.szKmCertPath, "");
    EXPECT_STREQ(info.szMediaText2, "host's own");
}

TEST_F(Interface, GetCertInfoCopiesTheNumbersAlways)
{
    addNpki("a");
    start();
    ASSERT_EQ(load(), 0);
    tagCERTINFO info{};
    info.nPKIType = info.nMediaType = info.nStatusFlag = info.nValidStatus = info.nRemainDays = info.nExpired = 9;
    ASSERT_EQ(CLP_GetCertInfo(clp, 0, &info), 0);
    EXPECT_EQ(info.nPKIType, 2);
    EXPECT_EQ(info.nMediaType, 1);
    EXPECT_EQ(info.nStatusFlag, 0);
    EXPECT_EQ(info.nValidStatus, 3);
    EXPECT_EQ(info.nRemainDays, 0);
    EXPECT_EQ(info.nExpired, 0);
}

TEST_F(Interface, UnInitalizeGivesEveryByteStringBack)
{
    addNpki("a");
    start();
    ASSERT_EQ(load(), 0);
    finish();
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

} // namespace
