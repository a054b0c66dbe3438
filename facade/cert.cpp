// Certificate inspection and verification.

#include "facade/dispatch.h"

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
int splitValidity(CGPKIWrap& gpki, int capacity, char* notBefore, char* notAfter)
{
    ValidityText both(capacity);
    if (!both.room())
        return NoMemory;
    if (const int result = gpki.CertGetValidity(both.told(), both.room()))
        return result;
    const std::string_view text = both.text();
    const std::size_t tilde = text.find('~');
    if (tilde == std::string_view::npos || tilde == 0)
        return InvalidArgument;
    // The caller's first buffer is expected to be zeroed: its date is deliberately not terminated.
    text.copy(notBefore, tilde - 1);
    const std::string_view after = text.substr(std::min(tilde + 2, text.size()));
    after.copy(notAfter, after.size());
    notAfter[after.size()] = '\0';
    return Success;
}

struct PublicKeyTexts {
    char algorithm[50] = {};
    char keyLength[20] = {}; // only the GPKI library fills it
};

int readPublicKey(
    CHVTKWrap& maker, PublicKeyTexts& texts, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR& der)
{
    if (const int result = maker.CertGetPubKey(publicKeyCapacity, texts.algorithm, publicKey))
        return result;
    return maker.CertGetPubKey2(texts.algorithm, keyLength, &der);
}

int readPublicKey(CGPKIWrap& gpki, PublicKeyTexts& texts, int publicKeyCapacity, char* publicKey)
{
    if (const int result = gpki.CertGetPubKeyAlg(sizeof texts.algorithm, texts.algorithm))
        return result;
    if (const int result = gpki.CertGetPubKeyLen(sizeof texts.keyLength, texts.keyLength))
        return result;
    return gpki.CertGetPubKey(publicKeyCapacity, publicKey);
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
constexpr auto ready = [](auto&) -> int { return Success; };

} // namespace

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::CertLoad(BINSTR* certificate)
{
    return pick({}, to<&CHVTKWrap::CertLoad>(certificate), to<&CGPKIWrap::CertLoad>(certificate));
}

int CWrapperAPI::CertUnLoad() { return pick({}, to<&CHVTKWrap::CertUnLoad>(), to<&CGPKIWrap::CertUnLoad>()); }

int CWrapperAPI::CertGetUID(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetUID>(capacity, text),
        to<&CGPKIWrap::CertGetUID>(capacity, text));
}

int CWrapperAPI::CertGetVersion(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetVersion>(capacity, text),
        to<&CGPKIWrap::CertGetVersion>(capacity, text));
}

int CWrapperAPI::CertGetSerialNum(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetSerialNum>(capacity, text),
        to<&CGPKIWrap::CertGetSerialNum>(capacity, text));
}

int CWrapperAPI::CertGetSignatureAlgorithm(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetSignatureAlgorithm>(capacity, text),
        to<&CGPKIWrap::CertGetSignatureAlgorithm>(capacity, text));
}

int CWrapperAPI::CertGetIssuerName(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetIssuerName>(capacity, text),
        to<&CGPKIWrap::CertGetIssuerName>(capacity, text));
}

int CWrapperAPI::CertGetValidity(int notBeforeCapacity, char* notBefore, int notAfterCapacity, char* notAfter)
{
    return pick(
        {need(notAfter, MissingField), need(notBefore, MissingField)},
        [=](CHVTKWrap& maker) -> int {
            // The maker toolkit is told no capacity, so the room for its two dates is insisted on here.
            const bool roomy = notBeforeCapacity >= dateCapacity && notAfterCapacity >= dateCapacity;
            return roomy ? maker.CertGetValidity(notBefore, notAfter) : InvalidArgument;
        },
        [=](CGPKIWrap& gpki) { return splitValidity(gpki, notBeforeCapacity, notBefore, notAfter); });
}

int CWrapperAPI::CertGetSubjectName(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetSubjectName>(capacity, text),
        to<&CGPKIWrap::CertGetSubjectName>(capacity, text));
}

int CWrapperAPI::CertGetPubKeyInfo(
    char* algorithm, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR* publicKeyDer)
{
    if (const int code = pick({need(publicKey, MissingField)}, ready, ready))
        return code;
    PublicKeyTexts texts;
    BINSTR der{};
    BINCreate(&der);
    const int result = pick(
        {},
        [&](CHVTKWrap& maker) { return readPublicKey(maker, texts, keyLength, publicKeyCapacity, publicKey, der); },
        [&](CGPKIWrap& gpki) { return readPublicKey(gpki, texts, publicKeyCapacity, publicKey); });
    if (result == Success) {
        if (der.nLength > 0)
            BINSetData(der.pData, der.nLength, publicKeyDer);
        copyWhole(algorithm, texts.algorithm);
        copyWhole(keyLength, texts.keyLength);
    }
    if (der.nLength > 0)
        BINDelete(&der);
    return result;
}

int CWrapperAPI::CertGetSignature(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetSignature>(capacity, text),
        to<&CGPKIWrap::CertGetSignature>(capacity, text));
}

