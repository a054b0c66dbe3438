// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Cards, by the media functions of both toolkits: SoftHSM's token is the card, and other programs see what is on it.

#include "tests/toolkit/tokens.h"
#include "toolkit/engine/keys/private_key.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace toolkit_test;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string korean = "\xEB\xB3\xB4\xEC\x95\x88"; // UTF-8
const std::string korean949 = "\xBA\xB8\xBE\xC8";      // the same in CP949

/** The functions of either toolkit with a card, with the arguments that they have in common. */
class Cards : public TokenTest, public testing::WithParamInterface<const char*> {
protected:
    Cards()
        : TokenTest(GetParam())
    {
    }

    std::string name(const std::string& operation) const
    {
        return (hvtk() ? "MEDIA_CARD_" : "STORAGE_") + operation;
    }
    int slot() const { return static_cast<int>(slotOf("first")); }
    std::string readCert(int slot, const std::string& path)
    {
        return make([&](BINSTR* out) {
            return hvtk() ? (*toolkit)(name("ReadCert"), slot, text(path), out)
                          : (*toolkit)(name("ReadCert"), 2, text(path), slot, out);
        });
    }
    int writeCert(int slot, const std::string& path, const std::string& bytes) const
    {
        ByteString certificate(*toolkit, bytes);
        return hvtk() ? (*toolkit)(name("WriteCert"), slot, text(path), certificate.get())
                      : (*toolkit)(name("WriteCert"), 2, text(path), slot, certificate.get());
    }
    int deleteCert(int slot, const std::string& path) const
    {
        return hvtk() ? (*toolkit)(name("DeleteCert"), slot, text(path))
                      : (*toolkit)(name("DeleteCert"), 2, text(path), slot);
    }
    std::string readPriKey(int slot, const std::string& path, const std::string& pin)
    {
        return make([&](BINSTR* out) {
            return hvtk() ? (*toolkit)(name("ReadPriKey"), slot, text(path), text(pin), out)
                          : (*toolkit)(name("ReadPriKey"), 2, text(path), text(pin), slot, out);
        });
    }
    int writePriKey(int slot, const std::string& path, const std::string& pin, const std::string& bytes) const
    {
        constexpr int algorithm = 48;
        ByteString key(*toolkit, bytes);
        return hvtk() ? (*toolkit)(name("WritePriKey"), slot, algorithm, text(path), text(pin), key.get())
                      : (*toolkit)(name("WritePriKey"), 2, text(path), text(pin), slot, algorithm, key.get());
    }
    int deletePriKey(int slot, const std::string& path, const std::string& pin) const
    {
        return hvtk() ? (*toolkit)(name("DeletePriKey"), slot, text(path), text(pin))
                      : (*toolkit)(name("DeletePriKey"), 2, text(path), text(pin), slot);
    }
    static std::string code(int value) { return "code " + std::to_string(value); }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Toolkits, Cards, testing::Values("HVTK_", "GPKI_"),
    [](const auto& one) { return std::string(one.param).substr(0, 4); });

TEST_P(Cards, KeepCertificatesUnderTheirNames)
{
    const std::string first = plainPairs().read("rsa.crt");
    ASSERT_EQ(writeCert(slot(), "mine", plainPairs().read("rsa.pem")), 0) << toolkit->errorText();
    ASSERT_EQ(writeCert(slot(), "other", plainPairs().read("other.crt")), 0);
    EXPECT_EQ(readCert(slot(), "mine"), first) << "PEM becomes DER";
    workshop.pkcs11Tool("--token-label first --type cert --label mine --read-object --output-file seen");
    EXPECT_EQ(workshop.read("seen"), first);
    ASSERT_EQ(writeCert(slot(), "mine", plainPairs().read("ec.crt")), 0);
    EXPECT_EQ(readCert(slot(), "mine"), plainPairs().read("ec.crt")) << "what had the name made way";
    EXPECT_THAT(listed("cert"), Not(HasSubstr("CN=rsa")));
    EXPECT_EQ(deleteCert(slot(), "mine"), 0);
    EXPECT_EQ(readCert(slot(), "mine"), code(SIGIL_TK_TOKEN_OBJECT));
    EXPECT_EQ(deleteCert(slot(), "mine"), SIGIL_TK_TOKEN_OBJECT);
    EXPECT_EQ(readCert(slot(), "other"), plainPairs().read("other.crt"));
}

