// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Result codes and option values of the open toolkit: the OpenSSL-backed libraries `libHVCToolkitV30.so` and
 *  `libgpkiapi_v15.so` that are installed beside SigilDesk and serve a machine without a licensed toolkit.
 *
 *  Both libraries answer the same codes. The façade passes them through unchanged, and HV_GetErrInfo and HV_GetErrInfo2
 *  give an English sentence for the last failure, with OpenSSL's own reason appended where there is one. Texts never hold
 *  passwords or key bytes. The numbers are stable. This header compiles as C and as C++.
 *
 *  General rules of every function: byte strings in are DER unless said otherwise (certificates may also be PEM); byte
 *  strings out are allocated by the toolkit and released with HV_BINSTR_Delete; texts out are CP949, terminated, and
 *  capacities count the terminator. On failure no output is written.
 */
#ifndef SIGILDESK_OPEN_TOOLKIT_H
#define SIGILDESK_OPEN_TOOLKIT_H

/** Result codes; 0 is success. */
enum SigilToolkitCode {
    SIGIL_TK_OK = 0,

    /* Private keys. The list processor knows the first three and tells the user about them. */
    SIGIL_TK_KEY_MALFORMED = 2000,      /**< not an EncryptedPrivateKeyInfo, or parameters out of bounds */
    SIGIL_TK_KEY_UNSUPPORTED = 2001,    /**< encrypted with an algorithm that the toolkit does not have */
    SIGIL_TK_KEY_WRONG_PASSWORD = 2004, /**< the password does not open the key */
    SIGIL_TK_KEY_MISMATCH = 2005,       /**< certificate and private key do not belong together */
    SIGIL_TK_KEY_UNUSABLE = 2006,       /**< the decrypted key is not a PrivateKeyInfo that OpenSSL can use */
    SIGIL_TK_KEY_OPTION = 2007,         /**< unknown key-encryption algorithm code */

    /* The call itself. */
    SIGIL_TK_ARGUMENT = 3000,         /**< a required argument is missing, empty or out of range */
    SIGIL_TK_CONTEXT = 3001,          /**< the context is null or was never initialised */
    SIGIL_TK_NO_MEMORY = 3002,        /**< memory ran out */
    SIGIL_TK_BUFFER_TOO_SMALL = 3003, /**< the text does not fit into the buffer and must not be cut */
    SIGIL_TK_INTERNAL = 3004,         /**< a failure that has no code of its own; see the text */
    SIGIL_TK_NO_PROVIDER = 3005,      /**< OpenSSL's "default" or "legacy" provider cannot be loaded */
    SIGIL_TK_OPTION = 3006,           /**< unknown option value */
    SIGIL_TK_ENCODING = 3007,         /**< not valid base64, PEM, time text or object list */
    SIGIL_TK_INDEX = 3008,            /**< index outside the list */
    SIGIL_TK_NAMES_DIFFER = 3009,     /**< UTIL_CompareDN: the names are different */

    SIGIL_TK_NOT_OFFERED = 3010, /**< no public definition of the format exists; the text says which */

    /* Certificates and their verification. */
    SIGIL_TK_CERT_NOT_LOADED = 3100, /**< a field was asked for before CERT_Load */
    SIGIL_TK_CERT_MALFORMED = 3101,  /**< not an X.509 certificate */
    SIGIL_TK_CRL_MALFORMED = 3102,   /**< not a certificate revocation list */
    /* For a reason not listed below; also: a form that RFC 5280 forbids, MD2, MD4 or MD5, RSA below 1024 bits. */
    SIGIL_TK_VERIFY_FAILED = 3200,    /**< the certificate does not verify */
    SIGIL_TK_VERIFY_NO_ISSUER = 3201, /**< no path to a trusted certificate */
    SIGIL_TK_VERIFY_EXPIRED = 3202,   /**< a certificate of the path has expired */
    SIGIL_TK_VERIFY_NOT_YET = 3203,   /**< a certificate of the path is not valid yet */
    SIGIL_TK_VERIFY_REVOKED = 3204,   /**< a certificate of the path is revoked */
    SIGIL_TK_VERIFY_SIGNATURE = 3205, /**< a signature in the path or on a revocation list is wrong */
    SIGIL_TK_VERIFY_USAGE = 3206,     /**< the certificate is not meant for the wanted usage */
    SIGIL_TK_VERIFY_POLICY = 3207,    /**< the path is not valid under the policies wanted */
    SIGIL_TK_VERIFY_NO_CRL = 3208,    /**< no usable revocation list could be found */