int CWrapperAPI::CertGetKeyUsage(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetKeyUsage>(capacity, text),
        to<&CGPKIWrap::CertGetKeyUsage>(capacity, text));
}

int CWrapperAPI::CertGetBasicConstraints(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetBasicConstraints>(capacity, text),
        to<&CGPKIWrap::CertGetBasicConstraints>(capacity, text));
}

int CWrapperAPI::CertGetCertPolicy(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetCertPolicy>(capacity, text),
        to<&CGPKIWrap::CertGetCertPolicy>(capacity, text));
}

int CWrapperAPI::CertGetPolicyID(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetPolicyID>(capacity, text),
        to<&CGPKIWrap::CertGetPolicyID>(capacity, text));
}

int CWrapperAPI::CertGetExtKeyUsage(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetExtKeyUsage>(capacity, text),
        to<&CGPKIWrap::CertGetExtKeyUsage>(capacity, text));
}

int CWrapperAPI::CertGetSubjectAltName(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetSubjectAltName>(capacity, text),
        to<&CGPKIWrap::CertGetSubjectAltName>(capacity, text));
}

int CWrapperAPI::CertGetIssuerAltName(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetIssuerAltName>(capacity, text), absent);
}

int CWrapperAPI::CertGetAuthKeyID(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetAuthKeyID>(capacity, text),
        to<&CGPKIWrap::CertGetAuthKeyID>(capacity, text));
}

int CWrapperAPI::CertGetSubKeyID(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetSubKeyID>(capacity, text),
        to<&CGPKIWrap::CertGetSubKeyID>(capacity, text));
}

int CWrapperAPI::CertGetCRLDP(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetCRLDP>(capacity, text),
        to<&CGPKIWrap::CertGetCRLDP>(capacity, text));
}

int CWrapperAPI::CertGetCRLDPURL(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetCRLDPURL>(capacity, text), absent);
}

int CWrapperAPI::CertGetAIA(int capacity, char* text)
{
    return pick({need(text, MissingField)}, to<&CHVTKWrap::CertGetAIA>(capacity, text),
        to<&CGPKIWrap::CertGetAIA>(capacity, text));
}

int CWrapperAPI::CertGetRemainDays(BINSTR* certificate, int* days)
{
    return pick({need(certificate, MissingField)}, to<&CHVTKWrap::CertGetRemainDays>(certificate, days),
        to<&CGPKIWrap::CertGetRemainDays>(certificate, days));
}

int CWrapperAPI::CertAddCert(BINSTR* certificate, BINSTR* list)
{
    return pick({need(certificate)}, absent, to<&CGPKIWrap::CertAddCert>(certificate, list));
}

int CWrapperAPI::CertGetCertCount(BINSTR* list, int* count)
{
    return pick({need(list)}, absent, to<&CGPKIWrap::CertGetCertCount>(list, count));
}

int CWrapperAPI::CertGetCert(BINSTR* list, int index, BINSTR* certificate)
{
    return pick({need(list, MissingField)}, absent, to<&CGPKIWrap::CertGetCert>(list, index, certificate));
}

int CWrapperAPI::CertAddTrustedCert(BINSTR* certificate)
{
    return pick({need(certificate)}, to<&CHVTKWrap::CertAddTrustedCert>(certificate),
        to<&CGPKIWrap::CertAddTrustedCert>(certificate));
}

int CWrapperAPI::CertSetVerifyEnv(int range, int statusCheck, bool useCache, char* cachePath, char* confFile)
{
    return pick({}, to<&CHVTKWrap::CertSetVerifyEnv>(range, statusCheck, useCache, confFile),
        to<&CGPKIWrap::CertSetVerifyEnv>(range, statusCheck, useCache, cachePath, confFile));
}

int CWrapperAPI::CertSetVerifyEnv2(char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates)
{
    return pick({}, to<&CHVTKWrap::CertSetVerifyEnv2>(confFile, trustedCertificates, intermediates), absent);
}

int CWrapperAPI::CertVerify(BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl)
{
    return pick({need(certificate)},
        to<&CHVTKWrap::CertVerify>(certificate, purpose, time, checkStatus, intermediates, crl),
        to<&CGPKIWrap::CertVerify>(certificate, purpose, time, confFile, checkStatus, intermediates, crl));
}

int CWrapperAPI::CertVerify2(BINSTR* certificate, int purpose, char* time, char* confFile)
{
    return pick({need(certificate)}, to<&CHVTKWrap::CertVerify2>(certificate, purpose, time, confFile), absent);
}

int CWrapperAPI::CertVerifyByIVS(char* confFile, BINSTR* certificate, BINSTR* ivsCertificate)
{
    return pick({need(confFile, MissingField), need(certificate, MissingField), need(ivsCertificate, MissingField)},
        to<&CHVTKWrap::CertVerifyByIVS>(confFile, certificate, ivsCertificate),
        to<&CGPKIWrap::CertVerifyByIVS>(confFile, certificate, ivsCertificate));
}

