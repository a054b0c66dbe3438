// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/profile.h>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

using namespace std::string_literals;

struct Found {
    int result;
    std::string text;
    bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found)
{
    return out << found.result << " \"" << found.text << '"';
}

class Profile : public testing::Test {
protected:
    Found look(const std::string& content, const char* section, const char* key, const char* fallback = "")
    {
        return lookIn(folder.write("test.ini", content), section, key, fallback);
    }
    static Found lookIn(const std::string& path, const char* section, const char* key, const char* fallback = "")
    {
        std::string out(8192, 'x');
        const int result = FileGetPrivateProfileString(
            Arg(section), Arg(key), Arg(fallback), out.data(), static_cast<int>(out.size()), Arg(path));
        return {result, out.c_str()};
    }
    int number(const std::string& content, int fallback = 77)
    {
        return FileGetPrivateProfileInt(Arg("S"), Arg("k"), fallback, Arg(folder.write("test.ini", content)));
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(Profile, Lookup)
{
    struct Case {
        const char* name;
        std::string content;
        Found found; // of key "k" in section "S" with the default "D"
    };
    const Found value{5, "value"};
    const Found missing{0, ""};
    const Case cases[] = {
        {"plain", "[S]\nk=value\n", value},
        {"CRLF line ends", "[S]\r\nk=value\r\n", value},
        {"blanks around key and value, inner ones kept", "[S]\n \t k \t = \t a  b \t \n", {4, "a  b"}},
        {"no line feed at the end", "[S]\nk=value", value},
        {"the value may contain =", "[S]\nk=a=b = c\n", {7, "a=b = c"}},
        {"; and # behind a value belong to it", "[S]\nk=a ; b # c\n", {9, "a ; b # c"}},
        {"; begins no comment", "[S]\n;k=no\nk=value\n", value},
        {"Korean text is taken as it is", "[S]\nk=\xC7\xD1\xB1\xDB\n", {4, "\xC7\xD1\xB1\xDB"}},
        {"vertical tab and form feed are white space", "[S]\n\v\fk\v=\fvalue\v\f\n", value},

        {"empty value gives the default", "[S]\nk=\n", {1, "D"}},
        {"blank value gives the default", "[S]\nk= \t \r\n", {1, "D"}},
        {"missing key gives nothing", "[S]\nother=1\n", missing},
        {"missing section gives nothing", "[T]\nk=value\n", missing},
        {"key before every section", "k=value\n[S]\n", missing},
        {"empty file", "", missing},
        {"only line feeds", "\n\n\n", missing},
        {"only the header", "[S]", missing},
        {"key without =", "[S]\nk\nk value\n", missing},
        {"case of the key counts", "[S]\nK=no\nk=value\n", value},
        {"case of the section counts", "[s]\nk=no\n[S]\nk=value\n", value},
        {"longer key first", "[S]\nk_count=no\nak=no\nk=value\n", value},
        {"key in the value only", "[S]\nother=k\nx=k=1\n", missing},
        {"first of two keys", "[S]\nk=value\nk=no\n", value},

        {"comment", "[S]\n#k=no\nk=value\n", value},
        {"comment behind white space", "[S]\n \t #k=no\n", missing},
        {"comment with a section does not end it", "[S]\n# see [T]\nk=value\n", value},
        {"comment with the own section is no header", "#[S]\nk=no\n[S]\nk=value\n", value},
        {"a header within a comment only", " # [S]\nk=no\n", missing},

        {"header anywhere in a line", "text [S] more\nk=value\n", value},
        {"header in a key line", "x=[S]\nk=value\n", value},
        {"section name is part of a longer bracket text", "[[S]]\nk=value\n", value},
        {"longer section name", "[SS]\nk=no\n[S]\nk=value\n", value},
        {"blanks in the brackets", "[ S ]\nk=no\n", missing},
        {"next section ends it", "[S]\n[T]\nk=no\n", missing},
        {"[ in a value ends it", "[S]\nx=a[b\nk=no\n", missing},
        {"[ in the value of the key itself ends it", "[S]\nk=a[b]\n", missing},
        {"] alone does not end it", "[S]\nx=a]b\nk=value\n", value},
        {"only the first section of the name", "[S]\nx=1\n[T]\n[S]\nk=no\n", missing},

        {"zero byte hides the rest of its line", "[S]\n\0k=no\nk=val\0ue\n"s, {3, "val"}},
        {"zero byte in the header line", "[S\0]\nk=no\n[S]\nk=value\n"s, value},
        {"only zero bytes", std::string(10'000, '\0'), missing},
    };
    for (const Case& c : cases)
        EXPECT_EQ(look(c.content, "S", "k", "D"), c.found) << c.name;
}

TEST_F(Profile, AKeyThatIsAPrefixOfAnotherMatchesOnlyItself)
{
    const std::string content = "[S]\nCA_INFO_COUNT=3\nCA_INFO=one\n";
    EXPECT_EQ(look(content, "S", "CA_INFO"), (Found{3, "one"}));
    EXPECT_EQ(look(content, "S", "CA_INFO_COUNT"), (Found{1, "3"}));
    EXPECT_EQ(look(content, "S", "CA"), (Found{0, ""}));
}

TEST_F(Profile, LongLinesAreCutIntoLinesOf4094Bytes)
{
    // The first piece is the value; the second one is a line of its own, with a key of its own.
    const std::string first = "k=" + std::string(4092, 'v');
    const std::string content = "[S]\n" + first + "second=piece\nthird=line\n";
    EXPECT_EQ(look(content, "S", "k"), (Found{4092, std::string(4092, 'v')}));
    EXPECT_EQ(look(content, "S", "second"), (Found{5, "piece"}));
    EXPECT_EQ(look(content, "S", "third"), (Found{4, "line"}));
    // One byte less, and the line end of the physical line belongs to the next piece.
    EXPECT_EQ(
        look("[S]\nk=" + std::string(4091, 'v') + "\nx=1\n", "S", "k"), (Found{4091, std::string(4091, 'v')}));
    EXPECT_EQ(look("[S]\nk=" + std::string(4092, 'v') + "\nx=1\n", "S", "x"), (Found{1, "1"}));
    // Pieces are judged one by one: a "[" in one ends the section, "#" at the start of one makes it a comment.
    EXPECT_EQ(look("[S]\n" + first + "a[b\nx=1\n", "S", "x"), (Found{0, ""}));
    EXPECT_EQ(look("[S]\n" + first + "#a[b\nx=1\n", "S", "x"), (Found{1, "1"}));
}

TEST_F(Profile, LinesAcrossTheReadBufferStayWhole)
{
    for (int length : {32'755, 32'760, 32'767, 32'768, 32'769, 65'530}) {
        const std::string filler = "[S]\n" + std::string(static_cast<std::size_t>(length) - 4, '\n');
        EXPECT_EQ(look(filler + "key=value\nlast=1", "S", "key"), (Found{5, "value"})) << length;
        EXPECT_EQ(look(filler + "key=value\nlast=1", "S", "last"), (Found{1, "1"})) << length;
    }
}

TEST_F(Profile, EveryKeyOfALargeFileIsFound)
{
    std::string content = "[A]\nx=1\n[S]\n";
    for (int i = 0; i < 5000; ++i)
        content +=
            "key_" + std::to_string(i) + "=" + std::string(static_cast<std::size_t>(i % 300 + 1), 'v') + "\n";
    for (int i : {0, 1, 2, 299, 300, 777, 2500, 4998, 4999})
        EXPECT_EQ(look(content, "S", ("key_" + std::to_string(i)).c_str()).result, i % 300 + 1) << i;
}

TEST_F(Profile, ClearsTheWholeOutput)
{
    const std::string path = folder.write("test.ini", "[S]\nk=v\n");
    for (const char* key : {"k", "missing"}) {
        std::string out(64, 'x');
        FileGetPrivateProfileString(Arg("S"), Arg(key), Arg("D"), out.data(), 63, Arg(path));
        EXPECT_EQ(std::count(out.begin() + 1, out.begin() + 63, '\0'), 62);
        EXPECT_EQ(out[63], 'x');
    }
    std::string out(64, 'x');
    EXPECT_EQ(
        FileGetPrivateProfileString(Arg("S"), Arg("k"), Arg("D"), out.data(), 63, Arg(folder.path("none"))), 0);
    EXPECT_EQ(std::count(out.begin(), out.begin() + 63, '\0'), 63);
    EXPECT_EQ(out[63], 'x');
}

TEST_F(Profile, StaysWithinTheOutput)
{
    const std::string path = folder.write("test.ini", "[S]\nk=  0123456789\ne=\n");
    for (int size : {1, 2, 10, 11}) {
        std::string out(64, 'x');
        const int expected = std::min(10, size - 1);
        EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), Arg("k"), Arg(""), out.data(), size, Arg(path)), expected);
        EXPECT_STREQ(out.c_str(), std::string("0123456789").substr(0, static_cast<std::size_t>(expected)).c_str());
        EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), Arg("e"), Arg("default"), out.data(), size, Arg(path)),
            std::min(7, size - 1));
        EXPECT_EQ(out[static_cast<std::size_t>(size)], 'x');
    }
    for (int size : {0, -1}) {
        std::string out(8, 'x');
        EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), Arg("k"), Arg(""), out.data(), size, Arg(path)), 0);
        EXPECT_EQ(out, "xxxxxxxx");
    }
}

