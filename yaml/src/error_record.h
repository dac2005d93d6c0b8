// SPDX-License-Identifier: Apache-2.0
// The error record of the calling thread. Every call that can set it clears it first; the first log record of a failure
// fills it, and whoever knows more about the failure adds to it. On success only one thread-local flag is looked at.
//
// 1. A thread has its texts from its first failure on; where there is no memory for them, code and place still hold.
// 2. What a log sink does with the library while a call is under way leaves the record of that call alone.
#pragma once

#include <cstdint>

#include <zr_yaml.h>

namespace zryaml {

struct ErrorTexts;

struct ErrorRecord {
    YamlErrorInfo info; // its texts are set when it is asked for
    ErrorTexts *texts;  // NULL before the first failure
    bool isSet;         // the thread has a failure
    bool isLent;        // it belongs to a call whose record is being logged
    bool isRefused;     // it is the caller's limit, not the system, that says no
};

// So small that it lies in the memory that a thread has from its start, also where the library is opened at run time.
extern constinit thread_local ErrorRecord t_error __attribute__((tls_model("initial-exec")));

[[nodiscard]] inline bool ErrorIsSet() noexcept
{
    return t_error.isSet;
}

void ErrorForget() noexcept;
// Forgets the failure of an earlier call, if there was one.
inline void ErrorClear() noexcept
{
    if (t_error.isSet || t_error.isLent) [[unlikely]]
        ErrorForget();
}
// Keeps code and text of a failure, unless this call has one already. The sentence for people and the hint are taken
// from the table of plain_sentence.h, by code and format.
void ErrorNote(uint32_t code, const char *pcFormat, ...) noexcept __attribute__((format(printf, 2, 3)));

// The following add to a failure that has been noted, once each: what is known first is the more exact. Sentence and
// hint take the place of the table's.
void ErrorSentence(const char *pcFormat, ...) noexcept __attribute__((format(printf, 1, 2)));
void ErrorHintAdd(const char *pcFormat, ...) noexcept __attribute__((format(printf, 1, 2)));
// Adds a hint to a failure of the document and is its code: return Refuse(YAML_FAIL(...), "a file may have %u ...",
// uiLimit);
[[nodiscard]] uint32_t Refuse(uint32_t code, const char *hintFormat, ...) noexcept
    __attribute__((format(printf, 2, 3)));
// Whether the failure is one of memory that ran out, and not of a limit, which has the same code.
[[nodiscard]] inline bool ErrorIsShortMemory() noexcept
{
    return t_error.isSet && t_error.info.uiCode == YAML_ERR_NOMEM && !t_error.isRefused;
}
void ErrorPlaceAdd(uint32_t line, uint32_t column) noexcept;
void ErrorFirstPlaceAdd(uint32_t line, uint32_t column) noexcept;
void ErrorFileAdd(const char *file) noexcept;
void ErrorKeyPathAdd(const char *keyPath) noexcept;

// While it lives, whatever calls the library clears and sets a record of its own; then the thread has this one again.
class ErrorKeeper {
public:
    ErrorKeeper() noexcept : m_kept(t_error) { t_error.isLent = true; }
    ~ErrorKeeper();
    ErrorKeeper(const ErrorKeeper &) = delete;
    ErrorKeeper &operator=(const ErrorKeeper &) = delete;

private:
    ErrorRecord m_kept;
};

} // namespace zryaml
