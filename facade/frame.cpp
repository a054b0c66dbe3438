// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The handle's life cycle, error texts, settings and byte strings.

#include "facade/row.h"
#include "foundation/secret.h"
#include "foundation/text_field.h"

#include <sigildesk/crypto/frame.h>

#include <new>

using namespace sigil;

namespace {

bool isToolkitType(int type) { return type == SIGIL_TOOLKIT_MAKER || type == SIGIL_TOOLKIT_GPKI; }
bool isFolder(const char* folder) { return folder && *folder; }

/** Puts a new backend into @p slot and initialises it. The backend is stored first: when Init fails, the handle is bound
 *  to a backend that answers every call with its code. An earlier backend of the slot is deliberately left alone, neither
 *  finished nor freed: a host may still hold byte strings of its toolkit. */
template <class Backend>
int bindBackend(std::unique_ptr<Backend>& slot, char* folder)
{
    static_cast<void>(slot.release());
    slot.reset(new (std::nothrow) Backend);
    return slot ? slot->Init(folder) : SIGIL_NO_MEMORY;
}

/** Ends a backend thoroughly: the toolkit's finish function, then the object. */
template <class Backend>
void finishBackend(std::unique_ptr<Backend>& slot)
{
    if (slot)
        slot->Finish();
    slot.reset();
}

} // namespace

// Operations

CWrapperAPI::CWrapperAPI() = default;

CWrapperAPI::~CWrapperAPI()
{
    m_nToolkitType = 0;
    m_pHVTKWrap.reset();
    m_pGPKIWrap.reset();
    wipe(m_szFolder, sizeof m_szFolder);
}

int CWrapperAPI::Initalize(int toolkitType, char* libraryFolder)
{
    if (!isToolkitType(toolkitType))
        return SIGIL_UNKNOWN_TOOLKIT;
    if (!isFolder(libraryFolder))
        return SIGIL_NO_LIBRARY_FOLDER;
    copyText(m_szFolder, libraryFolder);
    m_nToolkitType = toolkitType;
    return toolkitType == SIGIL_TOOLKIT_MAKER ? bindBackend(m_pHVTKWrap, m_szFolder)
                                              : bindBackend(m_pGPKIWrap, m_szFolder);
}

int CWrapperAPI::Finish()
{
    finishBackend(m_pHVTKWrap);
    finishBackend(m_pGPKIWrap);
    return SIGIL_SUCCESS;
}

int CWrapperAPI::GetErrInfo(int length, char* buffer)
{
    const auto ask = [=](auto& backend) { return backend.GetErrInfo(length, buffer); };
    return pick({}, ask, ask);
}

int CWrapperAPI::GetErrInfo2(int length, char* buffer)
{
    const auto copyKeptText = [=](const auto& backend) -> int {
        if (const auto text = backend.ErrorText(); !text.empty())
            limitedCopy(buffer, length, text);
        return SIGIL_SUCCESS;
    };
    return pick({}, copyKeptText, copyKeptText);
}

int CWrapperAPI::GetVersion(int length, char* buffer)
{
    const auto askMaker = [=](CHVTKWrap& backend) {
        char info[1024] = {}; // written and discarded; the toolkit is told no capacity
        return backend.GetInfo(buffer, info);
    };
    return pick({}, askMaker, [=](CGPKIWrap& backend) { return backend.GetVersion(length, buffer); });
}

int CWrapperAPI::SetOption(int option)
{
    return pick({}, absent, [=](CGPKIWrap& backend) { return backend.SetOption(option); });
}

int CWrapperAPI::SetConfFile(char* confFile)
{
    const auto set = [=](auto& backend) { return backend.SetConfFile(confFile); };
    return pick({}, set, set);
}

int CWrapperAPI::SetCaPubs(BINSTR* caPubs)
{
    const auto set = [=](auto& backend) { return backend.SetCaPubs(caPubs); };
    return pick({}, set, set);
}

int CWrapperAPI::FreeCaPubs()
{
    const auto free = [](auto& backend) { return backend.FreeCaPubs(); };
    return pick({}, free, free);
}

