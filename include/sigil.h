// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  SigilDesk for every language that can call C, without Qt and without a display.
 *
 *  Link with `pkg-config --cflags --libs sigil`, or with the CMake target SigilDesk::C.
 *
 *  Rules that hold for every function:
 *  - Results. A function that can fail returns 0 (SIGIL_SUCCESS) or a code: one of enum SigilResult, or the toolkit's own,
 *    passed through unchanged (those of the open toolkit stand in <sigildesk/open_toolkit.h>). sigil_code_text() says any of
 *    them in words, sigil_error_text() what happened this time. Three answers have one code whatever the toolkit says: a
 *    wrong password is 1113, a certificate and a key that do not belong together 1130, a wrong identity number 1132. Every
 *    function with a session may return 1000 (memory ran out), 1001 (an argument is null, empty or out of its range), 1008
 *    (the session is null) and 1609 (see the error text); the functions name the others. After a failure nothing is written
 *    to the outputs, and the session is as it was.
 *  - Texts, in and out, are UTF-8 and end with a zero byte; paths are the bytes that the file system has. A text that a
 *    function hands out as const char* is the session's and never null.
 *  - Bytes in are a pointer and a size in bytes, 1 to 2147483647; they are copied or read, never changed or kept. Bytes out
 *    are a SigilBytes, which the caller gives back with sigil_free(). A certificate in may be DER or PEM; out it is DER.
 *  - Options are structs that begin with their own size in bytes; zeros mean the usual, and null means all zeros. A size
 *    smaller than that of version 1.0 is 1001, an option that this version of the library does not know 1608 unless it is
 *    zero. So a program and a library of different versions work together. Structs that a function fills in begin with their
 *    size likewise; what the library does not know it sets to zero.
 *  - Entries are the certificates of the session's list, numbered from 0; another number is 1001.
 *  - A session is used from one thread at a time, by whichever; sessions are independent of each other. sigil_code_text(),
 *    sigil_free() and sigil_version() may be called from every thread at any time.
 *
 *  The examples stand in a function with `SigilSession* session`, a session that was opened, and call check(), which ends the
 *  program unless its argument is 0.
 *
 *  Plain C99, and C++11.
 */
#ifndef SIGIL_H
#define SIGIL_H

#include <stddef.h>
#include <stdint.h>

#include <sigildesk/codes.h>
#include <sigildesk/export.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Bytes and versions -------------------------------------------------------------------------------------- */

/** Bytes that a function hands out. Behind the last of them stands a zero byte, which does not count. */
typedef struct SigilBytes {
    unsigned char* data; /**< null when there are none */
    size_t size;         /**< number of bytes */
} SigilBytes;

/** Wipes and releases what a function handed out, and empties the struct. May be called from every thread.
 *  @param bytes  null and an empty struct are ignored
 *
 *  @code
 *  SigilBytes certificate = {NULL, 0};
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &certificate));
 *  printf("%zu bytes\n", certificate.size);
 *  sigil_free(&certificate);
 *  @endcode */
SIGIL_EXPORT void sigil_free(SigilBytes* bytes);

/** Version of the library that is loaded, "1.0.0". May be called from every thread.
 *  @return the library's own text
 *
 *  @code
 *  printf("libsigil %s\n", sigil_version());
 *  @endcode */
SIGIL_EXPORT const char* sigil_version(void);

/* ---- Sessions ------------------------------------------------------------------------------------------------ */

/** A session: a toolkit, a list of certificates, and the keys that were unlocked. */
typedef struct SigilSession SigilSession;

/** How a session is opened. */
typedef struct SigilOpenOptions {
    size_t size;        /**< sizeof(SigilOpenOptions) */
    const char* folder; /**< library folder: toolkits and settings files. Null: "sigildesk" beside this library */
    int toolkit;        /**< enum SigilToolkit; 0 is the maker's */
    int language;       /**< enum SigilLanguage: of names and of the error text; 0: English */
} SigilOpenOptions;

/** Opens a session and loads its toolkit.
 *  @param options  null: the installed folder, the maker's toolkit, English
 *  @param session  receives the session, to be closed with sigil_close(); null after a failure
 *  @return 0; 1000; 1001 @p session is null, the language is unknown or the size is too small; 1020 unknown toolkit; 1021
 *          the folder is empty; 1023, 1024 the toolkit's library cannot be loaded from the folder; 1608
 *
 *  @code
 *  SigilOpenOptions options = {.size = sizeof options, .language = SIGIL_LANGUAGE_KOREAN};
 *  SigilSession* korean = NULL;
 *  options.folder = folder;
 *  check(sigil_open(&options, &korean));
 *  sigil_close(korean);
 *  @endcode */
SIGIL_EXPORT int sigil_open(const SigilOpenOptions* options, SigilSession** session);

/** Wipes the keys of a session and releases it with everything that is its own.
 *  @param session  null is ignored
 *
 *  @code
 *  SigilOpenOptions options = {.size = sizeof options};
 *  SigilSession* another = NULL;
 *  options.folder = folder;
 *  check(sigil_open(&options, &another));
 *  sigil_close(another);
 *  @endcode */
