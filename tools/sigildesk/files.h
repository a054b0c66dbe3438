// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files that commands read and write.
 */
#pragma once

#include "jobs/read_file.h"
#include "session.h"
#include "unfinished.h"

#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace host {

/** Everything on standard input: something, and at most a megabyte. Throws Failure. */
std::string readStandardInput();

enum class Content { Plain, PrivateKey };

/** A file on its way: it stands under another name in the same folder until it is whole, and goes away when it never is. */
class WrittenFile {
public:
    /** @param path  of --out, or the command's own choice. Throws Failure when something is there and --force is not given */
    WrittenFile(const Session& session, std::string path, Content content = Content::Plain);
    ~WrittenFile();
    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;

    const std::string& path() const { return m_path; }
    /** Where to write, for those who write by themselves; may be replaced as a whole. */
    const std::string& temporaryPath() const { return m_temporary; }
    /** The same for those who write only where nothing is yet. */
    const std::string& freePath() const;
    void write(std::string_view bytes);
    /** Flushes the file and puts it in its place in one step. */
    void commit();

private:
    [[noreturn]] void fail(int error) const;

    std::string m_path;
    std::string m_temporary;
    bool m_force;
    mode_t m_mode;
    std::optional<Unfinished> m_unfinished;
};

/** Writes a whole file. */
void writeFile(
    const Session& session, const std::string& path, std::string_view bytes, Content content = Content::Plain);

/** The value of --out, or @p otherwise. */
std::string outputPath(const Session& session, const std::string& otherwise);

} // namespace host
