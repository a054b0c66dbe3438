// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  CUtil: what loaders, dialogs and hosts need around certificates: parts of names, dates, policies, key usages,
 *  removable disks, folders, texts in the user's language, logs, and cutting and replacing in texts.
 *
 *  Rules that hold for every operation:
 *  - Texts are zero-terminated and, unless said otherwise, in CP949. Operations that change a text do so in place.
 *  - An output buffer is the caller's. A size beside it counts its bytes with the terminator; the text is cut to fit
 *    and terminated, unless the operation says that it "fills" its output: a text of that size or more then takes all
 *    of it and is not terminated, so clear the buffer and pass its size less one. Where no size is given, the
 *    operation says how much room it needs.
 *  - A null input text counts as an empty text; a null output pointer is left out.
 *  - "Ignoring case" is about ASCII letters only, whatever the locale.
 *  - The state of an object is the path of its language file and the number of removable disks that it told last. Only
 *    GetRemDriveCount() changes it: one object may serve several threads, each with outputs of its own, as long as
 *    the disks are asked for in one of them.
 */
#ifndef SIGILDESK_UTIL_H
#define SIGILDESK_UTIL_H

#include <sigildesk/binary.h>
#include <sigildesk/export.h>
#include <sigildesk/records.h>

#include <time.h>

/** A policy identifier to filter by. */
struct tagSETOID {
    char szOID[40]; /**< OID with blanks between its numbers, "1 2 410 100001 5 3" */
};

/** A policy identifier and the name to show for it. */
struct tagPOLICYID {
    char szOID[30];  /**< OID with blanks between its numbers */
    char szName[60]; /**< display name */
};

/** Name of a file or folder, in CP949. */
struct tagEXPFILELIST {
    char szName[260]; /**< zero-terminated */
};

/** A calendar date. */
struct Calc {
    int year;  /**< 2024 */
    int month; /**< 1 to 12 */
    int day;   /**< 1 to 31 */
};

static_assert(sizeof(tagSETOID) == 40, "layout of tagSETOID");
static_assert(sizeof(tagPOLICYID) == 90, "layout of tagPOLICYID");
static_assert(sizeof(tagEXPFILELIST) == 260, "layout of tagEXPFILELIST");

/** See the top of this file. An object takes 264 bytes: hosts hold it by value, so its size is part of the interface. */
class SIGIL_EXPORT CUtil {
public:
    /** Takes the user's Korean language file, "HalvardSafe/Corvenna/KOR.ini" in the home folder. */
    CUtil();
    /** Takes "KOR.ini" (@p language 1) or "ENG.ini" (2) in @p folder; the path is empty for any other language. */
    CUtil(int language, char* folder);
    ~CUtil(); // NOLINT(performance-trivially-destructible): a symbol of the interface

    /** @name Bytes
     *  Positions outside the bytes are cut to what is there.
     *  @return 0, unless said otherwise; -1 for a null output
     *  @{ */
    /** The first @p n bytes. */
    int BinaryLeft(CBinary src, CBinary* out, int n);
    /** @p n bytes from @p start on. */
    int BinaryMid(CBinary src, CBinary* out, int start, int n);
    /** The last @p n bytes. */
    int BinaryRight(CBinary src, CBinary* out, int n);
    /** Index of @p text in @p src at or after @p start, -1 when it is not found or empty. A search from 0 covers all
     *  bytes; from any other start it ends at the first zero byte. */
    int BinaryFind2(CBinary src, char* text, int start);
    /** Number of occurrences of @p text in @p src, overlapping ones included.
     *  @param src, text  where to look, and for what
     *  @param pos  receives the index of the last one, -1 when there is none; when there is exactly one it receives
     *              the index plus one, deliberately */
    int BinaryFindCount(CBinary src, char* text, int& pos);
    /** Number of separators between the fields of @p src. The search goes on one byte behind the start of each
     *  separator, and as that of BinaryFind2 it ends at a zero byte once past the first separator.
     *  @param src, sep  where to look, and for what
     *  @param count  receives the number */
    int ParingFindCnt(CBinary src, char* sep, int* count);
    /** Replaces every occurrence of @p from in @p src, left to right, by @p to.
     *  @param src, from, to  the text, what goes and what comes
     *  @param out  receives the text, without terminator
     *  @return 0; 0 with @p out unchanged when there is not enough memory; -1 when @p from is empty or @p out null */
    int ReplaceAll(char* src, const char* from, const char* to, CBinary* out);
    /** @} */

