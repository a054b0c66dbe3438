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

namespace field {
#define SIGIL_ENTRY_TEXT(name)                                                                                     \
    EntryField { offsetof(tagCERTINFO, name), sizeof(tagCERTINFO::name), 0 }
#define SIGIL_ENTRY_BYTES(name, length)                                                                            \
    EntryField { offsetof(tagCERTINFO, name), sizeof(tagCERTINFO::name), offsetof(tagCERTINFO, length) }

inline constexpr EntryField signCert = SIGIL_ENTRY_BYTES(bySignCert, nSignCertLen);
inline constexpr EntryField signKey = SIGIL_ENTRY_BYTES(bySignPriKey, nSignPriKeyLen);
inline constexpr EntryField kmCert = SIGIL_ENTRY_BYTES(byKmCert, nKmCertLen);
inline constexpr EntryField kmKey = SIGIL_ENTRY_BYTES(byKmPriKey, nKmPriKeyLen);
inline constexpr EntryField encSignKey = SIGIL_ENTRY_BYTES(byEncSignPriKey, nEncSignPriKeyLen);
inline constexpr EntryField encKmKey = SIGIL_ENTRY_BYTES(byEncKmPriKey, nEncKmPriKeyLen);
inline constexpr EntryField random = SIGIL_ENTRY_BYTES(byRandom, nRandomLen);
inline constexpr EntryField version = SIGIL_ENTRY_TEXT(szVersion);
inline constexpr EntryField serialNum = SIGIL_ENTRY_TEXT(szSerialNum);
inline constexpr EntryField signAlg = SIGIL_ENTRY_TEXT(szSignAlg);
inline constexpr EntryField subjectDn = SIGIL_ENTRY_TEXT(szSubjectDN);
inline constexpr EntryField uid = SIGIL_ENTRY_TEXT(szUID);
inline constexpr EntryField pubKey = SIGIL_ENTRY_TEXT(szPubKey);
inline constexpr EntryField pubKeyAlg = SIGIL_ENTRY_TEXT(szPubKeyAlg);
inline constexpr EntryField keyLength = SIGIL_ENTRY_TEXT(szKeyLength);
inline constexpr EntryField keyUsage = SIGIL_ENTRY_TEXT(szKeyUsage);
inline constexpr EntryField crlDp = SIGIL_ENTRY_TEXT(szCRLDP);
inline constexpr EntryField certPolicy = SIGIL_ENTRY_TEXT(szCertPolicy);
inline constexpr EntryField policyId = SIGIL_ENTRY_TEXT(szPolicyID);
inline constexpr EntryField issuerDn = SIGIL_ENTRY_TEXT(szIssuerDN);
inline constexpr EntryField issuerName = SIGIL_ENTRY_TEXT(szIssuerName);
inline constexpr EntryField issuerCn = SIGIL_ENTRY_TEXT(szIssuerCN);
inline constexpr EntryField policyName = SIGIL_ENTRY_TEXT(szPolicyName);
inline constexpr EntryField signCertPath = SIGIL_ENTRY_TEXT(szSignCertPath);
inline constexpr EntryField signKeyPath = SIGIL_ENTRY_TEXT(szSignPriKeyPath);
inline constexpr EntryField kmCertPath = SIGIL_ENTRY_TEXT(szKmCertPath);
inline constexpr EntryField kmKeyPath = SIGIL_ENTRY_TEXT(szKmPriKeyPath);
inline constexpr EntryField notBefore = SIGIL_ENTRY_TEXT(szNotBefore);
inline constexpr EntryField notAfter = SIGIL_ENTRY_TEXT(szNotAfter);
inline constexpr EntryField validFrom = SIGIL_ENTRY_TEXT(szValidFrom);
inline constexpr EntryField validTo = SIGIL_ENTRY_TEXT(szValidTo);
inline constexpr EntryField subjectAltName = SIGIL_ENTRY_TEXT(szSubjectAltName);
inline constexpr EntryField authKeyId = SIGIL_ENTRY_TEXT(szAuthKeyID);
inline constexpr EntryField subKeyId = SIGIL_ENTRY_TEXT(szSubKeyID);
inline constexpr EntryField aia = SIGIL_ENTRY_TEXT(szAIA);
inline constexpr EntryField mediaText1 = SIGIL_ENTRY_TEXT(szMediaText1);
inline constexpr EntryField mediaText3 = SIGIL_ENTRY_TEXT(szMediaText3);
inline constexpr EntryField password = SIGIL_ENTRY_TEXT(szPassword);

#undef SIGIL_ENTRY_TEXT
#undef SIGIL_ENTRY_BYTES
} // namespace field

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
    SecretBytes m_bytes;
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
    std::vector<tagCERTINFO, WipingAllocator<tagCERTINFO>> m_record;
};

} // namespace sigil
