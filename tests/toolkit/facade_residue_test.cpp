// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the exported functions leave of keys, random values and passwords in the memory and the registers of their host:
// nothing, over both toolkits.

#include "tests/tools/secret_store.h"

#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

/** Fills byte strings by a call, and releases them as a host does. */
class Strings {
public:
    explicit Strings(void* handle)
        : m_handle(handle)
    {
    }
    ~Strings()
    {
        for (BINSTR& record : m_records)
            HV_BINSTR_Delete(m_handle, &record);
    }
    Strings(const Strings&) = delete;
    Strings& operator=(const Strings&) = delete;

    BINSTR* operator[](std::size_t i) { return &m_records.at(i); }
    /** What some functions want in what they replace. */
    void fill()
    {
        unsigned char placeholder[]{0};
        for (BINSTR& record : m_records)
            HV_BINSTR_SetData(m_handle, placeholder, 1, &record);
    }

private:
    void* m_handle;
    std::array<BINSTR, 6> m_records{};
};

class FacadeResidue : public testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite() { store = std::make_unique<SecretStore>(); }
    static void TearDownTestSuite() { store.reset(); }

    FacadeResidue()
    {
        EXPECT_EQ(sigildesk::initialise(m_handle, GetParam(), folder.data()), 0);
        h = m_handle.get();
    }
    BINSTR* file(const char* name) { return (*store)[name].get(); }
    char* text(const char* name) { return (*store)[name].chars(); }
    bool isMaker() const { return GetParam() == 0; }

    /** Calls, and looks when what came back was released. */
    void expectNothing(const std::string& name, int code, const std::function<int(Strings&)>& call)
    {
        int result = 0;
        {
            Strings strings(h);
            result = call(strings);
        }
        const std::string found = m_hunt.found();
        EXPECT_EQ(result, code) << name;
        EXPECT_EQ(found, "") << "after " << name;
    }

    static std::unique_ptr<SecretStore> store;
    std::string folder = SIGILDESK_LIBRARY_FOLDER;
    void* h = nullptr;
    BINSTR data{
        reinterpret_cast<unsigned char*>(folder.data()), static_cast<int>(folder.size())}; // to be worked on

private:
    SecretHunt m_hunt = store->hunt();
    sigildesk::CryptoHandle m_handle;
};
std::unique_ptr<SecretStore> FacadeResidue::store;

std::string faceOf(const testing::TestParamInfo<int>& info) { return info.param == 0 ? "maker" : "gpki"; }

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, FacadeResidue, testing::Values(0, 1), faceOf);

TEST_P(FacadeResidue, OfByteStrings)
{
    expectNothing("HV_BINSTR_SetData", 0, [&](Strings& s) {
        const std::string_view key = (*store)["sign"].bytes();
        return HV_BINSTR_SetData(h, file("sign")->pData, static_cast<int>(key.size()), s[0]);
    });
    expectNothing(
        "Base64", 0, [&](Strings& s) { return Base64Encode(h, file("sign"), s[0]) | Base64Decode(h, s[0], s[1]); });
    if (isMaker())
        expectNothing("lists", 0, [&](Strings& s) {
            return UTILAddObject(h, file("sign"), s[0]) | UTILAddObject(h, file("km"), s[0]) |
                UTILGetObject(h, s[0], 1, s[1]);
        });
}

TEST_P(FacadeResidue, OfKeyFiles)
{
    expectNothing("PriKeyDecrypt", 0,
        [&](Strings& s) { return PriKeyDecrypt(h, text("password"), file("signPri.key"), s[0]); });
    expectNothing("PriKeyDecrypt with a wrong password", SIGIL_TK_KEY_WRONG_PASSWORD,
        [&](Strings& s) { return PriKeyDecrypt(h, text("wrong"), file("signPri.key"), s[0]); });
    for (const int algorithm : {SIGIL_TK_KEY_SEED, SIGIL_TK_KEY_PKCS12_3DES, SIGIL_TK_KEY_PBES2_SEED,
             SIGIL_TK_KEY_PBES2_AES256, SIGIL_TK_KEY_PBES2_ARIA256})
        expectNothing("PriKeyEncrypt and PriKeyDecrypt " + std::to_string(algorithm), 0, [&](Strings& s) {
            return PriKeyEncrypt(h, algorithm, text("new"), file("sign"), s[0]) |
                PriKeyDecrypt(h, text("new"), s[0], s[1]);
        });
    expectNothing("PriKeyChangePasswd", 0, [&](Strings& s) {
        return PriKeyChangePasswd(h, text("password"), text("new"), file("signPri.key"), s[0]);
    });
    expectNothing("PriKeyCheckKeyPair", 0,
        [&](Strings&) { return PriKeyCheckKeyPair(h, file("signCert.der"), file("sign")); });
    expectNothing("PriKeyCheckKeyPair of another", SIGIL_TK_KEY_MISMATCH,
        [&](Strings&) { return PriKeyCheckKeyPair(h, file("signCert.der"), file("km")); });
}

