// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  How the engine reports failures: one exception with a code of open_toolkit.h and a text for people.
 */
#pragma once

#include <sigildesk/open_toolkit.h>

#include <array>
#include <cerrno>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace toolkit {

/** The sentence for a result code. */
std::string_view codeText(int code);

/** A failure: what() is the sentence of its code and, behind a colon, the detail when there is one. */
class Error : public std::runtime_error {
public:
    /** @param reason OpenSSL's newest error when it happened; 0 for none */
    Error(int code, std::string_view detail, unsigned long reason);

    int code() const { return m_code; }
    std::string_view detail() const;
    unsigned long reason() const { return m_reason; }

private:
    int m_code;
    unsigned long m_reason;
};

/** Throws Error. When memory ran out since the call began (ErrorScope), that is the failure: std::bad_alloc. */
[[noreturn]] void fail(int code, std::string_view detail = {});
/** Throws the same failure under the sentence of another code. */
[[noreturn]] void failAs(int code, const Error& error);

/** For answers of OpenSSL in which lack of memory looks like something that is not there: throws std::bad_alloc when
 *  memory ran out since the call began. */
void requireMemory();

inline void require(bool condition, int code, std::string_view detail = {})
{
    if (!condition)
        fail(code, detail);
}

/** Throws @p error again when it says that memory ran out: that is never a reason to go on without something. */
void requireMemory(const Error& error);

/** For the length of one toolkit call: keeps the host's errno as it was, and has none of before taken for this call's. */
class ErrnoScope {
public:
    ErrnoScope()
        : m_hostErrno(std::exchange(errno, 0))
    {
    }
    ~ErrnoScope() { errno = m_hostErrno; }
    ErrnoScope(const ErrnoScope&) = delete;
    ErrnoScope& operator=(const ErrnoScope&) = delete;

private:
    int m_hostErrno;
};

/** The same for a call that reaches OpenSSL: keeps the host's error queue too, and tells the reasons of this call from older
 *  ones. */
class ErrorScope {
public:
    ErrorScope();
    ~ErrorScope();
    ErrorScope(const ErrorScope&) = delete;
    ErrorScope& operator=(const ErrorScope&) = delete;

    /** OpenSSL's reason of a failure in this call; empty when it gave none. */
    std::string_view reasonOf(const Error& error) const;

private:
    ErrnoScope m_errno; // put back after what puts OpenSSL's queue back
    unsigned long m_hostError;
};

/** The text of a failure, kept without asking for memory. */
class ErrorText {
public:
    /** Texts one after another, cut at the end of the room. */
    void set(std::initializer_list<std::string_view> parts) noexcept;
    std::string_view text() const { return {m_text.data(), m_length}; }

private:
    std::array<char, 1024> m_text{};
    std::size_t m_length = 0;
};

} // namespace toolkit
