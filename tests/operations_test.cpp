// SPDX-License-Identifier: Apache-2.0
// The exported operations one by one, on trees that a load makes and on trees that none makes. A row is a document, a
// call, and what comes of it: the result, what was written to, the tree if it has changed, and the log.
#include "node_tree.h"
#include "support/case_file.h"
#include "support/case_operations.h"
#include "support/load_text.h"

#include <gtest/gtest.h>
#include <regex>
#include <yaml.h>

namespace {

using std::string;

class Tree { // a document whose nodes are named, and what a call works on
public:
    explicit Tree(const char *pcDocument) : pstHandle(TextLoad(pcDocument)), m_before(Text()) { Base().Reset(); }
    ~Tree()
    {
        yaml_AnchorListRealse(pstHandle);
        ZRYAML_HandleFree(pstHandle);
    }
    Tree(const Tree &) = delete;
    Tree &operator=(const Tree &) = delete;

    YamlListNode *At(const char *pcPath) { return NodeAt(*pstHandle, pcPath); }
    YamlListNode *New(const char *pcText) { return yaml_ScalarNodeCreate(pstHandle, pcText); }
    YamlListNode *NewMap()
    {
        YamlListNode *pstNew = yaml_ListNodeAlloc(pstHandle);
        pstNew->uiDataType = YAML_DATATYPE_MAP;
        return pstNew;
    }
    // The node that a call takes and moves.
    YamlListNode **Current(YamlListNode *pstNode)
    {
        pstCurrent = pstNode;
        return &pstCurrent;
    }
    Tree &Failing(uint64_t ulAllocation)
    {
        Base().ulFailAllocation = Base().ulAllocations + ulAllocation;
        return *this;
    }
    YamlAnchorNode *Anchor(YamlListNode *pstNode)
    {
        m_stAnchor.pcAnchorName = m_acAnchor;
        m_stAnchor.pstAnchoredNode = pstNode;
        return &m_stAnchor;
    }
    const yaml_event_s *Event()
    {
        m_stEvent.data.sequence_start.anchor = reinterpret_cast<yaml_char_t *>(m_acAnchor);
        return &m_stEvent;
    }

    string Outcome(const string &result)
    {
        string outcome = result;
        if (pstCurrent != nullptr)
            outcome += " at " + Shown(pstCurrent);
        if (uiFlag != 1)
            outcome += " flag " + std::to_string(uiFlag);
        const string after = Text();
        if (after != m_before)
            outcome += " " + after;
        static const std::regex stAddress("0x[0-9a-f]{6,}|\\(nil\\)");
        return outcome + "\n" + std::regex_replace(Base().LogText(), stAddress, "ADDRESS");
    }
    static string Shown(uint32_t uiCode)
    {
        const string name = ZRYAML_CodeNameGet(uiCode);
        return uiCode == YAML_OK ? "0" : name.empty() ? std::to_string(uiCode) : name.substr(strlen("YAML_ERR_"));
    }
    static string Shown(int32_t iNumber) { return std::to_string(iNumber); }
    static string Shown(const string &text) { return text; }
    static string Shown(const char *pcText) { return pcText != nullptr ? pcText : "NULL"; }
    static string Shown(const YamlListNode *pstNode)
    {
        if (pstNode == nullptr)
            return "NULL";
        return pstNode->uiDataType == YAML_DATATYPE_SEQ   ? "[]"
               : pstNode->uiDataType == YAML_DATATYPE_MAP ? "{}"
                                                          : Shown(pstNode->pcValue);
    }

