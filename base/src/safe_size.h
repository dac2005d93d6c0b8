// SPDX-License-Identifier: Apache-2.0
//
// The largest size that the bounds-checked calls take.

#ifndef ZR_SAFE_SIZE_H
#define ZR_SAFE_SIZE_H

#include <cstddef>
#include <cstdint>

namespace zr {

constexpr size_t SafeSizeMax = SIZE_MAX / 2; // a larger one is a miscomputed negative number

} // namespace zr

#endif // ZR_SAFE_SIZE_H
