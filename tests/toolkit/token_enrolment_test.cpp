// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificates from authorities for keys that are made on a token: the key never leaves it, its certificate lies beside it, and
// nothing is left there of what goes wrong.

#include "tests/toolkit/server.h"
#include "tests/toolkit/tokens.h"
#include "toolkit/engine/enrolment/token_enrolment.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/keys/remote_key.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/tokens/token_visit.h"

#include <gmock/gmock.h>

#include <map>

using namespace toolkit_test;
using testing::HasSubstr;

namespace {

const std::string secret = "the secret";
const std::string ecKey = "ec -pkeyopt ec_paramgen_curve:P-256";
const std::string randomValue(20, 'R');

/** An authority that runs as long as the tests. */
struct Running {
    Workshop home;
    std::unique_ptr<Server> server;

    explicit Running(const std::string& kind)
    {
        home.certificate("ca", "/C=KR/O=Test/CN=CA", "basicConstraints=critical,CA:TRUE", "", "-days 365", ecKey);
#ifdef CMP_AUTHORITY
        if (kind == "bouncy")
            server = std::make_unique<Server>(Server::bouncyAuthority(home, CMP_AUTHORITY, "ca", secret));
#endif
        if (kind == "openssl")
            server = std::make_unique<Server>(Server::authority(home, "ca"));
    }
};

/** A token "first" without anything on it, before an authority. */
class TokenEnrolmentTest : public TokenTest {
protected:
    explicit TokenEnrolmentTest(const std::string& kind)
        : TokenTest("HVTK_")
        , authority(running(kind))
    {
        for (const std::string file : {"ca.crt", "ca.key", "ca.pem", "ca.key.pem"})
            workshop.write(file, authority.home.read(file));
    }

    static const Running& running(const std::string& kind)
    {
        static std::map<std::string, Running> all;
        return all.try_emplace(kind, kind).first->second;
    }
    static std::string addressOf(const Server& server, const std::string& manner)
    {
        return "http://127.0.0.1:" + std::to_string(server.port()) + "/" + manner;
    }
    /** @param manner of the Bouncy Castle authority */
    std::string address(const std::string& manner = {}) const { return addressOf(*authority.server, manner); }
    std::string ca() const { return workshop.read("ca.crt"); }
    void trust() const
    {
        ByteString trusted(*toolkit, ca());
        ASSERT_EQ((*toolkit)("CERT_AddTrustedCert", trusted.get()), 0);
    }

    struct Application {
        std::string address;
        std::string secret = ::secret;
        std::string pin = tokenPin;
        std::string label = "first";
        std::string reference = "ref";
    };
    int request(const Application& wish, ByteString& caCertificate, ByteString& certificate) const
    {
        return token("CMP_CertRequest", text(wish.address), 0, text(wish.reference), text(wish.secret),
            text(wish.pin), text(wish.label), caCertificate.get(), certificate.get());
    }
    int request(const Application& wish) const
    {
        ByteString caCertificate(*toolkit, ca());
        ByteString certificate(*toolkit);
        const int code = request(wish, caCertificate, certificate);
        EXPECT_EQ(certificate.empty(), code != 0);
        EXPECT_EQ(caCertificate.bytes(), ca());
        return code;
    }
    /** A certificate by way of the token. */
    std::string enrolled() const
    {
        ByteString caCertificate(*toolkit);
        ByteString certificate(*toolkit);
        EXPECT_EQ(request({address()}, caCertificate, certificate), 0) << toolkit->errorText();
        return certificate.bytes();
    }

    struct Renewal {
        bool newKey = true;
        int bits = 0;
        bool withKeyManagement = false;
        std::string pin = tokenPin;
        std::string ca{};
    };
    struct Renewed {
        int code = -1;
        std::string certificate{};
        std::string id{};
        std::string kmCertificate{};
        std::string kmId{};
    };
    Renewed update(const std::string& address, const std::string& certificate, const Renewal& wish) const
    {
        ByteString old(*toolkit, certificate);
        ByteString trusted(*toolkit, wish.ca.empty() ? ca() : wish.ca);
        ByteString out[] = {ByteString(*toolkit), ByteString(*toolkit), ByteString(*toolkit), ByteString(*toolkit)};
        BINSTR* const none = nullptr;
        Renewed renewed;
        renewed.code = token("CMP_CertUpdate2", text(address), 0, wish.newKey, wish.bits, text(wish.pin),
            text("first"), old.get(), trusted.get(), out[0].get(), out[1].get(),
            wish.withKeyManagement ? out[2].get() : none, wish.withKeyManagement ? out[3].get() : none);
        renewed.certificate = out[0].bytes();
        renewed.id = out[1].bytes();
        renewed.kmCertificate = out[2].bytes();
        renewed.kmId = out[3].bytes();
        return renewed;
    }
    int revoke(
        const std::string& address, const std::string& certificate, const std::string& id, int reason = 1) const
    {
        ByteString revoked(*toolkit, certificate);
        ByteString key(*toolkit, id);
        return token("CMP_CertRevoke", text(address), 0, reason, revoked.get(), key.get());
    }

