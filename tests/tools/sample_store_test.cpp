// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// sample-store as a program: the store's layout, its promise to touch nothing, determinism, and the command line.
#include "tests/support/sample_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

std::set<std::string> valuesOf(const std::vector<Certificate>& certificates, const std::string& column)
{
    std::set<std::string> values;
    for (const Certificate& certificate : certificates)
        values.insert(certificate.at(column));
    return values;
}

std::vector<std::string> namesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    return names;
}

/** Every path below a folder with its last change, to see that nothing happened. */
std::map<fs::path, fs::file_time_type> stateOf(const fs::path& folder)
{
    std::map<fs::path, fs::file_time_type> state;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (!entry.is_symlink())
            state[entry.path()] = entry.last_write_time();
    return state;
}

/** One store of all families for all tests of its layout. */
class SampleStoreLayout : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_store = std::make_unique<SampleStore>(std::vector<std::string>{
            "--count", "12", "--families", "npki,gpki,mpki,ppki", "--pairs", "both", "--keys", "2"});
    }
    static void TearDownTestSuite() { s_store.reset(); }

    static fs::path folder() { return s_store->folder(); }
    static const std::vector<Certificate>& certificates() { return s_store->certificates(); }
    static const Certificate& firstOf(const std::string& family)
    {
        return *std::find_if(certificates().begin(), certificates().end(),
            [&](const Certificate& c) { return c.at("family") == family; });
    }

    static std::unique_ptr<SampleStore> s_store;
};

std::unique_ptr<SampleStore> SampleStoreLayout::s_store;

TEST_F(SampleStoreLayout, PutsEachFamilyWhereItBelongs)
{
    ASSERT_EQ(certificates().size(), 12u);
    for (const Certificate& certificate : certificates()) {
        const std::string family = certificate.at("family");
        const std::string path = fs::path(certificate.at("signing_certificate")).lexically_relative(folder());
        const std::string subject = certificate.at("subject");
        if (family == "npki")
            EXPECT_THAT(path, testing::MatchesRegex("NPKI/[A-Za-z]+/USER/.*/signCert.der"));
        else if (family == "gpki")
            EXPECT_THAT(path, testing::MatchesRegex("GPKI/Certificate/class[12]/.*_sig.cer"));
        else if (family == "mpki")
            EXPECT_EQ(path, "MPKI/USER/" + subject + "/signCert.der");
        else
            EXPECT_THAT(path,
                testing::AnyOf("Halvard/TALOCERT/TALO/" + subject + "/signCert.der",
                    "NPKI/TALO/User/" + subject + "/signCert.der"));
    }
    EXPECT_THAT(namesIn(folder() / "GPKI/Certificate"), UnorderedElementsAre("class1", "class2"));
    EXPECT_TRUE(fs::exists(folder() / "Halvard/TALOCERT/TALO"));
    EXPECT_TRUE(fs::exists(folder() / "NPKI/TALO/User"));
}

TEST_F(SampleStoreLayout, LaysFourFilesAndTheIssuersIntoAnNpkiFolder)
{
    const Certificate& certificate = firstOf("npki");
    const fs::path own = fs::path(certificate.at("signing_certificate")).parent_path();
    EXPECT_EQ(own.filename(), certificate.at("subject"));
    EXPECT_THAT(
        namesIn(own), UnorderedElementsAre("signCert.der", "signPri.key", "kmCert.der", "kmPri.key", "CaPubs"));
    EXPECT_EQ(certificate.at("signing_key"), own / "signPri.key");
    EXPECT_EQ(certificate.at("km_certificate"), own / "kmCert.der");
    EXPECT_EQ(certificate.at("km_key"), own / "kmPri.key");
}

TEST_F(SampleStoreLayout, NamesGovernmentFilesAfterTheCommonName)
{
    const Certificate& certificate = firstOf("gpki");
    const std::string subject = certificate.at("subject");
    const fs::path own = folder() / "GPKI/Certificate/class2" / subject.substr(3, subject.find(',') - 3);
    for (const auto& [column, ending] : std::map<std::string, std::string>{{"signing_certificate", "_sig.cer"},
             {"signing_key", "_sig.key"}, {"km_certificate", "_env.cer"}, {"km_key", "_env.key"}}) {
        EXPECT_EQ(certificate.at(column), own.string() + ending);
        EXPECT_TRUE(fs::is_regular_file(certificate.at(column)));
    }
}

TEST_F(SampleStoreLayout, IsReadableByItsOwnerAlone)
{
    for (const auto& entry : fs::recursive_directory_iterator(folder())) {
        const auto expected =
            entry.is_directory() ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write;
        EXPECT_EQ(entry.status().permissions(), expected) << entry.path();
    }
}

