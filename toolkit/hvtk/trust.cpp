// HVTK_CERT_ verification, HVTK_UTIL_ paths and HVTK_HVAP_ fetches.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/paths.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/pkcs12/pairs.h"
#include "toolkit/engine/status/ivs.h"
#include "toolkit/engine/x509/object_list.h"

using namespace toolkit;

namespace {

/** Verifies and, when @p path is given, hands out the path as a list. */
void verifyInto(Context& state, BINSTR* certificate, const VerifyRequest& request, BINSTR* path)
{
    const auto found = verifyCertificate(state.library(), state.trust, {state.library(), in(certificate)}, request);
    if (path)
        put(certificateList(found).encode(), path);
}

} // namespace

TOOLKIT_FUNCTION HVTK_CERT_SetCaPubs(void* context, BINSTR* certificates)
{
    return call(context,
        [&](Context& state) { state.trust.authorities = certificatesOf(state.library(), in(certificates)); });
}

TOOLKIT_FUNCTION HVTK_CERT_FreeCaPubs(void* context)
{
    return call(context, [](Context& state) { state.trust.authorities.clear(); });
}

TOOLKIT_FUNCTION HVTK_CERT_AddTrustedCert(void* context, BINSTR* certificate)
{
    return call(context, [&](Context& state) { addTrusted(state.trust, {state.library(), in(certificate)}); });
}

TOOLKIT_FUNCTION HVTK_CERT_SetVerifyEnv1(
    void* context, int pathSource, int revocation, bool toleratesMissingCrl, char* time)
{
    return call(context, [&](Context& state) {
        setEnvironment(state.trust, pathSource, revocation, toleratesMissingCrl, inOptional(time));
    });
}

/** Replaces what is trusted: the time, the trusted certificates and the revocation lists at hand. */
TOOLKIT_FUNCTION HVTK_CERT_SetVerifyEnv2(void* context, char* time, BINSTR* trusted, BINSTR* crls)
{
    return call(context, [&](Context& state) {
        setTrust(state.library(), state.trust, inOptional(time), in(trusted), inOptional(crls));
    });
}

TOOLKIT_FUNCTION HVTK_CERT_Verify(void* context, BINSTR* certificate, int usage, char* policies,
    bool checksRevocation, BINSTR* authorities, BINSTR* path)
{
    return call(context, [&](Context& state) {
        const VerifyRequest request{usage, policiesOf(inOptional(policies)), checksRevocation, {},
            certificatesOf(state.library(), inOptional(authorities))};
        verifyInto(state, certificate, request, path);
    });
}

TOOLKIT_FUNCTION HVTK_CERT_Verify2(void* context, BINSTR* certificate, int usage, char* policies, char* time)
{
    return call(context, [&](Context& state) {
        const VerifyRequest request{
            usage, policiesOf(inOptional(policies)), false, optionalTime(inOptional(time)), {}};
        verifyInto(state, certificate, request, nullptr);
    });
}

TOOLKIT_FUNCTION HVTK_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* url, int* status)
{
    return call(context, [&](Context& state) {
        putValue(
            revocationStatus(state.library(), state.trust, {state.library(), in(certificate)}, inOptional(url)),
            status);
    });
}

/** The server is trusted for the certificate with which it signs; the verification environment has no part in it. */
TOOLKIT_FUNCTION HVTK_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* server)
{
    return call(context, [&](Context& state) {
        verifyByIvs(state.library(), inPath(state, confFile), {state.library(), in(certificate)},
            {state.library(), in(server)});
    });
}

/** The path under the context's environment: the certificate first, the trusted one last. */
TOOLKIT_FUNCTION HVTK_UTIL_GetCertPath(void* context, BINSTR* certificate, BINSTR* path)
{
    return call(context, [&](Context& state) {
        const auto found = verifyCertificate(state.library(), state.trust, {state.library(), in(certificate)}, {});
        put(certificateList(found).encode(), path);
    });
}

TOOLKIT_FUNCTION HVTK_UTIL_GetRootCert(void* context, BINSTR* certificate, BINSTR* root)
{
    return call(context, [&](Context& state) {
        const auto path = verifyCertificate(state.library(), state.trust, {state.library(), in(certificate)}, {});
        put(path.back(), root);
    });
}

TOOLKIT_FUNCTION HVTK_UTIL_IsTrustCert(void* context, BINSTR* certificate, BINSTR* anchors, bool* trusted)
{
    return call(context, [&](Context& state) {
        putValue(isTrusted(state.library(), state.trust, {state.library(), in(certificate)},
                     certificatesOf(state.library(), in(anchors))),
            trusted);
    });
}

TOOLKIT_FUNCTION HVTK_HVAP_GetDataByURL(void* context, int mode, char* url, BINSTR* out)
{
    return call(context, [&](Context&) { put(fetch(in(url), mode), out); });
}

TOOLKIT_FUNCTION HVTK_HVAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* out)
{
    return call(context, [&](Context& state) { put(fetchCrl({state.library(), in(certificate)}), out); });
}
