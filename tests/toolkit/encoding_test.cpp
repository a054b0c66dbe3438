// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Base64, PEM, lists of objects, names and the small functions of the frames.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

using namespace toolkit_test;

namespace {

std::string readHeader()
{
    const auto sources = std::filesystem::path(SIGILDESK_TEST_DATA).parent_path() / "../..";
    std::ifstream file(sources / "include/sigildesk/open_toolkit.h");
    return {std::istreambuf_iterator<char>(file), {}};
}

class Base64 : public testing::TestWithParam<const char*> {
protected:
    int decode(const std::string& encoded, std::string& decoded)
    {
        ByteString in(toolkit, encoded);
        ByteString out(toolkit);
        const int code = toolkit("BASE64_Decode", in.get(), out.get());
        decoded = out.bytes();
        return code;
    }
    ToolkitLibrary toolkit{GetParam()};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Faces, Base64, testing::Values("HVTK_", "GPKI_"), [](const auto& face) { return std::string(face.param, 4); });

TEST_P(Base64, MatchesThePublishedVectors)
{
    // RFC 4648, section 10
    const std::pair<const char*, const char*> vectors[]{{"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"}};
    for (const auto& [plain, encoded] : vectors) {
        ByteString in(toolkit, plain);
        ByteString out(toolkit);
        ASSERT_EQ(toolkit("BASE64_Encode", in.get(), out.get()), 0);
        EXPECT_EQ(out.bytes(), encoded);
        std::string back;
        ASSERT_EQ(decode(encoded, back), 0);
        EXPECT_EQ(back, plain);
    }
}

TEST_P(Base64, LineBreaksAreSkippedAndAllElseIsRefused)
{
    std::string out;
    EXPECT_EQ(decode("Zm9v\r\nYmFy\n", out), 0);
    EXPECT_EQ(out, "foobar");
    for (const std::string wrong : {"Zm9", "Zm9v!mFy", "====", "Zg=a", "Z===", "AAAA----", "Zm9v=", "한글입니"})
        EXPECT_EQ(decode(wrong, out), SIGIL_TK_ENCODING) << wrong;
}

TEST(Pem, IsReadByTheOpensslCommandAndBack)
{
    const ToolkitLibrary toolkit("HVTK_");
    const Workshop workshop;
    workshop.certificate("user", "/CN=user", "");
    ByteString der(toolkit, workshop.read("user.crt"));
    ByteString pem(toolkit);
    ASSERT_EQ(toolkit("PEM_Encode", SIGIL_TK_PEM_CERTIFICATE, der.get(), pem.get()), 0);
    EXPECT_EQ(pem.bytes(), workshop.read("user.pem"));
    ByteString back(toolkit);
    ASSERT_EQ(toolkit("PEM_Decode", pem.get(), back.get()), 0);
    EXPECT_EQ(back.bytes(), der.bytes());
    // With the input in the second record, as the façade's check of it asks for.
    ByteString other(toolkit);
    ASSERT_EQ(toolkit("PEM_Decode", other.get(), pem.get()), 0);
    EXPECT_EQ(other.bytes(), der.bytes());
    ByteString none(toolkit);
    EXPECT_EQ(toolkit("PEM_Encode", 7, der.get(), none.get()), SIGIL_TK_OPTION);
    EXPECT_EQ(toolkit("PEM_Encode", -1, der.get(), none.get()), SIGIL_TK_OPTION);
    for (const std::string wrong : {"no PEM", "-----BEGIN X", "-----BEGIN X-----\nAAAA\n",
             "-----BEGIN X-----\n!!!!\n-----END X-----\n", "-----BEGIN X-----\nAAAA\n-----END Y-----\n"}) {
        ByteString damaged(toolkit, wrong);
        EXPECT_EQ(toolkit("PEM_Decode", damaged.get(), none.get()), SIGIL_TK_ENCODING) << wrong;
    }
    EXPECT_TRUE(none.empty());
    const char* const labels[]{"CERTIFICATE", "PRIVATE KEY", "ENCRYPTED PRIVATE KEY", "PUBLIC KEY", "CMS",
        "X509 CRL", "CERTIFICATE REQUEST"};
    for (int type = 0; type < 7; ++type) {
        ByteString out(toolkit);
        ASSERT_EQ(toolkit("PEM_Encode", type, der.get(), out.get()), 0);
        EXPECT_THAT(out.bytes(), testing::StartsWith(std::string("-----BEGIN ") + labels[type] + "-----\n"));
    }
}

TEST(ObjectList, HoldsAnyBytesInOrder)
{
    const ToolkitLibrary toolkit("HVTK_");
    const std::string objects[]{"plain text", fromHex("3003020101"), fromHex("04020102"), fromHex("3003020101ff")};
    ByteString list(toolkit);
    for (const std::string& object : objects) {
        ByteString one(toolkit, object);
        ASSERT_EQ(toolkit("UTIL_AddObject", one.get(), list.get()), 0);
    }
    int count = 0;
    ASSERT_EQ(toolkit("UTIL_GetObjectCount", list.get(), &count), 0);
    ASSERT_EQ(count, 4);
    for (int i = 0; i < 4; ++i) {
        ByteString one(toolkit);
        ASSERT_EQ(toolkit("UTIL_GetObject", list.get(), i, one.get()), 0);
        EXPECT_EQ(one.bytes(), objects[i]);
    }
    ByteString none(toolkit);
    EXPECT_EQ(toolkit("UTIL_GetObject", list.get(), 4, none.get()), SIGIL_TK_INDEX);
    EXPECT_EQ(toolkit("UTIL_GetObject", list.get(), -1, none.get()), SIGIL_TK_INDEX);
    EXPECT_TRUE(none.empty());
}

TEST(ObjectList, GarbageIsRefusedAndLeftAlone)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString object(toolkit, "object");
    for (const std::string garbage : {"garbage", "30", "3005040361", "30800000", "3003020101ff", "31030201"}) {
        ByteString list(toolkit, garbage == "garbage" ? garbage : fromHex(garbage));
        const std::string before = list.bytes();
        int count = -1;
        EXPECT_EQ(toolkit("UTIL_GetObjectCount", list.get(), &count), SIGIL_TK_ENCODING) << garbage;
        EXPECT_EQ(count, -1);
        EXPECT_EQ(toolkit("UTIL_AddObject", object.get(), list.get()), SIGIL_TK_ENCODING) << garbage;
        EXPECT_EQ(list.bytes(), before);
    }
}

