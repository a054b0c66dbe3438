// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Runs pieces of the command in processes of their own: what they do to the process goes with it.
 */
#pragma once

#include "tools/sigildesk/session.h"

#include <functional>
#include <string>
#include <vector>

/** A command line that was typed, and where its output goes. */
struct Typed {
    /** @param words  behind the name of the program */
    explicit Typed(std::vector<std::string> words);

    host::Arguments arguments;
    host::Output output;
    host::Session session;
};

/** How a process ended. */
struct Ended {
    int code;   ///< what the piece returned; -1 for a process that did not end by itself
    int signal; ///< that it died of; 0 for none
    std::string out, err;
};

Ended inOwnProcess(const std::function<int()>& piece);

/** "NAME: MESSAGE" of the failure that the piece throws; empty for none. */
std::string failureOf(const std::function<void()>& piece);

/** The whole command. */
Ended runOwn(std::vector<std::string> words);
