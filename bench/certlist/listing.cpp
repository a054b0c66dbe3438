// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// certlist_bench [COUNT...]
//
// CLP_LoadCertList over sample stores of so many certificates, 1,000 and 10,000 when nothing is said, against two baselines in
// the same run. One is OpenSSL's parse of the same signing certificates, once and from memory; the list reads files, makes
// texts, and looks twice. The other is the least that the two passes can cost without the library: the reading of the
// folders, one question for kmCert.der, and the bare calls of the toolkit. And the memory that the list takes.

#include "bench/certlist/bare_toolkit.h"
#include "bench/process.h"

#include "foundation/environment.h"
#include "tests/support/sample_store.h"

#include <sigildesk/codes.h>
#include <sigildesk/handles.h>

#include <openssl/x509.h>

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

/** All sizes read the same number of certificates in all, so that one size is not noisier than the other. */
constexpr int runsOf(int count) { return std::max(3, 120000 / count); }

std::string home; // what the injected environment answers

/** Time of the processor, which other programs on the machine do not lengthen. */
double seconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <class Work>
double timed(Work work)
{
    const double start = seconds();
    work();
    return seconds() - start;
}

/** One pass without the library. @return how many certificates the toolkit took */
int barePass(BareToolkit& bare)
{
    int read = 0;
    for (const char* authority :
        {"yessign", "SignKorea", "TradeSign", "CrossCert", "SignGate", "KICA", "NCASign"}) {
        const std::string folder = home + "/NPKI/" + authority + "/USER/";
        DIR* items = opendir(folder.c_str());
        while (const dirent* item = items ? readdir(items) : nullptr) {
            if (item->d_type != DT_DIR || *item->d_name == '.')
                continue;
            const std::string path = folder + item->d_name;
            const std::string kmCert = path + "/kmCert.der";
            const bool pair = access(kmCert.c_str(), R_OK) == 0;
            read += bare.read({path + "/signCert.der", path + "/signPri.key", pair ? kmCert : "",
                        pair ? path + "/kmPri.key" : ""})
                ? 1
                : 0;
        }
        if (items)
            closedir(items);
    }
    return read;
}

/** The signing certificates of the store. */
std::vector<std::string> certificates()
{
    std::vector<std::string> found;
    for (const auto& item : fs::recursive_directory_iterator(home + "/NPKI")) {
        if (item.path().filename() != "signCert.der")
            continue;
        std::ifstream file(item.path(), std::ios::binary);
        found.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return found;
}

void parse(const std::string& certificate)
{
    const auto* at = reinterpret_cast<const unsigned char*>(certificate.data());
    X509* const parsed = d2i_X509(nullptr, &at, static_cast<long>(certificate.size()));
    if (!parsed)
        throw std::runtime_error("d2i_X509");
    X509_free(parsed);
}

sigildesk::ProcessorHandle makeProcessor()
{
    sigildesk::ProcessorHandle clp;
    std::string folder = SIGILDESK_LIBRARY_FOLDER;
    tagLOADCERTOPT options{};
    options.nPKITypes = SIGIL_FAMILY_NPKI;
    if (sigildesk::initialise(clp, SIGIL_TOOLKIT_MAKER, SIGIL_LANGUAGE_KOREAN, folder.data()) != 0)
        throw std::runtime_error("CLP_Initalize");
    CLP_SetType(clp.get(), &options);
    CLP_SetMediaType(clp.get(), SIGIL_MEDIUM_HARD_DISK, nullptr, 0);
    return clp;
}

void measure(int count)
{
    const SampleStore store({"--count", std::to_string(count)});
    home = store.folder().string();
    BareToolkit bare(SIGILDESK_LIBRARY_FOLDER "/libHVCToolkitV30.so");
    const sigildesk::ProcessorHandle clp = makeProcessor();
    const std::vector<std::string> all = certificates();
    std::vector<double> parseTimes;
    std::vector<double> bareTimes;
    std::vector<double> listTimes;
    // Of runs side by side, so that what slows the machine for a while slows all.
    std::vector<double> toParse;
    std::vector<double> toBare;
    double grown = 0;
    for (int run = 0; run < runsOf(count); ++run) {
        int read = 0;
        parseTimes.push_back(timed([&] { std::for_each(all.begin(), all.end(), parse); }));
        bareTimes.push_back(timed([&] { read = barePass(bare) + barePass(bare); }));
        const double before = residentMegabytes();
        listTimes.push_back(timed([&] { CLP_LoadCertList(clp.get()); }));
        toParse.push_back(listTimes.back() / parseTimes.back());
        toBare.push_back(listTimes.back() / bareTimes.back());
        if (run == 0)
            grown = residentMegabytes() - before;
        if (all.size() != static_cast<std::size_t>(count) || read != 2 * count ||
            CLP_GetCertCount(clp.get()) != count)
            throw std::runtime_error("a certificate was left out");
    }
    const auto row = [&](const char* baseline, const std::vector<double>& times,
                         const std::vector<double>& ratios) {
        std::printf("| `CLP_LoadCertList`, %d certificates | %.1f ms | %.1f ms %s | %.2f |\n", count,
            percentile(listTimes, 0.5) * 1e3, percentile(times, 0.5) * 1e3, baseline, percentile(ratios, 0.5));
    };
    row("OpenSSL's parse of each, once", parseTimes, toParse);
    row("the bare calls and reads of both passes", bareTimes, toBare);
    std::printf("grown by %.1f MB; the records that it hands out span %.1f MB\n", grown,
        count * (sizeof(tagCERTINFO) / 1e6));
}

} // namespace

int main(int argc, char** argv)
{
    sigil::environment().homeFolder = [] { return home; };
    for (int i = 1; i < argc; ++i)
        measure(std::atoi(argv[i]));
    if (argc == 1)
        for (int count : {1000, 10000})
            measure(count);
}
