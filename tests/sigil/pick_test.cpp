// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Picking by hosts in C, in processes of their own: with the dialog on Qt's platform without a display, used by a plug-in; with
// no display; and with programs in place of the one that shows the dialog.

#include "jobs/dialog_exchange.h"
#include "tests/support/sample_store.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr char password[] = "sample1234!";

/** What the host said, line by line. */
struct Said {
    std::string result, entry, copied, locked, files;
};

class Pick : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(std::vector<std::string>{"--count", "3", "--families", "npki",
            "--state", "valid", "--keys", "2", "--key-bits", "2048", "--pairs", "both", "--key-variant", "E"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    Pick()
    {
        const std::string home = sample->folder();
        const std::string user = std::to_string(getuid());
        work.write("password", password);
        work.write("passwd", "picker:x:" + user + ":0:picker:" + home + ":/bin/sh\n");
        work.write("group", "picker:x:0:\n");
    }

    /** Runs a host whose home folder is the store, without any display. */
    Outcome runHost(const std::vector<std::string>& environment, const std::string& listed = "", int toolkit = 0,
        const std::vector<std::string>& options = {})
    {
        std::vector<std::string> words{"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM",
            "LC_ALL=C.UTF-8", "LD_PRELOAD=libnss_wrapper.so", "NSS_WRAPPER_PASSWD=" + work.path("passwd"),
            "NSS_WRAPPER_GROUP=" + work.path("group"), "NSS_WRAPPER_DISABLE_DEEPBIND=1",
            "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0"};
        words.insert(words.end(), environment.begin(), environment.end());
        for (const std::string& word : {std::string(PICK_HOST), std::string(SIGILDESK_LIBRARY_FOLDER),
                 std::to_string(toolkit), listed, signature(), certificate()})
            words.push_back(word);
        words.insert(words.end(), options.begin(), options.end());
        return run(words);
    }
    Said pick(const std::vector<std::string>& environment, const std::string& listed = "", int toolkit = 0,
        const std::vector<std::string>& options = {})
    {
        const Outcome outcome = runHost(environment, listed, toolkit, options);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        Said said;
        std::istringstream lines(outcome.out);
        std::getline(lines, said.result);
        if (said.result == "0 ") {
            std::getline(lines, said.entry);
            std::getline(lines, said.copied);
            std::getline(lines, said.locked);
        }
        std::getline(lines, said.files);
        return said;
    }
    std::vector<std::string> user(const std::string& how)
    {
        return {"QT_QPA_PLATFORM=offscreen", "QT_PLUGIN_PATH=" DIALOG_USER_FOLDER,
            "QT_QPA_GENERIC_PLUGINS=dialog-user:" + how, "SIGIL_TEST_PASSWORD_FILE=" + work.path("password"),
            "SIGIL_TEST_LOCK_FILE=" + work.path("lock")};
    }
    /** A folder to be looked in for the library, with another program that should show the dialog, or none. */
    std::vector<std::string> program(const std::string& script)
    {
        fs::remove_all(work.path("other"));
        fs::create_directories(work.path("other/sigildesk"));
        fs::create_symlink(LIBSIGIL, work.path("other/libsigil.so.1"));
        if (!script.empty()) {
            const std::string file = work.write("other/sigildesk/sigildesk-pick", "#!/bin/sh\n" + script + "\n");
            fs::permissions(file, fs::perms::owner_all);
        }
        return {"LD_LIBRARY_PATH=" + work.path("other")};
    }
    /** Such a program that greets, keeps the request, and ends. */
    std::vector<std::string> keepingRequest()
    {
        work.write("greeting", std::string_view(host::dialogGreeting.data(), host::dialogGreeting.size()));
        return program("cat '" + work.path("greeting") + "' >&0; head -c " +
            std::to_string(sizeof(host::DialogRequest)) + " >'" + work.path("request") + "'");
    }
    /** What a host with these options asks the program for. */
    tagLOADSELECTCERTOPTION requested(const std::vector<std::string>& options)
    {
        EXPECT_TRUE(pick(keepingRequest(), "", 0, options).result.starts_with("1609 the dialog ended"));
        const auto request = std::make_unique<host::DialogRequest>();
        EXPECT_EQ(readFile(work.path("request")).copy(reinterpret_cast<char*>(request.get()), sizeof *request),
            sizeof *request);
        return request->load;
    }
    /** Such a program that greets and answers. */
    std::vector<std::string> answering(const host::DialogAnswer& answer, std::size_t size)
    {
        const std::string_view greeting(host::dialogGreeting.data(), host::dialogGreeting.size());
        work.write("greeting", greeting);
        work.write("answer", std::string_view(reinterpret_cast<const char*>(&answer), size));
        return program("cat '" + work.path("greeting") + "' >&0; head -c " +
            std::to_string(sizeof(host::DialogRequest)) + " >/dev/null; cat '" + work.path("answer") + "' >&0");
    }
    static std::string folderOfACertificate()
    {
        return fs::path(sample->certificates().front().at("signing_certificate")).parent_path();
    }
    std::string signature() { return work.path("signature"); }
    std::string certificate() { return work.path("certificate"); }

    void expectSignatureOf(const std::string& certificateFile)
    {
        EXPECT_EQ(readFile(certificate()), readFile(certificateFile));
        const Outcome verified =
            run({"openssl", "cms", "-verify", "-noverify", "-binary", "-inform", "DER", "-in", signature()});
        EXPECT_EQ(verified.status, 0) << verified.err;
        EXPECT_EQ(verified.out, "text");
    }
    /** "FILES" of "files: FILES, FILES". */
    static void expectAllFilesClosed(const Said& said)
    {
        const std::size_t comma = said.files.find(", ");
        ASSERT_NE(comma, std::string::npos) << said.files;
        EXPECT_EQ(said.files.substr(7, comma - 7), said.files.substr(comma + 2));
    }

    static std::unique_ptr<SampleStore> sample;
    TemporaryFolder work;
};
std::unique_ptr<SampleStore> Pick::sample;

/** What the dialog answers for a certificate of the store that lies on another disk. */
host::DialogAnswer answerOf(const std::string& folder)
{
    host::DialogAnswer answer{};
    tagSELCERTINFO& chosen = answer.chosen;
    const std::string der = readFile(folder + "/signCert.der");
    const std::string key = run({"openssl", "pkcs8", "-inform", "DER", "-in", folder + "/signPri.key", "-passin",
                                    std::string("pass:") + password, "-outform", "DER", "-topk8", "-nocrypt"})
                                .out;
    chosen.nMediaType = SIGIL_MEDIUM_REMOVABLE_DISK;
    der.copy(reinterpret_cast<char*>(chosen.bySignCert), sizeof chosen.bySignCert);
    chosen.nSignCertLen = static_cast<int>(der.size());
    key.copy(reinterpret_cast<char*>(chosen.bySignPriKey), sizeof chosen.bySignPriKey);
    chosen.nSignPriKeyLen = static_cast<int>(key.size());
    (folder + "/signCert.der").copy(chosen.szSignCertPath, sizeof chosen.szSignCertPath - 1);
    (folder + "/signPri.key").copy(chosen.szSignPriKeyPath, sizeof chosen.szSignPriKeyPath - 1);
    return answer;
}

} // namespace

