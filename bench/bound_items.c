/* SPDX-License-Identifier: Apache-2.0 */
#include "bound_items.h"

static const YamlField ItemFields[] = {
    YAML_FIELD_TEXT(ItemInC, name, "name", .bRequired = 1),
    YAML_FIELD_TEXT(ItemInC, host, "host"),
    YAML_FIELD_UINT(ItemInC, port, "port", .pcMin = "1"),
    YAML_FIELD_INT(ItemInC, weight, "weight"),
    YAML_FIELD_DOUBLE(ItemInC, ratio, "ratio"),
    YAML_FIELD_BOOL(ItemInC, active, "active"),
    YAML_FIELD_DURATION(ItemInC, timeout, "timeout"),
    YAML_FIELD_BYTES(ItemInC, memory, "memory"),
};
static const YamlRecord ItemRecord = YAML_RECORD(ItemInC, ItemFields);
static const YamlField ItemsFields[] = {
    YAML_FIELD_ARRAY(ItemsInC, items, count, "items", .pstRecord = &ItemRecord),
};
const YamlRecord ItemsInCRecord = YAML_RECORD(ItemsInC, ItemsFields);
