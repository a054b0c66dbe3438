// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The keys that the code looks up, held against the keys of both language files.

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

namespace {

using Keys = std::set<std::string>;

std::string content(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/** Every key in double quotes in the sources of a folder. */
Keys keysInCode(const std::string& folder)
{
    static const QRegularExpression key("\"((DLG|MSG)_[A-Z0-9_]+)\"");
    Keys keys;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h")
            continue;
        auto found = key.globalMatch(QString::fromStdString(content(entry.path())));
        while (found.hasNext())
            keys.insert(found.next().captured(1).toStdString());
    }
    return keys;
}

struct LanguageFile {
    std::map<std::string, std::map<std::string, std::string>> sections;
};

LanguageFile read(const std::string& name)
{
    LanguageFile file;
    std::istringstream lines(content(std::string(SIGILDESK_SOURCE) + "/share/" + name));
    std::string line, section;
    while (std::getline(lines, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (line[0] == '[') {
            section = line.substr(1, line.find(']') - 1);
            continue;
        }
        const auto equals = line.find(" = ");
        EXPECT_NE(equals, std::string::npos) << name << ": " << line;
        EXPECT_TRUE(file.sections[section].emplace(line.substr(0, equals), line.substr(equals + 3)).second)
            << name << " has twice: " << line;
    }
    return file;
}

Keys keysOf(const LanguageFile& file)
{
    Keys keys;
    for (const auto& [section, entries] : file.sections)
        for (const auto& [key, text] : entries)
            keys.insert(key);
    return keys;
}

/** Keys that belong to the files though no code shows them. */
const Keys unshown = {"MSG_SELECTCERT_FAIL", "MSG_CERTVERIFY_SUCESS"};

/** Texts that take a value. */
const Keys formats = {"MSG_SELECTCERT_EXIRED", "MSG_SELECTCERT_ENDSIN"};

} // namespace

TEST(LanguageKeys, OfTheCodeAreTheKeysOfBothFiles)
{
    Keys wanted = unshown;
    for (const char* layer : {"/ui", "/foundation", "/certlist"})
        wanted.merge(keysInCode(SIGILDESK_SOURCE + std::string(layer)));
    ASSERT_GT(wanted.size(), 80u);
    for (const char* name : {"KOR.ini", "ENG.ini"})
        EXPECT_EQ(keysOf(read(name)), wanted) << name;
}

TEST(LanguageKeys, AreInTheSectionInWhichTheyAreLookedUp)
{
    for (const char* name : {"KOR.ini", "ENG.ini"}) {
        const LanguageFile file = read(name);
        ASSERT_EQ(file.sections.size(), 2u);
        for (const auto& [key, text] : file.sections.at("UserInterface"))
            EXPECT_TRUE(key.rfind("DLG_", 0) == 0 || key == "MSG_MANAGEUSER_ALERT_TITLE_IMPORT") << key;
        for (const auto& [key, text] : file.sections.at("Message"))
            EXPECT_TRUE(key.rfind("MSG_", 0) == 0 || key == "DLG_CERTPASSWORD_WRONG_PKCS11") << key;
    }
}

TEST(LanguageKeys, HaveTextsThatTheReaderAndTheDialogsCanTake)
{
    for (const char* name : {"KOR.ini", "ENG.ini"})
        for (const auto& [section, entries] : read(name).sections)
            for (const auto& [key, text] : entries) {
                EXPECT_FALSE(text.empty()) << key;
                EXPECT_EQ(text.find('['), std::string::npos) << key << " would end its section";
                EXPECT_EQ(text.find("%s") != std::string::npos, formats.count(key) == 1) << key;
                EXPECT_EQ(std::size_t(std::count(text.begin(), text.end(), '%')), formats.count(key)) << key;
                EXPECT_LT(text.size(), 260u) << key;
            }
}
