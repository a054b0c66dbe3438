// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The issuer files, the toolkit settings and the log switch as delivered, read as the library reads them.
#include <sigildesk/profile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using testing::Contains;

class ProfileFile {
public:
    explicit ProfileFile(const std::string& name)
        : m_path(std::string(SIGILDESK_LIBRARY_FOLDER "/") + name)
    {
    }

    std::string text(std::string section, std::string key)
    {
        char out[1024];
        char none[] = "";
        FileGetPrivateProfileString(section.data(), key.data(), none, out, sizeof out, m_path.data());
        return out;
    }

    int number(std::string section, std::string key)
    {
        return FileGetPrivateProfileInt(section.data(), key.data(), 0, m_path.data());
    }

    std::string content() const
    {
        std::ifstream in(m_path, std::ios::binary);
        std::stringstream content;
        content << in.rdbuf();
        return content.str();
    }

    /** Numbered sections that the file holds, whatever its count says. */
    int sections(const std::string& name) const
    {
        int count = 0;
        const std::string all = content();
        for (std::size_t at = 0; (at = all.find("\n[" + name, at)) != all.npos; ++at)
            if (std::isdigit(static_cast<unsigned char>(all[at + 2 + name.size()])))
                ++count;
        return count;
    }

private:
    std::string m_path;
};

struct Issuer {
    std::string cn;
    std::string name;
};

std::vector<Issuer> issuersOf(const std::string& fileName)
{
    ProfileFile file(fileName);
    std::vector<Issuer> issuers;
    for (int i = 1; i <= file.number("Info_count", "Issuer_Info"); ++i) {
        const std::string section = "Issuer_Info" + std::to_string(i);
        issuers.push_back({file.text(section, "cn"), file.text(section, "name")});
    }
    return issuers;
}

std::vector<std::string> commonNamesOf(const std::string& fileName)
{
    std::vector<std::string> names;
    for (const Issuer& issuer : issuersOf(fileName))
        names.push_back(issuer.cn);
    return names;
}

class IssuerFile : public testing::TestWithParam<const char*> { };

TEST_P(IssuerFile, CountsItsSections)
{
    ProfileFile file(GetParam());
    EXPECT_GT(file.number("Info_count", "Issuer_Info"), 0);
    EXPECT_EQ(file.number("Info_count", "Issuer_Info"), file.sections("Issuer_Info"));
}

TEST_P(IssuerFile, NamesEveryIssuerWithinItsFields)
{
    for (const Issuer& issuer : issuersOf(GetParam())) {
        EXPECT_FALSE(issuer.cn.empty());
        EXPECT_LE(issuer.cn.size(), 259u);
        EXPECT_FALSE(issuer.name.empty()) << issuer.cn;
        EXPECT_LE(issuer.name.size(), 259u) << issuer.cn;
    }
}

TEST_P(IssuerFile, NamesEachIssuerOnce)
{
    const auto names = commonNamesOf(GetParam());
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
}

INSTANTIATE_TEST_SUITE_P(Delivered, IssuerFile, testing::Values("Issuer_KOR.conf", "Issuer_ENG.conf"));

TEST(IssuerFiles, NameTheSameIssuersInBothLanguages)
{
    EXPECT_EQ(commonNamesOf("Issuer_KOR.conf"), commonNamesOf("Issuer_ENG.conf"));
}

TEST(IssuerFiles, CoverTheAccreditedAndTheGovernmentAuthorities)
{
    const auto names = commonNamesOf("Issuer_KOR.conf");
    for (const char* name : {"yessignCA Class 1", "SignKorea CA4", "signGATE CA6", "CrossCertCA4", "TradeSignCA",
             "NCASign CA", "INIPASS CA", "CA131100001", "CA134100031"})
        EXPECT_THAT(names, Contains(name));
}

