// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Sessions and the list, as a host in C meets them.

#include "tests/sigil/sigil_test.h"

#include <cstring>
#include <ctime>
#include <set>
#include <thread>
#include <vector>

using namespace sigil_test;

namespace {

class List : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(std::vector<std::string>{
            "--count", "8", "--families", "npki,gpki", "--state", "valid", "--keys", "2", "--key-bits", "2048"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    static std::string disk() { return sample->folder().string(); }
    /** The number of entries that the options take of the store. */
    int count(SigilListOptions options)
    {
        const std::string folder = disk();
        options.medium = folder.c_str();
        int found = -1;
        EXPECT_EQ(sigil_list(session.get(), &options, &found), SIGIL_SUCCESS) << sigil_error_text(session.get());
        return found;
    }

    static std::unique_ptr<SampleStore> sample;
    Session session = open();
};

std::unique_ptr<SampleStore> List::sample;

TEST_F(List, FindsWhatLiesOnADisk)
{
    ASSERT_EQ(list(session.get(), disk()), static_cast<int>(sample->certificates().size()));
    std::set<std::string> serials, wanted;
    for (int i = 0; i < 8; ++i)
        serials.insert(fieldsOf(session.get(), i).certificate_file);
    for (const Certificate& row : sample->certificates())
        wanted.insert(row.at("signing_certificate"));
    EXPECT_EQ(serials, wanted);
}

TEST_F(List, TellsTheFieldsInUtf8)
{
    list(session.get(), disk());
    const SigilFields fields = fieldsOf(session.get(), 0);
    EXPECT_NE(std::string_view(fields.subject).find(fields.name), std::string_view::npos);
    EXPECT_EQ(fields.valid_from<std::time(nullptr), fields.valid_to> std::time(nullptr));
    EXPECT_EQ(fields.expired, 0);
    EXPECT_EQ(fields.has_key, 1);
    EXPECT_EQ(fields.unlocked, 0);
    EXPECT_STREQ(fields.version, "V3");
    EXPECT_STREQ(fields.key_length, "2048 Bits");
    const Session korean = open(SIGIL_TOOLKIT_MAKER, SIGIL_LANGUAGE_KOREAN);
    list(korean.get(), disk());
    EXPECT_STRNE(fieldsOf(korean.get(), 0).use, fields.use);
    EXPECT_STREQ(fieldsOf(korean.get(), 0).subject, fields.subject);
}

TEST_F(List, IsTheSameWithBothToolkits)
{
    const Session government = open(SIGIL_TOOLKIT_GPKI);
    ASSERT_EQ(list(session.get(), disk()), list(government.get(), disk()));
    for (int i = 0; i < 8; ++i)
        EXPECT_STREQ(fieldsOf(session.get(), i).subject, fieldsOf(government.get(), i).subject);
}

TEST_F(List, TakesWhatTheOptionsTake)
{
    list(session.get(), disk());
    const SigilFields first = fieldsOf(session.get(), 0);
    const std::string serial = first.serial, subject = first.subject, issuer = first.issuer_name,
                      policy = first.policy;
    int government = 0;
    for (int i = 0; i < 8; ++i)
        government += fieldsOf(session.get(), i).family == SIGIL_FAMILY_GPKI;
    auto options = sized<SigilListOptions>();
    EXPECT_EQ(count(options), 8);
    options.families = SIGIL_FAMILY_GPKI;
    EXPECT_EQ(count(options), government);
    options = sized<SigilListOptions>();
    options.serial = serial.c_str();
    EXPECT_EQ(count(options), 1);
    EXPECT_EQ(fieldsOf(session.get(), 0).subject, subject);
    options = sized<SigilListOptions>();
    options.subject = subject.c_str();
    EXPECT_EQ(count(options), 1);
    options.issuer = "nobody";
    EXPECT_EQ(count(options), 0);
    options = sized<SigilListOptions>();
    options.issuer = issuer.c_str();
    options.policy = policy.c_str();
    EXPECT_GE(count(options), 1);
    options = sized<SigilListOptions>();
    options.valid = 1;
    EXPECT_EQ(count(options), 8);
    options.expires_within = 1;
    EXPECT_EQ(count(options), 0);
    options.expires_within = 36500;
    EXPECT_EQ(count(options), 8);
    options = sized<SigilListOptions>();
    options.expired = 1;
    EXPECT_EQ(count(options), 0);
}

TEST_F(List, TellsExpiredOnesApart)
{
    const SampleStore expired({"--count", "2", "--state", "expired", "--keys", "2"});
    const std::string folder = expired.folder().string();
    const auto countWith = [&](int SigilListOptions::*option) {
        auto options = sized<SigilListOptions>();
        options.medium = folder.c_str();
        options.*option = 1;
        int found = -1;
        EXPECT_EQ(sigil_list(session.get(), &options, &found), SIGIL_SUCCESS);
        return found;
    };
    EXPECT_EQ(countWith(&SigilListOptions::expired), 2);
    EXPECT_EQ(countWith(&SigilListOptions::valid), 0);
    EXPECT_EQ(countWith(&SigilListOptions::expires_within), 0);
}

TEST_F(List, HandsOutCertificates)
{
    list(session.get(), disk());
    const int entry = entryWithKm(session.get(), true);
    Bytes signing, encryption;
    ASSERT_EQ(sigil_certificate(session.get(), entry, SIGIL_PAIR_SIGNING, signing.out()), SIGIL_SUCCESS);
    ASSERT_EQ(sigil_certificate(session.get(), entry, SIGIL_PAIR_KEY_MANAGEMENT, encryption.out()), SIGIL_SUCCESS);
    EXPECT_NE(signing.view(), encryption.view());
    EXPECT_EQ(signing.view(), readFile(fieldsOf(session.get(), entry).certificate_file));
    EXPECT_EQ(signing.data()[signing.size()], 0);
    Bytes none;
    const int without = entryWithKm(session.get(), false);
    EXPECT_EQ(sigil_certificate(session.get(), without, SIGIL_PAIR_KEY_MANAGEMENT, none.out()), SIGIL_NO_KEY);
    EXPECT_EQ(none.data(), nullptr);
    auto fields = sized<SigilFields>();
    ASSERT_EQ(sigil_certificate_fields(session.get(), signing.data(), signing.size(), &fields), SIGIL_SUCCESS);
    EXPECT_STREQ(fields.serial, fieldsOf(session.get(), entry).serial);
    EXPECT_STREQ(fields.certificate_file, "");
}

TEST_F(List, StaysWhenAnotherCannotBeMade)
{
    list(session.get(), disk());
    auto options = sized<SigilListOptions>();
    options.medium = "/no/such/folder";
    int found = -1;
    EXPECT_EQ(sigil_list(session.get(), &options, &found), SIGIL_FILE_NOT_READ);
    EXPECT_EQ(found, -1);
    EXPECT_NE(std::string_view(sigil_error_text(session.get())).find("/no/such/folder"), std::string_view::npos);
    EXPECT_EQ(fieldsOf(session.get(), 7).expired, 0);
    EXPECT_STREQ(sigil_error_text(session.get()), "");
    const TemporaryFolder empty;
    EXPECT_EQ(list(session.get(), empty.path()), 0);
}

TEST_F(List, RefusesLongFolders)
{
    const TemporaryFolder folder;
    const std::string name = std::string(150, 'a') + "/" + std::string(150, 'b');
    writeFile(folder.path(name + "/file"), "");
    const std::string path = folder.path(name);
    auto options = sized<SigilListOptions>();
    options.medium = path.c_str();
    EXPECT_EQ(sigil_list(session.get(), &options, nullptr), SIGIL_PATH_TOO_LONG);
}

TEST_F(List, RefusesWhatIsNoCertificate)
{
    auto fields = sized<SigilFields>();
    EXPECT_EQ(sigil_certificate_fields(session.get(), "nothing", 7, &fields), 3101);
    const std::string pem = "-----BEGIN CERTIFICATE-----\n!!!\n-----END CERTIFICATE-----\n";
    EXPECT_EQ(sigil_certificate_fields(session.get(), pem.data(), pem.size(), &fields), 3007);
    EXPECT_EQ(fields.name, nullptr);
}

TEST_F(List, RefusesBadArguments)
{
    SigilSession* const s = session.get();
    list(s, disk());
    auto fields = sized<SigilFields>();
    Bytes bytes;
    for (const int entry : {-1, 8, 1000000, -2147483647 - 1}) {
        EXPECT_EQ(sigil_fields(s, entry, &fields), SIGIL_BAD_ARGUMENT) << entry;
        EXPECT_EQ(sigil_certificate(s, entry, SIGIL_PAIR_SIGNING, bytes.out()), SIGIL_BAD_ARGUMENT) << entry;
    }
    EXPECT_EQ(sigil_fields(s, 0, nullptr), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_certificate(s, 0, 2, bytes.out()), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_certificate(s, 0, SIGIL_PAIR_SIGNING, nullptr), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_certificate_fields(s, nullptr, 1, &fields), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_certificate_fields(s, "x", 0, &fields), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_certificate_fields(s, "x", std::size_t{1} << 31, &fields), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_certificate_fields(s, "x", 1, nullptr), SIGIL_BAD_ARGUMENT);
    auto options = sized<SigilListOptions>();
    options.families = 16;
    EXPECT_EQ(sigil_list(s, &options, nullptr), SIGIL_BAD_ARGUMENT);
    options = sized<SigilListOptions>();
    options.expires_within = -1;
    EXPECT_EQ(sigil_list(s, &options, nullptr), SIGIL_BAD_ARGUMENT);
    options = sized<SigilListOptions>();
    options.medium = "";
    EXPECT_EQ(sigil_list(s, &options, nullptr), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_list(nullptr, nullptr, nullptr), SIGIL_NO_HANDLE);
    EXPECT_EQ(sigil_fields(nullptr, 0, &fields), SIGIL_NO_HANDLE);
    EXPECT_EQ(sigil_certificate(nullptr, 0, 0, bytes.out()), SIGIL_NO_HANDLE);
    EXPECT_EQ(sigil_certificate_fields(nullptr, "x", 1, &fields), SIGIL_NO_HANDLE);
    EXPECT_STREQ(sigil_error_text(nullptr), "");
    sigil_free(nullptr);
    sigil_close(nullptr);
}

/** A struct of a later version: what this one does not know stands behind. */
template <class Struct>
struct Later {
    Struct known;
    char more[24];
};

TEST_F(List, TakesStructsOfLaterVersions)
{
    const std::string folder = disk();
    Later<SigilListOptions> options{};
    options.known.size = sizeof options;
    options.known.medium = folder.c_str();
    int found = 0;
    ASSERT_EQ(sigil_list(session.get(), &options.known, &found), SIGIL_SUCCESS);
    EXPECT_EQ(found, 8);
    options.more[23] = 1;
    EXPECT_EQ(sigil_list(session.get(), &options.known, &found), SIGIL_NEWER_OPTIONS);
    for (const std::size_t size : {std::size_t{0}, sizeof(SigilListOptions) - 1, std::size_t{1} << 40}) {
        options.known.size = size;
        EXPECT_EQ(sigil_list(session.get(), &options.known, &found), SIGIL_BAD_ARGUMENT) << size;
    }
    Later<SigilFields> fields{};
    std::memset(&fields, 1, sizeof fields);
    fields.known.size = sizeof fields;
    ASSERT_EQ(sigil_fields(session.get(), 0, &fields.known), SIGIL_SUCCESS);
    EXPECT_EQ(fields.known.size, sizeof fields);
    EXPECT_EQ(std::string_view(fields.more, sizeof fields.more), std::string(sizeof fields.more, '\0'));
    fields.known.size = sizeof(SigilFields) - 1;
    EXPECT_EQ(sigil_fields(session.get(), 0, &fields.known), SIGIL_BAD_ARGUMENT);
}

TEST_F(List, ServesTwoSessionsOnTwoThreads)
{
    const auto work = [](int toolkit) {
        const Session own = open(toolkit);
        for (int turn = 0; turn < 3; ++turn) {
            const int found = list(own.get(), disk());
            for (int i = 0; i < found; ++i)
                EXPECT_STRNE(fieldsOf(own.get(), i).name, "");
        }
    };
    std::thread other(work, SIGIL_TOOLKIT_GPKI);
    work(SIGIL_TOOLKIT_MAKER);
    other.join();
}

TEST(Open, FindsTheInstalledFolder)
{
    SigilSession* session = nullptr;
    ASSERT_EQ(sigil_open(nullptr, &session), SIGIL_SUCCESS);
    sigil_close(session);
}

TEST(Open, SaysWhyItCannot)
{
    const TemporaryFolder empty;
    const std::string folder = empty.path();
    const auto code = [&](const char* where, int toolkit, int language) {
        auto options = sized<SigilOpenOptions>();
        options.folder = where;
        options.toolkit = toolkit;
        options.language = language;
        auto* session = reinterpret_cast<SigilSession*>(&options); // to be seen to go
        const int result = sigil_open(&options, &session);
        EXPECT_EQ(session, nullptr);
        return result;
    };
    EXPECT_EQ(code(folder.c_str(), SIGIL_TOOLKIT_MAKER, 0), SIGIL_MAKER_LIBRARY_MISSING);
    EXPECT_EQ(code(folder.c_str(), SIGIL_TOOLKIT_GPKI, 0), SIGIL_GPKI_LIBRARY_MISSING);
    EXPECT_EQ(code("", SIGIL_TOOLKIT_MAKER, 0), SIGIL_NO_LIBRARY_FOLDER);
    EXPECT_EQ(code(SIGILDESK_LIBRARY_FOLDER, 2, 0), SIGIL_UNKNOWN_TOOLKIT);
    EXPECT_EQ(code(SIGILDESK_LIBRARY_FOLDER, SIGIL_TOOLKIT_MAKER, 3), SIGIL_BAD_ARGUMENT);
    EXPECT_EQ(sigil_open(nullptr, nullptr), SIGIL_BAD_ARGUMENT);
    SigilOpenOptions options{};
    SigilSession* session = nullptr;
    EXPECT_EQ(sigil_open(&options, &session), SIGIL_BAD_ARGUMENT);
}

TEST(Codes, AreSaidInWords)
{
    SigilCodeText text{};
    EXPECT_EQ(sigil_code_text(SIGIL_LOCKED, SIGIL_LANGUAGE_ENGLISH, &text), SIGIL_SUCCESS);
    EXPECT_STREQ(text.name, "SIGIL_LOCKED");
    EXPECT_STREQ(sigil_version(), SIGILDESK_VERSION);
}

} // namespace
