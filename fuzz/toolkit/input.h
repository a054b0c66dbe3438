/** @file
 *  What the fuzz targets of the toolkit share.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/base/pem.h"

#include <cstdint>
#include <cstdlib>

namespace fuzz {

inline const toolkit::Library& library()
{
    static const toolkit::Library shared;
    return shared;
}

/** The input itself; the seeds of the corpus are PEM, so that they can be read, and stand for what is in them. */
inline toolkit::Bytes input(const std::uint8_t* data, std::size_t size)
{
    const toolkit::ErrorScope scope;
    try {
        return toolkit::derOf({data, size}, SIGIL_TK_ENCODING);
    } catch (const toolkit::Error&) {
        return {data, data + size};
    }
}

/** Runs the code under test; only the engine's own exception may come out. */
template <class Body>
void attempt(Body body)
{
    const toolkit::ErrorScope scope;
    try {
        body();
    } catch (const toolkit::Error& error) {
        if (error.code() == SIGIL_TK_OK || toolkit::codeText(error.code()).empty())
            std::abort();
    }
}

} // namespace fuzz