SIGIL_EXPORT void sigil_close(SigilSession* session);

/** What went wrong in the session's last call: a sentence for a person, with the file, the toolkit's words and the code in it
 *  as far as they are known. Holds no secret.
 *  @param session  may be null
 *  @return text of the session, until its next call; empty after a success, without memory, and for null
 *
 *  @code
 *  SigilListOptions options = {.size = sizeof options, .medium = "/no/such/folder"};
 *  int code = sigil_list(session, &options, NULL);
 *  if (code != SIGIL_SUCCESS)
 *      printf("%d: %s\n", code, sigil_error_text(session));
 *  @endcode */
SIGIL_EXPORT const char* sigil_error_text(const SigilSession* session);

/* ---- The list ------------------------------------------------------------------------------------------------ */

/** Where to look and what to list. */
typedef struct SigilListOptions {
    size_t size;         /**< sizeof(SigilListOptions) */
    const char* medium;  /**< folder of a mounted disk, at most 259 bytes; null: the user's home folder */
    const char* issuer;  /**< part of the issuer's name, whatever the case of A to Z; null: any */
    const char* policy;  /**< OID of a policy, "1.2.410.200004.5.1.1.5"; null: any */
    const char* subject; /**< the whole subject, "cn=...,ou=...,o=...,c=kr"; null: any */
    const char* serial;  /**< serial number, hexadecimal; null: any */
    int families;        /**< sum of enum SigilFamily; 0: all */
    int expires_within;  /**< days: those that are valid and not for longer; 0: all */
    int valid;           /**< not 0: those that are valid now */
    int expired;         /**< not 0: those that have expired */
} SigilListOptions;

/** Lists certificates. The entries of before go, their keys are wiped; after a failure they stay.
 *  @param options  null: everything in the home folder
 *  @param count    receives the number of entries, which may be 0; may be null
 *  @return the common codes; 1001 also for an empty or unknown option; 1100, 1102 a settings file of the library folder is
 *          missing or cannot be read; 1111 no home folder; 1123 a folder cannot be read; 1604 the folder's name is too long;
 *          1608
 *
 *  @code
 *  SigilListOptions options = {.size = sizeof options, .valid = 1};
 *  int count = 0;
 *  options.medium = disk;
 *  check(sigil_list(session, &options, &count));
 *  printf("%d certificates\n", count);
 *  @endcode */
SIGIL_EXPORT int sigil_list(SigilSession* session, const SigilListOptions* options, int* count);

/** What is known of a certificate. The texts are the session's; one that the certificate does not say is empty. */
typedef struct SigilFields {
    size_t size;                     /**< sizeof(SigilFields), set by the caller */
    int64_t valid_from;              /**< seconds since 1970-01-01 00:00 UTC */
    int64_t valid_to;                /**< likewise */
    int days_left;                   /**< whole days; negative when it has expired */
    int expired;                     /**< 1 or 0 */
    int expires_soon;                /**< 1 or 0 */
    int family;                      /**< enum SigilFamily; 0: unknown */
    int has_key;                     /**< 1: the signing key lies beside the certificate */
    int has_km;                      /**< 1: there is a key-management pair */
    int unlocked;                    /**< 1: the keys are in the session */
    const char* name;                /**< common name of the subject */
    const char* subject;             /**< distinguished name, "cn=...,ou=...,o=...,c=kr" */
    const char* issuer;              /**< distinguished name */
    const char* issuer_name;         /**< the issuer as it is shown */
    const char* serial;              /**< hexadecimal */
    const char* use;                 /**< name of the policy */
    const char* policy;              /**< its OID, dotted */
    const char* version;             /**< "V3" */
    const char* signature_algorithm; /**< as the toolkit names it */
    const char* key_algorithm;       /**< likewise */
    const char* key_length;          /**< "2048 Bits" */
    const char* key_usage;           /**< "digitalSignature, nonRepudiation" */
    const char* policies;            /**< all policies with their qualifiers */
    const char* alternative_name;    /**< subject alternative name */
    const char* authority_key_id;    /**< of the issuer's key */
    const char* subject_key_id;      /**< of its own key */
    const char* revocation_list;     /**< where its revocation list is */
    const char* authority_access;    /**< where the responder and the issuer's certificate are */
    const char* certificate_file;    /**< path; empty when it came from memory */
    const char* key_file;            /**< path of the signing key */
    const char* km_certificate_file; /**< path of the key-management certificate */
    const char* km_key_file;         /**< path of its key */
} SigilFields;

/** What is known of an entry.
 *  @param entry   number of the entry
 *  @param fields  filled in; its texts hold until the next sigil_list() and sigil_close()
 *  @return the common codes; 1001 also for an unknown entry and a size that is too small
 *
 *  @code
 *  SigilFields fields = {.size = sizeof fields};
 *  check(sigil_fields(session, 0, &fields));
 *  printf("%s, issued by %s, %d days left\n", fields.name, fields.issuer_name, fields.days_left);
 *  @endcode */
