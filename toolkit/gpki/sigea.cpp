// GPKI_SIGEA_ and GPKI_WCMS_: challenge and response; wireless messages are not offered.

#include "toolkit/calls/challenge.h"
#include "toolkit/calls/not_offered.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_SIGEA_MakeChallenge(void* context, BINSTR* challenge)
{
    return call(context, calls::sigeaMakeChallenge, challenge);
}

TOOLKIT_FUNCTION GPKI_SIGEA_MakeResponse(
    void* context, BINSTR* challenge, BINSTR* certificate, BINSTR* key, BINSTR* out)
{
    return call(context, calls::sigeaMakeResponse, challenge, certificate, key, out);
}

TOOLKIT_FUNCTION GPKI_SIGEA_VerifyResponse(void* context, BINSTR* challenge, BINSTR* response, BINSTR* certificate)
{
    return call(context, calls::sigeaVerifyResponse, challenge, response, certificate);
}

TOOLKIT_FUNCTION GPKI_WCMS_MakeSignedContent(void* context, BINSTR*, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}

TOOLKIT_FUNCTION GPKI_WCMS_ProcessSignedContent(void* context, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}

TOOLKIT_FUNCTION GPKI_WCMS_MakeWapEnvelopedData(void* context, BINSTR*, BINSTR*, int, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}

TOOLKIT_FUNCTION GPKI_WCMS_ProcessWapEnvelopedData(void* context, BINSTR*, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}
