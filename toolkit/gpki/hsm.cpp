// GPKI_HSM_: tokens.

#include "toolkit/calls/tokens.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_HSM_GetSlotList(void* context, unsigned long* slots, unsigned long* count)
{
    return call(context, calls::tokenGetSlotList, slots, count);
}

TOOLKIT_FUNCTION GPKI_HSM_GetTokenInfo(void* context, unsigned long slot, PKCS11_TOKEN_INFO* info)
{
    return call(context, calls::tokenGetInfo, slot, info);
}

TOOLKIT_FUNCTION GPKI_HSM_OpenSession(void* context, unsigned long slot, int flags)
{
    return call(context, calls::tokenOpenSession, slot, flags);
}

TOOLKIT_FUNCTION GPKI_HSM_Login(void* context, char* pin) { return call(context, calls::tokenLogin, pin); }

TOOLKIT_FUNCTION GPKI_HSM_Logout(void* context) { return call(context, calls::tokenLogout); }

TOOLKIT_FUNCTION GPKI_HSM_CloseSession(void* context) { return call(context, calls::tokenCloseSession); }

TOOLKIT_FUNCTION GPKI_HSM_ChangePIN(void* context, char* oldPin, char* newPin)
{
    return call(context, calls::tokenChangePIN, oldPin, newPin);
}

TOOLKIT_FUNCTION GPKI_HSM_GetCertCnt(void* context, int* count)
{
    return call(context, calls::tokenGetCertCnt, count);
}

TOOLKIT_FUNCTION GPKI_HSM_GetCertInfo(void* context, int index, int* kind, BINSTR* id, BINSTR* certificate)
{
    return call(context, calls::tokenGetCertInfo, index, kind, id, certificate);
}

TOOLKIT_FUNCTION GPKI_HSM_ReadCert(void* context, BINSTR* id, BINSTR* certificate)
{
    return call(context, calls::tokenReadCert, id, certificate);
}

TOOLKIT_FUNCTION GPKI_HSM_ReadRandomForVID(void* context, BINSTR* id, BINSTR* random)
{
    return call(context, calls::tokenReadRandomForVID, id, random);
}

TOOLKIT_FUNCTION GPKI_HSM_WriteCertAndPriKey(void* context, BINSTR* certificate, BINSTR* key)
{
    return call(context, calls::tokenWriteCertAndPriKey, certificate, key);
}

TOOLKIT_FUNCTION GPKI_HSM_DeleteCertAndPriKey(void* context, BINSTR* id)
{
    return call(context, calls::tokenDeleteCertAndPriKey, id);
}

TOOLKIT_FUNCTION GPKI_HSM_SignData(void* context, BINSTR* id, BINSTR* data, BINSTR* out)
{
    return call(context, calls::tokenSignData, id, data, out);
}
