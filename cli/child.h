// SPDX-License-Identifier: Apache-2.0
// A program that a command runs, and the signals that end both.
#pragma once

#include <string>
#include <vector>

namespace zryaml::cli {

// SIGINT and SIGTERM as a descriptor that is readable once one has come, instead of what they usually do.
class EndSignals {
public:
    // Throws a Failure if the system has no descriptor.
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals &) = delete;
    EndSignals &operator=(const EndSignals &) = delete;

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

private:
    int descriptor_;
};

// Runs a program with its arguments and waits for it; a signal that ends us ends it. The answer is "" if it ended with
// status 0, else what happened.
[[nodiscard]] std::string child_run(const std::vector<std::string> &command, const EndSignals &signals);

} // namespace zryaml::cli
