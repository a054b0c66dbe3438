// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Time stamps: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/time/time_stamp.h"

#include <initializer_list>

namespace toolkit::calls {

/** Requests are unsigned, so certificate and key of the callers are not used. */
inline Bytes timeStampRequest(Context& state, int hash, Bytes imprint, char* policy, bool withNonce)
{
    return state.timeStamps.makeRequest(
        state.library(), {resolveHash(state, hash), std::move(imprint), in(policy), withNonce});
}

inline void tspMakeReqMsg(
    Context& state, BINSTR* data, int hash, char* policy, bool withNonce, BINSTR*, BINSTR*, BINSTR* request)
{
    put(timeStampRequest(
            state, hash, toolkit::hash(state.library(), resolveHash(state, hash), in(data)), policy, withNonce),
        request);
}

inline void tspSendAndRecv(Context&, char* address, int port, BINSTR* request, BINSTR* response)
{
    put(sendToTimeStamper(in(address), port, in(request)), response);
}

/** Hands out token and authority's certificate, each when a record is given. */
inline void tspVerifyResMsg(Context& state, BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    const TimeStamp stamp = state.timeStamps.verify(state.library(), state.trust, in(response));
    BINSTR ignored[2]{};
    put({{stamp.token, token ? token : &ignored[0]}, {stamp.authority, certificate ? certificate : &ignored[1]}});
    for (BINSTR& record : ignored)
        release(&record);
}

/** Request, way and verification in one. */
inline void timeStampInto(
    Context& state, char* address, int port, int hash, Bytes imprint, char* policy, bool withNonce, BINSTR* token)
{
    const Bytes request = timeStampRequest(state, hash, std::move(imprint), policy, withNonce);
    put(state.timeStamps.verify(state.library(), state.trust, sendToTimeStamper(in(address), port, request)).token,
        token);
}

inline void tspTimeStampData(Context& state, char* address, int port, int hash, char* policy, BINSTR* data,
    bool withNonce, BINSTR*, BINSTR*, BINSTR* token)
{
    timeStampInto(state, address, port, hash, toolkit::hash(state.library(), resolveHash(state, hash), in(data)),
        policy, withNonce, token);
}

inline void tspTimeStampFile(Context& state, char* address, int port, int hash, char* policy, char* dataFile,
    bool withNonce, BINSTR*, BINSTR*, BINSTR* token)
{
    timeStampInto(state, address, port, hash,
        hashFile(state.library(), resolveHash(state, hash), inPath(state, dataFile)), policy, withNonce, token);
}

/** Hands out the authority's certificate when a record is given. */
inline void tspVerifyToken(Context& state, BINSTR* token, BINSTR* certificate)
{
    const Bytes authority = TimeStampToken(state.library(), in(token)).verify(state.library(), state.trust);
    if (certificate)
        put(authority, certificate);
}

inline void tspVerifyToken2OfData(Context& state, BINSTR* data, BINSTR* token, BINSTR* certificate)
{
    TimeStampToken(state.library(), in(token)).requireAbout(state.library(), in(data));
    tspVerifyToken(state, token, certificate);
}

inline void tspVerifyToken2OfFile(Context& state, char* dataFile, BINSTR* token)
{
    TimeStampToken(state.library(), in(token)).requireAboutFile(state.library(), inPath(state, dataFile));
    tspVerifyToken(state, token, nullptr);
}

/** One text of a token and where it goes; a null buffer does not want it. */
struct TokenText {
    std::string TimeStampTexts::*text;
    char* out;
};

/** Texts that do not fit whole are SIGIL_TK_BUFFER_TOO_SMALL, before any is written. */
inline void putTokenTexts(const TimeStampTexts& texts, int capacity, std::initializer_list<TokenText> wanted)
{
    for (const TokenText& entry : wanted)
        require(!entry.out || (capacity > 0 && (texts.*entry.text).size() < static_cast<std::size_t>(capacity)),
            SIGIL_TK_BUFFER_TOO_SMALL);
    for (const TokenText& entry : wanted)
        if (entry.out)
            putWholeText(texts.*entry.text, capacity, entry.out);
}

} // namespace toolkit::calls
