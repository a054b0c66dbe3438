// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Fixture of the tests on how a certificate file becomes an entry.
 */
#pragma once

#include "tests/certlist/scripted.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

using Names = std::vector<std::string>;

class Parsing : public Scripted {
protected:
    /** The only certificate of a new listing. */
    std::unique_ptr<tagCERTINFO> parsed(const fake::Fields& changes = {})
    {
        addNpki("a", changes);
        if (!clp)
            start();
        EXPECT_EQ(load(), 0);
        return entry();
    }
    /** Result of listing the store and the last record of the log. */
    std::pair<int, std::string> result()
    {
        const int rc = load();
        return {rc, lastLog()};
    }
};
