// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The text forms in which fields of certificates are printed. Every text that leaves the engine is CP949.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <openssl/asn1.h>
#include <openssl/x509.h>

#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/** UTF-8 as CP949; a character that CP949 lacks becomes "?", and so does a control character. */
std::string cp949FromUtf8(std::string_view utf8);
/** CP949 as UTF-8; nothing when the bytes are not CP949. */
std::optional<std::string> utf8FromCp949(std::string_view cp949);
bool isUtf8(std::string_view bytes);
/** A string of any ASN.1 type as CP949. Old certificates hold Korean bytes, UTF-8 or CP949, in T61, IA5 and Printable
 *  strings. */
std::string asn1Text(const ASN1_STRING* string);
/** The same of its V_ASN1_ type and its bytes. */
std::string asn1Text(int type, View bytes);

/** The bytes of a string, whatever its ASN.1 type; the string's own. */
inline View octets(const ASN1_STRING* string)
{
    return {ASN1_STRING_get0_data(string), static_cast<std::size_t>(ASN1_STRING_length(string))};
}

/** The text without the blanks around it. */
std::string_view trimmed(std::string_view text);
/** Longest prefix of at most @p bytes bytes that does not cut a CP949 character. */
std::string_view cutText(std::string_view cp949, std::size_t bytes);

/** Two lower-case digits per byte. */
std::string hexText(View bytes);
/** The reverse, for digits of either case. Throws SIGIL_TK_ENCODING. */
Bytes bytesOfHex(std::string_view digits);
/** Numbers of an OID separated by blanks: "1 2 410 200004 5 2 1 2". */
std::string blankOid(const ASN1_OBJECT* object);
std::string blankOid(std::string dotted);
/** The same for a dotted or blank-separated text, in dotted form. */
std::string dotted(std::string_view oidText);
/** "cn=...,ou=...,o=...,c=KR": most specific first, lower-case types, values as they are (a comma is not escaped). */
std::string nameText(const X509_NAME* name);
/** Adds the next attribute to such a text.
 *  @param besideLast whether it stands in one set with the attribute before
 *  @param type short name or dotted number, of any letter case */
void addAttribute(std::string& name, bool besideLast, std::string type, std::string_view value);
/** Whether two such texts name the same entry: letter case, blanks around the separators and the order of the whole
 *  (most specific first or last) do not matter. */
bool sameName(std::string_view left, std::string_view right);
std::string join(const std::vector<std::string>& parts, std::string_view separator);
/** Names of KU_ bits of <openssl/x509v3.h>: "digitalSignature, nonRepudiation". */
std::string usageText(unsigned bits);
/** "1 2 410 200004 5 2 1 2 [CPS: http://...; notice text]". */
std::string policyText(const std::string& id, const std::vector<std::string>& qualifiers);

/** "YYYY-MM-DD HH:MM:SS" in local standard time: daylight saving never shifts it, because readers convert it back with
 *  tm_isdst = 0. Always 19 characters: times outside the years 0 to 9999 become the nearest end. */
std::string timeText(std::time_t time);
/** The reverse of timeText; nothing when @p text does not have that form or there is no such day or hour. */
std::optional<std::time_t> timeFromText(std::string_view text);
/** Seconds since the epoch; nothing for a malformed time. */
std::optional<std::time_t> asn1Time(const ASN1_TIME* time);

} // namespace toolkit