TEST_F(Profile, NullArgumentsFindNothing)
{
    const std::string path = folder.write("test.ini", "[S]\nk=v\ne=\n");
    char out[16];
    EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), Arg("k"), Arg(""), nullptr, 16, Arg(path)), 0);
    EXPECT_EQ(FileGetPrivateProfileString(nullptr, Arg("k"), Arg(""), out, 16, Arg(path)), 0);
    EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), nullptr, Arg(""), out, 16, Arg(path)), 0);
    EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), Arg("k"), Arg(""), out, 16, nullptr), 0);
    EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), Arg("e"), nullptr, out, 16, Arg(path)), 0);
    EXPECT_STREQ(out, "");
}

TEST_F(Profile, OnlyRegularFilesAreRead)
{
    EXPECT_EQ(lookIn(folder.path(), "S", "k", "D"), (Found{0, ""}));
    EXPECT_EQ(lookIn(folder.path("missing"), "S", "k", "D"), (Found{0, ""}));
    EXPECT_EQ(lookIn("/dev/zero", "S", "k", "D"), (Found{0, ""}));
    EXPECT_EQ(lookIn("", "S", "k", "D"), (Found{0, ""}));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(lookIn(folder.path("pipe"), "S", "k", "D"), (Found{0, ""}));
    std::filesystem::create_symlink(folder.write("real.ini", "[S]\nk=v\n"), folder.path("link"));
    EXPECT_EQ(lookIn(folder.path("link"), "S", "k", "D"), (Found{1, "v"}));
}

