// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificates from authorities: what is asked for is what comes, and nothing comes of what goes wrong.

#include "tests/toolkit/enrolment.h"
#include "toolkit/engine/enrolment/authority.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/x509/name.h"
#include "toolkit/engine/x509/text.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

using namespace toolkit_test;
using testing::HasSubstr;

TEST_F(Enrolment, TwoPairsComeOfOneRequest)
{
    const Server server = authority();
    const std::string ca = workshop.read("ca.crt");
    const Result result = request(server, {.ca = ca, .withKeyManagement = true});
    ASSERT_EQ(result.code, 0) << result.text;
    EXPECT_EQ(provenSubject(result.certificate, result.key), "subject=CN=Kim,OU=person,O=Test,C=KR\n");
    EXPECT_EQ(provenSubject(result.kmCertificate, result.kmKey), "subject=CN=Kim,OU=person,O=Test,C=KR\n");
    EXPECT_NE(result.certificate, result.kmCertificate);
    EXPECT_NE(opened(result.key, password), opened(result.kmKey, password));
    EXPECT_EQ(result.ca, ca);
    EXPECT_THAT(workshop.run("openssl x509 -in made.pem -noout -text"), HasSubstr("(2048 bit)"));
}

TEST_F(Enrolment, TheAuthoritysCertificateIsHandedOut)
{
    const Server server = authority();
    const Result result = request(server);
    ASSERT_EQ(result.code, 0) << result.text;
    EXPECT_EQ(result.ca, workshop.read("ca.crt"));
    ByteString made(toolkit);
    ByteString key(toolkit);
    ByteString half(toolkit);
    BINSTR* const none = nullptr;
    EXPECT_EQ(toolkit("CMP_CertRequest", text(addressOf(server, "/")), 0, text("ref"), text(secret), text(subject),
                  text(password), none, made.get(), key.get(), half.get(), none),
        0)
        << "nobody wants it: " << toolkit.errorText();
    EXPECT_FALSE(made.empty());
    EXPECT_TRUE(half.empty()) << "a certificate without its key is not asked for";
}

TEST_F(Enrolment, TheCertificateMustLeadToTheAuthorityThatIsNamed)
{
    certificate("other", "CA", "basicConstraints=critical,CA:TRUE");
    const Result result = request(authority(), {.ca = workshop.read("other.crt")});
    expectFailure(result, SIGIL_TK_VERIFY_SIGNATURE);
    EXPECT_EQ(result.ca, workshop.read("other.crt"));
}

TEST_F(Enrolment, TheSecretAloneIsEnough)
{
    const Server server = authority();
    ByteString outputs[] = {ByteString(toolkit), ByteString(toolkit), ByteString(toolkit), ByteString(toolkit)};
    ASSERT_EQ(toolkit("CMP_CertRequest2", text("http://127.0.0.1:" + std::to_string(server.port()) + "/pkix/"), 0,
                  text("ref"), text(secret), text(""), text(password), outputs[0].get(), outputs[1].get(),
                  outputs[2].get(), outputs[3].get()),
        0)
        << toolkit.errorText();
    EXPECT_EQ(provenSubject(outputs[0].bytes(), outputs[1].bytes()), "subject=CN=ref\n");
    EXPECT_EQ(provenSubject(outputs[2].bytes(), outputs[3].bytes()), "subject=CN=ref\n");
}

TEST_F(Enrolment, TheAuthorityMayChooseTheSubjectThatNobodyAskedFor)
{
    const Server server = authority({"--subject", "/C=KR/CN=Lee"});
    const Result result = request(server, {.subject = ""});
    ASSERT_EQ(result.code, 0) << result.text;
    EXPECT_EQ(provenSubject(result.certificate, result.key), "subject=CN=Lee,C=KR\n");
}

