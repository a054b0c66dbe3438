// Challenge-response authentication of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::SIGEAMakeChallenge(BINSTR* challenge)
{
    return m_toolkit.call("GPKI_SIGEA_MakeChallenge", {need(challenge)}, challenge);
}

int CGPKIWrap::SIGEAMakeResponse(BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response)
{
    return m_toolkit.call("GPKI_SIGEA_MakeResponse", {need(challenge), need(certificate), need(privateKey)},
        challenge, certificate, privateKey, response);
}

int CGPKIWrap::SIGEAVerifyResponse(BINSTR* challenge, BINSTR* response, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_SIGEA_VerifyResponse", {need(challenge), need(response), need(certificate)},
        challenge, response, certificate);
}
