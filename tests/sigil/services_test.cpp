// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// States of certificates, time stamps and tokens, from a responder, a web server, a time-stamping authority and a token that
// are the test's own, with both toolkits.

#include "tests/sigil/sigil_test.h"
#include "tests/toolkit/server.h"

#include <cstdlib>
#include <ctime>

using namespace sigil_test;
using toolkit_test::Server;
using toolkit_test::Workshop;

namespace {

constexpr std::string_view text = "what is stamped";
constexpr char tokenLabel[] = "계약 토큰";
constexpr std::time_t revokedAt = 1767323045; // 2026-01-02 03:04:05 UTC, see "index"

/** An authority with a good and a revoked user, of each of whom a list tells too; and the servers. */
class Office {
public:
    Office()
    {
        const std::string list =
            "crlDistributionPoints=URI:http://127.0.0.1:" + std::to_string(web.port()) + "/ca.crl";
        const std::string usage = "keyUsage=digitalSignature\nsubjectKeyIdentifier=hash\n" + list;
        certificate("ca",
            "basicConstraints=critical,CA:TRUE\nkeyUsage=critical,keyCertSign,cRLSign\n"
            "subjectKeyIdentifier=hash");
        certificate("responder", "extendedKeyUsage=OCSPSigning", "ca");
        certificate("stamper", "extendedKeyUsage=critical,timeStamping\nkeyUsage=digitalSignature", "ca");
        certificate("good", usage, "ca", " -set_serial 4096");
        certificate("revoked", usage, "ca", " -set_serial 4097");
        workshop.write("index",
            "V\t350101000000Z\t\t1000\tunknown\t/C=KR/O=test/CN=good\n"
            "R\t350101000000Z\t260102030405Z\t1001\tunknown\t/C=KR/O=test/CN=revoked\n");
        workshop.write(
            "ca.conf", "[ca]\ndefault_ca=own\n[own]\ndatabase=index\ndefault_md=sha256\ndefault_crl_days=30\n");
        workshop.run("openssl ca -config ca.conf -gencrl -keyfile ca.key.pem -cert ca.pem -out list.pem && "
                     "openssl crl -in list.pem -outform DER -out ca.crl");
        workshop.write("serial", "0A\n");
        workshop.write("tsa.conf",
            "[tsa]\ndefault_tsa=own\n[own]\nserial=serial\nsigner_digest=sha256\ndefault_policy=1.2.3.1\n"
            "digests=sha256\n");
        responder = std::make_unique<Server>(Server::responder(workshop, "ca", "responder", "-nmin 10"));
        stamper = std::make_unique<Server>(Server::timeStamper(workshop, "stamper"));
        makeToken();
    }

    static std::string address(const Server& server)
    {
        return "http://127.0.0.1:" + std::to_string(server.port()) + "/";
    }

    Workshop workshop;
    Server web = Server::web(workshop);
    std::unique_ptr<Server> responder, stamper;

private:
    void certificate(const std::string& name, const std::string& extensions, const std::string& issuer = {},
        const std::string& options = {}) const
    {
        workshop.certificate(name, "/C=KR/O=test/CN=" + name, extensions, issuer, "-days 365" + options);
    }
    /** A token of SoftHSM's with one certificate, which this process finds by its environment. */
    void makeToken() const
    {
        const std::string settings = workshop.path("softhsm2.conf");
        workshop.write("softhsm2.conf",
            "directories.tokendir = " + workshop.path("tokens") +
                "\nobjectstore.backend = file\nlog.level = ERROR\n");
        setenv("SOFTHSM2_CONF", settings.c_str(), 1);
        workshop.run("mkdir tokens && softhsm2-util --init-token --free --label '" + std::string(tokenLabel) +
            "' --pin 1234 --so-pin 5678 && pkcs11-tool --module \"$(ls /usr/lib/*/softhsm/libsofthsm2.so)\" "
            "--token-label '" +
            tokenLabel + "' --login --pin 1234 --write-object good.crt --type cert --id 01 --label one");
    }
};

class Services : public ::testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite()
    {
        if (!office)
            office = std::make_unique<Office>();
    }
    static void TearDownTestSuite() { office.reset(); }

    Services()
        : ca(office->workshop.read("ca.crt"))
    {
        trusted.data = reinterpret_cast<unsigned char*>(ca.data());
        trusted.size = ca.size();
        options.trusted = &trusted;
        options.trusted_count = 1;
    }
    SigilStatus statusOf(const std::string& name)
    {
        auto status = sized<SigilStatus>();
        const std::string der = office->workshop.read(name + ".crt");
        EXPECT_EQ(sigil_status(session.get(), &options, der.data(), der.size(), &status), SIGIL_SUCCESS)
            << sigil_error_text(session.get());
        return status;
    }
    void expectNow(std::int64_t time)
    {
        EXPECT_NEAR(static_cast<double>(time), static_cast<double>(std::time(nullptr)), 600);
    }

    static std::unique_ptr<Office> office;
    Session session = open(GetParam());
    std::string ca;
    SigilBytes trusted{};
    SigilJudgeOptions options = sized<SigilJudgeOptions>();
};
std::unique_ptr<Office> Services::office;

INSTANTIATE_TEST_SUITE_P(Toolkits, Services, ::testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI),
    [](const auto& toolkit) { return toolkit.param == SIGIL_TOOLKIT_MAKER ? "Maker" : "Gpki"; });