    /** @name Logs
     *  A record that cannot be written is dropped, also when memory runs out; errno stays what it was.
     *  @{ */
    /** Appends a record to the error log: "time >> where - errorName >> callee : code (Msg : message)" CR LF. The
     *  parts from errorName on are left out when they are null (callee and message also when empty).
     *  @param logFile    the file itself; null or empty switches the log off. Only a regular file is written
     *  @param where      the failing function; null: nothing is written
     *  @param errorName  for example "ERR_VERIFYCERT"
     *  @param callee     the call that failed
     *  @param code       what that call returned; written only together with @p callee
     *  @param message    the toolkit's own words
     *  @return 0, always */
    int SetLogInfo(char* logFile, char* where, char* errorName, char* callee, int code, char* message);
    /** Appends "[time] text", without a line end, to the log of the day in the folder that the plug-in's ERROR_LOG
     *  file names (key "PATH" of section "ERROR").
     *  @param text  at most 4095 bytes of it are written
     *  @param len   number of bytes that must have been written at least
     *  @return 0, also when no folder is named; -1 when the file cannot be opened, fewer bytes were written or memory
     *          ran out */
    int WriteLogData(char* text, int len);
    /** Does nothing. @return 0 */
    int LogFilePath(char* path);
    /** The current errno. */
    int GetSystemError();
    /** @} */

    /** @name Text conversion
     *  See ConvertUTF8. The output is not terminated: clear the buffer before.
     *  @param in      zero-terminated
     *  @param out     room for 3/2 of the input (to UTF-8) or for as much as the input (to CP949); may be @p in
     *  @param outLen  receives the number of bytes written
     *  @return 0; -1 when the text cannot be converted (nothing is written then) or a pointer is null
     *  @{ */
    /** CP949 to UTF-8. The name says otherwise and is kept: callers rely on what it does. */
    int UTF8ToMultibyte(char* in, char* out, int* outLen);
    /** CP949 to UTF-8. */
    int MultibyteToWideData(char* in, char* out, int* outLen);
    /** UTF-8 to CP949. */
    int WideDataToMultibyte(char* in, char* out, int* outLen);
    /** @} */

    /** @name Parts of a distinguished name
     *  The value of the first such attribute of a name in the text form "cn=Hong,ou=Sales,c=KR"; attribute names in
     *  either case. The value ends at the next ",": as the last attribute of a name it is deliberately not found.
     *  @param outSize  bytes in @p out
     *  @param out      receives the value; left as it is when the value is empty or not found
     *  @return 0 found (also when the value is empty); 1 not found
     *  @{ */
    /** Of "cn". */
    int GetCNString(char* dn, int outSize, char* out);
    /** Of "o". */
    int GetOString(char* dn, int outSize, char* out);
    /** Of "ou". */
    int GetOUString(char* dn, int outSize, char* out);
    /** @} */

    /** @name Authorities, policies and key usages
     *  @{ */
    /** Kind of the certification authority with the organisation name @p caName, ignoring case.
     *  @param caName  name of the organisation
     *  @param type    receives 1 government, 2 accredited authority, 4 defence, 8 any other
     *  @return 0, always */
    int GetCertCAType(char* caName, int* type);
    /** @return 1 when @p oid is one of the @p count entries of @p list, ignoring case; else 0 */
    int CheckPolicyID(char* oid, tagSETOID* list, int count);
    /** Display name of a policy. When @p oid is listed more than once, the last entry wins, deliberately.
     *  @param oid, list, count  the identifier, and the list of names with the number of its entries
     *  @param name  receives the name (at most 60 bytes and the terminator); left as it is when @p oid is not listed
     *  @return 1 found; 0 not found */
    int GetPolicyName(char* oid, tagPOLICYID* list, int count, char* name);
    /** Keeps only the second of the two policy identifiers that certificates of "TradeSignCA" carry, separated by
     *  ", ". Certificates of other authorities are left alone.
     *  @return 0; -1 when a certificate of that authority has no "," in szPolicyID */
    int MakeCommonPolicyID(tagCERTINFO* cert);
    /** Display texts of the key usages named in @p keyUsage.
     *  @param langFile   language file with the texts
     *  @param keyUsage   names as the toolkit prints them, "digitalSignature, nonRepudiation"
     *  @param separator  one character to stand between the texts: the first character of the joined text, which
     *                    begins with a separator, is dropped
     *  @param outSize    bytes in @p out, which the texts may fill
     *  @param out        receives the texts, empty when no usage is named
     *  @return 1, always */
    int GetKeyUsageName(char* langFile, char* keyUsage, char* separator, int outSize, char* out);
    /** @} */

