// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as the notes that a killed operation left beside its files: these are whole as they were, or as the notes say.

#include "certlist/undoable_files.h"
#include "fuzz/machine.h"

#include <filesystem>

FUZZ_TARGET(certlist_undo, input)
{
    const fuzz::Machine machine;
    const std::vector<sigil::PairPaths> pairs{
        {machine.path("a.cer"), machine.path("a.key")}, {machine.path("b.cer"), machine.path("b.key")}};
    writeFile(pairs[0].certificate, "certificate");
    writeFile(pairs[0].key, "key");
    const std::string notes = pairs[0].key + sigil::UndoableFiles::notesEnding;
    writeFile(notes, fuzz::text(input));
    const bool undone = sigil::UndoableFiles::undoInterrupted(pairs);
    require(undone != std::filesystem::exists(notes), "notes go when they are put back, and then alone");
    require(undone || (readFile(pairs[0].certificate) == "certificate" && readFile(pairs[0].key) == "key"),
        "notes that are none change nothing");
    sigil::UndoableFiles files(pairs);
    require(files.begin() == undone, "the next operation begins when nothing stands in its way");
}
