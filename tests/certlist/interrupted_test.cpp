// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Copy, export and delete on the open toolkit: killed before every call that changes files, and with every such call
// failing. Files are always whole and for their owner alone, a certificate never stands beside a key of another, what
// was reported as done is there, and the next operation at the same place leaves nothing of a killed one.

#include "tests/support/interrupted.h"
#include "tests/support/sample_store.h"

#include "foundation/environment.h"

#include <sigildesk/certlist.h>
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <set>

namespace fs = std::filesystem;

namespace {

char password[] = "sample1234!";
std::string homeOfTests; // what the injected environment answers

void write(const fs::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
}

/** The files of a folder by their names; the test fails on one that others may read. */
std::map<std::string, std::string> filesIn(const fs::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& item : fs::directory_iterator(folder)) {
        if (!item.is_regular_file())
            continue;
        files[item.path().filename().string()] = readFile(item.path());
        EXPECT_EQ(item.status().permissions(), fs::perms::owner_read | fs::perms::owner_write) << item.path();
    }
    return files;
}

std::string text(const unsigned char* bytes, int length)
{
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)};
}

constexpr std::size_t signPair = 0;
constexpr std::size_t kmPair = 1;

/** A certificate and its key file. */
struct Pair {
    std::string certificate;
    std::string key;
};
using Pairs = std::array<Pair, 2>;

enum class State { Gone, WithoutKey, Old, New, Mixed };

class Interrupted : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "8", "--families", "npki", "--pairs", "both"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    void SetUp() override
    {
        homeOfTests = home.path("user");
        sigil::environment().homeFolder = [] { return homeOfTests; };
        restoreStore();
        std::string folder = SIGILDESK_LIBRARY_FOLDER;
        tagLOADCERTOPT options{};
        options.nPKITypes = 2;
        ASSERT_EQ(sigildesk::initialise(clp, 0, 1, folder.data()), 0);
        ASSERT_EQ(sigildesk::initialise(facade, 0, folder.data()), 0);
        ASSERT_EQ(CLP_SetType(clp.get(), &options), 0);
        ASSERT_EQ(CLP_SetMediaType(clp.get(), 1, nullptr, 0), 0);
        ASSERT_EQ(CLP_LoadCertList(clp.get()), 0);
        for (int i = 1; i < CLP_GetCertCount(clp.get()); ++i)
            if (entry(i)->nKmCertLen > 0)
                withBothPairs.push_back(i);
        ASSERT_GE(withBothPairs.size(), 2u);
    }
    void TearDown() override
    {
        clp.reset();
        facade.reset();
        sigil::environment() = machine;
    }
    void restoreStore()
    {
        fs::remove_all(homeOfTests);
        fs::copy(sample->folder(), homeOfTests, fs::copy_options::recursive);
    }
    std::unique_ptr<tagCERTINFO> entry(int index)
    {
        auto record = std::make_unique<tagCERTINFO>();
        EXPECT_EQ(CLP_GetCertInfo(clp.get(), index, record.get()), 0);
        return record;
    }
    Pairs pairsOf(int index)
    {
        const auto info = entry(index);
        return {
            Pair{text(info->bySignCert, info->nSignCertLen), text(info->byEncSignPriKey, info->nEncSignPriKeyLen)},
            Pair{text(info->byKmCert, info->nKmCertLen), text(info->byEncKmPriKey, info->nEncKmPriKeyLen)}};
    }
    /** Whether the key file opens and belongs to the certificate. */
    bool belong(const Pair& pair)
    {
        BINSTR certificate{}, stored{}, key{};
        const auto set = [&](const std::string& bytes, BINSTR& to) {
            auto* data = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
            HV_BINSTR_SetData(facade.get(), data, static_cast<int>(bytes.size()), &to);
        };
        set(pair.certificate, certificate);
        set(pair.key, stored);
        const bool fit = PriKeyDecrypt(facade.get(), password, &stored, &key) == 0 &&
            PriKeyCheckKeyPair(facade.get(), &certificate, &key) == 0;
        for (BINSTR* bytes : {&certificate, &stored, &key})
            HV_BINSTR_Delete(facade.get(), bytes);
        return fit;
    }
    State stateOf(const Pair& found, const Pair& old, const std::string& newCertificate)
    {
        if (found.certificate.empty())
            return found.key.empty() ? State::Gone : State::Mixed;
        if (found.certificate != old.certificate && found.certificate != newCertificate)
            return State::Mixed;
        if (found.key.empty())
            return State::WithoutKey;
        if (found.certificate == old.certificate)
            return found.key == old.key ? State::Old : State::Mixed;
        return belong(found) ? State::New : State::Mixed;
    }

    /** Runs @p operation with every misfortune. @p renew  makes the place as new
     *  @param check  looks at the place and lets the next operation there heal it */
    void runEveryMisfortune(const std::function<void()>& renew, const std::function<int()>& operation,
        const std::function<void(const Ending&)>& check)
    {
        renew();
        const Ending whole = runWith({}, operation);
        ASSERT_TRUE(whole.finished);
        ASSERT_EQ(whole.code, 0);
        ASSERT_GT(whole.calls, 8);
        check(whole);
        for (const Misfortune& kind : {Misfortune{0, 0}, Misfortune{0, ENOSPC}, Misfortune{0, EDQUOT},
                 Misfortune{0, EIO}, Misfortune{0, EROFS, true}})
            for (int call = 1; call <= whole.calls; ++call) {
                renew();
                const Ending ending = runWith({call, kind.error, kind.fromThereOn}, operation);
                EXPECT_EQ(ending.finished, kind.error != 0);
                SCOPED_TRACE("call " + std::to_string(call) + ", error " + std::to_string(kind.error));
                check(ending);
            }
        std::printf("killed before each of %d calls, and each of them failed in four ways\n", whole.calls);
    }

    void copyOverAnOlderPair(const std::function<int(char* disk)>& copyTo);

    static std::unique_ptr<SampleStore> sample;
    TemporaryFolder home, place;
    sigil::Environment machine = sigil::environment();
    std::vector<int> withBothPairs;
    sigildesk::ProcessorHandle clp;
    sigildesk::CryptoHandle facade;
};

