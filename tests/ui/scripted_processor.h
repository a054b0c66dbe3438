// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A certificate-list processor that answers what the test says: it stands in for the CLP_ functions, so that every
 *  code and every kind of entry can be put before the dialogs.
 */
#pragma once

#include <sigildesk/records.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace scripted {

/** What the functions answer. Buffers that they hand out are counted until CLP_MemFree gets them. */
struct Processor {
    std::map<std::string, int> results; ///< by function name; a function that is not named answers 0
    std::vector<tagCERTINFO> entries;   ///< of every medium
    std::map<int, int> entryResults;    ///< what CLP_GetCertInfo answers for an index
    std::vector<tagDRIVEINFO> drives;
    int driveCount = -1; ///< what is counted; -1: the number of drives
    std::string signKey, kmKey, random;
    std::string importCert, importKey, importKmCert, importKmKey;
    std::string verifyError;

    std::vector<std::string> calls; ///< "CLP_SetMediaType 2 /media/USB", in order
    tagLOADCERTOPT options{};       ///< of the last CLP_SetType
    bool handsOutEmpty = false;     ///< whether a buffer comes where there are no bytes
    int openBuffers = 0;
    int handles = 0; ///< open now

    int files = 0;                        ///< between which CLP_LoadCertList pauses
    std::function<void(int file)> onFile; ///< what happens while it reads one
    std::function<bool()> pause;          ///< who is asked in between

    int resultOf(const std::string& function) const;
    int countOf(const std::string& call) const;
    std::string lastCallOf(const std::string& function) const;
};

Processor& processor();

/** An entry with every field filled, its texts told apart by @p name. */
tagCERTINFO sampleEntry(const std::string& name, int status = 3);

/** A drive as the mount table yields it. */
tagDRIVEINFO sampleDrive(int index, const std::string& mountDir);

/** EUC-KR bytes of a UTF-8 text. */
std::string eucKr(const std::string& utf8);

} // namespace scripted
