// SPDX-License-Identifier: Apache-2.0
// The checks use the public interface only, apart from the check of the tree, which follows the links by itself.
#include "fuzz_support.h"

#include "../tests/support/tree_check.h"

#include <zr_base.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr uint32_t MaxPaths = 2000; // values of a document that are looked up by path
constexpr uint32_t MaxTries = 64;   // children of a value that are looked up by key and number
constexpr size_t MaxDump = size_t{4} << 20;

[[maybe_unused]] const bool g_bSetUp = [] {
    ZR_LogLevelSet(ZR_LOG_NOTHING);
    YamlLimits stLimits;
    ZRYAML_LimitsGet(&stLimits);
    stLimits.ulCopyBytes = uint64_t{1} << 20;
    return ZRYAML_LimitsSet(&stLimits) == YAML_OK;
}();

// Whether key paths have a form for the place of a value: not below a key that ends with a backslash, and not for the
// elements of a sequence under a key without characters.
bool HasPath(const YamlListNode &stValue)
{
    const YamlListNode *pstBelow = &stValue; // a value or a key
    bool bSequence = false;
    for (const YamlListNode *pst = stValue.pstFather; pst != nullptr; pst = pst->pstFather) {
        const bool bKey = pst->uiDataType == YAML_DATATYPE_SCALAR && pstBelow != &stValue;
        const std::string_view svName = bKey ? pst->pcValue : "x";
        if (svName.ends_with('\\') || (svName.empty() && bSequence))
            return false;
        bSequence = pst->uiDataType == YAML_DATATYPE_SEQ;
        pstBelow = pst;
    }
    return true;
}

// A document, read value by value and written down twice: as TreeText does, and as the dump does without its spaces.
struct Reading {
    YamlHandle &stHandle;
    std::string text, picture;
    uint32_t uiPaths = 0;
    bool bEmpty = false;    // an empty map or sequence, which has no picture
    bool bAllByPath = true; // every value has been looked up

    void Put(const char *pcMark) { text += pcMark, picture += pcMark; }
    void ScalarPut(const char *pcText) { ScalarWrite(pcText, text), picture += pcText; }
};

void ByPathRead(Reading &st, const YamlListNode &stValue)
{
    char acPath[YAML_KEY_BUF_SIZE];
    const uint32_t uiLength = ZRYAML_ValuePathGet(&stValue, sizeof(acPath), acPath);
    Require(strlen(acPath) == std::min(uiLength, YAML_KEY_BUF_SIZE - 1U), "a path is not as long as it says");
    if (uiLength == 0) // the root has no path
        return;
    if (uiLength >= sizeof(acPath) || st.uiPaths++ >= MaxPaths || !HasPath(stValue)) {
        st.bAllByPath = false;
        return;
    }
    Require(ZRYAML_PathFind(&st.stHandle, acPath) == &stValue, "a value is not found by its path", acPath);
    PathCheck(st.stHandle, acPath);
}

void ChildCheck(const YamlListNode &stValue, const YamlChild &stChild, uint32_t uiIndex, bool bMap)
{
    const uint32_t uiType = ZRYAML_ValueTypeGet(stChild.pstValue);
    Require(stChild.uiIndex == uiIndex && stChild.uiType == uiType, "a child has the wrong number or type");
    Require(bMap == (stChild.pcKey != nullptr), "only children of maps have keys");
    if (uiIndex >= MaxTries)
        return;
    YamlChild stSame = {};
    Require(ZRYAML_ChildGet(&stValue, uiIndex, &stSame) == YAML_OK && stSame.pstValue == stChild.pstValue,
            "a child by number differs");
    Require(!bMap || ZRYAML_ChildFind(&stValue, stChild.pcKey, strlen(stChild.pcKey)) == stChild.pstValue,
            "a key is not found", bMap ? stChild.pcKey : "");
}

void ValueRead(Reading &st, const YamlListNode &stValue)
{
    Require(ZRYAML_DocumentGet(&stValue) == &st.stHandle, "a value names another document");
    uint32_t uiLine = 0;
    uint32_t uiColumn = 0;
    ZRYAML_ValuePositionGet(&stValue, &uiLine, &uiColumn);
    Require(uiLine > 0 && uiColumn > 0, "a value has no place");
    ByPathRead(st, stValue);
    if (ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_SCALAR)
        return st.ScalarPut(ZRYAML_ValueTextGet(&stValue));

    const bool bMap = ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_MAP;
    uint32_t uiCount = 0;
    st.Put(bMap ? "{" : "[");
    for (YamlChild stChild = {}; ZRYAML_ChildNextGet(&stValue, &stChild) == YAML_OK; ++uiCount) {
        ChildCheck(stValue, stChild, uiCount, bMap);
        st.Put(uiCount > 0 ? "," : "");
        if (bMap)
            st.ScalarPut(stChild.pcKey), st.Put(":");
        ValueRead(st, *stChild.pstValue);
    }
    st.Put(bMap ? "}" : "]");
    Require(uiCount == ZRYAML_ChildCountGet(&stValue), "the count differs from the walk");
    st.bEmpty = st.bEmpty || uiCount == 0;
}

