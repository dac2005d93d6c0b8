// SPDX-License-Identifier: Apache-2.0
// Operations that read the document.
#include "case_file.h"
#include "case_operations.h"
#include "reading_check.h"

namespace {

using std::string;
using std::to_string;

constexpr const char *Kinds[] = {"list", "map", "scalar", "nothing"};

// What a public read gave, with its log and with the place that the error record names.
string ReadOutcome(const string &result, const string &path, const string &file = "doc")
{
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    return result + LogAndError(path, file) +
           (stError.uiLine != 0 ? "at " + Place(stError.uiLine, stError.uiColumn) + "\n" : "");
}

string TextLine(const char *pcText)
{
    return pcText != nullptr ? "=" + Printable(pcText) + "\n" : "";
}

string Find(YamlHandle *pstHandle, const string &path)
{
    uint32_t uiIndexed = 7;
    const YamlListNode *pstNode =
        yaml_NodeFind(pstHandle, string(path).data(), static_cast<uint32_t>(path.size() + 1), &uiIndexed);
    string outcome = uiIndexed == 7 ? "kept\n" : "";
    if (pstNode != nullptr) {
        const bool bSeq = pstNode->uiDataType == YAML_DATATYPE_SEQ;
        const string text = pstNode->pcValue != nullptr ? Printable(pstNode->pcValue) : bSeq ? "[]" : "{}";
        outcome += (uiIndexed != 0 ? "#" : "=") + text + "\n";
    }
    return outcome + Base().LogText();
}

string Get(YamlHandle *pstHandle, const string &path)
{
    string outcomes[3];
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        Base().Reset();
        ZRYAML_DebugSwitchSet(uiSwitch);
        const uint32_t uiBefore = pstHandle->uiQueryCount;
        outcomes[uiSwitch] = ReadOutcome(TextLine(ZRYAML_PropertyGet(pstHandle, "%s", path.c_str())), path);
        if (pstHandle->uiQueryCount - uiBefore != (uiSwitch == 0 ? 0 : 1))
            outcomes[uiSwitch] += "not counted\n";
    }
    ZRYAML_DebugSwitchSet(0);
    const bool bSame = outcomes[1] == outcomes[2] && outcomes[1].starts_with(outcomes[0]);
    return outcomes[1] + (bSame ? "" : "differs with the switch: " + outcomes[0] + outcomes[2]);
}

string Format(YamlHandle *pstHandle, const string &format)
{
    char *(*const pfnGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet; // whose format is not checked here
    const string outcome = TextLine(pfnGet(pstHandle, format.c_str()));
    return outcome + Base().LogText();
}

string Size(YamlHandle *pstHandle, const string &path)
{
    const uint32_t uiBefore = pstHandle->uiQueryCount;
    const uint32_t uiSize = ZRYAML_ArraySizeGet(pstHandle, "%s", path.c_str());
    const string size = uiSize != 0 || Base().log.empty() ? to_string(uiSize) + "\n" : "";
    return ReadOutcome(size, path) + (pstHandle->uiQueryCount != uiBefore ? "counted\n" : "");
}

string KindAndPlace(const YamlListNode *pstValue)
{
    uint32_t uiLine = 0, uiColumn = 0;
    ZRYAML_ValuePositionGet(pstValue, &uiLine, &uiColumn);
    return Kinds[ZRYAML_ValueTypeGet(pstValue)] + (" " + Place(uiLine, uiColumn));
}

string Value(YamlHandle *pstHandle, const string &path)
{
    const YamlListNode *pstValue = ZRYAML_PathFind(pstHandle, path.c_str());
    return ReadOutcome(pstValue != nullptr ? KindAndPlace(pstValue) + "\n" : "", path);
}

string Iterate(YamlHandle *pstHandle, const string &path)
{
    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "%s", path.c_str());
    if (pstIter == nullptr)
        return ReadOutcome("", path);
    string outcome = Kinds[pstIter->uiIterType];
    YamlKeyValue stPair = {};
    while (yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK && outcome.size() < 1000)
        outcome += string(" ") + stPair.pcKey + "=" + stPair.pcValue;
    yaml_IteratorDestroy(pstIter);
    return ReadOutcome(outcome + "\n", path);
}

string WalkFrom(const YamlListNode *pstValue)
{
    char acPath[64];
    (void)ZRYAML_ValuePathGet(pstValue, sizeof(acPath), acPath);
    const string text = TextLine(ZRYAML_ValueTextGet(pstValue));
    string outcome = KindAndPlace(pstValue) + (*acPath != '\0' ? " " : "") + acPath + (text.empty() ? "\n" : text);
    for (YamlChild stChild = YAML_CHILD_INIT; ZRYAML_ChildNextGet(pstValue, &stChild) == YAML_OK;)
        outcome += WalkFrom(stChild.pstValue);
    return outcome;
}

string Unread(YamlHandle *pstHandle, const string &)
{
    string text = "unread";
    for (YamlUnreadKey stKey = YAML_UNREAD_KEY_INIT; ZRYAML_UnreadKeyNext(pstHandle, &stKey) == YAML_OK;)
        text += string(" ") + stKey.acPath + "@" + Place(stKey.uiLine, stKey.uiColumn) +
                (stKey.uiFromAlias != 0 ? "*" : "");
    return ReadOutcome(text + "\n", "", "");
}

// Into a buffer of a size, or of one that is large enough and then of every smaller one.
string Dump(YamlHandle *pstHandle, const string &size)
{
    string text(size.empty() ? 1000 : std::stoul(size), '\0');
    (void)ZRYAML_ContextDump(pstHandle, static_cast<uint32_t>(text.size()), text.data());
    const string outcome = ReadOutcome("\"" + Printable(text.c_str()) + "\"\n", "", "");
    const string whole = size.empty() && TreeCheck(*pstHandle).empty() ? DumpText(*pstHandle) : "";
    for (uint32_t ui = 0; ui < whole.size() + 5; ++ui)
        DumpCheck(*pstHandle, ui, whole);
    return outcome;
}

} // namespace

const std::map<string, Operation> g_readOperations = {
    {"find", {Find, Operation::Paths}},
    {"get", {Get, Operation::Paths}},
    {"format", {Format, Operation::Document}},
    {"size", {Size, Operation::Paths}},
    {"value", {Value, Operation::Paths}},
    {"iterate", {Iterate, Operation::Paths}},
    {"walk", {[](auto *pstHandle, auto &) { return WalkFrom(ZRYAML_RootGet(pstHandle)); }, Operation::Document}},
    {"unread", {Unread, Operation::Document}},
    {"dump", {Dump, Operation::Document}},
};
