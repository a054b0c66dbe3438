// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Control of the recording toolkits: what was called, and what the next calls answer.
 *
 *  The doubles are real shared objects with the real file names and symbols, opened by the library through dlopen. They
 *  and the tests link one small shared library that holds the record, so a test sees the calls directly. Not for use from
 *  two threads.
 */
#pragma once

#include <sigildesk/binstr.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace doubles {

/** One argument as the toolkit received it. */
struct Argument {
    enum class Kind { Integer, Long, Flag, Pointer };
    Kind kind;
    std::intptr_t value; ///< the integer, or the pointer itself: identity is what the tests compare

    template <class T>
    T* pointer() const
    {
        return reinterpret_cast<T*>(value);
    }
};

/** One call of a toolkit symbol. */
struct Call {
    std::string symbol;              ///< "HVTK_CERT_GetUID"
    bool takesContext;               ///< false for the byte-string functions, Init and Finish
    void* context;                   ///< first argument, when it takes one
    std::vector<Argument> arguments; ///< those after the context

    template <class T>
    T* pointer(std::size_t i) const
    {
        return arguments.at(i).pointer<T>();
    }
    int integer(std::size_t i) const { return static_cast<int>(arguments.at(i).value); }
};

/** What a symbol does when it is called; it may write through the pointers of the call. Its result is returned. */
using Answer = std::function<int(const Call&)>;

/** Forgets all calls and answers and releases all byte strings: every symbol then answers 0 and writes nothing, except
 *  that the byte-string functions keep real memory, `..._API_Init` hands out a context and `..._API_GetErrInfo` writes
 *  errorText(). */
void reset();

/** The calls since the last reset, in order. Calls of the frame (`API_GetErrInfo`, `BINSTR_...`) are recorded too. */
const std::vector<Call>& calls();

/** Forgets the calls alone. */
void forgetCalls();

/** The calls of one symbol. */
std::vector<Call> callsOf(const std::string& symbol);

/** Sets what @p symbol does from now on. */
void answer(const std::string& symbol, Answer what);
void answer(const std::string& symbol, int result);

/** Answer of a getter, called with (capacity, buffer): writes @p text as the capacity allows and returns @p result. */
Answer writesText(std::string text, int result = 0);

/** Answer that fills the byte-string record which is argument @p i (from 0, after the context) and returns @p result. */
Answer fills(std::size_t i, std::string bytes, int result = 0);

/** Fills a record with a copy of @p bytes in toolkit memory, as an output of a toolkit; for use inside an Answer. */
void fill(BINSTR* record, std::string_view bytes);

/** Gives the memory of a record back and empties it, as a toolkit does with a list that it makes anew.
 *  @return 0; foreignByteString when the memory was not handed out */
int release(BINSTR* record);

/** The contents of a record, null or empty ones as an empty text. */
std::string contents(const BINSTR* record);

/** Text that `..._API_GetErrInfo` writes. */
void setErrorText(const std::string& text);
const std::string& errorText();

/** Byte strings handed out and not yet released, over all contexts. A release of memory that was not handed out, or of
 *  the same memory again, is answered with foreignByteString. */
int liveByteStrings();
constexpr int foreignByteString = 4999;

/** Called before every symbol with the running number of the call since reset (from 1); a non-zero result is answered
 *  in place of the call. For tests that fail the k-th call. */
void interpose(std::function<int(int, const std::string& symbol)> gate);

} // namespace doubles