    YamlHandle *pstHandle;
    YamlListNode *pstCurrent = nullptr;
    uint32_t uiFlag = 1; // key/value flag

private:
    string Text() const { return Replaced(TreeText(*pstHandle, true), "\"", ""); }
    string m_before;
    char m_acAnchor[2] = "a";
    YamlAnchorNode m_stAnchor = {};
    yaml_event_t m_stEvent = {};
};

struct Row {
    int iLine;
    const char *pcDocument;
    string (*pfnCall)(Tree &);
    const char *pcOutcome;
};
#define ROW(document, call, outcome)                                                                 \
    {                                                                                                \
        __LINE__, document, []([[maybe_unused]] Tree &t) { return Tree::Shown(call); }, outcome "\n" \
    }
#define DO(statement) ((statement), "done")

constexpr const char *NoFormat = nullptr;

class Operation : public Recorded, public testing::WithParamInterface<Row> {};

#define NOT_IN_ANCHOR(call) \
    "2 1900000f " call      \
    "an not find node in anchor but the current father node has been set as same node with anchor. (Scalar=k)"
#define NO_STACK "2 16 There is an invalid event in the event stack."
#define NO_NODE "2 c Allocate memory for list node failed."
#define NO_COPY "2 c Failed to allocate memory to dup node."
#define NO_VALUE "2 c Failed to allocate memory to copy value."
#define NULL_ARGUMENT "2 16 The parameter is null."
#define ITSELF "2 16 Can not copy a collection into itself."
#define NO_RECORD "2 c Allocate memory for anchor node failed."

YamlListNode *Marked(YamlListNode *pstNode)
{
    pstNode->uiSameWithAnchor = 1;
    return pstNode;
}
YamlListNode *Childless(YamlListNode *pstNode)
{
    zryaml::ListInit(pstNode->stChildList);
    return pstNode;
}
YamlListNode *Typed(YamlListNode *pstNode, uint32_t uiNextLevelType)
{
    pstNode->uiNextLevelType = uiNextLevelType;
    return pstNode;
}

// What a call cuts out of a path: its result, the characters used beyond 1, the index, the path and the name after it.
string Cut(int32_t (*pfnCut)(char *, uint32_t, char *, uint32_t *, uint32_t *), const char *pcPath)
{
    char acPath[64] = {}, acName[6] = {}; // to which a name is cut, and of which the whole is counted
    strcpy(acPath, pcPath);
    uint32_t uiUsed = 1, uiIndex = YAML_INDEX_NONE;
    const int32_t iResult = pfnCut(acPath, sizeof(acName), acName, &uiUsed, &uiIndex);
    return std::to_string(iResult) + " used " + std::to_string(uiUsed - 1) +
           (uiIndex != YAML_INDEX_NONE ? " index " + std::to_string(uiIndex) : "") + " '" + acName + "'";
}
int32_t KeyStringCut(char *pcPath, uint32_t uiSize, char *pcName, uint32_t *puiUsed, uint32_t *puiIndex)
{
    return yaml_KeyStringGet(pcPath, '.', uiSize, pcName, puiUsed, puiIndex);
}

// What a dump writes, with '|' for a new line, into the smallest buffer that it takes, and what was left of that.
template <typename Dump> string Dumped(Dump dump)
{
    for (uint32_t uiSize = 0; uiSize < 64; ++uiSize) {
        string buffer(uiSize + 1, '#');
        Base().Reset();
        const int32_t iWritten = dump(buffer.data(), uiSize);
        if (buffer[uiSize] != '#')
            return "written beyond its buffer";
        if (iWritten >= 0)
            return Replaced(buffer.substr(0, static_cast<size_t>(iWritten)), "\n", "|") + " left " +
                   std::to_string(uiSize - static_cast<uint32_t>(iWritten));
        if (iWritten != -1)
            return "unknown result";
    }
    return "nothing";
}
#define DUMPED(call) Dumped([&](char *pcBuf, uint32_t uiSize) { return call; })

// A lookup by a format whose arguments come in a list.
__attribute__((format(printf, 2, 3))) YamlListNode *FoundByList(YamlHandle *pstHandle, const char *pcFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcFormat);
    uint32_t uiIndexed = 0;
    YamlListNode *pstFound = yaml_NodeGetByKey(pstHandle, &uiIndexed, pcFormat, stArgs);
    va_end(stArgs);
    return pstFound;
}

