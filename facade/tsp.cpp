// Time stamps.

#include "facade/dispatch.h"

#include <sigildesk/crypto/tsp.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::TSPTimeStampData(char* address, int port, int hash, char* policy, BINSTR* data, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return pick({need(address), need(policy), need(data), need(certificate), need(privateKey)},
        to<&CHVTKWrap::TSPTimeStampData>(
            address, port, hash, policy, data, useNonce, certificate, privateKey, token),
        absent);
}

int CWrapperAPI::TSPTimeStampFile(char* address, int port, int hash, char* policy, char* dataFile, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return pick({need(address), need(policy), need(dataFile), need(certificate), need(privateKey)},
        to<&CHVTKWrap::TSPTimeStampFile>(
            address, port, hash, policy, dataFile, useNonce, certificate, privateKey, token),
        absent);
}

int CWrapperAPI::TSPMakeReqMsg(
    BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* request)
{
    return pick({need(data), need(policy), need(certificate), need(privateKey)},
        to<&CHVTKWrap::TSPMakeReqMsg>(data, hash, policy, useNonce, certificate, privateKey, request),
        to<&CGPKIWrap::TSPMakeReqMsg>(data, hash, policy, useNonce, certificate, privateKey, request));
}

int CWrapperAPI::TSPSendAndRecv(char* address, int port, BINSTR* request, BINSTR* response)
{
    return pick({need(address), need(request)}, to<&CHVTKWrap::TSPSendAndRecv>(address, port, request, response),
        to<&CGPKIWrap::TSPSendAndRecv>(address, port, request, response));
}

int CWrapperAPI::TSPSendAndRecv(BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    return pick({need(response)}, to<&CHVTKWrap::TSPVerifyResMsg>(response, token, certificate),
        to<&CGPKIWrap::TSPVerifyResMsg>(response, token, certificate));
}

int CWrapperAPI::TSPVerifyToken(BINSTR* token, BINSTR* certificate)
{
    return pick({need(token)}, to<&CHVTKWrap::TSPVerifyToken>(token, certificate),
        to<&CGPKIWrap::TSPVerifyToken>(token, certificate));
}

int CWrapperAPI::TSPVerifyToken2(char* dataFile, BINSTR* data, BINSTR* token, BINSTR* certificate)
{
    return pick({need(token)}, to<&CHVTKWrap::TSPVerifyToken2>(dataFile, token),
        to<&CGPKIWrap::TSPVerifyToken2>(data, token, certificate));
}

int CWrapperAPI::TSPGetTokenInfo(BINSTR* token, int capacity, char* text1, char* text2, char* text3, char* text4,
    char* text5, char* text6, char* text7, char* text8, BINSTR* certificate)
{
    return pick({need(token)},
        to<&CHVTKWrap::TSPGetTokenInfo>(token, capacity, text3, text4, text5, text6, text7, text8, certificate),
        to<&CGPKIWrap::TSPGetTokenInfo>(token, capacity, text1, text2, text3, text4, text5, text6, text7, text8));
}

// Exports

int TSPTimeStampData(void* handle, char* address, int port, int hash, char* policy, BINSTR* data, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return via(handle, &CWrapperAPI::TSPTimeStampData, address, port, hash, policy, data, useNonce, certificate,
        privateKey, token);
}

int TSPTimeStampFile(void* handle, char* address, int port, int hash, char* policy, char* dataFile, bool useNonce,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* token)
{
    return via(handle, &CWrapperAPI::TSPTimeStampFile, address, port, hash, policy, dataFile, useNonce, certificate,
        privateKey, token);
}

int TSPMakeReqMsg(void* handle, BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* request)
{
    return via(handle, &CWrapperAPI::TSPMakeReqMsg, data, hash, policy, useNonce, certificate, privateKey, request);
}

int TSPSendAndRecv1(void* handle, char* address, int port, BINSTR* request, BINSTR* response)
{
    return via(handle, &CWrapperAPI::TSPSendAndRecv, address, port, request, response);
}

int TSPSendAndRecv2(void* handle, BINSTR* response, BINSTR* token, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::TSPSendAndRecv, response, token, certificate);
}

int TSPVerifyToken(void* handle, BINSTR* token, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::TSPVerifyToken, token, certificate);
}

int TSPVerifyToken2(void* handle, char* dataFile, BINSTR* data, BINSTR* token, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::TSPVerifyToken2, dataFile, data, token, certificate);
}

int TSPGetTokenInfo(void* handle, BINSTR* token, int capacity, char* text1, char* text2, char* text3, char* text4,
    char* text5, char* text6, char* text7, char* text8, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::TSPGetTokenInfo, token, capacity, text1, text2, text3, text4, text5, text6,
        text7, text8, certificate);
}
