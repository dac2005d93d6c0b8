// SPDX-License-Identifier: Apache-2.0
// Shapes that configuration files have. Each is a map that grows by entries until it has the size that is wanted.
#include <array>
#include <random>

#include "documents.h"
#include "text.h"

namespace zryaml::bench {

namespace {

constexpr std::array g_apcWord = {
    "gateway", "worker", "cache",  "ledger",  "payment", "region", "north", "south", "primary", "replica",
    "queue",   "router", "client", "session", "metrics", "backup", "index", "shard", "storage", "monitor",
};

// A fixed sequence of words and numbers, the same in each run.
class Source {
public:
    uint32_t Number(uint32_t uiLimit) { return static_cast<uint32_t>(m_stEngine() % uiLimit); }
    const char *Word() { return g_apcWord[Number(g_apcWord.size())]; }

    std::string Words(uint32_t uiCount)
    {
        std::string text = Word();
        while (--uiCount > 0)
            text += std::string(" ") + Word();
        return text;
    }

private:
    std::minstd_rand m_stEngine{20261};
};

// A service as it is written for a scheduler: block and folded texts, quoted texts, short lists.
std::string ServiceEntry(Source &stSource, uint32_t uiEntry)
{
    std::string text = Printed("service_%u:\n  image: team/%s:%u.%u\n  description: |\n", uiEntry, stSource.Word(),
                               stSource.Number(9), stSource.Number(90));
    for (uint32_t ui = 0; ui < 6; ++ui)
        text += "    The " + stSource.Words(11) + ".\n";
    text += "  command: >-\n    run --name " + stSource.Words(8) + "\n    --with " + stSource.Words(9) + "\n";
    text += "  notice: \"" + stSource.Words(24) + "\\n" + stSource.Words(12) + "\"\n";
    text +=
        Printed("  ports: [%u, %u]\n  environment:\n", 1024 + stSource.Number(60000), 1024 + stSource.Number(60000));
    for (uint32_t ui = 0; ui < 4; ++ui)
        text += Printed("    %s_URL_%u: 'tcp://%s.%s.example:%u'\n", stSource.Word(), ui, stSource.Word(),
                        stSource.Word(), stSource.Number(60000));
    return text;
}

// A list of records, as users, hosts or rules are written.
std::string RecordEntry(Source &stSource, uint32_t uiEntry)
{
    std::string text = Printed("%s_%u:\n", stSource.Word(), uiEntry);
    for (uint32_t ui = 0; ui < 8; ++ui) {
        text += Printed("  - name: %s-%u\n    address: 10.%u.%u.%u\n    role: %s\n", stSource.Word(), ui,
                        stSource.Number(255), stSource.Number(255), stSource.Number(255), stSource.Word());
        text += Printed("    weight: %u\n    enabled: true\n    tags: [%s, %s]\n", stSource.Number(100),
                        stSource.Word(), stSource.Word());
    }
    return text;
}

// Maps in maps, twelve deep, with two more keys at each level.
std::string DeepEntry(Source &stSource, uint32_t uiEntry)
{
    std::string text = Printed("tree_%u:\n", uiEntry);
    for (uint32_t ui = 1; ui <= 12; ++ui) {
        const std::string indent(size_t{ui} * 2, ' ');
        text += indent + "limit: " + std::to_string(stSource.Number(1000)) + "\n";
        text += indent + "owner: " + stSource.Word() + "\n";
        text += indent + stSource.Word() + "_" + std::to_string(ui) + ":\n";
    }
    return text + std::string(26, ' ') + "leaf: " + stSource.Word() + "\n";
}

// Switches and numbers, in block maps and in flow lists.
std::string ShortEntry(Source &stSource, uint32_t uiEntry)
{
    std::string text = Printed("g%u:\n", uiEntry);
    for (uint32_t ui = 0; ui < 10; ++ui)
        text += Printed("  k%u: %u\n", ui, stSource.Number(100));
    text += "  row: [";
    for (uint32_t ui = 0; ui < 16; ++ui)
        text += Printed("%s%u", ui == 0 ? "" : ", ", stSource.Number(1000));
    return text + "]\n";
}

struct Shape {
    const char *pcName;
    std::string (*pfnEntry)(Source &stSource, uint32_t uiEntry);
};
constexpr std::array g_astShape = {
    Shape{"long texts", ServiceEntry},
    Shape{"lists of maps", RecordEntry},
    Shape{"deep maps", DeepEntry},
    Shape{"short scalars", ShortEntry},
};

struct Size {
    const char *pcName;
    size_t ulBytes;
};
constexpr std::array g_astSize = {
    Size{"2 kB", 2000},
    Size{"30 kB", 30000},
    Size{"300 kB", 300000},
    Size{"1 MB", 1000000},
};

} // namespace

std::vector<Document> ShapesWrite(const std::string &folder)
{
    std::vector<Document> documents;
    for (const Shape &stShape : g_astShape) {
        for (const Size &stSize : g_astSize) {
            Source stSource;
            std::string text;
            for (uint32_t uiEntry = 0; text.size() < stSize.ulBytes; ++uiEntry)
                text += stShape.pfnEntry(stSource, uiEntry);
            documents.push_back(DocumentWrite(folder, Printed("%s, %s", stShape.pcName, stSize.pcName), text));
        }
    }
    return documents;
}

} // namespace zryaml::bench
