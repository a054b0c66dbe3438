// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The methods that no export reaches: the binding of each toolkit is complete without them.

#include "facade/backends/gpki_wrap.h"
#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::CertGetSubjectName_DERFormat(BINSTR* name)
{
    return m_toolkit.call(SYMBOL(HVTK_CERT_GetSubjectName_DERFormat), {}, name);
}

int CHVTKWrap::CertGetPolicyConstraints(int capacity, char* text)
{
    return m_toolkit.call(SYMBOL(HVTK_CERT_GetPolicyConstraints), {need(text)}, capacity, text);
}

int CHVTKWrap::CMSGetEnvDataRecCnt(BINSTR* message, int* count)
{
    return m_toolkit.call(SYMBOL(HVTK_CMS_GetEnvDataRecipCnt), {need(message), need(count)}, message, count);
}

int CHVTKWrap::CMSGetEnvDataRecipInfo(int index, int capacity, char* issuer, char* serialNumber, char* algorithm)
{
    return m_toolkit.call(SYMBOL(HVTK_CMS_GetEnvDataRecipInfo), {need(issuer), need(serialNumber), need(algorithm)},
        index, capacity, issuer, serialNumber, algorithm);
}

int CHVTKWrap::CMSMakeEnvDataWithContentFile(BINSTR* recipient, char* contentFile, int algorithm, char* messageFile)
{
    return m_toolkit.call(SYMBOL(HVTK_CMS_MakeEnvelopedData_WithContent_File),
        {need(recipient), need(contentFile), need(messageFile)}, recipient, contentFile, algorithm, messageFile);
}

int CHVTKWrap::PKCS11OpenSession(char* pin)
{
    return m_toolkit.call(SYMBOL(HVTK_PKCS11_OpenSession), {need(pin)}, pin);
}

int CHVTKWrap::OCSPCheckCertStatus(
    char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey)
{
    return m_toolkit.call(SYMBOL(HVTK_OCSP_CheckCertStatus), {need(url), need(certificate)}, url, certificate,
        signRequest, signerCertificate, signerKey);
}

int CHVTKWrap::CRYPTSignFile(BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile)
{
    return m_toolkit.call(SYMBOL(HVTK_CRYPT_SignFile),
        {need(certificate), need(privateKey), need(inputFile), need(outputFile)}, certificate, privateKey, hash,
        inputFile, outputFile);
}

int CGPKIWrap::GetInfo(char* buffer) { return m_toolkit.call(SYMBOL(GPKI_API_GetInfo), {}, 8, buffer); }

int CGPKIWrap::CMSProcessSignedData(BINSTR* message, BINSTR* content, BINSTR* certificate, char* signingTime)
{
    return m_toolkit.call(
        SYMBOL(GPKI_CMS_ProcessSignedData), {need(message)}, message, content, certificate, signingTime);
}

int CGPKIWrap::CMSMakeEnvelopedDataNoContentFile(
    BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile)
{
    return m_toolkit.call(SYMBOL(GPKI_CMS_MakeEnvelopedData_NoContent_File),
        {need(recipient), need(contentFile), need(messageFile), need(cipherFile)}, recipient, contentFile,
        algorithm, messageFile, cipherFile);
}

int CGPKIWrap::WCMSMakeSignedContent(BINSTR* certificate, BINSTR* privateKey, BINSTR* content, BINSTR* message)
{
    return m_toolkit.call(SYMBOL(GPKI_WCMS_MakeSignedContent), {need(certificate), need(privateKey), need(content)},
        certificate, privateKey, content, message);
}

int CGPKIWrap::WCMSProcessSignedContent(BINSTR* message, BINSTR* content, BINSTR* certificate)
{
    return m_toolkit.call(SYMBOL(GPKI_WCMS_ProcessSignedContent), {need(message)}, message, content, certificate);
}

int CGPKIWrap::WCMSMakeWapEnvelopedData(BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* message)
{
    return m_toolkit.call(SYMBOL(GPKI_WCMS_MakeWapEnvelopedData), {need(recipient), need(content)}, recipient,
        content, algorithm, message);
}

int CGPKIWrap::WCMSProcessWapEnvelopedData(
    BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content)
{
    return m_toolkit.call(SYMBOL(GPKI_WCMS_ProcessWapEnvelopedData),
        {need(certificate), need(privateKey), need(message)}, certificate, privateKey, message, content);
}

int CGPKIWrap::CryptSignFile(BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile)
{
    return m_toolkit.call(SYMBOL(GPKI_CRYPT_Sign_File),
        {need(certificate), need(privateKey), need(inputFile), need(outputFile)}, certificate, privateKey, hash,
        inputFile, outputFile);
}
