// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// SIGEA_: challenge and response.

#include "toolkit/calls/challenge.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

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
