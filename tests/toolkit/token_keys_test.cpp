// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Pairs on tokens, the cryptography with their keys, and messages through them. Other programs read what is written here and
// write what is read.

#include "tests/toolkit/tokens.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/tokens/cryptoki.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <type_traits>

using namespace toolkit_test;
using testing::HasSubstr;
using testing::Not;

// It points into itself.
static_assert(!std::is_copy_constructible_v<toolkit::Template>);
static_assert(std::is_move_constructible_v<toolkit::Template>);

namespace {

constexpr const char* identityNumber = "0000001111111";
const std::string randomValue = fromHex("a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3");

/** The plain pairs, and `vid` with identity data in its certificate and the random value in its key. */
const Workshop& pairs()
{
    static const Workshop& made = []() -> const Workshop& {
        const Workshop& workshop = plainPairs();
        workshop.certificate(
            "vid", "/CN=vid", "subjectKeyIdentifier=hash\n" + identityExtension() + identitySections("Tester"));
        const std::string key = workshop.read("vid.key");
        const auto with = toolkit::withIdentityRandom(toolkit::view(key), toolkit::view(randomValue));
        workshop.write("vid.key", {with.begin(), with.end()});
        return workshop;
    }();
    return made;
}

/** A token with SoftHSM, logged in to. */
class TokenPairs : public TokenTest {
protected:
    explicit TokenPairs(const std::string& prefix)
        : TokenTest(prefix)
    {
        openAndLogIn("first");
    }

    int write(const std::string& name) const { return writePair(pairs(), name); }
    /** The subject key identifier of a certificate. */
    static std::string idOf(const std::string& name)
    {
        std::string digits =
            pairs().run("openssl x509 -in " + name + ".pem -noout -ext subjectKeyIdentifier | tail -1");
        std::erase_if(digits, [](char c) { return c == ':' || c == ' ' || c == '\n'; });
        return fromHex(digits);
    }
    int remove(const std::string& id) const
    {
        ByteString name(*toolkit, id);
        return token("DeleteCertAndPriKey", name.get());
    }
    std::string random(const std::string& id)
    {
        ByteString name(*toolkit, id);
        return make([&](BINSTR* out) { return token("ReadRandomForVID", name.get(), out); });
    }
};

class Pairs : public TokenPairs, public testing::WithParamInterface<const char*> {
protected:
    Pairs()
        : TokenPairs(GetParam())
    {
    }
};
INSTANTIATE_TEST_SUITE_P(Toolkits, Pairs, testing::Values("HVTK_", "GPKI_"),
    [](const auto& one) { return std::string(one.param).substr(0, 4); });

/** The cryptography of the maker's toolkit. */
class MakerPairs : public TokenPairs {
protected:
    MakerPairs()
        : TokenPairs("HVTK_")
    {
    }

    int verifies(const std::string& id, const std::string& data, const std::string& signature) const
    {
        ByteString name(*toolkit, id);
        ByteString given(*toolkit, data);
        ByteString value(*toolkit, signature);
        return token("Verify", name.get(), given.get(), value.get());
    }
    /** An enveloped message of `openssl` for the holder of a certificate. */
    std::string enveloped(const std::string& content, const std::string& recipients, const std::string& options)
    {
        pairs().write("content", content);
        pairs().run(
            "openssl cms -encrypt -binary -outform DER -in content -out enveloped " + options + " " + recipients);
        return pairs().read("enveloped");
    }
};

} // namespace

