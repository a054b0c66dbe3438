// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/cert_records.h"

#include "foundation/media.h"
#include "foundation/secret.h"
#include "foundation/text_field.h"
#include "ui/language_texts.h"

#include <sigildesk/util.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace sigil {

namespace {

/** A field of a record by its place; the records are packed, so places are all that can be tabulated. */
struct Field {
    std::size_t offset;
    std::size_t size;
};

/** A data item and the 32-bit number that holds its length. */
struct Item {
    Field data;
    std::size_t lengthOffset;
};

// The three macros spell a field once; the language has no other way from a member's name to its place.
#define SIGIL_FIELD(record, member)                                                                                \
    Field { offsetof(record, member), sizeof(record::member) }
#define SIGIL_ENTRY_TEXT(member) SIGIL_FIELD(tagCERTINFO, member)
#define SIGIL_ITEM(record, by, n)                                                                                  \
    Item { SIGIL_FIELD(record, by), offsetof(record, n) }

constexpr Field entryTexts[] = {
    SIGIL_ENTRY_TEXT(szVersion),
    SIGIL_ENTRY_TEXT(szSerialNum),
    SIGIL_ENTRY_TEXT(szSignAlg),
    SIGIL_ENTRY_TEXT(szSubjectDN),
    SIGIL_ENTRY_TEXT(szUID),
    SIGIL_ENTRY_TEXT(szPubKey),
    SIGIL_ENTRY_TEXT(szPubKeyAlg),
    SIGIL_ENTRY_TEXT(szKeyLength),
    SIGIL_ENTRY_TEXT(szKeyUsage),
    SIGIL_ENTRY_TEXT(szCRLDP),
    SIGIL_ENTRY_TEXT(szCertPolicy),
    SIGIL_ENTRY_TEXT(szPolicyID),
    SIGIL_ENTRY_TEXT(szIssuerDN),
    SIGIL_ENTRY_TEXT(szIssuerName),
    SIGIL_ENTRY_TEXT(szIssuerCN),
    SIGIL_ENTRY_TEXT(szPolicyName),
    SIGIL_ENTRY_TEXT(szSignCertPath),
    SIGIL_ENTRY_TEXT(szSignPriKeyPath),
    SIGIL_ENTRY_TEXT(szKmCertPath),
    SIGIL_ENTRY_TEXT(szKmPriKeyPath),
    SIGIL_ENTRY_TEXT(szNotBefore),
    SIGIL_ENTRY_TEXT(szNotAfter),
    SIGIL_ENTRY_TEXT(szValidFrom),
    SIGIL_ENTRY_TEXT(szValidTo),
    // Copied as a text on purpose: the random value of an entry ends at its first zero byte here. The one that is
    // handed out comes from CLP_GetPriKeyRandom and is whole.
    SIGIL_ENTRY_TEXT(byRandom),
    SIGIL_ENTRY_TEXT(szSubjectAltName),
    SIGIL_ENTRY_TEXT(szAuthKeyID),
    SIGIL_ENTRY_TEXT(szSubKeyID),
    SIGIL_ENTRY_TEXT(szAIA),
    SIGIL_ENTRY_TEXT(szMediaText3),
    SIGIL_ENTRY_TEXT(szPassword),
};

constexpr Item entryItems[] = {
    SIGIL_ITEM(tagCERTINFO, bySignCert, nSignCertLen),
    SIGIL_ITEM(tagCERTINFO, bySignPriKey, nSignPriKeyLen),
    SIGIL_ITEM(tagCERTINFO, byKmCert, nKmCertLen),
    SIGIL_ITEM(tagCERTINFO, byKmPriKey, nKmPriKeyLen),
    SIGIL_ITEM(tagCERTINFO, byEncSignPriKey, nEncSignPriKeyLen),
    SIGIL_ITEM(tagCERTINFO, byEncKmPriKey, nEncKmPriKeyLen),
};
constexpr std::size_t keptEntryItems = 4; // the encrypted keys, last in the table, stay with the processor

constexpr Item resultItems[] = {
    // in the order of entryItems
    SIGIL_ITEM(tagSELCERTINFO, bySignCert, nSignCertLen),
    SIGIL_ITEM(tagSELCERTINFO, bySignPriKey, nSignPriKeyLen),
    SIGIL_ITEM(tagSELCERTINFO, byKmCert, nKmCertLen),
    SIGIL_ITEM(tagSELCERTINFO, byKmPriKey, nKmPriKeyLen),
    SIGIL_ITEM(tagSELCERTINFO, byEncSignPriKey, nEncSignPriKeyLen),
    SIGIL_ITEM(tagSELCERTINFO, byEncKmPriKey, nEncKmPriKeyLen),
};
static_assert(std::size(entryItems) == std::size(resultItems));

/** A text of the result and the text of the entry that it is taken from. */
struct TextPair {
    Field from;
    Field to;
};
#define SIGIL_TEXT_PAIR(member, target)                                                                            \
    TextPair { SIGIL_ENTRY_TEXT(member), SIGIL_FIELD(tagSELCERTINFO, target) }

constexpr TextPair resultTexts[] = {
    SIGIL_TEXT_PAIR(szSubjectDN, szSubjectDN),
    SIGIL_TEXT_PAIR(szIssuerDN, szIssuerDN),
    SIGIL_TEXT_PAIR(szIssuerName, szIssuerName),
    SIGIL_TEXT_PAIR(szCertPolicy, szCertPolicy),
    SIGIL_TEXT_PAIR(szSerialNum, szSerialNum),
    SIGIL_TEXT_PAIR(szValidFrom, szValidFrom),
    SIGIL_TEXT_PAIR(szValidTo, szValidTo),
};
constexpr TextPair diskTexts[] = {
    SIGIL_TEXT_PAIR(szSignCertPath, szSignCertPath),
    SIGIL_TEXT_PAIR(szKmCertPath, szKmCertPath),
    SIGIL_TEXT_PAIR(szKmPriKeyPath, szKmPriKeyPath),
};
constexpr TextPair diskKeyText = SIGIL_TEXT_PAIR(szSignPriKeyPath, szSignPriKeyPath);
constexpr TextPair tokenText1 = SIGIL_TEXT_PAIR(szMediaText1, szMediaText1);
constexpr TextPair tokenText2 = SIGIL_TEXT_PAIR(szMediaText2, szMediaText2);

#undef SIGIL_TEXT_PAIR
#undef SIGIL_ITEM
#undef SIGIL_ENTRY_TEXT
#undef SIGIL_FIELD

/** Bytes of a record, to be looked at by place. */
const char* bytesOf(const void* record) { return static_cast<const char*>(record); }
char* bytesOf(void* record) { return static_cast<char*>(record); }

/** Copies a text that is not empty. */
void copyField(const void* from, const Field& source, void* to, const Field& target)
{
    const std::string_view text = fieldText(bytesOf(from) + source.offset, source.size);
    if (!text.empty())
        copyText(bytesOf(to) + target.offset, target.size, text);
}

void copyTexts(const tagCERTINFO& from, tagSELCERTINFO& to, const TextPair& pair)
{
    copyField(&from, pair.from, &to, pair.to);
}

/** Copies a data item with its length; nothing when the length is not above 0, and nothing when either field is too
 *  small for it: half a certificate or key is of no use to anybody. */
void copyItem(const void* from, const Item& source, void* to, const Item& target)
{
    int length = 0;
    std::memcpy(&length, bytesOf(from) + source.lengthOffset, sizeof length);
    if (length <= 0 || static_cast<std::size_t>(length) > std::min(source.data.size, target.data.size))
        return;
    std::memcpy(
        bytesOf(to) + target.data.offset, bytesOf(from) + source.data.offset, static_cast<std::size_t>(length));
    std::memcpy(bytesOf(to) + target.lengthOffset, &length, sizeof length);
}

template <std::size_t N>
std::string utf8Of(const char (&field)[N])
{
    return toUtf8(fromEucKr(fieldText(field)), N - 1);
}

template <std::size_t N>
void replaceText(char (&field)[N], const std::string& text)
{
    std::memset(field, 0, N);
    copyText(field, text);
}

} // namespace

