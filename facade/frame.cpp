// The handle's life cycle, error texts, settings and byte strings.

#include "facade/dispatch.h"
#include "foundation/secret.h"
#include "foundation/text_field.h"

#include <sigildesk/crypto/frame.h>

#include <new>

using namespace sigil;

namespace {

bool isToolkitType(int type) { return type == 0 || type == 1; }
bool isFolder(const char* folder) { return folder && *folder; }

/** Puts a new backend into @p slot and initialises it. The backend is stored first: when Init fails, the handle is bound
 *  to a backend that answers every call with its code. An earlier backend of the slot is deliberately left alone, neither
 *  finished nor freed: a host may still hold byte strings of its toolkit. */
template <class Backend>
int bindBackend(std::unique_ptr<Backend>& slot, char* folder)
{
    static_cast<void>(slot.release());
    slot.reset(new (std::nothrow) Backend);
    return slot ? slot->Init(folder) : NoMemory;
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
        return UnknownToolkit;
    if (!isFolder(libraryFolder))
        return NoLibraryFolder;
    copyText(m_szFolder, libraryFolder);
    m_nToolkitType = toolkitType;
    return toolkitType == 0 ? bindBackend(m_pHVTKWrap, m_szFolder) : bindBackend(m_pGPKIWrap, m_szFolder);
}

int CWrapperAPI::Finish()
{
    finishBackend(m_pHVTKWrap);
    finishBackend(m_pGPKIWrap);
    return Success;
}

int CWrapperAPI::GetErrInfo(int length, char* buffer)
{
    return pick({}, to<&CHVTKWrap::GetErrInfo>(length, buffer), to<&CGPKIWrap::GetErrInfo>(length, buffer));
}

int CWrapperAPI::GetErrInfo2(int length, char* buffer)
{
    const auto copyKeptText = [=](const auto& backend) -> int {
        if (const auto text = backend.ErrorText(); !text.empty())
            limitedCopy(buffer, length, text);
        return Success;
    };
    return pick({}, copyKeptText, copyKeptText);
}

int CWrapperAPI::GetVersion(int length, char* buffer)
{
    char info[1024] = {}; // written by the maker toolkit and discarded; it is told no capacity
    return pick(
        {}, to<&CHVTKWrap::GetInfo>(buffer, static_cast<char*>(info)), to<&CGPKIWrap::GetVersion>(length, buffer));
}

int CWrapperAPI::SetOption(int option) { return pick({}, absent, to<&CGPKIWrap::SetOption>(option)); }

int CWrapperAPI::SetConfFile(char* confFile)
{
    return pick({}, to<&CHVTKWrap::SetConfFile>(confFile), to<&CGPKIWrap::SetConfFile>(confFile));
}

int CWrapperAPI::SetCaPubs(BINSTR* caPubs)
{
    return pick({}, to<&CHVTKWrap::SetCaPubs>(caPubs), to<&CGPKIWrap::SetCaPubs>(caPubs));
}

int CWrapperAPI::FreeCaPubs() { return pick({}, to<&CHVTKWrap::FreeCaPubs>(), to<&CGPKIWrap::FreeCaPubs>()); }

int CWrapperAPI::Str2Time(char* timeText, long* time)
{
    return pick({}, absent, to<&CGPKIWrap::Str2Time>(timeText, time));
}

int CWrapperAPI::SetHashAlg(int hashAlgorithm)
{
    return pick({}, to<&CHVTKWrap::SetHashAlgo>(hashAlgorithm), to<&CGPKIWrap::SetHashAlgo>(hashAlgorithm));
}

int CWrapperAPI::BINCreate(BINSTR* binStr)
{
    return pick({}, to<&CHVTKWrap::BINSTR_Create>(binStr), to<&CGPKIWrap::BINSTR_Create>(binStr));
}

int CWrapperAPI::BINDelete(BINSTR* binStr)
{
    return pick({}, to<&CHVTKWrap::BINSTR_Delete>(binStr), to<&CGPKIWrap::BINSTR_Delete>(binStr));
}

int CWrapperAPI::BINSetData(unsigned char* data, int length, BINSTR* binStr)
{
    return pick({}, to<&CHVTKWrap::BINSTR_SetData>(data, length, binStr),
        to<&CGPKIWrap::BINSTR_SetData>(data, length, binStr));
}

// Exports

int HV_Initalize(void** handle, int toolkitType, char* libraryFolder)
{
    if (!isToolkitType(toolkitType))
        return UnknownToolkit;
    if (!isFolder(libraryFolder))
        return NoLibraryFolder;
    if (!handle)
        return NotInitialised;
    if (!*handle)
        *handle = new (std::nothrow) CWrapperAPI; // the caller's until HV_Finish
    if (!*handle)
        return NoMemory;
    return static_cast<CWrapperAPI*>(*handle)->Initalize(toolkitType, libraryFolder);
}

void HV_Finish(void* handle) { std::unique_ptr<CWrapperAPI>(static_cast<CWrapperAPI*>(handle)).reset(); }

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
        return Success;
    return via(handle, &CWrapperAPI::BINDelete, binStr);
}

int HV_BINSTR_SetData(void* handle, unsigned char* data, int length, BINSTR* binStr)
{
    return via(handle, &CWrapperAPI::BINSetData, data, length, binStr);
}
