// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What can fail in a session: events. The program's own definitions stand before those of the C library, so that every
 *  library of the process meets them, OpenSSL and the toolkits too.
 */
#pragma once

#include <array>
#include <cstddef>

namespace torture {

enum class Kind { Memory, File, Loader, Toolkit, Network };
constexpr std::array<const char*, 5> kindNames{"memory", "file", "loader", "toolkit", "network"};
using Counts = std::array<long, kindNames.size()>;

/** What a toolkit's function answers that fails without having been run. */
constexpr int toolkitFailure = 77;

struct Fault {
    Kind kind = Kind::Memory;
    long number = -1;     ///< of the event of its kind, from 0; -1 for none
    bool lasting = false; ///< all later events of the kind fail too
    int error = 0;        ///< errno of a file or network call
};

/** Counts the calling thread's events from now on, and has them fail as @p fault says. */
void watch(const Fault& fault);
/** Ends that. @return the events that were met */
Counts stopWatching();
/** Is told from where the fault's event of memory is met (null for another), before it fails; null for nobody. */
extern void (*onFault)(const void* site);
/** Is told of each event while none fails; null for nobody. */
extern void (*onEvent)(Kind kind, long number);
/** Decides from now on in this process which events count, by the code that they happen to. All do at first. */
void countOnly(bool (*counts)(const void* site));
/** Counts an event. @param site  the code that it happens to; null for one that counts always @return whether it fails */
bool fails(Kind kind, const void* site);

/** While it lives, what the test does itself is no event. */
class Pause {
public:
    Pause();
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

private:
    bool m_watching;
};

} // namespace torture
