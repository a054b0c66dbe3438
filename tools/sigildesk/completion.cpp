// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// completion: scripts for three shells, made of the table.
#include "commands.h"

#include "jobs/failure.h"

#include <nlohmann/json.hpp>

#include <string_view>

namespace host {

namespace {

/** What is completed behind an option or in place of an argument. */
bool takesPath(Value value)
{
    return value == Value::File || value == Value::Folder || value == Value::Certificate;
}

std::string words(const std::vector<const char*>& choices)
{
    std::string text;
    for (const char* choice : choices)
        text.append(text.empty() ? "" : " ").append(choice);
    return text;
}

std::string commandNames()
{
    std::string text;
    for (const Command& command : commands())
        text.append(text.empty() ? "" : " ").append(command.name);
    return text;
}

std::string optionNames(const std::vector<Option>& options)
{
    std::string text;
    for (const Option& option : options)
        text.append(text.empty() ? "" : " ").append(option.name);
    return text;
}

/** The words that a command's first argument may be; empty when it may be anything. */
std::vector<const char*> argumentChoices(const Command& command)
{
    return command.arguments.empty() ? std::vector<const char*>() : command.arguments.front().choices;
}

/** Calls @p use for each option once, whichever command has it. */
template <class Use>
void forEachOption(Use use)
{
    std::string seen;
    const auto each = [&](const std::vector<Option>& options) {
        for (const Option& option : options)
            if (seen.find(std::string(" ") + option.name + " ") == std::string::npos) {
                seen.append(" ").append(option.name).append(" ");
                use(option);
            }
    };
    each(globalOptions());
    for (const Command& command : commands())
        each(command.options);
}

std::string bash()
{
    std::string script =
        "# bash completion of sigildesk\n"
        "_sigildesk()\n{\n"
        "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command= word\n"
        "    COMPREPLY=()\n"
        "    case $previous in\n";
    forEachOption([&](const Option& option) {
        if (option.value == Value::None)
            return;
        script.append("        ").append(option.name).append(") ");
        if (!option.choices.empty())
            script += "COMPREPLY=($(compgen -W '" + words(option.choices) + "' -- \"$current\")); ";
        else if (takesPath(option.value))
            script += option.value == Value::Folder ? "COMPREPLY=($(compgen -d -- \"$current\")); "
                                                    : "COMPREPLY=($(compgen -f -- \"$current\")); ";
        script += "return ;;\n";
    });
    script += "    esac\n"
              "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
              "        case \" " +
        commandNames() +
        " \" in *\" $word \"*) command=$word; break ;; esac\n"
        "    done\n"
        "    local options='" +
        optionNames(globalOptions()) + "' arguments=\n    case $command in\n        '') arguments='" +
        commandNames() + "' ;;\n";
    for (const Command& command : commands())
        script += std::string("        ") + command.name + ") options+=' " + optionNames(command.options) +
            "' arguments='" + words(argumentChoices(command)) + "' ;;\n";
    script += "    esac\n"
              "    if [[ $current == -* ]]; then\n"
              "        COMPREPLY=($(compgen -W \"$options\" -- \"$current\"))\n"
              "    elif [[ -n $arguments ]]; then\n"
              "        COMPREPLY=($(compgen -W \"$arguments\" -- \"$current\"))\n"
              "    else\n"
              "        COMPREPLY=($(compgen -f -- \"$current\"))\n"
              "    fi\n}\n"
              "complete -o filenames -F _sigildesk sigildesk\n";
    return script;
}

/** A text within single quotes. */
std::string singleQuoted(const std::string& text)
{
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

/** A description for zsh, in which brackets and colons have a meaning. */
std::string zshText(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (std::string_view("[]:\\").find(c) != std::string_view::npos)
            result += '\\';
        result += c;
    }
    return result;
}

std::string zshOption(const Option& option)
{
    std::string spec = std::string(option.many ? "*" : "") + option.name + "[" + zshText(option.help.english) + "]";
    if (option.value != Value::None) {
        spec += std::string(":") + zshText(option.valueName) + ":";
        if (!option.choices.empty())
            spec += "(" + words(option.choices) + ")";
        else if (takesPath(option.value))
            spec += option.value == Value::Folder ? "_files -/" : "_files";
    }
    return singleQuoted(spec);
}

std::string zshArguments(const Command& command)
{
    std::string text;
    for (const Argument& argument : command.arguments)
        text += " " +
            singleQuoted(std::string(argument.many   ? "*:"
                                 : argument.required ? ":"
                                                     : "::") +
                argument.name + ":" +
                (argument.choices.empty() ? std::string("_files") : "(" + words(argument.choices) + ")"));
    return text;
}

std::string zsh()
{
    std::string script = "#compdef sigildesk\n# zsh completion of sigildesk\n_sigildesk()\n{\n"
                         "    local context state line\n    local -a global commands\n    global=(\n";
    for (const Option& option : globalOptions())
        script += "        " + zshOption(option) + "\n";
    script += "    )\n    commands=(\n";
    for (const Command& command : commands())
        script += "        " + singleQuoted(std::string(command.name) + ":" + zshText(command.help.english)) + "\n";
    script += "    )\n    _arguments -C $global ':command:->command' '*::argument:->argument'\n"
              "    case $state in\n        command) _describe command commands ;;\n"
              "        argument)\n            case $words[1] in\n";
    for (const Command& command : commands()) {
        script += std::string("                ") + command.name + ") _arguments $global";
        for (const Option& option : command.options)
            script += " " + zshOption(option);
        script += zshArguments(command) + " ;;\n";
    }
    return script + "            esac ;;\n    esac\n}\n_sigildesk \"$@\"\n";
}

std::string fishOption(const Option& option, const std::string& condition)
{
    std::string line = "complete -c sigildesk" + condition + " -l " + (option.name + 2);
    if (option.value != Value::None)
        line += takesPath(option.value) ? " -r -F" : " -x";
    if (!option.choices.empty())
        line += " -a " + singleQuoted(words(option.choices));
    return line + " -d " + singleQuoted(option.help.english) + "\n";
}

std::string fish()
{
    std::string script = "# fish completion of sigildesk\n";
    for (const Option& option : globalOptions())
        script += fishOption(option, "");
    for (const Command& command : commands()) {
        const std::string seen = std::string(" -n '__fish_seen_subcommand_from ") + command.name + "'";
        script += "complete -c sigildesk -f -n __fish_use_subcommand -a " + std::string(command.name) + " -d " +
            singleQuoted(command.help.english) + "\n";
        for (const Option& option : command.options)
            script += fishOption(option, seen);
        if (const auto choices = argumentChoices(command); !choices.empty())
            script += "complete -c sigildesk -f" + seen + " -a " + singleQuoted(words(choices)) + "\n";
    }
    return script;
}

} // namespace

int runCompletion(Session& session)
{
    const std::string shell = session.arguments.text("SHELL");
    const std::string script = shell == "bash" ? bash() : shell == "zsh" ? zsh() : fish();
    session.output.document({{"shell", shell}, {"script", script}});
    session.output.raw(script);
    return done;
}

} // namespace host
