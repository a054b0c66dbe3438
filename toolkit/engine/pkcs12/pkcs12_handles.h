// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Owners for OpenSSL's PKCS#12 objects.
 */
#pragma once

#include "toolkit/engine/base/handles.h"

#include <openssl/pkcs12.h>
#include <openssl/pkcs7.h>

namespace toolkit {

inline void releaseBags(STACK_OF(PKCS12_SAFEBAG) * bags) { sk_PKCS12_SAFEBAG_pop_free(bags, PKCS12_SAFEBAG_free); }
inline void releaseSafes(STACK_OF(PKCS7) * safes) { sk_PKCS7_pop_free(safes, PKCS7_free); }

using Pkcs12Handle = Handle<PKCS12, PKCS12_free>;
using SafeHandle = Handle<PKCS7, PKCS7_free>;
using BagHandle = Handle<PKCS12_SAFEBAG, PKCS12_SAFEBAG_free>;
using BagsHandle = Handle<STACK_OF(PKCS12_SAFEBAG), releaseBags>;
using SafesHandle = Handle<STACK_OF(PKCS7), releaseSafes>;

} // namespace toolkit
