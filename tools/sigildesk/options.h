// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The table of commands and options: what is parsed, what --help says, what the man page and the completion scripts
 *  hold, all comes from these rows.
 */
#pragma once

#include "jobs/words.h"

#include <map>
#include <string>
#include <vector>

namespace host {

struct Session;

/** What may stand behind an option. */
enum class Value { None, Text, Number, File, Folder, Word, Words, Certificate };

struct Option {
    const char* name;      ///< "--out"
    const char* valueName; ///< "FILE"; empty for a switch
    Value value;
    Words help;
    std::vector<const char*> choices = {}; ///< of Value::Word and Value::Words (several, joined with commas)
    bool many = false;                     ///< may be given more than once, or with several values
};

/** What stands without a name behind the command. */
struct Argument {
    const char* name; ///< "CERT"
    Value value;
    Words help;
    bool required = true;
    bool many = false;
    std::vector<const char*> choices = {}; ///< of Value::Word
};

/** A command with everything that is its own. */
struct Command {
    const char* name;
    Words help;                      ///< one line
    std::vector<Argument> arguments; ///< in their order
    std::vector<Option> options;
    const char* example;  ///< a line for a shell
    const char* document; ///< what --json prints, in short
    int (*run)(Session&); ///< the exit code; throws Failure
};

/** Options of the program itself, which stand before or after the command. */
const std::vector<Option>& globalOptions();
/** All commands, in the order of the documents. */
const std::vector<Command>& commands();

/** What was typed. */
class Arguments {
public:
    /** Whether the option or argument was given. */
    bool has(const std::string& name) const { return m_values.count(name) > 0; }
    /** Its value, the last one when there are several; empty when it was not given. */
    std::string text(const std::string& name) const;
    /** All values. */
    std::vector<std::string> all(const std::string& name) const;
    /** The value of one that takes a number and was given. */
    int number(const std::string& name) const;

    /** @param values  one at least */
    void add(const std::string& name, const std::vector<std::string>& values);

    const Command* command = nullptr; ///< null when help or the version was asked for without one
    bool helpWanted = false;
    bool versionWanted = false;

private:
    std::map<std::string, std::vector<std::string>> m_values;
};

/** Takes a command line apart. Throws Failure (wrongUse) for one that the table does not allow. */
Arguments parse(int count, char** words);

/** The text of --help, of the program or of a command. */
std::string helpText(const Command* command, Language language, const std::string& folder);

} // namespace host
