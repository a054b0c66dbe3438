// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Memory runs out in the dialogs: the entry points answer 1000, and no exception passes through Qt or into a host in C. The
// clock of the listing is what lacks memory here.

#include "foundation/environment.h"
#include "tests/ui/fixture.h"

#include <sigildesk/dialogs.h>

#include <new>

namespace {

std::chrono::milliseconds lackMemory() { throw std::bad_alloc(); }

class Shortage : public SelectionTest {
protected:
    void TearDown() override
    {
        sigil::environment() = m_machine;
        SelectionTest::TearDown();
    }
    int show()
    {
        tagINITOPT init = initOptions();
        return ShowUserCert_T(&init, &load, nullptr, nullptr, &result);
    }

    tagSELCERTINFO result{};

private:
    sigil::Environment m_machine = sigil::environment();
};

} // namespace

TEST_F(Shortage, BeforeTheDialogOpens)
{
    sigil::environment().uptime = lackMemory;
    EXPECT_EQ(show(), 1000);
}

TEST_F(Shortage, ClosesTheOpenDialog)
{
    result.nMediaType = 4711;
    driver::whenShown([&](QDialog& shown) {
        sigil::environment().uptime = lackMemory;
        EXPECT_NO_THROW(driver::presses(shown, "pushButton_hdd"));
        EXPECT_FALSE(shown.isVisible());
    });
    EXPECT_EQ(show(), 1000);
    EXPECT_EQ(result.nMediaType, 4711u) << "what the host had";
}
