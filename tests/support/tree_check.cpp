// SPDX-License-Identifier: Apache-2.0
// The check follows the links by itself, without the library's own walk, so that it does not share its faults.
#include "tree_check.h"

#include <cstdio>
#include <cstdlib>
#include <set>
#include <string_view>
#include <unistd.h>

void ScalarWrite(const char *pcText, std::string &text)
{
    char acEscape[8];
    text += '"';
    for (; *pcText != '\0'; ++pcText) {
        const auto ucChar = static_cast<unsigned char>(*pcText);
        if (ucChar < 0x20 || *pcText == '"' || *pcText == '\\') {
            snprintf(acEscape, sizeof(acEscape), "\\%02x", ucChar);
            text += acEscape;
        } else {
            text += *pcText;
        }
    }
    text += '"';
}

namespace {

#define NODE_FROM(pstLink, member) \
    reinterpret_cast<const YamlListNode *>(reinterpret_cast<const char *>(pstLink) - offsetof(YamlListNode, member))

class Checker {
public:
    std::string Run(const YamlHandle &stHandle)
    {
        const YamlList *pstHead = &stHandle.stRoot.stAllocLink;
        for (const YamlList *pst = pstHead->next; pst != pstHead; pst = pst->next) {
            if (pst->next->prev != pst || pst->prev->next != pst)
                return "all-nodes list is broken";
            if (!m_allocated.insert(NODE_FROM(pst, stAllocLink)).second)
                return "all-nodes list holds a node twice";
        }
        if (stHandle.uiEventDepth != 0 || stHandle.auiEventStack[0] != 0)
            return "a collection is open";
        if (stHandle.stAnchorList.next != &stHandle.stAnchorList ||
            stHandle.stOpenAnchorList.next != &stHandle.stOpenAnchorList)
            return "an anchor is left";
        if (stHandle.stRoot.pstFather != nullptr || stHandle.stRoot.pcValue != nullptr)
            return "the root has a father or a text";
        return ChildrenCheck(stHandle.stRoot, 0);
    }

private:
    std::string ChildrenCheck(const YamlListNode &stFather, uint32_t uiDepth)
    {
        const bool bSeq = stFather.uiDataType == YAML_DATATYPE_SEQ || stFather.uiNextLevelType == YAML_DATATYPE_SEQ;
        std::set<std::string_view> keys;
        uint32_t uiCount = 0;
        const YamlList *pstHead = &stFather.stChildList;
        for (const YamlList *pst = pstHead->next; pst != pstHead; pst = pst->next) {
            const YamlListNode &stNode = bSeq ? *NODE_FROM(pst, stSeqLink) : *NODE_FROM(pst, stChildLink);
            if (pst->next->prev != pst || pst->prev->next != pst)
                return "a list of children is broken";
            if (m_allocated.count(&stNode) == 0 || stNode.uiMagic != YAML_NODE_MAGIC)
                return "a child is no node of the document";
            if (!m_seen.insert(&stNode).second)
                return "a node hangs in two places";
            const YamlList &stOther = bSeq ? stNode.stChildLink : stNode.stSeqLink;
            if (stOther.next != &stOther || stOther.prev != &stOther)
                return "a node hangs by both links";
            if (stNode.pstFather != &stFather)
                return "a child names another father";
            std::string fault = NodeCheck(stFather, stNode, uiDepth, uiCount++);
            if (!fault.empty())
                return fault;
            if (stFather.uiDataType == YAML_DATATYPE_MAP && stFather.pstFather != nullptr &&
                stNode.uiSameWithAnchor == 0 && !keys.insert(stNode.pcValue).second)
                return std::string("a map has two keys ") + stNode.pcValue;
        }
        if (uiCount == 0 && stFather.uiNextLevelType != YAML_DATATYPE_NONE && stFather.uiSameWithAnchor == 0)
            return "a node without children has a type for them";
        return "";
    }

