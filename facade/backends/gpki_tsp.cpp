// Time stamps of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::TSPMakeReqMsg(
    BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* request)
{
    return m_toolkit.call("GPKI_TSP_MakeReqMsg", {need(data), need(policy), need(certificate), need(privateKey)},
        data, hash, policy, useNonce, certificate, privateKey, request);
}

int CGPKIWrap::TSPSendAndRecv(char* address, int port, BINSTR* request, BINSTR* response)
{
    return m_toolkit.call("GPKI_TSP_SendAndRecv", {need(address), need(request)}, address, port, request, response);
}

int CGPKIWrap::TSPVerifyResMsg(BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_TSP_VerifyResMsg", {need(response)}, response, token, certificate);
}

int CGPKIWrap::TSPVerifyToken(BINSTR* token, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_TSP_VerifyToken", {need(token)}, token, certificate);
}

int CGPKIWrap::TSPVerifyToken2(BINSTR* data, BINSTR* token, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_TSP_VerifyToken2", {need(token)}, data, token, certificate);
}

int CGPKIWrap::TSPGetTokenInfo(BINSTR* token, int capacity, char* text1, char* text2, char* text3, char* text4,
    char* text5, char* text6, char* text7, char* text8)
{
    return m_toolkit.call("GPKI_TSP_GetTokenInfo", {need(token)}, token, capacity, text1, text2, text3, text4,
        text5, text6, text7, text8);
}
