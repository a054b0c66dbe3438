// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What calls leave in memory of the secrets that they were handed: nothing.

#include "secrets/traces.h"
#include "tests/support/mapped_file.h"
#include "tests/support/secret_hunt.h"
#include "tests/toolkit/server.h"
#include "tests/toolkit/tokens.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace toolkit_test;

namespace {

/** The hunt for secrets when a call has come back through the façade, which clears the traces that the toolkit leaves in
 *  registers and on the stack. */
struct Hunt : SecretHunt {
    using SecretHunt::SecretHunt;
    std::vector<std::string> places() const
    {
        sigil::clearTraces();
        return SecretHunt::places();
    }
    std::string found() const { return joined(places()); }
};

class Residue : public testing::Test {
protected:
    /** Makes NAME.crt and NAME.key. */
    void rsaCertificate(const std::string& name) const { workshop.certificate(name, "/CN=" + name, ""); }
    void ecCertificate(const std::string& name) const
    {
        workshop.certificate(name, "/CN=" + name, "", "", "-days 365", "ec -pkeyopt ec_paramgen_curve:P-256");
    }
    /** Makes NAME.bare, the key of a P-256 certificate without its public part. */
    void bareKey(const std::string& name) const
    {
        workshop.run(R"((printf '\060\101\002\001\000\060\023\006\007\052\206\110\316\075\002\001')"
                     R"(; printf '\006\010\052\206\110\316\075\003\001\007\004\047\060\045\002\001\001\004\040')"
                     "; tail -c +37 " +
            name + ".key | head -c 32) > " + name + ".bare");
    }
    /** The secret numbers of a key of 2048 bits, from the private exponent on: all behind the public exponent. */
    static Hunt secretNumbers(const MappedFile& rsaKey)
    {
        constexpr std::size_t exponentAt = 303;
        return {{"RSA key", rsaKey.bytes().substr(exponentAt)}};
    }
    static Hunt secretNumber(const MappedFile& ecKey, std::size_t at)
    {
        return {{"EC key", ecKey.bytes().substr(at, 32)}};
    }

    static constexpr std::size_t scalarAt = 36;
    static constexpr std::size_t bareScalarAt = 35;

    Workshop workshop;
    ToolkitLibrary toolkit{"HVTK_"};
};

} // namespace

TEST_F(Residue, OfAnRsaKeyThatIsCheckedAgainstItsCertificate)
{
    rsaCertificate("user");
    rsaCertificate("other");
    MappedFile certificate(workshop.path("user.crt"));
    MappedFile key(workshop.path("user.key"));
    MappedFile other(workshop.path("other.crt"));
    const Hunt pieces = secretNumbers(key);
    EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), key.get()), 0);
    EXPECT_EQ(pieces.found(), "");
    EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", other.get(), key.get()), SIGIL_TK_KEY_MISMATCH);
    EXPECT_EQ(pieces.found(), "");
}

TEST_F(Residue, OfAnEcKeyThatIsCheckedAgainstItsCertificate)
{
    ecCertificate("user");
    ecCertificate("other");
    bareKey("user");
    MappedFile certificate(workshop.path("user.crt"));
    MappedFile other(workshop.path("other.crt"));
    MappedFile whole(workshop.path("user.key"));
    MappedFile bare(workshop.path("user.bare"));
    const Hunt pieces = secretNumber(whole, scalarAt);
    ASSERT_EQ(bare.bytes().substr(bareScalarAt), whole.bytes().substr(scalarAt, 32));
    for (MappedFile* key : {&whole, &bare}) {
        EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), key->get()), 0) << toolkit.errorText();
        EXPECT_EQ(pieces.found(), "") << (key == &bare ? "without" : "with") << " public part";
        EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", other.get(), key->get()), SIGIL_TK_KEY_MISMATCH);
        EXPECT_EQ(pieces.found(), "") << (key == &bare ? "without" : "with") << " public part";
    }
}

TEST_F(Residue, OfASharedKeyThatIsHashed)
{
    ecCertificate("user");
    ecCertificate("peer");
    workshop.run("openssl x509 -in peer.pem -noout -pubkey > peer.pub"
                 " && openssl pkeyutl -derive -inkey user.key.pem -peerkey peer.pub -out shared"
                 " && openssl dgst -sha256 -binary shared > hashed");
    MappedFile key(workshop.path("user.key"));
    MappedFile peer(workshop.path("peer.crt"));
    const MappedFile shared(workshop.path("shared"));
    const MappedFile hashed(workshop.path("hashed"));
    const Hunt secret{{"shared secret", shared.bytes()}};
    const Hunt own = secretNumber(key, scalarAt);
    const Hunt result{{"hashed secret", hashed.bytes()}};
    {
        ByteString out(toolkit);
        ASSERT_EQ(toolkit("CRYPT_GenSharedKey", SIGIL_TK_HASH_SHA256, key.get(), peer.get(), out.get()), 0);
        EXPECT_EQ(secret.found(), "");
        EXPECT_EQ(own.found(), "");
        EXPECT_THAT(result.places(), testing::SizeIs(1)) << "what was handed out";
        std::fill_n(out.get()->pData, out.get()->nLength, static_cast<unsigned char>(0));
    }
    EXPECT_THAT(result.places(), testing::IsEmpty());
}

