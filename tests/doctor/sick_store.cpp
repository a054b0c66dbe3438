// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/doctor/sick_store.h"

#include "tests/support/sample_store.h"

#include <sigildesk/certlist.h>

#include <cstdio>
#include <memory>

namespace fs = std::filesystem;

namespace {

constexpr int allFamilies = 15;

std::string homeOfTest; // what the injected environment answers

struct Samples {
    SamplePair good;
    SamplePair expired;
    std::string pfx;
};

SamplePair readPair(const fs::path& folder)
{
    return {readFile(folder / "signCert.der"), readFile(folder / "signPri.key"), readFile(folder / "kmCert.der"),
        readFile(folder / "kmPri.key")};
}

/** The folder of the only certificate of a store. */
fs::path theFolder(const SampleStore& store)
{
    for (const auto& file : fs::recursive_directory_iterator(store.folder()))
        if (file.path().filename() == "signCert.der")
            return file.path().parent_path();
    return {};
}

Samples makeSamples()
{
    const SampleStore valid({"--count", "1", "--pairs", "both", "--state", "valid", "--keys", "2", "--pfx"});
    const SampleStore old({"--count", "1", "--pairs", "both", "--state", "expired", "--keys", "2"});
    Samples made{readPair(theFolder(valid)), readPair(theFolder(old)), {}};
    for (const auto& file : fs::directory_iterator(valid.folder() / "pfx"))
        made.pfx = readFile(file.path());
    return made;
}

/** Made once: keys take their time. */
const Samples& samples()
{
    static const Samples made = makeSamples();
    return made;
}

} // namespace

SickStore::SickStore()
    : m_machine(sigil::environment())
{
    fs::create_directories(home);
    homeOfTest = home.string();
    sigil::environment().homeFolder = [] { return homeOfTest; };
    sigil::environment().mountTable = m_folder.write("mtab", "");
    question.libraryFolder = SIGILDESK_LIBRARY_FOLDER;
    question.wanted.nPKITypes = allFamilies;
}

SickStore::~SickStore() { sigil::environment() = m_machine; }

const SamplePair& SickStore::good() { return samples().good; }
const SamplePair& SickStore::expired() { return samples().expired; }
const std::string& SickStore::pfx() { return samples().pfx; }

fs::path SickStore::pair(const std::string& folder, const SamplePair& files) const
{
    writeFile(home / folder / "signCert.der", files.signCert);
    writeFile(home / folder / "signPri.key", files.signKey);
    return home / folder;
}

fs::path SickStore::bothPairs(const std::string& folder) const
{
    writeFile(home / folder / "kmCert.der", good().kmCert);
    writeFile(home / folder / "kmPri.key", good().kmKey);
    return pair(folder);
}

fs::path SickStore::shared(const std::string& folder, const std::string& stem) const
{
    writeFile(home / folder / (stem + "_sig.cer"), good().signCert);
    writeFile(home / folder / (stem + "_sig.key"), good().signKey);
    return home / folder;
}

std::set<std::string> SickStore::listed(const std::string& folder) const
{
    void* handle = nullptr;
    std::string library = question.libraryFolder;
    tagLOADCERTOPT wanted = question.wanted;
    std::string disk = folder;
    EXPECT_EQ(CLP_Initalize(&handle, nullptr, question.toolkit, question.language, library.data()), 0);
    CLP_SetType(handle, &wanted);
    CLP_SetMediaType(handle, folder.empty() ? SIGIL_MEDIUM_HARD_DISK : SIGIL_MEDIUM_REMOVABLE_DISK, disk.data(), 0);
    CLP_LoadCertList(handle);
    std::set<std::string> paths;
    for (int i = 0; i < CLP_GetCertCount(handle); ++i) {
        auto entry = std::make_unique<tagCERTINFO>();
        EXPECT_EQ(CLP_GetCertInfo(handle, i, entry.get()), 0);
        std::string path = entry->szSignCertPath;
        for (std::size_t at = path.find("//"); at != path.npos; at = path.find("//"))
            path.erase(at, 1);
        paths.insert(path);
    }
    CLP_UnInitalize(handle);
    return paths;
}

std::set<std::string> SickStore::listedBy(const sigil::StoreReport& report)
{
    std::set<std::string> paths;
    for (const sigil::Finding& finding : report.findings)
        if (finding.rule == "listed")
            paths.insert(finding.path);
    return paths;
}

std::string SickStore::said(const sigil::StoreReport& report, const fs::path& path) const
{
    const std::string whole = (path.is_absolute() ? path : home / path).string();
    std::string text;
    for (const sigil::Finding& finding : report.findings)
        if (finding.path == whole || (fs::is_directory(path) && finding.path.starts_with(whole + "/")))
            text += (text.empty() ? "" : "; ") + finding.rule +
                (finding.listed && finding.rule != "listed" ? ", listed" : "");
    return text;
}

sigil::Finding SickStore::finding(const sigil::StoreReport& report, const std::string& rule)
{
    for (const sigil::Finding& finding : report.findings)
        if (finding.rule == rule)
            return finding;
    ADD_FAILURE() << "no finding of " << rule;
    return {};
}