std::unique_ptr<SampleStore> Interrupted::sample;

/** @param copyTo  copies the first certificate with both pairs to a disk */
void Interrupted::copyOverAnOlderPair(const std::function<int(char* disk)>& copyTo)
{
    const int index = withBothPairs[0];
    const Pairs old = pairsOf(withBothPairs[1]);
    const Pairs fresh = pairsOf(index);
    std::string disk = place.path("d"); // names with backslashes begin with its name
    const auto copy = [&] { return copyTo(disk.data()); };
    ASSERT_EQ(copy(), 0);
    std::array<Pair, 2> names;
    for (const auto& [name, bytes] : filesIn(place.path())) {
        Pair& pair = names[name.find("\\Km") == name.npos ? signPair : kmPair];
        (name.find("Cert.der") == name.npos ? pair.key : pair.certificate) = name;
    }
    const auto renew = [&] {
        for (const auto& item : fs::directory_iterator(place.path()))
            fs::remove(item);
        for (std::size_t i : {signPair, kmPair}) {
            write(place.path(names[i].certificate), old[i].certificate);
            write(place.path(names[i].key), old[i].key);
        }
    };
    const auto states = [&] {
        auto files = filesIn(place.path());
        std::array<State, 2> found{};
        for (std::size_t i : {signPair, kmPair})
            found[i] = stateOf({files[names[i].certificate], files[names[i].key]}, old[i], fresh[i].certificate);
        return found;
    };
    constexpr std::array<State, 2> allNew{State::New, State::New};
    runEveryMisfortune(renew, copy, [&](const Ending& ending) {
        const auto found = states();
        EXPECT_NE(found[signPair], State::Mixed);
        EXPECT_NE(found[kmPair], State::Mixed);
        if (ending.finished && ending.code == 0) {
            EXPECT_EQ(found, allNew);
            EXPECT_EQ(filesIn(place.path()).size(), 4u);
        } else if (ending.finished) {
            EXPECT_EQ(ending.code, 1124);
        }
        ASSERT_EQ(copy(), 0);
        EXPECT_EQ(states(), allNew);
        EXPECT_EQ(filesIn(place.path()).size(), 4u);
    });
}

TEST_F(Interrupted, CopyOverAnOlderPair)
{
    copyOverAnOlderPair(
        [&](char* disk) { return CLP_CopySelCertToDISK(clp.get(), 1, withBothPairs[0], 2, disk, password); });
}

TEST_F(Interrupted, CopyOfGivenPairsOverAnOlderPair)
{
    Pairs pairs = pairsOf(withBothPairs[0]);
    char *key = nullptr, *kmKey = nullptr;
    int keyLength = 0, kmKeyLength = 0;
    ASSERT_EQ(CLP_DecryptPriKey(clp.get(), withBothPairs[0], password, &key, &keyLength, &kmKey, &kmKeyLength), 0);
    std::string& cert = pairs[signPair].certificate;
    std::string& kmCert = pairs[kmPair].certificate;
    ASSERT_EQ(CLP_CopyforSetData(clp.get(), cert.data(), static_cast<int>(cert.size()), key, keyLength,
                  kmCert.data(), static_cast<int>(kmCert.size()), kmKey, kmKeyLength),
        0);
    CLP_MemFree(clp.get(), reinterpret_cast<void**>(&key));
    CLP_MemFree(clp.get(), reinterpret_cast<void**>(&kmKey));
    copyOverAnOlderPair([&](char* disk) { return CLP_CopyCertToDISK(clp.get(), 2, disk, password); });
}

