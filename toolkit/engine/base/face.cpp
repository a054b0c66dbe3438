// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/face.h"

#include "toolkit/engine/x509/text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include <malloc.h>

namespace toolkit {
namespace {

constexpr std::size_t maximumLength = 0x7FFFFFFF;

/** Wipes what a failing call leaves behind: it may be a key. */
struct FreeMemory {
    void operator()(unsigned char* memory) const
    {
        sigil::wipe(memory, malloc_usable_size(memory));
        std::free(memory);
    }
};
using MemoryHandle = std::unique_ptr<unsigned char, FreeMemory>;

MemoryHandle copyOf(View bytes)
{
    require(bytes.size() < maximumLength, SIGIL_TK_NO_MEMORY);
    MemoryHandle copy(static_cast<unsigned char*>(std::calloc(bytes.size() + 1, 1)));
    if (!copy)
        throw std::bad_alloc();
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return copy;
}

/** The contexts that were not finished. A host may close the library without finishing its context (the façade does); what
 *  is left is released with the library. */
class LiveContexts {
public:
    void* add(std::unique_ptr<Context> context)
    {
        const std::lock_guard lock(m_mutex);
        return m_contexts.emplace_back(std::move(context)).get();
    }
    void remove(const void* context)
    {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_contexts, [&](const auto& live) { return live.get() == context; });
    }

private:
    std::mutex m_mutex;
    std::vector<std::unique_ptr<Context>> m_contexts;
};

/** Made by the first context, after OpenSSL registered its own clean-up: so it is released before that. */
LiveContexts& liveContexts()
{
    static LiveContexts contexts;
    return contexts;
}

void writeText(std::string_view text, char* out)
{
    std::memcpy(out, text.data(), text.size());
    out[text.size()] = '\0';
}

} // namespace

View inOptional(const BINSTR* bytes)
{
    if (!bytes || !bytes->pData || bytes->nLength <= 0)
        return {};
    return {bytes->pData, static_cast<std::size_t>(bytes->nLength)};
}

View in(const BINSTR* bytes)
{
    const View content = inOptional(bytes);
    require(!content.empty(), SIGIL_TK_ARGUMENT, "byte string");
    return content;
}

std::string_view inOptional(const char* text) { return text ? std::string_view(text) : std::string_view(); }

std::string_view in(const char* text)
{
    require(text != nullptr, SIGIL_TK_ARGUMENT, "text");
    return text;
}

std::string inPath(const Context& context, const char* path)
{
    const std::string_view given = in(path);
    require(!given.empty(), SIGIL_TK_ARGUMENT, "path");
    if (given.front() == '/' || context.mediaFolder.empty())
        return std::string(given);
    return context.mediaFolder + "/" + std::string(given);
}

void put(View bytes, BINSTR* out) { put({{bytes, out}}); }

void put(std::initializer_list<Output> outputs)
{
    std::vector<MemoryHandle> copies;
    for (const Output& output : outputs) {
        require(output.record != nullptr, SIGIL_TK_ARGUMENT, "byte string");
        // Who has no bytes has nothing to release: hosts ask for that only with a length.
        copies.push_back(output.bytes.empty() ? MemoryHandle() : copyOf(output.bytes));
    }
    auto copy = copies.begin();
    for (const Output& output : outputs)
        *output.record = {(copy++)->release(), static_cast<int>(output.bytes.size())};
}

void replace(View bytes, BINSTR* inOut)
{
    require(inOut != nullptr, SIGIL_TK_ARGUMENT, "byte string");
    HeldBytes fresh;
    put(bytes, fresh.get());
    release(inOut);
    *inOut = fresh.take();
}

void release(BINSTR* bytes)
{
    if (bytes->nLength > 0)
        sigil::wipe(bytes->pData, static_cast<std::size_t>(bytes->nLength));
    std::free(bytes->pData);
    *bytes = {};
}

void putText(std::string_view text, int capacity, char* out)
{
    require(out != nullptr && capacity >= 1, SIGIL_TK_ARGUMENT, "text buffer");
    writeText(cutText(text, static_cast<std::size_t>(capacity) - 1), out);
}

void putWholeText(std::string_view text, int capacity, char* out)
{
    require(out != nullptr && capacity >= 1, SIGIL_TK_ARGUMENT, "text buffer");
    require(text.size() < static_cast<std::size_t>(capacity), SIGIL_TK_BUFFER_TOO_SMALL);
    writeText(text, out);
}

int init(void** context)
{
    return call([&] {
        require(context != nullptr, SIGIL_TK_ARGUMENT);
        *context = nullptr;
        auto fresh = std::make_unique<Context>();
        *context = liveContexts().add(std::move(fresh));
    });
}

int finish(void** context)
{
    if (context && *context)
        liveContexts().remove(std::exchange(*context, nullptr));
    return SIGIL_TK_OK;
}

int errorText(void* context, int capacity, char* out)
{
    if (!context)
        return SIGIL_TK_CONTEXT;
    if (!out || capacity < 1)
        return SIGIL_TK_ARGUMENT;
    putText(static_cast<Context*>(context)->lastError.text(), capacity, out);
    return SIGIL_TK_OK;
}

int describe(void* context, int capacity, char* out, std::string (Certificate::*getter)() const)
{
    return call(context, [&](Context& state) { putText((state.certificate().*getter)(), capacity, out); });
}

int identify(void* context, int capacity, char* out, std::string (Certificate::*getter)() const)
{
    return call(context, [&](Context& state) { putWholeText((state.certificate().*getter)(), capacity, out); });
}

int codeOfException() noexcept
{
    try {
        throw;
    } catch (const Error& error) {
        return error.code();
    } catch (const std::bad_alloc&) {
        return SIGIL_TK_NO_MEMORY;
    } catch (...) {
        return SIGIL_TK_INTERNAL;
    }
}

int keepException(const ErrorScope& scope, Context& context) noexcept
{
    const int code = codeOfException();
    if (code == SIGIL_TK_NO_MEMORY)
        context.library().beLast();
    try {
        throw;
    } catch (const Error& error) {
        const std::string_view reason = scope.reasonOf(error);
        if (reason.empty())
            context.lastError.set({error.what()});
        else
            context.lastError.set({error.what(), " (", reason, ")"});
    } catch (const std::bad_alloc&) { // what() names a type
        context.lastError.set({codeText(code)});
    } catch (const std::exception& error) {
        context.lastError.set({codeText(code), ": ", error.what()});
    } catch (...) {
        context.lastError.set({codeText(code)});
    }
    return code;
}

} // namespace toolkit
