// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The records' fields as a table, the compact form of an entry, scratch records.

#include "certlist/entry.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace sigil;

/** Fills every byte of every field, and sets the numbers to the lengths that fit. */
void fillEverything(tagCERTINFO& entry)
{
    std::memset(&entry, 'x', sizeof entry);
    entry.nPKIType = 1;
    entry.nSignCertLen = entry.nSignPriKeyLen = entry.nKmCertLen = entry.nKmPriKeyLen = 4096;
    entry.nEncSignPriKeyLen = entry.nEncKmPriKeyLen = 4096;
    entry.nRandomLen = 1024;
    entry.nStatusFlag = 2;
    entry.nValidStatus = 3;
    entry.nRemainDays = 4;
    entry.nExpired = 5;
    entry.nMediaType = 6;
}

TEST(Entry, PackedEntryHoldsEveryField)
{
    ScratchEntry entry;
    fillEverything(*entry);
    PackedEntry packed;
    packed.store(*entry);
    ScratchEntry copy(packed);
    ScratchEntry expected(packed);
    // Texts without a terminator are cut by one byte; the second media text is not copied.
    const auto* from = reinterpret_cast<const unsigned char*>(&*entry);
    const auto* to = reinterpret_cast<const unsigned char*>(&*copy);
    std::size_t differing = 0;
    for (std::size_t i = 0; i < sizeof(tagCERTINFO); ++i)
        differing += from[i] != to[i] ? 1 : 0;
    constexpr std::size_t texts = 31; // each ends in a zero byte now
    EXPECT_EQ(differing, texts + sizeof(tagCERTINFO::szMediaText2));
    EXPECT_EQ(std::memcmp(&*copy, &*expected, sizeof(tagCERTINFO)), 0);
}

TEST(Entry, LengthsAreNeverTrusted)
{
    ScratchEntry entry;
    entry->nSignCertLen = -5;
    EXPECT_EQ(value(*entry, field::signCert).size(), 0u);
    entry->nSignCertLen = 1 << 30;
    EXPECT_EQ(value(*entry, field::signCert).size(), 4096u);
}

TEST(Entry, ShorterBytesLeaveNothingOfTheLongerOnes)
{
    ScratchEntry entry;
    ASSERT_TRUE(setBytes(*entry, field::signKey, "a long secret key"));
    ASSERT_TRUE(setBytes(*entry, field::signKey, "short"));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(entry->bySignPriKey), 17), std::string("short").append(12, '\0'));
    EXPECT_FALSE(setBytes(*entry, field::signKey, std::string(4097, 'k')));
    EXPECT_EQ(value(*entry, field::signKey), "short");
}

TEST(Entry, EmptyPackedEntrySetsTheNumbersToZero)
{
    ScratchEntry entry;
    entry->nPKIType = 2;
    std::strcpy(entry->szUID, "kept");
    PackedEntry().copyTo(*entry);
    EXPECT_EQ(entry->nPKIType, 0);
    EXPECT_STREQ(entry->szUID, "kept");
}

TEST(Entry, ClearedPackedEntryHoldsNothing)
{
    ScratchEntry source;
    fillEverything(*source);
    PackedEntry packed;
    packed.store(*source);
    packed.clear();
    const tagCERTINFO zero{};
    EXPECT_EQ(std::memcmp(&*ScratchEntry(packed), &zero, sizeof zero), 0);
}

TEST(Entry, PackedEntryIsReplacedWhole)
{
    ScratchEntry longer;
    fillEverything(*longer);
    ScratchEntry shorter;
    setText(*shorter, field::uid, "short");
    shorter->nPKIType = 2;
    PackedEntry packed;
    for (const auto* source : {&*shorter, &*longer, &*shorter})
        packed.store(*source);
    EXPECT_EQ(std::memcmp(&*ScratchEntry(packed), &*shorter, sizeof(tagCERTINFO)), 0);
}

TEST(Entry, ClearedScratchIsZero)
{
    ScratchEntry source;
    fillEverything(*source);
    PackedEntry packed;
    packed.store(*source);
    ScratchEntry entry(packed);
    entry.clear();
    const tagCERTINFO zero{};
    EXPECT_EQ(std::memcmp(&*entry, &zero, sizeof zero), 0);
}

} // namespace
