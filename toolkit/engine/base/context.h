// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What one toolkit context holds between calls. Contexts share nothing but OpenSSL's algorithms; each is used by one thread at a time.
 */
#pragma once

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/keys/session_cipher.h"
#include "toolkit/engine/messages/processed.h"
#include "toolkit/engine/status/ocsp_exchange.h"
#include "toolkit/engine/store/system_store.h"
#include "toolkit/engine/time/time_stamp.h"
#include "toolkit/engine/tokens/token_state.h"
#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/certificate.h"

#include <optional>
#include <string>
#include <vector>

namespace toolkit {

/** Version of the open toolkit, shorter than 64 bytes. */
constexpr const char* versionText = "SigilDesk open toolkit 1.0.0";

class Context {
    // First, so that it is released last: everything else holds objects made in it.
    Library m_library;

public:
    const Library& library() const { return m_library; }

    /** The certificate of the getters. Throws SIGIL_TK_CERT_NOT_LOADED. */
    const Certificate& certificate() const;
    void load(Certificate certificate) { m_certificate = std::move(certificate); }
    void unload() { m_certificate.reset(); }

    /** Text of the last failure. */
    ErrorText lastError;
    /** Hash that SIGIL_TK_HASH_DEFAULT stands for. */
    int hashAlgorithm = SIGIL_TK_HASH_SHA256;
    int rsaVersion = SIGIL_TK_RSA_V15;
    int padding = SIGIL_TK_PADDING_V15;
    /** Key of CRYPT_Encrypt and its like. */
    SessionCipher sessionCipher;
    /** What CERT_Verify relies on. */
    TrustStore trust;
    MessageState messages;
    /** What the OCSP functions hand on from step to step. */
    OcspExchange ocsp;
    /** What the TSP functions do. */
    TimeStampExchange timeStamps;
    /** The session of the token functions. */
    TokenState tokens;
    /** The store of the MEDIA_WINS functions. */
    SystemStore systemStore;
    /** Folder that relative paths begin at; empty for the process's own. */
    std::string mediaFolder;

private:
    std::optional<Certificate> m_certificate;
};

} // namespace toolkit
