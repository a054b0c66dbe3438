// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Reads the files of a certificate into its entry.
 */
#pragma once

#include "certlist/entry.h"
#include "certlist/error_log.h"
#include "certlist/searched_folder.h"

namespace sigil {

class ToolkitBytes;

/** Part of the disk loader, under whose operations' names it reports trouble. */
class PairReader {
public:
    /** @param toolkit  façade handle
     *  @param folder   one that the files are in or below, or none */
    PairReader(void* toolkit, ErrorLog& log, const SearchedFolder& folder)
        : m_toolkit(toolkit)
        , m_log(log)
        , m_folder(folder)
    {
    }

    /** Reads the files that the paths of the entry name.
     *  @param certificate  receives the signing certificate
     *  @param keyPairType  whether the entry must have a key-management pair: SigilKeyPair
     *  @return 0; 1122 unreadable; 1502 without the pair that it must have */
    int read(ToolkitBytes& certificate, int keyPairType, tagCERTINFO& entry);

private:
    int readFile(char* path, const EntryField& field, tagCERTINFO& entry);
    int readFile(char* path, const EntryField& field, ToolkitBytes& content, tagCERTINFO& entry);
    int readSignPair(ToolkitBytes& certificate, tagCERTINFO& entry);
    int readKmFile(char* path, const EntryField& field, tagCERTINFO& entry);
    int readKmPair(bool wanted, tagCERTINFO& entry);
    Drop dropOf(const char* path) const;
    int unreadable(const char* callee, int rc);

    void* m_toolkit;
    ErrorLog& m_log;
    const SearchedFolder& m_folder;
};

} // namespace sigil
