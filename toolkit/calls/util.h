// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Lists of objects, names and encodings: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

namespace toolkit::calls {

inline void utilAddObject(Context&, BINSTR* object, BINSTR* list)
{
    ObjectList objects(inOptional(list));
    objects.add(in(object));
    replace(objects.encode(), list);
}

inline void utilGetObjectCount(Context&, BINSTR* list, int* count)
{
    putValue(static_cast<int>(ObjectList(in(list)).size()), count);
}

inline void utilGetObject(Context&, BINSTR* list, int index, BINSTR* out)
{
    put(ObjectList(in(list)).at(index), out);
}

inline void utilCompareDN(Context&, char* left, char* right)
{
    require(sameName(in(left), in(right)), SIGIL_TK_NAMES_DIFFER);
}

inline void base64Encode(Context&, BINSTR* bytes, BINSTR* out) { put(view(base64(in(bytes))), out); }

inline void base64Decode(Context&, BINSTR* text, BINSTR* out) { put(fromBase64(in(text)), out); }

inline void pemEncode(Context&, int type, BINSTR* der, BINSTR* out)
{
    put(view(toolkit::pemEncode(type, in(der))), out);
}

/** The façade insists on data in the second record, so either one may be the input: the first when it holds data, else
 *  the second. The other one receives the result. */
inline void pemDecode(Context&, BINSTR* first, BINSTR* second)
{
    const bool firstIsInput = !inOptional(first).empty();
    put(toolkit::pemDecode(in(firstIsInput ? first : second)), firstIsInput ? second : first);
}

} // namespace toolkit::calls