TEST_F(Profile, SurvivesAHugeFileWithoutLineEnds)
{
    const std::string path = folder.write("huge.ini", "[S]\nk=v\n");
    std::filesystem::resize_file(path, 100'000'000);
    EXPECT_EQ(lookIn(path, "S", "k"), (Found{1, "v"}));
    EXPECT_EQ(lookIn(path, "S", "none"), (Found{0, ""}));
}

TEST_F(Profile, IntegerOfTheValue)
{
    struct Case {
        const char* content;
        int number;
    };
    const Case cases[] = {
        {"[S]\nk=42\n", 42},
        {"[S]\nk= -7 \n", -7},
        {"[S]\nk=12abc\n", 12},
        {"[S]\nk=abc\n", 0},
        {"[S]\nk=\n", 0},
        {"[S]\nx=1\n", 0},
        {"[T]\nk=1\n", 0},
        {"", 0},
        {"[S]\nk=0x10\n", 0},
        {"[S]\nk=010\n", 10},
        {"[S]\nk=+3\n", 3},
        {"[S]\nk=99999999999999999999\n", 2147483647},
        {"[S]\nk=-99999999999999999999\n", -2147483647 - 1},
    };
    for (const Case& c : cases)
        EXPECT_EQ(number(c.content), c.number) << c.content;
    EXPECT_EQ(FileGetPrivateProfileInt(Arg("S"), Arg("k"), 77, Arg(folder.path("missing"))), 0);
    EXPECT_EQ(FileGetPrivateProfileInt(Arg("S"), Arg("k"), 77, nullptr), 0);
}

TEST_F(Profile, EachLookupReadsTheFileAnew)
{
    EXPECT_EQ(look("[S]\nk=old\n", "S", "k"), (Found{3, "old"}));
    EXPECT_EQ(look("[S]\nk=newer\n", "S", "k"), (Found{5, "newer"}));
}

TEST(StrTrim, RemovesWhiteSpaceAtBothEnds)
{
    struct Case {
        const char* text;
        const char* trimmed;
    };
    const Case cases[] = {
        {"", ""},
        {" ", ""},
        {" \t\r\n\v\f", ""},
        {"a", "a"},
        {"  a b  ", "a b"},
        {"a ", "a"},
        {" a", "a"},
        {"\xA0 x \x85", "\xA0 x \x85"},
        {"\xC7\xD1 ", "\xC7\xD1"},
    };
    for (const Case& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(StrTrimString(text.data()), 1);
        EXPECT_STREQ(text.c_str(), c.trimmed);
    }
    EXPECT_EQ(StrTrimString(nullptr), 1);
}

TEST(StrTrim, ClearsATextOfNothingButWhiteSpace)
{
    char text[] = " \t  ";
    StrTrimString(text);
    EXPECT_EQ(std::string(text, sizeof text), std::string(sizeof text, '\0'));
}
