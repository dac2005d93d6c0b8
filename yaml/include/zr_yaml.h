/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml.h - read access to YAML 1.1 configuration files.
 *
 * Rules that always hold:
 *
 * Results    A call returns a code (0 is success, see YAML_ERR_*), a pointer (NULL is failure) or a count (0 also
 *            stands for failure). A failure is written to the log where it is found, the cause first; calls that
 *            fail in silence say so. What a failing load or read was about can also be asked for with
 *            ZRYAML_LastErrorGet by the thread that made the call.
 * Ownership  A YamlHandle owns every node and every text of its document. Texts and nodes handed out belong to it,
 *            are never to be changed or freed, and live until ZRYAML_HandleFree. Iterators belong to the caller.
 * Texts      UTF-8 as libyaml delivers it, quotes and escapes resolved, NUL-terminated, no type conversion: 8080,
 *            true and ~ are texts. A text never holds a NUL character: a file with one is refused.
 * Threads    The library starts none. Distinct documents may be loaded, read and freed on distinct threads at the
 *            same time. One document may be read by any number of threads, but none while it is being freed.
 * Limits     512 open collections deep, 1023 bytes of key path, scalars under 4 GiB; see ZRYAML_LimitsSet.
 */
#ifndef ZR_YAML_H
#define ZR_YAML_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <time.h>

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

/* libyaml's records, so that no libyaml header is needed here. */
struct yaml_event_s;
struct yaml_parser_s;

/* ---------------------------------------------------------------------------------------------------------------- */
/* Constants                                                                                                        */
/* ---------------------------------------------------------------------------------------------------------------- */

/** First word of every node, anchor record and iterator. */
#define YAML_NODE_MAGIC 0x123456FFU
/** Collections that may be open at once; the next one is refused. */
#define YAML_EVENT_STACK_SIZE 512
/** Bytes of the buffer for a formatted key path, its NUL included. */
#define YAML_KEY_BUF_SIZE 1024
/** Index of a key path component that carries none. */
#define YAML_INDEX_NONE 0xFFFFFFFFU

/** Data types of nodes. */
#define YAML_DATATYPE_SEQ 0U    /**< sequence */
#define YAML_DATATYPE_MAP 1U    /**< map */
#define YAML_DATATYPE_SCALAR 2U /**< scalar */
#define YAML_DATATYPE_NONE 3U   /**< not known, or nothing there */

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
#define YAML_ERR_ITER_END 0x19000014U    /**< no further pair: the normal end of an iteration, never logged */

/* ---------------------------------------------------------------------------------------------------------------- */
/* Records                                                                                                          */
/* ---------------------------------------------------------------------------------------------------------------- */

/** Head or link of a circular, doubly linked list. Empty, or in no list: both members point to the record itself. */
typedef struct YamlList {
    struct YamlList *next; /**< behind this one; in a head: the first */
    struct YamlList *prev; /**< before this one; in a head: the last */
} YamlList;

/**
 * One node of the tree.
 *
 * 1. A map node's children are its keys; a key's only child is its value; a sequence node's children are its
 *    elements; all in document order. Merged keys stand where "<<" stood; a key that follows one that overrides a
 *    merged key stands right behind that merged key.
 * 2. A child hangs by stSeqLink when its father is a sequence node or has a sequence as its value, else by
 *    stChildLink, and pstFather is the node whose stChildList holds it.
 * 3. A key written after a merge that brought the same key (uiSameWithAnchor 1) keeps no children: its value hangs
 *    under the merged key, and reads pass it over.
 */
typedef struct YamlListNode {
    uint32_t uiMagic;               /**< YAML_NODE_MAGIC */
    YamlList stChildLink;           /**< link of a key, or of a scalar or map value under a key */
    YamlList stChildList;           /**< the children */
    YamlList stSeqLink;             /**< link of an element, or of a sequence under a key or the root */
    YamlList stAllocLink;           /**< link in the document's list of all nodes; in the root: the head of it */
    uint32_t uiFromAlias;           /**< 1: a copy made for an alias or a merge */
    uint32_t uiSameWithAnchor;      /**< 1: a written key that repeats a merged key of the same map */
    struct YamlListNode *pstFather; /**< NULL for the root */
    uint32_t uiDataType;            /**< type of the node itself */
    uint32_t uiNextLevelType;       /**< type of its children, fixed by the first */
    char *pcValue;                  /**< text of a scalar; NULL for maps and sequences */
    /* Private to the library. */
    uint32_t uiLine;   /**< 1-based place of the event that made the node; 0 when there was none */
    uint32_t uiColumn; /**< 1-based, in characters */
    uint32_t uiState;  /**< bits for being open, anchored, read, and for where its memory comes from */
    union {
        uint32_t uiNumber;   /**< of an element in its sequence, from 0 */
        uint32_t uiTextMark; /**< of any other scalar: what tells its text from most others; 0 if not known */
    } uPlace;                /**< which one holds depends on the node */
    union {
        struct YamlKeyIndex *pstKeyIndex; /**< map node that is open and has many keys: its keys by text */
        struct YamlListNode *pstSameKey;  /**< marked key: the merged key it repeats; merged key: the one marked */
    } uPrivate;                           /**< which one holds depends on the node */
} YamlListNode;

/** What a document may cost; see ZRYAML_LimitsSet. */
typedef struct YamlLimits {
    uint32_t uiDepth;      /**< collections open at once, 1 to 512; by default 512 */
    uint32_t uiDirectives; /**< %TAG directives of a file; by default 1000 */
    uint64_t ulFileBytes;  /**< bytes of a file or text; by default 1 GiB */
    uint64_t ulCopyBytes;  /**< bytes that aliases and merges may be charged beyond 16 times those of the document's own
                                nodes and texts; by default 256 MiB. Each node visited is charged a node record, each
                                text copied its length plus one. */
} YamlLimits;