void copyEntry(const tagCERTINFO& from, tagCERTINFO& to)
{
    to.nPKIType = from.nPKIType;
    to.nStatusFlag = from.nStatusFlag;
    to.nValidStatus = from.nValidStatus;
    to.nRemainDays = from.nRemainDays;
    to.nExpired = from.nExpired;
    to.nMediaType = from.nMediaType;
    to.nRandomLen = from.nRandomLen;
    for (std::size_t i = 0; i < keptEntryItems; ++i)
        copyItem(&from, entryItems[i], &to, entryItems[i]);
    for (const Field& text : entryTexts)
        copyField(&from, text, &to, text);
}

void stageResult(const tagCERTINFO& from, int medium, tagSELCERTINFO& to)
{
    wipe(&to, sizeof to);
    to.nMediaType = static_cast<unsigned int>(medium);
    for (std::size_t i = 0; i < std::size(entryItems); ++i)
        copyItem(&from, entryItems[i], &to, resultItems[i]);
    copyText(to.szSubjectName, subjectName(from));
    for (const TextPair& pair : resultTexts)
        copyTexts(from, to, pair);
    if (isDisk(medium)) {
        for (const TextPair& pair : diskTexts)
            copyTexts(from, to, pair);
        if (from.szSignCertPath[0] != '\0')
            copyTexts(from, to, diskKeyText);
    }
    if (isToken(medium))
        copyTexts(from, to, tokenText1);
    if (isToken(medium) || medium == SIGIL_MEDIUM_OTHER)
        copyTexts(from, to, tokenText2);
}