TEST_P(Services, AResponderTellsTheState)
{
    const std::string address = Office::address(*office->responder);
    options.responder = address.c_str();
    const SigilStatus good = statusOf("good");
    EXPECT_EQ(good.revoked, 0);
    EXPECT_EQ(good.by_list, 0);
    EXPECT_EQ(good.revoked_at, 0);
    const SigilStatus revoked = statusOf("revoked");
    EXPECT_EQ(revoked.revoked, 1);
    EXPECT_EQ(revoked.by_list, 0);
    EXPECT_EQ(revoked.revoked_at, GetParam() == SIGIL_TOOLKIT_GPKI ? revokedAt : 0)
        << "the other one does not tell";
}

TEST_P(Services, AListTellsTheStateWhereNoResponderDoes)
{
    const SigilStatus good = statusOf("good");
    EXPECT_EQ(good.revoked, 0);
    EXPECT_EQ(good.by_list, 1);
    const SigilStatus revoked = statusOf("revoked");
    EXPECT_EQ(revoked.revoked, 1);
    EXPECT_EQ(revoked.by_list, 1);
}

TEST_P(Services, ARevokedCertificateIsNotValid)
{
    const std::string good = office->workshop.read("good.crt");
    const std::string revoked = office->workshop.read("revoked.crt");
    EXPECT_EQ(sigil_verify_certificate(session.get(), &options, good.data(), good.size()), SIGIL_SUCCESS)
        << sigil_error_text(session.get());
    EXPECT_EQ(sigil_verify_certificate(session.get(), &options, revoked.data(), revoked.size()), 3204);
}

TEST_P(Services, AStampIsOfItsDataAndTime)
{
    const std::string address = Office::address(*office->stamper);
    Bytes token;
    ASSERT_EQ(sigil_timestamp(session.get(), address.c_str(), text.data(), text.size(), token.out()), SIGIL_SUCCESS)
        << sigil_error_text(session.get());
    auto stamp = sized<SigilStamp>();
    ASSERT_EQ(
        sigil_stamp(session.get(), token.data(), token.size(), text.data(), text.size(), &stamp), SIGIL_SUCCESS)
        << sigil_error_text(session.get());
    expectNow(stamp.time);
    EXPECT_STREQ(stamp.policy, "1.2.3.1");
    EXPECT_STRNE(stamp.serial, "");
    EXPECT_EQ(sigil_stamp(session.get(), token.data(), token.size(), "other", 5, &stamp), 4004);
    office->workshop.write("token", std::string(token.view()));
    office->workshop.write("data", std::string(text));
    office->workshop.run("openssl ts -verify -data data -in token -token_in -CAfile ca.pem -untrusted stamper.pem");
}

TEST_P(Services, AMessageIsStampedWhenItIsSigned)
{
    const SampleStore store({"--count", "1", "--families", "npki", "--state", "valid", "--keys", "2"});
    ASSERT_EQ(list(session.get(), store.folder().string()), 1);
    ASSERT_EQ(sigil_unlock(session.get(), 0, password), SIGIL_SUCCESS);
    const std::string address = Office::address(*office->stamper);
    for (const int form : {SIGIL_FORM_ATTACHED, SIGIL_FORM_DETACHED}) {
        auto signing = sized<SigilSignOptions>();
        signing.form = form;
        signing.stamp_url = address.c_str();
        Bytes message;
        ASSERT_EQ(sigil_sign(session.get(), 0, &signing, text.data(), text.size(), message.out()), SIGIL_SUCCESS)
            << sigil_error_text(session.get());
        const std::string_view beside = form == SIGIL_FORM_DETACHED ? text : std::string_view();
        ASSERT_EQ(sigil_verify(session.get(), message.data(), message.size(), beside.data(), beside.size(), nullptr,
                      nullptr),
            SIGIL_SUCCESS)
            << sigil_error_text(session.get());
        auto signer = sized<SigilSigner>();
        ASSERT_EQ(sigil_signer(session.get(), 0, &signer), SIGIL_SUCCESS);
        expectNow(signer.stamp_time);
        EXPECT_EQ(signer.stamp_code, SIGIL_SUCCESS);
    }
}

TEST_P(Services, ATokenIsToldWithItsCertificate)
{
    int count = 0;
    ASSERT_EQ(sigil_tokens(session.get(), &count), SIGIL_SUCCESS) << sigil_error_text(session.get());
    auto token = sized<SigilToken>();
    int index = 0;
    do
        ASSERT_EQ(sigil_token(session.get(), index++, &token), SIGIL_SUCCESS) << "no token of that name";
    while (std::string_view(token.label) != tokenLabel);
    EXPECT_EQ(token.initialised, 1);
    EXPECT_EQ(token.certificates, 1);
    EXPECT_STRNE(token.maker, "");
    EXPECT_STRNE(token.model, "");
    EXPECT_STRNE(token.serial, "");
    Bytes certificate;
    ASSERT_EQ(sigil_token_certificate(session.get(), index - 1, 0, certificate.out()), SIGIL_SUCCESS);
    EXPECT_EQ(certificate.view(), office->workshop.read("good.crt"));
    EXPECT_EQ(sigil_token_certificate(session.get(), index - 1, 1, certificate.out()), SIGIL_BAD_ARGUMENT);
}

} // namespace