    /** Writes a pair of the authority's on the token, with a random value. */
    std::string written(const std::string& keyKind) const
    {
        workshop.certificate("old", "/C=KR/O=Test/CN=Kim", "subjectKeyIdentifier=hash", "ca", "-days 365", keyKind);
        const std::string plain = workshop.read("old.key");
        const auto with = toolkit::withIdentityRandom(toolkit::view(plain), toolkit::view(randomValue));
        openAndLogIn("first");
        ByteString certificate(*toolkit, workshop.read("old.crt"));
        ByteString key(*toolkit, {toolkit::chars(with), with.size()});
        EXPECT_EQ(token("WriteCertAndPriKey", certificate.get(), key.get()), 0) << toolkit->errorText();
        EXPECT_EQ(token("CloseSession"), 0);
        return workshop.read("old.crt");
    }
    std::string everything() const
    {
        return listed("privkey") + listed("pubkey") + listed("cert") + listed("data");
    }
    int keysOnToken() const
    {
        const std::string all = listed("privkey");
        int count = 0;
        for (std::size_t at = all.find("Private Key"); at != std::string::npos;
             at = all.find("Private Key", at + 1))
            ++count;
        return count;
    }
    /** The identifier of a certificate on the token of the open session. */
    std::string idOf(const std::string& wanted) const
    {
        for (int i = 0; i < certificateCount(); ++i) {
            ByteString id(*toolkit);
            ByteString certificate(*toolkit);
            int kind = 0;
            EXPECT_EQ(token("GetCertInfo", i, &kind, id.get(), certificate.get()), 0);
            if (certificate.bytes() == wanted)
                return id.bytes();
        }
        return "not on the token";
    }
    /** Signs through the token; the `openssl` command verifies signature and path, and tells the subject. */
    std::string provenSubject(const std::string& certificate)
    {
        openAndLogIn("first");
        ByteString id(*toolkit, idOf(certificate));
        ByteString data(*toolkit, "a text");
        workshop.write("message", make([&](BINSTR* out) { return token("SignData", id.get(), data.get(), out); }));
        workshop.write("made.crt", certificate);
        EXPECT_EQ(token("CloseSession"), 0);
        EXPECT_EQ(
            workshop.run(
                "openssl cms -verify -binary -purpose any -CAfile ca.pem -inform DER -in message 2>/dev/null"),
            "a text");
        return workshop.run("openssl x509 -inform DER -in made.crt -noout -subject -nameopt RFC2253");
    }
    std::string random(const std::string& id)
    {
        openAndLogIn("first");
        ByteString name(*toolkit, id);
        const std::string found = make([&](BINSTR* out) { return token("ReadRandomForVID", name.get(), out); });
        EXPECT_EQ(token("CloseSession"), 0);
        return found;
    }

    const Running& authority;
};

/** Before each kind of authority. */
class TokenEnrolment : public TokenEnrolmentTest, public testing::WithParamInterface<std::string> {
protected:
    TokenEnrolment()
        : TokenEnrolmentTest(GetParam())
    {
    }
};
const auto kinds = testing::Values(
#ifdef CMP_AUTHORITY
    "bouncy",
#endif
    "openssl");
INSTANTIATE_TEST_SUITE_P(
    Authorities, TokenEnrolment, kinds, [](const auto& one) { return std::string(one.param); });

/** What goes wrong, before the authority of the `openssl` command. */
class TokenEnrolmentFailure : public TokenEnrolmentTest {
protected:
    TokenEnrolmentFailure()
        : TokenEnrolmentTest("openssl")
    {
    }
    /** Another one of the kind. @param options of mock_authority.py */
    Server behaving(const std::vector<std::string>& options) const
    {
        return Server::authority(workshop, "ca", options);
    }
};

#ifdef CMP_AUTHORITY
/** The same before Bouncy Castle's. */
class TokenEnrolmentRefused : public TokenEnrolmentTest {
protected:
    TokenEnrolmentRefused()
        : TokenEnrolmentTest("bouncy")
    {
    }
};
#endif

} // namespace

