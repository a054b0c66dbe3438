// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Challenge-response authentication.

#include "facade/row.h"

#include <sigildesk/crypto/sigea.h>

using namespace sigil;

int SIGEAMakeChallenge(void* handle, BINSTR* challenge)
{
    return row(handle, {need(challenge)}, absent, gpki(SYMBOL(GPKI_SIGEA_MakeChallenge), challenge));
}

int SIGEAMakeResponse(void* handle, BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response)
{
    return secretRow(handle, {need(challenge), need(certificate), need(privateKey)}, absent,
        gpki(SYMBOL(GPKI_SIGEA_MakeResponse), challenge, certificate, privateKey, response));
}

int SIGEAVerifyResponse(void* handle, BINSTR* challenge, BINSTR* response, BINSTR* certificate)
{
    return row(handle, {need(challenge), need(response), need(certificate)}, absent,
        gpki(SYMBOL(GPKI_SIGEA_VerifyResponse), challenge, response, certificate));
}
