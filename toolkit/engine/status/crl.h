// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificate revocation lists (RFC 5280).
 */
#pragma once

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/net/visits.h"
#include "toolkit/engine/x509/certificate.h"

#include <string_view>
#include <vector>

namespace toolkit {

/** DER or PEM. Throws SIGIL_TK_CRL_MALFORMED. */
CrlHandle parseCrl(const Library& library, View bytes);

/** The revocation lists that are at hand for a verification. */
class RevocationLists {
public:
    RevocationLists(const Library& library, const std::vector<Bytes>& lists, Visits& visits);

    const STACK_OF(X509_CRL) * get() const { return m_lists.get(); }
    /** Adds the list at an address. Throws what fetch() throws, and SIGIL_TK_CRL_MALFORMED. */
    void fetchFrom(std::string_view url);
    /** Adds the next list that a certificate names and that was not fetched yet. @return whether there was one; what cannot
     *  be had is simply not there */
    bool fetchNext(const Certificate& certificate);
    /** Adds lists that the certificates in question name. @return whether there were any */
    bool fetchFor(const std::vector<const X509*>& certificates);

private:
    static void release(STACK_OF(X509_CRL) * lists) { sk_X509_CRL_pop_free(lists, X509_CRL_free); }

    void add(View der);
    void fetchFrom(std::string_view url, int mode);

    const Library& m_library;
    Visits& m_visits;
    Handle<STACK_OF(X509_CRL), release> m_lists;
};

} // namespace toolkit