TEST_P(TokenEnrolment, AKeyIsMadeOnTheTokenAndItsCertificateLiesBesideIt)
{
    ByteString caCertificate(*toolkit);
    ByteString certificate(*toolkit);
    ASSERT_EQ(request({address()}, caCertificate, certificate), 0) << toolkit->errorText();
    EXPECT_EQ(caCertificate.bytes(), ca());
    EXPECT_EQ(token("CloseSession"), SIGIL_TK_TOKEN_SESSION) << "its session is closed";
    EXPECT_EQ(provenSubject(certificate.bytes()), "subject=CN=ref\n");
    EXPECT_EQ(keysOnToken(), 1);
    EXPECT_THAT(listed("privkey"), HasSubstr("Access:     sensitive, always sensitive, never extractable, local"));
    EXPECT_THAT(listed("privkey"), HasSubstr("label:      ref\n"));
    EXPECT_THAT(workshop.run("openssl x509 -inform DER -in made.crt -noout -text"), HasSubstr("(2048 bit)"));
}

TEST_P(TokenEnrolment, ACertificateIsRenewedForTheSameKeyOrAFreshOne)
{
    trust();
    for (const std::string& kind : {std::string("rsa:2048"), ecKey}) {
        const std::string old = written(kind);
        ByteString given(*toolkit, old);
        ByteString same(*toolkit, "data of before");
        ASSERT_EQ(token("CMP_CertUpdate", text(address()), 0, false, text(tokenPin), text("first"), given.get(),
                      same.get()),
            0)
            << kind << toolkit->errorText();
        EXPECT_EQ(provenSubject(same.bytes()), "subject=CN=Kim,O=Test,C=KR\n");
        EXPECT_EQ(keysOnToken(), 1);
        EXPECT_EQ(open("first"), 0);
        EXPECT_EQ(certificateCount(), 1) << "in place of the old one";
        const std::string oldId = idOf(same.bytes());

        const Renewed fresh = update(address(), same.bytes(), {});
        ASSERT_EQ(fresh.code, 0) << kind << toolkit->errorText();
        EXPECT_EQ(provenSubject(fresh.certificate), "subject=CN=Kim,O=Test,C=KR\n");
        EXPECT_EQ(provenSubject(same.bytes()), "subject=CN=Kim,O=Test,C=KR\n") << "the old pair is still there";
        EXPECT_EQ(keysOnToken(), 2);
        EXPECT_EQ(random(fresh.id), randomValue) << "goes with the fresh key";
        openAndLogIn("first");
        EXPECT_EQ(idOf(fresh.certificate), fresh.id);
        for (const std::string& id : {oldId, fresh.id}) {
            ByteString name(*toolkit, id);
            EXPECT_EQ(token("DeleteCertAndPriKey", name.get()), 0);
        }
    }
}

TEST_P(TokenEnrolment, AFreshKeyIsOfTheKindOfTheOldOneAndOfTheSizeThatIsWanted)
{
    const auto keyText = [&](const std::string& certificate) {
        workshop.write("made.crt", certificate);
        return workshop.run("openssl x509 -inform DER -in made.crt -noout -text");
    };
    const std::string ec = written(ecKey);
    const Renewed curve = update(address(), ec, {.bits = 384});
    EXPECT_THAT(keyText(curve.certificate), HasSubstr("secp384r1"));
    EXPECT_EQ(update(address(), ec, {.bits = 2048}).code, SIGIL_TK_ALGORITHM);
    EXPECT_EQ(keysOnToken(), 2);
}

TEST_P(TokenEnrolment, AKeyManagementPairComesOfASecondRequest)
{
    const Renewed renewed = update(address(), enrolled(), {.newKey = false, .withKeyManagement = true});
    ASSERT_EQ(renewed.code, 0) << toolkit->errorText();
    EXPECT_EQ(provenSubject(renewed.kmCertificate), "subject=CN=ref\n");
    EXPECT_NE(renewed.kmId, renewed.id);
    EXPECT_EQ(keysOnToken(), 2);
    workshop.write("km.crt", renewed.kmCertificate);
    workshop.write("content", "what is sealed");
    workshop.run("openssl x509 -inform DER -in km.crt -out km.pem"
                 " && openssl cms -encrypt -binary -outform DER -in content -out enveloped -aes128 km.pem");
    openAndLogIn("first");
    ByteString id(*toolkit, renewed.kmId);
    ByteString message(*toolkit, workshop.read("enveloped"));
    EXPECT_EQ(
        make([&](BINSTR* out) { return token("DecryptData", id.get(), message.get(), out); }), "what is sealed");
}

