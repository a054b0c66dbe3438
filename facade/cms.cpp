// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Signed and enveloped messages.

#include "facade/row.h"

#include <sigildesk/crypto/cms.h>

using namespace sigil;

int CMSMakeSignedData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* content,
    char* signingTime, BINSTR* signedMessage)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(signingTime)},
        maker(
            SYMBOL(HVTK_CMS_MakeSignedData), option, certificate, privateKey, content, signingTime, signedMessage),
        gpki(SYMBOL(GPKI_CMS_MakeSignedData), certificate, privateKey, content, signingTime, signedMessage));
}

int CMSMakeSignedDataWithAddSigner(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, char* signingTime, BINSTR* signedMessage)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(signingTime)},
        maker(SYMBOL(HVTK_CMS_MakeSignedDataWithAddSigner), option, certificate, privateKey, message, signingTime,
            signedMessage),
        gpki(SYMBOL(GPKI_CMS_MakeSignedDataWithAddSigner), certificate, privateKey, message, signingTime,
            signedMessage));
}

int CMSProcessSignedData(void* handle, int option, BINSTR* message, BINSTR* content, int* signerCount)
{
    return row(handle, {need(message)},
        maker(SYMBOL(HVTK_CMS_ProcessSignedData), option, message, content, signerCount),
        gpki(SYMBOL(GPKI_CMS_ProcessSignedData2), message, content, signerCount));
}

int CMSGetSignerCert(void* handle, int index, BINSTR* certificate, char* signingTime)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CMS_GetSignerCert), index, certificate, signingTime),
        gpki(SYMBOL(GPKI_CMS_GetSigner), index, certificate, signingTime));
}

int CMSMakekTBSData(
    void* handle, int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes)
{
    return row(handle, {need(certificate), need(content), need(signingTime)},
        maker(SYMBOL(HVTK_CMS_MakeTBSData), option, certificate, content, signingTime, signedAttributes), absent);
}

int CMSComposeSignedData(void* handle, BINSTR* signature, BINSTR* signedMessage)
{
    return row(
        handle, {need(signature)}, maker(SYMBOL(HVTK_CMS_ComposeSignedData), signature, signedMessage), absent);
}

int CMSSetOption(void* handle, int option)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CMS_SetOption), option), absent);
}

int CMSMakeSignedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return secretRow(handle,
        {need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)},
        maker(SYMBOL(HVTK_CMS_MakeSignedData_File), certificate, privateKey, contentFile, signingTime, messageFile),
        gpki(SYMBOL(GPKI_CMS_MakeSignedData_NoContent_File), certificate, privateKey, contentFile, signingTime,
            messageFile));
}

int CMSMakeSignedDataFileWithContent(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return secretRow(handle,
        {need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)},
        maker(SYMBOL(HVTK_CMS_MakeSignedData_WithContent_File), certificate, privateKey, contentFile, signingTime,
            messageFile),
        gpki(SYMBOL(GPKI_CMS_MakeSignedData_File), certificate, privateKey, contentFile, signingTime, messageFile));
}

int CMSProcessSignedDataFile(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return row(handle, {need(contentFile), need(messageFile)},
        maker(SYMBOL(HVTK_CMS_ProcessSignedData_File), contentFile, messageFile, certificate, signingTime),
        gpki(
            SYMBOL(GPKI_CMS_ProcessSignedData_NoContent_File), contentFile, messageFile, certificate, signingTime));
}

int CMSProcessSignedDataFileWithContent(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    // Intended: the toolkit processes detached and complete messages with one function.
    return row(handle, {need(contentFile), need(messageFile)},
        maker(SYMBOL(HVTK_CMS_ProcessSignedData_File), contentFile, messageFile, certificate, signingTime),
        gpki(SYMBOL(GPKI_CMS_ProcessSignedData_File), contentFile, messageFile, certificate, signingTime));
}

int CMSGetSignerCaPubs(void* handle, BINSTR* certificates)
{
    return row(handle, {}, absent, gpki(SYMBOL(GPKI_CMS_GetSignerCaPubs), certificates));
}

int CMSGetTBTData(void* handle, int index, BINSTR* data)
{
    return row(handle, {}, absent, gpki(SYMBOL(GPKI_CMS_GetTBTData), index, data));
}

int CMSGetTimeStampToken1(void* handle, int index, BINSTR* token)
{
    return row(handle, {}, absent, gpki(SYMBOL(GPKI_CMS_GetTimeStampToken), index, token));
}