TEST(GpkiCertificateList, IsTheCaPubsForm)
{
    const ToolkitLibrary toolkit("GPKI_");
    const Workshop workshop;
    workshop.certificate("one", "/CN=one", "");
    workshop.certificate("two", "/CN=two", "");
    ByteString list(toolkit);
    for (const std::string name : {"one", "two"}) {
        ByteString certificate(toolkit, workshop.read(name + ".crt"));
        ASSERT_EQ(toolkit("CERT_AddCert", certificate.get(), list.get()), 0);
    }
    workshop.write("CaPubs", list.bytes());
    EXPECT_THAT(
        workshop.run("openssl asn1parse -inform DER -in CaPubs | grep -c 'd=1 .*SEQUENCE'"), testing::Eq("2\n"));
    int count = 0;
    ASSERT_EQ(toolkit("CERT_GetCertCount", list.get(), &count), 0);
    EXPECT_EQ(count, 2);
    ByteString second(toolkit, "what the record held before");
    ASSERT_EQ(toolkit("CERT_GetCert", list.get(), 1, second.get()), 0);
    EXPECT_EQ(second.bytes(), workshop.read("two.crt"));
    EXPECT_EQ(toolkit("CERT_GetCert", list.get(), 2, second.get()), SIGIL_TK_INDEX);
    EXPECT_EQ(second.bytes(), workshop.read("two.crt"));
    ByteString garbage(toolkit, "garbage");
    EXPECT_EQ(toolkit("CERT_AddCert", garbage.get(), list.get()), SIGIL_TK_CERT_MALFORMED);
}

TEST(CompareDn, IgnoresCaseBlanksAndDirection)
{
    const ToolkitLibrary toolkit("HVTK_");
    const auto compare = [&](const std::string& left, const std::string& right) {
        return toolkit("UTIL_CompareDN", text(left), text(right));
    };
    EXPECT_EQ(compare("cn=a,o=b,c=KR", "CN=A, O=b, C=kr"), 0);
    EXPECT_EQ(compare("cn=a,o=b,c=KR", "c=kr,o=b,cn=a"), 0);
    EXPECT_EQ(compare("cn = a", "cn=a"), 0);
    EXPECT_EQ(compare("cn=a,o=b,c=KR", "cn=a,o=b"), SIGIL_TK_NAMES_DIFFER);
    EXPECT_EQ(compare("cn=a,o=b", "cn=a,o=c"), SIGIL_TK_NAMES_DIFFER);
    EXPECT_EQ(compare("cn=a b", "cn=ab"), SIGIL_TK_NAMES_DIFFER);
    EXPECT_EQ(compare("", "cn=a"), SIGIL_TK_NAMES_DIFFER);
}

TEST(CompareDn, FoldsOnlyAsciiLetters)
{
    const ToolkitLibrary toolkit("HVTK_");
    // 똠 and 똔 end with the bytes of "c" and "C": other characters, not another letter case.
    EXPECT_EQ(toolkit("UTIL_CompareDN", text("cn=\x8C\x63"), text("cn=\x8C\x43")), SIGIL_TK_NAMES_DIFFER);
    EXPECT_EQ(toolkit("UTIL_CompareDN", text("cn=\xC1\xC9"), text("cn=\xE1\xE9")), SIGIL_TK_NAMES_DIFFER);
    EXPECT_EQ(toolkit("UTIL_CompareDN",
                  text("cn=\xC8\xAB"
                       "AB"),
                  text("CN=\xC8\xAB"
                       "ab")),
        0);
}

