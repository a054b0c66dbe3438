// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The command as a function: takes the command line apart, runs what it asks for, tells the shell how it went.
 */
#pragma once

namespace host {

/** What a process needs once: its standard descriptors, its letters, no signal for a reader that went away, an end with the
 *  exit code of a failure where a library breaks its promise not to throw for lack of memory. */
void prepareProcess();

/** @return the exit code; lets no exception out, also when memory runs out */
int runCommandLine(int count, char** words);

} // namespace host
