// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Signed and enveloped messages.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_CMS_MakeSignedData(void* context, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* content,
    char* signingTime, BINSTR* signedMessage);
int HVTK_CMS_MakeSignedDataWithAddSigner(void* context, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, char* signingTime, BINSTR* signedMessage);
int HVTK_CMS_ProcessSignedData(void* context, int option, BINSTR* message, BINSTR* content, int* signerCount);
int HVTK_CMS_GetSignerCert(void* context, int index, BINSTR* certificate, char* signingTime);
int HVTK_CMS_MakeTBSData(
    void* context, int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes);
int HVTK_CMS_ComposeSignedData(void* context, BINSTR* signature, BINSTR* signedMessage);
int HVTK_CMS_SetOption(void* context, int option);
int HVTK_CMS_MakeSignedData_File(void* context, BINSTR* certificate, BINSTR* privateKey, char* contentFile,
    char* signingTime, char* messageFile);
int HVTK_CMS_MakeSignedData_WithContent_File(void* context, BINSTR* certificate, BINSTR* privateKey,
    char* contentFile, char* signingTime, char* messageFile);
int HVTK_CMS_ProcessSignedData_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
int HVTK_CMS_MakeEnvelopedData(
    void* context, int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int HVTK_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int HVTK_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);
int HVTK_CMS_MakeEnvelopedData_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);
int HVTK_CMS_ProcessEnvelopedData_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);
int HVTK_CMS_ProcessEnvelopedData_WithContent_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* contentFile);
int HVTK_CMS_MakeSignedAndEnvData(void* context, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int HVTK_CMS_ProcessSignedAndEnvData(void* context, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, BINSTR* content, BINSTR* signerCertificate);
int HVTK_CMS_EncryptData(
    void* context, int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage);
int HVTK_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* content);
int HVTK_CMS_GetEnvDataRecipCnt(void* context, BINSTR* message, int* count);
int HVTK_CMS_GetEnvDataRecipInfo(
    void* context, int index, int capacity, char* issuer, char* serialNumber, char* algorithm);
int HVTK_CMS_MakeEnvelopedData_WithContent_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile);

int GPKI_CMS_MakeSignedData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* content,
    char* signingTime, BINSTR* signedMessage);
int GPKI_CMS_MakeSignedDataWithAddSigner(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    char* signingTime, BINSTR* signedMessage);
int GPKI_CMS_ProcessSignedData2(void* context, BINSTR* message, BINSTR* content, int* signerCount);
int GPKI_CMS_GetSigner(void* context, int index, BINSTR* certificate, char* signingTime);
int GPKI_CMS_MakeSignedData_NoContent_File(void* context, BINSTR* certificate, BINSTR* privateKey,
    char* contentFile, char* signingTime, char* messageFile);
int GPKI_CMS_MakeSignedData_File(void* context, BINSTR* certificate, BINSTR* privateKey, char* contentFile,
    char* signingTime, char* messageFile);
int GPKI_CMS_ProcessSignedData_NoContent_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
int GPKI_CMS_ProcessSignedData_File(
    void* context, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime);
int GPKI_CMS_GetSignerCaPubs(void* context, BINSTR* certificates);
int GPKI_CMS_GetTBTData(void* context, int index, BINSTR* data);
int GPKI_CMS_GetTimeStampToken(void* context, int index, BINSTR* token);
int GPKI_CMS_SetTimeStampToken(void* context, BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage);
int GPKI_CMS_MakeEnvelopedData(
    void* context, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int GPKI_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int GPKI_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);
int GPKI_CMS_MakeEnvelopedData_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile);
int GPKI_CMS_ProcessEnvelopedData_NoContent_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile);
int GPKI_CMS_ProcessEnvelopedData_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* contentFile);
int GPKI_CMS_MakeSignedAndEnvData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient,
    BINSTR* content, int algorithm, BINSTR* envelopedMessage);
int GPKI_CMS_ProcessSignedAndEnvData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* content, BINSTR* signerCertificate);
int GPKI_CMS_MakeEncryptedData(void* context, BINSTR* content, BINSTR* encryptedMessage);
int GPKI_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* content);
int GPKI_CMS_ProcessSignedData(
    void* context, BINSTR* message, BINSTR* content, BINSTR* certificate, char* signingTime);
int GPKI_CMS_MakeEnvelopedData_NoContent_File(
    void* context, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);

} // extern "C"