TEST_P(TokenEnrolment, ACertificateIsRevokedInTheOpenSession)
{
    const std::string certificate = enrolled();
    EXPECT_EQ(revoke(address(), certificate, ""), SIGIL_TK_TOKEN_SESSION);
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(revoke(address(), certificate, ""), SIGIL_TK_TOKEN_LOGIN);
    ASSERT_EQ(login(tokenPin), 0);
    EXPECT_EQ(revoke(address(), certificate, ""), SIGIL_TK_VERIFY_NO_ISSUER) << "nobody is trusted";
    trust();
    EXPECT_EQ(revoke(address(), certificate, "", 7), SIGIL_TK_ARGUMENT) << "no reason of RFC 5280";
    EXPECT_EQ(revoke(address(), certificate, "nobody"), SIGIL_TK_TOKEN_OBJECT);
    EXPECT_EQ(revoke(address(), "", ""), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(revoke(address(), ca(), idOf(certificate)), SIGIL_TK_KEY_MISMATCH) << toolkit->errorText();
    EXPECT_EQ(revoke(address(), ca(), ""), SIGIL_TK_TOKEN_OBJECT);
    EXPECT_EQ(revoke(address(), certificate, ""), 0) << toolkit->errorText();
    EXPECT_EQ(revoke(address(), certificate, idOf(certificate)), 0) << toolkit->errorText();
    EXPECT_EQ(token("Logout"), 0) << "the session stays";
    EXPECT_EQ(keysOnToken(), 1);
}

TEST_P(TokenEnrolment, AnOpenSessionWithTheTokenIsUsedAndLeftAsItIs)
{
    ASSERT_EQ(open("first", 4), 0);
    EXPECT_EQ(request({address()}), SIGIL_TK_TOKEN_FULL) << "it is for reading only";
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_LOGIN) << "and was not logged in";
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(request({address()}), 0) << toolkit->errorText();
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_LOGIN);
    ASSERT_EQ(login(tokenPin), 0);
    EXPECT_EQ(request({address()}), 0) << toolkit->errorText();
    EXPECT_EQ(token("Logout"), 0) << "was logged in";
    workshop.token("second");
    toolkit = std::make_unique<ToolkitLibrary>("HVTK_");
    openAndLogIn("second");
    EXPECT_EQ(request({address()}), 0) << toolkit->errorText();
    EXPECT_EQ(certificateCount(), 0) << "the session with another token goes on";
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(keysOnToken(), 3);
}

