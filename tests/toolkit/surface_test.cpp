// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the libraries export, and that the documentation says so.

#include "tests/support/files.h"
#include "tests/support/symbols.h"
#include "tests/support/tally.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <tuple>
#include <vector>

namespace {

const std::string sources = std::filesystem::path(SIGILDESK_TEST_DATA).parent_path();

std::set<std::string> exportsOf(const std::string& library)
{
    return functionsOf(SIGILDESK_LIBRARY_FOLDER "/" + library);
}

/** The symbols that the façade's rows name. */
std::set<std::string> boundSymbols()
{
    const std::regex name("(?:SYMBOL\\(|\")((?:HVTK|GPKI)_\\w+)");
    std::set<std::string> symbols;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources + "/../../facade")) {
        if (!entry.is_regular_file())
            continue;
        const std::string code = readFile(entry.path());
        for (std::sregex_iterator found(code.begin(), code.end(), name), end; found != end; ++found)
            symbols.insert(found->str(1));
    }
    return symbols;
}

/** The texts between pairs of @p quote in @p line. */
std::vector<std::string> quoted(const std::string& line, char quote)
{
    std::vector<std::string> texts;
    std::size_t begin = 0;
    std::size_t end = 0;
    while ((begin = line.find(quote, end)) != line.npos && (end = line.find(quote, begin + 1)) != line.npos)
        texts.push_back(line.substr(begin + 1, end++ - begin - 1));
    return texts;
}

/** Symbols of the documentation's tables with the test file of each: a row is "| `symbol` | what | test |". */
std::map<std::string, std::string> documented()
{
    std::istringstream page(readFile(sources + "/../../docs/toolkit.md"));
    std::map<std::string, std::string> symbols;
    for (std::string line; std::getline(page, line);) {
        if (!line.starts_with("| `HVTK_") && !line.starts_with("| `GPKI_"))
            continue;
        const std::size_t last = line.rfind("| ", line.size() - 2) + 2;
        for (const std::string& symbol : quoted(line.substr(0, line.find('|', 1)), '`'))
            symbols[symbol] = line.substr(last, line.size() - 2 - last);
    }
    return symbols;
}

/** "ReadCert" of "HVTK_MEDIA_CARD_ReadCert", "EncryptFile" of "GPKI_CRYPT_Encrypt_File". */
std::string operationOf(const std::string& symbol)
{
    std::string operation = symbol.substr(symbol.find('_', 5) + 1);
    for (const std::string medium : {"DISK_", "CARD_", "WINS_"})
        if (operation.starts_with(medium))
            operation.erase(0, medium.size());
    if (operation.ends_with("_File"))
        operation.erase(operation.size() - 5, 1);
    return operation;
}

/** Whether a test names the operation: as "PRIKEY_Decrypt", or as "Decrypt" where a helper adds the family. */
bool mentions(const std::string& file, const std::string& operation)
{
    const std::string content = readFile(sources + "/" + file);
    return content.find("\"" + operation + "\"") != content.npos ||
        content.find("_" + operation + "\"") != content.npos;
}

} // namespace

TEST(Surface, TheDocumentationListsExactlyWhatIsExported)
{
    std::set<std::string> listed;
    for (const auto& [symbol, file] : documented())
        listed.insert(symbol);
    std::set<std::string> exported = exportsOf("libHVCToolkitV30.so");
    tally("symbols of HVTK_", exported.size());
    exported.merge(exportsOf("libgpkiapi_v15.so"));
    tally("symbols of both", exported.size());
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
        EXPECT_TRUE(mentions(file, operationOf(symbol)) || mentions(file, symbol.substr(5)))
            << symbol << " in " << file;
    }
}

TEST(Surface, WhateverTheFacadeLooksUpIsThere)
{
    const auto bound = boundSymbols();
    for (const auto& [prefix, library, count] :
        {std::tuple("HVTK_", "libHVCToolkitV30.so", 202U), std::tuple("GPKI_", "libgpkiapi_v15.so", 146U)}) {
        std::set<std::string> own;
        for (const std::string& symbol : bound)
            if (symbol.starts_with(prefix))
                own.insert(symbol);
        tally(std::string("symbols bound, ") + prefix, own.size());
        EXPECT_EQ(own.size(), count);
        EXPECT_EQ(own, exportsOf(library));
    }
}
