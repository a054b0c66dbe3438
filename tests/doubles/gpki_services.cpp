// The GPKI library as a recording double: every symbol notes its call and answers what the test says.

#include "tests/doubles/note.h"

using doubles::note;

TOOLKIT int GPKI_HSM_GetSlotList(void* context, unsigned long* a, unsigned long* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int GPKI_HSM_GetTokenInfo(void* context, unsigned long a, PKCS11_TOKEN_INFO* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int GPKI_HSM_OpenSession(void* context, unsigned long a, int b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_HSM_Login(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_HSM_Logout(void* context) { return note(__func__, context); }
TOOLKIT int GPKI_HSM_CloseSession(void* context) { return note(__func__, context); }
TOOLKIT int GPKI_HSM_ChangePIN(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_HSM_GetCertCnt(void* context, int* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_HSM_GetCertInfo(void* context, int a, int* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_HSM_ReadCert(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_HSM_ReadRandomForVID(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_HSM_WriteCertAndPriKey(void* context, BINSTR* a, BINSTR* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int GPKI_HSM_DeleteCertAndPriKey(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_HSM_SignData(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CRYPT_GenRandom(void* context, int a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CRYPT_GenKeyAndIV(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int GPKI_CRYPT_SetKeyAndIV(void* context, int a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CRYPT_GetKeyAndIV(void* context, int* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CRYPT_ClearKeyAndIV(void* context) { return note(__func__, context); }
TOOLKIT int GPKI_CRYPT_Encrypt(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CRYPT_Decrypt(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CRYPT_Encrypt_File(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CRYPT_Decrypt_File(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CRYPT_Sign(void* context, BINSTR* a, BINSTR* b, int c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CRYPT_Verify(void* context, BINSTR* a, int b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CRYPT_Verify_File(void* context, BINSTR* a, int b, char* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CRYPT_AsymEncrypt(void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CRYPT_AsymDecrypt(void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CRYPT_Hash(void* context, int a, BINSTR* b, BINSTR* c) { return note(__func__, context, a, b, c); }
TOOLKIT int GPKI_CRYPT_GenMAC(void* context, int a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CRYPT_VerifyMAC(void* context, int a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CRYPT_Sign_File(void* context, BINSTR* a, BINSTR* b, int c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_BASE64_Encode(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_BASE64_Decode(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_LDAP_GetDataByURL(void* context, int a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_LDAP_GetCRLByCert(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_LDAP_GetDataByCN(void* context, char* a, int b, char* c, int d, char* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int GPKI_LDAP_GetAnyDataByURL(void* context, char* a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_LDAP_GetCertPath(void* context, BINSTR* a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_TSP_MakeReqMsg(void* context, BINSTR* a, int b, char* c, bool d, BINSTR* e, BINSTR* f, BINSTR* g)
{
    return note(__func__, context, a, b, c, d, e, f, g);
}
TOOLKIT int GPKI_TSP_SendAndRecv(void* context, char* a, int b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_TSP_VerifyResMsg(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_TSP_VerifyToken(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_TSP_VerifyToken2(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_TSP_GetTokenInfo(
    void* context, BINSTR* a, int b, char* c, char* d, char* e, char* f, char* g, char* h, char* i, char* j)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i, j);
}
TOOLKIT int GPKI_SIGEA_MakeChallenge(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_SIGEA_MakeResponse(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_SIGEA_VerifyResponse(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_WCMS_MakeSignedContent(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_WCMS_ProcessSignedContent(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_WCMS_MakeWapEnvelopedData(void* context, BINSTR* a, BINSTR* b, int c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_WCMS_ProcessWapEnvelopedData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
