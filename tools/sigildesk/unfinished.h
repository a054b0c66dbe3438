// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a signal that ends the process takes away first.
 */
#pragma once

#include <csignal>
#include <string>

namespace host {

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

/** Files on their way, until the object goes: SIGINT, SIGTERM, SIGHUP and SIGQUIT remove them before they end the process.
 *  One at a time. */
class Unfinished {
public:
    /** @param path  of the file; whatever stands beside it under a longer name goes too, since a toolkit that writes the
     *               file does so under a name of its own first */
    explicit Unfinished(const std::string& path);
    ~Unfinished();
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
};

} // namespace host