TEST(SampleStorePairs, LeaveTheKeyManagementPairOutWhenAsked)
{
    const SampleStore store({"--count", "1", "--pairs", "signing", "--keys", "2"});
    const Certificate& certificate = store.certificates().at(0);
    EXPECT_EQ(certificate.at("km_certificate"), "");
    EXPECT_THAT(namesIn(fs::path(certificate.at("signing_certificate")).parent_path()),
        UnorderedElementsAre("signCert.der", "signPri.key", "CaPubs"));
}

/** What sample-store says that it would make at "/store". */
std::string plannedReport(std::vector<std::string> arguments)
{
    arguments.insert(arguments.end(), {"--dry-run", "--target", "/store", "--format", "tsv"});
    const Outcome outcome = runSampleStore(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out;
}

std::vector<Certificate> planned(const std::vector<std::string>& arguments)
{
    return parseReport(plannedReport(arguments));
}

TEST(SampleStorePlan, IsWhatIsMade)
{
    const TemporaryFolder folder;
    const std::vector<std::string> arguments = {
        "--target", folder.path(), "--count", "3", "--format", "tsv", "--keys", "2"};
    std::vector<std::string> dry = arguments;
    dry.push_back("--dry-run");
    const Outcome plan = runSampleStore(dry);
    EXPECT_TRUE(fs::is_empty(folder.path()));
    EXPECT_EQ(runSampleStore(arguments).out, plan.out);
}

TEST(SampleStoreMixture, ShowsEveryStateLengthVariantAndPairing)
{
    const auto all = planned({"--count", "14"});
    EXPECT_THAT(valuesOf(all, "state"), UnorderedElementsAre("valid", "expiring", "expired"));
    EXPECT_THAT(valuesOf(all, "bits"), UnorderedElementsAre("1024", "2048"));
    EXPECT_THAT(valuesOf(all, "variant"), UnorderedElementsAre("A", "B", "C", "D", "E"));
    EXPECT_THAT(valuesOf(all, "pairs"), UnorderedElementsAre("both", "signing"));
    const auto common = std::count_if(all.begin(), all.end(), [](auto& c) { return c.at("variant") == "A"; });
    EXPECT_GT(common, 7) << "variant A is what most stores hold";
    std::set<std::string> folders;
    for (const Certificate& c : all)
        folders.insert(fs::path(c.at("signing_certificate")).parent_path().parent_path());
    EXPECT_THAT(folders,
        UnorderedElementsAre("/store/NPKI/yessign/USER", "/store/NPKI/SignKorea/USER", "/store/NPKI/TradeSign/USER",
            "/store/NPKI/CrossCert/USER", "/store/NPKI/SignGate/USER", "/store/NPKI/KICA/USER",
            "/store/NPKI/NCASign/USER"));
}

TEST(SampleStoreMixture, TakesWhatTheOptionsFix)
{
    const auto all = planned(
        {"--count", "5", "--state", "expired", "--key-bits", "1024", "--key-variant", "B", "--pairs", "both"});
    EXPECT_THAT(valuesOf(all, "state"), ElementsAre("expired"));
    EXPECT_THAT(valuesOf(all, "bits"), ElementsAre("1024"));
    EXPECT_THAT(valuesOf(all, "variant"), ElementsAre("B"));
    EXPECT_THAT(valuesOf(all, "pairs"), ElementsAre("both"));
}

TEST(SampleStorePromise, RefusesATargetThatHoldsAStore)
{
    const SampleStore store({"--count", "1", "--keys", "2"});
    const auto before = stateOf(store.folder());
    const Outcome again =
        runSampleStore({"--target", store.folder(), "--count", "1", "--seed", "2", "--keys", "2"});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.out, "");
    EXPECT_THAT(again.err, HasSubstr("exists already"));
    EXPECT_EQ(stateOf(store.folder()), before);
}

// An empty folder, or a link that leads nowhere yet, is somebody's too.
TEST(SampleStorePromise, WritesNothingWhenOneFolderExists)
{
    for (const std::string taken : {"NPKI", "GPKI", "MPKI", "Halvard", "ca", "pfx"}) {
        const TemporaryFolder target;
        if (taken == "ca")
            fs::create_directory_symlink(target.path("nowhere"), target.path(taken));
        else
            fs::create_directory(target.path(taken));
        const Outcome outcome = runSampleStore({"--target", target.path(), "--count", "4", "--families",
            "npki,gpki,mpki,ppki", "--pfx", "--keys", "2"});
        EXPECT_EQ(outcome.status, 1) << taken;
        EXPECT_THAT(outcome.err, HasSubstr(target.path(taken)));
        EXPECT_THAT(namesIn(target.path()), ElementsAre(taken));
    }
}

