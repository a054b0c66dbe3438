// The maker toolkit as a recording double: every symbol notes its call and answers what the test says.

#include "tests/doubles/note.h"

using doubles::note;
using doubles::noteWithoutContext;

TOOLKIT int HVTK_API_Init(void** context, char* folder) { return noteWithoutContext(__func__, context, folder); }
TOOLKIT int HVTK_API_Finish(void** context) { return noteWithoutContext(__func__, context); }
TOOLKIT int HVTK_API_GetErrInfo(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_API_GetInfo(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_API_SetConfFile(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_API_SetHashAlgo(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int HVTK_BINSTR_Create(BINSTR* a) { return noteWithoutContext(__func__, a); }
TOOLKIT int HVTK_BINSTR_Delete(BINSTR* a) { return noteWithoutContext(__func__, a); }
TOOLKIT int HVTK_BINSTR_SetData(unsigned char* a, int b, BINSTR* c)
{
    return noteWithoutContext(__func__, a, b, c);
}
TOOLKIT int HVTK_CERT_SetCaPubs(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CERT_FreeCaPubs(void* context) { return note(__func__, context); }
TOOLKIT int HVTK_CERT_Load(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CERT_Unload(void* context) { return note(__func__, context); }
TOOLKIT int HVTK_CERT_GetUID(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetVersion(void* context, int* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CERT_GetSerialNum(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetSignatureAlgorithm(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetIssuerName(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetValidity(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetSubjectName(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetPubKey(void* context, int a, char* b, char* c) { return note(__func__, context, a, b, c); }
TOOLKIT int HVTK_CERT_GetPubKey2(void* context, char* a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CERT_GetSignature(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetKeyUsage(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetBasicConstraints(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetCertPolicy(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetCertPolicy_PolicyID(void* context, int a, char* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_CERT_GetExtKeyUsage(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetSubjectAltName(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetIssuerAltName(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetAuthKeyID(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetSubKeyID(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetCRLDP(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetCRLDP_URL(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetAIA(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_GetRemainDays(void* context, BINSTR* a, int* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CERT_AddTrustedCert(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CERT_SetVerifyEnv1(void* context, int a, int b, bool c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CERT_SetVerifyEnv2(void* context, char* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CERT_Verify(void* context, BINSTR* a, int b, char* c, bool d, BINSTR* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int HVTK_CERT_Verify2(void* context, BINSTR* a, int b, char* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CERT_VerifyByIVS(void* context, char* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CERT_CheckStatByCRL(void* context, BINSTR* a, char* b, int* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CERT_GetSubjectName_DERFormat(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CERT_GetPolicyConstraints(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CMS_MakeSignedData(void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d, char* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int HVTK_CMS_MakeSignedDataWithAddSigner(
    void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d, char* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int HVTK_CMS_ProcessSignedData(void* context, int a, BINSTR* b, BINSTR* c, int* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CMS_GetSignerCert(void* context, int a, BINSTR* b, char* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CMS_MakeTBSData(void* context, int a, BINSTR* b, BINSTR* c, char* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_ComposeSignedData(void* context, BINSTR* a, BINSTR* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_CMS_SetOption(void* context, int a) { return note(__func__, context, a); }
TOOLKIT int HVTK_CMS_MakeSignedData_File(void* context, BINSTR* a, BINSTR* b, char* c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_MakeSignedData_WithContent_File(void* context, BINSTR* a, BINSTR* b, char* c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_ProcessSignedData_File(void* context, char* a, char* b, BINSTR* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CMS_MakeEnvelopedData(void* context, int a, BINSTR* b, BINSTR* c, int d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, int a, BINSTR* b, BINSTR* c, int d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_ProcessEnvelopedData(void* context, BINSTR* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CMS_MakeEnvelopedData_File(void* context, BINSTR* a, char* b, int c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_ProcessEnvelopedData_File(void* context, BINSTR* a, BINSTR* b, char* c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_ProcessEnvelopedData_WithContent_File(void* context, BINSTR* a, BINSTR* b, char* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_CMS_MakeSignedAndEnvData(
    void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e, int f, BINSTR* g)
{
    return note(__func__, context, a, b, c, d, e, f, g);
}
TOOLKIT int HVTK_CMS_ProcessSignedAndEnvData(
    void* context, int a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
TOOLKIT int HVTK_CMS_EncryptData(void* context, int a, BINSTR* b, BINSTR* c, int d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_ProcessEncryptedData(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_CMS_GetEnvDataRecipCnt(void* context, BINSTR* a, int* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_CMS_GetEnvDataRecipInfo(void* context, int a, int b, char* c, char* d, char* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_CMS_MakeEnvelopedData_WithContent_File(void* context, BINSTR* a, char* b, int c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_OCSP_MakeOCSPReq(void* context, BINSTR* a, bool b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_OCSP_SendAndRecv(void* context, char* a, BINSTR* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_OCSP_VerifyResMsg(void* context, BINSTR* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_OCSP_CheckCertStatus(void* context, char* a, BINSTR* b, bool c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_PRIKEY_Encrypt(void* context, int a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_PRIKEY_Decrypt(void* context, char* a, BINSTR* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_PRIKEY_ChangePasswd(void* context, char* a, char* b, BINSTR* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_PRIKEY_CheckKeyPair(void* context, BINSTR* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_Load(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_MEDIA_Unload(void* context) { return note(__func__, context); }
TOOLKIT int HVTK_MEDIA_DISK_ReadFile(void* context, char* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_DISK_WriteFile(void* context, char* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_DISK_ReadCert(void* context, char* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_DISK_ReadPriKey(void* context, char* a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_MEDIA_DISK_WriteCert(void* context, char* a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_DISK_WritePriKey(void* context, int a, char* b, char* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_MEDIA_DISK_DeleteCert(void* context, char* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_MEDIA_DISK_DeletePriKey(void* context, char* a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_CARD_ReadCert(void* context, int a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_MEDIA_CARD_ReadPriKey(void* context, int a, char* b, char* c, BINSTR* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_MEDIA_CARD_WriteCert(void* context, int a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_MEDIA_CARD_WritePriKey(void* context, int a, int b, char* c, char* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_MEDIA_CARD_DeleteCert(void* context, int a, char* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_CARD_DeletePriKey(void* context, int a, char* b, char* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_MEDIA_WINS_WriteCertAndPriKey(void* context, int a, char* b, BINSTR* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_MEDIA_WINS_WriteCert(void* context, BINSTR* a) { return note(__func__, context, a); }
TOOLKIT int HVTK_MEDIA_WINS_GetCertCnt(void* context, char* a, int* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_WINS_GetCertDN(void* context, int a, int* b, char* c, char* d)
{
    return note(__func__, context, a, b, c, d);
}
TOOLKIT int HVTK_MEDIA_WINS_ReadCert(void* context, int a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_MEDIA_WINS_ReadPriKey(void* context, int a, BINSTR* b) { return note(__func__, context, a, b); }
TOOLKIT int HVTK_VID_GetRandomFromPriKey(void* context, BINSTR* a, BINSTR* b)
{
    return note(__func__, context, a, b);
}
TOOLKIT int HVTK_VID_Verify(void* context, BINSTR* a, BINSTR* b, char* c)
{
    return note(__func__, context, a, b, c);
}
TOOLKIT int HVTK_VID_VerifyByIVS(void* context, char* a, BINSTR* b, BINSTR* c, char* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_PFX_Export(void* context, int a, char* b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_PFX_Export2(void* context, char* a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_PFX_Import(void* context, char* a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
// Called with two lists of arguments: the first is a number or a text.
TOOLKIT int HVTK_PFX_ExportMultiPair(void* context, unsigned long a, char* b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_PFX_ImportMultiPair(void* context, char* a, BINSTR* b, BINSTR* c, BINSTR* d, BINSTR* e)
{
    return note(__func__, context, a, b, c, d, e);
}
TOOLKIT int HVTK_PFX_ImportMultiPair2(void* context, int a, char* b, BINSTR* c, BINSTR* d, BINSTR* e, BINSTR* f)
{
    return note(__func__, context, a, b, c, d, e, f);
}
