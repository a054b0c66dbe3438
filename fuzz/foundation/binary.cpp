// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Byte strings through any sequence of their operations, beside what they must hold.

#include "fuzz/script.h"

#include <sigildesk/binary.h>

#include <array>
#include <string>

namespace {

/** A byte string, and what it must hold. */
struct Pair {
    CBinary bytes;
    std::string model;

    void set(const std::string& content)
    {
        model = content;
        bytes.set(model.data(), static_cast<int>(model.size()));
    }
    void check()
    {
        require(bytes.m_nLength == static_cast<int>(model.size()), "the length is that of the model");
        require(
            model.empty() || std::string(bytes.m_pData, model.size()) == model, "the bytes are those of the model");
    }
};

std::string sub(const std::string& text, int start, int length)
{
    const int size = static_cast<int>(text.size());
    const bool inside = start >= 0 && length >= 0 && start <= size && length <= size - start;
    return inside ? text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length)) : std::string();
}

void step(std::array<Pair, 3>& pairs, fuzz::Script& script)
{
    Pair& one = pairs[script.number(pairs.size())];
    Pair& other = pairs[script.number(pairs.size())];
    switch (script.number(8)) {
    case 0:
        return one.set(fuzz::text(script.word()));
    case 1:
        one.bytes = other.bytes;
        one.model = other.model;
        break;
    case 2:
        if (one.model.size() > 4096)
            return one.set({});
        one.bytes += other.bytes;
        one.model += std::string(other.model); // which may be the same
        break;
    case 3: {
        const int start = static_cast<int>(script.number()) - 2;
        const int length = static_cast<int>(script.number()) - 2;
        CBinary part = other.bytes.getSub(start, length);
        one.bytes = part;
        one.model = sub(other.model, start, length);
        break;
    }
    case 4: {
        const char* const text = one.bytes.toString();
        require(
            !text == one.model.empty() && (!text || std::string(text) == one.model.c_str()), "a text is the bytes");
        break;
    }
    case 5: {
        const char* const hex = one.bytes.toHexString();
        CBinary back;
        require(!hex || (back.fromHexString(std::string(hex).data()) == 0 && back == one.bytes),
            "digits come back as bytes");
        break;
    }
    case 6: {
        std::string part = other.model;
        const auto found = one.model.find(part);
        const int place = part.empty() || found == part.npos ? -1 : static_cast<int>(found);
        require(
            one.bytes.find(reinterpret_cast<unsigned char*>(part.data()), static_cast<long>(part.size())) == place,
            "what is found is where it first stands");
        break;
    }
    default:
        one.bytes.zeroEmpty();
        one.model.clear();
    }
}

} // namespace

FUZZ_TARGET(foundation_binary, input)
{
    fuzz::Script script(input);
    std::array<Pair, 3> pairs;
    while (!script.atEnd()) {
        step(pairs, script);
        for (Pair& pair : pairs)
            pair.check();
    }
}
