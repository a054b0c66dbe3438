/** @file
 *  The way of every call through the façade, written once:
 *
 *      export      via:   handle null? 1008
 *      operation   pick:  initialised? 1008; required arguments? 1001 or 1000; then by the handle's toolkit type
 *      backend     (facade/backends/toolkit.h): loaded? 1023/1024; arguments? 1001; symbol there? 1003; call
 *
 *  An operation is one row: what it requires, what the maker toolkit receives, what the GPKI library receives.
 */
#pragma once

#include "facade/argument.h"
#include "facade/backends/gpki_wrap.h"
#include "facade/backends/hvtk_wrap.h"
#include "facade/wrapper_api.h"

#include <type_traits>

namespace sigil {

/** Passes an export's arguments on to the operation of its handle. */
template <class... P>
int via(void* handle, int (CWrapperAPI::*operation)(P...), P... args)
{
    auto* api = static_cast<CWrapperAPI*>(handle);
    return api ? (api->*operation)(args...) : NotInitialised;
}

/** A backend's method and what it is given, for pick. The types must be the method's own: nothing is converted. */
template <auto method, class... A>
auto to(A... args)
{
    return [=]<class Backend>(Backend& backend) {
        static_assert(std::is_same_v<decltype(method), int (Backend::*)(A...)>);
        return (backend.*method)(args...);
    };
}

/** For pick: this toolkit has no such function. */
inline constexpr auto absent = [](auto&) -> int { return FunctionMissing; };

} // namespace sigil

template <class Maker, class Gpki>
int CWrapperAPI::pick(sigil::Needs needs, const Maker& maker, const Gpki& gpki)
{
    if (!CheckInit())
        return sigil::NotInitialised;
    if (needs.unmet)
        return needs.unmet;
    switch (m_nToolkitType) {
    case 0:
        return maker(*m_pHVTKWrap);
    case 1:
        return gpki(*m_pGPKIWrap);
    default:
        return sigil::Success; // Initalize lets no other type in
    }
}
