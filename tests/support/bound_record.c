/* SPDX-License-Identifier: Apache-2.0 */
#include "bound_record.h"

#include <stdlib.h>

static const YamlName Modes[] = {{"fast", FAST}, {"safe", SAFE}};
static const YamlField LimitsFields[] = {
    YAML_FIELD_BYTES(Limits, memory, "memory", .pcDefault = "64KiB", .pcMax = "1GiB"),
    YAML_FIELD_DURATION(Limits, timeout, "timeout", .pcDefault = "1s", .pcMin = "1ms", .pcDoc = "until it gives up"),
    YAML_FIELD_DOUBLE(Limits, ratio, "ratio", .pcMin = "0", .pcMax = "1"),
};
static const YamlRecord LimitsRecord = YAML_RECORD(Limits, LimitsFields);
static const YamlField ServerFields[] = {
    YAML_FIELD_TEXT(Server, name, "name", .bRequired = 1, .pcDoc = "name of the host"),
    YAML_FIELD_UINT(Server, port, "port", .pcDefault = "8080", .pcMin = "1", .pcOldKey = "prt"),
    YAML_FIELD_BOOL(Server, tls, "tls"),
    YAML_FIELD_ARRAY(Server, cores, cores_count, "cores", .uiMaxCount = 3, .pcMax = "63"),
    YAML_FIELD_INT(Server, prio, "prio"),
    YAML_FIELD_ENUM(Server, mode, "mode", YAML_NAMES(Modes), .pcDefault = "safe"),
    YAML_FIELD_RECORD(Server, limits, "limits", .pstRecord = &LimitsRecord),
    YAML_FIELD_OPTIONAL(Server, extra, "extra", .pstRecord = &LimitsRecord),
    YAML_FIELD_OPTIONAL(Server, note, "note"),
    YAML_FIELD_OPTIONAL(Server, weight, "weight", .pcMin = "-5"),
};
static uint32_t ServerCheck(YamlReading *reading, const YamlListNode *value, const void *record, const void *context)
{
    const Server *server = record;
    (void)context;
    if (server->tls && server->port == 80)
        return ZRYAML_ReadingProblemAdd(reading, value, "port %u is not for tls", server->port);
    return YAML_OK;
}
static const YamlRecord ServerRecord =
    YAML_RECORD(Server, ServerFields, .pfnCheck = ServerCheck, .pcDoc = "one machine");
static const YamlField FileFields[] = {YAML_FIELD_TEXT(File, path, "path", .bRequired = 1)};
static const YamlRecord FileRecord = YAML_RECORD(File, FileFields);
static const YamlField NetFields[] = {
    YAML_FIELD_TEXT(Net, host, "host", .bRequired = 1),
    YAML_FIELD_UINT(Net, port, "port"),
};
static const YamlRecord NetRecord = YAML_RECORD(Net, NetFields, .bIgnoreUnknown = 1);
static const YamlAlternative Sinks[] = {{"file", &FileRecord, NULL}, {"net", &NetRecord, NULL}};
static const YamlField SinkElement = YAML_FIELD_UNION(Sink, u, kind, "", YAML_ALTERNATIVES(Sinks), .pcTagKey = "to");
static const YamlRecord TreeRecord;
static const YamlField TreeFields[] = {
    YAML_FIELD_TEXT(Tree, name, "name"),
    YAML_FIELD_ARRAY(Tree, kids, kids_count, "kids", .pstRecord = &TreeRecord),
};
static const YamlRecord TreeRecord = YAML_RECORD(Tree, TreeFields);
static uint32_t ColourRead(YamlReading *reading, const YamlListNode *value, void *member, const void *context)
{
    const char *text = ZRYAML_ValueTextGet(value);
    uint32_t *copy = ZRYAML_ReadingAlloc(reading, sizeof(*copy));
    if (copy == NULL)
        return YAML_ERR_NOMEM;
    if (text == NULL || *text != '#')
        return ZRYAML_ReadingProblemAdd(reading, value, "a colour begins with %s", (const char *)context);
    *copy = (uint32_t)strtoul(text + 1, NULL, 16);
    *(uint32_t *)member = *copy;
    return YAML_OK;
}
static const YamlField BoundFields[] = {
    YAML_FIELD_ARRAY(Bound, servers, servers_count, "servers", .pstRecord = &ServerRecord, .uiMinCount = 1),
    YAML_FIELD_MAP(Bound, ports, ports_count, "ports", .pcMin = "7"),
    YAML_FIELD_UNION(Bound, sink.u, sink.kind, "sink", YAML_ALTERNATIVES(Sinks), .pcTagKey = "to"),
    YAML_FIELD_ARRAY(Bound, sinks, sinks_count, "sinks", .pstElement = &SinkElement),
    YAML_FIELD_RECORD(Bound, tree, "tree", .pstRecord = &TreeRecord),
    YAML_FIELD_ARRAY(Bound, delays, delays_count, "delays", .uiElement = YAML_KIND_DURATION, .pcMax = "1h"),
    YAML_FIELD_ARRAY(Bound, names, names_count, "names"),
    YAML_FIELD_CUSTOM(Bound, colour, "colour", .pfnConvert = ColourRead, .pvContext = "#"),
};
const YamlRecord BoundRecord = YAML_RECORD(Bound, BoundFields);

