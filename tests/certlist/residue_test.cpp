// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the certificate list leaves of keys, random values and passwords, on the open toolkit: of what it keeps, nothing that a core
// would hold; with its end, nothing.

#include "tests/tools/secret_store.h"

#include "foundation/environment.h"

#include <sigildesk/certlist.h>
#include <sigildesk/records.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

std::string home; // what the injected environment answers

struct Buffer {
    ~Buffer() { CLP_MemFree(nullptr, reinterpret_cast<void**>(&data)); }
    char* data = nullptr;
    int length = 0;
};

class ListResidue : public testing::Test {
protected:
    static void SetUpTestSuite() { store = std::make_unique<SecretStore>(); }
    static void TearDownTestSuite() { store.reset(); }

    ListResidue()
    {
        home = store->home();
        sigil::environment().homeFolder = [] { return home; };
        sigil::environment().traceFolder = work.path();
        options.nPKITypes = 2;
        EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, library.data()), 0);
        EXPECT_EQ(CLP_SetType(clp, &options), 0);
        list();
    }
    ~ListResidue() override
    {
        end();
        sigil::environment() = machine;
    }
    void end()
    {
        CLP_UnInitalize(clp);
        clp = nullptr;
    }
    void list()
    {
        EXPECT_EQ(CLP_SetMediaType(clp, 1, nullptr, 0), 0);
        EXPECT_EQ(CLP_LoadCertList(clp), 0);
    }
    char* text(const char* name) { return (*store)[name].chars(); }
    int length(const char* name) { return static_cast<int>((*store)[name].bytes().size()); }

    /** Calls, looks at what a core would hold, lists again, and looks at all. */
    void expectNothing(const std::string& name, int code, const std::function<int()>& call)
    {
        const int result = call();
        const std::string kept = hunt.foundInCore();
        EXPECT_EQ(result, code) << name;
        EXPECT_EQ(kept, "") << "after " << name;
        list();
        EXPECT_EQ(hunt.found(), "") << "after another list that followed " << name;
    }
    int decrypt(const char* password)
    {
        Buffer sign, km;
        return CLP_DecryptPriKey(clp, 0, text(password), &sign.data, &sign.length, &km.data, &km.length);
    }

    static std::unique_ptr<SecretStore> store;
    SecretHunt hunt = store->hunt();
    TemporaryFolder work;
    void* clp = nullptr;

private:
    std::string library = SIGILDESK_LIBRARY_FOLDER;
    sigil::Environment machine = sigil::environment();
    tagLOADCERTOPT options{};
};
std::unique_ptr<SecretStore> ListResidue::store;

} // namespace

TEST_F(ListResidue, OfKeys)
{
    expectNothing("CLP_DecryptPriKey", 0, [&] { return decrypt("password"); });
    expectNothing(
        "CLP_DecryptPriKey with a wrong password", SIGIL_WRONG_PASSWORD, [&] { return decrypt("wrong"); });
    expectNothing("CLP_GetPriKeyRandom", 0, [&] {
        Buffer random;
        return CLP_GetPriKeyRandom(clp, 0, text("password"), &random.data, &random.length);
    });
    std::string other = "000000-0000000";
    expectNothing("CLP_VerifyVID", SIGIL_IDENTITY_MISMATCH,
        [&] { return CLP_VerifyVID(clp, 0, other.data(), nullptr, text("password")); });
}

TEST_F(ListResidue, WhatIsKeptIsFoundInMemoryOfNoCore)
{
    EXPECT_EQ(decrypt("password"), 0);
    EXPECT_NE(hunt.found(), "") << "the list keeps its own";
    EXPECT_EQ(hunt.foundInCore(), "");
    end();
    EXPECT_EQ(hunt.found(), "");
}

TEST_F(ListResidue, OfRecords)
{
    EXPECT_EQ(decrypt("password"), 0);
    expectNothing("CLP_GetCertInfo", 0, [&] {
        const auto record = std::make_unique<tagCERTINFO>();
        const int code = CLP_GetCertInfo(clp, 0, record.get());
        explicit_bzero(record.get(), sizeof *record); // as every host must
        return code;
    });
}

TEST_F(ListResidue, OfFiles)
{
    std::string exported = work.path("exported.pfx");
    expectNothing("CLP_ExportPFX", 0, [&] { return CLP_ExportPFX(clp, 0, text("password"), exported.data()); });
    expectNothing("CLP_ImportPFX", 0, [&] {
        Buffer cert, key, kmCert, kmKey;
        return CLP_ImportPFX(clp, exported.data(), text("password"), &cert.data, &cert.length, &key.data,
            &key.length, &kmCert.data, &kmCert.length, &kmKey.data, &kmKey.length);
    });
    expectNothing("CLP_ImportPFX with a wrong password", SIGIL_WRONG_PASSWORD, [&] {
        Buffer cert, key, kmCert, kmKey;
        return CLP_ImportPFX(clp, exported.data(), text("wrong"), &cert.data, &cert.length, &key.data, &key.length,
            &kmCert.data, &kmCert.length, &kmKey.data, &kmKey.length);
    });
    std::string target = work.path("stick");
    expectNothing("CLP_CopySelCertToDISK", 0,
        [&] { return CLP_CopySelCertToDISK(clp, 1, 0, 2, target.data(), text("password")); });
}

// What was handed over for a copy is kept on the ordinary heap, for the copies that follow.
TEST_F(ListResidue, OfACopyWithTheEndOfTheList)
{
    std::string target = work.path("stick");
    EXPECT_EQ(CLP_CopyforSetData(clp, text("signCert.der"), length("signCert.der"), text("sign"), length("sign"),
                  text("kmCert.der"), length("kmCert.der"), text("km"), length("km")),
        0);
    EXPECT_EQ(CLP_CopyCertToDISK(clp, 2, target.data(), text("new")), 0);
    end();
    EXPECT_EQ(hunt.found(), "");
}

TEST_F(ListResidue, OfCertificatesInMemory)
{
    EXPECT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    EXPECT_EQ(CLP_LoadMemoryCert(clp, text("signCert.der"), length("signCert.der"), text("sign"), length("sign"),
                  text("kmCert.der"), length("kmCert.der"), text("km"), length("km")),
        0);
    EXPECT_EQ(hunt.foundInCore(), "");
    end();
    EXPECT_EQ(hunt.found(), "");
}
