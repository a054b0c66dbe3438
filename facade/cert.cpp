// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificate inspection and verification.

#include "facade/row.h"

#include <sigildesk/crypto/cert.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

using namespace sigil;

namespace {

constexpr int dateCapacity = 25;

/** Zeroed room in which a toolkit that was told the capacity may write all of it and forget the terminator: there is
 *  always one byte more. Only an unusual capacity costs memory, and none of it more than the largest that is told. */
class ValidityText {
public:
    explicit ValidityText(int capacity)
        : m_told(std::min(capacity, largest))
        , m_more(m_told > usual ? new (std::nothrow) char[static_cast<std::size_t>(m_told) + 1]() : nullptr)
    {
    }
    /** The capacity to tell the toolkit: the caller's. */
    int told() const { return m_told; }
    /** Null when there was no memory for it. */
    char* room() { return m_told > usual ? m_more.get() : m_usual; }
    std::string_view text() { return {room(), strnlen(room(), static_cast<std::size_t>(std::max(m_told, usual)))}; }

private:
    static constexpr int usual = 1024;
    static constexpr int largest = 65536; // far more than two dates take
    int m_told;
    char m_usual[usual + 1] = {};
    std::unique_ptr<char[]> m_more;
};

/** The GPKI library writes both dates into one text, "A ~ B". It is told the capacity of the caller's first buffer. */
int splitValidity(CGPKIWrap& library, int capacity, char* notBefore, char* notAfter)
{
    ValidityText both(capacity);
    if (!both.room())
        return SIGIL_NO_MEMORY;
    if (const int result = gpki(SYMBOL(GPKI_CERT_GetValidity), both.told(), both.room())(library))
        return result;
    const std::string_view text = both.text();
    const std::size_t tilde = text.find('~');
    if (tilde == std::string_view::npos || tilde == 0)
        return SIGIL_BAD_ARGUMENT;
    // The caller's first buffer is expected to be zeroed: its date is deliberately not terminated.
    text.copy(notBefore, tilde - 1);
    const std::string_view after = text.substr(std::min(tilde + 2, text.size()));
    after.copy(notAfter, after.size());
    notAfter[after.size()] = '\0';
    return SIGIL_SUCCESS;
}

struct PublicKeyTexts {
    char algorithm[50] = {};
    char keyLength[20] = {}; // only the GPKI library fills it
};

int readPublicKey(
    CHVTKWrap& toolkit, PublicKeyTexts& texts, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR& der)
{
    if (const int result =
            maker(SYMBOL(HVTK_CERT_GetPubKey), publicKeyCapacity, texts.algorithm, publicKey)(toolkit))
        return result;
    return maker(SYMBOL(HVTK_CERT_GetPubKey2), {need(keyLength)}, texts.algorithm, keyLength, &der)(toolkit);
}

int readPublicKey(CGPKIWrap& library, PublicKeyTexts& texts, int publicKeyCapacity, char* publicKey)
{
    constexpr int algorithmCapacity = sizeof texts.algorithm;
    constexpr int lengthCapacity = sizeof texts.keyLength;
    if (const int result = gpki(SYMBOL(GPKI_CERT_GetPubKeyAlg), algorithmCapacity, texts.algorithm)(library))
        return result;
    if (const int result = gpki(SYMBOL(GPKI_CERT_GetPubKeyLen), lengthCapacity, texts.keyLength)(library))
        return result;
    return gpki(SYMBOL(GPKI_CERT_GetPubKey), publicKeyCapacity, publicKey)(library);
}

/** Copies the field whole but for its last byte, text and zeros alike; callers rely on the fixed number of bytes. An
 *  empty field leaves the target alone. */
template <std::size_t N>
void copyWhole(char* target, const char (&field)[N])
{
    if (target && *field)
        std::memcpy(target, field, N - 1);
}

/** For pick: says only that the call may go on. */
constexpr auto ready = [](auto&) -> int { return SIGIL_SUCCESS; };

} // namespace

int CertLoad(void* handle, BINSTR* certificate)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CERT_Load), {need(certificate)}, certificate),
        gpki(SYMBOL(GPKI_CERT_Load), {need(certificate)}, certificate));
}

int CertUnLoad(void* handle)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CERT_Unload)), gpki(SYMBOL(GPKI_CERT_Unload)));
}

