// HVTK_API_ and HVTK_BINSTR_: the context, its settings and the byte strings.

#include "toolkit/calls/api.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_API_Init(void** context, char*) { return init(context); }

TOOLKIT_FUNCTION HVTK_API_Finish(void** context) { return finish(context); }

TOOLKIT_FUNCTION HVTK_API_GetErrInfo(void* context, int capacity, char* out)
{
    return errorText(context, capacity, out);
}

TOOLKIT_FUNCTION HVTK_API_GetInfo(void* context, char* version, char* information)
{
    return call(context, calls::apiGetVersions, version, information);
}

TOOLKIT_FUNCTION HVTK_API_SetConfFile(void* context, char* path)
{
    return call(context, calls::apiSetOptionalConfFile, path);
}

TOOLKIT_FUNCTION HVTK_API_SetHashAlgo(void* context, int algorithm)
{
    return call(context, calls::apiSetHashAlgo, algorithm);
}

TOOLKIT_FUNCTION HVTK_BINSTR_Create(BINSTR* bytes)
{
    return call([&] { calls::binstrCreate(bytes); });
}

TOOLKIT_FUNCTION HVTK_BINSTR_Delete(BINSTR* bytes)
{
    return call([&] { calls::binstrDelete(bytes); });
}

TOOLKIT_FUNCTION HVTK_BINSTR_SetData(unsigned char* data, int length, BINSTR* out)
{
    return call([&] { calls::binstrSetData(data, length, out); });
}
