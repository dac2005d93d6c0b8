/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml.h - read access to YAML 1.1 configuration files.
 *
 * Rules that always hold:
 *
 * Results    A call returns a code (YAML_OK is success, see YAML_ERR_*), a pointer (NULL is failure) or a count (0 also
 *            stands for failure). A failure is written to the log where it is found, the cause first; calls that
 *            fail in silence say so. What a failing load or read was about can also be asked for with
 *            ZRYAML_LastErrorGet by the thread that made the call.
 * Ownership  A YamlHandle owns every node and every text of its document. Texts and nodes handed out belong to it,
 *            are never to be changed or freed, and live until ZRYAML_HandleFree, or the last ZRYAML_HandleRelease
 *            where a watch gave the document. Iterators belong to the caller.
 * Texts      UTF-8 as libyaml delivers it, quotes and escapes resolved, NUL-terminated, no type conversion: 8080,
 *            true and ~ are texts. A text never holds a NUL character: a file with one is refused.
 * Records    A record that begins with uiSize can grow in a later version. Start from its initialiser, such as
 *            YAML_CHILD_INIT; a size of 0 ("{0}") stands for the record as it was in version 1.0. No call reads or
 *            writes beyond the size that it finds. Descriptions (YamlRecord) are made by their macros only.
 * Threads    The library starts none. Distinct documents may be loaded, read and freed on distinct threads at the
 *            same time. One document may be read by any number of threads, but none while it is being freed.
 *            After a fork, the child of a process with several threads may not call the library.
 * Limits     512 open collections deep, 1023 bytes of key path, scalars under 4 GiB; see ZRYAML_LimitsSet.
 *
 * The operations that the library itself is made of stand in zr_yaml/operations.h, which this header includes last;
 * define ZRYAML_STABLE_ONLY before it to see only what is promised to stay.
 */
#ifndef ZR_YAML_H
#define ZR_YAML_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
/** Marks an exported name. */
#define ZRYAML_API __attribute__((visibility("default")))
/** Lets the compiler check the arguments from number iFirst on against the printf-style format, number iFormat. */
#define ZRYAML_PRINTF(iFormat, iFirst) __attribute__((format(printf, iFormat, iFirst)))
#else
#define ZRYAML_API
#define ZRYAML_PRINTF(iFormat, iFirst)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Version and constants -------------------------------------------------------------------------------------- */

/** Version of this header; ZRYAML_VersionGet gives that of the loaded library. */
#define ZRYAML_VERSION_MAJOR 1 /**< a new one breaks programs */
#define ZRYAML_VERSION_MINOR 0 /**< a new one adds calls or fields */
#define ZRYAML_VERSION_PATCH 0 /**< a new one mends */
/** The version as one number that grows, such as 10203 for 1.2.3. */
#define ZRYAML_VERSION (ZRYAML_VERSION_MAJOR * 10000 + ZRYAML_VERSION_MINOR * 100 + ZRYAML_VERSION_PATCH)

/** Collections that may be open at once; the next one is refused. */
#define YAML_EVENT_STACK_SIZE 512
/** Bytes of the buffer for a formatted key path, its NUL included. */
#define YAML_KEY_BUF_SIZE 1024

/** Data types of nodes. */
#define YAML_DATATYPE_SEQ 0U    /**< sequence */
#define YAML_DATATYPE_MAP 1U    /**< map */
#define YAML_DATATYPE_SCALAR 2U /**< scalar */
#define YAML_DATATYPE_NONE 3U   /**< not known, or nothing there */

/** Styles of scalars: how the file wrote them. */
#define YAML_STYLE_NONE 0U    /**< not a scalar, or one that no file wrote */
#define YAML_STYLE_PLAIN 1U   /**< text */
#define YAML_STYLE_SINGLE 2U  /**< 'text' */
#define YAML_STYLE_DOUBLE 3U  /**< "text" */
#define YAML_STYLE_LITERAL 4U /**< a block after | */
#define YAML_STYLE_FOLDED 5U  /**< a block after > */

/** Core tags of scalars, where the file says one. */
#define YAML_TAG_NONE 0U  /**< none of these */
#define YAML_TAG_STR 1U   /**< !!str, or the lone ! */
#define YAML_TAG_INT 2U   /**< !!int */
#define YAML_TAG_FLOAT 3U /**< !!float */
#define YAML_TAG_BOOL 4U  /**< !!bool */
#define YAML_TAG_NULL 5U  /**< !!null */