int CertGetUID(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetUID), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetUID), capacity, text));
}

int CertGetVersion(void* handle, int capacity, char* text)
{
    const auto write = [=](auto& backend) { return backend.CertGetVersion(capacity, text); };
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, write, write);
}

int CertGetSerialNum(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetSerialNum), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetSerialNum), capacity, text));
}

int CertGetSignatureAlgorithm(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)},
        maker(SYMBOL(HVTK_CERT_GetSignatureAlgorithm), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetSignatureAlgorithm), capacity, text));
}

int CertGetIssuerName(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetIssuerName), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetIssuerName), capacity, text));
}

int CWrapperAPI::CertGetValidity(int notBeforeCapacity, char* notBefore, int notAfterCapacity, char* notAfter)
{
    const auto toMaker = [=](CHVTKWrap& toolkit) -> int {
        // The maker toolkit is told no capacity, so the room for its two dates is insisted on here.
        const bool roomy = notBeforeCapacity >= dateCapacity && notAfterCapacity >= dateCapacity;
        return roomy ? maker(SYMBOL(HVTK_CERT_GetValidity), notBefore, notAfter)(toolkit) : SIGIL_BAD_ARGUMENT;
    };
    return pick({need(notAfter, SIGIL_MISSING_FIELD), need(notBefore, SIGIL_MISSING_FIELD)}, toMaker,
        [=](CGPKIWrap& library) { return splitValidity(library, notBeforeCapacity, notBefore, notAfter); });
}

int CertGetValidity(void* handle, int notBeforeCapacity, char* notBefore, int notAfterCapacity, char* notAfter)
{
    return via(handle, &CWrapperAPI::CertGetValidity, notBeforeCapacity, notBefore, notAfterCapacity, notAfter);
}

int CertGetSubjectName(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetSubjectName), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetSubjectName), capacity, text));
}

int CWrapperAPI::CertGetPubKeyInfo(
    char* algorithm, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR* publicKeyDer)
{
    if (const int code = pick({need(publicKey, SIGIL_MISSING_FIELD)}, ready, ready))
        return code;
    PublicKeyTexts texts;
    BINSTR der{};
    BINCreate(&der);
    const int result = pick(
        {},
        [&](CHVTKWrap& toolkit) {
            return readPublicKey(toolkit, texts, keyLength, publicKeyCapacity, publicKey, der);
        },
        [&](CGPKIWrap& library) { return readPublicKey(library, texts, publicKeyCapacity, publicKey); });
    if (result == SIGIL_SUCCESS) {
        if (der.nLength > 0)
            BINSetData(der.pData, der.nLength, publicKeyDer);
        copyWhole(algorithm, texts.algorithm);
        copyWhole(keyLength, texts.keyLength);
    }
    if (der.nLength > 0)
        BINDelete(&der);
    return result;
}

int CertGetPubKeyInfo(
    void* handle, char* algorithm, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR* publicKeyDer)
{
    return via(
        handle, &CWrapperAPI::CertGetPubKeyInfo, algorithm, keyLength, publicKeyCapacity, publicKey, publicKeyDer);
}

int CertGetSignature(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetSignature), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetSignature), capacity, text));
}

int CertGetKeyUsage(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetKeyUsage), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetKeyUsage), capacity, text));
}

int CertGetBasicConstraints(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)},
        maker(SYMBOL(HVTK_CERT_GetBasicConstraints), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetBasicConstraints), capacity, text));
}

int CertGetCertPolicy(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetCertPolicy), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetCertPolicy), capacity, text));
}

int CertGetPolicyID(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)},
        maker(SYMBOL(HVTK_CERT_GetCertPolicy_PolicyID), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetCertPolicyID), capacity, text));
}

int CertGetExtKeyUsage(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetExtKeyUsage), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetExtKeyUsage), capacity, text));
}

int CertGetSubjectAltName(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)},
        maker(SYMBOL(HVTK_CERT_GetSubjectAltName), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetSubjectAltName), capacity, text));
}

int CertGetIssuerAltName(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetIssuerAltName), capacity, text),
        absent);
}

int CertGetAuthKeyID(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetAuthKeyID), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetAuthKeyID), capacity, text));
}

int CertGetSubKeyID(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetSubKeyID), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetSubKeyID), capacity, text));
}