SIGIL_EXPORT int sigil_fields(SigilSession* session, int entry, SigilFields* fields);

/** What is known of a certificate that is no entry, such as a signer's.
 *  @param certificate, size  certificate, DER or PEM
 *  @param fields             filled in; its texts hold until the next call of this function and sigil_close()
 *  @return the common codes; 1122 and 3101 when it is no certificate, 3007 when its PEM is damaged
 *
 *  @code
 *  SigilBytes certificate = {NULL, 0};
 *  SigilFields fields = {.size = sizeof fields};
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &certificate));
 *  check(sigil_certificate_fields(session, certificate.data, certificate.size, &fields));
 *  printf("%s\n", fields.subject);
 *  sigil_free(&certificate);
 *  @endcode */
SIGIL_EXPORT int sigil_certificate_fields(
    SigilSession* session, const void* certificate, size_t size, SigilFields* fields);

/** The pairs of an entry. */
enum SigilPair {
    SIGIL_PAIR_SIGNING = 0,
    SIGIL_PAIR_KEY_MANAGEMENT = 1 /**< for encryption; government certificates have one beside the signing pair */
};

/** A certificate of an entry in DER.
 *  @param entry        number of the entry
 *  @param pair         enum SigilPair
 *  @param certificate  receives the certificate; give it back with sigil_free()
 *  @return the common codes; 1001 also for an unknown entry or pair; 1600 the entry has no such pair
 *
 *  @code
 *  SigilBytes certificate = {NULL, 0};
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &certificate));
 *  printf("%zu bytes\n", certificate.size);
 *  sigil_free(&certificate);
 *  @endcode */
SIGIL_EXPORT int sigil_certificate(SigilSession* session, int entry, int pair, SigilBytes* certificate);

/* ---- Keys ---------------------------------------------------------------------------------------------------- */

/** For sigil_lock(): every entry. */
enum { SIGIL_ALL_ENTRIES = -1 };

/** Opens all private keys of an entry, which stay in the session until sigil_lock(), sigil_list() and sigil_close(). An entry
 *  that is unlocked already keeps its keys when the password is wrong.
 *  @param entry     number of the entry
 *  @param password  password of the certificate, in the bytes that the key was protected with, usually UTF-8
 *  @return the common codes; 1001 also for an empty password; 1113 wrong password; 1123 a key file cannot be read; 1600 the
 *          entry has no key; 2000, 2001, 2006 a key file is damaged or of an unknown kind
 *
 *  @code
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_lock(session, 0));
 *  @endcode */
SIGIL_EXPORT int sigil_unlock(SigilSession* session, int entry, const char* password);

/** Wipes the keys of an entry in the session.
 *  @param entry  number of the entry, locked or not; SIGIL_ALL_ENTRIES for all
 *  @return the common codes
 *
 *  @code
 *  check(sigil_lock(session, SIGIL_ALL_ENTRIES));
 *  @endcode */
SIGIL_EXPORT int sigil_lock(SigilSession* session, int entry);

/** Hands out a private key, PKCS#8 in DER (RFC 5958).
 *  @param entry         number of the entry, unlocked
 *  @param pair          enum SigilPair
 *  @param new_password  null: the key in the clear, a PrivateKeyInfo; else an EncryptedPrivateKeyInfo under this password (PBES2,
 *                       HMAC-SHA256, AES-256)
 *  @param key           receives the key; give it back with sigil_free(), which wipes it
 *  @return the common codes; 1001 also for an empty password; 1600 the entry has no such pair; 1601
 *
 *  @code
 *  SigilBytes key = {NULL, 0};
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_private_key(session, 0, SIGIL_PAIR_SIGNING, "another5678?", &key));
 *  printf("%zu bytes\n", key.size);
 *  sigil_free(&key);
 *  @endcode */
SIGIL_EXPORT int sigil_private_key(
    SigilSession* session, int entry, int pair, const char* new_password, SigilBytes* key);

/** Checks that an identity number belongs to the holder of a certificate (VID).
 *  @param entry   number of the entry, unlocked
 *  @param number  identity number, digits
 *  @return the common codes; 0 it does; 1132 it does not; 1600, 1601; 3500 the key holds no random value, 3501 the
 *          certificate no identity data
 *
 *  @code
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  int code = sigil_identity(session, 0, "0000000000000");
 *  printf("%s\n", code == SIGIL_SUCCESS ? "the holder's" : "not the holder's");
 *  @endcode */
SIGIL_EXPORT int sigil_identity(SigilSession* session, int entry, const char* number);

/* ---- The dialog ---------------------------------------------------------------------------------------------- */