int CWrapperAPI::Str2Time(char* timeText, long* time)
{
    return pick({}, absent, [=](CGPKIWrap& backend) { return backend.Str2Time(timeText, time); });
}

int CWrapperAPI::SetHashAlg(int hashAlgorithm)
{
    const auto set = [=](auto& backend) { return backend.SetHashAlgo(hashAlgorithm); };
    return pick({}, set, set);
}

int CWrapperAPI::BINCreate(BINSTR* binStr)
{
    const auto create = [=](auto& backend) { return backend.BINSTR_Create(binStr); };
    return pick({}, create, create);
}

int CWrapperAPI::BINDelete(BINSTR* binStr)
{
    const auto remove = [=](auto& backend) { return backend.BINSTR_Delete(binStr); };
    return pick({}, remove, remove);
}

int CWrapperAPI::BINSetData(unsigned char* data, int length, BINSTR* binStr)
{
    const auto set = [=](auto& backend) { return backend.BINSTR_SetData(data, length, binStr); };
    return pick({}, set, set);
}

// Exports

int HV_Initalize(void** handle, int toolkitType, char* libraryFolder)
{
    if (!isToolkitType(toolkitType))
        return SIGIL_UNKNOWN_TOOLKIT;
    if (!isFolder(libraryFolder))
        return SIGIL_NO_LIBRARY_FOLDER;
    if (!handle)
        return SIGIL_NO_HANDLE;
    if (!*handle)
        *handle = new (std::nothrow) CWrapperAPI; // the caller's until HV_Finish
    if (!*handle)
        return SIGIL_NO_MEMORY;
    return static_cast<CWrapperAPI*>(*handle)->Initalize(toolkitType, libraryFolder);
}

void HV_Finish(void* handle)
{
    std::unique_ptr<CWrapperAPI>(static_cast<CWrapperAPI*>(handle)).reset();
    clearTraces();
}

int HV_GetErrInfo(void* handle, int bufferLength, char* buffer)
{
    return via(handle, &CWrapperAPI::GetErrInfo, bufferLength, buffer);
}

int HV_GetErrInfo2(void* handle, int bufferLength, char* buffer)
{
    return via(handle, &CWrapperAPI::GetErrInfo2, bufferLength, buffer);
}

int HV_GetVersion(void* handle, int bufferLength, char* buffer)
{
    return via(handle, &CWrapperAPI::GetVersion, bufferLength, buffer);
}

int HV_SetOption(void* handle, int option) { return via(handle, &CWrapperAPI::SetOption, option); }
int HV_SetConfFile(void* handle, char* confFile) { return via(handle, &CWrapperAPI::SetConfFile, confFile); }
int HV_SetCaPubs(void* handle, BINSTR* caPubs) { return via(handle, &CWrapperAPI::SetCaPubs, caPubs); }
int HV_FreeCaPubs(void* handle) { return via(handle, &CWrapperAPI::FreeCaPubs); }
int HV_Str2Time(void* handle, char* timeText, long* time)
{
    return via(handle, &CWrapperAPI::Str2Time, timeText, time);
}
int HV_SetHashAlg(void* handle, int hashAlgorithm) { return via(handle, &CWrapperAPI::SetHashAlg, hashAlgorithm); }
int HV_BINSTR_Create(void* handle, BINSTR* binStr) { return via(handle, &CWrapperAPI::BINCreate, binStr); }

int HV_BINSTR_Delete(void* handle, BINSTR* binStr)
{
    // A record that was never filled needs no toolkit, so clean-up code may delete every record it created.
    if (handle && binStr && binStr->nLength < 1)
        return SIGIL_SUCCESS;
    return via(handle, &CWrapperAPI::BINDelete, binStr);
}

int HV_BINSTR_SetData(void* handle, unsigned char* data, int length, BINSTR* binStr)
{
    const int result = via(handle, &CWrapperAPI::BINSetData, data, length, binStr);
    clearRegisters(); // what was copied may be a key
    return result;
}
