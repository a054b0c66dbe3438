// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Memory runs out in the library, also while it puts a failure into words: the code says so, and the session goes on.

#include "tests/sigil/sigil_test.h"
#include "tests/support/failing_allocator.h"

#include <string>

using namespace sigil_test;

namespace {

class Shortage : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "1", "--state", "valid", "--keys", "2", "--pairs", "signing"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    /** Refuses one allocation after the other, a later one each time, until the call needs no more. */
    template <class Call>
    void expectShortages(Call call, int code, long step = 1)
    {
        call(); // what is made once is there
        for (long number = 0;; number += step) {
            allocations = {};
            allocations.refused = number;
            allocations.counting = true;
            const int result = call();
            allocations.counting = false;
            if (allocations.refused >= 0) { // there were not so many
                EXPECT_GT(number, 0);
                EXPECT_EQ(result, code);
                return;
            }
            ASSERT_EQ(result, SIGIL_NO_MEMORY)
                << "without allocation " << number << ": " << sigil_error_text(session.get());
        }
    }

    static std::unique_ptr<SampleStore> sample;
    Session session = open();
};
std::unique_ptr<SampleStore> Shortage::sample;

TEST_F(Shortage, IsToldInPlaceOfAnotherFailure)
{
    auto fields = sized<SigilFields>();
    expectShortages([&] { return sigil_fields(session.get(), -1, &fields); }, SIGIL_BAD_ARGUMENT);
    EXPECT_STRNE(sigil_error_text(session.get()), "");
}

TEST_F(Shortage, LeavesTheListOfBefore)
{
    const std::string folder = sample->folder().string();
    ASSERT_EQ(list(session.get(), folder), 1);
    auto options = sized<SigilListOptions>();
    options.medium = folder.c_str();
    int count = 0;
    expectShortages([&] { return sigil_list(session.get(), &options, &count); }, SIGIL_SUCCESS, 7);
    EXPECT_EQ(count, 1);
    EXPECT_STRNE(fieldsOf(session.get(), 0).name, "");
}

} // namespace
