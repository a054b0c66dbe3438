// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/util.h>

#include <cstring>
#include <memory>
#include <vector>

namespace {

template <std::size_t N>
void fill(char (&field)[N], std::string_view text)
{
    std::memset(field, 0, N);
    text.copy(field, N); // may fill the field without a terminator
}

std::vector<tagSETOID> filter(std::initializer_list<std::string_view> oids)
{
    std::vector<tagSETOID> list(oids.size());
    for (std::size_t i = 0; i < list.size(); ++i)
        fill(list[i].szOID, oids.begin()[i]);
    return list;
}

tagPOLICYID policy(std::string_view oid, std::string_view name)
{
    tagPOLICYID entry;
    fill(entry.szOID, oid);
    fill(entry.szName, name);
    return entry;
}

} // namespace

TEST(Authorities, Kinds)
{
    struct Case {
        const char* name;
        int kind;
    };
    const Case cases[] = {
        {"Government of Korea", 1},
        {"yessign", 2},
        {"CrossCert", 2},
        {"KICA", 2},
        {"SignGate", 2},
        {"NCASign", 2},
        {"SignKorea", 2},
        {"TradeSign", 2},
        {"Ministry of National Defense", 4},
        {"YESSIGN", 2},
        {"GOVERNMENT OF KOREA", 1},
        {"kica", 2},
        {"ministry of national defense", 4},
        {"", 8},
        {nullptr, 8},
        {"yessign ", 8},
        {"yessig", 8},
        {"Acme", 8},
    };
    for (const Case& c : cases) {
        int kind = 77;
        EXPECT_EQ(CUtil().GetCertCAType(Arg(c.name), &kind), 0);
        EXPECT_EQ(kind, c.kind) << (c.name ? c.name : "null");
    }
    EXPECT_EQ(CUtil().GetCertCAType(Arg("KICA"), nullptr), 0);
}

