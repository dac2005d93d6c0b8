// SPDX-License-Identifier: Apache-2.0
// What one item costs where all are gone through, in a document of 100,000 items against one of 1,000: near 1 if the
// time is in step with the size. Nodes of large documents do not fit the processor's caches, so an item may cost more.
#include <cstring>
#include <stdexcept>

#include "measure.h"
#include "suite.h"

namespace zryaml::bench {

namespace {

constexpr uint32_t Small = 1000;
constexpr uint32_t Large = 100000;

void Check(bool right, const char *what)
{
    if (!right)
        throw std::runtime_error(std::string(what) + " did not go through all items");
}

Contestant IteratorSteps(const HandlePtr &document, uint32_t count)
{
    const auto Walk = [document, count] {
        YamlIterator *iterator = yaml_IteratorCreate(document.get(), "all");
        YamlKeyValue pair = {};
        uint32_t pairs = 0;
        while (yaml_NextKeyValueGet(iterator, &pair) == YAML_OK)
            ++pairs;
        yaml_IteratorDestroy(iterator);
        Check(pairs == count, "the iterator");
    };
    return {Repeated(Walk), static_cast<double>(count)};
}

Contestant Elements(const HandlePtr &document, uint32_t count)
{
    const auto Ask = [document, count] {
        Check(ZRYAML_ArraySizeGet(document.get(), "list") == count, "ZRYAML_ArraySizeGet");
    };
    return {Repeated(Ask), static_cast<double>(count)};
}

Contestant DumpBytes(const HandlePtr &document, uint32_t count)
{
    const auto buffer = std::make_shared<std::vector<char>>(size_t{count} * 64 + 1024);
    const auto Write = [document, buffer] {
        const auto size = static_cast<uint32_t>(buffer->size());
        Check(ZRYAML_ContextDump(document.get(), size, buffer->data()) == YAML_OK, "ZRYAML_ContextDump");
    };
    Write();
    return {Repeated(Write), static_cast<double>(strlen(buffer->data()))};
}

const Suite added([](const Setting &) {
    const HandlePtr small = HandleOf(MapAndSequenceText(Small));
    const HandlePtr large = HandleOf(MapAndSequenceText(Large));
    PairAdd("walk/iterator, a step/small document", IteratorSteps(large, Large), IteratorSteps(small, Small));
    PairAdd("walk/ZRYAML_ArraySizeGet, an element/small document", Elements(large, Large), Elements(small, Small));
    PairAdd("walk/ZRYAML_ContextDump, a byte/small document", DumpBytes(large, Large), DumpBytes(small, Small));
});

} // namespace

} // namespace zryaml::bench
