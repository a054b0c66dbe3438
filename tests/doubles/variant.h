// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Library folders for tests: the complete doubles, copies that lack a symbol, and folders without any library.
 *
 *  DOUBLES_FOLDER holds both recording toolkits. A library whose init fails is the same folder with an answer set for
 *  "HVTK_API_Init" or "GPKI_API_Init"; a folder without libraries is a TemporaryFolder.
 */
#pragma once

#include "tests/support/files.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace doubles {

/** A folder with both doubles in which one symbol has another name, so that dlsym does not find it. */
class FolderWithout : public TemporaryFolder {
public:
    explicit FolderWithout(const std::string& symbol)
    {
        const bool maker = symbol.starts_with("HVTK_");
        const char* lacking = maker ? "libHVCToolkitV30.so" : "libgpkiapi_v15.so";
        const char* complete = maker ? "libgpkiapi_v15.so" : "libHVCToolkitV30.so";
        const std::filesystem::path from = DOUBLES_FOLDER;
        const std::filesystem::path to = path();
        std::filesystem::create_symlink(from / complete, to / complete);
        std::ofstream(to / lacking, std::ios::binary) << renamed(from / lacking, symbol);
    }

private:
    static std::string renamed(const std::filesystem::path& library, const std::string& symbol)
    {
        std::string bytes(std::filesystem::file_size(library), '\0');
        std::ifstream(library, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        const std::string name = '\0' + symbol + '\0'; // as it stands in the table of dynamic names
        std::size_t found = bytes.find(name);
        if (found == std::string::npos)
            throw std::runtime_error(symbol + " is no symbol of the double");
        for (; found != std::string::npos; found = bytes.find(name, found + 1))
            bytes[found + 1] = 'x';
        return bytes;
    }
};

} // namespace doubles
