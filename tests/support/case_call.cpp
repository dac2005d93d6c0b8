// SPDX-License-Identifier: Apache-2.0
// Exported operations one by one, on nodes of the document, which a "damage" may have made such as no load makes them.
#include "case_file.h"
#include "case_operations.h"
#include "node_tree.h"

#include <list>
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

// The node that a word names: "." is the value of the whole document, a path leads to a key or an element, behind
// either
// "^" to the father, "/" to the first child and ">" to the next one of its father; "+text" makes a new scalar, "+{}"
// and "+[]" a new collection.
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
    explicit operator const char *() // a text, or none for "-"
    {
        const string &text = m_texts.emplace_back(Next());
        return text == "-" ? nullptr : text.c_str();
    }
    explicit operator uint32_t() { return static_cast<uint32_t>(std::stoul(Next())); }
    explicit operator YamlListNode **() // the current node
    {
        m_pstCurrent = NodeOf(m_stHandle, Next());
        m_bCurrent = true;
        return &m_pstCurrent;
    }
    explicit operator uint32_t *() { return &m_uiFlag; } // the key/value flag
    explicit operator YamlAnchorNode *()
    {
        m_stAnchor.pstAnchoredNode = NodeOf(m_stHandle, Next());
        return &m_stAnchor;
    }
    explicit operator const yaml_event_s *() { return &m_stEvent; } // a collection with the anchor "a"
    explicit operator char *() { return m_acText; }                 // room for 100 bytes

    [[nodiscard]] string Changes() const
    {
        return (m_bCurrent ? " at " + Shown(m_pstCurrent) : "") +
               (m_uiFlag != 1 ? " flag " + to_string(m_uiFlag) : "") +
               (*m_acText != '\0' ? " \"" + Printable(m_acText) + "\"" : "");
    }

private:
    YamlHandle &m_stHandle;
    std::istringstream m_words;
    std::list<string> m_texts;
    YamlListNode *m_pstCurrent = nullptr;
    bool m_bCurrent = false;
    uint32_t m_uiFlag = 1;
    char m_acAnchor[2] = "a", m_acText[100] = "";
    YamlAnchorNode m_stAnchor = {};
    yaml_event_t m_stEvent = {};
};

template <class Result, class... Parameters> string Made(Result (*pfnCall)(Parameters...), Words &stWords)
{
    const std::tuple<Parameters...> arguments{static_cast<Parameters>(stWords)...}; // one after the other
    string result = "done";
    if constexpr (std::is_void_v<Result>)
        std::apply(pfnCall, arguments);
    else
        result = Shown(std::apply(pfnCall, arguments));
    return result + stWords.Changes();
}

using Calls = std::map<string, string (*)(Words &)>;
template <class... Entry> Calls CallsOf(const Entry &...stEntry) // as arguments they stand several on a line
{
    return Calls{stEntry...};
}
#define CALL(name) Calls::value_type(#name, [](Words &stWords) { return Made(yaml_##name, stWords); })
const Calls g_calls = CallsOf(
    CALL(AnchorInsertInMap), CALL(AnchorInsertInMapWithoutMapNode), CALL(AnchorInsertInSequence),
    CALL(AnchorListRealse), CALL(AnchorNodesClone), CALL(AnchorNodesParse), CALL(AnchorObjFind), CALL(AnchorRecord),
    CALL(AnchorRecordEnd), CALL(CurrEventGet), CALL(DumpChildList), CALL(DumpMapList), CALL(DumpScalarNode),
    CALL(EventEndSet), CALL(EventStartSet), CALL(FatherNodeNextLevelTypeSet), CALL(FirstNodeCheck), CALL(ListNodeFree),
    CALL(ListSameScalarCheck), CALL(MapAnchorCopy), CALL(MapEndProcess), CALL(MapNodeAddInSeq), CALL(MapStartProcess),
    CALL(NodeValueGet), CALL(PropertyFind), CALL(PropertyFindInMapList), CALL(PropertyFindInScalarNode),
    CALL(PropertyFindInSeqList), CALL(SameKeyFindInAnchor), CALL(ScalarNodeAdd), CALL(ScalarNodeAddInMap),
    CALL(ScalarNodeAddInSeq), CALL(ScalarNodeAddWithKeyRole), CALL(ScalarNodeCreate), CALL(SeqEndProcess),
    CALL(SeqStartProcess), CALL(Sequence2MapCopy), CALL(SequenceAnchorCopy), CALL(SingleNodeDup),
    CALL(SpacePrintWithNewLine), CALL(StringTailSpaceCount));

string Call(YamlHandle *pstHandle, const string &nameAndWords)
{
    Words stWords(*pstHandle, nameAndWords);
    string name = stWords.Next();
    if (name.starts_with('!')) { // the number of an allocation that is to fail
        Base().ulFailAllocation = std::stoul(name.substr(1));
        name = stWords.Next();
    }
    const auto itCall = g_calls.find(name);
    if (itCall == g_calls.end())
        return "there is no such call\n";
    const string before = TreeText(*pstHandle, true), outcome = itCall->second(stWords) + "\n";
    const string after = TreeText(*pstHandle, true);
    return outcome + (after != before ? Replaced(after, "\"", "") + "\n" : "") + Base().LogText();
}

const std::map<string, void (*)(YamlListNode &, uint32_t)> g_damages = {
    {"foreign", [](YamlListNode &st, uint32_t) { st.uiMagic = 0; }},
    {"marked", [](YamlListNode &st, uint32_t) { st.uiSameWithAnchor = 1; }},
    {"copied", [](YamlListNode &st, uint32_t) { st.uiFromAlias = 1; }},
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