TEST_F(Pick, MakesAnEntryThatSigns)
{
    std::string before;
    for (const int toolkit : {SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI}) {
        const Said said = pick(user(toolkit == SIGIL_TOOLKIT_MAKER ? "0" : "2"), "", toolkit);
        ASSERT_EQ(said.result, "0 ");
        ASSERT_TRUE(said.entry.starts_with("0 of 0, 1: ")) << said.entry;
        expectSignatureOf(said.entry.substr(said.entry.rfind(", ") + 2));
        EXPECT_EQ(said.locked, "locked: 0");
        EXPECT_NE(said.entry, before) << "of another row";
        expectAllFilesClosed(said);
        before = said.entry;
    }
}

TEST_F(Pick, FindsTheEntryThatTheListHasAlready)
{
    for (const std::string& listed : {sample->folder().string(), std::string("home")}) {
        const Said said = pick(user("1"), listed);
        ASSERT_EQ(said.result, "0 ");
        EXPECT_TRUE(said.entry.find(" of 3, 1: ") == 1 && said.entry[0] >= '0' && said.entry[0] < '3')
            << said.entry;
        EXPECT_EQ(said.copied, "copied: " + std::to_string(SIGIL_FILE_NOT_READ)) << "where to is no folder";
        expectSignatureOf(said.entry.substr(said.entry.rfind(", ") + 2));
    }
}

