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

// Holds the mutex while it lives, if anybody else could want it. The question is asked once: a single thread cannot
// gain company while it is inside the pool.
class PoolLock {
public:
    explicit PoolLock(std::mutex &stMutex) noexcept : m_pstMutex(IsAlone() ? nullptr : &stMutex)
    {
        if (m_pstMutex != nullptr)
            m_pstMutex->lock();
    }
    ~PoolLock()
    {
        if (m_pstMutex != nullptr)
            m_pstMutex->unlock();
    }
    PoolLock(const PoolLock &) = delete;
    PoolLock &operator=(const PoolLock &) = delete;

private:
    [[nodiscard]] static bool IsAlone() noexcept
    {
#if __has_include(<sys/single_threaded.h>)
        return __libc_single_threaded != 0;
#else
        return false;
#endif
    }

    std::mutex *m_pstMutex;
};

} // namespace zr

#endif // ZR_POOL_LOCK_H
