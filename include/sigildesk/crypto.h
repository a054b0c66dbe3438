// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The crypto façade: about two hundred functions over one of two cryptographic toolkits that are loaded at run time.
 *  The façade does no cryptography itself; it checks arguments, sends the call to the handle's toolkit and gives the
 *  toolkit's result back.
 *
 *  Rules for every function
 *
 *  Handle. The first argument, @p handle, is a façade handle from HV_Initalize. One thread at a time may use a handle;
 *  handles are independent of each other. Release it with HV_Finish.
 *
 *  Order of a call. HV_Initalize; any number of calls; after a failure HV_GetErrInfo or HV_GetErrInfo2; HV_Finish.
 *
 *  Result. An int, 0 for success. The façade's own codes, with their names in <sigildesk/codes.h>:
 *
 *      1000  a certificate function's output buffer is null or its input is empty (where the function says so);
 *            out of memory (HV_Initalize)
 *      1001  a required argument is null or empty
 *      1003  the bound toolkit has no such function, or its library lacks it
 *      1008  the handle is null or not initialised
 *      1020  toolkit type neither 0 nor 1 (HV_Initalize)
 *      1021  library folder null or empty (HV_Initalize)
 *      1023  the maker toolkit's library is not loaded (type 0)
 *      1024  the GPKI library is not loaded (type 1)
 *
 *  Any other value is the toolkit's own code, passed through unchanged. "The common codes" in a function's description
 *  are 0, 1003, 1008, 1023, 1024 and the toolkit's.
 *
 *  Order of the checks. 1008; required arguments; 1003 when the handle's toolkit has no such function; 1023 or 1024;
 *  1001 from the backend, which may require more than the façade; 1003 when the loaded library lacks the symbol.
 *
 *  Error texts. The façade makes none. HV_GetErrInfo asks the toolkit; HV_GetErrInfo2 returns the text that was kept when
 *  a toolkit call failed last.
 *
 *  Byte strings (BINSTR). An input is filled by HV_BINSTR_SetData, an output by the toolkit; both are released with
 *  HV_BINSTR_Delete on the same handle, because the toolkit that allocated the memory must free it. "Empty" means a null
 *  data pointer or a length below 1; a null record is answered like an empty one. An output must be a record made with
 *  HV_BINSTR_Create; null is the toolkit's to refuse.
 *
 *  Texts are zero-terminated byte strings in CP949. An output text is a buffer of the caller; where a capacity stands
 *  before it, that is the number of its bytes with the terminator, handed to the toolkit as it is. A text output without a
 *  capacity must hold what the toolkit writes: the toolkit says how much that is.
 *
 *  Options, algorithm numbers, flags and positions are the toolkit's: the façade passes them on without looking at them,
 *  and they may mean different things on the two toolkits. Those of the open toolkit stand in
 *  <sigildesk/open_toolkit.h>.
 */
#ifndef SIGILDESK_CRYPTO_H
#define SIGILDESK_CRYPTO_H

#include <sigildesk/codes.h>
#include <sigildesk/crypto/base64.h>
#include <sigildesk/crypto/cert.h>
#include <sigildesk/crypto/cmp.h>
#include <sigildesk/crypto/cms.h>
#include <sigildesk/crypto/crypt.h>
#include <sigildesk/crypto/frame.h>
#include <sigildesk/crypto/hvap.h>
#include <sigildesk/crypto/media.h>
#include <sigildesk/crypto/ocsp.h>
#include <sigildesk/crypto/pfx.h>
#include <sigildesk/crypto/pkcs11.h>
#include <sigildesk/crypto/prikey.h>
#include <sigildesk/crypto/sigea.h>
#include <sigildesk/crypto/tsp.h>
#include <sigildesk/crypto/uni.h>
#include <sigildesk/crypto/util.h>
#include <sigildesk/crypto/vid.h>
#include <sigildesk/crypto/wpki.h>

#endif