TEST_P(Pairs, AreWrittenReadAndDeleted)
{
    for (const std::string name : {"rsa", "ec"}) {
        ASSERT_EQ(write(name), 0) << name << " " << toolkit->errorText();
        ASSERT_EQ(write(name), 0) << "what was there makes way";
        EXPECT_EQ(certificateCount(), 1);
        ByteString id(*toolkit, idOf(name));
        EXPECT_EQ(make([&](BINSTR* out) { return token("ReadCert", id.get(), out); }), pairs().read(name + ".crt"));
        EXPECT_THAT(listed("privkey"), HasSubstr(toHex(idOf(name))));
        EXPECT_THAT(listed("privkey"), HasSubstr("Access:     sensitive\n"));
        EXPECT_THAT(listed("cert"), HasSubstr(name));
        EXPECT_EQ(remove(idOf(name)), 0) << toolkit->errorText();
        EXPECT_EQ(listed("privkey") + listed("cert") + listed("data"), "");
        EXPECT_EQ(remove(idOf(name)), SIGIL_TK_TOKEN_OBJECT);
    }
}

TEST_P(Pairs, KeepTheRandomValueOfTheIdentityCheck)
{
    ASSERT_EQ(write("vid"), 0) << toolkit->errorText();
    EXPECT_EQ(random(idOf("vid")), randomValue);
    EXPECT_THAT(listed("data"), HasSubstr("R4VID=" + toHex(idOf("vid"))));
    ByteString certificate(*toolkit, pairs().read("vid.crt"));
    ByteString value(*toolkit, random(idOf("vid")));
    EXPECT_EQ((*toolkit)("VID_Verify", certificate.get(), value.get(), text(identityNumber)), 0);
    ASSERT_EQ(write("rsa"), 0);
    EXPECT_EQ(random(idOf("rsa")), "code " + std::to_string(SIGIL_TK_VID_NO_RANDOM));
    EXPECT_EQ(random("nobody"), "code " + std::to_string(SIGIL_TK_TOKEN_OBJECT));
    EXPECT_EQ(remove(idOf("vid")), 0);
    EXPECT_EQ(listed("data"), "");
}

