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

/** Whether what lies in the place of a file is looked at before it is read. A pipe would hold the reading up, so a listing looks
 *  when it counts; when it fills, only if the counting met something that is not read. */
struct FileCheck {
    bool isNeeded = true;
    bool metUnfit = false;
};

/** Part of the disk loader, under whose operations' names it reports trouble. */
class PairReader {
public:
    /** @param toolkit  façade handle
     *  @param folder   one that the files are in or below, or none
     *  @param check    is told of what is not read */
    PairReader(void* toolkit, ErrorLog& log, const SearchedFolder& folder, FileCheck& check)
        : m_toolkit(toolkit)
        , m_log(log)
        , m_folder(folder)
        , m_check(check)
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
    Drop dropOf(const char* path);
    int unreadable(const char* callee, int rc);

    void* m_toolkit;
    ErrorLog& m_log;
    const SearchedFolder& m_folder;
    FileCheck& m_check;
};

} // namespace sigil
