// SPDX-License-Identifier: Apache-2.0
// The checks use the public interface only, apart from the check of the tree, which follows the links by itself.
#include "fuzz_support.h"

#include "../tests/support/tree_check.h"

#include <zr_base.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr uint32_t MaxPaths = 2000; // values of a document that are looked up by path
constexpr size_t MaxDump = size_t{4} << 20;

[[maybe_unused]] const bool g_bLimitsSet = [] {
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

// Reads a document value by value and writes it down twice: as TreeText does, and as the dump does without its spaces.
class Reader {
public:
    explicit Reader(YamlHandle &stHandle) : m_stHandle(stHandle) {}

    void Run()
    {
        if (const YamlListNode *pstTop = ZRYAML_RootGet(&m_stHandle))
            ValueRead(*pstTop);
    }
    [[nodiscard]] const std::string &Text() const { return m_text; }
    [[nodiscard]] const std::string &Picture() const { return m_picture; }
    [[nodiscard]] bool HasEmpty() const { return m_bEmpty; }      // an empty map or sequence, which has no picture
    [[nodiscard]] bool AllByPath() const { return m_bAllByPath; } // every value has been looked up

private:
    void ValueRead(const YamlListNode &stValue)
    {
        Require(ZRYAML_DocumentGet(&stValue) == &m_stHandle, "a value names another document");
        PlaceCheck(stValue);
        ByPathRead(stValue);
        if (ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_SCALAR)
            ScalarPut(ZRYAML_ValueTextGet(&stValue));
        else
            ChildrenRead(stValue, ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_MAP);
    }

    static void PlaceCheck(const YamlListNode &stValue)
    {
        uint32_t uiLine = 0;
        uint32_t uiColumn = 0;
        ZRYAML_ValuePositionGet(&stValue, &uiLine, &uiColumn);
        Require(uiLine > 0 && uiColumn > 0, "a value has no place");
    }

    void ScalarPut(const char *pcText)
    {
        ScalarWrite(pcText, m_text);
        m_picture += pcText;
    }

    void Separate(const char *pcMark) { m_text += pcMark, m_picture += pcMark; }

    void ChildrenRead(const YamlListNode &stValue, bool bMap)
    {
        uint32_t uiCount = 0;
        Separate(bMap ? "{" : "[");
        for (YamlChild stChild = {}; ZRYAML_ChildNextGet(&stValue, &stChild) == YAML_OK; ++uiCount) {
            ChildCheck(stValue, stChild, uiCount, bMap);
            if (uiCount > 0)
                Separate(",");
            if (bMap) {
                ScalarPut(stChild.pcKey);
                Separate(":");
            }
            ValueRead(*stChild.pstValue);
        }
        Separate(bMap ? "}" : "]");
        Require(uiCount == ZRYAML_ChildCountGet(&stValue), "the count differs from the walk");
        m_bEmpty = m_bEmpty || uiCount == 0;
    }

    static void ChildCheck(const YamlListNode &stValue, const YamlChild &stChild, uint32_t uiIndex, bool bMap)
    {
        Require(stChild.uiIndex == uiIndex, "a child has the wrong number");
        Require(stChild.uiType == ZRYAML_ValueTypeGet(stChild.pstValue), "a child has the wrong type");
        Require(bMap == (stChild.pcKey != nullptr), "only children of maps have keys");
        if (bMap && uiIndex < 64) {
            const char *pcKey = stChild.pcKey;
            Require(ZRYAML_ChildFind(&stValue, pcKey, strlen(pcKey)) == stChild.pstValue, "a key is not found", pcKey);
        }
        YamlChild stSame = {};
        if (uiIndex < 64 && ZRYAML_ChildGet(&stValue, uiIndex, &stSame) == YAML_OK)
            Require(stSame.pstValue == stChild.pstValue, "a child by number differs");
    }

    void ByPathRead(const YamlListNode &stValue)
    {
        char acPath[YAML_KEY_BUF_SIZE];
        const uint32_t uiLength = ZRYAML_ValuePathGet(&stValue, sizeof(acPath), acPath);
        Require(strlen(acPath) == std::min(uiLength, YAML_KEY_BUF_SIZE - 1U), "a path is not as long as it says");
        if (uiLength == 0) // the root has no path
            return;
        if (uiLength >= sizeof(acPath) || m_uiPaths == MaxPaths || !HasPath(stValue)) {
            m_bAllByPath = false;
            return;
        }
        ++m_uiPaths;
        Require(ZRYAML_PathFind(&m_stHandle, acPath) == &stValue, "a value is not found by its path", acPath);
        PathCheck(m_stHandle, acPath);
    }

    YamlHandle &m_stHandle;
    std::string m_text;
    std::string m_picture;
    uint32_t m_uiPaths = 0;
    bool m_bEmpty = false;
    bool m_bAllByPath = true;
};

std::string WithoutSpaces(std::string text)
{
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\n'; }), text.end());
    return text;
}

void DumpCheck(YamlHandle &stHandle, const Reader &stReader)
{
    const std::string dump = DumpText(stHandle);
    if (dump.empty())
        return;
    Require(!stReader.HasEmpty(), "a document with an empty collection is dumped", dump);
    Require(WithoutSpaces(dump) == WithoutSpaces(stReader.Picture() + ","), "the dump differs from the walk", dump);
}

// What an iterator yields, told by the walk: scalars of a map, or of each element that is a map the first key.
struct Pair {
    const char *pcKey, *pcValue;
};

void PairAdd(const YamlChild &stChild, std::vector<Pair> &pairs)
{
    if (stChild.uiType == YAML_DATATYPE_SCALAR)
        pairs.push_back({stChild.pcKey, ZRYAML_ValueTextGet(stChild.pstValue)});
}

std::vector<Pair> PairsBelow(const YamlListNode &stValue)
{
    std::vector<Pair> pairs;
    const bool bMap = ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_MAP;
    for (YamlChild stChild = {}; ZRYAML_ChildNextGet(&stValue, &stChild) == YAML_OK;) {
        YamlChild stFirst = {};
        if (bMap)
            PairAdd(stChild, pairs);
        else if (stChild.uiType == YAML_DATATYPE_MAP && ZRYAML_ChildNextGet(stChild.pstValue, &stFirst) == YAML_OK)
            PairAdd(stFirst, pairs);
    }
    return pairs;
}

// An iterator on a key walks the value; one on an element walks what is first below it, which only has to end.
void IteratorCheck(YamlHandle &stHandle, const std::string &path, const YamlListNode &stValue)
{
    YamlIterator *pstIter = yaml_IteratorCreate(&stHandle, "%s", path.c_str());
    const bool bUnderKey = ZRYAML_ValueTypeGet(stValue.pstFather) == YAML_DATATYPE_SCALAR;
    const bool bWalked = ZRYAML_ValueTypeGet(&stValue) != YAML_DATATYPE_SCALAR;
    Require(!bUnderKey || bWalked == (pstIter != nullptr), "an iterator is made that should not, or not made", path);
    if (pstIter == nullptr)
        return;
    YamlKeyValue stPair = {};
    for (const Pair &stExpected : bUnderKey ? PairsBelow(stValue) : std::vector<Pair>()) {
        Require(yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK, "an iterator ends too early", path);
        Require(stPair.pcKey == stExpected.pcKey && stPair.pcValue == stExpected.pcValue, "an iterator differs", path);
    }
    while (!bUnderKey && yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK)
        Require(stPair.pcKey != nullptr && stPair.pcValue != nullptr, "an iterator gives no texts", path);
    Require(yaml_NextKeyValueGet(pstIter, &stPair) == YAML_ERR_ITER_END, "an iterator does not end", path);
    yaml_IteratorDestroy(pstIter);
}

// A path may go on from a key to the text of its value ("mode.fast"): that finds the value, which reads as no text.
void TextCheck(YamlHandle &stHandle, const std::string &path, const YamlListNode *pstValue)
{
    const char *pcText = ZRYAML_PropertyGet(&stHandle, "%s", path.c_str());
    const bool bValueNamed = pcText == nullptr && ZRYAML_LastErrorGet()->uiCode == YAML_ERR_EMPTY;
    Require(bValueNamed || pcText == ZRYAML_ValueTextGet(pstValue), "the text differs", path);
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
    Require((stDocument == nullptr) == (stError.uiCode != YAML_OK), "result and error record differ",
            stError.pcMessage);
    Require((stDocument == nullptr) == (stError.pcMessage[0] != '\0'), "a refusal has no message");
    return stDocument;
}

void DocumentCheck(YamlHandle &stHandle)
{
    const std::string fault = TreeCheck(stHandle);
    Require(fault.empty(), "the tree is broken", fault);
    Reader stReader(stHandle);
    stReader.Run();
    Require(stReader.Text() == TreeText(stHandle), "the walk differs from the tree", stReader.Text());
    DumpCheck(stHandle, stReader);
    YamlUnreadKey stUnread = {};
    if (yaml_IsDebugSwitchOpen() != 0 && stReader.AllByPath())
        Require(ZRYAML_UnreadKeyNext(&stHandle, &stUnread) == YAML_ERR_ITER_END, "a key that was read is not marked",
                stUnread.acPath);
}

void PathCheck(YamlHandle &stHandle, const std::string &path)
{
    const char *pcPath = path.c_str();
    const YamlListNode *pstValue = ZRYAML_PathFind(&stHandle, pcPath);
    const uint32_t uiCode = ZRYAML_LastErrorGet()->uiCode;
    Require((pstValue == nullptr) == (uiCode != YAML_OK), "result and error record of a lookup differ", path);
    const uint32_t uiType = ZRYAML_ValueTypeGet(pstValue);
    Require(ZRYAML_TypeGet(&stHandle, "%s", pcPath) == uiType, "the type differs", path);

    TextCheck(stHandle, path, pstValue);
    const uint32_t uiSize = ZRYAML_ArraySizeGet(&stHandle, "%s", pcPath);
    const uint32_t uiCount = uiType == YAML_DATATYPE_SEQ ? ZRYAML_ChildCountGet(pstValue) : 0;
    Require(uiSize == uiCount, "the size differs", path);

    uint32_t uiLine = 0;
    uint32_t uiColumn = 0;
    const uint32_t uiPlaced = ZRYAML_PositionGet(&stHandle, &uiLine, &uiColumn, "%s", pcPath);
    Require((uiPlaced == YAML_OK) == (pstValue != nullptr) && (uiLine != 0) == (pstValue != nullptr),
            "the place differs", path);
    if (pstValue != nullptr)
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

extern "C" {

uint32_t ZR_BaseInit(void)
{
    return 0;
}

void *ZR_HandleInit(const char *)
{
    static char cPool;
    return &cPool;
}

void *ZR_MemAlloc(uint32_t uiSize, void *)
{
    return malloc(uiSize);
}

void ZR_MemFree(void *pBlock, void *)
{
    free(pBlock);
}

void ZR_LogWrite(ZR_LogModule *, uint32_t, uint32_t, const char *, uint32_t, const char *, const char *, ...) {}

} // extern "C"
