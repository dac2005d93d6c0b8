// SPDX-License-Identifier: Apache-2.0
// The error record of the calling thread. Every call that can set it clears it first; the first log record of a failure
// fills it, and whoever knows more about the failure adds to it. On success only one thread-local flag is looked at.
#pragma once

#include <cstdint>

namespace zryaml {

// Whether the thread has a failure.
extern constinit thread_local bool t_bErrorSet;

[[nodiscard]] inline bool ErrorIsSet() noexcept
{
    return t_bErrorSet;
}

void ErrorForget() noexcept;
// Forgets the failure of an earlier call, if there was one.
inline void ErrorClear() noexcept
{
    if (t_bErrorSet) [[unlikely]]
        ErrorForget();
}
// Keeps code and text of a failure, unless this call has one already.
void ErrorNote(uint32_t uiCode, const char *pcFormat, ...) noexcept __attribute__((format(printf, 2, 3)));

// The following add to a failure that has been noted, once each: what is known first is the more exact.
void ErrorPlaceAdd(uint32_t uiLine, uint32_t uiColumn) noexcept;
void ErrorFirstPlaceAdd(uint32_t uiLine, uint32_t uiColumn) noexcept;
void ErrorHintAdd(const char *pcFormat, ...) noexcept __attribute__((format(printf, 1, 2)));
void ErrorFileAdd(const char *pcFile) noexcept;
void ErrorKeyPathAdd(const char *pcKeyPath) noexcept;

} // namespace zryaml