    /* Files. */
    SIGIL_TK_FILE_NOT_FOUND = 3300, /**< the file or folder does not exist */
    SIGIL_TK_FILE_READ = 3301,      /**< the file cannot be read, is not a regular file, or is larger than 64 MiB */
    SIGIL_TK_FILE_WRITE = 3302,     /**< the file cannot be written */
    SIGIL_TK_FILE_DELETE = 3303,    /**< the file cannot be deleted */
    SIGIL_TK_MEDIUM = 3304,         /**< the storage medium is not available, or does not let a private key out */

    /* Primitives. */
    SIGIL_TK_ALGORITHM = 3400,      /**< unknown or unusable algorithm code, or wrong key size for it */
    SIGIL_TK_NO_SESSION_KEY = 3401, /**< CRYPT_Encrypt and its like before a key was set or made */
    SIGIL_TK_DECRYPT = 3402,        /**< the data cannot be decrypted with this key */
    SIGIL_TK_SIGNATURE = 3403,      /**< the signature is wrong */
    SIGIL_TK_MAC = 3404,            /**< the message authentication code is wrong */

    /* Identity. */
    SIGIL_TK_VID_NO_RANDOM = 3500, /**< the private key holds no random value */
    SIGIL_TK_VID_NO_DATA = 3501,   /**< the certificate holds no identity data */
    SIGIL_TK_VID_MISMATCH = 3502,  /**< the identity number does not belong to the certificate */

    /* Network. */
    SIGIL_TK_URL = 3600,       /**< not an ldap, http or https address, or none in the settings file */
    SIGIL_TK_FETCH = 3601,     /**< no server reached, or it refused, or no library to ask it */
    SIGIL_TK_NOT_FOUND = 3602, /**< the server has no such entry or attribute */

    /* Status of a certificate from a responder (RFC 6960). */
    SIGIL_TK_OCSP_MALFORMED = 3700, /**< the answer is not an OCSP response, or holds no basic response */
    SIGIL_TK_OCSP_REFUSED = 3701,   /**< the responder answers an error: try later, sign the request, ... */
    SIGIL_TK_OCSP_SIGNER = 3702, /**< the response is not signed by the responder, or by one that may not sign it */
    SIGIL_TK_OCSP_NONCE = 3703,  /**< the response does not repeat the nonce: it may be an old one */
    SIGIL_TK_OCSP_STALE = 3704,  /**< the response does not hold at the time of verification */
    SIGIL_TK_OCSP_NO_ANSWER = 3705, /**< the response is not about the certificate */
    SIGIL_TK_OCSP_UNKNOWN = 3706,   /**< the responder does not know the certificate */

    /* Validation of a certificate by a server (RFC 5055). */
    SIGIL_TK_IVS_MALFORMED = 3800,     /**< the answer is not an SCVP response */
    SIGIL_TK_IVS_REFUSED = 3801,       /**< the server answers an error: too busy, request not understood, ... */
    SIGIL_TK_IVS_SIGNER = 3802,        /**< not signed with the given certificate, or that one may not sign now */
    SIGIL_TK_IVS_OTHER_REQUEST = 3803, /**< the response does not repeat the nonce and the hash of the request */
    SIGIL_TK_IVS_STALE = 3804,         /**< the response was not made just now */
    SIGIL_TK_IVS_NO_ANSWER = 3805,     /**< the response is not about the certificate, or not about its validity */
    SIGIL_TK_IVS_INVALID = 3806,       /**< the server says that the certificate is not valid; why is in the text */

    /* Messages (RFC 5652). */
    SIGIL_TK_CMS_MALFORMED = 3900, /**< not a message, damaged, or more than one */
    SIGIL_TK_CMS_CONTENT = 3901,   /**< the content is missing, or is not the one that was signed */
    SIGIL_TK_CMS_NOBODY = 3902,    /**< no such signer or recipient, or the signer's certificate is not at hand */
    SIGIL_TK_CMS_ATTRIBUTE = 3903, /**< the signer has no such attribute */
    SIGIL_TK_CMS_TYPE = 3904,      /**< a message of another type than the function is for */

