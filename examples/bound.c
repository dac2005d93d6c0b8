/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <zr_yaml_bind.h>

typedef struct App {
    const char *name;
    uint16_t port;
    int64_t *retries; /* nanoseconds */
    uint32_t retry_count;
} App;
static const YamlField fields[] = {
    YAML_FIELD_TEXT(App, name, "name", .bRequired = 1),
    YAML_FIELD_UINT(App, port, "port", .pcDefault = "8080", .pcMin = "1"),
    YAML_FIELD_ARRAY(App, retries, retry_count, "retries", .uiElement = YAML_KIND_DURATION),
};
static const YamlRecord record = YAML_RECORD(App, fields);

int main(int argc, char **argv)
{
    YamlHandle *conf = ZRYAML_FileLoad(argc > 1 ? argv[1] : "examples/bound.yaml");
    if (conf == NULL) {
        const YamlErrorInfo *error = ZRYAML_LastErrorGet();
        fprintf(stderr, "%s:%u: %s\n", error->pcFile, error->uiLine, error->pcMessage);
        return 1;
    }
    App app = {0};
    YamlProblems *problems = NULL;
    uint32_t code = ZRYAML_RecordRead(conf, NULL, &record, &app, &problems);
    ZRYAML_ProblemsPrint(problems, stdout);
    if (code == YAML_OK)
        printf("%s listens on %u and tries %u times more\n", app.name, app.port, app.retry_count);
    ZRYAML_ProblemsFree(problems);
    ZRYAML_HandleFree(conf);
    return code != YAML_OK;
}
