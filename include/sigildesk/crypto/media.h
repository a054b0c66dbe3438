// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Storage media.
 *
 *  Files, certificates and private keys on disk, on cards and in the system certificate store (WINS). The GPKI
 *  library has one set of functions for every medium: the façade puts the medium code first (1 disk, 2 card) and
 *  moves the number behind the texts.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_MEDIA_H
#define SIGILDESK_CRYPTO_MEDIA_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Loads the driver of a medium.
 *  @param name  text that names it to the toolkit
 *  @return the common codes; 1001 when @p name is null */
SIGIL_EXPORT int MediaLoad(void* handle, char* name);

/** Releases what MediaLoad loaded.
 *  @return the common codes */
SIGIL_EXPORT int MediaUnLoad(void* handle);

/** Reads a whole file.
 *  @param path  path or name on the medium
 *  @param data  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p path is null */
SIGIL_EXPORT int MediaDiskReadFile(void* handle, char* path, BINSTR* data);

/** Writes a whole file; folders are not created.
 *  @param path  path or name on the medium
 *  @param data  bytes of the file
 *  @return the common codes; 1001 when @p data is empty or @p path is null */
SIGIL_EXPORT int MediaDiskWriteFile(void* handle, char* path, BINSTR* data);

/** Reads a certificate from disk.
 *  @param path         path or name on the medium
 *  @param kind         kind of certificate, a number of the GPKI library; the maker toolkit does not receive it
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p path is null */
SIGIL_EXPORT int MediaDiskReadCert(void* handle, char* path, int kind, BINSTR* certificate);

/** Reads a private key from disk.
 *  @param path        path or name on the medium
 *  @param password    password of the key, terminated
 *  @param kind        kind of certificate, a number of the GPKI library; the maker toolkit does not receive it
 *  @param privateKey  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p path or @p password is null */
SIGIL_EXPORT int MediaDiskReadPriKey(void* handle, char* path, char* password, int kind, BINSTR* privateKey);

/** Writes a certificate to disk.
 *  @param path         path or name on the medium
 *  @param kind         kind of certificate, a number of the GPKI library; the maker toolkit does not receive it
 *  @param certificate  certificate
 *  @return the common codes; 1001 when @p certificate is empty or @p path is null */
SIGIL_EXPORT int MediaDiskWriteCert(void* handle, char* path, int kind, BINSTR* certificate);

/** Writes a private key to disk. The GPKI library receives the second number before the first.
 *  @param algorithm   first number: encryption algorithm of the toolkit
 *  @param path        path or name on the medium
 *  @param kind        second number, for the GPKI library only
 *  @param password    password of the key, terminated
 *  @param privateKey  private key
 *  @return the common codes; 1001 when @p privateKey is empty or @p path or @p password is null */
SIGIL_EXPORT int MediaDiskWritePriKey(
    void* handle, int algorithm, char* path, int kind, char* password, BINSTR* privateKey);

/** Deletes a certificate from disk.
 *  @param path  path or name on the medium
 *  @param kind  kind of certificate, a number of the GPKI library; the maker toolkit does not receive it
 *  @return the common codes; 1001 when @p path is null */
SIGIL_EXPORT int MediaDiskDeleteCert(void* handle, char* path, int kind);

/** Deletes a private key from disk. The GPKI library receives the second text before the first. The toolkits
 *  require both texts: a null first text answers 1001 too.
 *  @param password  first text of the maker toolkit
 *  @param kind      kind of certificate, a number of the GPKI library; the maker toolkit does not receive it
 *  @param path      second text of the maker toolkit
 *  @return the common codes; 1001 when @p path is null; 1001 when @p password is null, from the backend */
SIGIL_EXPORT int MediaDiskDeletePriKey(void* handle, char* password, int kind, char* path);

/** Reads a certificate from a card.
 *
 *  What is said of cards here is how the open toolkit means them; a licensed toolkit may number slots and name objects
 *  otherwise. A card is a token: 3304 when there is none in the slot.
 *  @param slot         slot number, one of PKCS11GetSlotList
 *  @param path         name on the medium: the label (CKA_LABEL) of the object, in UTF-8 or CP949, terminated, of any length
 *                      but 0 (3000)
 *  @param certificate  filled by the toolkit with DER; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p path is null; 3304; 4204 when no certificate has the name */
SIGIL_EXPORT int MediaCardReadCert(void* handle, int slot, char* path, BINSTR* certificate);

/** Reads a private key from a card. The open toolkit always answers 3304: there a key does not leave its card.
 *  @param slot        slot number
 *  @param path        name on the medium
 *  @param password    PIN of the card, terminated
 *  @param privateKey  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p path or @p password is null; 3304 */
SIGIL_EXPORT int MediaCardReadPriKey(void* handle, int slot, char* path, char* password, BINSTR* privateKey);

/** Writes a certificate to a card, in place of the one of that name.
 *  @param slot         slot number
 *  @param path         name on the medium, as for MediaCardReadCert
 *  @param certificate  certificate, DER or PEM
 *  @return the common codes; 1001 when @p certificate is empty or @p path is null; 3000 when several certificates have the
 *          name; 3101 when it is not a certificate; 3304; 4203 when the card wants a login (PKCS11Login) first; 4205 when
 *          the card is write-protected or full */
SIGIL_EXPORT int MediaCardWriteCert(void* handle, int slot, char* path, BINSTR* certificate);

