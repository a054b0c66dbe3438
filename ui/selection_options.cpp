// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/selection_options.h"

#include "foundation/secret.h"
#include "foundation/text_field.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace sigil {

namespace {

/** A caller's text is taken only when it is given. */
template <std::size_t N, std::size_t M>
void takeText(char (&to)[N], const char (&from)[M], std::size_t atMost = N - 1)
{
    const std::string_view text = fieldText(from);
    if (!text.empty())
        copyText(to, text.substr(0, atMost));
}

/** @param given by value: a number of a packed record may lie where no reference to it can be made
 *  @return how many bytes were taken */
template <std::size_t N>
int takeItem(unsigned char (&to)[N], const unsigned char (&from)[N], int given)
{
    if (given <= 0)
        return 0;
    std::memcpy(to, from, N);
    return std::min(given, static_cast<int>(N));
}

template <class Record>
void wipeRecord(Record& record)
{
    wipe(&record, sizeof record);
}

} // namespace

int SelectionOptions::take(
    const tagINITOPT* givenInit, const tagLOADSELECTCERTOPTION* givenLoad, const tagEXTRAOPTION* givenExtra)
{
    if (!givenInit)
        return SIGIL_BAD_ARGUMENT;
    if (givenInit->ullReserved != 0)
        init.ullReserved = givenInit->ullReserved;
    takeText(init.szLibraryFolder, givenInit->szLibraryFolder);
    init.nLanguage = givenInit->nLanguage;
    if (givenLoad) {
        takeLoadOptions(*givenLoad);
        buildListing();
        takeMemoryItems(*givenLoad);
    }
    if (givenExtra) {
        takeText(extra.szData, givenExtra->szData);
        std::copy(std::begin(givenExtra->byReserved), std::end(givenExtra->byReserved), extra.byReserved);
    }
    return 0;
}

void SelectionOptions::takeLoadOptions(const tagLOADSELECTCERTOPTION& from)
{
    load.nPKITypes = from.nPKITypes;
    load.nKeyPairType = from.nKeyPairType;
    load.nSelectFlags = from.nSelectFlags;
    takeText(load.szShortOption, from.szShortOption);
    takeText(load.szSerialNum, from.szSerialNum);
    takeText(load.szSubjectDN, from.szSubjectDN);
    takeText(load.szPolicyIDs, from.szPolicyIDs);
    takeText(load.szOption, from.szOption);
    takeText(load.szReserved1, from.szReserved1);
    takeText(load.szReserved2, from.szReserved2);
    std::memcpy(load.nReserved1, from.nReserved1, sizeof load.nReserved1);
    takeText(load.szReserved3, from.szReserved3);
    load.nReserved2 = from.nReserved2;
    takeText(load.szReserved4, from.szReserved4);
    takeText(load.szReserved5, from.szReserved5);
    takeText(load.szReserved6, from.szReserved6);
    takeText(load.szLogo, from.szLogo);
    takeText(load.szReserved7, from.szReserved7);
    load.nMessageFlags = from.nMessageFlags;
    load.byReserved = from.byReserved;
    takeText(load.szReserved8, from.szReserved8, 1023);
    load.byMemoryCert = from.byMemoryCert;
    load.byCivicLogo = from.byCivicLogo;
}

void SelectionOptions::buildListing()
{
    listing.nPKITypes = static_cast<int>(load.nPKITypes);
    listing.nKeyPairType = static_cast<int>(load.nKeyPairType);
    listing.bExcludeExpired = load.nSelectFlags & SIGIL_SELECT_EXCLUDE_EXPIRED ? 1 : 0;
    takeText(listing.szPolicyIDs, load.szPolicyIDs);
    takeText(listing.szSerialNum, load.szSerialNum);
    takeText(listing.szSubjectDN, load.szSubjectDN);
    // The processor has one option text for the two of the caller; the one of the same width wins.
    takeText(listing.szOption, load.szShortOption);
    takeText(listing.szOption, load.szOption);
}

void SelectionOptions::takeMemoryItems(const tagLOADSELECTCERTOPTION& from)
{
    memoryFlag = from.byMemoryCert != 0 ? 1 : 0;
    if (memoryFlag == 0)
        return;
    // Unlike a text, an item that is not given does not keep its earlier value: a certificate must never be paired
    // with the key of an earlier call.
    memoryCertLength = takeItem(memoryCert, from.byMemorySignCert, from.nMemorySignCertLen);
    memoryKeyLength = takeItem(memoryKey, from.byMemorySignPriKey, from.nMemorySignPriKeyLen);
}

void SelectionOptions::clear()
{
    wipeRecord(init);
    wipeRecord(load);
    wipeRecord(extra);
    wipeRecord(listing);
    clearMemoryItems();
    memoryFlag = 0;
}

void SelectionOptions::clearMemoryItems()
{
    wipeRecord(memoryCert);
    wipeRecord(memoryKey);
    memoryCertLength = 0;
    memoryKeyLength = 0;
}

} // namespace sigil
