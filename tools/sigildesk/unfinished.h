// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a signal that ends the process takes away first.
 */
#pragma once

#include <csignal>
#include <string>

namespace host {

/** Removes all files of an open folder, with calls that the handler of a signal may make. */
void removeFilesIn(int directory);

/** Removes the folder of an Unfinished that there is, for a process that ends without its destructor. */
void removeUnfinished();

/** Lets such a signal wait for as long as the object is there. */
class EndingsWait {
public:
    EndingsWait();
    ~EndingsWait();
    EndingsWait(const EndingsWait&) = delete;
    EndingsWait& operator=(const EndingsWait&) = delete;

private:
    sigset_t m_before{};
};

/** A folder with files on their way, until the object goes: SIGINT, SIGTERM, SIGHUP and SIGQUIT remove it before they end the
 *  process. One at a time. */
class Unfinished {
public:
    /** @param path  of the folder, in which there are only files */
    explicit Unfinished(const std::string& path);
    ~Unfinished();
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
};

} // namespace host