TEST(SampleStorePromise, LeavesOtherFilesOfTheTargetAlone)
{
    const TemporaryFolder home;
    fs::create_directory(home.path("Documents"));
    const Outcome outcome = runSampleStore({"--target", home.path(), "--count", "1", "--keys", "2"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(namesIn(home.path()), UnorderedElementsAre("Documents", "NPKI", "ca"));
}

TEST(SampleStorePromise, RefusesPathsThatTheLibraryWouldCut)
{
    const TemporaryFolder home;
    const fs::path deep = fs::path(home.path()) / std::string(120, 'a') / std::string(60, 'b');
    const Outcome outcome = runSampleStore({"--target", deep, "--count", "1", "--keys", "2"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("too long"));
    EXPECT_TRUE(fs::is_empty(home.path()));
}

TEST(SampleStoreSeed, GivesTheSameStoreAgain)
{
    const auto with = [](const std::string& seed, const std::string& day) {
        return plannedReport({"--count", "50", "--families", "npki,gpki", "--seed", seed, "--now", day});
    };
    const std::string first = with("7", "2026-03-01");
    EXPECT_EQ(with("7", "2026-03-01"), first);
    EXPECT_NE(with("8", "2026-03-01"), first);
    EXPECT_NE(with("7", "2026-03-02"), first);
}

// Pins the numbers behind a seed: stores that somebody made with it yesterday must come back tomorrow.
TEST(SampleStoreSeed, MeansTheSameOnEveryMachine)
{
    const Certificate certificate = planned({"--count", "1", "--seed", "1", "--now", "2026-11-20"}).at(0);
    EXPECT_EQ(
        certificate.at("subject"), "cn=서민수(SEO MINSU)70390303787749700357,ou=NRB,ou=personal4IB,o=yessign,c=kr");
    EXPECT_EQ(certificate.at("identity"), "8410001584637");
    EXPECT_EQ(certificate.at("not_after"), "2027-06-01 14:59:59");
}

TEST(SampleStoreNumbers, BelongToNobody)
{
    for (const Certificate& certificate : planned({"--count", "1000", "--families", "npki,gpki"})) {
        const std::string number = certificate.at("identity");
        if (certificate.at("subject").starts_with("cn=SVR"))
            EXPECT_EQ(number, "");
        else if (number.size() == 10)
            EXPECT_THAT(number, testing::MatchesRegex("000[0-9]{7}"));
        else
            EXPECT_THAT(number, testing::MatchesRegex("[0-9]{2}(0[1-9]|1[0-2])00[12][0-9]{6}"));
    }
}

TEST(SampleStoreNumbers, AreDifferentForEveryCertificate)
{
    const auto all = planned({"--count", "10000"});
    ASSERT_EQ(all.size(), 10'000u);
    EXPECT_EQ(valuesOf(all, "serial").size(), 10'000u);
    EXPECT_EQ(valuesOf(all, "signing_certificate").size(), 10'000u);
}

TEST(SampleStoreCommandLine, RefusesWhatIsOutOfBounds)
{
    const TemporaryFolder folder;
    const std::string target = folder.path("store");
    const std::vector<std::vector<std::string>> wrong = {{"--count", "0"}, {"--count", "100001"},
        {"--count", "many"}, {"--keys", "1"}, {"--families", "npki,xpki"}, {"--now", "2026-02-30"},
        {"--now", "yesterday"}, {"--password", ""}, {"--format", "xml"}, {"--key-variant", "F"},
        {"--key-bits", "512"}, {"--state", "lost"}, {"--pairs", "none"}, {"--surprise"}};
    for (std::vector<std::string> arguments : wrong) {
        arguments.insert(arguments.end(), {"--target", target});
        const Outcome outcome = runSampleStore(arguments);
        EXPECT_NE(outcome.status, 0) << arguments.front();
        EXPECT_NE(outcome.err, "") << arguments.front();
    }
    EXPECT_NE(runSampleStore({"--count", "1"}).status, 0) << "no target";
    EXPECT_FALSE(fs::exists(target));
}

TEST(SampleStoreCommandLine, ExplainsItself)
{
    const Outcome help = runSampleStore({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"--target", "--password", "--count", "--families", "--seed", "--now", "--keys",
             "--state", "--key-bits", "--key-variant", "--pairs", "--pfx", "--dry-run", "--format"})
        EXPECT_THAT(help.out, HasSubstr(option));
}

TEST(SampleStoreReport, PrintsATableForPeople)
{
    const Outcome outcome =
        runSampleStore({"--target", "/store", "--count", "2", "--password", "secret-7", "--dry-run"});
    EXPECT_THAT(outcome.out, testing::StartsWith("family  state"));
    EXPECT_THAT(outcome.out, HasSubstr("2 certificates, password: secret-7\n"));
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 4);
}

TEST(SampleStoreReport, PrintsJsonThatOthersCanRead)
{
    const std::string target = "/with \"quotes\", \\ and\ttab";
    const Outcome outcome = runSampleStore({"--target", target, "--count", "3", "--format", "json", "--dry-run"});
    const Outcome read =
        run({"python3", "-c",
                "import json, os, sys\n"
                "for c in json.load(sys.stdin): print(os.path.commonpath([c['km_key'], sys.argv[1]]))",
                target},
            outcome.out);
    EXPECT_EQ(read.out, target + "\n" + target + "\n" + target + "\n") << read.err;
}

} // namespace
