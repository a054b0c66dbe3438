// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// API_ and BINSTR_: the context, its settings and the byte strings.

#include "toolkit/calls/api.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_API_Init(void** context, char*) { return init(context); }
SAME_FUNCTION(GPKI_API_Init, HVTK_API_Init);

TOOLKIT_FUNCTION HVTK_API_Finish(void** context) { return finish(context); }
SAME_FUNCTION(GPKI_API_Finish, HVTK_API_Finish);

TOOLKIT_FUNCTION HVTK_API_GetErrInfo(void* context, int capacity, char* out)
{
    return errorText(context, capacity, out);
}
SAME_FUNCTION(GPKI_API_GetErrInfo, HVTK_API_GetErrInfo);

TOOLKIT_FUNCTION GPKI_API_GetVersion(void* context, int capacity, char* out)
{
    return call(context, calls::apiGetVersion, capacity, out);
}

TOOLKIT_FUNCTION HVTK_API_GetInfo(void* context, char* version, char* information)
{
    return call(context, calls::apiGetVersions, version, information);
}

TOOLKIT_FUNCTION GPKI_API_GetInfo(void* context, int capacity, char* out)
{
    return call(context, calls::apiGetInfo, capacity, out);
}

TOOLKIT_FUNCTION GPKI_API_SetOption(void* context, int option)
{
    return call(context, calls::apiSetOption, option);
}

TOOLKIT_FUNCTION HVTK_API_SetConfFile(void* context, char* path)
{
    return call(context, calls::apiSetOptionalConfFile, path);
}

TOOLKIT_FUNCTION GPKI_API_SetConfFile(void* context, char* path)
{
    return call(context, calls::apiSetConfFile, path);
}

TOOLKIT_FUNCTION GPKI_API_Str2Time(void* context, char* text, long* time)
{
    return call(context, calls::apiStr2Time, text, time);
}

TOOLKIT_FUNCTION HVTK_API_SetHashAlgo(void* context, int algorithm)
{
    return call(context, calls::apiSetHashAlgo, algorithm);
}
SAME_FUNCTION(GPKI_API_SetHashAlgo, HVTK_API_SetHashAlgo);

// A host makes and releases byte strings around every other call: these three do not ask OpenSSL, which they do not reach.

TOOLKIT_FUNCTION HVTK_BINSTR_Create(BINSTR* bytes)
{
    return call<ErrnoScope>([&] { calls::binstrCreate(bytes); });
}
SAME_FUNCTION(GPKI_BINSTR_Create, HVTK_BINSTR_Create);

TOOLKIT_FUNCTION HVTK_BINSTR_Delete(BINSTR* bytes)
{
    return call<ErrnoScope>([&] { calls::binstrDelete(bytes); });
}
SAME_FUNCTION(GPKI_BINSTR_Delete, HVTK_BINSTR_Delete);

TOOLKIT_FUNCTION HVTK_BINSTR_SetData(unsigned char* data, int length, BINSTR* out)
{
    return call<ErrnoScope>([&] { calls::binstrSetData(data, length, out); });
}
SAME_FUNCTION(GPKI_BINSTR_SetData, HVTK_BINSTR_SetData);
