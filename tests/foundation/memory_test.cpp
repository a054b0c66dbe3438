// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the library does when memory runs out. The C library's allocator is replaced, because the C library's own
// functions, which the library calls, run out of memory too.

#include "tests/foundation/support.h"

#include <sigildesk/convert_utf8.h>
#include <sigildesk/log.h>
#include <sigildesk/profile.h>
#include <sigildesk/util.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <malloc.h>
#include <pwd.h>
#include <unistd.h>
#include <utility>

namespace {

/** Which of the coming allocations are refused. */
struct Shortage {
    long allowed = -1;    ///< so many succeed before the first refusal; below 0: all
    bool lasting = false; ///< all that follow are refused too, not one alone
    long bytes = -1;      ///< so many can be held at a time; below 0: any number
    long refused = 0;
} shortage;

bool isDue()
{
    if (shortage.allowed < 0)
        return false;
    if (shortage.allowed-- > 0)
        return false;
    shortage.allowed = shortage.lasting ? 0 : -1;
    return true;
}

bool refuse(std::size_t size)
{
    const bool tooMuch = shortage.bytes >= 0 && size > static_cast<std::size_t>(shortage.bytes);
    if (!tooMuch && !isDue())
        return false;
    ++shortage.refused;
    errno = ENOMEM;
    return true;
}

void* taken(void* block)
{
    if (shortage.bytes >= 0)
        shortage.bytes -= std::min(shortage.bytes, static_cast<long>(malloc_usable_size(block)));
    return block;
}

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the names of the C library's allocator behind its public face
#pragma GCC visibility push(default) // the libraries find them here
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) { return refuse(size) ? nullptr : taken(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size)
{
    return refuse(count * size) ? nullptr : taken(__libc_calloc(count, size));
}
void* realloc(void* block, std::size_t size) { return refuse(size) ? nullptr : taken(__libc_realloc(block, size)); }
void free(void* block)
{
    if (shortage.bytes >= 0)
        shortage.bytes += static_cast<long>(malloc_usable_size(block));
    __libc_free(block);
}
}
#pragma GCC visibility pop
// NOLINTEND(bugprone-reserved-identifier)

namespace {

/** Runs @p work with the k-th allocation refused, for every k until none is; then with all from the k-th on.
 *  @param judge  is asked after each run what became of it, with all of memory back */
void runShort(const std::function<void()>& work, const std::function<void()>& judge)
{
    for (bool lasting : {false, true})
        for (long k = 0;; ++k) {
            SCOPED_TRACE((lasting ? "all from allocation " : "allocation ") + std::to_string(k));
            shortage = {.allowed = k, .lasting = lasting};
            work();
            const bool complete = std::exchange(shortage, {}).refused == 0;
            judge();
            if (complete || testing::Test::HasFailure())
                break;
        }
}

class MemoryShortage : public EnvironmentTest {
protected:
    MemoryShortage()
    {
        sigil::environment().traceFolder = folder.path();
        sigil::environment().pluginFolder = folder.path();
        setClock("2024-03-01 09:05:07");
    }
};

const std::string longText(1000, 'x'); // no text of the records is short enough to need no memory

/** True when @p content is nothing but whole records. */
bool consistsOf(const std::string& record, std::string content)
{
    while (content.starts_with(record))
        content.erase(0, record.size());
    return content.empty();
}

} // namespace

TEST_F(MemoryShortage, TheTraceLosesItsLineAndLeavesErrnoAlone)
{
    runShort(
        [] {
            errno = 1234;
            LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "%s", longText.c_str());
        },
        [] { EXPECT_EQ(errno, 1234); });
    EXPECT_PRED2(consistsOf, "[tw4np][09:05:07.000][DEBUG][a.cpp:1][f] " + longText + "\n",
        readFile(folder.path("tarnwick_20240301.log")));
}

TEST_F(MemoryShortage, TheErrorLogLosesItsRecordAndLeavesErrnoAlone)
{
    const std::string path = folder.path("error.log");
    CUtil util;
    Arg file(path);
    Arg text(longText);
    int result = 77;
    runShort(
        [&] {
            errno = 1234;
            result = util.SetLogInfo(file, text, nullptr, text, 5, nullptr);
        },
        [&] {
            EXPECT_EQ(errno, 1234);
            EXPECT_EQ(result, 0);
        });
    EXPECT_PRED2(consistsOf, "2024-03-01 09:05:07 >> " + longText + " >> " + longText + " : 5\r\n", readFile(path));
}

TEST_F(MemoryShortage, ThePluginsLogReportsIt)
{
    folder.write("ERROR_LOG", "[ERROR]\nPATH=" + folder.path() + "\n");
    CUtil util;
    Arg text(longText);
    const std::string path = folder.path("2024-03-01_A.log");
    int result = 77;
    int reported = 0;
    runShort(
        [&] {
            errno = 1234;
            result = util.WriteLogData(text, 1);
        },
        [&] {
            EXPECT_EQ(errno, 1234);
            EXPECT_TRUE(result == 0 || result == -1);
            reported += result == -1;
        });
    EXPECT_GT(reported, 0);
    EXPECT_PRED2(consistsOf, "[2024-03-01 09:05:07] " + longText, readFile(path));
}

TEST_F(MemoryShortage, ALookupTakesNoneHoweverLargeTheFileIs)
{
    std::string path = folder.write("test.ini", std::string(3'000'000, '\n') + "[S]\nk=v\n" + longText);
    char section[] = "S";
    char key[] = "k";
    char none[] = "";
    char out[16];
    shortage.bytes = 0;
    const int length = FileGetPrivateProfileString(section, key, none, out, sizeof out, path.data());
    shortage = {};
    EXPECT_EQ(length, 1);
    EXPECT_STREQ(out, "v");
}

TEST_F(MemoryShortage, NamesAndLongAsciiTextsAreConvertedWithoutAny)
{
    std::string name;
    while (name.size() < 256)
        name += "cn=\xED\x99\x8D\xEA\xB8\xB8\xEB\x8F\x99,";
    for (const std::string& text : {name, std::string(1'000'000, 'a')}) {
        std::string cp949(text.size(), '\0');
        std::string utf8(text.size() * 2, '\0');
        int length = static_cast<int>(text.size());
        shortage.bytes = 0;
        ConvertUTF8().utf82ascii(text.data(), length, cp949.data(), length);
        ConvertUTF8().ascii2utf8(cp949.data(), length, utf8.data(), length);
        shortage = {};
        utf8.resize(static_cast<std::size_t>(length));
        EXPECT_EQ(utf8, text);
    }
}

// The C library's own first look-up would end the process here.
TEST_F(MemoryShortage, TheHomeFolderIsFoundOrTheMemoryIsSaidToBeMissing)
{
    std::string found;
    runShort(
        [&] {
            found = "memory";
            try {
                found = sigil::environment().homeFolder();
            } catch (const std::bad_alloc&) {
            }
        },
        [&] {
            const passwd* entry = getpwuid(getuid());
            EXPECT_TRUE(found == "memory" || found == (entry ? entry->pw_dir : "")) << found;
        });
    EXPECT_NE(found, "memory");
}
