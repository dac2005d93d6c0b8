/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml/operations.h - the operations that the library is made of, and the records that they work on.
 *
 * For tests and tools: nothing here is promised to stay. The operations are exported so that each step of a load, a
 * lookup, a walk and a dump can be run alone. They trust their arguments: no pointer may be NULL unless it is said. A
 * result of type uint32_t is a code, YAML_OK or YAML_ERR_*, unless it is said. "Logged" is a record in the log.
 *
 * zr_yaml.h includes this header unless ZRYAML_STABLE_ONLY is defined.
 */
#ifndef ZR_YAML_OPERATIONS_H
#define ZR_YAML_OPERATIONS_H

#include "../zr_yaml.h"

#include <stdarg.h>
#include <stdio.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

/* libyaml's records, so that no libyaml header is needed here. */
struct yaml_event_s;
struct yaml_parser_s;
/* Strict C99 hides it in <time.h>. */
struct timespec;

/* ---------------------------------------------------------------------------------------------------------------- */
/* Records                                                                                                          */
/* ---------------------------------------------------------------------------------------------------------------- */

/** First word of every node, anchor record and iterator. */
#define YAML_NODE_MAGIC 0x123456FFU
/** Index of a key path component that carries none. */
#define YAML_INDEX_NONE 0xFFFFFFFFU

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
struct YamlListNode {
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
    uint32_t uiState;  /**< bits: open, anchored, read, where its memory is, style, tag and layer */
    union {
        uint32_t uiNumber;   /**< of an element in its sequence, from 0 */
        uint32_t uiTextMark; /**< of any other scalar: what tells its text from most others; 0 if not known */
    } uPlace;                /**< which one holds depends on the node */
    union {
        struct YamlKeyIndex *pstKeyIndex; /**< map with many keys: its keys by text */
        uint64_t ulKeyFilter;             /**< map with few keys, while it is filled: what tells that a key is new */
        struct YamlListNode *pstSameKey;  /**< marked key: the merged key it repeats; merged key: the one marked */
        struct YamlListNode *pstShadowed; /**< scalar or sequence that layers put in the place of a value: that one */
    } uPrivate;                           /**< which one holds depends on the node */
};

/** A loaded document. Only ever handed back to the library; the fields are published for diagnosis. */
struct YamlHandle {
    YamlListNode stRoot;                           /**< its stAllocLink heads the list of all nodes */
    uint32_t uiEventDepth;                         /**< open collections, 0 after a load */
    YamlList stAnchorList;                         /**< finished anchors, the last finished first */
    YamlList stOpenAnchorList;                     /**< anchors on collections that have not ended */
    uint32_t auiEventStack[YAML_EVENT_STACK_SIZE]; /**< event types of the open collections, outermost first */
    uint32_t uiParseTime;                          /**< ms that the load took */
    uint32_t uiMemSize;                            /**< bytes counted while the debug switch was 1, at most 2^32 - 1 */
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
    struct YamlKeyIndex *pstKeyIndexes;     /**< the indexes of its maps */
    struct {
        char *pcFree;                     /**< where the next piece begins */
        size_t ulFree;                    /**< bytes left in the block at hand */
        struct YamlStoreBlock *pstBlocks; /**< all blocks, the youngest first */
        uint32_t uiBlockSize;             /**< of the next block; 0 unless loading */
    } stStore;                            /**< memory of the nodes and texts that the load made */
    const char *pcName;                   /**< the file's path or the text's name, as the caller gave it */
    struct YamlKeptBlock *pstKept;        /**< memory of what was read into records, the youngest block first */
    uint32_t uiNodeState;                 /**< bits that new nodes begin with: the number of their layer */
    uint32_t uiLoadFlags;                 /**< what layers want of the load */
    struct YamlLayering *pstLayering;     /**< of layers: where nodes came from and what they took the place of */
    uint64_t ulHolds;                     /**< of a watch: who holds it; 0: nobody but the caller */
};

/** The record of one anchor, while a file is loaded. */
typedef struct YamlAnchorNode {
    uint32_t uiMagic;              /**< YAML_NODE_MAGIC once recorded */
    YamlList stAnchorLink;         /**< link in one of the handle's anchor lists */
    char *pcAnchorName;            /**< owned by the record */
    YamlListNode *pstAnchoredNode; /**< borrowed from the tree */
} YamlAnchorNode;

