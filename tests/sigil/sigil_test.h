// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A session of the C library with a sample store in front of it.
 */
#pragma once

#include "tests/support/sample_store.h"

#include <sigil.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace sigil_test {

constexpr char password[] = "sample1234!";

/** What is closed and released at the end of the block. */
struct Closed {
    void operator()(SigilSession* session) const { sigil_close(session); }
};
using Session = std::unique_ptr<SigilSession, Closed>;

/** A session over the library folder of the build. */
Session open(int toolkit = SIGIL_TOOLKIT_MAKER, int language = SIGIL_LANGUAGE_ENGLISH);

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

/** Lists everything that lies on @p disk. @return the number of entries */
int list(SigilSession* session, const std::string& disk);

SigilFields fieldsOf(SigilSession* session, int entry);

/** The first entry whose key-management pair is there, or is not. */
int entryWithKm(SigilSession* session, bool wanted);

} // namespace sigil_test
