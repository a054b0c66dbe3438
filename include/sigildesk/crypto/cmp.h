/** @file
 *  Certificate management.
 *
 *  The protocol is that of RFC 4210. Which CA products and protocol versions there are is the maker toolkit's
 *  matter.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_CMP_H
#define SIGILDESK_CRYPTO_CMP_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Chooses the protocol of later requests.
 *  @param protocol  number of the toolkit
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CMPSetProtocol(void* handle, int protocol);

/** Chooses the CA of later requests.
 *  @param ca  number of the toolkit
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CMPSetCA(void* handle, int ca);

/** Requests certificates for new keys.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit
 *  @param reference      reference number
 *  @param secret         authentication code
 *  @param subject        fourth text
 *  @param password       fifth text
 *  @param caCertificate  CA certificate
 *  @param certificate    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param privateKey     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param kmCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param kmPrivateKey   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p address, @p reference, @p secret, @p subject or @p password is null; 1003
 *          on the GPKI library */
SIGIL_EXPORT int CMPCertRequest(void* handle, char* address, int port, char* reference, char* secret, char* subject,
    char* password, BINSTR* caCertificate, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey);

/** Requests certificates for new keys without naming the CA certificate.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit
 *  @param reference      reference number
 *  @param secret         authentication code
 *  @param subject        fourth text
 *  @param password       fifth text
 *  @param certificate    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param privateKey     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param kmCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param kmPrivateKey   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p address, @p reference, @p secret, @p subject or @p password is null; 1003
 *          on the GPKI library */
SIGIL_EXPORT int CMPCertRequest2(void* handle, char* address, int port, char* reference, char* secret,
    char* subject, char* password, BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate,
    BINSTR* kmPrivateKey);

/** Renews a certificate.
 *  @param address         address of the CA
 *  @param port            port or other number of the toolkit
 *  @param newKey          flag of the toolkit
 *  @param password        password of the key, terminated
 *  @param newPassword     third text
 *  @param certificate     certificate
 *  @param privateKey      private key
 *  @param caCertificate   third byte string of the toolkit
 *  @param newCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param newPrivateKey   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p address, @p password or @p
 *          newPassword is null; 1003 on the GPKI library */
SIGIL_EXPORT int CMPCertUpdate(void* handle, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* caCertificate, BINSTR* newCertificate,
    BINSTR* newPrivateKey);

/** Renews a certificate without naming the CA certificate. The first output must hold data on entry.
 *  @param address         address of the CA
 *  @param port            port or other number of the toolkit
 *  @param newKey          flag of the toolkit
 *  @param password        password of the key, terminated
 *  @param newPassword     third text
 *  @param certificate     certificate
 *  @param privateKey      private key
 *  @param newCertificate  output that must hold data on entry (any byte, put in with HV_BINSTR_SetData); filled by
 *                         the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param newPrivateKey   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p newCertificate is empty or @p address,
 *          @p password or @p newPassword is null; 1003 on the GPKI library */
SIGIL_EXPORT int CMPCertUpdate2(void* handle, char* address, int port, bool newKey, char* password,
    char* newPassword, BINSTR* certificate, BINSTR* privateKey, BINSTR* newCertificate, BINSTR* newPrivateKey);

/** Revokes a certificate. The doubled word of the name is part of the interface.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit
 *  @param reason         reason, a number of the toolkit
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param caCertificate  CA certificate
 *  @param result         fourth byte string of the toolkit, required
 *  @return the common codes; 1001 when @p certificate, @p privateKey, @p caCertificate or @p result is empty or @p
 *          address is null; 1003 on the GPKI library */
SIGIL_EXPORT int CMPCertCertRevoke(void* handle, char* address, int port, int reason, BINSTR* certificate,
    BINSTR* privateKey, BINSTR* caCertificate, BINSTR* result);

/** Revokes a certificate without naming the CA certificate. The doubled word of the name is part of the interface.
 *  @param address      address of the CA
 *  @param port         port or other number of the toolkit
 *  @param reason       reason, a number of the toolkit
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param result       third byte string of the toolkit, required
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p result is empty or @p address is null;
 *          1003 on the GPKI library */
SIGIL_EXPORT int CMPCertCertRevoke2(
    void* handle, char* address, int port, int reason, BINSTR* certificate, BINSTR* privateKey, BINSTR* result);

/** Recovers a key-management pair. The doubled word of the name is part of the interface.
 *  @param address        address of the CA
 *  @param port           port or other number of the toolkit
 *  @param reference      reference number
 *  @param secret         authentication code
 *  @param certificate    certificate
 *  @param privateKey     private key
 *  @param kmCertificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param kmPrivateKey   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty or @p address, @p reference or @p
 *          secret is null; 1003 on the GPKI library */
SIGIL_EXPORT int CMPCertCertRecovery(void* handle, char* address, int port, char* reference, char* secret,
    BINSTR* certificate, BINSTR* privateKey, BINSTR* kmCertificate, BINSTR* kmPrivateKey);

#endif