#define WRONG(number, ...)                                        \
    static const YamlField WrongFields##number[] = {__VA_ARGS__}; \
    static const YamlRecord Wrong##number = YAML_RECORD(Server, WrongFields##number)
WRONG(0, YAML_FIELD_UINT(Server, port, "port", .pcDefault = "70000"));
WRONG(1, YAML_FIELD_INT(Server, prio, "prio", .pcMin = "low"));
WRONG(2, YAML_FIELD_INT(Server, prio, "prio", .pcMax = "5", .pcDefault = "6"));
WRONG(3, YAML_FIELD_ENUM(Server, mode, "mode", YAML_NAMES(Modes), .pcDefault = "slow"));
WRONG(4, YAML_FIELD_RECORD(Server, limits, "limits", .pstRecord = &FileRecord));
WRONG(5, YAML_FIELD_RECORD(Server, limits, "limits"));
WRONG(6, YAML_FIELD_TEXT(Server, name, "name"), YAML_FIELD_TEXT(Server, note, "name"));
WRONG(7, YAML_FIELD_TEXT(Server, name, "name", .pcMin = "a"));
WRONG(8, YAML_FIELD_ARRAY(Server, cores, cores_count, "cores", .pcDefault = "[]"));
WRONG(9, YAML_FIELD_ENUM(Server, mode, "mode"));
WRONG(10, YAML_FIELD_CUSTOM(Server, mode, "mode"));
WRONG(11, YAML_FIELD_TEXT(Server, name, NULL));
static const YamlField FarElement = YAML_FIELD_ENUM(Server, mode, "", YAML_NAMES(Modes));
WRONG(12, YAML_FIELD_ARRAY(Server, cores, cores_count, "cores", .pstElement = &FarElement));
const WrongRecord WrongRecords[] = {
    {&Wrong0, "'port': .pcDefault '70000' is out of range"},
    {&Wrong1, "'prio': .pcMin 'low' is not an integer"},
    {&Wrong2, "'prio': .pcDefault is outside of its limits"},
    {&Wrong3, "'mode' has a default that is none of its names: slow"},
    {&Wrong4, "'limits' is of another size than the record that describes it, File"},
    {&Wrong5, "'limits' has no .pstRecord"},
    {&Wrong6, "'name' is described twice"},
    {&Wrong7, "'name' has limits, but is no number, duration or size"},
    {&Wrong8, "'cores' has a default, but is no scalar"},
    {&Wrong9, "'mode' has no names: YAML_NAMES gives them"},
    {&Wrong10, "'mode' has no .pfnConvert"},
    {&Wrong11, "'' has no key"},
    {&Wrong12, "'cores' has a .pstElement that lies outside of its elements"},
};
const uint32_t WrongRecordCount = sizeof(WrongRecords) / sizeof(WrongRecords[0]);

static const YamlField DefaultsFields[] = {YAML_FIELD_TEXT(Net, host, "host", .pcDefault = "a: #b"),
                                           YAML_FIELD_UINT(Net, port, "port", .pcDefault = "80")};
const YamlRecord DefaultsRecord = YAML_RECORD(Net, DefaultsFields);
