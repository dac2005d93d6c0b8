// SPDX-License-Identifier: Apache-2.0
// Keeps the error record of each thread. Its texts come from malloc: a failure may come before there is a pool.
#include "error_record.h"
#include "plain_sentence.h"
#include "text_cut.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pthread.h>
// The formats of the table take the arguments of the record that they belong to.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace zryaml {

struct ErrorTexts {
    static constexpr size_t Size = 1024; // of each text, its NUL included
    using Text = char[Size];

    Text acSentence, acRecord, acHint, acFile, acKeyPath;
    bool bOwnSentence, bOwnHint; // not the table's
};

constinit thread_local ErrorRecord t_stError = {};

} // namespace zryaml

namespace {

using zryaml::ErrorTexts;
using zryaml::t_stError;

pthread_once_t g_stKeyOnce = PTHREAD_ONCE_INIT;
pthread_key_t g_stKey; // its destructor gives the texts of a thread back
bool g_bKey = false;

void TextsFree(void *) noexcept
{
    free(t_stError.pstTexts);
    t_stError = {};
}

void KeyCreate() noexcept
{
    g_bKey = pthread_key_create(&g_stKey, TextsFree) == 0;
}

void TextsEmpty(ErrorTexts &stTexts) noexcept
{
    stTexts.acSentence[0] = stTexts.acRecord[0] = stTexts.acHint[0] = stTexts.acFile[0] = stTexts.acKeyPath[0] = '\0';
    stTexts.bOwnSentence = stTexts.bOwnHint = false;
}

// The texts of this thread, NULL if there is no memory for them.
ErrorTexts *TextsGet() noexcept
{
    if (t_stError.pstTexts != nullptr)
        return t_stError.pstTexts;
    (void)pthread_once(&g_stKeyOnce, KeyCreate);
    if (!g_bKey || pthread_setspecific(g_stKey, &t_stError) != 0)
        return nullptr;
    t_stError.pstTexts = static_cast<ErrorTexts *>(malloc(sizeof(ErrorTexts)));
    if (t_stError.pstTexts != nullptr)
        TextsEmpty(*t_stError.pstTexts);
    return t_stError.pstTexts;
}

// The texts of the failure in progress, NULL if there is none or no room for texts.
ErrorTexts *TextsInProgress() noexcept
{
    return t_stError.bSet && !t_stError.bLent ? t_stError.pstTexts : nullptr;
}

void TextKeep(ErrorTexts::Text &acText, const char *pcText) noexcept
{
    const size_t ulLength = strnlen(pcText, sizeof(acText));
    memcpy(acText, pcText, ulLength < sizeof(acText) ? ulLength + 1 : sizeof(acText));
    if (ulLength == sizeof(acText))
        zryaml::CutMark(acText, sizeof(acText));
}

__attribute__((format(printf, 2, 0))) void TextFormat(ErrorTexts::Text &acText, const char *pcFormat,
                                                      va_list stArgs) noexcept
{
    if (vsnprintf(acText, sizeof(acText), pcFormat, stArgs) >= static_cast<int>(sizeof(acText)))
        zryaml::CutMark(acText, sizeof(acText));
}

// For people: one line, whatever the texts of the file hold.
__attribute__((format(printf, 2, 0))) void LineFormat(ErrorTexts::Text &acText, const char *pcFormat,
                                                      va_list stArgs) noexcept
{
    va_list stCopy;
    va_copy(stCopy, stArgs);
    TextFormat(acText, pcFormat, stCopy);
    va_end(stCopy);
    for (char *pc = acText; *pc != '\0'; ++pc) {
        if (static_cast<unsigned char>(*pc) < 0x20 || *pc == 0x7F)
            *pc = '?';
    }
}

__attribute__((format(printf, 1, 0))) void HintSet(const char *pcFormat, va_list stArgs) noexcept
{
    ErrorTexts *pstTexts = TextsInProgress();
    if (pstTexts == nullptr || pstTexts->bOwnHint)
        return;
    pstTexts->bOwnHint = true;
    LineFormat(pstTexts->acHint, pcFormat, stArgs);
}

} // namespace

void zryaml::ErrorForget() noexcept
{
    if (t_stError.bLent)
        t_stError.pstTexts = nullptr; // the keeper has them
    else if (t_stError.pstTexts != nullptr)
        TextsEmpty(*t_stError.pstTexts);
    t_stError.stInfo = {};
    t_stError.bSet = t_stError.bLent = t_stError.bRefused = false;
}

