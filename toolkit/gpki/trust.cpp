// GPKI_CERT_ verification, the authorities of GPKI_API_ and GPKI_LDAP_ fetches.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/paths.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/pkcs12/pairs.h"
#include "toolkit/engine/status/ivs.h"
#include "toolkit/engine/status/ocsp.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <optional>

using namespace toolkit;

namespace {

/** Callers give no capacity with a date, but room for this much. */
constexpr int dateCapacity = 25;

} // namespace

TOOLKIT_FUNCTION GPKI_API_SetCaPubs(void* context, BINSTR* certificates)
{
    return call(context,
        [&](Context& state) { state.trust.authorities = certificatesOf(state.library(), in(certificates)); });
}

TOOLKIT_FUNCTION GPKI_API_FreeCaPubs(void* context)
{
    return call(context, [](Context& state) { state.trust.authorities.clear(); });
}

TOOLKIT_FUNCTION GPKI_CERT_AddTrustedCert(void* context, BINSTR* certificate)
{
    return call(context, [&](Context& state) { addTrusted(state.trust, {state.library(), in(certificate)}); });
}

/** @param confFile not read: what is trusted comes from CERT_AddTrustedCert alone */
TOOLKIT_FUNCTION GPKI_CERT_SetVerifyEnv(
    void* context, int pathSource, int revocation, bool toleratesMissingCrl, char* /*confFile*/, char* time)
{
    return call(context, [&](Context& state) {
        setEnvironment(state.trust, pathSource, revocation, toleratesMissingCrl, inOptional(time));
    });
}

/** @param confFile not read, as above */
TOOLKIT_FUNCTION GPKI_CERT_Verify(void* context, BINSTR* certificate, int usage, char* policies, char* /*confFile*/,
    bool checksRevocation, BINSTR* authorities, BINSTR* path)
{
    return call(context, [&](Context& state) {
        const VerifyRequest request{usage, policiesOf(inOptional(policies)), checksRevocation, {},
            certificatesOf(state.library(), inOptional(authorities))};
        const auto found =
            verifyCertificate(state.library(), state.trust, {state.library(), in(certificate)}, request);
        if (path)
            put(certificateList(found).encode(), path);
    });
}

TOOLKIT_FUNCTION GPKI_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* url, int* status)
{
    return call(context, [&](Context& state) {
        putValue(
            revocationStatus(state.library(), state.trust, {state.library(), in(certificate)}, inOptional(url)),
            status);
    });
}

/** The issuer is taken from the trusted certificates and the authorities of the context, or is the responder's.
 *  @param signerKey not read when the request is not signed
 *  @param revocationTime receives at most 25 bytes */
TOOLKIT_FUNCTION GPKI_CERT_CheckStatByOCSP(void* context, BINSTR* certificate, bool signRequest,
    BINSTR* signerCertificate, BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime,
    int* status)
{
    return call(context, [&](Context& state) {
        require(revocationTime && status, SIGIL_TK_ARGUMENT);
        const Library& library = state.library();
        std::optional<RequestSigner> signer;
        if (signRequest)
            signer = RequestSigner{{library, in(signerCertificate)}, in(signerKey)};
        const OcspAnswer answer = ocspStatus(library, state.trust, {library, in(certificate)},
            {library, in(responderCertificate)}, in(url), signer ? &*signer : nullptr);
        putText(answer.revokedAt ? timeText(*answer.revokedAt) : "", dateCapacity, revocationTime);
        putValue(answer.status, status);
    });
}

/** The server is trusted for the certificate with which it signs; the verification environment has no part in it. */
TOOLKIT_FUNCTION GPKI_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* server)
{
    return call(context, [&](Context& state) {
        verifyByIvs(state.library(), inPath(state, confFile), {state.library(), in(certificate)},
            {state.library(), in(server)});
    });
}

TOOLKIT_FUNCTION GPKI_LDAP_GetDataByURL(void* context, int mode, char* url, BINSTR* out)
{
    return call(context, [&](Context&) { put(fetch(in(url), mode), out); });
}

TOOLKIT_FUNCTION GPKI_LDAP_GetAnyDataByURL(void* context, char* url, char* attribute, BINSTR* out)
{
    return call(context, [&](Context&) { put(fetchAttribute(in(url), in(attribute)), out); });
}

TOOLKIT_FUNCTION GPKI_LDAP_GetDataByCN(
    void* context, char* host, int port, char* commonName, int mode, char* base, BINSTR* out)
{
    return call(context,
        [&](Context&) { put(fetchByCommonName(in(host), port, in(commonName), mode, inOptional(base)), out); });
}

TOOLKIT_FUNCTION GPKI_LDAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* out)
{
    return call(context, [&](Context& state) { put(fetchCrl({state.library(), in(certificate)}), out); });
}

/** The certificate first, the root last. */
TOOLKIT_FUNCTION GPKI_LDAP_GetCertPath(void* context, BINSTR* certificate, char* directory, BINSTR* path)
{
    return call(context, [&](Context& state) {
        const auto found = fetchPath(state.library(), {state.library(), in(certificate)}, inOptional(directory));
        put(certificateList(found).encode(), path);
    });
}
