// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Korean text between CP949 and UTF-8: ours, the C library's iconv and ICU, on the same text in the same run.
// The argument is the number of characters; each character's cost must stay the same from 1x to 100x.

#include <sigildesk/convert_utf8.h>

#include <benchmark/benchmark.h>

#include <iconv.h>
#include <string>
#include <unicode/ucnv.h>

namespace {

/** Hangul text with blanks, like names and addresses: every seventh character is a blank. */
std::string utf8Text(long characters)
{
    std::string text;
    unsigned syllable = 0;
    for (long i = 0; i < characters; ++i) {
        if (i % 7 == 6) {
            text += ' ';
            continue;
        }
        syllable = (syllable + 2971) % 11172;
        const unsigned codePoint = 0xAC00 + syllable;
        text += static_cast<char>(0xE0 | codePoint >> 12);
        text += static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
    return text;
}

std::string cp949Text(long characters)
{
    const std::string utf8 = utf8Text(characters);
    std::string text(utf8.size(), '\0');
    int length = 0;
    ConvertUTF8().utf82ascii(utf8.data(), static_cast<int>(utf8.size()), text.data(), length);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void finish(benchmark::State& state, bool succeeded)
{
    if (!succeeded)
        state.SkipWithError("the conversion failed");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ours(
    benchmark::State& state, const std::string& in, int (ConvertUTF8::*convert)(const char*, int, char*, int&))
{
    std::string out(in.size() * 2, '\0');
    int length = 0;
    int result = 0;
    ConvertUTF8 converter;
    for (auto _ : state) {
        result |= (converter.*convert)(in.data(), static_cast<int>(in.size()), out.data(), length);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    finish(state, result == 0);
}

void byIconv(benchmark::State& state, std::string in, const char* to, const char* from)
{
    std::string out(in.size() * 2, '\0');
    iconv_t converter = iconv_open(to, from); // opened once: only the conversion is measured
    bool succeeded = true;
    for (auto _ : state) {
        char* source = in.data();
        char* target = out.data();
        std::size_t left = in.size();
        std::size_t room = out.size();
        succeeded &= iconv(converter, &source, &left, &target, &room) == 0;
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    iconv_close(converter);
    finish(state, succeeded);
}

void byIcu(benchmark::State& state, const std::string& in, const char* to, const char* from)
{
    std::string out(in.size() * 2, '\0');
    UErrorCode error = U_ZERO_ERROR;
    UConverter* source = ucnv_open(from, &error); // opened once, as above
    UConverter* target = ucnv_open(to, &error);
    UChar pivot[1024];
    for (auto _ : state) {
        const char* input = in.data();
        char* output = out.data();
        UChar* pivotIn = pivot;
        UChar* pivotOut = pivot;
        ucnv_convertEx(target, source, &output, out.data() + out.size(), &input, in.data() + in.size(), pivot,
            &pivotIn, &pivotOut, pivot + std::size(pivot), true, true, &error);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    ucnv_close(source);
    ucnv_close(target);
    finish(state, U_SUCCESS(error));
}

void toCp949_ours(benchmark::State& state) { ours(state, utf8Text(state.range(0)), &ConvertUTF8::utf82ascii); }
void toCp949_iconv(benchmark::State& state) { byIconv(state, utf8Text(state.range(0)), "CP949", "UTF-8"); }
void toCp949_icu(benchmark::State& state) { byIcu(state, utf8Text(state.range(0)), "windows-949", "UTF-8"); }
void toUtf8_ours(benchmark::State& state) { ours(state, cp949Text(state.range(0)), &ConvertUTF8::ascii2utf8); }
void toUtf8_iconv(benchmark::State& state) { byIconv(state, cp949Text(state.range(0)), "UTF-8", "CP949"); }
void toUtf8_icu(benchmark::State& state) { byIcu(state, cp949Text(state.range(0)), "UTF-8", "windows-949"); }

// Texts as certificates have them: names of so many bytes, and plain ASCII. The argument is the number of bytes.

std::string ascii(long bytes)
{
    const std::string words = "C=KR,O=Government of Korea,OU=public certificates,CN=";
    std::string text;
    while (std::ssize(text) < bytes)
        text += words;
    text.resize(static_cast<std::size_t>(bytes));
    return text;
}

std::string name(long bytes)
{
    std::string text = utf8Text(bytes);
    return "cn=" + text.substr(0, static_cast<std::size_t>(bytes) / 3 * 3 - 3);
}

void nameToCp949_ours(benchmark::State& state) { ours(state, name(state.range(0)), &ConvertUTF8::utf82ascii); }
void nameToCp949_icu(benchmark::State& state) { byIcu(state, name(state.range(0)), "windows-949", "UTF-8"); }
void asciiToCp949_ours(benchmark::State& state) { ours(state, ascii(state.range(0)), &ConvertUTF8::utf82ascii); }
void asciiToCp949_icu(benchmark::State& state) { byIcu(state, ascii(state.range(0)), "windows-949", "UTF-8"); }
void asciiToUtf8_ours(benchmark::State& state) { ours(state, ascii(state.range(0)), &ConvertUTF8::ascii2utf8); }
void asciiToUtf8_icu(benchmark::State& state) { byIcu(state, ascii(state.range(0)), "UTF-8", "windows-949"); }

void sizes(benchmark::internal::Benchmark* b) { b->Arg(1'000)->Arg(10'000)->Arg(100'000); }

void lengths(benchmark::internal::Benchmark* b) { b->Arg(16)->Arg(64)->Arg(256); }

BENCHMARK(toCp949_ours)->Apply(sizes);
BENCHMARK(toCp949_iconv)->Apply(sizes);
BENCHMARK(toCp949_icu)->Apply(sizes);
BENCHMARK(toUtf8_ours)->Apply(sizes);
BENCHMARK(toUtf8_iconv)->Apply(sizes);
BENCHMARK(toUtf8_icu)->Apply(sizes);
BENCHMARK(nameToCp949_ours)->Apply(lengths);
BENCHMARK(nameToCp949_icu)->Apply(lengths);
BENCHMARK(asciiToCp949_ours)->Apply(lengths)->Arg(1'000'000);
BENCHMARK(asciiToCp949_icu)->Apply(lengths)->Arg(1'000'000);
BENCHMARK(asciiToUtf8_ours)->Apply(lengths)->Arg(1'000'000);
BENCHMARK(asciiToUtf8_icu)->Apply(lengths)->Arg(1'000'000);

} // namespace
