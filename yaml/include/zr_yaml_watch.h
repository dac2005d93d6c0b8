/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_watch.h - a configuration that reloads while threads read it.
 *
 * @code
 * YamlWatch *watch = ZRYAML_WatchOpen(layers, count, NULL, &problems);
 * ZRYAML_ProblemsPrint(problems, stderr);
 * ZRYAML_ProblemsFree(problems);
 * if (watch == NULL)
 *     return 1;
 * struct pollfd wake = {.fd = ZRYAML_WatchFdGet(watch), .events = POLLIN};
 * while (poll(&wake, 1, -1) > 0 || errno == EINTR) {
 *     uint32_t code = ZRYAML_WatchPoll(watch, &problems);
 *     if (code == YAML_WATCH_CHANGED)
 *         ...                                    // workers see the new document from their next acquire on
 *     else if (code != YAML_OK)
 *         ZRYAML_ProblemsPrint(problems, stderr); // the old document stays
 *     ZRYAML_ProblemsFree(problems);
 * }
 * @endcode
 *
 * And in each worker, for each piece of work:
 *
 * @code
 * YamlHandle *conf = ZRYAML_WatchAcquire(watch);
 * ... ZRYAML_PropertyGet(conf, "servers[0].port") ...
 * ZRYAML_HandleRelease(conf);
 * @endcode
 *
 * The library starts no threads: the program waits on one descriptor and calls ZRYAML_WatchPoll when it is readable. A
 * document never changes. A new one takes the place of the old one in one step, after it has been loaded and judged as
 * a whole, and the old one lives until the last of its readers has released it.
 *
 * The rules of zr_yaml.h hold. What happens when files are edited, replaced, moved or mounted: docs/watch.md.
 */
#ifndef ZR_YAML_WATCH_H
#define ZR_YAML_WATCH_H

#include "zr_yaml_layers.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Result of ZRYAML_WatchPoll that is no error: there is a new document. */
#define YAML_WATCH_CHANGED 1U

/** Flags of YamlWatchOptions. */
#define YAML_WATCH_TIMER 1U /**< contents are compared every uiInterval ms even where the kernel tells of changes */

/** Watched layers. Opaque. */
typedef struct YamlWatch YamlWatch;

/**
 * A program's own judgement of a new document, before anything else sees it.
 *
 * @param pstHandle    New document, to be read during the call and neither freed nor released. A record that is read
 *                     from it is valid as long as the document: acquire that after the poll to keep it.
 * @param pvArgument   As in the options.
 * @param pstProblems  List to add to, with ZRYAML_ProblemAdd.
 * @return YAML_OK; any other code refuses the document, and so does a problem of level YAML_PROBLEM_ERROR.
 */
typedef uint32_t (*YamlWatchCheck)(YamlHandle *pstHandle, void *pvArgument, YamlProblems *pstProblems);

/** How layers are watched; begin with YAML_WATCH_OPTIONS_INIT. */
typedef struct YamlWatchOptions {
    uint32_t uiSize;                   /**< sizeof(YamlWatchOptions) */
    uint32_t uiFlags;                  /**< YAML_WATCH_* */
    uint32_t uiInterval;               /**< ms between two looks where the kernel does not tell of changes, and before a
                                            failure of the system is tried again; 0: 1000 */
    uint32_t uiSettle;                 /**< ms without a further event after which a burst of events is over, at most
                                            500; 0: 10 */
    const YamlLayerOptions *pstLayers; /**< how layers are loaded; NULL: as they are. Its description must outlive the
                                            watch. */
    YamlWatchCheck pfnCheck;           /**< judges each document, the first one too; NULL: none */
    void *pvArgument;                  /**< for pfnCheck */
} YamlWatchOptions;

/* clang-format off */
/** Initialiser of a YamlWatchOptions: no check, and the usual times. */
#define YAML_WATCH_OPTIONS_INIT {sizeof(YamlWatchOptions), 0, 0, 0, NULL, NULL, NULL}
/* clang-format on */