/** What the dialog lists. */
typedef struct SigilPickOptions {
    size_t size; /**< sizeof(SigilPickOptions) */
    const char*
        policies; /**< OIDs with a bar between them, "1.2.410.200004.5.1.1.5|1.2.410.200005.1.1.4"; null: any */
    const char* subject; /**< the whole subject as sigil_fields() tells it; null: any */
    const char* serial;  /**< serial number as sigil_fields() tells it; null: any */
    int families;        /**< sum of enum SigilFamily; 0: all */
    int with_km;         /**< not 0: those with a key-management pair */
    int no_expired;      /**< not 0: without those that have expired */
    int lock_expired;    /**< not 0: those that have expired are shown, and cannot be chosen */
} SigilPickOptions;

/** Lets the user choose a certificate and type its password in the selection dialog, and waits for that. A program of its own
 *  shows the dialog ("sigildesk-pick" in the library folder beside this library), so the caller needs neither Qt nor an
 *  event loop; other threads go on meanwhile.
 *
 *  The list keeps its entries, their numbers and their keys. What was chosen is the entry that it is already, else a new one
 *  behind the others, wherever the user found it; it is unlocked as by sigil_unlock(). The next sigil_list() makes another
 *  list.
 *  @param options  null: everything
 *  @param entry    receives the number of the entry
 *  @return the common codes; 1001 also for an empty option; -1 (SIGIL_CANCELLED) nothing was chosen; 1604 the library
 *          folder's name is too long; 1606 the dialogs are not installed; 1607 there is no display; 1608; 1609 the dialog
 *          ended by itself; a code of CLP_Initalize() (<sigildesk/certlist.h>)
 *
 *  @code
 *  SigilPickOptions options = {.size = sizeof options, .no_expired = 1};
 *  SigilFields fields = {.size = sizeof fields};
 *  int entry = 0;
 *  int code = sigil_pick(session, &options, &entry);
 *  if (code == SIGIL_CANCELLED || code == SIGIL_NO_DIALOGS || code == SIGIL_NO_DISPLAY) {
 *      printf("nothing chosen: %s\n", sigil_error_text(session));
 *  } else {
 *      SigilBytes message = {NULL, 0};
 *      check(code);
 *      check(sigil_fields(session, entry, &fields));
 *      check(sigil_sign(session, entry, NULL, "text", 4, &message));
 *      printf("signed by %s\n", fields.name);
 *      sigil_free(&message);
 *  }
 *  @endcode */
SIGIL_EXPORT int sigil_pick(SigilSession* session, const SigilPickOptions* options, int* entry);

/* ---- Signatures ---------------------------------------------------------------------------------------------- */

/** What a signature is packed in. */
enum SigilForm {
    SIGIL_FORM_ATTACHED = 0, /**< a message with the data in it (CMS SignedData, RFC 5652) */
    SIGIL_FORM_DETACHED = 1, /**< a message without the data */
    SIGIL_FORM_RAW = 2       /**< the signature alone, over SHA-256 */
};

/** How a signature is made. */
typedef struct SigilSignOptions {
    size_t size; /**< sizeof(SigilSignOptions) */
    int form;    /**< enum SigilForm */
    const char*
        stamp_url; /**< time-stamping authority (RFC 3161), "http://..."; its stamp goes into the message. Null: none */
} SigilSignOptions;

/** Signs data with the signing key of an entry.
 *  @param entry       number of the entry, unlocked
 *  @param options     null: a message with the data in it
 *  @param data, size  what is signed
 *  @param signature   receives the message or the signature; give it back with sigil_free()
 *  @return the common codes; 1001 also for a stamp on a raw signature; 1600, 1601; 1608; 1609 no room for the temporary file
 *          that a detached message goes through; with a stamp 3600, 3601, 3602 the authority cannot be reached, 4000 to 4006
 *          its answer is refused; a toolkit code
 *
 *  @code
 *  SigilSignOptions options = {.size = sizeof options, .form = SIGIL_FORM_DETACHED};
 *  SigilBytes message = {NULL, 0};
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_sign(session, 0, &options, "text", 4, &message));
 *  check(sigil_verify(session, message.data, message.size, "text", 4, NULL, NULL));
 *  sigil_free(&message);
 *  @endcode */
SIGIL_EXPORT int sigil_sign(SigilSession* session, int entry, const SigilSignOptions* options, const void* data,
    size_t size, SigilBytes* signature);

/** Verifies the signatures of a message with the certificates in it. Who issued these is sigil_verify_certificate()'s to say.
 *  @param message, message_size  message, BER or DER
 *  @param data, data_size        what is signed; null and 0 when it is in the message. When it is given and in the message
 *                                too, both must be the same
 *  @param content                receives what is signed; may be null; give it back with sigil_free()
 *  @param signers                receives the number of signers, which sigil_signer() tells of; may be null
 *  @return the common codes; 3403 a signature is wrong; 3900 no message, or damaged; 3901 the data is missing, or not what
 *          was signed; 3902 a signer's certificate is not in the message; 3904 a message of another type
 *
 *  @code
 *  SigilBytes message = {NULL, 0}, content = {NULL, 0};
 *  int signers = 0;
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_sign(session, 0, NULL, "text", 4, &message));
 *  check(sigil_verify(session, message.data, message.size, NULL, 0, &content, &signers));
 *  printf("%s, signed by %d\n", (const char*)content.data, signers);
 *  sigil_free(&content);
 *  sigil_free(&message);
 *  @endcode */
