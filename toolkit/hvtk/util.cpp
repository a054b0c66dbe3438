// HVTK_UTIL_, HVTK_BASE64_ and HVTK_PEM_: lists of objects, names and encodings.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_UTIL_AddObject(void* context, BINSTR* object, BINSTR* list)
{
    return call(context, [&](Context&) {
        ObjectList objects(inOptional(list));
        objects.add(in(object));
        replace(objects.encode(), list);
    });
}

TOOLKIT_FUNCTION HVTK_UTIL_GetObjectCount(void* context, BINSTR* list, int* count)
{
    return call(context, [&](Context&) { putValue(static_cast<int>(ObjectList(in(list)).size()), count); });
}

TOOLKIT_FUNCTION HVTK_UTIL_GetObject(void* context, BINSTR* list, int index, BINSTR* out)
{
    return call(context, [&](Context&) { put(ObjectList(in(list)).at(index), out); });
}

TOOLKIT_FUNCTION HVTK_UTIL_CompareDN(void* context, char* left, char* right)
{
    return call(context, [&](Context&) { require(sameName(in(left), in(right)), SIGIL_TK_NAMES_DIFFER); });
}

TOOLKIT_FUNCTION HVTK_BASE64_Encode(void* context, BINSTR* bytes, BINSTR* out)
{
    return call(context, [&](Context&) { put(view(base64(in(bytes))), out); });
}

TOOLKIT_FUNCTION HVTK_BASE64_Decode(void* context, BINSTR* text, BINSTR* out)
{
    return call(context, [&](Context&) { put(fromBase64(in(text)), out); });
}

TOOLKIT_FUNCTION HVTK_PEM_Encode(void* context, int type, BINSTR* der, BINSTR* out)
{
    return call(context, [&](Context&) { put(view(pemEncode(type, in(der))), out); });
}

/** The façade insists on data in the second record, so either one may be the input: the first when it holds data, else
 *  the second. The other one receives the result. */
TOOLKIT_FUNCTION HVTK_PEM_Decode(void* context, BINSTR* first, BINSTR* second)
{
    return call(context, [&](Context&) {
        const bool firstIsInput = !inOptional(first).empty();
        put(pemDecode(in(firstIsInput ? first : second)), firstIsInput ? second : first);
    });
}
