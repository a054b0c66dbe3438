// Signed and enveloped messages.

#include "facade/dispatch.h"

#include <sigildesk/crypto/cms.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::CMSMakeSignedData(
    int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* content, char* signingTime, BINSTR* signedMessage)
{
    return pick({need(certificate), need(privateKey), need(signingTime)},
        to<&CHVTKWrap::CMSMakeSignedData>(option, certificate, privateKey, content, signingTime, signedMessage),
        to<&CGPKIWrap::CMSMakeSignedData>(certificate, privateKey, content, signingTime, signedMessage));
}

int CWrapperAPI::CMSMakeSignedDataWithAddSigner(
    int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, char* signingTime, BINSTR* signedMessage)
{
    return pick({need(certificate), need(privateKey), need(signingTime)},
        to<&CHVTKWrap::CMSMakeSignedDataWithAddSigner>(
            option, certificate, privateKey, message, signingTime, signedMessage),
        to<&CGPKIWrap::CMSMakeSignedDataWithAddSigner>(
            certificate, privateKey, message, signingTime, signedMessage));
}

int CWrapperAPI::CMSProcessSignedData(int option, BINSTR* message, BINSTR* content, int* signerCount)
{
    return pick({need(message)}, to<&CHVTKWrap::CMSProcessSignedData>(option, message, content, signerCount),
        to<&CGPKIWrap::CMSProcessSignedData2>(message, content, signerCount));
}

int CWrapperAPI::CMSGetSignerCert(int index, BINSTR* certificate, char* signingTime)
{
    return pick({}, to<&CHVTKWrap::CMSGetSignerCert>(index, certificate, signingTime),
        to<&CGPKIWrap::CMSGetSigner>(index, certificate, signingTime));
}

int CWrapperAPI::CMSMakekTBSData(
    int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes)
{
    return pick({need(certificate), need(content), need(signingTime)},
        to<&CHVTKWrap::CMSMakekTBSData>(option, certificate, content, signingTime, signedAttributes), absent);
}

int CWrapperAPI::CMSComposeSignedData(BINSTR* signature, BINSTR* signedMessage)
{
    return pick({need(signature)}, to<&CHVTKWrap::CMSComposeSignedData>(signature, signedMessage), absent);
}

int CWrapperAPI::CMSSetOption(int option) { return pick({}, to<&CHVTKWrap::CMSSetOption>(option), absent); }

int CWrapperAPI::CMSMakeSignedDataFile(
    BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return pick({need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)},
        to<&CHVTKWrap::CMSMakeSignedDataFile>(certificate, privateKey, contentFile, signingTime, messageFile),
        to<&CGPKIWrap::CMSMakeSignedDataFile>(certificate, privateKey, contentFile, signingTime, messageFile));
}

int CWrapperAPI::CMSMakeSignedDataFileWithContent(
    BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return pick({need(certificate), need(privateKey), need(contentFile), need(signingTime), need(messageFile)},
        to<&CHVTKWrap::CMSMakeSignedDataFileWithContent>(
            certificate, privateKey, contentFile, signingTime, messageFile),
        to<&CGPKIWrap::CMSMakeSignedDataFileWithContent>(
            certificate, privateKey, contentFile, signingTime, messageFile));
}

int CWrapperAPI::CMSProcessSignedDataFile(
    char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return pick({need(contentFile), need(messageFile)},
        to<&CHVTKWrap::CMSProcessSignedDataFile>(contentFile, messageFile, certificate, signingTime),
        to<&CGPKIWrap::CMSProcessSignedDataFile>(contentFile, messageFile, certificate, signingTime));
}

int CWrapperAPI::CMSProcessSignedDataFileWithContent(
    char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return pick({need(contentFile), need(messageFile)},
        to<&CHVTKWrap::CMSProcessSignedDataFileWithContent>(contentFile, messageFile, certificate, signingTime),
        to<&CGPKIWrap::CMSProcessSignedDataFileWithContent>(contentFile, messageFile, certificate, signingTime));
}

int CWrapperAPI::CMSGetSignerCaPubs(BINSTR* certificates)
{
    return pick({}, absent, to<&CGPKIWrap::CMSGetSignerCaPubs>(certificates));
}

int CWrapperAPI::CMSGetTBTData(int index, BINSTR* data)
{
    return pick({}, absent, to<&CGPKIWrap::CMSGetTBTData>(index, data));
}

int CWrapperAPI::CMSGetTimeStampToken(int index, BINSTR* token)
{
    return pick({}, absent, to<&CGPKIWrap::CMSGetTimeStampToken>(index, token));
}

int CWrapperAPI::CMSGetTimeStampToken(BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage)
{
    return pick({need(message), need(token)}, absent,
        to<&CGPKIWrap::CMSSetTimeStampToken>(message, index, token, stampedMessage));
}

