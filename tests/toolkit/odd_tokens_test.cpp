// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A good token that gives an odd answer now and then: SoftHSM's, with the test in between.

#include "tests/toolkit/tokens.h"

#include <gmock/gmock.h>
#include <p11-kit/pkcs11.h>

#include <map>
#include <optional>
#include <string>
#include <utility>

using namespace toolkit_test;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

using List = CK_FUNCTION_LIST;

std::string code(int value) { return "code " + std::to_string(value); }

std::string numberBytes(unsigned long number) { return {reinterpret_cast<const char*>(&number), sizeof number}; }

class OddAnswers : public TokenTest {
protected:
    OddAnswers()
        : TokenTest("HVTK_")
    {
    }

    /** Opens the token with one of the plain pairs on it, and returns its identifier. */
    std::string openWithPair(const std::string& name)
    {
        openAndLogIn("first");
        EXPECT_EQ(writePair(plainPairs(), name), 0) << toolkit->errorText();
        int kind = 0;
        ByteString certificate(*toolkit);
        return make([&](BINSTR* id) { return token("GetCertInfo", 0, &kind, id, certificate.get()); });
    }
    /** A text that `openssl` has encrypted for the holder of one of the plain pairs. */
    static std::string envelopeFor(const std::string& name, const std::string& options = {})
    {
        plainPairs().write("content", "a text");
        plainPairs().run("openssl cms -encrypt -binary -outform DER -in content -out envelope -aes128 -recip " +
            name + ".pem " + options);
        return plainPairs().read("envelope");
    }
    std::string generated(int algorithm, int bits)
    {
        return make([&](BINSTR* out) { return token("GenKeyPair", algorithm, bits, out); });
    }
};

/** Some attributes are not what they are. A text is the value; nothing: the object does not show it. */
class OddAttributes : public OddAnswers {
protected:
    std::map<CK_ATTRIBUTE_TYPE, std::optional<std::string>> odd;

private:
    CK_RV answer(CK_ATTRIBUTE& wanted) const
    {
        const auto& value = odd.at(wanted.type);
        if (!value) {
            wanted.ulValueLen = CK_UNAVAILABLE_INFORMATION;
            return CKR_ATTRIBUTE_SENSITIVE;
        }
        if (wanted.pValue)
            value->copy(static_cast<char*>(wanted.pValue), wanted.ulValueLen);
        wanted.ulValueLen = value->size();
        return CKR_OK;
    }

    Instead<&List::C_GetAttributeValue> m_answers{
        [this](auto own, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE* wanted,
            unsigned long count) {
            return odd.contains(wanted->type) ? answer(*wanted) : own(session, object, wanted, count);
        }};
};

} // namespace

TEST_F(OddAttributes, APublicKeyThatIsNotShownLeavesNoPair)
{
    openAndLogIn("first");
    const std::pair<CK_ATTRIBUTE_TYPE, std::optional<std::string>> rsa[] = {{CKA_MODULUS, std::nullopt},
        {CKA_MODULUS, ""}, {CKA_PUBLIC_EXPONENT, std::nullopt}, {CKA_PUBLIC_EXPONENT, ""}};
    const std::pair<CK_ATTRIBUTE_TYPE, std::optional<std::string>> ec[] = {
        {CKA_EC_PARAMS, std::nullopt}, {CKA_EC_PARAMS, ""}, {CKA_EC_POINT, std::nullopt}, {CKA_EC_POINT, ""}};
    for (const auto& shown : rsa) {
        odd = {shown};
        EXPECT_EQ(generated(SIGIL_TK_TOKEN_RSA, 1024), code(SIGIL_TK_TOKEN_MODULE)) << std::hex << shown.first;
        EXPECT_THAT(toolkit->errorText(), HasSubstr("public key"));
    }
    for (const auto& shown : ec) {
        odd = {shown};
        EXPECT_EQ(generated(SIGIL_TK_TOKEN_EC, 256), code(SIGIL_TK_TOKEN_MODULE)) << std::hex << shown.first;
        EXPECT_THAT(toolkit->errorText(), HasSubstr("public key"));
    }
    EXPECT_EQ(listed("privkey") + listed("pubkey"), "");
}

TEST_F(OddAttributes, APointMayStandWithoutItsWrapping)
{
    openAndLogIn("first");
    const std::string p256 = fromHex("301306072a8648ce3d020106082a8648ce3d030107");
    for (const char first : {'\x10', '\x7F'}) {
        const std::string point = '\4' + std::string(1, first) + std::string(63, 'p');
        const std::string key = fromHex("3059") + p256 + fromHex("034200") + point;
        odd = {{CKA_EC_POINT, point}};
        EXPECT_EQ(toHex(generated(SIGIL_TK_TOKEN_EC, 256)), toHex(key));
        odd = {{CKA_EC_POINT, fromHex("0441") + point}};
        EXPECT_EQ(toHex(generated(SIGIL_TK_TOKEN_EC, 256)), toHex(key));
    }
}

