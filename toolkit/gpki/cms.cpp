// GPKI_CMS_: signed, enveloped and encrypted messages.

#include "toolkit/calls/message_files.h"
#include "toolkit/calls/messages.h"
#include "toolkit/calls/sealed_messages.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* content, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedData, 0, certificate, key, content, time, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedDataWithAddSigner(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedDataWithAddSigner, 0, certificate, key, message, time, out);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData(
    void* context, BINSTR* message, BINSTR* content, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsProcessSignedDataOfOne, message, content, certificate, time);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData2(void* context, BINSTR* message, BINSTR* content, int* signerCount)
{
    return call(context, calls::cmsProcessSignedData, 0, message, content, signerCount);
}

TOOLKIT_FUNCTION GPKI_CMS_GetSigner(void* context, int index, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsGetSignerCert, index, certificate, time);
}

TOOLKIT_FUNCTION GPKI_CMS_GetSignerCaPubs(void* context, BINSTR* out)
{
    return call(context, calls::cmsGetSignerCaPubs, out);
}

TOOLKIT_FUNCTION GPKI_CMS_GetTBTData(void* context, int index, BINSTR* out)
{
    return call(context, calls::cmsGetTBTData, index, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedData(
    void* context, BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedData, 0, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, BINSTR* recipients, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedDataWithMultiRecipients, 0, recipients, content, cipher, out);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEnvelopedData, certificate, key, message, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEncryptedData(void* context, BINSTR* content, BINSTR* out)
{
    return call(context, calls::cmsMakeEncryptedData, content, out);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEncryptedDataOfSession, key, message, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedData_NoContent_File(
    void* context, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    return call(context, calls::cmsMakeSignedDataFile, certificate, key, contentFile, time, messageFile);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedData_File(
    void* context, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    return call(context, calls::cmsMakeSignedDataWithContentFile, certificate, key, contentFile, time, messageFile);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData_NoContent_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsProcessSignedDataFile, contentFile, messageFile, certificate, time);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsProcessSignedDataFile, contentFile, messageFile, certificate, time);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedData_File(
    void* context, BINSTR* recipient, char* contentFile, int cipher, char* messageFile)
{
    return call(context, calls::cmsMakeEnvelopedDataWithContentFile, recipient, contentFile, cipher, messageFile);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedData_NoContent_File(
    void* context, BINSTR* recipient, char* contentFile, int cipher, char* messageFile, char* cipherFile)
{
    return call(context, calls::cmsMakeEnvelopedDataFile, recipient, contentFile, cipher, messageFile, cipherFile);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessEnvelopedData_NoContent_File(
    void* context, BINSTR* certificate, BINSTR* key, char* messageFile, char* cipherFile, char* contentFile)
{
    return call(
        context, calls::cmsProcessEnvelopedDataFile, certificate, key, messageFile, cipherFile, contentFile);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessEnvelopedData_File(
    void* context, BINSTR* certificate, BINSTR* key, char* messageFile, char* contentFile)
{
    return call(context, calls::cmsProcessEnvelopedDataWithContentFile, certificate, key, messageFile, contentFile);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedAndEnvData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedAndEnvData, 0, certificate, key, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedAndEnvData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* content, BINSTR* signer)
{
    return call(context, calls::cmsProcessSignedAndEnvData, 0, certificate, key, message, content, signer);
}

TOOLKIT_FUNCTION GPKI_CMS_GetTimeStampToken(void* context, int index, BINSTR* token)
{
    return call(context, calls::cmsGetTimeStampToken, index, token);
}

TOOLKIT_FUNCTION GPKI_CMS_SetTimeStampToken(void* context, BINSTR* message, int index, BINSTR* token, BINSTR* out)
{
    return call(context, calls::cmsSetTimeStampToken, message, index, token, out);
}
