// SPDX-License-Identifier: Apache-2.0
// Keeps the error record of each thread in memory that the thread has from its start.
#include "../error_record.h"
#include "../text_cut.h"
#include "debug_internal.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr size_t TextSize = 1024; // of each text, its NUL included

struct ErrorRecord {
    YamlErrorInfo stInfo;
    char acMessage[TextSize], acHint[TextSize], acFile[TextSize], acKeyPath[TextSize];
};

thread_local ErrorRecord t_stRecord;

void TextKeep(char (&acText)[TextSize], const char *pcText) noexcept
{
    const size_t ulLength = strnlen(pcText, TextSize);
    memcpy(acText, pcText, ulLength < TextSize ? ulLength + 1 : TextSize);
    if (ulLength == TextSize)
        zryaml::CutMark(acText, TextSize);
}

__attribute__((format(printf, 2, 0))) void TextFormat(char (&acText)[TextSize], const char *pcFormat,
                                                      va_list stArgs) noexcept
{
    if (vsnprintf(acText, TextSize, pcFormat, stArgs) >= static_cast<int>(TextSize))
        zryaml::CutMark(acText, TextSize);
}

} // namespace

constinit thread_local bool zryaml::t_bErrorSet = false;

void zryaml::ErrorForget() noexcept
{
    t_bErrorSet = false;
    t_stRecord.stInfo = {};
    t_stRecord.acMessage[0] = t_stRecord.acHint[0] = t_stRecord.acFile[0] = t_stRecord.acKeyPath[0] = '\0';
}

void zryaml::ErrorNote(uint32_t uiCode, const char *pcFormat, ...) noexcept
{
    if (t_bErrorSet)
        return;
    t_bErrorSet = true;
    t_stRecord.stInfo.uiCode = uiCode;
    va_list stArgs;
    va_start(stArgs, pcFormat);
    TextFormat(t_stRecord.acMessage, pcFormat, stArgs);
    va_end(stArgs);
}

void zryaml::ErrorPlaceAdd(uint32_t uiLine, uint32_t uiColumn) noexcept
{
    YamlErrorInfo &stInfo = t_stRecord.stInfo;
    if (t_bErrorSet && stInfo.uiLine == 0) {
        stInfo.uiLine = uiLine;
        stInfo.uiColumn = uiColumn;
    }
}

void zryaml::ErrorFirstPlaceAdd(uint32_t uiLine, uint32_t uiColumn) noexcept
{
    YamlErrorInfo &stInfo = t_stRecord.stInfo;
    if (t_bErrorSet && stInfo.uiFirstLine == 0) {
        stInfo.uiFirstLine = uiLine;
        stInfo.uiFirstColumn = uiColumn;
    }
}

void zryaml::ErrorHintAdd(const char *pcFormat, ...) noexcept
{
    if (!t_bErrorSet || t_stRecord.acHint[0] != '\0')
        return;
    va_list stArgs;
    va_start(stArgs, pcFormat);
    TextFormat(t_stRecord.acHint, pcFormat, stArgs);
    va_end(stArgs);
}

void zryaml::ErrorFileAdd(const char *pcFile) noexcept
{
    if (t_bErrorSet && t_stRecord.acFile[0] == '\0')
        TextKeep(t_stRecord.acFile, pcFile);
}

void zryaml::ErrorKeyPathAdd(const char *pcKeyPath) noexcept
{
    if (t_bErrorSet && t_stRecord.acKeyPath[0] == '\0')
        TextKeep(t_stRecord.acKeyPath, pcKeyPath);
}

const YamlErrorInfo *ZRYAML_LastErrorGet(void)
{
    YamlErrorInfo &stInfo = t_stRecord.stInfo;
    stInfo.pcMessage = t_stRecord.acMessage;
    stInfo.pcHint = t_stRecord.acHint;
    stInfo.pcFile = t_stRecord.acFile;
    stInfo.pcKeyPath = t_stRecord.acKeyPath;
    return &stInfo;
}
