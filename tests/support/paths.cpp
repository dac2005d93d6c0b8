// SPDX-License-Identifier: Apache-2.0
// Looks paths up and compares what comes of them.
#include "paths.h"

#include <cstring>

#include <gtest/gtest.h>

Document::Document(const char *pcText) : m_lBlocks(Base().lBlocks), m_pstHandle(TextFileLoad(pcText))
{
    EXPECT_NE(m_pstHandle, nullptr) << pcText;
    Base().Reset();
}

Document::~Document()
{
    ZRYAML_HandleFree(m_pstHandle);
    EXPECT_EQ(Base().lBlocks, m_lBlocks);
    Base().Reset();
}

static YamlListNode *Find(YamlHandle *pstHandle, std::string path, uint32_t *puiIndexed)
{
    return yaml_NodeFind(pstHandle, path.data(), static_cast<uint32_t>(path.size() + 1), puiIndexed);
}

YamlListNode *NodeAt(YamlHandle *pstHandle, const char *pcPath)
{
    uint32_t uiIndexed = 0;
    return Find(pstHandle, pcPath, &uiIndexed);
}

static std::string LookupOutcome(YamlHandle *pstHandle, const char *pcPath)
{
    Base().Reset();
    constexpr uint32_t Unset = 7;
    uint32_t uiIndexed = Unset;
    const YamlListNode *pstNode = Find(pstHandle, pcPath, &uiIndexed);
    EXPECT_EQ(Base().ulAllocations, 0U);
    std::string outcome = uiIndexed == Unset ? "kept " : uiIndexed != 0 ? "#" : pstNode != nullptr ? "=" : "";
    if (pstNode != nullptr && pstNode->uiDataType == YAML_DATATYPE_SCALAR)
        outcome += pstNode->pcValue;
    else if (pstNode != nullptr)
        outcome += pstNode->uiDataType == YAML_DATATYPE_SEQ ? "[]" : "{}";
    return outcome + Base().LogText();
}

void PathsCheck(const Document &stDocument, std::span<const PathCase> astCases)
{
    for (const PathCase &stCase : astCases) {
        for (const char *pcPath : stCase.apcPath) {
            if (pcPath == nullptr)
                break;
            std::string outcome = stCase.pcOutcome;
            const size_t ulMark = outcome.find('~');
            if (ulMark != std::string::npos)
                outcome.replace(ulMark, 1, strrchr(pcPath, '[') + 1);
            EXPECT_EQ(LookupOutcome(stDocument, pcPath), outcome) << pcPath;
        }
    }
}
