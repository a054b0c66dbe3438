// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The text conversions on any bytes, each in a buffer of exactly the documented size.

#include "fuzz/target.h"

#include <sigildesk/convert_utf8.h>

#include <memory>
#include <string>

namespace {

using Byte = unsigned char;
using Owner = std::unique_ptr<Byte[]>;
using Conversion = int (ConvertUTF8::*)(const Byte*, int, Byte**, int&);

/** Runs an allocating conversion. @return its output, empty when it fails */
std::string run(Conversion conversion, const std::string& in, int capacity)
{
    Byte* out = nullptr;
    int length = capacity;
    ConvertUTF8 converter;
    const int result = (converter.*conversion)(
        reinterpret_cast<const Byte*>(in.data()), static_cast<int>(in.size()), &out, length);
    const Owner owner(out);
    require((result == 0) == (out != nullptr), "there is an output exactly on success");
    return out ? std::string(reinterpret_cast<char*>(out), static_cast<std::size_t>(length)) : std::string();
}

/** Runs a conversion into a buffer of @p room bytes. @return its output; nothing for a failure */
std::string run(int (ConvertUTF8::*conversion)(const char*, int, char*, int&), const std::string& in,
    std::size_t room, int& result)
{
    const std::unique_ptr<char[]> out(new char[room]);
    int length = 0;
    ConvertUTF8 converter;
    result = (converter.*conversion)(in.data(), static_cast<int>(in.size()), out.get(), length);
    require(length >= 0 && static_cast<std::size_t>(length) <= room, "the output lies within its room");
    return result == 0 ? std::string(out.get(), static_cast<std::size_t>(length)) : std::string();
}

} // namespace

FUZZ_TARGET(foundation_conversions, input)
{
    const std::string in = fuzz::text(input);
    const int capacity = static_cast<int>(in.size());

    const std::string unicode = run(&ConvertUTF8::utf82unicode, in, 0);
    const std::string ascii = run(&ConvertUTF8::unicode2ascii, unicode, capacity);
    run(&ConvertUTF8::unicode2utf8, in, 0);
    run(&ConvertUTF8::unicode2ascii, in, capacity);
    run(&ConvertUTF8::ascii2unicode, in, 0);

    int result = 0;
    const std::string direct = run(&ConvertUTF8::utf82ascii, in, in.size(), result);
    require(result == 0 && direct == ascii, "the short way to CP949 gives what the two steps give");

    const std::string utf8 = run(&ConvertUTF8::ascii2utf8, in, in.size() * 3 / 2, result);
    const std::string steps = run(&ConvertUTF8::unicode2utf8, run(&ConvertUTF8::ascii2unicode, in, 0), 0);
    require(result != 0 || utf8 == steps, "the short way to UTF-8 gives what the two steps give");

    // What CP949 text holds comes back whole.
    const std::string back = run(&ConvertUTF8::ascii2utf8, direct, direct.size() * 3 / 2, result);
    require(result == 0, "CP949 text that was made here can be converted");
    require(
        run(&ConvertUTF8::utf82ascii, back, back.size(), result) == direct, "there and back gives the same text");
}