/** Codes of results and log records. */
#define YAML_OK 0U
#define YAML_ERR_NOMEM 12U               /**< out of memory, or an expansion that is too large */
#define YAML_ERR_PARAM 22U               /**< invalid argument or unusable input */
#define YAML_ERR_KEY 0x19000002U         /**< malformed key path */
#define YAML_ERR_NOT_FOUND 0x19000003U   /**< nothing at this key path */
#define YAML_ERR_EMPTY 0x19000004U       /**< a branch that must have children has none */
#define YAML_ERR_BUF 0x19000005U         /**< key path or dump does not fit */
#define YAML_ERR_POOL 0x19000006U        /**< the memory pool could not be created */
#define YAML_ERR_OPEN 0x19000007U        /**< the file could not be opened */
#define YAML_ERR_PARSER_INIT 0x19000008U /**< the event parser could not be initialised */
#define YAML_ERR_INDEX 0x19000009U       /**< bad sequence index */
#define YAML_ERR_SAME 0x1900000AU        /**< repeated key */
#define YAML_ERR_EVENT 0x1900000BU       /**< a construct that is not supported at this place */
#define YAML_ERR_NODE_TYPE 0x1900000CU   /**< a node of the wrong kind for the key path or the query */
#define YAML_ERR_READER 0x1900000DU      /**< libyaml reader error: unreadable or badly encoded input */
#define YAML_ERR_SCANNER 0x1900000EU     /**< libyaml scanner error */
#define YAML_ERR_PARSE 0x1900000FU       /**< libyaml parser error, bad merge, or a load that failed as a whole */
#define YAML_ERR_NOT_SCALAR 0x19000011U  /**< the value is a map or a sequence */
#define YAML_ERR_SWITCH_OFF 0x19000012U  /**< the debug switch is off */
#define YAML_ERR_ALIAS 0x19000013U       /**< alias of an unknown or unfinished anchor */
#define YAML_ERR_ITER_END 0x19000014U    /**< nothing further: the normal end of a walk, never logged */
#define YAML_ERR_VALUE 0x19000015U       /**< a text that is not a value of the type asked for */
#define YAML_ERR_RANGE 0x19000016U       /**< a value outside its range, or a wrong number of them */
#define YAML_ERR_UNKNOWN_KEY 0x19000017U /**< a key that nothing asks for */
#define YAML_ERR_MISSING_KEY 0x19000018U /**< a required key that is not there */
#define YAML_ERR_LAYER 0x19000019U       /**< layers that do not fit over each other */
#define YAML_ERR_EXPAND 0x1900001AU      /**< a reference in a text that cannot be replaced */
#define YAML_ERR_SCHEMA 0x1900001BU      /**< an invalid schema, or a value that breaks one */

/* ---- Records ---------------------------------------------------------------------------------------------------- */

/** A loaded document. Opaque: only ever handed back to the library. */
typedef struct YamlHandle YamlHandle;

/** A value of a document: a scalar, a map or a sequence. Opaque; see "Walking". */
typedef struct YamlListNode YamlListNode;

/** A walk over the pairs below a key. Opaque; made by yaml_IteratorCreate, owned by the caller. */
typedef struct YamlIterator YamlIterator;

/** What a document may cost; see ZRYAML_LimitsSet. */
typedef struct YamlLimits {
    uint32_t uiSize;       /**< sizeof(YamlLimits) */
    uint32_t uiDepth;      /**< collections open at once, 1 to 512; by default 512 */
    uint32_t uiDirectives; /**< %TAG directives of a file; by default 1000 */
    uint64_t ulFileBytes;  /**< bytes of a file or text; by default 1 GiB */
    uint64_t ulCopyBytes;  /**< bytes that aliases and merges may be charged beyond 16 times those of the document's own
                                nodes and texts; by default 256 MiB. Each node visited is charged a node record, each
                                text copied its length plus one. */
} YamlLimits;

/** One pair, filled by a step of an iterator. Both texts belong to the document. */
typedef struct YamlKeyValue {
    const char *pcKey;   /**< the key's text */
    const char *pcValue; /**< the text of its value */
} YamlKeyValue;

