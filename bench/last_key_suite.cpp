// SPDX-License-Identifier: Apache-2.0
// The last key of maps that grow, against the last of ten.
#include <benchmark/benchmark.h>
#include <stdexcept>

#include "measure.h"
#include "suite.h"
#include "text.h"

namespace zryaml::bench {

namespace {

Contestant LastKeyOf(uint32_t count)
{
    const auto Read = [document = HandleOf(FlatMapText(count, "")), last = count - 1] {
        benchmark::DoNotOptimize(ZRYAML_PropertyGet(document.get(), "key_%06u", last));
    };
    return {Repeated(Read)};
}

const Suite added([](const Setting &) {
    for (const uint32_t count : {100U, 10000U, 1000000U})
        PairAdd(Printed("last key/of %u/of ten", count), LastKeyOf(count), LastKeyOf(10));
});

} // namespace

} // namespace zryaml::bench
