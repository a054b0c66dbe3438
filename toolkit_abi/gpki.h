// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The functions of the government PKI library, libgpkiapi_v15.so, that the library binds at run time, as hvtk.h has
 *  those of the maker's toolkit; the same holds of them. Byte strings that a function fills go back through
 *  GPKI_BINSTR_Delete, and every text comes with its capacity.
 */
#pragma once

#include "toolkit_abi/base64.h"
#include "toolkit_abi/cert.h"
#include "toolkit_abi/cms.h"
#include "toolkit_abi/crypt.h"
#include "toolkit_abi/frame.h"
#include "toolkit_abi/hvap.h"
#include "toolkit_abi/media.h"
#include "toolkit_abi/ocsp.h"
#include "toolkit_abi/pfx.h"
#include "toolkit_abi/pkcs11.h"
#include "toolkit_abi/prikey.h"
#include "toolkit_abi/sigea.h"
#include "toolkit_abi/tsp.h"
#include "toolkit_abi/vid.h"
#include "toolkit_abi/wpki.h"
