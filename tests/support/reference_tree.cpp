// SPDX-License-Identifier: Apache-2.0
// The rules, as a reader of documents would state them: an alias stands for the node of that anchor that ended last;
// "<<" with an alias takes in the keys that the map does not have yet; a key written later overrides a merged one.
#include "reference_tree.h"

#include "tree_check.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <vector>
#include <yaml.h>

namespace {

struct Refusal {
    uint32_t uiCode;
};

struct Value;
using ValuePtr = std::shared_ptr<const Value>;

struct Key {
    std::string text; // as written
    bool bMerged = false;
    bool bHidden = false; // repeats a merged key, which has its value
    ValuePtr stValue;
};

struct Value {
    uint32_t uiType = YAML_DATATYPE_SCALAR;
    std::string text; // the whole value as TreeText writes it
    std::vector<Key> keys;
    std::vector<ValuePtr> items;
};

struct Event {
    yaml_event_t stRaw{};
    explicit Event(yaml_parser_t &stParser)
    {
        constexpr uint32_t auiCode[] = {YAML_ERR_PARAM, YAML_ERR_NOMEM, YAML_ERR_READER, YAML_ERR_SCANNER,
                                        YAML_ERR_PARSE}; // by libyaml's number
        if (yaml_parser_parse(&stParser, &stRaw) == 0)
            throw Refusal{stParser.error <= YAML_PARSER_ERROR ? auiCode[stParser.error] : YAML_ERR_PARAM};
    }
    Event(const Event &) = delete;
    Event &operator=(const Event &) = delete;
    ~Event() { yaml_event_delete(&stRaw); }

    [[nodiscard]] bool Is(yaml_event_type_t eType) const { return stRaw.type == eType; }
    // The name of its anchor, or of the one that it refers to; "" for none.
    [[nodiscard]] std::string Anchor() const
    {
        const yaml_char_t *puc = Is(YAML_SCALAR_EVENT)          ? stRaw.data.scalar.anchor
                                 : Is(YAML_ALIAS_EVENT)         ? stRaw.data.alias.anchor
                                 : Is(YAML_MAPPING_START_EVENT) ? stRaw.data.mapping_start.anchor
                                                                : stRaw.data.sequence_start.anchor;
        return puc == nullptr ? "" : reinterpret_cast<const char *>(puc);
    }
};

class Reader {
public:
    explicit Reader(std::string_view document)
    {
        yaml_parser_initialize(&m_stParser);
        yaml_parser_set_input_string(&m_stParser, reinterpret_cast<const unsigned char *>(document.data()),
                                     document.size());
    }
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;
    ~Reader() { yaml_parser_delete(&m_stParser); }

    ValuePtr Stream()
    {
        ValuePtr stTop;
        for (;;) {
            const Event stEvent(m_stParser);
            if (stEvent.Is(YAML_STREAM_END_EVENT))
                return stTop;
            if (stEvent.Is(YAML_DOCUMENT_START_EVENT))
                stTop = stTop == nullptr ? Top() : throw Refusal{YAML_ERR_PARSE};
        }
    }

private:
    ValuePtr Top()
    {
        const Event stEvent(m_stParser);
        return stEvent.Is(YAML_SCALAR_EVENT) ? throw Refusal{YAML_ERR_EVENT} : ValueRead(stEvent);
    }

    void Finish(const std::string &anchor, const ValuePtr &stValue)
    {
        if (!anchor.empty())
            m_finished[anchor] = stValue;
    }

    // An anchor that is not kept takes along what bore its name.
    void Drop(const std::string &anchor)
    {
        m_finished.erase(anchor);
        std::replace(m_open.begin(), m_open.end(), anchor, std::string());
    }

    [[nodiscard]] ValuePtr Aliased(const Event &stAlias) const
    {
        const auto it = m_finished.find(stAlias.Anchor());
        return it == m_finished.end() ? throw Refusal{YAML_ERR_ALIAS} : it->second;
    }

    ValuePtr ValueRead(const Event &stEvent, bool bAnchorKept = true)
    {
        if (stEvent.Is(YAML_ALIAS_EVENT))
            return Aliased(stEvent);
        return stEvent.Is(YAML_SCALAR_EVENT) ? ScalarRead(stEvent) : CollectionRead(stEvent, bAnchorKept);
    }

    ValuePtr ScalarRead(const Event &stEvent)
    {
        const auto &stScalar = stEvent.stRaw.data.scalar;
        if (memchr(stScalar.value, '\0', stScalar.length) != nullptr)
            throw Refusal{YAML_ERR_EVENT};
        auto stValue = std::make_shared<Value>();
        ScalarWrite(reinterpret_cast<const char *>(stScalar.value), stValue->text);
        Finish(stEvent.Anchor(), stValue);
        return stValue;
    }

