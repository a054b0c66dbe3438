// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the library asks of the machine it runs on: the clock, the user's home folder, the mount table and the
 *  folders with a fixed place. Everything that depends on them asks here, so that a test can stand in its own.
 */
#pragma once

#include <chrono>
#include <ctime>
#include <string>

namespace sigil {

struct Environment {
    /** Wall clock, with the precision of the log's milliseconds. */
    timespec (*now)();
    /** Clock for lengths of time: nobody sets it, and only differences mean something. */
    std::chrono::milliseconds (*uptime)();
    /** Home folder of the user the process runs as, from the password database; empty when there is no entry. Throws
     *  std::bad_alloc when memory runs out. */
    std::string (*homeFolder)();
    /** Table of mounted file systems, in the format of getmntent(3). */
    std::string mountTable;
    /** Folder of the daily debug trace. */
    std::string traceFolder;
    /** Folder of the plug-in settings file that names the folder of the dated log. */
    std::string pluginFolder;
};

/** The environment in use; the machine's own unless a test has put another in its place. */
Environment& environment();

} // namespace sigil
