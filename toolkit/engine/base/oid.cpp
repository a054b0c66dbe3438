// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/oid.h"

#include "toolkit/engine/base/error.h"

#include <openssl/objects.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <vector>

namespace toolkit {

std::optional<std::string> commonOid(View content)
{
    constexpr std::size_t longest = 64;
    constexpr int octetsOfANumber = 8;
    if (content.empty() || content.size() > longest || content.back() >= 0x80)
        return {};
    std::string text;
    const auto add = [&](std::uint64_t part) {
        std::array<char, 20> digits{};
        text.append(digits.data(), std::to_chars(digits.begin(), digits.end(), part).ptr);
    };
    std::uint64_t number = 0;
    int octets = 0;
    for (const unsigned char octet : content) {
        if (++octets > octetsOfANumber || (octets == 1 && octet == 0x80))
            return {};
        number = number << 7 | (octet & 0x7FU);
        if (octet >= 0x80)
            continue;
        if (text.empty()) { // the first two numbers share one
            const std::uint64_t root = std::min<std::uint64_t>(number / 40, 2);
            add(root);
            number -= 40 * root;
        }
        text += '.';
        add(number);
        number = 0;
        octets = 0;
    }
    return text;
}

std::string dottedOid(const ASN1_OBJECT* object)
{
    if (const auto common = commonOid({OBJ_get0_data(object), OBJ_length(object)}))
        return *common;
    const int length = OBJ_obj2txt(nullptr, 0, object, 1);
    if (length <= 0) {
        requireMemory();
        return {};
    }
    std::vector<char> text(static_cast<std::size_t>(length) + 1);
    OBJ_obj2txt(text.data(), length + 1, object, 1);
    return text.data();
}

} // namespace toolkit
