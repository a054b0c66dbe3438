// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The dialog's copies of the caller's option records.
 */
#pragma once

#include <sigildesk/dialogs.h>
#include <sigildesk/records.h>

namespace sigil {

/** Lasts from one call to the next: a text that is not given leaves the value of the call before. */
class SelectionOptions {
public:
    SelectionOptions() { clear(); }
    ~SelectionOptions() { clear(); }
    SelectionOptions(const SelectionOptions&) = delete;
    SelectionOptions& operator=(const SelectionOptions&) = delete;

    /** @return 0; 1001 @p init null */
    int take(const tagINITOPT* init, const tagLOADSELECTCERTOPTION* load, const tagEXTRAOPTION* extra);
    /** Overwrites everything. */
    void clear();
    /** Overwrites the caller's certificate and key. */
    void clearMemoryItems();

    tagINITOPT init;
    tagLOADSELECTCERTOPTION load; ///< without the memory items, which are kept once, below
    tagEXTRAOPTION extra;
    tagLOADCERTOPT listing; ///< what the processor is asked to list
    unsigned char memoryCert[4096];
    unsigned char memoryKey[4096];
    int memoryCertLength;
    int memoryKeyLength;
    unsigned char memoryFlag; ///< 1: the caller handed over a certificate

private:
    void takeLoadOptions(const tagLOADSELECTCERTOPTION& from);
    void buildListing();
    void takeMemoryItems(const tagLOADSELECTCERTOPTION& from);
};

} // namespace sigil
