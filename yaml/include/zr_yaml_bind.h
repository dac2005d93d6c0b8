/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * zr_yaml_bind.h - one description of a configuration: a table of the fields of a C record. From it come the record
 * read from a document with every problem told, a commented sample file, a JSON Schema, and the environment variables
 * that a layer takes.
 *
 *     typedef struct Server { const char *name; uint16_t port; } Server;
 *     static const YamlField ServerFields[] = {
 *         YAML_FIELD_TEXT(Server, name, "name", .bRequired = 1),
 *         YAML_FIELD_UINT(Server, port, "port", .pcDefault = "8080", .pcMin = "1", .pcDoc = "port to listen on"),
 *     };
 *     static const YamlRecord ServerRecord = YAML_RECORD(Server, ServerFields);
 *
 *     Server server = {0};
 *     YamlProblems *problems = NULL;
 *     uint32_t code = ZRYAML_RecordRead(document, NULL, &ServerRecord, &server, &problems);
 *
 * Descriptions are constant data that any number of threads may use. C++ programs describe their types with
 * zr_yaml/bind.hpp, which makes the same tables.
 */
#ifndef ZR_YAML_BIND_H
#define ZR_YAML_BIND_H

#include <zr_yaml.h>
#include <zr_yaml_problem.h>
#include <zr_yaml_scalar.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---------------------------------------------------------------------------------------------------------------- */
/* Descriptions                                                                                                     */
/* ---------------------------------------------------------------------------------------------------------------- */

/** Kinds of fields, besides the YAML_KIND_* of zr_yaml_scalar.h. */
#define YAML_KIND_TEXT 7U      /**< the text of a scalar */
#define YAML_KIND_ENUM 8U      /**< an integer with names */
#define YAML_KIND_RECORD 9U    /**< a map with known keys */
#define YAML_KIND_OPTIONAL 10U /**< a value that may be absent */
#define YAML_KIND_ARRAY 11U    /**< a sequence of values of one kind */
#define YAML_KIND_MAP 12U      /**< a map of any keys to values of one kind */
#define YAML_KIND_UNION 13U    /**< one of several kinds */
#define YAML_KIND_CUSTOM 14U   /**< read by a function of the host */
#define YAML_KIND_TUPLE 15U    /**< a sequence of a fixed number of values, each of its own kind */

/** Fields that one record may have. */
#define YAML_FIELD_MAX 1024U

/** One field of a record. */
typedef struct YamlField YamlField;
/** The description of a record. */
typedef struct YamlRecord YamlRecord;

/** A reading under way, handed to the functions of a host. Opaque; valid during the call. */
typedef struct YamlReading YamlReading;

/** One name of an enumeration. */
typedef struct YamlName {
    const char *pcText; /**< as the file writes it */
    int64_t lValue;     /**< as the member holds it */
} YamlName;

/** One of the kinds that a union may have. */
typedef struct YamlAlternative {
    const char *pcText;          /**< text of the key that chooses it; a name for people where no key does */
    const YamlRecord *pstRecord; /**< record that it is */
    const YamlField *pstElement; /**< what it is, if it is no record; NULL in C */
} YamlAlternative;

/**
 * Reads a value that no kind of field describes. Not called where the key is absent.
 *
 * @param pstReading  For ZRYAML_ReadingProblemAdd and ZRYAML_ReadingAlloc.
 * @param pstValue    Value, of any kind.
 * @param pvMember    Member to fill. It may be filled although another part of the document turns out to be wrong.
 * @param pvContext   As the field has it.
 * @return YAML_OK; a code, normally with a problem added, if the value is wrong.
 */
typedef uint32_t (*YamlConvert)(YamlReading *pstReading, const YamlListNode *pstValue, void *pvMember,
                                const void *pvContext);

