// Signed and enveloped messages of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::CMSMakeSignedData(
    BINSTR* certificate, BINSTR* privateKey, BINSTR* content, char* signingTime, BINSTR* signedMessage)
{
    return m_toolkit.call("GPKI_CMS_MakeSignedData", {need(certificate), need(privateKey), need(signingTime)},
        certificate, privateKey, content, signingTime, signedMessage);
}

int CGPKIWrap::CMSMakeSignedDataWithAddSigner(
    BINSTR* certificate, BINSTR* privateKey, BINSTR* message, char* signingTime, BINSTR* signedMessage)
{
    return m_toolkit.call("GPKI_CMS_MakeSignedDataWithAddSigner",
        {need(certificate), need(privateKey), need(signingTime)}, certificate, privateKey, message, signingTime,
        signedMessage);
}

int CGPKIWrap::CMSProcessSignedData2(BINSTR* message, BINSTR* content, int* signerCount)
{
    return m_toolkit.call("GPKI_CMS_ProcessSignedData2", {need(message)}, message, content, signerCount);
}

int CGPKIWrap::CMSGetSigner(int index, BINSTR* certificate, char* signingTime)
{
    return m_toolkit.call("GPKI_CMS_GetSigner", {}, index, certificate, signingTime);
}

int CGPKIWrap::CMSMakeSignedDataFile(
    BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return m_toolkit.call("GPKI_CMS_MakeSignedData_NoContent_File",
        {need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)}, certificate,
        privateKey, contentFile, signingTime, messageFile);
}

int CGPKIWrap::CMSMakeSignedDataFileWithContent(
    BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return m_toolkit.call("GPKI_CMS_MakeSignedData_File",
        {need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)}, certificate,
        privateKey, contentFile, signingTime, messageFile);
}

int CGPKIWrap::CMSProcessSignedDataFile(
    char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return m_toolkit.call("GPKI_CMS_ProcessSignedData_NoContent_File", {need(contentFile), need(messageFile)},
        contentFile, messageFile, certificate, signingTime);
}

int CGPKIWrap::CMSProcessSignedDataFileWithContent(
    char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return m_toolkit.call("GPKI_CMS_ProcessSignedData_File", {need(contentFile), need(messageFile)}, contentFile,
        messageFile, certificate, signingTime);
}

int CGPKIWrap::CMSGetSignerCaPubs(BINSTR* certificates)
{
    return m_toolkit.call("GPKI_CMS_GetSignerCaPubs", {}, certificates);
}

int CGPKIWrap::CMSGetTBTData(int index, BINSTR* data)
{
    return m_toolkit.call("GPKI_CMS_GetTBTData", {}, index, data);
}

int CGPKIWrap::CMSGetTimeStampToken(int index, BINSTR* token)
{
    return m_toolkit.call("GPKI_CMS_GetTimeStampToken", {}, index, token);
}

int CGPKIWrap::CMSSetTimeStampToken(BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage)
{
    return m_toolkit.call(
        "GPKI_CMS_SetTimeStampToken", {need(message), need(token)}, message, index, token, stampedMessage);
}

int CGPKIWrap::CMSMakeEnvelopedData(BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return m_toolkit.call("GPKI_CMS_MakeEnvelopedData", {need(recipient), need(content)}, recipient, content,
        algorithm, envelopedMessage);
}

int CGPKIWrap::CMSMakeEnvDataWithMultiRec(
    BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return m_toolkit.call("GPKI_CMS_MakeEnvelopedDataWithMultiRecipients", {need(recipients), need(content)},
        recipients, content, algorithm, envelopedMessage);
}

int CGPKIWrap::CMSProcessEnvelopedData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content)
{
    return m_toolkit.call("GPKI_CMS_ProcessEnvelopedData", {need(certificate), need(privateKey), need(message)},
        certificate, privateKey, message, content);
}

int CGPKIWrap::CMSMakeEnvelopedDataFile(BINSTR* recipient, char* contentFile, int algorithm, char* messageFile)
{
    return m_toolkit.call("GPKI_CMS_MakeEnvelopedData_File",
        {need(recipient), need(contentFile), need(messageFile)}, recipient, contentFile, algorithm, messageFile);
}

int CGPKIWrap::CMSProcessEnvelopedDataFile(
    BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile)
{
    return m_toolkit.call("GPKI_CMS_ProcessEnvelopedData_NoContent_File",
        {need(certificate), need(privateKey), need(messageFile), need(cipherFile), need(contentFile)}, certificate,
        privateKey, messageFile, cipherFile, contentFile);
}

int CGPKIWrap::CMSProcessEnvDataWithContentFile(
    BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* contentFile)
{
    return m_toolkit.call("GPKI_CMS_ProcessEnvelopedData_File",
        {need(certificate), need(privateKey), need(messageFile), need(contentFile)}, certificate, privateKey,
        messageFile, contentFile);
}

int CGPKIWrap::CMSMakeSignedAndEnvData(BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient, BINSTR* content,
    int algorithm, BINSTR* envelopedMessage)
{
    return m_toolkit.call("GPKI_CMS_MakeSignedAndEnvData",
        {need(certificate), need(privateKey), need(recipient), need(content)}, certificate, privateKey, recipient,
        content, algorithm, envelopedMessage);
}

int CGPKIWrap::CMSProcessSignedAndEnvData(
    BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content, BINSTR* signerCertificate)
{
    return m_toolkit.call("GPKI_CMS_ProcessSignedAndEnvData", {need(certificate), need(privateKey), need(message)},
        certificate, privateKey, message, content, signerCertificate);
}

int CGPKIWrap::CMSMakeEncryptedData(BINSTR* content, BINSTR* encryptedMessage)
{
    return m_toolkit.call("GPKI_CMS_MakeEncryptedData", {need(content)}, content, encryptedMessage);
}

int CGPKIWrap::CMSProcessEncryptedData(BINSTR* key, BINSTR* message, BINSTR* content)
{
    return m_toolkit.call("GPKI_CMS_ProcessEncryptedData", {need(key), need(message)}, key, message, content);
}

int CGPKIWrap::CMSProcessSignedData(BINSTR* message, BINSTR* content, BINSTR* certificate, char* signingTime)
{
    return m_toolkit.call(
        "GPKI_CMS_ProcessSignedData", {need(message)}, message, content, certificate, signingTime);
}

int CGPKIWrap::CMSMakeEnvelopedDataNoContentFile(
    BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile)
{
    return m_toolkit.call("GPKI_CMS_MakeEnvelopedData_NoContent_File",
        {need(recipient), need(contentFile), need(messageFile), need(cipherFile)}, recipient, contentFile,
        algorithm, messageFile, cipherFile);
}
