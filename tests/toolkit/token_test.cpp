// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Tokens as wholes: slots, what tokens say of themselves, sessions, PINs and the certificates on them; and modules that
// misbehave.

#include "tests/toolkit/tokens.h"

#include <gmock/gmock.h>
#include <p11-kit/pkcs11.h>

#include <cstddef>
#include <filesystem>
#include <set>

using namespace toolkit_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

static_assert(sizeof(PKCS11_TOKEN_INFO) == 208 && sizeof(PKCS11_TOKEN_INFO) == sizeof(CK_TOKEN_INFO));
static_assert(offsetof(PKCS11_TOKEN_INFO, utcTime) == offsetof(CK_TOKEN_INFO, utcTime));
static_assert(offsetof(PKCS11_TOKEN_INFO, flags) == 96);
static_assert(offsetof(PKCS11_TOKEN_INFO, ulFreePrivateMemory) == 176);
static_assert(offsetof(PKCS11_TOKEN_INFO, hardwareVersion) == 184);
static_assert(offsetof(PKCS11_TOKEN_INFO, firmwareVersion) == 186);
static_assert(offsetof(PKCS11_TOKEN_INFO, utcTime) == 188);

namespace {

constexpr int readOnly = 4;
constexpr int readWrite = 2;
constexpr unsigned long userPinInitialized = 8;
constexpr unsigned long tokenInitialized = 0x400;

/** On both toolkits. */
class Tokens : public TokenTest, public testing::WithParamInterface<const char*> {
protected:
    Tokens()
        : TokenTest(GetParam())
    {
    }

    /** Labels of all tokens. */
    std::vector<std::string> labels() const
    {
        std::vector<std::string> all;
        for (const unsigned long slot : slots())
            all.push_back(fixedText(info(slot).label));
        return all;
    }
};
INSTANTIATE_TEST_SUITE_P(Toolkits, Tokens, testing::Values("HVTK_", "GPKI_"),
    [](const auto& one) { return std::string(one.param).substr(0, 4); });

/** What only the maker's toolkit has. */
class MakerTokens : public TokenTest {
protected:
    MakerTokens()
        : TokenTest("HVTK_")
    {
    }
};

/** The odd module beside SoftHSM or alone. */
class OddTokens : public TokenTest {
protected:
    OddTokens()
        : TokenTest("HVTK_")
    {
    }

    void alone(const std::string& start = {}) const
    {
        std::filesystem::remove(workshop.path("modules/softhsm.module"));
        workshop.addOdd("odd", start);
    }
    int slotList() const
    {
        std::vector<unsigned long> numbers(16);
        unsigned long count = numbers.size();
        return token("GetSlotList", numbers.data(), &count);
    }
};

} // namespace

TEST_P(Tokens, ListsTheSlotsThatHoldAToken)
{
    // SoftHSM always has one token more, that was never initialised.
    EXPECT_THAT(labels(), ElementsAre("first", ""));
    workshop.token("second");
    toolkit = std::make_unique<ToolkitLibrary>(GetParam());
    EXPECT_THAT(labels(), testing::UnorderedElementsAre("first", "second", ""));
}