zryaml::ErrorKeeper::~ErrorKeeper()
{
    if (m_stKept.pstTexts == nullptr && !m_stKept.bSet)
        m_stKept.pstTexts = t_stError.pstTexts; // kept for the next failure
    else if (t_stError.pstTexts != m_stKept.pstTexts)
        free(t_stError.pstTexts);
    t_stError = m_stKept;
    if (!t_stError.bSet && t_stError.pstTexts != nullptr)
        TextsEmpty(*t_stError.pstTexts);
}

void zryaml::ErrorNote(uint32_t uiCode, const char *pcFormat, ...) noexcept
{
    if (t_stError.bSet || t_stError.bLent)
        return;
    t_stError.bSet = true;
    t_stError.stInfo.uiCode = uiCode;
    ErrorTexts *pstTexts = TextsGet();
    if (pstTexts == nullptr)
        return;
    va_list stArgs, stCopy;
    va_start(stArgs, pcFormat);
    va_copy(stCopy, stArgs);
    TextFormat(pstTexts->acRecord, pcFormat, stCopy);
    va_end(stCopy);
    const PlainSentence stPlain =
        PlainSentenceFind(uiCode, strcmp(pcFormat, "%s") == 0 ? pstTexts->acRecord : pcFormat);
    LineFormat(pstTexts->acSentence, stPlain.pcSentence != nullptr ? stPlain.pcSentence : pcFormat, stArgs);
    LineFormat(pstTexts->acHint, stPlain.pcHint, stArgs);
    va_end(stArgs);
}

void zryaml::ErrorSentence(const char *pcFormat, ...) noexcept
{
    va_list stArgs;
    va_start(stArgs, pcFormat);
    if (ErrorTexts *pstTexts = TextsInProgress(); pstTexts != nullptr && !pstTexts->bOwnSentence) {
        pstTexts->bOwnSentence = true;
        LineFormat(pstTexts->acSentence, pcFormat, stArgs);
    }
    va_end(stArgs);
}

void zryaml::ErrorHintAdd(const char *pcFormat, ...) noexcept
{
    va_list stArgs;
    va_start(stArgs, pcFormat);
    HintSet(pcFormat, stArgs);
    va_end(stArgs);
}

uint32_t zryaml::Refuse(uint32_t uiCode, const char *pcHintFormat, ...) noexcept
{
    va_list stArgs;
    va_start(stArgs, pcHintFormat);
    HintSet(pcHintFormat, stArgs);
    va_end(stArgs);
    t_stError.bRefused = t_stError.bSet && !t_stError.bLent;
    return uiCode;
}

void zryaml::ErrorPlaceAdd(uint32_t uiLine, uint32_t uiColumn) noexcept
{
    YamlErrorInfo &stInfo = t_stError.stInfo;
    if (t_stError.bSet && !t_stError.bLent && stInfo.uiLine == 0) {
        stInfo.uiLine = uiLine;
        stInfo.uiColumn = uiColumn;
    }
}

void zryaml::ErrorFirstPlaceAdd(uint32_t uiLine, uint32_t uiColumn) noexcept
{
    YamlErrorInfo &stInfo = t_stError.stInfo;
    if (t_stError.bSet && !t_stError.bLent && stInfo.uiFirstLine == 0) {
        stInfo.uiFirstLine = uiLine;
        stInfo.uiFirstColumn = uiColumn;
    }
}

void zryaml::ErrorFileAdd(const char *pcFile) noexcept
{
    ErrorTexts *pstTexts = TextsInProgress();
    if (pstTexts != nullptr && pstTexts->acFile[0] == '\0')
        TextKeep(pstTexts->acFile, pcFile);
}

void zryaml::ErrorKeyPathAdd(const char *pcKeyPath) noexcept
{
    ErrorTexts *pstTexts = TextsInProgress();
    if (pstTexts != nullptr && pstTexts->acKeyPath[0] == '\0')
        TextKeep(pstTexts->acKeyPath, pcKeyPath);
}

const YamlErrorInfo *ZRYAML_LastErrorGet(void)
{
    const ErrorTexts *pstTexts = t_stError.pstTexts;
    const char *pcNoText = t_stError.bSet ? "there is no memory left to say what went wrong" : "";
    YamlErrorInfo &stInfo = t_stError.stInfo;
    stInfo.uiSize = sizeof(stInfo);
    stInfo.pcMessage = pstTexts != nullptr ? pstTexts->acSentence : pcNoText;
    stInfo.pcHint = pstTexts != nullptr ? pstTexts->acHint : "";
    stInfo.pcFile = pstTexts != nullptr ? pstTexts->acFile : "";
    stInfo.pcKeyPath = pstTexts != nullptr ? pstTexts->acKeyPath : "";
    stInfo.pcRecord = pstTexts != nullptr ? pstTexts->acRecord : pcNoText;
    return &stInfo;
}