void handOutResult(const tagSELCERTINFO& from, tagSELCERTINFO& to)
{
    // What takes memory comes first: a caller who is told that it ran out must not hold keys.
    const std::string subject = utf8Of(from.szSubjectDN);
    const std::string policy = utf8Of(from.szCertPolicy);
    to = from; // the staged record was zero-filled before it was filled, and is copied whole
    replaceText(to.szSubjectDN, subject);
    replaceText(to.szCertPolicy, policy);
}

int setItem(unsigned char* item, std::size_t capacity, const char* data, int size)
{
    if (!data || size <= 0 || static_cast<std::size_t>(size) > capacity)
        return 0;
    std::memcpy(item, data, static_cast<std::size_t>(size));
    return size;
}

Validity validityOf(int validStatus)
{
    return validStatus < 0 || validStatus > 5 ? Validity::unknown : static_cast<Validity>(validStatus % 3);
}

CertificateRow rowOf(const tagCERTINFO& entry)
{
    const auto text = [](const auto& field) { return std::string(fieldText(field)); };
    return {subjectName(entry), text(entry.szIssuerName), text(entry.szPolicyName), text(entry.szValidFrom),
        text(entry.szValidTo), text(entry.szSerialNum), text(entry.szIssuerDN), entry.nValidStatus,
        entry.nRemainDays};
}

std::string subjectName(const tagCERTINFO& entry)
{
    if (entry.szUID[0] != '\0')
        return std::string(fieldText(entry.szUID));
    std::string name(fieldText(entry.szSubjectDN));
    char commonName[sizeof entry.szSubjectDN] = {};
    CUtil util(0, nullptr); // reading a name takes no language file
    if (util.GetCNString(name.data(), sizeof commonName, commonName) == 0 && commonName[0] != '\0')
        return commonName;
    return name;
}

} // namespace sigil
