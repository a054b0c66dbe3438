// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Searching, counting and replacing: the cost of a byte must stay the same from 1x to 100x.

#include <sigildesk/util.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

CUtil util(0, nullptr); // texts need no language file

/** Policy lines of a settings file, @p lines of them. */
std::string policyFile(long lines)
{
    std::string text;
    for (long i = 0; i < lines; ++i)
        text += "1.2.410.100001.5.3." + std::to_string(i) + "=name of a policy\n";
    return text;
}

void finish(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * state.range(0)); }

void countFields(benchmark::State& state)
{
    std::string text = policyFile(state.range(0));
    char separator[] = "\n";
    int count = 0;
    for (auto _ : state) {
        CBinary content(text.data(), static_cast<int>(text.size()));
        util.ParingFindCnt(content, separator, &count);
        benchmark::DoNotOptimize(count);
    }
    finish(state);
}

void countHits(benchmark::State& state)
{
    std::string text = policyFile(state.range(0));
    char wanted[] = ".5.";
    int pos = 0;
    for (auto _ : state) {
        CBinary content(text.data(), static_cast<int>(text.size()));
        benchmark::DoNotOptimize(util.BinaryFindCount(content, wanted, pos));
    }
    finish(state);
}

void replaceAll(benchmark::State& state)
{
    std::string text = policyFile(state.range(0));
    for (auto _ : state) {
        CBinary out;
        util.ReplaceAll(text.data(), ".", "  ", &out);
        benchmark::DoNotOptimize(out.m_pData);
    }
    finish(state);
}

void findNothing(benchmark::State& state)
{
    std::string text(static_cast<std::size_t>(state.range(0)) * 40, 'a');
    std::string pattern(100, 'a');
    pattern += 'b';
    CBinary content(text.data(), static_cast<int>(text.size()));
    for (auto _ : state)
        benchmark::DoNotOptimize(content.find(pattern.data()));
    finish(state);
}

void trimData(benchmark::State& state)
{
    const std::string text = policyFile(state.range(0));
    std::string out(text.size() + 1, '\0');
    for (auto _ : state) {
        std::string in = text;
        benchmark::DoNotOptimize(util.TrimData(in.data(), out.data()));
    }
    finish(state);
}

void hexText(benchmark::State& state)
{
    std::string text(static_cast<std::size_t>(state.range(0)) * 40, 'a');
    for (auto _ : state) {
        const std::unique_ptr<char[]> hex(util.toHexString(text.data(), static_cast<int>(text.size())));
        CBinary back;
        benchmark::DoNotOptimize(back.fromHexString(hex.get()));
    }
    finish(state);
}

void nameOfALongDn(benchmark::State& state)
{
    std::string dn;
    for (long i = 0; i < state.range(0); ++i)
        dn += "ou=part " + std::to_string(i) + ",";
    dn += "cn=Hong,c=KR";
    char out[64];
    for (auto _ : state)
        benchmark::DoNotOptimize(util.GetCNString(dn.data(), sizeof out, out));
    finish(state);
}

/** Days to a date far away: no cost by the year. */
void daysToAFarYear(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(util.CalcDay(static_cast<int>(state.range(0)) * 10'000, 6, 1));
}

void sizes(benchmark::internal::Benchmark* b) { b->Arg(100)->Arg(1'000)->Arg(10'000); }

BENCHMARK(countFields)->Apply(sizes);
BENCHMARK(countHits)->Apply(sizes);
BENCHMARK(replaceAll)->Apply(sizes);
BENCHMARK(findNothing)->Apply(sizes);
BENCHMARK(trimData)->Apply(sizes);
BENCHMARK(hexText)->Apply(sizes);
BENCHMARK(nameOfALongDn)->Apply(sizes);
BENCHMARK(daysToAFarYear)->Apply(sizes);

} // namespace
