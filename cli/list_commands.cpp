// SPDX-License-Identifier: Apache-2.0
// The commands that list what stands below a value: list (pairs of key and text) and keys (key paths). A listed line
// never holds more than it should: what would break or divide it is written as an escape; NUL-terminated output is
// exact.
#include "document.h"
#include "output.h"
#include "text.h"
#include "walk.h"

namespace zryaml::cli {

namespace {

const YamlListNode &CollectionFind(const Document &stDocument, const Options &stOptions)
{
    const YamlListNode &stValue = stDocument.Find(stOptions.stPath);
    if (ZRYAML_ValueTypeGet(&stValue) == YAML_DATATYPE_SCALAR)
        throw stDocument.Unfit(stValue, YAML_ERR_NODE_TYPE, "the value is a scalar, which has nothing below it");
    return stValue;
}

// The pair that a child gives: of a map the child itself, of a sequence the first key of an element that is a map.
// False if it gives none, because that is no scalar.
bool PairGet(const YamlChild &stChild, YamlChild &stPair)
{
    stPair = stChild;
    if (stChild.pcKey == nullptr &&
        (stChild.uiType != YAML_DATATYPE_MAP || ZRYAML_ChildGet(stChild.pstValue, 0, &stPair) != YAML_OK))
        return false;
    return stPair.uiType == YAML_DATATYPE_SCALAR;
}

// One field of a pair's line: printf '%b' gives the text back.
std::string FieldText(std::string_view svText)
{
    std::string stField;
    for (const char cChar : svText) {
        switch (cChar) {
        case '\\':
            stField += "\\\\";
            break;
        case '\n':
            stField += "\\n";
            break;
        case '\r':
            stField += "\\r";
            break;
        case '\t':
            stField += "\\t";
            break;
        default:
            stField += cChar;
        }
    }
    return stField;
}

void PairWrite(const YamlChild &stPair, bool bNull)
{
    const char *pcText = ZRYAML_ValueTextGet(stPair.pstValue);
    if (bNull) {
        OutputItem(stPair.pcKey, true);
        OutputItem(pcText, true);
    } else {
        OutputItem(FieldText(stPair.pcKey) + '\t' + FieldText(pcText), false);
    }
}

void PathWrite(const std::string &stPath, bool bNull)
{
    OutputItem(bNull ? stPath : VisibleText(stPath), bNull);
}

class PathLister : public Visitor { // writes the path of every value below the first
public:
    PathLister(std::string stPath, bool bNull) : m_stPath(std::move(stPath)), m_bNull(bNull) {}

    void Begin(const YamlChild &stChild) override
    {
        const bool bTop = stChild.pstEntry == nullptr;
        std::string stPath = bTop ? m_stPath : ChildPath(m_astOpen.back(), stChild);
        if (!bTop)
            PathWrite(stPath, m_bNull);
        if (stChild.uiType == YAML_DATATYPE_MAP || stChild.uiType == YAML_DATATYPE_SEQ)
            m_astOpen.push_back(std::move(stPath));
    }
    void End(uint32_t) override { m_astOpen.pop_back(); }

private:
    std::string m_stPath;
    std::vector<std::string> m_astOpen; // paths of the open collections
    bool m_bNull;
};

} // namespace

Status ListRun(const Options &stOptions)
{
    const Document stDocument(stOptions.stFile);
    const YamlListNode &stValue = CollectionFind(stDocument, stOptions);
    YamlChild stChild = {};
    YamlChild stPair = {};
    while (ZRYAML_ChildNextGet(&stValue, &stChild) == YAML_OK) {
        if (PairGet(stChild, stPair))
            PairWrite(stPair, stOptions.bNull);
    }
    return Status::Found;
}

Status KeysRun(const Options &stOptions)
{
    const Document stDocument(stOptions.stFile);
    const YamlListNode &stValue = CollectionFind(stDocument, stOptions);
    const std::string stPath = PathOf(stValue);
    if (stOptions.bRecursive) {
        PathLister stLister(stPath, stOptions.bNull);
        ValueWalk(stValue, stLister);
        return Status::Found;
    }
    YamlChild stChild = {};
    while (ZRYAML_ChildNextGet(&stValue, &stChild) == YAML_OK)
        PathWrite(ChildPath(stPath, stChild), stOptions.bNull);
    return Status::Found;
}

} // namespace zryaml::cli
