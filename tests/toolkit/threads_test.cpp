// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Handles of the façade on both open toolkits are independent: one thread each. Run it under the thread sanitizer.

#include "tests/support/sample_store.h"
#include "tests/toolkit/facade.h"

#include <sigildesk/open_toolkit.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using namespace toolkit_test;

namespace {

constexpr int rounds = 3;
constexpr char password[] = "sample1234!";
constexpr char content[] = "what is signed and sealed";

/** A certificate and its key, as they lie on a disk. */
struct Pair {
    std::string certificate;
    std::string key;
};

/** Works with a handle of its own from beginning to end; counts what was not as it should be. */
void work(int type, const Pair& pair, std::atomic<int>& surprises)
{
    const auto expect = [&](bool held) { surprises += held ? 0 : 1; };
    const auto succeed = [&](int code) { expect(code == 0); };
    for (int round = 0; round < rounds; ++round) {
        const Facade facade(type);
        void* const handle = facade.get();
        Bytes certificate(facade, pair.certificate);
        Bytes locked(facade, pair.key);
        Bytes key(facade);
        Bytes data(facade, content);
        std::array<char, 2048> words{};
        succeed(CertLoad(handle, certificate.get()));
        succeed(CertGetSubjectName(handle, static_cast<int>(words.size()), words.data()));
        succeed(CertUnLoad(handle));
        expect(PriKeyDecrypt(handle, text("another"), locked.get(), key.get()) == SIGIL_TK_KEY_WRONG_PASSWORD);
        succeed(HV_GetErrInfo2(handle, static_cast<int>(words.size()), words.data()));
        succeed(PriKeyDecrypt(handle, text(password), locked.get(), key.get()));
        Bytes message(facade);
        succeed(CMSMakeSignedData(
            handle, 0, certificate.get(), key.get(), data.get(), text("2026-01-02 03:04:05"), message.get()));
        Bytes signedContent(facade);
        int signers = 0;
        succeed(CMSProcessSignedData(handle, 0, message.get(), signedContent.get(), &signers));
        expect(signedContent.content() == content && signers == 1);
        Bytes sealed(facade);
        succeed(CMSMakeEnvelopedData(handle, 0, certificate.get(), data.get(), 0, sealed.get()));
        Bytes opened(facade);
        succeed(CMSProcessEnvelopedData(handle, certificate.get(), key.get(), sealed.get(), opened.get()));
        expect(opened.content() == content);
    }
}

/** Half of the threads have the one type, half the other. No library is unloaded meanwhile: the loader writes over the memory of
 *  one that goes, under a lock that the sanitizer does not see. */
TEST(ToolkitThreads, HandlesOfBothTypesAreIndependent)
{
    const SampleStore store({"--count", "1", "--keys", "2", "--pairs", "both", "--state", "valid"});
    const ::Certificate& listed = store.certificates().front();
    const Pair pair{readFile(listed.at("km_certificate")), readFile(listed.at("km_key"))};
    const Facade maker(0);
    const Facade government(1);
    std::atomic<int> surprises = 0;
    std::vector<std::thread> threads;
    for (const int type : {0, 1, 0, 1})
        threads.emplace_back(work, type, std::cref(pair), std::ref(surprises));
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(surprises, 0);
}

} // namespace
