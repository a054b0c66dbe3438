// HVTK_CMS_: signed, enveloped and encrypted messages.

#include "toolkit/calls/message_files.h"
#include "toolkit/calls/messages.h"
#include "toolkit/calls/sealed_messages.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedData(
    void* context, int option, BINSTR* certificate, BINSTR* key, BINSTR* content, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedData, option, certificate, key, content, time, out);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedDataWithAddSigner(
    void* context, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedDataWithAddSigner, option, certificate, key, message, time, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessSignedData(
    void* context, int option, BINSTR* message, BINSTR* content, int* signerCount)
{
    return call(context, calls::cmsProcessSignedData, option, message, content, signerCount);
}

TOOLKIT_FUNCTION HVTK_CMS_GetSignerCert(void* context, int index, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsGetSignerCert, index, certificate, time);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeTBSData(
    void* context, int option, BINSTR* certificate, BINSTR* content, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeTBSData, option, certificate, content, time, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ComposeSignedData(void* context, BINSTR* signature, BINSTR* out)
{
    return call(context, calls::cmsComposeSignedData, signature, out);
}

TOOLKIT_FUNCTION HVTK_CMS_SetOption(void* context, int options)
{
    return call(context, calls::cmsSetOption, options);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeEnvelopedData(
    void* context, int option, BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedData, option, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, int option, BINSTR* recipients, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedDataWithMultiRecipients, option, recipients, content, cipher, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEnvelopedData, certificate, key, message, out);
}

TOOLKIT_FUNCTION HVTK_CMS_GetEnvDataRecipCnt(void* context, BINSTR* message, int* count)
{
    return call(context, calls::cmsGetEnvDataRecipCnt, message, count);
}

TOOLKIT_FUNCTION HVTK_CMS_GetEnvDataRecipInfo(
    void* context, int index, int capacity, char* issuer, char* serialNumber, char* algorithm)
{
    return call(context, calls::cmsGetEnvDataRecipInfo, index, capacity, issuer, serialNumber, algorithm);
}

TOOLKIT_FUNCTION HVTK_CMS_EncryptData(
    void* context, int option, BINSTR* key, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsEncryptData, option, key, content, cipher, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEncryptedData, key, message, out);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedData_File(
    void* context, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    return call(context, calls::cmsMakeSignedDataFile, certificate, key, contentFile, time, messageFile);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedData_WithContent_File(
    void* context, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    return call(context, calls::cmsMakeSignedDataWithContentFile, certificate, key, contentFile, time, messageFile);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessSignedData_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsProcessSignedDataFile, contentFile, messageFile, certificate, time);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeEnvelopedData_File(
    void* context, BINSTR* recipient, char* contentFile, int cipher, char* messageFile, char* cipherFile)
{
    return call(context, calls::cmsMakeEnvelopedDataFile, recipient, contentFile, cipher, messageFile, cipherFile);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeEnvelopedData_WithContent_File(
    void* context, BINSTR* recipient, char* contentFile, int cipher, char* messageFile)
{
    return call(context, calls::cmsMakeEnvelopedDataWithContentFile, recipient, contentFile, cipher, messageFile);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessEnvelopedData_File(
    void* context, BINSTR* certificate, BINSTR* key, char* messageFile, char* cipherFile, char* contentFile)
{
    return call(
        context, calls::cmsProcessEnvelopedDataFile, certificate, key, messageFile, cipherFile, contentFile);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessEnvelopedData_WithContent_File(
    void* context, BINSTR* certificate, BINSTR* key, char* messageFile, char* contentFile)
{
    return call(context, calls::cmsProcessEnvelopedDataWithContentFile, certificate, key, messageFile, contentFile);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedAndEnvData(void* context, int option, BINSTR* certificate, BINSTR* key,
    BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedAndEnvData, option, certificate, key, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessSignedAndEnvData(
    void* context, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* content, BINSTR* signer)
{
    return call(context, calls::cmsProcessSignedAndEnvData, option, certificate, key, message, content, signer);
}
