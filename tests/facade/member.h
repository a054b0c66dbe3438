// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One row of the table of members: an exported function, what it requires, and what exactly reaches each toolkit.
 *
 *  Arguments are named by kind and number, counted from the left after the handle: B BINSTR*, T char*, I int, F bool,
 *  U unsigned long, N int*, P unsigned long*, O bool*, K PKCS11_TOKEN_INFO*. A call is written as the toolkit sees it,
 *  without the context that comes first: "GPKI_STORAGE_ReadCert(1, T1, I1, B1)". "local" stands for memory of the façade's
 *  own; several calls follow each other after a blank. Among the requirements "&B1" stands for the record of a
 *  byte string that may be empty.
 */
#pragma once

#include "tests/doubles/recorder.h"

#include <sigildesk/binstr.h>
#include <sigildesk/crypto/pkcs11.h>

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

/** A valid value for every argument of any member, one of which a test may spoil. */
class Values {
public:
    /** How an argument can be missing. */
    enum class Way { NoData, NoLength, NegativeLength, NoRecord, NullPointer };
    /** Whether pointers lead anywhere. */
    enum class Memory { Valid, Wild };
    /** Never mapped: whoever reads or writes here ends. */
    static constexpr std::uintptr_t wildAddress = 8;

    explicit Values(Memory memory = Memory::Valid);

    /** The ways that the argument of this name has: two or more for a byte string, one for a pointer, none for a value. */
    static std::vector<Way> ways(const std::string& argument);
    void spoil(const std::string& argument, Way way);
    void setFlag(bool flag) { m_flag = flag; }
    /** The byte string of an index, "B1" is at 0. */
    static constexpr std::size_t byteStrings = 9;
    BINSTR& bytes(std::size_t index) { return m_bytes.at(index); }
    /** The text of an index, as inputs and outputs: "T1" is at 0. */
    static constexpr std::size_t textCount = 9;
    static constexpr std::size_t textRoom = 4096;
    char* text(std::size_t index) { return m_texts.at(index).data(); }
    void setText(std::size_t index, std::string_view text);
    /** Another number in the place of "I1", at 0, and its like. */
    void setNumber(std::size_t index, int number) { m_integers.at(index) = number; }

    /** The next argument of the type T. */
    template <class T>
    T next(std::map<char, int>& taken)
    {
        T value{};
        give(value, taken);
        return value;
    }

    /** The name of an argument that a toolkit received, or "local", "null" or the number. */
    std::string nameOf(const doubles::Argument& argument) const;
    /** What the toolkit saw: "HVTK_CERT_Load(B1)". */
    std::string text(const doubles::Call& call) const;

private:
    void give(BINSTR*& value, std::map<char, int>& taken);
    void give(char*& value, std::map<char, int>& taken);
    void give(int& value, std::map<char, int>& taken);
    void give(bool& value, std::map<char, int>& taken);
    void give(unsigned long& value, std::map<char, int>& taken);
    void give(int*& value, std::map<char, int>& taken);
    void give(unsigned long*& value, std::map<char, int>& taken);
    void give(bool*& value, std::map<char, int>& taken);
    void give(PKCS11_TOKEN_INFO*& value, std::map<char, int>& taken);
    template <class T>
    T* unlessNull(const std::string& name, T* value) const
    {
        if (m_null == name)
            return nullptr;
        return m_memory == Memory::Wild ? reinterpret_cast<T*>(wildAddress) : value;
    }
    std::string nameOfPointer(std::intptr_t value) const;

    std::array<unsigned char, 4> m_data{1, 2, 3, 4};
    std::array<BINSTR, byteStrings> m_bytes{};
    std::array<std::array<char, textRoom>, textCount> m_texts{};
    std::array<int, 9> m_integers{};
    std::array<int, 3> m_numbers{};
    std::array<unsigned long, 3> m_longNumbers{};
    std::array<bool, 2> m_flags{};
    std::array<long, 8> m_tokenInfo{};
    Memory m_memory;
    bool m_flag = true;
    std::string m_null; // the name of the pointer that is null
};

/** What the façade requires, and the code that answers a call without it. */
struct Requirement {
    std::vector<std::string> arguments;
    int code;
};

std::vector<std::string> words(const std::string& text);
inline Requirement needs(const std::string& arguments) { return {words(arguments), 1001}; }
inline Requirement fieldNeeds(const std::string& arguments) { return {words(arguments), 1000}; }

/** This toolkit has no such function. */
constexpr const char* absent = "";

struct Member {
    template <class... A>
    Member(std::string name_, int (*function)(void*, A...), Requirement required_, const char* maker,
        const char* gpki, const std::string& makerRequires = "", const std::string& gpkiRequires = "",
        const std::string& gpkiFacadeRequires = "")
        : name(std::move(name_))
        , required(std::move(required_))
        , calls{maker, gpki}
        , backendRequires{words(makerRequires), words(gpkiRequires)}
        , gpkiRequired(words(gpkiFacadeRequires))
        , arguments(namesOf<A...>())
        , m_call([function](void* handle, Values& values, int times) {
            std::map<char, int> taken;
            const std::tuple<A...> given{values.next<A>(taken)...}; // braces: from left to right
            int result = 0;
            for (int i = 0; i < times; ++i)
                result = std::apply([&](A... a) { return function(handle, a...); }, given);
            return result;
        })
    {
    }

    /** @return what the last of the calls answers */
    int call(void* handle, Values& values, int times = 1) const { return m_call(handle, values, times); }

    /** Whether toolkit type @p type has the function. */
    bool isOn(int type) const { return !calls[static_cast<std::size_t>(type)].empty(); }
    const std::string& callsOn(int type) const { return calls[static_cast<std::size_t>(type)]; }
    /** The symbols of those calls but for the byte strings'. */
    std::vector<std::string> symbolsOn(int type) const;
    /** What the façade requires on @p type, before it looks at the backend. */
    std::vector<std::string> requiredOn(int type) const;
    /** What the backend of @p type requires beyond that. */
    const std::vector<std::string>& backendRequiredOn(int type) const
    {
        return backendRequires[static_cast<std::size_t>(type)];
    }

    std::string name;
    Requirement required;
    std::array<std::string, 2> calls;
    std::array<std::vector<std::string>, 2> backendRequires;
    std::vector<std::string> gpkiRequired;
    std::vector<std::string> arguments; // the names of all its arguments

private:
    template <class... A>
    static std::vector<std::string> namesOf()
    {
        std::map<char, int> taken;
        return {nameOf(kind(static_cast<A*>(nullptr)), taken)...};
    }
    static std::string nameOf(char kind, std::map<char, int>& taken)
    {
        return kind + std::to_string(++taken[kind]);
    }
    static char kind(BINSTR**) { return 'B'; }
    static char kind(char**) { return 'T'; }
    static char kind(int*) { return 'I'; }
    static char kind(bool*) { return 'F'; }
    static char kind(unsigned long*) { return 'U'; }
    static char kind(int**) { return 'N'; }
    static char kind(unsigned long**) { return 'P'; }
    static char kind(bool**) { return 'O'; }
    static char kind(PKCS11_TOKEN_INFO**) { return 'K'; }

    std::function<int(void* handle, Values& values, int times)> m_call;
};

/** Name and function of a member. */
#define MEMBER(name) #name, name

std::vector<Member> certificateMembers();
std::vector<Member> serviceMembers();
/** The whole table. */
const std::vector<Member>& allMembers();
