// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Pairs of a certificate and its private key on a token, and the identity random value beside them.
 */
#pragma once

#include "toolkit/engine/base/library.h"
#include "toolkit/engine/tokens/token_session.h"
#include "toolkit/engine/x509/certificate.h"

#include <string>

namespace toolkit {

/** CKA_ID of what belongs to a certificate: its subject key identifier, or the hash that stands for one. */
Bytes tokenIdOf(const Library& library, const Certificate& certificate);
/** CKA_ID of a key that has no certificate yet: SHA-1 of the bits of its SubjectPublicKeyInfo. */
Bytes tokenIdOf(const Library& library, View publicKeyInfo);

/** How objects are found again. */
struct ObjectName {
    Bytes id;
    std::string label; ///< UTF-8
};

/** The name of a pair: the certificate's identifier and its subject's common name. */
ObjectName nameOf(const Library& library, const Certificate& certificate);

/** Objects being written: those that were made go away again unless all were. */
class ObjectWriting {
public:
    explicit ObjectWriting(const TokenSession& session)
        : m_session(session)
    {
    }
    ~ObjectWriting();
    ObjectWriting(const ObjectWriting&) = delete;
    ObjectWriting& operator=(const ObjectWriting&) = delete;

    void add(const Template& object);
    /** Keeps what was written, and removes what it replaces, be it named once or more often. */
    void finish(ObjectHandles replaced = {});

private:
    const TokenSession& m_session;
    ObjectHandles m_objects;
};

/** Writes a certificate; others with its identifier, and those in @p replaced, make way once it is there. */
void writeTokenCertificate(const TokenSession& session, const Certificate& certificate, const ObjectName& name,
    ObjectHandles replaced = {});
/** Writes a certificate, its private key and that one's random value, all or none; what has their identifier makes way once
 *  they are there. Throws SIGIL_TK_KEY_MISMATCH, SIGIL_TK_TOKEN_LOGIN. */
void writePair(const Library& library, const TokenSession& session, const Certificate& certificate, View keyInfo);
/** Writes a private key and its random value in the same manner. */
void writeTokenKey(
    const TokenSession& session, View keyInfo, const ObjectName& name, View subject, ObjectHandles replaced = {});

/** Writes a certificate beside its key, which is there and takes the certificate's name if the token lets it.
 *  @param id of the key */
void writeCertificateOfKey(
    const Library& library, const TokenSession& session, const Certificate& certificate, View id);
/** Gives a key the random value of another one, if that has any. */
void inheritTokenRandom(const TokenSession& session, View fromId, View toId);

/** Removes all objects of a pair. Throws SIGIL_TK_TOKEN_LOGIN and, when there is none, SIGIL_TK_TOKEN_OBJECT. */
void deletePair(const TokenSession& session, View id);

/** The identity random value of a key. Throws SIGIL_TK_TOKEN_LOGIN, SIGIL_TK_TOKEN_OBJECT without such a key, and
 *  SIGIL_TK_VID_NO_RANDOM when it came without one. */
Secret tokenRandom(const TokenSession& session, View id);

/** Objects of a class with an identifier. */
ObjectHandles objectsOf(const TokenSession& session, CK_OBJECT_CLASS type, View id);
/** CKA_ID of the private key on the token that belongs to a certificate, which need not be there. Throws
 *  SIGIL_TK_TOKEN_LOGIN, SIGIL_TK_TOKEN_OBJECT. */
Bytes keyIdOf(const Library& library, const TokenSession& session, const Certificate& certificate);
/** The private keys with an identifier and what stands beside them: public keys and random values. */
ObjectHandles keyObjects(const TokenSession& session, View id);
/** The private key with an identifier. Throws SIGIL_TK_TOKEN_LOGIN, SIGIL_TK_TOKEN_OBJECT. */
CK_OBJECT_HANDLE privateKeyOf(const TokenSession& session, View id);

Template certificateTemplate(const Certificate& certificate, const ObjectName& name);
/** @param keyInfo PrivateKeyInfo of an RSA or EC key; else SIGIL_TK_ALGORITHM @param subject may be empty */
Template keyTemplate(View keyInfo, const ObjectName& name, View subject);
/** What every private key on a token has in common: it signs and opens, and does not come out. */
Template privateKeyTemplate(CK_KEY_TYPE type, const ObjectName& name);

} // namespace toolkit
