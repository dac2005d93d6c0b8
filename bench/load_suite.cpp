// SPDX-License-Identifier: Apache-2.0
// Loading and releasing: the library and one peer at a time take turns over the same file.
#include "peer.h"
#include "suite.h"

namespace zryaml::bench {

namespace {

Contestant LoadOf(const Peer &peer, const Document &document)
{
    return {Repeated([load = peer.load, path = document.path] { load(path.c_str()); })};
}

void LoadAdd(const std::string &suite, const Document &document, const Peer &peer)
{
    PairAdd(suite + "/" + document.name + "/" + peer.name, LoadOf(Library, document), LoadOf(peer, document));
}

const Suite added([](const Setting &setting) {
    for (const Document &document : setting.files) {
        for (const Peer &peer : {EventLoop, DocumentTree, Fyaml, YamlCpp})
            LoadAdd("load", document, peer);
    }
    for (const Document &document : HardWrite(setting.folder))
        LoadAdd("load hard", document, EventLoop);
});

} // namespace

} // namespace zryaml::bench
