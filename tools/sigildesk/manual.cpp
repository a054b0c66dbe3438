// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// manual: the man page, made of the table.
#include "commands.h"

#include "jobs/failure.h"

#include <nlohmann/json.hpp>

#include <sstream>

namespace host {

namespace {

/** Text for troff: hyphens stay hyphens. No text of the table has a backslash or begins a line with a request. */
std::string roff(const std::string& text)
{
    std::string result;
    for (const char c : text)
        result += c == '-' ? std::string("\\-") : std::string(1, c);
    return result;
}

std::string tagged(const std::string& tag, const std::string& text)
{
    return ".TP\n.B " + roff(tag) + "\n" + roff(text) + "\n";
}

std::string section(const char* title, const std::string& text)
{
    return std::string(".SH ") + title + "\n" + text;
}

std::string optionsText(const std::vector<Option>& options)
{
    std::string text;
    for (const Option& option : options)
        text += tagged(*option.valueName ? std::string(option.name) + " " + option.valueName : option.name,
            option.help.english);
    return text;
}

std::string synopsis(const Command& command)
{
    std::string text = command.name;
    for (const Argument& argument : command.arguments) {
        const std::string name = std::string(argument.name) + (argument.many ? "..." : "");
        text += argument.required ? " " + name : " [" + name + "]";
    }
    return text + " [OPTIONS]";
}

std::string commandText(const Command& command)
{
    std::string text = ".SS " + roff(synopsis(command)) + "\n" + roff(command.help.english) + "\n";
    for (const Argument& argument : command.arguments)
        text += tagged(argument.name, argument.help.english);
    text += optionsText(command.options);
    text += ".PP\nExample:\n.PP\n.nf\n.RS\n" + roff(command.example) + "\n.RE\n.fi\n";
    return text + ".PP\nWith \\-\\-json:\n.PP\n.RS\n" + roff(command.document) + "\n.RE\n";
}

constexpr char secretsText[] = "A password is never taken from the command line or the environment. It comes from "
                               "the first of these: the descriptor of "
                               "--password-fd, the file of --password-file (refused when others can read it), the "
                               "program that the environment variable "
                               "SIGILDESK_ASKPASS names (its first output line), a prompt on the terminal. A new "
                               "password comes from --new-password-fd, "
                               "--new-password-file or two prompts that must agree, the identity number from "
                               "--identity-fd, --identity-file or a prompt. "
                               "Without any of them the exit status is 2.";

constexpr char jsonText[] = "With --json standard output holds one JSON document and nothing else. Keys are in "
                            "snake_case, times in ISO 8601 with their "
                            "zone, bytes in base64. A failure is a document too: {\"error\": {\"code\": N, "
                            "\"name\": \"...\", \"message\": \"...\"}}. A "
                            "certificate is {\"index\", \"name\", \"subject\", \"issuer\", \"issuer_name\", "
                            "\"serial\", \"use\", \"policy\", \"family\", "
                            "\"medium\", \"valid_from\", \"valid_to\", \"days_left\", \"expired\", \"has_key\", "
                            "\"has_km\", \"files\": {\"certificate\", "
                            "\"key\", \"km_certificate\", \"km_key\"}}.";

constexpr char filesText[] = "A file is written beside its place and renamed. Nothing is replaced without --force "
                             "(exit status 3). What holds a key has "
                             "mode 0600.";

std::string manualPage()
{
    std::string page = ".TH SIGILDESK 1 \"\" \"SigilDesk " SIGILDESK_VERSION "\" \"User Commands\"\n";
    page += section("NAME", "sigildesk \\- Korean PKI certificates without a display\n");
    page += section("SYNOPSIS", ".B sigildesk\n[GLOBAL OPTIONS] COMMAND [OPTIONS] [ARGUMENTS]\n");
    page += section("DESCRIPTION",
        roff("Lists, checks and uses the certificates of the NPKI, GPKI, MPKI and PPKI stores: on a desktop, over "
             "ssh, in "
             "cron and in a container.\n"));
    page += section("GLOBAL OPTIONS", "They stand before or after the command.\n" + optionsText(globalOptions()));
    std::string text;
    for (const Command& command : commands())
        text += commandText(command);
    page += section("COMMANDS", text);
    page += section("SECRETS", roff(secretsText) + "\n");
    page += section("JSON", roff(jsonText) + "\n");
    page += section("FILES", roff(filesText) + "\n");
    page += section("EXIT STATUS",
        tagged("0", "Done; yes.") + tagged("1", "No: nothing found, invalid, wrong password, cancelled.") +
            tagged("2", "Wrong use.") + tagged("3", "A failure: a toolkit's code, a file, a missing part."));
    page += section("ENVIRONMENT",
        tagged("SIGILDESK_ASKPASS", "A program that prints a password; it is given the question as its argument.") +
            tagged("LC_ALL, LC_MESSAGES, LANG", "The language of names and messages.") +
            tagged("NO_COLOR", "No colours unless --color asks for them."));
    return page;
}

} // namespace

int runManual(Session& session)
{
    const std::string page = manualPage();
    session.output.document({{"page", page}});
    session.output.raw(page);
    return done;
}

} // namespace host
