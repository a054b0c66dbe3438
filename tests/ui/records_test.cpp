// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/cert_records.h"

#include "foundation/text_field.h"
#include "tests/support/failing_allocator.h"
#include "tests/ui/fixture.h"
#include "tests/ui/scripted_processor.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <new>

using namespace sigil;
using scripted::eucKr;
using scripted::sampleEntry;

namespace {

template <class Record>
bool isZero(const Record& record)
{
    const auto* p = reinterpret_cast<const char*>(&record);
    return std::all_of(p, p + sizeof record, [](char c) { return c == '\0'; });
}

struct Places {
    std::size_t end = 0;
    /** The place of the next field of that width, right after the last one. */
    std::size_t next(std::size_t width)
    {
        const std::size_t place = end;
        end += width;
        return place;
    }
};

} // namespace

TEST(Layout, OfTheInitOptionsHasNoGaps)
{
    Places p;
    EXPECT_EQ(offsetof(tagINITOPT, ullReserved), p.next(8));
    EXPECT_EQ(offsetof(tagINITOPT, szLibraryFolder), p.next(260));
    EXPECT_EQ(offsetof(tagINITOPT, nLanguage), p.next(4));
    EXPECT_EQ(sizeof(tagINITOPT), p.end);
}

TEST(Layout, OfTheSelectionOptionsHasOnlyTheOneGap)
{
    using R = tagLOADSELECTCERTOPTION;
    Places p;
    EXPECT_EQ(offsetof(R, nPKITypes), p.next(4));
    EXPECT_EQ(offsetof(R, nKeyPairType), p.next(4));
    EXPECT_EQ(offsetof(R, nSelectFlags), p.next(4));
    EXPECT_EQ(offsetof(R, szShortOption), p.next(256));
    EXPECT_EQ(offsetof(R, szSerialNum), p.next(1024));
    EXPECT_EQ(offsetof(R, szSubjectDN), p.next(1024));
    EXPECT_EQ(offsetof(R, szPolicyIDs), p.next(2048));
    EXPECT_EQ(offsetof(R, szOption), p.next(260));
    EXPECT_EQ(offsetof(R, szReserved1), p.next(260));
    EXPECT_EQ(offsetof(R, szReserved2), p.next(260));
    EXPECT_EQ(offsetof(R, nReserved1), p.next(16));
    EXPECT_EQ(offsetof(R, szReserved3), p.next(1024));
    EXPECT_EQ(offsetof(R, nReserved2), p.next(4));
    EXPECT_EQ(offsetof(R, szReserved4), p.next(1024));
    EXPECT_EQ(offsetof(R, szReserved5), p.next(1024));
    EXPECT_EQ(offsetof(R, szReserved6), p.next(1024));
    EXPECT_EQ(offsetof(R, szLogo), p.next(1024));
    EXPECT_EQ(offsetof(R, szReserved7), p.next(1024));
    EXPECT_EQ(offsetof(R, nMessageFlags), p.next(4));
    EXPECT_EQ(offsetof(R, byReserved), p.next(1));
    EXPECT_EQ(offsetof(R, szReserved8), p.next(2048));
    p.next(7);
    EXPECT_EQ(offsetof(R, byMemoryCert), p.next(1));
    EXPECT_EQ(offsetof(R, byMemorySignCert), p.next(4096));
    EXPECT_EQ(offsetof(R, byMemorySignPriKey), p.next(4096));
    EXPECT_EQ(offsetof(R, nMemorySignCertLen), p.next(4));
    EXPECT_EQ(offsetof(R, nMemorySignPriKeyLen), p.next(4));
    EXPECT_EQ(offsetof(R, byCivicLogo), p.next(1));
    EXPECT_EQ(sizeof(R), p.end);
}

TEST(Layout, OfTheExtraOptionsHasNoGaps) { EXPECT_EQ(sizeof(tagEXTRAOPTION), 200000u + 3u); }

