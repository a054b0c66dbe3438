// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/entry.h"

#include "foundation/text_field.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace sigil {

namespace {

constexpr std::size_t numberOffsets[] = {offsetof(tagCERTINFO, nPKIType), offsetof(tagCERTINFO, nMediaType),
    offsetof(tagCERTINFO, nStatusFlag), offsetof(tagCERTINFO, nValidStatus), offsetof(tagCERTINFO, nRemainDays),
    offsetof(tagCERTINFO, nExpired)};

char* at(tagCERTINFO& entry, std::size_t offset) { return reinterpret_cast<char*>(&entry) + offset; }
const char* at(const tagCERTINFO& entry, std::size_t offset)
{
    return reinterpret_cast<const char*>(&entry) + offset;
}

int number(const tagCERTINFO& entry, std::size_t offset)
{
    int n;
    std::memcpy(&n, at(entry, offset), sizeof n);
    return n;
}

void setNumber(tagCERTINFO& entry, std::size_t offset, int n) { std::memcpy(at(entry, offset), &n, sizeof n); }

/** What precedes the bytes of a field in a packed entry. */
struct PackedField {
    std::uint16_t index; ///< into the table of fields
    std::uint16_t length;
};

template <class T>
char* put(char* to, const T& item)
{
    std::memcpy(to, &item, sizeof item);
    return to + sizeof item;
}

template <class T>
const char* take(const char* from, T& item)
{
    std::memcpy(&item, from, sizeof item);
    return from + sizeof item;
}

} // namespace

std::string_view value(const tagCERTINFO& entry, const EntryField& field)
{
    const char* data = at(entry, field.offset);
    if (field.isText())
        return fieldText(data, field.capacity - 1);
    const int length = number(entry, field.lengthOffset);
    return {data, std::min(field.capacity, static_cast<std::size_t>(std::max(length, 0)))};
}

void setText(tagCERTINFO& entry, const EntryField& field, std::string_view text)
{
    copyText(at(entry, field.offset), field.capacity, text);
}

bool setBytes(tagCERTINFO& entry, const EntryField& field, std::string_view bytes)
{
    if (bytes.size() > field.capacity)
        return false;
    wipe(at(entry, field.offset), value(entry, field).size());
    std::copy(bytes.begin(), bytes.end(), at(entry, field.offset));
    setNumber(entry, field.lengthOffset, static_cast<int>(bytes.size()));
    return true;
}

void PackedEntry::store(const tagCERTINFO& entry)
{
    std::array<std::string_view, std::size(entryFields)> values;
    std::size_t size = sizeof(int) * std::size(numberOffsets);
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = value(entry, entryFields[i]);
        size += values[i].empty() ? 0 : sizeof(PackedField) + values[i].size();
    }
    if (size > m_bytes.capacity()) {
        SecretBytes larger;
        larger.reserve(size);
        m_bytes.swap(larger);
    }
    clear();
    m_bytes.resize(size);
    char* to = m_bytes.data();
    for (std::size_t offset : numberOffsets)
        to = put(to, number(entry, offset));
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i].empty())
            continue;
        to = put(to, PackedField{static_cast<std::uint16_t>(i), static_cast<std::uint16_t>(values[i].size())});
        to = std::copy(values[i].begin(), values[i].end(), to);
    }
}

void PackedEntry::clear()
{
    wipe(m_bytes.data(), m_bytes.size());
    m_bytes.clear();
}

void PackedEntry::copyTo(tagCERTINFO& entry) const
{
    const char* from = m_bytes.data();
    const char* end = from + m_bytes.size();
    for (std::size_t offset : numberOffsets) {
        int n = 0; // an entry that was never filled has zeros
        if (from != end)
            from = take(from, n);
        setNumber(entry, offset, n);
    }
    while (from != end) {
        PackedField packed;
        from = take(from, packed);
        const std::string_view bytes(from, packed.length);
        const EntryField& to = entryFields[packed.index];
        if (to.isText())
            setText(entry, to, bytes);
        else
            setBytes(entry, to, bytes);
        from += packed.length;
    }
}

void ScratchEntry::clear()
{
    tagCERTINFO& entry = **this;
    for (std::size_t offset : numberOffsets)
        setNumber(entry, offset, 0);
    for (const EntryField& used : entryFields) {
        wipe(at(entry, used.offset), value(entry, used).size());
        if (!used.isText())
            setNumber(entry, used.lengthOffset, 0);
    }
}

} // namespace sigil
