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
    explicit operator YamlListNode *() { return NodeOf(m_stHandle, Next()); }
    explicit operator const YamlList *() { return &NodeOf(m_stHandle, Next())->stChildList; }
    explicit operator YamlAnchorNode *()
    {
        m_stAnchor.pstAnchoredNode = NodeOf(m_stHandle, Next());
        return &m_stAnchor;
    }
    explicit operator const yaml_event_s *() { return &m_stEvent; }
    explicit operator uint32_t() { return static_cast<uint32_t>(std::stoul(Next())); }
    explicit operator char() { return Next()[0]; }
    explicit operator const char *()
    {
        const string word = Next();
        return word != "-" ? m_given.emplace_back(word).c_str() : nullptr;
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

template <class Result, class... Parameters> string Made(Result (*pfnCall)(Parameters...), Words &stWords)
{
    const std::tuple<Parameters...> arguments{static_cast<Parameters>(stWords)...}; // one after the other
    string result = "done";
    if constexpr (std::is_void_v<Result>)
        std::apply(pfnCall, arguments);
    else
        result = Shown(std::apply(pfnCall, arguments));
    return result + stWords.Written();
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
    CALL(AnchorRecordEnd), CALL(ArrayIndexGet), CALL(CurrEventGet), CALL(DirectAnchorInsertInMap), CALL(DumpChildList),
    CALL(DumpMapList), CALL(DumpScalarNode), CALL(DumpValue), CALL(EventEndSet), CALL(EventStartSet),
    CALL(FatherNodeNextLevelTypeSet), CALL(FirstNodeCheck), CALL(IndexGet), CALL(KeyParse), CALL(KeyParseForSeq),
    CALL(KeyStringGet), CALL(ListNodeFree), CALL(ListSameScalarCheck), CALL(MapAnchorCopy), CALL(MapEndProcess),
    CALL(MapNodeAddInSeq), CALL(MapStartProcess), CALL(MetaChrProcess), CALL(NodeValueGet), CALL(PropertyFind),
    CALL(PropertyFindInMapList), CALL(PropertyFindInScalarNode), CALL(PropertyFindInSeqList), CALL(SameKeyFindInAnchor),
    CALL(ScalarNodeAdd), CALL(ScalarNodeAddInMap), CALL(ScalarNodeAddInSeq), CALL(ScalarNodeAddWithKeyRole),
    CALL(ScalarNodeCreate), CALL(ScalarProcess), CALL(SeqEndProcess), CALL(SeqStartProcess), CALL(Sequence2MapCopy),
    CALL(SequenceAnchorCopy), CALL(SpacePrintWithNewLine), CALL(StringTailSpaceCount));

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