/** A loaded document. Only ever handed back to the library; the fields are published for diagnosis. */
typedef struct YamlHandle {
    YamlListNode stRoot;                           /**< its stAllocLink heads the list of all nodes */
    uint32_t uiEventDepth;                         /**< open collections, 0 after a load */
    YamlList stAnchorList;                         /**< finished anchors, the last finished first */
    YamlList stOpenAnchorList;                     /**< anchors on collections that have not ended */
    uint32_t auiEventStack[YAML_EVENT_STACK_SIZE]; /**< event types of the open collections, outermost first */
    uint32_t uiParseTime;                          /**< ms that the load took */
    uint32_t uiMemSize;                            /**< bytes counted while the debug switch was 1 */
    uint32_t uiQueryCount;                         /**< timed queries */
    uint64_t ulQueryTimeTotal;                     /**< ms, plus one for each timed query */
    /* Private to the library. */
    struct YamlAnchorIndex *pstAnchorIndex; /**< the finished anchors by name, while loading */
    const char *pcAlias;                    /**< the alias being resolved, while loading */
    uint64_t ulOwnBytes;                    /**< bytes of the nodes and texts that the file itself wrote */
    uint64_t ulCopyCharge;                  /**< bytes charged for what aliases and merges visited and copied */
    uint32_t uiCopyDepth;                   /**< collections entered by the copy under way */
    uint32_t uiLine;                        /**< place of the event at hand, 1-based, while loading */
    uint32_t uiColumn;                      /**< as above, in characters */
    YamlLimits stLimits;                    /**< the limits as they were when the load began */
    uint32_t uiOwnBlocks;                   /**< not 0: there are nodes with blocks of their own */
    struct {
        char *pcFree;                     /**< where the next piece begins */
        size_t ulFree;                    /**< bytes left in the block at hand */
        struct YamlStoreBlock *pstBlocks; /**< all blocks, the youngest first */
        uint32_t uiBlockSize;             /**< of the next block; 0 unless loading */
    } stStore;                            /**< memory of the nodes and texts that the load made */
    const char *pcName;                   /**< the file's path or the text's name, as the caller gave it */
} YamlHandle;

/** The record of one anchor, while a file is loaded. */
typedef struct YamlAnchorNode {
    uint32_t uiMagic;              /**< YAML_NODE_MAGIC once recorded */
    YamlList stAnchorLink;         /**< link in one of the handle's anchor lists */
    char *pcAnchorName;            /**< owned by the record */
    YamlListNode *pstAnchoredNode; /**< borrowed from the tree */
} YamlAnchorNode;

/** A walk over the pairs below a key; made by yaml_IteratorCreate, owned by the caller. */
typedef struct YamlIterator {
    uint32_t uiMagic;            /**< YAML_NODE_MAGIC */
    uint32_t uiIterType;         /**< YAML_DATATYPE_MAP or YAML_DATATYPE_SEQ */
    YamlListNode *pstCurrNode;   /**< key or element that gave the last pair; pstFatherNode before the first */
    YamlListNode *pstFatherNode; /**< the map or sequence that is walked */
} YamlIterator;

/** One pair, filled by a step of an iterator. Both texts belong to the document. */
typedef struct YamlKeyValue {
    const char *pcKey;   /**< the key's text */
    const char *pcValue; /**< the text of its value */
} YamlKeyValue;

/**
 * What the last failing call of a thread was about. The texts belong to the library and live until that thread's next
 * call; none is NULL, an empty one says that there is nothing to say. A message or name of more than 1023 bytes is cut
 * and then ends with "...".
 */
typedef struct YamlErrorInfo {
    uint32_t uiCode;        /**< YAML_ERR_*, or 0: the last call succeeded */
    uint32_t uiLine;        /**< where the mistake is, 1-based; 0 where there is no place */
    uint32_t uiColumn;      /**< in characters, 1-based; 0 where there is no place */
    uint32_t uiFirstLine;   /**< for a repeated key the place of the first one, else 0 */
    uint32_t uiFirstColumn; /**< as above */
    const char *pcMessage;  /**< the text of the log record that names the cause */
    const char *pcHint;     /**< what is probably wrong at the place, in plain words */
    const char *pcFile;     /**< path or name of the document as the caller gave it */
    const char *pcKeyPath;  /**< the formatted key path of a failing read */
} YamlErrorInfo;

/** One child of a map or sequence, filled by ZRYAML_ChildNextGet and ZRYAML_ChildGet. */
typedef struct YamlChild {
    const char *pcKey;            /**< the key's text; NULL for an element of a sequence */
    const YamlListNode *pstValue; /**< the key's value, or the element */
    uint32_t uiType;              /**< YAML_DATATYPE_* of the value */
    uint32_t uiIndex;             /**< number of the child, from 0 */
    const YamlListNode *pstEntry; /**< private: where the walk is */
} YamlChild;

/** One key that nobody read, filled by ZRYAML_UnreadKeyNext. */
typedef struct YamlUnreadKey {
    const char *pcKey;              /**< the key's text */
    uint32_t uiLine;                /**< where the key, or the merge that brought it, stands, 1-based */
    uint32_t uiColumn;              /**< as above */
    uint32_t uiFromAlias;           /**< 1: an alias or a merge brought it; 0: written here */
    char acPath[YAML_KEY_BUF_SIZE]; /**< key path with escapes; ends with "..." if it is longer than that */
    const YamlListNode *pstNode;    /**< private: where the walk is */
} YamlUnreadKey;

/** Statistics of one document. */
typedef struct YamlDebugInfo {
    uint32_t uiParseTime;    /**< ms that the load took */
    uint32_t uiMemSize;      /**< bytes counted while the debug switch was 1 */
    uint32_t uiQueryCount;   /**< timed queries */
    uint32_t uiQueryTimeAvg; /**< ms per query, rounded down; every query counts its ms plus one */
} YamlDebugInfo;