TEST_F(Interrupted, FailedCopyBringsTheOlderPairBack)
{
    const int index = withBothPairs[0];
    std::string disk = place.path("d");
    const auto copy = [&] { return CLP_CopySelCertToDISK(clp.get(), 1, index, 2, disk.data(), password); };
    ASSERT_EQ(copy(), 0);
    const auto before = filesIn(place.path());
    const int calls = runWith({}, copy).calls;
    const auto newest = filesIn(place.path());
    EXPECT_NE(before, newest);                     // keys are encrypted anew
    for (int call = 1; call < calls - 1; ++call) { // the last two let go of the old pair
        const auto old = filesIn(place.path());
        const Ending ending = runWith({call, ENOSPC}, copy);
        if (ending.code == 0) // a call whose failure does not matter
            continue;
        EXPECT_EQ(ending.code, 1124) << call;
        EXPECT_EQ(filesIn(place.path()), old) << call;
    }
}

TEST_F(Interrupted, Export)
{
    const int index = withBothPairs[0];
    const fs::path file = fs::path(place.path("out.pfx"));
    std::string path = file.string();
    const auto imports = [&] {
        char* parts[4] = {};
        int lengths[4] = {};
        const int rc = CLP_ImportPFX(clp.get(), path.data(), password, &parts[0], &lengths[0], &parts[1],
            &lengths[1], &parts[2], &lengths[2], &parts[3], &lengths[3]);
        for (char*& part : parts)
            CLP_MemFree(clp.get(), reinterpret_cast<void**>(&part));
        return rc == 0;
    };
    const auto exports = [&] { return CLP_ExportPFX(clp.get(), index, password, path.data()); };
    const auto renew = [&] {
        for (const auto& item : fs::directory_iterator(place.path()))
            fs::remove(item);
        write(file, "old");
    };
    runEveryMisfortune(renew, exports, [&](const Ending& ending) {
        auto files = filesIn(place.path());
        const bool isNew = files["out.pfx"] != "old" && imports();
        EXPECT_TRUE(isNew || files["out.pfx"] == "old");
        if (ending.finished && ending.code == 0) {
            EXPECT_TRUE(isNew);
        }
        ASSERT_EQ(exports(), 0);
        EXPECT_TRUE(imports());
        EXPECT_EQ(filesIn(place.path()).size(), 1u);
    });
}

TEST_F(Interrupted, Delete)
{
    const int index = withBothPairs[0];
    const Pairs old = pairsOf(index);
    const fs::path folder = fs::path(entry(index)->szSignCertPath).parent_path();
    const auto states = [&] {
        auto files = filesIn(folder);
        return std::array<State, 2>{stateOf({files["signCert.der"], files["signPri.key"]}, old[signPair], ""),
            stateOf({files["kmCert.der"], files["kmPri.key"]}, old[kmPair], "")};
    };
    constexpr std::array<State, 2> allGone{State::Gone, State::Gone};
    constexpr std::array<State, 2> allThere{State::Old, State::Old};
    const std::size_t others = filesIn(folder).size() - 4; // that the sample puts beside them
    const auto indexNow = [&] {
        for (int i = 0; i < CLP_GetCertCount(clp.get()); ++i)
            if (fs::path(entry(i)->szSignCertPath).parent_path() == folder)
                return i;
        return -1;
    };
    runEveryMisfortune([&] { restoreStore(); }, [&] { return CLP_DeleteCert(clp.get(), index, nullptr, password); },
        [&](const Ending& ending) {
            auto found = states();
            EXPECT_NE(found[signPair], State::Mixed);
            EXPECT_NE(found[kmPair], State::Mixed);
            if (ending.finished && ending.code == 0) {
                EXPECT_EQ(found, allGone);
            }
            if (ending.finished)
                return;
            ASSERT_EQ(CLP_LoadCertList(clp.get()), 0);
            found = states();
            EXPECT_TRUE(found == allGone || found == allThere);
            if (found == allThere) {
                EXPECT_EQ(CLP_DeleteCert(clp.get(), indexNow(), nullptr, password), 0);
            }
            EXPECT_EQ(filesIn(folder).size(), others);
        });
}

} // namespace
