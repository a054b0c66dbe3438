// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What --help prints, from the rows of the table.
#include "options.h"
#include "text.h"

#include <algorithm>

namespace host {

namespace {

constexpr std::size_t lineWidth = 100;

constexpr Words about{"Korean PKI certificates without a display: list, check, sign, encrypt.",
    "화면 없이 쓰는 공동인증서 도구: 목록, 검사, 서명, 암호화."};
constexpr Words usage{"Usage", "사용법"};
constexpr Words commandsTitle{"Commands", "명령"};
constexpr Words argumentsTitle{"Arguments", "인자"};
constexpr Words optionsTitle{"Options", "옵션"};
constexpr Words globalTitle{"Global options, before or after the command", "전체 옵션 (명령의 앞이나 뒤)"};
constexpr Words exampleTitle{"Example", "예"};
constexpr Words folderTitle{"Library folder", "라이브러리 폴더"};

/** @p text in lines of at most @p width columns, each but the first behind @p indent blanks. */
std::string wrapped(const std::string& text, std::size_t indent, std::size_t width)
{
    std::string result;
    std::size_t at = indent;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        const std::string word = text.substr(start, end - start);
        if (at > indent && at + 1 + columns(word) > width) {
            result.append("\n").append(indent, ' ');
            at = indent;
        } else if (at > indent) {
            result += ' ';
            ++at;
        }
        result += word;
        at += columns(word);
        start = end + 1;
    }
    return result;
}

struct Row {
    std::string left, right;
};

std::string titled(const std::string& title, const std::vector<Row>& rows)
{
    if (rows.empty())
        return {};
    std::size_t widest = 0;
    for (const Row& row : rows)
        widest = std::max(widest, columns(row.left));
    std::string result = "\n" + title + ":\n";
    for (const Row& row : rows)
        result.append("  ")
            .append(row.left)
            .append(widest - columns(row.left) + 2, ' ')
            .append(wrapped(row.right, widest + 4, lineWidth))
            .append("\n");
    return result;
}

std::vector<Row> rowsOf(const std::vector<Option>& options, Language language)
{
    std::vector<Row> rows;
    rows.reserve(options.size());
    for (const Option& option : options)
        rows.push_back({*option.valueName ? std::string(option.name) + " " + option.valueName : option.name,
            option.help.in(language)});
    return rows;
}

std::string synopsis(const Command& command)
{
    std::string line = std::string("sigildesk ") + command.name;
    for (const Argument& argument : command.arguments) {
        const std::string name = argument.many ? std::string(argument.name) + "..." : argument.name;
        line += argument.required ? " " + name : " [" + name + "]";
    }
    return line + " [OPTIONS]";
}

std::string commandHelp(const Command& command, Language language)
{
    std::vector<Row> arguments;
    for (const Argument& argument : command.arguments)
        arguments.push_back({argument.name, argument.help.in(language)});
    return wrapped(command.help.in(language), 0, lineWidth) + "\n\n" + usage.in(language) + ": " +
        synopsis(command) + "\n" + titled(argumentsTitle.in(language), arguments) +
        titled(optionsTitle.in(language), rowsOf(command.options, language)) + "\n" + exampleTitle.in(language) +
        ":\n  " + command.example + "\n";
}

std::string programHelp(Language language)
{
    std::vector<Row> rows;
    for (const Command& command : commands())
        rows.push_back({command.name, command.help.in(language)});
    return std::string(about.in(language)) + "\n\n" + usage.in(language) +
        ": sigildesk [GLOBAL OPTIONS] COMMAND [OPTIONS] [ARGUMENTS]\n" + titled(commandsTitle.in(language), rows);
}

} // namespace

std::string helpText(const Command* command, Language language, const std::string& folder)
{
    return (command ? commandHelp(*command, language) : programHelp(language)) +
        titled(globalTitle.in(language), rowsOf(globalOptions(), language)) + "\n" + folderTitle.in(language) +
        ": " + folder + "\n";
}

} // namespace host
