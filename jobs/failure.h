// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Everything that keeps a command from doing its job, and what the shell is told about it.
 */
#pragma once

#include "jobs/words.h"

#include <nlohmann/json_fwd.hpp>

#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace host {

using Json = nlohmann::ordered_json;

/** What the program tells the shell. */
enum ExitCode {
    done = 0,     ///< done; yes
    no = 1,       ///< nothing found, invalid, wrong password, cancelled
    wrongUse = 2, ///< unknown option, missing argument, no way to ask for a password
    failed = 3,   ///< a toolkit's code, a file, a missing part
};

/** Ends a command. Whoever catches it in the end tells it: in words, or as a JSON object. */
class Failure : public std::exception {
public:
    /** @param name   what a script compares, in snake_case
     *  @param words  what a person reads; each "{}" in it stands for one of @p values */
    Failure(ExitCode exit, const char* name, const Words& words, std::vector<std::string> values = {});
    /** A result of the library. Its name, its sentence and its exit code follow from the number.
     *  @param detail  what the toolkit said about it; may be empty */
    static Failure ofCode(int code, const std::string& detail = {});

    ExitCode exit() const { return m_exit; }
    /** The library's number; the exit code when the failure is the command's own. */
    int code() const { return m_code; }
    const std::string& name() const { return m_name; }
    std::string message(Language language) const;
    const char* what() const noexcept override { return m_name.c_str(); }

    /** Adds a member to the error object. */
    Failure& with(const char* key, const Json& value);
    /** Lines for a person below the message. */
    Failure& withLines(std::vector<std::string> lines);
    const std::vector<std::string>& lines() const { return m_lines; }
    /** {"code", "name", "message", what with() added}. */
    Json json(Language language) const;

private:
    ExitCode m_exit;
    int m_code;
    std::string m_name;
    Words m_words;
    std::vector<std::string> m_values;
    std::vector<std::string> m_lines;
    std::shared_ptr<Json> m_more; // shared, because exceptions are copied
};

/** What the shell is told about a result of the library. */
ExitCode exitOf(int code);

/** The name of a result of the library, "" for one that only its toolkit knows. */
std::string nameOfCode(int code);

} // namespace host