TEST(HvtkApi, VersionAndSettings)
{
    const ToolkitLibrary toolkit("HVTK_");
    std::array<char, 64> version{};
    std::array<char, 64> information{};
    ASSERT_EQ(toolkit("API_GetInfo", version.data(), information.data()), 0);
    EXPECT_THAT(version.data(), testing::StartsWith("SigilDesk open toolkit "));
    EXPECT_THAT(information.data(), testing::StartsWith("OpenSSL 3."));
    EXPECT_EQ(toolkit("API_SetConfFile", text("")), 0);
    EXPECT_EQ(toolkit("API_SetConfFile", text("/none")), SIGIL_TK_FILE_NOT_FOUND);
}

TEST(GpkiApi, VersionSettingsAndTimes)
{
    const ToolkitLibrary toolkit("GPKI_");
    std::array<char, 64> out{};
    ASSERT_EQ(toolkit("API_GetVersion", 10, out.data()), 0);
    EXPECT_STREQ(out.data(), "SigilDesk");
    ASSERT_EQ(toolkit("API_GetInfo", 8, out.data()), 0);
    EXPECT_STREQ(out.data(), "OpenSSL");
    EXPECT_EQ(toolkit("API_SetOption", 0), 0);
    EXPECT_EQ(toolkit("API_SetOption", 2), SIGIL_TK_OPTION);
    EXPECT_EQ(toolkit("API_SetConfFile", text("/none")), SIGIL_TK_FILE_NOT_FOUND);
    long time = 0;
    ASSERT_EQ(toolkit("API_Str2Time", text("2024-07-10 21:00:00"), &time), 0);
    EXPECT_EQ(toolkit::timeText(time), "2024-07-10 21:00:00");
    EXPECT_EQ(toolkit("API_Str2Time", text("yesterday"), &time), SIGIL_TK_ENCODING);
    EXPECT_EQ(toolkit("API_Str2Time", text("2025-02-30 00:00:00"), &time), SIGIL_TK_ENCODING);
    EXPECT_EQ(toolkit("API_Str2Time", text("2024-07-10 21:00:00"), static_cast<long*>(nullptr)), SIGIL_TK_ARGUMENT);
}

TEST(GpkiCertificate, ValidityAndPublicKeyAreTextsOfTheirOwn)
{
    const ToolkitLibrary toolkit("GPKI_");
    const Workshop workshop;
    workshop.certificate("user", "/CN=user", "");
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
    std::array<char, 2048> out{};
    // The capacity is that of one date: the façade passes what its caller has for the first one.
    ASSERT_EQ(toolkit("CERT_GetValidity", 20, out.data()), 0);
    const std::string validity = out.data();
    EXPECT_TRUE(toolkit::timeFromText(validity.substr(0, 19)));
    EXPECT_EQ(validity.substr(19, 3), " ~ ");
    EXPECT_TRUE(toolkit::timeFromText(validity.substr(22)));
    EXPECT_EQ(toolkit("CERT_GetValidity", 19, out.data()), SIGIL_TK_BUFFER_TOO_SMALL);
    const auto toLastDay = std::chrono::sys_days(std::chrono::year(9999) / 12 / 31) -
        std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    workshop.certificate("never", "/CN=never", "", "", "-days " + std::to_string(toLastDay.count()));
    std::string der = workshop.read("never.crt");
    der.replace(der.find("99991231"), 14, "99991231235959");
    ByteString never(toolkit, der);
    ASSERT_EQ(toolkit("CERT_Load", never.get()), 0);
    setenv("TZ", "Asia/Seoul", 1);
    ASSERT_EQ(toolkit("CERT_GetValidity", 20, out.data()), 0);
    unsetenv("TZ");
    EXPECT_THAT(out.data(), testing::EndsWith(" ~ 9999-12-31 23:59:59"));
    EXPECT_EQ(std::strlen(out.data()), 41U);
    ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
    ASSERT_EQ(toolkit("CERT_GetPubKeyAlg", 50, out.data()), 0);
    EXPECT_STREQ(out.data(), "RSA");
    ASSERT_EQ(toolkit("CERT_GetPubKeyLen", 20, out.data()), 0);
    EXPECT_STREQ(out.data(), "2048 Bits");
    ASSERT_EQ(toolkit("CERT_GetPubKey", 2048, out.data()), 0);
    EXPECT_EQ(std::string(out.data()).size(), 540U);
}

TEST(CodeText, EveryCodeOfTheHeaderHasItsSentenceAndNoOther)
{
    std::istringstream header(readHeader());
    std::set<int> inHeader;
    for (std::string line; std::getline(header, line) && line != "};";) {
        const std::size_t equals = line.find(" = ");
        if (line.starts_with("    SIGIL_TK_") && equals != line.npos)
            inHeader.insert(std::stoi(line.substr(equals + 3)));
    }
    std::set<int> withText;
    for (int code = 0; code < 10000; ++code)
        if (!toolkit::codeText(code).empty())
            withText.insert(code);
    EXPECT_EQ(inHeader, withText);
    EXPECT_GT(inHeader.size(), 40U);
}

extern "C" int codeOfWrongPasswordInC(void);

TEST(CodeText, TheHeaderIsC) { EXPECT_EQ(codeOfWrongPasswordInC(), 2004); }
