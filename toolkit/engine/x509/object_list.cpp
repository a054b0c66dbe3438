// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/object_list.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/pem.h"

namespace toolkit {
namespace {

bool isSequence(View object)
{
    der::Reader reader(object);
    return reader.take(der::Sequence) && reader.atEnd();
}

/** A certificate begins with SEQUENCE { SEQUENCE { [0] or INTEGER, and so does a current revocation list; a list of them one
 *  level deeper. */
bool isSingle(View bytes)
{
    const auto outer = der::Reader(bytes).take(der::Sequence);
    const auto inner = outer ? der::Reader(*outer).take(der::Sequence) : std::nullopt;
    const auto field = inner ? der::first(*inner) : std::nullopt;
    return field && field->tag != der::Sequence;
}

} // namespace

ObjectList::ObjectList(View list)
{
    if (list.empty())
        return;
    der::Reader outer(list);
    const auto content = outer.take(der::Sequence);
    require(content && outer.atEnd(), SIGIL_TK_ENCODING, "object list");
    der::Reader objects(*content);
    while (const auto object = objects.next())
        add(object->tag == der::OctetString ? object->content : object->whole);
    require(objects.atEnd(), SIGIL_TK_ENCODING, "object list");
}

const Secret& ObjectList::at(int index) const
{
    require(index >= 0 && static_cast<std::size_t>(index) < size(), SIGIL_TK_INDEX, std::to_string(index));
    return m_objects[static_cast<std::size_t>(index)];
}

Secret ObjectList::encode() const
{
    Secret content;
    for (const Secret& object : m_objects) {
        const Secret element = isSequence(object) ? object : der::element<Secret>(der::OctetString, {object});
        content.insert(content.end(), element.begin(), element.end());
    }
    return der::element<Secret>(der::Sequence, {content});
}

ObjectList listOrSingle(View bytes)
{
    if (!isSingle(bytes))
        return ObjectList(bytes);
    ObjectList list;
    list.add(bytes);
    return list;
}

std::vector<Certificate> certificatesOf(const Library& library, View bytes)
{
    const Bytes der = derOf(bytes, SIGIL_TK_CERT_MALFORMED);
    std::vector<Certificate> certificates;
    for (const Secret& object : listOrSingle(der))
        certificates.emplace_back(library, object);
    return certificates;
}

} // namespace toolkit
