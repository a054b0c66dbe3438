// Signed and enveloped messages of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::CMSMakeSignedData(
    int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* content, char* signingTime, BINSTR* signedMessage)
{
    return m_toolkit.call("HVTK_CMS_MakeSignedData", {need(certificate), need(privateKey), need(signingTime)},
        option, certificate, privateKey, content, signingTime, signedMessage);
}

int CHVTKWrap::CMSMakeSignedDataWithAddSigner(
    int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, char* signingTime, BINSTR* signedMessage)
{
    return m_toolkit.call("HVTK_CMS_MakeSignedDataWithAddSigner",
        {need(certificate), need(privateKey), need(signingTime)}, option, certificate, privateKey, message,
        signingTime, signedMessage);
}

int CHVTKWrap::CMSProcessSignedData(int option, BINSTR* message, BINSTR* content, int* signerCount)
{
    return m_toolkit.call("HVTK_CMS_ProcessSignedData", {need(message)}, option, message, content, signerCount);
}

int CHVTKWrap::CMSGetSignerCert(int index, BINSTR* certificate, char* signingTime)
{
    return m_toolkit.call("HVTK_CMS_GetSignerCert", {}, index, certificate, signingTime);
}

int CHVTKWrap::CMSMakekTBSData(
    int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes)
{
    return m_toolkit.call("HVTK_CMS_MakeTBSData", {need(certificate), need(content), need(signingTime)}, option,
        certificate, content, signingTime, signedAttributes);
}

int CHVTKWrap::CMSComposeSignedData(BINSTR* signature, BINSTR* signedMessage)
{
    return m_toolkit.call("HVTK_CMS_ComposeSignedData", {need(signature)}, signature, signedMessage);
}

int CHVTKWrap::CMSSetOption(int option) { return m_toolkit.call("HVTK_CMS_SetOption", {}, option); }

int CHVTKWrap::CMSMakeSignedDataFile(
    BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return m_toolkit.call("HVTK_CMS_MakeSignedData_File",
        {need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)}, certificate,
        privateKey, contentFile, signingTime, messageFile);
}

int CHVTKWrap::CMSMakeSignedDataFileWithContent(
    BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return m_toolkit.call("HVTK_CMS_MakeSignedData_WithContent_File",
        {need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)}, certificate,
        privateKey, contentFile, signingTime, messageFile);
}

int CHVTKWrap::CMSProcessSignedDataFile(
    char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return m_toolkit.call("HVTK_CMS_ProcessSignedData_File", {need(contentFile), need(messageFile)}, contentFile,
        messageFile, certificate, signingTime);
}

int CHVTKWrap::CMSProcessSignedDataFileWithContent(
    char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    // Intended: the toolkit processes detached and complete messages with one function.
    return m_toolkit.call("HVTK_CMS_ProcessSignedData_File", {need(contentFile), need(messageFile)}, contentFile,
        messageFile, certificate, signingTime);
}

int CHVTKWrap::CMSMakeEnvelopedData(
    int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return m_toolkit.call("HVTK_CMS_MakeEnvelopedData", {need(recipient), need(content)}, option, recipient,
        content, algorithm, envelopedMessage);
}

int CHVTKWrap::CMSMakeEnvDataWithMultiRec(
    int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return m_toolkit.call("HVTK_CMS_MakeEnvelopedDataWithMultiRecipients", {need(recipients), need(content)},
        option, recipients, content, algorithm, envelopedMessage);
}

int CHVTKWrap::CMSProcessEnvelopedData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content)
{
    return m_toolkit.call("HVTK_CMS_ProcessEnvelopedData", {need(certificate), need(privateKey), need(message)},
        certificate, privateKey, message, content);
}

int CHVTKWrap::CMSMakeEnvelopedDataFile(
    BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile)
{
    return m_toolkit.call("HVTK_CMS_MakeEnvelopedData_File",
        {need(recipient), need(contentFile), need(messageFile), need(cipherFile)}, recipient, contentFile,
        algorithm, messageFile, cipherFile);
}

int CHVTKWrap::CMSProcessEnvelopedDataFile(
    BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile)
{
    return m_toolkit.call("HVTK_CMS_ProcessEnvelopedData_File",
        {need(certificate), need(privateKey), need(messageFile), need(cipherFile), need(contentFile)}, certificate,
        privateKey, messageFile, cipherFile, contentFile);
}

int CHVTKWrap::CMSProcessEnvDataWithContentFile(
    BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* contentFile)
{
    return m_toolkit.call("HVTK_CMS_ProcessEnvelopedData_WithContent_File",
        {need(certificate), need(privateKey), need(messageFile), need(contentFile)}, certificate, privateKey,
        messageFile, contentFile);
}

int CHVTKWrap::CMSMakeSignedAndEnvData(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient,
    BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return m_toolkit.call("HVTK_CMS_MakeSignedAndEnvData",
        {need(certificate), need(privateKey), need(recipient), need(content)}, option, certificate, privateKey,
        recipient, content, algorithm, envelopedMessage);
}

int CHVTKWrap::CMSProcessSignedAndEnvData(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* content, BINSTR* signerCertificate)
{
    return m_toolkit.call("HVTK_CMS_ProcessSignedAndEnvData", {need(certificate), need(privateKey), need(message)},
        option, certificate, privateKey, message, content, signerCertificate);
}

int CHVTKWrap::CMSMakeEncryptedData(
    int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage)
{
    return m_toolkit.call(
        "HVTK_CMS_EncryptData", {need(content)}, option, key, content, algorithm, encryptedMessage);
}

int CHVTKWrap::CMSProcessEncryptedData(BINSTR* key, BINSTR* message, BINSTR* content)
{
    return m_toolkit.call("HVTK_CMS_ProcessEncryptedData", {need(key), need(message)}, key, message, content);
}

int CHVTKWrap::CMSGetEnvDataRecCnt(BINSTR* message, int* count)
{
    return m_toolkit.call("HVTK_CMS_GetEnvDataRecipCnt", {need(message), need(count)}, message, count);
}

int CHVTKWrap::CMSGetEnvDataRecipInfo(int index, int capacity, char* issuer, char* serialNumber, char* algorithm)
{
    return m_toolkit.call("HVTK_CMS_GetEnvDataRecipInfo", {need(issuer), need(serialNumber), need(algorithm)},
        index, capacity, issuer, serialNumber, algorithm);
}

int CHVTKWrap::CMSMakeEnvDataWithContentFile(BINSTR* recipient, char* contentFile, int algorithm, char* messageFile)
{
    return m_toolkit.call("HVTK_CMS_MakeEnvelopedData_WithContent_File",
        {need(recipient), need(contentFile), need(messageFile)}, recipient, contentFile, algorithm, messageFile);
}
