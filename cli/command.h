// SPDX-License-Identifier: Apache-2.0
// What the command line asked for, and the functions that do it: one per command, each of which writes its result to
// standard output and returns the exit status. Whatever ends a command early is thrown as a Failure (failure.h).
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zryaml::cli {

enum class Status : int {
    Found = 0,   // found, or valid
    Missing = 1, // nothing there, or invalid
    Misuse = 2,  // wrong use, an unreadable file, or a result that could not be written
};

enum class DiagnosticsFormat { Text, Json };

struct Options {
    std::string stFile;                // "-" is standard input
    std::vector<std::string> astFile;  // of check
    std::optional<std::string> stPath; // none: the whole document
    std::optional<std::string> stDefault;
    std::string stType; // "": no type is asked for
    DiagnosticsFormat eDiagnostics = DiagnosticsFormat::Text;
    bool bNull = false; // results end with NUL, and are written as they are
    bool bPretty = false;
    bool bRecursive = false;
    int iVerbose = 0;
};

using Command = Status (*)(const Options &);

Status GetRun(const Options &stOptions);
Status SizeRun(const Options &stOptions);
Status TypeRun(const Options &stOptions);
Status WhereRun(const Options &stOptions);
Status ListRun(const Options &stOptions);
Status KeysRun(const Options &stOptions);
Status CheckRun(const Options &stOptions);
Status DumpRun(const Options &stOptions);
Status JsonRun(const Options &stOptions);
Status StatsRun(const Options &stOptions);

} // namespace zryaml::cli
