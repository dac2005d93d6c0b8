/* SPDX-License-Identifier: Apache-2.0 */
/* Records of eight fields, described in C. */
#pragma once

#include <stdbool.h>
#include <zr_yaml_bind.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ItemInC {
    const char *name;
    const char *host;
    uint16_t port;
    int32_t weight;
    double ratio;
    bool active;
    int64_t timeout;
    uint64_t memory;
} ItemInC;
typedef struct ItemsInC {
    ItemInC *items;
    uint32_t count;
} ItemsInC;
extern const YamlRecord ItemsInCRecord;

#ifdef __cplusplus
}
#endif
