// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "command_line.h"

#include "library_folder.h"
#include "options.h"
#include "session.h"
#include "unfinished.h"

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <new>
#include <string_view>
#include <typeinfo>
#include <unistd.h>

namespace host {

namespace {

/** A closed standard descriptor would be the number of the first file that is opened. */
void occupyStandardDescriptors()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (fcntl(descriptor, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", O_RDONLY)); // what is printed into it fails, as it should
}

Language languageOfLocale()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* value = std::getenv(name); value && *value) // also a locale that the machine lacks
            return std::strncmp(value, "ko", 2) == 0 ? Language::Korean : Language::English;
    return Language::English;
}

bool isDumb()
{
    const char* terminal = std::getenv("TERM");
    return terminal && std::strcmp(terminal, "dumb") == 0;
}

bool colorWanted(std::string_view choice)
{
    return choice == "always" ||
        (choice != "never" && isatty(STDOUT_FILENO) != 0 && !isDumb() && !std::getenv("NO_COLOR"));
}

/** What is wanted of the output, told from the words alone: a line that cannot be parsed is told in that style too. */
OutputStyle styleOf(int count, char** words)
{
    OutputStyle style;
    style.language = languageOfLocale();
    std::string_view color = "auto";
    for (int i = 1; i < count && std::strcmp(words[i], "--") != 0; ++i) {
        const std::string_view word = words[i];
        const auto valueOf = [&](std::string_view option) -> std::string_view {
            if (word == option && i + 1 < count)
                return words[i + 1];
            const bool joined =
                word.starts_with(option) && word.size() > option.size() && word[option.size()] == '=';
            return joined ? word.substr(option.size() + 1) : std::string_view();
        };
        style.json = style.json || word == "--json";
        style.quiet = style.quiet || word == "--quiet";
        if (const std::string_view language = valueOf("--language"); !language.empty())
            style.language = language == "ko" ? Language::Korean : Language::English;
        if (const std::string_view choice = valueOf("--color"); !choice.empty())
            color = choice;
    }
    style.color = colorWanted(color);
    return style;
}

int run(int count, char** words, Output& output)
{
    const Arguments arguments = parse(count, words);
    Session session{
        {arguments.has("--folder") ? arguments.text("--folder") : installedFolder(),
            arguments.text("--toolkit") == "gpki" ? SIGIL_TOOLKIT_GPKI : SIGIL_TOOLKIT_MAKER, output.language()},
        arguments, output};
    if (arguments.helpWanted || arguments.versionWanted) {
        output.raw(arguments.versionWanted ? "sigildesk " SIGILDESK_VERSION "\n"
                                           : helpText(arguments.command, session.language(), session.folder));
        return done;
    }
    return arguments.command->run(session);
}

int runAndTell(int count, char** words, Output& output)
{
    constexpr Words unexpected{"{}", "{}"};
    try {
        const int result = run(count, words, output);
        output.finish();
        return result;
    } catch (const Failure& failure) {
        output.tell(failure);
        return failure.exit();
    } catch (const std::bad_alloc&) {
        output.tell(Failure::ofCode(SIGIL_NO_MEMORY));
        return failed;
    } catch (const std::exception& exception) {
        output.tell(Failure(failed, "failed", unexpected, {exception.what()}));
        return failed;
    }
}

int runToTheEnd(int count, char** words)
{
    Output output(styleOf(count, words));
    int result = runAndTell(count, words, output);
    try {
        output.finish();
    } catch (const Failure& failure) {
        if (!output.json())
            return failed; // told already, or what came of it
        std::cerr << "sigildesk: " << failure.message(output.language()) << '\n';
        result = failure.exit();
    }
    return result;
}

void sayShortage()
{
    constexpr std::string_view message = "sigildesk: out of memory\n";
    static_cast<void>(!write(STDERR_FILENO, message.data(), message.size()));
}

/** Of the libraries for JSON and for command lines some functions promise not to throw, but take memory: destructors too.
 *  Nothing is half done when the process ends here, as little as when it is killed. */
[[noreturn]] void endOfAnException()
{
    const std::type_info* const type = abi::__cxa_current_exception_type();
    if (!type || *type != typeid(std::bad_alloc))
        std::abort();
    removeUnfinished();
    sayShortage();
    _exit(failed);
}

} // namespace

int runCommandLine(int count, char** words)
{
    try {
        return runToTheEnd(count, words);
    } catch (const std::bad_alloc&) { // not even for the words
        sayShortage();
        return failed;
    }
}

void prepareProcess()
{
    occupyStandardDescriptors();
    // Alone: a machine may have the letters of a language without the language.
    static_cast<void>(std::setlocale(LC_CTYPE, ""));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN)); // a reader that went away is a write that fails
    std::set_terminate(endOfAnException);
}

} // namespace host
