// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files of certificates and keys that are changed as one: all of them, or none.
 */
#pragma once

#include "foundation/file.h"

#include <string>
#include <vector>

namespace sigil {

/** The two files of a certificate and its key; an empty path names no file. */
struct PairPaths {
    std::string certificate;
    std::string key;
};

/** Pairs of files, while an operation changes them. What they held is noted in a file beside the first of them, which is
 *  gone when the operation is over. Of an operation that was killed it stays, and whoever works on the same files next
 *  puts back what it notes. At every instant a certificate has the key that belongs to it, or none. */
class UndoableFiles {
public:
    /** What the name of the file with the notes has behind that of the first key. Short, so that every name that a file
     *  may have has room for it. */
    static constexpr char notesEnding[] = ".undo";

    explicit UndoableFiles(std::vector<PairPaths> pairs);
    /** Puts back what was noted, unless it was let go. */
    ~UndoableFiles();
    UndoableFiles(const UndoableFiles&) = delete;
    UndoableFiles& operator=(const UndoableFiles&) = delete;

    /** Notes what the files hold now.
     *  @return false, and nothing changed, when that cannot be noted or another process is at work on them */
    bool begin();
    /** Deletes the keys, so that none of them ever stands beside a certificate that it does not belong to. */
    bool removeKeys();
    /** Brings the files, readable for their owner alone, and their folders to the disk and lets go of the notes.
     *  @return false when the disk refuses: the notes stay, and are put back at the end */
    bool keep();
    /** Lets go of the notes: the files stay as they are. */
    bool letGo();

    /** Puts back what a killed operation on these files left behind, and deletes its temporaries.
     *  @return true when there was something, and it was put back */
    static bool undoInterrupted(const std::vector<PairPaths>& pairs);

private:
    std::vector<PairPaths> m_pairs;
    std::string m_notes; // path of the file with the notes; empty when there is none
    Descriptor m_lock;   // of that file, which tells others that somebody is at work
};

} // namespace sigil
