// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The PKCS#12 files of sample-store, read by the openssl command and by the toolkit.
#include "tests/support/sample_store.h"
#include "tests/tools/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace fs = std::filesystem;

namespace {

using testing::HasSubstr;

constexpr const char* password = "Abcd1234!@";

/** The blocks of one kind in a PEM text, in order. */
std::vector<std::string> blocksOf(const std::string& pem, const std::string& label)
{
    const std::string begin = "-----BEGIN " + label + "-----";
    const std::string end = "-----END " + label + "-----\n";
    std::vector<std::string> blocks;
    for (std::size_t from = 0; (from = pem.find(begin, from)) != pem.npos;) {
        const std::size_t to = pem.find(end, from) + end.size();
        blocks.push_back(pem.substr(from, to - from));
        from = to;
    }
    return blocks;
}

std::string derOf(const std::string& certificate)
{
    return run({"openssl", "x509", "-outform", "DER"}, certificate).out;
}

std::string publicKeyOf(const std::string& key) { return run({"openssl", "pkey", "-pubout"}, key).out; }

class PfxFiles : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_store = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "10", "--keys", "2", "--pfx", "--password", password});
    }
    static void TearDownTestSuite() { s_store.reset(); }
    static const std::vector<Certificate>& certificates() { return s_store->certificates(); }

    static std::unique_ptr<SampleStore> s_store;
};

std::unique_ptr<SampleStore> PfxFiles::s_store;

TEST_F(PfxFiles, AreNamedAfterHolderAndSerialNumber)
{
    for (const Certificate& c : certificates()) {
        const std::string subject = c.at("subject");
        const std::string commonName = subject.substr(3, subject.find(',') - 3);
        EXPECT_EQ(c.at("pfx"), s_store->folder() / "pfx" / (commonName + "_" + c.at("serial") + ".pfx"));
        EXPECT_TRUE(fs::is_regular_file(c.at("pfx")));
    }
}

TEST_F(PfxFiles, HoldEveryPairForOpenssl)
{
    for (const Certificate& c : certificates()) {
        const Outcome opened = run({"openssl", "pkcs12", "-legacy", "-in", c.at("pfx"), "-nodes", "-passin",
            std::string("pass:") + password});
        ASSERT_EQ(opened.status, 0) << opened.err;
        const auto certs = blocksOf(opened.out, "CERTIFICATE");
        const auto keys = blocksOf(opened.out, "PRIVATE KEY");
        const std::size_t pairs = c.at("pairs") == "both" ? 2 : 1;
        ASSERT_EQ(certs.size(), pairs);
        ASSERT_EQ(keys.size(), pairs);
        EXPECT_EQ(derOf(certs[0]), readFile(c.at("signing_certificate")));
        if (pairs == 2) {
            EXPECT_EQ(derOf(certs[1]), readFile(c.at("km_certificate")));
        }
        for (std::size_t i = 0; i < pairs; ++i)
            EXPECT_EQ(publicKeyOf(keys[i]), run({"openssl", "x509", "-noout", "-pubkey"}, certs[i]).out);
    }
}

TEST_F(PfxFiles, AreProtectedLikeTheKeyFilesBesideThem)
{
    for (const Certificate& c : certificates()) {
        const Outcome info = run({"openssl", "pkcs12", "-legacy", "-in", c.at("pfx"), "-info", "-noout", "-passin",
            std::string("pass:") + password});
        const std::string expected = c.at("variant") == "C" ? "SEED-CBC"
            : c.at("variant") == "D"                        ? "AES-256-CBC"
                                                            : "pbeWithSHA1And3-KeyTripleDES-CBC";
        EXPECT_THAT(info.err, HasSubstr("Shrouded Keybag: "));
        EXPECT_THAT(info.err, HasSubstr(expected)) << c.at("variant");
    }
}

TEST_F(PfxFiles, RefuseAnotherPassword)
{
    const Outcome refused = run(
        {"openssl", "pkcs12", "-legacy", "-in", certificates()[0].at("pfx"), "-nodes", "-passin", "pass:wrong"});
    EXPECT_NE(refused.status, 0);
}

TEST_F(PfxFiles, KeepTheRandomValueInTheSigningKey)
{
    Toolkit toolkit;
    for (const Certificate& c : certificates()) {
        const auto [certificate, key] = toolkit.importPfx(readFile(c.at("pfx")), password);
        EXPECT_EQ(certificate, readFile(c.at("signing_certificate")));
        EXPECT_EQ(key, toolkit.decryptKey(readFile(c.at("signing_key")), password));
        EXPECT_EQ(toolkit.randomOf(key).size(), 20u);
    }
}

TEST(PfxOption, IsOffUnlessAsked)
{
    const SampleStore store({"--count", "1", "--keys", "2"});
    EXPECT_FALSE(fs::exists(store.folder() / "pfx"));
    EXPECT_EQ(store.certificates().at(0).at("pfx"), "");
}

} // namespace
