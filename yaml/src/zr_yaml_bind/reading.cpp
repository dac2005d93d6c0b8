// SPDX-License-Identifier: Apache-2.0
// Problems and memory of a reading, also for the functions of a host.
#include "reading.h"

#include "../error_record.h"
#include "../text_cut.h"
#include "../value_source.h"

#include <cstdarg>
#include <cstdio>
// Formats were checked where they were written.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace {

using namespace zryaml;

constexpr size_t SentenceLongest = 1024;

void ErrorRecordFill(const Finding &finding, const char *sentence) noexcept
{
    ErrorNote(finding.code, "%s", sentence);
    ErrorSentence("%s", sentence);
    if (finding.hint[0] != '\0')
        ErrorHintAdd("%s", finding.hint);
    const YamlListNode *place = finding.place != nullptr ? finding.place : finding.value;
    uint32_t line = 0;
    uint32_t column = 0;
    ZRYAML_ValuePositionGet(place, &line, &column);
    ErrorPlaceAdd(line, column);
    ErrorFileAdd(SourceNameOf(place));
    char path[YAML_KEY_BUF_SIZE];
    (void)ZRYAML_ValuePathGet(finding.value, sizeof(path), path);
    ErrorKeyPathAdd(path);
}

__attribute__((format(printf, 3, 0))) void TellList(YamlReading &reading, const Finding &finding, const char *format,
                                                    va_list arguments) noexcept
{
    if (finding.level == YAML_PROBLEM_ERROR && reading.errors++ == 0)
        reading.code = finding.code;
    if (reading.probes != 0)
        return;
    char sentence[SentenceLongest];
    if (vsnprintf(sentence, sizeof(sentence), format, arguments) >= static_cast<int>(sizeof(sentence)))
        CutMark(sentence, sizeof(sentence));
    if (finding.level == YAML_PROBLEM_ERROR && !ErrorIsSet())
        ErrorRecordFill(finding, sentence);
    (void)ProblemFind(reading.list, finding, "%s", sentence);
}

} // namespace

bool zryaml::bind::Tell(YamlReading &reading, const Finding &finding, const char *format, ...) noexcept
{
    va_list arguments;
    va_start(arguments, format);
    TellList(reading, finding, format, arguments);
    va_end(arguments);
    return false;
}

bool zryaml::bind::Starve(YamlReading &reading) noexcept
{
    reading.starved = true;
    return false;
}

void *zryaml::bind::Keep(YamlReading &reading, size_t bytes) noexcept
{
    void *memory = (reading.probes != 0 ? reading.scratch : reading.kept).Take(bytes);
    if (memory == nullptr)
        (void)Starve(reading);
    return memory;
}

uint32_t ZRYAML_ReadingProblemAdd(YamlReading *pstReading, const YamlListNode *pstValue, const char *pcFormat, ...)
{
    if (pstReading == nullptr || pcFormat == nullptr)
        return YAML_ERR_PARAM;
    va_list stArgs;
    va_start(stArgs, pcFormat);
    TellList(*pstReading, {.value = pstValue}, pcFormat, stArgs);
    va_end(stArgs);
    return YAML_ERR_VALUE;
}

void *ZRYAML_ReadingAlloc(YamlReading *pstReading, size_t ulBytes)
{
    return pstReading != nullptr ? zryaml::bind::Keep(*pstReading, ulBytes) : nullptr;
}
