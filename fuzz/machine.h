// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What targets need that work on files: a machine of their own, and what hosts hand over.
 */
#pragma once

#include "fuzz/script.h"
#include "tests/support/files.h"

#include <string>
#include <vector>

namespace fuzz {

/** The user's home, the logs, the mount table and the working folder: in a folder of its own, which is empty at first. */
class Machine {
public:
    Machine();
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    std::string path(std::string_view name = "") const { return m_folder.path(name); }
    /** A mounted disk. */
    std::string disk() const { return path("disk"); }

private:
    TemporaryFolder m_folder;
};

/** Certificates, keys, PKCS#12 files and messages: what the seeds of the toolkit's targets hold, in DER. */
const std::vector<std::string>& samples();
/** A sample, changed in one place at times, or bytes of the input. */
std::string content(Script& script);
/** Of the keys and files among the samples, or another. */
std::string password(Script& script);
/** A name that leads out of no folder. */
std::string fileName(Script& script);

/** Puts a file into a store on the disk or in the user's home, where the table of families says. */
void addStoreFile(const Machine& machine, Script& script);

/** The folder with the toolkits, which stay loaded, and with the settings files. */
std::string& libraryFolder();

/** Whether a result is one that the library's documents name. */
void requireStated(int code, const char* function);

} // namespace fuzz
