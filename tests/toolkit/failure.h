// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  How a call into the engine, which throws, ended.
 */
#pragma once

#include "toolkit/engine/base/error.h"

#include <functional>

namespace toolkit_test {

/** The code that @p run failed with; SIGIL_TK_OK when it did not. */
inline int codeOf(const std::function<void()>& run)
{
    try {
        run();
        return SIGIL_TK_OK;
    } catch (const toolkit::Error& error) {
        return error.code();
    }
}

} // namespace toolkit_test
