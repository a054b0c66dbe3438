// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Signed messages in memory, against other programs: openssl cms, GnuTLS's certtool, NSS's cmsutil.

#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using namespace toolkit_test;

namespace {

class SignedMessages : public FaceMessages { };
/** What only one face has. */
class HvtkSignedMessages : public FaceMessages { };
class GpkiSignedMessages : public FaceMessages { };

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, SignedMessages, testing::Values("HVTK_", "GPKI_"), faceName);
INSTANTIATE_TEST_SUITE_P(Faces, HvtkSignedMessages, testing::Values("HVTK_"), faceName);
INSTANTIATE_TEST_SUITE_P(Faces, GpkiSignedMessages, testing::Values("GPKI_"), faceName);

TEST_P(SignedMessages, AnAttachedMessageIsReadByOtherPrograms)
{
    for (const std::string signer : {"rsa", "ec"}) {
        write("message", sign(signer));
        run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
        EXPECT_EQ(read("read"), content) << signer;
        run("certtool --p7-verify --inder --infile message --load-ca-certificate root.pem");
        run("certtool --p7-info --p7-show-data --inder --infile message --outfile read");
        EXPECT_THAT(read("read"), testing::HasSubstr("the content")) << signer;
        run("openssl cms -cmsout -print -inform DER -in message");
        EXPECT_THAT(read("output.txt"),
            testing::AllOf(testing::HasSubstr("version: 1"), testing::HasSubstr("issuerAndSerialNumber"),
                testing::Not(testing::HasSubstr("S/MIME Capabilities"))));
    }
}

TEST_P(SignedMessages, AnAttachedMessageIsReadByNss)
{
    makeNssDatabase();
    time.clear(); // it verifies the certificate at the signing time
    for (const std::string signer : {"rsa", "ec"}) {
        write("message", sign(signer));
        run("cmsutil -D -d nss -i message -o read");
        EXPECT_EQ(read("read"), content) << signer;
    }
}

TEST_P(SignedMessages, MessagesOfOtherProgramsAreRead)
{
    for (const std::string signer : {"rsa", "ec"}) {
        const std::string by = " -signer " + signer + ".pem -inkey " + signer + ".key.pem ";
        write("content", content);
        for (const std::string options : {"", "-noattr", "-keyid", "-md sha512", "-stream -indef",
                 "-certfile root.pem", "-econtent_type 1.2.3.4", "-keyopt rsa_padding_mode:pss"}) {
            if (signer == "ec" && options.starts_with("-keyopt"))
                continue;
            run("openssl cms -sign -binary -nodetach -outform DER -in content -out message" + by + options);
            EXPECT_EQ(processed(read("message")), content) << signer << options << toolkit.errorText();
        }
        run("certtool --p7-sign --load-certificate " + signer + ".pem --load-privkey " + signer +
            ".key.pem --infile content --outder --outfile message --p7-time");
        EXPECT_EQ(processed(read("message")), content) << signer << toolkit.errorText();
    }
}

TEST_P(SignedMessages, MessagesOfNssAreRead)
{
    makeNssDatabase();
    write("content", content);
    run("cmsutil -S -d nss -N rsa -G -i content -o message");
    EXPECT_EQ(processed(read("message")), content) << toolkit.errorText();
    run("cmsutil -S -d nss -N rsa -T -i content -o message");
    EXPECT_EQ(processed(read("message"), content), content) << toolkit.errorText();
}

TEST_P(SignedMessages, HashAndSchemeOfTheContextAreUsed)
{
    ASSERT_EQ(toolkit("API_SetHashAlgo", static_cast<int>(SIGIL_TK_HASH_SHA512)), 0);
    if (hvtk()) {
        ASSERT_EQ(toolkit("CRYPT_SetRSAVersion", static_cast<int>(SIGIL_TK_RSA_PSS)), 0);
    }
    for (const std::string signer : {"rsa", "ec"}) {
        write("message", sign(signer));
        run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
        run("openssl cms -cmsout -print -inform DER -in message");
        EXPECT_THAT(read("output.txt"), testing::HasSubstr("sha512"));
        if (hvtk() && signer == "rsa") {
            EXPECT_THAT(read("output.txt"), testing::HasSubstr("rsassaPss"));
        }
        EXPECT_EQ(processed(read("message")), content);
    }
}

