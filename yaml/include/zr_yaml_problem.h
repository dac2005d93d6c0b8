/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_problem.h - what is wrong with a document, each problem at its place.
 *
 * Whatever judges a document (binding, layers, interpolation, a schema, a host's own check) tells what it found in a
 * list of problems: all of them, in document order. A call that can find problems takes a YamlProblems ** that may be
 * NULL; otherwise it is always set, to NULL where there is nothing to say. The list belongs to the caller, who releases
 * it with ZRYAML_ProblemsFree; its texts outlive the document and the call. A list costs memory only when there is a
 * problem.
 *
 * A list may hold warnings and notes although the call succeeded. It keeps at most YAML_PROBLEM_MAX problems and then
 * ends with one more that says how many were left out. Where memory is short the list is shorter and ends with a
 * problem of YAML_ERR_NOMEM that says so.
 *
 * Distinct lists may be used by distinct threads; one list by one thread at a time, or by many that only read.
 */
#ifndef ZR_YAML_PROBLEM_H
#define ZR_YAML_PROBLEM_H

#include "zr_yaml.h"

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Levels of problems. */
#define YAML_PROBLEM_ERROR 0U   /**< the document cannot be used */
#define YAML_PROBLEM_WARNING 1U /**< it can be used, but probably does not say what was meant */
#define YAML_PROBLEM_NOTE 2U    /**< worth knowing */

/** Problems that a list keeps. */
#define YAML_PROBLEM_MAX 1000U

/** One problem. The texts belong to the list; none is NULL, an empty one says that there is nothing to say. */
typedef struct YamlProblem {
    uint32_t uiLevel;       /**< YAML_PROBLEM_* */
    uint32_t uiCode;        /**< YAML_ERR_* */
    uint32_t uiLine;        /**< 1-based; 0 where there is no place */
    uint32_t uiColumn;      /**< in characters, 1-based; 0 where there is no place */
    uint32_t uiFirstLine;   /**< a second place in the same source: the first of a repeated key, or where a value that
                                 an alias or a merge brought is written */
    uint32_t uiFirstColumn; /**< as above; both 0 where there is none */
    const char *pcSource;   /**< file or name of what the place lies in */
    const char *pcPath;     /**< key path of the value, with escapes; "" for the document */
    const char *pcMessage;  /**< one plain sentence without the place */
    const char *pcHint;     /**< the way out */
} YamlProblem;

/** A list of problems. Opaque. */
typedef struct YamlProblems YamlProblems;

/** @return The number of problems; 0 for NULL. */
ZRYAML_API uint32_t ZRYAML_ProblemCountGet(const YamlProblems *pstProblems);

/** @return Problem number uiIndex, from 0, until the list is freed or added to; NULL past the last and for NULL. */
ZRYAML_API const YamlProblem *ZRYAML_ProblemGet(const YamlProblems *pstProblems, uint32_t uiIndex);

/**
 * Adds what a host's own check found about a value.
 *
 * @param pstProblems  List that the library handed to the check.
 * @param uiLevel      YAML_PROBLEM_*.
 * @param pstValue     Value that the problem is about: it gives source, place and key path. NULL for none of them.
 * @param pcFormat     printf-style sentence about the value, without place and path: "must be a prime number".
 * @return YAML_OK, with a problem of code YAML_ERR_VALUE, or one problem more that was left out; YAML_ERR_PARAM for a
 *         NULL list or format or an unknown level; YAML_ERR_NOMEM. Not logged.
 */
ZRYAML_API uint32_t ZRYAML_ProblemAdd(YamlProblems *pstProblems, uint32_t uiLevel, const YamlListNode *pstValue,
                                      const char *pcFormat, ...) ZRYAML_PRINTF(4, 5);

/**
 * Adds a copy of a whole problem. For libraries that judge documents.
 *
 * @param ppstProblems  List, made when the first problem comes and *ppstProblems is NULL. NULL: nothing is done.
 * @param pstProblem    Problem; a NULL text stands for "".
 * @return YAML_OK; YAML_ERR_PARAM for a NULL problem; YAML_ERR_NOMEM: *ppstProblems is a list that says so.
 */
ZRYAML_API uint32_t ZRYAML_ProblemReport(YamlProblems **ppstProblems, const YamlProblem *pstProblem);

/**
 * Prints a list as compilers do, a line each, control characters escaped:
 *
 *     app.yaml:3:11: error: servers[0].port: '80a' is not an integer
 *     app.yaml:4:5: error: servers[0]: unknown key 'prot'
 *     app.yaml:4:5: note: did you mean 'port'?
 *
 * @param pstProblems  List; NULL prints nothing.
 * @param pstFile      Where to; NULL prints nothing.
 */
ZRYAML_API void ZRYAML_ProblemsPrint(const YamlProblems *pstProblems, FILE *pstFile);

/** Releases a list with its texts; NULL does nothing. */
ZRYAML_API void ZRYAML_ProblemsFree(YamlProblems *pstProblems);

/**
 * Loads a file as ZRYAML_FileLoad does, and looks for what it probably does not mean. Warnings are given for
 *
 * - a line such as "-b" that goes on with a text, where "- b" would be an element of a sequence;
 * - a key "<<" with a map or sequence written in place, which merges nothing.
 *
 * @param pcPath        Path of the file.
 * @param ppstProblems  Receives the warnings, or the one error of a load that fails; may be NULL.
 * @return As ZRYAML_FileLoad.
 */
ZRYAML_API YamlHandle *ZRYAML_FileReview(const char *pcPath, YamlProblems **ppstProblems);

/** As ZRYAML_FileReview, for a text; the other arguments are those of ZRYAML_TextLoad. */
ZRYAML_API YamlHandle *ZRYAML_TextReview(const char *pcText, size_t ulLength, const char *pcName,
                                         YamlProblems **ppstProblems);

/**
 * Finds what was probably meant: the one name that is clearly nearest to a text by insertions, deletions, changes and
 * swaps of neighbours; capitals of ASCII and small letters count as the same.
 *
 * @param pcText        Text.
 * @param apcNames      Names.
 * @param uiCount       How many.
 * @return One of the names; NULL if none is near, if two are equally near, or for a NULL argument.
 */
ZRYAML_API const char *ZRYAML_NearestTextGet(const char *pcText, const char *const *apcNames, uint32_t uiCount);

/**
 * As ZRYAML_NearestTextGet, among the keys of a map.
 *
 * @return The key's text, which belongs to the document; NULL also if pstMap is no map or has more than 1000 keys. The
 *         keys do not count as read.
 */
ZRYAML_API const char *ZRYAML_NearestKeyGet(const YamlListNode *pstMap, const char *pcText);

#ifdef __cplusplus
}
#endif

#endif
