// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Object lists, names and trust.

#include "facade/row.h"

#include <sigildesk/crypto/util.h>

using namespace sigil;

int UTILAddObject(void* handle, BINSTR* object, BINSTR* list)
{
    return secretRow(handle, {need(object)}, maker(SYMBOL(HVTK_UTIL_AddObject), object, list), absent);
}

int UTILGetObjectCount(void* handle, BINSTR* list, int* count)
{
    return row(handle, {need(list)}, maker(SYMBOL(HVTK_UTIL_GetObjectCount), {need(count)}, list, count), absent);
}

int UTILGetObject(void* handle, BINSTR* list, int index, BINSTR* object)
{
    return secretRow(handle, {need(list)}, maker(SYMBOL(HVTK_UTIL_GetObject), list, index, object), absent);
}

int UTILCompareDN(void* handle, char* name1, char* name2)
{
    return row(handle, {need(name1), need(name2)}, maker(SYMBOL(HVTK_UTIL_CompareDN), name1, name2), absent);
}

int UTILGetCertPath(void* handle, BINSTR* certificate, BINSTR* path)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_UTIL_GetCertPath), certificate, path), absent);
}

int UTILGetRootCert(void* handle, BINSTR* certificate, BINSTR* root)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_UTIL_GetRootCert), certificate, root), absent);
}

int UTILIsTrustCert(void* handle, BINSTR* certificate, BINSTR* trusted, bool* isTrusted)
{
    return row(handle, {need(certificate), need(trusted)},
        maker(SYMBOL(HVTK_UTIL_IsTrustCert), {need(isTrusted)}, certificate, trusted, isTrusted), absent);
}
