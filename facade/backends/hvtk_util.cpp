// Object lists, names and trust of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::UTILAddObject(BINSTR* object, BINSTR* list)
{
    return m_toolkit.call("HVTK_UTIL_AddObject", {need(object)}, object, list);
}

int CHVTKWrap::UTILGetObjectCount(BINSTR* list, int* count)
{
    return m_toolkit.call("HVTK_UTIL_GetObjectCount", {need(list), need(count)}, list, count);
}

int CHVTKWrap::UTILGetObject(BINSTR* list, int index, BINSTR* object)
{
    return m_toolkit.call("HVTK_UTIL_GetObject", {need(list)}, list, index, object);
}

int CHVTKWrap::UTILCompareDN(char* name1, char* name2)
{
    return m_toolkit.call("HVTK_UTIL_CompareDN", {need(name1), need(name2)}, name1, name2);
}

int CHVTKWrap::UTILGetCertPath(BINSTR* certificate, BINSTR* path)
{
    return m_toolkit.call("HVTK_UTIL_GetCertPath", {need(certificate)}, certificate, path);
}

int CHVTKWrap::UTILGetRootCert(BINSTR* certificate, BINSTR* root)
{
    return m_toolkit.call("HVTK_UTIL_GetRootCert", {need(certificate)}, certificate, root);
}

int CHVTKWrap::UTILIsTrustCert(BINSTR* certificate, BINSTR* trusted, bool* isTrusted)
{
    return m_toolkit.call("HVTK_UTIL_IsTrustCert", {need(certificate), need(trusted), need(isTrusted)}, certificate,
        trusted, isTrusted);
}
