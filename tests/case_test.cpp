// SPDX-License-Identifier: Apache-2.0
// Runs the files of cases/; cases/README.md describes their form and the operations.
#include "node_tree.h"
#include "support/case_file.h"
#include "support/load_text.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

using std::string;
using std::to_string;

constexpr const char *Kinds[] = {"list", "map", "scalar", "nothing"};

string Place(uint32_t uiLine, uint32_t uiColumn)
{
    return to_string(uiLine) + ":" + to_string(uiColumn);
}

// The log, and what the error record says otherwise than the first record of the log.
string LogAndError(const string &path, const string &file)
{
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    const auto itCause = std::ranges::find_if(Base().log, [](const LogRecord &st) { return st.uiLevel > 0; });
    const LogRecord stCause = itCause != Base().log.end() ? *itCause : LogRecord{};
    const auto Says = [&stCause](const char *pcText, const string &text) {
        return string(pcText).substr(0, 1020) == (stCause.uiCode != 0 ? text.substr(0, 1020) : "");
    };
    const bool bSame = stError.uiCode == stCause.uiCode && Says(stError.pcMessage, stCause.text) &&
                       Says(stError.pcKeyPath, path) && Says(stError.pcFile, file);
    return Base().LogText() + (bSame ? "" : string("error: ") + stError.pcMessage + ", " + stError.pcKeyPath + "\n");
}

// The outcome of a public read.
string ReadOutcome(const string &result, const string &path, const string &file = "doc")
{
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    return result + LogAndError(path, file) +
           (stError.uiLine != 0 ? "at " + Place(stError.uiLine, stError.uiColumn) + "\n" : "");
}

YamlHandle *TextLoad(const string &text)
{
    return ZRYAML_TextLoad(text.data(), text.size(), "doc");
}

using Writer = string (*)(const YamlHandle &);

string Tree(const YamlHandle &stHandle)
{
    const string text = Replaced(TreeText(stHandle, true), "\"", "");
    return text.empty() ? "empty" : Printable(text);
}

// What the debug switch has counted for nodes and texts.
string Count(const YamlHandle &stHandle)
{
    const size_t ulBytes = stHandle.uiMemSize - sizeof(YamlHandle), ulNode = sizeof(YamlListNode);
    return to_string(ulBytes / ulNode) + " nodes " + to_string(ulBytes % ulNode) + " bytes";
}

// Of a text, or of a file by its path.
string LoadOutcome(const string &source, bool bFile, Writer pfnWrite)
{
    bool bLoaded = false;
    Base().bKeepNotes = pfnWrite == Tree; // the others are about something else
    string text = LoadRead([&] { return bFile ? ZRYAML_FileLoad(source.c_str()) : TextLoad(source); },
                           [&](const YamlHandle &st) { return (bLoaded = true) ? pfnWrite(st) + "\n" : ""; });
    text.resize(text.size() - Base().LogText().size());
    text += LogAndError("", bFile ? source : "doc");
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    if (bLoaded)
        return text;
    if (text.ends_with(PARSE_FAILED))
        text.resize(text.size() - strlen(PARSE_FAILED));
    text += "at " + Place(stError.uiLine, stError.uiColumn);
    if (stError.uiFirstLine != 0)
        text += " as " + Place(stError.uiFirstLine, stError.uiFirstColumn);
    return text + (*stError.pcHint != '\0' ? ": " + Printable(stError.pcHint) : "") + "\n";
}

string Ok(const YamlHandle &)
{
    return "ok";
}

template <Writer pfnWrite> string Load(YamlHandle *, const string &text)
{
    const string outcome = LoadOutcome(text, false, pfnWrite);
    const string asFile = LoadOutcome(TempFile(text).Path(), true, pfnWrite);
    return outcome + (asFile != outcome ? "but as a file " + asFile : "");
}

string Loads16(YamlHandle *, const string &text)
{
    string little = "\xFF\xFE", big = "\xFE\xFF";
    for (const char cChar : text) {
        little += {cChar, '\0'};
        big += {'\0', cChar};
    }
    const string outcome = Load<Ok>(nullptr, little), other = Load<Ok>(nullptr, big);
    return outcome + (other != outcome ? "but as big endian " + other : "");
}

uint64_t g_ulFailed = 0; // allocations, by all cases

