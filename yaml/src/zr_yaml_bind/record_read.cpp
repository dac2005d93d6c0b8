// SPDX-License-Identifier: Apache-2.0
// Records: keys and fields are brought together, what is missing or unknown is told, what is absent gets its default.
// Fields are looked for from the last one on, as files mostly have the order of the description.
#include "value_read.h"

#include "../debug_switch.h"
#include "../error_record.h"
#include "../nearest_text.h"

#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

constexpr uint32_t NoField = UINT32_MAX;

class FieldSet { // the fields of a record that have been found
public:
    explicit FieldSet(uint32_t count) noexcept { memset(words_, 0, (count + 63) / 64 * sizeof(uint64_t)); }
    void Add(uint32_t index) noexcept { words_[index / 64] |= uint64_t{1} << index % 64; }
    [[nodiscard]] bool Has(uint32_t index) const noexcept { return (words_[index / 64] >> index % 64 & 1) != 0; }

private:
    uint64_t words_[YAML_FIELD_MAX / 64];
};

struct Match {
    uint32_t index = NoField;
    bool old = false; // by the name that the field had before
};

// The field of a key, looked for from where the last one was found on.
Match FieldOf(const PlanRecord &plan, const YamlListNode &key, uint32_t from) noexcept
{
    for (uint32_t step = 0, index = from; step < plan.count; ++step, ++index) {
        index = index < plan.count ? index : 0;
        if (plan.fields[index].key.IsOf(key))
            return {index};
    }
    for (uint32_t index = 0; index < plan.count; ++index) {
        if (plan.fields[index].field->pcOldKey != nullptr && plan.fields[index].oldKey.IsOf(key))
            return {index, true};
    }
    return {};
}

bool IsPassedOver(const YamlListNode &key) noexcept
{
    return key.uiSameWithAnchor == 1 || FirstChild(key) == nullptr;
}

// A required key that is not there, or has a value that counts as absent, has the place of its map.
void MissingTell(YamlReading &reading, const PlanRecord &plan, const YamlListNode &map) noexcept
{
    FieldSet found(plan.count);
    uint32_t next = 0;
    for (const YamlListNode &key : Children(map)) {
        const Match match = IsPassedOver(key) ? Match{} : FieldOf(plan, key, next);
        if (match.index == NoField)
            continue;
        next = match.index + 1;
        if (!IsCollectionKind(plan.fields[match.index].kind) || !IsNull(*FirstChild(key)))
            found.Add(match.index);
    }
    for (uint32_t index = 0; index < plan.count; ++index) {
        const YamlField &field = *plan.fields[index].field;
        if (field.bRequired != 0 && !found.Has(index))
            Tell(reading, {.code = YAML_ERR_MISSING_KEY, .value = &map}, "missing key '%s'", field.pcKey);
    }
}

bool UnknownTell(YamlReading &reading, const PlanRecord &plan, const YamlListNode &map,
                 const YamlListNode &key) noexcept
{
    NearestText nearest{key.pcValue};
    for (uint32_t index = 0; index < plan.count; ++index) {
        bool there = false;
        for (const YamlListNode &other : Children(map))
            there = there || plan.fields[index].key.IsOf(other);
        if (!there)
            nearest.Offer(plan.fields[index].field->pcKey);
    }
    char hint[SentenceSize] = "";
    if (nearest.Best() != nullptr)
        (void)snprintf(hint, sizeof(hint), "did you mean '%s'?", nearest.Best());
    return Tell(reading, {.code = YAML_ERR_UNKNOWN_KEY, .value = &map, .place = &key, .hint = hint}, "unknown key '%s'",
                key.pcValue);
}

bool OldKeyTell(YamlReading &reading, const PlanField &plan, const YamlListNode &map, const YamlListNode &key,
                bool twice) noexcept
{
    if (twice)
        return Tell(reading, {.code = YAML_ERR_SAME, .value = &map, .place = &key}, "'%s' and '%s' name the same value",
                    plan.field->pcOldKey, plan.field->pcKey);
    Tell(reading, {.level = YAML_PROBLEM_NOTE, .code = YAML_ERR_UNKNOWN_KEY, .value = &map, .place = &key},
         "key '%s' is called '%s' now", plan.field->pcOldKey, plan.field->pcKey);
    return true;
}

