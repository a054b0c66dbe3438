// HVTK_API_ and HVTK_BINSTR_: the context, its settings and the byte strings.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/settings.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_API_Init(void** context, char*) { return init(context); }

TOOLKIT_FUNCTION HVTK_API_Finish(void** context) { return finish(context); }

TOOLKIT_FUNCTION HVTK_API_GetErrInfo(void* context, int capacity, char* out)
{
    return errorText(context, capacity, out);
}

/** Both texts are shorter than 64 bytes, terminator included: no capacity is passed. */
TOOLKIT_FUNCTION HVTK_API_GetInfo(void* context, char* version, char* information)
{
    return call(context, [&](Context&) {
        require(version && information, SIGIL_TK_ARGUMENT);
        putText(versionText, versionCapacity, version);
        putText(opensslVersion(), versionCapacity, information);
    });
}

TOOLKIT_FUNCTION HVTK_API_SetConfFile(void* context, char* path)
{
    return call(context, [&](Context&) { requireConfFile(inOptional(path)); });
}

TOOLKIT_FUNCTION HVTK_API_SetHashAlgo(void* context, int algorithm)
{
    return call(context, [&](Context& state) { setHashAlgorithm(state, algorithm); });
}

TOOLKIT_FUNCTION HVTK_BINSTR_Create(BINSTR* bytes)
{
    return call([&] { putValue(BINSTR{}, bytes); });
}

TOOLKIT_FUNCTION HVTK_BINSTR_Delete(BINSTR* bytes)
{
    return call([&] {
        require(bytes != nullptr, SIGIL_TK_ARGUMENT);
        release(bytes);
    });
}

TOOLKIT_FUNCTION HVTK_BINSTR_SetData(unsigned char* data, int length, BINSTR* out)
{
    return call([&] {
        require(data && length > 0, SIGIL_TK_ARGUMENT);
        put({data, static_cast<std::size_t>(length)}, out);
    });
}
