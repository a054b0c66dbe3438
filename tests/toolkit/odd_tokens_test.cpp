// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A good token that gives an odd answer now and then: SoftHSM's, with the test in between.

#include "tests/toolkit/failure.h"
#include "tests/toolkit/messages.h"
#include "tests/toolkit/tokens.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/tokens/token_envelope.h"
#include "toolkit/engine/tokens/token_objects.h"

#include <gmock/gmock.h>
#include <p11-kit/pkcs11.h>

#include <initializer_list>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

using namespace toolkit_test;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

using List = CK_FUNCTION_LIST;

std::string code(int value) { return "code " + std::to_string(value); }

std::string numberBytes(unsigned long number) { return {reinterpret_cast<const char*>(&number), sizeof number}; }

/** The only recipient of an enveloped message. */
std::string recipientIn(const std::string& message)
{
    const std::string enveloped = children(children(message)[1])[0];
    return children(children(enveloped)[1])[0];
}

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

TEST_F(OddAnswers, PaddingsOfARecipientMayBeWrittenInManyWays)
{
    const std::string id = openWithPair("rsa");
    const std::string message = envelopeFor("rsa", "-keyopt rsa_padding_mode:oaep");
    const std::string algorithm = fromHex("300d06092a864886f70d0101073000");
    ASSERT_NE(message.find(algorithm), message.npos);
    for (const char* const same : {"300d06092a864886f70d0101070500", "300b06092a864886f70d010107"})
        EXPECT_EQ(with("DecryptData", id, replaced(message, algorithm, fromHex(same))), "a text")
            << same << " " << toolkit->errorText();
    const std::string longer = envelopeFor("rsa", "-keyopt rsa_padding_mode:oaep -keyopt rsa_oaep_md:sha256");
    EXPECT_EQ(with("DecryptData", id, longer), code(SIGIL_TK_TOKEN_MECHANISM)) << "SoftHSM has SHA-1 alone";
}

TEST_F(OddAnswers, AnEmptyContentKeyLooksLikeAnyOther)
{
    const std::string id = openWithPair("rsa");
    const std::string message = envelopeFor("rsa");
    const std::string key = children(recipientIn(message))[3];
    plainPairs().write("empty", "");
    plainPairs().run("openssl pkeyutl -encrypt -certin -inkey rsa.pem -in empty -out empty.enc");
    const std::string other = element('\4', plainPairs().read("empty.enc"));
    EXPECT_NE(with("DecryptData", id, replaced(message, key, other)), "a text");
    EXPECT_NE(with("Decrypt", id, plainPairs().read("empty.enc")), code(SIGIL_TK_DECRYPT)) << "it is a key";
}

TEST_F(OddAnswers, AnAgreementThatWasChangedOpensNothing)
{
    const std::string id = openWithPair("ec");
    const std::string message = envelopeFor("ec");
    const std::string recipient = recipientIn(message);
    const std::vector<std::string> fields = children(recipient); // version, sender, algorithm, keys
    const std::string wrap = children(fields[2])[1];
    const std::string key = children(children(fields[3])[0])[1];
    const std::string point = children(children(fields[1])[0])[1];
    const auto oid = [](const char* dotted) { return stringOf(toolkit::der::oid(dotted)); };
    const std::string agreement = children(fields[2])[0];
    const std::string keying = element('\xA1', element('\4', "mixed in"));
    const std::string mixed = element('\xA1', fields[0] + fields[1] + keying + fields[2] + fields[3]);
    const std::string blocks = element('\x30', oid("2.16.840.1.101.3.4.1.2"));
    const std::string shortKey = replaced(message, key, element('\4', std::string(16, 'k')));
    const std::pair<const char*, std::string> changed[] = {
        {"something that both mix in", replaced(message, recipient, mixed)},
        {"another key", replaced(message, key, element('\4', std::string(24, 'k')))},
        {"a point of one byte", replaced(message, point, fromHex("03020004"))},
        {"an unknown agreement", replaced(message, agreement, oid("1.2.3.4"))},
        {"no wrapping", replaced(message, fields[2], element('\x30', agreement))},
        {"nothing for a wrapping", replaced(message, wrap, fromHex("0500"))},
        {"a wrapping that is none", replaced(shortKey, wrap, blocks)},
    };
    for (const auto& [what, other] : changed) {
        ASSERT_NE(other, message) << what;
        EXPECT_EQ(with("DecryptData", id, other), code(SIGIL_TK_DECRYPT)) << what << " " << toolkit->errorText();
    }
}

