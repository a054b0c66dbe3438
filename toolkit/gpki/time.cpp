// GPKI_TSP_: time stamps.

#include "toolkit/calls/time.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_TSP_MakeReqMsg(void* context, BINSTR* data, int hash, char* policy, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* request)
{
    return call(context, calls::tspMakeReqMsg, data, hash, policy, useNonce, certificate, privateKey, request);
}

TOOLKIT_FUNCTION GPKI_TSP_SendAndRecv(void* context, char* address, int port, BINSTR* request, BINSTR* response)
{
    return call(context, calls::tspSendAndRecv, address, port, request, response);
}

TOOLKIT_FUNCTION GPKI_TSP_VerifyResMsg(void* context, BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    return call(context, calls::tspVerifyResMsg, response, token, certificate);
}

TOOLKIT_FUNCTION GPKI_TSP_VerifyToken(void* context, BINSTR* token, BINSTR* certificate)
{
    return call(context, calls::tspVerifyToken, token, certificate);
}

TOOLKIT_FUNCTION GPKI_TSP_VerifyToken2(void* context, BINSTR* data, BINSTR* token, BINSTR* certificate)
{
    return call(context, calls::tspVerifyToken2OfData, data, token, certificate);
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
