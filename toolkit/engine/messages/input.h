// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a message function reads: bytes in memory, or a file of any size.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/file.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace toolkit {

/** Takes bytes one piece after another. */
using Sink = std::function<void(View)>;

class Input {
public:
    /** The bytes must outlive the input. */
    explicit Input(View bytes)
        : m_bytes(bytes)
        , m_size(bytes.size())
    {
    }
    /** Codes as readFile, but of any size. */
    static Input file(const std::string& path);

    std::uint64_t size() const { return m_size; }
    /** Fills @p room from @p offset on. Throws SIGIL_TK_FILE_READ when a file became shorter meanwhile. */
    void read(std::uint64_t offset, std::span<unsigned char> room) const;
    /** Hands out @p length bytes from @p offset on in pieces; memory does not grow with them. */
    void pieces(std::uint64_t offset, std::uint64_t length, const Sink& take) const;
    void pieces(const Sink& take) const { pieces(0, m_size, take); }

private:
    Input() = default;

    View m_bytes;
    std::shared_ptr<const FileReader> m_file;
    std::uint64_t m_size = 0;
};

} // namespace toolkit
