// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Processors of the certificate list are independent: one thread each, on both open toolkits. Run it under the thread sanitizer.

#include "tests/support/sample_store.h"

#include <sigildesk/handles.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr int rounds = 2;
constexpr int removableDisk = 2;

char* text(const std::string& value) { return const_cast<char*>(value.c_str()); }

/** A buffer that a function hands out. */
struct Buffer {
    ~Buffer() { CLP_MemFree(nullptr, reinterpret_cast<void**>(&data)); }
    char* data = nullptr;
    int length = 0;
};

sigildesk::ProcessorHandle processor(int type)
{
    sigildesk::ProcessorHandle handle;
    EXPECT_EQ(sigildesk::initialise(handle, type, 1, text(SIGILDESK_LIBRARY_FOLDER)), 0);
    return handle;
}

/** Works with a processor of its own from beginning to end, and writes into @p folder; counts what was not as it should be. */
void work(int type, const std::string& disk, const std::string& folder, std::atomic<int>& surprises)
{
    const auto expect = [&](bool held) { surprises += held ? 0 : 1; };
    const auto succeed = [&](int code) { expect(code == 0); };
    const std::string password = "sample1234!";
    const std::string file = folder + "/exported.pfx";
    for (int round = 0; round < rounds; ++round) {
        const auto handle = processor(type);
        void* const clp = handle.get();
        tagLOADCERTOPT options{};
        options.nPKITypes = 15;
        succeed(CLP_SetType(clp, &options));
        succeed(CLP_SetMediaType(clp, removableDisk, text(disk), 0));
        succeed(CLP_LoadCertList(clp));
        expect(CLP_GetCertCount(clp) == 2);
        const auto entry = std::make_unique<tagCERTINFO>();
        succeed(CLP_GetCertInfo(clp, 0, entry.get()));
        expect(*entry->szSubjectDN != '\0');
        Buffer refused;
        expect(
            CLP_DecryptPriKey(clp, 0, text("another"), &refused.data, &refused.length, nullptr, nullptr) == 1113);
        Buffer key;
        succeed(CLP_DecryptPriKey(clp, 0, text(password), &key.data, &key.length, nullptr, nullptr));
        succeed(CLP_CopySelCertToDISK(clp, removableDisk, 0, removableDisk, text(folder), text(password)));
        if (type != 0) // the government's toolkit makes no PKCS#12 files
            continue;
        succeed(CLP_ExportPFX(clp, 0, text(password), text(file)));
        std::array<Buffer, 4> imported;
        succeed(CLP_ImportPFX(clp, text(file), text(password), &imported[0].data, &imported[0].length,
            &imported[1].data, &imported[1].length, &imported[2].data, &imported[2].length, &imported[3].data,
            &imported[3].length));
        expect(imported[1].length == key.length);
    }
}

} // namespace

TEST(ListThreads, ProcessorsAreIndependent)
{
    const SampleStore store({"--count", "2", "--keys", "2"});
    const std::string disk = store.folder().string();
    // No end unloads a library: the loader writes over the memory of one that goes, under a lock that the sanitizer does not see.
    const auto maker = processor(0);
    const auto government = processor(1);
    std::array<TemporaryFolder, 3> folders;
    std::atomic<int> surprises = 0;
    std::vector<std::thread> threads;
    for (const int type : {0, 1, 0})
        threads.emplace_back(work, type, disk, folders.at(threads.size()).path(), std::ref(surprises));
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(surprises, 0);
}
