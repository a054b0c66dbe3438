// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Copies between the certificate records: from the processor's entry into a row of the list or the dialog's own entry,
 *  and from there into the result. Field by field, because each record leaves out something of the one before.
 */
#pragma once

#include "foundation/secret.h"

#include <sigildesk/dialogs.h>
#include <sigildesk/records.h>

#include <string>
#include <vector>

namespace sigil {

/** A record of one's own on the heap: zeroed at the start, wiped at the end. */
class EntryRecord {
public:
    EntryRecord()
        : m_record(1)
    {
    }
    tagCERTINFO& operator*() { return m_record.front(); }
    tagCERTINFO* operator->() { return &m_record.front(); }

private:
    std::vector<tagCERTINFO, SecretAllocator<tagCERTINFO>> m_record;
};

/** Copies into the dialog's own entry what the dialog uses: the numbers, the certificates and keys with a length,
 *  the texts that are not empty. The encrypted keys and the two texts of token media stay out. */
void copyEntry(const tagCERTINFO& from, tagCERTINFO& to);

/** Fills @p to, except for the random value, from the entry of a certificate found on @p medium. All texts stay in
 *  EUC-KR. What @p to held before is wiped. */
void stageResult(const tagCERTINFO& from, int medium, tagSELCERTINFO& to);

/** Zero-fills @p to and copies the staged result, with the subject name and the policy turned into UTF-8. */
void handOutResult(const tagSELCERTINFO& from, tagSELCERTINFO& to);

/** Puts @p size bytes into a data item of a record, or nothing when there are more than @p capacity.
 *  @param data null counts as no bytes  @return how many were put */
int setItem(unsigned char* item, std::size_t capacity, const char* data, int size);

/** What the codes of nValidStatus mean: 0 to 2 and 3 to 5 say the same. */
enum class Validity { valid, endsSoon, expired, unknown };
Validity validityOf(int validStatus);

/** What is shown of a certificate in the list and asked about it there: a hundredth of its record, which is fetched when
 *  the certificate is looked at or used. The texts are in EUC-KR. */
struct CertificateRow {
    std::string subject, issuer, policy, validFrom, validTo, serialNumber, issuerDn;
    int validStatus = 0;
    int remainDays = 0;

    bool hasExpired() const { return validityOf(validStatus) == Validity::expired; }
};
CertificateRow rowOf(const tagCERTINFO& entry);

/** The subject as the list shows it, EUC-KR: the unique identifier, else the common name, else the whole name. */
std::string subjectName(const tagCERTINFO& entry);

} // namespace sigil
