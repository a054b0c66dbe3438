// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/toolkit/toolkit_library.h"

#include <dlfcn.h>

#include <array>
#include <stdexcept>

namespace toolkit_test {

ToolkitLibrary::ToolkitLibrary(const std::string& prefix)
    : m_prefix(prefix)
{
    const std::string file = prefix == "HVTK_" ? "/libHVCToolkitV30.so" : "/libgpkiapi_v15.so";
    m_handle = dlopen((SIGILDESK_LIBRARY_FOLDER + file).c_str(), RTLD_LAZY);
    if (!m_handle)
        throw std::runtime_error(dlerror());
    if (bare("API_Init", &m_context, text(SIGILDESK_LIBRARY_FOLDER)) != 0)
        throw std::runtime_error("the toolkit cannot be initialised");
}

ToolkitLibrary::~ToolkitLibrary()
{
    bare("API_Finish", &m_context);
    dlclose(m_handle);
}

std::string ToolkitLibrary::errorText() const
{
    std::array<char, 2048> text{};
    (*this)("API_GetErrInfo", static_cast<int>(text.size()), text.data());
    return text.data();
}

void* ToolkitLibrary::find(const std::string& function) const
{
    return dlsym(m_handle, (m_prefix + function).c_str());
}

void* ToolkitLibrary::require(const std::string& function) const
{
    void* const symbol = find(function);
    if (!symbol)
        throw std::runtime_error("no " + m_prefix + function);
    return symbol;
}

} // namespace toolkit_test