int CWrapperAPI::CMSMakeEnvelopedData(
    int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return pick({need(recipient), need(content)},
        to<&CHVTKWrap::CMSMakeEnvelopedData>(option, recipient, content, algorithm, envelopedMessage),
        to<&CGPKIWrap::CMSMakeEnvelopedData>(recipient, content, algorithm, envelopedMessage));
}

int CWrapperAPI::CMSMakeEnvDataWithMultiRec(
    int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return pick({need(recipients), need(content)},
        to<&CHVTKWrap::CMSMakeEnvDataWithMultiRec>(option, recipients, content, algorithm, envelopedMessage),
        to<&CGPKIWrap::CMSMakeEnvDataWithMultiRec>(recipients, content, algorithm, envelopedMessage));
}

int CWrapperAPI::CMSProcessEnvelopedData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content)
{
    return pick({need(certificate), need(privateKey), need(message)},
        to<&CHVTKWrap::CMSProcessEnvelopedData>(certificate, privateKey, message, content),
        to<&CGPKIWrap::CMSProcessEnvelopedData>(certificate, privateKey, message, content));
}

int CWrapperAPI::CMSMakeEnvelopedDataFile(
    BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile)
{
    return pick({need(recipient), need(contentFile), need(messageFile), need(cipherFile)},
        to<&CHVTKWrap::CMSMakeEnvelopedDataFile>(recipient, contentFile, algorithm, messageFile, cipherFile),
        to<&CGPKIWrap::CMSMakeEnvelopedDataFile>(recipient, contentFile, algorithm, messageFile));
}

int CWrapperAPI::CMSProcessEnvelopedDataFile(
    BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile)
{
    return pick({need(certificate), need(privateKey), need(messageFile), need(cipherFile), need(contentFile)},
        to<&CHVTKWrap::CMSProcessEnvelopedDataFile>(certificate, privateKey, messageFile, cipherFile, contentFile),
        to<&CGPKIWrap::CMSProcessEnvelopedDataFile>(certificate, privateKey, messageFile, cipherFile, contentFile));
}

int CWrapperAPI::CMSProcessEnvDataWithContentFile(
    BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* /*cipherFile*/, char* contentFile)
{
    return pick({need(certificate), need(privateKey), need(messageFile), need(contentFile)},
        to<&CHVTKWrap::CMSProcessEnvDataWithContentFile>(certificate, privateKey, messageFile, contentFile),
        to<&CGPKIWrap::CMSProcessEnvDataWithContentFile>(certificate, privateKey, messageFile, contentFile));
}

int CWrapperAPI::CMSMakeSignedAndEnvData(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient,
    BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return pick({need(certificate), need(privateKey), need(recipient), need(content)},
        to<&CHVTKWrap::CMSMakeSignedAndEnvData>(
            option, certificate, privateKey, recipient, content, algorithm, envelopedMessage),
        to<&CGPKIWrap::CMSMakeSignedAndEnvData>(
            certificate, privateKey, recipient, content, algorithm, envelopedMessage));
}

int CWrapperAPI::CMSProcessSignedAndEnvData(int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* content, BINSTR* signerCertificate)
{
    return pick({need(certificate), need(privateKey), need(message)},
        to<&CHVTKWrap::CMSProcessSignedAndEnvData>(
            option, certificate, privateKey, message, content, signerCertificate),
        to<&CGPKIWrap::CMSProcessSignedAndEnvData>(certificate, privateKey, message, content, signerCertificate));
}

int CWrapperAPI::CMSMakeEncryptedData(
    int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage)
{
    return pick({need(content)},
        to<&CHVTKWrap::CMSMakeEncryptedData>(option, key, content, algorithm, encryptedMessage),
        to<&CGPKIWrap::CMSMakeEncryptedData>(content, encryptedMessage));
}

int CWrapperAPI::CMSProcessEncryptedData(BINSTR* key, BINSTR* message, BINSTR* content)
{
    return pick({need(key), need(message)}, to<&CHVTKWrap::CMSProcessEncryptedData>(key, message, content),
        to<&CGPKIWrap::CMSProcessEncryptedData>(key, message, content));
}

// Exports

int CMSMakeSignedData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* content,
    char* signingTime, BINSTR* signedMessage)
{
    return via(handle, &CWrapperAPI::CMSMakeSignedData, option, certificate, privateKey, content, signingTime,
        signedMessage);
}

int CMSMakeSignedDataWithAddSigner(void* handle, int option, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* message, char* signingTime, BINSTR* signedMessage)
{
    return via(handle, &CWrapperAPI::CMSMakeSignedDataWithAddSigner, option, certificate, privateKey, message,
        signingTime, signedMessage);
}

int CMSProcessSignedData(void* handle, int option, BINSTR* message, BINSTR* content, int* signerCount)
{
    return via(handle, &CWrapperAPI::CMSProcessSignedData, option, message, content, signerCount);
}

int CMSGetSignerCert(void* handle, int index, BINSTR* certificate, char* signingTime)
{
    return via(handle, &CWrapperAPI::CMSGetSignerCert, index, certificate, signingTime);
}

