// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the functions of both toolkits share: the frame of a call, and the step from C arguments to the engine's types and back.
 */
#pragma once

#include "toolkit/engine/base/context.h"
#include "toolkit/engine/base/error.h"

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace toolkit {

/** Input byte string. Throws SIGIL_TK_ARGUMENT when it is null or empty. */
View in(const BINSTR* bytes);
/** Input byte string that may be null or empty. */
View inOptional(const BINSTR* bytes);
/** Input text. Throws SIGIL_TK_ARGUMENT when it is null. */
std::string_view in(const char* text);
/** Input text that may be null. */
std::string_view inOptional(const char* text);
/** A path, below the folder of MEDIA_Load when it is relative. Throws SIGIL_TK_ARGUMENT for null or empty. */
std::string inPath(const Context& context, const char* path);

/** Fills a record with a copy in toolkit memory that ends with a zero byte of its own. What the record held before is
 *  not released. Throws SIGIL_TK_ARGUMENT for a null record. */
void put(View bytes, BINSTR* out);
/** Several records of one call: either all are filled or none. */
struct Output {
    View bytes;
    BINSTR* record;
};
void put(std::initializer_list<Output> outputs);
/** The same, and releases what the toolkit's memory in the record held before. */
void replace(View bytes, BINSTR* inOut);
/** Wipes and releases toolkit memory. */
void release(BINSTR* bytes);

/** A byte string that waits to be handed out, so that a call which fails after all leaves none behind. */
class HeldBytes {
public:
    HeldBytes() = default;
    ~HeldBytes() { release(&m_record); }
    HeldBytes(const HeldBytes&) = delete;
    HeldBytes& operator=(const HeldBytes&) = delete;

    BINSTR* get() { return &m_record; }
    BINSTR take() { return std::exchange(m_record, {}); }

private:
    BINSTR m_record{};
};

/** Writes a text that may be cut at a character. Throws SIGIL_TK_ARGUMENT for a null buffer or a capacity below 1. */
void putText(std::string_view text, int capacity, char* out);
/** Writes a text on which callers rely as a whole. Throws SIGIL_TK_BUFFER_TOO_SMALL. */
void putWholeText(std::string_view text, int capacity, char* out);
/** Room for a time in text that callers promise without saying so. */
constexpr int timeCapacity = 25;
/** Writes through an out-pointer. Throws SIGIL_TK_ARGUMENT when it is null. */
template <class T>
void putValue(T value, T* out)
{
    require(out != nullptr, SIGIL_TK_ARGUMENT);
    *out = value;
}

/** Makes a context in *@p context. */
int init(void** context);
/** Ends a context and clears the pointer; harmless on null. */
int finish(void** context);
/** Text of the last failure, cut to @p capacity. */
int errorText(void* context, int capacity, char* out);

/** The code of the exception in flight. */
int codeOfException() noexcept;
/** The same, and keeps its text in @p context. */
int keepException(const ErrorScope& scope, Context& context) noexcept;

/** A getter of the loaded certificate whose text may be cut. */
int describe(void* context, int capacity, char* out, std::string (Certificate::*getter)() const);
/** A getter of the loaded certificate whose text callers compare: an error rather than a part of it. */
int identify(void* context, int capacity, char* out, std::string (Certificate::*getter)() const);

/** A call's stay in a thread. The next call may come from another one, and the library may be closed, with its contexts, before
 *  this one ends. */
class Stay {
public:
    explicit Stay(const Library& library)
        : m_library(library)
    {
    }
    ~Stay() { m_library.leaveThread(); }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

private:
    const Library& m_library;
};

/** A call without a context. @tparam Scope  what of the host's it keeps as it was */
template <class Scope = ErrorScope, class Body>
int call(Body body) noexcept
{
    const Scope scope;
    try {
        body();
        return SIGIL_TK_OK;
    } catch (...) {
        return codeOfException();
    }
}

/** A call on a context: runs @p body with it and the arguments; a failure becomes its code, and its text is kept. */
template <class Body, class... Arguments>
int call(void* context, Body body, Arguments... arguments) noexcept
{
    if (!context)
        return SIGIL_TK_CONTEXT;
    const ErrorScope scope;
    auto& state = *static_cast<Context*>(context);
    const Stay stay(state.library());
    try {
        body(state, arguments...);
        return SIGIL_TK_OK;
    } catch (...) {
        return keepException(scope, state);
    }
}

} // namespace toolkit

/** A function that hosts look up by name. */
#define TOOLKIT_FUNCTION extern "C" SIGIL_EXPORT int

/** The function @p other of this file under a second name, for the other toolkit. Compiles only if toolkit_abi/ declares
 *  both with the same arguments. */
// NOLINTNEXTLINE(bugprone-macro-parentheses): a declared name takes none
#define SAME_FUNCTION(name, other) extern "C" SIGIL_EXPORT decltype(other) name __attribute__((alias(#other)))
