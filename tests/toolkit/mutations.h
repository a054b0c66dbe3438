// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates that are wrong somewhere: DER whose elements are changed, and the lengths around them made right again.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <cstdint>
#include <random>
#include <vector>

namespace toolkit_test {

/** The same seed gives the same changes on every machine. */
class Mutator {
public:
    explicit Mutator(std::uint32_t seed)
        : m_random(seed)
    {
    }

    /** @p der with one to three changes. */
    toolkit::Bytes changed(const toolkit::Bytes& der);

private:
    /** One element: with members when its content is elements, else with bytes. */
    struct Element {
        unsigned char tag;
        bool hasMembers;
        std::vector<Element> members;
        toolkit::Bytes bytes; ///< in front of the members: the count of unused bits of a BIT STRING
        bool longLength;      ///< one octet more than the length needs
    };

    std::size_t below(std::size_t limit) { return m_random() % limit; }
    static std::vector<Element> elementsOf(toolkit::View bytes, int depth);
    static toolkit::Bytes encoded(const std::vector<Element>& elements);
    static std::size_t count(const std::vector<Element>& elements);
    void changeOne(std::vector<Element>& elements, std::size_t& index);
    void change(std::vector<Element>& siblings, std::size_t at);
    void changeBytes(toolkit::Bytes& bytes);

    std::mt19937 m_random;
};

} // namespace toolkit_test