TEST_F(Enrolment, WhatGoesWrongHasItsCode)
{
    certificate("old", "Kim", "", "ca", "rsa:2048");
    expectFailure(request(authority(), {.secret = "another"}), SIGIL_TK_CMP_PROTECTION);
    expectFailure(request(authority({"--subject", "/C=KR/O=Test/CN=Lee"})), SIGIL_TK_CMP_OTHER_CERT, "subject");
    expectFailure(request(authority({"--certificate", "old.pem"})), SIGIL_TK_CMP_OTHER_CERT, "key");
    expectFailure(request(authority({"-pkistatus", "2", "-failure", "2", "-statusstring", "not\ttoday"})),
        SIGIL_TK_CMP_REFUSED, "rejection; PKIFailureInfo: badRequest; StatusString: \"not?today\"");
    expectFailure(request(authority({"-poll_count", "2", "-check_after", "3600"})), SIGIL_TK_CMP_WAITING, "3600 s");
    expectFailure(request(authority({"-send_unprotected"})), SIGIL_TK_CMP_PROTECTION);
    expectFailure(request(authority({"-send_error", "-send_unprot_err", "-failure", "2"})), SIGIL_TK_CMP_REFUSED);
}

TEST_F(Enrolment, AShortWaitIsWaited)
{
    const Result result = request(authority({"-poll_count", "2", "-check_after", "1"}));
    EXPECT_EQ(result.code, 0) << result.text;
}

TEST_F(Enrolment, AConfirmationThatIsNotWantedIsNotSent)
{
    const Result result = request(authority({"-grant_implicitconf"}));
    EXPECT_EQ(result.code, 0) << result.text;
}

TEST_F(Enrolment, GarbageIsNoAnswer)
{
    expectFailure(request(Server::answering(workshop, "garbage")), SIGIL_TK_CMP_MALFORMED);
    expectFailure(request(Server::answering(workshop, "")), SIGIL_TK_CMP_MALFORMED);
    expectFailure(request(Server::answering(workshop, std::string(300 * 1024, '0'))), SIGIL_TK_FETCH);
    expectFailure(request(Server::answering(workshop, "garbage", 500)), SIGIL_TK_FETCH);
}

TEST_F(Enrolment, SilenceEnds)
{
    const Server server = Server::rude(workshop, "silent");
    const toolkit::ErrorScope scope;
    try {
        toolkit::Authority("127.0.0.1", server.port(), std::chrono::milliseconds(300)).ask(toolkit::view("hello"));
        FAIL() << "an answer";
    } catch (const toolkit::Error& error) {
        EXPECT_EQ(error.code(), SIGIL_TK_FETCH);
    }
}

TEST_F(Enrolment, TheAuthorityOfTheTestsLeavesNoProcess)
{
    const auto processesHere = [&] {
        int count = 0;
        for (const auto& process : std::filesystem::directory_iterator("/proc")) {
            std::error_code gone;
            count += std::filesystem::read_symlink(process.path() / "cwd", gone) ==
                std::filesystem::canonical(workshop.path("."));
        }
        return count;
    };
    {
        const Server server = authority();
        EXPECT_EQ(request(server).code, 0);
        EXPECT_EQ(processesHere(), 2) << "it and its command";
    }
    EXPECT_EQ(processesHere(), 0);
}

TEST(Authority, ItsTimeBeginsWithTheFirstMessage)
{
    constexpr std::chrono::milliseconds patience{1000};
    std::chrono::milliseconds given{0};
    const toolkit::Authority authority(
        [&](toolkit::View, std::chrono::milliseconds time) {
            given = time;
            return toolkit::Bytes();
        },
        patience);
    std::this_thread::sleep_for(patience); // as long as a token may make a key
    authority.ask(toolkit::view("hello"));
    EXPECT_GT(given.count(), 0);
}