SIGIL_EXPORT int sigil_verify(SigilSession* session, const void* message, size_t message_size, const void* data,
    size_t data_size, SigilBytes* content, int* signers);

/** A signer of a message. */
typedef struct SigilSigner {
    size_t size;                      /**< sizeof(SigilSigner), set by the caller */
    int64_t signing_time;             /**< seconds since 1970, as the signer says; 0: not said */
    int64_t stamp_time;               /**< seconds since 1970, as the time stamp in the message says; 0: no stamp */
    int stamp_code;                   /**< how the verification of the stamp went; 0 also when there is none */
    const unsigned char* certificate; /**< DER, the session's */
    size_t certificate_size;          /**< in bytes */
} SigilSigner;

/** A signer of the message that sigil_verify() found good last.
 *  @param index   number of the signer, from 0
 *  @param signer  filled in; its certificate holds until the next sigil_verify() that is good, and sigil_close()
 *  @return the common codes; 1001 also for an unknown signer
 *
 *  @code
 *  SigilBytes message = {NULL, 0};
 *  SigilSigner signer = {.size = sizeof signer};
 *  SigilFields fields = {.size = sizeof fields};
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_sign(session, 0, NULL, "text", 4, &message));
 *  check(sigil_verify(session, message.data, message.size, NULL, 0, NULL, NULL));
 *  check(sigil_signer(session, 0, &signer));
 *  check(sigil_certificate_fields(session, signer.certificate, signer.certificate_size, &fields));
 *  printf("signed by %s\n", fields.name);
 *  sigil_free(&message);
 *  @endcode */
SIGIL_EXPORT int sigil_signer(SigilSession* session, int index, SigilSigner* signer);

/** Verifies a signature that stands alone (SIGIL_FORM_RAW).
 *  @param certificate, certificate_size  the signer's, DER or PEM
 *  @param data, data_size                what is signed
 *  @param signature, signature_size      the signature
 *  @return the common codes; 3101 no certificate; 3403 the signature is wrong; a toolkit code
 *
 *  @code
 *  SigilSignOptions options = {.size = sizeof options, .form = SIGIL_FORM_RAW};
 *  SigilBytes signature = {NULL, 0}, signer = {NULL, 0};
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_sign(session, 0, &options, "text", 4, &signature));
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &signer));
 *  check(sigil_verify_raw(session, signer.data, signer.size, "text", 4, signature.data, signature.size));
 *  sigil_free(&signer);
 *  sigil_free(&signature);
 *  @endcode */
SIGIL_EXPORT int sigil_verify_raw(SigilSession* session, const void* certificate, size_t certificate_size,
    const void* data, size_t data_size, const void* signature, size_t signature_size);

/* ---- Encryption ---------------------------------------------------------------------------------------------- */

/** What data is encrypted with. */
enum SigilCipher {
    SIGIL_CIPHER_AES256 = 0,
    SIGIL_CIPHER_AES192 = 1,
    SIGIL_CIPHER_AES128 = 2,
    SIGIL_CIPHER_ARIA256 = 3,
    SIGIL_CIPHER_ARIA192 = 4,
    SIGIL_CIPHER_ARIA128 = 5,
    SIGIL_CIPHER_SEED = 6,
    SIGIL_CIPHER_3DES = 7
};

/** Encrypts data for the holders of certificates (CMS EnvelopedData, RFC 5652).
 *  @param cipher      enum SigilCipher
 *  @param recipients  certificates, DER or PEM: the key-management certificate of a recipient who has one. Only read
 *  @param count       number of recipients, at least 1
 *  @param data, size  what is encrypted
 *  @param message     receives the message; give it back with sigil_free()
 *  @return the common codes; 3101 a recipient is no certificate; 3007 its PEM is damaged; a toolkit code
 *
 *  @code
 *  SigilBytes recipient = {NULL, 0}, message = {NULL, 0};
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &recipient));
 *  check(sigil_encrypt(session, SIGIL_CIPHER_AES256, &recipient, 1, "text", 4, &message));
 *  printf("%zu bytes\n", message.size);
 *  sigil_free(&message);
 *  sigil_free(&recipient);
 *  @endcode */
SIGIL_EXPORT int sigil_encrypt(SigilSession* session, int cipher, const SigilBytes* recipients, int count,
    const void* data, size_t size, SigilBytes* message);

/** Decrypts a message with the keys of an entry: with that of the key-management pair, else with the signing key.
 *  @param entry          number of the entry, unlocked
 *  @param message, size  message, BER or DER
 *  @param content        receives what was encrypted, to be given back with sigil_free(), which wipes it. Nobody vouches for it
 *                        unless it is signed
 *  @return the common codes; 1600, 1601; 3402 it cannot be decrypted; 3900 no message, or damaged; 3902 it is not for this
 *          entry; 3904 a message of another type
 *
 *  @code
 *  SigilBytes recipient = {NULL, 0}, message = {NULL, 0}, content = {NULL, 0};
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &recipient));
 *  check(sigil_encrypt(session, SIGIL_CIPHER_ARIA256, &recipient, 1, "text", 4, &message));
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_decrypt(session, 0, message.data, message.size, &content));
 *  printf("%s\n", (const char*)content.data);
 *  sigil_free(&content);
 *  sigil_free(&message);
 *  sigil_free(&recipient);
 *  @endcode */