TEST(IssuerFiles, HoldKoreanAsCp949AndEnglishAsAscii)
{
    EXPECT_EQ(
        ProfileFile("Issuer_KOR.conf").text("Issuer_Info1", "name"), "\xB1\xDD\xC0\xB6\xB0\xE1\xC1\xA6\xBF\xF8");
    EXPECT_EQ(ProfileFile("Issuer_ENG.conf").text("Issuer_Info1", "name"), "yessign (KFTC)");
    EXPECT_THAT(ProfileFile("Issuer_ENG.conf").content(),
        testing::Each(testing::AnyOf('\n', testing::AllOf(testing::Ge(' '), testing::Le('~')))));
}

struct Authority {
    std::string dn;
    std::string url;
    bool isRoot() const { return dn.find("Root") != dn.npos; }
};

std::vector<Authority> authorities()
{
    ProfileFile file("HVCToolkitV30.conf");
    std::vector<Authority> all;
    for (int i = 1; i <= file.number("VALIDATOIN_OPTION", "CA_INFO_COUNT"); ++i) {
        const std::string section = "CA_INFO" + std::to_string(i);
        all.push_back({file.text(section, "CA_DN"), file.text(section, "DIR_URL")});
    }
    return all;
}

TEST(ToolkitSettings, CountTheirAuthorities)
{
    ProfileFile file("HVCToolkitV30.conf");
    EXPECT_GT(file.number("VALIDATOIN_OPTION", "CA_INFO_COUNT"), 0);
    EXPECT_EQ(file.number("VALIDATOIN_OPTION", "CA_INFO_COUNT"), file.sections("CA_INFO"));
}

TEST(ToolkitSettings, HoldNamesAndAddressesThatFitTheirFields)
{
    for (const Authority& authority : authorities()) {
        EXPECT_THAT(authority.dn, testing::StartsWith("cn="));
        EXPECT_LE(authority.dn.size(), 99u) << authority.dn;
        EXPECT_LE(authority.url.size(), 99u) << authority.dn;
    }
}

// The defence root is the one authority that is never fetched.
TEST(ToolkitSettings, SayWhereEveryAuthorityButTheDefenceRootIsFetched)
{
    for (const Authority& authority : authorities()) {
        if (authority.dn == "cn=Root CA,ou=MPKI,o=Ministry of National Defense,c=KR")
            EXPECT_EQ(authority.url, "");
        else
            EXPECT_THAT(authority.url, testing::MatchesRegex("ldap://[a-z.]+:389")) << authority.dn;
    }
}

TEST(ToolkitSettings, HoldThePublishedRoots)
{
    std::vector<std::string> roots;
    for (const Authority& authority : authorities())
        if (authority.isRoot())
            roots.push_back(authority.dn);
    EXPECT_THAT(roots,
        testing::ElementsAre("cn=KISA RootCA 1,ou=Korea Certification Authority Central,o=KISA,c=KR",
            "cn=KISA RootCA 3,ou=Korea Certification Authority Central,o=KISA,c=KR",
            "cn=KISA RootCA 4,ou=Korea Certification Authority Central,o=KISA,c=KR",
            "cn=Root CA,ou=GPKI,o=Government of Korea,c=KR", "cn=GPKIRootCA,ou=GPKI,o=Government of Korea,c=KR",
            "cn=GPKIRootCA1,ou=GPKI,o=Government of Korea,c=KR",
            "cn=Root CA,ou=MPKI,o=Ministry of National Defense,c=KR"));
}

TEST(LogSwitch, IsDeliveredOff)
{
    ProfileFile file("TWAPI_LOG.ini");
    EXPECT_EQ(file.text("TW_Info", "PATH"), "");
    EXPECT_THAT(file.content(), testing::ContainsRegex("\n\\[TW_Info\\]\nPATH ="));
}

// A bracket inside a value would end its section, and with it hide what follows.
TEST(SettingsFiles, HoldNoBracketInsideAValue)
{
    for (const char* name : {"Issuer_KOR.conf", "Issuer_ENG.conf", "HVCToolkitV30.conf", "TWAPI_LOG.ini"}) {
        std::istringstream lines(ProfileFile(name).content());
        for (std::string line; std::getline(lines, line);)
            EXPECT_TRUE(line.starts_with("[") || line.find('[') == line.npos) << name << ": " << line;
    }
}

} // namespace