TEST(Layout, OfTheResultHasNoGaps)
{
    using R = tagSELCERTINFO;
    Places p;
    EXPECT_EQ(offsetof(R, nMediaType), p.next(4));
    EXPECT_EQ(offsetof(R, bySignCert), p.next(4096 + 4));
    EXPECT_EQ(offsetof(R, bySignPriKey), p.next(2048 + 4));
    EXPECT_EQ(offsetof(R, byEncSignPriKey), p.next(2048 + 4));
    EXPECT_EQ(offsetof(R, byKmCert), p.next(4096 + 4));
    EXPECT_EQ(offsetof(R, byKmPriKey), p.next(2048 + 4));
    EXPECT_EQ(offsetof(R, byEncKmPriKey), p.next(2048 + 4));
    EXPECT_EQ(offsetof(R, szSubjectDN), p.next(260));
    EXPECT_EQ(offsetof(R, szSubjectName), p.next(260));
    EXPECT_EQ(offsetof(R, szIssuerDN), p.next(1024));
    EXPECT_EQ(offsetof(R, szIssuerName), p.next(1024));
    EXPECT_EQ(offsetof(R, byRandom), p.next(1024 + 4));
    EXPECT_EQ(offsetof(R, szSignCertPath), p.next(260));
    EXPECT_EQ(offsetof(R, szSignPriKeyPath), p.next(260));
    EXPECT_EQ(offsetof(R, szKmCertPath), p.next(260));
    EXPECT_EQ(offsetof(R, szKmPriKeyPath), p.next(260));
    EXPECT_EQ(offsetof(R, szCertPolicy), p.next(256));
    EXPECT_EQ(offsetof(R, szSerialNum), p.next(256));
    EXPECT_EQ(offsetof(R, szValidFrom), p.next(1024));
    EXPECT_EQ(offsetof(R, szValidTo), p.next(1024));
    EXPECT_EQ(offsetof(R, szMediaText1), p.next(512));
    EXPECT_EQ(offsetof(R, szMediaText2), p.next(260));
    EXPECT_EQ(sizeof(R), p.end);
}

TEST(CopyEntry, TakesNumbersItemsAndTexts)
{
    const tagCERTINFO from = sampleEntry("홍길동", 4);
    tagCERTINFO to{};
    copyEntry(from, to);
    EXPECT_EQ(to.nPKIType, 2);
    EXPECT_EQ(to.nValidStatus, 4);
    EXPECT_EQ(to.nRemainDays, 12);
    EXPECT_EQ(to.nMediaType, 1);
    EXPECT_EQ(bytes(to.bySignCert, to.nSignCertLen), bytes(from.bySignCert, from.nSignCertLen));
    EXPECT_EQ(bytes(to.byKmCert, to.nKmCertLen), bytes(from.byKmCert, from.nKmCertLen));
    EXPECT_STREQ(to.szUID, from.szUID);
    EXPECT_STREQ(to.szSubjectDN, from.szSubjectDN);
    EXPECT_STREQ(to.szKmPriKeyPath, from.szKmPriKeyPath);
    EXPECT_STREQ(to.szAIA, from.szAIA);
}

TEST(CopyEntry, LeavesOutTheEncryptedKeysAndTheTokenTexts)
{
    const tagCERTINFO from = sampleEntry("홍길동");
    tagCERTINFO to{};
    copyEntry(from, to);
    EXPECT_EQ(to.nEncSignPriKeyLen, 0);
    EXPECT_EQ(to.nEncKmPriKeyLen, 0);
    EXPECT_TRUE(isZero(to.byEncSignPriKey));
    EXPECT_TRUE(isZero(to.byEncKmPriKey));
    EXPECT_STREQ(to.szMediaText1, "");
    EXPECT_STREQ(to.szMediaText2, "");
}

TEST(CopyEntry, TakesAnItemOnlyWithALengthThatItsFieldHolds)
{
    auto from = std::make_unique<tagCERTINFO>(sampleEntry("x"));
    auto to = std::make_unique<tagCERTINFO>();
    from->nSignCertLen = 0;
    from->nKmCertLen = 4097;
    copyEntry(*from, *to);
    EXPECT_TRUE(isZero(to->bySignCert));
    EXPECT_TRUE(isZero(to->byKmCert));
    EXPECT_EQ(to->nKmCertLen, 0);
    from->nKmCertLen = 4096;
    copyEntry(*from, *to);
    EXPECT_EQ(to->nKmCertLen, 4096);
}