string StarveOnce(const string &text)
{
    Base().Reset();
    const string outcome = LoadOutcome(text, false, Tree);
    const uint64_t ulAllocations = Base().ulAllocations;
    for (uint64_t ul = 1; ul <= ulAllocations; ++ul) {
        Base().Reset();
        Base().ulFailAllocation = ul;
        testing::Test::RecordProperty("allocations_failed", to_string(++g_ulFailed));
        const string failed = LoadOutcome(text, false, Tree), log = Base().LogText();
        const char *pcEnd = ul == 1 ? "2 c Failed to allocate memory for handle.\n" : PARSE_FAILED;
        const bool bLeft = failed.find("left") != failed.npos, bLoaded = failed.find("\nat ") == failed.npos;
        if (bLeft || bLoaded || log.find("2 c ") == log.npos || !log.ends_with(pcEnd))
            return "allocation " + to_string(ul) + ": " + failed + log;
        Base().Reset();
        if (LoadOutcome(text, false, Tree) != outcome || Base().ulAllocations != ulAllocations)
            return "afterwards: " + Base().LogText();
    }
    return ulAllocations > 0 ? "clean\n" : "no allocation\n";
}

// Whether nodes share blocks, so that only some of them begin with an allocation.
bool BlocksAreShared()
{
    Base().Reset();
    ZRYAML_HandleFree(ZRYAML_TextLoad("[a, a, a]", 9, nullptr));
    return Base().ulAllocations <= 2;
}

// The document with more in front, so that other nodes and texts of it come to begin a block.
string Padded(const string &text, size_t ulBytes)
{
    string padded;
    for (int i = 0; ulBytes > 0; ++i) {
        const size_t ulHere = std::min<size_t>(ulBytes, 240);
        padded += (text.starts_with("- ") ? "- " : "pad" + to_string(i) + ": ") + string(ulHere, 'p') + "\n";
        ulBytes -= ulHere;
    }
    return padded + text;
}

string Starve(YamlHandle *, const string &text)
{
    string outcome = StarveOnce(text);
    const bool bBlock = text.find(": ") < text.find('\n') || text.starts_with("- ");
    const size_t ulMost = bBlock && text[0] != '[' && BlocksAreShared() ? 1024 : 0;
    for (size_t ulBytes = 40; ulBytes <= ulMost && outcome == "clean\n"; ulBytes += 40)
        outcome = StarveOnce(Padded(text, ulBytes));
    return outcome;
}

YamlListNode *NodeFind(YamlHandle *pstHandle, string path, uint32_t *puiIndexed)
{
    return yaml_NodeFind(pstHandle, path.data(), static_cast<uint32_t>(path.size() + 1), puiIndexed);
}

string Find(YamlHandle *pstHandle, const string &path)
{
    uint32_t uiIndexed = 7;
    const YamlListNode *pstNode = NodeFind(pstHandle, path, &uiIndexed);
    string outcome = uiIndexed == 7 ? "kept\n" : "";
    if (pstNode != nullptr) {
        const bool bSeq = pstNode->uiDataType == YAML_DATATYPE_SEQ;
        const string text = pstNode->pcValue != nullptr ? Printable(pstNode->pcValue) : bSeq ? "[]" : "{}";
        outcome += (uiIndexed != 0 ? "#" : "=") + text + "\n";
    }
    return outcome + Base().LogText();
}

string TextLine(const char *pcText)
{
    return pcText != nullptr ? "=" + Printable(pcText) + "\n" : "";
}

string Format(YamlHandle *pstHandle, const string &path)
{
    char *(*const pfnGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet; // the format is not checked here
    return ReadOutcome(TextLine(pfnGet(pstHandle, path.c_str())), Replaced(path, "%%", "%"));
}

string Get(YamlHandle *pstHandle, const string &path)
{
    string outcomes[3];
    const char *pcFirst = nullptr;
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        Base().Reset();
        ZRYAML_DebugSwitchSet(uiSwitch);
        const uint32_t uiBefore = pstHandle->uiQueryCount;
        const char *pcText = ZRYAML_PropertyGet(pstHandle, "%s", path.c_str());
        pcFirst = uiSwitch == 0 ? pcText : pcFirst;
        outcomes[uiSwitch] = ReadOutcome(TextLine(pcText), path) + (pcText != pcFirst ? "another pointer\n" : "");
        if (pstHandle->uiQueryCount - uiBefore != (uiSwitch == 0 ? 0 : 1))
            outcomes[uiSwitch] += "not counted\n";
    }
    ZRYAML_DebugSwitchSet(0);
    const bool bSame = outcomes[1] == outcomes[2] && outcomes[1].starts_with(outcomes[0]);
    return outcomes[1] + (bSame ? "" : "differs with the switch: " + outcomes[0] + outcomes[2]);
}

