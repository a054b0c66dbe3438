// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Stores and PKCS#12 files.

#include "tests/sigil/sigil_test.h"

#include <filesystem>
#include <vector>

namespace fs = std::filesystem;
using namespace sigil_test;

namespace {

/** A store of its own for each test, and a second disk. */
class Store : public ::testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "2", "--families", "npki,gpki", "--state", "valid", "--keys", "2"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    Store()
    {
        fs::copy(sample->folder(), disk.path(), fs::copy_options::recursive);
        list(session.get(), disk.path());
        withKm = entryWithKm(session.get(), true);
    }

    std::string certificate(int entry, int pair = SIGIL_PAIR_SIGNING)
    {
        Bytes der;
        EXPECT_EQ(sigil_certificate(session.get(), entry, pair, der.out()), SIGIL_SUCCESS);
        return std::string(der.view());
    }

    static std::unique_ptr<SampleStore> sample;
    TemporaryFolder disk, other;
    Session session = open(GetParam());
    int withKm = 0;
};

std::unique_ptr<SampleStore> Store::sample;

INSTANTIATE_TEST_SUITE_P(Toolkits, Store, ::testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI),
    [](const auto& toolkit) { return toolkit.param == SIGIL_TOOLKIT_MAKER ? "Maker" : "Gpki"; });

TEST_P(Store, ExportsAndImportsAllPairs)
{
    const std::string signing = certificate(withKm), km = certificate(withKm, SIGIL_PAIR_KEY_MANAGEMENT);
    for (const int protection : {SIGIL_PROTECTION_3DES, SIGIL_PROTECTION_SEED, SIGIL_PROTECTION_AES256}) {
        const TemporaryFolder target;
        Bytes file;
        list(session.get(), disk.path());
        EXPECT_EQ(sigil_export(session.get(), withKm, protection, "new-5678?", file.out()), SIGIL_LOCKED);
        ASSERT_EQ(sigil_unlock(session.get(), withKm, password), SIGIL_SUCCESS);
        ASSERT_EQ(sigil_export(session.get(), withKm, protection, "new-5678?", file.out()), SIGIL_SUCCESS)
            << sigil_error_text(session.get());
        const auto import = [&](const char* with, int replace) {
            return sigil_import(session.get(), file.data(), file.size(), with, target.path().c_str(), replace);
        };
        EXPECT_EQ(import("not-this-Pass9!", 0), SIGIL_WRONG_PASSWORD);
        EXPECT_EQ(list(session.get(), target.path()), 0);
        ASSERT_EQ(import("new-5678?", 0), SIGIL_SUCCESS) << sigil_error_text(session.get());
        EXPECT_EQ(import("new-5678?", 0), SIGIL_FILE_EXISTS);
        EXPECT_EQ(import("new-5678?", 1), SIGIL_SUCCESS);
        ASSERT_EQ(list(session.get(), target.path()), 1);
        EXPECT_EQ(certificate(0), signing);
        EXPECT_EQ(certificate(0, SIGIL_PAIR_KEY_MANAGEMENT), km);
        EXPECT_EQ(sigil_unlock(session.get(), 0, "new-5678?"), SIGIL_SUCCESS);
    }
    EXPECT_EQ(sigil_import(session.get(), "nothing", 7, "x", other.path().c_str(), 0), SIGIL_IMPORT_REFUSED);
}

TEST_P(Store, CopiesToAnotherDisk)
{
    const std::string wanted = certificate(withKm);
    ASSERT_EQ(sigil_copy(session.get(), withKm, other.path().c_str(), 0), SIGIL_SUCCESS);
    EXPECT_EQ(sigil_copy(session.get(), withKm, other.path().c_str(), 0), SIGIL_FILE_EXISTS);
    EXPECT_EQ(sigil_copy(session.get(), withKm, other.path().c_str(), 1), SIGIL_SUCCESS);
    EXPECT_EQ(sigil_copy(session.get(), withKm, "/no/such/folder", 0), SIGIL_FILE_NOT_READ);
    ASSERT_EQ(list(session.get(), other.path()), 1);
    EXPECT_EQ(certificate(0), wanted);
    EXPECT_EQ(sigil_unlock(session.get(), 0, password), SIGIL_SUCCESS);
}

TEST_P(Store, DeletesAllFilesOfAnEntry)
{
    const std::string file = fieldsOf(session.get(), withKm).certificate_file;
    ASSERT_EQ(sigil_delete(session.get(), withKm), SIGIL_SUCCESS) << sigil_error_text(session.get());
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(sigil_unlock(session.get(), withKm, password), SIGIL_FILE_NOT_READ);
    EXPECT_EQ(list(session.get(), disk.path()), 1);
}

TEST_P(Store, ChangesThePasswordOfAllKeys)
{
    const auto change = [&](const char* from, const char* to) {
        return sigil_change_password(session.get(), withKm, from, to);
    };
    const std::string before = readFile(fieldsOf(session.get(), withKm).key_file);
    EXPECT_EQ(change("not-this-Pass9!", "new-5678?"), SIGIL_WRONG_PASSWORD);
    EXPECT_EQ(readFile(fieldsOf(session.get(), withKm).key_file), before);
    ASSERT_EQ(change(password, "new-5678?"), SIGIL_SUCCESS) << sigil_error_text(session.get());
    EXPECT_EQ(sigil_unlock(session.get(), withKm, password), SIGIL_WRONG_PASSWORD);
    EXPECT_EQ(sigil_unlock(session.get(), withKm, "new-5678?"), SIGIL_SUCCESS);
}

TEST_P(Store, RefusesBadArguments)
{
    SigilSession* const s = session.get();
    Bytes out;
    const std::vector<int> codes{sigil_export(s, 0, 3, "x", out.out()), sigil_export(s, 0, -1, "x", out.out()),
        sigil_export(s, 0, 0, "", out.out()), sigil_export(s, 0, 0, nullptr, out.out()),
        sigil_export(s, 0, 0, "x", nullptr), sigil_export(s, 2, 0, "x", out.out()),
        sigil_import(s, nullptr, 1, "x", nullptr, 0), sigil_import(s, "x", 0, "x", nullptr, 0),
        sigil_import(s, "x", 1, "", nullptr, 0), sigil_import(s, "x", 1, nullptr, nullptr, 0),
        sigil_import(s, "x", 1, "x", "", 0), sigil_copy(s, 2, nullptr, 0), sigil_copy(s, 0, "", 0),
        sigil_delete(s, -1), sigil_delete(s, 2), sigil_change_password(s, 2, "x", "x"),
        sigil_change_password(s, 0, "", "x"), sigil_change_password(s, 0, "x", ""),
        sigil_change_password(s, 0, nullptr, "x"), sigil_change_password(s, 0, "x", nullptr)};
    for (std::size_t i = 0; i < codes.size(); ++i)
        EXPECT_EQ(codes[i], SIGIL_BAD_ARGUMENT) << i;
    const std::vector<int> nobody{sigil_export(nullptr, 0, 0, "x", out.out()),
        sigil_import(nullptr, "x", 1, "x", nullptr, 0), sigil_copy(nullptr, 0, nullptr, 0),
        sigil_delete(nullptr, 0), sigil_change_password(nullptr, 0, "x", "x")};
    for (std::size_t i = 0; i < nobody.size(); ++i)
        EXPECT_EQ(nobody[i], SIGIL_NO_HANDLE) << i;
}

} // namespace
