/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_path.h - key paths and their steps, for programs that take them apart, make them, or go down from a value.
 *
 * A key path names steps down from a value: keys, separated by '.', and elements, as [n]: "servers[0].port". A
 * backslash takes the meaning from '.', '[', ']', '{' and '}'; "{a.b}" is the key "a.b", "{}" the empty key.
 *
 * What a step that leads nowhere means is one rule for typed reads, the C++ interface and the command. Absent
 * (YAML_ERR_NOT_FOUND) is a key that a map does not have, an element past the end of a sequence, and whatever is asked
 * for below an empty scalar ("server:" with nothing behind it) or in an empty document. Wrong (YAML_ERR_NODE_TYPE) is
 * anything below another scalar, a key of a sequence and an element of a map. A default may stand in for what is
 * absent, never for what is wrong.
 *
 * Nothing here is logged. Any number of threads may read one document.
 */
#ifndef ZR_YAML_PATH_H
#define ZR_YAML_PATH_H

#include "zr_yaml.h"

#ifdef __cplusplus
extern "C" {
#endif

/** A place in a key path, and the step that was read last. */
typedef struct YamlPathStep {
    uint32_t uiSize;         /**< sizeof(YamlPathStep); 0 stands for that of version 1.0 */
    uint32_t uiPlaceholders; /**< 1: an unescaped "{}" stands for text that is not in the path; set by the caller */
    const char *pcRest;      /**< what is left to read; the path, to begin with */
    size_t ulRest;           /**< its bytes */
    const char *pcText;   /**< the step: a key as written, with its escapes, or the digits of an index; in the path */
    size_t ulLength;      /**< its bytes */
    uint64_t ulIndex;     /**< number of the element */
    uint32_t uiIsIndex;   /**< 1: to an element; 0: to a key */
    uint32_t uiSeparated; /**< private: a '.' was read last; 0 to begin with */
} YamlPathStep;

/** The start of a YamlPathStep. */
#define YAML_PATH_STEP_INIT                                \
    {                                                      \
        sizeof(YamlPathStep), 0, NULL, 0, NULL, 0, 0, 0, 0 \
    }

/**
 * Reads the next step of a key path.
 *
 * @param pstStep  pcRest and ulRest as the path, the rest as YAML_PATH_STEP_INIT; then as the last call left it.
 * @return YAML_OK with a step; YAML_ERR_ITER_END at the end; YAML_ERR_KEY or YAML_ERR_INDEX where the path is
 *         malformed, with the sentence in the error record; YAML_ERR_PARAM for a NULL record or one that is too small.
 */
ZRYAML_API uint32_t ZRYAML_PathStepNext(YamlPathStep *pstStep);

/**
 * Takes the escapes out of the key of a step.
 *
 * @param pcText    Key as written.
 * @param ulLength  Its length in bytes.
 * @param pcBuf     Receives the key, not terminated; has room for ulLength bytes.
 * @return Bytes of the key.
 */
ZRYAML_API size_t ZRYAML_PathKeyRead(const char *pcText, size_t ulLength, char *pcBuf);

/**
 * Writes a key as a path has it, with escapes.
 *
 * @param pcKey      Key; the empty one is written "{}".
 * @param ulLength   Its length in bytes.
 * @param uiBufSize  Bytes of the buffer.
 * @param pcBuf      Receives the text, terminated if uiBufSize is not 0.
 * @return The length of the whole text; it did not fit, and was cut, if that is uiBufSize or more.
 */
ZRYAML_API uint32_t ZRYAML_PathKeyWrite(const char *pcKey, size_t ulLength, uint32_t uiBufSize, char *pcBuf);

/**
 * Takes one step down from a value.
 *
 * @param pstValue   Value; NULL stands for the top of an empty document.
 * @param pcKey      Key, compared byte for byte; NULL for an element.
 * @param ulKeyLen   Its length in bytes.
 * @param ulIndex    Number of the element, from 0.
 * @param ppstFound  Receives the value, or keeps what it held. While the debug switch is on, its key counts as read.
 * @return YAML_OK; YAML_ERR_NOT_FOUND or YAML_ERR_NODE_TYPE, as above. The error record is left alone.
 */
ZRYAML_API uint32_t ZRYAML_StepTake(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen, uint64_t ulIndex,
                                    const YamlListNode **ppstFound);

/**
 * Says in the error record what a step that leads nowhere means: code, sentence, hint ("did you mean 'port'?"), and the
 * place and source of the value it starts from.
 *
 * @return The code, as ZRYAML_StepTake gives it; YAML_OK, with no error, if the step leads somewhere.
 */
ZRYAML_API uint32_t ZRYAML_StepExplain(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen,
                                       uint64_t ulIndex);

/**
 * Says in the error record that a value is of another kind than is wanted: "servers[0] is a map, not a scalar".
 *
 * @param pstValue  Value, never NULL.
 * @param uiWanted  YAML_DATATYPE_*.
 * @return YAML_ERR_NOT_SCALAR if a scalar is wanted, else YAML_ERR_NODE_TYPE.
 */
ZRYAML_API uint32_t ZRYAML_KindExplain(const YamlListNode *pstValue, uint32_t uiWanted);

#ifdef __cplusplus
}
#endif

#endif
