// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A PKCS#11 module of the tests, with one token that misbehaves on demand.
 */
#pragma once

namespace toolkit_test {

/** How the module behaves. What concerns its start is said by what it is initialised with: "crash", "hang", "refuse", "chatter"
 *  (it talks before it refuses), "slotless". ODD_MODULE_LIST in the environment: "refuse" or "none", no list of functions. */
struct OddBehaviour {
    bool pulled = false;       ///< the token was taken out
    bool full = false;         ///< nothing can be written
    bool guarded = false;      ///< nothing can be written without a login
    bool endless = false;      ///< searches never end
    bool lyingLengths = false; ///< attributes claim to be larger than any memory
    bool failing = false;      ///< it cannot tell its slots
    int triesLeft = 3;         ///< wrong PINs before it locks
    int sessions = 0;          ///< open ones
    int starts = 0;            ///< how often it was initialised
};

} // namespace toolkit_test

/** The behaviour of the loaded module, to be read and changed. */
extern "C" toolkit_test::OddBehaviour* odd_behaviour();