TEST_P(Tokens, TellsTheNumberWhenThereIsTooLittleRoom)
{
    unsigned long number = 99;
    unsigned long count = 1;
    EXPECT_EQ(token("GetSlotList", &number, &count), SIGIL_TK_BUFFER_TOO_SMALL);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(number, 99U);
    EXPECT_EQ(token("GetSlotList", &number, static_cast<unsigned long*>(nullptr)), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(token("GetSlotList", static_cast<unsigned long*>(nullptr), &count), SIGIL_TK_ARGUMENT);
}

TEST_P(Tokens, AnswersNoneWithoutAnyModule)
{
    std::filesystem::remove(workshop.path("modules/softhsm.module"));
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_P(Tokens, TellsWhatATokenSaysOfItself)
{
    const PKCS11_TOKEN_INFO first = info(slotOf("first"));
    EXPECT_EQ(fixedText(first.manufacturerID), "SoftHSM project");
    EXPECT_NE(first.flags & tokenInitialized, 0U);
    EXPECT_NE(first.flags & userPinInitialized, 0U);
    EXPECT_EQ(first.ulMinPinLen, 4U);
    EXPECT_EQ(first.hardwareVersion.major, 2U);
    EXPECT_EQ(std::string(first.utcTime, first.utcTime + 2), "20");
    PKCS11_TOKEN_INFO none{};
    EXPECT_EQ(token("GetTokenInfo", 77UL, &none), SIGIL_TK_TOKEN_ABSENT);
    EXPECT_EQ(token("GetTokenInfo", slotOf("first"), static_cast<PKCS11_TOKEN_INFO*>(nullptr)), SIGIL_TK_ARGUMENT);
}

TEST_P(Tokens, LogInOnASession)
{
    EXPECT_EQ(token("Login", text(tokenPin)), SIGIL_TK_TOKEN_SESSION);
    EXPECT_EQ(token("Login", static_cast<char*>(nullptr)), SIGIL_TK_TOKEN_SESSION);
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(token("Login", static_cast<char*>(nullptr)), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(login("999999"), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(login("1"), SIGIL_TK_TOKEN_PIN) << "too short";
    EXPECT_EQ(login(tokenPin), 0) << "the session stayed open";
    EXPECT_EQ(login(tokenPin), 0) << "logged in already";
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_EQ(token("CloseSession"), 0);
    EXPECT_EQ(token("CloseSession"), SIGIL_TK_TOKEN_SESSION);
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_SESSION);
}

TEST_P(Tokens, ANewSessionIsNotLoggedIn)
{
    openAndLogIn("first");
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_LOGIN);
}

TEST_P(Tokens, SessionsEndWithTheirContext)
{
    openAndLogIn("first");
    toolkit = std::make_unique<ToolkitLibrary>(GetParam());
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_LOGIN);
}

TEST_P(Tokens, ChangeTheirPin)
{
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(token("ChangePIN", text("999999"), text("222222")), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(token("ChangePIN", text(tokenPin), text("1")), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(token("ChangePIN", text(tokenPin), text("222222")), 0);
    EXPECT_EQ(login(tokenPin), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(login("222222"), 0);
}

TEST_P(Tokens, RefuseUnknownFlagsAndWritingInAReadingSession)
{
    EXPECT_EQ(open("first", 1), SIGIL_TK_OPTION);
    EXPECT_EQ(open("first", readWrite), 0);
    ASSERT_EQ(open("first", readOnly), 0);
    EXPECT_EQ(token("ChangePIN", text(tokenPin), text("222222")), SIGIL_TK_TOKEN_FULL);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("reading only"));
}

TEST_P(Tokens, TellTheirCertificates)
{
    workshop.certificate("sign", "/CN=sign", "keyUsage=digitalSignature");
    workshop.certificate("km", "/CN=km", "keyUsage=keyEncipherment");
    workshop.certificate("both", "/CN=both", "keyUsage=keyEncipherment,nonRepudiation");
    workshop.certificate("list", "/CN=list", "keyUsage=cRLSign");
    for (const char* name : {"sign", "km", "both", "list"})
        workshop.pkcs11Tool(std::string("--token-label first --login --pin ") + tokenPin +
            " --type cert --write-object " + name + ".crt --id " + toHex(name) + " --label " + name);
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(certificateCount(), 4);
    std::vector<std::string> seen;
    for (int i = 0; i < 4; ++i) {
        ByteString id(*toolkit);
        ByteString certificate(*toolkit);
        int kind = 0;
        ASSERT_EQ(token("GetCertInfo", i, &kind, id.get(), certificate.get()), 0) << toolkit->errorText();
        EXPECT_EQ(certificate.bytes(), workshop.read(id.bytes() + ".crt"));
        seen.push_back(id.bytes() + " " + std::to_string(kind));
        EXPECT_EQ(make([&](BINSTR* out) { return token("ReadCert", id.get(), out); }), certificate.bytes());
    }
    EXPECT_THAT(seen, testing::UnorderedElementsAre("sign 1", "km 2", "both 1", "list 1"));
}

TEST_P(Tokens, RefuseCertificatesThatAreNotThere)
{
    int kind = 0;
    ByteString id(*toolkit, "nobody");
    ByteString none(*toolkit);
    EXPECT_EQ(token("GetCertCnt", &kind), SIGIL_TK_TOKEN_SESSION);
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(certificateCount(), 0);
    for (const int index : {-1, 0, 1})
        EXPECT_EQ(token("GetCertInfo", index, &kind, none.get(), none.get()), SIGIL_TK_INDEX);
    EXPECT_EQ(token("ReadCert", id.get(), none.get()), SIGIL_TK_TOKEN_OBJECT);
    EXPECT_TRUE(none.empty());
}

TEST_F(MakerTokens, OpenBySlotWithPinByNameAndTheFirst)
{
    EXPECT_EQ(token("OpenSessionWithSlotID", slotOf("first"), text("999999"), 0), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(login(tokenPin), 0) << "the session stayed open";
    EXPECT_EQ(token("OpenSessionWithSlotID", slotOf("first"), text(tokenPin), 0), 0);
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("OpenSessionWithTokenName", text("nobody"), 0), SIGIL_TK_TOKEN_ABSENT);
    EXPECT_EQ(login(tokenPin), 0) << "what could not be opened left the session alone";
    EXPECT_EQ(token("OpenSessionWithTokenName", text("first"), 0), 0);
    EXPECT_EQ(token("OpenSession", text(tokenPin)), 0);
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("OpenSession", static_cast<char*>(nullptr)), 0);
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_LOGIN) << "without a PIN there is no login";
}

TEST_F(MakerTokens, InitialiseTheFirstTokenThatNeverWas)
{
    EXPECT_EQ(token("InitToken", text(securityPin), text(std::string(33, 'x'))), SIGIL_TK_ARGUMENT);
    ASSERT_EQ(token("InitToken", text(securityPin), text("second")), 0) << toolkit->errorText();
    toolkit = std::make_unique<ToolkitLibrary>("HVTK_");
    EXPECT_EQ(info(slotOf("second")).flags & userPinInitialized, 0U);
    ASSERT_EQ(open("second"), 0);
    EXPECT_EQ(login(tokenPin), SIGIL_TK_TOKEN_PIN) << "the user's PIN was never set";
    EXPECT_THAT(toolkit->errorText(), HasSubstr("never set"));
}

TEST_F(MakerTokens, InitialiseATokenWithItsPins)
{
    const std::string korean = "\xBA\xB8\xBE\xC8"; // CP949
    const unsigned long slot = slotOf("first");
    ASSERT_EQ(open("first"), 0);
    EXPECT_EQ(token("InitTokenWithSlotID", slot, text("999999"), text("222222"), text(korean)), SIGIL_TK_TOKEN_PIN);
    ASSERT_EQ(token("InitTokenWithSlotID", slot, text(securityPin), text("222222"), text(korean)), 0)
        << toolkit->errorText();
    ASSERT_EQ(open("\xEB\xB3\xB4\xEC\x95\x88"), 0);
    EXPECT_EQ(login("222222"), 0);
    ASSERT_EQ(token("OpenSessionWithTokenName", text(korean), 0), 0);
}

TEST_F(MakerTokens, InitialisingAnotherTokenLeavesTheSessionOpen)
{
    openAndLogIn("first");
    ASSERT_EQ(token("InitTokenWithSlotID", slotOf(""), text(securityPin), text("222222"), text("second")), 0)
        << toolkit->errorText();
    EXPECT_EQ(token("Logout"), 0);
    ASSERT_EQ(token("InitTokenWithSlotID", slotOf("first"), text(securityPin), text("222222"), text("first")), 0);
    EXPECT_EQ(token("Logout"), SIGIL_TK_TOKEN_SESSION);
}

TEST_F(OddTokens, HaveANumberOfTheirOwnWhereTwoModulesNumberAlike)
{
    workshop.addOdd("odd");
    std::filesystem::copy(SIGILDESK_ODD_MODULE, workshop.path("twin.so"));
    workshop.add("twin", workshop.path("twin.so"));
    const auto numbers = slots();
    EXPECT_THAT(std::set(numbers.begin(), numbers.end()), SizeIs(4));
    int odd = 0;
    for (const unsigned long number : numbers)
        odd += fixedText(info(number).label) == "odd" ? 1 : 0;
    EXPECT_EQ(odd, 2);
}

TEST_F(OddTokens, AModuleThatCrashesHangsOrRefusesIsNamed)
{
    const std::pair<const char*, const char*> cases[] = {{"crash", "odd crashes while it starts"},
        {"refuse", "odd does not start"}, {"chatter", "odd does not start"}, {"slotless", "odd does not start"},
        {"hang", "odd hangs while it starts"}};
    for (const auto& [start, sentence] : cases) {
        toolkit = std::make_unique<ToolkitLibrary>("HVTK_");
        alone(start);
        EXPECT_EQ(slotList(), SIGIL_TK_TOKEN_MODULE) << start;
        EXPECT_THAT(toolkit->errorText(), HasSubstr(sentence));
    }
}

TEST_F(OddTokens, AllThatDoNotStartAreNamed)
{
    alone("refuse");
    std::filesystem::copy(SIGILDESK_ODD_MODULE, workshop.path("second.so"));
    workshop.add("second", workshop.path("second.so"), "slotless");
    workshop.write("modules/third.module", "remote: |false\n");
    EXPECT_EQ(slotList(), SIGIL_TK_TOKEN_MODULE);
    for (const char* name : {"odd", "second", "third"})
        EXPECT_THAT(toolkit->errorText(), HasSubstr(std::string(name) + " does not start"));
    EXPECT_THAT(toolkit->errorText(), HasSubstr("start, "));
}

TEST_F(OddTokens, ADamagedConfigurationIsTold)
{
    workshop.write("pkcs11.conf", "user-config: sometimes\n");
    EXPECT_EQ(slotList(), SIGIL_TK_TOKEN_MODULE);
    EXPECT_NE(toolkit->errorText(), "");
}

TEST_F(OddTokens, WhoTriesThemOutSaysAYesOrNothing)
{
    const std::string probe = SIGILDESK_LIBRARY_FOLDER "/token-probe";
    EXPECT_EQ(workshop.run(probe + " " SIGILDESK_ODD_MODULE), "+");
    for (const std::string arguments : {"", "/no/such/module.so", "/etc/passwd", "libc.so.6",
             SIGILDESK_ODD_MODULE " refuse", SIGILDESK_ODD_MODULE " slotless"})
        EXPECT_EQ(workshop.run(probe + " " + arguments + " || echo failed"), "failed\n") << arguments;
    for (const std::string list : {"refuse", "none"})
        EXPECT_EQ(
            workshop.run("ODD_MODULE_LIST=" + list + " " + probe + " " SIGILDESK_ODD_MODULE " || echo failed"),
            "failed\n")
            << list;
    EXPECT_EQ(workshop.run(probe + " " SIGILDESK_ODD_MODULE " >&- || echo failed"), "failed\n") << "nobody listens";
}

TEST_F(OddTokens, AModuleThatFailsDoesNotHideTheOthers)
{
    workshop.addOdd("odd", "crash");
    EXPECT_EQ(open("first"), 0) << toolkit->errorText();
    toolkit = std::make_unique<ToolkitLibrary>("HVTK_");
    workshop.addOdd("odd");
    EXPECT_THAT(slots(), SizeIs(3));
    oddBehaviour().failing = true;
    EXPECT_THAT(slots(), SizeIs(2));
}

TEST_F(OddTokens, TheStoreOfTrustedRootsIsNoToken)
{
    workshop.write("modules/odd.module", "module: " SIGILDESK_ODD_MODULE "\ntrust-policy: yes\n");
    EXPECT_THAT(slots(), SizeIs(2)) << "SoftHSM's alone";
    EXPECT_EQ(oddBehaviour().starts, 0);
    toolkit = std::make_unique<ToolkitLibrary>("HVTK_");
    workshop.write("modules/odd.module", "module: " SIGILDESK_ODD_MODULE "\ntrust-policy: no\n");
    EXPECT_THAT(slots(), SizeIs(3));
}

TEST_F(OddTokens, AModuleIsStartedAtTheFirstTokenCall)
{
    alone();
    ByteString random(*toolkit);
    EXPECT_EQ((*toolkit)("CRYPT_GenRandom", 8, random.get()), 0);
    EXPECT_THROW(oddBehaviour(), std::runtime_error) << "loaded before it was needed";
    EXPECT_THAT(slots(), SizeIs(1));
    EXPECT_EQ(oddBehaviour().starts, 1);
    const ToolkitLibrary another("HVTK_");
    unsigned long number = 0;
    unsigned long count = 1;
    EXPECT_EQ(another("PKCS11_GetSlotList", &number, &count), 0);
    EXPECT_EQ(oddBehaviour().starts, 1) << "all contexts share it";
}

TEST_F(OddTokens, ATokenThatIsPulledOutIsGone)
{
    alone();
    ASSERT_EQ(open("odd"), 0);
    const unsigned long slot = slotOf("odd");
    ASSERT_EQ(login("1234"), 0);
    oddBehaviour().pulled = true;
    int count = 0;
    EXPECT_EQ(token("GetCertCnt", &count), SIGIL_TK_TOKEN_ABSENT);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("taken out"));
    EXPECT_EQ(login("1234"), SIGIL_TK_TOKEN_ABSENT);
    EXPECT_THAT(slots(), IsEmpty());
    PKCS11_TOKEN_INFO info{};
    EXPECT_EQ(token("GetTokenInfo", slot, &info), SIGIL_TK_TOKEN_ABSENT);
    EXPECT_EQ(token("CloseSession"), 0);
    oddBehaviour().pulled = false;
    EXPECT_THAT(slots(), ElementsAre(slot)) << "the slot keeps its number";
    EXPECT_EQ(token("GetTokenInfo", slot, &info), 0);
}

