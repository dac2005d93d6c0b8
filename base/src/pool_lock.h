// SPDX-License-Identifier: Apache-2.0
//
// A lock that costs nothing while the process has a single thread.

#ifndef ZR_POOL_LOCK_H
#define ZR_POOL_LOCK_H

#include <mutex>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace zr {

// Whether the process has a single thread, which cannot gain company while it is inside the pool.
[[nodiscard]] inline bool IsAlone() noexcept
{
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

// Does some work while holding the mutex, if anybody else could want it.
template <typename Work> auto Guarded(std::mutex &stMutex, Work fnWork) noexcept
{
    if (IsAlone()) [[likely]]
        return fnWork();
    const std::lock_guard stHeld(stMutex);
    return fnWork();
}

} // namespace zr

#endif // ZR_POOL_LOCK_H
