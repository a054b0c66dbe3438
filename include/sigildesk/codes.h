// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The numbers of the interface by their names: results, toolkits, media, PKI families, languages, validity states.
 *
 *  Functions take and return plain int; compare with these names. A result that is none of them is the toolkit's own,
 *  passed through unchanged (those of the open toolkit stand in <sigildesk/open_toolkit.h>).
 *
 *  Plain C99, and C++11.
 */
#ifndef SIGILDESK_CODES_H
#define SIGILDESK_CODES_H

#include <sigildesk/export.h>

/** What a function returns. The façade's codes are those up to 1024, the list's those from 1005; where both have a
 *  number it means the same. */
enum SigilResult {
    SIGIL_SUCCESS = 0,
    SIGIL_CANCELLED = -1, /**< dialogs: the user cancelled */

    SIGIL_NO_MEMORY = 1000,
    SIGIL_MISSING_FIELD = 1000,      /**< façade: a certificate function without its output, or with empty input */
    SIGIL_BAD_ARGUMENT = 1001,       /**< a required argument is null, empty or out of its range */
    SIGIL_NOT_SUPPORTED = 1003,      /**< the bound toolkit has no such function */
    SIGIL_NOT_ON_THIS_MEDIUM = 1005, /**< not possible on the current medium */
    SIGIL_TOOLKIT_REFUSED = 1007,    /**< list: the toolkit refused to start */
    SIGIL_NO_HANDLE = 1008,          /**< the handle is null or not initialised */
    SIGIL_TOOLKIT_NOT_LOADED = 1010, /**< list: the toolkit's library could not be loaded */
    SIGIL_UNKNOWN_TOOLKIT = 1020,    /**< façade: the toolkit type is none of enum SigilToolkit */
    SIGIL_NO_LIBRARY_FOLDER = 1021,  /**< façade: the library folder is null or empty */
    SIGIL_MAKER_LIBRARY_MISSING = 1023, /**< façade: the maker toolkit's library is not loaded */
    SIGIL_GPKI_LIBRARY_MISSING = 1024,  /**< façade: the GPKI library is not loaded */

    SIGIL_SETTINGS_INCOMPLETE = 1100, /**< a settings file is missing or lacks an entry */
    SIGIL_SETTINGS_UNREADABLE = 1102, /**< a settings file is empty or cannot be read */
    SIGIL_NOT_MEMORY_MEDIUM = 1105,   /**< a certificate from memory while another medium is chosen */
    SIGIL_FOLDERS_NOT_FORMED = 1111,  /**< the folders of the medium could not be formed */
    SIGIL_WRONG_PASSWORD = 1113,
    SIGIL_KEY_NOT_DECRYPTED = 1114,
    SIGIL_NO_CERTIFICATE = 1115,
    SIGIL_KM_PAIR_REQUIRED = 1117, /**< a key-management pair is asked for, and the medium never has one */
    SIGIL_NO_RANDOM_IN_KEY = 1118, /**< the key holds no random value for identity checks */
    SIGIL_RANDOM_NOT_READ = 1119,
    SIGIL_NOT_VERIFIED = 1120, /**< the certificate does not verify */
    SIGIL_CERTIFICATE_UNREADABLE = 1122,
    SIGIL_FILE_NOT_READ = 1123,
    SIGIL_FILE_NOT_WRITTEN = 1124,
    SIGIL_FILE_NOT_DELETED = 1125,
    SIGIL_NOTHING_EXPORTED = 1126,
    SIGIL_NO_DECRYPTED_KEY = 1127, /**< export without a decrypted signing key */
    SIGIL_EXPORT_REFUSED = 1128,
    SIGIL_IMPORT_REFUSED = 1129,
    SIGIL_PAIR_MISMATCH = 1130, /**< certificate and key do not belong together */
    SIGIL_PASSWORD_NOT_CHANGED = 1131,
    SIGIL_IDENTITY_MISMATCH = 1132,
    SIGIL_KEY_NOT_AVAILABLE = 1164, /**< dialogs: the medium does not give the private key out */
    SIGIL_FILTERED_OUT = 1502,      /**< a certificate that the options leave out */