    /* Time stamps (RFC 3161). */
    SIGIL_TK_TSP_MALFORMED = 4000, /**< not a time-stamp response or token */
    SIGIL_TK_TSP_REFUSED = 4001,   /**< the authority refuses; its status and words are in the text */
    SIGIL_TK_TSP_SIGNER = 4002,    /**< not signed by a time-stamping authority whose certificate it holds */
    SIGIL_TK_TSP_NONCE = 4003,   /**< the token does not repeat the nonce of the last request, or there was none */
    SIGIL_TK_TSP_IMPRINT = 4004, /**< the token is about other data */
    SIGIL_TK_TSP_POLICY = 4005,  /**< the token was made under another policy than was asked for */
    SIGIL_TK_TSP_TIME = 4006,    /**< the authority's certificate was not valid at the time stamped */

    /* Enrolment (RFC 4210). */
    SIGIL_TK_CMP_MALFORMED = 4100, /**< the answer is not a certificate management message, or not one that fits */
    SIGIL_TK_CMP_REFUSED = 4101,   /**< the authority refuses; its PKIStatusInfo is in the text */
    /* Missing or wrong (another secret, another signer), or the answer belongs to another request. */
    SIGIL_TK_CMP_PROTECTION = 4102, /**< the answer is not protected as it must be */
    SIGIL_TK_CMP_OTHER_CERT = 4103, /**< the authority hands out a certificate for another subject or another key */
    SIGIL_TK_CMP_WAITING = 4104,    /**< the authority wants to be asked later than a call may wait, 30 s in all */

    /* Tokens (PKCS#11). */
    SIGIL_TK_TOKEN_ABSENT = 4200, /**< no token in the slot or with the name, or it was taken out */
    SIGIL_TK_TOKEN_PIN = 4201,    /**< the PIN is wrong, too short or too long, or was never set */
    SIGIL_TK_TOKEN_LOCKED = 4202, /**< too many wrong PINs: only the security officer's PIN helps now */
    /* Also: the database of the system's certificate store has a password. */
    SIGIL_TK_TOKEN_LOGIN = 4203,     /**< the token wants PKCS11_Login or HSM_Login before */
    SIGIL_TK_TOKEN_OBJECT = 4204,    /**< the token has no such certificate or key */
    SIGIL_TK_TOKEN_FULL = 4205,      /**< the token, or the session, is for reading only, or the token is full */
    SIGIL_TK_TOKEN_MECHANISM = 4206, /**< the token lacks the algorithm or the padding */
    SIGIL_TK_TOKEN_SESSION = 4207,   /**< no session is open, or the token ended it */
    SIGIL_TK_TOKEN_MODULE = 4208, /**< the token's module fails, crashes or hangs; which and how is in the text */

    /* PKCS#12. */
    SIGIL_TK_PFX_MALFORMED = 4500,      /**< not a PKCS#12 file, or parameters out of bounds (also in their sum) */
    SIGIL_TK_PFX_UNSUPPORTED = 4501,    /**< protected with an algorithm that the toolkit does not have */
    SIGIL_TK_PFX_NO_PAIR = 4502,        /**< no certificate with its private key in it */
    SIGIL_TK_PFX_NO_MAC = 4503,         /**< no password integrity; read it with SIGIL_TK_PFX_WITHOUT_MAC */
    SIGIL_TK_PFX_WRONG_PASSWORD = 4505, /**< the password does not open the file */
};

/** Encryption of a key file, `algorithm` of PRIKEY_Encrypt and MEDIA_DISK_WritePriKey. Readers need not know it: the file
 *  says it. Iteration count 2048 and a salt of 8 random bytes in all of them. */
