// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Verification of certificates and what is fetched from the net: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/pkcs12/pairs.h"
#include "toolkit/engine/status/ivs.h"
#include "toolkit/engine/status/ocsp.h"
#include "toolkit/engine/trust/paths.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <optional>

namespace toolkit::calls {

/** Verifies and, when @p path is given, hands out the path as a list. */
inline void verifyInto(Context& state, BINSTR* certificate, const VerifyRequest& request, BINSTR* path)
{
    const auto found = verifyCertificate(state.library(), state.trust, {state.library(), in(certificate)}, request);
    if (path)
        put(certificateList(found).encode(), path);
}

inline void trustSetCaPubs(Context& state, BINSTR* certificates)
{
    state.trust.authorities = certificatesOf(state.library(), in(certificates));
}

inline void trustFreeCaPubs(Context& state) { state.trust.authorities.clear(); }

inline void certAddTrustedCert(Context& state, BINSTR* certificate)
{
    addTrusted(state.trust, {state.library(), in(certificate)});
}

inline void certSetVerifyEnv1(Context& state, int pathSource, int revocation, bool toleratesMissingCrl, char* time)
{
    setEnvironment(state.trust, pathSource, revocation, toleratesMissingCrl, inOptional(time));
}

/** Replaces what is trusted: the time, the trusted certificates and the revocation lists at hand. */
inline void certSetVerifyEnv2(Context& state, char* time, BINSTR* trusted, BINSTR* crls)
{
    setTrust(state.library(), state.trust, inOptional(time), in(trusted), inOptional(crls));
}

inline void certVerify(Context& state, BINSTR* certificate, int usage, char* policies, bool checksRevocation,
    BINSTR* authorities, BINSTR* path)
{
    const VerifyRequest request{usage, policiesOf(inOptional(policies)), checksRevocation, {},
        certificatesOf(state.library(), inOptional(authorities))};
    verifyInto(state, certificate, request, path);
}

inline void certVerify2(Context& state, BINSTR* certificate, int usage, char* policies, char* time)
{
    const VerifyRequest request{usage, policiesOf(inOptional(policies)), false, optionalTime(inOptional(time)), {}};
    verifyInto(state, certificate, request, nullptr);
}

inline void certCheckStatByCRL(Context& state, BINSTR* certificate, char* url, int* status)
{
    putValue(revocationStatus(state.library(), state.trust, {state.library(), in(certificate)}, inOptional(url)),
        status);
}

/** The server is trusted for the certificate with which it signs; the verification environment has no part in it. */
inline void certVerifyByIVS(Context& state, char* confFile, BINSTR* certificate, BINSTR* server)
{
    verifyByIvs(state.library(), inPath(state, confFile), {state.library(), in(certificate)},
        {state.library(), in(server)});
}

/** The path under the context's environment: the certificate first, the trusted one last. */
inline void utilGetCertPath(Context& state, BINSTR* certificate, BINSTR* path)
{
    const auto found = verifyCertificate(state.library(), state.trust, {state.library(), in(certificate)}, {});
    put(certificateList(found).encode(), path);
}

inline void utilGetRootCert(Context& state, BINSTR* certificate, BINSTR* root)
{
    const auto path = verifyCertificate(state.library(), state.trust, {state.library(), in(certificate)}, {});
    put(path.back(), root);
}

inline void utilIsTrustCert(Context& state, BINSTR* certificate, BINSTR* anchors, bool* trusted)
{
    putValue(isTrusted(state.library(), state.trust, {state.library(), in(certificate)},
                 certificatesOf(state.library(), in(anchors))),
        trusted);
}

inline void hvapGetDataByURL(Context&, int mode, char* url, BINSTR* out) { put(fetch(in(url), mode), out); }

inline void hvapGetCRLByCert(Context& state, BINSTR* certificate, BINSTR* out)
{
    put(fetchCrl(state.trust, {state.library(), in(certificate)}), out);
}

/** The issuer is taken from the trusted certificates and the authorities of the context, or is the responder's.
 *  @param signerKey not read when the request is not signed
 *  @param revocationTime receives at most 25 bytes */
inline void certCheckStatByOCSP(Context& state, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* status)
{
    require(revocationTime && status, SIGIL_TK_ARGUMENT);
    const Library& library = state.library();
    std::optional<RequestSigner> signer;
    if (signRequest)
        signer = RequestSigner{{library, in(signerCertificate)}, in(signerKey)};
    const OcspAnswer answer = ocspStatus(library, state.trust, {library, in(certificate)},
        {library, in(responderCertificate)}, in(url), signer ? &*signer : nullptr);
    putText(answer.revokedAt ? timeText(*answer.revokedAt) : "", timeCapacity, revocationTime);
    putValue(answer.status, status);
}

inline void ldapGetAnyDataByURL(Context&, char* url, char* attribute, BINSTR* out)
{
    put(fetchAttribute(in(url), in(attribute)), out);
}

inline void ldapGetDataByCN(Context&, char* host, int port, char* commonName, int mode, char* base, BINSTR* out)
{
    put(fetchByCommonName(in(host), port, in(commonName), mode, inOptional(base)), out);
}

/** The certificate first, the root last. */
inline void ldapGetCertPath(Context& state, BINSTR* certificate, char* directory, BINSTR* path)
{
    const auto found = fetchPath(state.library(), {state.library(), in(certificate)}, inOptional(directory));
    put(certificateList(found).encode(), path);
}

} // namespace toolkit::calls
