// SPDX-License-Identifier: Apache-2.0
// "Did you mean": keeps, of the names that are offered, the one that is clearly nearest to a text.
#pragma once

#include <cstdint>
#include <string_view>

namespace zryaml {

class NearestText {
public:
    explicit NearestText(std::string_view text) noexcept;

    // A name that might have been meant; its text must outlive the search and end with a NUL.
    void Offer(std::string_view name) noexcept;
    // The name that is nearest and has no equal; NULL if there is none.
    [[nodiscard]] const char *Best() const noexcept { return tied_ ? nullptr : best_; }

private:
    std::string_view text_;
    const char *best_ = nullptr;
    uint32_t distance_; // of the best so far; at first one more than what is still near
    bool tied_ = false;
};

} // namespace zryaml
