// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Holds the words for result codes against the headers that name the codes, the sources that answer them, and the
// document that lists them.

#include "foundation/code_table.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path root = SIGILDESK_SOURCE_FOLDER;

std::string contentOf(const fs::path& file)
{
    std::ifstream in(file);
    EXPECT_TRUE(in) << file;
    return {std::istreambuf_iterator<char>(in), {}};
}

/** Names and numbers of the enum @p name of a public header. */
std::multimap<int, std::string> enumerators(const char* header, const std::string& name)
{
    const std::string text = contentOf(root / "include/sigildesk" / header);
    const auto begin = text.find("enum " + name + " {");
    const std::string body = text.substr(begin, text.find("\n};", begin) - begin);
    static const std::regex enumerator("(SIGIL_[A-Z0-9_]+) = (-?[0-9]+)");
    std::multimap<int, std::string> found;
    for (std::sregex_iterator at(body.begin(), body.end(), enumerator), end; at != end; ++at)
        found.emplace(std::stoi((*at)[2]), (*at)[1]);
    return found;
}

std::multimap<int, std::string> namedCodes()
{
    auto codes = enumerators("codes.h", "SigilResult");
    codes.merge(enumerators("open_toolkit.h", "SigilToolkitCode"));
    for (auto at = codes.lower_bound(0); at != codes.upper_bound(0);)
        at = at->second == "SIGIL_SUCCESS" ? std::next(at) : codes.erase(at);
    return codes;
}

std::map<int, std::string> tableCodes()
{
    std::map<int, std::string> codes;
    for (const sigil::CodeRow& row : sigil::codeRows())
        codes.emplace(row.code, row.name);
    return codes;
}

/** Where the sources state a number as a result: in a return, in a named toolkit code, in the answer of a function. */
std::map<int, std::string> numbersInSources()
{
    static const std::regex result(
        R"(return (-1|[1-4][0-9]{3});|constexpr int toolkit[A-Za-z]+ = ([0-9]+);|@return ([^@]*?)(?:\*/|@))");
    static const std::regex number(R"((?:^|[^0-9A-Za-z.-])([1-4][0-9]{3})(?![0-9A-Za-z]| bytes))");
    std::map<int, std::string> found;
    for (const char* layer : {"facade", "certlist", "ui", "toolkit", "include"})
        for (const auto& file : fs::recursive_directory_iterator(root / layer)) {
            if (file.path().extension() != ".h" && file.path().extension() != ".cpp")
                continue;
            const std::string text = contentOf(file.path());
            for (std::sregex_iterator at(text.begin(), text.end(), result), end; at != end; ++at) {
                const std::string stated = at->str();
                for (std::sregex_iterator n(stated.begin(), stated.end(), number); n != end; ++n)
                    found.emplace(std::stoi((*n)[1]), file.path().string());
            }
        }
    return found;
}

std::string documentTable()
{
    std::ostringstream table;
    table << "| code | name | answered by | means | what to do |\n|---|---|---|---|---|\n";
    for (const sigil::CodeRow& row : sigil::codeRows())
        table << "| " << row.code << " | `" << row.name << "` | " << row.layer << " | " << row.english.sentence
              << " | " << row.english.advice << " |\n";
    return table.str();
}

TEST(Codes, AllHaveWords)
{
    const auto table = tableCodes();
    for (const auto& [code, name] : namedCodes())
        EXPECT_TRUE(table.contains(code)) << name << " needs a row in foundation/code_table.cpp";
}

TEST(Codes, AreNamedAsInTheHeaders)
{
    const auto named = namedCodes();
    EXPECT_GT(named.size(), 100U);
    for (const auto& [code, name] : tableCodes()) {
        const auto [first, last] = named.equal_range(code);
        std::set<std::string> names;
        for (auto at = first; at != last; ++at)
            names.insert(at->second);
        EXPECT_THAT(names, testing::Contains(name)) << code;
    }
}

TEST(Codes, OfTheSourcesAllHaveWords)
{
    const auto numbers = numbersInSources();
    EXPECT_GT(numbers.size(), 30U);
    const auto table = tableCodes();
    for (const auto& [code, file] : numbers)
        EXPECT_TRUE(table.contains(code)) << code << " in " << file << " needs a row in foundation/code_table.cpp";
}

TEST(Codes, StandInTheDocument)
{
    const std::string document = contentOf(root / "docs/codes.md");
    const std::string table = documentTable();
    EXPECT_NE(document.find(table), std::string::npos) << "docs/codes.md is to hold\n" << table;
}

} // namespace