string Size(YamlHandle *pstHandle, const string &path)
{
    const uint32_t uiBefore = pstHandle->uiQueryCount;
    const uint32_t uiSize = ZRYAML_ArraySizeGet(pstHandle, "%s", path.c_str());
    const string size = uiSize != 0 || Base().log.empty() ? to_string(uiSize) + "\n" : "";
    return ReadOutcome(size, path) + (pstHandle->uiQueryCount != uiBefore ? "counted\n" : "");
}

string Value(YamlHandle *pstHandle, const string &path)
{
    uint32_t auiPlace[] = {0, 0}, auiSame[] = {0, 0};
    const YamlListNode *pstValue = ZRYAML_PathFind(pstHandle, path.c_str());
    const string log = ReadOutcome("", path);
    const uint32_t uiCode = ZRYAML_LastErrorGet()->uiCode, uiType = ZRYAML_TypeGet(pstHandle, "%s", path.c_str());
    ZRYAML_ValuePositionGet(pstValue, &auiSame[0], &auiSame[1]);
    if (ZRYAML_PositionGet(pstHandle, &auiPlace[0], &auiPlace[1], "%s", path.c_str()) != uiCode ||
        !std::ranges::equal(auiPlace, auiSame) || uiType != ZRYAML_ValueTypeGet(pstValue) ||
        ZRYAML_ValueFind(pstHandle, "%s", path.c_str()) != pstValue ||
        ZRYAML_DocumentGet(pstValue) != (pstValue != nullptr ? pstHandle : nullptr))
        return "the calls differ\n";
    return (pstValue != nullptr ? Kinds[uiType] + (" " + Place(auiPlace[0], auiPlace[1])) + "\n" : "") + log;
}

// Steps to the end and beyond, which changes nothing.
string Iterate(YamlHandle *pstHandle, const string &path)
{
    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "%s", path.c_str());
    if (pstIter == nullptr)
        return ReadOutcome("", path);
    string outcome = Kinds[pstIter->uiIterType];
    YamlKeyValue stPair = {};
    while (yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK && outcome.size() < 1000)
        outcome += string(" ") + stPair.pcKey + "=" + stPair.pcValue;
    const auto [stEnd, stKept] = std::pair(*pstIter, stPair);
    if (yaml_NextKeyValueGet(pstIter, &stPair) != YAML_ERR_ITER_END ||
        memcmp(pstIter, &stEnd, sizeof(stEnd)) + memcmp(&stPair, &stKept, sizeof(stPair)) != 0)
        outcome += " changed";
    yaml_IteratorDestroy(pstIter);
    return ReadOutcome(outcome + "\n", path);
}

// Every way to a child must lead to the same one.
string WalkFrom(const YamlListNode *pstValue)
{
    uint32_t uiLine = 0, uiColumn = 0, uiSeen = 0;
    char acPath[64];
    ZRYAML_ValuePositionGet(pstValue, &uiLine, &uiColumn);
    const bool bLength = ZRYAML_ValuePathGet(pstValue, sizeof(acPath), acPath) == strlen(acPath);
    string text = Place(uiLine, uiColumn) + " " + (bLength ? acPath : "wrong length") + " " +
                  Kinds[ZRYAML_ValueTypeGet(pstValue)] + TextLine(ZRYAML_ValueTextGet(pstValue));
    text += text.ends_with('\n') ? "" : "\n";
    YamlChild stChild = {}, stSame = {};
    for (; ZRYAML_ChildNextGet(pstValue, &stChild) == YAML_OK; ++uiSeen) {
        const string key = stChild.pcKey != nullptr ? stChild.pcKey : "";
        const YamlListNode *pstByKey = ZRYAML_ChildFind(pstValue, key.data(), key.size());
        if (ZRYAML_ChildGet(pstValue, uiSeen, &stSame) != YAML_OK || stSame.pstValue != stChild.pstValue ||
            stChild.uiIndex != uiSeen || stChild.uiType != ZRYAML_ValueTypeGet(stChild.pstValue) ||
            pstByKey != (stChild.pcKey != nullptr ? stChild.pstValue : nullptr))
            text += "wrong child " + key + "\n";
        text += WalkFrom(stChild.pstValue);
    }
    const bool bEnd = ZRYAML_ChildGet(pstValue, uiSeen, &stSame) == YAML_ERR_ITER_END;
    return text + (bEnd && ZRYAML_ChildCountGet(pstValue) == uiSeen ? "" : "wrong count\n");
}