/**
 * Judges a record that has been read without a problem: what no single field can say. Not called for a record within a
 * record that is absent and has only its defaults.
 *
 * @param pstReading  For ZRYAML_ReadingProblemAdd.
 * @param pstValue    Map that the record was read from.
 * @param pvRecord    Record, complete.
 * @param pvContext   As the description has it.
 * @return YAML_OK; a code, normally with a problem added, if the record is wrong.
 */
typedef uint32_t (*YamlCheck)(YamlReading *pstReading, const YamlListNode *pstValue, const void *pvRecord,
                              const void *pvContext);

/** How to fill a member that is not plain memory, such as a container of C++. Each call gives NULL, or a code, where
 *  memory is short. A kind uses some of them; all others are NULL. */
typedef struct YamlStorage {
    uint32_t uiSize;                                            /**< sizeof(YamlStorage) */
    uint32_t (*pfnTextSet)(void *pvMember, const char *pcText); /**< text: takes a copy */
    const char *(*pfnTextGet)(const void *pvMember);            /**< text: for a sample */
    void *(*pfnOpen)(void *pvMember, uint32_t uiNumber); /**< array: makes it so long, gives its first element; map:
                                                              empties it; optional: gives the place of its value;
                                                              union and tuple: that of part uiNumber */
    void *(*pfnAdd)(void *pvMember, const char *pcKey);  /**< map: gives the place of the value of a new key */
} YamlStorage;

/**
 * One field of a record. Made by the YAML_FIELD_* macros; what follows the key there are the members under "Rules" and
 * those that a kind needs.
 */
struct YamlField {
    const char *pcKey; /**< key in the map */

    /* Set by the macros. */
    uint32_t uiKind;         /**< YAML_KIND_* */
    uint32_t uiOffset;       /**< of the member */
    uint32_t uiWidth;        /**< bytes of the member */
    uint32_t uiCountOffset;  /**< of the count of an array or map, or of the number of a union's alternative */
    uint32_t uiCountWidth;   /**< bytes of that; 0: there is none */
    uint32_t uiMemberKind;   /**< kind of what the member points to, by its type */
    uint32_t uiElementWidth; /**< bytes of an element, of a pair, or of what an optional points to */
    uint32_t uiValueWidth;   /**< map: bytes of the value in a pair, which follows the key */

    /* What it holds. */
    uint32_t uiElement;          /**< kind of the elements where their type does not tell: _DURATION, _BYTES */
    const YamlRecord *pstRecord; /**< of a record, and of elements that are records */
    const YamlField *pstElement; /**< of elements that are no plain values; its key is not used */
    const YamlName *pstNames;    /**< enumeration: see YAML_NAMES */
    uint32_t uiNames;            /**< how many */
    uint32_t uiAlternatives;     /**< how many of the following, or parts of a tuple behind pstElement */
    const YamlAlternative *pstAlternatives; /**< union: see YAML_ALTERNATIVES */
    const char *pcTagKey;                   /**< union: key whose text chooses; "type" if it is NULL */
    YamlConvert pfnConvert;                 /**< custom */
    const void *pvContext;                  /**< handed to it */

    /* Rules. */
    uint32_t bRequired;    /**< 1: a record without the key is wrong */
    uint32_t uiMinCount;   /**< elements or keys at least, where the key is written: see bRequired */
    uint32_t uiMaxCount;   /**< and at most; 0: any number */
    const char *pcDefault; /**< of a scalar, where the key is absent; read as the value is. Of a required field it is
                                used where the whole record is absent. */
    const char *pcMin;     /**< least number, duration or size, of the field or of its elements; read as the value is */
    const char *pcMax;     /**< and greatest */
    const char *pcDoc;     /**< for people, in the sample and the schema */
    const char *pcOldKey;  /**< read as well, with a note */

