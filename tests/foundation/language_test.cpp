// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include "foundation/language_file.h"

#include <sigildesk/util.h>

#include <algorithm>
#include <pwd.h>
#include <type_traits>
#include <unistd.h>

namespace {

class Language : public EnvironmentTest {
protected:
    Language()
        : file(folder.write("KOR.ini",
              "[UserInterface]\nDLG_A=\xC8\xAE\xC0\xCE\nDLG_LONG=" + std::string(2000, 'x') +
                  "\nDLG_EMPTY=\n[Message]\nMSG_A=text of a message\n"))
    {
    }
    std::string uiText(const char* key, int size = 1024) { return text(&CUtil::GetLanguageUIText, key, size); }
    std::string messageText(const char* key, int size = 1024)
    {
        return text(&CUtil::GetLanguageMessageText, key, size);
    }

    std::string file;

private:
    std::string text(int (CUtil::*lookUp)(char*, char*, int, char*), const char* key, int size)
    {
        std::string out(1100, '#');
        EXPECT_EQ((CUtil().*lookUp)(Arg(file), Arg(key), size, out.data()), 0);
        // The whole stated size is cleared, and not a byte more.
        EXPECT_EQ(std::count(out.begin(), out.end(), '#'), 1100 - size);
        return out.c_str();
    }
};

// Hosts pass the object to every operation, and the names of the symbols do not tell whether it is expected.
template <auto... operations>
constexpr bool takeTheObject = (std::is_member_function_pointer_v<decltype(operations)> && ...);

static_assert(takeTheObject<&CUtil::BinaryLeft, &CUtil::BinaryMid, &CUtil::BinaryRight, &CUtil::BinaryFind2,
    &CUtil::BinaryFindCount, &CUtil::ParingFindCnt, &CUtil::ReplaceAll, &CUtil::SetLogInfo, &CUtil::WriteLogData,
    &CUtil::LogFilePath, &CUtil::GetSystemError, &CUtil::UTF8ToMultibyte, &CUtil::MultibyteToWideData,
    &CUtil::WideDataToMultibyte, &CUtil::GetCNString, &CUtil::GetOString, &CUtil::GetOUString,
    &CUtil::GetCertCAType, &CUtil::CheckPolicyID, &CUtil::GetPolicyName, &CUtil::MakeCommonPolicyID,
    &CUtil::GetKeyUsageName, &CUtil::str2time, &CUtil::GetCurrentTimeDay, &CUtil::day, &CUtil::yun, &CUtil::CalcDay,
    &CUtil::GetValidity, &CUtil::toHexString, &CUtil::HexStringToBin, &CUtil::TrimData, &CUtil::ReplaceData,
    &CUtil::ToLower, &CUtil::ToUpper, &CUtil::GetLanguageUIText, &CUtil::GetLanguageMessageText,
    &CUtil::GetLanguageCode, &CUtil::GetRemDriveCount, &CUtil::GetRemDriveInfo, &CUtil::GetDriveInfo,
    &CUtil::GetFreeDisk, &CUtil::GetFolderFilePath, &CUtil::USIMInstallURLParsing>);

} // namespace

TEST_F(Language, TextsOfBothSections)
{
    EXPECT_EQ(uiText("DLG_A"), "\xC8\xAE\xC0\xCE");
    EXPECT_EQ(messageText("MSG_A"), "text of a message");
    EXPECT_EQ(uiText("MSG_A"), "");
    EXPECT_EQ(messageText("DLG_A"), "");
    EXPECT_EQ(uiText("DLG_EMPTY"), "");
    EXPECT_EQ(uiText("DLG_NONE"), "");
    file = folder.path("missing");
    EXPECT_EQ(uiText("DLG_A"), "");
    EXPECT_EQ(messageText("MSG_A"), "");
}

TEST_F(Language, TextsAreCutToTheOutput)
{
    EXPECT_EQ(uiText("DLG_LONG", 1100), std::string(1023, 'x'));
    // A text that fills its output is deliberately not terminated.
    for (int size : {1, 4, 20, 21, 22}) {
        std::string out(24, '#');
        CUtil().GetLanguageMessageText(Arg(file), Arg("MSG_A"), size, out.data());
        const std::string text = "text of a message";
        std::string expected = text.substr(0, static_cast<std::size_t>(size));
        expected.resize(static_cast<std::size_t>(size), '\0');
        expected.resize(out.size(), '#');
        EXPECT_EQ(out, expected) << size;
    }
}

TEST_F(Language, NothingIsWrittenWithoutRoom)
{
    char out[4] = "old";
    EXPECT_EQ(CUtil().GetLanguageUIText(Arg(file), Arg("DLG_A"), 0, out), 0);
    EXPECT_EQ(CUtil().GetLanguageUIText(Arg(file), Arg("DLG_A"), -1, out), 0);
    EXPECT_STREQ(out, "old");
    EXPECT_EQ(CUtil().GetLanguageUIText(Arg(file), Arg("DLG_A"), 4, nullptr), 0);
    EXPECT_EQ(CUtil().GetLanguageUIText(nullptr, nullptr, 4, out), 0);
    EXPECT_STREQ(out, "");
}

TEST_F(Language, TheDefaultFileIsTheUsersKoreanOne)
{
    sigil::environment().homeFolder = [] { return std::string("/home/hong"); };
    EXPECT_STREQ(CUtil().m_szLangFile, "/home/hong/HalvardSafe/Corvenna/KOR.ini");
    sigil::environment().homeFolder = [] { return std::string(300, 'h'); };
    EXPECT_EQ(CUtil().m_szLangFile, std::string(259, 'h'));
}

TEST_F(Language, TheHomeFolderIsThatOfThePasswordDatabase)
{
    const passwd* entry = getpwuid(getuid());
    EXPECT_EQ(CUtil().m_szLangFile, std::string(entry ? entry->pw_dir : "") + "/HalvardSafe/Corvenna/KOR.ini");
}

TEST_F(Language, TheFileOfALanguage)
{
    struct Case {
        int language;
        std::string folder;
        std::string file;
    };
    const Case cases[] = {
        {1, "/lib", "/lib/KOR.ini"},
        {2, "/lib", "/lib/ENG.ini"},
        {0, "/lib", ""},
        {3, "/lib", ""},
        {-1, "/lib", ""},
        {1, "", "/KOR.ini"},
        {2, std::string(300, 'f'), std::string(259, 'f')},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CUtil(c.language, Arg(c.folder)).m_szLangFile, c.file);
    EXPECT_STREQ(CUtil(1, nullptr).m_szLangFile, "/KOR.ini");
}

TEST_F(Language, AnotherLanguageStandsInForOneWithoutFiles)
{
    struct Case {
        int language, standIn;
        const char* mark;
    };
    constexpr Case cases[] = {{1, 2, "KOR"}, {2, 1, "ENG"}, {3, 1, "KOR"}, {3, 2, "ENG"}, {-1, 1, "KOR"},
        {1, sigil::noLanguage, "KOR"}, {2, sigil::noLanguage, "ENG"}, {3, sigil::noLanguage, ""}};
    for (const Case& c : cases)
        EXPECT_EQ(sigil::languageMark(c.language, c.standIn), c.mark);
    EXPECT_EQ(sigil::languageFile("/lib", 3, 2), "/lib/ENG.ini");
    EXPECT_EQ(sigil::languageFile("/lib", 3, sigil::noLanguage), "");
}

TEST_F(Language, TheCodeIsAlways100) { EXPECT_EQ(CUtil().GetLanguageCode(), 100); }
