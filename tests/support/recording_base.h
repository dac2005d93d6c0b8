// SPDX-License-Identifier: Apache-2.0
// The base library's calls as the tests put them in place: every log record is kept, every block is counted and comes
// from malloc one by one (so that sanitizers see each), and any allocation or bounds-checked call can be made to fail.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <zr_base.h>
#include <zr_yaml.h>

struct LogRecord {
    uint32_t uiLevel;
    uint32_t uiCode;
    std::string text;
};

struct SinceReset {
    std::vector<LogRecord> log;
    uint64_t ulAllocations = 0;
    uint64_t ulFailAllocation = 0; // fail this one, counted from 1; 0: none
    uint32_t uiBaseInitResult = 0; // what ZR_BaseInit answers
    bool bHandleInitFails = false;
    bool bSecureCallsFail = false; // memset_s and strncpy_s do their work and still answer non-zero
    bool bKeepNotes = true;        // records of level 0 are kept too
};

struct RecordingBase : SinceReset {
    // Over the whole process.
    int64_t lBlocks = 0; // in use
    uint32_t uiBaseInitCalls = 0;
    uint32_t uiHandleInitCalls = 0;

    void Reset();

    // The log as lines "level code text", with the code in hex and the text as Printable gives it.
    [[nodiscard]] std::string LogText() const;
};

// The one instance, for programs with one thread.
RecordingBase &Base();
