/** @file
 *  Status codes of the certificate list, codes of the toolkits that it knows, and names that mark its log records.
 */
#pragma once

namespace sigil {

/** Results of this layer; the same numbers mean the same in the façade. */
enum Code : int {
    success = 0,
    outOfMemory = 1000,
    badArgument = 1001,
    notSupported = 1003,
    notOnThisMedium = 1005,
    toolkitRefused = 1007,
    noHandle = 1008,
    toolkitNotLoaded = 1010,
    settingsIncomplete = 1100, ///< a settings file is missing or lacks an entry
    settingsUnreadable = 1102, ///< a settings file is empty or cannot be read
    notMemoryMedium = 1105,
    foldersNotFormed = 1111,
    wrongPassword = 1113,
    keyNotDecrypted = 1114,
    noCertificate = 1115,
    kmPairRequired = 1117,
    noRandomInKey = 1118,
    randomNotRead = 1119,
    notVerified = 1120,
    certificateUnreadable = 1122,
    fileNotRead = 1123,
    fileNotWritten = 1124,
    fileNotDeleted = 1125,
    nothingExported = 1126,
    noDecryptedKey = 1127,
    exportRefused = 1128,
    importRefused = 1129,
    pairMismatch = 1130,
    passwordNotChanged = 1131,
    identityMismatch = 1132,
    filteredOut = 1502
};

/** Codes with which the façade says that the toolkit library is not there. */
constexpr int facadeNoMakerToolkit = 1023;
constexpr int facadeNoGovernmentToolkit = 1024;

/** Toolkit codes that have a meaning of their own here; all others count as plain failures. */
constexpr int toolkitKeyDamaged = 2000;
constexpr int toolkitKeyUnknown = 2001;
constexpr int toolkitWrongPassword = 2004;
constexpr int toolkitNoRandom = 3500;
constexpr int toolkitWrongPfxPassword = 4505;

/** Media, as CLP_SetMediaType takes them. */
enum Medium : int {
    noMedium = 0,
    hardDisk = 1,
    removableDisk = 2,
    tokenFirst = 3, ///< 3 and 4: token media that have no loader here
    tokenLast = 4,
    memoryReserved = 5, ///< counts as memory when the list is read, but can never be chosen
    memory = 6,
    otherMedium = 7 ///< accepted, lists nothing
};

/** Value of nKeyPairType that asks for a key-management pair. */
constexpr int kmPairWanted = 2;

/** Error names of log records. */
namespace error {
inline constexpr char pass[] = "ERR_PASS";
inline constexpr char parsingCert[] = "ERR_PARSINGCERT";
inline constexpr char loadConf[] = "ERR_LOADCONF";
inline constexpr char fileReadNoData[] = "ERR_FILEREAD_NODATA";
inline constexpr char writeCertNKey[] = "ERR_WRITECERTNKEY";
inline constexpr char readCertNKey[] = "ERR_READCERTNKEY";
inline constexpr char deleteCertNKey[] = "ERR_DELETECERTNKEY";
inline constexpr char invalidPassword[] = "ERR_INVALIDPASSWORD";
inline constexpr char decryptPriKey[] = "ERR_DECRYPTPRIKEY";
inline constexpr char getData[] = "ERR_GETDATA";
inline constexpr char diffCertKeyPair[] = "ERR_DIFFCERTKEYPAIR";
inline constexpr char invalidInput[] = "ERR_INVALIDINPUT";
inline constexpr char notExistCert[] = "ERR_NOTEXISTCERT";
inline constexpr char notExistKmCert[] = "ERR_NOTEXISTKMCERT";
inline constexpr char notExistRandom[] = "ERR_NOTEXISTRANDOM";
inline constexpr char getRandom[] = "ERR_GETRANDOM";
inline constexpr char importCert[] = "ERR_IMPORTCERT";
inline constexpr char exportCert[] = "ERR_EXPORTCERT";
inline constexpr char verifyCert[] = "ERR_VERIFYCERT";
inline constexpr char notIncludeType[] = "not include Type";
} // namespace error

} // namespace sigil
