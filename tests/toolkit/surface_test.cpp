// What the libraries export, and that the documentation says so.

#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

using namespace toolkit_test;

namespace {

const std::string sources = std::filesystem::path(SIGILDESK_TEST_DATA).parent_path();

std::string contentOf(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::set<std::string> exportsOf(const std::string& library)
{
    std::istringstream lines(
        Workshop().run("nm -D --defined-only -P " SIGILDESK_LIBRARY_FOLDER "/" + library + " | cut -d' ' -f1"));
    return {std::istream_iterator<std::string>(lines), {}};
}

/** Symbols of the documentation's tables with the test file of each. */
std::map<std::string, std::string> documented()
{
    const std::string page = contentOf(sources + "/../../docs/toolkit.md");
    const std::regex row(R"(\n\| (`(?:HVTK|GPKI)_[^|]*) \|[^\n]*\| ([a-z0-9_]+\.cpp) \|)");
    const std::regex symbol("`([A-Z]+_[A-Za-z0-9_]+)`");
    std::map<std::string, std::string> symbols;
    for (std::sregex_iterator it(page.begin(), page.end(), row), end; it != end; ++it) {
        const std::string names = (*it)[1];
        for (std::sregex_iterator name(names.begin(), names.end(), symbol); name != end; ++name)
            symbols[(*name)[1]] = (*it)[2];
    }
    return symbols;
}

/** "ReadFile" of "HVTK_MEDIA_DISK_ReadFile", "EncryptFile" of "GPKI_CRYPT_Encrypt_File". */
std::string operationOf(const std::string& symbol)
{
    const std::string bare = std::regex_replace(symbol, std::regex("^(HVTK|GPKI)_[A-Z0-9]+_(DISK_)?"), "");
    return std::regex_replace(bare, std::regex("_File$"), "File");
}

} // namespace

TEST(Surface, TheDocumentationListsExactlyWhatIsExported)
{
    std::set<std::string> listed;
    for (const auto& [symbol, file] : documented())
        listed.insert(symbol);
    std::set<std::string> exported = exportsOf("libHVCToolkitV30.so");
    exported.merge(exportsOf("libgpkiapi_v15.so"));
    EXPECT_EQ(listed, exported);
    EXPECT_GT(exported.size(), 170U);
}

TEST(Surface, EachLibraryExportsItsOwnPrefixOnly)
{
    for (const std::string& symbol : exportsOf("libHVCToolkitV30.so"))
        EXPECT_THAT(symbol, testing::StartsWith("HVTK_"));
    for (const std::string& symbol : exportsOf("libgpkiapi_v15.so"))
        EXPECT_THAT(symbol, testing::StartsWith("GPKI_"));
}

TEST(Surface, TheNamedTestCallsTheSymbol)
{
    ASSERT_FALSE(documented().empty());
    for (const auto& [symbol, file] : documented()) {
        const std::regex call("\"[A-Z0-9_]*" + operationOf(symbol) + "\"");
        EXPECT_TRUE(std::regex_search(contentOf(sources + "/" + file), call)) << symbol << " in " << file;
    }
}

TEST(Surface, FamiliesThatAreNotThereHaveNoSymbol)
{
    std::set<std::string> exported = exportsOf("libHVCToolkitV30.so");
    exported.merge(exportsOf("libgpkiapi_v15.so"));
    const std::regex absent(
        "(HVTK|GPKI)_(CMS|WCMS|PKCS11|HSM|CMP|TSP|OCSP|SIGEA|WPKI|UNI|MEDIA_CARD|MEDIA_WINS)_.*");
    for (const std::string& symbol : exported)
        EXPECT_FALSE(std::regex_match(symbol, absent)) << symbol;
}
