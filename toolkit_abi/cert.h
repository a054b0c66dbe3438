// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates: one is loaded per context, and the getters read from it.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_CERT_Load(void* context, BINSTR* certificate);
int HVTK_CERT_Unload(void* context);
int HVTK_CERT_GetUID(void* context, int capacity, char* text);
int HVTK_CERT_GetVersion(void* context, int* version);
int HVTK_CERT_GetSerialNum(void* context, int capacity, char* text);
int HVTK_CERT_GetSignatureAlgorithm(void* context, int capacity, char* text);
int HVTK_CERT_GetIssuerName(void* context, int capacity, char* text);
int HVTK_CERT_GetValidity(void* context, char* notBefore, char* notAfter);
int HVTK_CERT_GetSubjectName(void* context, int capacity, char* text);
int HVTK_CERT_GetPubKey(void* context, int capacity, char* algorithm, char* text);
int HVTK_CERT_GetPubKey2(void* context, char* algorithm, char* keyLength, BINSTR* publicKey);
int HVTK_CERT_GetSignature(void* context, int capacity, char* text);
int HVTK_CERT_GetKeyUsage(void* context, int capacity, char* text);
int HVTK_CERT_GetBasicConstraints(void* context, int capacity, char* text);
int HVTK_CERT_GetCertPolicy(void* context, int capacity, char* text);
int HVTK_CERT_GetCertPolicy_PolicyID(void* context, int capacity, char* text);
int HVTK_CERT_GetExtKeyUsage(void* context, int capacity, char* text);
int HVTK_CERT_GetSubjectAltName(void* context, int capacity, char* text);
int HVTK_CERT_GetIssuerAltName(void* context, int capacity, char* text);
int HVTK_CERT_GetAuthKeyID(void* context, int capacity, char* text);
int HVTK_CERT_GetSubKeyID(void* context, int capacity, char* text);
int HVTK_CERT_GetCRLDP(void* context, int capacity, char* text);
int HVTK_CERT_GetCRLDP_URL(void* context, int capacity, char* text);
int HVTK_CERT_GetAIA(void* context, int capacity, char* text);
int HVTK_CERT_GetRemainDays(void* context, BINSTR* certificate, int* days);
int HVTK_CERT_AddTrustedCert(void* context, BINSTR* certificate);
int HVTK_CERT_SetVerifyEnv1(void* context, int range, int statusCheck, bool useCache, char* confFile);
int HVTK_CERT_SetVerifyEnv2(void* context, char* confFile, BINSTR* trustedCertificates, BINSTR* intermediates);
int HVTK_CERT_Verify(void* context, BINSTR* certificate, int purpose, char* time, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl);
int HVTK_CERT_Verify2(void* context, BINSTR* certificate, int purpose, char* time, char* confFile);
int HVTK_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate);
int HVTK_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* revocationTime, int* reason);
int HVTK_CERT_GetSubjectName_DERFormat(void* context, BINSTR* name);
int HVTK_CERT_GetPolicyConstraints(void* context, int capacity, char* text);

int GPKI_CERT_Load(void* context, BINSTR* certificate);
int GPKI_CERT_Unload(void* context);
int GPKI_CERT_GetUID(void* context, int capacity, char* text);
int GPKI_CERT_GetVersion(void* context, int* version);
int GPKI_CERT_GetSerialNum(void* context, int capacity, char* text);
int GPKI_CERT_GetSignatureAlgorithm(void* context, int capacity, char* text);
int GPKI_CERT_GetIssuerName(void* context, int capacity, char* text);
int GPKI_CERT_GetValidity(void* context, int capacity, char* text);
int GPKI_CERT_GetSubjectName(void* context, int capacity, char* text);
int GPKI_CERT_GetPubKeyAlg(void* context, int capacity, char* text);
int GPKI_CERT_GetPubKeyLen(void* context, int capacity, char* text);
int GPKI_CERT_GetPubKey(void* context, int capacity, char* text);
int GPKI_CERT_GetSignature(void* context, int capacity, char* text);
int GPKI_CERT_GetKeyUsage(void* context, int capacity, char* text);
int GPKI_CERT_GetBasicConstraints(void* context, int capacity, char* text);
int GPKI_CERT_GetCertPolicy(void* context, int capacity, char* text);
int GPKI_CERT_GetCertPolicyID(void* context, int capacity, char* text);
int GPKI_CERT_GetExtKeyUsage(void* context, int capacity, char* text);
int GPKI_CERT_GetSubjectAltName(void* context, int capacity, char* text);
int GPKI_CERT_GetAuthKeyID(void* context, int capacity, char* text);
int GPKI_CERT_GetSubKeyID(void* context, int capacity, char* text);
int GPKI_CERT_GetCRLDP(void* context, int capacity, char* text);
int GPKI_CERT_GetAIA(void* context, int capacity, char* text);
int GPKI_CERT_GetRemainDays(void* context, BINSTR* certificate, int* days);
int GPKI_CERT_AddCert(void* context, BINSTR* certificate, BINSTR* list);
int GPKI_CERT_GetCertCount(void* context, BINSTR* list, int* count);
int GPKI_CERT_GetCert(void* context, BINSTR* list, int index, BINSTR* certificate);
int GPKI_CERT_AddTrustedCert(void* context, BINSTR* certificate);
int GPKI_CERT_SetVerifyEnv(
    void* context, int range, int statusCheck, bool useCache, char* cachePath, char* confFile);
int GPKI_CERT_Verify(void* context, BINSTR* certificate, int purpose, char* time, char* confFile, bool checkStatus,
    BINSTR* intermediates, BINSTR* crl);
int GPKI_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* ivsCertificate);
int GPKI_CERT_CheckStatByOCSP(void* context, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime, int* reason);
int GPKI_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* revocationTime, int* reason);

} // extern "C"
