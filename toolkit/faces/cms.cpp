// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CMS_: signed, enveloped and encrypted messages.

#include "toolkit/calls/message_files.h"
#include "toolkit/calls/messages.h"
#include "toolkit/calls/sealed_messages.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedData(
    void* context, int option, BINSTR* certificate, BINSTR* key, BINSTR* content, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedData, option, certificate, key, content, time, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* content, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedData, 0, certificate, key, content, time, out);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedDataWithAddSigner(
    void* context, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedDataWithAddSigner, option, certificate, key, message, time, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedDataWithAddSigner(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedDataWithAddSigner, 0, certificate, key, message, time, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessSignedData(
    void* context, int option, BINSTR* message, BINSTR* content, int* signerCount)
{
    return call(context, calls::cmsProcessSignedData, option, message, content, signerCount);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData2(void* context, BINSTR* message, BINSTR* content, int* signerCount)
{
    return call(context, calls::cmsProcessSignedData, 0, message, content, signerCount);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData(
    void* context, BINSTR* message, BINSTR* content, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsProcessSignedDataOfOne, message, content, certificate, time);
}

TOOLKIT_FUNCTION HVTK_CMS_GetSignerCert(void* context, int index, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsGetSignerCert, index, certificate, time);
}
SAME_FUNCTION(GPKI_CMS_GetSigner, HVTK_CMS_GetSignerCert);

TOOLKIT_FUNCTION GPKI_CMS_GetSignerCaPubs(void* context, BINSTR* out)
{
    return call(context, calls::cmsGetSignerCaPubs, out);
}

TOOLKIT_FUNCTION GPKI_CMS_GetTBTData(void* context, int index, BINSTR* out)
{
    return call(context, calls::cmsGetTBTData, index, out);
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

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedData(
    void* context, BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedData, 0, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, int option, BINSTR* recipients, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedDataWithMultiRecipients, option, recipients, content, cipher, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, BINSTR* recipients, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedDataWithMultiRecipients, 0, recipients, content, cipher, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEnvelopedData, certificate, key, message, out);
}
SAME_FUNCTION(GPKI_CMS_ProcessEnvelopedData, HVTK_CMS_ProcessEnvelopedData);

TOOLKIT_FUNCTION GPKI_CMS_MakeEncryptedData(void* context, BINSTR* content, BINSTR* out)
{
    return call(context, calls::cmsMakeEncryptedData, content, out);
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

TOOLKIT_FUNCTION GPKI_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEncryptedDataOfSession, key, message, out);
}

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedData_File(
    void* context, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    return call(context, calls::cmsMakeSignedDataFile, certificate, key, contentFile, time, messageFile);
}
SAME_FUNCTION(GPKI_CMS_MakeSignedData_NoContent_File, HVTK_CMS_MakeSignedData_File);

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedData_WithContent_File(
    void* context, BINSTR* certificate, BINSTR* key, char* contentFile, char* time, char* messageFile)
{
    return call(context, calls::cmsMakeSignedDataWithContentFile, certificate, key, contentFile, time, messageFile);
}
SAME_FUNCTION(GPKI_CMS_MakeSignedData_File, HVTK_CMS_MakeSignedData_WithContent_File);

TOOLKIT_FUNCTION HVTK_CMS_ProcessSignedData_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsProcessSignedDataFile, contentFile, messageFile, certificate, time);
}
SAME_FUNCTION(GPKI_CMS_ProcessSignedData_File, HVTK_CMS_ProcessSignedData_File);
SAME_FUNCTION(GPKI_CMS_ProcessSignedData_NoContent_File, HVTK_CMS_ProcessSignedData_File);

TOOLKIT_FUNCTION HVTK_CMS_MakeEnvelopedData_File(
    void* context, BINSTR* recipient, char* contentFile, int cipher, char* messageFile, char* cipherFile)
{
    return call(context, calls::cmsMakeEnvelopedDataFile, recipient, contentFile, cipher, messageFile, cipherFile);
}
SAME_FUNCTION(GPKI_CMS_MakeEnvelopedData_NoContent_File, HVTK_CMS_MakeEnvelopedData_File);

TOOLKIT_FUNCTION HVTK_CMS_MakeEnvelopedData_WithContent_File(
    void* context, BINSTR* recipient, char* contentFile, int cipher, char* messageFile)
{
    return call(context, calls::cmsMakeEnvelopedDataWithContentFile, recipient, contentFile, cipher, messageFile);
}
SAME_FUNCTION(GPKI_CMS_MakeEnvelopedData_File, HVTK_CMS_MakeEnvelopedData_WithContent_File);

TOOLKIT_FUNCTION HVTK_CMS_ProcessEnvelopedData_File(
    void* context, BINSTR* certificate, BINSTR* key, char* messageFile, char* cipherFile, char* contentFile)
{
    return call(
        context, calls::cmsProcessEnvelopedDataFile, certificate, key, messageFile, cipherFile, contentFile);
}
SAME_FUNCTION(GPKI_CMS_ProcessEnvelopedData_NoContent_File, HVTK_CMS_ProcessEnvelopedData_File);

TOOLKIT_FUNCTION HVTK_CMS_ProcessEnvelopedData_WithContent_File(
    void* context, BINSTR* certificate, BINSTR* key, char* messageFile, char* contentFile)
{
    return call(context, calls::cmsProcessEnvelopedDataWithContentFile, certificate, key, messageFile, contentFile);
}
SAME_FUNCTION(GPKI_CMS_ProcessEnvelopedData_File, HVTK_CMS_ProcessEnvelopedData_WithContent_File);

TOOLKIT_FUNCTION HVTK_CMS_MakeSignedAndEnvData(void* context, int option, BINSTR* certificate, BINSTR* key,
    BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedAndEnvData, option, certificate, key, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedAndEnvData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedAndEnvData, 0, certificate, key, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION HVTK_CMS_ProcessSignedAndEnvData(
    void* context, int option, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* content, BINSTR* signer)
{
    return call(context, calls::cmsProcessSignedAndEnvData, option, certificate, key, message, content, signer);
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