/* ---------------------------------------------------------------------------------------------------------------- */
/* Load and release                                                                                                 */
/* ---------------------------------------------------------------------------------------------------------------- */

/**
 * Loads a YAML 1.1 file of one document.
 *
 * Aliases and merge keys ("<<") are resolved by copying. Refused: a second document, a document that is a single
 * scalar, a map, sequence or alias as a map key, a repeated key, an unknown alias, more than 512 open collections, a
 * scalar with a NUL character, and whatever libyaml refuses. An empty file loads as an empty document.
 *
 * @param pcPath  Path of the file, resolved with realpath(3) and opened for reading.
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
 * A load that exceeds a limit fails: depth "The collections are nested too deep. (Depth=%u)" (0x1900000B), directives
 * "There are too many directives. (Limit=%u)" (0x1900000B; one of more than 1024 bytes is refused always, and so are
 * more than 16384 bytes of blanks and line breaks in a row with something behind them, "There are too many blanks in a
 * row. (Limit=%zu)"), bytes of a file "The file is too large. (Limit=%zu)" (12), bytes of copies "The alias expansion
 * is too large. (Alias=%s)" (12); the hint of the error record names the limit.
 *
 * @param pstLimits  All limits; start from ZRYAML_LimitsGet.
 * @return 0; 22 if pstLimits is NULL or uiDepth is not 1 to 512 (logged, nothing changes).
 * @note   Any thread may call it at any time; a load sees either all old or all new limits.
 */
ZRYAML_API uint32_t ZRYAML_LimitsSet(const YamlLimits *pstLimits);

/** Reads the limits that hold; NULL is left alone. */
ZRYAML_API void ZRYAML_LimitsGet(YamlLimits *pstLimits);

/**
 * Tells why the last load or read of the calling thread failed.
 *
 * Set by every failing call that loads, takes a key path, steps an iterator or diagnoses, cleared by the next one that
 * succeeds; the calls of "Walking" that fail in silence leave it alone. Of a call that logs more than one
 * record the first, the cause, is kept: a path that finds nothing is 0x19000003, and 0x19000004, 0x19000009 or
 * 0x1900000C where it leads into a scalar, an empty branch, or a sequence without an index.
 *
 * @return Never NULL; belongs to the thread, is overwritten by its next call. Nothing is allocated for it.
 */
ZRYAML_API const YamlErrorInfo *ZRYAML_LastErrorGet(void);

/** @return The path or name that a document was loaded with; lives as long as the document. "" for NULL. */
ZRYAML_API const char *ZRYAML_NameGet(const YamlHandle *pstHandle);

/**
 * Releases a document with all its nodes and texts.
 *
 * @param pstHandle  Document, or NULL for nothing. Iterators on it are not released and can then only be destroyed.
 */
ZRYAML_API void ZRYAML_HandleFree(YamlHandle *pstHandle);

/* ---------------------------------------------------------------------------------------------------------------- */
/* Reading by key path                                                                                              */
/* ---------------------------------------------------------------------------------------------------------------- */
/*
 * A key path is a printf-style format with its arguments: "servers[%u].port". Once formatted it has 1 to 1023 bytes:
 *
 *   a.b        key b of the map under key a        a\.b      the key "a.b" (also \[ \] \{ \})
 *   a[2]       element 2 of the sequence a         {a.b}.c   key c below the key "a.b"
 *   a[2][0].b  and further down                    [0].b     where the document is a sequence
 *
 * A '%' that belongs to a key is written "%%". Indices count from 0.
 */

/**
 * Reads one scalar text by key path.
 *
 * @param pstHandle    Document.
 * @param pcKeyFormat  Key path, printf-style, with its arguments.
 * @return The text as the file has it, "" for an empty value, the same pointer each time; it belongs to the document.
 *         NULL if an argument is NULL (not logged), if the path is malformed (0x19000002, 0x19000005, 0x19000009) or
 *         finds nothing (0x19000003 and what led to it), or if it ends at a map or sequence (0x19000011).
 * @note   Any number of threads may read one document.
 */
ZRYAML_API char *ZRYAML_PropertyGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/**
 * Reads the number of elements of a sequence by key path.
 *
 * @param pstHandle    Document.
 * @param pcKeyFormat  Key path, printf-style, with its arguments; it names a key whose value is a sequence, or an
 *                     element ("rows[0]") that is one.
 * @return The number of elements; 0 for an empty sequence (not logged) and on any failure (logged): an argument that
 *         is NULL (22), a path that is malformed or finds nothing, or a value that is no sequence (0x1900000C).
 */
ZRYAML_API uint32_t ZRYAML_ArraySizeGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/**
 * Tells where a value stands in the file.
 *
 * @param pstHandle    Document.
 * @param puiLine      Receives the line, from 1; left alone on failure.
 * @param puiColumn    Receives the column in characters, from 1; left alone on failure.
 * @param pcKeyFormat  Key path, printf-style, with its arguments, to a key (the place of its value) or an element.
 * @return 0; 22 if an argument is NULL; else the code of the failed lookup (both logged). For a copy it is the place of
 *         the alias, or of the alias behind "<<", that brought it.
 */
ZRYAML_API uint32_t ZRYAML_PositionGet(YamlHandle *pstHandle, uint32_t *puiLine, uint32_t *puiColumn,
                                       const char *pcKeyFormat, ...) ZRYAML_PRINTF(4, 5);

/**
 * Finds the value at a key path, whatever its kind.
 *
 * @param pstHandle    Document.
 * @param pcKeyFormat  Key path, printf-style, with its arguments.
 * @return The value, which belongs to the document; NULL if an argument is NULL (22) or nothing is found (logged).
 */