/** A walk over the pairs below a key; made by yaml_IteratorCreate, owned by the caller. */
struct YamlIterator {
    uint32_t uiMagic;            /**< YAML_NODE_MAGIC */
    uint32_t uiIterType;         /**< YAML_DATATYPE_MAP or YAML_DATATYPE_SEQ */
    YamlListNode *pstCurrNode;   /**< key or element that gave the last pair; pstFatherNode before the first */
    YamlListNode *pstFatherNode; /**< the map or sequence that is walked */
};

/* ---------------------------------------------------------------------------------------------------------------- */
/* Operations                                                                                                       */
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
/** @return A new node of the document, in no tree position yet; NULL if out of memory (logged, YAML_ERR_NOMEM). */
ZRYAML_API YamlListNode *yaml_ListNodeAlloc(YamlHandle *pstHandle);
/** Takes a node out of all its lists and releases it with its text; its children stay, with no father. */
ZRYAML_API void yaml_ListNodeFree(YamlListNode *pstNode);
/** @return A copy of the text from the pool, counted in uiMemSize if uiCountFlag is 1; NULL if out of memory or if
 *  the text has 4 GiB or more (logged, YAML_ERR_NOMEM). A counted one belongs to its node, any other to the caller. */
ZRYAML_API char *yaml_ValueDup(YamlHandle *pstHandle, uint32_t uiCountFlag, const char *pcText);
/** @return A new scalar node with a copy of the text, in no tree position yet; NULL if out of memory (logged). */
ZRYAML_API YamlListNode *yaml_ScalarNodeCreate(YamlHandle *pstHandle, const char *pcText);
/** Compares texts. uiMode 0: with the file's own nodes only, 1: with copies only, other: with all.
 *  @return YAML_OK, or YAML_ERR_SAME if equal. */
ZRYAML_API uint32_t yaml_ScalarSameCheck(const YamlListNode *pstListNode, const YamlListNode *pstCandidate,
                                         uint32_t uiMode);
/** yaml_ScalarSameCheck over the keys of a map. @return YAML_OK, or YAML_ERR_SAME if one is equal. */
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
/** Hangs a scalar at the end of the sequence that the current node is or stands in. @return YAML_OK. */
ZRYAML_API uint32_t yaml_ScalarNodeAddInSeq(YamlListNode *pstNewNode, YamlListNode *pstCurrNode);
/** Opens a sequence below the root, in the open sequence or under the current key; refuses it in the place of a key. */
ZRYAML_API uint32_t yaml_SeqStartProcess(const struct yaml_event_s *pstEvent, uint32_t uiLastEventType,
                                         YamlListNode **ppstCurrNode, YamlHandle *pstHandle);
/** Closes the innermost sequence, finishes its anchor and makes it the current node; the flag becomes 0. @return
 * YAML_OK. */
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
/** @return A record with a copy of the name, in no list; NULL if out of memory (logged, YAML_ERR_NOMEM). */
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
/** Hangs a copy of one node below the insertion node and makes it the insertion node. @return YAML_OK or
 * YAML_ERR_NOMEM. */
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
/** Makes a node the only value of a merged key. @return YAML_OK. */
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
/** Splits a component's text into its name, without the escapes, and its index. @return The name's length. */
ZRYAML_API int32_t yaml_MetaChrProcess(char *pcKeyText, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                                       uint32_t *puiIndex);
/** Reads the index at the end of a component's text and cuts it off. */
ZRYAML_API uint32_t yaml_ArrayIndexGet(char *pcKeyText, uint32_t *puiIndexLen, uint32_t *puiIndex);
/** @return 1 if the first uiLen characters are digits, else 0 (logged). */
ZRYAML_API uint32_t yaml_IsDigitalString(const char *pcStr, uint32_t uiLen);
/** Reads a decimal number; above 2147483647 the result is YAML_ERR_PARAM and the output is left alone. */
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
/** Takes the pair after an entry of a map or sequence, as uiType says; YAML_ERR_PARAM for another type. */
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
/** Gives the ms since a stamp. @return YAML_OK; YAML_ERR_SWITCH_OFF while the switch is off; YAML_ERR_PARAM if the
 * clock ran backwards. */
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
/** Writes and trims the whole dump. @return YAML_OK or YAML_ERR_BUF. */
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