TEST(CopyEntry, TakesTheRandomValueAsATextThatEndsAtItsFirstZero)
{
    tagCERTINFO from{};
    std::memcpy(from.byRandom, "ab\0cd", 5);
    from.nRandomLen = 5;
    tagCERTINFO to{};
    copyEntry(from, to);
    EXPECT_EQ(bytes(to.byRandom, 5), std::string("ab\0\0\0", 5));
    EXPECT_EQ(to.nRandomLen, 5);
}

TEST(CopyEntry, BoundsATextThatFillsItsField)
{
    tagCERTINFO from{};
    std::memset(from.szUID, 'u', sizeof from.szUID);
    tagCERTINFO to{};
    copyEntry(from, to);
    EXPECT_EQ(std::strlen(to.szUID), sizeof to.szUID - 1);
}

TEST(StageResult, FillsEveryItemOfADiskCertificate)
{
    tagCERTINFO from{};
    copyEntry(sampleEntry("홍길동"), from);
    from.nSignPriKeyLen = setItem(from.bySignPriKey, sizeof from.bySignPriKey, "key1", 4);
    from.nKmPriKeyLen = setItem(from.byKmPriKey, sizeof from.byKmPriKey, "key2", 4);
    tagSELCERTINFO to{};
    stageResult(from, 2, to);
    EXPECT_EQ(to.nMediaType, 2u);
    EXPECT_EQ(bytes(to.bySignCert, to.nSignCertLen), "sign certificate of 홍길동");
    EXPECT_EQ(bytes(to.bySignPriKey, to.nSignPriKeyLen), "key1");
    EXPECT_EQ(bytes(to.byKmCert, to.nKmCertLen), "km certificate of 홍길동");
    EXPECT_EQ(bytes(to.byKmPriKey, to.nKmPriKeyLen), "key2");
    EXPECT_EQ(to.nEncSignPriKeyLen, 0);
    EXPECT_EQ(to.nEncKmPriKeyLen, 0);
    EXPECT_STREQ(to.szSubjectDN, from.szSubjectDN);
    EXPECT_STREQ(to.szSubjectName, from.szUID);
    EXPECT_STREQ(to.szIssuerDN, from.szIssuerDN);
    EXPECT_STREQ(to.szIssuerName, from.szIssuerName);
    EXPECT_STREQ(to.szSignCertPath, from.szSignCertPath);
    EXPECT_STREQ(to.szSignPriKeyPath, from.szSignPriKeyPath);
    EXPECT_STREQ(to.szKmCertPath, from.szKmCertPath);
    EXPECT_STREQ(to.szKmPriKeyPath, from.szKmPriKeyPath);
    EXPECT_STREQ(to.szSerialNum, "01a2b3");
    EXPECT_STREQ(to.szValidFrom, "2025-11-01");
    EXPECT_STREQ(to.szValidTo, "2027-10-31");
}

TEST(StageResult, KeepsThePathsToTheDisks)
{
    const tagCERTINFO from = sampleEntry("x");
    for (int medium : {3, 4, 5, 6, 7}) {
        tagSELCERTINFO to{};
        stageResult(from, medium, to);
        EXPECT_STREQ(to.szSignCertPath, "") << medium;
        EXPECT_STREQ(to.szKmPriKeyPath, "") << medium;
    }
}

TEST(StageResult, GivesTheKeyPathOnlyWithTheCertificatePath)
{
    tagCERTINFO from = sampleEntry("x");
    from.szSignCertPath[0] = '\0';
    tagSELCERTINFO to{};
    stageResult(from, 1, to);
    EXPECT_STREQ(to.szSignPriKeyPath, "");
    EXPECT_STRNE(to.szKmCertPath, "");
}

TEST(StageResult, GivesTokenTextsForTokenMediaOnly)
{
    const tagCERTINFO from = sampleEntry("x");
    for (int medium = 1; medium <= 7; ++medium) {
        tagSELCERTINFO to{};
        stageResult(from, medium, to);
        const bool card = medium == 3 || medium == 4;
        EXPECT_STREQ(to.szMediaText1, card ? "token text 1" : "") << medium;
        EXPECT_STREQ(to.szMediaText2, card || medium == 7 ? "token text 2" : "") << medium;
    }
}

