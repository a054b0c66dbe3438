// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The cost of a facade call over the bare dlsym and call of the same symbol, in one run and on both toolkit types.
// The symbols do next to nothing, so that the facade's own cost shows. Prints rows of the README's table; fails when a
// ratio is above the limit.

#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <benchmark/benchmark.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <type_traits>

namespace {

constexpr double limit = 1.10;

struct Toolkit {
    int type;
    const char* library;
    const char* init;
    const char* unload;
    const char* load;
};

constexpr Toolkit toolkits[] = {
    {0, DOUBLES_PLAIN_FOLDER "/libHVCToolkitV30.so", "HVTK_API_Init", "HVTK_CERT_Unload", "HVTK_CERT_Load"},
    {1, DOUBLES_PLAIN_FOLDER "/libgpkiapi_v15.so", "GPKI_API_Init", "GPKI_CERT_Unload", "GPKI_CERT_Load"},
};

static_assert(std::is_same_v<decltype(HVTK_API_Init), decltype(GPKI_API_Init)>);
static_assert(std::is_same_v<decltype(HVTK_CERT_Unload), decltype(GPKI_CERT_Unload)>);
static_assert(std::is_same_v<decltype(HVTK_CERT_Load), decltype(GPKI_CERT_Load)>);

unsigned char bytes[] = {1, 2, 3};
BINSTR certificate{bytes, 3};

/** The library and its context without any facade. */
struct Bare {
    explicit Bare(const Toolkit& toolkit)
        : library(dlopen(toolkit.library, RTLD_LAZY))
    {
        char noFolder[] = "";
        reinterpret_cast<decltype(&HVTK_API_Init)>(dlsym(library, toolkit.init))(&context, noFolder);
    }
    ~Bare() { dlclose(library); }
    void* library;
    void* context = nullptr;
};

sigildesk::CryptoHandle facadeOn(const Toolkit& toolkit)
{
    char folder[] = DOUBLES_PLAIN_FOLDER;
    sigildesk::CryptoHandle facade;
    sigildesk::initialise(facade, toolkit.type, folder);
    return facade;
}

void bareNoArgument(benchmark::State& state, const Toolkit& toolkit)
{
    const Bare bare(toolkit);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            reinterpret_cast<decltype(&HVTK_CERT_Unload)>(dlsym(bare.library, toolkit.unload))(bare.context));
}

void facadeNoArgument(benchmark::State& state, const Toolkit& toolkit)
{
    const sigildesk::CryptoHandle facade = facadeOn(toolkit);
    for (auto _ : state)
        benchmark::DoNotOptimize(CertUnLoad(facade.get()));
}

void bareByteString(benchmark::State& state, const Toolkit& toolkit)
{
    const Bare bare(toolkit);
    for (auto _ : state)
        benchmark::DoNotOptimize(reinterpret_cast<decltype(&HVTK_CERT_Load)>(dlsym(bare.library, toolkit.load))(
            bare.context, &certificate));
}

void facadeByteString(benchmark::State& state, const Toolkit& toolkit)
{
    const sigildesk::CryptoHandle facade = facadeOn(toolkit);
    for (auto _ : state)
        benchmark::DoNotOptimize(CertLoad(facade.get(), &certificate));
}

/** Keeps the best time of every benchmark; the runs are interleaved, so that both sides meet the same machine. */
class BestTimes : public benchmark::ConsoleReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            double& best = m_best.try_emplace(run.run_name.function_name, run.GetAdjustedCPUTime()).first->second;
            best = std::min(best, run.GetAdjustedCPUTime());
        }
    }
    double best(const std::string& name) const { return m_best.at(name); }

private:
    std::map<std::string, double> m_best;
};

bool report(const BestTimes& times, const std::string& what)
{
    const double bare = times.best("bare/" + what);
    const double facade = times.best("facade/" + what);
    std::printf("| façade call, %s | %.1f ns | %.1f ns bare `dlsym` and call | %.3f |\n", what.c_str(), facade,
        bare, facade / bare);
    return facade <= limit * bare;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    std::string settings[] = {
        "--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=80", "--benchmark_min_time=0.005"};
    for (std::string& setting : settings)
        arguments.insert(arguments.begin() + 1, setting.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    std::vector<std::string> compared;
    for (const Toolkit& toolkit : toolkits) {
        const std::string type = "type " + std::to_string(toolkit.type);
        const auto compare = [&](const std::string& what, auto* bare, auto* facade) {
            compared.push_back(type + ", " + what);
            benchmark::RegisterBenchmark(("bare/" + compared.back()).c_str(), bare, toolkit);
            benchmark::RegisterBenchmark(("facade/" + compared.back()).c_str(), facade, toolkit);
        };
        compare("no argument", bareNoArgument, facadeNoArgument);
        compare("byte string", bareByteString, facadeByteString);
    }
    BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    bool within = true;
    for (const std::string& what : compared)
        within = report(times, what) && within;
    return within ? 0 : 1;
}
