// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#11 (Cryptoki) as the engine meets it: what a module answers, and templates of attributes.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <p11-kit/pkcs11.h>

#include <deque>
#include <string_view>
#include <vector>

namespace toolkit {

/** The functions of a module. */
using Cryptoki = CK_FUNCTION_LIST;

/** Throws the failure that an answer of a module means.
 *  @param function its name, for the text of failures that have no code of their own */
void checkAnswer(CK_RV answer, const char* function);

/** Attributes of an object, with their values; those are wiped. A copy would point into what it was copied from. */
class Template {
public:
    Template() = default;
    Template(Template&&) = default;
    Template& operator=(Template&&) = default;
    Template(const Template&) = delete;
    Template& operator=(const Template&) = delete;

    Template& add(CK_ATTRIBUTE_TYPE type, View value);
    Template& add(CK_ATTRIBUTE_TYPE type, unsigned long value);
    Template& flag(CK_ATTRIBUTE_TYPE type, bool value);

    /** For a module, which promises by contract to leave them alone. */
    CK_ATTRIBUTE* data() const { return const_cast<CK_ATTRIBUTE*>(m_attributes.data()); }
    unsigned long size() const { return m_attributes.size(); }

private:
    std::deque<Secret> m_values;
    std::vector<CK_ATTRIBUTE> m_attributes;
};

/** Bytes for a module, which promises by contract to leave them alone. */
inline unsigned char* bytesFor(View bytes) { return const_cast<unsigned char*>(bytes.data()); }
inline unsigned char* bytesFor(std::string_view text) { return bytesFor(view(text)); }

} // namespace toolkit
