// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a session of the C library holds.
 */
#pragma once

#include "doctor/doctor.h"
#include "foundation/secret.h"
#include "jobs/certificate.h"
#include "jobs/setting.h"
#include "jobs/signed_message.h"
#include "jobs/tokens.h"

#include <sigil.h>

#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host {

/** Private keys by their Pair; they wipe themselves. */
using Keys = std::array<sigil::SecretBytes, 2>;

/** One certificate of the session's list. */
struct Entry {
    Certificate certificate;
    Keys keys; ///< empty as long as they are locked

    void lock() { keys = {}; }
    bool isUnlocked() const { return !keys.front().empty(); }
};

/** A signer of the message that was verified last. */
struct JudgedSigner {
    Signature signature;
    std::optional<JudgedStamp> stamp;
};

} // namespace host

struct SigilSession {
    host::Setting setting;
    std::unique_ptr<const host::Crypto> crypto;
    std::deque<host::Entry> entries;         // what is handed out of one stays where it is when more come
    std::vector<host::JudgedSigner> signers; // of the message that was verified last
    std::vector<host::Token> tokens;
    std::vector<sigil::Finding> findings;
    host::Stamp stamp;       // behind the texts of sigil_stamp()
    host::Certificate shown; // behind the texts of sigil_certificate_fields()
    std::string error;
};

namespace host {

/** The entry with this number. Throws Failure for another one. */
Entry& entryOf(SigilSession& session, int entry);

} // namespace host
