// The GPKI library as a recording double: every symbol notes its call and answers what the test says.

#include "tests/doubles/note.h"

using doubles::note;
using doubles::noteWithoutContext;

TOOLKIT int GPKI_API_Init(void** context, char* folder) { return noteWithoutContext(__func__, context, folder); }
TOOLKIT int GPKI_API_Finish(void** context) { return noteWithoutContext(__func__, context); }
TOOLKIT int GPKI_API_GetErrInfo(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_API_GetVersion(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_API_GetInfo(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_API_SetOption(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int GPKI_API_SetConfFile(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_API_SetCaPubs(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_API_FreeCaPubs(void* context) { return note(__func__, context); }
TOOLKIT int GPKI_API_Str2Time(void* context, char* a, long* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_API_SetHashAlgo(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int GPKI_BINSTR_Create(BINSTR* a) { return noteWithoutContext(__func__, a); }
TOOLKIT int GPKI_BINSTR_Delete(BINSTR* a) { return noteWithoutContext(__func__, a); }
TOOLKIT int GPKI_BINSTR_SetData(unsigned char* a, int b, BINSTR* c)
{
    return noteWithoutContext(__func__, a, b, c);
}
TOOLKIT int GPKI_CERT_Load(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_CERT_Unload(void* context) { return note(__func__, context); }
TOOLKIT int GPKI_CERT_GetUID(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetVersion(void* context, int* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_CERT_GetSerialNum(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetSignatureAlgorithm(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetIssuerName(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetValidity(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetSubjectName(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetPubKeyAlg(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetPubKeyLen(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetPubKey(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetSignature(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetKeyUsage(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetBasicConstraints(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetCertPolicy(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetCertPolicyID(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetExtKeyUsage(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetSubjectAltName(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetAuthKeyID(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetSubKeyID(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetCRLDP(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetAIA(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetRemainDays(void* context, BINSTR* a, int* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_AddCert(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetCertCount(void* context, BINSTR* a, int* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CERT_GetCert(void* context, BINSTR* a, int b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CERT_AddTrustedCert(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_CERT_SetVerifyEnv(void* context, int a, int b, bool c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CERT_Verify(void* context, BINSTR* a, int b, char* c, char* d, bool e, BINSTR* f, BINSTR* g)
{
    return note(__func__, context, a, b, c, d, e, f, g);
}
TOOLKIT int GPKI_CERT_VerifyByIVS(void* context, char* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CERT_CheckStatByOCSP(
    void* context, BINSTR* a, bool b, BINSTR* c, BINSTR* d, char* e, BINSTR* f, char* g, int* h)
{
    return note(__func__, context, a, b, c, d, e, f, g, h);
}
TOOLKIT int GPKI_CERT_CheckStatByCRL(void* context, BINSTR* a, char* b, int* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CMS_MakeSignedData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, char* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CMS_MakeSignedDataWithAddSigner(void* context, BINSTR* a, BINSTR* b, BINSTR* c, char* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CMS_ProcessSignedData2(void* context, BINSTR* a, BINSTR* b, int* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CMS_GetSigner(void* context, int a, BINSTR* b, char* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CMS_MakeSignedData_NoContent_File(void* context, BINSTR* a, BINSTR* b, char* c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CMS_MakeSignedData_File(void* context, BINSTR* a, BINSTR* b, char* c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CMS_ProcessSignedData_NoContent_File(void* context, char* a, char* b, BINSTR* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_ProcessSignedData_File(void* context, char* a, char* b, BINSTR* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_GetSignerCaPubs(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_CMS_GetTBTData(void* context, int a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CMS_GetTimeStampToken(void* context, int a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_CMS_SetTimeStampToken(void* context, BINSTR* a, int b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_MakeEnvelopedData(void* context, BINSTR* a, BINSTR* b, int c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_MakeEnvelopedDataWithMultiRecipients(void* context, BINSTR* a, BINSTR* b, int c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_ProcessEnvelopedData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_MakeEnvelopedData_File(void* context, BINSTR* a, char* b, int c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_ProcessEnvelopedData_NoContent_File(
    void* context, BINSTR* a, BINSTR* b, char* c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CMS_ProcessEnvelopedData_File(void* context, BINSTR* a, BINSTR* b, char* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_MakeSignedAndEnvData(
    void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d, int e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int GPKI_CMS_ProcessSignedAndEnvData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_CMS_MakeEncryptedData(void* context, BINSTR* a, BINSTR* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int GPKI_CMS_ProcessEncryptedData(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_CMS_ProcessSignedData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_CMS_MakeEnvelopedData_NoContent_File(void* context, BINSTR* a, char* b, int c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_OCSP_MakeOCSPReq(void* context, BINSTR* a, bool b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_OCSP_SendAndRecv(void* context, char* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_OCSP_VerifyResMsg(void* context, BINSTR* a, BINSTR* b, int* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_OCSP_GetCertStatus(void* context, int a, int* b, char* c, int* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_PRIKEY_Encrypt(void* context, int a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_PRIKEY_Decrypt(void* context, char* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_PRIKEY_ChangePasswd(void* context, char* a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_PRIKEY_CheckKeyPair(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_STORAGE_Load(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int GPKI_STORAGE_Unload(void* context) { return note(__func__, context); }
TOOLKIT int GPKI_STORAGE_ReadFile(void* context, char* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_STORAGE_WriteFile(void* context, char* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int GPKI_STORAGE_ReadCert(void* context, int a, char* b, int c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_STORAGE_ReadPriKey(void* context, int a, char* b, char* c, int d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_STORAGE_WriteCert(void* context, int a, char* b, int c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_STORAGE_WritePriKey(void* context, int a, char* b, char* c, int d, int e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int GPKI_STORAGE_DeleteCert(void* context, int a, char* b, int c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_STORAGE_DeletePriKey(void* context, int a, char* b, char* c, int d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int GPKI_VID_GetRandomFromPriKey(void* context, BINSTR* a, BINSTR* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int GPKI_VID_Verify(void* context, BINSTR* a, BINSTR* b, char* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int GPKI_VID_VerifyByIVS(void* context, char* a, BINSTR* b, BINSTR* c, char* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int GPKI_PFX_Export(void* context, char* a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int GPKI_PFX_Import(void* context, char* a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
