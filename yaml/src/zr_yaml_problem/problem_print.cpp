// SPDX-License-Identifier: Apache-2.0
// Prints problems as compilers do, so that editors can jump to them. Nothing of a document or a file name reaches the
// terminal as a control character or turns the direction of a line.
#include <zr_yaml_problem.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

namespace {

struct Character {
    uint32_t code;
    size_t length; // 0: the first byte begins no character
};

// The first character of a text that is not empty, by strict UTF-8.
Character CharacterOf(std::string_view text) noexcept
{
    constexpr uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return {lead, 1};
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || length > text.size())
        return {lead, 0};
    uint32_t code = lead & (0x7FU >> length);
    for (size_t at = 1; at < length; ++at) {
        const auto next = static_cast<unsigned char>(text[at]);
        if ((next & 0xC0U) != 0x80U)
            return {lead, 0};
        code = code << 6U | (next & 0x3FU);
    }
    const bool valid = code >= least[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    return valid ? Character{code, length} : Character{lead, 0};
}

struct CodeRange {
    uint32_t first, last;
};
constexpr CodeRange g_hidden[] = {
    {0x00, 0x1F}, {0x7F, 0x9F}, {0x61C, 0x61C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF},
};

bool IsHidden(uint32_t code) noexcept
{
    return std::any_of(std::begin(g_hidden), std::end(g_hidden),
                       [code](const CodeRange &range) { return code >= range.first && code <= range.last; });
}

void VisiblePrint(FILE *file, std::string_view text) noexcept
{
    while (!text.empty()) {
        const Character character = CharacterOf(text);
        const size_t length = std::max<size_t>(character.length, 1);
        if (character.length != 0 && !IsHidden(character.code))
            (void)fwrite(text.data(), 1, length, file);
        else if (character.code == '\n' || character.code == '\t')
            (void)fputs(character.code == '\n' ? "\\n" : "\\t", file);
        else
            (void)fprintf(file, character.length < 2 ? "\\x%02x" : "\\u%04x", static_cast<unsigned>(character.code));
        text.remove_prefix(length);
    }
}

void LinePrint(FILE *file, const YamlProblem &problem, uint32_t line, uint32_t column, const char *level) noexcept
{
    VisiblePrint(file, problem.pcSource[0] != '\0' ? problem.pcSource : "configuration");
    if (line != 0)
        (void)fprintf(file, ":%u:%u", line, column);
    (void)fprintf(file, ": %s: ", level);
}

void ProblemPrint(FILE *file, const YamlProblem &problem) noexcept
{
    constexpr const char *levels[] = {"error", "warning", "note"};
    LinePrint(file, problem, problem.uiLine, problem.uiColumn, levels[std::min(problem.uiLevel, YAML_PROBLEM_NOTE)]);
    if (problem.pcPath[0] != '\0') {
        VisiblePrint(file, problem.pcPath);
        (void)fputs(": ", file);
    }
    VisiblePrint(file, problem.pcMessage);
    (void)fputc('\n', file);
    if (problem.pcHint[0] != '\0') {
        LinePrint(file, problem, problem.uiLine, problem.uiColumn, "note");
        VisiblePrint(file, problem.pcHint);
        (void)fputc('\n', file);
    }
    if (problem.uiFirstLine != 0) {
        LinePrint(file, problem, problem.uiFirstLine, problem.uiFirstColumn, "note");
        (void)fputs(problem.uiCode == YAML_ERR_SAME ? "the first one is here\n" : "it is written here\n", file);
    }
}

} // namespace

void ZRYAML_ProblemsPrint(const YamlProblems *pstProblems, FILE *pstFile)
{
    if (pstFile == nullptr)
        return;
    for (uint32_t number = 0; const YamlProblem *problem = ZRYAML_ProblemGet(pstProblems, number); ++number)
        ProblemPrint(pstFile, *problem);
}