/** Writes a private key to a card, in place of the one of that name. Unlike on disk, both toolkits receive the two numbers in
 *  the order given. Write the certificate of the name first: the key is then tied to it.
 *  @param slot        slot number
 *  @param algorithm   second number: encryption algorithm of the toolkit; the open toolkit leaves that to the card
 *  @param path        name on the medium, as for MediaCardReadCert
 *  @param password    PIN of the card, terminated; used for this call alone. Empty: the process is logged in to the card
 *                     already (PKCS11Login), or the answer is 4203
 *  @param privateKey  private key, as PriKeyDecrypt hands it out
 *  @return the common codes; 1001 when @p privateKey is empty or @p path or @p password is null; 2005 when the certificate of
 *          the name has another key; 2006 when it is not a private key; 3000 when several keys have the name; 3304; 4201 for
 *          a wrong PIN, 4202 when it is locked; 4203; 4205 */
SIGIL_EXPORT int MediaCardWritePriKey(
    void* handle, int slot, int algorithm, char* path, char* password, BINSTR* privateKey);

/** Deletes a certificate from a card; the key of that name stays.
 *  @param slot  slot number
 *  @param path  name on the medium, as for MediaCardReadCert
 *  @return the common codes; 1001 when @p path is null; 3000 when several certificates have the name; 3304; 4203; 4204 when
 *          none has it; 4205 */
SIGIL_EXPORT int MediaCardDeleteCert(void* handle, int slot, char* path);

/** Deletes a private key from a card, with its public key and its identity random value. The spelling of the name is part of
 *  the interface.
 *  @param slot      slot number
 *  @param path      name on the medium, as for MediaCardReadCert
 *  @param password  PIN of the card, as for MediaCardWritePriKey
 *  @return the common codes; 1001 when @p path or @p password is null; 3000 when several keys have the name; 3304; 4201;
 *          4202; 4203; 4204 when none has it; 4205 */
SIGIL_EXPORT int MediaCareDeletePriKey(void* handle, int slot, char* path, char* password);

/** Writes certificates and their keys to the system store. The spelling of the name is part of the interface.
 *
 *  What is said of the store here is how the open toolkit means it; a licensed toolkit may mean another one. It is the NSS database
 *  that MediaWinsCertCnt chose last on the handle, the user's (~/.pki/nssdb) before. 3304 when it cannot be opened or written,
 *  4203 when it has a password.
 *  @param store     number of the toolkit; the open toolkit does not use it
 *  @param password  password of the PKCS#12 file, terminated, in UTF-8 or CP949
 *  @param pfx       PKCS#12 file; all of it is added or nothing. The database is made when there is none
 *  @return the common codes; 1001 when @p pfx is empty or @p password is null; 1003 on the GPKI library; 3304; 4203; the codes
 *          of PFXImport, 4505 for a wrong password */
SIGIL_EXPORT int MediaWinsWirteCertKey(void* handle, int store, char* password, BINSTR* pfx);

/** Writes a certificate to the system store, which is made when there is none. The spelling of the name is part of the interface.
 *  @param certificate  certificate, DER or PEM; one that is there already stays
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the GPKI library; 3101 when it is not a certificate;
 *          3304; 4203 */
SIGIL_EXPORT int MediaWinsWirteCert(void* handle, BINSTR* certificate);

/** Counts the certificates of a system store, which is from then on the one of the handle.
 *  @param store  name of the store: the folder of an NSS database, terminated; empty: the user's. It need not exist
 *  @param count  receives the number; 0 for a database that does not exist
 *  @return the common codes; 1001 when @p store is null; 1001 when @p count is null, from the backend; 1003 on the
 *          GPKI library; 3304; 4203 */
SIGIL_EXPORT int MediaWinsCertCnt(void* handle, char* store, int* count);

/** Gives the names of one certificate of the system store.
 *  @param index    position of the certificate; the toolkit says where it counts from, the open toolkit from 0
 *  @param kind     number that the toolkit may write: SigilToolkitTokenCertificate of <sigildesk/open_toolkit.h>; may be null
 *  @param subject  text that the toolkit may write, CP949: room for 1024 bytes with the terminator; may be null
 *  @param issuer   text that the toolkit may write, as @p subject
 *  @return the common codes; 1003 on the GPKI library; 3003 when a name needs more room, and nothing is written; 3008 outside
 *          the store; 3304, also when there is no database; 4203 */
SIGIL_EXPORT int MediaWinsCertDN(void* handle, int index, int* kind, char* subject, char* issuer);

/** Reads a certificate of the system store.
 *  @param index        position of the certificate, as for MediaWinsCertDN
 *  @param certificate  filled by the toolkit with DER; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the GPKI library; 3008; 3304; 4203 */
SIGIL_EXPORT int MediaWinsReadCert(void* handle, int index, BINSTR* certificate);

/** Reads a private key of the system store. The spelling of the name is part of the interface. The open toolkit always answers 3304:
 *  there a key does not leave the store.
 *  @param index       position of the certificate, as for MediaWinsCertDN
 *  @param privateKey  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the GPKI library; 3304 */
SIGIL_EXPORT int MediaWinsReadPrikey(void* handle, int index, BINSTR* privateKey);

/** Reaches the same toolkit function as MediaWinsReadPrikey, deliberately: the two behave identically.
 *  @param index         position of the certificate, as for MediaWinsCertDN
 *  @param certificates  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the GPKI library; 3304 */
SIGIL_EXPORT int MediaWinsReadCaPubs(void* handle, int index, BINSTR* certificates);

#endif
