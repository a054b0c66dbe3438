// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/profile_lines.h"
#include "tests/foundation/profile_model.h"
#include "tests/foundation/support.h"

#include <sigildesk/profile.h>

#include <random>

using namespace sigil;

namespace {

class ProfileLines : public testing::Test {
protected:
    /** The parts in which the reader takes a file of the given content. */
    std::vector<std::string> partsOf(const std::string& content) const
    {
        RegularFile file(folder.write("test.ini", content).c_str());
        _ConfigProfile part;
        std::vector<std::string> parts;
        while (_DecodeConfigProfile(part, file) == 0)
            parts.emplace_back(part.lines);
        return parts;
    }
    /** Lengths of the lines of 4094 bytes at most. */
    static std::vector<std::size_t> lengthsOfLines(const std::string& content)
    {
        std::vector<std::size_t> lengths;
        for (const std::string& line : profile_model::linesOf(content))
            lengths.push_back(line.size());
        return lengths;
    }

    TemporaryFolder folder;
};

/** Text of the marks of the format, a few other characters and, now and then, a long line. */
std::string randomContent(std::mt19937& random)
{
    static const char* const pieces[] = {"[S]", "[", "]", "k", "k=", "=", "#", " ", "\t", "\n", "\r\n", "v",
        "\n[S]\n", "\nk=v\n", "\n#", "\nother = 1\n"};
    std::string text;
    for (std::size_t count = random() % 60; count > 0; --count) {
        const auto kind = random() % 40;
        if (kind == 0)
            text += std::string(random() % 9000, "x\n [#"[random() % 5]);
        else if (kind == 1)
            text += '\0';
        else
            text += pieces[random() % std::size(pieces)];
    }
    return text;
}

} // namespace

TEST_F(ProfileLines, ComeInPartsOfWholeLines)
{
    std::mt19937 random(1);
    for (const std::size_t length : {0, 1, 40, 4093, 4094, 4095, 8188, 32'000, 32'752, 32'768, 33'000, 100'000}) {
        std::string content;
        while (content.size() < length)
            content += std::string(random() % std::min<std::size_t>(length, 9000), 'x') + '\n';
        std::string joined;
        std::vector<std::size_t> lengths;
        for (const std::string& part : partsOf(content)) {
            joined += part;
            for (const std::size_t line : lengthsOfLines(part))
                lengths.push_back(line);
        }
        EXPECT_EQ(joined, content);
        EXPECT_EQ(lengths, lengthsOfLines(content)) << length;
    }
}

TEST_F(ProfileLines, WithoutALineEndAreCutWhereTheyBegan)
{
    const std::vector<std::string> parts = partsOf(std::string(100'000, 'x'));
    EXPECT_GT(parts.size(), 1u);
    for (std::size_t i = 0; i + 1 < parts.size(); ++i)
        EXPECT_EQ(parts[i].size() % longestProfileLine, 0u);
}

TEST_F(ProfileLines, EndAtTheHeader)
{
    const std::string_view lines = "#[S]\nx=1\ntext [S] text\nk=v\n[S]\n";
    EXPECT_EQ(_FindConfigProfileSection(lines, "[S]"), "k=v\n[S]\n");
    EXPECT_EQ(_FindConfigProfileSection(lines, "[T]"), std::nullopt);
    EXPECT_EQ(_FindConfigProfileSection("[S]", "[S]"), "");
    EXPECT_EQ(_FindConfigProfileSection("", "[S]"), std::nullopt);
}

TEST_F(ProfileLines, CutTheSearchTextAt1023Bytes)
{
    const std::string cut = "[" + std::string(1022, 'n');
    const std::string path = folder.write("test.ini", "x\n" + cut + "\nk=v\n");
    char out[16];
    EXPECT_EQ(
        FileGetPrivateProfileString(Arg(std::string(3000, 'n')), Arg("k"), Arg(""), out, sizeof out, Arg(path)), 1);
}

TEST_F(ProfileLines, ThatAreComments)
{
    struct Case {
        const char* line;
        int comment;
    };
    for (const Case& c :
        {Case{"#", 1}, {"# x", 1}, {" \t\r\n\v\f#", 1}, {"", 0}, {"   ", 0}, {"a#", 0}, {";", 0}, {"\xA3#", 0}})
        EXPECT_EQ(_IsCommentLine(c.line), c.comment) << c.line;
}

TEST_F(ProfileLines, AreSearchedAsTheRulesSay)
{
    std::mt19937 random(20240301);
    int found = 0;
    for (int i = 0; i < 5'000; ++i) {
        const std::string content = randomContent(random);
        // Some files begin beyond the first part that is read.
        const std::string filler(i % 50 == 0 ? 32'000 + random() % 1500 : 0, '\n');
        // A file of its own each time: writing over one makes some file systems wait for the disk.
        const std::string path = folder.write(std::to_string(i), filler + content);
        const auto expected = profile_model::lookUp(filler + content, "S", "k");
        std::string out(5000, '\0');
        const int length = FileGetPrivateProfileString(
            Arg("S"), Arg("k"), Arg("D"), out.data(), static_cast<int>(out.size()), Arg(path));
        const std::string text = !expected ? "" : expected->empty() ? "D" : *expected;
        ASSERT_EQ(out.c_str(), text) << content;
        ASSERT_EQ(length, static_cast<int>(text.size()));
        found += expected.has_value();
        std::filesystem::remove(path);
    }
    EXPECT_GT(found, 500);
}
