// CLP_LoadCertList over a sample store, against the bare calls of the toolkit and the file reads of the same two passes,
// in the same run; and the memory that the list takes.

#include "bench/certlist/bare_toolkit.h"

#include "foundation/environment.h"

#include <sigildesk/certlist.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr int runs = 5;

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

double residentMegabytes()
{
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/** The certificate folders below the home folder. */
std::vector<CertificateFiles> findFiles()
{
    std::vector<CertificateFiles> found;
    for (const auto& item : fs::recursive_directory_iterator(fs::path(home) / "NPKI")) {
        if (item.path().filename() != "signCert.der")
            continue;
        const fs::path folder = item.path().parent_path();
        const bool pair = fs::exists(folder / "kmCert.der");
        found.push_back({item.path(), folder / "signPri.key", pair ? (folder / "kmCert.der").string() : "",
            pair ? (folder / "kmPri.key").string() : ""});
    }
    return found;
}

void makeStore(int count)
{
    home = (fs::temp_directory_path() / "sigildesk-bench-XXXXXX").string();
    if (!mkdtemp(home.data()))
        throw std::runtime_error("no temporary folder");
    const std::string command =
        SAMPLE_STORE_PROGRAM " --count " + std::to_string(count) + " --target " + home + " > /dev/null";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error(command);
}

void* makeProcessor()
{
    void* clp = nullptr;
    std::string folder = SIGILDESK_LIBRARY_FOLDER;
    tagLOADCERTOPT options{};
    options.nPKITypes = 2;
    if (CLP_Initalize(&clp, nullptr, 0, 1, folder.data()) != 0)
        throw std::runtime_error("CLP_Initalize");
    CLP_SetType(clp, &options);
    CLP_SetMediaType(clp, 1, nullptr, 0);
    return clp;
}

void measure(int count)
{
    makeStore(count);
    const std::vector<CertificateFiles> files = findFiles();
    BareToolkit bare(SIGILDESK_LIBRARY_FOLDER "/libHVCToolkitV30.so");
    void* clp = makeProcessor();
    double bareTime = 1e9;
    double listTime = 1e9;
    double grown = 0;
    for (int run = 0; run < runs; ++run) {
        bareTime = std::min(bareTime, timed([&] {
            for (int pass = 0; pass < 2; ++pass)
                for (const CertificateFiles& certificate : files)
                    bare.read(certificate);
        }));
        const double before = residentMegabytes();
        listTime = std::min(listTime, timed([&] { CLP_LoadCertList(clp); }));
        if (run == 0)
            grown = residentMegabytes() - before;
    }
    const int listed = CLP_GetCertCount(clp);
    std::printf("%12d %10d %12.1f %12.1f %7.3f %14.1f %14.1f %14.1f\n", count, listed, bareTime * 1e3,
        listTime * 1e3, listTime / bareTime, listTime * 1e6 / std::max(listed, 1), grown,
        count * (sizeof(tagCERTINFO) / 1e6));
    CLP_UnInitalize(clp);
    fs::remove_all(home);
}

} // namespace

int main()
{
    sigil::environment().homeFolder = [] { return home; };
    std::printf("best of %d runs, processor time\n", runs);
    std::printf("%12s %10s %12s %12s %7s %14s %14s %14s\n", "certificates", "listed", "bare ms", "list ms", "ratio",
        "us per entry", "resident MB", "records MB");
    for (int count : {1000, 10000})
        measure(count);
}
