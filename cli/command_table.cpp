// SPDX-License-Identifier: Apache-2.0
// One row for each command, and one for each option. The manual page and the completion must know them too, which
// completion_test.sh sees to.
#include "command_table.h"

namespace zryaml::cli {

namespace {

constexpr Command command_table[] = {
    {"get", "Print the text of a scalar", Arguments::file_and_path, get_run},
    {"size", "Print the number of elements of a sequence", Arguments::file_and_path, size_run},
    {"list", "Print the scalar pairs below a value: key, tab, text", Arguments::file_maybe_path, list_run},
    {"keys", "Print the key paths below a value", Arguments::file_maybe_path, keys_run},
    {"type", "Print scalar, map, sequence, or none if nothing is there", Arguments::file_maybe_path, type_run},
    {"where", "Print file:line:column of a value", Arguments::file_and_path, where_run},
    {"check", "Load files, report each that is not valid, and sum up", Arguments::files, check_run},
    {"diff", "Print what differs between two documents; exit status 1 if anything does", Arguments::two_files,
     diff_run},
    {"watch", "Print what changed each time a new valid version is there, and run what follows --",
     Arguments::file_and_command, watch_run},
    {"dump", "Print a picture of a document, for people", Arguments::file, dump_run},
    {"json", "Print a document or a value as JSON", Arguments::file_maybe_path, json_run},
    {"stats", "Print what loading a document took and what it holds", Arguments::file, stats_run},
};

constexpr Option option_table[] = {
    {"get", "--default", "TEXT", &Options::fallback, "Text to print if nothing is at PATH"},
    {"get", "--type", "int|uint|float|bool|duration|bytes|string", &Options::type,
     "Refuse a text that is not of this type"},
    {"get list keys", "-0,--null", "", &Options::null,
     "End each text with NUL instead of a newline, and write it as it is"},
    {"where", "--all", "", &Options::all, "Print the text too, and below it what the value took the place of"},
    {"keys", "-r,--recursive", "", &Options::recursive, "Print the paths of everything below the value"},
    {"check", "--schema", "SCHEMA", &Options::schema, "Check each document against a JSON Schema (draft-07)"},
    {"check", "--no-modeline", "", &Options::no_modeline, "Pass over schemas that documents name in their first line"},
    {"check", "--strict", "", &Options::strict, "Count warnings as errors"},
    {"json", "--typed", "", &Options::typed, "Write numbers, booleans and null as such; without it all are strings"},
    {"json", "--pretty", "", &Options::pretty, "Indent the output"},
    {"*", "--over", "FILE", &Options::over, "Lay FILE over the document; again and again, later ones win"},
    {"*", "--env", "PREFIX", &Options::environment, "Lay the variables over it that begin with PREFIX"},
    {"*", "--set", "PATH=TEXT", &Options::assignments, "Set the scalar at PATH, above all else"},
    {"*", "--expand", "", &Options::expand, "Replace ${NAME}, ${PATH} and ${...:-text} in the documents"},
    {"*", "--merge-forms", "", &Options::merge_forms, "Let << also merge sequences of aliases and maps in place"},
    {"*", "--redact", "PATTERN", &Options::redact, "Print *** for texts on key paths such as db.password or **.secret"},
    {"", "--diagnostics", "text|json|github|sarif", &Options::diagnostics,
     "How mistakes are told; json: one object a line; github, sarif: on standard output"},
    {"", "-v,--verbose", "", &Options::verbose,
     "Show the library's log records on standard error; twice: notes as well"},
};

} // namespace

std::span<const Command> commands() noexcept
{
    return command_table;
}

std::span<const Option> options() noexcept
{
    return option_table;
}

bool takes(const Command &command, const Option &option) noexcept
{
    if (option.commands == "*")
        return true;
    const std::string_view name = command.name;
    std::string_view rest = option.commands;
    while (!rest.empty()) {
        const std::string_view first = rest.substr(0, rest.find(' '));
        if (first == name)
            return true;
        rest.remove_prefix(first.size() + (first.size() < rest.size() ? 1 : 0));
    }
    return false;
}

} // namespace zryaml::cli
