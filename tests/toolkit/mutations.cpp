// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/toolkit/mutations.h"

#include "toolkit/engine/base/der.h"

#include <algorithm>
#include <array>

namespace der = toolkit::der;
using toolkit::Bytes;
using toolkit::View;

namespace toolkit_test {

namespace {

/** Tags that stand in certificates, and some that do not belong there. */
constexpr std::array<unsigned char, 26> tags{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x0A, 0x0C, 0x12, 0x13, 0x14, 0x16,
    0x17, 0x18, 0x1A, 0x1C, 0x1E, 0x24, 0x30, 0x31, 0x80, 0x82, 0x86, 0xA0, 0xA1, 0xA3};
/** Octets at which something ends or begins. */
constexpr std::array<unsigned char, 12> edges{
    0x00, 0x01, 0x07, 0x1F, 0x2A, 0x7F, 0x80, 0x81, 0xC8, 0xD8, 0xED, 0xFF};

} // namespace

Bytes Mutator::changed(const Bytes& der)
{
    std::vector<Element> elements = elementsOf(der, 0);
    for (std::size_t changes = 1 + below(3); changes > 0 && !elements.empty(); --changes) {
        std::size_t index = below(count(elements));
        changeOne(elements, index);
    }
    Bytes bytes = encoded(elements);
    if (below(8) == 0) // and one that leaves the lengths wrong
        changeBytes(bytes);
    return bytes;
}

std::vector<Mutator::Element> Mutator::elementsOf(View bytes, int depth)
{
    constexpr int deepest = 16;
    std::vector<Element> elements;
    der::Reader reader(bytes);
    while (const auto next = reader.next()) {
        const bool mayWrap =
            next->tag == der::OctetString || next->tag == der::BitString || (next->tag & 0x20) != 0;
        const std::size_t front = next->tag == der::BitString && !next->content.empty() ? 1 : 0;
        std::vector<Element> members;
        if (mayWrap && depth < deepest)
            members = elementsOf(next->content.subspan(front), depth + 1);
        const bool hasMembers = !members.empty();
        elements.push_back({next->tag, hasMembers, std::move(members),
            toolkit::toBytes(hasMembers ? next->content.first(front) : next->content), false});
    }
    return reader.atEnd() ? elements : std::vector<Element>();
}

Bytes Mutator::encoded(const std::vector<Element>& elements)
{
    Bytes out;
    for (const Element& element : elements) {
        const Bytes members = encoded(element.members);
        Bytes header = der::header(static_cast<der::Tag>(element.tag), element.bytes.size() + members.size());
        if (element.longLength) {
            const bool isShort = header[1] < 0x80;
            header[1] = static_cast<unsigned char>(header[1] + (isShort ? 0 : 1));
            header.insert(header.begin() + (isShort ? 1 : 2), isShort ? 0x81 : 0x00);
        }
        for (const View part : {View(header), View(element.bytes), View(members)})
            out.insert(out.end(), part.begin(), part.end());
    }
    return out;
}

std::size_t Mutator::count(const std::vector<Element>& elements)
{
    std::size_t total = elements.size();
    for (const Element& element : elements)
        total += count(element.members);
    return total;
}

/** Changes the element with this number, counted in the order of the bytes; counts down what it passes. */
void Mutator::changeOne(std::vector<Element>& elements, std::size_t& index)
{
    for (std::size_t at = 0; at < elements.size(); ++at) {
        if (index == 0)
            return change(elements, at);
        --index;
        const std::size_t inside = count(elements[at].members);
        if (index < inside)
            return changeOne(elements[at].members, index);
        index -= inside;
    }
}

void Mutator::change(std::vector<Element>& siblings, std::size_t at)
{
    Element& element = siblings[at];
    const auto place = siblings.begin() + static_cast<std::ptrdiff_t>(at);
    switch (below(8)) {
    case 0:
        element.tag = tags[below(tags.size())];
        break;
    case 1:
        siblings.erase(place);
        break;
    case 2:
        siblings.insert(place, Element(element));
        break;
    case 3:
        std::swap(element, siblings[below(siblings.size())]);
        break;
    case 4:
        element.longLength = true;
        break;
    default:
        changeBytes(element.bytes);
    }
}

void Mutator::changeBytes(Bytes& bytes)
{
    const std::size_t at = below(bytes.size() + 1);
    const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    const unsigned char edge = edges[below(edges.size())];
    switch (at == bytes.size() ? 0 : below(5)) {
    case 0:
        bytes.insert(place, edge);
        break;
    case 1:
        bytes.erase(place);
        break;
    case 2:
        bytes.resize(at);
        break;
    case 3:
        bytes[at] = static_cast<unsigned char>(bytes[at] ^ (1U << below(8)));
        break;
    default:
        bytes[at] = edge;
    }
}

} // namespace toolkit_test
