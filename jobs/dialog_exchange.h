// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What is said between this library and the program that shows the selection dialog. The program's standard input is a
 *  socket: it greets, receives a request, and sends an answer. Both are of one version, so records go as they are.
 */
#pragma once

#include <sigildesk/dialogs.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <span>
#include <sys/socket.h>
#include <type_traits>

namespace host {

/** Name of the program in the library folder. */
constexpr char dialogProgram[] = "sigildesk-pick";

/** What the program says as soon as it runs: one that cannot be loaded says nothing. */
using DialogGreeting = std::array<char, 16>;
constexpr DialogGreeting dialogGreeting{"sigildesk-pick1"};

struct DialogRequest {
    tagINITOPT init;
    tagLOADSELECTCERTOPTION load;
};

struct DialogAnswer {
    int code;              ///< of the dialog; SIGIL_NO_DISPLAY
    char reason[512];      ///< why there is no display
    tagSELCERTINFO chosen; ///< all zeros unless the code is 0
};

/** Sends all of a record. @return false when nobody reads any more */
template <class Record>
bool sendRecord(int channel, const Record& record)
{
    static_assert(std::is_trivially_copyable_v<Record>);
    auto rest = std::as_bytes(std::span(&record, 1));
    while (!rest.empty()) {
        const ssize_t count = send(channel, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR)
            return false;
        rest = rest.subspan(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

/** Receives a record. @return false when it ends too early */
template <class Record>
bool receiveRecord(int channel, Record& record)
{
    static_assert(std::is_trivially_copyable_v<Record>);
    auto rest = std::as_writable_bytes(std::span(&record, 1));
    while (!rest.empty()) {
        const ssize_t count = recv(channel, rest.data(), rest.size(), 0);
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        rest = rest.subspan(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace host