int CertGetCRLDP(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetCRLDP), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetCRLDP), capacity, text));
}

int CertGetCRLDPURL(void* handle, int capacity, char* text)
{
    return row(
        handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetCRLDP_URL), capacity, text), absent);
}

int CertGetAIA(void* handle, int capacity, char* text)
{
    return row(handle, {need(text, SIGIL_MISSING_FIELD)}, maker(SYMBOL(HVTK_CERT_GetAIA), capacity, text),
        gpki(SYMBOL(GPKI_CERT_GetAIA), capacity, text));
}

int CertGetRemainDays(void* handle, BINSTR* certificate, int* days)
{
    return row(handle, {need(certificate, SIGIL_MISSING_FIELD)},
        maker(SYMBOL(HVTK_CERT_GetRemainDays), {need(days)}, certificate, days),
        gpki(SYMBOL(GPKI_CERT_GetRemainDays), {need(days)}, certificate, days));
}

int CertAddCert(void* handle, BINSTR* certificate, BINSTR* list)
{
    return row(handle, {need(certificate)}, absent, gpki(SYMBOL(GPKI_CERT_AddCert), certificate, list));
}

int CertGetCertCount(void* handle, BINSTR* list, int* count)
{
    return row(handle, {need(list)}, absent, gpki(SYMBOL(GPKI_CERT_GetCertCount), {need(count)}, list, count));
}

int CertGetCert(void* handle, BINSTR* list, int index, BINSTR* certificate)
{
    // Intended: the output record must hold data already; hosts fill it before they call.
    return row(handle, {need(list, SIGIL_MISSING_FIELD)}, absent,
        gpki(SYMBOL(GPKI_CERT_GetCert), {need(certificate)}, list, index, certificate));
}

int CertAddTrustedCert(void* handle, BINSTR* certificate)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_CERT_AddTrustedCert), certificate),
        gpki(SYMBOL(GPKI_CERT_AddTrustedCert), certificate));
}

int CertSetVerifyEnv(void* handle, int range, int statusCheck, bool useCache, char* cachePath, char* confFile)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CERT_SetVerifyEnv1), range, statusCheck, useCache, confFile),
        gpki(SYMBOL(GPKI_CERT_SetVerifyEnv), range, statusCheck, useCache, cachePath, confFile));
}

int CertSetVerifyEnv2(void* handle, char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates)
{
    return row(handle, {},
        maker(SYMBOL(HVTK_CERT_SetVerifyEnv2),
            {need(confFile), needRecord(trustedCertificates), needRecord(intermediates)}, confFile,
            trustedCertificates, intermediates),
        absent);
}

int CertVerify(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl)
{
    return row(handle, {need(certificate)},
        maker(SYMBOL(HVTK_CERT_Verify), certificate, purpose, time, checkStatus, intermediates, crl),
        gpki(SYMBOL(GPKI_CERT_Verify), certificate, purpose, time, confFile, checkStatus, intermediates, crl));
}

int CertVerify2(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_CERT_Verify2), certificate, purpose, time, confFile),
        absent);
}

int CertVerifyByIVS(void* handle, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate)
{
    return row(handle,
        {need(confFile, SIGIL_MISSING_FIELD), need(certificate, SIGIL_MISSING_FIELD),
            need(ivsCertificate, SIGIL_MISSING_FIELD)},
        maker(SYMBOL(HVTK_CERT_VerifyByIVS), confFile, certificate, ivsCertificate),
        gpki(SYMBOL(GPKI_CERT_VerifyByIVS), confFile, certificate, ivsCertificate));
}

int CertCheckStatByOCSP(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* reason)
{
    return row(handle, {need(certificate), need(signerKey), need(url), need(responderCertificate)}, absent,
        gpki(SYMBOL(GPKI_CERT_CheckStatByOCSP), certificate, signRequest, signerCertificate, signerKey, url,
            responderCertificate, revocationTime, reason));
}

int CertCheckStatByCRL(void* handle, BINSTR* certificate, char* revocationTime, int* reason)
{
    return row(handle, {need(certificate)},
        maker(SYMBOL(HVTK_CERT_CheckStatByCRL), certificate, revocationTime, reason),
        gpki(SYMBOL(GPKI_CERT_CheckStatByCRL), certificate, revocationTime, reason));
}
