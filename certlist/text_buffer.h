// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Room for the texts that a toolkit writes.
 */
#pragma once

#include <string>
#include <string_view>

namespace sigil {

/** Room for one text, used again for the next: two dozen new buffers for each certificate show in the time that a large
 *  store takes to list. */
class TextBuffer {
public:
    static constexpr int capacity = 2048; ///< what every text getter is offered, in bytes

    /** The room, all zeros. It is one byte larger than @c capacity, so that the text always ends. */
    char* cleared() { return m_room.assign(capacity + 1, '\0').data(); }
    std::string_view text() const { return m_room.c_str(); }

private:
    std::string m_room;
};

} // namespace sigil
