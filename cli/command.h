// SPDX-License-Identifier: Apache-2.0
// What a command is, and what the command line asked it for. A command writes its result to standard output and returns
// its exit status (status.h); whatever ends it early is thrown as a Failure (failure.h). Adding a command takes a file
// in commands/ with its run function and a row in command_table.cpp, where its options are rows as well.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "status.h"

namespace zryaml::cli {

struct Options {
    std::vector<std::string> files;  // "-" is standard input
    std::optional<std::string> path; // none: the whole document
    std::optional<std::string> fallback;
    std::vector<std::string> command;     // what to run, behind --
    std::vector<std::string> over;        // files laid over the first
    std::vector<std::string> environment; // prefixes of variables
    std::vector<std::string> assignments; // PATH=TEXT
    std::vector<std::string> redact;      // key paths, with stars, of texts to hide
    std::optional<std::string> schema;    // file of a JSON Schema
    std::string type;                     // "": no type is asked for
    std::string diagnostics = "text";     // how mistakes are told
    bool all = false;                     // where: what is shadowed as well
    bool expand = false;                  // ${...} in the documents is replaced
    bool merge_forms = false;             // << takes a sequence or a map written in place
    bool no_modeline = false;             // a schema that a document names does not count
    bool null = false;                    // results end with NUL, and are written as they are
    bool pretty = false;
    bool recursive = false;
    bool review = false; // tell what a document probably does not mean
    bool strict = false; // warnings count as errors
    bool typed = false;  // numbers, booleans and null as such
    int verbose = 0;
};

// What stands behind the name of a command.
enum class Arguments { file, file_and_command, file_and_path, file_maybe_path, files, two_files };

struct Command {
    const char *name;
    const char *help;
    Arguments arguments;
    Status (*run)(const Options &);
};

Status check_run(const Options &options);
Status diff_run(const Options &options);
Status dump_run(const Options &options);
Status get_run(const Options &options);
Status json_run(const Options &options);
Status keys_run(const Options &options);
Status list_run(const Options &options);
Status size_run(const Options &options);
Status stats_run(const Options &options);
Status type_run(const Options &options);
Status watch_run(const Options &options);
Status where_run(const Options &options);

} // namespace zryaml::cli
