// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as DER elements: every element lies within the bytes, and what is read can be written again.

#include "fuzz/toolkit/input.h"

namespace {

using namespace toolkit;

bool isInside(View part, View whole)
{
    return part.empty() ||
        (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

void readNumbers(View content)
{
    der::smallInteger(content);
    const auto octets = der::bitOctets(content);
    require(!octets || isInside(*octets, content), "the octets of a bit string are its own");
    const auto common = commonOid(content);
    require(!common || der::isOid(content), "what is read of an OID is one");
    require(!common || *common == der::oidText(content), "both readers of OIDs agree");
}

void read(View bytes, int depth)
{
    der::Reader reader(bytes);
    while (const auto element = reader.next()) {
        require(
            isInside(element->whole, bytes) && isInside(element->content, element->whole), "elements lie within");
        readNumbers(element->content);
        if (depth > 0)
            read(element->content, depth - 1);
    }
}

} // namespace

FUZZ_TARGET(parsers_der, input)
{
    constexpr int deepest = 8;
    const Bytes bytes = fuzz::der(input);
    read(bytes, deepest);
    if (const auto element = der::shortest(bytes)) {
        const Bytes again = der::element(static_cast<der::Tag>(element->tag), {element->content});
        require(again == toBytes(element->whole), "the shortest form is the one that is written");
        require(der::first(bytes).has_value(), "the shortest form is a form");
    }
}
