/** @file
 *  How the engine reports failures: one exception with a code of open_toolkit.h and a text for people.
 */
#pragma once

#include <sigildesk/open_toolkit.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace toolkit {

class Error : public std::runtime_error {
public:
    Error(int code, const std::string& text)
        : std::runtime_error(text)
        , m_code(code)
    {
    }
    int code() const { return m_code; }

private:
    int m_code;
};

/** The sentence for a result code. */
std::string_view codeText(int code);

/** Throws Error with the sentence of @p code and, when given, @p detail and OpenSSL's newest reason of this call. */
[[noreturn]] void fail(int code, std::string_view detail = {});

inline void require(bool condition, int code, std::string_view detail = {})
{
    if (!condition)
        fail(code, detail);
}

/** Throws @p error again when it says that memory ran out: that is never a reason to go on without something. */
void requireMemory(const Error& error);

/** For the length of one toolkit call: keeps the host's OpenSSL error queue as it was, and lets fail() tell the reasons
 *  of this call from older ones. */
class ErrorScope {
public:
    ErrorScope();
    ~ErrorScope();
    ErrorScope(const ErrorScope&) = delete;
    ErrorScope& operator=(const ErrorScope&) = delete;
};

} // namespace toolkit