// Gives a field its default.
bool Initial(YamlReading &reading, const PlanField &plan, void *record) noexcept
{
    const YamlField &field = *plan.field;
    if (plan.kind == YAML_KIND_RECORD)
        return RecordInitial(reading, *plan.record, MemberOf(field, record));
    if (plan.hasInitial)
        ScalarStore(plan.scalar, plan.initial, MemberOf(field, record));
    if (plan.kind != YAML_KIND_TEXT || field.pcDefault == nullptr)
        return true;
    void *member = MemberOf(field, record);
    if (field.pstStorage != nullptr)
        return field.pstStorage->pfnTextSet(member, field.pcDefault) == YAML_OK || Starve(reading);
    const size_t size = strlen(field.pcDefault) + 1;
    void *text = Keep(reading, size);
    if (text == nullptr)
        return false;
    memcpy(text, field.pcDefault, size);
    memcpy(member, &text, sizeof(text));
    return true;
}

// Keys in the order of the document, each into its field.
bool KeysRead(YamlReading &reading, const PlanRecord &plan, const YamlListNode &map, void *record, const char *tagKey,
              FieldSet &found) noexcept
{
    bool fits = true;
    uint32_t next = 0;
    for (const YamlListNode &key : Children(map)) {
        if (IsPassedOver(key))
            continue;
        const Match match = FieldOf(plan, key, next);
        if (match.index == NoField) {
            const bool known = plan.record->bIgnoreUnknown != 0 || strncmp(key.pcValue, "x-", 2) == 0 ||
                               (tagKey != nullptr && strcmp(key.pcValue, tagKey) == 0);
            fits = (known || UnknownTell(reading, plan, map, key)) && fits;
            continue;
        }
        next = match.index + 1;
        const PlanField &field = plan.fields[match.index];
        const YamlListNode &value = *FirstChild(key);
        if (DebugSwitch() != 0) // the key counts as read
            (void)ZRYAML_ChildFind(&map, key.pcValue, strlen(key.pcValue));
        const bool twice = found.Has(match.index);
        if (match.old || twice)
            fits = OldKeyTell(reading, field, map, key, twice) && fits;
        if (twice || (IsCollectionKind(field.kind) && IsNull(value)))
            continue;
        found.Add(match.index);
        fits = ValueRead(reading, field, value, record, MemberOf(*field.field, record)) && fits;
        if (reading.starved)
            return false;
    }
    return fits;
}

bool Checked(YamlReading &reading, const YamlRecord &record, const YamlListNode *map, const void *filled) noexcept
{
    if (record.pfnCheck == nullptr)
        return true;
    const uint32_t errors = reading.errors;
    const uint32_t code = record.pfnCheck(&reading, map, filled, record.pvContext);
    if (code == YAML_ERR_NOMEM)
        return Starve(reading);
    if (code == YAML_OK || reading.errors != errors)
        return reading.errors == errors && !reading.starved;
    return Tell(reading, {.code = code, .value = map}, "the value is not accepted");
}

uint32_t RecordResult(YamlReading &reading, const PlanRecord &plan, const YamlListNode *map, void *record) noexcept
{
    const YamlListNode *value = map != nullptr ? map : &reading.document->stRoot;
    const bool empty = map == nullptr;
    if (!empty && map->uiDataType != YAML_DATATYPE_MAP)
        (void)WrongType(reading, *map, YAML_DATATYPE_MAP);
    else
        (void)RecordFill(reading, plan, value, record, nullptr);
    return reading.starved ? YAML_ERR_NOMEM : reading.code;
}

// Fills a copy, which takes the place of the record when all is right.
uint32_t RecordRead(YamlReading &reading, const YamlListNode *map, const YamlRecord &record, void *filled) noexcept
{
    const PlanRecord *plan = PlanMake(reading, record);
    if (plan == nullptr)
        return reading.starved ? YAML_ERR_NOMEM : YAML_ERR_PARAM;
    if (record.bInPlace != 0)
        return RecordResult(reading, *plan, map, filled);
    void *copy = reading.scratch.Take(record.uiRecordSize);
    if (copy == nullptr)
        return YAML_ERR_NOMEM;
    memcpy(copy, filled, record.uiRecordSize);
    const uint32_t code = RecordResult(reading, *plan, map, copy);
    if (code == YAML_OK)
        memcpy(filled, copy, record.uiRecordSize);
    return code;
}

