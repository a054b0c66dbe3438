// Directory and URL fetches of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::HVAPGetDataByURL(int kind, char* url, BINSTR* data)
{
    return m_toolkit.call("HVTK_HVAP_GetDataByURL", {need(url)}, kind, url, data);
}

int CHVTKWrap::HVAPGetCRLByCert(BINSTR* certificate, BINSTR* crl)
{
    return m_toolkit.call("HVTK_HVAP_GetCRLByCert", {need(certificate)}, certificate, crl);
}