    /* C++ only, for members that are not plain memory; 0 and NULL in C. */
    const YamlStorage *pstStorage;        /**< how the member is filled */
    void *(*pfnMember)(void *pvRecord);   /**< gives the member, instead of uiOffset */
    const YamlRecord *(*pfnRecord)(void); /**< gives the record, instead of pstRecord */
    uint32_t bUnsigned;                   /**< as in YamlScalarType */
    uint32_t bAnyFits;                    /**< union without a key that chooses: the alternative that fits */
    uint64_t ulTick;                      /**< as in YamlScalarType */
    uint64_t ulTickParts;                 /**< as in YamlScalarType */
    const void *apvReserved[2];           /**< NULL */
};

/** The description of a record. Made by YAML_RECORD; what follows the fields there are the members from bIgnoreUnknown
 *  on. */
struct YamlRecord {
    uint32_t uiSize;               /**< sizeof(YamlRecord) */
    uint32_t uiFieldSize;          /**< sizeof(YamlField) */
    uint32_t uiRecordSize;         /**< bytes of the record */
    uint32_t uiFields;             /**< how many */
    const char *pcName;            /**< the record's name, for the host */
    const YamlField *pstFields;    /**< fields, in the order of the sample */
    uint32_t bIgnoreUnknown;       /**< 1: keys that no field has are no problem */
    uint32_t bInPlace;             /**< 1: filled where it is, and to be thrown away after a failure; for C++ */
    const char *pcDoc;             /**< for people, in the sample and the schema */
    YamlCheck pfnCheck;            /**< judges the record; NULL: nobody does */
    const void *pvContext;         /**< handed to it */
    const void *(*pfnModel)(void); /**< gives a record with the values it begins with, for the sample; NULL in C */
};

#ifndef __cplusplus

/* clang-format off */
/** @name Fields
 *  Each describes a member of a record, and does not compile if the member has a wrong type. The last argument is the
 *  key; what follows it are designated initialisers of YamlField: "port", .bRequired = 1, .pcMax = "1023".
 *  @{ */
/** Text: const char *. Belongs to the document. */
#define YAML_FIELD_TEXT(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_TEXT, Record, member, YAML_TYPE_TEXT_), .pcKey = __VA_ARGS__}
/** Signed integer: int8_t to int64_t; the width is the member's. */
#define YAML_FIELD_INT(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_INT, Record, member, YAML_TYPE_INT_), .pcKey = __VA_ARGS__}
/** Unsigned integer: uint8_t to uint64_t. */
#define YAML_FIELD_UINT(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_UINT, Record, member, YAML_TYPE_UINT_), .pcKey = __VA_ARGS__}
/** Number: float or double. */
#define YAML_FIELD_DOUBLE(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_DOUBLE, Record, member, YAML_TYPE_DOUBLE_), .pcKey = __VA_ARGS__}
/** Boolean: bool, int or unsigned int, which becomes 0 or 1. */
#define YAML_FIELD_BOOL(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_BOOL, Record, member, YAML_TYPE_BOOL_), .pcKey = __VA_ARGS__}
/** Duration: int64_t, nanoseconds. */
#define YAML_FIELD_DURATION(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_DURATION, Record, member, YAML_TYPE_LONG_), .pcKey = __VA_ARGS__}
/** Size in bytes: uint64_t or size_t. */
#define YAML_FIELD_BYTES(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_BYTES, Record, member, YAML_TYPE_ULONG_), .pcKey = __VA_ARGS__}
/** Enumeration or integer, by names: "mode", YAML_NAMES(modes). */
#define YAML_FIELD_ENUM(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_ENUM, Record, member, YAML_TYPE_ENUM_), .pcKey = __VA_ARGS__}
/** Record within the record: "log", .pstRecord = &LogRecord. */
#define YAML_FIELD_RECORD(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_RECORD, Record, member, YAML_TYPE_RECORD_), .pcKey = __VA_ARGS__}
/** Value of a type with a conversion of its own: "colour", .pfnConvert = colour_read. */
#define YAML_FIELD_CUSTOM(Record, member, ...) \
    {YAML_PLAIN_(YAML_KIND_CUSTOM, Record, member, YAML_TYPE_ANY_), .pcKey = __VA_ARGS__}
