// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// One profile lookup against what no lookup can do without: opening the file, reading it and one search for the key.
// The first argument is the number of lines, the second where the key stands: in percent of the file.

#include <sigildesk/profile.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

/** A file that is removed at the end. */
class ScratchFile {
public:
    explicit ScratchFile(const std::string& content)
        : m_path(
              (std::filesystem::temp_directory_path() / ("sigildesk-bench-" + std::to_string(getpid()))).string())
    {
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~ScratchFile() { std::filesystem::remove(m_path); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    char* path() { return m_path.data(); }

private:
    std::string m_path;
};

std::string keyOf(long line) { return "DLG_SELECTCERT_TEXT_" + std::to_string(1'000'000 + line); }

/** A language file: one section, keys and texts of the usual lengths. */
std::string languageFile(long lines)
{
    std::string text = "[UserInterface]\n";
    for (long i = 1; i < lines; ++i)
        text += keyOf(i) + " = \xC0\xCE\xC1\xF5\xBC\xAD \xBC\xB1\xC5\xC3\n";
    return text;
}

void finish(benchmark::State& state, bool found)
{
    if (!found)
        state.SkipWithError("the key was not found");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void lookup_ours(benchmark::State& state)
{
    ScratchFile file(languageFile(state.range(0)));
    std::string key = keyOf(state.range(0) * state.range(1) / 100 - 1);
    char section[] = "UserInterface";
    char none[] = "";
    char out[1024];
    int length = 1;
    for (auto _ : state) {
        length = FileGetPrivateProfileString(section, key.data(), none, out, sizeof out, file.path());
        benchmark::DoNotOptimize(out);
    }
    finish(state, length > 0);
}

/** Opening the file, reading it in one piece and one search for the key in it. */
void lookup_memmem(benchmark::State& state)
{
    ScratchFile file(languageFile(state.range(0)));
    const std::string key = keyOf(state.range(0) * state.range(1) / 100 - 1);
    std::string content(10'000'000, '\0');
    bool found = true;
    for (auto _ : state) {
        const int descriptor = open(file.path(), O_RDONLY | O_CLOEXEC);
        const ssize_t size = read(descriptor, content.data(), content.size());
        close(descriptor);
        found &= memmem(content.data(), static_cast<std::size_t>(size), key.data(), key.size()) != nullptr;
        benchmark::DoNotOptimize(found);
    }
    finish(state, found);
}

/** The last key behind many sections. */
void sections_ours(benchmark::State& state)
{
    std::string content;
    for (long i = 0; i < state.range(0); ++i)
        content += "[Section" + std::to_string(i) + "]\nname=value\n";
    ScratchFile file(content);
    std::string section = "Section" + std::to_string(state.range(0) - 1);
    char key[] = "name";
    char none[] = "";
    char out[1024];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            FileGetPrivateProfileString(section.data(), key, none, out, sizeof out, file.path()));
    finish(state, out[0] == 'v');
}

/** One line of many bytes. */
void longLine_ours(benchmark::State& state)
{
    ScratchFile file("[S]\n" + std::string(static_cast<std::size_t>(state.range(0)), 'x') + "\nk=v\n");
    char section[] = "S";
    char key[] = "k";
    char none[] = "";
    char out[1024];
    for (auto _ : state)
        benchmark::DoNotOptimize(FileGetPrivateProfileString(section, key, none, out, sizeof out, file.path()));
    finish(state, out[0] == 'v');
}

void places(benchmark::internal::Benchmark* b)
{
    for (long lines : {400, 4'000, 40'000})
        for (long place : {50, 100})
            b->Args({lines, place});
}

BENCHMARK(lookup_ours)->Apply(places);
BENCHMARK(lookup_memmem)->Apply(places);
BENCHMARK(sections_ours)->Arg(200)->Arg(2'000)->Arg(20'000);
BENCHMARK(longLine_ours)->Arg(20'000)->Arg(200'000)->Arg(2'000'000);

} // namespace