// What an iterator yields for a child: a scalar of a map, or the first key of a map in a sequence; if any.
YamlKeyValue PairOf(const YamlChild &stChild, bool bMap)
{
    YamlChild stPair = {};
    if (bMap)
        stPair = stChild;
    else if (stChild.uiType == YAML_DATATYPE_MAP)
        (void)ZRYAML_ChildNextGet(stChild.pstValue, &stPair);
    const bool bText = ZRYAML_ValueTypeGet(stPair.pstValue) == YAML_DATATYPE_SCALAR;
    return bText ? YamlKeyValue{stPair.pcKey, ZRYAML_ValueTextGet(stPair.pstValue)} : YamlKeyValue{};
}

// An iterator on a key walks the value; one on an element walks what is first below it, which only has to end.
void IteratorCheck(YamlHandle &stHandle, const std::string &path, const YamlListNode &stValue)
{
    YamlIterator *pstIter = yaml_IteratorCreate(&stHandle, "%s", path.c_str());
    const bool bUnderKey = ZRYAML_ValueTypeGet(stValue.pstFather) == YAML_DATATYPE_SCALAR;
    const uint32_t uiType = ZRYAML_ValueTypeGet(&stValue);
    const bool bWalked = uiType != YAML_DATATYPE_SCALAR;
    Require(!bUnderKey || bWalked == (pstIter != nullptr), "an iterator on a text, or none", path);
    if (pstIter == nullptr)
        return;
    YamlKeyValue stPair = {};
    for (YamlChild stChild = {}; bUnderKey && ZRYAML_ChildNextGet(&stValue, &stChild) == YAML_OK;) {
        const auto [pcKey, pcValue] = PairOf(stChild, uiType == YAML_DATATYPE_MAP);
        if (pcKey == nullptr)
            continue;
        Require(yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK, "an iterator ends too early", path);
        Require(stPair.pcKey == pcKey && stPair.pcValue == pcValue, "an iterator differs", path);
    }
    while (!bUnderKey && yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK)
        Require(stPair.pcKey != nullptr && stPair.pcValue != nullptr, "an iterator gives no texts", path);
    Require(yaml_NextKeyValueGet(pstIter, &stPair) == YAML_ERR_ITER_END, "an iterator does not end", path);
    yaml_IteratorDestroy(pstIter);
}

} // namespace

void Require(bool bHolds, const char *pcWhat, std::string_view svDetail)
{
    if (bHolds)
        return;
    (void)fprintf(stderr, "fuzz: %s: %.*s\n", pcWhat, static_cast<int>(svDetail.size()), svDetail.data());
    abort();
}

Document DocumentLoad(std::string_view svText)
{
    Document stDocument(ZRYAML_TextLoad(svText.data(), svText.size(), "fuzz"));
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    Require((stDocument == nullptr) == (stError.uiCode != YAML_OK), "result and record differ", stError.pcMessage);
    Require((stDocument == nullptr) == (stError.pcMessage[0] != '\0'), "a refusal has no message");
    return stDocument;
}

void DocumentCheck(YamlHandle &stHandle)
{
    const std::string fault = TreeCheck(stHandle);
    Require(fault.empty(), "the tree is broken", fault);
    Reading stReading{stHandle, "", ""};
    if (const YamlListNode *pstTop = ZRYAML_RootGet(&stHandle))
        ValueRead(stReading, *pstTop);
    Require(stReading.text == TreeText(stHandle), "the walk differs from the tree", stReading.text);
    std::string dump = DumpText(stHandle);
    if (!dump.empty()) {
        Require(!stReading.bEmpty, "a document with an empty collection is dumped", dump);
        for (std::string *pText : {&dump, &stReading.picture})
            std::erase_if(*pText, [](char c) { return c == ' ' || c == '\n'; });
        Require(dump == stReading.picture + ",", "the dump differs from the walk", dump);
    }
    YamlUnreadKey stUnread = {};
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
    const uint32_t uiType = ZRYAML_ValueTypeGet(pstValue);
    Require(ZRYAML_TypeGet(&stHandle, "%s", pcPath) == uiType, "the type differs", path);

    // A path may go on from a key to the text of its value ("mode.fast"): that finds the value, which reads as no text.
    const char *pcText = ZRYAML_PropertyGet(&stHandle, "%s", pcPath);
    const bool bValueNamed = pcText == nullptr && ZRYAML_LastErrorGet()->uiCode == YAML_ERR_EMPTY;
    Require(bValueNamed || pcText == ZRYAML_ValueTextGet(pstValue), "the text differs", path);
    const uint32_t uiCount = uiType == YAML_DATATYPE_SEQ ? ZRYAML_ChildCountGet(pstValue) : 0;
    Require(ZRYAML_ArraySizeGet(&stHandle, "%s", pcPath) == uiCount, "the size differs", path);
    uint32_t uiLine = 0;
    uint32_t uiColumn = 0;
    const uint32_t uiPlaced = ZRYAML_PositionGet(&stHandle, &uiLine, &uiColumn, "%s", pcPath);
    Require((uiPlaced == YAML_OK) == bFound && (uiLine != 0) == bFound, "the place differs", path);
    if (bFound)
        IteratorCheck(stHandle, path, *pstValue);
    else
        Require(yaml_IteratorCreate(&stHandle, "%s", pcPath) == nullptr, "an iterator on nothing", path);
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

TwoParts InputSplit(const uint8_t *pucData, size_t ulSize)
{
    const std::string_view svInput(reinterpret_cast<const char *>(pucData), ulSize);
    const size_t ulEnd = std::min(svInput.find('\n'), ulSize);
    std::string head(svInput.substr(0, ulEnd));
    head.resize(strlen(head.c_str())); // a path ends at a NUL
    return {head, svInput.substr(std::min(ulEnd + 1, ulSize))};
}
