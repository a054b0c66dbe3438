// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Signed messages, keys and PKCS#12 files, over a toolkit that says what the test wants.

#include "jobs/failure.h"
#include "jobs/pairs.h"
#include "jobs/pkcs12.h"
#include "jobs/signed_message.h"
#include "jobs/store_list.h"
#include "tests/jobs/scripted_toolkit.h"

#include <sigildesk/open_toolkit.h>

#include <functional>
#include <optional>
#include <string>

namespace {

int codeOf(const std::function<void()>& work)
{
    try {
        work();
        return SIGIL_SUCCESS;
    } catch (const host::Failure& failure) {
        return failure.code();
    }
}

host::Secret secret(const std::string& text) { return host::Secret({text.begin(), text.end()}); }

class Messages : public ScriptedToolkit {
protected:
    Messages()
        : ScriptedToolkit(SIGIL_TOOLKIT_GPKI)
    {
        setting.folder = DOUBLES_FOLDER;
    }
    host::SignedMessage message() const { return {setting, setting.toolkit, input}; }

    host::MessageInput input{"", "", "a message", "", false};
};

class Stamped : public Messages {
protected:
    Stamped()
    {
        doubles::answer("GPKI_CMS_GetTimeStampToken", doubles::fills(1, "token"));
        doubles::answer("GPKI_TSP_GetTokenInfo", [](const doubles::Call& call) {
            return doubles::writesText("1 2 3")({"", true, nullptr, {call.arguments[1], call.arguments[4]}});
        });
    }
};

TEST_F(Messages, SayTheirTimeOrNone)
{
    EXPECT_EQ(message().signature(0).time, 0);
    doubles::answer("GPKI_CMS_GetSigner", [](const doubles::Call& call) {
        doubles::fill(call.pointer<BINSTR>(1), "signer");
        std::string("2026-01-02 03:04:05").copy(call.pointer<char>(2), 20);
        return 0;
    });
    const host::Signature signature = message().signature(0);
    EXPECT_EQ(signature.time, host::timeOf("2026-01-02 03:04:05"));
    EXPECT_EQ(signature.certificate, "signer");
}

TEST_F(Stamped, AreBelievedWhenTheStampVerifies)
{
    const std::optional<host::JudgedStamp> stamp = message().stamp(0);
    ASSERT_TRUE(stamp);
    EXPECT_EQ(stamp->code, SIGIL_SUCCESS);
    EXPECT_EQ(stamp->said, "");
    EXPECT_EQ(stamp->stamp.policy, "1.2.3");
}

TEST_F(Stamped, TellWhyTheStampIsNotBelieved)
{
    for (const char* function : {"GPKI_TSP_VerifyToken2", "GPKI_CMS_GetTBTData"}) {
        doubles::forgetCalls();
        doubles::answer(function, 4005);
        const std::optional<host::JudgedStamp> stamp = message().stamp(0);
        ASSERT_TRUE(stamp);
        EXPECT_EQ(stamp->code, 4005) << function;
        EXPECT_EQ(stamp->said, doubles::errorText());
    }
    EXPECT_TRUE(doubles::callsOf("GPKI_TSP_VerifyToken2").empty()) << "it stamps a signature, and there is none";
}

TEST_F(Messages, OfAnEmptyFileAreVerifiedWithTheFile)
{
    input.contentFile = "empty";
    doubles::answer("GPKI_CMS_ProcessSignedData2", SIGIL_TK_CMS_CONTENT);
    doubles::answer("GPKI_CMS_ProcessSignedData_NoContent_File", SIGIL_TK_VERIFY_EXPIRED);
    EXPECT_EQ(message().code(), SIGIL_TK_VERIFY_EXPIRED);
    EXPECT_EQ(message().signers(), 0);
    doubles::answer("GPKI_CMS_ProcessSignedData_NoContent_File", 0);
    doubles::answer("GPKI_CMS_GetSigner", [](const doubles::Call& call) { return call.integer(0) < 2 ? 0 : 3000; });
    EXPECT_EQ(message().code(), SIGIL_SUCCESS);
    EXPECT_EQ(message().signers(), 2);
}

TEST_F(ScriptedToolkit, KeepsTheKeysWhosePasswordCannotBeChanged)
{
    doubles::answer("HVTK_PRIKEY_ChangePasswd", doubles::fills(3, "fresh"));
    host::Secret from = secret("from"), to = secret("to");
    host::PairContents contents{"certificate", "key", {}, {}};
    EXPECT_EQ(codeOf([&] { host::changePassword(crypto, contents, from, to); }), SIGIL_SUCCESS);
    EXPECT_EQ(contents.key, "fresh");
    doubles::answer("HVTK_PRIKEY_ChangePasswd", doubles::fills(3, "half", SIGIL_TK_KEY_WRONG_PASSWORD));
    EXPECT_EQ(codeOf([&] { host::changePassword(crypto, contents, from, to); }), SIGIL_TK_KEY_WRONG_PASSWORD);
    EXPECT_EQ(contents.key, "fresh");
}

TEST_F(ScriptedToolkit, PutsNoKeyOfAnUnreadableCertificateUnderAPassword)
{
    certificates = {{"object", {"cn=holder", "cn=root"}}};
    doubles::answer("HVTK_MEDIA_DISK_ReadFile", doubles::fills(1, "file"));
    doubles::answer("HVTK_PFX_ImportMultiPair2", [](const doubles::Call& call) {
        for (const std::size_t list : {3, 4}) {
            doubles::release(call.pointer<BINSTR>(list));
            doubles::fill(call.pointer<BINSTR>(list), "list");
        }
        return 0;
    });
    doubles::answer("HVTK_UTIL_GetObjectCount", [](const doubles::Call& call) {
        *call.pointer<int>(1) = 1;
        return 0;
    });
    doubles::answer("HVTK_UTIL_GetObject", doubles::fills(2, "object"));
    doubles::answer("HVTK_CERT_GetKeyUsage", doubles::writesText("digitalSignature"));
    doubles::answer("HVTK_CERT_GetCertPolicy_PolicyID", 3104);
    host::Secret password = secret("password");
    host::PairContents contents;
    EXPECT_EQ(host::readPkcs12(crypto, folder.write("file.pfx", "file"), password, contents),
        SIGIL_CERTIFICATE_UNREADABLE);
    EXPECT_TRUE(doubles::callsOf("HVTK_PRIKEY_Encrypt").empty());
}

TEST_F(ScriptedToolkit, ListsNothingWithoutTheSettingsOfTheList)
{
    setting.folder = DOUBLES_FOLDER;
    EXPECT_EQ(codeOf([&] { host::storeList(setting, folder.path()); }), SIGIL_SETTINGS_INCOMPLETE);
}

} // namespace
