// sample-store as a program: the store's layout, its promise to touch nothing, determinism, and the command line.
#include "tests/tools/sample_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
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

TEST(SampleStoreLayout, PutsEachFamilyWhereItBelongs)
{
    const SampleStore store(
        {"--count", "12", "--families", "npki,gpki,mpki,ppki", "--pairs", "both", "--keys", "2"});
    ASSERT_EQ(store.certificates().size(), 12u);
    for (const Certificate& certificate : store.certificates()) {
        const std::string family = certificate.at("family");
        const std::string path = fs::path(certificate.at("signing_certificate")).lexically_relative(store.folder());
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
    EXPECT_THAT(namesIn(store.folder() / "GPKI/Certificate"), UnorderedElementsAre("class1", "class2"));
    EXPECT_TRUE(fs::exists(store.folder() / "Halvard/TALOCERT/TALO"));
    EXPECT_TRUE(fs::exists(store.folder() / "NPKI/TALO/User"));
}

TEST(SampleStoreLayout, LaysFourFilesAndTheIssuersIntoAnNpkiFolder)
{
    const SampleStore store({"--count", "1", "--keys", "2"});
    const Certificate& certificate = store.certificates().at(0);
    const fs::path folder = fs::path(certificate.at("signing_certificate")).parent_path();
    EXPECT_EQ(folder.filename(), certificate.at("subject"));
    EXPECT_THAT(
        namesIn(folder), UnorderedElementsAre("signCert.der", "signPri.key", "kmCert.der", "kmPri.key", "CaPubs"));
    EXPECT_EQ(certificate.at("signing_key"), folder / "signPri.key");
    EXPECT_EQ(certificate.at("km_certificate"), folder / "kmCert.der");
    EXPECT_EQ(certificate.at("km_key"), folder / "kmPri.key");
}

TEST(SampleStoreLayout, NamesGovernmentFilesAfterTheCommonName)
{
    const SampleStore store({"--count", "1", "--families", "gpki", "--keys", "2"});
    const Certificate& certificate = store.certificates().at(0);
    const std::string subject = certificate.at("subject");
    const std::string id = subject.substr(3, subject.find(',') - 3);
    EXPECT_THAT(namesIn(store.folder() / "GPKI/Certificate/class2"),
        UnorderedElementsAre(id + "_sig.cer", id + "_sig.key", id + "_env.cer", id + "_env.key"));
}

TEST(SampleStoreLayout, LeavesTheKeyManagementPairOutWhenAsked)
{
    const SampleStore store({"--count", "1", "--pairs", "signing", "--keys", "2"});
    const Certificate& certificate = store.certificates().at(0);
    EXPECT_EQ(certificate.at("km_certificate"), "");
    EXPECT_THAT(namesIn(fs::path(certificate.at("signing_certificate")).parent_path()),
        UnorderedElementsAre("signCert.der", "signPri.key", "CaPubs"));
}

TEST(SampleStoreLayout, IsReadableByItsOwnerAlone)
{
    const SampleStore store({"--count", "2", "--families", "npki,gpki", "--keys", "2"});
    for (const auto& entry : fs::recursive_directory_iterator(store.folder())) {
        const auto expected =
            entry.is_directory() ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write;
        EXPECT_EQ(entry.status().permissions(), expected) << entry.path();
    }
}

TEST(SampleStoreMixture, ShowsEveryStateLengthVariantAndPairing)
{
    const SampleStore store({"--count", "14", "--keys", "2"});
    const auto& all = store.certificates();
    EXPECT_THAT(valuesOf(all, "state"), UnorderedElementsAre("valid", "expiring", "expired"));
    EXPECT_THAT(valuesOf(all, "bits"), UnorderedElementsAre("1024", "2048"));
    EXPECT_THAT(valuesOf(all, "variant"), UnorderedElementsAre("A", "B", "C", "D", "E"));
    EXPECT_THAT(valuesOf(all, "pairs"), UnorderedElementsAre("both", "signing"));
    const auto variants = std::count_if(all.begin(), all.end(), [](auto& c) { return c.at("variant") == "A"; });
    EXPECT_GT(variants, 7) << "variant A is what most stores hold";
    EXPECT_THAT(namesIn(store.folder() / "NPKI"),
        UnorderedElementsAre("yessign", "SignKorea", "TradeSign", "CrossCert", "SignGate", "KICA", "NCASign"));
}

TEST(SampleStoreMixture, TakesWhatTheOptionsFix)
{
    const SampleStore store({"--count", "5", "--state", "expired", "--key-bits", "1024", "--key-variant", "B",
        "--pairs", "both", "--keys", "2"});
    EXPECT_THAT(valuesOf(store.certificates(), "state"), ElementsAre("expired"));
    EXPECT_THAT(valuesOf(store.certificates(), "bits"), ElementsAre("1024"));
    EXPECT_THAT(valuesOf(store.certificates(), "variant"), ElementsAre("B"));
    EXPECT_THAT(valuesOf(store.certificates(), "pairs"), ElementsAre("both"));
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
            fs::create_directory_symlink(target.path() / "nowhere", target.path() / taken);
        else
            fs::create_directory(target.path() / taken);
        const Outcome outcome = runSampleStore({"--target", target.path(), "--count", "4", "--families",
            "npki,gpki,mpki,ppki", "--pfx", "--keys", "2"});
        EXPECT_EQ(outcome.status, 1) << taken;
        EXPECT_THAT(outcome.err, HasSubstr((target.path() / taken).string()));
        EXPECT_THAT(namesIn(target.path()), ElementsAre(taken));
    }
}

