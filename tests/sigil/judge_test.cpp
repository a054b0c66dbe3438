// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificates that are judged, time stamps, tokens, findings.

#include "tests/sigil/sigil_test.h"

#include <ctime>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;
using namespace sigil_test;

namespace {

constexpr char closedPort[] = "http://127.0.0.1:1/";

class Judged : public ::testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(std::vector<std::string>{
            "--count", "3", "--families", "npki", "--state", "valid", "--keys", "2", "--key-bits", "2048"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    Judged()
    {
        list(session.get(), sample->folder().string());
        EXPECT_EQ(sigil_certificate(session.get(), 0, SIGIL_PAIR_SIGNING, certificate.out()), SIGIL_SUCCESS);
        for (const auto& file : fs::directory_iterator(sample->folder() / "ca"))
            if (file.path().extension() == ".der")
                authorities.push_back(readFile(file.path()));
        for (std::string& der : authorities)
            trusted.push_back({reinterpret_cast<unsigned char*>(der.data()), der.size()});
        options.trusted = trusted.data();
        options.trusted_count = static_cast<int>(trusted.size());
        options.no_revocation = 1;
    }
    int verify() { return verify(certificate.view()); }
    int verify(std::string_view der)
    {
        return sigil_verify_certificate(session.get(), &options, der.data(), der.size());
    }

    static std::unique_ptr<SampleStore> sample;
    Session session = open(GetParam());
    Bytes certificate;
    std::vector<std::string> authorities;
    std::vector<SigilBytes> trusted;
    SigilJudgeOptions options = sized<SigilJudgeOptions>();
};

std::unique_ptr<SampleStore> Judged::sample;

INSTANTIATE_TEST_SUITE_P(Toolkits, Judged, ::testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI),
    [](const auto& toolkit) { return toolkit.param == SIGIL_TOOLKIT_MAKER ? "Maker" : "Gpki"; });

TEST_P(Judged, IsValidUnderItsAuthorities)
{
    EXPECT_EQ(verify(), SIGIL_SUCCESS) << sigil_error_text(session.get());
    options.purpose = SIGIL_PURPOSE_SIGN;
    EXPECT_EQ(verify(), SIGIL_SUCCESS) << sigil_error_text(session.get());
    options.purpose = SIGIL_PURPOSE_ENCRYPT;
    EXPECT_EQ(verify(), 3206);
    EXPECT_STRNE(sigil_error_text(session.get()), "");
}

TEST_P(Judged, IsNotValidOutsideItsTime)
{
    const SigilFields fields = fieldsOf(session.get(), 0);
    options.time = fields.valid_to + 1;
    EXPECT_EQ(verify(), 3202);
    options.time = fields.valid_from - 1;
    EXPECT_EQ(verify(), 3203);
    options.time = fields.valid_from + 1;
    EXPECT_EQ(verify(), SIGIL_SUCCESS);
}

TEST_P(Judged, IsNotValidUnderAnotherAuthority)
{
    trusted[0] = {const_cast<unsigned char*>(certificate.data()), certificate.size()};
    options.trusted_count = 1;
    Bytes other;
    ASSERT_EQ(sigil_certificate(session.get(), 1, SIGIL_PAIR_SIGNING, other.out()), SIGIL_SUCCESS);
    EXPECT_EQ(verify(other.view()), 3201);
}

TEST_P(Judged, HasNoStateThatNobodyTells)
{
    auto status = sized<SigilStatus>();
    options.responder = closedPort;
    const auto ask = [&] {
        return sigil_status(session.get(), &options, certificate.data(), certificate.size(), &status);
    };
    EXPECT_EQ(ask(), SIGIL_STATUS_UNKNOWN);
    EXPECT_STRNE(sigil_error_text(session.get()), "");
    EXPECT_EQ(status.size, sizeof status);
}

TEST_P(Judged, IsACertificate)
{
    auto status = sized<SigilStatus>();
    EXPECT_EQ(verify("nothing"), 3101);
    EXPECT_EQ(sigil_status(session.get(), &options, "nothing", 7, &status), 3101);
}

TEST_P(Judged, StampsAreFetchedAndVerified)
{
    const TemporaryFolder work;
    Bytes none;
    EXPECT_EQ(sigil_timestamp(session.get(), closedPort, "x", 1, none.out()), 3601);
    auto stamp = sized<SigilStamp>();
    EXPECT_EQ(sigil_stamp(session.get(), "no token", 8, "x", 1, &stamp), 4000);
}

TEST_P(Judged, TokensAreThoseOfTheMachine)
{
    int count = -1;
    const int code = sigil_tokens(session.get(), &count);
    ASSERT_EQ(code, SIGIL_SUCCESS) << sigil_error_text(session.get());
    auto token = sized<SigilToken>();
    Bytes none;
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(sigil_token(session.get(), i, &token), SIGIL_SUCCESS);
    EXPECT_EQ(sigil_token(session.get(), count, &token), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_token_certificate(session.get(), count, 0, none.out()), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_token_certificate(session.get(), -1, 0, none.out()), SIGIL_BAD_ARGUMENT);
}

TEST_P(Judged, FindingsAgreeWithTheList)
{
    const TemporaryFolder disk;
    fs::copy(sample->folder(), disk.path(), fs::copy_options::recursive);
    list(session.get(), disk.path());
    fs::remove(fieldsOf(session.get(), 0).key_file);
    int count = 0;
    ASSERT_EQ(sigil_examine(session.get(), disk.path().c_str(), &count), SIGIL_SUCCESS);
    int listed = 0;
    std::string mend;
    for (int i = 0; i < count; ++i) {
        auto finding = sized<SigilFinding>();
        ASSERT_EQ(sigil_finding(session.get(), i, &finding), SIGIL_SUCCESS);
        EXPECT_STRNE(finding.path, "");
        EXPECT_STRNE(finding.rule, "");
        EXPECT_STRNE(finding.detail, "");
        if (finding.listed)
            ++listed;
        else
            mend += finding.mend;
    }
    EXPECT_EQ(listed, list(session.get(), disk.path()));
    EXPECT_EQ(listed, 2);
    EXPECT_NE(mend, "");
    auto finding = sized<SigilFinding>();
    EXPECT_EQ(sigil_finding(session.get(), count, &finding), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_finding(session.get(), -1, &finding), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_examine(session.get(), "/no/such/folder", nullptr), SIGIL_FILE_NOT_READ);
}

TEST_P(Judged, RefusesBadArguments)
{
    SigilSession* const s = session.get();
    auto purpose = sized<SigilJudgeOptions>();
    purpose.purpose = 3;
    auto negativePurpose = sized<SigilJudgeOptions>();
    negativePurpose.purpose = -1;
    auto nobody = sized<SigilJudgeOptions>();
    nobody.trusted_count = 1;
    auto negative = sized<SigilJudgeOptions>();
    negative.trusted_count = -1;
    auto status = sized<SigilStatus>();
    auto stamp = sized<SigilStamp>();
    Bytes out;
    const auto judge = [&](const SigilJudgeOptions* with) {
        return sigil_verify_certificate(s, with, certificate.data(), certificate.size());
    };
    const std::vector<int> codes{judge(&purpose), judge(&negativePurpose), judge(&nobody), judge(&negative),
        sigil_verify_certificate(s, nullptr, nullptr, 1), sigil_verify_certificate(s, nullptr, "x", 0),
        sigil_status(s, nullptr, "x", 1, nullptr), sigil_status(s, nullptr, nullptr, 1, &status),
        sigil_timestamp(s, nullptr, "x", 1, out.out()), sigil_timestamp(s, "", "x", 1, out.out()),
        sigil_timestamp(s, closedPort, nullptr, 1, out.out()), sigil_timestamp(s, closedPort, "x", 1, nullptr),
        sigil_stamp(s, nullptr, 1, "x", 1, &stamp), sigil_stamp(s, "x", 1, nullptr, 1, &stamp),
        sigil_stamp(s, "x", 1, "x", 1, nullptr), sigil_examine(s, "", nullptr), sigil_finding(s, 0, nullptr),
        sigil_token_certificate(s, 0, 0, nullptr)};
    for (std::size_t i = 0; i < codes.size(); ++i)
        EXPECT_EQ(codes[i], SIGIL_BAD_ARGUMENT) << i;
    auto token = sized<SigilToken>();
    auto finding = sized<SigilFinding>();
    const std::vector<int> without{sigil_verify_certificate(nullptr, nullptr, "x", 1),
        sigil_status(nullptr, nullptr, "x", 1, &status), sigil_timestamp(nullptr, closedPort, "x", 1, out.out()),
        sigil_stamp(nullptr, "x", 1, "x", 1, &stamp), sigil_tokens(nullptr, nullptr),
        sigil_token(nullptr, 0, &token), sigil_token_certificate(nullptr, 0, 0, out.out()),
        sigil_examine(nullptr, nullptr, nullptr), sigil_finding(nullptr, 0, &finding)};
    for (std::size_t i = 0; i < without.size(); ++i)
        EXPECT_EQ(without[i], SIGIL_NO_HANDLE) << i;
}

} // namespace
