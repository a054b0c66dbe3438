// Challenge-response authentication.

#include "facade/dispatch.h"

#include <sigildesk/crypto/sigea.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::SIGEAMakeChallenge(BINSTR* challenge)
{
    return pick({need(challenge)}, absent, to<&CGPKIWrap::SIGEAMakeChallenge>(challenge));
}

int CWrapperAPI::SIGEAMakeResponse(BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response)
{
    return pick({need(challenge), need(certificate), need(privateKey)}, absent,
        to<&CGPKIWrap::SIGEAMakeResponse>(challenge, certificate, privateKey, response));
}

int CWrapperAPI::SIGEAVerifyResponse(BINSTR* challenge, BINSTR* response, BINSTR* certificate)
{
    return pick({need(challenge), need(response), need(certificate)}, absent,
        to<&CGPKIWrap::SIGEAVerifyResponse>(challenge, response, certificate));
}

// Exports

int SIGEAMakeChallenge(void* handle, BINSTR* challenge)
{
    return via(handle, &CWrapperAPI::SIGEAMakeChallenge, challenge);
}

int SIGEAMakeResponse(void* handle, BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response)
{
    return via(handle, &CWrapperAPI::SIGEAMakeResponse, challenge, certificate, privateKey, response);
}

int SIGEAVerifyResponse(void* handle, BINSTR* challenge, BINSTR* response, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::SIGEAVerifyResponse, challenge, response, certificate);
}
