// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the façade writes on media, on both faces: killed before every call that changes files, and with every such call
// failing. The file is the old one or the whole new one, for its owner alone; what was reported as done is there; and the
// next write there leaves nothing of a killed one.

#include "tests/support/interrupted.h"
#include "tests/support/sample_store.h"

#include <sigildesk/codes.h>
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <functional>

namespace fs = std::filesystem;

namespace {

char password[] = "sample1234!";
constexpr char old[] = "what was there before";

BINSTR recordOf(std::string& bytes)
{
    return {reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(bytes.size())};
}

class InterruptedMedia : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        std::string library = SIGILDESK_LIBRARY_FOLDER;
        ASSERT_EQ(sigildesk::initialise(m_handle, GetParam(), library.data()), 0);
    }
    void* handle() { return m_handle.get(); }
    char* place() { return m_place.data(); }
    std::string written() const { return readFile(m_place); }
    std::string takenFrom(BINSTR& record)
    {
        std::string bytes(reinterpret_cast<char*>(record.pData), static_cast<std::size_t>(record.nLength));
        HV_BINSTR_Delete(handle(), &record);
        return bytes;
    }

    void runEveryMisfortune(const std::function<int()>& operation, const std::function<bool()>& isDone)
    {
        renew();
        const Ending whole = runWith({}, operation);
        ASSERT_EQ(whole.code, 0);
        ASSERT_TRUE(isDone());
        std::printf("%d calls\n", whole.calls);
        for (const Misfortune& kind : {Misfortune{0, 0}, Misfortune{0, ENOSPC}, Misfortune{0, EDQUOT},
                 Misfortune{0, EIO}, Misfortune{0, EROFS, true}})
            for (int call = 1; call <= whole.calls; ++call) {
                SCOPED_TRACE("call " + std::to_string(call) + ", error " + std::to_string(kind.error));
                renew();
                check(runWith({call, kind.error, kind.fromThereOn}, operation), isDone);
                if (kind.error == 0 && !isDone()) {
                    EXPECT_EQ(operation(), 0);
                }
                if (kind.error == 0) {
                    expectNothingElse();
                }
            }
    }

private:
    void renew()
    {
        for (const auto& item : fs::directory_iterator(m_folder.path()))
            fs::remove(item);
        writeFile(m_place, old);
    }
    void check(const Ending& ending, const std::function<bool()>& isDone)
    {
        EXPECT_TRUE(isDone() || written() == old);
        if (ending.finished && ending.code == 0) {
            EXPECT_TRUE(isDone());
            expectNothingElse();
        }
        if (isDone() && fs::exists(m_place)) {
            EXPECT_EQ(fs::status(m_place).permissions(), fs::perms::owner_read | fs::perms::owner_write);
        }
    }
    void expectNothingElse()
    {
        for (const auto& item : fs::directory_iterator(m_folder.path()))
            EXPECT_EQ(item.path(), m_place);
    }

    TemporaryFolder m_folder;
    std::string m_place = m_folder.path("file");
    sigildesk::CryptoHandle m_handle;
};

std::string faceOf(const testing::TestParamInfo<int>& info)
{
    return info.param == SIGIL_TOOLKIT_MAKER ? "Maker" : "Government";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, InterruptedMedia, testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI), faceOf);

TEST_P(InterruptedMedia, WriteFile)
{
    std::string bytes = "what is written";
    BINSTR record = recordOf(bytes);
    runEveryMisfortune(
        [&] { return MediaDiskWriteFile(handle(), place(), &record); }, [&] { return written() == bytes; });
}

TEST_P(InterruptedMedia, WriteCertAndPriKey)
{
    const SampleStore sample({"--count", "1", "--keys", "2"});
    std::string der = readFile(sample.certificates().front().at("signing_certificate"));
    std::string file = readFile(sample.certificates().front().at("signing_key"));
    BINSTR certificate = recordOf(der), encrypted = recordOf(file), key{};
    runEveryMisfortune(
        [&] { return MediaDiskWriteCert(handle(), place(), 0, &certificate); }, [&] { return written() == der; });
    ASSERT_EQ(PriKeyDecrypt(handle(), password, &encrypted, &key), 0);
    std::string plain = takenFrom(key);
    BINSTR known = recordOf(plain);
    runEveryMisfortune(
        [&] { return MediaDiskWritePriKey(handle(), SIGIL_TK_KEY_SEED, place(), 0, password, &known); },
        [&] {
            BINSTR read{};
            return MediaDiskReadPriKey(handle(), place(), password, 0, &read) == 0 && takenFrom(read) == plain;
        });
}

TEST_P(InterruptedMedia, DeleteCert)
{
    runEveryMisfortune(
        [&] { return MediaDiskDeleteCert(handle(), place(), 0); }, [&] { return !fs::exists(place()); });
}