SIGIL_EXPORT int sigil_decrypt(
    SigilSession* session, int entry, const void* message, size_t size, SigilBytes* content);

/* ---- Stores and PKCS#12 files -------------------------------------------------------------------------------- */

/** Protection of a PKCS#12 file (RFC 7292). */
enum SigilProtection {
    SIGIL_PROTECTION_3DES = 0,  /**< PKCS#12 3DES: read by every tool */
    SIGIL_PROTECTION_SEED = 1,  /**< PBES2, SEED */
    SIGIL_PROTECTION_AES256 = 2 /**< PBES2, AES-256: current tools */
};

/** Puts all pairs of an entry into a PKCS#12 file.
 *  @param entry       number of the entry, unlocked
 *  @param protection  enum SigilProtection
 *  @param password    password of the file
 *  @param pkcs12      receives the file's content; give it back with sigil_free()
 *  @return the common codes; 1600, 1601; 1023 the maker's toolkit is wanted for this and missing; a toolkit code
 *
 *  @code
 *  SigilBytes pkcs12 = {NULL, 0};
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_export(session, 0, SIGIL_PROTECTION_AES256, "another5678?", &pkcs12));
 *  printf("%zu bytes\n", pkcs12.size);
 *  sigil_free(&pkcs12);
 *  @endcode */
SIGIL_EXPORT int sigil_export(
    SigilSession* session, int entry, int protection, const char* password, SigilBytes* pkcs12);

/** Brings the pairs of a PKCS#12 file into a store, where sigil_list() finds them; the list stays as it is. Their keys get
 *  the password of the file. All files are written or none.
 *  @param pkcs12, size  content of the file
 *  @param password      password of the file
 *  @param medium        folder of a mounted disk; null: the user's home folder
 *  @param replace       not 0: pairs that are in the same place are replaced
 *  @return the common codes; 1001 also for an empty folder; 1023 the maker's toolkit is missing; 1113 wrong password; 1115 no
 *          pair in it; 1123 the folder is not there; 1124 cannot be written; 1129 no PKCS#12 file, damaged or of an unknown
 *          kind; 1602, 1603, 1604
 *
 *  @code
 *  SigilBytes pkcs12 = {NULL, 0};
 *  check(sigil_unlock(session, 0, "sample1234!"));
 *  check(sigil_export(session, 0, SIGIL_PROTECTION_3DES, "another5678?", &pkcs12));
 *  check(sigil_import(session, pkcs12.data, pkcs12.size, "another5678?", other_disk, 0));
 *  sigil_free(&pkcs12);
 *  @endcode */
SIGIL_EXPORT int sigil_import(
    SigilSession* session, const void* pkcs12, size_t size, const char* password, const char* medium, int replace);

/** Copies the files of an entry to a disk, as they are. All of them are written or none.
 *  @param entry    number of the entry, locked or not
 *  @param medium   folder of a mounted disk; null: the user's home folder
 *  @param replace  not 0: pairs that are in the same place are replaced
 *  @return the common codes; 1001 also for an empty folder; 1005 the entry has no files; 1123 the folder or a file cannot be
 *          read; 1124 cannot be written; 1600, 1602, 1603, 1604
 *
 *  @code
 *  check(sigil_copy(session, 0, other_disk, 1));
 *  @endcode */
SIGIL_EXPORT int sigil_copy(SigilSession* session, int entry, const char* medium, int replace);

/** Deletes the files of an entry, all or none. The entry stays in the list, and its keys if it is unlocked.
 *  @param entry  number of the entry
 *  @return the common codes; 1005 the entry has no files; 1124 they cannot be deleted
 *
 *  @code
 *  SigilListOptions options = {.size = sizeof options};
 *  options.medium = other_disk;
 *  check(sigil_copy(session, 0, other_disk, 1));
 *  check(sigil_list(session, &options, NULL));
 *  check(sigil_delete(session, 0));
 *  @endcode */
SIGIL_EXPORT int sigil_delete(SigilSession* session, int entry);

/** Puts all keys of an entry under a new password, in their files: all or none.
 *  @param entry         number of the entry, locked or not
 *  @param old_password  password in use
 *  @param new_password  password to be
 *  @return the common codes; 1001 also for an empty password; 1005 the entry has no files; 1113 wrong password; 1123, 1124 a
 *          file cannot be read, written; 1600; 2000, 2001 a key file is damaged or of an unknown kind
 *
 *  @code
 *  check(sigil_change_password(session, 0, "sample1234!", "another5678?"));
 *  check(sigil_change_password(session, 0, "another5678?", "sample1234!"));
 *  @endcode */
