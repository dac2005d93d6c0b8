/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_layers.h - several sources as one document, where each of its values came from, and what differs between two
 * documents.
 *
 * @code
 * const YamlLayer layers[] = {
 *     {.uiKind = YAML_LAYER_FILE, .pcSource = "/usr/share/app/base.yaml"},
 *     {.uiKind = YAML_LAYER_FILE_OPTIONAL, .pcSource = "/etc/app/site.yaml"},
 *     {.uiKind = YAML_LAYER_FOLDER_OPTIONAL, .pcSource = "/etc/app/conf.d"},
 *     {.uiKind = YAML_LAYER_ENVIRONMENT, .pcSource = "APP_"},
 *     {.uiKind = YAML_LAYER_ASSIGNMENT, .pcSource = "--set", .pcText = "servers[0].port=9090"},
 * };
 * YamlProblems *problems = NULL;
 * YamlHandle *conf = ZRYAML_LayersLoad(layers, 5, NULL, &problems);
 * ZRYAML_ProblemsPrint(problems, stderr);
 * ZRYAML_ProblemsFree(problems);
 * if (conf == NULL)
 *     return 1;
 * ...
 * ZRYAML_HandleFree(conf);
 * @endcode
 *
 * The rules of zr_yaml.h hold. How layers are put over each other, with examples: docs/layers.md.
 */
#ifndef ZR_YAML_LAYERS_H
#define ZR_YAML_LAYERS_H

#include "zr_yaml_problem.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Kinds of layers. */
#define YAML_LAYER_FILE 1U          /**< a file */
#define YAML_LAYER_FILE_OPTIONAL 2U /**< the same, and no error if there is no such file */
#define YAML_LAYER_FOLDER 3U /**< the files *.yaml and *.yml of a folder in byte order, none that begins with '.' */
#define YAML_LAYER_FOLDER_OPTIONAL 4U /**< the same, and no error if there is none */
#define YAML_LAYER_TEXT 5U            /**< a text in memory */
#define YAML_LAYER_ENVIRONMENT 6U     /**< the environment variables with a prefix */
#define YAML_LAYER_ASSIGNMENT 7U      /**< one "path=text" */

/** Flags of YamlLayerOptions. */
#define YAML_LAYERS_EXPAND 1U      /**< "${...}" in plain and double-quoted scalars of files and texts is replaced */
#define YAML_LAYERS_MERGE_FORMS 2U /**< "<<: [*a, *b]" and "<<: {k: v}" merge, as the YAML 1.1 merge-key type says */

/** One layer. Members that its kind does not use are NULL and 0. */
typedef struct YamlLayer {
    uint32_t uiKind;        /**< YAML_LAYER_* */
    uint32_t uiFlags;       /**< 0 */
    const char *pcSource;   /**< path; name of the text; prefix of the variables, such as "APP_", never empty; for an
                                 assignment the option it came from, such as "--set" */
    const char *pcText;     /**< of a text; of an assignment "servers[0].port=9090" */
    size_t ulLength;        /**< of a text, in bytes; it is not measured: 0 is an empty text */
    const void *pvReserved; /**< NULL */
} YamlLayer;

struct YamlRecord;

/** How layers are loaded; begin with YAML_LAYER_OPTIONS_INIT. */
typedef struct YamlLayerOptions {
    uint32_t uiSize;                    /**< sizeof(YamlLayerOptions) */
    uint32_t uiFlags;                   /**< YAML_LAYERS_* */
    const struct YamlRecord *pstRecord; /**< description of the document, so that variables reach fields that no file
                                             writes, and stray ones are told apart; NULL: none */
    const char *const *apcEnvironment;  /**< texts "NAME=value" up to a NULL, in the place of the process's
                                             environment; NULL: that one */
} YamlLayerOptions;

/** Where a value came from, filled by ZRYAML_OriginGet. */
typedef struct YamlOrigin {
    uint32_t uiSize;      /**< sizeof(YamlOrigin) */
    uint32_t uiLayer;     /**< index of its layer in the array that was loaded; 0 in a document that was loaded alone */
    uint32_t uiLine;      /**< 1-based; 0 for a variable or an assignment */
    uint32_t uiColumn;    /**< in characters, 1-based; 0 as above */
    const char *pcSource; /**< path of the file, name of the text, "environment APP_PORT" or "--set servers[0].port" */
    const char *pcText;   /**< text of a scalar; NULL for a map or a sequence */
} YamlOrigin;

/** Kinds of changes. */
#define YAML_CHANGE_ADDED 1U   /**< only the new document has the value */
#define YAML_CHANGE_REMOVED 2U /**< only the old document has it */
#define YAML_CHANGE_CHANGED 3U /**< both have a scalar there, with different texts */

/** One difference between two documents, filled by ZRYAML_ChangeNext. */
typedef struct YamlChange {
    uint32_t uiSize;            /**< sizeof(YamlChange) */
    uint32_t uiKind;            /**< YAML_CHANGE_* */
    const YamlListNode *pstOld; /**< the value in the old document; NULL if it was added */
    const YamlListNode *pstNew; /**< the value in the new document; NULL if it was removed */
    const void *apvPrivate[6];  /**< private: where the walk is */
} YamlChange;