TEST_F(Pick, CanBeCancelled)
{
    const Said said = pick(user("cancel"));
    EXPECT_TRUE(said.result.starts_with("-1 ")) << said.result;
    expectAllFilesClosed(said);
}

TEST_F(Pick, SaysThatThereIsNoDisplay)
{
    for (const char* platform : {"QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORM=none-such", "DISPLAY=:64999"}) {
        const Said said = pick({platform});
        EXPECT_TRUE(said.result.starts_with("1607 the dialog needs a display")) << platform << ": " << said.result;
        expectAllFilesClosed(said);
    }
}

TEST_F(Pick, OutlivesADialogThatDies)
{
    const Said said = pick(user("crash"));
    EXPECT_TRUE(said.result.starts_with("1609 the dialog ended")) << said.result;
    expectAllFilesClosed(said);
}

TEST_F(Pick, EndsTheDialogWithItsHost)
{
    EXPECT_EQ(runHost(user("orphan")).status, -1) << "the host was not killed";
    EXPECT_EQ(run({"timeout", "60", "flock", work.path("lock"), "true"}).status, 0) << "the dialog lives on";
}

TEST_F(Pick, SaysThatThereAreNoDialogs)
{
    const Said said = pick(program(""));
    EXPECT_TRUE(said.result.starts_with("1606 the dialogs are not installed")) << said.result;
    expectAllFilesClosed(said);
}

TEST_F(Pick, LooksForTheDialogsWhereTheyAreInstalledUsually)
{
    const std::vector<std::string> environment = program("");
    fs::remove(work.path("other/sigildesk"));
    const std::string usual = "/usr/local/lib/sigildesk/sigildesk-pick";
    const std::string result = pick(environment).result;
    EXPECT_TRUE(
        fs::exists(usual) ? result.starts_with("1607 ") : result.starts_with("1606 ") && result.ends_with(usual))
        << result;
}

TEST_F(Pick, AsksForWhatTheOptionsSay)
{
    const tagLOADSELECTCERTOPTION all = requested({"no_expired=0"});
    EXPECT_EQ(all.nPKITypes, 15u);
    EXPECT_EQ(all.nKeyPairType, 0u);
    EXPECT_EQ(all.nSelectFlags, 0u);
    EXPECT_STREQ(all.szPolicyIDs, "");
    const tagLOADSELECTCERTOPTION some = requested({"families=6", "with_km=1", "lock_expired=1",
        "policies=1.2.3|1.2.4", "subject=cn=홍길동,c=KR", "serial=00ab"});
    EXPECT_EQ(some.nPKITypes, 6u);
    EXPECT_EQ(some.nKeyPairType, unsigned{SIGIL_KEY_PAIR_BOTH});
    EXPECT_EQ(some.nSelectFlags, SIGIL_SELECT_EXCLUDE_EXPIRED | SIGIL_SELECT_LOCK_EXPIRED);
    EXPECT_STREQ(some.szPolicyIDs, "1 2 3|1 2 4|");
    EXPECT_STREQ(some.szSubjectDN, "cn=홍길동,c=KR");
    EXPECT_STREQ(some.szSerialNum, "00ab");
}

TEST_F(Pick, TakesNoOptionThatIsEmptyOrTooLong)
{
    for (const std::string option : {"policies=", "subject=", "serial="})
        for (const std::string& text : {std::string(), std::string(6000, '1')}) {
            const Said said = pick(program(""), "", 0, {option + text});
            EXPECT_TRUE(said.result.starts_with("1001 ")) << option << text.size() << ": " << said.result;
        }
    EXPECT_TRUE(pick(program(""), "", 0, {"families=16"}).result.starts_with("1001 "));
}