    std::string NodeCheck(const YamlListNode &stFather, const YamlListNode &stNode, uint32_t uiDepth, uint32_t uiAt)
    {
        const bool bRoot = stFather.pstFather == nullptr && m_allocated.count(&stFather) == 0;
        const bool bKey = !bRoot && stFather.uiDataType == YAML_DATATYPE_MAP;
        const bool bScalar = stNode.uiDataType == YAML_DATATYPE_SCALAR;
        if (stNode.uiDataType > YAML_DATATYPE_SCALAR || bScalar != (stNode.pcValue != nullptr))
            return "a node's type and text do not fit";
        if (bKey && !bScalar)
            return "a key is no scalar";
        if (stFather.uiDataType == YAML_DATATYPE_SEQ && stNode.uPlace.uiNumber != uiAt)
            return "an element has the wrong number";
        if (uiAt == 0 && stFather.uiNextLevelType != stNode.uiDataType)
            return "the first child has not fixed the type below its father";
        if (uiAt > 0 && (bRoot || stFather.uiDataType == YAML_DATATYPE_SCALAR))
            return "a key or the root has two children";
        if (bKey && stNode.uiSameWithAnchor == 1)
            return stNode.stChildList.next == &stNode.stChildList ? "" : "a marked key has children";
        const bool bEmpty = stNode.stChildList.next == &stNode.stChildList;
        if (bKey && bEmpty)
            return "a key has no value";
        if (!bKey && bScalar && (!bEmpty || stNode.uiNextLevelType != YAML_DATATYPE_NONE))
            return "a value or element has something below";
        if (stNode.uiSameWithAnchor != 0 && !bKey)
            return "what is no key is marked";
        const uint32_t uiBelow = uiDepth + (bScalar ? 0 : 1);
        if (uiBelow > YAML_EVENT_STACK_SIZE)
            return "the tree is too deep";
        return ChildrenCheck(stNode, uiBelow);
    }

    std::set<const YamlListNode *> m_allocated;
    std::set<const YamlListNode *> m_seen;
};

void ValueWrite(const YamlListNode &stNode, bool bFlags, std::string &text)
{
    const char *pcSeparator = "", *pcCopy = bFlags && stNode.uiFromAlias == 1 ? "*" : "";
    if (stNode.uiDataType == YAML_DATATYPE_SCALAR) {
        ScalarWrite(stNode.pcValue, text);
        text += pcCopy;
        return;
    }
    const bool bSeq = stNode.uiDataType == YAML_DATATYPE_SEQ;
    text += bSeq ? "[" : "{";
    for (const YamlList *pst = stNode.stChildList.next; pst != &stNode.stChildList; pst = pst->next) {
        const YamlListNode &stChild = bSeq ? *NODE_FROM(pst, stSeqLink) : *NODE_FROM(pst, stChildLink);
        const bool bMarked = stChild.uiSameWithAnchor == 1;
        if (bMarked && !bFlags)
            continue;
        text += pcSeparator;
        pcSeparator = ",";
        if (bSeq) {
            ValueWrite(stChild, bFlags, text);
            continue;
        }
        ScalarWrite(stChild.pcValue, text);
        text += bFlags && stChild.uiFromAlias == 1 ? "*" : "";
        text += bMarked ? "!" : ":";
        const YamlList *pstValue = stChild.stChildList.next;
        if (!bMarked)
            ValueWrite(stChild.uiNextLevelType == YAML_DATATYPE_SEQ ? *NODE_FROM(pstValue, stSeqLink)
                                                                    : *NODE_FROM(pstValue, stChildLink),
                       bFlags, text);
    }
    text += bSeq ? "]" : "}";
    text += pcCopy;
}

} // namespace

std::string TreeCheck(const YamlHandle &stHandle)
{
    return Checker().Run(stHandle);
}

std::string TreeText(const YamlHandle &stHandle, bool bFlags)
{
    std::string text;
    const YamlList &stTop = stHandle.stRoot.stChildList;
    if (stTop.next == &stTop)
        return text;
    ValueWrite(stHandle.stRoot.uiDataType == YAML_DATATYPE_MAP ? *NODE_FROM(stTop.next, stChildLink)
                                                               : *NODE_FROM(stTop.next, stSeqLink),
               bFlags, text);
    return text;
}

TempFile::TempFile(const std::string &text)
{
    char acPath[] = "/tmp/zryaml-test-XXXXXX";
    const int iFile = mkstemp(acPath);
    m_path = acPath;
    FILE *pstFile = fdopen(iFile, "w");
    if (pstFile == nullptr || fwrite(text.data(), 1, text.size(), pstFile) != text.size() || fclose(pstFile) != 0)
        abort();
}

TempFile::~TempFile()
{
    unlink(m_path.c_str());
}

YamlHandle *TextFileLoad(const std::string &text)
{
    const TempFile stFile(text);
    return ZRYAML_FileLoad(stFile.Path());
}
