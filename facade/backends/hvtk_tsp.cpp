// Time stamps of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::TSPTimeStampData(char* address, int port, int hash, char* policy, BINSTR* data, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return m_toolkit.call("HVTK_TSP_TimeStampData",
        {need(address), need(policy), need(data), need(certificate), need(privateKey)}, address, port, hash, policy,
        data, useNonce, certificate, privateKey, token);
}

int CHVTKWrap::TSPTimeStampFile(char* address, int port, int hash, char* policy, char* dataFile, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return m_toolkit.call("HVTK_TSP_TimeStampFile",
        {need(address), need(policy), need(dataFile), need(certificate), need(privateKey)}, address, port, hash,
        policy, dataFile, useNonce, certificate, privateKey, token);
}

int CHVTKWrap::TSPMakeReqMsg(
    BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* request)
{
    return m_toolkit.call("HVTK_TSP_MakeReqMsg", {need(data), need(policy), need(certificate), need(privateKey)},
        data, hash, policy, useNonce, certificate, privateKey, request);
}

int CHVTKWrap::TSPSendAndRecv(char* address, int port, BINSTR* request, BINSTR* response)
{
    return m_toolkit.call("HVTK_TSP_SendAndRecv", {need(address), need(request)}, address, port, request, response);
}

int CHVTKWrap::TSPVerifyResMsg(BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_TSP_VerifyResMsg", {need(response)}, response, token, certificate);
}

int CHVTKWrap::TSPVerifyToken(BINSTR* token, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_TSP_VerifyToken", {need(token)}, token, certificate);
}

int CHVTKWrap::TSPVerifyToken2(char* dataFile, BINSTR* token)
{
    return m_toolkit.call("HVTK_TSP_VerifyToken2", {need(token)}, dataFile, token);
}

int CHVTKWrap::TSPGetTokenInfo(BINSTR* token, int capacity, char* text3, char* text4, char* text5, char* text6,
    char* text7, char* text8, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_TSP_GetTokenInfo", {need(token)}, token, capacity, text3, text4, text5, text6,
        text7, text8, certificate);
}