/**
 * Loads layers and begins to watch their files and folders.
 *
 * Layers, texts and options are copied. The environment is taken now, once, and so is the working directory: relative
 * paths keep their meaning whatever the program does later. Named pipes and sockets cannot be watched: YAML_ERR_OPEN.
 *
 * Where the kernel cannot tell of changes (its limit of watches is reached, a folder may not be read, the file system
 * is remote, or a single file is mounted), contents are compared every uiInterval ms as well. That is no failure.
 *
 * @param pstLayers     As for ZRYAML_LayersLoad.
 * @param uiCount       As for ZRYAML_LayersLoad.
 * @param pstOptions    NULL for none.
 * @param ppstProblems  As for ZRYAML_LayersLoad; may be NULL.
 * @return The watch, for ZRYAML_WatchClose; NULL if the first document cannot be loaded or is refused, as
 *         ZRYAML_LayersLoad and the check say, YAML_ERR_PARAM for an invalid argument, YAML_ERR_OPEN where the
 *         system gives no descriptor, YAML_ERR_NOMEM.
 * @note   As for ZRYAML_LayersLoad: no thread may change the process's environment meanwhile. After a fork the child
 *         must not poll, as parent and child would take each other's events.
 */
ZRYAML_API YamlWatch *ZRYAML_WatchOpen(const YamlLayer *pstLayers, uint32_t uiCount, const YamlWatchOptions *pstOptions,
                                       YamlProblems **ppstProblems);

/**
 * @return The descriptor, readable when ZRYAML_WatchPoll may have something to do; to be waited on, never read from or
 *         closed. The same for as long as the watch lives; closed by exec. -1 for NULL.
 */
ZRYAML_API int ZRYAML_WatchFdGet(const YamlWatch *pstWatch);

/**
 * Takes note of what happened and, once a burst of events has settled, loads what is there now. Never waits.
 *
 * Bytes that are the same as those of the document in use, or of the try that failed last, are no change. A file that
 * was not empty and now is counts as half-written and gets 500 ms, then it is taken as it is.
 *
 * @param pstWatch      Watch. One thread at a time may poll, walk changes and close it.
 * @param ppstProblems  Receives what is wrong with the new version, once for each try, for ZRYAML_ProblemsFree; notes
 *                      and warnings may come with YAML_WATCH_CHANGED. NULL where there is nothing. May be NULL.
 * @return YAML_OK: nothing new; YAML_WATCH_CHANGED: there is a new document; any other code: the new version cannot be
 *         used and the old document stays. The code is that of ZRYAML_LayersLoad, of the check, or YAML_ERR_VALUE if
 *         the check only added a problem or answered 1. A call of the system that fails, and memory that is short, are
 *         tried again by the timer; a file that is not there is looked at when it comes. YAML_ERR_PARAM for NULL.
 */
ZRYAML_API uint32_t ZRYAML_WatchPoll(YamlWatch *pstWatch, YamlProblems **ppstProblems);

/**
 * Walks what the last YAML_WATCH_CHANGED changed, as ZRYAML_ChangeNext does.
 *
 * The watch keeps the document before the newest one for this, until the next YAML_WATCH_CHANGED or its end.
 *
 * @param pstWatch   Watch.
 * @param pstChange  YAML_CHANGE_INIT for the first change; then as the last call left it. Its values live until the
 *                   next YAML_WATCH_CHANGED, after which a walk begins anew.
 * @return As ZRYAML_ChangeNext; YAML_ERR_ITER_END also before the first change.
 */
ZRYAML_API uint32_t ZRYAML_WatchChangeNext(YamlWatch *pstWatch, YamlChange *pstChange);

/**
 * Gives the newest good document. Any thread, at any time but during ZRYAML_WatchClose.
 *
 * A few atomic operations and no lock: it never waits for a reload, nor for other readers. A poll that has a new
 * document waits for readers that are inside this call, a matter of nanoseconds.
 *
 * @param pstWatch  Watch.
 * @return The document, for ZRYAML_HandleRelease; it lives until then, also after ZRYAML_WatchClose. NULL for NULL.
 */
ZRYAML_API YamlHandle *ZRYAML_WatchAcquire(YamlWatch *pstWatch);

/**
 * Gives a document of ZRYAML_WatchAcquire back. Any thread. The last release frees a document that is no longer the
 * newest.
 *
 * One that no watch gave, or that nobody holds any more while the watch still does, is refused and logged
 * (YAML_ERR_PARAM). ZRYAML_HandleFree refuses a document of a watch in the same way. A release too many after the last
 * one that counted frees the document twice, which nothing can tell.
 *
 * @param pstHandle  Document; NULL does nothing.
 */
ZRYAML_API void ZRYAML_HandleRelease(YamlHandle *pstHandle);

/** Ends a watch and closes its descriptor. Documents that are held live on. NULL does nothing. */
ZRYAML_API void ZRYAML_WatchClose(YamlWatch *pstWatch);

#ifdef __cplusplus
}
#endif

#ifndef ZRYAML_STABLE_ONLY
#include "zr_yaml/watch_calls.h" /* IWYU pragma: export */
#endif

#endif
