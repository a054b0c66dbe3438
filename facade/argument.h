/** @file
 *  What a function requires of its arguments, said as values that are tested when their turn comes: a null handle is
 *  answered before a null buffer, and no caller has to remember the order.
 */
#pragma once

#include <sigildesk/binstr.h>
#include <sigildesk/codes.h>

namespace sigil {

/** One required argument, and the code that answers a call without it. */
struct Need {
    bool met;
    int code;
};

/** A call's requirements, written {need(a), need(b)}: keeps the code of the first that is not met, or 0. */
struct Needs {
    template <class... N>
    Needs(const N&... needs)
    {
        ((unmet = unmet || needs.met ? unmet : needs.code), ...);
    }
    int unmet = SIGIL_SUCCESS;
};

/** A text, buffer or out-pointer that must not be null. */
inline Need need(const void* argument, int code = SIGIL_BAD_ARGUMENT) { return {argument != nullptr, code}; }

/** A byte string that must hold data. A negative length counts as empty. */
inline Need need(const BINSTR* bytes, int code = SIGIL_BAD_ARGUMENT)
{
    return {bytes && bytes->pData && bytes->nLength > 0, code};
}

/** A byte-string record that must be there, filled or not. */
inline Need needRecord(const BINSTR* bytes) { return need(static_cast<const void*>(bytes)); }

/** A byte count of at least 1. */
inline Need needLength(int length) { return {length > 0, SIGIL_BAD_ARGUMENT}; }

} // namespace sigil
