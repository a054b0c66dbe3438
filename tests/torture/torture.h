// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Sessions of which every event fails in a process of its own. A session is run once to count its events. Then a process
 *  goes through it step by step and forks before each step, once for every fault that is chosen in it: the child meets
 *  the fault and goes on for two steps and to the last one, the parent goes on without.
 */
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace torture {

/** A call, as a host makes it. */
struct Step {
    std::string name;
    std::function<int()> run; ///< answers the call's code
    std::set<int> leftOut{};  ///< what it also answers when a certificate is left out for lack of memory
};

/** Codes that a step may answer in place of its own. */
struct Codes {
    std::set<int> shortage{};          ///< memory ran out
    std::set<int> consequences{};      ///< a step before it failed: no handle, nothing loaded
    std::function<bool(int)> stated{}; ///< another event than one of memory failed
    int end = 0;                       ///< with which the process may end when memory ran out; 0 for never
};

struct Session {
    std::vector<Step> steps; ///< from the first call to the last, which gives everything back
    Codes codes;
    std::string folder; ///< what it works on, which is as it was before for every fault
    bool ofProcesses =
        false;        ///< each step would be a process of its own: with it goes what it keeps, and none follows
    long mayKeep = 0; ///< blocks of memory that stay with what is deliberately left open when memory was short
};

/** A session, made in the process that runs it. */
struct NamedSession {
    std::string name;
    std::function<Session()> make;
};

/** The program: `[--faults N] [--seconds S] [--seed SEED] [--session NAME] [--which places]
 *  [--only SESSION:STEP:KIND:NUMBER:once|lasting]`. N faults are taken out of all, every one for 0; no more are begun after S
 *  seconds. Of places, only the first of the events counts to which the same stack leads.
 *  @return its exit code: 1 when something was found, 2 after wrong use */
int run(int count, char** words, const std::vector<NamedSession>& sessions);

} // namespace torture
