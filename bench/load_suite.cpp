// SPDX-License-Identifier: Apache-2.0
// Loading and releasing: the library and one peer at a time take turns over the same file.
#include <stdexcept>

#include "measure.h"
#include "peers.h"
#include "suite.h"

namespace zryaml::bench {

namespace {

constexpr double WorstTarget = 1.15; // against the event loop; that of the geometric mean is in the report
constexpr double HardTarget = 1.3;
constexpr double LoaderTarget = 1;

Contestant ContestantOf(const Loader &stLoader, const Document &stDocument)
{
    return {stLoader.pcName, Repeated([pfnLoad = stLoader.pfnLoad, path = stDocument.path] { pfnLoad(path.c_str()); })};
}

void PairAdd(Kind eKind, const Document &stDocument, const Loader &stPeer, double dTarget, Budget stBudget)
{
    MeasureAdd({eKind,
                stDocument.name,
                {ContestantOf(LibraryLoader(), stDocument), ContestantOf(stPeer, stDocument)},
                dTarget},
               stBudget.uiRepeats, stBudget.dSeconds);
}

} // namespace

HandlePtr HandleOf(const std::string &text)
{
    HandlePtr stHandle(ZRYAML_TextLoad(text.data(), text.size(), "bench"), ZRYAML_HandleFree);
    if (stHandle == nullptr)
        throw std::runtime_error(std::string("can not load a text: ") + ZRYAML_LastErrorGet()->pcMessage);
    return stHandle;
}

void LoadMeasuresAdd(const std::vector<Document> &documents, Budget stLoopBudget, Budget stLoaderBudget)
{
    for (const Document &stDocument : documents) {
        PairAdd(Kind::Load, stDocument, EventLoopLoader(), WorstTarget, stLoopBudget);
        for (const Loader &stPeer : {DocumentLoader(), FyamlLoader(), YamlCppLoader()})
            PairAdd(Kind::Load, stDocument, stPeer, LoaderTarget, stLoaderBudget);
    }
}

void HardMeasuresAdd(const std::vector<Document> &documents, Budget stBudget)
{
    for (const Document &stDocument : documents)
        PairAdd(Kind::Hard, stDocument, EventLoopLoader(), HardTarget, stBudget);
}

} // namespace zryaml::bench