TEST(StageResult, LeavesOutAKeyThatIsLongerThanItsField)
{
    tagCERTINFO from{};
    std::memset(from.bySignPriKey, 'k', sizeof from.bySignPriKey);
    from.nSignPriKeyLen = 2049;
    tagSELCERTINFO to{};
    stageResult(from, 1, to);
    EXPECT_EQ(to.nSignPriKeyLen, 0);
    EXPECT_TRUE(isZero(to.bySignPriKey));
    from.nSignPriKeyLen = 2048;
    stageResult(from, 1, to);
    EXPECT_EQ(to.nSignPriKeyLen, 2048);
    EXPECT_EQ(to.byEncSignPriKey[0], 0);
}

TEST(SetItem, TakesAllOrNothing)
{
    unsigned char item[4] = {};
    EXPECT_EQ(setItem(item, sizeof item, "12345", 5), 0);
    EXPECT_TRUE(isZero(item));
    EXPECT_EQ(setItem(item, sizeof item, "1234", 4), 4);
    EXPECT_EQ(bytes(item, 4), "1234");
    EXPECT_EQ(setItem(item, sizeof item, "x", -1), 0);
    EXPECT_EQ(setItem(item, sizeof item, nullptr, 4), 0);
}

TEST(StageResult, ForgetsTheSelectionBefore)
{
    tagSELCERTINFO to{};
    stageResult(sampleEntry("first"), 1, to);
    tagCERTINFO bare{};
    stageResult(bare, 1, to);
    EXPECT_EQ(to.nKmCertLen, 0);
    EXPECT_STREQ(to.szSubjectDN, "");
}

TEST(HandOut, TurnsTheSubjectAndThePolicyIntoUtf8AndLeavesTheRestInEucKr)
{
    tagSELCERTINFO staged{};
    stageResult(sampleEntry("홍길동"), 1, staged);
    tagSELCERTINFO out;
    std::memset(&out, 0xEE, sizeof out);
    handOutResult(staged, out);
    EXPECT_STREQ(out.szSubjectDN, "cn=홍길동,ou=개인,o=예제,c=KR");
    EXPECT_STREQ(out.szCertPolicy, "정책 1 2 410 200004 5 2 1 2");
    EXPECT_EQ(std::string(out.szSubjectName), eucKr("홍길동"));
    EXPECT_EQ(std::string(out.szIssuerDN), eucKr("cn=예제인증기관,o=예제,c=KR"));
    EXPECT_EQ(out.byEncKmPriKey[2047], 0) << "what the caller's record held before is gone";
    EXPECT_STREQ(out.szMediaText2, "");
}

TEST(HandOut, LeavesTheCallersRecordAloneWhenMemoryRunsOut)
{
    tagSELCERTINFO staged{};
    stageResult(sampleEntry("홍길동"), 1, staged);
    tagSELCERTINFO out, before;
    std::memset(&out, 0xEE, sizeof out);
    std::memset(&before, 0xEE, sizeof before);
    allocations.refused = 0;
    allocations.counting = true;
    EXPECT_THROW(handOutResult(staged, out), std::bad_alloc);
    allocations = {};
    EXPECT_EQ(std::memcmp(&out, &before, sizeof out), 0) << "keys lie there though the call failed";
}

TEST(HandOut, CutsUtf8BetweenCharacters)
{
    tagSELCERTINFO staged{};
    std::string name;
    for (int i = 0; i < 129; ++i)
        name += "가";
    copyText(staged.szSubjectDN, eucKr(name));
    copyText(staged.szCertPolicy, eucKr(name));
    tagSELCERTINFO out{};
    handOutResult(staged, out);
    EXPECT_EQ(std::strlen(out.szSubjectDN), 258u);
    EXPECT_EQ(std::strlen(out.szCertPolicy), 255u);
}

TEST(SubjectName, IsTheIdentifierElseTheCommonNameElseTheWholeName)
{
    tagCERTINFO entry{};
    copyText(entry.szSubjectDN, "cn=Hong,ou=x,c=KR");
    EXPECT_EQ(subjectName(entry), "Hong");
    copyText(entry.szUID, "uid");
    EXPECT_EQ(subjectName(entry), "uid");
    entry.szUID[0] = '\0';
    copyText(entry.szSubjectDN, "ou=x,c=KR");
    EXPECT_EQ(subjectName(entry), "ou=x,c=KR");
    copyText(entry.szSubjectDN, "cn=,ou=x,c=KR");
    EXPECT_EQ(subjectName(entry), "cn=,ou=x,c=KR") << "an empty name is none";
}