/** Value that may be absent: a pointer, which is left alone if it is. To an integer, number, bool or const char *; to a
 *  record with .pstRecord; to anything else with .uiElement or .pstElement. For a text the member is a const char *. */
#define YAML_FIELD_OPTIONAL(Record, member, ...) \
    {.uiKind = YAML_KIND_OPTIONAL, .uiOffset = offsetof(Record, member), .uiWidth = sizeof(YAML_OF_(Record, member)), \
    .uiMemberKind = _Generic(YAML_OF_(Record, member), const char *: YAML_KIND_TEXT, YAML_KINDS_), \
    .uiElementWidth = sizeof(*YAML_OF_(Record, member)), .pcKey = __VA_ARGS__}
/** Sequence: a pointer to the elements, as for YAML_FIELD_OPTIONAL, and their number: uint32_t or size_t. */
#define YAML_FIELD_ARRAY(Record, pointer, count, ...) \
    {.uiKind = YAML_KIND_ARRAY, .uiOffset = offsetof(Record, pointer), .uiWidth = sizeof(YAML_OF_(Record, pointer)), \
    YAML_COUNT_(Record, count), .uiMemberKind = _Generic(YAML_OF_(Record, pointer), YAML_KINDS_, YAML_CONST_KINDS_), \
    .uiElementWidth = sizeof(*YAML_OF_(Record, pointer)), .pcKey = __VA_ARGS__}
/** Map of any keys: a pointer to pairs, each a YAML_PAIR, and their number: uint32_t or size_t. In the
 *  order of the document. */
#define YAML_FIELD_MAP(Record, pointer, count, ...) \
    {.uiKind = YAML_KIND_MAP, .uiOffset = offsetof(Record, pointer), YAML_COUNT_(Record, count), \
    .uiWidth = _Generic(&YAML_OF_(Record, pointer)->key, const char **: sizeof(YAML_OF_(Record, pointer))), \
    .uiMemberKind = _Generic(&YAML_OF_(Record, pointer)->value, YAML_KINDS_), \
    .uiElementWidth = sizeof(*YAML_OF_(Record, pointer)), .uiValueWidth = sizeof(YAML_OF_(Record, pointer)->value), \
    .pcKey = __VA_ARGS__}
/** One of several records, in a union or record; the text of its key "type", or .pcTagKey, chooses, and the number of
 *  the alternative, from 0, goes to the tag: an enumeration or integer. "sink", YAML_ALTERNATIVES(sinks). The key
 *  that chooses need not be a field of the alternatives; where the union is absent, member and tag keep what they
 *  held. */
#define YAML_FIELD_UNION(Record, member, tag, ...) \
    {YAML_PLAIN_(YAML_KIND_UNION, Record, member, YAML_TYPE_RECORD_), .uiCountOffset = offsetof(Record, tag), \
    .uiCountWidth = YAML_TYPE_ENUM_(Record, tag), .pcKey = __VA_ARGS__}
/** @} */

/** The names of an enumeration: an array of YamlName. */
#define YAML_NAMES(names) .pstNames = (names), .uiNames = sizeof(names) / sizeof((names)[0])
/** What a union may be: an array of YamlAlternative. */
#define YAML_ALTERNATIVES(alternatives) \
    .pstAlternatives = (alternatives), .uiAlternatives = sizeof(alternatives) / sizeof((alternatives)[0])
