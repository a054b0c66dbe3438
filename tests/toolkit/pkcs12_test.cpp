// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// PKCS#12 files: our own ways, and those of the openssl command, GnuTLS's certtool and NSS's pk12util.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/pkcs12/pkcs12.h"
#include "toolkit/engine/pkcs12/pkcs12_handles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace toolkit_test;
using toolkit::Bytes;
using toolkit::Error;
using toolkit::Library;
using toolkit::Pkcs12Content;
using toolkit::toBytes;
using toolkit::toSecret;
using toolkit::view;

namespace {

/** A signing pair whose key holds a random value, a key-management pair, and the root above both. */
const Workshop& workshop()
{
    static const Workshop made;
    static const bool ready = [] {
        made.certificate("root", "/C=KR/CN=root", "basicConstraints=critical,CA:TRUE");
        made.certificate("sign", "/C=KR/O=yessign/CN=홍길동",
            "keyUsage=digitalSignature,nonRepudiation\nsubjectKeyIdentifier=hash", "root");
        made.certificate("km", "/C=KR/O=yessign/CN=홍길동", "keyUsage=keyEncipherment", "root");
        const Library library;
        const auto withRandom = toolkit::withIdentityRandom(view(made.read("sign.key")), view(fromHex(randomHex)));
        made.write("sign.key", {toolkit::chars(withRandom), withRandom.size()});
        return true;
    }();
    EXPECT_TRUE(ready);
    return made;
}

class Pkcs12 : public testing::Test {
protected:
    Pkcs12Content pair(const std::string& name) const
    {
        return {
            {{toBytes(view(workshop().read(name + ".crt"))), toSecret(view(workshop().read(name + ".key")))}}, {}};
    }
    Pkcs12Content everything() const
    {
        Pkcs12Content content = pair("sign");
        content.pairs.push_back(pair("km").pairs.front());
        content.others.push_back(toBytes(view(workshop().read("root.crt"))));
        return content;
    }
    void expectSignPair(const Pkcs12Content& content) const
    {
        ASSERT_EQ(content.pairs.size(), 1U);
        EXPECT_EQ(stringOf(content.pairs[0].certificate), workshop().read("sign.crt"));
        EXPECT_NO_THROW(toolkit::loadPrivateKey(library, content.pairs[0].keyInfo));
    }
    Pkcs12Content read(const std::string& name, const std::string& password = "secret1!", int mode = 0) const
    {
        return toolkit::readPkcs12(library, view(workshop().read(name)), password, mode);
    }
    int codeOf(const std::string& name, const std::string& password = "secret1!", int mode = 0) const
    {
        try {
            read(name, password, mode);
            return 0;
        } catch (const Error& error) {
            return error.code();
        }
    }
    void write(const std::string& name, const Pkcs12Content& content, int option,
        const std::string& password = "secret1!") const
    {
        workshop().write(name, stringOf(toolkit::writePkcs12(library, content, password, option)));
    }

    Library library;
};

/** A PKCS#12 file of two encrypted keys, as their algorithms tell; only 2048 iterations are true. */
std::string fileOfKeys(int firstIterations, int secondIterations)
{
    const Library library;
    const toolkit::BagsHandle bags(sk_PKCS12_SAFEBAG_new_null());
    for (const int iterations : {firstIterations, secondIterations}) {
        const Bytes file = toolkit::encryptKeyFile(
            library, SIGIL_TK_KEY_PKCS12_3DES, view(workshop().read("sign.key")), "secret1!");
        const unsigned char* at = file.data();
        X509_SIG* const key = d2i_X509_SIG(nullptr, &at, static_cast<long>(file.size()));
        X509_ALGOR* algorithm = nullptr;
        X509_SIG_getm(key, &algorithm, nullptr);
        if (iterations != 2048)
            PKCS5_pbe_set0_algor(algorithm, NID_pbe_WithSHA1And3_Key_TripleDES_CBC, iterations, nullptr, 0);
        sk_PKCS12_SAFEBAG_push(bags.get(), PKCS12_SAFEBAG_create0_pkcs8(key));
    }
    const toolkit::SafesHandle safes(sk_PKCS7_new_null());
    sk_PKCS7_push(safes.get(), PKCS12_pack_p7data(bags.get()));
    const toolkit::Pkcs12Handle pfx(PKCS12_add_safes(safes.get(), 0));
    return stringOf(toolkit::encode<Bytes>(pfx.get(), i2d_PKCS12));
}

class Pkcs12Option : public Pkcs12, public testing::WithParamInterface<int> { };
class MadeByOpenssl : public Pkcs12, public testing::WithParamInterface<const char*> { };

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Options, Pkcs12Option, testing::Values(SIGIL_TK_PFX_3DES, SIGIL_TK_PFX_SEED, SIGIL_TK_PFX_AES256));

