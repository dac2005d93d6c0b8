// SPDX-License-Identifier: Apache-2.0
// The rules, as a reader of documents would state them: an alias stands for the node of that anchor that ended last;
// "<<" with an alias takes in the keys that the map does not have yet; a key written later overrides a merged one.
#include "reference_tree.h"

#include "tree_check.h"

#include <algorithm>
#include <dlfcn.h>
#include <map>
#include <memory>
#include <vector>
#include <yaml.h>

namespace {

// libyaml as the library under test has loaded it: both read with the same one, and no program needs to link it.
#define LIBYAML(name)                                                                              \
    ([] {                                                                                          \
        static const auto pfnCall = reinterpret_cast<decltype(&name)>(dlsym(RTLD_DEFAULT, #name)); \
        return pfnCall;                                                                            \
    }())

constexpr size_t MaxDocument = size_t{16} << 10;
constexpr uint64_t MaxExpansion = 1000000; // nodes and text bytes that aliases stand for

struct Refusal {
    uint32_t uiCode;
};

struct Value;
using ValuePtr = std::shared_ptr<const Value>;

struct Key {
    std::string text;
    bool bMerged = false;
    bool bHidden = false; // repeats a merged key, which has its value
    ValuePtr stValue;
};

struct Value {
    uint32_t uiType = YAML_DATATYPE_SCALAR;
    std::string text;
    std::vector<Key> keys;
    std::vector<ValuePtr> items;
    uint32_t uiDepth = 0;  // collections from here down
    uint64_t ulWeight = 1; // nodes and text bytes from here down
};

void Weigh(Value &stValue)
{
    const auto Add = [&stValue](const Value &stChild) {
        stValue.uiDepth = std::max(stValue.uiDepth, stChild.uiDepth);
        stValue.ulWeight += stChild.ulWeight;
    };
    stValue.ulWeight += stValue.text.size();
    for (const ValuePtr &stItem : stValue.items)
        Add(*stItem);
    for (const Key &stKey : stValue.keys) {
        stValue.ulWeight += 1 + stKey.text.size();
        if (!stKey.bHidden)
            Add(*stKey.stValue);
    }
    if (stValue.uiType != YAML_DATATYPE_SCALAR)
        ++stValue.uiDepth;
}

struct Event {
    yaml_event_t stRaw{};
    Event() = default;
    Event(const Event &) = delete;
    Event &operator=(const Event &) = delete;
    ~Event() { LIBYAML(yaml_event_delete)(&stRaw); }
};

std::string Text(const yaml_char_t *pucText)
{
    return pucText == nullptr ? "" : reinterpret_cast<const char *>(pucText);
}

class Anchors {
public:
    void Start(const std::string &name) { m_open.push_back(name); } // ends with its collection; "" is not kept
    void End(const ValuePtr &stValue)
    {
        Scalar(m_open.back(), stValue);
        m_open.pop_back();
    }
    void Scalar(const std::string &name, const ValuePtr &stValue)
    {
        if (!name.empty())
            m_finished[name] = stValue;
    }
    void Drop(const std::string &name)
    {
        m_finished.erase(name);
        std::replace(m_open.begin(), m_open.end(), name, std::string());
    }
    [[nodiscard]] ValuePtr Find(const std::string &name) const
    {
        const auto it = m_finished.find(name);
        return it == m_finished.end() ? throw Refusal{YAML_ERR_ALIAS} : it->second;
    }

private:
    std::map<std::string, ValuePtr> m_finished;
    std::vector<std::string> m_open;
};

class Reader {
public:
    explicit Reader(std::string_view document)
    {
        LIBYAML(yaml_parser_initialize)(&m_stParser);
        LIBYAML(yaml_parser_set_input_string)
        (&m_stParser, reinterpret_cast<const unsigned char *>(document.data()), document.size());
    }
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;
    ~Reader() { LIBYAML(yaml_parser_delete)(&m_stParser); }

    ValuePtr Stream()
    {
        ValuePtr stTop;
        for (Event stEvent;; LIBYAML(yaml_event_delete)(&stEvent.stRaw)) {
            Next(stEvent);
            if (stEvent.stRaw.type == YAML_STREAM_END_EVENT)
                return stTop;
            if (stEvent.stRaw.type == YAML_DOCUMENT_START_EVENT)
                stTop = stTop == nullptr ? Top() : throw Refusal{YAML_ERR_PARSE};
        }
    }

private:
    void Next(Event &stEvent)
    {
        constexpr uint32_t g_auiCode[] = {YAML_ERR_PARAM, YAML_ERR_NOMEM, YAML_ERR_READER, YAML_ERR_SCANNER,
                                          YAML_ERR_PARSE}; // by libyaml's number
        if (LIBYAML(yaml_parser_parse)(&m_stParser, &stEvent.stRaw) == 0)
            throw Refusal{m_stParser.error <= YAML_PARSER_ERROR ? g_auiCode[m_stParser.error] : YAML_ERR_PARAM};
    }

    ValuePtr Top()
    {
        Event stEvent;
        Next(stEvent);
        return stEvent.stRaw.type != YAML_SCALAR_EVENT ? ValueRead(stEvent.stRaw, 0) : throw Refusal{YAML_ERR_EVENT};
    }

    // A value or item that starts with an event, inside so many open collections.
    ValuePtr ValueRead(const yaml_event_t &stEvent, uint32_t uiOpen, bool bAnchorKept = true)
    {
        switch (stEvent.type) {
        case YAML_ALIAS_EVENT:
            return Expand(m_stAnchors.Find(Text(stEvent.data.alias.anchor)), uiOpen);
        case YAML_SCALAR_EVENT:
            return ScalarRead(stEvent);
        default:
            return CollectionRead(stEvent, uiOpen, bAnchorKept);
        }
    }

    ValuePtr Expand(const ValuePtr &stSource, uint32_t uiOpen)
    {
        Charge(stSource->ulWeight);
        return uiOpen + stSource->uiDepth > YAML_EVENT_STACK_SIZE ? throw Refusal{YAML_ERR_EVENT} : stSource;
    }

    void Charge(uint64_t ulWeight)
    {
        if ((m_ulExpansion += ulWeight) > MaxExpansion)
            throw Refusal{REFERENCE_TOO_LARGE};
    }

    ValuePtr ScalarRead(const yaml_event_t &stEvent)
    {
        const auto &stScalar = stEvent.data.scalar;
        auto stValue = std::make_shared<Value>();
        stValue->text.assign(reinterpret_cast<const char *>(stScalar.value), stScalar.length);
        if (stValue->text.find('\0') != std::string::npos)
            throw Refusal{YAML_ERR_EVENT};
        Weigh(*stValue);
        return stValue;
    }

    ValuePtr CollectionRead(const yaml_event_t &stEvent, uint32_t uiOpen, bool bAnchorKept)
    {
        if (++uiOpen > YAML_EVENT_STACK_SIZE)
            throw Refusal{YAML_ERR_EVENT};
        const bool bMap = stEvent.type == YAML_MAPPING_START_EVENT;
        const std::string name = Text(bMap ? stEvent.data.mapping_start.anchor : stEvent.data.sequence_start.anchor);
        if (!bAnchorKept)
            m_stAnchors.Drop(name);
        m_stAnchors.Start(bAnchorKept ? name : "");
        auto stValue = std::make_shared<Value>();
        stValue->uiType = bMap ? YAML_DATATYPE_MAP : YAML_DATATYPE_SEQ;
        if (bMap)
            MapRead(*stValue, uiOpen);
        else
            ItemsRead(*stValue, uiOpen);
        Weigh(*stValue);
        m_stAnchors.End(stValue);
        return stValue;
    }

    void ItemsRead(Value &stSeq, uint32_t uiOpen)
    {
        for (;;) {
            Event stEvent;
            Next(stEvent);
            if (stEvent.stRaw.type == YAML_SEQUENCE_END_EVENT)
                return;
            stSeq.items.push_back(ValueRead(stEvent.stRaw, uiOpen));
            if (stEvent.stRaw.type == YAML_SCALAR_EVENT)
                m_stAnchors.Scalar(Text(stEvent.stRaw.data.scalar.anchor), stSeq.items.back());
        }
    }

    void MapRead(Value &stMap, uint32_t uiOpen)
    {
        for (size_t ulAt = 0;;) { // where the next key goes
            Event stEvent;
            Next(stEvent);
            if (stEvent.stRaw.type == YAML_MAPPING_END_EVENT)
                return;
            if (stEvent.stRaw.type == YAML_ALIAS_EVENT)
                (void)m_stAnchors.Find(Text(stEvent.stRaw.data.alias.anchor));
            if (stEvent.stRaw.type != YAML_SCALAR_EVENT)
                throw Refusal{YAML_ERR_EVENT};
            const std::string anchor = Text(stEvent.stRaw.data.scalar.anchor);
            const ValuePtr stText = ScalarRead(stEvent.stRaw);
            stMap.keys.insert(stMap.keys.begin() + static_cast<ptrdiff_t>(ulAt), KeyMake(stMap, stText->text));
            m_stAnchors.Scalar(anchor, stText);
            ulAt = KeyValueRead(stMap, ulAt, uiOpen, anchor);
        }
    }

    static Key *MergedFind(Value &stMap, const std::string &text)
    {
        for (Key &stKey : stMap.keys) {
            if (stKey.bMerged && stKey.text == text)
                return &stKey;
        }
        return nullptr;
    }

    static Key KeyMake(Value &stMap, const std::string &text)
    {
        for (const Key &stKey : stMap.keys) {
            if (!stKey.bMerged && stKey.text == text)
                throw Refusal{YAML_ERR_SAME};
        }
        return {text, false, MergedFind(stMap, text) != nullptr, nullptr};
    }

    // Reads the value of the key at a place; returns where the next key goes.
    size_t KeyValueRead(Value &stMap, size_t ulAt, uint32_t uiOpen, const std::string &keyAnchor)
    {
        Event stEvent;
        Next(stEvent);
        const bool bAlias = stEvent.stRaw.type == YAML_ALIAS_EVENT;
        const bool bHidden = stMap.keys[ulAt].bHidden;
        if (bAlias && stMap.keys[ulAt].text == "<<") {
            const ValuePtr stSource = m_stAnchors.Find(Text(stEvent.stRaw.data.alias.anchor));
            stMap.keys.erase(stMap.keys.begin() + static_cast<ptrdiff_t>(ulAt));
            if (!keyAnchor.empty())
                m_stAnchors.Drop(keyAnchor);
            return Merge(stMap, ulAt, *stSource, uiOpen);
        }
        const ValuePtr stValue = ValueRead(stEvent.stRaw, uiOpen, !bHidden);
        if (stEvent.stRaw.type == YAML_SCALAR_EVENT)
            m_stAnchors.Scalar(Text(stEvent.stRaw.data.scalar.anchor), stValue);
        Key &stReceiver = bHidden ? *MergedFind(stMap, stMap.keys[ulAt].text) : stMap.keys[ulAt];
        stReceiver.stValue = stValue;
        return static_cast<size_t>(&stReceiver - stMap.keys.data()) + 1;
    }

    size_t Merge(Value &stMap, size_t ulAt, const Value &stSource, uint32_t uiOpen)
    {
        Charge(stSource.ulWeight);
        if (stSource.uiType == YAML_DATATYPE_SCALAR)
            throw Refusal{YAML_ERR_EVENT};
        for (const Key &stKey : stSource.keys)
            ulAt = MergeKey(stMap, ulAt, stKey, uiOpen);
        for (const ValuePtr &stItem : stSource.items) {
            if (stItem->uiType != YAML_DATATYPE_MAP)
                throw Refusal{YAML_ERR_PARSE};
            if (!stItem->keys.empty())
                ulAt = MergeKey(stMap, ulAt, stItem->keys.front(), uiOpen);
        }
        return ulAt;
    }

    size_t MergeKey(Value &stMap, size_t ulAt, const Key &stKey, uint32_t uiOpen)
    {
        const auto Same = [&stKey](const Key &stOther) { return stOther.text == stKey.text; };
        if (stKey.bHidden || std::any_of(stMap.keys.begin(), stMap.keys.end(), Same))
            return ulAt;
        const Key stCopy = {stKey.text, true, false, Expand(stKey.stValue, uiOpen)};
        stMap.keys.insert(stMap.keys.begin() + static_cast<ptrdiff_t>(ulAt), stCopy);
        return ulAt + 1;
    }

    yaml_parser_t m_stParser{};
    Anchors m_stAnchors;
    uint64_t m_ulExpansion = 0;
};

void Write(const Value &stValue, std::string &text)
{
    if (stValue.uiType == YAML_DATATYPE_SCALAR)
        return ScalarWrite(stValue.text.c_str(), text);
    const bool bMap = stValue.uiType == YAML_DATATYPE_MAP;
    const size_t ulStart = text.size() + 1;
    text += bMap ? '{' : '[';
    for (const ValuePtr &stItem : stValue.items) {
        text += text.size() > ulStart ? "," : "";
        Write(*stItem, text);
    }
    for (const Key &stKey : stValue.keys) {
        if (stKey.bHidden)
            continue;
        text += text.size() > ulStart ? "," : "";
        ScalarWrite(stKey.text.c_str(), text);
        text += ':';
        Write(*stKey.stValue, text);
    }
    text += bMap ? '}' : ']';
}

} // namespace

ReferenceResult ReferenceLoad(std::string_view document)
{
    ReferenceResult stResult;
    if (document.size() > MaxDocument)
        return {REFERENCE_TOO_LARGE, ""};
    try {
        Reader stReader(document);
        if (const ValuePtr stTop = stReader.Stream())
            Write(*stTop, stResult.text);
    } catch (const Refusal &stRefusal) {
        return {stRefusal.uiCode, ""};
    }
    return stResult;
}
