// Identity verification (VID) of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::VIDGetRandomFromPriKey(BINSTR* privateKey, BINSTR* random)
{
    return m_toolkit.call("HVTK_VID_GetRandomFromPriKey", {need(privateKey)}, privateKey, random);
}

int CHVTKWrap::VIDVerify(BINSTR* certificate, BINSTR* random, char* identity)
{
    return m_toolkit.call(
        "HVTK_VID_Verify", {need(certificate), need(random), need(identity)}, certificate, random, identity);
}

int CHVTKWrap::VIDVerifyByIVS(
    char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate)
{
    return m_toolkit.call("HVTK_VID_VerifyByIVS",
        {need(confFile), need(certificate), need(random), need(identity), need(ivsCertificate)}, confFile,
        certificate, random, identity, ivsCertificate);
}
