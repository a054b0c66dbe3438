// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Enveloped and encrypted messages (RFC 5652, sections 6 and 8).
 */
#pragma once

#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/messages/layout.h"
#include "toolkit/engine/messages/processed.h"
#include "toolkit/engine/x509/certificate.h"

#include <functional>
#include <memory>
#include <vector>

namespace toolkit {

/** How a message is encrypted for its recipients. */
struct EnvelopeRequest {
    const std::vector<Certificate>& recipients;
    int cipher;              ///< SigilToolkitCipher, or 0
    EncryptionScheme scheme; ///< for recipients with RSA keys
    int options = 0;         ///< SigilToolkitEnvelopeOption
};

/** A running encryption or decryption of content. */
class ContentCipher {
public:
    ContentCipher(CmsHandle cms, int failure);

    /** Transforms bytes; what comes out goes to @p out. */
    void update(View bytes, const Sink& out);
    /** Ends it. Throws the code of failures when the padding is not one. */
    void finish(const Sink& out);
    const CMS_ContentInfo* cms() const { return m_cms.get(); }

private:
    void drain(const Sink& out);

    CmsHandle m_cms;
    BioHandle m_cipher; ///< owns m_output
    BIO* m_output;
    int m_failure;
};

/** Content being encrypted: its layout is known before the first byte of it. */
struct Encryption {
    ContentCipher cipher;
    MessageLayout layout;
    std::uint64_t blockSize;

    /** Bytes of the ciphertext of @p size bytes. */
    std::uint64_t sizeOf(std::uint64_t size) const { return (size / blockSize + 1) * blockSize; }
};

/** Throws SIGIL_TK_ALGORITHM, and SIGIL_TK_OPTION for a recipient that the option cannot name. */
Encryption startEnvelope(const Library& library, const EnvelopeRequest& request);
/** Throws SIGIL_TK_ALGORITHM for a key of the wrong length. @param cipher as in EnvelopeRequest */
Encryption startEncryption(const Library& library, int cipher, View key);

/** Where a message keeps the content's key for a recipient. */
struct RecipientPlace {
    int recipient; ///< among the recipients
    int key;       ///< among that one's keys, when they are agreed upon; else 0
};

/** Throws SIGIL_TK_CMS_NOBODY. */
RecipientPlace placeOf(CMS_ContentInfo* enveloped, const Certificate& certificate);

/** A recipient's private key, wherever it is. */
struct EnvelopeOpener {
    /** Throws SIGIL_TK_KEY_MISMATCH when it does not belong to the certificate. */
    std::function<void(const Library&, const Certificate&)> check;
    /** Makes a message ready for the decryption of its content. A wrong padding must not show before that. */
    std::function<CmsHandle(const Library&, CmsHandle, const Certificate&)> unlock;
};

/** Opens messages with a PrivateKeyInfo, which must outlive it. */
EnvelopeOpener openerWith(View keyInfo);

/** Opens a message for one of its recipients.
 *  @param ciphertext hands out the encrypted content, which need not be in the message
 *  Throws SIGIL_TK_CMS_NOBODY, SIGIL_TK_KEY_MISMATCH, and SIGIL_TK_DECRYPT for whatever goes wrong behind that: a wrong
 *  padding of the content's key looks like a wrong key. */
void openEnvelope(const Library& library, View skeleton, const Certificate& certificate,
    const EnvelopeOpener& opener, const std::function<void(const Sink&)>& ciphertext, const Sink& take);
void openEncrypted(const Library& library, const Message& message, View key, const Sink& take);

/** The recipients in the order of the message. */
std::vector<Recipient> recipientsOf(const Library& library, const Message& message);

} // namespace toolkit
