// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Bytes of a CBinary as a view, and back.
 */
#pragma once

#include <sigildesk/binary.h>

#include <algorithm>
#include <string_view>

namespace sigil {

/** What a toolkit handed out with a negative length is empty. One without data has the length 0. */
inline std::string_view bytesOf(const CBinary& bytes)
{
    return {bytes.m_pData, static_cast<std::size_t>(std::max(bytes.m_nLength, 0))};
}

/** Copies @p bytes into @p out. */
inline void assign(CBinary& out, std::string_view bytes)
{
    out.set(const_cast<char*>(bytes.data()), static_cast<int>(bytes.size())); // it only reads them
}

} // namespace sigil