TEST_P(Cards, ShowWhatOtherProgramsWrote)
{
    workshop.write("rsa.crt", plainPairs().read("rsa.crt"));
    workshop.pkcs11Tool("--token-label first --login --pin " + std::string(tokenPin) +
        " --type cert --write-object rsa.crt --id 01 --label '" + korean + "'");
    EXPECT_EQ(readCert(slot(), korean), plainPairs().read("rsa.crt"));
    EXPECT_EQ(readCert(slot(), korean949), plainPairs().read("rsa.crt"));
    ASSERT_EQ(writePriKey(slot(), korean949, tokenPin, plainPairs().read("rsa.key")), 0) << toolkit->errorText();
    EXPECT_THAT(listed("privkey"), HasSubstr(korean));
    EXPECT_THAT(listed("privkey"), HasSubstr("ID:         01\n")) << "that of the certificate";
    EXPECT_EQ(deleteCert(slot(), korean949), 0);
    EXPECT_EQ(listed("cert"), "");
}

TEST_P(Cards, KeepKeysThatDoNotComeOut)
{
    for (const std::string pair : {"rsa", "ec"}) {
        ASSERT_EQ(writeCert(slot(), pair, plainPairs().read(pair + ".crt")), 0);
        ASSERT_EQ(writePriKey(slot(), pair, tokenPin, plainPairs().read(pair + ".key")), 0) << toolkit->errorText();
        ASSERT_EQ(writePriKey(slot(), pair, tokenPin, plainPairs().read(pair + ".key")), 0) << "it made way";
        EXPECT_EQ(readPriKey(slot(), pair, tokenPin), code(SIGIL_TK_MEDIUM));
        EXPECT_THAT(toolkit->errorText(), HasSubstr("does not leave its card"));
        EXPECT_THAT(listed("privkey"), HasSubstr("Access:     sensitive\n"));
    }
    EXPECT_EQ(deletePriKey(slot(), "rsa", tokenPin), 0);
    EXPECT_THAT(listed("privkey"), Not(HasSubstr("rsa")));
    EXPECT_THAT(listed("privkey"), HasSubstr("ec"));
    EXPECT_EQ(deletePriKey(slot(), "rsa", tokenPin), SIGIL_TK_TOKEN_OBJECT);
    EXPECT_EQ(deletePriKey(slot(), "ec", tokenPin), 0);
    EXPECT_EQ(listed("privkey"), "");
}

TEST_P(Cards, ServeTheTokenFunctionsWithTheirPairs)
{
    const auto key =
        toolkit::withIdentityRandom(toolkit::view(plainPairs().read("rsa.key")), toolkit::view("random"));
    ASSERT_EQ(writeCert(slot(), "mine", plainPairs().read("rsa.crt")), 0);
    ASSERT_EQ(writePriKey(slot(), "mine", tokenPin, {key.begin(), key.end()}), 0) << toolkit->errorText();
    openAndLogIn("first");
    ByteString id(*toolkit);
    ByteString certificate(*toolkit);
    int kind = 0;
    ASSERT_EQ(token("GetCertInfo", 0, &kind, id.get(), certificate.get()), 0);
    EXPECT_EQ(make([&](BINSTR* out) { return token("ReadRandomForVID", id.get(), out); }), "random");
    ByteString data(*toolkit, "text");
    workshop.write("message", make([&](BINSTR* out) { return token("SignData", id.get(), data.get(), out); }));
    EXPECT_EQ(workshop.run("openssl cms -verify -noverify -inform DER -in message 2>/dev/null"), "text");
    EXPECT_EQ(deletePriKey(slot(), "mine", ""), 0) << "logged in already: " << toolkit->errorText();
    EXPECT_EQ(listed("privkey") + listed("data"), "");
}

