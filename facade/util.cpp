// Object lists, names and trust.

#include "facade/dispatch.h"

#include <sigildesk/crypto/util.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::UTILAddObject(BINSTR* object, BINSTR* list)
{
    return pick({need(object)}, to<&CHVTKWrap::UTILAddObject>(object, list), absent);
}

int CWrapperAPI::UTILGetObjectCount(BINSTR* list, int* count)
{
    return pick({need(list)}, to<&CHVTKWrap::UTILGetObjectCount>(list, count), absent);
}

int CWrapperAPI::UTILGetObject(BINSTR* list, int index, BINSTR* object)
{
    return pick({need(list)}, to<&CHVTKWrap::UTILGetObject>(list, index, object), absent);
}

int CWrapperAPI::UTILCompareDN(char* name1, char* name2)
{
    return pick({need(name1), need(name2)}, to<&CHVTKWrap::UTILCompareDN>(name1, name2), absent);
}

int CWrapperAPI::UTILGetCertPath(BINSTR* certificate, BINSTR* path)
{
    return pick({need(certificate)}, to<&CHVTKWrap::UTILGetCertPath>(certificate, path), absent);
}

int CWrapperAPI::UTILGetRootCert(BINSTR* certificate, BINSTR* root)
{
    return pick({need(certificate)}, to<&CHVTKWrap::UTILGetRootCert>(certificate, root), absent);
}

int CWrapperAPI::UTILIsTrustCert(BINSTR* certificate, BINSTR* trusted, bool* isTrusted)
{
    return pick({need(certificate), need(trusted)},
        to<&CHVTKWrap::UTILIsTrustCert>(certificate, trusted, isTrusted), absent);
}

// Exports

int UTILAddObject(void* handle, BINSTR* object, BINSTR* list)
{
    return via(handle, &CWrapperAPI::UTILAddObject, object, list);
}

int UTILGetObjectCount(void* handle, BINSTR* list, int* count)
{
    return via(handle, &CWrapperAPI::UTILGetObjectCount, list, count);
}

int UTILGetObject(void* handle, BINSTR* list, int index, BINSTR* object)
{
    return via(handle, &CWrapperAPI::UTILGetObject, list, index, object);
}

int UTILCompareDN(void* handle, char* name1, char* name2)
{
    return via(handle, &CWrapperAPI::UTILCompareDN, name1, name2);
}

int UTILGetCertPath(void* handle, BINSTR* certificate, BINSTR* path)
{
    return via(handle, &CWrapperAPI::UTILGetCertPath, certificate, path);
}

int UTILGetRootCert(void* handle, BINSTR* certificate, BINSTR* root)
{
    return via(handle, &CWrapperAPI::UTILGetRootCert, certificate, root);
}

int UTILIsTrustCert(void* handle, BINSTR* certificate, BINSTR* trusted, bool* isTrusted)
{
    return via(handle, &CWrapperAPI::UTILIsTrustCert, certificate, trusted, isTrusted);
}
