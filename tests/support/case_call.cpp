// SPDX-License-Identifier: Apache-2.0
// Exported operations one by one, on nodes of the document, which a "damage" may have made such as no load makes them.
#include "case_file.h"
#include "case_operations.h"
#include "node_tree.h"

#include <list>
#include <regex>
#include <sstream>
#include <tuple>
#include <yaml.h>

namespace {

using std::string;
using std::to_string;

YamlListNode *NextOf(const YamlListNode &stNode)
{
    const zryaml::NodeLink eLink = zryaml::ChildLinkOf(*stNode.pstFather);
    return zryaml::NodeOf(zryaml::LinkOf(stNode, eLink).next, eLink);
}

// The node that a word names; cases/README.md has the forms.
YamlListNode *NodeOf(YamlHandle &stHandle, const string &word)
{
    if (word == "+{}" || word == "+[]") {
        YamlListNode *pstNew = yaml_ListNodeAlloc(&stHandle);
        pstNew->uiDataType = word == "+[]" ? YAML_DATATYPE_SEQ : YAML_DATATYPE_MAP;
        return pstNew;
    }
    if (word.starts_with('+'))
        return yaml_ScalarNodeCreate(&stHandle, &word[1]);
    const size_t ulPath = word.find_last_not_of("^/>") + 1;
    string path = word.substr(0, ulPath);
    uint32_t uiIndexed = 0;
    YamlListNode *pstNode = path == "."
                                ? zryaml::FirstChild(stHandle.stRoot)
                                : yaml_NodeFind(&stHandle, path.data(), static_cast<uint32_t>(ulPath + 1), &uiIndexed);
    for (const char cStep : word.substr(ulPath)) {
        Require(pstNode != nullptr, "there is no such node", word);
        pstNode = cStep == '^' ? pstNode->pstFather : cStep == '>' ? NextOf(*pstNode) : zryaml::FirstChild(*pstNode);
    }
    Require(pstNode != nullptr, "there is no such node", word);
    return pstNode;
}

string Shown(int32_t iNumber)
{
    return to_string(iNumber);
}
string Shown(uint32_t uiCode) // in hex, as the log shows codes
{
    std::ostringstream text;
    text << std::hex << uiCode;
    return text.str();
}
string Shown(const char *pcText)
{
    return pcText != nullptr ? "=" + Printable(pcText) : "nothing";
}
string Shown(const void *pRecord)
{
    return pRecord != nullptr ? "something" : "nothing";
}
string Shown(const YamlListNode *pstNode)
{
    if (pstNode == nullptr || pstNode->uiDataType > YAML_DATATYPE_MAP)
        return Shown(pstNode != nullptr ? pstNode->pcValue : nullptr);
    return pstNode->uiDataType == YAML_DATATYPE_SEQ ? "[]" : "{}";
}
string Shown(const YamlAnchorNode *pstAnchor)
{
    return pstAnchor != nullptr ? "&" + Shown(pstAnchor->pstAnchoredNode) : "nothing";
}

// The words of a call, which become the arguments that its parameters ask for, in their order.
class Words {
public:
    Words(YamlHandle &stHandle, const string &words) : m_stHandle(stHandle), m_words(words)
    {
        m_stAnchor.pcAnchorName = m_acAnchor;
        m_stEvent.data.sequence_start.anchor = reinterpret_cast<yaml_char_t *>(m_acAnchor);
    }
    string Next()
    {
        string word;
        m_words >> word;
        return Unescaped(word);
    }
    explicit operator YamlHandle *() { return &m_stHandle; }
    explicit operator const YamlHandle *() { return &m_stHandle; }
    explicit operator YamlListNode *() { return NodeOf(m_stHandle, Next()); }
    explicit operator const YamlListNode *() { return NodeOf(m_stHandle, Next()); }
    explicit operator const YamlList *() { return &NodeOf(m_stHandle, Next())->stChildList; }
    explicit operator YamlAnchorNode *()
    {
        m_stAnchor.pstAnchoredNode = NodeOf(m_stHandle, Next());
        return &m_stAnchor;
    }
    explicit operator const yaml_event_s *() { return &m_stEvent; }
    explicit operator uint32_t() { return static_cast<uint32_t>(std::stoul(Next())); }
    explicit operator size_t() { return std::stoul(Next()); }
    explicit operator char() { return Next()[0]; }
    explicit operator const char *() { return m_given.emplace_back(Next()).c_str(); }
    template <class Record> explicit operator Record *() // of the caller
    {
        static std::remove_const_t<Record> stRecord;
        stRecord = {};
        return &stRecord;
    }
    // What is written to is shown afterwards.
    explicit operator YamlListNode **() { return &m_nodes.emplace_back(NodeOf(m_stHandle, Next())); }
    explicit operator uint32_t *() { return &m_numbers.emplace_back(1U); }
    explicit operator char *() { return (m_texts.emplace_back(Next()) += string(100, '\0')).data(); }

