// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "facade/backends/toolkit.h"

#include "foundation/secret.h"
#include "foundation/text_field.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace sigil {

template <const ToolkitTraits& Traits>
Toolkit<Traits>::~Toolkit()
{
    m_library.reset(); // the toolkit's finish function is deliberately not called: only Finish does that
    m_pContext = nullptr;
    wipe(m_szErrorText, sizeof m_szErrorText);
}

template <const ToolkitTraits& Traits>
int Toolkit<Traits>::Init(char* folder)
{
    char path[pathCapacity] = {};
    // A path that is too long is cut, and the cut path is what is opened.
    static_cast<void>(std::snprintf(path, sizeof path - 1, "%s/%s", folder, Traits.libraryFile));
    errno = 0;
    m_library.reset(dlopen(path, RTLD_LAZY));
    if (!m_library)
        return errno == ENOMEM ? SIGIL_NO_MEMORY : Traits.notLoaded;
    return callWithoutContext(Traits.init, {}, &m_pContext, folder);
}

template <const ToolkitTraits& Traits>
int Toolkit<Traits>::Finish()
{
    if (m_library && m_pContext)
        if (const auto finish = find(Traits.finish))
            finish(&m_pContext);
    m_pContext = nullptr;
    m_library.reset();
    wipe(m_szErrorText, sizeof m_szErrorText);
    return SIGIL_SUCCESS;
}

template <const ToolkitTraits& Traits>
int Toolkit<Traits>::GetErrInfo(int length, char* buffer)
{
    if (!m_library)
        return Traits.notLoaded;
    if (!buffer)
        return Traits.noErrorBuffer;
    // Cleared before anything can fail, so that a caller never takes an older text for this error's.
    std::memset(buffer, 0, 8);
    char text[2049] = {};
    const auto getErrInfo = find(Traits.getErrInfo);
    if (!getErrInfo)
        return SIGIL_NOT_SUPPORTED;
    if (const int result = getErrInfo(m_pContext, sizeof text - 1, text))
        return result;
    limitedCopy(buffer, length, fieldText(text));
    return SIGIL_SUCCESS;
}

template <const ToolkitTraits& Traits>
std::string_view Toolkit<Traits>::errorText() const
{
    return fieldText(m_szErrorText);
}

template <const ToolkitTraits& Traits>
void Toolkit<Traits>::captureErrorText()
{
    GetErrInfo(sizeof m_szErrorText, m_szErrorText); // the failure that is being reported counts, not this one's
}

template class Toolkit<makerToolkit>;
template class Toolkit<gpkiToolkit>;

} // namespace sigil
