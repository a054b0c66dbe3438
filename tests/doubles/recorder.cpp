// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/doubles/recorder.h"

#include "foundation/text_field.h"
#include "tests/doubles/note.h"

#include <algorithm>
#include <deque>
#include <map>
#include <memory>

namespace doubles {

namespace {

struct Record {
    std::vector<Call> calls;
    int number = 0;
    std::map<std::string, Answer> answers;
    std::function<int(int, const std::string&)> gate;
    std::string errorText = "the toolkit's error text";
    std::map<unsigned char*, std::unique_ptr<unsigned char[]>> byteStrings;
    std::deque<int> contexts; // a context is the address of an element
};

Record& record()
{
    static Record theOne;
    return theOne;
}

int init(const Call& call)
{
    *call.pointer<void*>(0) = &record().contexts.emplace_back();
    return 0;
}

int getErrInfo(const Call& call)
{
    sigil::copyText(call.pointer<char>(1), static_cast<std::size_t>(call.integer(0)), errorText());
    return 0;
}

int createByteString(const Call& call)
{
    *call.pointer<BINSTR>(0) = BINSTR{};
    return 0;
}

int setByteString(const Call& call)
{
    fill(call.pointer<BINSTR>(2), {call.pointer<char>(0), static_cast<std::size_t>(call.integer(1))});
    return 0;
}

int deleteByteString(const Call& call) { return release(call.pointer<BINSTR>(0)); }

/** What a symbol does when no test has said otherwise; found by what follows the library's prefix. */
int defaultAnswer(const Call& call)
{
    static const std::map<std::string, int (*)(const Call&)> defaults{
        {"_API_Init", init},
        {"_API_GetErrInfo", getErrInfo},
        {"_BINSTR_Create", createByteString},
        {"_BINSTR_SetData", setByteString},
        {"_BINSTR_Delete", deleteByteString},
    };
    const auto found = defaults.find(call.symbol.substr(call.symbol.find('_')));
    return found == defaults.end() ? 0 : found->second(call);
}

} // namespace

int answered(Call call)
{
    Record& r = record();
    r.calls.push_back(call);
    ++r.number;
    if (r.gate)
        if (const int result = r.gate(r.number, call.symbol))
            return result;
    const auto found = r.answers.find(call.symbol);
    if (found == r.answers.end())
        return defaultAnswer(call);
    const Answer what = found->second; // a copy: the answer may set another in its place
    return what(call);
}

void reset() { record() = Record{}; }

const std::vector<Call>& calls() { return record().calls; }

void forgetCalls() { record().calls.clear(); }

std::vector<Call> callsOf(const std::string& symbol)
{
    std::vector<Call> found;
    for (const Call& call : calls())
        if (call.symbol == symbol)
            found.push_back(call);
    return found;
}

void answer(const std::string& symbol, Answer what) { record().answers[symbol] = std::move(what); }

void answer(const std::string& symbol, int result)
{
    answer(symbol, [result](const Call&) { return result; });
}

Answer writesText(std::string text, int result)
{
    return [text = std::move(text), result](const Call& call) {
        sigil::copyText(call.pointer<char>(1), static_cast<std::size_t>(call.integer(0)), text);
        return result;
    };
}

Answer fills(std::size_t i, std::string bytes, int result)
{
    return [i, bytes = std::move(bytes), result](const Call& call) {
        fill(call.pointer<BINSTR>(i), bytes);
        return result;
    };
}

void fill(BINSTR* target, std::string_view bytes)
{
    auto memory = std::make_unique<unsigned char[]>(bytes.size()); // exactly as long, so that an overrun is seen
    std::copy(bytes.begin(), bytes.end(), memory.get());
    *target = {memory.get(), static_cast<int>(bytes.size())};
    record().byteStrings.emplace(target->pData, std::move(memory));
}

int release(BINSTR* target)
{
    if (record().byteStrings.erase(target->pData) == 0)
        return foreignByteString;
    *target = BINSTR{};
    return 0;
}

std::string contents(const BINSTR* source)
{
    if (!source || !source->pData)
        return {};
    return {reinterpret_cast<const char*>(source->pData), static_cast<std::size_t>(source->nLength)};
}

void setErrorText(const std::string& text) { record().errorText = text; }

const std::string& errorText() { return record().errorText; }

int liveByteStrings() { return static_cast<int>(record().byteStrings.size()); }

void interpose(std::function<int(int, const std::string&)> gate) { record().gate = std::move(gate); }

} // namespace doubles
