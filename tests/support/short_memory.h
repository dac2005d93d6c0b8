// SPDX-License-Identifier: Apache-2.0
// Takes the place of operator new in a whole test program, so that memory can run short. For one source file of a
// program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include <dlfcn.h>

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

// Whether the system can be asked to limit the memory; a sanitizer has mapped more than that from the start.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || HAS_FEATURE(address_sanitizer) || \
    HAS_FEATURE(thread_sanitizer)
constexpr bool CanBeLimited = false;
#else
constexpr bool CanBeLimited = true;
#endif