TEST_P(SignedMessages, AKeyForPssAloneSignsSo)
{
    write("message", sign("pss"));
    run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
    EXPECT_EQ(read("read"), content);
    EXPECT_EQ(processed(read("message")), content) << toolkit.errorText();
    write("content", content);
    run("openssl cms -sign -binary -nodetach -outform DER -in content -out message -signer pss.pem -inkey "
        "pss.key.pem "
        "-keyopt rsa_padding_mode:pss");
    EXPECT_EQ(processed(read("message")), content) << toolkit.errorText();
}

TEST_P(SignedMessages, TheSigningTimeIsWritten)
{
    ASSERT_EQ(processed(sign("rsa")), content);
    EXPECT_EQ(signerSubject(0), "CN = rsa 2026-01-02 03:04:05");
    time.clear();
    ASSERT_EQ(processed(sign("rsa")), content);
    EXPECT_THAT(signerSubject(0), testing::StartsWith("CN = rsa 20"));
    time = "2055-01-02 03:04:05"; // written in another form
    ASSERT_EQ(processed(sign("rsa")), content);
    EXPECT_EQ(signerSubject(0), "CN = rsa 2055-01-02 03:04:05");
    time = "yesterday";
    EXPECT_EQ(sign("rsa"), "code 3007");
}

TEST_P(SignedMessages, ASigningTimeThatIsNoTimeIsNotTold)
{
    std::string message = sign("rsa");
    const std::size_t at = message.find("260102030405Z");
    ASSERT_NE(at, message.npos);
    message[at - 2] = '\4'; // an OCTET STRING
    const std::string signer = children(children(children(children(message)[1])[0]).back())[0];
    std::string attributes = children(signer)[3];
    attributes[0] = '\x31'; // as they are signed
    write("attributes", attributes);
    run("openssl dgst -sha256 -sign rsa.key.pem -out signature attributes");
    const std::string old = signatureIn(message);
    EXPECT_EQ(processed(message.replace(message.find(old), old.size(), read("signature"))), content)
        << toolkit.errorText();
    EXPECT_EQ(signerSubject(0), "CN = rsa ");
}

TEST_P(SignedMessages, SignersAreAdded)
{
    const std::string one = sign("rsa");
    time = "2026-05-06 07:08:09";
    const std::string two = addSigner("ec", one);
    write("message", two);
    run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
    int count = 0;
    ByteString data(toolkit);
    ASSERT_EQ(process(two, data, 0, &count), 0) << toolkit.errorText();
    EXPECT_EQ(data.bytes(), content);
    EXPECT_EQ(count, 2);
    EXPECT_THAT((std::array{signerSubject(0), signerSubject(1)}),
        testing::UnorderedElementsAre("CN = rsa 2026-01-02 03:04:05", "CN = ec 2026-05-06 07:08:09"));
    EXPECT_EQ(signerSubject(2), "code 3902");
    EXPECT_EQ(signerSubject(-1), "code 3902");
    // What was there stays, byte for byte.
    for (const std::string& kept : {content, file("rsa.crt"), signatureIn(one)})
        EXPECT_THAT(two, testing::HasSubstr(kept));
    const std::string three = addSigner("other", two);
    EXPECT_EQ(processed(three), content);
    const std::string twice = addSigner("rsa", one);
    EXPECT_EQ(processed(twice), content) << toolkit.errorText();
    EXPECT_EQ(twice.find(file("rsa.crt")), twice.rfind(file("rsa.crt"))) << "its certificate is there already";
    EXPECT_EQ(addSigner("rsa", "no message"), "code 3900");
}