TEST_F(OddAnswers, TheKeyOfARecipientIsTheOneOfItsPlace)
{
    const std::string message = envelopeFor("ec");
    const std::string recipient = recipientIn(message);
    const std::vector<std::string> fields = children(recipient);
    const std::string first = children(fields[3])[0];
    const std::string second = replaced(first, children(first)[1], element('\4', "second"));
    const std::string keying = element('\xA1', element('\4', "mixed in"));
    const std::string both = replaced(message, recipient,
        element('\xA1', fields[0] + fields[1] + keying + fields[2] + element('\x30', first + second)));
    const auto keyAt = [](const std::string& der, int place) {
        return toolkit::recipientKeyIn(toolkit::view(der), {0, place});
    };
    EXPECT_TRUE(children(first)[1].ends_with(stringOf(keyAt(both, 0).encryptedKey)));
    EXPECT_EQ(keyAt(both, 0).encryptedKey.size(), 24U);
    const toolkit::RecipientKey other = keyAt(both, 1);
    EXPECT_EQ(stringOf(other.encryptedKey), "second");
    EXPECT_EQ(stringOf(other.userKeying), "mixed in");
    EXPECT_EQ(codeOf([&] { keyAt(both, 2); }), SIGIL_TK_CMS_MALFORMED);
    EXPECT_EQ(codeOf([&] { keyAt(both, 3); }), SIGIL_TK_CMS_MALFORMED);
    const std::string empty = replaced(message, children(first)[1], fromHex("0500"));
    EXPECT_EQ(codeOf([&] { keyAt(empty, 0); }), SIGIL_TK_CMS_MALFORMED);
}

TEST_F(OddAttributes, WhatHasNoIdentifierGetsThatOfItsKey)
{
    const auto slot = static_cast<int>(slotOf("first"));
    ByteString certificate(*toolkit, plainPairs().read("rsa.crt"));
    ByteString key(*toolkit, plainPairs().read("rsa.key"));
    for (const std::optional<std::string>& id : {std::optional<std::string>(), std::optional<std::string>("")}) {
        odd = {{CKA_ID, id}};
        ASSERT_EQ((*toolkit)("MEDIA_CARD_WriteCert", slot, text("mine"), certificate.get()), 0);
        ASSERT_EQ((*toolkit)("MEDIA_CARD_WritePriKey", slot, 48, text("mine"), text(tokenPin), key.get()), 0)
            << toolkit->errorText();
        EXPECT_THAT(listed("privkey"), HasSubstr("ID:"));
        const std::string shown = listed("cert");
        const std::string ownId = shown.substr(shown.find("ID:"), 60);
        EXPECT_THAT(listed("privkey"), HasSubstr(ownId.substr(0, ownId.find('\n')))) << "the hash of the key";
        EXPECT_EQ((*toolkit)("MEDIA_CARD_DeletePriKey", slot, text("mine"), text(tokenPin)), 0);
        EXPECT_EQ(listed("privkey"), "");
    }
    odd = {{CKA_VALUE, std::nullopt}};
    EXPECT_EQ(make([&](BINSTR* out) { return (*toolkit)("MEDIA_CARD_ReadCert", slot, text("mine"), out); }),
        code(SIGIL_TK_TOKEN_OBJECT))
        << "an object without a certificate";
}

