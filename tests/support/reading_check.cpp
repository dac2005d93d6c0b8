// SPDX-License-Identifier: Apache-2.0
// Uses the public interface only, apart from TreeCheck, which follows the links by itself.
#include "reading_check.h"

#include "tree_check.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint32_t MaxPaths = 2000; // values of a document that are looked up by path
constexpr uint32_t MaxTries = 64;   // children of a value that are looked up by key and number
constexpr size_t MaxDump = size_t{4} << 20;

struct Reading {
    YamlHandle &stHandle;
    uint32_t uiPaths = 0;
    bool bEmpty = false;         // there is an empty map or sequence, which has no picture in a dump
    bool bAllByPath = true;      // every value has been looked up
    std::string text{}, plain{}; // the document as TreeText writes it, and as the dump does without its spaces
};

void ByPathRead(Reading &st, const YamlListNode &stValue, bool bHasPath)
{
    char acPath[YAML_KEY_BUF_SIZE];
    const uint32_t uiLength = ZRYAML_ValuePathGet(&stValue, sizeof(acPath), acPath);
    Require(strlen(acPath) == std::min(uiLength, YAML_KEY_BUF_SIZE - 1U), "a path is not as long as it says");
    if (uiLength == 0) // the root has no path
        return;
    if (uiLength >= sizeof(acPath) || st.uiPaths++ >= MaxPaths || !bHasPath) {
        st.bAllByPath = false;
        return;
    }
    std::string tight(uiLength + 1, 'Z'); // and no room for the last character
    (void)ZRYAML_ValuePathGet(&stValue, uiLength, tight.data());
    Require(tight == std::string(acPath, uiLength - 1) + std::string("\0Z", 2), "a path leaves its buffer", acPath);
    Require(ZRYAML_PathFind(&st.stHandle, acPath) == &stValue, "a value is not found by its path", acPath);
    PathCheck(st.stHandle, acPath);
}

void ChildCheck(const YamlListNode &stValue, const YamlChild &stChild, uint32_t uiIndex, bool bMap)
{
    Require(stChild.uiIndex == uiIndex, "a child has the wrong number");
    Require(stChild.uiType == ZRYAML_ValueTypeGet(stChild.pstValue), "a child has the wrong type");
    Require(bMap == (stChild.pcKey != nullptr), "only children of maps have keys");
    if (uiIndex >= MaxTries)
        return;
    YamlChild stSame = YAML_CHILD_INIT;
    Require(ZRYAML_ChildGet(&stValue, uiIndex, &stSame) == YAML_OK && stSame.pstValue == stChild.pstValue,
            "a child by number differs");
    const char *pcKey = bMap ? stChild.pcKey : "";
    Require(ZRYAML_ChildFind(&stValue, pcKey, strlen(pcKey)) == (bMap ? stChild.pstValue : nullptr),
            "a child by key differs", pcKey);
}

// Reads a value, which has a name if it has a key, and everything below it in every way. Key paths have no form for
// what is below a name that ends with a backslash, and for the elements of a sequence whose name is empty.
void ValueRead(Reading &st, const YamlListNode &stValue, std::string_view svName = "none", bool bHasPath = true)
{
    const auto Put = [&](const char *pcMark) { st.text += pcMark, st.plain += pcMark; };
    const auto ScalarPut = [&](const char *pcText) { ScalarWrite(pcText, st.text), st.plain += pcText; };
    Require(ZRYAML_DocumentGet(&stValue) == &st.stHandle, "a value names another document");
    uint32_t uiLine = 0, uiColumn = 0, uiCount = 0;
    ZRYAML_ValuePositionGet(&stValue, &uiLine, &uiColumn);
    Require(uiLine > 0 && uiColumn > 0, "a value has no place");
    ByPathRead(st, stValue, bHasPath);
    if (ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_SCALAR)
        return ScalarPut(ZRYAML_ValueTextGet(&stValue));

    const bool bMap = ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_MAP;
    const bool bHavePaths = bHasPath && !svName.ends_with('\\') && (bMap || !svName.empty());
    Put(bMap ? "{" : "[");
    YamlChild stChild = YAML_CHILD_INIT;
    for (; ZRYAML_ChildNextGet(&stValue, &stChild) == YAML_OK; ++uiCount) {
        ChildCheck(stValue, stChild, uiCount, bMap);
        Put(uiCount > 0 ? "," : "");
        if (bMap)
            ScalarPut(stChild.pcKey), Put(":");
        ValueRead(st, *stChild.pstValue, bMap ? stChild.pcKey : "none", bHavePaths);
    }
    Put(bMap ? "}" : "]");
    Require(uiCount == ZRYAML_ChildCountGet(&stValue), "the count differs from the walk");
    Require(ZRYAML_ChildGet(&stValue, uiCount, &stChild) == YAML_ERR_ITER_END, "there is a child behind the last");
    st.bEmpty = st.bEmpty || uiCount == 0;
}

// An iterator on a key walks the value, of which a text has nothing to walk; one on an element walks what is first
// below it, which only has to end.
void IteratorCheck(YamlHandle &stHandle, const std::string &path, const YamlListNode *pstValue)
{
    YamlIterator *pstIter = yaml_IteratorCreate(&stHandle, "%s", path.c_str());
    const bool bUnderKey = pstValue != nullptr && ZRYAML_ValueTypeGet(pstValue->pstFather) == YAML_DATATYPE_SCALAR;
    const bool bWalk = pstValue != nullptr && ZRYAML_ValueTypeGet(pstValue) != YAML_DATATYPE_SCALAR;
    Require((pstIter != nullptr) == bWalk || (!bUnderKey && pstValue != nullptr), "an iterator differs", path);
    YamlKeyValue stPair = {};
    while (pstIter != nullptr && yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK) {
        const YamlListNode *pstSame = ZRYAML_ChildFind(pstValue, stPair.pcKey, strlen(stPair.pcKey));
        Require(!bUnderKey || pstSame == nullptr || ZRYAML_ValueTextGet(pstSame) == stPair.pcValue, "a pair", path);
    }
    Require(pstIter == nullptr || yaml_NextKeyValueGet(pstIter, &stPair) == YAML_ERR_ITER_END, "no end", path);
    yaml_IteratorDestroy(pstIter);
}

} // namespace