TEST_P(SignedMessages, ASignerIsAddedToADetachedMessageWithTheSameHash)
{
    write("content", content);
    run("openssl cms -sign -binary -outform DER -md sha256 -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    const std::string two = addSigner("ec", read("message"));
    EXPECT_EQ(processed(two, content), content) << toolkit.errorText();
    run("openssl cms -sign -binary -outform DER -md sha512 -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    EXPECT_EQ(addSigner("ec", read("message")), "code 3901");
}

TEST_P(SignedMessages, TheContentNeedNotBeHandedOut)
{
    ByteString message(toolkit, sign("rsa"));
    int count = 0;
    BINSTR* const nowhere = nullptr;
    EXPECT_EQ(hvtk() ? toolkit("CMS_ProcessSignedData", 0, message.get(), nowhere, &count)
                     : toolkit("CMS_ProcessSignedData2", message.get(), nowhere, &count),
        0)
        << toolkit.errorText();
    EXPECT_EQ(count, 1);
}

TEST_P(SignedMessages, BeforeAnyMessageThereIsNoSigner)
{
    EXPECT_EQ(signerSubject(0), "code 3902");
    ASSERT_EQ(processed(sign("rsa")), content);
    EXPECT_EQ(processed("no message"), "code 3900");
    EXPECT_EQ(signerSubject(0), "code 3902") << "of the message before";
}

TEST_P(SignedMessages, ADetachedMessageNeedsItsContent)
{
    write("content", content);
    for (const std::string options : {"", "-noattr"}) {
        run("openssl cms -sign -binary -outform DER -in content -out message -signer rsa.pem -inkey rsa.key.pem " +
            options);
        EXPECT_EQ(processed(read("message"), content), content);
        EXPECT_EQ(processed(read("message"), content + "x"), "code 3901") << options;
        EXPECT_EQ(processed(read("message")), "code 3901") << options;
    }
}

TEST_P(SignedMessages, AWrongSignatureOrAMissingCertificateIsTold)
{
    std::string message = sign("rsa");
    const std::string signature = signatureIn(message);
    std::string wrong = signature;
    wrong[5] = static_cast<char>(wrong[5] ^ 1);
    EXPECT_EQ(processed(message.replace(message.find(signature), signature.size(), wrong)), "code 3403");
    write("content", content);
    run("openssl cms -sign -binary -nodetach -nocerts -outform DER -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    EXPECT_EQ(processed(read("message")), "code 3902");
    run("openssl crl2pkcs7 -nocrl -certfile rsa.pem -outform DER -out message");
    EXPECT_EQ(processed(read("message"), content), "code 3902") << "nobody signed it";
    EXPECT_EQ(processed(envelope("rsa", 0)), "code 3904");
}

TEST_P(SignedMessages, AKeyOfAnotherCertificateDoesNotSign)
{
    ByteString certificate(toolkit, file("rsa.crt"));
    ByteString key(toolkit, file("ec.key"));
    ByteString data(toolkit, content);
    ByteString out(toolkit);
    const int code = hvtk()
        ? toolkit("CMS_MakeSignedData", 0, certificate.get(), key.get(), data.get(), text(time), out.get())
        : toolkit("CMS_MakeSignedData", certificate.get(), key.get(), data.get(), text(time), out.get());
    EXPECT_EQ(code, SIGIL_TK_KEY_MISMATCH);
    EXPECT_TRUE(out.empty());
}

TEST_P(SignedMessages, WrongArgumentsAreRefused)
{
    ByteString none(toolkit);
    ByteString out(toolkit);
    if (hvtk()) {
        EXPECT_EQ(toolkit("CMS_ProcessSignedData", 0, none.get(), out.get(), nullptr), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(toolkit("CMS_ProcessSignedData", 2, none.get(), out.get(), nullptr), SIGIL_TK_ARGUMENT);
        ByteString message(toolkit, sign("rsa"));
        EXPECT_EQ(toolkit("CMS_ProcessSignedData", 2, message.get(), out.get(), nullptr), SIGIL_TK_OPTION);
        EXPECT_EQ(sign("rsa", 16), "code 3006");
    } else {
        EXPECT_EQ(toolkit("CMS_ProcessSignedData2", none.get(), out.get(), nullptr), SIGIL_TK_ARGUMENT);
    }
    EXPECT_TRUE(out.empty());
}

TEST_P(HvtkSignedMessages, OptionsShapeTheMessage)
{
    const auto printed = [&](int option) {
        write("message", sign("rsa", option));
        run("openssl cms -cmsout -print -inform DER -in message");
        return read("output.txt");
    };
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_DETACHED), testing::HasSubstr("eContent: <ABSENT>"));
    EXPECT_EQ(processed(read("message"), content), content);
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_NO_ATTRIBUTES), testing::Not(testing::HasSubstr("signingTime")));
    EXPECT_EQ(processed(read("message")), content);
    EXPECT_EQ(signerSubject(0), "CN = rsa ") << "no time is said";
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_NO_CERTIFICATE), testing::Not(testing::HasSubstr("subject:")));
    EXPECT_EQ(processed(read("message")), "code 3902");
    ByteString authorities(toolkit, file("root.crt"));
    ASSERT_EQ(toolkit("CERT_SetCaPubs", authorities.get()), 0);
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_CA_PUBS), testing::HasSubstr("subject: CN=root"));
    EXPECT_EQ(processed(read("message")), content);
}

