// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#12 files.
 *
 *  The files are those of RFC 7292. A pair is a certificate and its private key; the multi-pair functions take
 *  lists made with UTILAddObject.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_PFX_H
#define SIGILDESK_CRYPTO_PFX_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Makes a file of one pair (maker toolkit) or two pairs (GPKI library).
 *  @param option         option of the maker toolkit, not passed to the GPKI library
 *  @param password       password of the file, terminated
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param kmCertificate  second certificate, required on the GPKI library, ignored on the maker toolkit
 *  @param kmPrivateKey   second private key, required on the GPKI library, ignored on the maker toolkit
 *  @param pfx            filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p password is null; 1001 on the
 *          GPKI library when @p kmCertificate or @p kmPrivateKey is empty */
SIGIL_EXPORT int PFXExport(void* handle, int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* pfx);

/** Makes a file of one pair with a further byte string.
 *  @param option          ignored
 *  @param password        password of the file, terminated
 *  @param certificate     certificate
 *  @param privateKey      private key
 *  @param caCertificates  third byte string of the toolkit, required
 *  @param pfx             filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p caCertificates is empty or @p password
 *          is null; 1003 on the GPKI library */
SIGIL_EXPORT int PFXExport2(void* handle, int option, char* password, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* caCertificates, BINSTR* pfx);

/** Opens a file.
 *  @param password        password of the file, terminated
 *  @param pfx             PKCS#12 file
 *  @param certificate     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param privateKey      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param kmCertificate   GPKI library only; filled by the toolkit; release it with HV_BINSTR_Delete on the same
 *                         handle
 *  @param kmPrivateKey    GPKI library only; filled by the toolkit; release it with HV_BINSTR_Delete on the same
 *                         handle
 *  @param caCertificates  maker toolkit only; filled by the toolkit; release it with HV_BINSTR_Delete on the same
 *                         handle
 *  @return the common codes; 1001 when @p pfx is empty or @p password is null */
SIGIL_EXPORT int PFXImport(void* handle, char* password, BINSTR* pfx, BINSTR* certificate, BINSTR* privateKey,
    BINSTR* kmCertificate, BINSTR* kmPrivateKey, BINSTR* caCertificates);

/** Makes a file of several pairs.
 *  @param option        option of the maker toolkit
 *  @param password      password of the file, terminated
 *  @param certificates  list of certificates
 *  @param privateKeys   list of private keys
 *  @param pfx           filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificates or @p privateKeys is empty or @p password is null; 1003 on
 *          the GPKI library */
SIGIL_EXPORT int PFXExportMultiPair(
    void* handle, int option, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* pfx);

/** Reaches the same toolkit function as PFXExportMultiPair, deliberately, with another list of arguments: the
 *  option is left out and a third byte string stands before the output.
 *  @param option          ignored
 *  @param password        password of the file, terminated
 *  @param certificates    list of certificates
 *  @param privateKeys     list of private keys
 *  @param caCertificates  third byte string of the toolkit, required
 *  @param pfx             filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificates, @p privateKeys or @p caCertificates is empty or @p password
 *          is null; 1003 on the GPKI library */
SIGIL_EXPORT int PFXExportMultiPair2(void* handle, int option, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates, BINSTR* pfx);

/** Opens a file of several pairs. The toolkit receives the password first.
 *  @param pfx             PKCS#12 file
 *  @param password        password of the file, terminated
 *  @param certificates    output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param privateKeys     output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param caCertificates  output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificates, @p privateKeys or @p caCertificates is empty or @p password
 *          is null; 1001 when @p pfx is empty, from the backend; 1003 on the GPKI library */
SIGIL_EXPORT int PFXImportMultiPair(
    void* handle, BINSTR* pfx, char* password, BINSTR* certificates, BINSTR* privateKeys, BINSTR* caCertificates);

/** Opens a file of several pairs. The toolkit receives the password before the file.
 *  @param mode            option of the toolkit
 *  @param pfx             PKCS#12 file
 *  @param password        password of the file, terminated
 *  @param certificates    output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param privateKeys     output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param caCertificates  output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificates, @p privateKeys or @p caCertificates is empty or @p password
 *          is null; 1001 when @p pfx is empty, from the backend; 1003 on the GPKI library */
SIGIL_EXPORT int PFXImportMultiPair2(void* handle, int mode, BINSTR* pfx, char* password, BINSTR* certificates,
    BINSTR* privateKeys, BINSTR* caCertificates);

#endif
