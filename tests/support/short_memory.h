// SPDX-License-Identifier: Apache-2.0
// Takes the place of operator new in a whole test program, and of the system calls below it, so that memory can run
// short. For one source file of a program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#ifdef __has_feature
#define HAS_FEATURE(feature) __has_feature(feature)
#else
#define HAS_FEATURE(feature) 0
#endif

inline size_t g_ulNewsLeft = SIZE_MAX; // so many calls succeed, then each fails; SIZE_MAX: none fails

// Lets memory run short for as long as it lives.
struct ShortMemory {
    explicit ShortMemory(size_t ulNews) { g_ulNewsLeft = ulNews; }
    ~ShortMemory() { g_ulNewsLeft = SIZE_MAX; }
    ShortMemory(const ShortMemory &) = delete;
    ShortMemory &operator=(const ShortMemory &) = delete;
};

#if HAS_FEATURE(thread_sanitizer) // insists on an operator new of its own
constexpr bool CanBeShort = false;
#else
constexpr bool CanBeShort = true;

void *operator new(size_t ulSize)
{
    // The next one is a sanitizer's, if there is one.
    static const auto pfnNext = reinterpret_cast<void *(*)(size_t)>(dlsym(RTLD_NEXT, "_Znwm"));
    if (g_ulNewsLeft == 0)
        throw std::bad_alloc();
    if (g_ulNewsLeft != SIZE_MAX)
        --g_ulNewsLeft;
    return pfnNext(ulSize);
}

void *operator new(size_t ulSize, const std::nothrow_t &) noexcept
{
    return g_ulNewsLeft == 0 ? nullptr : operator new(ulSize);
}

void *operator new[](size_t ulSize, const std::nothrow_t &) noexcept
{
    return g_ulNewsLeft == 0 ? nullptr : operator new[](ulSize);
}

#endif

// So many mappings succeed, each a page behind a multiple of 64 KiB, then one fails; below 0: all are as usual.
inline int g_iMapsLeft = -1;
inline bool g_bUnmapFails = false;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || HAS_FEATURE(address_sanitizer) || \
    HAS_FEATURE(thread_sanitizer)
constexpr bool CanMapFail = false; // they have calls of their own
#else
constexpr bool CanMapFail = true;

extern "C" void *mmap(void *pAt, size_t ulBytes, int iProtection, int iFlags, int iFile, off_t lFrom) noexcept
{
    constexpr size_t ulUnit = size_t{64} * 1024;
    if (g_iMapsLeft == 0) {
        g_iMapsLeft = -1;
        return MAP_FAILED;
    }
    const bool bMoved = g_iMapsLeft > 0;
    g_iMapsLeft -= bMoved ? 1 : 0;
    const long lPages = syscall(SYS_mmap, pAt, ulBytes + (bMoved ? 2 * ulUnit : 0), iProtection, iFlags, iFile, lFrom);
    const size_t ulMoved = (static_cast<size_t>(lPages) + ulUnit - 1) / ulUnit * ulUnit + 4096;
    return reinterpret_cast<void *>(bMoved ? ulMoved : static_cast<size_t>(lPages));
}

extern "C" int munmap(void *pPages, size_t ulBytes) noexcept
{
    return g_bUnmapFails ? -1 : static_cast<int>(syscall(SYS_munmap, pPages, ulBytes));
}
#endif