TEST_P(Pkcs12Option, KeepsPairsRandomValueAndOtherCertificates)
{
    write("own.pfx", everything(), GetParam());
    const Pkcs12Content content = read("own.pfx");
    ASSERT_EQ(content.pairs.size(), 2U);
    const Pkcs12Content expected = everything();
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(content.pairs[i].certificate, expected.pairs[i].certificate);
        EXPECT_EQ(content.pairs[i].keyInfo, expected.pairs[i].keyInfo);
    }
    EXPECT_EQ(content.others, expected.others);
    EXPECT_EQ(toHex(stringOf(toolkit::identityRandom(content.pairs[0].keyInfo))), randomHex);
    EXPECT_EQ(&toolkit::signingPair(library, content), &content.pairs[0]);
    EXPECT_EQ(toolkit::keyManagementPair(library, content), &content.pairs[1]);
}

TEST_P(Pkcs12Option, AWrongPasswordIsToldApartFromDamage)
{
    write("own.pfx", pair("sign"), GetParam());
    EXPECT_EQ(codeOf("own.pfx", "wrong"), SIGIL_TK_PFX_WRONG_PASSWORD);
    EXPECT_EQ(codeOf("own.pfx", ""), SIGIL_TK_PFX_WRONG_PASSWORD);
    const std::string bytes = workshop().read("own.pfx");
    for (std::size_t length = 0; length < bytes.size(); length += 7) {
        workshop().write("cut.pfx", bytes.substr(0, length));
        EXPECT_EQ(codeOf("cut.pfx"), SIGIL_TK_PFX_MALFORMED) << length;
    }
}

TEST_P(Pkcs12Option, TheOpensslCommandReadsIt)
{
    write("own.pfx", everything(), GetParam());
    const std::string text = workshop().run(
        "openssl pkcs12 -provider legacy -provider default -in own.pfx -passin pass:secret1! -nodes -info");
    EXPECT_THAT(text, testing::HasSubstr("BEGIN CERTIFICATE"));
    workshop().run("openssl pkcs12 -provider legacy -provider default -in own.pfx -passin pass:secret1! -nodes "
                   "-nocerts | openssl pkcs8 -topk8 -nocrypt -outform DER -out again.key && "
                   "openssl pkey -in again.key -inform DER -pubout -out again.pub && "
                   "openssl x509 -in sign.pem -noout -pubkey -out sign.pub && cmp again.pub sign.pub");
    EXPECT_NE(workshop().tryRun("openssl pkcs12 -provider legacy -provider default -in own.pfx -passin pass:wrong "
                                "-nodes -noout"),
        0);
}

TEST_F(Pkcs12, OtherProgramsReadWhatTheyKnow)
{
    for (const int option : {SIGIL_TK_PFX_3DES, SIGIL_TK_PFX_AES256}) {
        write("own.pfx", pair("sign"), option);
        EXPECT_THAT(workshop().run("certtool --p12-info --inder --password secret1! --infile own.pfx"),
            testing::AllOf(testing::HasSubstr("BEGIN CERTIFICATE"), testing::HasSubstr("PRIVATE KEY")));
        workshop().run("rm -rf db && mkdir db && certutil -N -d sql:db --empty-password");
        workshop().run("pk12util -i own.pfx -d sql:db -W secret1!");
        EXPECT_THAT(workshop().run("certutil -K -d sql:db"), testing::HasSubstr("rsa"));
    }
}

INSTANTIATE_TEST_SUITE_P(Protections, MadeByOpenssl,
    testing::Values("", "-legacy", "-descert", "-certpbe NONE", "-certpbe NONE -keypbe NONE",
        "-provider legacy -provider default -certpbe SEED-CBC -keypbe SEED-CBC -macalg SHA1",
        "-keypbe ARIA-256-CBC -certpbe AES-128-CBC -macalg SHA512", "-iter 1 -maciter"));

