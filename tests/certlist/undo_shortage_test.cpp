// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Putting a pair back while memory runs out: what cannot be done now is left to whoever works on the pair next.

#include "certlist/undoable_files.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

TEST(UndoShortage, LeavesTheNotesToTheNextOperation)
{
    const TemporaryFolder folder;
    const sigil::PairPaths pair{folder.path("certificate.der"), folder.path("private.key")};
    int left = 0;
    bool refused = true;
    for (long k = 0; refused; ++k) {
        writeFile(pair.certificate, "old certificate");
        writeFile(pair.key, "old key");
        std::optional<sigil::UndoableFiles> change(std::in_place, std::vector<sigil::PairPaths>{pair});
        ASSERT_TRUE(change->begin());
        ASSERT_TRUE(change->removeKeys());
        writeFile(pair.certificate, "new certificate");
        allocations = {true, 0, k, nullptr};
        change.reset();
        refused = allocations.refused < 0;
        allocations = {};
        const bool isLeft = std::filesystem::exists(pair.key + ".undo");
        EXPECT_EQ(sigil::UndoableFiles::undoInterrupted({pair}), isLeft) << k;
        EXPECT_EQ(readFile(pair.certificate) + ", " + readFile(pair.key), "old certificate, old key") << k;
        left += isLeft ? 1 : 0;
    }
    EXPECT_GT(left, 3);
}

} // namespace