TEST(Policies, Check)
{
    const std::string full(40, '1');
    std::vector<tagSETOID> list = filter({"1 2 410 100001 5 3", "abc", full});
    struct Case {
        std::string oid;
        int count;
        int found;
    };
    const Case cases[] = {
        {"1 2 410 100001 5 3", 3, 1},
        {"1 2 410 100001 5", 3, 0},
        {"1 2 410 100001 5 3 1", 3, 0},
        {"ABC", 3, 1},
        {"ABC", 1, 0},
        {"abc", 0, 0},
        {"abc", -1, 0},
        {full, 3, 1},
        {full + "1", 3, 0},
        {"", 3, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CUtil().CheckPolicyID(Arg(c.oid), list.data(), c.count), c.found) << c.oid;
    EXPECT_EQ(CUtil().CheckPolicyID(nullptr, list.data(), 3), 0);
    EXPECT_EQ(CUtil().CheckPolicyID(Arg("abc"), nullptr, 3), 0);
}

TEST(Policies, Name)
{
    const std::string fullOid(30, '1');
    const std::string fullName(60, 'n');
    std::vector<tagPOLICYID> list{policy("1 2 3", "first"), policy("abc", "other"), policy("1 2 3", "last"),
        policy(fullOid, fullName), policy("4 5", "")};
    struct Case {
        std::string oid;
        int count;
        int found;
        std::string name;
    };
    const Case cases[] = {
        {"1 2 3", 5, 1, "last"},
        {"1 2 3", 2, 1, "first"},
        {"ABC", 5, 1, "other"},
        {fullOid, 5, 1, fullName},
        {"4 5", 5, 1, ""},
        {"1 2", 5, 0, "old"},
        {"", 5, 0, "old"},
        {"abc", 0, 0, "old"},
        {"abc", -1, 0, "old"},
        {fullOid + fullName, 5, 0, "old"},
    };
    for (const Case& c : cases) {
        char name[1024] = "old";
        EXPECT_EQ(CUtil().GetPolicyName(Arg(c.oid), list.data(), c.count, name), c.found);
        EXPECT_EQ(name, c.name);
    }
    char name[1024] = "old";
    EXPECT_EQ(CUtil().GetPolicyName(nullptr, list.data(), 5, name), 0);
    EXPECT_EQ(CUtil().GetPolicyName(Arg("abc"), nullptr, 5, name), 0);
    EXPECT_EQ(CUtil().GetPolicyName(Arg("abc"), list.data(), 5, nullptr), 0);
}

TEST(Policies, MakeCommon)
{
    struct Case {
        std::string issuer;
        std::string policies;
        int result;
        std::string expected;
    };
    const std::string full(1024, 'p');
    const Case cases[] = {
        {"TradeSignCA", "1 2 3, 4 5 6", 0, "4 5 6"},
        {"TRADESIGNca", "1 2 3, 4 5 6", 0, "4 5 6"},
        {"TradeSignCA", "1, 2, 3", 0, "2, 3"},
        {"TradeSignCA", "1 2 3", -1, "1 2 3"},
        {"TradeSignCA", "", -1, ""},
        {"TradeSignCA", "1,", 0, ""},
        {"TradeSignCA", "1, ", 0, ""},
        {"TradeSignCA", ",,2", 0, "2"},
        {"TradeSignCA2", "1 2 3, 4 5 6", 0, "1 2 3, 4 5 6"},
        {"", "1, 2", 0, "1, 2"},
        {"TradeSignCA", full, -1, full},
        {"TradeSignCA", "1, " + full.substr(3), 0, full.substr(3)},
    };
    for (const Case& c : cases) {
        const auto cert = std::make_unique<tagCERTINFO>();
        fill(cert->szIssuerCN, c.issuer);
        fill(cert->szPolicyID, c.policies);
        EXPECT_EQ(CUtil().MakeCommonPolicyID(cert.get()), c.result) << c.policies;
        EXPECT_EQ(std::string(cert->szPolicyID, strnlen(cert->szPolicyID, sizeof cert->szPolicyID)), c.expected);
    }
    EXPECT_EQ(CUtil().MakeCommonPolicyID(nullptr), 0);
}

namespace {

class KeyUsage : public testing::Test {
protected:
    KeyUsage()
        : languageFile(folder.write("KOR.ini",
              "[UserInterface]\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN=Sign\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_NONREPUDIATION=NonRep\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_KEYENCIPHERMENT=KeyEnc\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_DATAENCIPHERMENT=DataEnc\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_KEYAGREEMENT=KeyAgree\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_KEYCERTSIGN=CertSign\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_CRLSIGN=CrlSign\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY=EncOnly\n"
              "DLG_CERVIEWNORAL_KEYUSAGE_DECIPHERONLY=DecOnly\n"))
    {
    }
    std::string names(const char* usage, const char* separator = ",", int size = 256)
    {
        char out[256] = "old";
        EXPECT_EQ(CUtil().GetKeyUsageName(Arg(languageFile), Arg(usage), Arg(separator), size, out), 1);
        return out;
    }

    TemporaryFolder folder;
    std::string languageFile;
};

} // namespace

TEST_F(KeyUsage, Texts)
{
    struct Case {
        const char* usage;
        const char* separator;
        const char* expected;
    };
    const Case cases[] = {
        {"digitalSignature", ",", "Sign"},
        {"nonRepudiation", ",", "NonRep"},
        {"keyEncipherment", ",", "KeyEnc"},
        {"dataEncipherment", ",", "DataEnc"},
        {"keyAgreement", ",", "KeyAgree"},
        {"keyCertSign", ",", "CertSign"},
        {"crlSign", ",", "CrlSign"},
        {"encipherOnly", ",", "EncOnly"},
        {"decipherOnly", ",", "DecOnly"},
        {"digitalSignature, nonRepudiation", ",", "Sign,NonRep"},
        {"nonRepudiation digitalSignature", "/", "Sign/NonRep"}, // in the order of the table
        {"xcrlSigny,keyCertSign", " ", "CertSign CrlSign"},
        {"DIGITALSIGNATURE", ",", ""},
        {"", ",", ""},
        {nullptr, ",", ""},
        {"digitalSignature, nonRepudiation", ", ", " Sign, NonRep"}, // only one character is dropped
        {"digitalSignature, nonRepudiation", "", "ignNonRep"},
        {"digitalSignature", nullptr, "ign"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(names(c.usage, c.separator), c.expected);
}

TEST_F(KeyUsage, IsCutToTheOutput)
{
    EXPECT_EQ(names("keyEncipherment", ",", 7), "KeyEnc");
    EXPECT_EQ(names("keyEncipherment", ",", 2), "Ked"); // it fills its output, deliberately without a terminator
    EXPECT_EQ(names("", ",", 1), "");
    EXPECT_EQ(names("keyEncipherment", ",", 0), "old");
    EXPECT_EQ(CUtil().GetKeyUsageName(Arg(languageFile), Arg("crlSign"), Arg(","), 10, nullptr), 1);
}

TEST_F(KeyUsage, WithoutTextsOnlySeparatorsRemain)
{
    languageFile = folder.path("missing");
    EXPECT_EQ(names("digitalSignature, nonRepudiation"), ",");
}
