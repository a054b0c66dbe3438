/** @file
 *  One toolkit library, loaded at run time: the mechanism that both backends share.
 *
 *  A backend method names its symbol, what it requires and what the toolkit receives; all else happens here, in one
 *  order: library loaded? arguments usable? symbol there? call it with the context first, and keep the toolkit's error
 *  text when it fails.
 */
#pragma once

#include "facade/argument.h"

#include <sigildesk/crypto/pkcs11.h>

#include <dlfcn.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace sigil {

/** In what the two toolkits differ. */
struct ToolkitTraits {
    const char* libraryFile;
    const char* init;
    const char* finish;
    const char* getErrInfo;
    int notLoaded;     ///< code of every call while the library is not loaded
    int noErrorBuffer; ///< code of GetErrInfo with a null buffer
};

/** Only these types cross to a toolkit, so that no argument changes its width on the way. */
template <class T>
constexpr bool isWire = std::disjunction_v<std::is_same<T, int>, std::is_same<T, bool>,
    std::is_same<T, unsigned long>, std::is_same<T, void*>, std::is_same<T, void**>, std::is_same<T, char*>,
    std::is_same<T, unsigned char*>, std::is_same<T, int*>, std::is_same<T, long*>, std::is_same<T, unsigned long*>,
    std::is_same<T, bool*>, std::is_same<T, BINSTR*>, std::is_same<T, PKCS11_TOKEN_INFO*>>;

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
    int refusal(Needs needs) const { return m_library ? needs.unmet : Traits.notLoaded; }
    /** Whether the library, which must be loaded, has the function. */
    bool has(const char* symbol) const { return dlsym(m_library.get(), symbol) != nullptr; }

    /** Calls @p symbol with the context and @p args. */
    template <class... A>
    int call(const char* symbol, Needs needs, A... args)
    {
        return invoke(symbol, needs, m_pContext, args...);
    }
    /** Calls @p symbol with @p args alone, as the byte-string functions are. */
    template <class... A>
    int callWithoutContext(const char* symbol, Needs needs, A... args)
    {
        return invoke(symbol, needs, args...);
    }

private:
    template <class... A>
    int invoke(const char* symbol, Needs needs, A... args)
    {
        static_assert((isWire<A> && ...), "only types that the toolkits take may cross");
        if (const int code = refusal(needs)) [[unlikely]]
            return code;
        const auto function = find<A...>(symbol);
        if (!function) [[unlikely]]
            return FunctionMissing;
        const int result = function(args...);
        if (result != 0) [[unlikely]]
            captureErrorText();
        return result;
    }

    /** Looked up on every call: a library that lacks one function still serves all others. */
    template <class... A>
    auto find(const char* symbol) const
    {
        return reinterpret_cast<int (*)(A...)>(dlsym(m_library.get(), symbol));
    }

    void captureErrorText();

    [[maybe_unused]] int m_nReserved = 0;
    char m_szErrorText[2048] = {};
    std::unique_ptr<void, CloseLibrary> m_library;
    void* m_pContext = nullptr;
};

inline constexpr ToolkitTraits makerToolkit{"libHVCToolkitV30.so", "HVTK_API_Init", "HVTK_API_Finish",
    "HVTK_API_GetErrInfo", MakerLibraryMissing, InvalidArgument};
inline constexpr ToolkitTraits gpkiToolkit{"libgpkiapi_v15.so", "GPKI_API_Init", "GPKI_API_Finish",
    "GPKI_API_GetErrInfo", GpkiLibraryMissing, MissingField};

extern template class Toolkit<makerToolkit>;
extern template class Toolkit<gpkiToolkit>;

} // namespace sigil
