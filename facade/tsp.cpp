// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Time stamps.

#include "facade/row.h"

#include <sigildesk/crypto/tsp.h>

using namespace sigil;

int TSPTimeStampData(void* handle, char* address, int port, int hash, char* policy, BINSTR* data, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return secretRow(handle, {need(address), need(policy), need(data), need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_TSP_TimeStampData), address, port, hash, policy, data, useNonce, certificate, privateKey,
            token),
        absent);
}

int TSPTimeStampFile(void* handle, char* address, int port, int hash, char* policy, char* dataFile, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return secretRow(handle, {need(address), need(policy), need(dataFile), need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_TSP_TimeStampFile), address, port, hash, policy, dataFile, useNonce, certificate,
            privateKey, token),
        absent);
}

int TSPMakeReqMsg(void* handle, BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* request)
{
    return secretRow(handle, {need(data), need(policy), need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_TSP_MakeReqMsg), data, hash, policy, useNonce, certificate, privateKey, request),
        gpki(SYMBOL(GPKI_TSP_MakeReqMsg), data, hash, policy, useNonce, certificate, privateKey, request));
}

int TSPSendAndRecv1(void* handle, char* address, int port, BINSTR* request, BINSTR* response)
{
    return row(handle, {need(address), need(request)},
        maker(SYMBOL(HVTK_TSP_SendAndRecv), address, port, request, response),
        gpki(SYMBOL(GPKI_TSP_SendAndRecv), address, port, request, response));
}

int TSPSendAndRecv2(void* handle, BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    return row(handle, {need(response)}, maker(SYMBOL(HVTK_TSP_VerifyResMsg), response, token, certificate),
        gpki(SYMBOL(GPKI_TSP_VerifyResMsg), response, token, certificate));
}

int TSPVerifyToken(void* handle, BINSTR* token, BINSTR* certificate)
{
    return row(handle, {need(token)}, maker(SYMBOL(HVTK_TSP_VerifyToken), token, certificate),
        gpki(SYMBOL(GPKI_TSP_VerifyToken), token, certificate));
}

int TSPVerifyToken2(void* handle, char* dataFile, BINSTR* data, BINSTR* token, BINSTR* certificate)
{
    return row(handle, {need(token)}, maker(SYMBOL(HVTK_TSP_VerifyToken2), dataFile, token),
        gpki(SYMBOL(GPKI_TSP_VerifyToken2), data, token, certificate));
}

int TSPGetTokenInfo(void* handle, BINSTR* token, int capacity, char* text1, char* text2, char* text3, char* text4,
    char* text5, char* text6, char* text7, char* text8, BINSTR* certificate)
{
    return row(handle, {need(token)},
        maker(
            SYMBOL(HVTK_TSP_GetTokenInfo), token, capacity, text3, text4, text5, text6, text7, text8, certificate),
        gpki(SYMBOL(GPKI_TSP_GetTokenInfo), token, capacity, text1, text2, text3, text4, text5, text6, text7,
            text8));
}
