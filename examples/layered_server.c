/* SPDX-License-Identifier: Apache-2.0 */
/* A small server's configuration: defaults in the program, then a file of the site, then variables SERVER_*, then
 * arguments "--set path=text", all bound to one record. With --show-config it prints every value and where it came
 * from.
 *
 *     SERVER_LISTEN__PORT=9090 layered_server --show-config --set log.level=debug site.yaml
 */
#include <stdio.h>
#include <string.h>

#include <zr_yaml_bind.h>
#include <zr_yaml_layers.h>

static const char defaults[] = "listen: {address: 127.0.0.1, port: 8080}\n"
                               "log: {level: info}\n"
                               "workers: [{name: main, threads: 4}]\n";

typedef struct Listen {
    const char *address;
    uint16_t port;
} Listen;

typedef struct Log {
    const char *level;
    const char *file;
} Log;

typedef struct Worker {
    const char *name;
    uint32_t threads;
} Worker;

typedef struct Server {
    Listen listen;
    Log log;
    Worker *workers;
    size_t worker_count;
    int64_t timeout;
} Server;

static const YamlField listen_fields[] = {
    YAML_FIELD_TEXT(Listen, address, "address", .bRequired = 1),
    YAML_FIELD_UINT(Listen, port, "port", .bRequired = 1, .pcMin = "1"),
};
static const YamlRecord listen_record = YAML_RECORD(Listen, listen_fields);

static const YamlField log_fields[] = {
    YAML_FIELD_TEXT(Log, level, "level", .bRequired = 1),
    YAML_FIELD_TEXT(Log, file, "file", .pcDefault = "-", .pcDoc = "where to; - is the standard error output"),
};
static const YamlRecord log_record = YAML_RECORD(Log, log_fields);

static const YamlField worker_fields[] = {
    YAML_FIELD_TEXT(Worker, name, "name", .bRequired = 1),
    YAML_FIELD_UINT(Worker, threads, "threads", .pcDefault = "1", .pcMin = "1", .pcMax = "256"),
};
static const YamlRecord worker_record = YAML_RECORD(Worker, worker_fields);

static const YamlField server_fields[] = {
    YAML_FIELD_RECORD(Server, listen, "listen", .pstRecord = &listen_record),
    YAML_FIELD_RECORD(Server, log, "log", .pstRecord = &log_record),
    YAML_FIELD_ARRAY(Server, workers, worker_count, "workers", .pstRecord = &worker_record),
    YAML_FIELD_DURATION(Server, timeout, "timeout", .pcDefault = "30s"),
};
static const YamlRecord server_record = YAML_RECORD(Server, server_fields);

enum { MOST_LAYERS = 64 };

/* Prints each scalar below a value with its path, and all that it took the place of. */
static void show(const YamlListNode *value)
{
    if (ZRYAML_ValueTypeGet(value) == YAML_DATATYPE_SCALAR) {
        char path[YAML_KEY_BUF_SIZE];
        YamlOrigin origin = YAML_ORIGIN_INIT;
        (void)ZRYAML_ValuePathGet(value, sizeof(path), path);
        for (uint32_t i = 0; ZRYAML_OriginGet(value, i, &origin) == YAML_OK; ++i) {
            printf("%s%s: %s  # %s", i == 0 ? "" : "    instead of ", path, origin.pcText, origin.pcSource);
            if (origin.uiLine != 0)
                printf(":%u:%u", origin.uiLine, origin.uiColumn);
            printf("\n");
        }
    }
    YamlChild child = YAML_CHILD_INIT;
    while (ZRYAML_ChildNextGet(value, &child) == YAML_OK)
        show(child.pstValue);
}

static int problems_print(YamlProblems *problems)
{
    ZRYAML_ProblemsPrint(problems, stderr);
    ZRYAML_ProblemsFree(problems);
    return 1;
}

int main(int count, char **arguments)
{
    YamlLayer layers[MOST_LAYERS] = {
        {.uiKind = YAML_LAYER_TEXT, .pcSource = "defaults", .pcText = defaults, .ulLength = sizeof(defaults) - 1},
        {.uiKind = YAML_LAYER_FILE_OPTIONAL, .pcSource = "site.yaml"},
        {.uiKind = YAML_LAYER_ENVIRONMENT, .pcSource = "SERVER_"},
    };
    uint32_t layer_count = 3;
    int show_config = 0;
    for (int i = 1; i < count; ++i) {
        if (strcmp(arguments[i], "--show-config") == 0) {
            show_config = 1;
        } else if (strcmp(arguments[i], "--set") == 0 && i + 1 < count && layer_count < MOST_LAYERS) {
            layers[layer_count++] =
                (YamlLayer){.uiKind = YAML_LAYER_ASSIGNMENT, .pcSource = "--set", .pcText = arguments[++i]};
        } else if (arguments[i][0] != '-') {
            layers[1] = (YamlLayer){.uiKind = YAML_LAYER_FILE, .pcSource = arguments[i]};
        } else {
            fprintf(stderr, "usage: %s [--show-config] [--set PATH=TEXT]... [FILE]\n", arguments[0]);
            return 2;
        }
    }

    YamlLayerOptions options = YAML_LAYER_OPTIONS_INIT;
    options.uiFlags = YAML_LAYERS_EXPAND;
    options.pstRecord = &server_record;
    YamlProblems *problems = NULL;
    YamlHandle *conf = ZRYAML_LayersLoad(layers, layer_count, &options, &problems);
    int result = problems_print(problems);
    if (conf == NULL)
        return result;

    Server server = {0};
    if (ZRYAML_RecordRead(conf, NULL, &server_record, &server, &problems) == YAML_OK) {
        result = 0;
        if (show_config)
            show(ZRYAML_RootGet(conf));
        else
            printf("listening on %s:%u with %zu workers, log level %s\n", server.listen.address, server.listen.port,
                   server.worker_count, server.log.level);
    }
    (void)problems_print(problems);
    ZRYAML_HandleFree(conf);
    return result;
}