enum SigilToolkitKeyEncryption {
    SIGIL_TK_KEY_DEFAULT = 0,        /**< the same as SIGIL_TK_KEY_SEED */
    SIGIL_TK_KEY_SEED_FIXED_IV = 1,  /**< SEED-CBC (1.2.410.200004.1.4) with PBKDF1 and a fixed vector: old files */
    SIGIL_TK_KEY_PKCS12_3DES = 2,    /**< PKCS#12 pbeWithSHAAnd3-KeyTripleDES-CBC, RFC 7292 */
    SIGIL_TK_KEY_PBES2_3DES = 3,     /**< PBES2, RFC 8018: HMAC-SHA1, 3DES-CBC */
    SIGIL_TK_KEY_PBES2_AES128 = 4,   /**< PBES2: HMAC-SHA256, AES-128-CBC */
    SIGIL_TK_KEY_PBES2_AES256 = 5,   /**< PBES2: HMAC-SHA256, AES-256-CBC */
    SIGIL_TK_KEY_PBES2_ARIA128 = 6,  /**< PBES2: HMAC-SHA256, ARIA-128-CBC (RFC 5794) */
    SIGIL_TK_KEY_SEED = 48,          /**< seedCBCWithSHA1 (1.2.410.200004.1.15), PBKDF1: what every reader knows */
    SIGIL_TK_KEY_PBES2_SEED = 64,    /**< PBES2: HMAC-SHA1, SEED-CBC; current readers and plain OpenSSL */
    SIGIL_TK_KEY_PBES2_ARIA256 = 224 /**< PBES2: HMAC-SHA256, ARIA-256-CBC (RFC 5794) */
};

/** Hash algorithm of CRYPT_Hash, CRYPT_Sign, CRYPT_GenMAC, API_SetHashAlgo and their like. */
enum SigilToolkitHash {
    SIGIL_TK_HASH_DEFAULT = 0, /**< what API_SetHashAlgo chose; SHA-256 before that */
    SIGIL_TK_HASH_SHA1 = 1,
    SIGIL_TK_HASH_SHA224 = 2,
    SIGIL_TK_HASH_SHA256 = 3,
    SIGIL_TK_HASH_SHA384 = 4,
    SIGIL_TK_HASH_SHA512 = 5,
    SIGIL_TK_HASH_MD5 = 6
};

/** Symmetric algorithm of CRYPT_GenKeyAndIV and CRYPT_SetKeyAndIV. All are CBC with PKCS#7 padding. */
enum SigilToolkitCipher {
    SIGIL_TK_CIPHER_SEED = 1,
    SIGIL_TK_CIPHER_3DES = 2,
    SIGIL_TK_CIPHER_AES128 = 3,
    SIGIL_TK_CIPHER_AES192 = 4,
    SIGIL_TK_CIPHER_AES256 = 5,
    SIGIL_TK_CIPHER_ARIA128 = 6,
    SIGIL_TK_CIPHER_ARIA192 = 7,
    SIGIL_TK_CIPHER_ARIA256 = 8
};

/** Bits of signed messages: `option` of the CMS functions that make them, and what CMS_SetOption adds to it. */
enum SigilToolkitMessageOption {
    SIGIL_TK_MESSAGE_PLAIN = 0,    /**< content, signed attributes and the signer's certificate in the message */
    SIGIL_TK_MESSAGE_DETACHED = 1, /**< without the content */
    SIGIL_TK_MESSAGE_NO_ATTRIBUTES = 2,  /**< the signature covers the content itself; no signing time */
    SIGIL_TK_MESSAGE_NO_CERTIFICATE = 4, /**< without the signer's certificate */
    SIGIL_TK_MESSAGE_CA_PUBS = 8         /**< with the authorities of CERT_SetCaPubs */
};

/** `option` of the CMS functions that verify signatures. */
enum SigilToolkitMessageCheck {
    SIGIL_TK_CHECK_SIGNATURES = 0, /**< with the certificates in the message, whoever issued them */
    SIGIL_TK_CHECK_PATHS = 1 /**< and every signer's certificate under the context's verification environment */
};

/** `option` of the CMS functions that encrypt for recipients. */
enum SigilToolkitEnvelopeOption {
    SIGIL_TK_ENVELOPE_ISSUER = 0, /**< recipients are named by issuer and serial number */
    SIGIL_TK_ENVELOPE_KEY_ID = 1  /**< by subject key identifier, which their certificates must have */
};

