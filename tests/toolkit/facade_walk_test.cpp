// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Every member of the library's table over both toolkits: what they have, and that they have all of it.

#include "tests/facade/member.h"
#include "tests/support/files.h"
#include "tests/support/tally.h"
#include "tests/toolkit/facade.h"

#include <sigildesk/open_toolkit.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <set>

using namespace toolkit_test;

namespace {

/** What the documentation lists as refused whatever is asked: rows "| CODE: why | `SYMBOL`<br>... |". */
std::set<std::string> documentedRefusals(const std::string& prefix)
{
    const std::string page =
        readFile(std::filesystem::path(SIGILDESK_TEST_DATA).parent_path() / "../../docs/toolkit.md");
    const std::regex row("\n\\| 3(?:010|304): [^|]+\\|([^|]+)\\|");
    const std::regex name("`(" + prefix + "\\w+)`");
    std::set<std::string> symbols;
    for (std::sregex_iterator found(page.begin(), page.end(), row), end; found != end; ++found) {
        const std::string names = found->str(1);
        for (std::sregex_iterator one(names.begin(), names.end(), name); one != end; ++one)
            symbols.insert(one->str(1));
    }
    return symbols;
}

/** What a member answers. */
struct Answer {
    int code;
    std::string why;

    /** Whether it would be the same whatever is asked. */
    bool refuses() const { return code == SIGIL_TK_NOT_OFFERED || why.find("does not leave") != why.npos; }
};

/** Arguments that the façade lets pass: what it requires holds data of the toolkit's, everything else is empty. */
class Arguments {
public:
    Arguments(void* handle, const Member& member, int type)
        : m_handle(handle)
    {
        for (std::size_t i = 0; i < Values::byteStrings; ++i)
            values.bytes(i) = {};
        fill(member.requiredOn(type));
        fill(member.backendRequiredOn(type));
    }
    ~Arguments()
    {
        for (std::size_t i = 0; i < Values::byteStrings; ++i)
            HV_BINSTR_Delete(m_handle, &values.bytes(i));
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    Values values;

private:
    void fill(const std::vector<std::string>& required)
    {
        std::array<unsigned char, 4> data{'d', 'a', 't', 'a'};
        for (const std::string& argument : required)
            if (argument.front() == 'B')
                HV_BINSTR_SetData(m_handle, data.data(), static_cast<int>(data.size()),
                    &values.bytes(static_cast<std::size_t>(argument.back() - '1')));
    }

    void* m_handle;
};

class FacadeWalk : public testing::TestWithParam<int> {
protected:
    /** The user's own certificates are none of the walk's. */
    FacadeWalk() { setenv("HOME", m_home.path("").c_str(), 1); }

    /** What the member answers on a handle of its own. */
    static Answer answerOf(const Member& member)
    {
        const Facade facade(GetParam());
        Arguments arguments(facade.get(), member, GetParam());
        const int code = member.call(facade.get(), arguments.values);
        std::array<char, 2048> why{};
        HV_GetErrInfo2(facade.get(), static_cast<int>(why.size()), why.data());
        return {code, why.data()};
    }

private:
    TemporaryFolder m_home;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Types, FacadeWalk, testing::Values(0, 1));

TEST_P(FacadeWalk, NothingIsMissingButWhatTheTableSays)
{
    constexpr int notSupported = 1003;
    int walked = 0;
    for (const Member& member : allMembers()) {
        ++walked;
        tally("members walked");
        const int code = answerOf(member).code;
        EXPECT_EQ(code == notSupported, !member.isOn(GetParam())) << member.name << " answers " << code;
    }
    EXPECT_GT(walked, 140);
}

TEST_P(FacadeWalk, NothingIsRefusedWhateverIsAskedButWhatIsListed)
{
    std::set<std::string> listed = documentedRefusals(GetParam() == 0 ? "HVTK_" : "GPKI_");
    // No member leads to these.
    std::erase_if(listed, [](const std::string& symbol) { return symbol.starts_with("GPKI_WCMS_"); });
    std::set<std::string> refused;
    for (const Member& member : allMembers())
        if (member.isOn(GetParam()) && answerOf(member).refuses())
            for (const std::string& symbol : member.symbolsOn(GetParam()))
                refused.insert(symbol);
    EXPECT_EQ(refused, listed);
    EXPECT_FALSE(refused.empty());
}
