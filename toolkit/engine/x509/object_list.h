// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Lists of objects in one byte string: certificates beside certificates, keys beside keys.
 *
 *  A list is a DER SEQUENCE. An object that is itself a DER SEQUENCE stands in it as it is, so a list of certificates is
 *  the CaPubs form (SEQUENCE OF Certificate); any other object is wrapped in an OCTET STRING.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/x509/certificate.h"

#include <vector>

namespace toolkit {

class ObjectList {
public:
    ObjectList() = default;
    /** An empty byte string is an empty list. Throws SIGIL_TK_ENCODING. */
    explicit ObjectList(View list);

    std::size_t size() const { return m_objects.size(); }
    /** Throws SIGIL_TK_INDEX. Indices begin at 0. */
    const Secret& at(int index) const;
    void add(View object) { m_objects.push_back(toSecret(object)); }
    Secret encode() const;

    auto begin() const { return m_objects.begin(); }
    auto end() const { return m_objects.end(); }

private:
    std::vector<Secret> m_objects;
};

/** The objects of a list, or the one certificate or revocation list when @p bytes is a single one. */
ObjectList listOrSingle(View bytes);
/** The certificates of a list, or the one certificate when @p bytes is a single one. */
std::vector<Certificate> certificatesOf(const Library& library, View bytes);

} // namespace toolkit
