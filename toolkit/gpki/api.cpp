// GPKI_API_, GPKI_BINSTR_ and GPKI_BASE64_: the context, its settings, byte strings and their text form.

#include "toolkit/calls/api.h"
#include "toolkit/calls/util.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_API_Init(void** context, char*) { return init(context); }

TOOLKIT_FUNCTION GPKI_API_Finish(void** context) { return finish(context); }

TOOLKIT_FUNCTION GPKI_API_GetErrInfo(void* context, int capacity, char* out)
{
    return errorText(context, capacity, out);
}

TOOLKIT_FUNCTION GPKI_API_GetVersion(void* context, int capacity, char* out)
{
    return call(context, calls::apiGetVersion, capacity, out);
}

TOOLKIT_FUNCTION GPKI_API_GetInfo(void* context, int capacity, char* out)
{
    return call(context, calls::apiGetInfo, capacity, out);
}

TOOLKIT_FUNCTION GPKI_API_SetOption(void* context, int option)
{
    return call(context, calls::apiSetOption, option);
}

TOOLKIT_FUNCTION GPKI_API_SetConfFile(void* context, char* path)
{
    return call(context, calls::apiSetConfFile, path);
}

TOOLKIT_FUNCTION GPKI_API_Str2Time(void* context, char* text, long* time)
{
    return call(context, calls::apiStr2Time, text, time);
}

TOOLKIT_FUNCTION GPKI_API_SetHashAlgo(void* context, int algorithm)
{
    return call(context, calls::apiSetHashAlgo, algorithm);
}

TOOLKIT_FUNCTION GPKI_BINSTR_Create(BINSTR* bytes)
{
    return call([&] { calls::binstrCreate(bytes); });
}

TOOLKIT_FUNCTION GPKI_BINSTR_Delete(BINSTR* bytes)
{
    return call([&] { calls::binstrDelete(bytes); });
}

TOOLKIT_FUNCTION GPKI_BINSTR_SetData(unsigned char* data, int length, BINSTR* out)
{
    return call([&] { calls::binstrSetData(data, length, out); });
}

TOOLKIT_FUNCTION GPKI_BASE64_Encode(void* context, BINSTR* bytes, BINSTR* out)
{
    return call(context, calls::base64Encode, bytes, out);
}

TOOLKIT_FUNCTION GPKI_BASE64_Decode(void* context, BINSTR* text, BINSTR* out)
{
    return call(context, calls::base64Decode, text, out);
}
