// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Passwords and the identity number: where they come from, and that nothing of them stays.
 */
#pragma once

#include "jobs/secret_text.h"
#include "session.h"

#include <string>

namespace host {

/** Keeps other processes, and files of crashes, from the memory of this one, and its memory from keeping what was a secret.
 *  Lasts as long as the object. */
class NotDumpable {
public:
    NotDumpable();
    ~NotDumpable();
    NotDumpable(const NotDumpable&) = delete;
    NotDumpable& operator=(const NotDumpable&) = delete;
};

/** A secret and where it came from: only a person at a terminal is asked twice. */
struct Answer {
    Secret secret;
    bool fromTerminal = false;
};

/** The password of what @p name names: --password-fd, --password-file, the program in SIGILDESK_ASKPASS, a prompt.
 *  Throws Failure: wrongUse when there is no way to ask, no when the person gives up. */
Answer askPassword(const Session& session, const std::string& name);

/** A password to be: --new-password-fd, --new-password-file, or two prompts that must agree. Never empty. */
Secret askNewPassword(const Session& session, const std::string& name);

/** The identity number: --identity-fd, --identity-file, or a prompt. */
Secret askIdentity(const Session& session, const std::string& name);

/** A yes at the terminal, in English or Korean; everything else is a no. Throws Failure (wrongUse) without one. */
bool confirm(const std::string& question);

/** Calls @p attempt with a password until it takes it: once, and once more for a person at a terminal.
 *  @param attempt  answers a result of the library
 *  @return the last result */
template <class Attempt>
int withPassword(const Session& session, const std::string& name, Attempt attempt);

/** Whether a result says that the password was wrong. */
bool isWrongPassword(int code);

template <class Attempt>
int withPassword(const Session& session, const std::string& name, Attempt attempt)
{
    Answer answer = askPassword(session, name);
    const int code = attempt(answer.secret);
    if (!isWrongPassword(code) || !answer.fromTerminal)
        return code;
    answer = askPassword(session, name);
    return attempt(answer.secret);
}

} // namespace host
