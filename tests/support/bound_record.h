/* SPDX-License-Identifier: Apache-2.0 */
/* A record with fields of every kind, described in C. */
#pragma once

#include <stdbool.h>
#include <stdint.h>
#include <zr_yaml_bind.h>

#ifdef __cplusplus
extern "C" {
#endif

enum Mode { FAST, SAFE = 7 };
typedef struct Limits {
    uint64_t memory;
    int64_t timeout;
    float ratio;
} Limits;
typedef struct File {
    const char *path;
} File;
typedef struct Net {
    const char *host;
    uint16_t port;
} Net;
typedef struct Sink {
    unsigned kind;
    union {
        File file;
        Net net;
    } u;
} Sink;
typedef struct NamedPort {
    const char *key;
    uint16_t value;
} NamedPort;
typedef struct Tree {
    const char *name;
    struct Tree *kids;
    uint32_t kids_count;
} Tree;
typedef struct Server {
    const char *name;
    uint16_t port;
    bool tls;
    uint32_t *cores;
    size_t cores_count;
    int8_t prio;
    enum Mode mode;
    Limits limits;
    Limits *extra;
    const char *note;
    int *weight;
} Server;
typedef struct Bound {
    Server *servers;
    uint32_t servers_count;
    NamedPort *ports;
    uint32_t ports_count;
    Sink sink;
    Sink *sinks;
    uint32_t sinks_count;
    Tree tree;
    int64_t *delays;
    uint32_t delays_count;
    const char **names;
    uint32_t names_count;
    uint32_t colour;
} Bound;

extern const YamlRecord BoundRecord;
extern const YamlRecord DefaultsRecord; /* a Net */

/* Descriptions with one mistake each, and what is said about it. */
typedef struct WrongRecord {
    const YamlRecord *record;
    const char *sentence;
} WrongRecord;
extern const WrongRecord WrongRecords[];
extern const uint32_t WrongRecordCount;

#ifdef __cplusplus
}
#endif