int CMSGetTimeStampToken2(void* handle, BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage)
{
    return row(handle, {need(message), need(token)}, absent,
        gpki(SYMBOL(GPKI_CMS_SetTimeStampToken), message, index, token, stampedMessage));
}

int CMSMakeEnvelopedData(
    void* handle, int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return secretRow(handle, {need(recipient), need(content)},
        maker(SYMBOL(HVTK_CMS_MakeEnvelopedData), option, recipient, content, algorithm, envelopedMessage),
        gpki(SYMBOL(GPKI_CMS_MakeEnvelopedData), recipient, content, algorithm, envelopedMessage));
}

int CMSMakeEnvDataWithMultiRec(
    void* handle, int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return secretRow(handle, {need(recipients), need(content)},
        maker(SYMBOL(HVTK_CMS_MakeEnvelopedDataWithMultiRecipients), option, recipients, content, algorithm,
            envelopedMessage),
        gpki(SYMBOL(GPKI_CMS_MakeEnvelopedDataWithMultiRecipients), recipients, content, algorithm,
            envelopedMessage));
}

int CMSProcessEnvelopedData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(message)},
        maker(SYMBOL(HVTK_CMS_ProcessEnvelopedData), certificate, privateKey, message, content),
        gpki(SYMBOL(GPKI_CMS_ProcessEnvelopedData), certificate, privateKey, message, content));
}

int CMSMakeEnvelopedDataFile(
    void* handle, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile)
{
    return secretRow(handle, {need(recipient), need(contentFile), need(messageFile), need(cipherFile)},
        maker(SYMBOL(HVTK_CMS_MakeEnvelopedData_File), recipient, contentFile, algorithm, messageFile, cipherFile),
        gpki(SYMBOL(GPKI_CMS_MakeEnvelopedData_File), recipient, contentFile, algorithm, messageFile));
}

int CMSProcessEnvelopedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile)
{
    return secretRow(handle,
        {need(certificate), need(privateKey), need(messageFile), need(cipherFile), need(contentFile)},
        maker(SYMBOL(HVTK_CMS_ProcessEnvelopedData_File), certificate, privateKey, messageFile, cipherFile,
            contentFile),
        gpki(SYMBOL(GPKI_CMS_ProcessEnvelopedData_NoContent_File), certificate, privateKey, messageFile, cipherFile,
            contentFile));
}

int CMSProcessEnvDataFileWithContent(void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile,
    char* /*cipherFile*/, char* contentFile)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(messageFile), need(contentFile)},
        maker(SYMBOL(HVTK_CMS_ProcessEnvelopedData_WithContent_File), certificate, privateKey, messageFile,
            contentFile),
        gpki(SYMBOL(GPKI_CMS_ProcessEnvelopedData_File), certificate, privateKey, messageFile, contentFile));
}

int CMSMakeSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient,
    BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(recipient), need(content)},
        maker(SYMBOL(HVTK_CMS_MakeSignedAndEnvData), option, certificate, privateKey, recipient, content, algorithm,
            envelopedMessage),
        gpki(SYMBOL(GPKI_CMS_MakeSignedAndEnvData), certificate, privateKey, recipient, content, algorithm,
            envelopedMessage));
}

int CMSProcessSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* content, BINSTR* signerCertificate)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(message)},
        maker(SYMBOL(HVTK_CMS_ProcessSignedAndEnvData), option, certificate, privateKey, message, content,
            signerCertificate),
        gpki(SYMBOL(GPKI_CMS_ProcessSignedAndEnvData), certificate, privateKey, message, content,
            signerCertificate));
}

int CMSMakeEncryptedData(
    void* handle, int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage)
{
    return secretRow(handle, {need(content)},
        maker(SYMBOL(HVTK_CMS_EncryptData), option, key, content, algorithm, encryptedMessage),
        gpki(SYMBOL(GPKI_CMS_MakeEncryptedData), content, encryptedMessage));
}

int CMSProcessEncryptedData(void* handle, BINSTR* key, BINSTR* message, BINSTR* content)
{
    return secretRow(handle, {need(key), need(message)},
        maker(SYMBOL(HVTK_CMS_ProcessEncryptedData), key, message, content),
        gpki(SYMBOL(GPKI_CMS_ProcessEncryptedData), key, message, content));
}