string Unread(YamlHandle *pstHandle, const string &)
{
    string text = "unread";
    YamlUnreadKey stKey = {};
    while (ZRYAML_UnreadKeyNext(pstHandle, &stKey) == YAML_OK)
        text += string(" ") + stKey.acPath + "@" + to_string(stKey.uiLine) + (stKey.uiFromAlias != 0 ? "*" : "");
    return ReadOutcome(text + "\n", "", "");
}

// Dumps into a buffer between canaries.
string DumpAt(YamlHandle *pstHandle, size_t ulSize, uint32_t &uiResult)
{
    const string margin(64, '\x7E');
    string room = margin + string(ulSize, '\x7E') + margin;
    Base().Reset();
    uiResult = ZRYAML_ContextDump(pstHandle, static_cast<uint32_t>(ulSize), room.data() + margin.size());
    const bool bWithin = room.starts_with(margin) && room.ends_with(margin) && room.find('\0') < ulSize + margin.size();
    return bWithin ? room.c_str() + margin.size() : "written outside";
}

// Below the text and three bytes the buffer holds as much of it as fits, of which a closing would replace the last two
// characters; only the break before an element is written whole or not at all.
string Dump(YamlHandle *pstHandle, const string &size)
{
    uint32_t uiResult = YAML_OK, uiBelow = YAML_OK;
    const string dump = DumpAt(pstHandle, size.empty() ? 1000 : std::stoul(size), uiResult);
    const string outcome = ReadOutcome("\"" + Printable(dump) + "\"\n", "", "");
    for (size_t ul = 1; uiResult == YAML_OK && size.empty() && ul < dump.size() + 5; ++ul) {
        const string text = DumpAt(pstHandle, ul, uiBelow);
        const bool bFits = ul >= dump.size() + 3 || dump.empty();
        const bool bCut = dump.starts_with(text.substr(0, text.size() - std::min<size_t>(text.size(), 2))) &&
                          (text.size() == ul - 1 || Base().LogText().find("dump space") != string::npos);
        if (uiBelow != (bFits ? YAML_OK : YAML_ERR_BUF) || (bFits ? text != dump : !bCut))
            return outcome + "at " + to_string(ul) + " \"" + Printable(text) + "\"\n";
    }
    return outcome;
}

string Component(YamlHandle *, const string &callAndText)
{
    const size_t ulSpace = std::min(callAndText.find(' '), callAndText.size() - 1);
    const string call = callAndText.substr(0, ulSpace);
    string text = callAndText.substr(ulSpace + 1);
    char acName[6] = "none", *pc = text.data();
    uint32_t uiUsed = 0, uiIndex = YAML_INDEX_NONE;
    const int64_t lResult =
        call == "KeyParse"         ? yaml_KeyParse(pc, sizeof(acName), acName, &uiUsed, &uiIndex)
        : call == "KeyParseForSeq" ? yaml_KeyParseForSeq(pc, sizeof(acName), acName, &uiUsed, &uiIndex)
        : call == "KeyStringGet"   ? yaml_KeyStringGet(pc, '.', sizeof(acName), acName, &uiUsed, &uiIndex)
        : call == "MetaChrProcess" ? yaml_MetaChrProcess(pc, sizeof(acName), acName, &uiUsed, &uiIndex)
        : call == "ArrayIndexGet"  ? int64_t{yaml_ArrayIndexGet(pc, &uiUsed, &uiIndex)}
                                   : 77;
    return to_string(lResult) + " '" + acName + "' used " + to_string(uiUsed) +
           (uiIndex != YAML_INDEX_NONE ? " index " + to_string(uiIndex) : "") + " left '" +
           Replaced(text, std::string_view("\0", 1), "_") + "'\n" + Base().LogText();
}

