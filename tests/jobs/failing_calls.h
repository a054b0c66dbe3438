// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Calls of the system that fail when a test says so; the program is linked with --wrap for each of them.
 */
#pragma once

#include <string>

/** For as long as it lives, calls of the function with this name fail: "fsync", "posix_spawn", "read" or "send". */
class FailingCall {
public:
    /** @param times  how many calls fail before they succeed again */
    FailingCall(const std::string& name, int error, int times);
    ~FailingCall();
    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;

    /** Whether as many calls failed as were to. */
    bool haveFailed() const;
};
