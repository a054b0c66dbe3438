#include "foundation/profile_lines.h"
#include "tests/foundation/support.h"

#include <sigildesk/profile.h>

#include <gmock/gmock.h>

#include <memory>
#include <memory_resource>
#include <new>
#include <vector>

using namespace sigil;

namespace {

using namespace std::string_literals;
using testing::ElementsAre;

using List = std::unique_ptr<_ConfigProfile, void (*)(_ConfigProfile*)>;

List decode(const std::string& content, int expected = 0)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
    std::fwrite(content.data(), 1, content.size(), file.get());
    std::rewind(file.get());
    _ConfigProfile* list = nullptr;
    EXPECT_EQ(_DecodeConfigProfile(&list, file.get()), expected);
    return {list, _ReleaseConfigProfile};
}

std::vector<std::string> linesOf(const List& list)
{
    std::vector<std::string> lines;
    for (const _ConfigProfile* node = list.get(); node && node->line; node = node->next)
        lines.emplace_back(node->line);
    return lines;
}

/** Memory that runs out after a number of blocks. */
class LimitedMemory : public std::pmr::memory_resource {
public:
    explicit LimitedMemory(int blocks)
        : m_blocks(blocks)
        , m_previous(std::pmr::set_default_resource(this))
    {
    }
    ~LimitedMemory() override { std::pmr::set_default_resource(m_previous); }

private:
    void* do_allocate(std::size_t size, std::size_t alignment) override
    {
        if (m_blocks-- <= 0)
            throw std::bad_alloc();
        return m_previous->allocate(size, alignment);
    }
    void do_deallocate(void* p, std::size_t size, std::size_t alignment) override
    {
        m_previous->deallocate(p, size, alignment);
    }
    bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }

    int m_blocks;
    std::pmr::memory_resource* m_previous;
};

} // namespace

TEST(ProfileLines, KeepsLinesAsRead)
{
    EXPECT_THAT(linesOf(decode("one\n \t two \r\n\nlast")), ElementsAre("one\n", " \t two \r\n", "\n", "last"));
    EXPECT_THAT(linesOf(decode("a\0b\nc\n"s)), ElementsAre("a", "c\n"));
}

TEST(ProfileLines, HasAFirstNodeWithoutLineForAnEmptyFile)
{
    const List list = decode("");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->line, nullptr);
    EXPECT_EQ(list->next, nullptr);
}

TEST(ProfileLines, SplitsBehind4094Bytes)
{
    struct Case {
        std::size_t length; // of the physical line, without its line feed
        std::vector<std::size_t> pieces;
    };
    const Case cases[] = {
        {4093, {4094}},
        {4094, {4094, 1}},
        {4095, {4094, 2}},
        {8187, {4094, 4094}},
        {8188, {4094, 4094, 1}},
        {20'000, {4094, 4094, 4094, 4094, 3625}},
    };
    for (const Case& c : cases) {
        const List list = decode(std::string(c.length, 'x') + "\n");
        std::vector<std::size_t> lengths;
        for (const std::string& line : linesOf(list))
            lengths.push_back(line.size());
        EXPECT_EQ(lengths, c.pieces) << c.length;
    }
}

TEST(ProfileLines, TellsWhenMemoryRunsOutAndKeepsWhatWasRead)
{
    // Many short lines need more memory than the size of the file lets expect.
    const std::string content(50'000, '\n');
    for (int blocks : {0, 1}) {
        LimitedMemory memory(blocks);
        const List list = decode(content, -1);
        ASSERT_NE(list, nullptr);
        const std::vector<std::string> lines = linesOf(list);
        EXPECT_EQ(lines.empty(), blocks == 0);
        EXPECT_LT(lines.size(), 50'000u);
    }
}

TEST(ProfileLines, LookupReportsThatMemoryRanOut)
{
    TemporaryFolder folder;
    const std::string path = folder.write("test.ini", "[S]\nk=v\n");
    char out[16];
    LimitedMemory memory(0);
    EXPECT_EQ(FileGetPrivateProfileString(Arg("S"), Arg("k"), Arg("D"), out, sizeof out, Arg(path)), -2);
    EXPECT_STREQ(out, "");
    EXPECT_EQ(FileGetPrivateProfileInt(Arg("S"), Arg("k"), 77, Arg(path)), -2);
}

TEST(ProfileLines, FindsTheHeader)
{
    const List list = decode("#[S]\nx=1\ntext [S] text\nk=v\n[S]\n");
    _ConfigProfile* found = nullptr;
    EXPECT_EQ(_FindConfigProfileSection(&found, list.get(), Arg("S")), 0);
    EXPECT_STREQ(found->line, "text [S] text\n");
    EXPECT_EQ(_FindConfigProfileSection(&found, list.get(), Arg("T")), 0);
    EXPECT_STREQ(found->line, "[S]\n");
    EXPECT_EQ(found->next, nullptr);
    EXPECT_EQ(_FindConfigProfileSection(&found, nullptr, Arg("S")), -1);
}

TEST(ProfileLines, FindsTheOnlyNodeOfAnEmptyFile)
{
    const List list = decode("");
    _ConfigProfile* found = nullptr;
    EXPECT_EQ(_FindConfigProfileSection(&found, list.get(), Arg("S")), 0);
    EXPECT_EQ(found, list.get());
}

TEST(ProfileLines, CutsTheSearchTextAt1023Bytes)
{
    const std::string name(3000, 'n');
    const List list = decode("x\n[" + name + "]\nlast\n");
    _ConfigProfile* found = nullptr;
    EXPECT_EQ(_FindConfigProfileSection(&found, list.get(), Arg(name)), 0);
    EXPECT_EQ(found, list->next);
}

TEST(ProfileLines, RecognisesComments)
{
    struct Case {
        const char* line;
        int comment;
    };
    for (const Case& c :
        {Case{"#", 1}, {"# x", 1}, {" \t\r\n\v\f#", 1}, {"", 0}, {"   ", 0}, {"a#", 0}, {";", 0}, {"\xA3#", 0}})
        EXPECT_EQ(_IsCommentLine(Arg(c.line)), c.comment) << c.line;
}
