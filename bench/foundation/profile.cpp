// One profile lookup against reading the file once with fread and scanning it for the key.
// The first argument is the number of lines, the second where the key stands: in percent of the file.

#include <sigildesk/profile.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
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

/** Looks @p key up in one section of @p content, line by line, by the rules of the format. */
std::string_view scan(std::string_view content, std::string_view section, std::string_view key)
{
    std::size_t at = content.find(section);
    if (at == std::string_view::npos)
        return {};
    while ((at = content.find('\n', at)) != std::string_view::npos && ++at < content.size()) {
        const std::string_view line = content.substr(at, content.find('\n', at) - at);
        if (line.find('[') != std::string_view::npos && line[0] != '#')
            return {};
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || line[0] == '#')
            continue;
        const std::string_view name = line.substr(0, line.find_last_not_of(' ', equals - 1) + 1);
        if (name == key)
            return line.substr(equals + 1);
    }
    return {};
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

void lookup_fread(benchmark::State& state)
{
    ScratchFile file(languageFile(state.range(0)));
    const std::string key = keyOf(state.range(0) * state.range(1) / 100 - 1);
    std::string content(10'000'000, '\0');
    bool found = true;
    for (auto _ : state) {
        std::FILE* stream = std::fopen(file.path(), "r");
        const std::size_t size = std::fread(content.data(), 1, content.size(), stream);
        std::fclose(stream);
        found &= !scan(std::string_view(content.data(), size), "[UserInterface]", key).empty();
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
BENCHMARK(lookup_fread)->Apply(places);
BENCHMARK(sections_ours)->Arg(200)->Arg(2'000)->Arg(20'000);
BENCHMARK(longLine_ours)->Arg(20'000)->Arg(200'000)->Arg(2'000'000);

} // namespace
