// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The context, its settings and the byte strings: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/x509/text.h"

namespace toolkit::calls {

/** Both texts are shorter than 64 bytes, terminator included: no capacity is passed. */
inline void apiGetVersions(Context&, char* version, char* information)
{
    require(version && information, SIGIL_TK_ARGUMENT);
    putText(versionText, versionCapacity, version);
    putText(opensslVersion(), versionCapacity, information);
}

inline void apiSetOptionalConfFile(Context& state, char* path) { readConfFile(state, inOptional(path)); }

inline void apiSetHashAlgo(Context& state, int algorithm) { setHashAlgorithm(state, algorithm); }

inline void apiGetVersion(Context&, int capacity, char* out) { putText(versionText, capacity, out); }

/** The number is a capacity that callers fix at 8 bytes, so the text is cut to that. */
inline void apiGetInfo(Context&, int capacity, char* out) { putText(opensslVersion(), capacity, out); }

inline void apiSetOption(Context& state, int option)
{
    require(option == SIGIL_TK_OPTION_NONE || option == SIGIL_TK_OPTION_OCSP_ANY_NONCE, SIGIL_TK_OPTION, "option");
    state.ocsp.acceptsAnyNonce = option == SIGIL_TK_OPTION_OCSP_ANY_NONCE;
}

inline void apiSetConfFile(Context& state, char* path) { readConfFile(state, in(path)); }

/** Reads "YYYY-MM-DD HH:MM:SS", the form in which validity is printed. */
inline void apiStr2Time(Context&, char* text, long* time)
{
    const auto value = timeFromText(in(text));
    require(value.has_value(), SIGIL_TK_ENCODING, "time");
    putValue(static_cast<long>(*value), time);
}

inline void binstrCreate(BINSTR* bytes) { putValue(BINSTR{}, bytes); }

inline void binstrDelete(BINSTR* bytes)
{
    require(bytes != nullptr, SIGIL_TK_ARGUMENT);
    release(bytes);
}

inline void binstrSetData(const unsigned char* data, int length, BINSTR* out)
{
    require(data && length > 0, SIGIL_TK_ARGUMENT);
    put({data, static_cast<std::size_t>(length)}, out);
}

} // namespace toolkit::calls
