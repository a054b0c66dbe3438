// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Codes of the toolkits that the certificate list knows, and names that mark its log records. The list's own codes,
 *  media and families have their names in <sigildesk/codes.h>.
 */
#pragma once

#include <sigildesk/codes.h>

namespace sigil {

/** Toolkit codes that have a meaning of their own here; all others count as plain failures. */
constexpr int toolkitKeyDamaged = 2000;
constexpr int toolkitKeyUnknown = 2001;
constexpr int toolkitWrongPassword = 2004;
constexpr int toolkitNoRandom = 3500;
constexpr int toolkitWrongPfxPassword = 4505;

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