uint32_t FieldRead(YamlReading &reading, const YamlListNode *value, const YamlField &field, void *place) noexcept
{
    const PlanField *plan = PlanMake(reading, field);
    if (plan == nullptr)
        return reading.starved ? YAML_ERR_NOMEM : YAML_ERR_PARAM;
    if (value == nullptr)
        (void)Tell(reading, {.code = YAML_ERR_NOT_FOUND, .value = &reading.document->stRoot}, "the document is empty");
    else
        (void)PartRead(reading, *plan, *value, place);
    return reading.starved ? YAML_ERR_NOMEM : reading.code;
}

// What every reading begins and ends with.
template <class Reader>
uint32_t Read(YamlHandle *document, const YamlListNode *value, const void *place, YamlProblems **list,
              Reader read) noexcept
{
    ErrorClear();
    if (list != nullptr)
        *list = nullptr;
    if (document == nullptr || place == nullptr) {
        ErrorNote(YAML_ERR_PARAM, "The parameter is null.");
        return YAML_ERR_PARAM;
    }
    YamlReading reading = {.document = document, .list = list};
    const uint32_t code = read(reading, value != nullptr ? value : ZRYAML_RootGet(document));
    if (code == YAML_OK)
        reading.kept.HandOver(*document);
    if (code == YAML_ERR_NOMEM) {
        ErrorNote(YAML_ERR_NOMEM, "Out of memory.");
        YamlProblem problem = {};
        problem.uiCode = YAML_ERR_NOMEM;
        problem.pcSource = ZRYAML_NameGet(document);
        problem.pcMessage = "there is no memory left";
        (void)ZRYAML_ProblemReport(list, &problem);
    }
    return code;
}

} // namespace

bool zryaml::bind::RecordFill(YamlReading &reading, const PlanRecord &plan, const YamlListNode *map, void *record,
                              const char *tagKey) noexcept
{
    const uint32_t errors = reading.errors;
    FieldSet found(plan.count);
    if (plan.required)
        MissingTell(reading, plan, *map);
    bool fits = KeysRead(reading, plan, *map, record, tagKey, found) && reading.errors == errors;
    for (uint32_t index = 0; index < plan.count && !reading.starved; ++index) {
        if (!found.Has(index))
            fits = Initial(reading, plan.fields[index], record) && fits;
    }
    return fits && Checked(reading, *plan.record, map, record);
}

bool zryaml::bind::RecordInitial(YamlReading &reading, const PlanRecord &plan, void *record) noexcept
{
    bool fits = true;
    for (uint32_t index = 0; index < plan.count && fits; ++index)
        fits = Initial(reading, plan.fields[index], record);
    return fits;
}

uint32_t ZRYAML_RecordRead(YamlHandle *pstHandle, const YamlListNode *pstValue, const YamlRecord *pstRecord,
                           void *pvRecord, YamlProblems **ppstProblems)
{
    return Read(pstHandle, pstValue, pstRecord != nullptr ? pvRecord : nullptr, ppstProblems,
                [&](YamlReading &reading, const YamlListNode *value) {
                    return RecordRead(reading, value, *pstRecord, pvRecord);
                });
}

uint32_t ZRYAML_RecordCheck(YamlHandle *pstHandle, const YamlRecord *pstRecord, YamlProblems *pstProblems)
{
    KeptMemory memory;
    void *place = pstRecord != nullptr ? memory.Take(pstRecord->uiRecordSize) : nullptr;
    if (pstRecord != nullptr && place == nullptr)
        return ErrorNote(YAML_ERR_NOMEM, "Out of memory."), YAML_ERR_NOMEM;
    YamlProblems *found = nullptr;
    const uint32_t code = Read(pstHandle, nullptr, place, &found, [&](YamlReading &reading, const YamlListNode *value) {
        const uint32_t result = RecordRead(reading, value, *pstRecord, place);
        reading.kept.Release(); // the document keeps nothing of it
        return result;
    });
    for (uint32_t number = 0; const YamlProblem *problem = ZRYAML_ProblemGet(found, number); ++number)
        (void)ZRYAML_ProblemReport(pstProblems != nullptr ? &pstProblems : nullptr, problem);
    ZRYAML_ProblemsFree(found);
    return code;
}

uint32_t ZRYAML_FieldRead(YamlHandle *pstHandle, const YamlListNode *pstValue, const YamlField *pstField, void *pvPlace,
                          YamlProblems **ppstProblems)
{
    return Read(
        pstHandle, pstValue, pstField != nullptr ? pvPlace : nullptr, ppstProblems,
        [&](YamlReading &reading, const YamlListNode *value) { return FieldRead(reading, value, *pstField, pvPlace); });
}
