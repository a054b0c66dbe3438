#include "options.h"

#include "failure.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>

namespace host {

namespace {

constexpr Words wrongLine{"{}", "잘못 사용했습니다: {}"};

using Choices = std::vector<const char*>;

std::string validWord(const Choices& choices, const std::string& word)
{
    const auto known = [&](const char* choice) { return word == choice; };
    if (std::any_of(choices.begin(), choices.end(), known))
        return {};
    std::string all;
    for (const char* choice : choices)
        all.append(all.empty() ? "" : ", ").append(choice);
    return word + " is none of: " + all;
}

std::string validWords(const Choices& choices, const std::string& text)
{
    for (const std::string& word : CLI::detail::split(text, ','))
        if (std::string fault = validWord(choices, word); !fault.empty())
            return fault;
    return {};
}

std::string validNumber(const std::string& text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 0 ? "" : text + " is not a number";
}

/** The fault of a value, empty for none. */
std::string fault(Value value, const Choices& choices, const std::string& text)
{
    switch (value) {
    case Value::Word:
        return validWord(choices, text);
    case Value::Words:
        return validWords(choices, text);
    case Value::Number:
        return validNumber(text);
    default:
        return {};
    }
}

void addOption(CLI::App& app, const Option& option)
{
    if (option.value == Value::None) {
        app.add_flag(option.name);
        return;
    }
    CLI::Option* added = app.add_option(option.name)->type_name(option.valueName);
    added->check([option](const std::string& text) { return fault(option.value, option.choices, text); });
    if (option.many)
        added->expected(1, -1)->allow_extra_args();
    else
        added->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void addArgument(CLI::App& app, const Argument& argument)
{
    CLI::Option* added = app.add_option(argument.name)->required(argument.required);
    added->check([argument](const std::string& text) { return fault(argument.value, argument.choices, text); });
    if (argument.many)
        added->expected(1, -1)->allow_extra_args();
}

/** The rows as the parser knows them. */
void describe(CLI::App& app)
{
    app.set_help_flag("--help,-h");
    app.set_version_flag("--version", "");
    app.require_subcommand(1);
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

} // namespace

std::string Arguments::text(const std::string& name) const
{
    const auto found = m_values.find(name);
    return found == m_values.end() || found->second.empty() ? std::string() : found->second.back();
}

std::vector<std::string> Arguments::all(const std::string& name) const
{
    const auto found = m_values.find(name);
    return found == m_values.end() ? std::vector<std::string>() : found->second;
}

int Arguments::number(const std::string& name, int otherwise) const
{
    return has(name) ? std::stoi(text(name)) : otherwise;
}

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
    } catch (const CLI::ParseError& mistake) {
        throw Failure(wrongUse, "wrong_use", wrongLine, {mistake.what()});
    }
    take(arguments, app);
    for (const CLI::App* sub : app.get_subcommands()) {
        take(arguments, *sub);
        arguments.command = commandNamed(sub->get_name());
    }
    return arguments;
}

const Command* commandNamed(const std::string& name)
{
    const auto found = std::find_if(
        commands().begin(), commands().end(), [&](const Command& command) { return name == command.name; });
    return found == commands().end() ? nullptr : &*found;
}

} // namespace host
