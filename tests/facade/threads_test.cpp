// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Handles are independent: one thread each, both toolkit types, no shared state. Run it under the thread sanitizer.

#include "facade/toolkit_bytes.h"
#include "tests/facade/handle.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

constexpr int rounds = 2000;

/** Works with a handle of its own from beginning to end; counts what was not as it should be. */
void work(int type, int& surprises)
{
    const auto expect = [&](bool held) { surprises += held ? 0 : 1; };
    for (int round = 0; round < rounds; ++round) {
        const Handle handle(type, DOUBLES_PLAIN_FOLDER);
        expect(handle.result() == 0);
        char uid[64] = {};
        char error[64] = {};
        sigil::ToolkitBytes certificate(handle, "certificate", 11);
        expect(certificate.size() == 11);
        expect(CertLoad(handle, certificate.get()) == 0);
        expect(CertGetUID(handle, 64, uid) == 0);
        expect(CertGetSerialNum(handle, 64, error) == 77); // fails, so that the error text is kept
        expect(HV_GetErrInfo2(handle, 63, error) == 0);
        expect(std::string(uid).substr(6) == std::string(error).substr(5)); // both name this handle's context
        expect(CertUnLoad(handle) == 0);
        expect(CertGetAIA(handle, 64, uid) == 1003);
    }
}

void workTogether(int firstType, int secondType)
{
    int first = 0;
    int second = 0;
    std::thread one(work, firstType, std::ref(first));
    std::thread other(work, secondType, std::ref(second));
    one.join();
    other.join();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 0);
}

/** Holds both libraries for the length of a test. The threads still open and close them, but no close unloads one:
 *  the loader writes over the memory of a library that goes, under a lock of its own that the thread sanitizer does
 *  not see and would call a race. */
class Threads : public testing::Test {
    const Handle m_maker{0, DOUBLES_PLAIN_FOLDER};
    const Handle m_gpki{1, DOUBLES_PLAIN_FOLDER};
};

} // namespace

TEST_F(Threads, HandlesOfBothTypesAreIndependent) { workTogether(0, 1); }
TEST_F(Threads, HandlesOfTheMakerToolkitAreIndependent) { workTogether(0, 0); }
TEST_F(Threads, HandlesOfTheGpkiLibraryAreIndependent) { workTogether(1, 1); }
