// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "sigil/call.h"

#include "jobs/failure.h"
#include "jobs/store_list.h"

#include <sigildesk/open_toolkit.h>

#include <cstdlib>
#include <iterator>
#include <new>

namespace host {

namespace {

/** One answer for what both toolkits and the list say by numbers of their own. */
struct Synonym {
    int code, said;
};
constexpr Synonym synonyms[] = {{SIGIL_TK_KEY_WRONG_PASSWORD, SIGIL_WRONG_PASSWORD},
    {SIGIL_TK_PFX_WRONG_PASSWORD, SIGIL_WRONG_PASSWORD}, {SIGIL_TK_KEY_MISMATCH, SIGIL_PAIR_MISMATCH},
    {SIGIL_TK_VID_MISMATCH, SIGIL_IDENTITY_MISMATCH}};

/** The numbers of failures that the jobs have names for. */
struct NamedCode {
    const char* name;
    int code;
};
constexpr NamedCode namedCodes[] = {{"file_exists", SIGIL_FILE_EXISTS}, {"file_not_read", SIGIL_FILE_NOT_READ},
    {"file_too_large", SIGIL_FILE_NOT_READ}, {"no_dialogs", SIGIL_NO_DIALOGS}, {"no_display", SIGIL_NO_DISPLAY},
    {"no_key", SIGIL_NO_KEY}, {"no_place", SIGIL_NO_PLACE}, {"not_found", SIGIL_FILE_NOT_READ},
    {"pair_not_changed", SIGIL_FILE_NOT_WRITTEN}, {"path_too_long", SIGIL_PATH_TOO_LONG}};

int codeOf(const Failure& failure)
{
    for (const Synonym& synonym : synonyms)
        if (synonym.code == failure.code())
            return synonym.said;
    for (const NamedCode& named : namedCodes)
        if (failure.name() == named.name)
            return named.code;
    return failure.code() == failure.exit() ? SIGIL_FAILED : failure.code();
}

constexpr std::size_t longestStruct = 65536; ///< a longer one has not been given its size

} // namespace

int codeOfException(SigilSession* session) noexcept
{
    try {
        try {
            throw;
        } catch (const Failure& failure) {
            if (session)
                session->error = failure.message(session->setting.language());
            return codeOf(failure);
        } catch (const std::bad_alloc&) {
            return SIGIL_NO_MEMORY;
        } catch (const std::exception& exception) {
            if (session)
                session->error = exception.what();
            return SIGIL_FAILED;
        }
    } catch (...) {
        return SIGIL_NO_MEMORY; // while the failure was put into words
    }
}

void refuse(int code, const std::string& detail) { throw Failure::ofCode(code, detail); }

std::string_view bytesOf(const void* data, std::size_t size, const char* argument)
{
    constexpr std::size_t most = 0x7FFFFFFF; // what the façade's lengths can tell
    need(data != nullptr && size > 0 && size <= most, argument);
    return {static_cast<const char*>(data), size};
}

std::string mediumOf(const char* medium)
{
    need(!medium || *medium, "the medium");
    if (medium)
        mustBeMedium(medium);
    return medium ? medium : "";
}

void give(std::string_view bytes, SigilBytes* to)
{
    auto* data = static_cast<unsigned char*>(std::malloc(bytes.size() + 1)); // NOLINT(*-malloc): it crosses to C
    if (!data)
        throw std::bad_alloc();
    std::memcpy(data, bytes.data(), bytes.size());
    data[bytes.size()] = 0;
    *to = {data, bytes.size()};
}

void checkSize(std::size_t given, std::size_t own)
{
    need(given >= own && given <= longestStruct, "the size of the struct");
}

void checkUnknown(const void* options, std::size_t own, std::size_t given)
{
    const auto* bytes = static_cast<const unsigned char*>(options);
    if (std::any_of(bytes + own, bytes + given, [](unsigned char byte) { return byte != 0; }))
        refuse(SIGIL_NEWER_OPTIONS, {});
}

Entry& entryOf(SigilSession& session, int entry)
{
    need(entry >= 0 && static_cast<std::size_t>(entry) < session.entries.size(), "the entry");
    return session.entries[static_cast<std::size_t>(entry)];
}

} // namespace host