TEST_P(MadeByOpenssl, IsRead)
{
    workshop().run(std::string("openssl pkcs12 -export -in sign.pem -inkey sign.key.pem -certfile root.pem "
                               "-name me -passout pass:secret1! -out made.pfx ") +
        GetParam());
    const Pkcs12Content content = read("made.pfx");
    expectSignPair(content);
    ASSERT_EQ(content.others.size(), 1U);
    EXPECT_EQ(stringOf(content.others[0]), workshop().read("root.crt"));
    EXPECT_EQ(codeOf("made.pfx", "wrong"), SIGIL_TK_PFX_WRONG_PASSWORD);
}

TEST_F(Pkcs12, AFileWithoutMacNeedsItsMode)
{
    workshop().run("openssl pkcs12 -export -in sign.pem -inkey sign.key.pem -nomac -passout pass:secret1! "
                   "-out nomac.pfx");
    EXPECT_EQ(codeOf("nomac.pfx"), SIGIL_TK_PFX_NO_MAC);
    expectSignPair(read("nomac.pfx", "secret1!", SIGIL_TK_PFX_WITHOUT_MAC));
    EXPECT_EQ(codeOf("nomac.pfx", "wrong", SIGIL_TK_PFX_WITHOUT_MAC), SIGIL_TK_PFX_WRONG_PASSWORD);
    write("own.pfx", pair("sign"), 0);
    EXPECT_EQ(codeOf("own.pfx", "wrong", SIGIL_TK_PFX_WITHOUT_MAC), SIGIL_TK_PFX_WRONG_PASSWORD);
    EXPECT_EQ(codeOf("own.pfx", "secret1!", 7), SIGIL_TK_OPTION);
}

TEST_F(Pkcs12, FilesOfCerttoolAndPk12utilAreRead)
{
    workshop().run("certtool --to-p12 --load-certificate sign.pem --load-privkey sign.key.pem --p12-name me "
                   "--password secret1! --outder --outfile gnutls.pfx");
    expectSignPair(read("gnutls.pfx"));
    EXPECT_EQ(codeOf("gnutls.pfx", "wrong"), SIGIL_TK_PFX_WRONG_PASSWORD);
    write("own.pfx", pair("sign"), SIGIL_TK_PFX_AES256);
    workshop().run("rm -rf db && mkdir db && certutil -N -d sql:db --empty-password && "
                   "pk12util -i own.pfx -d sql:db -W secret1! && "
                   "pk12util -o nss.pfx -n \"$(certutil -L -d sql:db | tail -2 | sed -E 's/ +[a-zA-Z,]*$//' | "
                   "grep . )\" -d sql:db -W secret1!");
    expectSignPair(read("nss.pfx"));
}

TEST_F(Pkcs12, AKoreanPasswordWorksInBothCharacterSets)
{
    workshop().run("openssl pkcs12 -export -in sign.pem -inkey sign.key.pem -passout pass:비밀번호 -out korean.pfx "
                   "-keypbe PBE-SHA1-3DES -certpbe PBE-SHA1-3DES -macalg SHA1");
    expectSignPair(read("korean.pfx", "비밀번호"));
    expectSignPair(read("korean.pfx", "\xBA\xF1\xB9\xD0\xB9\xF8\xC8\xA3"));
}

TEST_F(Pkcs12, AnEmptyPasswordIsReadInBothForms)
{
    workshop().run("openssl pkcs12 -export -in sign.pem -inkey sign.key.pem -passout pass: -out empty.pfx");
    expectSignPair(read("empty.pfx", ""));
    EXPECT_EQ(codeOf("empty.pfx", "x"), SIGIL_TK_PFX_WRONG_PASSWORD);
}

TEST_F(Pkcs12, AFileWithoutAPairIsRefused)
{
    workshop().run("openssl pkcs12 -export -nokeys -in sign.pem -passout pass:secret1! -out nokey.pfx");
    EXPECT_EQ(codeOf("nokey.pfx"), SIGIL_TK_PFX_NO_PAIR);
}

TEST_F(Pkcs12, TheIterationsOfAllBagsTogetherAreBounded)
{
    const auto codeFor = [&](int iterations) {
        workshop().write("bags.pfx", fileOfKeys(2048, iterations));
        return codeOf("bags.pfx", "secret1!", SIGIL_TK_PFX_WITHOUT_MAC);
    };
    EXPECT_EQ(codeFor(2048), SIGIL_TK_PFX_NO_PAIR) << "both keys open, and no certificate is there";
    EXPECT_EQ(codeFor(10'000'000 - 2047), SIGIL_TK_PFX_MALFORMED);
    EXPECT_EQ(codeFor(10'000'000), SIGIL_TK_PFX_MALFORMED) << "in bounds alone";
}