TEST_F(Enrolment, WhatCannotBeAskedForIsRefusedBeforeAnybodyIsAsked)
{
    const Server nobody = Server::answering(workshop, "");
    for (const std::string wrong : {"Kim", "cn=", "cn=Kim,xyz=1", "c=Korea", ","})
        expectFailure(request(nobody, {.subject = wrong}), SIGIL_TK_ARGUMENT);
    expectFailure(request(nobody, {.secret = ""}), SIGIL_TK_ARGUMENT);
    expectFailure(request(nobody, {.ca = "no certificate"}), SIGIL_TK_ENCODING);
    BINSTR* const none = nullptr;
    ByteString out(toolkit);
    const auto ask = [&](const std::string& address, int port, BINSTR* certificate) {
        return toolkit("CMP_CertRequest2", text(address), port, text("ref"), text(secret), text(subject),
            text(password), certificate, out.get(), none, none);
    };
    EXPECT_EQ(ask("127.0.0.1", 1, none), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(ask("", 1, out.get()), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(ask("127.0.0.1", 65536, out.get()), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(ask("ftp://127.0.0.1/", 0, out.get()), SIGIL_TK_URL);
}

TEST_F(Enrolment, ACertificateIsRenewedForTheSameKeyOrAFreshOne)
{
    const Server server = authority();
    for (const std::string& key : {std::string("rsa:2048"), ecKey}) {
        certificate("old", "Kim", "", "ca", key);
        const std::string old = workshop.read("old.key");
        for (const bool newKey : {false, true}) {
            const Result result =
                update(server, workshop.read("old.crt"), old, workshop.read("ca.crt"), {.newKey = newKey});
            ASSERT_EQ(result.code, 0) << key << newKey << result.text;
            EXPECT_EQ(
                provenSubject(result.certificate, result.key, "new password"), "subject=CN=Kim,O=Test,C=KR\n");
            EXPECT_NE(result.certificate, workshop.read("old.crt"));
            EXPECT_EQ(opened(result.key, "new password") == old, !newKey);
            EXPECT_THAT(workshop.run("openssl pkey -inform DER -in made.key -noout -text"),
                HasSubstr(key == ecKey ? "prime256v1" : "Private-Key: (2048 bit"));
        }
    }
}

TEST_F(Enrolment, TheKeyFileOpensTheOldKeyAndTheIdentityRandomStays)
{
    certificate("old", "Kim", "", "ca");
    const std::string random(20, 'R');
    const std::string key = workshop.read("old.key");
    const auto withRandom = toolkit::withIdentityRandom(toolkit::view(key), toolkit::view(random));
    ByteString info(toolkit, {toolkit::chars(withRandom), withRandom.size()});
    ByteString file(toolkit);
    ASSERT_EQ(toolkit("PRIKEY_Encrypt", 0, text(password), info.get(), file.get()), 0);
    const Result result =
        update(authority(), workshop.read("old.crt"), file.bytes(), workshop.read("ca.crt"), {.newPassword = ""});
    ASSERT_EQ(result.code, 0) << result.text;
    ByteString fresh(toolkit, opened(result.key, password));
    ByteString found(toolkit);
    EXPECT_EQ(toolkit("VID_GetRandomFromPriKey", fresh.get(), found.get()), 0);
    EXPECT_EQ(found.bytes(), random);
}

TEST_F(Enrolment, ARenewalThatGoesWrongChangesNothing)
{
    certificate("old", "Kim", "", "ca");
    certificate("other", "Lee", "", "ca");
    certificate("stranger", "CA", "basicConstraints=critical,CA:TRUE");
    const std::string ca = workshop.read("ca.crt");
    const std::string old = workshop.read("old.crt");
    const std::string key = workshop.read("old.key");
    const Server nobody = Server::answering(workshop, "");
    expectFailure(update(nobody, old, workshop.read("other.key"), ca, {}), SIGIL_TK_KEY_MISMATCH);
    expectFailure(update(nobody, old, "no key", ca, {}), SIGIL_TK_KEY_MALFORMED);
    expectFailure(update(nobody, old, key, "", {}), SIGIL_TK_ARGUMENT);
    const Server server = authority();
    expectFailure(update(server, old, key, workshop.read("stranger.crt"), {}), SIGIL_TK_CMP_PROTECTION);
    expectFailure(update(authority({"--subject", "/CN=Lee"}), old, key, ca, {}), SIGIL_TK_CMP_OTHER_CERT);
}

TEST_F(Enrolment, TheContextsTrustVouchesInTheSecondForms)
{
    certificate("old", "Kim", "", "ca");
    const Server server = authority();
    ByteString old(toolkit, workshop.read("old.crt"));
    ByteString key(toolkit, workshop.read("old.key"));
    ByteString fresh(toolkit, "data of before");
    ByteString freshKey(toolkit);
    const auto again = [&] {
        return toolkit("CMP_CertUpdate2", text("127.0.0.1"), server.port(), true, text(password), text(""),
            old.get(), key.get(), fresh.get(), freshKey.get());
    };
    const auto away = [&](ByteString& status) {
        return toolkit(
            "CMP_CertRevoke2", text("127.0.0.1"), server.port(), 0, fresh.get(), freshKey.get(), status.get());
    };
    EXPECT_EQ(again(), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_EQ(fresh.bytes(), "data of before");
    trust("ca");
    ASSERT_EQ(again(), 0) << toolkit.errorText();
    EXPECT_EQ(provenSubject(fresh.bytes(), freshKey.bytes()), "subject=CN=Kim,O=Test,C=KR\n");
    set(freshKey, opened(freshKey.bytes(), password));
    ByteString status(toolkit, "data of before");
    ASSERT_EQ(away(status), 0) << toolkit.errorText();
    EXPECT_EQ(status.bytes(), "PKIStatus: accepted");
}

TEST_F(Enrolment, ACertificateIsRevoked)
{
    const Server server = authority({"--certificate", "old.pem"});
    for (const std::string& key : {std::string("rsa:2048"), ecKey}) {
        certificate("old", "Kim", "", "ca", key);
        ByteString status(toolkit, "data of before");
        EXPECT_EQ(revoke(server, "old", 7, status), SIGIL_TK_ARGUMENT) << "no reason of RFC 5280";
        EXPECT_EQ(revoke(server, "old", 11, status), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(revoke(server, "old", -1, status), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(status.bytes(), "data of before");
        EXPECT_EQ(revoke(server, "old", 1, status), 0) << toolkit.errorText();
        EXPECT_EQ(status.bytes(), "PKIStatus: accepted");
    }
}

TEST_F(Enrolment, ThereIsOneProtocolAndOneKindOfAuthority)
{
    for (const int protocol : {SIGIL_TK_CMP_HTTP_DEFAULT, SIGIL_TK_CMP_HTTP})
        EXPECT_EQ(toolkit("CMP_SetProtocol", protocol), 0);
    for (const int protocol : {-1, 1, 3})
        EXPECT_EQ(toolkit("CMP_SetProtocol", protocol), SIGIL_TK_OPTION);
    EXPECT_EQ(toolkit("CMP_SetCA", int(SIGIL_TK_CMP_ANY_AUTHORITY)), 0);
    EXPECT_EQ(toolkit("CMP_SetCA", 1), SIGIL_TK_OPTION);
}

TEST_F(Enrolment, RecoveryHasNoPublicDefinition)
{
    BINSTR* const none = nullptr;
    EXPECT_EQ(toolkit("CMP_CertRecovery", text("127.0.0.1"), 0, text("ref"), text(secret), none, none, none, none),
        SIGIL_TK_NOT_OFFERED);
    EXPECT_THAT(toolkit.errorText(), HasSubstr("no public definition"));
}

TEST(NameFromText, ReadsWhatNamesAreWrittenAs)
{
    const auto again = [](const std::string& text) { return toolkit::nameText(toolkit::nameFromText(text).get()); };
    for (const std::string same : {"cn=Kim,ou=person,o=Test,c=KR", "cn=\xb1\xe8,c=KR", "o=A, B Co.,c=KR",
             "uid=1+2,serialnumber=7,st=x,l=y,dc=z"})
        EXPECT_EQ(again(same), same);
    EXPECT_EQ(again("C=KR, O=Test, CN=Kim"), "cn=Kim,o=Test,c=KR") << "most general first";
    EXPECT_EQ(again("cn=\xea\xb9\x80"), "cn=\xb1\xe8") << "UTF-8";
    EXPECT_EQ(again("2.5.4.3=Kim"), "cn=Kim");
}
