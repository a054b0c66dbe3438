// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "options.h"

#include "jobs/failure.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>

namespace host {

namespace {

constexpr Words noCommand{"a command is needed; \"sigildesk --help\" lists them",
    "명령이 필요합니다. \"sigildesk --help\"가 모두 보여 줍니다"};
constexpr Words unknownCommand{"{} is no command; \"sigildesk --help\" lists them",
    "{}은(는) 없는 명령입니다. \"sigildesk --help\"가 모두 보여 줍니다"};
constexpr Words notExpected{"{} is not expected here; \"{} --help\" tells what is",
    "{}은(는) 여기에 쓸 수 없습니다. \"{} --help\"를 보십시오"};
constexpr Words missing{"{} is required", "{} 인자가 필요합니다"};
constexpr Words needsValue{"{} needs a value", "{} 옵션에는 값이 필요합니다"};
constexpr Words takesNoValue{"{} takes no value", "{} 옵션에는 값을 줄 수 없습니다"};
constexpr Words noneOf{"{}: {} is none of: {}", "{}: {}은(는) 다음 가운데 하나가 아닙니다: {}"};
constexpr Words noNumber{"{}: {} is not a number", "{}: {}은(는) 숫자가 아닙니다"};

using Choices = std::vector<const char*>;

[[noreturn]] void refuse(const Words& words, std::vector<std::string> values = {})
{
    throw Failure(wrongUse, "wrong_use", words, std::move(values));
}

void checkWord(const char* name, const Choices& choices, const std::string& word)
{
    const auto known = [&](const char* choice) { return word == choice; };
    if (std::any_of(choices.begin(), choices.end(), known))
        return;
    std::string all;
    for (const char* choice : choices)
        all.append(all.empty() ? "" : ", ").append(choice);
    refuse(noneOf, {name, word, all});
}

void checkNumber(const char* name, const std::string& text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 0)
        refuse(noNumber, {name, text});
}

/** @param row  an option or an argument, of which @p text is a value */
template <class Row>
void checkValue(const Row& row, const std::string& text)
{
    if (row.value == Value::Word)
        checkWord(row.name, row.choices, text);
    if (row.value == Value::Words)
        for (const std::string& word : CLI::detail::split(text + ',', ',')) // without it, an empty last one is lost
            checkWord(row.name, row.choices, word);
    if (row.value == Value::Number)
        checkNumber(row.name, text);
}

template <class Row>
void checkValues(const Row& row, const Arguments& arguments)
{
    if (row.value != Value::None)
        for (const std::string& text : arguments.all(row.name))
            checkValue(row, text);
}

void addOption(CLI::App& app, const Option& option)
{
    if (option.value == Value::None) {
        app.add_flag(option.name)->disable_flag_override();
        return;
    }
    CLI::Option* added = app.add_option(option.name)->type_name(option.valueName);
    if (option.many)
        added->expected(1, -1)->allow_extra_args();
    else
        added->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void addArgument(CLI::App& app, const Argument& argument)
{
    CLI::Option* added = app.add_option(argument.name);
    if (argument.many)
        added->expected(1, -1)->allow_extra_args();
}

/** The rows as the parser knows them. */
void describe(CLI::App& app)
{
    app.set_help_flag("--help,-h");
    app.set_version_flag("--version", "");
    app.require_subcommand(0, 1);
    for (const Option& option : globalOptions())
        if (!app.get_option_no_throw(option.name))
            addOption(app, option);
    for (const Command& command : commands()) {
        CLI::App* sub = app.add_subcommand(command.name)->fallthrough();
        sub->set_help_flag("--help,-h");
        for (const Argument& argument : command.arguments)
            addArgument(*sub, argument);
        for (const Option& option : command.options)
            addOption(*sub, option);
    }
}

void take(Arguments& arguments, const CLI::App& app)
{
    for (const CLI::Option* option : app.get_options())
        if (option->count() > 0)
            arguments.add(option->get_positional() ? option->get_name(true) : "--" + option->get_lnames().front(),
                option->results());
}

/** What the parser does not say in every language, it does not check. */
void check(const Arguments& arguments)
{
    for (const Option& option : globalOptions())
        checkValues(option, arguments);
    if (!arguments.command)
        refuse(noCommand);
    for (const Option& option : arguments.command->options)
        checkValues(option, arguments);
    for (const Argument& argument : arguments.command->arguments) {
        if (argument.required && !arguments.has(argument.name))
            refuse(missing, {argument.name});
        checkValues(argument, arguments);
    }
}

[[noreturn]] void refuseExtra(const CLI::App& app)
{
    const std::string word = app.remaining(true).front();
    const std::vector<const CLI::App*> subs = app.get_subcommands({});
    const auto given = std::find_if(subs.begin(), subs.end(), [](const CLI::App* sub) { return sub->parsed(); });
    if (given == subs.end() && !word.starts_with('-'))
        refuse(unknownCommand, {word});
    refuse(notExpected, {word, given == subs.end() ? "sigildesk" : "sigildesk " + (*given)->get_name()});
}

/** An option without its value, or with one that it does not take. What the parser says begins with its name. */
[[noreturn]] void refuseValue(const CLI::ParseError& mistake)
{
    const std::string text = mistake.what();
    const std::size_t start = text.find_first_not_of('-');
    refuse(text.ends_with("missing") ? needsValue : takesNoValue,
        {"--" + text.substr(start, text.find_first_of(": ", start) - start)});
}

} // namespace

std::string Arguments::text(const std::string& name) const
{
    const auto found = m_values.find(name);
    return found == m_values.end() ? std::string() : found->second.back();
}

std::vector<std::string> Arguments::all(const std::string& name) const
{
    const auto found = m_values.find(name);
    return found == m_values.end() ? std::vector<std::string>() : found->second;
}

int Arguments::number(const std::string& name) const { return std::stoi(text(name)); }

void Arguments::add(const std::string& name, const std::vector<std::string>& values) { m_values[name] = values; }

Arguments parse(int count, char** words)
{
    CLI::App app;
    describe(app);
    Arguments arguments;
    try {
        app.parse(count, words);
    } catch (const CLI::CallForHelp&) {
        arguments.helpWanted = true;
    } catch (const CLI::CallForVersion&) {
        arguments.versionWanted = true;
    } catch (const CLI::ExtrasError&) {
        refuseExtra(app);
    } catch (const CLI::ParseError& mistake) {
        refuseValue(mistake);
    }
    take(arguments, app);
    for (const CLI::App* sub : app.get_subcommands()) {
        take(arguments, *sub);
        const auto isCommand = [&](const Command& command) { return sub->get_name() == command.name; };
        arguments.command = &*std::find_if(commands().begin(), commands().end(), isCommand);
    }
    if (!arguments.helpWanted && !arguments.versionWanted)
        check(arguments);
    return arguments;
}

} // namespace host
