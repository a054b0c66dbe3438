// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// UTIL_, BASE64_ and PEM_: lists of objects, names and encodings. GPKI_CERT_ has the lists of certificates.

#include "toolkit/calls/util.h"
#include "toolkit/calls/cert.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_UTIL_AddObject(void* context, BINSTR* object, BINSTR* list)
{
    return call(context, calls::utilAddObject, object, list);
}

TOOLKIT_FUNCTION GPKI_CERT_AddCert(void* context, BINSTR* certificate, BINSTR* list)
{
    return call(context, calls::certAddCert, certificate, list);
}

TOOLKIT_FUNCTION HVTK_UTIL_GetObjectCount(void* context, BINSTR* list, int* count)
{
    return call(context, calls::utilGetObjectCount, list, count);
}
SAME_FUNCTION(GPKI_CERT_GetCertCount, HVTK_UTIL_GetObjectCount);

TOOLKIT_FUNCTION HVTK_UTIL_GetObject(void* context, BINSTR* list, int index, BINSTR* out)
{
    return call(context, calls::utilGetObject, list, index, out);
}

TOOLKIT_FUNCTION GPKI_CERT_GetCert(void* context, BINSTR* list, int index, BINSTR* certificate)
{
    return call(context, calls::certGetCert, list, index, certificate);
}

TOOLKIT_FUNCTION HVTK_UTIL_CompareDN(void* context, char* left, char* right)
{
    return call(context, calls::utilCompareDN, left, right);
}

TOOLKIT_FUNCTION HVTK_BASE64_Encode(void* context, BINSTR* bytes, BINSTR* out)
{
    return call(context, calls::base64Encode, bytes, out);
}
SAME_FUNCTION(GPKI_BASE64_Encode, HVTK_BASE64_Encode);

TOOLKIT_FUNCTION HVTK_BASE64_Decode(void* context, BINSTR* text, BINSTR* out)
{
    return call(context, calls::base64Decode, text, out);
}
SAME_FUNCTION(GPKI_BASE64_Decode, HVTK_BASE64_Decode);

TOOLKIT_FUNCTION HVTK_PEM_Encode(void* context, int type, BINSTR* der, BINSTR* out)
{
    return call(context, calls::pemEncode, type, der, out);
}

TOOLKIT_FUNCTION HVTK_PEM_Decode(void* context, BINSTR* first, BINSTR* second)
{
    return call(context, calls::pemDecode, first, second);
}
