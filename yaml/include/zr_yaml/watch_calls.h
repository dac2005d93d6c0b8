/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml/watch_calls.h - the system calls that a watch makes, for tests that refuse them. Nothing here is promised to
 * stay.
 */
#ifndef ZR_YAML_WATCH_CALLS_H
#define ZR_YAML_WATCH_CALLS_H

#include "../zr_yaml.h"

#ifdef __cplusplus
extern "C" {
#endif

struct dirent;
struct epoll_event;
struct itimerspec;
struct stat;
struct statfs;
struct statx;

/** Each member stands for the call of its name, with the parameters that a watch needs. */
typedef struct YamlWatchCalls {
    int (*pfnOpen)(const char *pcPath, int iFlags);                      /**< open */
    int (*pfnClose)(int iFd);                                            /**< close */
    long (*pfnRead)(int iFd, void *pvBuf, size_t ulSize);                /**< read */
    int (*pfnFstat)(int iFd, struct stat *pstStat);                      /**< fstat */
    int (*pfnStatx)(const char *pcPath, struct statx *pstStat);          /**< of a link itself, with type and mount */
    int (*pfnStatfs)(const char *pcPath, struct statfs *pstStat);        /**< statfs */
    long (*pfnReadlink)(const char *pcPath, char *pcBuf, size_t ulSize); /**< readlink */
    int (*pfnFolderRead)(const char *pcPath, struct dirent ***pppstEntries); /**< scandir, documents in byte order */
    int (*pfnWatchMake)(void);                                               /**< inotify_init1 */
    int (*pfnWatchAdd)(int iFd, const char *pcPath, uint32_t uiMask);        /**< inotify_add_watch */
    int (*pfnWatchRemove)(int iFd, int iWatch);                              /**< inotify_rm_watch */
    int (*pfnTimerMake)(void);                                               /**< timerfd_create */
    int (*pfnTimerSet)(int iFd, const struct itimerspec *pstTime);           /**< timerfd_settime */
    int (*pfnPollMake)(void);                                                /**< epoll_create1 */
    int (*pfnPollAdd)(int iPollFd, int iFd);                                 /**< epoll_ctl */
} YamlWatchCalls;

/** Makes all watches of the process use other calls; NULL for the system's own. @return Those used so far. */
ZRYAML_API const YamlWatchCalls *yaml_WatchCallsSet(const YamlWatchCalls *pstCalls);

#ifdef __cplusplus
}
#endif

#endif