/**
 * What the last failing call of a thread was about. The texts belong to the library and live until that thread's next
 * call; none is NULL, an empty one says that there is nothing to say. A text of more than 1023 bytes is cut and then
 * ends with "...". In message and hint a '?' stands for each control character that a text of the file has. The place
 * of a read that finds nothing, or not what it wants, is that of the deepest value on its way.
 */
typedef struct YamlErrorInfo {
    uint32_t uiSize;        /**< bytes of this record that the loaded library fills */
    uint32_t uiCode;        /**< YAML_ERR_*, or 0: the last call succeeded */
    uint32_t uiLine;        /**< where the mistake is, 1-based; 0 where there is no place */
    uint32_t uiColumn;      /**< in characters, 1-based; 0 where there is no place */
    uint32_t uiFirstLine;   /**< for a repeated key the place of the first one, else 0 */
    uint32_t uiFirstColumn; /**< as above */
    const char *pcMessage;  /**< what is wrong, in one plain sentence of one line, without the place */
    const char *pcHint;     /**< the way out, in plain words */
    const char *pcFile;     /**< path or name of the document as the caller gave it */
    const char *pcKeyPath;  /**< the formatted key path of a failing read */
    const char *pcRecord;   /**< the text of the log record that names the cause; may have more than one line */
} YamlErrorInfo;

/** One child of a map or sequence, filled by ZRYAML_ChildNextGet and ZRYAML_ChildGet. */
typedef struct YamlChild {
    uint32_t uiSize;              /**< sizeof(YamlChild) */
    uint32_t uiType;              /**< YAML_DATATYPE_* of the value */
    uint32_t uiIndex;             /**< number of the child, from 0 */
    const char *pcKey;            /**< the key's text; NULL for an element of a sequence */
    const YamlListNode *pstValue; /**< the key's value, or the element */
    const YamlListNode *pstEntry; /**< the key itself, or the element: for its place; also where the walk is */
} YamlChild;

/** One key that nobody read, filled by ZRYAML_UnreadKeyNext. */
typedef struct YamlUnreadKey {
    uint32_t uiSize;                /**< sizeof(YamlUnreadKey) */
    uint32_t uiLine;                /**< where the key, or the merge that brought it, stands, 1-based */
    uint32_t uiColumn;              /**< as above */
    uint32_t uiFromAlias;           /**< 1: an alias or a merge brought it; 0: written here */
    const char *pcKey;              /**< the key's text */
    const char *pcSource;           /**< path or name of what the place lies in */
    const YamlListNode *pstNode;    /**< private: where the walk is */
    char acPath[YAML_KEY_BUF_SIZE]; /**< key path with escapes; ends with "..." if it is longer than that */
} YamlUnreadKey;

/* clang-format off */
#define YAML_LIMITS_INIT {sizeof(YamlLimits), 0, 0, 0, 0}          /**< for ZRYAML_LimitsGet to fill */
#define YAML_CHILD_INIT {sizeof(YamlChild), 0, 0, NULL, NULL, NULL} /**< the first child comes next */
#define YAML_UNREAD_KEY_INIT {sizeof(YamlUnreadKey), 0, 0, 0, NULL, NULL, NULL, {0}} /**< the first key comes next */
/* clang-format on */

/** Statistics of one document. */
typedef struct YamlDebugInfo {
    uint32_t uiParseTime;    /**< ms that the load took */
    uint32_t uiMemSize;      /**< bytes counted while the debug switch was 1, at most 2^32 - 1 */
    uint32_t uiQueryCount;   /**< timed queries */
    uint32_t uiQueryTimeAvg; /**< ms per query, rounded down; every query counts its ms plus one */
} YamlDebugInfo;

/* ---- Load and release ------------------------------------------------------------------------------------------- */

/**
 * Loads a YAML 1.1 file of one document.
 *
 * Aliases and merge keys ("<<") are resolved by copying. Refused: a second document, a document that is a single
 * scalar, a map, sequence or alias as a map key, a repeated key, an unknown alias, more than 512 open collections, a
 * scalar with a NUL character, and whatever libyaml refuses. An empty file loads as an empty document.
 *
 * @param pcPath  Path of the file, or of anything else that can be opened and read to its end, such as a named pipe.
 * @return The document, released with ZRYAML_HandleFree; NULL on any failure (logged), with nothing left behind.
 * @note   Any number of threads may load at the same time, also for the first time.
 */