TEST_F(Residue, OfWhatIsExported)
{
    rsaCertificate("user");
    workshop.run("openssl rand -base64 36 | tr -d '\\n' > password && iconv -f UTF-8 -t UTF-16BE password > bmp");
    MappedFile certificate(workshop.path("user.crt"));
    MappedFile key(workshop.path("user.key"));
    const MappedFile password(workshop.path("password"));
    const MappedFile bmp(workshop.path("bmp"));
    Hunt secrets = secretNumbers(key);
    secrets.add("password", password.bytes());
    secrets.add("password in two bytes each", bmp.bytes());
    for (const int option : {SIGIL_TK_PFX_3DES, SIGIL_TK_PFX_SEED, SIGIL_TK_PFX_AES256}) {
        ByteString file(toolkit);
        ASSERT_EQ(toolkit("PFX_Export", option, password.chars(), certificate.get(), key.get(), file.get()), 0);
        EXPECT_EQ(secrets.found(), "") << "option " << option;
    }
}

TEST_F(Residue, OfWhatACertificateIsAskedForWith)
{
    ecCertificate("ca");
    workshop.run(
        "openssl rand -base64 36 | tr -d '\\n' > secret && openssl rand -base64 36 | tr -d '\\n' > password");
    const MappedFile secret(workshop.path("secret"));
    const MappedFile password(workshop.path("password"));
    const Hunt secrets{{"secret", secret.bytes()}, {"password", password.bytes()}};
    const Server server = Server::authority(workshop, "ca");
    std::string known = "the secret";
    for (char* const used : {secret.chars(), known.data()}) {
        ByteString certificate(toolkit);
        ByteString key(toolkit);
        BINSTR* const none = nullptr;
        EXPECT_EQ(toolkit("CMP_CertRequest2", text("127.0.0.1"), server.port(), text("ref"), used, text("cn=Kim"),
                      password.chars(), certificate.get(), key.get(), none, none),
            used == secret.chars() ? SIGIL_TK_CMP_PROTECTION : SIGIL_TK_OK)
            << toolkit.errorText();
        EXPECT_EQ(secrets.found(), "");
    }
}

TEST(TokenResidue, OfPinsAndOfWhatAKeyOnATokenIsCertifiedWith)
{
    const TokenWorkshop workshop;
    workshop.addSoftHsm();
    for (const std::string name : {"pin", "new", "wrong", "security", "secret"})
        workshop.run("openssl rand -base64 36 | tr -d '\\n' > " + name);
    workshop.run("softhsm2-util --init-token --free --label first --pin $(cat pin) --so-pin $(cat security)");
    workshop.certificate("ca", "/CN=CA", "basicConstraints=critical,CA:TRUE");
    const MappedFile pin(workshop.path("pin"));
    const MappedFile fresh(workshop.path("new"));
    const MappedFile wrong(workshop.path("wrong"));
    const MappedFile secret(workshop.path("secret"));
    const Hunt secrets{
        {"PIN", pin.bytes()}, {"new PIN", fresh.bytes()}, {"wrong PIN", wrong.bytes()}, {"secret", secret.bytes()}};
    const auto expectNone = [&](const std::string& after) { EXPECT_EQ(secrets.found(), "") << after; };
    const Server server = Server::authority(workshop, "ca");
    const ToolkitLibrary toolkit("HVTK_");
    const auto call = [&](int expected, const std::string& function, auto... arguments) {
        EXPECT_EQ(toolkit(function, arguments...), expected) << function << ": " << toolkit.errorText();
        expectNone(function);
    };
    const auto request = [&](int expected, char* known, char* used) {
        ByteString certificate(toolkit);
        BINSTR* const none = nullptr;
        call(expected, "PKCS11_CMP_CertRequest", text("127.0.0.1"), server.port(), text("ref"), known, used,
            text("first"), none, certificate.get());
    };
    call(SIGIL_TK_OK, "PKCS11_OpenSessionWithTokenName", text("first"), 0);
    call(SIGIL_TK_TOKEN_PIN, "PKCS11_Login", wrong.chars());
    call(SIGIL_TK_OK, "PKCS11_Login", pin.chars());
    call(SIGIL_TK_OK, "PKCS11_Logout");
    call(SIGIL_TK_OK, "PKCS11_ChangePIN", pin.chars(), fresh.chars());
    call(SIGIL_TK_OK, "PKCS11_CloseSession");
    request(SIGIL_TK_TOKEN_PIN, secret.chars(), wrong.chars());
    request(SIGIL_TK_CMP_PROTECTION, secret.chars(), fresh.chars());
    request(SIGIL_TK_OK, text("the secret"), fresh.chars());
}
