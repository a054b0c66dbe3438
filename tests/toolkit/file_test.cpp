// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Files that the engine reads, writes and deletes, where something else is in the way.

#include "tests/support/files.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;
using toolkit::FileWriter;
using toolkit::view;

class EngineFiles : public testing::Test {
protected:
    std::string path(const std::string& name) const { return folder.path(name); }
    int codeOf(const std::function<void()>& run) const
    {
        try {
            run();
            return SIGIL_TK_OK;
        } catch (const toolkit::Error& error) {
            return error.code();
        }
    }
    int reading(const std::string& name) const
    {
        return codeOf([&] { toolkit::readFile(path(name)); });
    }
    int writing(const std::string& name) const
    {
        return codeOf([&] { toolkit::writeFile(path(name), view("new")); });
    }
    int deleting(const std::string& name) const
    {
        return codeOf([&] { toolkit::deleteFile(path(name)); });
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(path("")))
            found.push_back(entry.path().filename());
        return found;
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(EngineFiles, WhatIsNotThereIsNotFoundHoweverItIsNamed)
{
    folder.write("file", "bytes");
    for (const char* const name : {"absent", "absent/file", "file/below"}) {
        EXPECT_EQ(reading(name), SIGIL_TK_FILE_NOT_FOUND) << name;
        EXPECT_EQ(deleting(name), SIGIL_TK_FILE_NOT_FOUND) << name;
    }
    const std::string tooLong(300, 'x');
    EXPECT_EQ(reading(tooLong), SIGIL_TK_FILE_READ);
    EXPECT_EQ(deleting(tooLong), SIGIL_TK_FILE_DELETE);
    EXPECT_EQ(writing(tooLong), SIGIL_TK_FILE_WRITE);
    EXPECT_EQ(writing("absent/file"), SIGIL_TK_FILE_WRITE);
}

TEST_F(EngineFiles, FoldersPipesAndDevicesAreNeitherReadNorReplaced)
{
    fs::create_directory(path("folder"));
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    for (const char* const name : {"folder", "pipe"}) {
        EXPECT_EQ(reading(name), SIGIL_TK_FILE_READ) << name;
        EXPECT_EQ(writing(name), SIGIL_TK_FILE_WRITE) << name;
    }
    EXPECT_EQ(deleting("folder"), SIGIL_TK_FILE_DELETE);
    EXPECT_THAT(names(), UnorderedElementsAre("folder", "pipe"));
}

TEST_F(EngineFiles, AFileThatBecameAFolderMeanwhileStays)
{
    FileWriter writer(path("file"));
    writer.write(view("new"));
    fs::create_directory(path("file"));
    EXPECT_EQ(codeOf([&] { writer.commit(); }), SIGIL_TK_FILE_WRITE);
    EXPECT_TRUE(fs::is_directory(path("file")));
}

TEST_F(EngineFiles, WhatAKilledWriterLeftMakesWay)
{
    folder.write("file.part~", "half");
    EXPECT_EQ(writing("file"), SIGIL_TK_OK);
    EXPECT_EQ(::readFile(path("file")), "new");
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(EngineFiles, WhatAnotherWriterHoldsStaysAndBothWrite)
{
    FileWriter first(path("file"));
    first.write(view("first"));
    EXPECT_EQ(writing("file"), SIGIL_TK_OK);
    EXPECT_EQ(::readFile(path("file")), "new");
    first.commit();
    EXPECT_EQ(::readFile(path("file")), "first");
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(EngineFiles, WhatOnlyHasTheNameOfALeftoverStays)
{
    folder.write("other", "bytes");
    fs::create_hard_link(path("other"), path("linked.part~"));
    fs::create_symlink("other", path("symbolic.part~"));
    fs::create_directory(path("folder.part~"));
    ASSERT_EQ(mkfifo(path("pipe.part~").c_str(), 0600), 0);
    for (const char* const name : {"linked", "symbolic", "folder", "pipe"}) {
        EXPECT_EQ(writing(name), SIGIL_TK_OK) << name;
        EXPECT_EQ(::readFile(path(name)), "new") << name;
        EXPECT_TRUE(fs::exists(fs::symlink_status(path(name + std::string(".part~"))))) << name;
    }
    EXPECT_EQ(::readFile(path("other")), "bytes");
    EXPECT_EQ(names().size(), 9U) << "nothing else is left";
}

TEST_F(EngineFiles, AFileThatExistsIsNotMadeAnew)
{
    folder.write("file", "old");
    FileWriter writer(path("file"));
    writer.write(view("new"));
    EXPECT_EQ(codeOf([&] { writer.commitNew(); }), SIGIL_TK_FILE_WRITE);
    EXPECT_EQ(::readFile(path("file")), "old");
}

TEST_F(EngineFiles, NamesWithoutAFolderAreOfTheCurrentOne)
{
    const fs::path before = fs::current_path();
    fs::current_path(path(""));
    const auto written = codeOf([] { toolkit::writeFile("file", view("new")); });
    const auto apart = codeOf([] { toolkit::requireApart("file", "other"); });
    const auto same = codeOf([&] { toolkit::requireApart("file", path("file")); });
    fs::current_path(before);
    EXPECT_EQ(written, SIGIL_TK_OK);
    EXPECT_EQ(apart, SIGIL_TK_OK);
    EXPECT_EQ(same, SIGIL_TK_ARGUMENT);
    EXPECT_EQ(::readFile(path("file")), "new");
}

TEST_F(EngineFiles, PathsThatCannotBeFollowedAreComparedAsTheyAre)
{
    fs::create_symlink("circle", path("circle"));
    EXPECT_EQ(codeOf([&] { toolkit::requireApart(path("circle/a"), path("circle/b")); }), SIGIL_TK_OK);
    EXPECT_EQ(codeOf([&] { toolkit::requireApart(path("circle/a"), path("circle/a")); }), SIGIL_TK_ARGUMENT);
}

TEST_F(EngineFiles, AFileThatGrowsWhileItIsReadIsReadToItsEnd)
{
    folder.write("file", "1234");
    const toolkit::FileReader reader(path("file"));
    std::ofstream(path("file"), std::ios::app) << "5678";
    std::array<unsigned char, 16> room{};
    EXPECT_EQ(reader.size(), 4U);
    EXPECT_EQ(reader.readAt(0, room), 8U);
    EXPECT_EQ(reader.readAt(8, room), 0U);
}

TEST_F(EngineFiles, AFileWithoutASizeIsReadToItsEnd)
{
    const auto version = toolkit::readFile("/proc/version");
    EXPECT_EQ(std::string(toolkit::chars(version), version.size()), ::readFile("/proc/version"));
    EXPECT_GT(version.size(), 1U);
}

TEST_F(EngineFiles, AnElementIsReadWithWhateverStandsBesideIt)
{
    const auto element = [](std::size_t content) {
        return std::string{'\x30', '\x82', static_cast<char>(content >> 8), static_cast<char>(content & 0xFF)} +
            std::string(content, 'x');
    };
    const std::string small = element(1400);
    const std::string cut = small.substr(0, 1000);
    for (const std::string& written :
        {small, cut, small + 'y', small + small, element(2043), element(2044), element(2045), element(2044) + 'y',
            element(60000), std::string("\x30\0", 2), std::string("0"), std::string()}) {
        folder.write("file", written);
        const auto bytes = toolkit::readFile(path("file"));
        EXPECT_TRUE(std::string(toolkit::chars(bytes), bytes.size()) == written) << written.size();
    }
}
