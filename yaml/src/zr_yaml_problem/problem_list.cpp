// SPDX-License-Identifier: Apache-2.0
// The list of problems. Each problem has one block of the pool, record and texts together; what cannot be kept is
// counted, and a last problem tells how many.
#include "../node_tree.h"
#include "../problem.h"
#include "../value_source.h"

#include <zr_base.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

struct YamlProblems {
    YamlProblem **problems; // in the order in which they came
    uint32_t count;
    uint32_t room;
    uint32_t errors;   // added, whether kept or not
    uint32_t leftOut;  // beyond what a list keeps
    uint32_t starved;  // for want of memory
    YamlProblem last;  // counts if anything was left out
    char lastText[80]; // its sentence
};

namespace {

// What a caller gets who cannot even have a list.
constinit YamlProblems g_noMemory = {
    .problems = nullptr,
    .count = 0,
    .room = 0,
    .errors = 1,
    .leftOut = 0,
    .starved = 1,
    .last = {YAML_PROBLEM_ERROR, YAML_ERR_NOMEM, 0, 0, 0, 0, "", "", "there is no memory left to list the problems",
             ""},
    .lastText = {},
};

void *BlockTake(size_t size) noexcept
{
    if (size > UINT32_MAX || yaml_MemInit() != YAML_OK)
        return nullptr;
    return ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet());
}

bool IsFull(const YamlProblems &list) noexcept
{
    return list.leftOut + list.starved != 0;
}

bool RoomMake(YamlProblems &list) noexcept
{
    if (list.count < list.room)
        return true;
    const uint32_t room = list.room == 0 ? 8 : list.room * 2;
    auto **problems = static_cast<YamlProblem **>(BlockTake(room * sizeof(YamlProblem *)));
    if (problems == nullptr)
        return false;
    if (list.count != 0)
        memcpy(problems, list.problems, list.count * sizeof(YamlProblem *));
    if (list.problems != nullptr)
        ZR_MemFree(list.problems, yaml_MemHandleGet());
    list.problems = problems;
    list.room = room;
    return true;
}

// Counts a problem that is not kept, and says so in the last one, which is as grave as the gravest of them.
void LeaveOut(YamlProblems &list, uint32_t level, uint32_t &counter) noexcept
{
    const bool first = !IsFull(list);
    ++counter;
    if (list.starved != 0)
        (void)snprintf(list.lastText, sizeof(list.lastText), "there was no memory to list %u more problem%s",
                       list.starved + list.leftOut, list.starved + list.leftOut == 1 ? "" : "s");
    else
        (void)snprintf(list.lastText, sizeof(list.lastText), "%u more problem%s not listed", list.leftOut,
                       list.leftOut == 1 ? " is" : "s are");
    if (first || level < list.last.uiLevel)
        list.last.uiLevel = level;
    list.last.uiCode = list.starved != 0 ? YAML_ERR_NOMEM : YAML_ERR_RANGE;
    list.last.pcSource = list.last.pcPath = list.last.pcHint = "";
    list.last.pcMessage = list.lastText;
}

// A problem's record with room for its texts behind it.
class ProblemBlock {
public:
    explicit ProblemBlock(size_t textBytes) noexcept
        : problem_(static_cast<YamlProblem *>(BlockTake(sizeof(YamlProblem) + textBytes))),
          free_(reinterpret_cast<char *>(problem_ + 1)), end_(free_ + textBytes)
    {}
    [[nodiscard]] YamlProblem *Problem() const noexcept { return problem_; }

    const char *Copy(const char *text) noexcept
    {
        const size_t size = strlen(text) + 1;
        const char *copy = static_cast<const char *>(memcpy(free_, text, size));
        free_ += size;
        return copy;
    }
    __attribute__((format(printf, 2, 0))) const char *Format(const char *format, va_list arguments) noexcept
    {
        const char *text = free_;
        free_ += vsnprintf(free_, static_cast<size_t>(end_ - free_), format, arguments) + 1;
        return text;
    }
    const char *Path(const YamlListNode *value) noexcept
    {
        const char *text = free_;
        free_ += ZRYAML_ValuePathGet(value, static_cast<uint32_t>(end_ - free_), free_) + 1;
        return text;
    }

private:
    YamlProblem *problem_;
    char *free_;
    char *end_;
};

const char *TextOr(const char *text) noexcept
{
    return text != nullptr ? text : "";
}

// Makes room for one problem more, or counts it as not kept. Then there is nothing to do for the caller.
bool Accept(YamlProblems &list, uint32_t level) noexcept
{
    if (&list == &g_noMemory)
        return false;
    if (level == YAML_PROBLEM_ERROR)
        ++list.errors;
    if (list.count == YAML_PROBLEM_MAX || list.starved != 0)
        LeaveOut(list, level, list.count == YAML_PROBLEM_MAX ? list.leftOut : list.starved);
    else if (!RoomMake(list))
        LeaveOut(list, level, list.starved);
    else
        return true;
    return false;
}

uint32_t ResultOf(const YamlProblems &list) noexcept
{
    return list.starved != 0 ? YAML_ERR_NOMEM : YAML_OK;
}

