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

std::size_t packedSize(std::string_view bytes) { return bytes.empty() ? 0 : sizeof(PackedField) + bytes.size(); }

/** Has the buffer hold as much without asking for memory; what it holds stays. */
template <class Buffer>
void makeRoom(Buffer& buffer, std::size_t size)
{
    if (size <= buffer.capacity())
        return;
    Buffer larger;
    larger.reserve(size);
    larger.assign(buffer.begin(), buffer.end());
    buffer.swap(larger);
}

/** @return where the next field begins */
char* pack(char* to, std::size_t index, std::string_view bytes)
{
    if (bytes.empty())
        return to;
    to = put(to, PackedField{static_cast<std::uint16_t>(index), static_cast<std::uint16_t>(bytes.size())});
    return std::copy(bytes.begin(), bytes.end(), to);
}

void unpack(std::string_view packed, tagCERTINFO& entry)
{
    while (!packed.empty()) {
        PackedField head;
        take(packed.data(), head);
        packed.remove_prefix(sizeof head);
        const EntryField& to = entryFields[head.index];
        if (to.isText())
            setText(entry, to, packed.substr(0, head.length));
        else
            setBytes(entry, to, packed.substr(0, head.length));
        packed.remove_prefix(head.length);
    }
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
    std::size_t secretSize = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = value(entry, entryFields[i]);
        (isSecret(entryFields[i]) ? secretSize : size) += packedSize(values[i]);
    }
    makeRoom(m_bytes, size);
    makeRoom(m_secrets, secretSize);
    clear();
    m_bytes.resize(size);
    m_secrets.resize(secretSize);
    char* to = m_bytes.data();
    char* secretTo = m_secrets.data();
    for (std::size_t offset : numberOffsets)
        to = put(to, number(entry, offset));
    for (std::size_t i = 0; i < values.size(); ++i) {
        char*& end = isSecret(entryFields[i]) ? secretTo : to;
        end = pack(end, i, values[i]);
    }
}

void PackedEntry::clear()
{
    wipe(m_bytes.data(), m_bytes.size());
    wipe(m_secrets.data(), m_secrets.size());
    m_bytes.clear();
    m_secrets.clear();
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
    unpack({from, end}, entry);
    unpack({m_secrets.data(), m_secrets.size()}, entry);
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
