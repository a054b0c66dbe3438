// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Keys, signatures and encryption, with both toolkits.

#include "tests/sigil/sigil_test.h"
#include "tests/support/secret_hunt.h"

#include <sys/resource.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <vector>

using namespace sigil_test;

namespace {

constexpr std::string_view text = "서명할 내용";

/** What @p work returns while the process may have nothing of @p resource. */
template <class Work>
int within(decltype(RLIMIT_FSIZE) resource, Work work)
{
    rlimit before{};
    EXPECT_EQ(getrlimit(resource, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    EXPECT_EQ(setrlimit(resource, &none), 0);
    const int result = work();
    setrlimit(resource, &before);
    return result;
}

/** A session with a listed store; entries with a key-management pair and without one. */
class Keys : public ::testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "6", "--families", "npki,gpki", "--state", "valid", "--keys", "2"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    Keys()
    {
        list(session.get(), sample->folder().string());
        withKm = entryWithKm(session.get(), true);
        without = entryWithKm(session.get(), false);
    }

    void unlock(int entry)
    {
        ASSERT_EQ(sigil_unlock(session.get(), entry, password), SIGIL_SUCCESS) << sigil_error_text(session.get());
    }
    int sign(int form, Bytes& to, int entry)
    {
        auto options = sized<SigilSignOptions>();
        options.form = form;
        return sigil_sign(session.get(), entry, &options, text.data(), text.size(), to.out());
    }
    int verify(const Bytes& message, std::string_view beside = {})
    {
        return sigil_verify(
            session.get(), message.data(), message.size(), beside.data(), beside.size(), nullptr, nullptr);
    }
    int encryptFor(const std::vector<std::pair<int, int>>& recipients, Bytes& to, int cipher = SIGIL_CIPHER_AES256)
    {
        std::vector<SigilBytes> certificates(recipients.size());
        for (std::size_t i = 0; i < recipients.size(); ++i)
            sigil_certificate(session.get(), recipients[i].first, recipients[i].second, &certificates[i]);
        const int code = sigil_encrypt(session.get(), cipher, certificates.data(),
            static_cast<int>(certificates.size()), text.data(), text.size(), to.out());
        for (SigilBytes& certificate : certificates)
            sigil_free(&certificate);
        return code;
    }
    int decrypt(int entry, const Bytes& message, Bytes& to)
    {
        return sigil_decrypt(session.get(), entry, message.data(), message.size(), to.out());
    }
    /** The report's row of an entry. */
    const Certificate& row(int entry)
    {
        const std::string file = fieldsOf(session.get(), entry).certificate_file;
        for (const Certificate& each : sample->certificates())
            if (each.at("signing_certificate") == file)
                return each;
        throw std::runtime_error("not in the report: " + file);
    }

    static std::unique_ptr<SampleStore> sample;
    Session session = open(GetParam());
    int withKm = 0, without = 0;
};

std::unique_ptr<SampleStore> Keys::sample;

INSTANTIATE_TEST_SUITE_P(Toolkits, Keys, ::testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI),
    [](const auto& toolkit) { return toolkit.param == SIGIL_TOOLKIT_MAKER ? "Maker" : "Gpki"; });

TEST_P(Keys, OpenWithTheirPassword)
{
    EXPECT_EQ(sigil_unlock(session.get(), withKm, "not-this-Pass9!"), SIGIL_WRONG_PASSWORD);
    EXPECT_STRNE(sigil_error_text(session.get()), "");
    EXPECT_EQ(fieldsOf(session.get(), withKm).unlocked, 0);
    unlock(withKm);
    EXPECT_EQ(fieldsOf(session.get(), withKm).unlocked, 1);
    EXPECT_EQ(fieldsOf(session.get(), without).unlocked, 0);
    EXPECT_EQ(sigil_unlock(session.get(), withKm, "not-this-Pass9!"), SIGIL_WRONG_PASSWORD);
    EXPECT_EQ(fieldsOf(session.get(), withKm).unlocked, 1);
    EXPECT_EQ(sigil_lock(session.get(), withKm), SIGIL_SUCCESS);
    EXPECT_EQ(fieldsOf(session.get(), withKm).unlocked, 0);
    unlock(withKm);
    unlock(without);
    EXPECT_EQ(sigil_lock(session.get(), SIGIL_ALL_ENTRIES), SIGIL_SUCCESS);
    EXPECT_EQ(fieldsOf(session.get(), withKm).unlocked + fieldsOf(session.get(), without).unlocked, 0);
}

TEST_P(Keys, AreHandedOutPlainOrUnderANewPassword)
{
    Bytes key, plain, encrypted, km;
    EXPECT_EQ(sigil_private_key(session.get(), withKm, SIGIL_PAIR_SIGNING, nullptr, key.out()), SIGIL_LOCKED);
    unlock(withKm);
    unlock(without);
    ASSERT_EQ(sigil_private_key(session.get(), withKm, SIGIL_PAIR_SIGNING, nullptr, plain.out()), SIGIL_SUCCESS);
    ASSERT_EQ(
        sigil_private_key(session.get(), withKm, SIGIL_PAIR_SIGNING, "new-5678?", encrypted.out()), SIGIL_SUCCESS);
    ASSERT_EQ(
        sigil_private_key(session.get(), withKm, SIGIL_PAIR_KEY_MANAGEMENT, nullptr, km.out()), SIGIL_SUCCESS);
    EXPECT_NE(plain.view(), km.view());
    const TemporaryFolder work;
    const std::string file = work.write("key", encrypted.view());
    const Outcome opened = run({"openssl", "pkcs8", "-inform", "DER", "-in", file, "-passin", "pass:new-5678?",
        "-outform", "DER", "-topk8", "-nocrypt"});
    const Outcome same = run({"openssl", "pkcs8", "-inform", "DER", "-in", work.write("plain", plain.view()),
        "-nocrypt", "-outform", "DER", "-topk8"});
    EXPECT_EQ(opened.status, 0) << opened.err;
    EXPECT_EQ(opened.out, same.out);
    EXPECT_EQ(
        sigil_private_key(session.get(), without, SIGIL_PAIR_KEY_MANAGEMENT, nullptr, key.out()), SIGIL_NO_KEY);
}

TEST_P(Keys, SignMessagesThatVerify)
{
    unlock(without);
    for (const int form : {SIGIL_FORM_ATTACHED, SIGIL_FORM_DETACHED}) {
        Bytes message, content;
        ASSERT_EQ(sign(form, message, without), SIGIL_SUCCESS) << sigil_error_text(session.get());
        const bool attached = form == SIGIL_FORM_ATTACHED;
        EXPECT_EQ(message.view().find(text) != std::string_view::npos, attached);
        int signers = 0;
        ASSERT_EQ(sigil_verify(session.get(), message.data(), message.size(), attached ? nullptr : text.data(),
                      attached ? 0 : text.size(), content.out(), &signers),
            SIGIL_SUCCESS)
            << sigil_error_text(session.get());
        EXPECT_EQ(content.view(), text);
        EXPECT_EQ(signers, 1);
        auto signer = sized<SigilSigner>();
        ASSERT_EQ(sigil_signer(session.get(), 0, &signer), SIGIL_SUCCESS);
        EXPECT_NEAR(static_cast<double>(signer.signing_time), static_cast<double>(std::time(nullptr)), 600);
        EXPECT_EQ(signer.stamp_time, 0);
        EXPECT_EQ(signer.stamp_code, SIGIL_SUCCESS);
        Bytes certificate;
        sigil_certificate(session.get(), without, SIGIL_PAIR_SIGNING, certificate.out());
        EXPECT_EQ(certificate.view(),
            std::string_view(reinterpret_cast<const char*>(signer.certificate), signer.certificate_size));
        EXPECT_EQ(sigil_signer(session.get(), 1, &signer), SIGIL_BAD_ARGUMENT);
        EXPECT_EQ(verify(message, "another text"), 3901);
        std::string damaged(message.view());
        damaged.back() = static_cast<char>(damaged.back() ^ 1);
        EXPECT_EQ(sigil_verify(session.get(), damaged.data(), damaged.size(), attached ? nullptr : text.data(),
                      attached ? 0 : text.size(), nullptr, nullptr),
            3403);
        EXPECT_EQ(sigil_signer(session.get(), 0, &signer), SIGIL_SUCCESS);
    }
    Bytes detached;
    ASSERT_EQ(sign(SIGIL_FORM_DETACHED, detached, without), SIGIL_SUCCESS);
    EXPECT_EQ(verify(detached), 3901);
    EXPECT_EQ(sigil_verify(session.get(), "no message", 10, nullptr, 0, nullptr, nullptr), 3900);
}

TEST_P(Keys, MakeSignaturesThatStandAlone)
{
    unlock(without);
    Bytes signature, certificate, other;
    ASSERT_EQ(sign(SIGIL_FORM_RAW, signature, without), SIGIL_SUCCESS);
    sigil_certificate(session.get(), without, SIGIL_PAIR_SIGNING, certificate.out());
    const auto verifyRaw = [&](const Bytes& signer, std::string_view data) {
        return sigil_verify_raw(session.get(), signer.data(), signer.size(), data.data(), data.size(),
            signature.data(), signature.size());
    };
    EXPECT_EQ(verifyRaw(certificate, text), SIGIL_SUCCESS);
    EXPECT_EQ(verifyRaw(certificate, "another text"), 3403);
    EXPECT_EQ(sigil_verify_raw(session.get(), "x", 1, text.data(), text.size(), "y", 1), 3101);
}

TEST_P(Keys, OpenWhatIsEncryptedForThem)
{
    for (int cipher = SIGIL_CIPHER_AES256; cipher <= SIGIL_CIPHER_3DES; ++cipher) {
        Bytes message, content, none;
        ASSERT_EQ(encryptFor({{withKm, SIGIL_PAIR_KEY_MANAGEMENT}}, message, cipher), SIGIL_SUCCESS) << cipher;
        EXPECT_EQ(message.view().find(text), std::string_view::npos);
        EXPECT_EQ(decrypt(withKm, message, none), SIGIL_LOCKED);
        unlock(withKm);
        ASSERT_EQ(decrypt(withKm, message, content), SIGIL_SUCCESS) << sigil_error_text(session.get());
        EXPECT_EQ(content.view(), text);
        unlock(without);
        EXPECT_EQ(decrypt(without, message, none), 3902);
        sigil_lock(session.get(), SIGIL_ALL_ENTRIES);
    }
    Bytes both, content, none;
    ASSERT_EQ(encryptFor({{withKm, SIGIL_PAIR_SIGNING}, {without, SIGIL_PAIR_SIGNING}}, both), SIGIL_SUCCESS);
    unlock(withKm);
    unlock(without);
    EXPECT_EQ(decrypt(withKm, both, content), SIGIL_SUCCESS);
    EXPECT_EQ(decrypt(without, both, none), SIGIL_SUCCESS);
    EXPECT_EQ(content.view(), none.view());
    EXPECT_EQ(sigil_decrypt(session.get(), without, "no message", 10, none.out()), 3900);
    const SigilBytes nobody{reinterpret_cast<unsigned char*>(const_cast<char*>("x")), 1};
    EXPECT_EQ(sigil_encrypt(session.get(), 0, &nobody, 1, "x", 1, none.out()), 3101);
}

TEST_P(Keys, TellWhoseTheyAre)
{
    const std::string number = row(without).at("identity");
    EXPECT_EQ(sigil_identity(session.get(), without, number.c_str()), SIGIL_LOCKED);
    unlock(without);
    EXPECT_EQ(sigil_identity(session.get(), without, number.c_str()), SIGIL_SUCCESS);
    EXPECT_EQ(sigil_identity(session.get(), without, "0000000000000"), SIGIL_IDENTITY_MISMATCH);
}

TEST_P(Keys, AreOfCertificatesThatHaveThem)
{
    const TemporaryFolder disk;
    std::filesystem::copy(sample->folder(), disk.path(), std::filesystem::copy_options::recursive);
    ASSERT_EQ(list(session.get(), disk.path()), 6);
    std::filesystem::remove(fieldsOf(session.get(), 0).key_file);
    EXPECT_EQ(sigil_unlock(session.get(), 0, password), SIGIL_FILE_NOT_READ);
    writeFile(fieldsOf(session.get(), 1).key_file, "damaged");
    EXPECT_EQ(sigil_unlock(session.get(), 1, password), 2000);
}

TEST_P(Keys, SignNothingWhereNoFileCanBeMade)
{
    unlock(without);
    Bytes message;
    const std::string text = "cannot write memory: ";
    EXPECT_EQ(within(RLIMIT_NOFILE, [&] { return sign(SIGIL_FORM_DETACHED, message, without); }), SIGIL_FAILED);
    EXPECT_EQ(sigil_error_text(session.get()), text + std::strerror(EMFILE));
    std::signal(SIGXFSZ, SIG_IGN); // that a file may not grow is to be told by the call
    EXPECT_EQ(within(RLIMIT_FSIZE, [&] { return sign(SIGIL_FORM_DETACHED, message, without); }), SIGIL_FAILED);
    std::signal(SIGXFSZ, SIG_DFL);
    EXPECT_EQ(sigil_error_text(session.get()), text + std::strerror(EFBIG));
    EXPECT_EQ(message.data(), nullptr);
    EXPECT_EQ(sign(SIGIL_FORM_DETACHED, message, without), SIGIL_SUCCESS);
}

TEST_P(Keys, SignNothingWhereNoFolderCanBeMade)
{
    unlock(without);
    Bytes message;
    const char* const before = std::getenv("TMPDIR");
    const std::string kept = before ? before : "/tmp";
    std::string longest = kept;
    while (longest.size() + 8 < PATH_MAX) // a folder, in which no name has room
        longest += "/.";
    for (const auto& [folder, error] :
        {std::pair{std::string("/no/such/folder"), ENOENT}, {longest, ENAMETOOLONG}}) {
        setenv("TMPDIR", folder.c_str(), 1);
        EXPECT_EQ(sign(SIGIL_FORM_DETACHED, message, without), SIGIL_FAILED) << folder;
        EXPECT_TRUE(std::string_view(sigil_error_text(session.get())).ends_with(std::strerror(error)))
            << sigil_error_text(session.get());
    }
    setenv("TMPDIR", kept.c_str(), 1);
    EXPECT_EQ(message.data(), nullptr);
}

TEST_P(Keys, RefuseBadArguments)
{
    SigilSession* const s = session.get();
    unlock(without);
    Bytes out;
    const SigilBytes recipient{reinterpret_cast<unsigned char*>(const_cast<char*>("x")), 1};
    auto form = sized<SigilSignOptions>();
    form.form = 3;
    auto negativeForm = sized<SigilSignOptions>();
    negativeForm.form = -1;
    auto unstamped = sized<SigilSignOptions>();
    unstamped.stamp_url = "";
    auto stamped = sized<SigilSignOptions>();
    stamped.form = SIGIL_FORM_RAW;
    stamped.stamp_url = "http://127.0.0.1:1/";
    auto signer = sized<SigilSigner>();
    const std::vector<int> codes{sigil_unlock(s, -1, password), sigil_unlock(s, 6, password),
        sigil_unlock(s, 0, nullptr), sigil_unlock(s, 0, ""), sigil_lock(s, -2), sigil_lock(s, 6),
        sigil_private_key(s, without, 2, nullptr, out.out()), sigil_private_key(s, without, 0, "", out.out()),
        sigil_private_key(s, without, 0, nullptr, nullptr), sigil_private_key(s, 6, 0, nullptr, out.out()),
        sigil_identity(s, without, nullptr), sigil_identity(s, without, ""), sigil_identity(s, -1, "1"),
        sigil_sign(s, without, &form, "x", 1, out.out()), sigil_sign(s, without, &negativeForm, "x", 1, out.out()),
        sigil_sign(s, without, &unstamped, "x", 1, out.out()), sigil_sign(s, without, &stamped, "x", 1, out.out()),
        sigil_sign(s, without, nullptr, nullptr, 1, out.out()), sigil_sign(s, without, nullptr, "x", 0, out.out()),
        sigil_sign(s, without, nullptr, "x", 1, nullptr), sigil_sign(s, 6, nullptr, "x", 1, out.out()),
        sigil_verify(s, nullptr, 1, nullptr, 0, nullptr, nullptr),
        sigil_verify(s, "x", 0, nullptr, 0, nullptr, nullptr),
        sigil_verify(s, "x", 1, nullptr, 1, nullptr, nullptr), sigil_verify(s, "x", 1, "x", 0, nullptr, nullptr),
        sigil_signer(s, 0, &signer), sigil_signer(s, -1, &signer), sigil_verify_raw(s, nullptr, 1, "x", 1, "x", 1),
        sigil_encrypt(s, 8, &recipient, 1, "x", 1, out.out()),
        sigil_encrypt(s, -1, &recipient, 1, "x", 1, out.out()), sigil_encrypt(s, 0, nullptr, 1, "x", 1, out.out()),
        sigil_encrypt(s, 0, &recipient, 0, "x", 1, out.out()), sigil_encrypt(s, 0, &recipient, 1, "x", 1, nullptr),
        sigil_decrypt(s, without, nullptr, 1, out.out()), sigil_decrypt(s, without, "x", 1, nullptr),
        sigil_decrypt(s, 6, "x", 1, out.out())};
    for (std::size_t i = 0; i < codes.size(); ++i)
        EXPECT_EQ(codes[i], SIGIL_BAD_ARGUMENT) << i;
    EXPECT_EQ(out.data(), nullptr);
    const std::vector<int> without_session{sigil_unlock(nullptr, 0, password), sigil_lock(nullptr, 0),
        sigil_private_key(nullptr, 0, 0, nullptr, out.out()), sigil_identity(nullptr, 0, "1"),
        sigil_sign(nullptr, 0, nullptr, "x", 1, out.out()),
        sigil_verify(nullptr, "x", 1, nullptr, 0, nullptr, nullptr), sigil_signer(nullptr, 0, &signer),
        sigil_verify_raw(nullptr, "x", 1, "x", 1, "x", 1),
        sigil_encrypt(nullptr, 0, &recipient, 1, "x", 1, out.out()), sigil_decrypt(nullptr, 0, "x", 1, out.out())};
    for (std::size_t i = 0; i < without_session.size(); ++i)
        EXPECT_EQ(without_session[i], SIGIL_NO_HANDLE) << i;
    Bytes locked;
    EXPECT_EQ(sigil_sign(s, withKm, nullptr, "x", 1, locked.out()), SIGIL_LOCKED);
}

} // namespace
