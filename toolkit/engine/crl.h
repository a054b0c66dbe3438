/** @file
 *  Certificate revocation lists (RFC 5280).
 */
#pragma once

#include "toolkit/engine/certificate.h"
#include "toolkit/engine/handles.h"
#include "toolkit/engine/library.h"

namespace toolkit {

/** DER or PEM. Throws SIGIL_TK_CRL_MALFORMED. */
CrlHandle parseCrl(const Library& library, View bytes);

/** Whether one of the lists is of the issuer of @p certificate. */
bool hasCrlOf(const STACK_OF(X509_CRL) * crls, const Certificate& certificate);

} // namespace toolkit
