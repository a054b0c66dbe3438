// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One toolkit library, loaded at run time: the mechanism that both backends share.
 *
 *  A caller names the symbol, what it requires and what the toolkit receives; all else happens here, in one order:
 *  library loaded? arguments usable? symbol there? call it with the context first, and keep the toolkit's error text
 *  when it fails.
 */
#pragma once

#include "facade/argument.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

#include <dlfcn.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace sigil {

/** A toolkit's function as the library knows it before it is loaded: its name, and the type that toolkit_abi/ declares
 *  for it. The declaration is only looked at; nothing is linked. */
template <class Function>
struct Symbol {
    const char* name;
};
#define SYMBOL(function) (sigil::Symbol<decltype(function)>{#function})

/** In what the two toolkits differ. */
struct ToolkitTraits {
    const char* libraryFile;
    Symbol<int(void** context, char* folder)> init;
    Symbol<int(void** context)> finish;
    Symbol<int(void* context, int capacity, char* text)> getErrInfo;
    int notLoaded;     ///< code of every call while the library is not loaded
    int noErrorBuffer; ///< code of GetErrInfo with a null buffer
};

/** Whether a function declared as @p Function takes the context and arguments of exactly these types. Nothing is
 *  converted on the way to a toolkit: a number that changed its width would be another number there. */
template <class Function, class... A>
concept TakesAfterContext = std::is_same_v<Function, int(void*, A...)>;

struct CloseLibrary {
    void operator()(void* library) const { dlclose(library); }
};

template <const ToolkitTraits& Traits>
class Toolkit {
public:
    Toolkit() = default;
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    /** Loads the library from @p folder (not null) and has it make the context. A library whose init function is missing
     *  or fails stays loaded. */
    int Init(char* folder);
    /** Has the toolkit release the context and closes the library. */
    int Finish();
    /** The toolkit's current error text, at most @p length bytes of it, with the first eight bytes of @p buffer cleared
     *  first. */
    int GetErrInfo(int length, char* buffer);
    /** The error text that was kept when a call failed last; it may fill its field. */
    std::string_view errorText() const;

    /** Why a call with these requirements cannot be made: the library is not loaded, or one is not met. 0 when it can. */
    int refusal(Needs needs) const { return m_library ? unmet(needs) : Traits.notLoaded; }
    /** Whether the library, which must be loaded, has the function. */
    template <class Function>
    bool has(Symbol<Function> symbol) const
    {
        return find(symbol) != nullptr;
    }

    /** Calls @p symbol with the context and @p arguments. */
    template <class Function, class... A>
    requires TakesAfterContext<Function, A...>
    int call(Symbol<Function> symbol, Needs needs, A... arguments)
    {
        return invoke(symbol, needs, m_pContext, arguments...);
    }
    /** Calls @p symbol with @p arguments alone, as the byte-string functions are. */
    template <class Function, class... A>
    requires std::is_same_v<Function, int(A...)>
    int callWithoutContext(Symbol<Function> symbol, Needs needs, A... arguments)
    {
        return invoke(symbol, needs, arguments...);
    }

private:
    template <class Function, class... A>
    int invoke(Symbol<Function> symbol, Needs needs, A... arguments)
    {
        if (const int code = refusal(needs)) [[unlikely]]
            return code;
        Function* const function = find(symbol);
        if (!function) [[unlikely]]
            return SIGIL_NOT_SUPPORTED;
        const int result = function(arguments...);
        if (result != 0) [[unlikely]]
            captureErrorText();
        return result;
    }

    /** Looked up on every call: a library that lacks one function still serves all others. */
    template <class Function>
    Function* find(Symbol<Function> symbol) const
    {
        return reinterpret_cast<Function*>(dlsym(m_library.get(), symbol.name));
    }

    void captureErrorText();

    [[maybe_unused]] int m_nReserved = 0;
    char m_szErrorText[2048] = {};
    std::unique_ptr<void, CloseLibrary> m_library;
    void* m_pContext = nullptr;
};

inline constexpr ToolkitTraits makerToolkit{"libHVCToolkitV30.so", SYMBOL(HVTK_API_Init), SYMBOL(HVTK_API_Finish),
    SYMBOL(HVTK_API_GetErrInfo), SIGIL_MAKER_LIBRARY_MISSING, SIGIL_BAD_ARGUMENT};
inline constexpr ToolkitTraits gpkiToolkit{"libgpkiapi_v15.so", SYMBOL(GPKI_API_Init), SYMBOL(GPKI_API_Finish),
    SYMBOL(GPKI_API_GetErrInfo), SIGIL_GPKI_LIBRARY_MISSING, SIGIL_MISSING_FIELD};

extern template class Toolkit<makerToolkit>;
extern template class Toolkit<gpkiToolkit>;

} // namespace sigil
