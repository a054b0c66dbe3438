// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Owners of the library's handles, for C++ programs that want them released on every path.
 *
 *  All functions take plain handles, so an owner hands out what it holds with `get()`:
 *
 *      sigildesk::CryptoHandle crypto;
 *      if (sigildesk::initialise(crypto, 0, folder) == 0)
 *          CertLoad(crypto.get(), &certificate);
 */
#ifndef SIGILDESK_HANDLES_H
#define SIGILDESK_HANDLES_H

#include <sigildesk/certlist.h>
#include <sigildesk/crypto/frame.h>

#include <memory>

namespace sigildesk {

/** Finishes a handle of the façade. */
struct FinishCrypto {
    /** HV_Finish. */
    void operator()(void* handle) const { HV_Finish(handle); }
};
/** A handle of the crypto façade. Byte strings that were made with it go before it. */
typedef std::unique_ptr<void, FinishCrypto> CryptoHandle;

/** Ends a handle of the certificate list. */
struct EndProcessor {
    /** CLP_UnInitalize. */
    void operator()(void* handle) const { CLP_UnInitalize(handle); }
};
/** A handle of the certificate list. */
typedef std::unique_ptr<void, EndProcessor> ProcessorHandle;

/** HV_Initalize; the arguments and codes are the same.
 *  @param handle  empty, or a handle that is bound again. It may hold a handle after a failure too: the toolkit's words on
 *                 it can be asked for
 *  @param toolkitType, libraryFolder  as there */
inline int initialise(CryptoHandle& handle, int toolkitType, char* libraryFolder)
{
    void* plain = handle.release();
    const int code = HV_Initalize(&plain, toolkitType, libraryFolder);
    handle.reset(plain);
    return code;
}

/** CLP_Initalize; the arguments and codes are the same.
 *  @param handle  empty, or a handle that is initialised again
 *  @param toolkitType, language, libraryFolder  as there */
inline int initialise(ProcessorHandle& handle, int toolkitType, int language, char* libraryFolder)
{
    void* plain = handle.release();
    const int code = CLP_Initalize(&plain, nullptr, toolkitType, language, libraryFolder);
    handle.reset(plain);
    return code;
}

} // namespace sigildesk

#endif
