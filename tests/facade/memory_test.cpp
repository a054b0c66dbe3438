// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Running out of memory is answered by a status: no exception leaves an exported function.

#include "tests/doubles/recorder.h"
#include "tests/facade/handle.h"
#include "tests/support/failing_allocator.h"

#include <gtest/gtest.h>

TEST(OutOfMemory, IsAnsweredByCertGetValidity)
{
    doubles::reset();
    const Handle handle(1, DOUBLES_FOLDER);
    doubles::answer("GPKI_CERT_GetValidity", doubles::writesText("A ~ B"));
    constexpr int unusual = 5000;
    char before[unusual] = "old";
    char after[32] = "old";
    doubles::forgetCalls();

    allocations.refused = 0;
    allocations.counting = true;
    const int result = CertGetValidity(handle, unusual, before, 32, after);
    allocations.counting = false;
    EXPECT_EQ(result, 1000);
    EXPECT_EQ(allocations.refused, -1) << "no allocation was refused";
    EXPECT_TRUE(doubles::calls().empty());
    EXPECT_STREQ(before, "old");
    EXPECT_STREQ(after, "old");

    EXPECT_EQ(CertGetValidity(handle, unusual, before, 32, after), 0);
    EXPECT_STREQ(after, "B");
}
