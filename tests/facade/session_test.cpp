// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Opening a token session, which the GPKI library does in two calls.

#include "tests/doubles/recorder.h"
#include "tests/doubles/variant.h"
#include "tests/facade/handle.h"

#include <gtest/gtest.h>

class GpkiSession : public testing::Test {
protected:
    GpkiSession() { doubles::reset(); }
    int open(char* with)
    {
        doubles::forgetCalls();
        return PKCS11OpenSessionWithSlotID(handle, 5, with, 6);
    }
    Handle handle{1, DOUBLES_FOLDER};
    char pin[5] = "1234";
};

TEST_F(GpkiSession, OpensAndLogsIn)
{
    doubles::answer("GPKI_HSM_Login", 12);
    EXPECT_EQ(open(pin), 12) << "the login's result";
    ASSERT_GE(doubles::calls().size(), 2U);
    EXPECT_EQ(doubles::calls()[0].symbol, "GPKI_HSM_OpenSession");
    EXPECT_EQ(doubles::calls()[0].integer(0), 5);
    EXPECT_EQ(doubles::calls()[0].integer(1), 6);
    EXPECT_EQ(doubles::calls()[1].symbol, "GPKI_HSM_Login");
    EXPECT_EQ(doubles::calls()[1].pointer<char>(0), pin);
}

TEST_F(GpkiSession, WithoutAPinItOnlyOpens)
{
    doubles::answer("GPKI_HSM_Login", 12);
    EXPECT_EQ(open(nullptr), 0);
    EXPECT_EQ(doubles::calls().size(), 1U);
}

TEST_F(GpkiSession, FailedOpeningIsNotFollowedByALogin)
{
    doubles::answer("GPKI_HSM_OpenSession", -8);
    EXPECT_EQ(open(pin), -8);
    EXPECT_EQ(open(nullptr), -8);
    EXPECT_TRUE(doubles::callsOf("GPKI_HSM_Login").empty());
}

TEST_F(GpkiSession, MissingLoginIsAnsweredAfterOpening)
{
    doubles::FolderWithout folder("GPKI_HSM_Login");
    const Handle lacking(1, folder.chars());
    EXPECT_EQ(PKCS11OpenSessionWithSlotID(lacking, 5, pin, 6), 1003);
    EXPECT_EQ(doubles::callsOf("GPKI_HSM_OpenSession").size(), 1U);
    EXPECT_EQ(PKCS11OpenSessionWithSlotID(lacking, 5, nullptr, 6), 0);
}
