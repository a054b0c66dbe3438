// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A member of the façade is one row, and the way that every call takes is written here once:
 *
 *      return row(handle, {need(path)},                                            what is required
 *          maker(SYMBOL(HVTK_MEDIA_DISK_ReadCert), path, certificate),             what the maker toolkit receives
 *          gpki(SYMBOL(GPKI_STORAGE_ReadCert), mediumDisk, path, kind, certificate));  what the GPKI library receives
 *
 *      row      handle null? 1008; secretRow clears the traces of secrets at the end
 *      pick     not initialised? 1008; a requirement not met? its code; then by the handle's toolkit type
 *      absent   this toolkit has no such function: 1003
 *      call     (facade/backends/toolkit.h) library not loaded? 1023/1024; what this toolkit requires beyond? 1001;
 *               no such symbol? 1003; then the function, and its error text kept when it fails
 */
#pragma once

#include "facade/argument.h"
#include "facade/backends/gpki_wrap.h"
#include "facade/backends/hvtk_wrap.h"
#include "facade/wrapper_api.h"
#include "foundation/secret.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

namespace sigil {

/** The call of one toolkit's function, to be made when the row has come to it. */
template <class Backend, class Function, class... A>
auto receives(Symbol<Function> symbol, Needs beyond, A... arguments)
{
    return [=](Backend& backend) { return backend.toolkit().call(symbol, beyond, arguments...); };
}

/** What the maker toolkit receives after its context; a list of requirements may stand before the arguments, for what
 *  this toolkit requires beyond the member. Other arguments than toolkit_abi/ declares do not compile. */
template <class Function, class... A>
requires TakesAfterContext<Function, A...>
auto maker(Symbol<Function> symbol, A... arguments) { return receives<CHVTKWrap>(symbol, {}, arguments...); }
template <class Function, class... A>
requires TakesAfterContext<Function, A...>
auto maker(Symbol<Function> symbol, Needs beyond, A... arguments)
{
    return receives<CHVTKWrap>(symbol, beyond, arguments...);
}

/** What the GPKI library receives, in the same way. */
template <class Function, class... A>
requires TakesAfterContext<Function, A...>
auto gpki(Symbol<Function> symbol, A... arguments) { return receives<CGPKIWrap>(symbol, {}, arguments...); }
template <class Function, class... A>
requires TakesAfterContext<Function, A...>
auto gpki(Symbol<Function> symbol, Needs beyond, A... arguments)
{
    return receives<CGPKIWrap>(symbol, beyond, arguments...);
}

/** This toolkit has no such function. */
inline constexpr auto absent = [](auto&) -> int { return SIGIL_NOT_SUPPORTED; };

/** A member: what it requires, and what each toolkit receives. Inline in every member, so that its arguments stay in
 *  registers on their way. */
template <class Maker, class Gpki>
[[gnu::always_inline]] inline int row(void* handle, Needs needs, const Maker& toMaker, const Gpki& toGpki)
{
    auto* api = static_cast<CWrapperAPI*>(handle);
    return api ? api->pick(needs, toMaker, toGpki) : SIGIL_NO_HANDLE;
}

/** A member that takes or gives keys, passwords or what they protect: nothing of them is left in registers or on the stack
 *  when the host goes on. */
template <class Maker, class Gpki>
[[gnu::always_inline]] inline int secretRow(void* handle, Needs needs, const Maker& toMaker, const Gpki& toGpki)
{
    const int result = row(handle, needs, toMaker, toGpki);
    clearTraces();
    return result;
}

/** The few members that are operations of the handle's object. */
template <class... P>
int via(void* handle, int (CWrapperAPI::*operation)(P...), P... arguments)
{
    auto* api = static_cast<CWrapperAPI*>(handle);
    return api ? (api->*operation)(arguments...) : SIGIL_NO_HANDLE;
}

} // namespace sigil

template <class Maker, class Gpki>
[[gnu::always_inline]] inline int CWrapperAPI::pick(sigil::Needs needs, const Maker& toMaker, const Gpki& toGpki)
{
    if (!CheckInit())
        return SIGIL_NO_HANDLE;
    if (const int code = sigil::unmet(needs))
        return code;
    return isGpki() ? toGpki(*m_pGPKIWrap) : toMaker(*m_pHVTKWrap);
}