/** `kind` of PKCS11_GetCertInfo, HSM_GetCertInfo and MEDIA_WINS_GetCertDN, by the certificate's key usage. */
enum SigilToolkitTokenCertificate {
    SIGIL_TK_TOKEN_SIGNING = 1,       /**< may sign, whatever else it may do, or its usage is not limited */
    SIGIL_TK_TOKEN_KEY_MANAGEMENT = 2 /**< is for encryption alone */
};

/** `algorithm` of PKCS11_GenKeyPair; `bits` is one of SigilToolkitKeyPair. */
enum SigilToolkitTokenKey {
    SIGIL_TK_TOKEN_RSA = 0,
    SIGIL_TK_TOKEN_EC = 1 /**< P-256 or P-384 */
};

/** Key pair of CRYPT_GenKeyPair. */
enum SigilToolkitKeyPair {
    SIGIL_TK_KEYPAIR_RSA1024 = 1024,
    SIGIL_TK_KEYPAIR_RSA2048 = 2048,
    SIGIL_TK_KEYPAIR_RSA3072 = 3072,
    SIGIL_TK_KEYPAIR_RSA4096 = 4096,
    SIGIL_TK_KEYPAIR_P256 = 256,
    SIGIL_TK_KEYPAIR_P384 = 384
};

/** Signature scheme for RSA keys, CRYPT_SetRSAVersion (RFC 8017). */
enum SigilToolkitRsaVersion {
    SIGIL_TK_RSA_V15 = 1, /**< RSASSA-PKCS1-v1_5, the default */
    SIGIL_TK_RSA_PSS = 2  /**< RSASSA-PSS, salt as long as the hash */
};

/** Padding of CRYPT_AsymEncrypt and CRYPT_AsymDecrypt, set by CRYPT_SetPaddingType (RFC 8017). */
enum SigilToolkitPadding {
    SIGIL_TK_PADDING_V15 = 1, /**< RSAES-PKCS1-v1_5, the default */
    SIGIL_TK_PADDING_OAEP = 2 /**< RSAES-OAEP with the hash of API_SetHashAlgo (SHA-256 unless set) */
};

/** Which key CRYPT_AsymEncrypt and CRYPT_AsymDecrypt receive. */
enum SigilToolkitAsymKey {
    SIGIL_TK_ASYM_PUBLIC = 0, /**< a certificate or SubjectPublicKeyInfo: encrypt for its holder, or open what the
                                   holder's private key closed */
    SIGIL_TK_ASYM_PRIVATE = 1 /**< a PrivateKeyInfo: decrypt, or close with the private key (PKCS#1 v1.5 only) */
};

/** Key derivation of CRYPT_GenSharedKey. */
enum SigilToolkitSharedKey {
    SIGIL_TK_SHARED_RAW = 0 /**< the shared secret itself; any SigilToolkitHash: its hash */
};

/** Protection of a PKCS#12 file, `option` of PFX_Export (RFC 7292). Certificates stand unencrypted in the first one, as
 *  Korean tools write them. */
enum SigilToolkitPfxOption {
    SIGIL_TK_PFX_3DES = 0,   /**< PKCS#12 3DES, HMAC-SHA1: read by every tool */
    SIGIL_TK_PFX_SEED = 1,   /**< PBES2 SEED-CBC, HMAC-SHA1 */
    SIGIL_TK_PFX_AES256 = 2, /**< PBES2 AES-256-CBC, HMAC-SHA256: current tools */
};

/** `mode` of PFX_ImportMultiPair2. */
enum SigilToolkitPfxMode {
    SIGIL_TK_PFX_STRICT = 0, /**< the file must have a MAC, and the password must match it */
    SIGIL_TK_PFX_WITHOUT_MAC =
        16 /**< a file without a MAC is read too; a wrong password shows when a key is opened */
};

/** `type` of PEM_Encode: the label of RFC 7468. */
enum SigilToolkitPemType {
    SIGIL_TK_PEM_CERTIFICATE = 0,
    SIGIL_TK_PEM_PRIVATE_KEY = 1,
    SIGIL_TK_PEM_ENCRYPTED_PRIVATE_KEY = 2,
    SIGIL_TK_PEM_PUBLIC_KEY = 3,
    SIGIL_TK_PEM_CMS = 4,
    SIGIL_TK_PEM_CRL = 5,
    SIGIL_TK_PEM_CERTIFICATE_REQUEST = 6
};

