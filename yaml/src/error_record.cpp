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

    Text sentence, record, hint, file, keyPath;
    bool hasOwnSentence, hasOwnHint; // not the table's
};

constinit thread_local ErrorRecord t_error = {};

} // namespace zryaml

namespace {

using zryaml::ErrorTexts;
using zryaml::t_error;

pthread_once_t g_keyOnce = PTHREAD_ONCE_INIT;
pthread_key_t g_key; // its destructor gives the texts of a thread back
bool g_hasKey = false;

void TextsFree(void *) noexcept
{
    free(t_error.texts);
    t_error = {};
}

void KeyCreate() noexcept
{
    g_hasKey = pthread_key_create(&g_key, TextsFree) == 0;
}

void TextsEmpty(ErrorTexts &texts) noexcept
{
    texts.sentence[0] = texts.record[0] = texts.hint[0] = texts.file[0] = texts.keyPath[0] = '\0';
    texts.hasOwnSentence = texts.hasOwnHint = false;
}

// The texts of this thread, NULL if there is no memory for them.
ErrorTexts *TextsGet() noexcept
{
    if (t_error.texts != nullptr)
        return t_error.texts;
    (void)pthread_once(&g_keyOnce, KeyCreate);
    if (!g_hasKey || pthread_setspecific(g_key, &t_error) != 0)
        return nullptr;
    t_error.texts = static_cast<ErrorTexts *>(malloc(sizeof(ErrorTexts)));
    if (t_error.texts != nullptr)
        TextsEmpty(*t_error.texts);
    return t_error.texts;
}

// The texts of the failure in progress, NULL if there is none or no room for texts.
ErrorTexts *TextsInProgress() noexcept
{
    return t_error.isSet && !t_error.isLent ? t_error.texts : nullptr;
}

void TextKeep(ErrorTexts::Text &text, const char *pcText) noexcept
{
    const size_t length = strnlen(pcText, sizeof(text));
    memcpy(text, pcText, length < sizeof(text) ? length + 1 : sizeof(text));
    if (length == sizeof(text))
        zryaml::CutMark(text, sizeof(text));
}

__attribute__((format(printf, 2, 0))) void TextFormat(ErrorTexts::Text &text, const char *pcFormat,
                                                      va_list arguments) noexcept
{
    if (vsnprintf(text, sizeof(text), pcFormat, arguments) >= static_cast<int>(sizeof(text)))
        zryaml::CutMark(text, sizeof(text));
}

// For people: one line, whatever the texts of the file hold.
__attribute__((format(printf, 2, 0))) void LineFormat(ErrorTexts::Text &text, const char *pcFormat,
                                                      va_list arguments) noexcept
{
    va_list copy;
    va_copy(copy, arguments);
    TextFormat(text, pcFormat, copy);
    va_end(copy);
    for (char *pc = text; *pc != '\0'; ++pc) {
        if (static_cast<unsigned char>(*pc) < 0x20 || *pc == 0x7F)
            *pc = '?';
    }
}

__attribute__((format(printf, 1, 0))) void HintSet(const char *pcFormat, va_list arguments) noexcept
{
    ErrorTexts *texts = TextsInProgress();
    if (texts == nullptr || texts->hasOwnHint)
        return;
    texts->hasOwnHint = true;
    LineFormat(texts->hint, pcFormat, arguments);
}

} // namespace

void zryaml::ErrorForget() noexcept
{
    if (t_error.isLent)
        t_error.texts = nullptr; // the keeper has them
    else if (t_error.texts != nullptr)
        TextsEmpty(*t_error.texts);
    t_error.info = {};
    t_error.isSet = t_error.isLent = t_error.isRefused = false;
}

zryaml::ErrorKeeper::~ErrorKeeper()
{
    if (m_kept.texts == nullptr && !m_kept.isSet)
        m_kept.texts = t_error.texts; // kept for the next failure
    else if (t_error.texts != m_kept.texts)
        free(t_error.texts);
    t_error = m_kept;
    if (!t_error.isSet && t_error.texts != nullptr)
        TextsEmpty(*t_error.texts);
}

void zryaml::ErrorNote(uint32_t code, const char *format, ...) noexcept
{
    if (t_error.isSet || t_error.isLent)
        return;
    t_error.isSet = true;
    t_error.info.uiCode = code;
    ErrorTexts *texts = TextsGet();
    if (texts == nullptr)
        return;
    va_list arguments, copy;
    va_start(arguments, format);
    va_copy(copy, arguments);
    TextFormat(texts->record, format, copy);
    va_end(copy);
    const PlainSentence plain = PlainSentenceFind(code, strcmp(format, "%s") == 0 ? texts->record : format);
    LineFormat(texts->sentence, plain.sentence != nullptr ? plain.sentence : format, arguments);
    LineFormat(texts->hint, plain.pcHint, arguments);
    va_end(arguments);
}

void zryaml::ErrorSentence(const char *format, ...) noexcept
{
    va_list arguments;
    va_start(arguments, format);
    if (ErrorTexts *texts = TextsInProgress(); texts != nullptr && !texts->hasOwnSentence) {
        texts->hasOwnSentence = true;
        LineFormat(texts->sentence, format, arguments);
    }
    va_end(arguments);
}

void zryaml::ErrorHintAdd(const char *format, ...) noexcept
{
    va_list arguments;
    va_start(arguments, format);
    HintSet(format, arguments);
    va_end(arguments);
}

uint32_t zryaml::Refuse(uint32_t code, const char *hintFormat, ...) noexcept
{
    va_list arguments;
    va_start(arguments, hintFormat);
    HintSet(hintFormat, arguments);
    va_end(arguments);
    t_error.isRefused = t_error.isSet && !t_error.isLent;
    return code;
}

void zryaml::ErrorPlaceAdd(uint32_t line, uint32_t column) noexcept
{
    YamlErrorInfo &info = t_error.info;
    if (t_error.isSet && !t_error.isLent && info.uiLine == 0) {
        info.uiLine = line;
        info.uiColumn = column;
    }
}

void zryaml::ErrorFirstPlaceAdd(uint32_t line, uint32_t column) noexcept
{
    YamlErrorInfo &info = t_error.info;
    if (t_error.isSet && !t_error.isLent && info.uiFirstLine == 0) {
        info.uiFirstLine = line;
        info.uiFirstColumn = column;
    }
}

void zryaml::ErrorFileAdd(const char *pcFile) noexcept
{
    ErrorTexts *texts = TextsInProgress();
    if (texts != nullptr && texts->file[0] == '\0')
        TextKeep(texts->file, pcFile);
}

void zryaml::ErrorKeyPathAdd(const char *pcKeyPath) noexcept
{
    ErrorTexts *texts = TextsInProgress();
    if (texts != nullptr && texts->keyPath[0] == '\0')
        TextKeep(texts->keyPath, pcKeyPath);
}

const YamlErrorInfo *ZRYAML_LastErrorGet(void)
{
    const ErrorTexts *texts = t_error.texts;
    const char *noText = t_error.isSet ? "there is no memory left to say what went wrong" : "";
    YamlErrorInfo &info = t_error.info;
    info.uiSize = sizeof(info);
    info.pcMessage = texts != nullptr ? texts->sentence : noText;
    info.pcHint = texts != nullptr ? texts->hint : "";
    info.pcFile = texts != nullptr ? texts->file : "";
    info.pcKeyPath = texts != nullptr ? texts->keyPath : "";
    info.pcRecord = texts != nullptr ? texts->record : noText;
    return &info;
}