    [[nodiscard]] string Written() const
    {
        string shown;
        for (const YamlListNode *pstNode : m_nodes)
            shown += " at " + Shown(pstNode);
        for (const uint32_t uiNumber : m_numbers)
            shown += uiNumber != 1 ? " " + to_string(uiNumber) : "";
        for (const string &text : m_texts)
            shown += " '" + Replaced(Printable(text.substr(0, text.find_last_not_of('\0') + 1)), "\\x00", "_") + "'";
        return shown;
    }

private:
    YamlHandle &m_stHandle;
    std::istringstream m_words;
    std::list<YamlListNode *> m_nodes;
    std::list<uint32_t> m_numbers;
    std::list<string> m_given, m_texts;
    char m_acAnchor[2] = "a";
    YamlAnchorNode m_stAnchor = {};
    yaml_event_t m_stEvent = {};
};

// The call; the argument with a number, counted from 1, is 0 or null in it.
template <class... Parameters, class Call> string Made(Call pfnCall, Words &stWords, size_t ulNull)
{
    std::tuple<Parameters...> arguments{static_cast<Parameters>(stWords)...}; // one after the other
    return std::apply(
        [&](Parameters &...argument) {
            size_t ulNumber = 0;
            ((++ulNumber == ulNull ? void(argument = {}) : void()), ...);
            string result = "done";
            if constexpr (std::is_void_v<decltype(pfnCall(argument...))>)
                pfnCall(argument...);
            else
                result = Shown(pfnCall(argument...));
            return result + stWords.Written();
        },
        arguments);
}
template <class Result, class... Parameters>
string MadeOf(Result (*pfnCall)(Parameters...), Words &stWords, size_t ulNull)
{
    return Made<Parameters...>(pfnCall, stWords, ulNull);
}
template <class Result, class... Parameters>
string MadeOf(Result (*pfnCall)(Parameters..., ...), Words &stWords, size_t ulNull)
{
    return Made<Parameters...>(pfnCall, stWords, ulNull);
}

using Calls = std::map<string, string (*)(Words &, size_t)>;
template <class... Entry> Calls CallsOf(const Entry &...stEntry) // as arguments they stand several on a line
{
    return Calls{stEntry...};
}
#define CALL_OF(prefix, name) \
    Calls::value_type(#name, [](Words &stWords, size_t ulNull) { return MadeOf(prefix##name, stWords, ulNull); })
#define CALL(name) CALL_OF(yaml_, name)
#define ZR_CALL(name) CALL_OF(ZRYAML_, name)
const Calls g_calls = CallsOf(
    CALL(AnchorInsertInMap), CALL(AnchorInsertInMapWithoutMapNode), CALL(AnchorInsertInSequence),
    CALL(AnchorListRealse), CALL(AnchorNodesClone), CALL(AnchorNodesParse), CALL(AnchorObjFind), CALL(AnchorRecord),
    CALL(AnchorRecordEnd), CALL(ArrayIndexGet), CALL(CurrEventGet), CALL(DirectAnchorInsertInMap), CALL(DumpChildList),
    CALL(DumpMapList), CALL(DumpScalarNode), CALL(DumpValue), CALL(EventEndSet), CALL(EventStartSet),
    CALL(FatherNodeNextLevelTypeSet), CALL(FirstNodeCheck), CALL(IndexGet), CALL(IteratorCreate), CALL(IteratorDestroy),
    CALL(KeyParse), CALL(KeyParseForSeq), CALL(KeyStringGet), CALL(ListNodeFree), CALL(ListSameScalarCheck),
    CALL(MapAnchorCopy), CALL(MapEndProcess), CALL(MapNodeAddInSeq), CALL(MapStartProcess), CALL(MetaChrProcess),
    CALL(NextKeyValueGet), CALL(NodeValueGet), CALL(PropertyFind), CALL(PropertyFindInMapList),
    CALL(PropertyFindInScalarNode), CALL(PropertyFindInSeqList), CALL(SameKeyFindInAnchor), CALL(ScalarNodeAdd),
    CALL(ScalarNodeAddInMap), CALL(ScalarNodeAddInSeq), CALL(ScalarNodeAddWithKeyRole), CALL(ScalarNodeCreate),
    CALL(ScalarProcess), CALL(SeqEndProcess), CALL(SeqStartProcess), CALL(Sequence2MapCopy), CALL(SequenceAnchorCopy),
    CALL(SpacePrintWithNewLine), CALL(StringTailSpaceCount), ZR_CALL(ArraySizeGet), ZR_CALL(ChildCountGet),
    ZR_CALL(ChildFind), ZR_CALL(ChildGet), ZR_CALL(ChildNextGet), ZR_CALL(ContextDump), ZR_CALL(DebugInfoGet),
    ZR_CALL(FileLoad), ZR_CALL(LimitsGet), ZR_CALL(LimitsSet), ZR_CALL(NameGet), ZR_CALL(PathFind),
    ZR_CALL(PositionGet), ZR_CALL(PropertyGet), ZR_CALL(RootGet), ZR_CALL(TextLoad), ZR_CALL(UnreadKeyNext),
    ZR_CALL(ValuePositionGet), ZR_CALL(ValueTextGet));

string Call(YamlHandle *pstHandle, const string &nameAndWords)
{
    static const std::regex stAddress("0x[0-9a-f]{6,}");
    ZRYAML_HandleFree(TextLoad("")); // forgets the last error
    Base().Reset();
    Words stWords(*pstHandle, nameAndWords);
    string name = stWords.Next();
    size_t ulNull = 0;
    for (; name[0] == '!' || name[0] == '-'; name = stWords.Next())
        (name[0] == '!' ? Base().ulFailAllocation : ulNull) = std::stoul(name.substr(1));
    const auto itCall = g_calls.find(name);
    if (itCall == g_calls.end())
        return "there is no such call\n";
    const string before = TreeText(*pstHandle, true), outcome = itCall->second(stWords, ulNull) + "\n";
    const string after = TreeText(*pstHandle, true);
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    return outcome + (after != before ? Replaced(after, "\"", "") + "\n" : "") +
           std::regex_replace(LogAndError(stError.pcKeyPath, stError.pcFile), stAddress, "ADDRESS");
}

const std::map<string, void (*)(YamlListNode &, uint32_t)> g_damages = {
    {"foreign", [](YamlListNode &st, uint32_t) { st.uiMagic = 0; }},
    {"marked", [](YamlListNode &st, uint32_t) { st.uiSameWithAnchor = 1; }},
    {"open", [](YamlListNode &st, uint32_t) { st.uiState |= zryaml::NODE_OPEN; }},
    {"anchored", [](YamlListNode &st, uint32_t) { st.uiState |= zryaml::NODE_ANCHORED; }},
    {"unlinked", [](YamlListNode &st, uint32_t) { st.uPrivate.pstSameKey = nullptr; }},
    {"childless", [](YamlListNode &st, uint32_t) { zryaml::ListInit(st.stChildList); }},
    {"textless",
     [](YamlListNode &st, uint32_t) {
         char *pcText = std::exchange(st.pcValue, nullptr);
         if ((st.uiState & zryaml::NODE_STORED) == 0)
             ZR_MemFree(pcText, yaml_MemHandleGet());
     }},
    {"type", [](YamlListNode &st, uint32_t uiType) { st.uiDataType = uiType; }},
    {"nexttype", [](YamlListNode &st, uint32_t uiType) { st.uiNextLevelType = uiType; }},
};

} // namespace

bool NodeDamage(YamlHandle &stHandle, const string &kindAndNode)
{
    std::istringstream words(kindAndNode);
    string kind, word;
    uint32_t uiNumber = 0;
    words >> kind >> word >> uiNumber;
    const auto itDamage = g_damages.find(kind);
    if (itDamage != g_damages.end())
        itDamage->second(*NodeOf(stHandle, word), uiNumber);
    return itDamage != g_damages.end();
}

const std::map<string, Operation> g_callOperations = {{"call", {Call, Operation::Change}}};
