// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a function requires of its arguments, said as values that are tested when their turn comes: a null handle is
 *  answered before a null buffer, and no caller has to remember the order.
 */
#pragma once

#include <sigildesk/binstr.h>
#include <sigildesk/codes.h>

#include <initializer_list>

namespace sigil {

/** One required argument, and the code that answers a call without it. Nothing that it points to is touched before met()
 *  is asked: beside a null handle, a byte string may point anywhere. */
struct Need {
    enum class Kind { Met, Pointer, Bytes };

    const void* argument;
    Kind kind;
    int code;

    bool met() const { return kind == Kind::Met || (argument && (kind == Kind::Pointer || holdsData())); }

    bool holdsData() const
    {
        const auto* bytes = static_cast<const BINSTR*>(argument);
        return bytes->pData && bytes->nLength > 0;
    }
};

/** A call's requirements, written {need(a), need(b)} where the call is made. */
using Needs = std::initializer_list<Need>;

/** The code of the first requirement that is not met, or 0. Unrolled, so that no list is laid out in memory. */
[[gnu::always_inline]] inline int unmet(Needs needs)
{
#pragma GCC unroll 8
    for (const Need& need : needs)
        if (!need.met())
            return need.code;
    return SIGIL_SUCCESS;
}

/** A text, buffer or out-pointer that must not be null. */
inline Need need(const void* argument, int code = SIGIL_BAD_ARGUMENT)
{
    return {argument, Need::Kind::Pointer, code};
}

/** A byte string that must hold data. A negative length counts as empty. */
inline Need need(const BINSTR* bytes, int code = SIGIL_BAD_ARGUMENT) { return {bytes, Need::Kind::Bytes, code}; }

/** A byte-string record that must be there, filled or not. */
inline Need needRecord(const BINSTR* bytes) { return need(static_cast<const void*>(bytes)); }

/** What must hold of a value: no memory, so it is tested at once. */
inline Need needThat(bool holds, int code = SIGIL_BAD_ARGUMENT)
{
    return {nullptr, holds ? Need::Kind::Met : Need::Kind::Pointer, code};
}

/** A byte count of at least 1. */
inline Need needLength(int length) { return needThat(length > 0); }

} // namespace sigil