TEST_P(Cards, WantThePinAndKeepNoLogin)
{
    const std::string key = plainPairs().read("rsa.key");
    EXPECT_EQ(writePriKey(slot(), "mine", "", key), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_EQ(writePriKey(slot(), "mine", "999999", key), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(deletePriKey(slot(), "mine", ""), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_EQ(deletePriKey(slot(), "mine", "999999"), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(listed("privkey"), "");
    ASSERT_EQ(open("first"), 0);
    ASSERT_EQ(writePriKey(slot(), "mine", tokenPin, key), 0);
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_LOGIN) << "the session that was open is not logged in";
    ASSERT_EQ(login(tokenPin), 0);
    ASSERT_EQ(deletePriKey(slot(), "mine", tokenPin), 0);
    EXPECT_EQ(token("Logout"), 0) << "and one that was logged in still is";
}

TEST_P(Cards, RefuseKeysOfOtherCertificates)
{
    ASSERT_EQ(writeCert(slot(), "mine", plainPairs().read("rsa.crt")), 0);
    EXPECT_EQ(writePriKey(slot(), "mine", tokenPin, plainPairs().read("other.key")), SIGIL_TK_KEY_MISMATCH);
    EXPECT_EQ(writePriKey(slot(), "mine", tokenPin, "garbage"), SIGIL_TK_KEY_UNUSABLE);
    EXPECT_EQ(listed("privkey"), "");
    EXPECT_EQ(writeCert(slot(), "mine", "garbage"), SIGIL_TK_CERT_MALFORMED);
    EXPECT_EQ(readCert(slot(), "mine"), plainPairs().read("rsa.crt"));
}

TEST_P(Cards, RemoveNothingWhereSeveralAreMeant)
{
    workshop.write("rsa.crt", plainPairs().read("rsa.crt"));
    workshop.write("ec.crt", plainPairs().read("ec.crt"));
    for (const std::string pair : {"rsa", "ec"})
        workshop.pkcs11Tool("--token-label first --login --pin " + std::string(tokenPin) +
            " --type cert --write-object " + pair + ".crt --id " + toHex(pair) + " --label mine");
    EXPECT_EQ(deleteCert(slot(), "mine"), SIGIL_TK_ARGUMENT);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("several"));
    EXPECT_EQ(writeCert(slot(), "mine", plainPairs().read("other.crt")), SIGIL_TK_ARGUMENT);
    EXPECT_THAT(listed("cert"), HasSubstr(toHex("rsa")));
    EXPECT_THAT(listed("cert"), HasSubstr(toHex("ec")));
}

TEST_P(Cards, AreNotThereWithoutAToken)
{
    EXPECT_EQ(readCert(slot(), ""), code(SIGIL_TK_ARGUMENT));
    for (const int absent : {-1, 77}) {
        EXPECT_EQ(readCert(absent, "mine"), code(SIGIL_TK_MEDIUM));
        EXPECT_THAT(toolkit->errorText(), HasSubstr("no card in slot " + std::to_string(absent)));
        EXPECT_EQ(writeCert(absent, "mine", plainPairs().read("rsa.crt")), SIGIL_TK_MEDIUM);
        EXPECT_EQ(deleteCert(absent, "mine"), SIGIL_TK_MEDIUM);
        EXPECT_EQ(writePriKey(absent, "mine", tokenPin, plainPairs().read("rsa.key")), SIGIL_TK_MEDIUM);
        EXPECT_EQ(deletePriKey(absent, "mine", tokenPin), SIGIL_TK_MEDIUM);
    }
    EXPECT_EQ(readCert(static_cast<int>(slotOf("")), "mine"), code(SIGIL_TK_MEDIUM)) << "never initialised";
    toolkit = std::make_unique<ToolkitLibrary>(GetParam());
    std::filesystem::remove(workshop.path("modules/softhsm.module"));
    EXPECT_EQ(readCert(0, "mine"), code(SIGIL_TK_MEDIUM));
}

TEST_P(Cards, SayWhatACardRefuses)
{
    std::filesystem::remove(workshop.path("modules/softhsm.module"));
    workshop.addOdd("odd");
    const auto odd = static_cast<int>(slotOf("odd"));
    oddBehaviour().guarded = true;
    EXPECT_EQ(writeCert(odd, "mine", plainPairs().read("rsa.crt")), SIGIL_TK_TOKEN_LOGIN);
    oddBehaviour().guarded = false;
    oddBehaviour().full = true;
    EXPECT_EQ(writeCert(odd, "mine", plainPairs().read("rsa.crt")), SIGIL_TK_TOKEN_FULL);
    EXPECT_EQ(writePriKey(odd, "mine", "1234", plainPairs().read("rsa.key")), SIGIL_TK_TOKEN_FULL);
    oddBehaviour().pulled = true;
    EXPECT_EQ(writeCert(odd, "mine", plainPairs().read("rsa.crt")), SIGIL_TK_MEDIUM);
    EXPECT_EQ(oddBehaviour().sessions, 0) << "each ended with its call";
}
