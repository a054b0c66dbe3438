// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The commands that change pairs, killed before every call that changes files, and with every such call failing. The
// folder then holds the old pairs or the new ones once somebody has read it, every file whole and for its owner alone;
// what was reported as done is there; and the next run at the same place leaves nothing of a killed one.

#include "tests/support/interrupted.h"
#include "tests/support/sample_store.h"
#include "tests/tools/toolkit.h"

#include "certlist/store_repair.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>

namespace fs = std::filesystem;

namespace {

constexpr char password[] = "sample1234!";
constexpr char newPassword[] = "renewed5678?";

enum Part { signCert, signKey, kmCert, kmKey };
/** The four files of a certificate: paths, or what they hold; empty for one that is not there. */
using Files = std::array<std::string, 4>;

Files pathsOf(const Certificate& row)
{
    return {row.at("signing_certificate"), row.at("signing_key"), row.at("km_certificate"), row.at("km_key")};
}

Files contentsAt(const Files& paths)
{
    Files contents;
    for (std::size_t i = 0; i < paths.size(); ++i)
        contents.at(i) = readFile(paths.at(i));
    return contents;
}

class InterruptedPairs : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(std::vector<std::string>{
            "--count", "4", "--families", "npki,gpki", "--pairs", "both", "--keys", "4", "--pfx"});
        store = fs::path(work.path("store"));
        writeFile(work.path("old"), std::string(password) + "\n");
        writeFile(work.path("new"), std::string(newPassword) + "\n");
        for (const char* secret : {"old", "new"})
            fs::permissions(work.path(secret), fs::perms::owner_read | fs::perms::owner_write);
    }
    static void TearDownTestSuite() { sample.reset(); }

    static const Certificate& rowOf(const std::string& family)
    {
        for (const Certificate& row : sample->certificates())
            if (row.at("family") == family)
                return row;
        throw std::runtime_error("no such family in the sample");
    }
    static Files inStore(const Files& paths)
    {
        Files moved;
        for (std::size_t i = 0; i < paths.size(); ++i)
            moved.at(i) = (store / fs::relative(paths.at(i), sample->folder())).string();
        return moved;
    }
    static void put(const Files& paths, const Files& contents)
    {
        for (std::size_t i = 0; i < paths.size(); ++i) {
            writeFile(paths.at(i), contents.at(i));
            fs::permissions(paths.at(i), fs::perms::owner_read | fs::perms::owner_write);
            fs::permissions(fs::path(paths.at(i)).parent_path(), fs::perms::owner_all);
        }
    }
    static std::vector<std::string> command(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {SIGILDESK_PROGRAM, "--folder", SIGILDESK_LIBRARY_FOLDER});
        return arguments;
    }
    /** Whether a key file holds @p plain under the new password: the key, and the random value in it. */
    bool isRenewed(const std::string& key, const std::string& plain)
    {
        return !key.empty() && toolkit.decryptKey(key, newPassword) == plain;
    }

    /** What befalls an operation on the files at @p paths. */
    struct Operation {
        std::vector<std::string> command;
        Files paths;
        Files old;                                           ///< what they hold before
        std::function<bool(Part, const std::string&)> isNew; ///< whether a file holds what is to be
    };

    static bool isOld(const Operation& operation, const Files& found) { return found == operation.old; }
    static bool isNew(const Operation& operation, const Files& found)
    {
        for (Part part : {signCert, signKey, kmCert, kmKey})
            if (!operation.isNew(part, found.at(part)))
                return false;
        return true;
    }
    /** Whether a certificate and a key that stand beside each other are of one make. */
    static bool isOfOneMake(const Operation& operation, const Files& found, Part certificate, Part key)
    {
        const bool bothOld =
            found.at(certificate) == operation.old.at(certificate) && found.at(key) == operation.old.at(key);
        const bool bothNew =
            operation.isNew(certificate, found.at(certificate)) && operation.isNew(key, found.at(key));
        return found.at(certificate).empty() || found.at(key).empty() || bothOld || bothNew;
    }
    /** Files beside those of the certificate that belong to nobody; the test fails on one that others may read. */
    static std::vector<std::string> temporaries(const Files& paths)
    {
        std::vector<std::string> found;
        const fs::path folder = fs::path(paths[signCert]).parent_path();
        if (!fs::exists(folder))
            return found;
        EXPECT_EQ(
            fs::status(folder).permissions() & (fs::perms::group_all | fs::perms::others_all), fs::perms::none);
        for (const auto& item : fs::directory_iterator(folder)) {
            EXPECT_EQ(item.status().permissions(), fs::perms::owner_read | fs::perms::owner_write) << item.path();
            if (std::find(paths.begin(), paths.end(), item.path().string()) == paths.end())
                found.push_back(item.path().filename().string());
        }
        return found;
    }

    void renew(const Operation& operation)
    {
        fs::remove_all(store);
        fs::create_directories(store);
        if (!operation.old[signCert].empty())
            put(operation.paths, operation.old);
    }

    void check(const Operation& operation, const Ending& ending)
    {
        Files found = contentsAt(operation.paths);
        EXPECT_TRUE(isOfOneMake(operation, found, signCert, signKey));
        EXPECT_TRUE(isOfOneMake(operation, found, kmCert, kmKey));
        if (ending.finished && ending.code == 0) {
            EXPECT_TRUE(isNew(operation, found));
            EXPECT_EQ(temporaries(operation.paths), std::vector<std::string>());
            return;
        }
        if (ending.finished) {
            EXPECT_EQ(ending.code, 3);
        }
        sigil::repairPairsIn(fs::path(operation.paths[signCert]).parent_path().string());
        found = contentsAt(operation.paths);
        EXPECT_TRUE(isOld(operation, found) || isNew(operation, found));
    }

    /** After a killed run: another one does the work and leaves nothing else there. */
    void checkAgain(const Operation& operation)
    {
        if (!isNew(operation, contentsAt(operation.paths))) {
            const Outcome again = run(operation.command);
            EXPECT_EQ(again.status, 0) << again.err;
        }
        EXPECT_TRUE(isNew(operation, contentsAt(operation.paths)));
        EXPECT_EQ(temporaries(operation.paths), std::vector<std::string>());
    }

    void runEveryMisfortune(const Operation& operation)
    {
        renew(operation);
        const Ending whole = runWith({}, operation.command);
        ASSERT_TRUE(whole.finished);
        ASSERT_EQ(whole.code, 0);
        ASSERT_GT(whole.calls, 8);
        check(operation, whole);
        int first = 1;
        for (const Misfortune& kind : {Misfortune{0, 0}, Misfortune{0, ENOSPC}, Misfortune{0, EDQUOT},
                 Misfortune{0, EIO}, Misfortune{0, EROFS, true}}) {
            for (int call = first; call <= whole.calls; call += stride) {
                SCOPED_TRACE("call " + std::to_string(call) + ", error " + std::to_string(kind.error));
                renew(operation);
                const Ending ending = runWith({call, kind.error, kind.fromThereOn}, operation.command);
                EXPECT_EQ(ending.finished, kind.error != 0);
                check(operation, ending);
                if (kind.error == 0)
                    checkAgain(operation);
            }
            first = first % stride + 1;
        }
        std::printf(
            "%d calls; killed before each, and each failed in four ways, in steps of %d\n", whole.calls, stride);
    }

    static TemporaryFolder work;
    static std::unique_ptr<SampleStore> sample;
    static fs::path store;
    Toolkit toolkit;
};