ZRYAML_API YamlHandle *ZRYAML_FileLoad(const char *pcPath);

/**
 * Loads a YAML 1.1 text of one document from memory, by the rules and with the messages of ZRYAML_FileLoad.
 *
 * @param pcText    Text of ulLength bytes, UTF-8 or UTF-16 with a byte order mark; not needed after the call. May be
 *                  NULL if ulLength is 0.
 * @param ulLength  Its length in bytes.
 * @param pcName    Stands for the file's name in the error record; NULL for "".
 * @return As ZRYAML_FileLoad.
 */
ZRYAML_API YamlHandle *ZRYAML_TextLoad(const char *pcText, size_t ulLength, const char *pcName);

/**
 * Sets the limits of all loads that begin from now on, process-wide.
 *
 * A load that exceeds one fails: with YAML_ERR_EVENT for depth and directives, with YAML_ERR_NOMEM for the bytes of a
 * file and of copies; the hint of the error record names the limit. Always refused (YAML_ERR_EVENT) are a directive of
 * more than 1024 bytes, and more than 16384 bytes of blanks and line breaks in a row with something behind them.
 *
 * @param pstLimits  All limits; start from ZRYAML_LimitsGet.
 * @return YAML_OK; YAML_ERR_PARAM if pstLimits is NULL or uiDepth is not 1 to 512 (logged, nothing changes).
 * @note   Any thread may call it at any time; a load sees either all old or all new limits.
 */
ZRYAML_API uint32_t ZRYAML_LimitsSet(const YamlLimits *pstLimits);

/** Reads the limits that hold into a record made by YAML_LIMITS_INIT; NULL is left alone. */
ZRYAML_API void ZRYAML_LimitsGet(YamlLimits *pstLimits);

/**
 * Tells why the last load or read of the calling thread failed.
 *
 * Every failing call that loads, layers, watches, binds, takes a key path, steps an iterator or diagnoses sets it, and
 * the next one that succeeds clears it; calls of "Walking" that fail in silence, and those that say so, leave it alone.
 * Of several log records of a call it keeps the first, the cause: a path that finds nothing is YAML_ERR_NOT_FOUND, and
 * YAML_ERR_EMPTY, YAML_ERR_INDEX or YAML_ERR_NODE_TYPE where it leads into a scalar, an empty branch, or a sequence
 * without an index.
 *
 * @return Never NULL; belongs to the thread, is overwritten by its next call. The first failure of a thread takes 5 KiB
 *         of memory for the texts, which the end of the thread gives back; where there is none left, code and place
 *         hold, and the message says so.
 * @note   A log sink may call the library: what it does leaves the record of the call that logs alone.
 */
ZRYAML_API const YamlErrorInfo *ZRYAML_LastErrorGet(void);

/** @return The path or name that a document was loaded with; lives as long as the document. "" for NULL. */
ZRYAML_API const char *ZRYAML_NameGet(const YamlHandle *pstHandle);

/** Releases a document with all its nodes and texts; NULL is left alone. Iterators on it can then only be destroyed. */
ZRYAML_API void ZRYAML_HandleFree(YamlHandle *pstHandle);

/* ---- Reading by key path ---------------------------------------------------------------------------------------- */
/*
 * A key path is a printf-style format with its arguments: "servers[%u].port". Once formatted it has 1 to 1023 bytes:
 *
 *   a.b        key b of the map under key a        a\.b      the key "a.b" (also \[ \] \{ \})
 *   a[2]       element 2 of the sequence a         {a.b}.c   key c below the key "a.b"
 *   a[2][0].b  and further down                    [0].b     where the document is a sequence
 *
 * A '%' that belongs to a key is written "%%". Indices count from 0.
 *
 * pstHandle is the document, pcKeyFormat the key path with its arguments; neither may be NULL (YAML_ERR_PARAM). A path
 * that is malformed fails with YAML_ERR_KEY, YAML_ERR_INDEX or YAML_ERR_BUF, one that finds nothing with
 * YAML_ERR_NOT_FOUND and what led to it; both are logged.
 */