TEST_P(HvtkSignedMessages, OptionsOfTheContextAreAdded)
{
    EXPECT_EQ(toolkit("CMS_SetOption", 32), SIGIL_TK_OPTION);
    ASSERT_EQ(toolkit("CMS_SetOption", static_cast<int>(SIGIL_TK_MESSAGE_DETACHED)), 0);
    const std::string message = sign("rsa", SIGIL_TK_MESSAGE_NO_ATTRIBUTES);
    EXPECT_EQ(processed(message), "code 3901");
    EXPECT_EQ(processed(message, content), content);
    EXPECT_EQ(addSigner("ec", message), "code 3901") << "no attributes say what was signed";
    EXPECT_EQ(addSigner("ec", message, SIGIL_TK_MESSAGE_NO_ATTRIBUTES), "code 3901") << "there is nothing to sign";
    ASSERT_EQ(toolkit("CMS_SetOption", 0), 0);
    const std::string attached = sign("rsa");
    EXPECT_EQ(processed(attached), content);
    EXPECT_EQ(addSigner("ec", attached, SIGIL_TK_MESSAGE_DETACHED), "code 3006") << "its content is in it";
    EXPECT_EQ(processed(addSigner("ec", attached, SIGIL_TK_MESSAGE_NO_ATTRIBUTES)), content);
    write("content", content);
    run("openssl cms -sign -binary -nodetach -outform DER -econtent_type 1.2.3.4 -in content -out message -signer "
        "rsa.pem -inkey rsa.key.pem");
    EXPECT_EQ(processed(addSigner("ec", read("message"))), content);
    EXPECT_EQ(addSigner("ec", read("message"), SIGIL_TK_MESSAGE_NO_ATTRIBUTES), "code 3006")
        << "nobody would vouch for the type";
}

