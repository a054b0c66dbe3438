/** @file
 *  Files as the toolkit reads and writes them. Paths are bytes as the caller gives them.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <functional>
#include <string>

namespace toolkit {

/** Largest file that is read into memory. */
constexpr std::size_t maximumFileSize = 64UL * 1024 * 1024;

/** A regular file, whole. Throws SIGIL_TK_FILE_NOT_FOUND, and SIGIL_TK_FILE_READ for anything but a readable regular file
 *  of at most maximumFileSize bytes. Never waits for a pipe or a device. */
Secret readFile(const std::string& path);

/** Hands out a regular file of any size in pieces. Codes as readFile. */
void readPieces(const std::string& path, const std::function<void(View)>& take);

/** Replaces or makes a file in one step: readers see the old bytes or the new ones. Written as a temporary file that only
 *  the owner may read, flushed to the disk, then renamed. Throws SIGIL_TK_FILE_WRITE; no temporary file is left. */
void writeFile(const std::string& path, View bytes);

/** Removes a regular file or a link. Throws SIGIL_TK_FILE_NOT_FOUND and SIGIL_TK_FILE_DELETE. */
void deleteFile(const std::string& path);

/** A file being written: nothing appears under @p path before commit(). */
class FileWriter {
public:
    explicit FileWriter(const std::string& path);
    ~FileWriter();
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    void write(View bytes);
    void commit();

private:
    std::string m_path;
    std::string m_temporary;
    int m_descriptor;
};

} // namespace toolkit