ZRYAML_API const YamlListNode *ZRYAML_ValueFind(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
    ZRYAML_PRINTF(2, 3);

/**
 * Tells the kind of the value at a key path.
 *
 * @return YAML_DATATYPE_SCALAR, _MAP or _SEQ; YAML_DATATYPE_NONE if an argument is NULL (22) or nothing is found
 *         (logged).
 */
ZRYAML_API uint32_t ZRYAML_TypeGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/* ---------------------------------------------------------------------------------------------------------------- */
/* Walking                                                                                                          */
/* ---------------------------------------------------------------------------------------------------------------- */
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

/** Gives the place of a value, 1-based, or 0 and 0 for NULL; see ZRYAML_PositionGet. Neither output may be NULL. */
ZRYAML_API void ZRYAML_ValuePositionGet(const YamlListNode *pstValue, uint32_t *puiLine, uint32_t *puiColumn);

/**
 * Writes the key path of a value, with escapes, as it would be written to find it (a '%' is not doubled). Paths cannot
 * express everything: nothing below a key that ends with a backslash, and no element of a sequence under an empty key;
 * the text is then for reading only.
 *
 * @param pstValue   Value; NULL has the path "".
 * @param pcBuf      Receives the path, "" for the root, terminated if uiBufSize is not 0.
 * @param uiBufSize  Bytes of the buffer.
 * @return The length of the whole path; it did not fit, and was cut, if that is uiBufSize or more.
 */
ZRYAML_API uint32_t ZRYAML_ValuePathGet(const YamlListNode *pstValue, uint32_t uiBufSize, char *pcBuf);

/** @return The number of keys of a map as it reads, or of elements of a sequence; 0 for anything else. */
ZRYAML_API uint32_t ZRYAML_ChildCountGet(const YamlListNode *pstValue);

/**
 * Takes the next child of a map or sequence, in document order.
 *
 * @param pstValue  Map or sequence; anything else has no children.
 * @param pstChild  All zero for the first child; then as the last call left it.
 * @return 0 with a child; 0x19000014 at the end, or if pstValue has no children, with the record left alone; 22 for a
 *         NULL record.
 */
ZRYAML_API uint32_t ZRYAML_ChildNextGet(const YamlListNode *pstValue, YamlChild *pstChild);

/** Takes child number uiIndex, from 0. @return As ZRYAML_ChildNextGet; the record is written on success only. */
ZRYAML_API uint32_t ZRYAML_ChildGet(const YamlListNode *pstValue, uint32_t uiIndex, YamlChild *pstChild);

/** @return The value of a map's key of ulKeyLen bytes, compared byte for byte; NULL if there is none. */
ZRYAML_API const YamlListNode *ZRYAML_ChildFind(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen);

/**
 * Finds a value by a key path that is no format: "%" is a character like any other.
 *
 * @param pstHandle  Document.
 * @param pcKeyPath  Key path of 1 to 1023 bytes.
 * @return As ZRYAML_ValueFind.
 */
ZRYAML_API const YamlListNode *ZRYAML_PathFind(YamlHandle *pstHandle, const char *pcKeyPath);

/**
 * Walks the keys whose values nobody has read while the debug switch was on.
 *
 * A key counts as read when a lookup, an iterator or a walk has handed out its value or anything below it. Of a map or
 * sequence that nobody touched, only its own key is listed. A key whose value carries an anchor is a template and is
 * passed over with all below it.
 *
 * @param pstHandle  Document, loaded with the switch on or off.
 * @param pstKey     All zero for the first key; then as the last call left it.
 * @return 0 with a key; 0x19000014 at the end; 22 for a NULL argument, 0x19000012 while the switch is off (logged).
 */
ZRYAML_API uint32_t ZRYAML_UnreadKeyNext(YamlHandle *pstHandle, YamlUnreadKey *pstKey);

/**
 * Starts a walk over the pairs below a key.
 *
 * A map yields each key whose value is a scalar, with that value; a sequence yields, for each element that is a map,
 * its first key if that one's value is a scalar. Everything else is passed over.
 *
 * @param pstHandle    Document.
 * @param pcKeyFormat  Key path, printf-style, with its arguments, to a key whose value is a map or a sequence.
 * @return The iterator, released with yaml_IteratorDestroy before or after the document; NULL on failure (logged):
 *         an argument is NULL (22), nothing found, neither map nor sequence (0x19000003, and 22 in the error record),
 *         out of memory (12). On an element that is a sequence of sequences it walks the first of them.
 * @note   One thread at a time may use an iterator.
 */
ZRYAML_API YamlIterator *yaml_IteratorCreate(YamlHandle *pstHandle, const char *pcKeyFormat, ...) ZRYAML_PRINTF(2, 3);

/**
 * Takes the next pair of a walk.
 *
 * @param pstIter      Iterator whose document has not been freed.
 * @param pstKeyValue  Filled on success only.
 * @return 0 with a pair; 0x19000014 at the end, also on every further call; 22 for a NULL or foreign argument (logged).
 */
ZRYAML_API uint32_t yaml_NextKeyValueGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue);

/** Releases an iterator; NULL and a record that is none are left alone. */
ZRYAML_API void yaml_IteratorDestroy(YamlIterator *pstIter);

/* ---------------------------------------------------------------------------------------------------------------- */
/* Diagnosis                                                                                                        */
/* ---------------------------------------------------------------------------------------------------------------- */

/**
 * Sets the process-wide debug switch.
 *
 * @param bSwitch  0 off (the start value); 1 on: loads trace their events and count memory, queries are timed and
 *                 counted, keys are marked as read; any other value: all but the trace and the count of memory.
 */
ZRYAML_API void ZRYAML_DebugSwitchSet(uint32_t bSwitch);