YamlListNode *FoundInFront(YamlListNode *pstNode, string path)
{
    uint32_t uiRest = static_cast<uint32_t>(path.size()) + 1, uiIndexed = 0;
    return yaml_SeqNodeFindByKey(pstNode, path.data(), &uiRest, &uiIndexed);
}

constexpr const char *Plain = "{s: [i], e: [], k: v, l: {a: b}, m: {}}";
constexpr const char *Merged = "b: &b {k: old}\nm: {o: 1, <<: *b, k: new}";

const Row g_astRow[] = {
    // Without open marks the current node is the collection itself, or stands in it.
    ROW(Plain, yaml_ScalarNodeAddInSeq(t.New("1"), t.At("s[0]")), "0 {s:[i,1],e:[],k:v,l:{a:b},m:{}}"),
    ROW(Plain, yaml_ScalarNodeAddInSeq(t.New("2"), t.At("e/")), "0 {s:[i],e:[2],k:v,l:{a:b},m:{}}"),
    ROW(Plain, yaml_ScalarNodeAddInSeq(t.New("4"), t.New("loose")), "0"),
    ROW(Plain, DO(yaml_MapNodeAddInSeq(t.NewMap(), t.At("s[0]"))), "done {s:[i,{}],e:[],k:v,l:{a:b},m:{}}"),
    ROW(Plain, yaml_ScalarNodeAddWithKeyRole(t.New("x"), t.At("l.a/")), "0 {s:[i],e:[],k:v,l:{a:b,x:},m:{}}"),
    ROW(Plain, yaml_ScalarNodeAddWithKeyRole(t.New("x"), t.At("l.a")), "0 {s:[i],e:[],k:v,l:{a:b,x:},m:{}}"),
    ROW(Plain, yaml_ScalarNodeAddWithKeyRole(t.New("x"), t.At("m/")), "0 {s:[i],e:[],k:v,l:{a:b},m:{x:}}"),
    ROW(Plain, yaml_ScalarNodeAddWithKeyRole(t.New("p"), t.New("loose")), "PARSE\n2 1900000f The father node is NULL."),
    ROW(Plain, DO(yaml_MapEndProcess(t.pstHandle, t.Current(t.New("loose")))), "done at loose"),
    ROW(Plain, yaml_SeqEndProcess(t.pstHandle, t.Current(t.New("loose")), &t.uiFlag), "0 at loose flag 0"),
    ROW(Plain, yaml_AnchorInsertInSequence(t.pstHandle, t.Current(t.New("loose")), t.At("s[0]"), 0),
        "PARAM at loose\n" NO_STACK),
    ROW(Plain, yaml_ScalarNodeAdd(t.pstHandle, t.New("s"), t.Current(t.At("")), &t.uiFlag),
        "EVENT at s\n2 1900000b Unknown last event when add scalar data. (Event=0)"),
    // The first child fixes the type below its father.
    ROW(Plain, yaml_FirstNodeCheck(t.At("s")), "1"),
    ROW(Plain, yaml_FirstNodeCheck(t.At("e")), "0"),
    ROW(Plain, DO(yaml_FatherNodeNextLevelTypeSet(t.At("k/"), 0)), "done"),
    ROW(Plain, DO(yaml_FatherNodeNextLevelTypeSet(t.New("loose"), 1)), "done"),
    ROW(Plain, (yaml_EventStartSet(t.pstHandle, 9), yaml_EventStartSet(t.pstHandle, 7), yaml_CurrEventGet(t.pstHandle)),
        "7"),
    ROW(Plain, (yaml_EventEndSet(t.pstHandle), yaml_CurrEventGet(t.pstHandle)), "0"),
    // A node that goes leaves its children behind; elements are numbered anew, also where some come in between.
    ROW("{m: {a: 1, b: 2, c: 3}}", DO(yaml_ListNodeFree(t.At("m.b"))), "done {m:{a:1,c:3}}"),
    ROW("{m: {a: 1, b: 2, c: 3}}", DO(yaml_ListNodeFree(t.At("m/"))), "done {m:}"),
    ROW("{a: [x, y, z]}", (yaml_ListNodeFree(t.At("a[0]")), t.At("a[1]")), "z {a:[y,z]}"),
    ROW("{a: [y, z], b: [p, q]}",
        (yaml_SequenceAnchorCopy(t.pstHandle, t.At("a[0]"), t.At("b/"), 0),
         std::to_string(t.At("a[3]")->uPlace.uiNumber).c_str()),
        "3 {a:[y,p*,q*,z],b:[p,q]}"),
    // The same text by mode: 0 the file's own, 1 copies, others all. The list ends at what is no node.
    ROW("b: &b {z: 1, a: 2}\nm: {<<: *b}", yaml_ListSameScalarCheck(&t.At("b/")->stChildList, 0, t.New("a")), "SAME"),
    ROW("b: &b {z: 1, a: 2}\nm: {<<: *b}", yaml_ListSameScalarCheck(&t.At("b/")->stChildList, 1, t.New("a")), "0"),
    ROW("b: &b {z: 1, a: 2}\nm: {<<: *b}", yaml_ListSameScalarCheck(&t.At("m/")->stChildList, 0, t.New("a")), "0"),
    ROW("b: &b {z: 1, a: 2}\nm: {<<: *b}", yaml_ListSameScalarCheck(&t.At("m/")->stChildList, 77, t.New("a")), "SAME"),
    ROW("b: &b {z: 1, a: 2}\nm: {<<: *b}", yaml_ListSameScalarCheck(&t.At("b/")->stChildList, 2, t.New("A")), "0"),
    ROW("b: {z: 1, a: 2}",
        (t.At("b//")->uiMagic = 0, yaml_ListSameScalarCheck(&t.At("b/")->stChildList, 2, t.New("a"))), "0"),
    // Copies of what is not whole, and a key marked as one that repeats a merged key which is not there.
    ROW("{n: {a: b}, e: []}", yaml_Sequence2MapCopy(t.pstHandle, t.Current(t.At("n.a")), t.At("e/"), 0), "0 at a"),
    ROW("{s: {k: v}, m: {}}",
        (Childless(t.At("s.k")), yaml_MapAnchorCopy(t.pstHandle, t.Current(t.At("m/")), t.At("s/"), 1)),
        "PARSE at {} {s:{k:},m:{k*:}}\n2 1900000f Can not merge a single scalar in sequence anchor to map. (Scalar=k)"),
    ROW("{k: v, m: {}}", yaml_ScalarNodeAddInMap(t.New("x"), Marked(t.At("k")), &t.uiFlag),
        "PARSE flag 0 {k!v,m:{}}\n" NOT_IN_ANCHOR("C")),
    ROW("{k: v, m: {}}", yaml_SeqStartProcess(t.Event(), 8, t.Current(Marked(t.At("k"))), t.pstHandle),
        "PARSE at k {k!v,m:{}}\n" NOT_IN_ANCHOR("Failed to process sequence start event: c")),
    ROW("{k: v, m: {}}", yaml_MapStartProcess(t.Event(), 8, t.Current(Marked(t.At("k"))), t.pstHandle),
        "PARSE at k {k!v,m:{}}\n" NOT_IN_ANCHOR("Failed to process map start event: c")),
    ROW("{k: v, m: {}}", yaml_AnchorInsertInMap(t.pstHandle, t.Current(Marked(t.At("k"))), t.New("x"), 1),
        "PARSE at k {k!v,m:{}}\n" NOT_IN_ANCHOR("C")),
    ROW("{k: v, m: {}}", yaml_AnchorNodesParse(t.pstHandle, t.Current(t.At("m/")), t.Anchor(t.New("x")), &t.uiFlag),
        "PARAM at {}\n" NO_STACK),
    ROW("{k: v}", yaml_AnchorNodesClone(t.pstHandle, t.New("x"), Typed(t.At("k"), 3)),
        "PARAM\n2 16 There is a unknown data type when copy anchor node. (DataType=3)"),
    // A collection is not copied into itself.
    ROW("{q: [a, [b]]}", yaml_SequenceAnchorCopy(t.pstHandle, t.At("q/"), t.At("q/"), 1), "PARAM\n" ITSELF),
    ROW("{q: [a, [b]]}", yaml_AnchorInsertInSequence(t.pstHandle, t.Current(t.At("q[1]")), t.At("q/"), 1),
        "PARAM at []\n" ITSELF),
    ROW("{m: {k: {}}}", yaml_DirectAnchorInsertInMap(t.pstHandle, t.Current(t.At("m.k")), t.At("")),
        "PARAM at k\n" ITSELF),
    ROW("{m: {k: {}}}", yaml_MapAnchorCopy(t.pstHandle, t.Current(t.At("m/")), t.At("m/"), 1), "PARAM at {}\n" ITSELF),
    ROW("{m: {k: {}}}", yaml_AnchorNodesClone(t.pstHandle, t.At("m.k"), t.At("m")), "PARAM\n" ITSELF),
    // Memory that runs out in a step.
    ROW(Plain, t.Failing(1).New("x"), "NULL\n" NO_NODE),
    ROW(Plain, t.Failing(2).New("x"), "NULL\n" NO_VALUE),
    ROW(Plain, yaml_ScalarProcess(t.Failing(1).Event(), t.Current(t.At("k")), t.pstHandle, &t.uiFlag, 6),
        "NOMEM at k\n" NO_NODE "\n2 c Failed to allocate memory for scalar node."),
    ROW(Plain, yaml_MapStartProcess(t.Failing(1).Event(), 8, t.Current(t.At("k")), t.pstHandle),
        "NOMEM at k\n" NO_NODE "\n2 c Failed to allocate node for map node."),
    ROW(Plain, yaml_SeqStartProcess(t.Failing(1).Event(), 8, t.Current(t.At("k")), t.pstHandle),
        "NOMEM at k\n" NO_NODE),
    ROW(Plain, yaml_DirectAnchorInsertInMap(t.Failing(1).pstHandle, t.Current(t.At("k")), t.At("l/")),
        "NOMEM at k\n" NO_NODE "\n" NO_COPY),
    ROW(Plain, yaml_DirectAnchorInsertInMap(t.Failing(2).pstHandle, t.Current(t.At("k")), t.At("s[0]")),
        "NOMEM at k\n" NO_VALUE "\n2 c Failed to allocate memory for dup scalar node."),
    ROW(Plain, yaml_AnchorRecord(t.Failing(1).pstHandle, "x", t.At("m"), 2), "NOMEM\n" NO_RECORD),
    ROW(Plain, yaml_AnchorRecord(t.Failing(2).pstHandle, "x", t.At("m"), 2), "NOMEM\n" NO_VALUE),
    ROW(Plain, yaml_AnchorRecord(t.Failing(3).pstHandle, "x", t.At("m"), 2), "NOMEM\n" NO_RECORD),
    // A merged key is found although no link leads to it; an anchor on its new value is not kept.
    ROW(Merged, (t.At("m.k>")->uPrivate.pstSameKey = nullptr, yaml_SameKeyFindInAnchor(t.At("m.k>"))), "k"),
    ROW(Merged, yaml_SeqStartProcess(t.Event(), 8, t.Current(t.At("m.k>")), t.pstHandle),
        "0 at [] {b:{k:old},m:{o:1,k*:[],k!}}"),
    // Anchors: one on a collection is found when that has ended, the last finished first.
    ROW(Plain,
        (yaml_AnchorRecord(t.pstHandle, "x", t.At("m/"), 1), yaml_AnchorRecord(t.pstHandle, "x", t.At("k"), 2),
         yaml_AnchorObjFind(t.pstHandle, "x")->pstAnchoredNode),
        "k"),
    ROW(Plain,
        (yaml_AnchorRecord(t.pstHandle, "x", t.At("m/"), 1), yaml_AnchorRecord(t.pstHandle, "x", t.At("k"), 2),
         yaml_AnchorRecordEnd(t.pstHandle, t.At("m/")), yaml_AnchorObjFind(t.pstHandle, "x")->pstAnchoredNode),
        "{}"),
    ROW(Plain, yaml_AnchorRecord(t.pstHandle, nullptr, t.At("m"), 2), "0"),
    // An alias as an element, as a key, as the value of a key, and behind "<<".
    ROW("{n: {k: v}, s: [i]}",
        (yaml_EventStartSet(t.pstHandle, 7),
         yaml_AnchorNodesParse(t.pstHandle, t.Current(t.At("s/")), t.Anchor(t.At("n/")), &t.uiFlag)),
        "0 at {} {n:{k:v},s:[i,{k*:v*}*]}"),
    ROW("{n: {k: v}, s: [i]}",
        (yaml_EventStartSet(t.pstHandle, 9),
         yaml_AnchorNodesParse(t.pstHandle, t.Current(t.New("x")), t.Anchor(t.At("s")), &t.uiFlag)),
        "EVENT at x\n2 1900000b It does not support an alias as a map key. (Alias=a)"),
    ROW("{n: {k: v}, <<: x}", yaml_AnchorInsertInMapWithoutMapNode(t.pstHandle, t.Current(t.At("<<")), t.At("n/"), 0),
        "0 at v {n:{k:v},k*:v*}"),
    // Steps of a lookup.
    ROW("{x: 1, l: [p, q], s: v}", yaml_PropertyFind(t.At(""), "s", YAML_INDEX_NONE), "s"),
    ROW("{x: 1, l: [p, q], s: v}", yaml_PropertyFindInMapList(&t.At("")->stChildList, "l", 1), "q"),
    ROW("{x: 1, l: [p, q], s: v}", yaml_PropertyFindInSeqList(t.At("l/"), 1), "q"),
    ROW("{x: 1, l: [p, q], s: v}", yaml_PropertyFindInScalarNode(t.At("s"), "v", YAML_INDEX_NONE), "v"),
    ROW("{x: 1, l: [p, q], s: v}", yaml_PropertyFindInScalarNode(t.At("s"), "w", YAML_INDEX_NONE), "NULL"),
    ROW("{x: 1, l: [p, q], s: v}", yaml_NodeValueGet(t.At("s"), 0), "v"),
    ROW("{x: 1}", yaml_NodeValueGet(t.New("x"), 0), "NULL\n2 19000004 There is not any data in the child list."),
    ROW("{}", yaml_IndexGet("2147483648", &t.uiFlag), "PARAM"),
    ROW("{}", yaml_IndexGet("2147483647", &t.uiFlag), "0 flag 2147483647"),
    ROW("{}", Cut(yaml_KeyParse, "[12][3]"), "3 used 4 index 12 ''"),
    ROW("{}", Cut(yaml_KeyParse, "{k.d}.x"), "3 used 6 'k.d'"),
    ROW("{}", Cut(yaml_KeyParse, "{n[0].z}"), "1 used 6 index 0 'n'"),
    ROW("{}", Cut(yaml_KeyParseForSeq, "007]"), "4 used 5 index 7 ''"),
    ROW("{}", Cut(KeyStringCut, "ab[3][4]"), "2 used 5 index 3 'ab'"),
    ROW("{}", Cut(KeyStringCut, "a]z.c"), "-1 used 0 'a'\n2 19000002 The format of key is wrong. (Key=a]z)"),
    ROW("{}", Cut(yaml_MetaChrProcess, "\\{\\}\\x"), "4 used 7 '{}\\x'"),
    ROW("{}", Cut(yaml_MetaChrProcess, "abc\\.def"), "5 used 9 'abc.d'"),
    // What each dump writes, and that it stays within its buffer.
    ROW("{a: {b: c, d: [e, {f: g}]}}", DUMPED(yaml_DumpMapList(t.At("a/"), 1, 2, uiSize, pcBuf)),
        "|  { b: c, |    d: |      [ e, |        { f: g } ] },  left 1"),
    ROW("{a: {b: c, d: [e, {f: g}]}}", DUMPED(yaml_DumpMapList(t.At("a/"), 0, 2, uiSize, pcBuf)),
        "{ b: c, |    d: |      [ e, |        { f: g } ] },  left 1"),
    ROW("{a: {b: c, d: e}}", DUMPED(yaml_MapListDumpProcess(t.At("a/"), 2, uiSize, pcBuf)), "b: c, d: e,  left 1"),
    ROW("{a: {b: c}}", DUMPED(yaml_DumpScalarNode(t.At("a"), 2, uiSize, pcBuf)), "a: |      { b: c },  left 1"),
    ROW("{a: {b: c}}", DUMPED(yaml_DumpChildList(t.At("a"), 2, uiSize, pcBuf)), "|      { b: c },  left 1"),
    ROW("{a: [b, c]}", DUMPED(yaml_DumpSeqList(t.At("a/"), 2, uiSize, pcBuf)), "|  [ b, c ],  left 1"),
    ROW("{a: []}", DUMPED(yaml_DumpSeqList(t.At("a/"), 2, uiSize, pcBuf)),
        "nothing\n2 19000004 The sequence list is empty."),
    ROW("{a: [b, c]}", DUMPED(yaml_SequenceListDump(t.At("a/"), 2, uiSize, pcBuf)), "b, c,  left 1"),
    ROW("{a: [b, c]}", DUMPED(yaml_SeqNodeDump(t.At("a[1]"), 2, 0, uiSize, pcBuf, YAML_DATATYPE_SCALAR)), "c,  left 1"),
    ROW("{a: [b, c]}", DUMPED(yaml_ScalarDumpInSeq(t.At("a[1]"), YAML_DATATYPE_MAP, 2, uiSize, pcBuf)),
        "|  c,  left 1"),
    ROW("{}", DUMPED(yaml_SpacePrintWithNewLine(pcBuf, uiSize, 3)), "|    left 1"),
    // Lookups from a node, by a path that says how long it is.
    ROW("{a: {b: [c, d]}}", FoundByList(t.pstHandle, "a.b[%u]", 1U), "d"),
    ROW("{a: {b: [c, d]}}", yaml_NodeFind(t.pstHandle, string("a.b").data(), 4, &t.uiFlag), "b flag 0"),
    ROW("{a: {b: [c, d]}}", yaml_NodeFindByKey(t.At("a/"), string("b[1]").data(), 5, &t.uiFlag), "d"),
    ROW("[[c, d], e]", FoundInFront(t.At(""), "0][1]"), "d"),
    ROW("{}", yaml_IsDigitalString("12a", 2), "1"),
    ROW("{}", yaml_IsDigitalString("12a", 3),
        "0\n2 19000009 The index contains any not digital character. (Index=12a)"),
    ROW("{}", std::to_string(yaml_ArrayIndexGet(string("ab[12]").data(), &t.uiFlag, &t.uiFlag)), "0 flag 16"),
    // Public calls with arguments that are null or nothing: an error, or the answer that nothing has.
    ROW("{}", ZRYAML_FileLoad(nullptr) == nullptr ? 0U : 1U, "0\n" NULL_ARGUMENT),
    ROW("{}", ZRYAML_TextLoad(nullptr, 1, "x") == nullptr ? 0U : 1U, "0\n" NULL_ARGUMENT),
    ROW("{}", ZRYAML_PropertyGet(nullptr, "a"), "NULL"),
    ROW("{}", ZRYAML_PropertyGet(t.pstHandle, NoFormat), "NULL"),
    ROW("{}", ZRYAML_ArraySizeGet(nullptr, "a"),
        "0\n2 16 The input parameter is invalid. (Handle=ADDRESS, Key=ADDRESS)"),
    ROW("{}", ZRYAML_PathFind(nullptr, "a"), "NULL\n" NULL_ARGUMENT),
    ROW("{}", ZRYAML_PathFind(t.pstHandle, nullptr), "NULL\n" NULL_ARGUMENT),
    ROW("{a: 1}", ZRYAML_PositionGet(t.pstHandle, nullptr, &t.uiFlag, "a"), "PARAM\n" NULL_ARGUMENT),
    ROW("{a: 1}", ZRYAML_PositionGet(t.pstHandle, &t.uiFlag, nullptr, "a"), "PARAM\n" NULL_ARGUMENT),
    ROW("{a: {}}", yaml_IteratorCreate(nullptr, "a") == nullptr ? 0U : 1U,
        "0\n2 16 The parameter is invalid to get iterator."),
    ROW("{a: {}}", yaml_IteratorCreate(t.Failing(1).pstHandle, "a") == nullptr ? 0U : 1U,
        "0\n2 c Failed to alloc memory for create iterator. (Size=24)"),
    ROW("{}", yaml_NextKeyValueGet(nullptr, nullptr),
        "PARAM\n2 16 The input parameter is invalid to get key and value."),
    ROW("{}", ZRYAML_ContextDump(t.pstHandle, 5, nullptr),
        "PARAM\n2 16 The parameter is invalid to dump YAML context."),
    ROW("{}", ZRYAML_ContextDump(t.pstHandle, 0, string("kept").data()),
        "PARAM\n2 16 The parameter is invalid to dump YAML context."),
    ROW("{}", ZRYAML_UnreadKeyNext(t.pstHandle, nullptr), "PARAM\n" NULL_ARGUMENT),
    ROW("{}", ZRYAML_LimitsSet(nullptr), "PARAM\n2 16 The limits are invalid."),
    ROW("{}", ZRYAML_DebugInfoGet(t.pstHandle, nullptr),
        "PARAM\n2 16 The parameter is invalid to get debug information."),
    ROW("{}", ZRYAML_RootGet(nullptr), "NULL"),
    ROW("{}", ZRYAML_ValueTextGet(nullptr), "NULL"),
    ROW("{a: 1}", ZRYAML_ChildFind(nullptr, "a", 1), "NULL"),
    ROW("{a: 1}", ZRYAML_ChildFind(t.At(""), nullptr, 0), "NULL"),
    ROW("{}", ZRYAML_NameGet(nullptr), ""),
    ROW("{}", ZRYAML_ChildCountGet(nullptr), "0"),
    ROW("{a: 1}", ZRYAML_ChildNextGet(t.At(""), nullptr), "PARAM"),
    ROW("{a: 1}", ZRYAML_ChildGet(t.At(""), 0, nullptr), "PARAM"),
};

TEST_P(Operation, DoesWhatItSays)
{
    const Row &stRow = GetParam();
    Tree stTree(stRow.pcDocument);
    const string result = stRow.pfnCall(stTree);
    Base().ulFailAllocation = 0;
    EXPECT_EQ(stTree.Outcome(result), stRow.pcOutcome) << "operations_test.cpp:" << stRow.iLine;
}

INSTANTIATE_TEST_SUITE_P(Row, Operation, testing::ValuesIn(g_astRow),
                         [](const auto &stInfo) { return "line" + std::to_string(stInfo.param.iLine); });

} // namespace