SIGIL_EXPORT int sigil_change_password(
    SigilSession* session, int entry, const char* old_password, const char* new_password);

/* ---- Judging certificates ------------------------------------------------------------------------------------ */

/** What a certificate is wanted for. */
enum SigilPurpose { SIGIL_PURPOSE_ANY = 0, SIGIL_PURPOSE_SIGN = 1, SIGIL_PURPOSE_ENCRYPT = 2 };

/** By what a certificate is judged. */
typedef struct SigilJudgeOptions {
    size_t size; /**< sizeof(SigilJudgeOptions) */
    const SigilBytes*
        trusted; /**< certificates, DER or PEM, that are trusted: roots, and others of the path. Only read. Null: the
                                    roots of "HVCToolkitV30.conf" in the library folder */
    int trusted_count;     /**< number of them */
    int purpose;           /**< enum SigilPurpose; not for sigil_status() */
    int64_t time;          /**< seconds since 1970 at which it is to hold; 0: now. Not for sigil_status() */
    int no_revocation;     /**< not 0: nobody is asked whether it is revoked; not for sigil_status() */
    const char* responder; /**< for sigil_status() alone: address of the OCSP responder; null: the certificate's */
} SigilJudgeOptions;

/** Verifies a certificate: path, validity, policies, purpose and revocation. Issuers that are missing are fetched from the
 *  addresses in the certificate and, without trusted certificates, from the directories of the settings file.
 *  @param options            null: by the roots of the settings file, for any purpose, now, with revocation
 *  @param certificate, size  certificate, DER or PEM
 *  @return the common codes; 0 it is valid; 1001 also for a trusted certificate without bytes; 1122, 3101 no certificate; 3007
 *          its PEM is damaged; 1608; 3200 to 3208 it is not valid: the first reason; a toolkit code
 *
 *  @code
 *  SigilJudgeOptions options = {.size = sizeof options, .no_revocation = 1};
 *  SigilBytes certificate = {NULL, 0};
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &certificate));
 *  options.trusted = authorities;
 *  options.trusted_count = authority_count;
 *  check(sigil_verify_certificate(session, &options, certificate.data, certificate.size));
 *  sigil_free(&certificate);
 *  @endcode */
SIGIL_EXPORT int sigil_verify_certificate(
    SigilSession* session, const SigilJudgeOptions* options, const void* certificate, size_t size);

/** Whether a certificate is revoked. */
typedef struct SigilStatus {
    size_t size;        /**< sizeof(SigilStatus), set by the caller */
    int revoked;        /**< 1 or 0 */
    int by_list;        /**< 1: a revocation list says so; 0: a responder */
    int64_t revoked_at; /**< seconds since 1970; 0: not told */
} SigilStatus;

/** Asks whether a certificate is revoked: the responder (OCSP), else its revocation list.
 *  @param options            who is trusted, and the responder; null: as the settings file and the certificate say
 *  @param certificate, size  certificate, DER or PEM
 *  @param status             filled in
 *  @return the common codes; 0 it is known; 1122, 3007, 3101 no certificate; 1605 nobody could tell; 1608; a toolkit code
 *
 *  @code
 *  SigilJudgeOptions options = {.size = sizeof options};
 *  SigilStatus status = {.size = sizeof status};
 *  SigilBytes certificate = {NULL, 0};
 *  check(sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &certificate));
 *  options.responder = "http://127.0.0.1:1/";
 *  int code = sigil_status(session, &options, certificate.data, certificate.size, &status);
 *  if (code == SIGIL_SUCCESS)
 *      printf("%s\n", status.revoked ? "revoked" : "good");
 *  else if (code == SIGIL_STATUS_UNKNOWN)
 *      printf("nobody can tell: %s\n", sigil_error_text(session));
 *  sigil_free(&certificate);
 *  @endcode */
SIGIL_EXPORT int sigil_status(SigilSession* session, const SigilJudgeOptions* options, const void* certificate,
    size_t size, SigilStatus* status);

/* ---- Time stamps --------------------------------------------------------------------------------------------- */

/** Gets a time-stamp token for data (RFC 3161) and verifies it.
 *  @param url         address of the authority, "http://..." or "https://..."
 *  @param data, size  what is stamped
 *  @param token       receives the token; give it back with sigil_free()
 *  @return the common codes; 3600, 3601, 3602 the authority cannot be reached; 3403, 4000 to 4006 its answer is refused
 *
 *  @code
 *  SigilBytes token = {NULL, 0};
 *  int code = sigil_timestamp(session, "http://127.0.0.1:1/", "text", 4, &token);
 *  if (code != SIGIL_SUCCESS)
 *      printf("%s\n", sigil_error_text(session));
 *  sigil_free(&token);
 *  @endcode */
SIGIL_EXPORT int sigil_timestamp(
    SigilSession* session, const char* url, const void* data, size_t size, SigilBytes* token);

