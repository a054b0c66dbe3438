// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/x509/text.h"

#include <algorithm>
#include <optional>

namespace toolkit {
namespace {

/** The first slot whose token is wanted; nothing when there is none. */
template <class Wanted>
std::optional<Slot> firstSlot(TokenState& state, Wanted wanted)
{
    for (const unsigned long number : state.modules()->slots()) {
        const Slot slot = state.modules()->slot(number);
        if (wanted(tokenInfo(slot)))
            return slot;
    }
    return {};
}

void initialise(const Slot& slot, std::string_view soPin, std::string_view label)
{
    std::string padded = labelText(label);
    padded.resize(sizeof CK_TOKEN_INFO::label, ' ');
    checkAnswer(slot.module->C_InitToken(slot.id, bytesFor(soPin), soPin.size(), bytesFor(padded)), "C_InitToken");
}

} // namespace

std::string utf8Label(std::string_view label)
{
    const auto utf8 = isUtf8(label) ? std::optional(std::string(label)) : utf8FromCp949(label);
    require(utf8.has_value(), SIGIL_TK_ARGUMENT, "label");
    return *utf8;
}

std::string labelText(std::string_view label)
{
    std::string utf8 = utf8Label(label);
    require(utf8.size() <= sizeof CK_TOKEN_INFO::label, SIGIL_TK_ARGUMENT, "label");
    return utf8;
}

Slot slotOfToken(TokenState& state, std::string_view label)
{
    const std::string wanted = labelText(label);
    const auto slot = firstSlot(state, [&](const CK_TOKEN_INFO& info) { return fieldText(info.label) == wanted; });
    require(slot.has_value(), SIGIL_TK_TOKEN_ABSENT, wanted);
    return *slot;
}

Slot firstToken(TokenState& state)
{
    const auto slot =
        firstSlot(state, [](const CK_TOKEN_INFO& info) { return (info.flags & CKF_TOKEN_INITIALIZED) != 0; });
    require(slot.has_value(), SIGIL_TK_TOKEN_ABSENT);
    return *slot;
}

void initialiseToken(TokenState& state, std::string_view soPin, std::string_view label)
{
    const auto slot =
        firstSlot(state, [](const CK_TOKEN_INFO& info) { return (info.flags & CKF_TOKEN_INITIALIZED) == 0; });
    require(slot.has_value(), SIGIL_TK_TOKEN_ABSENT, "every token is initialised");
    initialise(*slot, soPin, label);
}

void initialiseToken(
    TokenState& state, const Slot& slot, std::string_view soPin, std::string_view pin, std::string_view label)
{
    if (state.isOpen() && state.session().slot() == slot)
        state.close();
    initialise(slot, soPin, label);
    TokenSession(state.modules(), slot, CKF_RW_SESSION).setFirstPin(soPin, pin);
}

} // namespace toolkit
