// SPDX-License-Identifier: Apache-2.0
// The commands about a whole document: dump and stats.
#include "document.h"
#include "output.h"
#include "walk.h"

#include <algorithm>

namespace zryaml::cli {

namespace {

constexpr uint32_t DumpSizeFirst = 64 * 1024;
constexpr uint32_t DumpSizeLast = INT32_MAX; // the library counts what it wrote in 31 bits

class EmptyFinder : public Visitor { // the first map or sequence that has no children
public:
    void Begin(const YamlChild &stChild) override
    {
        const bool bCollection = stChild.uiType == YAML_DATATYPE_MAP || stChild.uiType == YAML_DATATYPE_SEQ;
        YamlChild stFirst = {};
        if (m_pstFound == nullptr && bCollection && ZRYAML_ChildNextGet(stChild.pstValue, &stFirst) != YAML_OK)
            m_pstFound = stChild.pstValue;
    }
    void End(uint32_t) override {}
    [[nodiscard]] const YamlListNode *Found() const noexcept { return m_pstFound; }

private:
    const YamlListNode *m_pstFound = nullptr;
};

Failure DumpFailure(const Document &stDocument, const Options &stOptions)
{
    Diagnostic stDiagnostic;
    stDiagnostic.stFile = stOptions.stFile;
    stDiagnostic.stMessage = ZRYAML_LastErrorGet()->pcMessage;
    stDiagnostic.uiCode = ZRYAML_LastErrorGet()->uiCode;
    if (stDiagnostic.uiCode == YAML_ERR_EMPTY) {
        EmptyFinder stFinder;
        ValueWalk(*stDocument.Top(), stFinder);
        stDiagnostic.stMessage = "an empty map or sequence cannot be dumped";
        stDiagnostic.stHint = "zryaml json shows it";
        if (stFinder.Found() != nullptr) {
            stDiagnostic.stPath = PathOf(*stFinder.Found());
            ZRYAML_ValuePositionGet(stFinder.Found(), &stDiagnostic.uiLine, &stDiagnostic.uiColumn);
        }
    }
    return {Status::Missing, std::move(stDiagnostic)};
}

class Counter : public Visitor {
public:
    void Begin(const YamlChild &stChild) override
    {
        ++m_aulValues[std::min(stChild.uiType, YAML_DATATYPE_NONE)];
        m_ulKeys += stChild.pcKey != nullptr ? 1 : 0;
        if (stChild.uiType == YAML_DATATYPE_MAP || stChild.uiType == YAML_DATATYPE_SEQ)
            m_ulDeepest = std::max(m_ulDeepest, ++m_ulOpen);
    }
    void End(uint32_t) override { --m_ulOpen; }

    [[nodiscard]] uint64_t Values(uint32_t uiType) const noexcept { return m_aulValues[uiType]; }
    [[nodiscard]] uint64_t Keys() const noexcept { return m_ulKeys; }
    [[nodiscard]] uint64_t Deepest() const noexcept { return m_ulDeepest; }

private:
    uint64_t m_aulValues[YAML_DATATYPE_NONE + 1] = {};
    uint64_t m_ulKeys = 0;
    uint64_t m_ulOpen = 0;
    uint64_t m_ulDeepest = 0;
};

void StatisticWrite(const char *pcName, uint64_t ulValue)
{
    OutputItem(std::string(pcName) + ": " + std::to_string(ulValue), false);
}

} // namespace

Status DumpRun(const Options &stOptions)
{
    const Document stDocument(stOptions.stFile);
    std::string stText;
    uint32_t uiSize = DumpSizeFirst;
    for (;;) {
        stText.resize(uiSize);
        if (ZRYAML_ContextDump(stDocument.Handle(), uiSize, stText.data()) == YAML_OK)
            break;
        if (ZRYAML_LastErrorGet()->uiCode != YAML_ERR_BUF || uiSize == DumpSizeLast)
            throw DumpFailure(stDocument, stOptions);
        uiSize = uiSize > DumpSizeLast / 2 ? DumpSizeLast : uiSize * 2;
    }
    OutputItem(stText.c_str(), false);
    return Status::Found;
}

Status StatsRun(const Options &stOptions)
{
    ZRYAML_DebugSwitchSet(1); // before the load, which is what is measured
    const Document stDocument(stOptions.stFile);
    YamlDebugInfo stInfo = {};
    (void)ZRYAML_DebugInfoGet(stDocument.Handle(), &stInfo); // cannot fail: both are there and the switch is on
    Counter stCounter;
    if (stDocument.Top() != nullptr)
        ValueWalk(*stDocument.Top(), stCounter);
    StatisticWrite("parse_time_ms", stInfo.uiParseTime);
    StatisticWrite("memory_bytes", stInfo.uiMemSize);
    StatisticWrite("maps", stCounter.Values(YAML_DATATYPE_MAP));
    StatisticWrite("sequences", stCounter.Values(YAML_DATATYPE_SEQ));
    StatisticWrite("scalars", stCounter.Values(YAML_DATATYPE_SCALAR));
    StatisticWrite("keys", stCounter.Keys());
    StatisticWrite("depth", stCounter.Deepest());
    return Status::Found;
}

} // namespace zryaml::cli