/**
 * Reads the statistics of a document.
 *
 * @param pstHandle     Document.
 * @param pstDebugInfo  Filled on success only.
 * @return 0; 22 if an argument is NULL, 0x19000012 while the debug switch is off (both logged).
 */
ZRYAML_API uint32_t ZRYAML_DebugInfoGet(YamlHandle *pstHandle, YamlDebugInfo *pstDebugInfo);

/**
 * Writes a picture of the whole document as text: maps in braces, sequences in brackets, texts as they are.
 *
 * @param pstHandle  Document.
 * @param uiBufSize  Bytes of the buffer; the text needs its length plus 3.
 * @param pcBuf      Receives the text and a NUL; on failure the text up to the piece that did not fit, terminated.
 * @return 0; 22 for a NULL argument or size 0; 0x19000005 if the text does not fit or the document holds an empty map
 *         or sequence, which has no picture (all logged).
 */
ZRYAML_API uint32_t ZRYAML_ContextDump(YamlHandle *pstHandle, uint32_t uiBufSize, char *pcBuf);

/** The library's memory pool: NULL until the first load, then never changed. */
extern ZRYAML_API void *g_pstYamlMemHandle;
/** The debug switch; written by ZRYAML_DebugSwitchSet only. */
extern ZRYAML_API uint32_t g_bYamlDebugSwitch;
/** Version of the YAML module. */
extern ZRYAML_API const char *const g_pcYAMLMiniVer;
/** Internal version of the YAML module. */
extern ZRYAML_API const char *const g_pcYAMLInterSubVer;
/** Release of the product that ships the library, set when it is built. */
extern ZRYAML_API const char *const g_pcYAMLOuterVer;

/* ---------------------------------------------------------------------------------------------------------------- */
/* Internal operations, exported for tests and tools; some serve only those. They trust their arguments: no pointer   */
/* may be NULL unless it is said. A result of type uint32_t is a code unless it is said.                             */
/* ---------------------------------------------------------------------------------------------------------------- */

/** @name Platform
 *  @{ */
/** Makes sure that the memory pool exists. Guarded against several threads; a failure is tried again by the next. */
ZRYAML_API uint32_t yaml_MemInit(void);
/** @return g_pstYamlMemHandle. */
ZRYAML_API void *yaml_MemHandleGet(void);
/** @return The value of the debug switch. */
ZRYAML_API uint32_t yaml_IsDebugSwitchOpen(void);
/** @} */

/** @name Nodes and handle
 *  @{ */
/** Makes a record an empty node: no links, no father, no text, both types none. */
ZRYAML_API void yaml_NodeInit(YamlListNode *pstNode);
/** @return A new node of the document, in no tree position yet; NULL if out of memory (logged, 12). */
ZRYAML_API YamlListNode *yaml_ListNodeAlloc(YamlHandle *pstHandle);
/** Takes a node out of all its lists and releases it with its text; its children stay, with no father. */
ZRYAML_API void yaml_ListNodeFree(YamlListNode *pstNode);
/** @return A copy of the text from the pool, counted in uiMemSize if uiCountFlag is 1; NULL if out of memory or if
 *  the text has 4 GiB or more (logged, 12). A counted one belongs to its node, any other to the caller. */
ZRYAML_API char *yaml_ValueDup(YamlHandle *pstHandle, uint32_t uiCountFlag, const char *pcText);
/** @return A new scalar node with a copy of the text, in no tree position yet; NULL if out of memory (logged). */
ZRYAML_API YamlListNode *yaml_ScalarNodeCreate(YamlHandle *pstHandle, const char *pcText);
/** Compares texts. uiMode 0: with the file's own nodes only, 1: with copies only, other: with all.
 *  @return 0, or 0x1900000A if equal. */
ZRYAML_API uint32_t yaml_ScalarSameCheck(const YamlListNode *pstListNode, const YamlListNode *pstCandidate,
                                         uint32_t uiMode);
/** yaml_ScalarSameCheck over the keys of a map. @return 0, or 0x1900000A if one is equal. */
ZRYAML_API uint32_t yaml_ListSameScalarCheck(const YamlList *pstHead, uint32_t uiMode,
                                             const YamlListNode *pstCandidate);
/** @return 1 if the node is its father's first child, else 0. */
ZRYAML_API uint32_t yaml_FirstNodeCheck(const YamlListNode *pstNode);
/** Sets the type of the father's children if there is a father and none has set it yet. */
ZRYAML_API void yaml_FatherNodeNextLevelTypeSet(YamlListNode *pstNode, uint32_t uiDataType);
/** @return libyaml's event type of the innermost open collection (7 sequence, 9 map), 0 if none is open. */
ZRYAML_API uint32_t yaml_CurrEventGet(const YamlHandle *pstHandle);
/** Pushes an open collection; ignored when YAML_EVENT_STACK_SIZE are open. */
ZRYAML_API void yaml_EventStartSet(YamlHandle *pstHandle, uint32_t uiEventType);
/** Pops the innermost open collection; ignored when none is open. */
ZRYAML_API void yaml_EventEndSet(YamlHandle *pstHandle);
/** Makes an allocated record an empty document. */
ZRYAML_API void yaml_HandleInit(YamlHandle *pstHandle);
/** @} */

/** @name Load driver
 *  @{ */
/** Runs libyaml over an open file and builds the tree of an initialised handle. The file stays open. */
ZRYAML_API uint32_t yaml_FileParse(FILE *pstFile, YamlHandle *pstHandle);
/** Hands one event to its handler. All but the event and the handle are in/out. */
ZRYAML_API uint32_t yaml_EventAnalyze(const struct yaml_event_s *pstEvent, YamlListNode **ppstCurrNode,
                                      uint32_t *puiKeyValueFlag, uint32_t *puiLastEventType, uint32_t *puiDocumentCount,
                                      YamlHandle *pstHandle);