/** The type of a key with its value: typedef YAML_PAIR(uint16_t) NamedPort; */
#define YAML_PAIR(Type) struct {const char *key; Type value;}
/** The description of a record: its type, its fields, and designated initialisers such as .bIgnoreUnknown = 1. */
#define YAML_RECORD(Record, ...) \
    {.uiSize = sizeof(YamlRecord), .uiFieldSize = sizeof(YamlField), .uiRecordSize = sizeof(Record), \
    .uiFields = sizeof(YAML_FIRST_(__VA_ARGS__, 0)) / sizeof(YamlField), .pcName = #Record, .pstFields = __VA_ARGS__}

/** @cond */
#define YAML_FIRST_(first, ...) first
#define YAML_OF_(Record, member) (((Record *)0)->member)
#define YAML_PLAIN_(kind, Record, member, Width) \
    .uiKind = (kind), .uiOffset = offsetof(Record, member), .uiWidth = Width(Record, member)
#define YAML_COUNT_(Record, count) \
    .uiCountOffset = offsetof(Record, count), .uiCountWidth = _Generic(&YAML_OF_(Record, count), unsigned *: 4, \
    unsigned long *: sizeof(long), unsigned long long *: 8)
/* The width of a member, for the types that are allowed. */
#define YAML_TYPE_TEXT_(Record, member) _Generic(&YAML_OF_(Record, member), const char **: sizeof(char *))
#define YAML_TYPE_INT_(Record, member) \
    _Generic(&YAML_OF_(Record, member), signed char *: 1, short *: 2, int *: 4, long *: sizeof(long), long long *: 8)
#define YAML_TYPE_UINT_(Record, member) \
    _Generic(&YAML_OF_(Record, member), unsigned char *: 1, unsigned short *: 2, unsigned *: 4, \
    unsigned long *: sizeof(long), unsigned long long *: 8)
#define YAML_TYPE_DOUBLE_(Record, member) _Generic(&YAML_OF_(Record, member), float *: 4, double *: 8)
#define YAML_TYPE_BOOL_(Record, member) _Generic(&YAML_OF_(Record, member), _Bool *: 1, int *: 4, unsigned *: 4)
#define YAML_TYPE_LONG_(Record, member) _Generic(&YAML_OF_(Record, member), long *: 8, long long *: 8)
#define YAML_TYPE_ULONG_(Record, member) \
    _Generic(&YAML_OF_(Record, member), unsigned long *: 8, unsigned long long *: 8)
#define YAML_TYPE_ENUM_(Record, member) \
    _Generic(&YAML_OF_(Record, member), signed char *: 1, unsigned char *: 1, short *: 2, unsigned short *: 2, \
    int *: 4, unsigned *: 4, long *: sizeof(long), unsigned long *: sizeof(long), long long *: 8, \
    unsigned long long *: 8)
#define YAML_TYPE_RECORD_(Record, member) \
    _Generic(&YAML_OF_(Record, member), _Bool *: (void)0, char *: (void)0, signed char *: (void)0, \
    unsigned char *: (void)0, short *: (void)0, unsigned short *: (void)0, int *: (void)0, unsigned *: (void)0, \
    long *: (void)0, unsigned long *: (void)0, long long *: (void)0, unsigned long long *: (void)0, float *: (void)0, \
    double *: (void)0, char **: (void)0, const char **: (void)0, void **: (void)0, \
    default: sizeof(YAML_OF_(Record, member)))
#define YAML_TYPE_ANY_(Record, member) sizeof(YAML_OF_(Record, member))
/* The kind of what a pointer leads to; a record if its type says nothing. */
#define YAML_KINDS_ \
    _Bool *: YAML_KIND_BOOL, signed char *: YAML_KIND_INT, short *: YAML_KIND_INT, int *: YAML_KIND_INT, \
    long *: YAML_KIND_INT, long long *: YAML_KIND_INT, unsigned char *: YAML_KIND_UINT, \
    unsigned short *: YAML_KIND_UINT, unsigned *: YAML_KIND_UINT, unsigned long *: YAML_KIND_UINT, \
    unsigned long long *: YAML_KIND_UINT, float *: YAML_KIND_DOUBLE, double *: YAML_KIND_DOUBLE, \
    const char **: YAML_KIND_TEXT, char *: (void)0, char **: (void)0, void *: (void)0, default: YAML_KIND_RECORD
#define YAML_CONST_KINDS_ \
    const _Bool *: YAML_KIND_BOOL, const signed char *: YAML_KIND_INT, const short *: YAML_KIND_INT, \
    const int *: YAML_KIND_INT, const long *: YAML_KIND_INT, const long long *: YAML_KIND_INT, \
    const unsigned char *: YAML_KIND_UINT, const unsigned short *: YAML_KIND_UINT, const unsigned *: YAML_KIND_UINT, \
    const unsigned long *: YAML_KIND_UINT, const unsigned long long *: YAML_KIND_UINT, \
    const float *: YAML_KIND_DOUBLE, const double *: YAML_KIND_DOUBLE, const char *const *: YAML_KIND_TEXT, \
    const char *: (void)0
/** @endcond */
/* clang-format on */

#endif /* __cplusplus */

/* ---------------------------------------------------------------------------------------------------------------- */
/* Reading                                                                                                          */
/* ---------------------------------------------------------------------------------------------------------------- */

/**
 * Reads a map into a record, by its description.
 *
 * The record is filled completely or keeps what it held. Texts are those of the document; arrays, pairs, optional
 * values and defaults lie in memory that the document frees. Each successful call adds to it, a failed one adds
 * nothing: read a record once for each document, not once for each piece of work.
 *
 * - A key that is absent gives the member its default; without one the member keeps what it held, which is zero in
 *   memory that the document made. An absent record gets the defaults of its fields, and its required keys may be
 *   absent with it.
 * - "key:" and "key: ~" (not quoted) are absent for all but scalars and custom fields: a text is "" or "~", a custom
 *   function decides for itself, and for any other scalar they are a problem. The word null is a text.
 * - A key that no field has is a problem, unless the record ignores them or it begins with "x-".
 * - A wrong number of elements is one problem, at the sequence.
 *
 * @param pstHandle     Document.
 * @param pstValue      Map of it; NULL for the whole document. An empty document is an empty map.
 * @param pstRecord     Description.
 * @param pvRecord      Record to fill.
 * @param ppstProblems  Receives all problems in document order, NULL if there is none; the caller frees the list.
 *                      NULL: not wanted. A missing key has the place of its map, an unknown one its own. After success
 *                      there may still be notes.
 * @return YAML_OK; else the code of the first problem: YAML_ERR_VALUE (no such value or name, or too large for the
 *         member), YAML_ERR_RANGE (outside .pcMin and .pcMax, or a wrong number of elements), YAML_ERR_NODE_TYPE and
 *         YAML_ERR_NOT_SCALAR (a scalar where a collection is wanted, or the other way), YAML_ERR_UNKNOWN_KEY,
 *         YAML_ERR_MISSING_KEY, YAML_ERR_SAME (a key under its old and its new name), or what a function of the host
 *         gave without a problem of its own; YAML_ERR_NOMEM; YAML_ERR_PARAM for a NULL argument and for a mistake of
 *         the host in the description, which a problem names. ZRYAML_LastErrorGet tells the first problem. Not logged.
 * @note   Any number of threads may read records of one document.
 */
ZRYAML_API uint32_t ZRYAML_RecordRead(YamlHandle *pstHandle, const YamlListNode *pstValue, const YamlRecord *pstRecord,
                                      void *pvRecord, YamlProblems **ppstProblems);

/**
 * Whether a whole document reads into a record, which is thrown away: a host's check of a watched document is
 * `return ZRYAML_RecordCheck(conf, &record, problems);`. Not for records that are filled in place.
 *
 * @param pstHandle    Document.
 * @param pstRecord    Description.
 * @param pstProblems  List that the problems are added to; NULL for none.
 * @return As ZRYAML_RecordRead.
 */
ZRYAML_API uint32_t ZRYAML_RecordCheck(YamlHandle *pstHandle, const YamlRecord *pstRecord, YamlProblems *pstProblems);

/**
 * Reads one value as a field describes it, whatever its kind: what ZRYAML_RecordRead is for records that are filled in
 * place.
 *
 * @param pstHandle     Document.
 * @param pstValue      Value of it; NULL for the whole document.
 * @param pstField      Field; its key and place in a record are not used.
 * @param pvPlace       Receives the value. After a failure it may hold a part of it, and is to be thrown away.
 * @param ppstProblems  As for ZRYAML_RecordRead.
 * @return As ZRYAML_RecordRead; YAML_ERR_NOT_FOUND for an empty document.
 */
ZRYAML_API uint32_t ZRYAML_FieldRead(YamlHandle *pstHandle, const YamlListNode *pstValue, const YamlField *pstField,
                                     void *pvPlace, YamlProblems **ppstProblems);

/**
 * For a function of the host: adds a problem with a sentence of its own, such as "must be a prime number".
 *
 * @param pstReading  As the function got it.
 * @param pstValue    Value that the sentence is about: it gives place and key path.
 * @param pcFormat    printf-style sentence, without place and path.
 * @return YAML_ERR_VALUE, for the function to return.
 */
ZRYAML_API uint32_t ZRYAML_ReadingProblemAdd(YamlReading *pstReading, const YamlListNode *pstValue,
                                             const char *pcFormat, ...) ZRYAML_PRINTF(3, 4);

/** For a function of the host. @return Memory of so many bytes, all zero, aligned for any type, which belongs to the
 *  document once the record has been read; NULL if memory is short: return YAML_ERR_NOMEM. */
ZRYAML_API void *ZRYAML_ReadingAlloc(YamlReading *pstReading, size_t ulBytes);

/* ---------------------------------------------------------------------------------------------------------------- */
/* Writing                                                                                                          */
/* ---------------------------------------------------------------------------------------------------------------- */
/*
 * Each call writes a text, cut and terminated if it does not fit, and gives the length of the whole text, as snprintf
 * does. The buffer may be NULL if its size is 0. A NULL description gives "". The description must be without mistakes,
 * which ZRYAML_RecordRead finds.
 */

/**
 * Writes a sample file: every key with what it means, what it may be, and whether it is required. What has a default or
 * is required stands as it would be read, a required one without a default with the first value that fits; all else is
 * commented out. The sample loads, and reads into the record again, unless a required field is custom or a check
 * refuses it.
 */
ZRYAML_API uint32_t ZRYAML_RecordSampleWrite(const YamlRecord *pstRecord, uint32_t uiBufSize, char *pcBuf);

/**
 * Writes a JSON Schema (draft-07), which an editor takes for a file that begins with
 * "# yaml-language-server: $schema=PATH". It is a little stricter than the reading: by it a text that looks like a
 * number wants quotes, and a boolean is true or false. The limits of durations and sizes are not in it.
 */
ZRYAML_API uint32_t ZRYAML_RecordSchemaWrite(const YamlRecord *pstRecord, uint32_t uiBufSize, char *pcBuf);

/**
 * Writes the environment variables that a layer with this prefix takes, a line each:
 * "APP_SERVERS__0__PORT  # integer, 1 to 65535, default 8080: port to listen on". The 0 stands for any element, KEY for
 * any key of a map. A key that no variable can name is left out.
 *
 * @param pstRecord  Description.
 * @param pcPrefix   Such as "APP_"; NULL leaves it out, although a layer needs one.
 * @param uiBufSize  Bytes of the buffer.
 * @param pcBuf      Receives the text.
 * @return The length of the whole text.
 */
ZRYAML_API uint32_t ZRYAML_RecordEnvironmentWrite(const YamlRecord *pstRecord, const char *pcPrefix, uint32_t uiBufSize,
                                                  char *pcBuf);

#ifdef __cplusplus
}
#endif

#endif