TEST_F(OddAttributes, AKeyOfNoKnownKindIsNotUsed)
{
    const std::string id = openWithPair("ec");
    const std::pair<std::optional<std::string>, int> cases[] = {{std::nullopt, SIGIL_TK_TOKEN_MODULE},
        {"", SIGIL_TK_TOKEN_MODULE}, {"three", SIGIL_TK_TOKEN_MODULE}, {numberBytes(CKK_DSA), SIGIL_TK_ALGORITHM}};
    for (const auto& [kind, expected] : cases) {
        odd = {{CKA_KEY_TYPE, kind}};
        EXPECT_EQ(with("Sign", id, "a text"), code(expected)) << kind.value_or("nothing");
        EXPECT_THAT(toolkit->errorText(), HasSubstr("kind of key"));
    }
}

TEST_F(OddAttributes, AnAgreementWithoutItsSecretIsTold)
{
    std::optional<std::string> secret;
    const Instead<&List::C_DeriveKey> deriving([&](auto own, auto... arguments) {
        odd = {{CKA_VALUE, secret}};
        return own(arguments...);
    });
    const std::string id = openWithPair("ec");
    const std::string message = envelopeFor("ec");
    for (const auto& value : {std::optional<std::string>(), std::optional<std::string>("")}) {
        secret = value;
        odd.clear();
        EXPECT_EQ(with("DecryptData", id, message), code(SIGIL_TK_TOKEN_MECHANISM));
        EXPECT_THAT(toolkit->errorText(), HasSubstr("key agreement"));
    }
    secret = std::string(32, 's');
    odd.clear();
    EXPECT_EQ(with("DecryptData", id, message), code(SIGIL_TK_DECRYPT)) << "another's secret";
}

TEST_F(OddAnswers, AnAttributeThatVanishesIsNotShown)
{
    bool hasSize = false;
    const Instead<&List::C_GetAttributeValue> vanishing(
        [&](auto own, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE* wanted,
            unsigned long count) -> CK_RV {
            if (wanted->type != CKA_KEY_TYPE)
                return own(session, object, wanted, count);
            const bool isTold = hasSize && !wanted->pValue;
            wanted->ulValueLen = isTold ? sizeof(CK_KEY_TYPE) : CK_UNAVAILABLE_INFORMATION;
            return wanted->pValue ? CKR_ATTRIBUTE_TYPE_INVALID : CKR_OK;
        });
    const std::string id = openWithPair("ec");
    for (const bool size : {false, true}) {
        hasSize = size;
        EXPECT_EQ(with("Sign", id, "a text"), code(SIGIL_TK_TOKEN_MODULE)) << size;
        EXPECT_THAT(toolkit->errorText(), HasSubstr("kind of key"));
    }
}

TEST_F(OddAnswers, WhatCannotBeWrittenWholeIsTakenBack)
{
    int writable = 0;
    const Instead<&List::C_SetAttributeValue> noIdentifiers([](auto...) -> CK_RV { return CKR_DEVICE_ERROR; });
    const Instead<&List::C_CreateObject> few([&](auto own, auto... arguments) -> CK_RV {
        return writable-- > 0 ? own(arguments...) : CKR_DEVICE_MEMORY;
    });
    openAndLogIn("first");
    EXPECT_EQ(generated(SIGIL_TK_TOKEN_EC, 256), code(SIGIL_TK_TOKEN_MODULE));
    EXPECT_THAT(toolkit->errorText(), HasSubstr("C_SetAttributeValue answers 0x00000030"));
    writable = 1;
    EXPECT_EQ(writePair(plainPairs(), "ec"), SIGIL_TK_TOKEN_FULL) << "no room for the key";
    EXPECT_EQ(listed("privkey") + listed("pubkey") + listed("cert"), "");
}

TEST_F(OddAnswers, AModuleHasManyWordsForAWrongPadding)
{
    CK_RV answer = CKR_OK;
    const Instead<&List::C_Decrypt> odd([&](auto own, auto... arguments) {
        own(arguments...);
        return answer;
    });
    const std::string id = openWithPair("rsa");
    for (const CK_RV wrong : {CKR_GENERAL_ERROR, CKR_FUNCTION_FAILED, CKR_DATA_INVALID, CKR_DATA_LEN_RANGE,
             CKR_ENCRYPTED_DATA_INVALID}) {
        answer = wrong;
        EXPECT_EQ(with("Decrypt", id, "cipher"), code(SIGIL_TK_DECRYPT)) << std::hex << wrong;
    }
    answer = CKR_DEVICE_ERROR;
    EXPECT_EQ(with("Decrypt", id, "cipher"), code(SIGIL_TK_TOKEN_MODULE));
    EXPECT_EQ(with("DecryptData", id, envelopeFor("rsa")), code(SIGIL_TK_TOKEN_MODULE)) << "not a wrong padding";
}

