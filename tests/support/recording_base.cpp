// SPDX-License-Identifier: Apache-2.0
// Definitions of the base library's calls that take the place of those in libzrbase.so.
#include "recording_base.h"

#include "case_file.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <malloc.h>

#include <zr_safe.h>

RecordingBase &Base()
{
    static RecordingBase stBase;
    return stBase;
}

void RecordingBase::Reset()
{
    static_cast<SinceReset &>(*this) = {};
}

std::string RecordingBase::LogText() const
{
    std::string text;
    char acHead[32];
    for (const LogRecord &stRecord : log) {
        snprintf(acHead, sizeof(acHead), "%u %x ", stRecord.uiLevel, stRecord.uiCode);
        text += acHead + Printable(stRecord.text) + "\n";
    }
    return text;
}

extern "C" {

uint32_t ZR_BaseInit(void)
{
    ++Base().uiBaseInitCalls;
    return Base().uiBaseInitResult;
}

void *ZR_HandleInit(const char *)
{
    ++Base().uiHandleInitCalls;
    static char cPool;
    return Base().bHandleInitFails ? nullptr : &cPool;
}

void *ZR_MemAlloc(uint32_t uiSize, void *)
{
    void *pBlock = ++Base().ulAllocations != Base().ulFailAllocation ? malloc(uiSize) : nullptr;
    if (pBlock == nullptr)
        return nullptr;
    ++Base().lBlocks;
    return memset(pBlock, 0xA5, uiSize); // nothing may rely on cleared memory
}

void ZR_MemFree(void *pBlock, void *)
{
    --Base().lBlocks;
    memset(pBlock, 0xA5, malloc_usable_size(pBlock)); // nor on what is released
    free(pBlock);
}

void ZR_LogWrite(ZR_LogModule *, uint32_t uiLevel, uint32_t uiCode, const char *pcFile, uint32_t,
                 const char *pcFunction, const char *pcFormat, ...)
{
    if (!std::string_view(pcFile).starts_with("yaml/src/zr_yaml_") || *pcFunction == '\0')
        abort(); // every record names its place
    if (uiLevel == 0 && !Base().bKeepNotes)
        return;
    char *pcText = nullptr;
    va_list stArgs;
    va_start(stArgs, pcFormat);
    if (vasprintf(&pcText, pcFormat, stArgs) >= 0)
        Base().log.push_back({uiLevel, uiCode, pcText});
    va_end(stArgs);
    free(pcText);
}

int memset_s(void *pDest, size_t ulDestMax, int iValue, size_t ulCount)
{
    static const auto pfnReal = reinterpret_cast<decltype(&memset_s)>(dlsym(RTLD_NEXT, "memset_s"));
    return pfnReal(pDest, ulDestMax, iValue, ulCount) != 0 || Base().bSecureCallsFail ? 1 : 0;
}

int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSource, size_t ulCount)
{
    static const auto pfnReal = reinterpret_cast<decltype(&strncpy_s)>(dlsym(RTLD_NEXT, "strncpy_s"));
    return pfnReal(pcDest, ulDestMax, pcSource, ulCount) != 0 || Base().bSecureCallsFail ? 1 : 0;
}

} // extern "C"
