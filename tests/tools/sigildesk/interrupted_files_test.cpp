// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The commands that write a file, killed before every call that changes files, and with every such call failing: the place
// then holds the old file or the whole new one, for its owner alone, what was reported as done is there, and the next run
// at the same place leaves nothing of a killed one.

#include "tests/support/interrupted.h"
#include "tests/support/sample_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <memory>

namespace fs = std::filesystem;

namespace {

constexpr char old[] = "what was there before";

class InterruptedFiles : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "1", "--state", "valid", "--pairs", "both", "--keys", "2"});
        writeFile(work.path("password"), "sample1234!\n");
        fs::permissions(work.path("password"), fs::perms::owner_read | fs::perms::owner_write);
        writeFile(work.path("content"), "content");
    }
    static void TearDownTestSuite() { sample.reset(); }

    static std::string certificate() { return sample->certificates().front().at("signing_certificate"); }
    static std::vector<std::string> command(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {SIGILDESK_PROGRAM, "--folder", SIGILDESK_LIBRARY_FOLDER});
        arguments.insert(arguments.end(), {"--password-file", work.path("password")});
        return arguments;
    }

    static std::vector<std::string> exportToPlace()
    {
        return command({"export", certificate(), "--out", place(), "--new-password-file", work.path("password")});
    }

    /** @param words  of the command, which writes to place() */
    void runEveryMisfortune(std::vector<std::string> words, bool over, const std::function<bool()>& isWhole)
    {
        if (over)
            words.emplace_back("--force");
        renew(over);
        const Ending whole = runWith({}, words);
        ASSERT_TRUE(whole.finished);
        ASSERT_EQ(whole.code, 0);
        ASSERT_GT(whole.calls, 4);
        int first = 1;
        for (const Misfortune& kind : {Misfortune{0, 0}, Misfortune{0, ENOSPC}, Misfortune{0, EDQUOT},
                 Misfortune{0, EIO}, Misfortune{0, EROFS, true}}) {
            for (int call = first; call <= whole.calls; call += stride) {
                SCOPED_TRACE("call " + std::to_string(call) + ", error " + std::to_string(kind.error));
                renew(over);
                const Ending ending = runWith({call, kind.error, kind.fromThereOn}, words);
                check(ending, over, isWhole);
                if (!ending.finished)
                    checkAgain(words, isWhole);
            }
            first = first % stride + 1;
        }
        std::printf(
            "%d calls; killed before each, and each failed in four ways, in steps of %d\n", whole.calls, stride);
    }

    static std::string place() { return folder().string() + "/file"; }

private:
    static fs::path folder() { return work.path("folder"); }
    /** Files at the place, also in folders: an empty folder may stay for the next run when it cannot be removed. */
    static std::size_t filesThere()
    {
        const fs::recursive_directory_iterator items(folder());
        return static_cast<std::size_t>(
            std::count_if(begin(items), end(items), [](const auto& item) { return item.is_regular_file(); }));
    }
    static void renew(bool over)
    {
        fs::remove_all(folder());
        fs::create_directories(folder());
        if (over)
            writeFile(place(), old);
    }
    static void check(const Ending& ending, bool over, const std::function<bool()>& isWhole)
    {
        const bool isOld = over ? readFile(place()) == old : !fs::exists(place());
        EXPECT_TRUE(isOld || isWhole());
        if (!ending.finished)
            return;
        if (ending.code == 0) {
            EXPECT_TRUE(isWhole());
            EXPECT_EQ(filesThere(), 1U);
        } else {
            EXPECT_EQ(ending.code, 3);
        }
    }
    static void checkAgain(std::vector<std::string> line, const std::function<bool()>& isWhole)
    {
        if (std::find(line.begin(), line.end(), "--force") == line.end())
            line.emplace_back("--force");
        const Outcome again = run(line);
        EXPECT_EQ(again.status, 0) << again.err;
        EXPECT_TRUE(isWhole());
        EXPECT_EQ(std::distance(fs::directory_iterator(folder()), fs::directory_iterator()), 1);
    }

    static std::unique_ptr<SampleStore> sample;

protected:
    static TemporaryFolder work;
};

std::unique_ptr<SampleStore> InterruptedFiles::sample;
TemporaryFolder InterruptedFiles::work;

bool isExported(const std::string& file)
{
    const auto others = fs::perms::group_all | fs::perms::others_all;
    return run({"openssl", "pkcs12", "-in", file, "-noout", "-passin", "pass:sample1234!"}).status == 0 &&
        (fs::status(file).permissions() & others) == fs::perms::none;
}

TEST_F(InterruptedFiles, ExportWhereNothingIs)
{
    runEveryMisfortune(exportToPlace(), false, [] { return isExported(place()); });
}

TEST_F(InterruptedFiles, ExportOverAnOlderFile)
{
    runEveryMisfortune(exportToPlace(), true, [] { return isExported(place()); });
}

/** Here the toolkit writes the file. */
TEST_F(InterruptedFiles, SignOverAnOlderFile)
{
    runEveryMisfortune(command({"sign", certificate(), work.path("content"), "--out", place()}), true, [] {
        return run({"openssl", "cms", "-cmsout", "-inform", "DER", "-in", place(), "-noout"}).status == 0;
    });
}

} // namespace
