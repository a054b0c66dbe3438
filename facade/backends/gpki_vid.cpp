// Identity verification (VID) of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::VIDGetRandomFromPriKey(BINSTR* privateKey, BINSTR* random)
{
    return m_toolkit.call("GPKI_VID_GetRandomFromPriKey", {need(privateKey)}, privateKey, random);
}

int CGPKIWrap::VIDVerify(BINSTR* certificate, BINSTR* random, char* identity)
{
    return m_toolkit.call(
        "GPKI_VID_Verify", {need(certificate), need(random), need(identity)}, certificate, random, identity);
}

int CGPKIWrap::VIDVerifyByIVS(
    char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate)
{
    return m_toolkit.call("GPKI_VID_VerifyByIVS",
        {need(confFile), need(certificate), need(random), need(identity), need(ivsCertificate)}, confFile,
        certificate, random, identity, ivsCertificate);
}
