// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// TSP_: time stamps.

#include "toolkit/calls/time.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_TSP_TimeStampData(void* context, char* address, int port, int hash, char* policy,
    BINSTR* data, bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return call(context, calls::tspTimeStampData, address, port, hash, policy, data, useNonce, certificate,
        privateKey, token);
}

TOOLKIT_FUNCTION HVTK_TSP_TimeStampFile(void* context, char* address, int port, int hash, char* policy,
    char* dataFile, bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return call(context, calls::tspTimeStampFile, address, port, hash, policy, dataFile, useNonce, certificate,
        privateKey, token);
}

TOOLKIT_FUNCTION HVTK_TSP_MakeReqMsg(void* context, BINSTR* data, int hash, char* policy, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* request)
{
    return call(context, calls::tspMakeReqMsg, data, hash, policy, useNonce, certificate, privateKey, request);
}
SAME_FUNCTION(GPKI_TSP_MakeReqMsg, HVTK_TSP_MakeReqMsg);

TOOLKIT_FUNCTION HVTK_TSP_SendAndRecv(void* context, char* address, int port, BINSTR* request, BINSTR* response)
{
    return call(context, calls::tspSendAndRecv, address, port, request, response);
}
SAME_FUNCTION(GPKI_TSP_SendAndRecv, HVTK_TSP_SendAndRecv);

TOOLKIT_FUNCTION HVTK_TSP_VerifyResMsg(void* context, BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    return call(context, calls::tspVerifyResMsg, response, token, certificate);
}
SAME_FUNCTION(GPKI_TSP_VerifyResMsg, HVTK_TSP_VerifyResMsg);

TOOLKIT_FUNCTION HVTK_TSP_VerifyToken(void* context, BINSTR* token, BINSTR* certificate)
{
    return call(context, calls::tspVerifyToken, token, certificate);
}
SAME_FUNCTION(GPKI_TSP_VerifyToken, HVTK_TSP_VerifyToken);

TOOLKIT_FUNCTION HVTK_TSP_VerifyToken2(void* context, char* dataFile, BINSTR* token)
{
    return call(context, calls::tspVerifyToken2OfFile, dataFile, token);
}

TOOLKIT_FUNCTION GPKI_TSP_VerifyToken2(void* context, BINSTR* data, BINSTR* token, BINSTR* certificate)
{
    return call(context, calls::tspVerifyToken2OfData, data, token, certificate);
}

/** @param text3 policy, and so on; the first two texts are not passed to this face */
TOOLKIT_FUNCTION HVTK_TSP_GetTokenInfo(void* context, BINSTR* token, int capacity, char* text3, char* text4,
    char* text5, char* text6, char* text7, char* text8, BINSTR* certificate)
{
    return call(context, [&](Context& state) {
        const TimeStampToken read(state.library(), in(token));
        const Bytes authority = read.authority(state.library());
        HeldBytes held;
        if (certificate && !authority.empty())
            put(authority, held.get());
        calls::putTokenTexts(read.texts(), capacity,
            {{&TimeStampTexts::policy, text3}, {&TimeStampTexts::hash, text4}, {&TimeStampTexts::imprint, text5},
                {&TimeStampTexts::serial, text6}, {&TimeStampTexts::time, text7}, {&TimeStampTexts::nonce, text8}});
        if (certificate)
            *certificate = held.take();
    });
}

TOOLKIT_FUNCTION GPKI_TSP_GetTokenInfo(void* context, BINSTR* token, int capacity, char* text1, char* text2,
    char* text3, char* text4, char* text5, char* text6, char* text7, char* text8)
{
    return call(context, [&](Context& state) {
        calls::putTokenTexts(TimeStampToken(state.library(), in(token)).texts(), capacity,
            {{&TimeStampTexts::version, text1}, {&TimeStampTexts::accuracy, text2},
                {&TimeStampTexts::policy, text3}, {&TimeStampTexts::hash, text4}, {&TimeStampTexts::imprint, text5},
                {&TimeStampTexts::serial, text6}, {&TimeStampTexts::time, text7}, {&TimeStampTexts::nonce, text8}});
    });
}