TEST_F(TokenEnrolmentFailure, LeavesNothingOnTheToken)
{
    const auto expect = [&](const Server& server, int code) {
        EXPECT_EQ(request({addressOf(server, "")}), code) << toolkit->errorText();
    };
    expect(behaving({"--subject", "/C=KR/CN=Somebody"}), 0);
    openAndLogIn("first");
    ByteString id(*toolkit);
    ByteString certificate(*toolkit);
    int kind = 0;
    ASSERT_EQ(token("GetCertInfo", 0, &kind, id.get(), certificate.get()), 0);
    ASSERT_EQ(token("DeleteCertAndPriKey", id.get()), 0)
        << "the one that went well: the authority chooses the name";
    ASSERT_EQ(token("CloseSession"), 0);

    workshop.certificate("other", "/CN=other", "", "ca");
    expect(behaving({"--certificate", "other.pem"}), SIGIL_TK_CMP_OTHER_CERT);
    expect(behaving({"-pkistatus", "2", "-failure", "2"}), SIGIL_TK_CMP_REFUSED);
    expect(behaving({"-poll_count", "2", "-check_after", "3600"}), SIGIL_TK_CMP_WAITING);
    expect(behaving({"-send_unprotected"}), SIGIL_TK_CMP_PROTECTION);
    expect(Server::answering(workshop, "garbage"), SIGIL_TK_CMP_MALFORMED);
    expect(Server::answering(workshop, "garbage", 500), SIGIL_TK_FETCH);
    EXPECT_EQ(request({address(), "another"}), SIGIL_TK_CMP_PROTECTION);
    EXPECT_EQ(request({address(), ""}), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(everything(), "");
}

TEST_F(TokenEnrolmentFailure, NobodyIsAskedWithoutTheToken)
{
    const std::string nobody = addressOf(Server::answering(workshop, ""), "");
    EXPECT_EQ(request({.address = nobody, .pin = "999999"}), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(request({.address = nobody, .label = "nobody"}), SIGIL_TK_TOKEN_ABSENT);
    EXPECT_EQ(request({.address = nobody, .label = std::string(33, 'x')}), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(request({.address = ""}), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(token("CloseSession"), SIGIL_TK_TOKEN_SESSION) << "no session was left";
    EXPECT_EQ(everything(), "");
}

TEST_F(TokenEnrolmentFailure, ATokenThatIsGoneKeepsTheReason)
{
    const Instead<&CK_FUNCTION_LIST::C_DestroyObject> gone([](auto...) -> CK_RV { return CKR_DEVICE_REMOVED; });
    EXPECT_EQ(request({addressOf(behaving({"-pkistatus", "2", "-failure", "2"}), "")}), SIGIL_TK_CMP_REFUSED)
        << toolkit->errorText();
    EXPECT_EQ(keysOnToken(), 1) << "nobody could remove it";
}

TEST_F(TokenEnrolmentFailure, AKeyWithoutItsCertificateIsFoundByItsIdentifier)
{
    const std::string old = written(ecKey);
    workshop.pkcs11Tool(
        "--token-label first --login --pin " + std::string(tokenPin) + " --delete-object --type cert --label Kim");
    EXPECT_THAT(listed("cert"), testing::IsEmpty());
    const Renewed renewed = update(address(), old, {.newKey = false});
    ASSERT_EQ(renewed.code, 0) << toolkit->errorText();
    EXPECT_EQ(provenSubject(renewed.certificate), "subject=CN=Kim,O=Test,C=KR\n");
}

TEST_F(TokenEnrolmentFailure, AFreshKeyInheritsNoRandomValueWhereNoneIs)
{
    const Renewed fresh = update(address(), enrolled(), {});
    ASSERT_EQ(fresh.code, 0) << toolkit->errorText();
    EXPECT_EQ(random(fresh.id), "code " + std::to_string(SIGIL_TK_VID_NO_RANDOM));
    EXPECT_EQ(listed("data"), "");
}

TEST_F(TokenEnrolmentFailure, WhatNobodyTakesIsNotAskedFor)
{
    const std::string unheard = addressOf(Server::answering(workshop, ""), "");
    ByteString given(*toolkit, ca());
    ByteString out(*toolkit);
    BINSTR* const none = nullptr;
    for (const bool withCertificate : {false, true})
        EXPECT_EQ(
            token("CMP_CertUpdate2", text(unheard), 0, true, 0, text(tokenPin), text("first"), given.get(),
                given.get(), withCertificate ? out.get() : none, withCertificate ? none : out.get(), none, none),
            SIGIL_TK_ARGUMENT);
    EXPECT_EQ(token("CMP_CertRequest", text(address()), 0, text("ref"), text(secret), text(tokenPin), text("first"),
                  none, out.get()),
        0)
        << "who issued it is not wanted: " << toolkit->errorText();
    EXPECT_FALSE(out.empty());
}

TEST_F(TokenEnrolmentFailure, ARenewalLeavesWhatWasThere)
{
    const std::string old = written(ecKey);
    const std::string before = everything();
    workshop.certificate("stranger", "/C=KR/O=Test/CN=CA", "basicConstraints=critical,CA:TRUE");
    for (const bool newKey : {false, true}) {
        EXPECT_EQ(update(address(), old, {.newKey = newKey, .ca = workshop.read("stranger.crt")}).code,
            SIGIL_TK_CMP_PROTECTION);
        const Server other = behaving({"--subject", "/CN=Lee"});
        EXPECT_EQ(update(addressOf(other, ""), old, {.newKey = newKey}).code, SIGIL_TK_CMP_OTHER_CERT);
        EXPECT_EQ(update(address(), old, {.newKey = newKey, .pin = "999999"}).code, SIGIL_TK_TOKEN_PIN);
        EXPECT_EQ(update(address(), ca(), {.newKey = newKey}).code, SIGIL_TK_TOKEN_OBJECT) << "no such key";
    }
    ByteString given(*toolkit, old);
    ByteString out(*toolkit, "data of before");
    EXPECT_EQ(
        token("CMP_CertUpdate", text(address()), 0, true, text(tokenPin), text("first"), given.get(), out.get()),
        SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_EQ(out.bytes(), "data of before");
    EXPECT_EQ(everything(), before);
}

TEST_F(TokenEnrolmentFailure, ATokenThatStopsSigningIsTold)
{
    const toolkit::Library library;
    toolkit::TokenState state;
    const std::string old = written(ecKey);
    const std::string before = everything();
    const toolkit::ErrorScope scope;
    // The request is signed, and before the confirmation is, the login goes.
    const toolkit::TokenVisit visit(state, "first", tokenPin);
    const toolkit::Authority asked([&](toolkit::View message, std::chrono::milliseconds) {
        toolkit::Bytes answer = toolkit::post(address(), "application/pkixcmp", message, 65536);
        visit.session().call(&_CK_FUNCTION_LIST::C_Logout);
        return answer;
    });
    toolkit::TrustStore trust;
    trust.trusted.emplace_back(library, toolkit::view(ca()));
    try {
        toolkit::renewOnToken({library, asked, &trust, SIGIL_TK_HASH_SHA256}, visit.session(),
            {library, toolkit::view(old)}, {false, 0, false});
        FAIL() << "renewed";
    } catch (const toolkit::Error& error) {
        EXPECT_EQ(error.code(), SIGIL_TK_TOKEN_OBJECT) << "a key that nobody sees without the login";
    }
    EXPECT_EQ(everything(), before);
}

TEST_F(TokenEnrolmentFailure, SilenceEndsAndTheKeyGoes)
{
    const toolkit::Library library;
    toolkit::TokenState state;
    const Server server = Server::rude(workshop, "silent");
    const toolkit::ErrorScope scope;
    const toolkit::TokenVisit visit(state, "first", tokenPin);
    // Making the key takes longer than that.
    const toolkit::Authority asked("127.0.0.1", server.port(), std::chrono::milliseconds(100));
    try {
        toolkit::enrolOnToken(
            {library, asked, nullptr, SIGIL_TK_HASH_SHA256}, visit.session(), {"ref", "the secret"});
        FAIL() << "enrolled";
    } catch (const toolkit::Error& error) {
        EXPECT_EQ(error.code(), SIGIL_TK_FETCH) << error.detail();
    }
    EXPECT_EQ(everything(), "");
}

#ifdef CMP_AUTHORITY
TEST_F(TokenEnrolmentRefused, LeavesNothingOnTheToken)
{
    const std::pair<std::string, int> cases[] = {{"refuse", SIGIL_TK_CMP_REFUSED},
        {"wait/3600", SIGIL_TK_CMP_WAITING}, {"key", SIGIL_TK_CMP_OTHER_CERT}, {"secret", SIGIL_TK_CMP_PROTECTION},
        {"nonce", SIGIL_TK_CMP_PROTECTION}, {"two", SIGIL_TK_CMP_MALFORMED}, {"body", SIGIL_TK_CMP_MALFORMED}};
    for (const auto& [manner, code] : cases)
        EXPECT_EQ(request({address(manner)}), code) << manner << toolkit->errorText();
    EXPECT_EQ(request({address(), "another"}), SIGIL_TK_CMP_REFUSED);
    EXPECT_EQ(everything(), "");
}

TEST_F(TokenEnrolmentRefused, AKeyManagementPairThatIsRefusedLeavesTheSigningPair)
{
    const std::string first = enrolled();
    const Renewed renewed = update(address("signing-only"), first, {.newKey = false, .withKeyManagement = true});
    ASSERT_EQ(renewed.code, 0) << toolkit->errorText();
    EXPECT_EQ(renewed.kmCertificate + renewed.kmId, "");
    EXPECT_EQ(keysOnToken(), 1);
    EXPECT_EQ(provenSubject(renewed.certificate), "subject=CN=ref\n");
}

TEST_F(TokenEnrolmentRefused, AShortWaitIsWaited)
{
    EXPECT_EQ(request({address("wait/1")}), 0) << toolkit->errorText();
}
#endif

TEST(RemoteKey, IsNoneForOtherKindsOfKeys)
{
    const toolkit::Library library;
    const toolkit::ErrorScope scope;
    const toolkit::KeyHandle key(EVP_PKEY_Q_keygen(library.context(), nullptr, "ED25519"));
    const auto info = toolkit::encode<toolkit::Bytes>(key.get(), i2d_PUBKEY);
    const auto make = [&] { toolkit::RemoteKey(library, info, [](toolkit::View) { return toolkit::Bytes(); }); };
    EXPECT_THROW(make(), toolkit::Error);
}