TEST(SampleStorePromise, LeavesOtherFilesOfTheTargetAlone)
{
    const TemporaryFolder home;
    fs::create_directory(home.path() / "Documents");
    const Outcome outcome = runSampleStore({"--target", home.path(), "--count", "1", "--keys", "2"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(namesIn(home.path()), UnorderedElementsAre("Documents", "NPKI", "ca"));
}

TEST(SampleStorePromise, RefusesPathsThatTheLibraryWouldCut)
{
    const TemporaryFolder home;
    const fs::path deep = home.path() / std::string(120, 'a') / std::string(60, 'b');
    const Outcome outcome = runSampleStore({"--target", deep, "--count", "1", "--keys", "2"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("too long"));
    EXPECT_TRUE(fs::is_empty(home.path()));
}

std::string reportWithout(const std::string& report, const fs::path& folder)
{
    std::string text = report;
    for (std::size_t at; (at = text.find(folder.string())) != text.npos;)
        text.erase(at, folder.string().size());
    return text;
}

std::string reportOf(std::vector<std::string> arguments)
{
    const TemporaryFolder folder;
    arguments.insert(arguments.end(),
        {"--target", folder.path(), "--format", "tsv", "--count", "6", "--families", "gpki", "--keys", "2"});
    const Outcome outcome = runSampleStore(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return reportWithout(outcome.out, folder.path());
}

TEST(SampleStoreSeed, GivesTheSameStoreAgain)
{
    const std::string first = reportOf({"--seed", "7", "--now", "2026-03-01"});
    EXPECT_EQ(reportOf({"--seed", "7", "--now", "2026-03-01"}), first);
    EXPECT_NE(reportOf({"--seed", "8", "--now", "2026-03-01"}), first);
    EXPECT_NE(reportOf({"--seed", "7", "--now", "2026-03-02"}), first);
}

// Pins the numbers behind a seed: stores that somebody made with it yesterday must come back tomorrow.
TEST(SampleStoreSeed, MeansTheSameOnEveryMachine)
{
    const TemporaryFolder folder;
    const Outcome outcome = runSampleStore({"--target", folder.path(), "--count", "1", "--seed", "1", "--now",
        "2026-11-20", "--format", "tsv", "--keys", "2"});
    const Certificate certificate = parseReport(outcome.out).at(0);
    EXPECT_EQ(
        certificate.at("subject"), "cn=서민수(SEO MINSU)70390303787749700357,ou=NRB,ou=personal4IB,o=yessign,c=kr");
    EXPECT_EQ(certificate.at("identity"), "8410001584637");
    EXPECT_EQ(certificate.at("not_after"), "2027-06-01 14:59:59");
}

TEST(SampleStoreNumbers, BelongToNobody)
{
    const SampleStore store({"--count", "24", "--keys", "2", "--pairs", "signing", "--families", "npki,gpki"});
    for (const Certificate& certificate : store.certificates()) {
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
    const SampleStore store(
        {"--count", "300", "--families", "mpki", "--keys", "2", "--pairs", "signing", "--key-bits", "1024"});
    EXPECT_EQ(valuesOf(store.certificates(), "serial").size(), 300u);
    EXPECT_EQ(valuesOf(store.certificates(), "signing_certificate").size(), 300u);
}

TEST(SampleStoreCommandLine, RefusesWhatIsOutOfBounds)
{
    const TemporaryFolder folder;
    const std::string target = folder.path() / "store";
    const std::vector<std::vector<std::string>> wrong = {{"--count", "0"}, {"--count", "10001"},
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
             "--state", "--key-bits", "--key-variant", "--pairs", "--pfx", "--format"})
        EXPECT_THAT(help.out, HasSubstr(option));
}

TEST(SampleStoreReport, PrintsATableForPeople)
{
    const TemporaryFolder folder;
    const Outcome outcome =
        runSampleStore({"--target", folder.path(), "--count", "2", "--password", "secret-7", "--keys", "2"});
    EXPECT_THAT(outcome.out, testing::StartsWith("family  state"));
    EXPECT_THAT(outcome.out, HasSubstr("2 certificates, password: secret-7\n"));
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 4);
}

TEST(SampleStoreReport, PrintsJsonThatOthersCanRead)
{
    const TemporaryFolder folder;
    const fs::path target = folder.path() / "with \"quotes\" and \\";
    const Outcome outcome = runSampleStore({"--target", target, "--count", "3", "--format", "json", "--keys", "2"});
    const Outcome read = run({"python3", "-c",
                                 "import json, sys\n"
                                 "for c in json.load(sys.stdin): print(c['signing_certificate'])"},
        outcome.out);
    ASSERT_EQ(read.status, 0) << read.err;
    EXPECT_EQ(std::count(read.out.begin(), read.out.end(), '\n'), 3);
    EXPECT_TRUE(fs::exists(read.out.substr(0, read.out.find('\n'))));
}

} // namespace