/** Logs why a parse call failed. */
ZRYAML_API void yaml_ParseErrProcess(const struct yaml_parser_s *pstParser);
/** @} */

/** @name Tree building
 *  The current node is the node that the last event made or returned to; the key/value flag is 1 when a map waits for
 *  a value.
 *  @{ */
/** Makes a node of a scalar event, hangs it in the open collection, records its anchor and makes it current. */
ZRYAML_API uint32_t yaml_ScalarProcess(const struct yaml_event_s *pstEvent, YamlListNode **ppstCurrNode,
                                       YamlHandle *pstHandle, uint32_t *puiKeyValueFlag, uint32_t uiLastEventType);
/** Makes a node a scalar and the current node, and hangs it in the open map or sequence; fails where none is open. */
ZRYAML_API uint32_t yaml_ScalarNodeAdd(YamlHandle *pstHandle, YamlListNode *pstNewNode, YamlListNode **ppstCurrNode,
                                       uint32_t *puiKeyValueFlag);
/** Hangs a scalar in a map: as a key if the key/value flag is 0, else as the current key's value. Turns the flag. */
ZRYAML_API uint32_t yaml_ScalarNodeAddInMap(YamlListNode *pstNewNode, YamlListNode *pstCurrNode,
                                            uint32_t *puiKeyValueFlag);
/** Hangs a scalar at the end of the sequence that the current node is or stands in. @return 0. */
ZRYAML_API uint32_t yaml_ScalarNodeAddInSeq(YamlListNode *pstNewNode, YamlListNode *pstCurrNode);
/** Opens a sequence below the root, in the open sequence or under the current key; refuses it in the place of a key. */
ZRYAML_API uint32_t yaml_SeqStartProcess(const struct yaml_event_s *pstEvent, uint32_t uiLastEventType,
                                         YamlListNode **ppstCurrNode, YamlHandle *pstHandle);
/** Closes the innermost sequence, finishes its anchor and makes it the current node; the flag becomes 0. @return 0. */
ZRYAML_API uint32_t yaml_SeqEndProcess(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, uint32_t *puiKeyValueFlag);
/** Opens a map below the root, in the open sequence or under the current key; refuses it in the place of a key. */
ZRYAML_API uint32_t yaml_MapStartProcess(const struct yaml_event_s *pstEvent, uint32_t uiLastEventType,
                                         YamlListNode **ppstCurrNode, YamlHandle *pstHandle);
/** Hangs a map at the end of the sequence that the current node is or stands in. */
ZRYAML_API void yaml_MapNodeAddInSeq(YamlListNode *pstNewNode, YamlListNode *pstCurrNode);
/** Closes the innermost map, finishes its anchor and makes it the current node. */
ZRYAML_API void yaml_MapEndProcess(YamlHandle *pstHandle, YamlListNode **ppstCurrNode);
/** @} */

/** @name Anchors and aliases
 *  uiFirstFlag is 1 when the first copy goes first below the insertion node, 0 when it goes right after it.
 *  @{ */
/** @return A record with a copy of the name, in no list; NULL if out of memory (logged, 12). */
ZRYAML_API YamlAnchorNode *yaml_AnchorNodeAlloc(YamlHandle *pstHandle, const char *pcName);
/** Records an anchor on a node; a NULL name is none. A collection's stays open until yaml_AnchorRecordEnd. */
ZRYAML_API uint32_t yaml_AnchorRecord(YamlHandle *pstHandle, const char *pcName, YamlListNode *pstNewNode,
                                      uint32_t uiAnchorType);
/** Finishes the anchor on a collection that ends, if it has one. */
ZRYAML_API void yaml_AnchorRecordEnd(YamlHandle *pstHandle, YamlListNode *pstNode);
/** @return The anchor of that name that was finished last, or NULL. */
ZRYAML_API YamlAnchorNode *yaml_AnchorObjFind(const YamlHandle *pstHandle, const char *pcName);
/** Releases the records of one anchor list. */
ZRYAML_API void yaml_AnchorNodesRelease(YamlList *pstHead);
/** Releases all anchor records of a handle. The name is kept as it was published. */
ZRYAML_API void yaml_AnchorListRealse(YamlHandle *pstHandle);
/** Resolves an alias event by a deep copy of the anchored node. */
ZRYAML_API uint32_t yaml_AliasProcess(const struct yaml_event_s *pstEvent, YamlListNode **ppstCurrNode,
                                      YamlHandle *pstHandle, uint32_t *puiKeyValueFlag);
/** Copies an anchored node to where an alias stands: as an element, as a value, or, for "<<", as a merge. An alias in
 *  the place of a key is refused. */
ZRYAML_API uint32_t yaml_AnchorNodesParse(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, YamlAnchorNode *pstAnchor,
                                          uint32_t *puiKeyValueFlag);
/** Adds a copy of a node to the open sequence; the copy becomes the current node. */
ZRYAML_API uint32_t yaml_AnchorInsertInSequence(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                                const YamlListNode *pstSrcNode, uint32_t uiFirstFlag);
/** Puts a copy of a node under the current key: a merge for "<<", and under the merged key for one that repeats it. */
ZRYAML_API uint32_t yaml_AnchorInsertInMap(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                           const YamlListNode *pstSrcNode, uint32_t uiFirstFlag);
/** Puts a copy of a node under the current key; the copy becomes the current node. */
ZRYAML_API uint32_t yaml_DirectAnchorInsertInMap(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                                 const YamlListNode *pstSrcNode);
/** @return A copy of one node without its children, in no tree position yet; NULL if out of memory (logged). */
ZRYAML_API YamlListNode *yaml_SingleNodeDup(YamlHandle *pstHandle, const YamlListNode *pstSrcNode);
/** Hangs a copy of one node below the insertion node and makes it the insertion node. @return 0 or 12. */
ZRYAML_API uint32_t yaml_ScalarAnchorCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode,
                                          const YamlListNode *pstSrcNode);
