// SPDX-License-Identifier: Apache-2.0
// Describes the commands and their options to CLI11, and turns its exceptions into the command's own.
#include "options.h"
#include "failure.h"
#include "typed_text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <zr_yaml.h>

namespace zryaml::cli {

namespace {

enum class Path { None, Optional, Required };

struct CommandInfo {
    const char *pcName;
    const char *pcHelp;
    Command pfnRun;
    Path ePath;
};
constexpr std::array g_astCommand = {
    CommandInfo{"get", "Print the text of a scalar", GetRun, Path::Required},
    CommandInfo{"size", "Print the number of elements of a sequence", SizeRun, Path::Required},
    CommandInfo{"list", "Print the scalar pairs below a value: key, tab, text", ListRun, Path::Optional},
    CommandInfo{"keys", "Print the key paths below a value", KeysRun, Path::Optional},
    CommandInfo{"type", "Print scalar, map, sequence, or none if nothing is there", TypeRun, Path::Optional},
    CommandInfo{"where", "Print file:line:column of a value", WhereRun, Path::Required},
    CommandInfo{"check", "Load files, report each that is not valid, and sum up", CheckRun, Path::None},
    CommandInfo{"dump", "Print a picture of a document, for people", DumpRun, Path::None},
    CommandInfo{"json", "Print a document or a value as JSON; every scalar is a string", JsonRun, Path::Optional},
    CommandInfo{"stats", "Print what loading a document took and what it holds", StatsRun, Path::None},
};

constexpr const char *g_pcFooter =
    "FILE is a path, or - for standard input. PATH is a key path such as servers[0].port.\n"
    "Exit status: 0 found or valid, 1 missing or invalid, 2 wrong use or unreadable file.";

std::string VersionText()
{
    return std::string("zryaml " ZRYAML_VERSION "\nlibzryaml ") + g_pcYAMLOuterVer + " (module " + g_pcYAMLMiniVer +
           ", internal " + g_pcYAMLInterSubVer + ")";
}

void TextOptionAdd(CLI::App &stApp, const char *pcName, std::optional<std::string> &stText, const char *pcHelp)
{
    // Not bound to the optional itself: an empty text would be taken for none.
    stApp.add_option_function<std::string>(
        pcName, [&stText](const std::string &stGiven) { stText = stGiven; }, pcHelp);
}

void OwnOptionsAdd(CLI::App &stApp, const CommandInfo &stInfo, Options &stOptions)
{
    if (stInfo.pfnRun == GetRun) {
        TextOptionAdd(stApp, "--default", stOptions.stDefault, "Text to print if nothing is at PATH");
        stApp.get_option("--default")->type_name("TEXT");
        stApp.add_option("--type", stOptions.stType, "Refuse a text that is not of this type")
            ->check([](const std::string &stType) {
                const std::vector<std::string_view> asvName = TypeNames();
                return std::ranges::count(asvName, stType) > 0 ? "" : "'" + stType + "' is no type";
            })
            ->type_name("int|uint|float|bool|duration|string");
    }
    if (stInfo.pfnRun == GetRun || stInfo.pfnRun == ListRun || stInfo.pfnRun == KeysRun)
        stApp.add_flag("-0,--null", stOptions.bNull,
                       "End each text with NUL instead of a newline, and write it as it is");
    if (stInfo.pfnRun == KeysRun)
        stApp.add_flag("-r,--recursive", stOptions.bRecursive, "Print the paths of everything below the value");
    if (stInfo.pfnRun == JsonRun)
        stApp.add_flag("--pretty", stOptions.bPretty, "Indent the output");
}

void ArgumentsAdd(CLI::App &stApp, const CommandInfo &stInfo, Options &stOptions)
{
    if (stInfo.pfnRun == CheckRun) {
        stApp.add_option("FILE", stOptions.astFile, "YAML files")->required()->type_name("");
        return;
    }
    stApp.add_option("FILE", stOptions.stFile, "YAML file")->required()->type_name("");
    if (stInfo.ePath == Path::None)
        return;
    TextOptionAdd(stApp, "PATH", stOptions.stPath,
                  stInfo.ePath == Path::Required ? "Key path" : "Key path; without it the whole document");
    stApp.get_option("PATH")->required(stInfo.ePath == Path::Required)->type_name("");
}

void CommandAdd(CLI::App &stApp, const CommandInfo &stInfo, Invocation &stInvocation)
{
    CLI::App *pstCommand = stApp.add_subcommand(stInfo.pcName, stInfo.pcHelp);
    ArgumentsAdd(*pstCommand, stInfo, stInvocation.stOptions);
    OwnOptionsAdd(*pstCommand, stInfo, stInvocation.stOptions);
    pstCommand->fallthrough(); // the common options may follow the command
    pstCommand->footer(g_pcFooter);
    pstCommand->callback([&stInvocation, pfnRun = stInfo.pfnRun] { stInvocation.pfnRun = pfnRun; });
}

void CommonOptionsAdd(CLI::App &stApp, Options &stOptions)
{
    stApp.add_flag_function(
        "-v,--verbose", [&stOptions](int64_t iCount) { stOptions.iVerbose = static_cast<int>(iCount); },
        "Show the library's log records on standard error; twice: notes as well");
    stApp
        .add_option_function<std::string>(
            "--diagnostics",
            [&stOptions](const std::string &stFormat) {
                stOptions.eDiagnostics = stFormat == "json" ? DiagnosticsFormat::Json : DiagnosticsFormat::Text;
            },
            "How mistakes are told; json: one object a line")
        ->check([](const std::string &stFormat) {
            return stFormat == "text" || stFormat == "json" ? "" : "'" + stFormat + "' is no format";
        })
        ->type_name("text|json");
    stApp.set_version_flag("--version", VersionText, "Print the versions of command and library");
}

// Two arguments that CLI11 would misread: it takes what follows "--default=" for the value where an empty one is meant,
// and among several files a name such as [a,b] for a list of two.
std::vector<std::string> ArgumentsPrepare(const std::vector<std::string> &astArgument)
{
    const auto stCommand = std::ranges::find_first_of(astArgument, g_astCommand, {}, {}, &CommandInfo::pcName);
    const bool bManyFiles = stCommand != astArgument.end() && *stCommand == "check";
    std::vector<std::string> astPrepared;
    bool bOptions = true;
    for (const std::string &stArgument : astArgument) {
        bOptions = bOptions && stArgument != "--";
        if (bOptions && stArgument.starts_with("--") && stArgument.find('=') == stArgument.size() - 1) {
            astPrepared.push_back(stArgument.substr(0, stArgument.size() - 1));
            astPrepared.emplace_back();
        } else {
            const bool bList = bManyFiles && stArgument.starts_with('[') && stArgument.ends_with(']');
            astPrepared.push_back((bList ? "./" : "") + stArgument);
        }
    }
    return astPrepared;
}

Failure UsageFailure(const CLI::App &stApp, const CLI::ParseError &stError)
{
    const std::vector<CLI::App *> apstGiven = stApp.get_subcommands();
    Diagnostic stDiagnostic;
    stDiagnostic.stMessage = stError.what();
    stDiagnostic.stHint = "see zryaml " + (apstGiven.empty() ? "" : apstGiven.front()->get_name() + ' ') + "--help";
    stDiagnostic.uiCode = YAML_ERR_PARAM;
    return {Status::Misuse, std::move(stDiagnostic)};
}

} // namespace

Invocation CommandLineRead(const std::vector<std::string> &astArgument)
{
    Invocation stInvocation;
    CLI::App stApp("Reads YAML configuration files: values by key path, checks, JSON.", "zryaml");
    stApp.require_subcommand(1);
    stApp.footer(g_pcFooter);
    CommonOptionsAdd(stApp, stInvocation.stOptions);
    for (const CommandInfo &stInfo : g_astCommand)
        CommandAdd(stApp, stInfo, stInvocation);
    std::vector<std::string> astReversed = ArgumentsPrepare(astArgument);
    std::ranges::reverse(astReversed); // as CLI11 wants them
    try {
        stApp.parse(std::move(astReversed));
    } catch (const CLI::CallForVersion &stVersion) {
        stInvocation.stText = std::string(stVersion.what()) + '\n';
    } catch (const CLI::Success &) {
        const std::vector<CLI::App *> apstGiven = stApp.get_subcommands();
        stInvocation.stText = apstGiven.empty() ? stApp.help() : apstGiven.front()->help("zryaml");
    } catch (const CLI::ParseError &stError) {
        throw UsageFailure(stApp, stError);
    }
    return stInvocation;
}

} // namespace zryaml::cli
