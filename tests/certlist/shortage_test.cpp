// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A toolkit that lacks memory, at each call of an operation in turn: it has refused nothing, and the host is told so.

#include "tests/certlist/transfer.h"

#include "certlist/processor.h"

#include <functional>
#include <set>

namespace {

class Shortage : public Transfer {
protected:
    /** Runs the operation with another one of its calls lacking memory each time, until there is none left. */
    void expectItTold(const char* name, const std::function<int()>& operation)
    {
        std::string lacking;
        int k = 0;
        do {
            renew();
            lacking.clear();
            lackAt(k++, lacking);
            const int code = operation();
            doubles::interpose(nullptr);
            EXPECT_EQ(code, lacking.empty() ? 0 : 1000) << name << ", " << lacking;
        } while (!lacking.empty());
        EXPECT_GT(k, 1) << name;
        EXPECT_EQ(doubles::liveByteStrings(), 0) << name;
    }
    CCertListProcInterface& processor() { return *static_cast<CCertListProcInterface*>(clp); }

private:
    /** The store as new, and a list that has no keys yet. */
    void renew()
    {
        addNpki("b", {{"subject", "cn=b,ou=unit,o=SignKorea,c=KR"}}, "SignKorea");
        addKm(second);
        ASSERT_EQ(load(), 0);
    }
    static void lackAt(int k, std::string& lacking)
    {
        // What these do not do keeps nothing from being done; who lacks memory for bytes throws; an import is tried twice.
        static const std::set<std::string> others{"HVTK_BINSTR_Create", "HVTK_BINSTR_Delete", "HVTK_BINSTR_SetData",
            "HVTK_CERT_Unload", "HVTK_API_GetErrInfo", "HVTK_PFX_ImportMultiPair2"};
        int seen = 0;
        doubles::interpose([k, seen, &lacking](int, const std::string& symbol) mutable {
            const bool lacks = others.count(symbol) == 0 && seen++ == k;
            lacking = lacks ? symbol : lacking;
            return lacks ? sigil::toolkitNoMemory : 0;
        });
    }
};

TEST_F(Shortage, OfOperationsOnKeys)
{
    Buffer sign, km, random;
    expectItTold("keys", [&] {
        return CLP_DecryptPriKey(clp, 1, Text(goodPassword), sign.to(), sign.length(), km.to(), km.length());
    });
    expectItTold("random value",
        [&] { return CLP_GetPriKeyRandom(clp, 1, Text(goodPassword), random.to(), random.length()); });
    expectItTold(
        "identity", [&] { return CLP_VerifyVID(clp, 1, Text("0000001111111"), nullptr, Text(goodPassword)); });
    expectItTold("password", [&] { return processor().ChangePassword(1, Text(goodPassword), Text(goodPassword)); });
}

TEST_F(Shortage, OfImportAndExport)
{
    const std::string pfx = fake::pfx("pfx", {signCert, kmCert}, {signKey, kmKey});
    expectItTold("import", [&] { return import(pfx); });
    doubles::answer("HVTK_PFX_ImportMultiPair2", sigil::toolkitNoMemory);
    EXPECT_EQ(import(pfx), 1000);
    const std::string path = disk / "out.pfx";
    for (const int index : {0, 1})
        expectItTold("export", [&] { return CLP_ExportPFX(clp, index, Text(goodPassword), Text(path)); });
}

TEST_F(Shortage, OfCopiesAndDeletion)
{
    ASSERT_EQ(stage(signCert, signKey, kmCert, kmKey), 0);
    expectItTold("copy of what was given", [&] { return copyStaged(); });
    expectItTold("copy of an entry",
        [&] { return CLP_CopySelCertToDISK(clp, 1, 1, 2, Text(disk.string()), Text(goodPassword)); });
    expectItTold("deletion", [&] { return CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)); });
}

TEST_F(Shortage, IsNotWhatAMissingFieldIsCalled)
{
    ASSERT_EQ(stage(signCert, signKey, kmCert, kmKey), 0);
    doubles::answer("HVTK_CERT_Load", SIGIL_MISSING_FIELD); // the same number as the list's own lack of memory
    EXPECT_EQ(copyStaged(), SIGIL_CERTIFICATE_UNREADABLE);
}

TEST_F(Shortage, OfACertificateFromMemoryAndItsVerification)
{
    writeFile(library / "HVCToolkitV30.conf",
        "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN=cn=Root\nDIR_URL=ldap://x\n");
    fake::directory["ldap://x/cn=Root"] = "root";
    char message[64];
    expectItTold("verification", [&] {
        return CLP_VerifyCert(clp, Text(signCert), static_cast<int>(signCert.size()), sizeof message, message);
    });
    expectItTold("memory", [&] {
        CLP_SetMediaType(clp, 6, nullptr, 0);
        return CLP_LoadMemoryCert(clp, Text(signCert), static_cast<int>(signCert.size()), Text(signKey),
            static_cast<int>(signKey.size()), nullptr, 0, nullptr, 0);
    });
}

} // namespace
