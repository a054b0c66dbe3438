// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the fuzz targets of the toolkit share.
 */
#pragma once

#include "fuzz/target.h"
#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/base/pem.h"

#include <cstdlib>
#include <string>

namespace fuzz {

inline const toolkit::Library& library()
{
    static const toolkit::Library shared;
    return shared;
}

/** The input itself; the seeds of the corpus are PEM, so that they can be read, and stand for what is in them. */
inline toolkit::Bytes der(Input input)
{
    const toolkit::ErrorScope scope;
    try {
        return toolkit::derOf(input, SIGIL_TK_ENCODING);
    } catch (const toolkit::Error&) {
        return toolkit::toBytes(input);
    }
}

/** The key of the certificates in some seeds, as PrivateKeyInfo: of P-256, its secret number is 32 times the digit one. */
inline const toolkit::Bytes& ownKeyInfo()
{
    using namespace toolkit;
    static const Bytes info = [] {
        const std::string number(32, '1');
        const Bytes version{1};
        const Bytes zero{0};
        const Bytes inner = der::element(
            der::Sequence, {der::element(der::Integer, {version}), der::element(der::OctetString, {view(number)})});
        return der::element(der::Sequence,
            {der::element(der::Integer, {zero}),
                der::element(der::Sequence, {der::oid(oid::ec), der::oid("1.2.840.10045.3.1.7")}),
                der::element(der::OctetString, {inner})});
    }();
    return info;
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
