// SPDX-License-Identifier: Apache-2.0
// Reads sources whole. Lines end where the YAML 1.1 scanner ends them: at CR, LF, CR LF, NEL, LS and PS.
#include "source.h"
#include "failure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <zr_yaml.h>

namespace zryaml::cli {

namespace {

struct FileClose {
    void operator()(FILE *pstFile) const noexcept { (void)fclose(pstFile); }
};

// Reads on to the end, or until the text is larger than any that the library takes; false if reading failed.
bool TextRead(FILE *pstFile, std::string &stText)
{
    YamlLimits stLimits = {};
    ZRYAML_LimitsGet(&stLimits);
    char acPart[65536];
    size_t ulRead = 0;
    do {
        ulRead = fread(acPart, 1, sizeof(acPart), pstFile);
        stText.append(acPart, ulRead);
    } while (ulRead > 0 && stText.size() <= stLimits.ulFileBytes);
    return ferror(pstFile) == 0;
}

std::optional<std::string> RegularFileText(const std::string &stFile)
{
    struct stat stStatus = {};
    if (stat(stFile.c_str(), &stStatus) != 0 || !S_ISREG(stStatus.st_mode))
        return std::nullopt;
    const std::unique_ptr<FILE, FileClose> pstFile(fopen(stFile.c_str(), "rb"));
    std::string stText;
    if (pstFile == nullptr || !TextRead(pstFile.get(), stText))
        return std::nullopt;
    return stText;
}

// Length of the line end that a text begins with; 0 if it begins with none.
size_t LineEndLength(std::string_view svText)
{
    for (const std::string_view svEnd : {"\r\n", "\n", "\r", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        if (svText.starts_with(svEnd))
            return svEnd.size();
    }
    return 0;
}

size_t LineEndFind(std::string_view svText)
{
    size_t ulAt = 0;
    while (ulAt < svText.size() && LineEndLength(svText.substr(ulAt)) == 0)
        ++ulAt;
    return ulAt;
}

std::optional<std::string> LineOf(std::string_view svText, uint32_t uiLine)
{
    if (svText.starts_with("\xFF\xFE") || svText.starts_with("\xFE\xFF"))
        return std::nullopt; // UTF-16
    if (svText.starts_with("\xEF\xBB\xBF"))
        svText.remove_prefix(3); // the byte order mark is in no column
    for (uint32_t ui = 1; !svText.empty(); ++ui) {
        const size_t ulEnd = LineEndFind(svText);
        if (ui == uiLine)
            return std::string(svText.substr(0, ulEnd));
        svText.remove_prefix(ulEnd + LineEndLength(svText.substr(ulEnd)));
    }
    return std::nullopt;
}

} // namespace

const std::string &InputText()
{
    static std::optional<std::string> s_stText; // read once: it may be asked for again by a diagnostic
    if (s_stText)
        return *s_stText;
    std::string stText;
    if (!TextRead(stdin, stText)) {
        Diagnostic stDiagnostic;
        stDiagnostic.stFile = g_pcInputArgument;
        stDiagnostic.stMessage = std::string("cannot be read: ") + strerror(errno);
        stDiagnostic.uiCode = YAML_ERR_READER;
        throw Failure(Status::Misuse, std::move(stDiagnostic));
    }
    return s_stText.emplace(std::move(stText));
}

std::optional<std::string> SourceLine(const std::string &stFile, uint32_t uiLine)
{
    if (stFile == g_pcInputArgument)
        return LineOf(InputText(), uiLine);
    const std::optional<std::string> stText = RegularFileText(stFile);
    return stText ? LineOf(*stText, uiLine) : std::nullopt;
}

} // namespace zryaml::cli
