/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_problem.h - what is told of a document: how grave it is, and what was probably meant.
 */
#ifndef ZR_YAML_PROBLEM_H
#define ZR_YAML_PROBLEM_H

#include "zr_yaml.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Levels of problems. */
#define YAML_PROBLEM_ERROR 0U   /**< the document cannot be used */
#define YAML_PROBLEM_WARNING 1U /**< it can be used, but probably does not say what was meant */
#define YAML_PROBLEM_NOTE 2U    /**< worth knowing */

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
