// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/input.h"

#include "toolkit/engine/base/error.h"

#include <algorithm>

namespace toolkit {

Input Input::file(const std::string& path)
{
    Input input;
    input.m_file = std::make_shared<const FileReader>(path);
    input.m_size = input.m_file->size();
    return input;
}

void Input::read(std::uint64_t offset, std::span<unsigned char> room) const
{
    require(offset <= m_size && room.size() <= m_size - offset, SIGIL_TK_INTERNAL, "read past the end");
    if (m_file)
        require(m_file->readAt(offset, room) == room.size(), SIGIL_TK_FILE_READ, "the file became shorter");
    else
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(offset), room.size(), room.begin());
}

void Input::pieces(std::uint64_t offset, std::uint64_t length, const Sink& take) const
{
    constexpr std::uint64_t pieceSize = 64UL * 1024;
    Secret piece(static_cast<std::size_t>(std::min(pieceSize, length)));
    while (length > 0) {
        const std::span<unsigned char> room(piece.data(), static_cast<std::size_t>(std::min(pieceSize, length)));
        read(offset, room);
        take(room);
        offset += room.size();
        length -= room.size();
    }
}

} // namespace toolkit
