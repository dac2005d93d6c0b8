/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_schema.h - checks a document against a JSON Schema. In libzryaml_schema.so; pkg-config zryaml_schema.
 *
 * @code
 * YamlProblems *problems = NULL;
 * YamlSchema *schema = ZRYAML_SchemaLoad("server.schema.json", &problems);
 * if (schema == NULL || ZRYAML_SchemaCheck(schema, ZRYAML_RootGet(conf), &problems) != YAML_OK)
 *     ZRYAML_ProblemsPrint(problems, stderr);
 * ZRYAML_ProblemsFree(problems);
 * ZRYAML_SchemaFree(schema);
 * @endcode
 *
 * Rules that always hold:
 *
 * Schemas    Draft-07, written in JSON or YAML; a schema of another draft is refused by name. All keywords are checked.
 *            Of formats date, date-time, time, email, hostname, ipv4, ipv6, uri, regex and json-pointer are checked,
 *            any other lets every string pass. Patterns are those of ECMA 262, looked for anywhere in the text; \\d,
 *            \\w and \\s mean ASCII.
 *
 * Values     A scalar has the type that ZRYAML_CoreTagGet gives: null, boolean, integer, number or string. Numbers are
 *            compared exactly. Maps are checked as they read, aliases and merges resolved.
 *
 * References "$ref" leads within the schema, to a schema by its "$id", to the meta-schema of draft-07, and to files
 *            below the folder of the schema's own file. Where the schema has an absolute "$id", URIs beside that one
 *            mean those files too. Nothing is fetched from a network.
 *
 * Trust      Neither schema nor document is trusted: patterns are matched within limits, a schema that leads back to
 *            itself is refused, and a check that costs too much ends with a problem that says so. A check of a deep
 *            document may use 2 MiB of stack.
 *
 * Log        Only what the loader logs about a schema that it refuses. While the debug switch is on, the keys of a
 *            checked value count as read.
 */
#ifndef ZR_YAML_SCHEMA_H
#define ZR_YAML_SCHEMA_H

#include "zr_yaml.h"
#include "zr_yaml_problem.h"

#ifdef __cplusplus
extern "C" {
#endif

/** A loaded schema. Opaque, never changed once it is loaded. */
typedef struct YamlSchema YamlSchema;

/**
 * Loads a schema from a file.
 *
 * @param pcPath        Path of the file.
 * @param ppstProblems  Receives what is wrong with the schema, of code YAML_ERR_SCHEMA and with its place in the
 *                      schema, or what the loader says; NULL where nothing is. The caller releases it. May be NULL.
 * @return The schema, released with ZRYAML_SchemaFree; NULL if anything is wrong: the file cannot be read, is no schema
 *         of draft-07, refers to what is not there or only to itself (YAML_ERR_SCHEMA), memory is short
 *         (YAML_ERR_NOMEM), or the path is NULL (YAML_ERR_PARAM).
 * @note   Any number of threads may load schemas at the same time.
 */
ZRYAML_API YamlSchema *ZRYAML_SchemaLoad(const char *pcPath, YamlProblems **ppstProblems);

/**
 * Loads a schema from memory, as ZRYAML_SchemaLoad does; such a schema has no folder, and so no files to refer to.
 *
 * @param pcText        Text of ulLength bytes; not needed after the call. May be NULL if ulLength is 0.
 * @param ulLength      Its length in bytes.
 * @param pcName        Stands for the file in problems; NULL for "".
 * @param ppstProblems  As above.
 * @return As above.
 */
ZRYAML_API YamlSchema *ZRYAML_SchemaTextLoad(const char *pcText, size_t ulLength, const char *pcName,
                                             YamlProblems **ppstProblems);

/**
 * Checks a value with all below it.
 *
 * @param pstSchema     Schema.
 * @param pstValue      Value; NULL, which is what ZRYAML_RootGet gives for an empty document, is checked as an empty
 * map. For a whole document &pstHandle->stRoot serves as well; what is wrong with an empty one then has the document's
 * name as its source.
 * @param ppstProblems  Receives all that is wrong, errors only, in document order; NULL where nothing is. The caller
 *                      releases it. May be NULL. Codes: YAML_ERR_VALUE (type, enum, const, pattern, format),
 *                      YAML_ERR_RANGE (bounds, lengths, counts), YAML_ERR_UNKNOWN_KEY (at the key, with the path of its
 *                      map), YAML_ERR_MISSING_KEY (at the map), YAML_ERR_SCHEMA (the rest).
 * @return YAML_OK if the value fits; YAML_ERR_SCHEMA if it does not or the check had to be given up; YAML_ERR_PARAM for
 *         a NULL schema; YAML_ERR_NOMEM.
 * @note   Any number of threads may check with one schema, and check one document.
 */
ZRYAML_API uint32_t ZRYAML_SchemaCheck(const YamlSchema *pstSchema, const YamlListNode *pstValue,
                                       YamlProblems **ppstProblems);

/** Releases a schema; NULL does nothing. */
ZRYAML_API void ZRYAML_SchemaFree(YamlSchema *pstSchema);

#ifdef __cplusplus
}
#endif

#endif
