// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/status/ocsp_exchange.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/trust/issuer.h"

#include <algorithm>

namespace toolkit {

Bytes OcspExchange::makeRequest(const Library& library, const TrustStore& store, Certificate certificate,
    Certificate other, const RequestSigner* signer)
{
    Certificate issuer(library, issuerOf(store, certificate, &other).der());
    OcspRequestHandle request = makeOcspRequest(library, certificate, issuer, signer);
    Bytes der = encode<Bytes>(request.get(), i2d_OCSP_REQUEST);
    m_request = std::move(request);
    m_certificate = std::move(certificate);
    m_issuer = std::move(issuer);
    m_answers.clear();
    return der;
}

OcspVerdict OcspExchange::verify(
    const Library& library, const TrustStore& store, const Certificate& certificate, View der)
{
    m_answers.clear();
    require(m_request != nullptr, SIGIL_TK_OCSP_NONCE, "no request was made");
    require(certificate.der() == m_certificate->der() || certificate.der() == m_issuer->der(),
        SIGIL_TK_OCSP_NO_ANSWER, "the request was about another certificate");
    const std::time_t time = store.time.value_or(std::time(nullptr));
    const OcspResponse response(der);
    OcspVerdict verdict{response.requireSigner(library, *m_issuer, *m_issuer, time), {}};
    response.requireNonce(m_request.get(), acceptsAnyNonce);
    std::vector<OcspAnswer> answers;
    answers.reserve(static_cast<std::size_t>(std::max(response.count(), 0)));
    for (int i = 0; i < response.count(); ++i)
        answers.push_back(response.answerAt(i, time));
    verdict.asked = answers.at(static_cast<std::size_t>(response.indexOf(library, *m_certificate, *m_issuer)));
    m_answers = std::move(answers);
    return verdict;
}

Bytes sendToResponder(const TrustStore& store, std::string_view url, const Certificate& certificate, View request)
{
    const auto send = [&](std::string_view address) {
        return post(address, "application/ocsp-request", request, maximumAnswerSize);
    };
    if (!url.empty())
        return send(url);
    findIssuer(store, certificate); // a certificate that its issuer did not sign sends nobody anywhere
    const std::vector<std::string> urls = certificate.responderUrls();
    require(!urls.empty(), SIGIL_TK_URL, "the certificate names no responder");
    return send(urls.front());
}

} // namespace toolkit
