// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Life cycle, settings and byte strings. Init fills the context and Finish ends it, so both take its address. Byte strings
 *  are in toolkit memory and take no context; SetData copies the bytes.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_API_Init(void** context, char* folder);
int HVTK_API_Finish(void** context);
int HVTK_API_GetErrInfo(void* context, int capacity, char* text);
int HVTK_API_GetInfo(void* context, char* version, char* info);
int HVTK_API_SetConfFile(void* context, char* confFile);
int HVTK_API_SetHashAlgo(void* context, int hashAlgorithm);
int HVTK_BINSTR_Create(BINSTR* binStr);
int HVTK_BINSTR_Delete(BINSTR* binStr);
int HVTK_BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr);
int HVTK_CERT_SetCaPubs(void* context, BINSTR* caPubs);
int HVTK_CERT_FreeCaPubs(void* context);

int GPKI_API_Init(void** context, char* folder);
int GPKI_API_Finish(void** context);
int GPKI_API_GetErrInfo(void* context, int capacity, char* text);
int GPKI_API_GetVersion(void* context, int capacity, char* text);
int GPKI_API_GetInfo(void* context, int kind, char* text);
int GPKI_API_SetOption(void* context, int option);
int GPKI_API_SetConfFile(void* context, char* confFile);
int GPKI_API_SetCaPubs(void* context, BINSTR* caPubs);
int GPKI_API_FreeCaPubs(void* context);
int GPKI_API_Str2Time(void* context, char* timeText, long* time);
int GPKI_API_SetHashAlgo(void* context, int hashAlgorithm);
int GPKI_BINSTR_Create(BINSTR* binStr);
int GPKI_BINSTR_Delete(BINSTR* binStr);
int GPKI_BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr);

} // extern "C"
