// SPDX-License-Identifier: Apache-2.0
// Describes the tables of commands and options to CLI11, and turns its exceptions into the command's own.
#include "command_line.h"
#include "command_table.h"
#include "redact.h"
#include "usage.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>
#include <zr_yaml.h>

namespace zryaml::cli {

namespace {

constexpr const char *footer = "FILE is a path, or - for standard input. PATH is a key path such as servers[0].port.\n"
                               "Exit status: 0 found or valid, 1 missing or invalid, 2 wrong use or unreadable file.";

std::string version_text()
{
    return std::string("zryaml " ZRYAML_COMMAND_VERSION "\nlibzryaml ") + g_pcYAMLOuterVer + " (module " +
           g_pcYAMLMiniVer + ", internal " + g_pcYAMLInterSubVer + ")";
}

// Refuses what is none of the choices "a|b|c".
std::string choice_check(const std::string &choices, const std::string &given)
{
    std::string_view rest = choices;
    for (size_t end = 0; end != std::string_view::npos; rest.remove_prefix(std::min(rest.size(), end + 1))) {
        end = rest.find('|');
        if (rest.substr(0, end) == given)
            return {};
    }
    return "'" + given + "' is none of " + choices;
}

// Binds an option to the member that it fills. CLI11 gets functions, not members: it would take an empty text for none.
struct OptionBind {
    CLI::App &app;
    const Option &option;
    Options &options;

    CLI::Option *operator()(bool Options::*target) const
    {
        return app.add_flag(option.names, options.*target, option.help);
    }
    CLI::Option *operator()(int Options::*target) const
    {
        return app.add_flag_function(
            option.names, [this_options = &options, target](int64_t count) { this_options->*target = int(count); },
            option.help);
    }
    CLI::Option *operator()(std::vector<std::string> Options::*target) const
    {
        return app
            .add_option_function<std::vector<std::string>>(
                option.names,
                [this_options = &options, target](const std::vector<std::string> &texts) {
                    this_options->*target = texts;
                },
                option.help)
            ->expected(1)
            ->take_all()
            ->allow_extra_args(false);
    }
    template <class Text> CLI::Option *operator()(Text Options::*target) const
    {
        return app.add_option_function<std::string>(
            option.names, [this_options = &options, target](const std::string &text) { this_options->*target = text; },
            option.help);
    }
};

void option_add(CLI::App &app, const Option &option, Options &options)
{
    CLI::Option *added = std::visit(OptionBind{app, option, options}, option.target);
    const std::string values = option.values;
    if (option.commands == "*")
        added->group("Layers and what is shown of them");
    if (!values.empty())
        added->type_name(values);
    if (values.find('|') != std::string::npos)
        added->check([values](const std::string &given) { return choice_check(values, given); });
}

void arguments_add(CLI::App &app, Arguments arguments, Options &options)
{
    const auto file_add = [&](const char *name, const char *help) {
        app.add_option_function<std::string>(
               name, [&options](const std::string &file) { options.files.push_back(file); }, help)
            ->required()
            ->type_name("");
    };
    if (arguments == Arguments::files) {
        app.add_option("FILE", options.files, "YAML files")->required()->type_name("");
        return;
    }
    if (arguments == Arguments::two_files) {
        file_add("OLD", "YAML file");
        file_add("NEW", "YAML file that may differ");
        return;
    }
    file_add("FILE", "YAML file");
    if (arguments == Arguments::file || arguments == Arguments::file_and_command)
        return;
    const bool required = arguments == Arguments::file_and_path;
    app.add_option_function<std::string>(
           "PATH", [&options](const std::string &path) { options.path = path; },
           required ? "Key path" : "Key path; without it the whole document")
        ->required(required)
        ->type_name("");
}

void command_add(CLI::App &app, const Command &command, Invocation &invocation)
{
    CLI::App *added = app.add_subcommand(command.name, command.help);
    arguments_add(*added, command.arguments, invocation.options);
    for (const Option &option : options()) {
        if (takes(command, option))
            option_add(*added, option, invocation.options);
    }
    added->fallthrough(); // the common options may follow the command
    added->footer(footer);
    added->callback([&invocation, &command] { invocation.command = &command; });
}

bool takes_value(std::string_view name)
{
    return std::ranges::any_of(options(),
                               [&](const Option &option) { return option.values[0] != '\0' && name == option.names; });
}

bool takes(std::string_view name, Arguments arguments)
{
    return std::ranges::any_of(
        commands(), [&](const Command &command) { return command.arguments == arguments && name == command.name; });
}

// Arguments that CLI11 would misread. It takes what follows "--default=" for the value where an empty one is meant, so
// that is told in two arguments; and among several files a name such as [a,b] for a list of two, so that gets a folder.
// What a command is to run is taken out.
std::vector<std::string> arguments_prepare(const std::vector<std::string> &arguments, std::vector<std::string> &to_run)
{
    std::vector<std::string> prepared;
    std::optional<std::string_view> name; // of the command; not known before it
    bool may_be_option = true;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        may_be_option = may_be_option && *argument != "--";
        if (!may_be_option && takes(name.value_or(""), Arguments::file_and_command)) {
            to_run.assign(std::next(argument), arguments.end());
            break;
        }
        if (may_be_option && argument->ends_with('=') && takes_value(argument->substr(0, argument->size() - 1))) {
            prepared.push_back(argument->substr(0, argument->size() - 1));
            prepared.emplace_back();
        } else if (may_be_option && takes_value(*argument) && std::next(argument) != arguments.end()) {
            prepared.push_back(*argument);
            prepared.push_back(*++argument); // whatever it looks like
        } else {
            const bool list =
                takes(name.value_or(""), Arguments::files) && argument->starts_with('[') && argument->ends_with(']');
            prepared.push_back((list ? "./" : "") + *argument);
            if (!name && !argument->starts_with('-'))
                name = *argument;
        }
    }
    return prepared;
}

// The command that was recognised; NULL if none was.
const Command *command_of(const CLI::App &app)
{
    const std::vector<CLI::App *> given = app.get_subcommands();
    const auto command = std::ranges::find_if(
        commands(), [&](const Command &one) { return !given.empty() && given.front()->get_name() == one.name; });
    return command != commands().end() ? &*command : nullptr;
}

} // namespace

Invocation command_line_read(const std::vector<std::string> &arguments)
{
    Invocation invocation;
    CLI::App app("Reads YAML configuration files: values by key path, checks, JSON.", "zryaml");
    app.require_subcommand(1);
    app.footer(footer);
    app.set_version_flag("--version", version_text, "Print the versions of command and library");
    for (const Option &option : options()) {
        if (option.commands.empty())
            option_add(app, option, invocation.options);
    }
    for (const Command &command : commands())
        command_add(app, command, invocation);
    std::vector<std::string> reversed = arguments_prepare(arguments, invocation.options.command);
    std::ranges::reverse(reversed); // as CLI11 wants them
    try {
        app.parse(std::move(reversed));
    } catch (const CLI::CallForVersion &version) {
        invocation.text = std::string(version.what()) + '\n';
    } catch (const CLI::Success &) {
        const std::vector<CLI::App *> given = app.get_subcommands();
        invocation.text = given.empty() ? app.help() : given.front()->help("zryaml");
    } catch (const CLI::ParseError &error) {
        throw usage_failure(command_of(app), app.remaining(true), error.what());
    }
    (void)patterns_read(invocation.options.redact); // a wrong one is told before anything is printed
    return invocation;
}

} // namespace zryaml::cli