TEST_P(Pairs, WantTheirKeyAndALogin)
{
    ByteString certificate(*toolkit, pairs().read("rsa.crt"));
    ByteString key(*toolkit, pairs().read("other.key"));
    EXPECT_EQ(token("WriteCertAndPriKey", certificate.get(), key.get()), SIGIL_TK_KEY_MISMATCH);
    ASSERT_EQ(write("rsa"), 0);
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(write("rsa"), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_EQ(remove(idOf("rsa")), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_EQ(random(idOf("rsa")), "code " + std::to_string(SIGIL_TK_TOKEN_LOGIN));
    EXPECT_EQ(with("SignData", idOf("rsa"), "text"), "code " + std::to_string(SIGIL_TK_TOKEN_LOGIN));
    EXPECT_EQ(certificateCount(), 1);
}

TEST_P(Pairs, AreNotWrittenInAReadingSession)
{
    ASSERT_EQ(open("first", 4), 0);
    ASSERT_EQ(login(tokenPin), 0);
    EXPECT_EQ(write("rsa"), SIGIL_TK_TOKEN_FULL);
}

TEST_P(Pairs, SignMessagesThatOpensslVerifies)
{
    for (const std::string name : {"rsa", "ec"}) {
        ASSERT_EQ(write(name), 0) << toolkit->errorText();
        pairs().write("message", with("SignData", idOf(name), "a text"));
        EXPECT_EQ(
            pairs().run("openssl cms -verify -binary -noverify -inform DER -in message 2>/dev/null"), "a text")
            << name;
    }
    EXPECT_EQ(with("SignData", "nobody", "a text"), "code " + std::to_string(SIGIL_TK_TOKEN_OBJECT));
}

TEST_F(MakerPairs, SignsDetachedMessages)
{
    ASSERT_EQ(write("rsa"), 0);
    pairs().write("message", with("SignData_NoContent", idOf("rsa"), "a text"));
    pairs().write("content", "a text");
    EXPECT_EQ(pairs().tryRun("openssl cms -verify -binary -noverify -inform DER -in message -content content"), 0);
    pairs().write("content", "another");
    EXPECT_NE(pairs().tryRun("openssl cms -verify -binary -noverify -inform DER -in message -content content"), 0);
}

TEST_F(MakerPairs, MakesKeysThatStayThere)
{
    const std::pair<int, int> kinds[] = {
        {SIGIL_TK_TOKEN_RSA, 2048}, {SIGIL_TK_TOKEN_EC, 256}, {SIGIL_TK_TOKEN_EC, 384}};
    for (const auto& [algorithm, bits] : kinds) {
        const std::string key = make([&, algorithm = algorithm, bits = bits](
                                         BINSTR* out) { return token("GenKeyPair", algorithm, bits, out); });
        pairs().write("public", key);
        pairs().run("openssl pkey -pubin -inform DER -in public -out public.pem");
        const std::string listing = listed("privkey");
        const std::string id =
            fromHex(listing.substr(listing.find_first_not_of(' ', listing.rfind("ID:") + 3), 40));
        const std::string signature = with("Sign", id, "a text");
        pairs().write("signature", signature);
        pairs().write("content", "a text");
        EXPECT_EQ(pairs().tryRun("openssl dgst -sha256 -verify public.pem -signature signature content"), 0)
            << bits << " " << signature << " " << toolkit->errorText();
        EXPECT_EQ(verifies(id, "a text", signature), 0);
        EXPECT_EQ(verifies(id, "another", signature), SIGIL_TK_SIGNATURE);
        EXPECT_THAT(listing, Not(HasSubstr("VALUE")));
        EXPECT_EQ(remove(id), 0);
    }
    ByteString none(*toolkit);
    EXPECT_EQ(token("GenKeyPair", 0, 1000, none.get()), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(token("GenKeyPair", 1, 2048, none.get()), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(token("GenKeyPair", 2, 256, none.get()), SIGIL_TK_ALGORITHM);
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("GenKeyPair", 1, 256, none.get()), SIGIL_TK_TOKEN_LOGIN);
}

TEST_F(MakerPairs, SignWithTheHashAndSchemeOfTheContext)
{
    ASSERT_EQ(write("rsa"), 0);
    const std::string id = idOf("rsa");
    pairs().write("content", "a text");
    pairs().run("openssl x509 -in rsa.pem -noout -pubkey > public.pem");
    ASSERT_EQ((*toolkit)("API_SetHashAlgo", static_cast<int>(SIGIL_TK_HASH_SHA512)), 0);
    pairs().write("signature", with("Sign", id, "a text"));
    EXPECT_EQ(pairs().tryRun("openssl dgst -sha512 -verify public.pem -signature signature content"), 0);
    ASSERT_EQ((*toolkit)("CRYPT_SetRSAVersion", static_cast<int>(SIGIL_TK_RSA_PSS)), 0);
    const std::string signature = with("Sign", id, "a text");
    pairs().write("signature", signature);
    EXPECT_EQ(pairs().tryRun("openssl dgst -sha512 -sigopt rsa_padding_mode:pss -verify public.pem"
                             " -signature signature content"),
        0)
        << signature;
    EXPECT_EQ(verifies(id, "a text", signature), 0);
}

TEST_F(MakerPairs, VerifySignatureValues)
{
    ASSERT_EQ(write("rsa"), 0);
    ByteString certificate(*toolkit, pairs().read("rsa.crt"));
    ByteString signature(*toolkit, with("Sign", idOf("rsa"), "a text"));
    const auto check = [&](const std::string& hex) {
        return token("VerifySignatureValue", text(hex), certificate.get(), signature.get());
    };
    EXPECT_EQ(check(sha256Hex("a text")), 0);
    EXPECT_EQ(check(sha256Hex("another")), SIGIL_TK_SIGNATURE);
    EXPECT_EQ(check("00"), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(check("no digits"), SIGIL_TK_ENCODING);
}

TEST_F(MakerPairs, EncryptAndDecrypt)
{
    ASSERT_EQ(write("rsa"), 0);
    ASSERT_EQ(write("ec"), 0);
    EXPECT_EQ(with("Decrypt", idOf("rsa"), with("Encrypt", idOf("rsa"), "secret")), "secret");
    EXPECT_EQ(with("Decrypt", idOf("rsa"), std::string(256, '\1')), "code " + std::to_string(SIGIL_TK_DECRYPT));
    EXPECT_EQ(with("Encrypt", idOf("ec"), "secret"), "code " + std::to_string(SIGIL_TK_ALGORITHM));
    EXPECT_EQ(with("Decrypt", idOf("ec"), "secret"), "code " + std::to_string(SIGIL_TK_ALGORITHM));
    ASSERT_EQ((*toolkit)("CRYPT_SetPaddingType", static_cast<int>(SIGIL_TK_PADDING_OAEP)), 0);
    EXPECT_EQ(with("Decrypt", idOf("rsa"), with("Encrypt", idOf("rsa"), "secret")),
        "code " + std::to_string(SIGIL_TK_TOKEN_MECHANISM))
        << "SoftHSM has OAEP with SHA-1 alone";
    ASSERT_EQ((*toolkit)("API_SetHashAlgo", static_cast<int>(SIGIL_TK_HASH_SHA1)), 0);
    EXPECT_EQ(with("Decrypt", idOf("rsa"), with("Encrypt", idOf("rsa"), "secret")), "secret");
}

TEST_F(MakerPairs, OpenEnvelopedMessages)
{
    ASSERT_EQ(write("rsa"), 0);
    ASSERT_EQ(write("ec"), 0);
    for (const std::string cipher : {"-aes256", "-aes128", "-des3", "-camellia192"})
        for (const std::string name : {"rsa", "ec"})
            EXPECT_EQ(
                with("DecryptData", idOf(name), enveloped("a text", "other.pem rsa.pem ec.pem", cipher)), "a text")
                << name << cipher << " " << toolkit->errorText();
    EXPECT_EQ(with("DecryptData", idOf("ec"), enveloped("a text", "ec.pem", "-keyid -aes128")), "a text");
    EXPECT_EQ(with("DecryptData", idOf("rsa"),
                  enveloped("a text", "-recip rsa.pem -keyopt rsa_padding_mode:oaep", "-aes128")),
        "a text");
    EXPECT_EQ(
        with("DecryptData", idOf("ec"), enveloped("a text", "-recip ec.pem -keyopt ecdh_kdf_md:sha384", "-aes256")),
        "a text");
    EXPECT_EQ(with("DecryptData", idOf("rsa"), enveloped("a text", "other.pem", "-aes128")),
        "code " + std::to_string(SIGIL_TK_CMS_NOBODY));
}

TEST_F(MakerPairs, AWrongContentKeyLooksLikeAnyOther)
{
    ASSERT_EQ(write("rsa"), 0);
    std::string message = enveloped(std::string(40, 'x'), "rsa.pem", "-aes256");
    const std::size_t key = message.find(fromHex("04820100"));
    ASSERT_NE(key, std::string::npos);
    message[key + 100] = static_cast<char>(message[key + 100] ^ 1);
    const std::string answer = with("DecryptData", idOf("rsa"), message);
    EXPECT_NE(answer, std::string(40, 'x'));
    EXPECT_TRUE(answer == "code " + std::to_string(SIGIL_TK_DECRYPT) || !answer.starts_with("code")) << answer;
}

TEST_F(MakerPairs, SignAndEnvelopeAndBack)
{
    for (const std::string name : {"rsa", "ec"}) {
        ASSERT_EQ(write(name), 0);
        ByteString id(*toolkit, idOf(name));
        ByteString recipient(*toolkit, pairs().read(name + ".crt"));
        ByteString data(*toolkit, "a text");
        ByteString message(*toolkit);
        ASSERT_EQ(token("SignAndEnvData", id.get(), recipient.get(), data.get(), message.get()), 0);
        ByteString content(*toolkit);
        ByteString signer(*toolkit);
        ASSERT_EQ(token("VerifyAndDecData", id.get(), message.get(), content.get(), signer.get()), 0)
            << toolkit->errorText();
        EXPECT_EQ(content.bytes(), "a text");
        EXPECT_EQ(signer.bytes(), recipient.bytes());
        pairs().write("message", message.bytes());
        EXPECT_EQ(
            pairs().tryRun("openssl cms -decrypt -binary -provider default -provider legacy -inform DER -in message"
                           " -recip " +
                name + ".pem -inkey " + name +
                ".key.pem -out signed && openssl cms -verify -noverify -binary -inform DER -in signed"),
            0);
        ByteString plain(*toolkit, enveloped("a text", name + ".pem", "-aes128"));
        ByteString none(*toolkit);
        EXPECT_EQ(token("VerifyAndDecData", id.get(), plain.get(), none.get(), none.get()), SIGIL_TK_CMS_TYPE);
    }
}

TEST_F(MakerPairs, AreSharedWithOtherPrograms)
{
    const std::string toolOptions = "--token-label first --login --pin " + std::string(tokenPin) + " ";
    workshop.write("rsa.key", pairs().read("rsa.key"));
    workshop.write("rsa.crt", pairs().read("rsa.crt"));
    workshop.pkcs11Tool(toolOptions + "--write-object rsa.key --type privkey --id " + toHex("tool") +
        " --usage-sign --usage-decrypt");
    workshop.pkcs11Tool(toolOptions + "--write-object rsa.crt --type cert --id " + toHex("tool"));
    openAndLogIn("first");
    EXPECT_EQ(verifies("tool", "a text", with("Sign", "tool", "a text")), 0) << toolkit->errorText();
    EXPECT_EQ(with("DecryptData", "tool", enveloped("a text", "rsa.pem", "-aes128")), "a text");
    ASSERT_EQ(write("ec"), 0);
    const std::string url = workshop.run("GNUTLS_PIN=" + std::string(tokenPin) +
        " p11tool --provider '" SIGILDESK_SOFTHSM "' --login --list-all 'pkcs11:token=first'");
    EXPECT_THAT(url, HasSubstr("object=ec;type=cert"));
    EXPECT_THAT(url, HasSubstr("object=ec;type=private"));
    workshop.write("content", "a text");
    workshop.run("openssl dgst -sha256 -binary content > hash");
    workshop.pkcs11Tool(toolOptions + "--sign --mechanism ECDSA --signature-format openssl --id " +
        toHex(idOf("ec")) + " --input-file hash --output-file signature");
    EXPECT_EQ(verifies(idOf("ec"), "a text", workshop.read("signature")), 0);
    workshop.write("other.pem", pairs().read("other.pem"));
    workshop.run("GNUTLS_PIN=" + std::string(tokenPin) +
        " p11tool --provider '" SIGILDESK_SOFTHSM
        "' --login --batch --write --load-certificate other.pem --label other --id " +
        toHex("p11") + " 'pkcs11:token=first'");
    openAndLogIn("first");
    ByteString id(*toolkit, "p11");
    EXPECT_EQ(make([&](BINSTR* out) { return token("ReadCert", id.get(), out); }), pairs().read("other.crt"));
}

TEST_F(MakerPairs, AFullTokenKeepsNothing)
{
    std::filesystem::remove(workshop.path("modules/softhsm.module"));
    workshop.addOdd("odd");
    toolkit = std::make_unique<ToolkitLibrary>("HVTK_");
    ASSERT_EQ(open("odd"), 0);
    ASSERT_EQ(login("1234"), 0);
    oddBehaviour().full = true;
    EXPECT_EQ(write("rsa"), SIGIL_TK_TOKEN_FULL);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("full"));
    ByteString none(*toolkit);
    EXPECT_EQ(token("GenKeyPair", 0, 2048, none.get()), SIGIL_TK_TOKEN_MECHANISM);
}
