// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/facade/member.h"

#include <numeric>
#include <sstream>

namespace {

/** Numbers that no capacity or code of the façade equals, and that are different from each other. */
constexpr int firstNumber = 101;
constexpr unsigned long firstLongNumber = 0x1'0000'0001UL; // does not fit in 32 bits

/** The index that an argument's name ends in, counted from 0. */
std::size_t indexOf(const std::string& name) { return static_cast<std::size_t>(name.back() - '1'); }

int take(char kind, std::map<char, int>& taken) { return ++taken[kind]; }

std::string numbered(char kind, std::size_t index) { return kind + std::to_string(index + 1); }

} // namespace

std::vector<std::string> words(const std::string& text)
{
    std::istringstream in(text);
    std::vector<std::string> found;
    for (std::string word; in >> word;)
        found.push_back(word);
    return found;
}

Values::Values(Memory memory)
    : m_memory(memory)
{
    m_bytes.fill({m_data.data(), static_cast<int>(m_data.size())});
    std::iota(m_integers.begin(), m_integers.end(), firstNumber);
}

void Values::setText(std::size_t index, std::string_view text)
{
    const std::size_t length = text.copy(m_texts.at(index).data(), textRoom - 1);
    m_texts.at(index)[length] = '\0';
}

std::vector<Values::Way> Values::ways(const std::string& argument)
{
    switch (argument.front()) {
    case '&':
        return {Way::NoRecord};
    case 'B':
        return {Way::NoData, Way::NoLength, Way::NegativeLength, Way::NoRecord};
    case 'I':
    case 'F':
    case 'U':
        return {};
    default:
        return {Way::NullPointer};
    }
}

void Values::spoil(const std::string& argument, Way way)
{
    BINSTR& bytes = m_bytes.at(indexOf(argument));
    switch (way) {
    case Way::NoData:
        bytes.pData = nullptr;
        break;
    case Way::NoLength:
        bytes.nLength = 0;
        break;
    case Way::NegativeLength:
        bytes.nLength = -1;
        break;
    case Way::NoRecord:
    case Way::NullPointer:
        m_null = argument.substr(argument.find_first_not_of('&'));
        break;
    }
}

void Values::give(BINSTR*& value, std::map<char, int>& taken)
{
    const std::string name = numbered('B', static_cast<std::size_t>(take('B', taken) - 1));
    value = unlessNull(name, &m_bytes.at(indexOf(name)));
}

void Values::give(char*& value, std::map<char, int>& taken)
{
    const std::string name = numbered('T', static_cast<std::size_t>(take('T', taken) - 1));
    value = unlessNull(name, m_texts.at(indexOf(name)).data());
}

void Values::give(int& value, std::map<char, int>& taken)
{
    value = m_integers.at(static_cast<std::size_t>(take('I', taken) - 1));
}

void Values::give(bool& value, std::map<char, int>& taken)
{
    take('F', taken);
    value = m_flag;
}

void Values::give(unsigned long& value, std::map<char, int>& taken)
{
    value = firstLongNumber + static_cast<unsigned long>(take('U', taken) - 1);
}

void Values::give(int*& value, std::map<char, int>& taken)
{
    const std::string name = numbered('N', static_cast<std::size_t>(take('N', taken) - 1));
    value = unlessNull(name, &m_numbers.at(indexOf(name)));
}

void Values::give(unsigned long*& value, std::map<char, int>& taken)
{
    const std::string name = numbered('P', static_cast<std::size_t>(take('P', taken) - 1));
    value = unlessNull(name, &m_longNumbers.at(indexOf(name)));
}

void Values::give(bool*& value, std::map<char, int>& taken)
{
    const std::string name = numbered('O', static_cast<std::size_t>(take('O', taken) - 1));
    value = unlessNull(name, &m_flags.at(indexOf(name)));
}

void Values::give(PKCS11_TOKEN_INFO*& value, std::map<char, int>& taken)
{
    take('K', taken);
    value = unlessNull("K1", reinterpret_cast<PKCS11_TOKEN_INFO*>(m_tokenInfo.data()));
}

std::string Values::nameOfPointer(std::intptr_t value) const
{
    const auto is = [value](const auto& item) { return value == reinterpret_cast<std::intptr_t>(&item); };
    for (std::size_t i = 0; i < m_bytes.size(); ++i)
        if (is(m_bytes[i]))
            return numbered('B', i);
    for (std::size_t i = 0; i < m_texts.size(); ++i)
        if (is(m_texts[i]))
            return numbered('T', i);
    for (std::size_t i = 0; i < m_numbers.size(); ++i)
        if (is(m_numbers[i]))
            return numbered('N', i);
    for (std::size_t i = 0; i < m_longNumbers.size(); ++i)
        if (is(m_longNumbers[i]))
            return numbered('P', i);
    for (std::size_t i = 0; i < m_flags.size(); ++i)
        if (is(m_flags[i]))
            return numbered('O', i);
    return is(m_tokenInfo) ? "K1" : value ? "local" : "null";
}

std::string Values::nameOf(const doubles::Argument& argument) const
{
    using Kind = doubles::Argument::Kind;
    const auto number = [](int value) {
        const int index = value - firstNumber;
        return index >= 0 && index < 9 ? numbered('I', static_cast<std::size_t>(index)) : std::to_string(value);
    };
    switch (argument.kind) {
    case Kind::Integer:
        return number(static_cast<int>(argument.value));
    case Kind::Flag:
        return (argument.value == 1) == m_flag ? "F1" : "the other flag";
    case Kind::Long:
        if (static_cast<unsigned long>(argument.value) == firstLongNumber)
            return "U1";
        // A symbol that is called with two lists of arguments: a pointer, or a number in the lower half.
        if (const std::string name = nameOfPointer(argument.value); name != "local")
            return name;
        return number(static_cast<int>(argument.value));
    case Kind::Pointer:
        return nameOfPointer(argument.value);
    }
    return "?";
}

std::string Values::text(const doubles::Call& call) const
{
    std::string list;
    for (const doubles::Argument& argument : call.arguments)
        list += (list.empty() ? "" : ", ") + nameOf(argument);
    return call.symbol + "(" + list + ")";
}

std::vector<std::string> Member::symbolsOn(int type) const
{
    std::vector<std::string> symbols;
    for (const std::string& word : words(callsOn(type)))
        if (const auto end = word.find('('); end != std::string::npos && word.find("_BINSTR_") == std::string::npos)
            symbols.push_back(word.substr(0, end));
    return symbols;
}

std::vector<std::string> Member::requiredOn(int type) const
{
    std::vector<std::string> all = required.arguments;
    if (type == 1)
        all.insert(all.end(), gpkiRequired.begin(), gpkiRequired.end());
    return all;
}

const std::vector<Member>& allMembers()
{
    static const std::vector<Member> members = [] {
        std::vector<Member> all = certificateMembers();
        for (const Member& member : serviceMembers())
            all.push_back(member);
        return all;
    }();
    return members;
}
