// Every member of the library's table over both toolkits: what they have, and that they have all of it.

#include "tests/facade/member.h"
#include "tests/support/files.h"
#include "tests/support/tally.h"
#include "tests/toolkit/facade.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

using namespace toolkit_test;

namespace {

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
    static int answerOf(const Member& member)
    {
        const Facade facade(GetParam());
        Arguments arguments(facade.get(), member, GetParam());
        return member.call(facade.get(), arguments.values);
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
        const int code = answerOf(member);
        EXPECT_EQ(code == notSupported, !member.isOn(GetParam())) << member.name << " answers " << code;
    }
    EXPECT_GT(walked, 140);
}