/** Copies the value of the key pstSrcNode below its copy pstDstNode. */
ZRYAML_API uint32_t yaml_AnchorNodesClone(YamlHandle *pstHandle, YamlListNode *pstDstNode,
                                          const YamlListNode *pstSrcNode);
/** Copies the keys of a map with their values; keys that the destination has are skipped. */
ZRYAML_API uint32_t yaml_MapAnchorCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode,
                                       const YamlListNode *pstSrcNode, uint32_t uiFirstFlag);
/** Copies the items of a sequence. */
ZRYAML_API uint32_t yaml_SequenceAnchorCopy(YamlHandle *pstHandle, YamlListNode *pstDstNode,
                                            const YamlListNode *pstSrcNode, uint32_t uiFirstFlag);
/** @} */

/** @name Merge keys and key insertion
 *  @{ */
/** Merges a map, or the first keys of a sequence of maps, in place of the "<<" key that is the current node. */
ZRYAML_API uint32_t yaml_AnchorInsertInMapWithoutMapNode(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                                         const YamlListNode *pstSrcNode, uint32_t uiFirstFlag);
/** Copies the first key of each map of a sequence with its value; keys that the destination has are skipped. */
ZRYAML_API uint32_t yaml_Sequence2MapCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode,
                                          const YamlListNode *pstSrcNode, uint32_t uiFirstFlag);
/** Hangs a key read from the file into its map and tests it for repetition. */
ZRYAML_API uint32_t yaml_ScalarNodeAddWithKeyRole(YamlListNode *pstNewNode, YamlListNode *pstCurrNode);
/** @return The merged key with the same text as a marked key, or NULL. */
ZRYAML_API YamlListNode *yaml_SameKeyFindInAnchor(const YamlListNode *pstKeyNode);
/** Makes a node the only value of a merged key. @return 0. */
ZRYAML_API uint32_t yaml_AnchorNodeReplace(YamlListNode *pstNewNode, YamlListNode *pstSameKeyNode);
/** Releases the value of a merged key; what hung below it is detached and released with the document. */
ZRYAML_API void yaml_AnchorChildListRemove(YamlListNode *pstSameKeyNode);
/** @} */

/** @name Key path components
 *  Each call cuts one component out of a writable path, stores its unescaped name and its index (left alone if it has
 *  none), and adds the characters used to the parsed length.
 *  @return A negative number for a malformed path (logged).
 *  @{ */
/** Cuts out a component of any kind. @return The length of its name, or that of the index's text for "[index]". */
ZRYAML_API int32_t yaml_KeyParse(char *pcKeyPath, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                                 uint32_t *puiIndex);
/** Cuts out "index]", the '[' before which is done; the name is then "". @return The characters up to and with the ']'.
 */
ZRYAML_API int32_t yaml_KeyParseForSeq(char *pcKeyPath, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                                       uint32_t *puiIndex);
/** Cuts out a name that ends at an unescaped cEnd, '.' or '}', or with the path. @return The length of the name. */
ZRYAML_API int32_t yaml_KeyStringGet(char *pcKeyPath, char cEnd, uint32_t uiNameSize, char *pcKeyName,
                                     uint32_t *puiParsedLen, uint32_t *puiIndex);
/** Splits a component's text into its name, of which the escapes are taken away, and its index. @return The length of
 *  the name. */
ZRYAML_API int32_t yaml_MetaChrProcess(char *pcKeyText, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                                       uint32_t *puiIndex);
/** Reads the index at the end of a component's text and cuts it off. */
ZRYAML_API uint32_t yaml_ArrayIndexGet(char *pcKeyText, uint32_t *puiIndexLen, uint32_t *puiIndex);
/** @return 1 if the first uiLen characters are digits, else 0 (logged). */
ZRYAML_API uint32_t yaml_IsDigitalString(const char *pcStr, uint32_t uiLen);
/** Reads a decimal number; above 2147483647 the result is 22 and the output is left alone. */
ZRYAML_API uint32_t yaml_IndexGet(const char *pcStr, uint32_t *puiIndex);
/** @} */

/** @name Lookup
 *  Each call returns the node found, or NULL (logged). The indexed flag tells whether the last component selected an
 *  element.
 *  @{ */
/** Formats a key path of 1 to 1023 bytes and finds its node from the root. */
ZRYAML_API YamlListNode *yaml_NodeGetByKey(YamlHandle *pstHandle, uint32_t *puiIndexed, const char *pcKeyFormat,
                                           va_list stArgs) ZRYAML_PRINTF(3, 0);
/** uiKeyLen is the path's length plus one. */
ZRYAML_API YamlListNode *yaml_NodeFind(YamlHandle *pstHandle, char *pcKeyPath, uint32_t uiKeyLen, uint32_t *puiIndexed);
/** Follows a path from a map, a sequence or an element down. uiKeyLen is the path's length plus one. */
ZRYAML_API YamlListNode *yaml_NodeFindByKey(YamlListNode *pstNode, char *pcKeyPath, uint32_t uiKeyLen,
                                            uint32_t *puiIndexed);
/** Follows a path from a sequence down, its first '[' being done. *puiRemainLen counts what follows it, its NUL
 * included. */
ZRYAML_API YamlListNode *yaml_SeqNodeFindByKey(YamlListNode *pstNode, char *pcKeyPath, uint32_t *puiRemainLen,
                                               uint32_t *puiIndexed);