TEST_F(OddTokens, APinThatLocksSaysSoBeforeAndAfter)
{
    alone();
    ASSERT_EQ(open("odd"), 0);
    EXPECT_EQ(login("0000"), SIGIL_TK_TOKEN_PIN);
    EXPECT_EQ(toolkit->errorText(), "The PIN is wrong");
    EXPECT_EQ(login("0000"), SIGIL_TK_TOKEN_PIN);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("the next wrong one locks it"));
    EXPECT_EQ(login("0000"), SIGIL_TK_TOKEN_PIN);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("locked now"));
    EXPECT_EQ(login("1234"), SIGIL_TK_TOKEN_LOCKED);
}

TEST_F(OddTokens, AModuleThatLiesIsBounded)
{
    alone();
    ASSERT_EQ(open("odd"), 0);
    int count = 0;
    oddBehaviour().endless = true;
    EXPECT_EQ(token("GetCertCnt", &count), SIGIL_TK_TOKEN_MODULE);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("too many objects"));
    oddBehaviour().endless = false;
    oddBehaviour().lyingLengths = true;
    EXPECT_EQ(token("GetCertCnt", &count), SIGIL_TK_TOKEN_MODULE);
    EXPECT_THAT(toolkit->errorText(), HasSubstr("size of an attribute"));
}

TEST_F(OddTokens, SessionsAreClosedAtTheModule)
{
    alone();
    ASSERT_EQ(open("odd"), 0);
    ASSERT_EQ(open("odd"), 0);
    EXPECT_EQ(oddBehaviour().sessions, 1);
    const ToolkitLibrary another("HVTK_");
    EXPECT_EQ(another("PKCS11_OpenSessionWithTokenName", text("odd"), 0), 0);
    EXPECT_EQ(oddBehaviour().sessions, 2);
    void* context = another.context();
    toolkit.reset();
    EXPECT_EQ(oddBehaviour().sessions, 1) << (context ? "ended with its context" : "");
}