TEST_P(FacadeResidue, OfIdentities)
{
    expectNothing(
        "VIDGetRandomFromPriKey", 0, [&](Strings& s) { return VIDGetRandomFromPriKey(h, file("sign"), s[0]); });
    std::string other = "000000-0000000";
    expectNothing("VIDVerify", SIGIL_TK_VID_MISMATCH,
        [&](Strings&) { return VIDVerify(h, file("signCert.der"), file("random"), other.data()); });
}

TEST_P(FacadeResidue, OfSignaturesAndEncryption)
{
    expectNothing("CRYPTSign", 0, [&](Strings& s) {
        return CRYPTSign(h, file("signCert.der"), file("sign"), SIGIL_TK_HASH_SHA256, &data, s[0]);
    });
    expectNothing("CRYPTAsymEncrypt with a private key", 0,
        [&](Strings& s) { return CRYPTAsymEncrypt(h, SIGIL_TK_ASYM_PRIVATE, file("sign"), &data, s[0]); });
    expectNothing("CRYPTAsymDecrypt", 0, [&](Strings& s) {
        return CRYPTAsymEncrypt(h, SIGIL_TK_ASYM_PUBLIC, file("kmCert.der"), &data, s[0]) |
            CRYPTAsymDecrypt(h, SIGIL_TK_ASYM_PRIVATE, file("km"), s[0], s[1]);
    });
    expectNothing("CRYPTGenMAC", 0, [&](Strings& s) {
        return CRYPTGenMAC(h, SIGIL_TK_HASH_SHA256, text("password"), &data, s[0]) |
            CRYPTVerifyMAC(h, SIGIL_TK_HASH_SHA256, text("password"), &data, s[0]);
    });
}

TEST_P(FacadeResidue, OfMessages)
{
    char now[] = "";
    expectNothing("CMSMakeSignedData", 0, [&](Strings& s) {
        return CMSMakeSignedData(h, 0, file("signCert.der"), file("sign"), &data, now, s[0]) |
            CMSMakeSignedDataWithAddSigner(h, 0, file("signCert.der"), file("sign"), s[0], now, s[1]);
    });
    expectNothing("CMSProcessEnvelopedData", 0, [&](Strings& s) {
        return CMSMakeEnvelopedData(h, 0, file("kmCert.der"), &data, 0, s[0]) |
            CMSProcessEnvelopedData(h, file("kmCert.der"), file("km"), s[0], s[1]);
    });
    expectNothing("CMSProcessSignedAndEnvData", 0, [&](Strings& s) {
        return CMSMakeSignedAndEnvData(
                   h, 0, file("signCert.der"), file("sign"), file("kmCert.der"), &data, 0, s[0]) |
            CMSProcessSignedAndEnvData(h, 0, file("kmCert.der"), file("km"), s[0], s[1], s[2]);
    });
}

TEST_P(FacadeResidue, OfPkcs12)
{
    for (const int option : {SIGIL_TK_PFX_3DES, SIGIL_TK_PFX_SEED, SIGIL_TK_PFX_AES256})
        expectNothing("PFXExport " + std::to_string(option), 0, [&](Strings& s) {
            return PFXExport(
                h, option, text("new"), file("signCert.der"), file("sign"), file("kmCert.der"), file("km"), s[0]);
        });
    expectNothing("PFXImport", 0,
        [&](Strings& s) { return PFXImport(h, text("password"), file("pfx"), s[0], s[1], s[2], s[3], s[4]); });
    expectNothing("PFXImport with a wrong password", SIGIL_TK_PFX_WRONG_PASSWORD,
        [&](Strings& s) { return PFXImport(h, text("wrong"), file("pfx"), s[0], s[1], s[2], s[3], s[4]); });
    if (isMaker())
        expectNothing("PFXImportMultiPair2 and PFXExportMultiPair", 0, [&](Strings& s) {
            s.fill();
            return PFXImportMultiPair2(h, 0, file("pfx"), text("password"), s[0], s[1], s[2]) |
                PFXExportMultiPair(h, SIGIL_TK_PFX_AES256, text("new"), s[0], s[1], s[3]);
        });
}