    /* The C library <sigil.h>, beside those above. */
    SIGIL_NO_KEY = 1600,         /**< the certificate has no private key beside it, or no such pair */
    SIGIL_LOCKED = 1601,         /**< the private key has not been unlocked */
    SIGIL_FILE_EXISTS = 1602,    /**< something is there already, and is not to be replaced */
    SIGIL_NO_PLACE = 1603,       /**< no family has a place for the certificate on this disk */
    SIGIL_PATH_TOO_LONG = 1604,  /**< a path is longer than a list can read */
    SIGIL_STATUS_UNKNOWN = 1605, /**< neither a responder nor a revocation list tells whether it is revoked */
    SIGIL_NO_DIALOGS = 1606,     /**< the dialogs are not installed */
    SIGIL_NO_DISPLAY = 1607,     /**< the dialog needs a display, and none can be opened */
    SIGIL_NEWER_OPTIONS = 1608,  /**< an option is set that this version of the library does not know */
    SIGIL_FAILED = 1609          /**< failed for a reason that has no code of its own; the error text says it */
};

/** Toolkit type of HV_Initalize and CLP_Initalize. */
enum SigilToolkit {
    SIGIL_TOOLKIT_MAKER = 0, /**< the maker's toolkit, libHVCToolkitV30.so */
    SIGIL_TOOLKIT_GPKI = 1   /**< the government PKI library, libgpkiapi_v15.so */
};

/** Medium of CLP_SetMediaType and of tagCERTINFO::nMediaType. */
enum SigilMedium {
    SIGIL_MEDIUM_NONE = 0,
    SIGIL_MEDIUM_HARD_DISK = 1,      /**< the folders below the user's home folder */
    SIGIL_MEDIUM_REMOVABLE_DISK = 2, /**< the folders of a mounted disk */
    SIGIL_MEDIUM_TOKEN_FIRST = 3,    /**< 3 and 4: token media, refused */
    SIGIL_MEDIUM_TOKEN_LAST = 4,
    SIGIL_MEDIUM_MEMORY_RESERVED = 5, /**< refused; where a list is read it counts as memory */
    SIGIL_MEDIUM_MEMORY = 6,          /**< a certificate that the host hands over */
    SIGIL_MEDIUM_OTHER = 7            /**< taken, lists nothing */
};

/** PKI family of tagCERTINFO::nPKIType; added up in tagLOADCERTOPT::nPKITypes they say which ones to list. */
enum SigilFamily {
    SIGIL_FAMILY_GPKI = 1, /**< government */
    SIGIL_FAMILY_NPKI = 2, /**< accredited authorities */
    SIGIL_FAMILY_MPKI = 4, /**< defence */
    SIGIL_FAMILY_PPKI = 8  /**< all others */
};

/** Value of nKeyPairType that lists only certificates with a key-management pair. */
enum SigilKeyPair { SIGIL_KEY_PAIR_BOTH = 2 };

/** Language of CLP_Initalize and tagINITOPT::nLanguage. */
enum SigilLanguage { SIGIL_LANGUAGE_KOREAN = 1, SIGIL_LANGUAGE_ENGLISH = 2 };

/** State of tagCERTINFO::nValidStatus. A certificate from memory whose key is not of 2048 bits has the second three. */
enum SigilValidity {
    SIGIL_VALIDITY_VALID = 3,
    SIGIL_VALIDITY_EXPIRES_SOON = 4,
    SIGIL_VALIDITY_EXPIRED = 5,
    SIGIL_VALIDITY_OTHER_VALID = 0,
    SIGIL_VALIDITY_OTHER_EXPIRES_SOON = 1,
    SIGIL_VALIDITY_OTHER_EXPIRED = 2
};

/** A result code in words. The texts are UTF-8, never null, and stay the library's: they hold for as long as it is loaded,
 *  and nothing is to be released. */
struct SigilCodeText {
    int code;          /**< the number that was asked for */
    const char* name;  /**< its name here or in <sigildesk/open_toolkit.h>; empty for a code that neither has. Where
                               a number has two names, the first */
    const char* layer; /**< who answers it: "all", "facade", "list", "dialogs", "toolkit", "c" (the C library)
                               or two, "facade,list" */
    const char* sentence; /**< what happened, one sentence for a person */
    const char* advice;   /**< what that person or the host's programmer can do */
};

#ifdef __cplusplus
extern "C" {
#endif

/** Says in words what a result of any function of the library means: of the façade, the certificate list, the dialogs,
 *  and of the open toolkit behind them. May be called from every thread, at any time.
 *  @param code      any number
 *  @param language  SIGIL_LANGUAGE_KOREAN; any other value is English
 *  @param text      receives the words
 *  @return 0; 1001 when @p text is null, or for a number that is none of these codes, such as one of a licensed toolkit:
 *          @p text then says so in general words */
SIGIL_EXPORT int sigil_code_text(int code, int language, struct SigilCodeText* text);

#ifdef __cplusplus
}
#endif

#endif