/** Takes one component's step from a node of any kind. */
ZRYAML_API YamlListNode *yaml_PropertyFind(YamlListNode *pstNode, const char *pcKeyName, uint32_t uiIndex);
/** Finds a key of a map by its name; with an index, that element of the sequence that is its value. */
ZRYAML_API YamlListNode *yaml_PropertyFindInMapList(const YamlList *pstHead, const char *pcKeyName, uint32_t uiIndex);
/** Finds an element of a sequence by its number. */
ZRYAML_API YamlListNode *yaml_PropertyFindInSeqList(YamlListNode *pstNode, uint32_t uiIndex);
/** Takes the step from a key into its value; a scalar value is found if the name is its text. */
ZRYAML_API YamlListNode *yaml_PropertyFindInScalarNode(YamlListNode *pstNode, const char *pcKeyName, uint32_t uiIndex);
/** @return The text of an element (uiIndexed 1) or of a key's value; NULL if that is no scalar (logged). */
ZRYAML_API char *yaml_NodeValueGet(YamlListNode *pstNode, uint32_t uiIndexed);
/** @} */

/** @name Steps of an iterator
 *  @{ */
/** @return The map or sequence below a node, or NULL (logged). */
ZRYAML_API YamlListNode *yaml_IteratorGetByNode(YamlListNode *pstNode);
/** Takes the first pair of a map or a sequence. */
ZRYAML_API uint32_t yaml_FirstKeyValueGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue);
/** Takes the first pair of a map. */
ZRYAML_API uint32_t yaml_FirstMapNodeGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue);
/** Takes the first pair of a sequence. */
ZRYAML_API uint32_t yaml_FirstSeqNodeGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue);
/** Takes the pair after an entry of a map or sequence, as uiType says; 22 for another type. */
ZRYAML_API uint32_t yaml_KeyValueGet(uint32_t uiType, YamlListNode *pstNode, YamlIterator *pstIter,
                                     YamlKeyValue *pstKeyValue);
/** Takes the pair after a key of the map that is walked. */
ZRYAML_API uint32_t yaml_NextKeyValueGetInMap(YamlListNode *pstNode, YamlIterator *pstIter, YamlKeyValue *pstKeyValue);
/** Takes the pair after an element of the sequence that is walked. */
ZRYAML_API uint32_t yaml_NextKeyValueGetInSeq(YamlListNode *pstNode, YamlIterator *pstIter, YamlKeyValue *pstKeyValue);
/** @} */

/** @name Statistics
 *  @{ */
/** Reads the monotonic clock (CLOCK_MONOTONIC) while the debug switch is on; else leaves the stamp alone. */
ZRYAML_API void yaml_StartPoint(struct timespec *pstStart);
/** Gives the ms since a stamp. @return 0; 0x19000012 while the switch is off; 22 if the clock ran backwards. */
ZRYAML_API uint32_t yaml_ElapseTimeGet(const struct timespec *pstStart, uint32_t *puiElapse);
/** Stores the ms since the stamp as the load time of a document. */
ZRYAML_API void yaml_ParseElapseTimeGet(YamlHandle *pstHandle, const struct timespec *pstStart);
/** Counts one query with the ms since the stamp; safe for several threads. */
ZRYAML_API void yaml_QueryDbgInfoRecord(YamlHandle *pstHandle, const struct timespec *pstStart);
/** @} */

/** @name Dump
 *  Each step writes at pcPos, where uiRest bytes are left, and returns the characters it added; 0 or less is a failure
 *  (logged).
 *  @{ */
/** Writes and trims the whole dump. @return 0 or 0x19000005. */
ZRYAML_API uint32_t yaml_DumpValue(YamlHandle *pstHandle, uint32_t uiBufSize, char *pcBuf);
/** Writes a map in braces, on a new line if uiBreakFlag is 1; a map without keys is a failure. */
ZRYAML_API int32_t yaml_DumpMapList(YamlListNode *pstMap, uint32_t uiBreakFlag, uint32_t uiIndent, uint32_t uiRest,
                                    char *pcPos);
/** Writes the entries of a map, without braces. */
ZRYAML_API int32_t yaml_MapListDumpProcess(YamlListNode *pstMap, uint32_t uiIndent, uint32_t uiRest, char *pcPos);
/** Writes a key and its value, if it has one. */
ZRYAML_API int32_t yaml_DumpScalarNode(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos);
/** Writes the value of a key. */
ZRYAML_API int32_t yaml_DumpChildList(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos);
/** Writes a sequence in brackets, on a new line; a sequence without elements is a failure. */
ZRYAML_API int32_t yaml_DumpSeqList(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos);
/** Writes the elements of a sequence, without brackets. */
ZRYAML_API int32_t yaml_SequenceListDump(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos);
/** Writes one element; uiFirstFlag is 1 for the first, uiPrevType the data type of the one before it. */
ZRYAML_API int32_t yaml_SeqNodeDump(YamlListNode *pstElement, uint32_t uiIndent, uint32_t uiFirstFlag, uint32_t uiRest,
                                    char *pcPos, uint32_t uiPrevType);
/** Writes a scalar element, on a new line unless uiPrevType is YAML_DATATYPE_SCALAR. */
ZRYAML_API int32_t yaml_ScalarDumpInSeq(YamlListNode *pstElement, uint32_t uiPrevType, uint32_t uiIndent,
                                        uint32_t uiRest, char *pcPos);
/** Writes a newline and uiIndent spaces, no NUL. @return uiIndent + 1, or -1 if they and one byte more do not fit. */
ZRYAML_API int32_t yaml_SpacePrintWithNewLine(char *pcPos, uint32_t uiRest, uint32_t uiIndent);
/** @return Spaces at the end of the first uiLen characters, at most uiLen - 1; 0 when uiLen is less than 2. */
ZRYAML_API uint32_t yaml_StringTailSpaceCount(const char *pcText, uint32_t uiLen);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