int CWrapperAPI::CertCheckStatByOCSP(BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* reason)
{
    return pick({need(certificate), need(signerKey), need(url), need(responderCertificate)}, absent,
        to<&CGPKIWrap::CertCheckStatByOCSP>(certificate, signRequest, signerCertificate, signerKey, url,
            responderCertificate, revocationTime, reason));
}

int CWrapperAPI::CertCheckStatByCRL(BINSTR* certificate, char* revocationTime, int* reason)
{
    return pick({need(certificate)}, to<&CHVTKWrap::CertCheckStatByCRL>(certificate, revocationTime, reason),
        to<&CGPKIWrap::CertCheckStatByCRL>(certificate, revocationTime, reason));
}

// Exports

int CertLoad(void* handle, BINSTR* certificate) { return via(handle, &CWrapperAPI::CertLoad, certificate); }

int CertUnLoad(void* handle) { return via(handle, &CWrapperAPI::CertUnLoad); }

int CertGetUID(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetUID, capacity, text);
}

int CertGetVersion(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetVersion, capacity, text);
}

int CertGetSerialNum(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetSerialNum, capacity, text);
}

int CertGetSignatureAlgorithm(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetSignatureAlgorithm, capacity, text);
}

int CertGetIssuerName(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetIssuerName, capacity, text);
}

int CertGetValidity(void* handle, int notBeforeCapacity, char* notBefore, int notAfterCapacity, char* notAfter)
{
    return via(handle, &CWrapperAPI::CertGetValidity, notBeforeCapacity, notBefore, notAfterCapacity, notAfter);
}

int CertGetSubjectName(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetSubjectName, capacity, text);
}

int CertGetPubKeyInfo(
    void* handle, char* algorithm, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR* publicKeyDer)
{
    return via(
        handle, &CWrapperAPI::CertGetPubKeyInfo, algorithm, keyLength, publicKeyCapacity, publicKey, publicKeyDer);
}

int CertGetSignature(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetSignature, capacity, text);
}

int CertGetKeyUsage(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetKeyUsage, capacity, text);
}

int CertGetBasicConstraints(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetBasicConstraints, capacity, text);
}

int CertGetCertPolicy(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetCertPolicy, capacity, text);
}

int CertGetPolicyID(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetPolicyID, capacity, text);
}

int CertGetExtKeyUsage(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetExtKeyUsage, capacity, text);
}

int CertGetSubjectAltName(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetSubjectAltName, capacity, text);
}

int CertGetIssuerAltName(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetIssuerAltName, capacity, text);
}

int CertGetAuthKeyID(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetAuthKeyID, capacity, text);
}

int CertGetSubKeyID(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetSubKeyID, capacity, text);
}

int CertGetCRLDP(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetCRLDP, capacity, text);
}

int CertGetCRLDPURL(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetCRLDPURL, capacity, text);
}

int CertGetAIA(void* handle, int capacity, char* text)
{
    return via(handle, &CWrapperAPI::CertGetAIA, capacity, text);
}

int CertGetRemainDays(void* handle, BINSTR* certificate, int* days)
{
    return via(handle, &CWrapperAPI::CertGetRemainDays, certificate, days);
}

int CertAddCert(void* handle, BINSTR* certificate, BINSTR* list)
{
    return via(handle, &CWrapperAPI::CertAddCert, certificate, list);
}

int CertGetCertCount(void* handle, BINSTR* list, int* count)
{
    return via(handle, &CWrapperAPI::CertGetCertCount, list, count);
}

int CertGetCert(void* handle, BINSTR* list, int index, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::CertGetCert, list, index, certificate);
}

int CertAddTrustedCert(void* handle, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::CertAddTrustedCert, certificate);
}

int CertSetVerifyEnv(void* handle, int range, int statusCheck, bool useCache, char* cachePath, char* confFile)
{
    return via(handle, &CWrapperAPI::CertSetVerifyEnv, range, statusCheck, useCache, cachePath, confFile);
}

int CertSetVerifyEnv2(void* handle, char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates)
{
    return via(handle, &CWrapperAPI::CertSetVerifyEnv2, confFile, trustedCertificates, intermediates);
}

int CertVerify(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl)
{
    return via(
        handle, &CWrapperAPI::CertVerify, certificate, purpose, time, confFile, checkStatus, intermediates, crl);
}

int CertVerify2(void* handle, BINSTR* certificate, int purpose, char* time, char* confFile)
{
    return via(handle, &CWrapperAPI::CertVerify2, certificate, purpose, time, confFile);
}

int CertVerifyByIVS(void* handle, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate)
{
    return via(handle, &CWrapperAPI::CertVerifyByIVS, confFile, certificate, ivsCertificate);
}

int CertCheckStatByOCSP(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* reason)
{
    return via(handle, &CWrapperAPI::CertCheckStatByOCSP, certificate, signRequest, signerCertificate, signerKey,
        url, responderCertificate, revocationTime, reason);
}

int CertCheckStatByCRL(void* handle, BINSTR* certificate, char* revocationTime, int* reason)
{
    return via(handle, &CWrapperAPI::CertCheckStatByCRL, certificate, revocationTime, reason);
}
