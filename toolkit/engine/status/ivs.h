// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Validation of a certificate by a server, which builds the path, verifies it and looks its revocation up: SCVP,
 *  RFC 5055, over HTTP POST.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/status/scvp.h"
#include "toolkit/engine/x509/certificate.h"

#include <openssl/cms.h>

#include <ctime>
#include <string>
#include <string_view>

namespace toolkit {

struct IvsRequest {
    Bytes nonce;
    Bytes content; ///< DER of the CVRequest
    Bytes message; ///< and in its ContentInfo, as it is sent
};

/** Asks whether a certificate is valid now under the default policy of the server. The answer must be signed and made
 *  for this request. */
IvsRequest makeIvsRequest(const Library& library, const Certificate& certificate);

/** A response that says "okay". The checks are independent of each other; only all of them together make the answer worth
 *  something. */
class IvsResponse {
public:
    /** Throws SIGIL_TK_IVS_MALFORMED and, when the server answers an error, SIGIL_TK_IVS_REFUSED. An error counts without
     *  a signature too: servers do not sign what they could not read. */
    IvsResponse(const Library& library, View der);

    /** Throws SIGIL_TK_IVS_SIGNER unless @p server signed, nobody else did, and the certificate may sign at @p time. */
    void requireSigner(const Certificate& server, std::time_t time) const;
    /** Throws SIGIL_TK_IVS_OTHER_REQUEST unless the response repeats the nonce and the hash of the request. The nonce tells
     *  an old answer, the hash a request that was changed on its way: nobody signs it. */
    void requireAnswerTo(const Library& library, const IvsRequest& request) const;
    /** Throws SIGIL_TK_IVS_STALE unless the response was made at @p time. */
    void requireMadeAt(std::time_t time) const;
    /** Throws SIGIL_TK_IVS_NO_ANSWER unless the response tells whether @p certificate is valid, and this alone, and
     *  SIGIL_TK_IVS_INVALID when it is not. */
    void requireValid(const Certificate& certificate) const;

private:
    Handle<CMS_ContentInfo, CMS_ContentInfo_free> m_signed; ///< null when nobody signed
    scvp::ResponseHandle m_response;
};

/** Has a certificate validated by the server whose address is the URL of section [IVS] in a settings file.
 *  @param server certificate with which the answer must be signed; it is trusted as it is
 *  Throws what the steps above throw, the codes of readFile() and post(), and SIGIL_TK_URL without an address. */
void verifyByIvs(
    const Library& library, const std::string& confFile, const Certificate& certificate, const Certificate& server);

/** The same, and verifyIdentity() after it. Number and random value stay here: the server does not see them. */
void verifyIdentityByIvs(const Library& library, const std::string& confFile, const Certificate& certificate,
    View random, std::string_view idn, const Certificate& server);

} // namespace toolkit
