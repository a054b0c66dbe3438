// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "fuzz/facade/calls.h"

#include "fuzz/machine.h"
#include "tests/facade/member.h"

#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <array>
#include <cstring>
#include <string_view>

#if defined(__SANITIZE_ADDRESS__)
#define FUZZ_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_ADDRESS_SANITIZER
#endif
#endif
#ifdef FUZZ_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace fuzz {

namespace {

constexpr int mostSteps = 24;

/** Those that ask for tokens, cards and the user's database: what they do is the machine's. */
bool isOfTheMachine(std::string_view name)
{
    for (const std::string_view prefix : {"PKCS11", "MediaCar", "MediaWins"})
        if (name.starts_with(prefix))
            return true;
    return false;
}

const std::vector<const Member*>& membersOn(int type)
{
    static const auto chosen = [](int wanted) {
        std::vector<const Member*> members;
        for (const Member& member : allMembers())
            if (member.isOn(wanted) && !isOfTheMachine(member.name))
                members.push_back(&member);
        return members;
    };
    static const std::array all{chosen(0), chosen(1)};
    return all.at(static_cast<std::size_t>(type));
}

/** What a host may mean by a text. Paths lead into the working folder, and every address is one that nobody answers at. */
constexpr std::array texts{"", "password", "file", "another", "2027-01-15 08:00:00", "cn=x,ou=y,o=z,c=kr",
    "1.2.410.200005.1.1.1", "ldap://127.0.0.1/cn=x", "http://127.0.0.1/x", "127.0.0.1", "settings.conf"};

/** Whether a call released the bytes; where nobody can tell nobody looks for what is never released. */
bool isReleased([[maybe_unused]] const unsigned char* bytes)
{
#ifdef FUZZ_ADDRESS_SANITIZER
    return __asan_address_is_poisoned(bytes) != 0;
#else
    return true;
#endif
}

/** The arguments of the next call: byte strings of the handle, texts and numbers. */
class Arguments {
public:
    explicit Arguments(void* handle)
        : m_handle(handle)
    {
        for (std::size_t i = 0; i < Values::byteStrings; ++i)
            HV_BINSTR_Create(m_handle, &(m_values.bytes(i) = {}));
    }
    ~Arguments()
    {
        for (std::size_t i = 0; i < Values::byteStrings; ++i)
            HV_BINSTR_Delete(m_handle, &m_values.bytes(i));
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    void fill(std::size_t index, std::string bytes)
    {
        clear(index);
        HV_BINSTR_SetData(m_handle, reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(bytes.size()),
            &m_values.bytes(index));
    }
    void swap(std::size_t one, std::size_t other) { std::swap(m_values.bytes(one), m_values.bytes(other)); }
    void setText(std::size_t index, std::string_view text) { m_values.setText(index, text); }
    void setNumber(std::size_t index, int number) { m_values.setNumber(index, number); }

    int call(const Member& member)
    {
        tameTexts();
        std::array<BINSTR, Values::byteStrings> before;
        for (std::size_t i = 0; i < before.size(); ++i)
            before[i] = m_values.bytes(i);
        const int code = member.call(m_handle, m_values);
        for (std::size_t i = 0; i < before.size(); ++i)
            if (before[i].pData && before[i].pData != m_values.bytes(i).pData && !isReleased(before[i].pData))
                HV_BINSTR_Delete(m_handle, &before[i]); // most outputs do not release what the record held
        return code;
    }

private:
    void clear(std::size_t index)
    {
        HV_BINSTR_Delete(m_handle, &m_values.bytes(index));
        HV_BINSTR_Create(m_handle, &(m_values.bytes(index) = {}));
    }
    /** What a call left may be a path that a certificate chose. */
    void tameTexts()
    {
        for (std::size_t i = 0; i < Values::textCount; ++i) {
            char* const text = m_values.text(i);
            text[Values::textRoom - 1] = '\0';
            const bool known = std::find(texts.begin(), texts.end(), std::string_view(text)) != texts.end();
            if (!known)
                std::replace(text, text + std::strlen(text), '/', '_');
            if (*text == '.')
                *text = '_';
        }
    }

    void* m_handle;
    Values m_values;
};

void set(Arguments& arguments, Script& script)
{
    constexpr std::array kinds{0, 1, 2, 3, 48, 64, -1};
    const std::size_t index = script.number(Values::byteStrings);
    switch (script.number(4)) {
    case 0:
        return arguments.fill(index, content(script));
    case 1:
        return arguments.swap(index, script.number(Values::byteStrings));
    case 2:
        return arguments.setText(index, script.number(4) == 0 ? fileName(script) : script.oneOf(texts));
    default:
        return arguments.setNumber(index, script.oneOf(kinds));
    }
}

} // namespace

void callMembers(int type, Input input)
{
    const Machine machine;
    Script script(input);
    sigildesk::CryptoHandle handle;
    require(sigildesk::initialise(handle, type, libraryFolder().data()) == SIGIL_SUCCESS, "a handle can be had");
    Arguments arguments(handle.get());
    const auto& members = membersOn(type);
    for (int i = 0; i < mostSteps && !script.atEnd(); ++i) {
        if (script.number(2) == 0) {
            set(arguments, script);
            continue;
        }
        const Member& member = *script.oneOf(members);
        requireStated(arguments.call(member), member.name.c_str());
    }
}

} // namespace fuzz
