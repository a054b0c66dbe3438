// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Owners of what the C library hands out, for programs of any kind.
 */
#pragma once

#include <sigil.h>

#include <memory>
#include <string_view>

namespace sigil_test {

/** What is closed and released at the end of the block. */
struct Closed {
    void operator()(SigilSession* session) const { sigil_close(session); }
};
using Session = std::unique_ptr<SigilSession, Closed>;

/** Bytes that a function hands out; they go back when they go. */
class Bytes {
public:
    Bytes() = default;
    ~Bytes() { sigil_free(&m_bytes); }
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;

    SigilBytes* out() { return &m_bytes; }
    const unsigned char* data() const { return m_bytes.data; }
    std::size_t size() const { return m_bytes.size; }
    std::string_view view() const { return {reinterpret_cast<const char*>(m_bytes.data), m_bytes.size}; }

private:
    SigilBytes m_bytes{};
};

/** A zeroed struct with its size in it. */
template <class Struct>
Struct sized()
{
    Struct made{};
    made.size = sizeof made;
    return made;
}

} // namespace sigil_test
