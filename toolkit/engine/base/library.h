// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  OpenSSL as the toolkit uses it: a library context of its own.
 */
#pragma once

#include "toolkit/engine/base/handles.h"

#include <openssl/types.h>

#include <array>
#include <memory>

namespace toolkit {

/** A library context with the providers "default" and "legacy" (SEED and RC2 live there). The host's default context
 *  stays as it is. Libraries that are there at the same time have it in common: with its algorithms it takes 400 KB, and hosts
 *  that close sessions without finishing them leave as many contexts as they opened. One thread at a time. */
class Library {
public:
    Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /** With all of its algorithms. Throws SIGIL_TK_NO_PROVIDER, and std::bad_alloc rather than to give one that lacks some. */
    OSSL_LIB_CTX* context() const;
    /** Releases what OpenSSL keeps of the context for the calling thread, which may live on when the context is gone. */
    void leaveThread() const noexcept;
    /** A context without algorithms. A certificate parsed in it keeps its key as bytes: OpenSSL's search for the key's decoder
     *  costs more than the rest of the certificate. */
    OSSL_LIB_CTX* readingContext() const;
    /** After lack of memory, of which OpenSSL may keep the traces: Libraries made from now on take nothing over from this one. */
    void beLast() const noexcept;
    /** Throws SIGIL_TK_ALGORITHM when the providers lack @p name. */
    CipherHandle cipher(const char* name) const;
    DigestHandle digest(const char* name) const;
    /** 16 random bytes, by which a question knows its answer. Throws SIGIL_TK_INTERNAL. */
    std::array<unsigned char, 16> nonce() const;

private:
    struct OpenSsl;
    static std::shared_ptr<OpenSsl> openSsl();

    std::shared_ptr<OpenSsl> m_openSsl;
    mutable bool m_isInThread = false; ///< the calling thread may have something of the context
};

} // namespace toolkit
