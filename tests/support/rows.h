// SPDX-License-Identifier: Apache-2.0
// The rows of a table as arguments of a call, several on a line; in braces each would have a line of its own.
#pragma once

#include <vector>

template <class Row, class... More> std::vector<Row> Rows(const Row &stFirst, const More &...stMore)
{
    return {stFirst, stMore...};
}
