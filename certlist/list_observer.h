// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Somebody who is told what becomes of each candidate of a listing, and why.
 */
#pragma once

#include "certlist/error_log.h"
#include "foundation/families.h"

#include <sigildesk/records.h>

#include <string>

namespace sigil {

/** Told by the loaders while they list. Nobody listens unless a program asks for it. */
class ListObserver {
public:
    virtual ~ListObserver() = default;

    /** A folder of @p family is about to be searched. @param error  0; why it cannot be opened, as errno has it */
    virtual void searches(const Family& family, const std::string& path, int error) = 0;
    /** An entry was read and judged.
     *  @param entry   as far as it could be filled in
     *  @param result  0 it is listed; 1122, 1502 it is left out
     *  @param log     has the reason, also for a file that was not read and was no loss, and the toolkit's words */
    virtual void judged(const tagCERTINFO& entry, int result, ErrorLog& log) = 0;
};

} // namespace sigil
