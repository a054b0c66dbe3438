// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The selection dialog, shown by a program of its own: whoever calls needs neither Qt nor an event loop, and outlives a
 *  display that is missing or goes away.
 */
#pragma once

#include "foundation/secret.h"
#include "jobs/dialog_exchange.h"
#include "jobs/setting.h"

#include <string>
#include <string_view>
#include <vector>

namespace host {

/** What the user chose, with the private keys: wiped with its memory, which no core holds. */
class DialogChoice {
public:
    const tagSELCERTINFO* operator->() const { return &m_answer.front().chosen; }

    DialogAnswer& answer() { return m_answer.front(); }

private:
    std::vector<DialogAnswer, sigil::SecretAllocator<DialogAnswer>> m_answer{1};
};

/** An item of the choice. */
inline std::string_view item(const unsigned char* data, int length)
{
    return {reinterpret_cast<const char*>(data), static_cast<std::size_t>(length)};
}

/** The dialog in the language of the setting, with all certificates of its hard disk. Throws Failure. */
DialogRequest dialogRequest(const Setting& setting);

/** Shows the dialog until the user has chosen and the key is open.
 *  @param folder  where the program is
 *  Throws Failure: "no_dialogs", "no_display", "dialog_failed", or with the code of the dialog, such as SIGIL_CANCELLED. */
DialogChoice chooseInDialog(const std::string& folder, const DialogRequest& request);

} // namespace host
