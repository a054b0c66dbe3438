/** @file
 *  Tokens: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/tokens/token.h"
#include "toolkit/engine/tokens/token_certificates.h"

#include <algorithm>
#include <cstring>

/** Of the public header, where it is CK_TOKEN_INFO byte for byte. */
struct PKCS11_TOKEN_INFO;

namespace toolkit::calls {

/** @param count in: how many numbers @p slots has room for; out: how many there are */
inline void tokenGetSlotList(Context& state, unsigned long* slots, unsigned long* count)
{
    require(slots && count, SIGIL_TK_ARGUMENT);
    const std::vector<unsigned long> numbers = state.tokens.modules()->slots();
    const unsigned long room = std::exchange(*count, numbers.size());
    require(room >= numbers.size(), SIGIL_TK_BUFFER_TOO_SMALL);
    std::copy(numbers.begin(), numbers.end(), slots);
}

inline void tokenGetInfo(Context& state, unsigned long slot, PKCS11_TOKEN_INFO* out)
{
    require(out != nullptr, SIGIL_TK_ARGUMENT);
    const CK_TOKEN_INFO info = tokenInfo(state.tokens.modules()->slot(slot));
    std::memcpy(static_cast<void*>(out), &info, sizeof info);
}

inline void tokenInit(Context& state, char* soPin, char* label)
{
    initialiseToken(state.tokens, in(soPin), in(label));
}

inline void tokenInitWithSlotID(Context& state, unsigned long slot, char* soPin, char* pin, char* label)
{
    initialiseToken(state.tokens, state.tokens.modules()->slot(slot), in(soPin), in(pin), in(label));
}

inline void tokenOpenSession(Context& state, unsigned long slot, int flags)
{
    state.tokens.open(state.tokens.modules()->slot(slot), flags);
}

inline void tokenLogin(Context& state, char* pin) { state.tokens.session().login(in(pin)); }

/** @param pin may be null: no login. After a wrong one the session is open. */
inline void tokenOpenSessionWithSlotID(Context& state, unsigned long slot, char* pin, int flags)
{
    tokenOpenSession(state, slot, flags);
    if (pin)
        tokenLogin(state, pin);
}

inline void tokenOpenSessionWithTokenName(Context& state, char* token, int flags)
{
    state.tokens.open(slotOfToken(state.tokens, in(token)), flags);
}

/** With the first token that there is. @param pin may be null */
inline void tokenOpenFirstSession(Context& state, char* pin)
{
    state.tokens.open(firstToken(state.tokens), 0);
    if (pin)
        tokenLogin(state, pin);
}

inline void tokenLogout(Context& state) { state.tokens.session().logout(); }

inline void tokenCloseSession(Context& state)
{
    state.tokens.session();
    state.tokens.close();
}

inline void tokenChangePIN(Context& state, char* oldPin, char* newPin)
{
    state.tokens.session().changePin(in(oldPin), in(newPin));
}

inline void tokenGetCertCnt(Context& state, int* count)
{
    putValue(static_cast<int>(tokenCertificates(state.library(), state.tokens.session()).size()), count);
}

inline void tokenGetCertInfo(Context& state, int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    require(kind != nullptr, SIGIL_TK_ARGUMENT);
    const auto all = tokenCertificates(state.library(), state.tokens.session());
    require(index >= 0 && static_cast<std::size_t>(index) < all.size(), SIGIL_TK_INDEX);
    const TokenCertificate& found = all[static_cast<std::size_t>(index)];
    put({{found.id, id}, {found.certificate.der(), certificate}});
    *kind = kindOf(found.certificate);
}

inline void tokenReadCert(Context& state, BINSTR* id, BINSTR* certificate)
{
    put(tokenCertificate(state.library(), state.tokens.session(), in(id)).der(), certificate);
}

} // namespace toolkit::calls
