// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/tools/toolkit.h"

#include <dlfcn.h>
#include <stdexcept>

namespace {

BINSTR view(const std::string& bytes)
{
    BINSTR record{};
    record.pData = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
    record.nLength = static_cast<int>(bytes.size());
    return record;
}

template <class... Arguments>
auto lookup(void* library, const char* symbol)
{
    auto* function = reinterpret_cast<int (*)(Arguments...)>(dlsym(library, symbol));
    if (!function)
        throw std::runtime_error(std::string("no symbol ") + symbol);
    return function;
}

} // namespace

template <class... Arguments>
int Toolkit::call(const char* symbol, Arguments... arguments)
{
    return lookup<void*, Arguments...>(m_library, symbol)(m_context, arguments...);
}

Toolkit::Toolkit()
    : m_library(dlopen(SIGILDESK_LIBRARY_FOLDER "/libHVCToolkitV30.so", RTLD_LAZY))
{
    if (!m_library)
        throw std::runtime_error(dlerror());
    char folder[] = SIGILDESK_LIBRARY_FOLDER;
    lookup<void**, char*>(m_library, "HVTK_API_Init")(&m_context, folder);
}

Toolkit::~Toolkit()
{
    lookup<void**>(m_library, "HVTK_API_Finish")(&m_context);
    dlclose(m_library);
}

std::string Toolkit::take(BINSTR& bytes)
{
    const std::string content(reinterpret_cast<char*>(bytes.pData), static_cast<std::size_t>(bytes.nLength));
    lookup<BINSTR*>(m_library, "HVTK_BINSTR_Delete")(&bytes);
    return content;
}

std::string Toolkit::decryptKey(const std::string& file, const std::string& password)
{
    BINSTR in = view(file);
    BINSTR out{};
    std::string word = password;
    call<char*, BINSTR*, BINSTR*>("HVTK_PRIKEY_Decrypt", word.data(), &in, &out);
    return take(out);
}

std::string Toolkit::randomOf(const std::string& key)
{
    BINSTR in = view(key);
    BINSTR out{};
    call<BINSTR*, BINSTR*>("HVTK_VID_GetRandomFromPriKey", &in, &out);
    return take(out);
}

std::pair<std::string, std::string> Toolkit::importPfx(const std::string& file, const std::string& password)
{
    BINSTR in = view(file);
    BINSTR certificate{};
    BINSTR key{};
    BINSTR others{};
    std::string word = password;
    call<char*, BINSTR*, BINSTR*, BINSTR*, BINSTR*>(
        "HVTK_PFX_Import", word.data(), &in, &certificate, &key, &others);
    take(others);
    return {take(certificate), take(key)};
}

int Toolkit::checkPair(const std::string& certificate, const std::string& key)
{
    BINSTR first = view(certificate);
    BINSTR second = view(key);
    return call<BINSTR*, BINSTR*>("HVTK_PRIKEY_CheckKeyPair", &first, &second);
}

int Toolkit::verifyIdentity(const std::string& certificate, const std::string& random, std::string number)
{
    BINSTR first = view(certificate);
    BINSTR second = view(random);
    return call<BINSTR*, BINSTR*, char*>("HVTK_VID_Verify", &first, &second, number.data());
}
