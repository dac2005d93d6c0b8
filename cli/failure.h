// SPDX-License-Identifier: Apache-2.0
// What is told about a mistake, and the exception that carries it out of a command.
#pragma once

#include "command.h"

#include <cstdint>
#include <exception>
#include <utility>
#include <vector>
#include <zr_yaml.hpp>
#include <zr_yaml_problem.h>

namespace zryaml::cli {

struct Diagnostic {
    bool names_value = false;                 // the message says which value it is about
    std::uint32_t level = YAML_PROBLEM_ERROR; // YAML_PROBLEM_*
    std::uint32_t code = 0;
    std::string file; // as documents are named; "" where the mistake is in no file
    std::string message;
    std::string hint;       // may be empty
    std::string path;       // key path, may be empty
    std::string record;     // how the library's log tells it; may be empty
    std::uint32_t line = 0; // 1-based; 0 where there is no place
    std::uint32_t column = 0;
    std::uint32_t first_line = 0; // of a repeated key: the place of the first one; of a copy: its anchor
    std::uint32_t first_column = 0;
};

class Failure : public std::exception {
public:
    Failure(Status status, std::vector<Diagnostic> diagnostics) : status_(status), diagnostics_(std::move(diagnostics))
    {}
    Failure(Status status, Diagnostic diagnostic) : status_(status) { diagnostics_.push_back(std::move(diagnostic)); }

    [[nodiscard]] const char *what() const noexcept override { return diagnostics_.front().message.c_str(); }
    [[nodiscard]] Status exit_status() const noexcept { return status_; }
    [[nodiscard]] const std::vector<Diagnostic> &diagnostics() const noexcept { return diagnostics_; }

private:
    Status status_;
    std::vector<Diagnostic> diagnostics_; // at least one
};

[[nodiscard]] Diagnostic diagnostic_of(const Error &error);
// What a list of problems holds; releases the list.
[[nodiscard]] std::vector<Diagnostic> diagnostics_take(YamlProblems *problems);

// Whether an error is about the writing of a key path.
[[nodiscard]] bool is_malformed(const Error &error) noexcept;

// The failure that an error of a read means.
[[nodiscard]] Failure failure_of(const Error &error);

// What a result holds; throws the failure of its error.
template <class T> [[nodiscard]] T required(Result<T> result)
{
    if (!result.has_value())
        throw failure_of(result.error());
    return std::move(result).value();
}

} // namespace zryaml::cli