/** What a time stamp says. */
typedef struct SigilStamp {
    size_t size;        /**< sizeof(SigilStamp), set by the caller */
    int64_t time;       /**< seconds since 1970 */
    const char* policy; /**< OID, dotted; the session's */
    const char* serial; /**< hexadecimal; the session's */
} SigilStamp;

/** Verifies a time-stamp token over the data that it is for, and reads it.
 *  @param token, token_size  token
 *  @param data, data_size    what was stamped
 *  @param stamp              filled in; its texts hold until the next call of this function and sigil_close()
 *  @return the common codes; 1024 the government library is wanted for this and missing; 3403, 4000 to 4006 the token is
 *          refused: 4004 when it is for other data
 *
 *  @code
 *  SigilStamp stamp = {.size = sizeof stamp};
 *  if (sigil_stamp(session, "no token", 8, "text", 4, &stamp) == SIGIL_SUCCESS)
 *      printf("policy %s\n", stamp.policy);
 *  @endcode */
SIGIL_EXPORT int sigil_stamp(SigilSession* session, const void* token, size_t token_size, const void* data,
    size_t data_size, SigilStamp* stamp);

/* ---- Tokens and findings ------------------------------------------------------------------------------------- */

/** Looks for tokens (PKCS#11) and the certificates on them. Nobody logs in.
 *  @param count  receives the number of tokens; may be null
 *  @return the common codes; 4208 a module fails; a toolkit code
 *
 *  @code
 *  int count = 0;
 *  check(sigil_tokens(session, &count));
 *  printf("%d tokens\n", count);
 *  @endcode */
SIGIL_EXPORT int sigil_tokens(SigilSession* session, int* count);

/** A token. Its texts are the session's. */
typedef struct SigilToken {
    size_t size;        /**< sizeof(SigilToken), set by the caller */
    unsigned long slot; /**< number of its slot */
    int initialised;    /**< 1 or 0 */
    int certificates;   /**< number of certificates on it */
    const char* label;  /**< its name */
    const char* maker;  /**< who made it */
    const char* model;  /**< its model */
    const char* serial; /**< its serial number */
} SigilToken;

/** What is known of a token.
 *  @param index  number of the token, from 0
 *  @param token  filled in; its texts hold until the next sigil_tokens() and sigil_close()
 *  @return the common codes; 1001 also for an unknown token
 *
 *  @code
 *  SigilToken token = {.size = sizeof token};
 *  int count = 0;
 *  check(sigil_tokens(session, &count));
 *  if (count > 0) {
 *      check(sigil_token(session, 0, &token));
 *      printf("%s by %s\n", token.label, token.maker);
 *  }
 *  @endcode */
SIGIL_EXPORT int sigil_token(SigilSession* session, int index, SigilToken* token);

/** A certificate on a token, in DER.
 *  @param token        number of the token, from 0
 *  @param index        number of the certificate on it, from 0
 *  @param certificate  receives the certificate; give it back with sigil_free()
 *  @return the common codes; 1001 also for an unknown token or certificate
 *
 *  @code
 *  SigilBytes certificate = {NULL, 0};
 *  check(sigil_tokens(session, NULL));
 *  if (sigil_token_certificate(session, 0, 0, &certificate) == SIGIL_SUCCESS)
 *      printf("%zu bytes\n", certificate.size);
 *  sigil_free(&certificate);
 *  @endcode */
SIGIL_EXPORT int sigil_token_certificate(SigilSession* session, int token, int index, SigilBytes* certificate);

/** Finds out why certificates of a medium are listed or not, by the very decisions of the list.
 *  @param medium  folder of a mounted disk; null: the user's home folder
 *  @param count   receives the number of findings; may be null
 *  @return the common codes; 1001 also for an empty folder; 1123 it is not there; 1604 its name is too long
 *
 *  @code
 *  int count = 0;
 *  check(sigil_examine(session, disk, &count));
 *  printf("%d findings\n", count);
 *  @endcode */
SIGIL_EXPORT int sigil_examine(SigilSession* session, const char* medium, int* count);

/** What stands at one place. Its texts are the session's. */
typedef struct SigilFinding {
    size_t size;        /**< sizeof(SigilFinding), set by the caller */
    int listed;         /**< 1: it is listed */
    const char* path;   /**< file or folder */
    const char* rule;   /**< name of the rule, for a program */
    const char* detail; /**< what there is to say, in the language of the session */
    const char* mend;   /**< how to mend it; empty when there is nothing to mend */
} SigilFinding;

/** A finding of sigil_examine().
 *  @param index    number of the finding, from 0
 *  @param finding  filled in; its texts hold until the next sigil_examine() and sigil_close()
 *  @return the common codes; 1001 also for an unknown finding
 *
 *  @code
 *  SigilFinding finding = {.size = sizeof finding};
 *  check(sigil_examine(session, disk, NULL));
 *  check(sigil_finding(session, 0, &finding));
 *  printf("%s: %s\n", finding.path, finding.detail);
 *  @endcode */
SIGIL_EXPORT int sigil_finding(SigilSession* session, int index, SigilFinding* finding);

#ifdef __cplusplus
}
#endif

#endif