TEST_F(OddAnswers, ASearchThatFailsIsNotTakenForNothingFound)
{
    CK_RV answer = CKR_OK;
    bool isPulled = false;
    const Instead<&List::C_FindObjectsInit> failing(
        [&](auto own, auto... arguments) -> CK_RV { return answer == CKR_OK ? own(arguments...) : answer; });
    const Instead<&List::C_GetSlotInfo> silent(
        [&](auto own, auto... arguments) -> CK_RV { return isPulled ? CKR_DEVICE_ERROR : own(arguments...); });
    const std::string id = openWithPair("rsa");
    answer = CKR_DEVICE_ERROR;
    EXPECT_EQ(with("Encrypt", id, "a text"), code(SIGIL_TK_TOKEN_MODULE));
    isPulled = true;
    EXPECT_EQ(with("Encrypt", id, "a text"), code(SIGIL_TK_TOKEN_ABSENT)) << "who does not tell its slot is gone";
}

TEST_F(OddAnswers, AProtectedTokenIsOpenedForReading)
{
    const Instead<&List::C_OpenSession> open_([](auto own, CK_SLOT_ID slot, CK_FLAGS flags, auto... rest) -> CK_RV {
        return (flags & CKF_RW_SESSION) != 0 ? CKR_TOKEN_WRITE_PROTECTED : own(slot, flags, rest...);
    });
    EXPECT_EQ(open("first", static_cast<int>(CKF_RW_SESSION)), SIGIL_TK_TOKEN_FULL);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("write-protected"));
    openAndLogIn("first");
    EXPECT_EQ(writePair(plainPairs(), "ec"), SIGIL_TK_TOKEN_FULL);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("reading only"));
}

/** Odd flags of the token. */
class OddFlags : public OddAnswers {
protected:
    CK_FLAGS set = 0;
    CK_FLAGS cleared = 0;
    CK_RV answer = CKR_OK;

private:
    Instead<&List::C_GetTokenInfo> m_info{[this](auto own, CK_SLOT_ID slot, CK_TOKEN_INFO* info) {
        if (answer != CKR_OK)
            return answer;
        const CK_RV given = own(slot, info);
        info->flags = (info->flags | set) & ~cleared;
        return given;
    }};
};

TEST_F(OddFlags, AReaderWithKeysOfItsOwnGetsNoPin)
{
    bool gotPin = true;
    const Instead<&List::C_Login> reader(
        [&](auto own, CK_SESSION_HANDLE session, CK_USER_TYPE user, unsigned char* pin, unsigned long length) {
            gotPin = pin || length != 0;
            std::string typed = tokenPin;
            return own(session, user, reinterpret_cast<unsigned char*>(typed.data()), typed.size());
        });
    set = CKF_PROTECTED_AUTHENTICATION_PATH;
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(login("not looked at"), 0) << toolkit->errorText();
    EXPECT_FALSE(gotPin);
    EXPECT_EQ(token("Logout"), 0);
}

TEST_F(OddFlags, ATokenThatWantsNoLoginIsAskedWithout)
{
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(with("Sign", "nobody", "a text"), code(SIGIL_TK_TOKEN_LOGIN));
    cleared = CKF_LOGIN_REQUIRED;
    EXPECT_EQ(with("Sign", "nobody", "a text"), code(SIGIL_TK_TOKEN_OBJECT));
}

TEST_F(OddFlags, AWrongPinIsOneWhateverTheTokenTells)
{
    ASSERT_EQ(open("first"), 0);
    set = CKF_USER_PIN_LOCKED;
    EXPECT_EQ(token("ChangePIN", text("999999"), text("222222")), SIGIL_TK_TOKEN_PIN);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("locked now"));
    answer = CKR_DEVICE_ERROR;
    EXPECT_EQ(token("ChangePIN", text("999999"), text("222222")), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(toolkit->errorText(), "The PIN is wrong");
}

TEST_F(OddAnswers, ATokenMayComeWhileTheyAreListed)
{
    int more = 1;
    const Instead<&List::C_GetSlotList> growing([&](auto own, CK_BBOOL present, CK_SLOT_ID* slots, auto* count) {
        if (slots && more-- > 0)
            return static_cast<CK_RV>(CKR_BUFFER_TOO_SMALL);
        return own(present, slots, count);
    });
    EXPECT_THAT(slots(), SizeIs(2));
    EXPECT_LT(more, 1);
    EXPECT_EQ(open("first"), 0);
}
