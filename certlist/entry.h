// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Work on certificate entries: the fields of tagCERTINFO as a table, a compact form in which lists keep entries, and
 *  scratch records that leave no secret behind.
 *
 *  A record spans 58 KB, of which a certificate uses about a tenth. Lists therefore keep only the used bytes, so that a
 *  store of ten thousand certificates needs some sixty megabytes instead of 580.
 */
#pragma once

#include "foundation/secret.h"

#include <sigildesk/records.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace sigil {

/** Where a text or a byte field lies in tagCERTINFO. */
struct EntryField {
    std::size_t offset;
    std::size_t capacity;
    std::size_t
        lengthOffset; ///< of the integer with the number of bytes; 0 for a text, which ends at its zero byte

    constexpr bool isText() const { return lengthOffset == 0; }
};

// The table of fields: what a field is called here, and where it lies in the record.
// clang-format off
#define SIGIL_ENTRY_FIELDS(BYTES, TEXT) \
    BYTES(signCert, bySignCert, nSignCertLen) \
    BYTES(signKey, bySignPriKey, nSignPriKeyLen) \
    BYTES(kmCert, byKmCert, nKmCertLen) \
    BYTES(kmKey, byKmPriKey, nKmPriKeyLen) \
    BYTES(encSignKey, byEncSignPriKey, nEncSignPriKeyLen) \
    BYTES(encKmKey, byEncKmPriKey, nEncKmPriKeyLen) \
    BYTES(random, byRandom, nRandomLen) \
    TEXT(version, szVersion) \
    TEXT(serialNum, szSerialNum) \
    TEXT(signAlg, szSignAlg) \
    TEXT(subjectDn, szSubjectDN) \
    TEXT(uid, szUID) \
    TEXT(pubKey, szPubKey) \
    TEXT(pubKeyAlg, szPubKeyAlg) \
    TEXT(keyLength, szKeyLength) \
    TEXT(keyUsage, szKeyUsage) \
    TEXT(crlDp, szCRLDP) \
    TEXT(certPolicy, szCertPolicy) \
    TEXT(policyId, szPolicyID) \
    TEXT(issuerDn, szIssuerDN) \
    TEXT(issuerName, szIssuerName) \
    TEXT(issuerCn, szIssuerCN) \
    TEXT(policyName, szPolicyName) \
    TEXT(signCertPath, szSignCertPath) \
    TEXT(signKeyPath, szSignPriKeyPath) \
    TEXT(kmCertPath, szKmCertPath) \
    TEXT(kmKeyPath, szKmPriKeyPath) \
    TEXT(notBefore, szNotBefore) \
    TEXT(notAfter, szNotAfter) \
    TEXT(validFrom, szValidFrom) \
    TEXT(validTo, szValidTo) \
    TEXT(subjectAltName, szSubjectAltName) \
    TEXT(authKeyId, szAuthKeyID) \
    TEXT(subKeyId, szSubKeyID) \
    TEXT(aia, szAIA) \
    TEXT(mediaText1, szMediaText1) \
    TEXT(mediaText3, szMediaText3) \
    TEXT(password, szPassword)
// clang-format on

#define SIGIL_ENTRY_BYTES(name, data, length)                                                                      \
    inline constexpr EntryField name{                                                                              \
        offsetof(tagCERTINFO, data), sizeof(tagCERTINFO::data), offsetof(tagCERTINFO, length)};
#define SIGIL_ENTRY_TEXT(name, data)                                                                               \
    inline constexpr EntryField name{offsetof(tagCERTINFO, data), sizeof(tagCERTINFO::data), 0};
namespace field {
SIGIL_ENTRY_FIELDS(SIGIL_ENTRY_BYTES, SIGIL_ENTRY_TEXT)
} // namespace field
#undef SIGIL_ENTRY_BYTES
#undef SIGIL_ENTRY_TEXT

#define SIGIL_ENTRY_NAME(name, ...) field::name,
/** All of them, in the order of the table. */
inline constexpr EntryField entryFields[] = {SIGIL_ENTRY_FIELDS(SIGIL_ENTRY_NAME, SIGIL_ENTRY_NAME)};
#undef SIGIL_ENTRY_NAME
#undef SIGIL_ENTRY_FIELDS

/** What the entry has when its key was unlocked. */
constexpr bool isSecret(const EntryField& entryField)
{
    for (const EntryField& secret : {field::signKey, field::kmKey, field::random, field::password})
        if (secret.offset == entryField.offset)
            return true;
    return false;
}

/** What the field holds: a text without its terminator, or the bytes that its length counts. */
std::string_view value(const tagCERTINFO& entry, const EntryField& field);

/** Text fields: stores @p text, cut to one byte less than the field. */
void setText(tagCERTINFO& entry, const EntryField& field, std::string_view text);

/** Byte fields: overwrites the old bytes and stores @p bytes with their length.
 *  @return false, and nothing changed, when they do not fit */
bool setBytes(tagCERTINFO& entry, const EntryField& field, std::string_view bytes);

/** An entry with only the bytes that it uses. They are wiped when they are replaced or released. */
class PackedEntry {
public:
    /** Replaces the contents by those of @p entry. When memory runs out the old contents stay. */
    void store(const tagCERTINFO& entry);

    /** Wipes the contents. The memory is kept for those that follow. */
    void clear();

    /** Copies the numbers and every field that holds something; other fields of @p entry keep what they held. The
     *  second media text is never copied: the dialogs use it for token media, which no loader here serves. */
    void copyTo(tagCERTINFO& entry) const;

private:
    std::vector<char, WipingAllocator<char>> m_bytes;
    SecretBytes m_secrets; ///< apart: few entries have them, and there is not room for many
};

/** A record of one's own on the heap: zeroed at the start, wiped at the end. */
class ScratchEntry {
public:
    ScratchEntry()
        : m_record(1)
    {
    }
    explicit ScratchEntry(const PackedEntry& packed)
        : ScratchEntry()
    {
        packed.copyTo(**this);
    }

    tagCERTINFO& operator*() { return m_record.front(); }
    tagCERTINFO* operator->() { return &m_record.front(); }
    /** Empties every field. Only what the fields hold is touched, which is a small part of the record; of a text that was
     *  replaced by a shorter one the rest stays behind its end, where nobody reads. */
    void clear();

private:
    std::vector<tagCERTINFO, SecretAllocator<tagCERTINFO>> m_record;
};

} // namespace sigil