TEST_F(OddAnswers, PairsThatNoTokenTakesAreRefused)
{
    openAndLogIn("first");
    workshop.run("openssl genpkey -algorithm ed25519 -outform DER -out edwards.key && openssl req -x509 -new"
                 " -key edwards.key -keyform DER -subj /CN=edwards -outform DER -out edwards.crt");
    EXPECT_EQ(writePair(workshop, "edwards"), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(listed("privkey") + listed("cert"), "");
}

TEST_F(OddAnswers, AnEmptyKeyIdentifierIsNone)
{
    openAndLogIn("first");
    workshop.certificate("empty", "/CN=empty", "subjectKeyIdentifier=DER:04:00");
    ASSERT_EQ(writePair(workshop, "empty"), 0) << toolkit->errorText();
    workshop.run("openssl x509 -in empty.pem -noout -pubkey | openssl rsa -pubin -RSAPublicKey_out -outform DER"
                 " -out bits 2>/dev/null && openssl dgst -sha1 -binary bits > id");
    int kind = 0;
    ByteString certificate(*toolkit);
    EXPECT_EQ(make([&](BINSTR* id) { return token("GetCertInfo", 0, &kind, id, certificate.get()); }),
        workshop.read("id"));
}

namespace {

toolkit::Bytes sequence(std::initializer_list<toolkit::View> parts)
{
    return toolkit::der::element(toolkit::der::Sequence, parts);
}

toolkit::Bytes keyInfo(const char* kind, toolkit::View parameters, toolkit::View key)
{
    return sequence({toolkit::Bytes{2, 1, 0}, sequence({toolkit::der::oid(kind), parameters}),
        toolkit::der::element(toolkit::der::OctetString, {key})});
}

} // namespace

TEST(TokenObjects, KeysOfAnotherFormMakeNone)
{
    namespace oid = toolkit::oid;
    using toolkit::Bytes;
    const Bytes one{2, 1, 1};
    const Bytes curve = toolkit::der::oid("1.2.840.10045.3.1.7");
    const Bytes scalar = toolkit::der::element(toolkit::der::OctetString, {Bytes(32, 7)});
    const auto refused = [](const Bytes& info) {
        return codeOf([&] { toolkit::keyTemplate(info, {{}, "mine"}, {}); });
    };
    const Bytes sevenNumbers = sequence({one, one, one, one, one, one, one, one});
    const std::pair<const char*, Bytes> damaged[] = {
        {"no sequence", keyInfo(oid::rsa, {}, one)},
        {"a number too few", keyInfo(oid::rsa, {}, sevenNumbers)},
        {"a scalar without a version", keyInfo(oid::ec, curve, sequence({scalar}))},
        {"no scalar", keyInfo(oid::ec, curve, sequence({one}))},
        {"no curve", keyInfo(oid::ec, {}, sequence({one, scalar}))},
    };
    for (const auto& [what, info] : damaged)
        EXPECT_EQ(refused(info), SIGIL_TK_KEY_UNUSABLE) << what;
    EXPECT_EQ(refused(keyInfo("1.2.3.4", {}, one)), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(refused(keyInfo(oid::ec, curve, sequence({one, scalar}))), SIGIL_TK_OK);
}

TEST(TokenObjects, NumbersLoseTheZerosInFront)
{
    using toolkit::Bytes;
    const Bytes zero{2, 1, 0};
    const Bytes modulus{2, 3, 0, 0x80, 1};
    const Bytes key = sequence({zero, modulus, zero, zero, zero, zero, zero, zero, zero});
    const toolkit::Template made = toolkit::keyTemplate(keyInfo(toolkit::oid::rsa, {}, key), {{}, "mine"}, {});
    const auto valueOf = [&](CK_ATTRIBUTE_TYPE type) {
        for (const CK_ATTRIBUTE& attribute : std::span(made.data(), made.size()))
            if (attribute.type == type)
                return std::string(static_cast<const char*>(attribute.pValue), attribute.ulValueLen);
        return std::string("missing");
    };
    EXPECT_EQ(toHex(valueOf(CKA_MODULUS)), "8001");
    EXPECT_EQ(valueOf(CKA_COEFFICIENT), "");
}
