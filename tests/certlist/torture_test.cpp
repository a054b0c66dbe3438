// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Torture: a session in which the k-th toolkit call fails, for every k; then one in which the k-th memory allocation of
// the library fails. Never a crash, a byte string that is not given back or given back twice, or a code that is not
// stated; and no private key left behind in toolkit memory.

#include "tests/certlist/scenario.h"
#include "tests/certlist/scripted.h"
#include "tests/support/failing_allocator.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace fs = std::filesystem;

namespace {

constexpr int injected = 77;

/** Every code that a function of the boundary states, and the toolkit's own, which pass through. */
const std::set<int> stated{0, 1000, 1001, 1005, 1007, 1008, 1010, 1100, 1102, 1105, 1111, 1113, 1114, 1115, 1118,
    1119, 1120, 1122, 1123, 1124, 1125, 1126, 1127, 1128, 1129, 1130, 1131, 1132, injected, fake::fileError,
    fake::writeError};

class Torture : public Scripted {
protected:
    /** A store, settings and toolkit as new. */
    void renew()
    {
        fs::remove_all(home / "NPKI");
        fs::remove_all(home / "GPKI");
        addGpki("g");
        addKm(addNpki("n"));
        writeFile(library / "Issuer_KOR.conf", "[Info_count]\nIssuer_Info=1\n[Issuer_Info1]\ncn=a\nname=b\n");
        writeFile(library / "HVCToolkitV30.conf",
            "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN=cn=Root\nDIR_URL=ldap://x\n");
        writeFile(disk / "imported.pfx", fake::pfx(goodPassword, {fake::certificate()}, {fake::key()}));
        fake::install();
        fake::directory["ldap://x/cn=Root"] = "root";
        foreign = 0;
        secrets = 0;
        doubles::answer("HVTK_BINSTR_Delete", [this](const doubles::Call& call) {
            secrets += isSecret(doubles::contents(call.pointer<BINSTR>(0))) ? 1 : 0;
            const int rc = doubles::release(call.pointer<BINSTR>(0));
            foreign += rc == doubles::foreignByteString ? 1 : 0;
            return rc;
        });
    }
    /** Key files and PKCS#12 files may go back to the toolkit as they are. */
    static bool isSecret(const std::string& bytes)
    {
        const bool holdsOne = bytes.find("KEY(") != bytes.npos || bytes.rfind("random of", 0) == 0;
        return holdsOne && bytes.rfind("ENC(", 0) != 0 && bytes.rfind("PFX", 0) != 0;
    }
    void expectStated(const Codes& codes, long k)
    {
        EXPECT_EQ(foreign, 0) << "k = " << k;
        EXPECT_EQ(secrets, 0) << "k = " << k;
        for (std::size_t i = 0; i < codes.count; ++i)
            EXPECT_TRUE(stated.count(codes.code[i])) << codes.code[i] << " of step " << i << " for k = " << k;
    }

    SessionTexts texts{library, disk};
    int foreign = 0; ///< byte strings given back twice
    int secrets = 0; ///< byte strings given back with a key or a random value in them
};

TEST_F(Torture, SessionWithoutAFailure)
{
    renew();
    const Codes codes = runSession(texts);
    for (std::size_t i = 0; i < codes.count; ++i)
        EXPECT_EQ(codes.code[i], 0) << "step " << i;
    EXPECT_EQ(doubles::liveByteStrings(), 0);
    expectStated(codes, 0);
}

const void* watched = nullptr; ///< a buffer that is about to be released
std::string lastContents;      ///< what was in it then

TEST_F(Torture, BuffersThatWereHandedOutAreWipedBeforeTheyAreReleased)
{
    renew();
    start();
    ASSERT_EQ(load(), 0);
    char* key = nullptr;
    int length = 0;
    ASSERT_EQ(CLP_DecryptPriKey(clp, 0, Text(goodPassword), &key, &length, nullptr, nullptr), 0);
    ASSERT_EQ(std::string(key, static_cast<std::size_t>(length)), fake::key());
    watched = key;
    lastContents.assign(static_cast<std::size_t>(length) + 1, '?');
    allocations.released = [](const void* memory) {
        if (memory == watched)
            std::copy_n(static_cast<const char*>(memory), lastContents.size(), lastContents.begin());
    };
    EXPECT_EQ(CLP_MemFree(clp, reinterpret_cast<void**>(&key)), 0);
    allocations.released = nullptr;
    EXPECT_EQ(key, nullptr);
    EXPECT_EQ(lastContents, std::string(lastContents.size(), '\0'));
}

TEST_F(Torture, EveryToolkitCallFailsOnce)
{
    renew();
    runSession(texts);
    const int calls = static_cast<int>(doubles::calls().size());
    for (int k = 1; k <= calls; ++k) {
        renew();
        bool releaseRefused = false;
        doubles::interpose([&](int n, const std::string& symbol) {
            releaseRefused = releaseRefused || (n == k && symbol == "HVTK_BINSTR_Delete");
            return n == k ? injected : 0;
        });
        expectStated(runSession(texts), k);
        EXPECT_EQ(doubles::liveByteStrings(), releaseRefused ? 1 : 0) << "k = " << k;
    }
    RecordProperty("toolkit_calls", calls);
    std::printf("every one of %d toolkit calls failed once\n", calls);
}

TEST_F(Torture, EveryAllocationFailsOnce)
{
    renew();
    std::vector<bool> ofLibrary;
    ofLibrary.reserve(1 << 20);
    allocations = {true, 0, -1, &ofLibrary};
    runSession(texts);
    allocations.counting = false;
    int failed = 0;
    long outOfMemory = 0;
    for (std::size_t k = 0; k < ofLibrary.size(); ++k) {
        if (!ofLibrary[k])
            continue;
        renew();
        allocations = {true, 0, static_cast<long>(k), nullptr};
        const Codes codes = runSession(texts);
        allocations.counting = false;
        expectStated(codes, static_cast<long>(k));
        EXPECT_EQ(doubles::liveByteStrings(), 0) << "k = " << k;
        outOfMemory += std::count(codes.code.begin(), codes.code.end(), 1000);
        ++failed;
    }
    EXPECT_GT(failed, 100);
    EXPECT_GT(outOfMemory, failed / 2); // most are told to the caller; a few only cost a log record or a loader
    RecordProperty("allocations", failed);
    std::printf("every one of %d allocations failed once\n", failed);
}

} // namespace
