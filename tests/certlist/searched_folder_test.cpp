// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A folder that is looked through, and questions about the files below it.

#include "certlist/searched_folder.h"

#include "tests/certlist/scripted.h"

#include <cstring>
#include <set>

namespace fs = std::filesystem;

namespace {

using sigil::SearchedFolder;

class Searched : public ::testing::Test {
protected:
    Searched()
    {
        fs::create_directories(root / "folder");
        writeFile(root / "folder/file", "12345");
        writeFile(root / "beside", "1");
        fs::create_symlink("folder/file", root / "link");
    }

    /** Size of the file at @p path, as asked from @p folder; -1 when it leads nowhere. */
    static long sizeFrom(const SearchedFolder& folder, const std::string& path)
    {
        struct stat status;
        return folder.statusOf(path.c_str(), status) ? static_cast<long>(status.st_size) : -1;
    }

    TemporaryFolder m_folder;
    const fs::path root = m_folder.path();
    const std::string path = root.string() + "/";
};

TEST_F(Searched, ItemsOfAFolder)
{
    SearchedFolder folder(path);
    std::set<std::string> names;
    while (const dirent* item = folder.next())
        names.insert(item->d_name);
    EXPECT_EQ(names, (std::set<std::string>{".", "..", "folder", "beside", "link"}));
    EXPECT_EQ(folder.path(), path);
}

TEST_F(Searched, NoFolderHasNoItems)
{
    EXPECT_EQ(SearchedFolder().next(), nullptr);
    EXPECT_EQ(SearchedFolder(path + "missing/").next(), nullptr);
    EXPECT_EQ(SearchedFolder(path + "beside/").next(), nullptr);
}

TEST_F(Searched, FilesByTheirWholePath)
{
    const SearchedFolder folder(path);
    EXPECT_EQ(sizeFrom(folder, path + "folder/file"), 5);
    EXPECT_EQ(sizeFrom(folder, path + "/folder/file"), 5) << "a doubled separator does not lead to the root";
    EXPECT_EQ(sizeFrom(folder, path + "link"), 5) << "links are followed";
    EXPECT_EQ(sizeFrom(folder, path + "folder/missing"), -1);
    EXPECT_GE(sizeFrom(folder, path), 0) << "the folder itself";
    EXPECT_TRUE(folder.canBeOpened((path + "folder/file").c_str()));
    EXPECT_FALSE(folder.canBeOpened((path + "folder/missing").c_str()));
}

TEST_F(Searched, FilesElsewhere)
{
    EXPECT_EQ(sizeFrom(SearchedFolder(path + "folder/"), path + "beside"), 1);
    EXPECT_EQ(sizeFrom(SearchedFolder(path + "missing/"), path + "beside"), 1);
    EXPECT_EQ(sizeFrom(SearchedFolder(), path + "folder/file"), 5);
    EXPECT_TRUE(SearchedFolder().canBeOpened((path + "beside").c_str()));
}

// Some file systems do not tell what an item is.
TEST_F(Searched, KindOfAnItemOfUnknownType)
{
    const SearchedFolder folder(path);
    const std::pair<const char*, mode_t> kinds[] = {
        {"folder", S_IFDIR}, {"beside", S_IFREG}, {"link", S_IFLNK}, {"missing", 0}};
    for (const auto& [name, kind] : kinds) {
        dirent item{};
        item.d_type = DT_UNKNOWN;
        std::strcpy(item.d_name, name);
        EXPECT_EQ(folder.kindOf(item), kind) << name;
    }
}

} // namespace
