// Directory and URL fetches.

#include "facade/dispatch.h"

#include <sigildesk/crypto/hvap.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::HVAPGetDataByURL(int kind, char* url, BINSTR* data)
{
    return pick({need(url)}, to<&CHVTKWrap::HVAPGetDataByURL>(kind, url, data),
        to<&CGPKIWrap::LDAPGetDataByURL>(kind, url, data));
}

int CWrapperAPI::HVAPGetCRLByCert(BINSTR* certificate, BINSTR* crl)
{
    return pick({need(certificate)}, to<&CHVTKWrap::HVAPGetCRLByCert>(certificate, crl),
        to<&CGPKIWrap::LDAPGetCRLByCert>(certificate, crl));
}

int CWrapperAPI::LDAPGetDataByCN(char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data)
{
    return pick({need(address), need(commonName)}, absent,
        to<&CGPKIWrap::LDAPGetDataByCN>(address, port, commonName, kind, baseName, data));
}

int CWrapperAPI::LDAPGetAnyDataByURL(char* url, char* attribute, BINSTR* data)
{
    return pick({need(url), need(attribute)}, absent, to<&CGPKIWrap::LDAPGetAnyDataByURL>(url, attribute, data));
}

int CWrapperAPI::LDAPGetCertPath(BINSTR* certificate, char* address, BINSTR* path)
{
    return pick(
        {need(certificate), need(address)}, absent, to<&CGPKIWrap::LDAPGetCertPath>(certificate, address, path));
}

// Exports

int HVAPGetDataByURL(void* handle, int kind, char* url, BINSTR* data)
{
    return via(handle, &CWrapperAPI::HVAPGetDataByURL, kind, url, data);
}

int HVAPGetCRLByCert(void* handle, BINSTR* certificate, BINSTR* crl)
{
    return via(handle, &CWrapperAPI::HVAPGetCRLByCert, certificate, crl);
}

int LDAPGetDataByCN(void* handle, char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data)
{
    return via(handle, &CWrapperAPI::LDAPGetDataByCN, address, port, commonName, kind, baseName, data);
}

int LDAPGetAnyDataByURL(void* handle, char* url, char* attribute, BINSTR* data)
{
    return via(handle, &CWrapperAPI::LDAPGetAnyDataByURL, url, attribute, data);
}

int LDAPGetCertPath(void* handle, BINSTR* certificate, char* address, BINSTR* path)
{
    return via(handle, &CWrapperAPI::LDAPGetCertPath, certificate, address, path);
}
