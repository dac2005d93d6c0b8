/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The base layer: start-up, named memory pools and the log.
 *
 * Rules that hold for every call:
 *  - Any number of threads may call anything at any time, unless a call says otherwise. No call may be made from a
 *    signal handler, nor in the child of a process that forked while it had several threads.
 *  - Codes are errno numbers, 0 for success. Nothing throws, nothing aborts.
 *  - Texts are NUL-terminated UTF-8.
 *  - Every call goes through a dynamic symbol, so a host may define any of them itself.
 */
#ifndef ZR_BASE_H
#define ZR_BASE_H

#include <stdint.h>

#if defined(__GNUC__)
/** Marks an exported name. */
#define ZR_API __attribute__((visibility("default")))
/** Lets the compiler check the arguments from number iFirst on against the printf-style format, number iFormat. */
#define ZR_PRINTF(iFormat, iFirst) __attribute__((format(printf, iFormat, iFirst)))
#else
#define ZR_API
#define ZR_PRINTF(iFormat, iFirst)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Start ---- */

/**
 * Starts the base layer: sets up the log and reads its first level from the environment (see ZR_LogLevelSet).
 * Further calls do nothing. The other calls work without it.
 *
 * @return 0, always.
 */
ZR_API uint32_t ZR_BaseInit(void);

/* ---- Memory ---- */

/** What one pool holds. Each block counts with the size handed out, as malloc_usable_size(3) tells it. */
typedef struct ZR_MemInfo {
    const char *pcName;     /**< Name of the pool, owned by it and valid until the process ends. */
    uint64_t ulBlocksInUse; /**< Blocks taken and not yet given back. */
    uint64_t ulBytesInUse;  /**< Bytes of those blocks. */
    uint64_t ulBytesPeak;   /**< Highest ulBytesInUse so far. */
} ZR_MemInfo;

/**
 * Creates a memory pool. It lives until the process ends.
 *
 * @param pcName  Name, copied. Two calls with the same name create two pools.
 * @return The pool's handle, or NULL if pcName is NULL or memory is short.
 */
ZR_API void *ZR_HandleInit(const char *pcName);

/**
 * Takes a block from a pool. Its content is undefined.
 *
 * @param uiSize      Bytes wanted, 0 to 4294967295. The block handed out may be a little larger.
 * @param pMemHandle  Pool, from ZR_HandleInit.
 * @return The block, aligned as malloc(3) does, owned by the caller until ZR_MemFree with the same pool; NULL if
 * pMemHandle is NULL or memory is short.
 */
ZR_API void *ZR_MemAlloc(uint32_t uiSize, void *pMemHandle);

/**
 * Gives a block back.
 *
 * @param pBlock      Block from ZR_MemAlloc with the same pool, by whichever thread; NULL does nothing.
 * @param pMemHandle  Pool of the block; NULL does nothing.
 */
ZR_API void ZR_MemFree(void *pBlock, void *pMemHandle);

/**
 * Reads a pool's counters, all of one moment.
 *
 * @param pMemHandle  Pool.
 * @param pstInfo     Receives the counters; untouched on failure.
 * @return 0, or EINVAL if an argument is NULL.
 */
ZR_API uint32_t ZR_MemInfoGet(void *pMemHandle, ZR_MemInfo *pstInfo);

/* ---- Log ---- */

/** Levels of a record. A higher number is more severe. */
enum {
    ZR_LOG_NOTE = 0,    /**< Trace and notes. */
    ZR_LOG_WARNING = 1, /**< Work goes on. */
    ZR_LOG_ERROR = 2,   /**< An operation failed. */
    ZR_LOG_NOTHING = 3  /**< As a least level: no record of these levels is written. */
};

/** The module that writes a record. */
typedef struct ZR_LogModule {
    const char *pcName; /**< Name, as records show it. */
    uint32_t uiId;      /**< Number of the module. */
} ZR_LogModule;

/** One finished record as a sink receives it. No text is NULL; all belong to the caller of the sink. */
typedef struct ZR_LogRecord {
    const char *pcModule;   /**< Name of the module that writes, "?" if it gave none. */
    uint32_t uiModuleId;    /**< Its number, 0 if it gave none. */
    uint32_t uiLevel;       /**< As given to ZR_LogWrite. */
    uint32_t uiCode;        /**< Error code, 0 for none. */
    const char *pcFile;     /**< Source file, "?" if none was given. */
    uint32_t uiLine;        /**< Line in it. */
    const char *pcFunction; /**< Function that writes, "?" if none was given. */
    const char *pcText;     /**< One line without control characters, see ZR_LogWrite. */
} ZR_LogRecord;

/**
 * A host's function for log records. Calls never overlap, so a sink needs no lock of its own. Records that the sink
 * itself causes, in its own thread, are dropped.
 *
 * @param pstRecord  The record, valid during the call only.
 * @param pContext   As given to ZR_LogSinkSet.
 */
typedef void (*ZR_LogSink)(const ZR_LogRecord *pstRecord, void *pContext);

/**
 * Writes one record, as one line, unless its level is below the least level; then nothing is formatted.
 *
 * Control characters of the finished text are written escaped (`\n`, `\t`, `\r`, `\x1b`, `\u0085`), and so are the line
 * separators U+2028 and U+2029 and bytes that are not UTF-8. A text longer than 65535 bytes, or than there is memory
 * for, is cut there and then ends with "...".
 *
 * @param pstModule   Module that writes; NULL is written as "?" with id 0.
 * @param uiLevel     ZR_LOG_NOTE, ZR_LOG_WARNING or ZR_LOG_ERROR; a higher one counts as an error.
 * @param uiCode      Error code of the record, 0 for none.
 * @param pcFile      Source file; NULL is written as "?".
 * @param uiLine      Line in it.
 * @param pcFunction  Function that writes; NULL is written as "?".
 * @param pcFormat    printf-style format with its arguments; NULL is written as "?".
 * @note  errno keeps its value.
 */
ZR_API void ZR_LogWrite(ZR_LogModule *pstModule, uint32_t uiLevel, uint32_t uiCode, const char *pcFile, uint32_t uiLine,
                        const char *pcFunction, const char *pcFormat, ...) ZR_PRINTF(7, 8);

/**
 * Replaces the current sink by a host's. The default sink writes to standard error, through spdlog's
 * logger "zr": a host that registers a logger of that name before the first record gets the records there instead. No
 * other logger of the host is touched.
 *
 * @param pfnSink   New sink; NULL brings the default back.
 * @param pContext  Handed to the sink as it is.
 * @return 0; EDEADLK, and nothing changes, when called from inside a sink. Once the call has returned, the former sink
 * is neither running nor called again, so its context may be released.
 */
ZR_API uint32_t ZR_LogSinkSet(ZR_LogSink pfnSink, void *pContext);

/**
 * Sets the least level that is written, for every sink. Before the first call it is ZR_LOG_WARNING, or, from
 * ZR_BaseInit on, what the environment variable SPDLOG_LEVEL says for the logger "zr" (trace, debug: 0; info, warn: 1;
 * err: 2; critical, off: 3).
 *
 * @param uiLevel  Least level, any number.
 */
ZR_API void ZR_LogLevelSet(uint32_t uiLevel);

/** @return The least level that is written. */
ZR_API uint32_t ZR_LogLevelGet(void);

#ifdef __cplusplus
}
#endif

#endif /* ZR_BASE_H */
