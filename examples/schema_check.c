/* SPDX-License-Identifier: Apache-2.0 */
/* Checks a document against a JSON Schema: schema_check SCHEMA FILE */
#include <stdio.h>
#include <zr_yaml_schema.h>

int main(int argc, char **argv)
{
    YamlProblems *problems = NULL;
    YamlSchema *schema = ZRYAML_SchemaLoad(argc == 3 ? argv[1] : "examples/demo.schema.json", &problems);
    YamlHandle *conf = schema != NULL ? ZRYAML_FileLoad(argc == 3 ? argv[2] : "examples/demo.yaml") : NULL;
    int fits = conf != NULL && ZRYAML_SchemaCheck(schema, &conf->stRoot, &problems) == YAML_OK;
    if (schema != NULL && conf == NULL) {
        const YamlErrorInfo *error = ZRYAML_LastErrorGet();
        fprintf(stderr, "%s:%u:%u: %s\n", error->pcFile, error->uiLine, error->uiColumn, error->pcMessage);
    }
    ZRYAML_ProblemsPrint(problems, stderr);
    ZRYAML_ProblemsFree(problems);
    ZRYAML_SchemaFree(schema);
    ZRYAML_HandleFree(conf);
    if (fits)
        printf("the document fits\n");
    return fits ? 0 : 1;
}
