// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Time stamps.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_TSP_TimeStampData(void* context, char* address, int port, int hash, char* policy, BINSTR* data,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token);
int HVTK_TSP_TimeStampFile(void* context, char* address, int port, int hash, char* policy, char* dataFile,
    bool useNonce, BINSTR* certificate, BINSTR* privateKey, BINSTR* token);
int HVTK_TSP_MakeReqMsg(void* context, BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* request);
int HVTK_TSP_SendAndRecv(void* context, char* address, int port, BINSTR* request, BINSTR* response);
int HVTK_TSP_VerifyResMsg(void* context, BINSTR* response, BINSTR* token, BINSTR* certificate);
int HVTK_TSP_VerifyToken(void* context, BINSTR* token, BINSTR* certificate);
int HVTK_TSP_VerifyToken2(void* context, char* dataFile, BINSTR* token);
int HVTK_TSP_GetTokenInfo(void* context, BINSTR* token, int capacity, char* text3, char* text4, char* text5,
    char* text6, char* text7, char* text8, BINSTR* certificate);

int GPKI_TSP_MakeReqMsg(void* context, BINSTR* data, int hash, char* policy, bool useNonce, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* request);
int GPKI_TSP_SendAndRecv(void* context, char* address, int port, BINSTR* request, BINSTR* response);
int GPKI_TSP_VerifyResMsg(void* context, BINSTR* response, BINSTR* token, BINSTR* certificate);
int GPKI_TSP_VerifyToken(void* context, BINSTR* token, BINSTR* certificate);
int GPKI_TSP_VerifyToken2(void* context, BINSTR* data, BINSTR* token, BINSTR* certificate);
int GPKI_TSP_GetTokenInfo(void* context, BINSTR* token, int capacity, char* text1, char* text2, char* text3,
    char* text4, char* text5, char* text6, char* text7, char* text8);

} // extern "C"
