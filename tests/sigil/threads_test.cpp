// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Sessions are independent: one thread each, over both toolkits, with the list, the doctor and the jobs below them. Run it under the
// thread sanitizer.

#include "tests/sigil/sigil_test.h"

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using namespace sigil_test;

namespace {

constexpr int rounds = 3;

/** Works with a session of its own from beginning to end, and writes into @p folder; counts what was not as it should be. */
void work(int toolkit, const std::string& disk, const std::string& folder, std::atomic<int>& surprises)
{
    const auto expect = [&](bool held) { surprises += held ? 0 : 1; };
    const auto succeed = [&](int code) { expect(code == SIGIL_SUCCESS); };
    const std::string data = "what is signed";
    for (int round = 0; round < rounds; ++round) {
        const Session session = open(toolkit);
        auto options = sized<SigilListOptions>();
        options.medium = disk.c_str();
        int count = 0;
        expect(sigil_list(session.get(), &options, &count) == SIGIL_SUCCESS && count == 2);
        auto fields = sized<SigilFields>();
        expect(sigil_fields(session.get(), 1, &fields) == SIGIL_SUCCESS && *fields.name);
        expect(sigil_unlock(session.get(), 1, "another") == SIGIL_WRONG_PASSWORD);
        expect(*sigil_error_text(session.get()));
        succeed(sigil_unlock(session.get(), 1, password));
        Bytes message;
        succeed(sigil_sign(session.get(), 1, nullptr, data.data(), data.size(), message.out()));
        Bytes content;
        int signers = 0;
        succeed(sigil_verify(session.get(), message.data(), message.size(), nullptr, 0, content.out(), &signers));
        expect(content.view() == data);
        Bytes certificate;
        succeed(sigil_certificate(session.get(), 1, SIGIL_PAIR_SIGNING, certificate.out()));
        Bytes sealed;
        succeed(sigil_encrypt(
            session.get(), SIGIL_CIPHER_SEED, certificate.out(), 1, data.data(), data.size(), sealed.out()));
        Bytes opened;
        succeed(sigil_decrypt(session.get(), 1, sealed.data(), sealed.size(), opened.out()));
        expect(opened.view() == data);
        Bytes file;
        succeed(sigil_export(session.get(), 1, SIGIL_PROTECTION_AES256, password, file.out()));
        succeed(sigil_import(session.get(), file.data(), file.size(), password, folder.c_str(), 1));
        int findings = 0;
        expect(sigil_examine(session.get(), disk.c_str(), &findings) == SIGIL_SUCCESS && findings == 2);
    }
}

} // namespace

TEST(Threads, SessionsAreIndependent)
{
    const SampleStore store({"--count", "2", "--keys", "2", "--pairs", "signing"});
    // No close unloads a library: the loader writes over the memory of one that goes, under a lock that the sanitizer does not see.
    const Session maker = open(SIGIL_TOOLKIT_MAKER);
    const Session government = open(SIGIL_TOOLKIT_GPKI);
    std::array<TemporaryFolder, 3> folders;
    std::atomic<int> surprises = 0;
    std::vector<std::thread> threads;
    for (const int toolkit : {SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI, SIGIL_TOOLKIT_MAKER})
        threads.emplace_back(
            work, toolkit, store.folder().string(), folders.at(threads.size()).path(), std::ref(surprises));
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(surprises, 0);
}
