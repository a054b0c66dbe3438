// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Asking an authority for a time stamp (RFC 3161, over HTTP POST).
 */
#pragma once

#include "toolkit/engine/time/time_stamp_token.h"

#include <string>
#include <string_view>

namespace toolkit {

/** What is to be stamped. */
struct TimeStampWish {
    int hash;                ///< SigilToolkitHash, not the default one
    Bytes imprint;           ///< hash of the data
    std::string_view policy; ///< of the authority, dotted or with blanks; empty: its own choice
    bool withNonce;
};

/** A token that was verified, with its authority's certificate. */
struct TimeStamp {
    Bytes token;
    Bytes authority;
};

/** What a context keeps between request and response: a response counts for the request that was made last. */
class TimeStampExchange {
public:
    /** Throws SIGIL_TK_ALGORITHM and, for a policy that is none, SIGIL_TK_ARGUMENT. */
    Bytes makeRequest(const Library& library, const TimeStampWish& wish);
    /** Throws SIGIL_TK_TSP_MALFORMED, SIGIL_TK_TSP_REFUSED with the authority's words, SIGIL_TK_TSP_NONCE (also before any
     *  request), _IMPRINT and _POLICY for an answer to another request, and what TimeStampToken::verify() throws. */
    TimeStamp verify(const Library& library, const TrustStore& store, View response) const;

private:
    void requireAnswer(const TS_TST_INFO* info) const;

    Handle<TS_REQ, TS_REQ_free> m_request;
};

/** @param address "http://host[:port]/path", the same with https, or a host alone, which is asked over http on @p port (0: 80).
 *  Throws what post() throws. */
Bytes sendToTimeStamper(std::string_view address, int port, View request);

} // namespace toolkit