int CMSMakekTBSData(
    void* handle, int option, BINSTR* certificate, BINSTR* content, char* signingTime, BINSTR* signedAttributes)
{
    return via(handle, &CWrapperAPI::CMSMakekTBSData, option, certificate, content, signingTime, signedAttributes);
}

int CMSComposeSignedData(void* handle, BINSTR* signature, BINSTR* signedMessage)
{
    return via(handle, &CWrapperAPI::CMSComposeSignedData, signature, signedMessage);
}

int CMSSetOption(void* handle, int option) { return via(handle, &CWrapperAPI::CMSSetOption, option); }

int CMSMakeSignedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return via(handle, &CWrapperAPI::CMSMakeSignedDataFile, certificate, privateKey, contentFile, signingTime,
        messageFile);
}

int CMSMakeSignedDataFileWithContent(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* contentFile, char* signingTime, char* messageFile)
{
    return via(handle, &CWrapperAPI::CMSMakeSignedDataFileWithContent, certificate, privateKey, contentFile,
        signingTime, messageFile);
}

int CMSProcessSignedDataFile(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return via(handle, &CWrapperAPI::CMSProcessSignedDataFile, contentFile, messageFile, certificate, signingTime);
}

int CMSProcessSignedDataFileWithContent(
    void* handle, char* contentFile, char* messageFile, BINSTR* certificate, char* signingTime)
{
    return via(handle, &CWrapperAPI::CMSProcessSignedDataFileWithContent, contentFile, messageFile, certificate,
        signingTime);
}

int CMSGetSignerCaPubs(void* handle, BINSTR* certificates)
{
    return via(handle, &CWrapperAPI::CMSGetSignerCaPubs, certificates);
}

int CMSGetTBTData(void* handle, int index, BINSTR* data)
{
    return via(handle, &CWrapperAPI::CMSGetTBTData, index, data);
}

int CMSGetTimeStampToken1(void* handle, int index, BINSTR* token)
{
    return via(handle, &CWrapperAPI::CMSGetTimeStampToken, index, token);
}

int CMSGetTimeStampToken2(void* handle, BINSTR* message, int index, BINSTR* token, BINSTR* stampedMessage)
{
    return via(handle, &CWrapperAPI::CMSGetTimeStampToken, message, index, token, stampedMessage);
}

int CMSMakeEnvelopedData(
    void* handle, int option, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return via(handle, &CWrapperAPI::CMSMakeEnvelopedData, option, recipient, content, algorithm, envelopedMessage);
}

int CMSMakeEnvDataWithMultiRec(
    void* handle, int option, BINSTR* recipients, BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return via(
        handle, &CWrapperAPI::CMSMakeEnvDataWithMultiRec, option, recipients, content, algorithm, envelopedMessage);
}

int CMSProcessEnvelopedData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content)
{
    return via(handle, &CWrapperAPI::CMSProcessEnvelopedData, certificate, privateKey, message, content);
}

int CMSMakeEnvelopedDataFile(
    void* handle, BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile)
{
    return via(
        handle, &CWrapperAPI::CMSMakeEnvelopedDataFile, recipient, contentFile, algorithm, messageFile, cipherFile);
}

int CMSProcessEnvelopedDataFile(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile)
{
    return via(handle, &CWrapperAPI::CMSProcessEnvelopedDataFile, certificate, privateKey, messageFile, cipherFile,
        contentFile);
}

int CMSProcessEnvDataFileWithContent(
    void* handle, BINSTR* certificate, BINSTR* privateKey, char* messageFile, char* cipherFile, char* contentFile)
{
    return via(handle, &CWrapperAPI::CMSProcessEnvDataWithContentFile, certificate, privateKey, messageFile,
        cipherFile, contentFile);
}

int CMSMakeSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* recipient,
    BINSTR* content, int algorithm, BINSTR* envelopedMessage)
{
    return via(handle, &CWrapperAPI::CMSMakeSignedAndEnvData, option, certificate, privateKey, recipient, content,
        algorithm, envelopedMessage);
}

int CMSProcessSignedAndEnvData(void* handle, int option, BINSTR* certificate, BINSTR* privateKey, BINSTR* message,
    BINSTR* content, BINSTR* signerCertificate)
{
    return via(handle, &CWrapperAPI::CMSProcessSignedAndEnvData, option, certificate, privateKey, message, content,
        signerCertificate);
}

int CMSMakeEncryptedData(
    void* handle, int option, BINSTR* key, BINSTR* content, int algorithm, BINSTR* encryptedMessage)
{
    return via(handle, &CWrapperAPI::CMSMakeEncryptedData, option, key, content, algorithm, encryptedMessage);
}

int CMSProcessEncryptedData(void* handle, BINSTR* key, BINSTR* message, BINSTR* content)
{
    return via(handle, &CWrapperAPI::CMSProcessEncryptedData, key, message, content);
}