TEST_F(Pick, SaysThatTheDialogsCannotBeLoaded)
{
    EXPECT_TRUE(pick(program("exit 127")).result.starts_with("1606 "));
}

TEST_F(Pick, IsNotTiedToTheProgramOfAnotherVersion)
{
    EXPECT_TRUE(pick(program("echo 'sigildesk-pick of another version' >&0")).result.starts_with("1606 "));
}

TEST_F(Pick, TakesACertificateFromAnotherDisk)
{
    const std::string there = folderOfACertificate();
    const host::DialogAnswer answer = answerOf(there);
    const Said said = pick(answering(answer, sizeof answer));
    ASSERT_EQ(said.result, "0 ");
    EXPECT_TRUE(said.entry.starts_with("0 of 0, 1: ")) << said.entry;
    expectSignatureOf(there + "/signCert.der");
}

TEST_F(Pick, MakesAnotherEntryOfAnotherCertificateInTheSameFile)
{
    const std::string listed = sample->folder();
    const auto entryOf = [&](const host::DialogAnswer& answer) {
        return pick(answering(answer, sizeof answer), listed).entry.substr(0, 6);
    };
    const fs::path first = sample->certificates().front().at("signing_certificate");
    const fs::path last = sample->certificates().back().at("signing_certificate");
    host::DialogAnswer answer = answerOf(first.parent_path());
    EXPECT_EQ(entryOf(answer), "3 of 3") << "without its key-management certificate";
    const std::string km = readFile(first.parent_path() / "kmCert.der");
    answer.chosen.nKmCertLen =
        static_cast<int>(km.copy(reinterpret_cast<char*>(answer.chosen.byKmCert), km.size()));
    EXPECT_NE(entryOf(answer), "3 of 3") << "the listed one";
    const std::string der = readFile(last);
    answer.chosen.nSignCertLen =
        static_cast<int>(der.copy(reinterpret_cast<char*>(answer.chosen.bySignCert), der.size()));
    EXPECT_EQ(entryOf(answer), "3 of 3") << "another certificate";
}

TEST_F(Pick, CopiesNothingThatLiesInNoFile)
{
    host::DialogAnswer answer = answerOf(folderOfACertificate());
    answer.chosen.szSignCertPath[0] = '\0';
    const Said said = pick(answering(answer, sizeof answer));
    EXPECT_EQ(said.result, "0 ");
    EXPECT_EQ(said.copied, "copied: " + std::to_string(SIGIL_NOT_ON_THIS_MEDIUM));
}

TEST_F(Pick, BelievesNoRecordThatIsNotSound)
{
    const host::DialogAnswer good = answerOf(folderOfACertificate());
    const Said cut = pick(answering(good, sizeof good - 1));
    EXPECT_TRUE(cut.result.starts_with("1609 the dialog ended")) << cut.result;
    using Damage = void (*)(tagSELCERTINFO&);
    const std::vector<Damage> damages{[](tagSELCERTINFO& chosen) { chosen.nSignCertLen = 4097; },
        [](tagSELCERTINFO& chosen) { chosen.nSignCertLen = 0; },
        [](tagSELCERTINFO& chosen) { chosen.nSignPriKeyLen = -1; },
        [](tagSELCERTINFO& chosen) { chosen.nSignPriKeyLen = 0; },
        [](tagSELCERTINFO& chosen) { chosen.nKmCertLen = 0x7fffffff; },
        [](tagSELCERTINFO& chosen) { chosen.nKmPriKeyLen = 2049; }};
    for (std::size_t i = 0; i < damages.size(); ++i) {
        host::DialogAnswer bad = good;
        damages[i](bad.chosen);
        const Said said = pick(answering(bad, sizeof bad));
        EXPECT_TRUE(said.result.starts_with("1609 the dialog ended")) << i << ": " << said.result;
    }
    host::DialogAnswer endless = good;
    std::memset(endless.chosen.szSignCertPath, 'x', sizeof endless.chosen.szSignCertPath);
    const Said said = pick(answering(endless, sizeof endless));
    EXPECT_TRUE(said.entry.ends_with(", " + std::string(sizeof endless.chosen.szSignCertPath - 1, 'x')))
        << said.entry;
}
