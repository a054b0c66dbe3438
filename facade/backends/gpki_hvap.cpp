// Directory and URL fetches of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::LDAPGetDataByURL(int kind, char* url, BINSTR* data)
{
    return m_toolkit.call("GPKI_LDAP_GetDataByURL", {need(url)}, kind, url, data);
}

int CGPKIWrap::LDAPGetCRLByCert(BINSTR* certificate, BINSTR* crl)
{
    return m_toolkit.call("GPKI_LDAP_GetCRLByCert", {need(certificate)}, certificate, crl);
}

int CGPKIWrap::LDAPGetDataByCN(char* address, int port, char* commonName, int kind, char* baseName, BINSTR* data)
{
    return m_toolkit.call("GPKI_LDAP_GetDataByCN", {need(address), need(commonName)}, address, port, commonName,
        kind, baseName, data);
}

int CGPKIWrap::LDAPGetAnyDataByURL(char* url, char* attribute, BINSTR* data)
{
    return m_toolkit.call("GPKI_LDAP_GetAnyDataByURL", {need(url), need(attribute)}, url, attribute, data);
}

int CGPKIWrap::LDAPGetCertPath(BINSTR* certificate, char* address, BINSTR* path)
{
    return m_toolkit.call("GPKI_LDAP_GetCertPath", {need(certificate), need(address)}, certificate, address, path);
}
