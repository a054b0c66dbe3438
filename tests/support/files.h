// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files and folders of a test.
 */
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/** A folder of its own below the system's temporary folder; goes away with the object. */
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /** The folder, or what is called @p name in it. */
    std::string path(std::string_view name = "") const;
    /** The folder, as the exported functions take it. */
    char* chars() { return m_path.data(); }
    /** Writes a file in the folder and returns its path. */
    std::string write(std::string_view name, std::string_view content) const;

private:
    std::string m_path;
};

/** The file's content; empty when it cannot be read. */
std::string readFile(const std::filesystem::path& path);

/** Writes the file, and makes the folders above it. */
void writeFile(const std::filesystem::path& path, std::string_view content);