/**
 * Reads one scalar text.
 *
 * @return The text as the file has it, "" for an empty value, the same pointer each time; it belongs to the document.
 *         NULL if an argument is NULL (not logged), if the path is bad or finds nothing, or if it ends at a map or
 *         sequence (YAML_ERR_NOT_SCALAR, logged).
 */
ZRYAML_API char *ZRYAML_PropertyGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/**
 * Reads the text of a scalar as an integer, by the rules of zr_yaml_scalar.h. The variable keeps what it held unless
 * the result is YAML_OK, so that it can begin with a default.
 *
 * @return YAML_OK; YAML_ERR_NOT_FOUND if nothing is there, also below an empty value (not logged); YAML_ERR_VALUE for a
 *         scalar that is not such a value or does not fit; YAML_ERR_NOT_SCALAR for a map or sequence;
 *         YAML_ERR_NODE_TYPE if the path leads below another scalar, or into the wrong kind of collection; the codes of
 *         a bad path or argument. The error record has sentence, hint, path and place.
 */
ZRYAML_API uint32_t ZRYAML_IntGet(YamlHandle *pstHandle, int64_t *plValue, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(3, 4);
/** Reads an unsigned integer; as ZRYAML_IntGet. */
ZRYAML_API uint32_t ZRYAML_UintGet(YamlHandle *pstHandle, uint64_t *pulValue, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(3, 4);
/** Reads a number; as ZRYAML_IntGet. */
ZRYAML_API uint32_t ZRYAML_DoubleGet(YamlHandle *pstHandle, double *pdValue, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(3, 4);
/** Reads a boolean, which becomes 0 or 1; as ZRYAML_IntGet. */
ZRYAML_API uint32_t ZRYAML_BoolGet(YamlHandle *pstHandle, uint32_t *puiValue, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(3, 4);
/** Reads a duration such as 250ms or 1h30m, in nanoseconds; as ZRYAML_IntGet. */
ZRYAML_API uint32_t ZRYAML_DurationGet(YamlHandle *pstHandle, int64_t *plNanoseconds, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(3, 4);
/** Reads a size such as 512, 64KiB or 1.5GB, in bytes; as ZRYAML_IntGet. */
ZRYAML_API uint32_t ZRYAML_BytesGet(YamlHandle *pstHandle, uint64_t *pulBytes, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(3, 4);

/**
 * Reads the number of elements of a sequence, which is the value of a key or itself an element ("rows[0]").
 *
 * @return The number; 0 for an empty sequence (not logged) and on any failure (logged), a value that is no sequence
 *         being YAML_ERR_NODE_TYPE.
 */
ZRYAML_API uint32_t ZRYAML_ArraySizeGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/**
 * Tells where a value stands in the file: line and column, both from 1, the column in characters; both variables are
 * left alone on failure. For a copy it is the place of the alias, or of the alias behind "<<", that brought it.
 *
 * @return YAML_OK; YAML_ERR_PARAM if an argument is NULL; else the code of the failed lookup (both logged).
 */
ZRYAML_API uint32_t ZRYAML_PositionGet(YamlHandle *pstHandle, uint32_t *puiLine, uint32_t *puiColumn,
                                       const char *pcKeyFormat, ...) ZRYAML_PRINTF(4, 5);

/** Finds a value, whatever its kind. @return The value, which belongs to the document; NULL on failure (logged). */
ZRYAML_API const YamlListNode *ZRYAML_ValueFind(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(2, 3);

/** @return The kind of a value, YAML_DATATYPE_SCALAR, _MAP or _SEQ; YAML_DATATYPE_NONE on failure (logged). */
ZRYAML_API uint32_t ZRYAML_TypeGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/* ---- Walking ---------------------------------------------------------------------------------------------------- */
/*
 * A value is a node of the tree: a scalar, a map or a sequence. Reads that take a value log nothing and show maps as
 * they read: merged keys with their present values, never a marked key. A NULL value is allowed everywhere and has no
 * children.
 */

/** @return The top map or sequence of a document; NULL for an empty one or a NULL handle. */
ZRYAML_API const YamlListNode *ZRYAML_RootGet(const YamlHandle *pstHandle);

/** @return The document that a value belongs to; NULL for NULL. */
ZRYAML_API YamlHandle *ZRYAML_DocumentGet(const YamlListNode *pstValue);

/** @return YAML_DATATYPE_SCALAR, _MAP or _SEQ; _NONE for NULL. */
ZRYAML_API uint32_t ZRYAML_ValueTypeGet(const YamlListNode *pstValue);

/** @return The text of a scalar; NULL for anything else. While the debug switch is on, its key counts as read. */
ZRYAML_API const char *ZRYAML_ValueTextGet(const YamlListNode *pstValue);

/** @return How a scalar was written, YAML_STYLE_*; YAML_STYLE_NONE for anything else and NULL. A copy keeps it. */
ZRYAML_API uint32_t ZRYAML_ValueStyleGet(const YamlListNode *pstValue);

/** @return The core tag before a scalar, YAML_TAG_*, which changes nothing about its text; YAML_TAG_NONE if there is
 * none or another one, and for NULL. A copy keeps it. */
ZRYAML_API uint32_t ZRYAML_ValueTagGet(const YamlListNode *pstValue);

/** Gives the place of a value, 1-based, or 0 and 0 for NULL; see ZRYAML_PositionGet. Neither output may be NULL. */
ZRYAML_API void ZRYAML_ValuePositionGet(const YamlListNode *pstValue, uint32_t *puiLine, uint32_t *puiColumn);

/** Gives the place where a value that an alias or a merge brought is written, below its anchor; 0 and 0 for a value
 * that is written where it stands, and for NULL. Neither output may be NULL. */
ZRYAML_API void ZRYAML_ValueWrittenGet(const YamlListNode *pstValue, uint32_t *puiLine, uint32_t *puiColumn);

/**
 * Writes the key path that finds a value, with escapes (a '%' is not doubled). No path leads below a key that ends with
 * a backslash, or to an element of a sequence under an empty key: the text is then for reading only.
 *
 * @param pstValue   Value; NULL has the path "".
 * @param uiBufSize  Bytes of the buffer.
 * @param pcBuf      Receives the path, "" for the root, terminated if uiBufSize is not 0.
 * @return The length of the whole path; it did not fit, and was cut, if that is uiBufSize or more.
 */
ZRYAML_API uint32_t ZRYAML_ValuePathGet(const YamlListNode *pstValue, uint32_t uiBufSize, char *pcBuf);

/** @return The number of keys of a map as it reads, or of elements of a sequence; 0 for anything else. */
ZRYAML_API uint32_t ZRYAML_ChildCountGet(const YamlListNode *pstValue);

/**
 * Takes the next child of a map or sequence, in document order.
 *
 * @param pstValue  Map or sequence; anything else has no children.
 * @param pstChild  YAML_CHILD_INIT for the first child; then as the last call left it.
 * @return YAML_OK with a child; YAML_ERR_ITER_END after the last one (the record is left alone); YAML_ERR_PARAM for a
 *         NULL record or one that is too small.
 */
ZRYAML_API uint32_t ZRYAML_ChildNextGet(const YamlListNode *pstValue, YamlChild *pstChild);

/** Takes child number uiIndex, from 0. @return As ZRYAML_ChildNextGet; the record is written on success only. */
ZRYAML_API uint32_t ZRYAML_ChildGet(const YamlListNode *pstValue, uint32_t uiIndex, YamlChild *pstChild);

/** @return The value of a map's key of ulKeyLen bytes, compared byte for byte; NULL if there is none. */
ZRYAML_API const YamlListNode *ZRYAML_ChildFind(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen);

/** As ZRYAML_ValueFind, by a key path of 1 to 1023 bytes that is no format: "%" is a character like any other. */
ZRYAML_API const YamlListNode *ZRYAML_PathFind(YamlHandle *pstHandle, const char *pcKeyPath);

/**
 * Walks the keys whose values nobody has read while the debug switch was on.
 *
 * A key counts as read when a lookup, an iterator or a walk has handed out its value or anything below it. Of a map or
 * sequence that nobody touched, only its own key is listed. A key whose value carries an anchor is a template and is
 * passed over with all below it.
 *
 * @param pstHandle  Document, loaded with the switch on or off.
 * @param pstKey     YAML_UNREAD_KEY_INIT for the first key; then as the last call left it.
 * @return YAML_OK with a key; YAML_ERR_ITER_END at the end; YAML_ERR_PARAM for a NULL argument, YAML_ERR_SWITCH_OFF
 *         while the switch is off (both logged).
 */
ZRYAML_API uint32_t ZRYAML_UnreadKeyNext(YamlHandle *pstHandle, YamlUnreadKey *pstKey);

/**
 * Starts a walk over the pairs below a key, whose value is a map or a sequence.
 *
 * A map yields each key whose value is a scalar, with that value; a sequence yields, for each element that is a map,
 * its first key if that one's value is a scalar. Everything else is passed over. On an element that is a sequence of
 * sequences it walks the first of them.
 *
 * @return The iterator, released with yaml_IteratorDestroy before or after the document; NULL on failure (logged):
 *         what a read by key path can meet, YAML_ERR_NOT_FOUND for neither map nor sequence (YAML_ERR_PARAM in the
 *         error record), or YAML_ERR_NOMEM.
 * @note   One thread at a time may use an iterator.
 */
ZRYAML_API YamlIterator *yaml_IteratorCreate(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/**
 * Takes the next pair of a walk, whose document has not been freed, into a record filled on success only.
 *
 * @return YAML_OK with a pair; YAML_ERR_ITER_END at the end, also on every further call; YAML_ERR_PARAM for a NULL or
 *         foreign argument (logged).
 */
ZRYAML_API uint32_t yaml_NextKeyValueGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue);

/** Releases an iterator; NULL and what is not an iterator are left alone. */
ZRYAML_API void yaml_IteratorDestroy(YamlIterator *pstIter);

/* ---- Diagnosis -------------------------------------------------------------------------------------------------- */

/**
 * Sets the process-wide debug switch.
 *
 * @param bSwitch  0 off (the start value); 1 on: loads trace their events and count memory, queries are timed and
 *                 counted, keys are marked as read; any other value: all but the trace and the count of memory.
 */
ZRYAML_API void ZRYAML_DebugSwitchSet(uint32_t bSwitch);

/**
 * Reads the statistics of a document into a record, which is filled on success only.
 *
 * @return YAML_OK; YAML_ERR_PARAM if an argument is NULL, YAML_ERR_SWITCH_OFF while the switch is off (both logged).
 */
ZRYAML_API uint32_t ZRYAML_DebugInfoGet(YamlHandle *pstHandle, YamlDebugInfo *pstDebugInfo);

/**
 * Renders the whole document for people (not YAML): maps in braces, sequences in brackets, texts as they are.
 *
 * @param pstHandle  Document.
 * @param uiBufSize  Bytes of the buffer; the text needs its length plus 3.
 * @param pcBuf      Receives the text and a NUL; on failure the text up to the piece that did not fit, terminated.
 * @return YAML_OK; YAML_ERR_PARAM for a NULL argument or size 0; YAML_ERR_BUF if the text does not fit, or if the
 *         document holds an empty map or sequence, which cannot be written (all logged).
 */
ZRYAML_API uint32_t ZRYAML_ContextDump(YamlHandle *pstHandle, uint32_t uiBufSize, char *pcBuf);

/** @return The name of a code, such as "YAML_ERR_NOT_FOUND"; "" for any other number. */
ZRYAML_API const char *ZRYAML_CodeNameGet(uint32_t uiCode);

/** @return ZRYAML_VERSION of the loaded library. */
ZRYAML_API uint32_t ZRYAML_VersionGet(void);

extern ZRYAML_API const char *const g_pcYAMLMiniVer;     /**< version of the YAML module */
extern ZRYAML_API const char *const g_pcYAMLInterSubVer; /**< internal version of the YAML module */
extern ZRYAML_API const char *const g_pcYAMLOuterVer;    /**< release of the product that ships it, set when built */
extern ZRYAML_API void *g_pstYamlMemHandle;              /**< the memory pool: NULL until the first load, then fixed */
extern ZRYAML_API uint32_t g_bYamlDebugSwitch;           /**< the debug switch; ZRYAML_DebugSwitchSet alone writes it */

#ifdef __cplusplus
}
#endif

#ifndef ZRYAML_STABLE_ONLY
#include "zr_yaml/operations.h" /* IWYU pragma: export */
#endif

#endif