/* clang-format off */
/** Initialiser of a YamlLayerOptions: nothing beyond the layers. */
#define YAML_LAYER_OPTIONS_INIT {sizeof(YamlLayerOptions), 0, NULL, NULL}
/** Initialiser of a YamlOrigin. */
#define YAML_ORIGIN_INIT {sizeof(YamlOrigin), 0, 0, 0, NULL, NULL}
/** Initialiser of a YamlChange: the first change comes next. */
#define YAML_CHANGE_INIT {sizeof(YamlChange), 0, NULL, NULL, {NULL, NULL, NULL, NULL, NULL, NULL}}
/* clang-format on */

/**
 * Loads layers and puts each over those before it, as one document.
 *
 * Later layers win: maps merge key by key; scalars and sequences are replaced whole, whatever kinds meet; an empty
 * plain "key:" leaves a map or sequence as it is. A key that is there keeps its place, a new one goes to the end. In
 * files and texts, !append and !prepend (sequences), !replace and !unset on a value of a map say otherwise. Each file
 * is loaded by the rules of ZRYAML_FileLoad, with its own aliases and merges resolved.
 *
 * @param pstLayers     uiCount layers, the lowest first; not needed after the call.
 * @param uiCount       At most 1000, and so are all files, texts, variables and assignments together; more are
 *                      YAML_ERR_LAYER. 0 gives an empty document.
 * @param pstOptions    NULL for none.
 * @param ppstProblems  Receives all problems of all layers, by layers, for ZRYAML_ProblemsFree: NULL if there are none;
 *                      notes and warnings may come with a document. May be NULL.
 * @return The document, on which every call works, released with ZRYAML_HandleFree; ZRYAML_NameGet gives the source of
 *         its first layer. NULL if there is an error, with nothing left behind; ZRYAML_LastErrorGet then holds the
 *         first: that of the load of a file, YAML_ERR_LAYER for layers, variables or assignments that do not fit,
 *         YAML_ERR_EXPAND for an interpolation, YAML_ERR_PARAM for an invalid argument, YAML_ERR_NOMEM. Each error is
 *         logged; warnings and notes are not.
 * @note   Any number of threads may load at the same time; none may change the process's environment meanwhile.
 */
ZRYAML_API YamlHandle *ZRYAML_LayersLoad(const YamlLayer *pstLayers, uint32_t uiCount,
                                         const YamlLayerOptions *pstOptions, YamlProblems **ppstProblems);

/**
 * Tells where a value came from, and which values of lower layers it took the place of.
 *
 * A map that layers merged comes from the lowest of them, and so does a sequence that was appended to. The place of an
 * interpolated scalar is its own, and its text the new one. Works for documents that were loaded alone as well.
 *
 * @param pstValue    Value of a document.
 * @param uiShadowed  0: where the value comes from; 1: the value that it replaced; and so on.
 * @param pstOrigin   Made by YAML_ORIGIN_INIT; filled on success only. Its texts belong to the document.
 * @return YAML_OK; YAML_ERR_ITER_END past the last; YAML_ERR_PARAM for a NULL argument or a record whose uiSize does
 *         not fit. Nothing is logged, and the error record stays as it is.
 */
ZRYAML_API uint32_t ZRYAML_OriginGet(const YamlListNode *pstValue, uint32_t uiShadowed, YamlOrigin *pstOrigin);

/**
 * Tells which scalars of the document an interpolated scalar took its text from.
 *
 * @param pstValue  Value of a document.
 * @param uiIndex   Number of the reference, from 0, in no certain order; those to the environment do not count.
 * @return The scalar, which may be interpolated itself; NULL past the last, or for NULL.
 */
ZRYAML_API const YamlListNode *ZRYAML_ReferenceGet(const YamlListNode *pstValue, uint32_t uiIndex);

/**
 * Takes the next difference between two documents: the innermost values that differ, in the new document's order, those
 * that were removed where they stood. Maps are compared by key, whatever the order, sequences by index, scalars by
 * text. An added or removed map or sequence is given by its scalars, an empty one as such; where the kinds differ, the
 * old value is removed and the new one added.
 *
 * @param pstOld     Old document; NULL is an empty one.
 * @param pstNew     New document; NULL is an empty one.
 * @param pstChange  YAML_CHANGE_INIT for the first change; then as the last call left it, with the same two documents.
 * @return YAML_OK with a change; YAML_ERR_ITER_END at the end; YAML_ERR_PARAM for a NULL record or one whose uiSize
 *         does not fit. Nothing is logged, and the error record stays as it is.
 */
ZRYAML_API uint32_t ZRYAML_ChangeNext(YamlHandle *pstOld, YamlHandle *pstNew, YamlChange *pstChange);

#ifdef __cplusplus
}
#endif

#endif