TEST_F(Pkcs12, PartsThatDoNotBelongTogetherAreNotWritten)
{
    Pkcs12Content content = pair("sign");
    content.pairs[0].keyInfo = pair("km").pairs[0].keyInfo;
    EXPECT_THROW(toolkit::writePkcs12(library, content, "p", 0), Error);
    EXPECT_THROW(toolkit::writePkcs12(library, pair("sign"), "p", 3), Error);
}

TEST(HvtkPfx, OnePairAndItsAuthorities)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString certificate(toolkit, workshop().read("sign.crt"));
    ByteString key(toolkit, workshop().read("sign.key"));
    ByteString root(toolkit, workshop().read("root.crt"));
    ByteString file(toolkit);
    ASSERT_EQ(toolkit("PFX_Export", 0, text("secret1!"), certificate.get(), key.get(), file.get()), 0);
    ByteString outCertificate(toolkit);
    ByteString outKey(toolkit);
    ByteString others(toolkit);
    EXPECT_EQ(
        toolkit("PFX_Import", text("no"), file.get(), outCertificate.get(), outKey.get(), others.get()), 4505);
    EXPECT_TRUE(outCertificate.empty() && outKey.empty() && others.empty());
    ASSERT_EQ(
        toolkit("PFX_Import", text("secret1!"), file.get(), outCertificate.get(), outKey.get(), others.get()), 0);
    EXPECT_EQ(outCertificate.bytes(), certificate.bytes());
    EXPECT_EQ(outKey.bytes(), key.bytes());
    ByteString file2(toolkit);
    ASSERT_EQ(toolkit("PFX_Export2", text("secret1!"), certificate.get(), key.get(), root.get(), file2.get()), 0);
    ByteString c2(toolkit);
    ByteString k2(toolkit);
    ByteString others2(toolkit);
    ASSERT_EQ(toolkit("PFX_Import", text("secret1!"), file2.get(), c2.get(), k2.get(), others2.get()), 0);
    int count = 0;
    EXPECT_EQ(toolkit("UTIL_GetObjectCount", others2.get(), &count), 0);
    EXPECT_EQ(count, 1);
}

TEST_F(Pkcs12, FailuresOfItsKeysSpeakOfTheFile)
{
    const std::string file = fileOfKeys(2048, 20'000'000);
    try {
        toolkit::readPkcs12(library, view(file), "secret1!", SIGIL_TK_PFX_WITHOUT_MAC);
        FAIL() << "no rounds";
    } catch (const Error& error) {
        EXPECT_EQ(error.code(), SIGIL_TK_PFX_MALFORMED);
        EXPECT_STREQ(error.what(), "The PKCS#12 file is damaged: iteration count");
    }
}