/** First number of CERT_SetVerifyEnv1 and SetVerifyEnv: where issuers come from. */
enum SigilToolkitPathSource {
    SIGIL_TK_PATH_GIVEN = 0, /**< trusted certificates, CaPubs and those given to CERT_Verify */
    SIGIL_TK_PATH_FETCH = 1 /**< and, for a missing issuer, the caIssuers address in the certificate (http, ldap) */
};

/** Second number of CERT_SetVerifyEnv1 and SetVerifyEnv: which certificates are checked for revocation. */
enum SigilToolkitRevocation {
    SIGIL_TK_REVOCATION_PATH = 0, /**< every certificate below the trusted one */
    SIGIL_TK_REVOCATION_LEAF = 1, /**< the certificate itself */
    SIGIL_TK_REVOCATION_NONE = 2
};

/** `usage` of CERT_Verify. */
enum SigilToolkitUsage {
    SIGIL_TK_USAGE_ANY = 0,
    SIGIL_TK_USAGE_USER = 1,           /**< a user's certificate: not an authority's */
    SIGIL_TK_USAGE_SIGN = 2,           /**< as above, and digitalSignature or nonRepudiation */
    SIGIL_TK_USAGE_KEY_MANAGEMENT = 3, /**< as above, and keyEncipherment, dataEncipherment or keyAgreement */
    SIGIL_TK_USAGE_AUTHORITY = 4       /**< an authority's certificate */
};

/** What CERT_CheckStatByCRL, CERT_CheckStatByOCSP and OCSP_GetCertStatus report. */
enum SigilToolkitCertStatus {
    SIGIL_TK_STATUS_GOOD = 0,
    SIGIL_TK_STATUS_REVOKED = 1,
    SIGIL_TK_STATUS_UNKNOWN = 2 /**< OCSP_GetCertStatus only: the responder does not know the certificate */
};

/** `mode` of HVAP_GetDataByURL: what is asked for when an ldap address names no attribute. For a web address every mode
 *  answers the body. */
enum SigilToolkitFetch {
    SIGIL_TK_FETCH_ANY = 0,       /**< certificates first, then revocation lists */
    SIGIL_TK_FETCH_CA_CERT = 1,   /**< cACertificate;binary */
    SIGIL_TK_FETCH_USER_CERT = 2, /**< userCertificate;binary */
    SIGIL_TK_FETCH_CRL = 3,       /**< certificateRevocationList;binary */
    SIGIL_TK_FETCH_ARL = 4        /**< authorityRevocationList;binary */
};

/** `protocol` of CMP_SetProtocol. */
enum SigilToolkitCmpProtocol {
    SIGIL_TK_CMP_HTTP_DEFAULT = 0, /**< the same as SIGIL_TK_CMP_HTTP */
    SIGIL_TK_CMP_HTTP = 2          /**< version 2 of RFC 4210, over HTTP (RFC 6712) */
};

/** `ca` of CMP_SetCA. */
enum SigilToolkitCmpAuthority {
    SIGIL_TK_CMP_ANY_AUTHORITY = 0 /**< whatever answers as RFC 4210 says */
};

/** `medium` of the GPKI storage functions. */
enum SigilToolkitMedium {
    SIGIL_TK_MEDIUM_DISK = 1, /**< files; `path` is a path */
    SIGIL_TK_MEDIUM_CARD =
        2 /**< tokens (PKCS#11); `path` is the label (CKA_LABEL) of an object, `password` the PIN */
};

/** `option` of GPKI_API_SetOption. */
enum SigilToolkitOption {
    SIGIL_TK_OPTION_NONE = 0,          /**< as at first */
    SIGIL_TK_OPTION_OCSP_ANY_NONCE = 1 /**< OCSP_VerifyResMsg accepts responses without a nonce. On type 0 the line
                                            "Nonce = 0" in section [OCSP] of the file of API_SetConfFile does */
};

#endif
