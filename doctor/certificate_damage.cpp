// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "doctor/certificate_damage.h"

#include <algorithm>
#include <array>
#include <vector>

namespace sigil {

namespace {

constexpr unsigned char integerTag = 0x02;
constexpr unsigned char bitStringTag = 0x03;
constexpr unsigned char octetStringTag = 0x04;
constexpr unsigned char oidTag = 0x06;
constexpr unsigned char utcTimeTag = 0x17;
constexpr unsigned char generalizedTimeTag = 0x18;
constexpr unsigned char sequenceTag = 0x30;
constexpr unsigned char constructedBit = 0x20;
constexpr int deepest = 64;

struct Element {
    unsigned char tag;
    std::size_t head;    ///< bytes of tag and length
    std::size_t content; ///< bytes that follow, as it claims
};

std::size_t byteAt(std::string_view bytes, std::size_t i) { return static_cast<unsigned char>(bytes[i]); }

/** The element that @p bytes begin with; none when its tag and length are not whole. */
std::optional<Element> elementOf(std::string_view bytes)
{
    constexpr std::size_t longForm = 0x80;
    constexpr std::size_t mostLengthBytes = 4;
    if (bytes.size() < 2)
        return std::nullopt;
    const auto tag = static_cast<unsigned char>(bytes[0]);
    const std::size_t first = byteAt(bytes, 1);
    if (first < longForm)
        return Element{tag, 2, first};
    const std::size_t more = first - longForm;
    if (more == 0 || more > mostLengthBytes || bytes.size() < 2 + more)
        return std::nullopt;
    std::size_t length = 0;
    for (std::size_t i = 2; i < 2 + more; ++i)
        length = length << 8 | byteAt(bytes, i);
    return Element{tag, 2 + more, length};
}

/** The first element inside that does not fit. @param offset  of @p bytes in the file */
std::optional<DamagedPlace> brokenInside(std::string_view bytes, std::size_t offset, int depth)
{
    while (!bytes.empty()) {
        const auto element = elementOf(bytes);
        if (!element)
            return DamagedPlace{offset, 0, bytes.size(), false};
        const std::size_t left = bytes.size() - element->head;
        if (element->content > left)
            return DamagedPlace{offset, element->content, left, false};
        if ((element->tag & constructedBit) != 0 && depth < deepest) {
            const auto inner =
                brokenInside(bytes.substr(element->head, element->content), offset + element->head, depth + 1);
            if (inner)
                return inner;
        }
        bytes.remove_prefix(element->head + element->content);
        offset += element->head + element->content;
    }
    return std::nullopt;
}

/** Tags of the elements that @p bytes consist of, as far as they are whole. */
std::vector<unsigned char> tagsOf(std::string_view bytes)
{
    std::vector<unsigned char> tags;
    while (const auto element = elementOf(bytes)) {
        tags.push_back(element->tag);
        if (element->content > bytes.size() - element->head)
            break;
        bytes.remove_prefix(element->head + element->content);
    }
    return tags;
}

std::string_view inside(std::string_view bytes)
{
    const auto element = elementOf(bytes);
    return element && element->tag == sequenceTag ? bytes.substr(element->head, element->content)
                                                  : std::string_view();
}

using Tags = std::vector<unsigned char>;

bool begins(const Tags& tags, const Tags& wanted)
{
    return tags.size() >= wanted.size() && std::equal(wanted.begin(), wanted.end(), tags.begin());
}

/** What is signed, told by what stands in it. */
Content signedContent(std::string_view toBeSigned)
{
    const Tags tags = tagsOf(toBeSigned);
    if (begins(tags, {integerTag, sequenceTag, sequenceTag, 0xA0}))
        return Content::Request;
    const bool versioned = !tags.empty() && tags[0] == integerTag;
    const std::size_t time = versioned ? 3 : 2;
    if (tags.size() > time && (tags[time] == utcTimeTag || tags[time] == generalizedTimeTag))
        return Content::RevocationList;
    return Content::Certificate;
}

Content derContent(std::string_view bytes)
{
    const std::string_view content = inside(bytes);
    const Tags tags = tagsOf(content);
    const Tags inFirst = tagsOf(inside(content));
    if (begins(tags, {sequenceTag, octetStringTag}) && begins(inFirst, {oidTag}))
        return Content::EncryptedKey;
    if (begins(tags, {integerTag, sequenceTag, octetStringTag}))
        return Content::PlainKey;
    if (begins(tags, {integerTag, integerTag, integerTag}))
        return Content::PlainKey;
    if (begins(tags, {integerTag, sequenceTag}))
        return Content::Pkcs12;
    if (begins(tags, {oidTag}))
        return Content::Message;
    if (begins(tags, {sequenceTag, sequenceTag}))
        return signedContent(inside(content));
    return Content::Other;
}

Content pemContent(std::string_view bytes)
{
    return bytes.starts_with("-----BEGIN CERTIFICATE-----") ? Content::Certificate : Content::Pem;
}

bool isText(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code >= 0x20 || c == '\n' || c == '\r' || c == '\t';
    });
}

} // namespace

Content contentOf(std::string_view bytes)
{
    if (bytes.empty())
        return Content::Empty;
    if (bytes.find_first_not_of('\0') == bytes.npos)
        return Content::Zeros;
    if (bytes.starts_with("-----BEGIN "))
        return pemContent(bytes);
    if (byteAt(bytes, 0) == sequenceTag && !isText(bytes))
        return derContent(bytes);
    return isText(bytes) ? Content::Text : Content::Other;
}

std::optional<DamagedPlace> damagedPlace(std::string_view bytes)
{
    const auto outer = elementOf(bytes);
    if (!outer || outer->tag != sequenceTag)
        return DamagedPlace{0, 0, bytes.size(), false};
    if (const auto broken = brokenInside(bytes.substr(0, outer->head + outer->content), 0, 0))
        return broken;
    const std::size_t end = outer->head + outer->content;
    if (end < bytes.size())
        return DamagedPlace{end, 0, bytes.size() - end, true};
    return std::nullopt;
}

} // namespace sigil