    /** @name Time
     *  @{ */
    /** Reads "year-month-day hour:minute:second", the fields separated by any of "-", ":" and blank, as local
     *  standard time (never daylight saving time). Fields out of range are normalised: 30 February is 1 or 2 March.
     *  @return seconds since the epoch; 1001 when @p text is null, empty or of 30 characters or more; 1 to 6 the
     *          first missing field; 6 when there is no such time. The errors share the numbers with times of 1970:
     *          pass only well-formed texts */
    time_t str2time(char* text);
    /** Year and month of the local time, "2024_03_".
     *  @param out  receives these 8 bytes; NOT terminated: clear it before
     *  @return 0; -1 when the time cannot be formatted or @p out is null */
    int GetCurrentTimeDay(char* out);
    /** Days of a month, leap years left aside: 28 for 2, 30 for 4, 6, 9, 11, and 31 for every other value. */
    int day(int month);
    /** Leap days between the date of @p now and @p target, whose year is not before that of @p now. */
    int yun(tm* now, Calc target);
    /** Days from today (local time) to the given date; 0 when @p year is before the current year. */
    int CalcDay(int year, int month, int day);
    /** Validity of a certificate, to show and to judge.
     *  @param bOtherKeySize  chooses the values of @p state
     *  @param certKind       PKI family code; 1 (GPKI) is warned 100 days ahead, or 90 when @p policyText contains
     *                        "1 2 410 100001 5 3"; all others 30 days
     *  @param policyText     policy identifiers
     *  @param notBefore      begin of validity, as str2time() reads it
     *  @param notAfter       end of validity
     *  @param fromSize       bytes in @p fromOut, which the date may fill
     *  @param fromOut        receives the local date of @p notBefore, "2024-03-01"
     *  @param toSize         bytes in @p toOut, which the date may fill
     *  @param toOut          receives the local date of @p notAfter
     *  @param remainDays     receives the days until the end when it expires soon; else left as it is
     *  @param state          receives 0 valid, 1 expires soon, 2 expired when @p bOtherKeySize is true; else 3, 4, 5
     *  @return 0, always */
    int GetValidity(bool bOtherKeySize, int certKind, char* policyText, char* notBefore, char* notAfter,
        int fromSize, char* fromOut, int toSize, char* toOut, int* remainDays, int* state);
    /** @} */

    /** @name Hexadecimal and plain text
     *  @{ */
    /** Two lower-case digits for each byte, high nibble first, zero-terminated; empty for a @p len below 1.
     *  @return the text; release it with `delete[]` */
    char* toHexString(char* data, int len);
    /** The bytes that the digits of @p hex stand for; "," and blank are dropped before. Other characters are not
     *  refused, so check the text before: one up to "9" counts as its code minus that of "0", "A" to "Z" as its code
     *  minus 55, any other as its code minus 87.
     *  @param hex     the digits
     *  @param len     characters in @p hex; no terminator is needed
     *  @param out     room for @p len / 2 bytes; may be @p hex
     *  @param outLen  receives the number of bytes; an odd last digit is ignored
     *  @return 0; -1 when a pointer is null */
    int HexStringToBin(char* hex, int len, char* out, int* outLen);
    /** Drops every tab, carriage return and line feed.
     *  @param in   the text; cut up in the process
     *  @param out  zero-terminated; room for as much as @p in; left as it is when nothing remains
     *  @return length of @p out */
    int TrimData(char* in, char* out);
    /** Copies @p in to @p out and writes the first character of @p to for each first character of @p from.
     *  @param in, from, to  the text, and the texts whose first characters count
     *  @param out  room for as much as @p in; NOT terminated: clear it before. Null: nothing happens
     *  @return 0, always */
    int ReplaceData(char* in, char* from, char* to, char* out);
    /** ASCII letters to lower case, in place. @return length of the text */
    int ToLower(unsigned char* text);
    /** ASCII letters to upper case, in place. @return length of the text */
    int ToUpper(unsigned char* text);
    /** @} */

