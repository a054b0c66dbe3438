// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files that commands read and write.
 */
#pragma once

#include "foundation/file.h"
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

/** A file on its way: it stands in a folder of its own beside its place until it is whole, and both go away when it never is.
 *  What a killed process left there goes with the next file that is written at the same place. */
class WrittenFile {
public:
    /** @param path  of --out, or the command's own choice. Throws Failure when something is there and --force is not given,
     *               and when another process is writing it */
    WrittenFile(const Session& session, std::string path, Content content = Content::Plain);
    ~WrittenFile();
    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;

    const std::string& path() const { return m_path; }
    /** Where to write, for those who write by themselves. Nothing is there before. */
    const std::string& temporaryPath() const { return m_temporary; }
    void write(std::string_view bytes);
    /** Flushes the file and puts it in its place in one step. */
    void commit();

private:
    [[noreturn]] void fail(int error) const;

    std::string m_path;
    std::string m_drafts; ///< the folder of the temporary file and of whatever its writer puts beside it
    std::string m_temporary;
    sigil::Descriptor m_lock; ///< on that folder
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
