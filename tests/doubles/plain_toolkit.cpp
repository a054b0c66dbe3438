// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A tiny toolkit that records nothing and shares nothing between contexts. It is built under both file names; each file
// holds both sets of names.

#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>

#define TOOLKIT extern "C" __attribute__((visibility("default")))

namespace {

constexpr int alwaysFails = 77;

int init(void** context, char* /*folder*/)
{
    static std::atomic<std::intptr_t> contexts{0};
    *context = reinterpret_cast<void*>(++contexts);
    return 0;
}

int number(void* context) { return static_cast<int>(reinterpret_cast<std::intptr_t>(context)); }

int write(void* context, int capacity, char* text, const char* what)
{
    std::snprintf(text, static_cast<std::size_t>(capacity), "%s of context %d", what, number(context));
    return 0;
}

int setData(unsigned char* data, int length, BINSTR* bytes)
{
    bytes->pData = static_cast<unsigned char*>(std::malloc(static_cast<std::size_t>(length)));
    bytes->nLength = bytes->pData ? length : 0;
    std::copy(data, data + bytes->nLength, bytes->pData);
    return 0;
}

int release(BINSTR* bytes)
{
    std::free(bytes->pData);
    *bytes = BINSTR{};
    return 0;
}

} // namespace

#define PLAIN_TOOLKIT(PREFIX)                                                                                      \
    TOOLKIT int PREFIX##_API_Init(void** context, char* folder) { return init(context, folder); }                  \
    TOOLKIT int PREFIX##_API_GetErrInfo(void* context, int capacity, char* text)                                   \
    {                                                                                                              \
        return write(context, capacity, text, "error");                                                            \
    }                                                                                                              \
    TOOLKIT int PREFIX##_BINSTR_Create(BINSTR* bytes)                                                              \
    {                                                                                                              \
        *bytes = BINSTR{};                                                                                         \
        return 0;                                                                                                  \
    }                                                                                                              \
    TOOLKIT int PREFIX##_BINSTR_SetData(unsigned char* data, int length, BINSTR* bytes)                            \
    {                                                                                                              \
        return setData(data, length, bytes);                                                                       \
    }                                                                                                              \
    TOOLKIT int PREFIX##_BINSTR_Delete(BINSTR* bytes) { return release(bytes); }                                   \
    TOOLKIT int PREFIX##_CERT_Load(void*, BINSTR*) { return 0; }                                                   \
    TOOLKIT int PREFIX##_CERT_Unload(void*) { return 0; }                                                          \
    TOOLKIT int PREFIX##_CERT_GetUID(void* context, int capacity, char* text)                                      \
    {                                                                                                              \
        return write(context, capacity, text, "holder");                                                           \
    }                                                                                                              \
    TOOLKIT int PREFIX##_CERT_GetSerialNum(void*, int, char*) { return alwaysFails; }

PLAIN_TOOLKIT(HVTK)
PLAIN_TOOLKIT(GPKI)