    /** @name Texts in the user's language
     *  @{ */
    /** Label, caption or button text.
     *  @param langFile  path of the language file (CP949, see profile.h)
     *  @param key       begins with "DLG_"; looked up in section "UserInterface"
     *  @param size      bytes in @p out, all cleared first; the text may fill them
     *  @param out       receives the text, empty when file or key is missing
     *  @return 0, always */
    int GetLanguageUIText(char* langFile, char* key, int size, char* out);
    /** Text of a message box: as above, with keys that begin with "MSG_" in section "Message". */
    int GetLanguageMessageText(char* langFile, char* key, int size, char* out);
    /** @return 100, always */
    int GetLanguageCode();
    /** @} */

    /** @name Drives and folders
     *  @return 0, always, unless said otherwise
     *  @{ */
    /** Number of mounted removable disks: file systems of type "vfat" and "fuseblk".
     *  @param unused  not used
     *  @param count   receives the number; left as it is when the mount table cannot be read, so set it to 0 before */
    int GetRemDriveCount(bool unused, int* count);
    /** The mounted removable disks, in the order of the mount table.
     *  @param unused  not used
     *  @param list    room for as many records as GetRemDriveCount() told last on this object: of disks that were
     *                 mounted since, no more are listed, and none when the mount table could not be read then. Without
     *                 a count on this object, every disk is listed. nIndex counts from 0; szMountDir is the mount
     *                 point; szName what follows its last "/", the "/" included deliberately; szDisplay "name (mount
     *                 point)" */
    int GetRemDriveInfo(bool unused, tagDRIVEINFO* list);
    /** The hard disk (@p removable false): fills the one record @p info with the name that the object's language
     *  file gives it and does not touch @p count. For @p removable true only sets @p count to 1. */
    int GetDriveInfo(bool removable, bool unused, int* count, tagDRIVEINFO* info);
    /** Does not report free space: sets @p freeBytes to 0 and, when @p kind is 1, clears the 260 bytes of @p out. */
    int GetFreeDisk(int kind, char* out, long long* freeBytes);
    /** Lists a folder: its folders (without "." and "..") and its regular files with a given extension. Links and
     *  devices are left out. Nothing is sorted. Call it once to count and once more to list.
     *  @param countOnly    true: set the two counts. false: fill the two arrays
     *  @param folder       path, as the file system knows it
     *  @param ext          wanted extension without ".", ignoring case
     *  @param folderCount  counting: receives the number of folders. Listing: above 0 it is the room in @p folders,
     *                      and entries that came after counting are left out; null, 0 or less names no bound
     *  @param fileCount    number of files and room in @p files, likewise
     *  @param files        receives the file names in CP949, with "?" for what CP949 text cannot hold
     *  @param folders      receives the folder names in CP949 */
    int GetFolderFilePath(bool countOnly, char* folder, char* ext, int* folderCount, int* fileCount,
        tagEXPFILELIST* files, tagEXPFILELIST* folders);
    /** Splits "URL|number|number".
     *  @param text     the text to be split
     *  @param urlSize  bytes in @p url
     *  @param url      receives the text before the first "|"; a text without "|" is cut to 6 characters,
     *                  deliberately
     *  @param first    receives the first number; left as it is unless there are two "|" (also @p second)
     *  @param second   receives the second number */
    int USIMInstallURLParsing(char* text, int urlSize, char* url, int* first, int* second);
    /** @} */

    char m_szLangFile[260]; /**< path of the language file in use */

private:
    int m_nRemDrives = -1; // told by the last GetRemDriveCount(); below 0: nothing yet
};

static_assert(sizeof(CUtil) == 264, "layout of CUtil");

#endif