TEST(HvtkPfx, SeveralPairsTravelInLists)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString certificates(toolkit);
    ByteString keys(toolkit);
    for (const std::string name : {"sign", "km"}) {
        ByteString certificate(toolkit, workshop().read(name + ".crt"));
        ByteString key(toolkit, workshop().read(name + ".key"));
        ASSERT_EQ(toolkit("UTIL_AddObject", certificate.get(), certificates.get()), 0);
        ASSERT_EQ(toolkit("UTIL_AddObject", key.get(), keys.get()), 0);
    }
    const auto expectBack = [&](ByteString& file) {
        for (const int mode : {SIGIL_TK_PFX_STRICT, SIGIL_TK_PFX_WITHOUT_MAC}) {
            ByteString outCertificates(toolkit);
            ByteString outKeys(toolkit);
            ByteString extra(toolkit);
            ASSERT_EQ(toolkit("PFX_ImportMultiPair2", mode, text("secret1!"), file.get(), outCertificates.get(),
                          outKeys.get(), extra.get()),
                0);
            EXPECT_EQ(outCertificates.bytes(), certificates.bytes());
            EXPECT_EQ(outKeys.bytes(), keys.bytes());
        }
    };
    ByteString file(toolkit);
    ASSERT_EQ(toolkit("PFX_ExportMultiPair", 0, text("secret1!"), certificates.get(), keys.get(), file.get()), 0);
    expectBack(file);
    // Callers that pass an int leave what they like above it in the register.
    ByteString unclean(toolkit);
    ASSERT_EQ(toolkit("PFX_ExportMultiPair", 0xDEADBEEF00000001UL, text("secret1!"), certificates.get(), keys.get(),
                  unclean.get()),
        0);
    expectBack(unclean);
    EXPECT_EQ(toolkit("PFX_ExportMultiPair", 77, text("secret1!"), certificates.get(), keys.get(), unclean.get()),
        SIGIL_TK_OPTION);
    ByteString damaged(toolkit, std::string(certificates.bytes())); // as many, and none of them a key
    EXPECT_EQ(toolkit("PFX_ExportMultiPair", 0, text("secret1!"), certificates.get(), damaged.get(), unclean.get()),
        SIGIL_TK_KEY_UNUSABLE);
    BINSTR* const nowhere = nullptr;
    EXPECT_EQ(toolkit("PFX_ImportMultiPair2", static_cast<int>(SIGIL_TK_PFX_STRICT), text("secret1!"), file.get(),
                  nowhere, nowhere, nowhere),
        SIGIL_TK_ARGUMENT);
    // The other argument list of the same symbol.
    ByteString others(toolkit, workshop().read("root.crt"));
    ByteString file2(toolkit);
    ASSERT_EQ(
        toolkit("PFX_ExportMultiPair", text("secret1!"), certificates.get(), keys.get(), others.get(), file2.get()),
        0);
    expectBack(file2);
    ByteString c(toolkit);
    ByteString k(toolkit);
    ByteString extra(toolkit);
    EXPECT_EQ(toolkit("PFX_ImportMultiPair", text("no"), file2.get(), c.get(), k.get(), extra.get()), 4505);
    EXPECT_TRUE(c.empty() && k.empty() && extra.empty());
    ASSERT_EQ(toolkit("PFX_ImportMultiPair", text("secret1!"), file2.get(), c.get(), k.get(), extra.get()), 0);
    int count = 0;
    EXPECT_EQ(toolkit("UTIL_GetObjectCount", extra.get(), &count), 0);
    EXPECT_EQ(count, 1);
}

TEST(HvtkPfx, PairsAreMatchedWhateverTheirOrder)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString certificates(toolkit);
    ByteString keys(toolkit);
    for (const std::string name : {"sign", "km"}) {
        ByteString certificate(toolkit, workshop().read(name + ".crt"));
        ByteString key(toolkit, workshop().read((name == "km" ? "sign" : "km") + std::string(".key")));
        toolkit("UTIL_AddObject", certificate.get(), certificates.get());
        toolkit("UTIL_AddObject", key.get(), keys.get());
    }
    ByteString file(toolkit);
    EXPECT_EQ(toolkit("PFX_ExportMultiPair", 2, text("p"), certificates.get(), keys.get(), file.get()), 0);
    ByteString single(toolkit, workshop().read("root.crt"));
    ByteString none(toolkit);
    EXPECT_EQ(
        toolkit("PFX_ExportMultiPair", 0, text("p"), single.get(), keys.get(), none.get()), SIGIL_TK_ARGUMENT);
    EXPECT_TRUE(none.empty());
}

TEST(GpkiPfx, TwoPairsHaveRecordsOfTheirOwn)
{
    const ToolkitLibrary toolkit("GPKI_");
    ByteString signCertificate(toolkit, workshop().read("sign.crt"));
    ByteString signKey(toolkit, workshop().read("sign.key"));
    ByteString kmCertificate(toolkit, workshop().read("km.crt"));
    ByteString kmKey(toolkit, workshop().read("km.key"));
    const auto roundTrip = [&](BINSTR* km, BINSTR* key, const std::string& expected) {
        ByteString file(toolkit);
        ASSERT_EQ(toolkit("PFX_Export", text("p"), signCertificate.get(), signKey.get(), km, key, file.get()), 0);
        ByteString c1(toolkit);
        ByteString k1(toolkit);
        ByteString c2(toolkit);
        ByteString k2(toolkit);
        EXPECT_EQ(toolkit("PFX_Import", text("no"), file.get(), c1.get(), k1.get(), c2.get(), k2.get()), 4505);
        EXPECT_TRUE(c1.empty() && k1.empty() && c2.empty() && k2.empty());
        ASSERT_EQ(toolkit("PFX_Import", text("p"), file.get(), c1.get(), k1.get(), c2.get(), k2.get()), 0);
        EXPECT_EQ(c1.bytes(), signCertificate.bytes());
        EXPECT_EQ(k1.bytes(), signKey.bytes());
        EXPECT_EQ(c2.bytes(), expected);
    };
    roundTrip(kmCertificate.get(), kmKey.get(), kmCertificate.bytes());
    ByteString none(toolkit);
    roundTrip(none.get(), none.get(), "");
}