__attribute__((format(printf, 3, 0))) uint32_t FindingAdd(YamlProblems &list, const zryaml::Finding &finding,
                                                          const char *format, va_list arguments) noexcept
{
    if (!Accept(list, finding.level))
        return ResultOf(list);
    va_list measured;
    va_copy(measured, arguments);
    const int length = vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    const YamlListNode *place = finding.place != nullptr ? finding.place : finding.value;
    const char *source = zryaml::SourceNameOf(place);
    const size_t textBytes = strlen(source) + ZRYAML_ValuePathGet(finding.value, 0, nullptr) +
                             static_cast<size_t>(length < 0 ? 0 : length) + strlen(finding.hint) + 4;
    ProblemBlock block(textBytes);
    YamlProblem *problem = block.Problem();
    if (problem == nullptr) {
        LeaveOut(list, finding.level, list.starved);
        return YAML_ERR_NOMEM;
    }
    *problem = {};
    problem->uiLevel = finding.level;
    problem->uiCode = finding.code;
    ZRYAML_ValuePositionGet(place, &problem->uiLine, &problem->uiColumn);
    ZRYAML_ValueWrittenGet(place, &problem->uiFirstLine, &problem->uiFirstColumn);
    problem->pcSource = block.Copy(source);
    problem->pcPath = block.Path(finding.value);
    problem->pcMessage = length < 0 ? block.Copy("") : block.Format(format, arguments);
    problem->pcHint = block.Copy(finding.hint);
    list.problems[list.count++] = problem;
    return YAML_OK;
}

uint32_t CopyAdd(YamlProblems &list, const YamlProblem &original) noexcept
{
    if (!Accept(list, original.uiLevel))
        return ResultOf(list);
    const char *texts[] = {TextOr(original.pcSource), TextOr(original.pcPath), TextOr(original.pcMessage),
                           TextOr(original.pcHint)};
    size_t textBytes = 0;
    for (const char *text : texts)
        textBytes += strlen(text) + 1;
    ProblemBlock block(textBytes);
    YamlProblem *problem = block.Problem();
    if (problem == nullptr) {
        LeaveOut(list, original.uiLevel, list.starved);
        return YAML_ERR_NOMEM;
    }
    *problem = original;
    problem->pcSource = block.Copy(texts[0]);
    problem->pcPath = block.Copy(texts[1]);
    problem->pcMessage = block.Copy(texts[2]);
    problem->pcHint = block.Copy(texts[3]);
    list.problems[list.count++] = problem;
    return YAML_OK;
}

// The caller's list, made if there is none yet.
YamlProblems &ListOf(YamlProblems **list) noexcept
{
    if (*list == nullptr)
        *list = zryaml::ProblemsMake();
    return **list;
}

} // namespace

YamlProblems *zryaml::ProblemsMake() noexcept
{
    auto *list = static_cast<YamlProblems *>(BlockTake(sizeof(YamlProblems)));
    if (list == nullptr)
        return &g_noMemory;
    *list = {};
    return list;
}

YamlProblems *zryaml::ProblemsTrim(YamlProblems *list) noexcept
{
    if (ZRYAML_ProblemCountGet(list) != 0)
        return list;
    ZRYAML_ProblemsFree(list);
    return nullptr;
}

uint32_t zryaml::ProblemErrorCount(const YamlProblems *list) noexcept
{
    return list != nullptr ? list->errors : 0;
}

uint32_t zryaml::ProblemFind(YamlProblems **list, const Finding &finding, const char *format, ...) noexcept
{
    if (list == nullptr)
        return YAML_OK;
    va_list arguments;
    va_start(arguments, format);
    const uint32_t result = FindingAdd(ListOf(list), finding, format, arguments);
    va_end(arguments);
    return result;
}

uint32_t ZRYAML_ProblemCountGet(const YamlProblems *pstProblems)
{
    return pstProblems != nullptr ? pstProblems->count + (IsFull(*pstProblems) ? 1 : 0) : 0;
}

const YamlProblem *ZRYAML_ProblemGet(const YamlProblems *pstProblems, uint32_t uiIndex)
{
    if (uiIndex >= ZRYAML_ProblemCountGet(pstProblems))
        return nullptr;
    return uiIndex < pstProblems->count ? pstProblems->problems[uiIndex] : &pstProblems->last;
}

uint32_t ZRYAML_ProblemAdd(YamlProblems *pstProblems, uint32_t uiLevel, const YamlListNode *pstValue,
                           const char *pcFormat, ...)
{
    if (pstProblems == nullptr || pcFormat == nullptr || uiLevel > YAML_PROBLEM_NOTE)
        return YAML_ERR_PARAM;
    va_list arguments;
    va_start(arguments, pcFormat);
    const uint32_t result = FindingAdd(*pstProblems, {.level = uiLevel, .value = pstValue}, pcFormat, arguments);
    va_end(arguments);
    return result;
}

uint32_t ZRYAML_ProblemReport(YamlProblems **ppstProblems, const YamlProblem *pstProblem)
{
    if (pstProblem == nullptr)
        return YAML_ERR_PARAM;
    return ppstProblems != nullptr ? CopyAdd(ListOf(ppstProblems), *pstProblem) : YAML_OK;
}

void ZRYAML_ProblemsFree(YamlProblems *pstProblems)
{
    if (pstProblems == nullptr || pstProblems == &g_noMemory)
        return;
    for (uint32_t number = 0; number < pstProblems->count; ++number)
        ZR_MemFree(pstProblems->problems[number], yaml_MemHandleGet());
    if (pstProblems->problems != nullptr)
        ZR_MemFree(pstProblems->problems, yaml_MemHandleGet());
    ZR_MemFree(pstProblems, yaml_MemHandleGet());
}
