// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Sessions of the layers.
 */
#pragma once

#include "tests/torture/materials.h"
#include "tests/torture/torture.h"

#include <memory>
#include <vector>

namespace torture {

/** What adds steps to a session, calls with the inputs that all of them share. @p steps must outlive it. */
template <class Inputs>
auto adderOf(std::vector<Step>& steps, const std::shared_ptr<Inputs>& inputs)
{
    return [&steps, inputs](const char* name, auto call) {
        steps.push_back({name, [call, inputs] { return call(*inputs); }});
    };
}

/** The façade on a toolkit: certificates, keys, messages, PKCS#12, identity, files. */
Session facadeSession(Materials& materials, int toolkit);
/** The certificate list: listing, unlocking, a certificate from memory. */
Session listSession(Materials& materials, int toolkit);
/** The certificate list: import, export, copies, deletion, another password. */
Session transferSession(Materials& materials, int toolkit);
/** The command: what needs neither a network nor a display. */
Session commandSession(Materials& materials, int toolkit);
/** The dialog that lives for a call, which knows one toolkit. */
Session ownDialogSession(Materials& materials);
/** The dialog that calls share. */
Session sharedDialogSession(Materials& materials);

/** Has the layers work on the store and leave the machine alone. */
void useStore(const Materials& materials);
/** What sessions of the list may answer. */
const Codes& listCodes();
/** Whether a result has words, and does not call anything damaged. */
bool isStated(int code);

} // namespace torture
