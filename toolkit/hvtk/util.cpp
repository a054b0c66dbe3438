// HVTK_UTIL_, HVTK_BASE64_ and HVTK_PEM_: lists of objects, names and encodings.

#include "toolkit/calls/util.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_UTIL_AddObject(void* context, BINSTR* object, BINSTR* list)
{
    return call(context, calls::utilAddObject, object, list);
}

TOOLKIT_FUNCTION HVTK_UTIL_GetObjectCount(void* context, BINSTR* list, int* count)
{
    return call(context, calls::utilGetObjectCount, list, count);
}

TOOLKIT_FUNCTION HVTK_UTIL_GetObject(void* context, BINSTR* list, int index, BINSTR* out)
{
    return call(context, calls::utilGetObject, list, index, out);
}

TOOLKIT_FUNCTION HVTK_UTIL_CompareDN(void* context, char* left, char* right)
{
    return call(context, calls::utilCompareDN, left, right);
}

TOOLKIT_FUNCTION HVTK_BASE64_Encode(void* context, BINSTR* bytes, BINSTR* out)
{
    return call(context, calls::base64Encode, bytes, out);
}

TOOLKIT_FUNCTION HVTK_BASE64_Decode(void* context, BINSTR* text, BINSTR* out)
{
    return call(context, calls::base64Decode, text, out);
}

TOOLKIT_FUNCTION HVTK_PEM_Encode(void* context, int type, BINSTR* der, BINSTR* out)
{
    return call(context, calls::pemEncode, type, der, out);
}

TOOLKIT_FUNCTION HVTK_PEM_Decode(void* context, BINSTR* first, BINSTR* second)
{
    return call(context, calls::pemDecode, first, second);
}
