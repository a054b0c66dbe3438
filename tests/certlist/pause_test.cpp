// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A listing that hands the time back in between, and one that is given up meanwhile.

#include "tests/certlist/parsing.h"

#include "certlist/listing_pause.h"

namespace {

class Paused : public Parsing {
protected:
    /** Lists, and gives up in the pause of that number; 0: never. @return how often the listing paused */
    int pausesOf(int last, int expected)
    {
        int pauses = 0;
        sigil::pauseListings(clp, [&] { return ++pauses != last; });
        EXPECT_EQ(load(), expected) << "given up in pause " << last;
        return pauses;
    }
};

TEST_F(Paused, PausesForEveryFileInBothPassesAndForEveryFolder)
{
    start();
    const int folders = pausesOf(0, SIGIL_NO_CERTIFICATE);
    EXPECT_GE(folders, 2 + 7 + 1 + 2);
    addNpki("a");
    const int one = pausesOf(0, 0);
    for (const char* name : {"b", "c", "d"})
        addNpki(name);
    EXPECT_EQ(pausesOf(0, 0) - one, 3 * 3) << "to be put back, to be counted and to be listed";
}

TEST_F(Paused, AListingThatIsGivenUpLeavesNoListAndAsksNoMore)
{
    for (const char* name : {"a", "b"})
        addNpki(name);
    start();
    const int all = pausesOf(0, 0);
    for (int last = 1; last <= all; ++last) {
        EXPECT_EQ(pausesOf(last, SIGIL_CANCELLED), last);
        EXPECT_EQ(count(), 0);
    }
    EXPECT_EQ(pausesOf(0, 0), all);
    EXPECT_EQ(count(), 2) << "the next listing is whole";
}

TEST_F(Paused, NobodyIsAskedAnyMoreOnceThePauseIsTaken)
{
    addNpki("a");
    start();
    int pauses = 0;
    sigil::pauseListings(clp, [&] { return ++pauses > 0; });
    sigil::pauseListings(clp, {});
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(pauses, 0);
}

} // namespace
