// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Checks of the fuzz targets: a broken promise ends the program, so that the fuzzer keeps the input.
 */
#pragma once

#include <cstdio>
#include <cstdlib>

inline void require(bool promise, const char* text)
{
    if (promise)
        return;
    std::fprintf(stderr, "broken promise: %s\n", text);
    std::abort();
}
