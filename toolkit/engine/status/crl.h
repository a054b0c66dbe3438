/** @file
 *  Certificate revocation lists (RFC 5280).
 */
#pragma once

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate.h"

namespace toolkit {

/** DER or PEM. Throws SIGIL_TK_CRL_MALFORMED. */
CrlHandle parseCrl(const Library& library, View bytes);

/** Whether one of the lists tells if @p certificate is revoked: it is of its issuer, and of its part of the issuer's
 *  certificates. */
bool hasCrlFor(const STACK_OF(X509_CRL) * crls, const Certificate& certificate);

} // namespace toolkit