struct Operation {
    string (*pfnRun)(YamlHandle *, const string &);
    enum { Text, Document, Paths } eTakes; // a text of its own; the document; the document and paths
};
const std::map<string, Operation> g_operations = {
    {"load", {Load<Tree>, Operation::Text}},
    {"loads", {Load<Ok>, Operation::Text}},
    {"loads16", {Loads16, Operation::Text}},
    {"file", {[](auto *, auto &path) { return LoadOutcome(path, true, Tree); }, Operation::Text}},
    {"memory", {[](auto *, auto &text) { return LoadOutcome(text, false, Count); }, Operation::Text}},
    {"starve", {Starve, Operation::Text}},
    {"component", {Component, Operation::Text}},
    {"find", {Find, Operation::Paths}},
    {"get", {Get, Operation::Paths}},
    {"format", {Format, Operation::Paths}},
    {"size", {Size, Operation::Paths}},
    {"value", {Value, Operation::Paths}},
    {"iterate", {Iterate, Operation::Paths}},
    {"walk", {[](auto *pstHandle, auto &) { return WalkFrom(ZRYAML_RootGet(pstHandle)); }, Operation::Document}},
    {"unread", {Unread, Operation::Document}},
    {"dump", {Dump, Operation::Document}},
};

// Trees that no load makes.
const std::map<string, void (*)(YamlListNode &, uint32_t)> g_damages = {
    {"foreign", [](YamlListNode &st, uint32_t) { st.uiMagic = 0; }},
    {"marked", [](YamlListNode &st, uint32_t) { st.uiSameWithAnchor = 1; }},
    {"childless", [](YamlListNode &st, uint32_t) { zryaml::ListInit(st.stChildList); }},
    {"type", [](YamlListNode &st, uint32_t uiType) { st.uiDataType = uiType; }},
};

struct Fault {
    size_t ulLine;
    string text;
};

class Runner {
public:
    Runner() { ZRYAML_LimitsGet(&m_stDefault); }
    ~Runner()
    {
        DocumentSet(nullptr);
        ZRYAML_DebugSwitchSet(0);
        (void)ZRYAML_LimitsSet(&m_stDefault);
    }
    Runner(const Runner &) = delete;
    Runner &operator=(const Runner &) = delete;

    std::vector<Fault> Run(std::string_view text)
    {
        for (const CaseStep &stStep : CaseFileRead(text)) {
            Base().Reset();
            const auto itOperation = g_operations.find(stStep.operation);
            const bool bSetting = itOperation == g_operations.end();
            string fault;
            if (bSetting == stStep.bExpects)
                fault = bSetting ? "no operation with an outcome: " + stStep.operation : "no outcome is expected";
            else if (bSetting)
                fault = Set(stStep.operation, Unescaped(stStep.argument)) ? "" : "cannot be set: " + Base().LogText();
            else
                OperationRun(itOperation->second, stStep);
            if (!fault.empty())
                m_faults.push_back({stStep.ulLine, fault});
        }
        if (!m_bCompared && m_faults.empty())
            m_faults.push_back({1, "there is no case"});
        return m_faults;
    }

private:
    bool DocumentSet(YamlHandle *pstHandle)
    {
        ZRYAML_HandleFree(std::exchange(m_pstHandle, pstHandle));
        return pstHandle != nullptr;
    }

    bool Set(const string &name, const string &argument)
    {
        std::istringstream words(argument);
        Base().bKeepNotes = false;
        if (name == "doc")
            return DocumentSet(TextLoad(argument)) && Base().log.empty() && TreeCheck(*m_pstHandle).empty();
        if (name == "switch") {
            uint32_t uiSwitch = 0;
            words >> uiSwitch;
            ZRYAML_DebugSwitchSet(uiSwitch);
            return !words.fail();
        }
        if (name == "limits") {
            YamlLimits stLimits = m_stDefault;
            words >> stLimits.uiDepth >> stLimits.uiDirectives >> stLimits.ulFileBytes >> stLimits.ulCopyBytes;
            return ZRYAML_LimitsSet(argument.empty() ? &m_stDefault : &stLimits) == YAML_OK;
        }
        return name == "damage" && m_pstHandle != nullptr && Damage(words);
    }

    bool Damage(std::istringstream &words)
    {
        string kind, path;
        uint32_t uiNumber = 0, uiIndexed = 0;
        words >> kind >> path >> uiNumber;
        const bool bFather = path.ends_with('^'); // not the node itself, but the one that it hangs below
        YamlListNode *pstNode = NodeFind(m_pstHandle, path.substr(0, path.size() - (bFather ? 1 : 0)), &uiIndexed);
        const auto itDamage = g_damages.find(kind);
        if (pstNode == nullptr || itDamage == g_damages.end())
            return false;
        itDamage->second(bFather ? *pstNode->pstFather : *pstNode, uiNumber);
        return true;
    }

