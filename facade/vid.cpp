// Identity verification (VID).

#include "facade/dispatch.h"

#include <sigildesk/crypto/vid.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::VIDGetRandomFromPriKey(BINSTR* privateKey, BINSTR* random)
{
    return pick({need(privateKey)}, to<&CHVTKWrap::VIDGetRandomFromPriKey>(privateKey, random),
        to<&CGPKIWrap::VIDGetRandomFromPriKey>(privateKey, random));
}

int CWrapperAPI::VIDVerify(BINSTR* certificate, BINSTR* random, char* identity)
{
    return pick({need(certificate), need(random), need(identity)},
        to<&CHVTKWrap::VIDVerify>(certificate, random, identity),
        to<&CGPKIWrap::VIDVerify>(certificate, random, identity));
}

int CWrapperAPI::VIDVerifyByIVS(
    char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate)
{
    return pick({need(confFile), need(certificate), need(random), need(identity), need(ivsCertificate)},
        to<&CHVTKWrap::VIDVerifyByIVS>(confFile, certificate, random, identity, ivsCertificate),
        to<&CGPKIWrap::VIDVerifyByIVS>(confFile, certificate, random, identity, ivsCertificate));
}

// Exports

int VIDGetRandomFromPriKey(void* handle, BINSTR* privateKey, BINSTR* random)
{
    return via(handle, &CWrapperAPI::VIDGetRandomFromPriKey, privateKey, random);
}

int VIDVerify(void* handle, BINSTR* certificate, BINSTR* random, char* identity)
{
    return via(handle, &CWrapperAPI::VIDVerify, certificate, random, identity);
}

int VIDVerifyByIVS(
    void* handle, char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate)
{
    return via(handle, &CWrapperAPI::VIDVerifyByIVS, confFile, certificate, random, identity, ivsCertificate);
}
