// The maker toolkit as a recording double: every symbol notes its call and answers what the test says.

#include "tests/doubles/note.h"

using doubles::note;

TOOLKIT int HVTK_PKCS11_GetSlotList(void* context, unsigned long* a, unsigned long* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_PKCS11_GetTokenInfo(void* context, unsigned long a, PKCS11_TOKEN_INFO* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_PKCS11_InitToken(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_PKCS11_InitTokenWithSlotID(void* context, unsigned long a, char* b, char* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_PKCS11_OpenSessionWithSlotID(void* context, unsigned long a, char* b, int c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_OpenSessionWithTokenName(void* context, char* a, int b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_PKCS11_Login(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_PKCS11_Logout(void* context) { return note(__func__, context); }
TOOLKIT int HVTK_PKCS11_CloseSession(void* context) { return note(__func__, context); }
TOOLKIT int HVTK_PKCS11_ChangePIN(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_PKCS11_GetCertCnt(void* context, int* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_PKCS11_GetCertInfo(void* context, int a, int* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_PKCS11_ReadCert(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_PKCS11_ReadRandomForVID(void* context, BINSTR* a, BINSTR* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_PKCS11_WriteCertAndPriKey(void* context, BINSTR* a, BINSTR* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_PKCS11_DeleteCertAndPriKey(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_PKCS11_GenKeyPair(void* context, int a, int b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_Sign(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_Verify(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_Encrypt(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_Decrypt(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_SignData(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_SignData_NoContent(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_DecryptData(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_SignAndEnvData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_PKCS11_VerifyAndDecData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_PKCS11_VerifySignatureValue(void* context, char* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PKCS11_CMP_CertRequest(
    void* context, char* a, int b, char* c, char* d, char* e, char* f, BINSTR* g, BINSTR* h)
{
    return note(__func__, context, a, b, c, d, e, f, g, h);
}
TOOLKIT int HVTK_PKCS11_CMP_CertUpdate(
    void* context, char* a, int b, bool c, char* d, char* e, BINSTR* f, BINSTR* g)
{
    return note(__func__, context, a, b, c, d, e, f, g);
}
TOOLKIT int HVTK_PKCS11_CMP_CertUpdate2(void* context, char* a, int b, bool c, int d, char* e, char* f, BINSTR* g,
    BINSTR* h, BINSTR* i, BINSTR* j, BINSTR* k, BINSTR* l)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i, j, k, l);
}
TOOLKIT int HVTK_PKCS11_CMP_CertRevoke(void* context, char* a, int b, int c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_PKCS11_OpenSession(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CMP_SetProtocol(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CMP_SetCA(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CMP_CertRequest(void* context, char* a, int b, char* c, char* d, char* e, char* f, BINSTR* g,
    BINSTR* h, BINSTR* i, BINSTR* j, BINSTR* k)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i, j, k);
}
TOOLKIT int HVTK_CMP_CertRequest2(
    void* context, char* a, int b, char* c, char* d, char* e, char* f, BINSTR* g, BINSTR* h, BINSTR* i, BINSTR* j)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i, j);
}
TOOLKIT int HVTK_CMP_CertUpdate(
    void* context, char* a, int b, bool c, char* d, char* e, BINSTR* f, BINSTR* g, BINSTR* h, BINSTR* i, BINSTR* j)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i, j);
}
TOOLKIT int HVTK_CMP_CertUpdate2(
    void* context, char* a, int b, bool c, char* d, char* e, BINSTR* f, BINSTR* g, BINSTR* h, BINSTR* i)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i);
}
TOOLKIT int HVTK_CMP_CertRevoke(void* context, char* a, int b, int c, BINSTR* d, BINSTR* e, BINSTR* f, BINSTR* g)
{
    return note(__func__, context, a, b, c, d, e, f, g);
}
TOOLKIT int HVTK_CMP_CertRevoke2(void* context, char* a, int b, int c, BINSTR* d, BINSTR* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int HVTK_CMP_CertRecovery(
    void* context, char* a, int b, char* c, char* d, BINSTR* e, BINSTR* f, BINSTR* g, BINSTR* h)
{
    return note(__func__, context, a, b, c, d, e, f, g, h);
}
TOOLKIT int HVTK_CRYPT_SetRSAVersion(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CRYPT_SetPaddingType(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CRYPT_SetEnvChangeIV(void* context) { return note(__func__, context); }
TOOLKIT int HVTK_CRYPT_GenRandom(void* context, int a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CRYPT_GenKeyPair(void* context, int a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CRYPT_GenKeyAndIV(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CRYPT_SetKeyAndIV(void* context, int a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CRYPT_GetKeyAndIV(void* context, int* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CRYPT_ClearKeyAndIV(void* context) { return note(__func__, context); }
TOOLKIT int HVTK_CRYPT_Encrypt(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CRYPT_Decrypt(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CRYPT_EncryptFile(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CRYPT_DecryptFile(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CRYPT_Sign(void* context, BINSTR* a, BINSTR* b, int c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CRYPT_Verify(void* context, BINSTR* a, int b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_VerifyFile(void* context, BINSTR* a, int b, char* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_AsymEncrypt(void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_AsymDecrypt(void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_Hash(void* context, int a, BINSTR* b, BINSTR* c) { return note(__func__, context, a, b, c); }
TOOLKIT int HVTK_CRYPT_HashFile(void* context, int a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CRYPT_GenMAC(void* context, int a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_GenMAC2(void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_VerifyMAC(void* context, int a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_GenSharedKey(void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CRYPT_SignFile(void* context, BINSTR* a, BINSTR* b, int c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_BASE64_Encode(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_BASE64_Decode(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_PEM_Encode(void* context, int a, BINSTR* b, BINSTR* c) { return note(__func__, context, a, b, c); }
TOOLKIT int HVTK_PEM_Decode(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_HVAP_GetDataByURL(void* context, int a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_HVAP_GetCRLByCert(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_TSP_TimeStampData(
    void* context, char* a, int b, int c, char* d, BINSTR* e, bool f, BINSTR* g, BINSTR* h, BINSTR* i)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i);
}
TOOLKIT int HVTK_TSP_TimeStampFile(
    void* context, char* a, int b, int c, char* d, char* e, bool f, BINSTR* g, BINSTR* h, BINSTR* i)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i);
}
TOOLKIT int HVTK_TSP_MakeReqMsg(void* context, BINSTR* a, int b, char* c, bool d, BINSTR* e, BINSTR* f, BINSTR* g)
{
    return note(__func__, context, a, b, c, d, e, f, g);
}
TOOLKIT int HVTK_TSP_SendAndRecv(void* context, char* a, int b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_TSP_VerifyResMsg(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_TSP_VerifyToken(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_TSP_VerifyToken2(void* context, char* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_TSP_GetTokenInfo(
    void* context, BINSTR* a, int b, char* c, char* d, char* e, char* f, char* g, char* h, BINSTR* i)
{
    return note(__func__, context, a, b, c, d, e, f, g, h, i);
}
TOOLKIT int HVTK_WPKI_SignData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_WPKI_VerifyData(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_WPKI_EncryptData(void* context, BINSTR* a, BINSTR* b, int c, BINSTR* d, BINSTR* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int HVTK_WPKI_DecryptData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_WPKI_VerifyCert(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_UNI_ViewCert(void* context, BINSTR* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_UNI_VerifySignData(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_UNI_DecryptEnvData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_UTIL_AddObject(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_UTIL_GetObjectCount(void* context, BINSTR* a, int* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_UTIL_GetObject(void* context, BINSTR* a, int b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_UTIL_CompareDN(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_UTIL_GetCertPath(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_UTIL_GetRootCert(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_UTIL_IsTrustCert(void* context, BINSTR* a, BINSTR* b, bool* c)
{
    return note(__func__, context, a, b, c);
}