    void OperationRun(const Operation &stOperation, const CaseStep &stStep)
    {
        if (stOperation.eTakes == Operation::Text)
            return Compare(stOperation, stStep, Unescaped(stStep.argument));
        if (m_pstHandle == nullptr)
            return m_faults.push_back({stStep.ulLine, "there is no document"});
        if (stOperation.eTakes == Operation::Document)
            return Compare(stOperation, stStep, stStep.argument);
        if (stStep.argument.empty())
            return m_faults.push_back({stStep.ulLine, "there is no path"});
        std::istringstream words(stStep.argument);
        for (string word; words >> word;)
            Compare(stOperation, stStep, word == "\"\"" ? "" : Unescaped(word));
    }

    void Compare(const Operation &stOperation, const CaseStep &stStep, const string &argument)
    {
        const int64_t lBlocks = Base().lBlocks;
        m_bCompared = true;
        Base().Reset();
        string seen = stOperation.pfnRun(m_pstHandle, argument);
        if (Base().lBlocks != lBlocks)
            seen += "blocks are left\n";
        for (const LogRecord &stRecord : Base().log) {
            if (!stRecord.file.starts_with("yaml/src/zr_yaml_") || stRecord.function.empty())
                seen += "logged from nowhere: " + stRecord.file + "\n";
        }
        if (stOperation.eTakes != Operation::Text && Base().ulAllocations > (stOperation.pfnRun == Iterate ? 1 : 0))
            seen += "memory was taken\n";
        string expected;
        for (const string &line : stStep.expected)
            expected += line + "\n";
        if (stOperation.eTakes == Operation::Paths)
            expected = Replaced(expected, "$", Printable(argument.substr(argument.rfind('[') + 1)));
        if (seen != expected)
            m_faults.push_back({stStep.ulLine, stStep.operation + " " + Printable(argument).substr(0, 200) +
                                                   "\nexpected:\n" + expected + "seen:\n" + seen});
    }

    YamlHandle *m_pstHandle = nullptr;
    YamlLimits m_stDefault = {};
    std::vector<Fault> m_faults;
    bool m_bCompared = false;
};

std::vector<string> CaseFiles()
{
    std::vector<string> files;
    for (const auto &stEntry : std::filesystem::directory_iterator(ZRYAML_TEST_CASES)) {
        if (stEntry.path().extension() == ".txt")
            files.push_back(stEntry.path().stem());
    }
    std::ranges::sort(files);
    return files;
}

struct Cases : Recorded, testing::WithParamInterface<string> {};

} // namespace

TEST_P(Cases, Hold)
{
    const string path = ZRYAML_TEST_CASES "/" + GetParam() + ".txt";
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    for (const Fault &stFault : Runner().Run(text.str()))
        ADD_FAILURE_AT(path.c_str(), static_cast<int>(stFault.ulLine)) << stFault.text;
}

INSTANTIATE_TEST_SUITE_P(File, Cases, testing::ValuesIn(CaseFiles()), [](const auto &stInfo) { return stInfo.param; });

TEST(CaseRunner, FindsAFaultInEachLine)
{
    const std::vector<Fault> faults = Runner().Run(R"(get a => =1
load a: 1
load a: 1 =>
load a: 1 => {a:2}
load a: 1 => {a:1} | more
unknown a => x
unknown a
component Unknown a => 0
switch on
switch 1 => ok
limits 1000 1 1 1
doc a: b: c
doc a: 1 => x
damage foreign a
)");
    for (size_t ul = 0; ul < 14; ++ul)
        EXPECT_TRUE(faults.size() == 14 && faults[ul].ulLine == ul + 1) << ul;
    for (const char *pcLast : {"get a => =2", "get a b => =1", "get => =1", "get a\n  =1\n  more", "damage foreign b",
                               "damage badly a", "load\n| a: 1\n  {a:2}"})
        EXPECT_EQ(Runner().Run(string("doc a: 1\nget a => =1\n") + pcLast).at(0).ulLine, 3U) << pcLast;
    for (const char *pcNothing : {"", "# only this\n\nlet NAME x\n", "doc a: 1\n"})
        EXPECT_EQ(Runner().Run(pcNothing).size(), 1U) << pcNothing;
    EXPECT_TRUE(
        Runner().Run("let ONE =$\ndoc\n| a: \\(2 x#)\n| b:\n|   c: 1\nget a => ONE(x0x1)\nget b.c => =1").empty());
    Base().Reset();
}