TemporaryFolder InterruptedPairs::work;
std::unique_ptr<SampleStore> InterruptedPairs::sample;
fs::path InterruptedPairs::store;

/** For files that are to hold just these contents. */
std::function<bool(Part, const std::string&)> holding(const Files& wanted)
{
    return [wanted](Part part, const std::string& found) { return found == wanted.at(part); };
}

TEST_F(InterruptedPairs, CopyToAnEmptyDisk)
{
    const Files source = pathsOf(rowOf("npki"));
    runEveryMisfortune({.command = command({"copy", source[signCert], "--to", store.string()}),
        .paths = inStore(source),
        .old = {},
        .isNew = holding(contentsAt(source))});
}

TEST_F(InterruptedPairs, CopyOverAnOlderPairInASharedFolder)
{
    const Files source = pathsOf(rowOf("gpki"));
    runEveryMisfortune({.command = command({"copy", source[signCert], "--to", store.string(), "--force"}),
        .paths = inStore(source),
        .old = contentsAt(pathsOf(rowOf("npki"))),
        .isNew = holding(contentsAt(source))});
}

TEST_F(InterruptedPairs, Passwd)
{
    const Files source = pathsOf(rowOf("gpki"));
    const Files old = contentsAt(source);
    const std::string sign = toolkit.decryptKey(old[signKey], password);
    const std::string km = toolkit.decryptKey(old[kmKey], password);
    ASSERT_FALSE(sign.empty());
    ASSERT_FALSE(toolkit.randomOf(sign).empty());
    const Files paths = inStore(source);
    runEveryMisfortune({.command = command({"passwd", paths[signCert], "--password-file", work.path("old"),
                            "--new-password-file", work.path("new")}),
        .paths = paths,
        .old = old,
        .isNew = [&](Part part, const std::string& found) {
            if (part == signCert || part == kmCert)
                return found == old.at(part);
            return isRenewed(found, part == signKey ? sign : km);
        }});
}

TEST_F(InterruptedPairs, Import)
{
    const Certificate& row = rowOf("npki");
    const Files certificates = contentsAt(pathsOf(row));
    const std::string sign = toolkit.decryptKey(certificates[signKey], password);
    const std::string km = toolkit.decryptKey(certificates[kmKey], password);
    runEveryMisfortune(
        {.command = command({"import", row.at("pfx"), "--to", store.string(), "--password-file", work.path("old")}),
            .paths = inStore(pathsOf(row)),
            .old = {},
            .isNew = [&](Part part, const std::string& found) {
                if (part == signCert || part == kmCert)
                    return found == certificates.at(part);
                return !found.empty() && toolkit.decryptKey(found, password) == (part == signKey ? sign : km);
            }});
}

TEST_F(InterruptedPairs, Delete)
{
    const Files source = pathsOf(rowOf("gpki"));
    const Files paths = inStore(source);
    runEveryMisfortune({.command = command({"delete", paths[signCert], "--yes"}),
        .paths = paths,
        .old = contentsAt(source),
        .isNew = holding({})});
}

} // namespace
