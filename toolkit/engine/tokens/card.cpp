// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/card.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/tokens/token.h"
#include "toolkit/engine/tokens/token_certificates.h"
#include "toolkit/engine/tokens/token_objects.h"

#include <openssl/x509.h>

#include <string>

namespace toolkit {
namespace {

/** A login for the time of a call; one that the process had before stays. */
class Login {
public:
    Login(TokenSession& session, std::string_view pin)
        : m_session(session)
        , m_own(!pin.empty() && !session.loggedIn())
    {
        if (!pin.empty())
            session.login(pin);
        session.requireLogin();
    }
    ~Login()
    {
        if (m_own)
            m_session.call(&_CK_FUNCTION_LIST::C_Logout);
    }
    Login(const Login&) = delete;
    Login& operator=(const Login&) = delete;

private:
    const TokenSession& m_session;
    bool m_own;
};

/** Does something with a session and the object's name. */
template <class Body>
auto onCard(TokenState& tokens, const CardPath& path, Body body)
{
    const std::string name = utf8Label(path.name);
    require(!name.empty(), SIGIL_TK_ARGUMENT, "name on the card");
    try {
        TokenSession session(tokens.modules(), tokens.modules()->slot(static_cast<unsigned long>(path.slot)), 0);
        return body(session, name);
    } catch (const Error& error) {
        require(
            error.code() != SIGIL_TK_TOKEN_ABSENT, SIGIL_TK_MEDIUM, "no card in slot " + std::to_string(path.slot));
        throw;
    }
}

/** The object of a name; none when there is none. */
ObjectHandles only(const TokenSession& session, CK_OBJECT_CLASS type, const std::string& name)
{
    ObjectHandles found = session.find(Template().add(CKA_CLASS, type).add(CKA_LABEL, view(name)));
    require(found.size() <= 1, SIGIL_TK_ARGUMENT, "several objects on the card have this name");
    return found;
}

/** The private key of a name and what stands beside it; none when there is none. */
ObjectHandles onlyKey(const TokenSession& session, const std::string& name)
{
    const ObjectHandles key = only(session, CKO_PRIVATE_KEY, name);
    const auto id = key.empty() ? std::nullopt : session.attribute(key.front(), CKA_ID);
    return id && !id->empty() ? keyObjects(session, *id) : key;
}

void destroy(const TokenSession& session, const ObjectHandles& objects)
{
    require(!objects.empty(), SIGIL_TK_TOKEN_OBJECT);
    for (const CK_OBJECT_HANDLE object : objects)
        session.destroy(object);
}

Bytes publicKeyOf(const Library& library, View keyInfo)
{
    return encode<Bytes>(loadPrivateKey(library, keyInfo).get(), i2d_PUBKEY);
}

} // namespace

Bytes readCardCertificate(const Library& library, TokenState& tokens, const CardPath& path)
{
    return onCard(tokens, path, [&](const TokenSession& session, const std::string& name) {
        const auto found = labelledCertificate(library, session, name);
        require(found.has_value(), SIGIL_TK_TOKEN_OBJECT, "certificate");
        return found->certificate.der();
    });
}

void writeCardCertificate(const Library& library, TokenState& tokens, const CardPath& path, View certificate)
{
    const Certificate given(library, certificate);
    onCard(tokens, path, [&](const TokenSession& session, const std::string& name) {
        writeTokenCertificate(
            session, given, {tokenIdOf(library, given), name}, only(session, CKO_CERTIFICATE, name));
    });
}

void writeCardKey(
    const Library& library, TokenState& tokens, const CardPath& path, std::string_view pin, View keyInfo)
{
    const Bytes publicKey = publicKeyOf(library, keyInfo);
    onCard(tokens, path, [&](TokenSession& session, const std::string& name) {
        const Login login(session, pin);
        const auto owner = labelledCertificate(library, session, name);
        if (owner)
            checkKeyPair(library, owner->certificate, keyInfo);
        const Bytes id = owner && !owner->id.empty() ? owner->id : tokenIdOf(library, publicKey);
        writeTokenKey(session, keyInfo, {id, name}, owner ? owner->certificate.subjectNameDer() : Bytes(),
            onlyKey(session, name));
    });
}

void deleteCardCertificate(TokenState& tokens, const CardPath& path)
{
    onCard(tokens, path, [](const TokenSession& session, const std::string& name) {
        destroy(session, only(session, CKO_CERTIFICATE, name));
    });
}

void deleteCardKey(TokenState& tokens, const CardPath& path, std::string_view pin)
{
    onCard(tokens, path, [&](TokenSession& session, const std::string& name) {
        const Login login(session, pin);
        destroy(session, onlyKey(session, name));
    });
}

} // namespace toolkit
