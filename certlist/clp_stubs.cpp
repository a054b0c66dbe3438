// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Exported functions that this library does not support. They are kept so that hosts of other systems link.

#include "certlist/codes.h"

#include <sigildesk/certlist.h>

using namespace sigil;

namespace {

int refuseWithHandle(void* handle) { return handle ? SIGIL_NOT_SUPPORTED : SIGIL_NO_HANDLE; }

} // namespace

int CLP_USIMType(void* hCLP, tagSMCERTOPT*) { return refuseWithHandle(hCLP); }
int CLP_CopyCertToPKCS11(void* hCLP, char*, char*, char*) { return refuseWithHandle(hCLP); }
int CLP_CopyCertToSMCARD(void* hCLP, int, char*, char*, char*) { return refuseWithHandle(hCLP); }
// The processor can change a password, but hosts are deliberately not offered it.
int CLP_ChangePassword(void* hCLP, int, char*, char*) { return refuseWithHandle(hCLP); }

int CLP_MediaConnect(void*, char*, char*) { return SIGIL_NOT_SUPPORTED; }
int CLP_MediaDisConnect(void*) { return SIGIL_NOT_SUPPORTED; }
int CLP_PKCS11SetArgs(void*, void*) { return SIGIL_NOT_SUPPORTED; }
int CLP_SetCardPINumber(void*, char*, char*) { return SIGIL_NOT_SUPPORTED; }
int CLP_Phone_UbiKey(void*, char*, void*, char*, char*, char**, int*, char**, int*) { return SIGIL_NOT_SUPPORTED; }
int CLP_SetNCheckRootCert(void*, tagROOTCERTINFO*, bool*) { return SIGIL_NOT_SUPPORTED; }
int CLP_GetRootCertInfo(void*, char**, int*, char**, int*, int, char*, int, char*, int, char*, int, char*)
{
    return SIGIL_NOT_SUPPORTED;
}
int CLP_InstallRootCert(void*, char*, int, char*, int) { return SIGIL_NOT_SUPPORTED; }
int CLP_PKCS11Login(void*, char*) { return SIGIL_NOT_SUPPORTED; }
int CLP_GetPKCS11DeviceInfo(void*, bool, bool, bool, int*) { return SIGIL_NOT_SUPPORTED; }
int CLP_GetPKCS11DeviceList(void*, tagPKCS11DEVICELIST*) { return SIGIL_NOT_SUPPORTED; }
int CLP_VerifyPKCS11Signature(void*, char*, char*, char*) { return SIGIL_NOT_SUPPORTED; }
int CLP_PKCS11TokenInfo(void*, char*, int, char*, int, char*, int, char*) { return SIGIL_NOT_SUPPORTED; }