TEST_P(HvtkSignedMessages, SignersAreVerifiedUnderTheEnvironment)
{
    const std::string message = sign("rsa");
    ByteString data(toolkit);
    EXPECT_EQ(process(message, data, SIGIL_TK_CHECK_PATHS), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(signerSubject(0), "code 3902");
    ByteString root(toolkit, file("root.crt"));
    ASSERT_EQ(toolkit("CERT_AddTrustedCert", root.get()), 0);
    EXPECT_EQ(process(message, data, SIGIL_TK_CHECK_PATHS), 0) << toolkit.errorText();
    EXPECT_EQ(data.bytes(), content);
    ByteString other(toolkit);
    EXPECT_EQ(process(sign("encipher"), other, SIGIL_TK_CHECK_PATHS), SIGIL_TK_VERIFY_USAGE);
}

TEST_P(HvtkSignedMessages, AuthoritiesInTheMessageLeadToTheTrustedOne)
{
    const std::string smallKey = "ec -pkeyopt ec_paramgen_curve:P-256";
    messageWorkshop().certificate(
        "sub", "/CN=sub", "basicConstraints=critical,CA:TRUE", "root", "-days 365", smallKey);
    messageWorkshop().certificate("leaf", "/CN=leaf", "keyUsage=digitalSignature", "sub", "-days 365", smallKey);
    ByteString root(toolkit, file("root.crt"));
    ASSERT_EQ(toolkit("CERT_AddTrustedCert", root.get()), 0);
    write("content", content);
    const auto checked = [&](const std::string& options) {
        run("openssl cms -sign -binary -nodetach -outform DER -in content -out message -signer leaf.pem -inkey "
            "leaf.key.pem " +
            options);
        ByteString data(toolkit);
        return process(read("message"), data, SIGIL_TK_CHECK_PATHS);
    };
    EXPECT_EQ(checked(""), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_EQ(checked("-certfile sub.pem"), 0) << toolkit.errorText();
}

TEST_P(HvtkSignedMessages, ASignerElsewhereSigns)
{
    for (const std::string signer : {"rsa", "ec"}) {
        for (const int option :
            {SIGIL_TK_MESSAGE_PLAIN, SIGIL_TK_MESSAGE_DETACHED, SIGIL_TK_MESSAGE_NO_CERTIFICATE}) {
            ByteString certificate(toolkit, file(signer + ".crt"));
            ByteString data(toolkit, content);
            ByteString attributes(toolkit);
            ASSERT_EQ(toolkit("CMS_MakeTBSData", static_cast<int>(option), certificate.get(), data.get(),
                          text(time), attributes.get()),
                0)
                << toolkit.errorText();
            EXPECT_EQ(attributes.bytes()[0], '\x31');
            write("attributes", attributes.bytes());
            run("openssl dgst -sha256 -sign " + signer + ".key.pem -out signature attributes");
            ByteString wrong(toolkit, std::string(256, 'x'));
            ByteString message(toolkit);
            EXPECT_EQ(toolkit("CMS_ComposeSignedData", wrong.get(), message.get()), SIGIL_TK_SIGNATURE);
            ByteString signature(toolkit, read("signature"));
            ASSERT_EQ(toolkit("CMS_ComposeSignedData", signature.get(), message.get()), 0) << toolkit.errorText();
            write("message", message.bytes());
            write("content", content);
            run("openssl cms -verify -inform DER -in message -CAfile root.pem -certfile " + signer +
                ".pem -binary -out read" + (option == SIGIL_TK_MESSAGE_DETACHED ? " -content content" : ""));
            EXPECT_EQ(toolkit("CMS_ComposeSignedData", signature.get(), message.get()), SIGIL_TK_CMS_CONTENT)
                << "it was taken";
        }
    }
    ByteString certificate(toolkit, file("rsa.crt"));
    ByteString data(toolkit, content);
    ByteString attributes(toolkit);
    EXPECT_EQ(toolkit("CMS_MakeTBSData", static_cast<int>(SIGIL_TK_MESSAGE_NO_ATTRIBUTES), certificate.get(),
                  data.get(), text(time), attributes.get()),
        SIGIL_TK_OPTION);
}

TEST_P(GpkiSignedMessages, OtherCertificatesAndSignatureAreHandedOut)
{
    ByteString list(toolkit);
    EXPECT_EQ(toolkit("CMS_GetSignerCaPubs", list.get()), SIGIL_TK_CMS_NOBODY);
    EXPECT_EQ(toolkit("CMS_GetTBTData", 0, list.get()), SIGIL_TK_CMS_NOBODY);
    write("content", content);
    run("openssl cms -sign -binary -nodetach -outform DER -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem "
        "-certfile root.pem");
    ByteString data(toolkit);
    ASSERT_EQ(process(read("message"), data), 0);
    ASSERT_EQ(toolkit("CMS_GetSignerCaPubs", list.get()), 0);
    EXPECT_THAT(list.bytes(),
        testing::AllOf(testing::HasSubstr(file("root.crt")), testing::Not(testing::HasSubstr(file("rsa.crt")))));
    ByteString signature(toolkit);
    ASSERT_EQ(toolkit("CMS_GetTBTData", 0, signature.get()), 0);
    EXPECT_EQ(signature.bytes(), signatureIn(read("message")));
    EXPECT_EQ(toolkit("CMS_GetTBTData", 1, signature.get()), SIGIL_TK_CMS_NOBODY);
}

TEST_P(GpkiSignedMessages, TheOlderFormHandsOutTheFirstSigner)
{
    ByteString message(toolkit, sign("rsa"));
    ByteString data(toolkit);
    ByteString certificate(toolkit);
    std::array<char, 25> when{};
    ASSERT_EQ(toolkit("CMS_ProcessSignedData", message.get(), data.get(), certificate.get(), when.data()), 0);
    EXPECT_EQ(data.bytes(), content);
    EXPECT_EQ(certificate.bytes(), file("rsa.crt"));
    EXPECT_EQ(std::string(when.data()), time);
}
