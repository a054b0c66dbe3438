// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The functions of the maker's toolkit, libHVCToolkitV30.so, that the library binds at run time: their names and
 *  argument lists, said once. The façade's rows are checked against these declarations without linking them; the
 *  recording toolkit of the tests is made from them, and the open toolkit defines what it has of them. A family's header
 *  declares its functions of both toolkits, one beside the other.
 *
 *  Every function answers 0 or the toolkit's own code. The context that HVTK_API_Init made comes first, except for the
 *  byte strings. A capacity counts the bytes of the buffer that follows it; texts without one have a size that the
 *  family's public header states (<sigildesk/crypto.h>). Byte strings that a function fills are the toolkit's and go
 *  back through HVTK_BINSTR_Delete. What the functions mean to a caller stands with the exports that reach them.
 */
#pragma once

#include "toolkit_abi/base64.h"
#include "toolkit_abi/cert.h"
#include "toolkit_abi/cmp.h"
#include "toolkit_abi/cms.h"
#include "toolkit_abi/crypt.h"
#include "toolkit_abi/frame.h"
#include "toolkit_abi/hvap.h"
#include "toolkit_abi/media.h"
#include "toolkit_abi/ocsp.h"
#include "toolkit_abi/pfx.h"
#include "toolkit_abi/pkcs11.h"
#include "toolkit_abi/prikey.h"
#include "toolkit_abi/tsp.h"
#include "toolkit_abi/uni.h"
#include "toolkit_abi/util.h"
#include "toolkit_abi/vid.h"
#include "toolkit_abi/wpki.h"
