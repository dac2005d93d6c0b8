/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_scalar.h - what a text is as a value: the one set of rules behind the typed reads of C and C++, binding and
 * the command, and the types of JSON that schemas go by.
 *
 * A text is a value as a whole or not at all, whatever the locale:
 *
 * integer    decimal, 0x or 0o, after an optional sign; 010 is ten. No blanks, no underscores.
 * number     decimal with optional fraction and exponent, .inf (.Inf .INF) after an optional sign, .nan (.NaN .NAN).
 *            One too large or too small for its type does not fit.
 * boolean    true, yes, on, false, no, off; also Capitalised and UPPER CASE.
 * duration   whole numbers with a unit each, from the largest to the smallest, after an optional sign: 500ms, 1h30m.
 *            Units are d h min (or m) s ms us ns. Zero has one too (0s), and there are no fractions.
 * size       bytes with an optional unit: 512, 64KiB, 1.5GB. KiB MiB GiB TiB PiB EiB are powers of 1024; kB (or KB)
 *            MB GB TB PB EB those of 1000; B is one. A fraction must come to whole bytes.
 */
#ifndef ZR_YAML_SCALAR_H
#define ZR_YAML_SCALAR_H

#include <zr_yaml.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Kinds of values that a text can be read as. */
#define YAML_KIND_INT 1U      /**< signed integer of 1, 2, 4 or 8 bytes */
#define YAML_KIND_UINT 2U     /**< unsigned integer of 1, 2, 4 or 8 bytes */
#define YAML_KIND_DOUBLE 3U   /**< float or double */
#define YAML_KIND_BOOL 4U     /**< 0 or 1 in 1, 2, 4 or 8 bytes */
#define YAML_KIND_DURATION 5U /**< nanoseconds, or other ticks, in 1, 2, 4 or 8 bytes */
#define YAML_KIND_BYTES 6U    /**< unsigned integer of 1, 2, 4 or 8 bytes */

/** The type that a text is read as. */
typedef struct YamlScalarType {
    uint32_t uiSize;      /**< sizeof(YamlScalarType) */
    uint32_t uiKind;      /**< YAML_KIND_* */
    uint32_t uiWidth;     /**< bytes of the variable */
    uint32_t bUnsigned;   /**< duration: 1 if the variable has no sign */
    uint64_t ulTick;      /**< duration: a tick is ulTick / ulTickParts nanoseconds; 0: it is one nanosecond */
    uint64_t ulTickParts; /**< duration: see above; 0 stands for 1 */
} YamlScalarType;

/** Begins a YamlScalarType of a kind and a width. */
#define YAML_SCALAR_TYPE(uiKind, uiWidth)                    \
    {                                                        \
        sizeof(YamlScalarType), (uiKind), (uiWidth), 0, 0, 0 \
    }

/**
 * Reads a text as a value.
 *
 * @param pstType  Type of the value.
 * @param pcText   Text, NUL-terminated.
 * @param pvValue  Receives the value; left alone on failure.
 * @return YAML_OK; YAML_ERR_VALUE if the text is not such a value or does not fit, or a tick is finer than a
 *         nanosecond; YAML_ERR_PARAM if an argument is NULL or there is no such type. Not logged.
 * @note   Any number of threads may call it. Nothing is allocated.
 */
ZRYAML_API uint32_t ZRYAML_ScalarRead(const YamlScalarType *pstType, const char *pcText, void *pvValue);

/**
 * Says why ZRYAML_ScalarRead refuses a text: "'80a' is not an integer".
 *
 * @param pstType   Type of the value.
 * @param pcText    Text, which is quoted, and cut where it is long.
 * @param uiBufSize Bytes of the buffer; 0 if pcBuf is NULL.
 * @param pcBuf     Receives the sentence, cut if it does not fit; "" if the text is such a value.
 * @return The length of the whole sentence, as snprintf.
 */
ZRYAML_API uint32_t ZRYAML_ScalarExplain(const YamlScalarType *pstType, const char *pcText, uint32_t uiBufSize,
                                         char *pcBuf);

/** Says what would be right: "an integer from 0 to 255 is expected". @return As ZRYAML_ScalarExplain. */
ZRYAML_API uint32_t ZRYAML_ScalarHint(const YamlScalarType *pstType, uint32_t uiBufSize, char *pcBuf);

/** Writes a value as a text that reads as the same value again. @return As ZRYAML_ScalarExplain. */
ZRYAML_API uint32_t ZRYAML_ScalarWrite(const YamlScalarType *pstType, const void *pvValue, uint32_t uiBufSize,
                                       char *pcBuf);

/**
 * Says what type a scalar has by the core schema of YAML 1.2, for tools whose types are those of JSON. A quoted scalar
 * or a block is a string; one that is plain, or that no file wrote, has the type of its text; a core tag written before
 * it decides over both, unless the text has no such type.
 *
 * @param pstValue  Value.
 * @return YAML_TAG_STR, _INT, _FLOAT, _BOOL or _NULL; YAML_TAG_NONE for a map, a sequence and NULL.
 */
ZRYAML_API uint32_t ZRYAML_CoreTagGet(const YamlListNode *pstValue);

/**
 * Says what type a plain text has by the core schema of YAML 1.2, which is stricter than the reads of this header:
 *
 * null       nothing, ~, null, Null, NULL
 * boolean    true, True, TRUE, false, False, FALSE
 * integer    decimal after an optional sign; 0x and 0o without one
 * float      decimal with a fraction or an exponent, .inf and .nan as above
 * string     any other text
 *
 * @param pcText    Text.
 * @param ulLength  Its bytes.
 * @return As ZRYAML_CoreTagGet; YAML_TAG_NONE for NULL.
 */
ZRYAML_API uint32_t ZRYAML_PlainTagGet(const char *pcText, size_t ulLength);

#ifdef __cplusplus
}
#endif

#endif
