// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Handles, error texts, settings and byte strings.
 *
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_FRAME_H
#define SIGILDESK_CRYPTO_FRAME_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Makes a handle and binds it to a toolkit.
 *  When the library cannot be loaded or initialised the handle is made all the same: every later call on it answers
 *  with a code, and HV_Finish must still be called. Calling it again on a handle loads the library anew; what the earlier
 *  binding held stays in memory, so finish the handle first.
 *  @param handle         the caller's handle variable: null inside makes a new handle, else the handle is bound again
 *  @param toolkitType    0 the maker toolkit ("libHVCToolkitV30.so"), 1 the GPKI library ("libgpkiapi_v15.so")
 *  @param libraryFolder  folder of the library file; more than 259 bytes are cut
 *  @return 0; 1000 out of memory; 1003 the library has no init function; 1008 @p handle null; 1020 other type;
 *          1021 @p libraryFolder null or empty; 1023 maker toolkit not loaded; 1024 GPKI library not loaded; any other
 *          value is the code of the toolkit's init function. 1020 and 1021 leave the handle variable alone */
SIGIL_EXPORT int HV_Initalize(void** handle, int toolkitType, char* libraryFolder);

/** Destroys a handle and closes its library. The toolkit's own finish function is not called. A null handle is ignored.
 *  Release byte strings before: they belong to the library that is closed. */
SIGIL_EXPORT void HV_Finish(void* handle);

/** Asks the toolkit for its current error text.
 *  @param bufferLength  how many bytes of the text are copied at most; a text of that length or more is not terminated,
 *                       so pass a zeroed buffer that is one byte larger
 *  @param buffer        caller's buffer of at least 8 bytes: the first eight are cleared before the toolkit is asked.
 *                       2049 bytes with a length of 2048 take every text
 *  @return the common codes; 1001 (maker toolkit) or 1000 (GPKI library) when @p buffer is null */
SIGIL_EXPORT int HV_GetErrInfo(void* handle, int bufferLength, char* buffer);

/** Gives the error text that was kept when a call on this handle failed last, however long ago; asks no toolkit.
 *  @param bufferLength  as for HV_GetErrInfo; at most 2048 bytes are copied
 *  @param buffer        caller's buffer; untouched before the first failure and when the failed toolkit gave no text
 *  @return 0; 1008 */
SIGIL_EXPORT int HV_GetErrInfo2(void* handle, int bufferLength, char* buffer);

/** Version text of the toolkit.
 *  @param bufferLength  bytes in @p buffer; handed to the GPKI library. The maker toolkit is told no capacity: give it
 *                       1024 bytes
 *  @param buffer        caller's buffer; on the maker toolkit its first eight bytes are cleared first
 *  @return the common codes; 1001 when @p buffer is null (maker toolkit) */
SIGIL_EXPORT int HV_GetVersion(void* handle, int bufferLength, char* buffer);

/** Sets an option of the GPKI library.
 *  @param option  number of the library
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int HV_SetOption(void* handle, int option);

/** Names the toolkit's settings file.
 *  @param confFile  path. The GPKI library takes any; on the maker toolkit only an empty text passes
 *  @return the common codes; 1001 when @p confFile is null, or not empty on the maker toolkit */
SIGIL_EXPORT int HV_SetConfFile(void* handle, char* confFile);

/** Gives the toolkit its set of CA certificates.
 *  @param caPubs  byte string of the toolkit
 *  @return the common codes; 1001 when @p caPubs is empty */
SIGIL_EXPORT int HV_SetCaPubs(void* handle, BINSTR* caPubs);

/** Makes the toolkit forget its set of CA certificates.
 *  @return the common codes */
SIGIL_EXPORT int HV_FreeCaPubs(void* handle);

/** Converts a time text.
 *  @param timeText  text of the GPKI library
 *  @param time      receives the time as the library counts it
 *  @return the common codes; 1001 when @p timeText is null; 1003 on the maker toolkit */
SIGIL_EXPORT int HV_Str2Time(void* handle, char* timeText, long* time);

/** Chooses the hash algorithm of later signatures.
 *  @param hashAlgorithm  number of the toolkit
 *  @return the common codes */
SIGIL_EXPORT int HV_SetHashAlg(void* handle, int hashAlgorithm);

/** Makes a byte-string record ready for use; an initialised record is empty.
 *  @param binStr  the caller's record
 *  @return the common codes; 1001 when @p binStr is null */
SIGIL_EXPORT int HV_BINSTR_Create(void* handle, BINSTR* binStr);

/** Gives a byte string's memory back to the toolkit. A record with a length below 1 is answered with 0 and reaches no
 *  toolkit, so clean-up code may delete every record that it created.
 *  @param binStr  the caller's record
 *  @return the common codes; 1001 when @p binStr is null, or its data pointer is null (maker toolkit) */
SIGIL_EXPORT int HV_BINSTR_Delete(void* handle, BINSTR* binStr);

/** Fills a byte string with a copy of bytes, in memory of the toolkit. Delete the record first when it holds data.
 *  @param data    the bytes; only read
 *  @param length  number of bytes, at least 1
 *  @param binStr  the caller's record
 *  @return the common codes; 1001 when @p data or @p binStr is null or @p length is below 1 */
SIGIL_EXPORT int HV_BINSTR_SetData(void* handle, unsigned char* data, int length, BINSTR* binStr);

#endif
