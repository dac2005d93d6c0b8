// SPDX-License-Identifier: Apache-2.0
// Finds what was probably meant among the names in the tables.
#include "usage.h"

#include <algorithm>

namespace zryaml::cli {

namespace {

using Names = std::vector<const char *>;

Names command_names()
{
    Names names;
    for (const Command &command : commands())
        names.push_back(command.name);
    return names;
}

// The long names of the options that may stand behind a command.
Names option_names(const Command *command)
{
    Names names;
    for (const Option &option : options()) {
        const std::string_view all = option.names;
        if (option.commands.empty() || (command != nullptr && takes(*command, option)))
            names.push_back(option.names + all.find("--"));
    }
    return names;
}

// Whether a name is one of an option's, "-r,--recursive".
bool is_named(const Option &option, const std::string &name)
{
    return (',' + std::string(option.names) + ',').find(',' + name + ',') != std::string::npos;
}

// The option that was meant but stands before its command, where only the common ones may; NULL if there is none.
// Behind the command it would have been taken.
const Option *early_option(const Command *command, const std::string &name)
{
    for (const Option &option : options()) {
        const bool taken = command == nullptr || takes(*command, option);
        if (!option.commands.empty() && taken && is_named(option, name))
            return &option;
    }
    return nullptr;
}

Diagnostic early_diagnostic(const Command *command, const Option &option, const std::string &name)
{
    Diagnostic diagnostic;
    diagnostic.message = "the option '" + name + "' stands before the command";
    diagnostic.hint = std::string("write it behind: zryaml ") + (command != nullptr ? command->name : "COMMAND") +
                      " ... " + name + (option.values[0] != '\0' ? " " : "") + option.values;
    return diagnostic;
}

// The way out: the one name that is clearly nearest, or the help.
std::string way_out(const Command *command, const std::string &wrong, const Names &names)
{
    const char *nearest = ZRYAML_NearestTextGet(wrong.c_str(), names.data(), static_cast<uint32_t>(names.size()));
    if (nearest != nullptr)
        return std::string("did you mean '") + nearest + "'?";
    return std::string("see zryaml ") + (command != nullptr ? std::string(command->name) + ' ' : "") + "--help";
}

} // namespace

Failure usage_failure(const Command *command, const std::vector<std::string> &unexpected, std::string message)
{
    const auto option = std::ranges::find_if(
        unexpected, [](const std::string &argument) { return argument.size() > 1 && argument.starts_with('-'); });
    std::string wrong;
    Names names;
    if (option != unexpected.end()) {
        wrong = option->substr(0, option->find('='));
        if (const Option *early = early_option(command, wrong))
            return {Status::misuse, early_diagnostic(command, *early, wrong)};
        names = option_names(command);
        message =
            "there is no option '" + wrong + '\'' + (command != nullptr ? std::string(" for ") + command->name : "");
    } else if (!unexpected.empty() && command == nullptr) {
        wrong = unexpected.front();
        names = command_names();
        message = "there is no command '" + wrong + '\'';
    } else if (!unexpected.empty()) {
        message = '\'' + unexpected.front() + "' is one argument too many";
    }
    Diagnostic diagnostic;
    diagnostic.message = std::move(message);
    diagnostic.hint = way_out(command, wrong, names);
    return {Status::misuse, std::move(diagnostic)};
}

} // namespace zryaml::cli