void DocumentCheck(YamlHandle &stHandle)
{
    const std::string fault = TreeCheck(stHandle);
    Require(fault.empty(), "the tree is broken", fault);
    Reading stReading{stHandle};
    std::string dump = DumpText(stHandle);
    if (const YamlListNode *pstTop = ZRYAML_RootGet(&stHandle))
        ValueRead(stReading, *pstTop);
    Require(stReading.text == TreeText(stHandle), "the walk differs from the tree", stReading.text);
    if (!dump.empty()) {
        Require(!stReading.bEmpty, "a document with an empty collection is dumped", dump);
        for (std::string *pText : {&dump, &stReading.plain})
            std::erase_if(*pText, [](char c) { return c == ' ' || c == '\n'; });
        Require(dump == stReading.plain + ",", "the dump differs from the walk", dump);
    }
    YamlUnreadKey stUnread = YAML_UNREAD_KEY_INIT;
    if (yaml_IsDebugSwitchOpen() != 0 && stReading.bAllByPath)
        Require(ZRYAML_UnreadKeyNext(&stHandle, &stUnread) == YAML_ERR_ITER_END, "a read key is not marked",
                stUnread.acPath);
}

void PathCheck(YamlHandle &stHandle, const std::string &path)
{
    const char *pcPath = path.c_str();
    const YamlListNode *pstValue = ZRYAML_PathFind(&stHandle, pcPath);
    const bool bFound = pstValue != nullptr;
    Require(bFound == (ZRYAML_LastErrorGet()->uiCode == YAML_OK), "result and record of a lookup differ", path);
    Require(ZRYAML_ValueFind(&stHandle, "%s", pcPath) == pstValue, "the formatted path finds something else", path);
    const uint32_t uiType = ZRYAML_ValueTypeGet(pstValue);
    Require(ZRYAML_TypeGet(&stHandle, "%s", pcPath) == uiType, "the type differs", path);

    // A path may go on from a key to the text of its value ("mode.fast"): that finds the value, which reads as no text.
    const char *pcText = ZRYAML_PropertyGet(&stHandle, "%s", pcPath);
    const bool bValueNamed = pcText == nullptr && ZRYAML_LastErrorGet()->uiCode == YAML_ERR_EMPTY;
    Require(bValueNamed || pcText == ZRYAML_ValueTextGet(pstValue), "the text differs", path);
    const uint32_t uiCount = uiType == YAML_DATATYPE_SEQ ? ZRYAML_ChildCountGet(pstValue) : 0;
    Require(ZRYAML_ArraySizeGet(&stHandle, "%s", pcPath) == uiCount, "the size differs", path);
    uint32_t auiPlace[] = {0, 0}, auiSame[] = {0, 0};
    const uint32_t uiPlaced = ZRYAML_PositionGet(&stHandle, &auiPlace[0], &auiPlace[1], "%s", pcPath);
    ZRYAML_ValuePositionGet(pstValue, &auiSame[0], &auiSame[1]);
    Require((uiPlaced == YAML_OK) == bFound && std::ranges::equal(auiPlace, auiSame), "the place differs", path);
    IteratorCheck(stHandle, path, pstValue);
}

std::string DumpText(YamlHandle &stHandle)
{
    std::string text(4096, '\0');
    for (;; text.resize(2 * text.size())) {
        const uint32_t uiResult = ZRYAML_ContextDump(&stHandle, static_cast<uint32_t>(text.size()), text.data());
        if (uiResult == YAML_OK)
            break;
        Require(uiResult == YAML_ERR_BUF, "the dump fails in an unknown way");
        if (ZRYAML_LastErrorGet()->uiCode == YAML_ERR_EMPTY || text.size() >= MaxDump)
            return "";
    }
    text.resize(strlen(text.c_str()));
    return text.empty() ? text : text + ", ";
}

void DumpCheck(YamlHandle &stHandle, uint32_t uiSize, const std::string &whole)
{
    const std::string margin(16, '\x5A');
    std::string room = std::string(uiSize, '\x5A') + margin;
    const uint32_t uiResult = ZRYAML_ContextDump(&stHandle, uiSize, room.data());
    Require(room.ends_with(margin), "the buffer is left");
    if (uiSize == 0)
        return Require(uiResult == YAML_ERR_PARAM, "a buffer of no bytes is taken");
    std::string_view svText(room.c_str());
    Require(svText.size() < uiSize, "the text is not terminated");
    if (whole.empty()) // nothing there, an empty collection, or too large to be told
        return;
    if (whole.size() < uiSize)
        return Require(uiResult == YAML_OK && svText == whole.substr(0, whole.size() - 2), "a dump that fits is cut");
    const std::string_view svError = ZRYAML_LastErrorGet()->pcRecord;
    Require(uiResult == YAML_ERR_BUF, "a buffer fits that should not");
    // Only the break before an element is written whole or not at all.
    Require(svText.size() == uiSize - 1 || svError.find("dump space") != svError.npos, "not all that fits is there");
    if (svText.ends_with(',')) // a bracket that does not fit would have taken its place
        svText.remove_suffix(1);
    Require(whole.starts_with(svText), "the text is not the beginning of the dump", svText);
}
