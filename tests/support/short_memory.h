// SPDX-License-Identifier: Apache-2.0
// Takes the place of operator new in a whole test program, so that memory can run short. For one source file of a
// program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include <dlfcn.h>

inline thread_local size_t g_ulNewsLeft = SIZE_MAX; // so many calls succeed, then each fails; SIZE_MAX: none fails

// Lets memory run short for as long as it lives.
struct ShortMemory {
    explicit ShortMemory(size_t ulNews) { g_ulNewsLeft = ulNews; }
    ~ShortMemory() { g_ulNewsLeft = SIZE_MAX; }
    ShortMemory(const ShortMemory &) = delete;
    ShortMemory &operator=(const ShortMemory &) = delete;
};

// Weak, as clang's sanitizers link an operator new of their own into the program, which then counts.
[[gnu::weak]] void *operator new(size_t ulSize)
{
    // The next one is a sanitizer's, if there is one.
    static const auto pfnNext = reinterpret_cast<void *(*)(size_t)>(dlsym(RTLD_NEXT, "_Znwm"));
    if (g_ulNewsLeft == 0)
        throw std::bad_alloc();
    --g_ulNewsLeft;
    return pfnNext(ulSize);
}

[[gnu::weak]] void *operator new(size_t ulSize, const std::nothrow_t &) noexcept
{
    return g_ulNewsLeft == 0 ? nullptr : operator new(ulSize);
}

[[gnu::weak]] void *operator new[](size_t ulSize, const std::nothrow_t &) noexcept
{
    return g_ulNewsLeft == 0 ? nullptr : operator new[](ulSize);
}

// Whether the operators above are the ones in place.
inline const bool CanBeShort = [] {
    const ShortMemory stShort(0);
    void *const pOne = operator new(1, std::nothrow);
    operator delete(pOne);
    return pOne == nullptr;
}();
