// SPDX-License-Identifier: Apache-2.0
// Shapes that configuration files have. Each is a map that grows by entries until it has the size that is wanted.
#include <array>
#include <random>

#include "documents.h"
#include "text.h"

namespace zryaml::bench {

namespace {

constexpr std::array WordList = {
    "gateway", "worker", "cache",  "ledger",  "payment", "region", "north", "south", "primary", "replica",
    "queue",   "router", "client", "session", "metrics", "backup", "index", "shard", "storage", "monitor",
};

// A fixed sequence of words and numbers, the same in each run.
class Source {
public:
    uint32_t Number(uint32_t limit) { return static_cast<uint32_t>(m_engine() % limit); }
    const char *Word() { return WordList[Number(WordList.size())]; }

    std::string Words(uint32_t count)
    {
        std::string text = Word();
        while (--count > 0)
            text += std::string(" ") + Word();
        return text;
    }

private:
    std::minstd_rand m_engine{20261};
};

// A service as it is written for a scheduler: block and folded texts, quoted texts, short sequences.
std::string ServiceEntry(Source &source, uint32_t entry)
{
    std::string text = Printed("service_%u:\n  image: team/%s:%u.%u\n  description: |\n", entry, source.Word(),
                               source.Number(9), source.Number(90));
    for (uint32_t i = 0; i < 6; ++i)
        text += "    The " + source.Words(11) + ".\n";
    text += "  command: >-\n    run --name " + source.Words(8) + "\n    --with " + source.Words(9) + "\n";
    text += "  notice: \"" + source.Words(24) + "\\n" + source.Words(12) + "\"\n";
    text += Printed("  ports: [%u, %u]\n  environment:\n", 1024 + source.Number(60000), 1024 + source.Number(60000));
    for (uint32_t i = 0; i < 4; ++i)
        text += Printed("    %s_URL_%u: 'tcp://%s.%s.example:%u'\n", source.Word(), i, source.Word(), source.Word(),
                        source.Number(60000));
    return text;
}

// A sequence of records, as users, hosts or rules are written.
std::string RecordEntry(Source &source, uint32_t entry)
{
    std::string text = Printed("%s_%u:\n", source.Word(), entry);
    for (uint32_t i = 0; i < 8; ++i) {
        text += Printed("  - name: %s-%u\n    address: 10.%u.%u.%u\n    role: %s\n", source.Word(), i,
                        source.Number(255), source.Number(255), source.Number(255), source.Word());
        text += Printed("    weight: %u\n    enabled: true\n    tags: [%s, %s]\n", source.Number(100), source.Word(),
                        source.Word());
    }
    return text;
}

// Maps in maps, twelve deep, with two more keys at each level.
std::string DeepEntry(Source &source, uint32_t entry)
{
    std::string text = Printed("tree_%u:\n", entry);
    for (uint32_t i = 1; i <= 12; ++i) {
        const std::string indent(size_t{i} * 2, ' ');
        text += indent + "limit: " + std::to_string(source.Number(1000)) + "\n";
        text += indent + "owner: " + source.Word() + "\n";
        text += indent + source.Word() + "_" + std::to_string(i) + ":\n";
    }
    return text + std::string(26, ' ') + "leaf: " + source.Word() + "\n";
}

// Switches and numbers, in block maps and in flow sequences.
std::string ShortEntry(Source &source, uint32_t entry)
{
    std::string text = Printed("g%u:\n", entry);
    for (uint32_t i = 0; i < 10; ++i)
        text += Printed("  k%u: %u\n", i, source.Number(100));
    text += "  row: [";
    for (uint32_t i = 0; i < 16; ++i)
        text += Printed("%s%u", i == 0 ? "" : ", ", source.Number(1000));
    return text + "]\n";
}

struct Shape {
    const char *name;
    std::string (*make)(Source &source, uint32_t entry);
};
constexpr std::array Shapes = {
    Shape{"long texts", ServiceEntry},
    Shape{"sequences of maps", RecordEntry},
    Shape{"deep maps", DeepEntry},
    Shape{"short scalars", ShortEntry},
};

struct Size {
    const char *name;
    size_t bytes;
};
constexpr std::array Sizes = {
    Size{"3 kB", 2500},
    Size{"30 kB", 30000},
    Size{"300 kB", 300000},
    Size{"1 MB", 1000000},
};

} // namespace

std::vector<Document> ShapesWrite(const std::string &folder)
{
    std::vector<Document> documents;
    for (const Shape &shape : Shapes) {
        for (const Size &size : Sizes) {
            Source source;
            std::string text;
            for (uint32_t entry = 0; text.size() < size.bytes; ++entry)
                text += shape.make(source, entry);
            documents.push_back(DocumentWrite(folder, Printed("%s, %s", shape.name, size.name), text));
        }
    }
    return documents;
}

} // namespace zryaml::bench