    ValuePtr CollectionRead(const Event &stEvent, bool bAnchorKept)
    {
        const bool bMap = stEvent.Is(YAML_MAPPING_START_EVENT);
        if (!bAnchorKept)
            Drop(stEvent.Anchor());
        m_open.push_back(bAnchorKept ? stEvent.Anchor() : "");
        auto stValue = std::make_shared<Value>();
        stValue->uiType = bMap ? YAML_DATATYPE_MAP : YAML_DATATYPE_SEQ;
        if (bMap)
            KeysRead(*stValue);
        else
            ItemsRead(stValue->items);
        for (const ValuePtr &stItem : stValue->items)
            stValue->text += "," + stItem->text;
        for (const Key &stKey : stValue->keys)
            stValue->text += stKey.bHidden ? "" : "," + stKey.text + ":" + stKey.stValue->text;
        stValue->text = (bMap ? "{" : "[") + stValue->text.erase(0, 1) + (bMap ? "}" : "]");
        Finish(m_open.back(), stValue);
        m_open.pop_back();
        return stValue;
    }

    void ItemsRead(std::vector<ValuePtr> &items)
    {
        for (;;) {
            const Event stEvent(m_stParser);
            if (stEvent.Is(YAML_SEQUENCE_END_EVENT))
                return;
            items.push_back(ValueRead(stEvent));
        }
    }

    void KeysRead(Value &stMap)
    {
        for (ptrdiff_t lAt = 0;;) { // where the next key goes
            const Event stEvent(m_stParser);
            if (stEvent.Is(YAML_MAPPING_END_EVENT))
                return;
            if (stEvent.Is(YAML_ALIAS_EVENT))
                (void)Aliased(stEvent);
            if (!stEvent.Is(YAML_SCALAR_EVENT))
                throw Refusal{YAML_ERR_EVENT};
            const std::string text = ScalarRead(stEvent)->text;
            if (Find(stMap, text, false) != nullptr)
                throw Refusal{YAML_ERR_SAME};
            stMap.keys.insert(stMap.keys.begin() + lAt, {text, false, Find(stMap, text, true) != nullptr, nullptr});
            lAt = KeyValueRead(stMap, lAt, stEvent.Anchor());
        }
    }

    static Key *Find(Value &stMap, const std::string &text, bool bMerged)
    {
        const auto it = std::ranges::find_if(
            stMap.keys, [&](const Key &stKey) { return stKey.bMerged == bMerged && stKey.text == text; });
        return it != stMap.keys.end() ? &*it : nullptr;
    }

    // Reads the value of the key at a place; returns where the next key goes.
    ptrdiff_t KeyValueRead(Value &stMap, ptrdiff_t lAt, const std::string &keyAnchor)
    {
        const Event stEvent(m_stParser);
        Key *pstKey = &stMap.keys[static_cast<size_t>(lAt)];
        if (stEvent.Is(YAML_ALIAS_EVENT) && pstKey->text == R"("<<")") {
            const ValuePtr stSource = Aliased(stEvent);
            stMap.keys.erase(stMap.keys.begin() + lAt);
            if (!keyAnchor.empty())
                Drop(keyAnchor);
            return Merge(stMap, lAt, *stSource);
        }
        const ValuePtr stValue = ValueRead(stEvent, !pstKey->bHidden);
        if (pstKey->bHidden)
            pstKey = Find(stMap, pstKey->text, true);
        pstKey->stValue = stValue;
        return pstKey - stMap.keys.data() + 1;
    }

    static ptrdiff_t Merge(Value &stMap, ptrdiff_t lAt, const Value &stSource)
    {
        if (stSource.uiType == YAML_DATATYPE_SCALAR)
            throw Refusal{YAML_ERR_EVENT};
        for (const Key &stKey : stSource.keys)
            lAt = KeyMerge(stMap, lAt, stKey);
        for (const ValuePtr &stItem : stSource.items) {
            if (stItem->uiType != YAML_DATATYPE_MAP)
                throw Refusal{YAML_ERR_PARSE};
            if (!stItem->keys.empty())
                lAt = KeyMerge(stMap, lAt, stItem->keys.front());
        }
        return lAt;
    }

    static ptrdiff_t KeyMerge(Value &stMap, ptrdiff_t lAt, const Key &stKey)
    {
        if (stKey.bHidden || Find(stMap, stKey.text, false) != nullptr || Find(stMap, stKey.text, true) != nullptr)
            return lAt;
        stMap.keys.insert(stMap.keys.begin() + lAt, {stKey.text, true, false, stKey.stValue});
        return lAt + 1;
    }

    yaml_parser_t m_stParser{};
    std::map<std::string, ValuePtr> m_finished;
    std::vector<std::string> m_open; // the names of the anchors on the open collections, "" where there is none
};

} // namespace

ReferenceResult ReferenceLoad(std::string_view document)
{
    ReferenceResult stResult;
    try {
        if (const ValuePtr stTop = Reader(document).Stream())
            stResult.text = stTop->text;
    } catch (const Refusal &stRefusal) {
        return {stRefusal.uiCode, ""};
    }
    return stResult;
}
