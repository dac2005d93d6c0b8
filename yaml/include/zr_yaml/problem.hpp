// SPDX-License-Identifier: Apache-2.0
/// @file
/// What is wrong with a document, each problem at its place: the list of zr_yaml_problem.h for C++.
#ifndef ZR_YAML_PROBLEM_HPP
#define ZR_YAML_PROBLEM_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <zr_yaml/result.hpp>
#include <zr_yaml_problem.h>

namespace zryaml {

/// How much a problem weighs.
enum class Level : std::uint32_t {
    error = YAML_PROBLEM_ERROR,     ///< the document cannot be used
    warning = YAML_PROBLEM_WARNING, ///< it can, but probably does not say what was meant
    note = YAML_PROBLEM_NOTE,       ///< worth knowing
};

/// One problem. Owns its texts.
struct Problem {
    Level level = Level::error;     ///< how much it weighs
    std::uint32_t code = YAML_OK;   ///< YAML_ERR_*
    std::uint32_t line = 0;         ///< from 1; 0 where there is no place
    std::uint32_t column = 0;       ///< in characters, from 1
    std::uint32_t first_line = 0;   ///< a second place in the same source, else 0
    std::uint32_t first_column = 0; ///< as above
    std::string source;             ///< file or name of what the place lies in
    std::string path;               ///< key path of the value; "" for the document
    std::string message;            ///< one plain sentence
    std::string hint;               ///< the way out; may be empty

    /// @return One line, `file:3:11: error: servers[0].port: '80a' is not an integer`, '?' for control characters.
    [[nodiscard]] std::string what() const
    {
        static constexpr const char *names[] = {": error: ", ": warning: ", ": note: "};
        std::string text = source.empty() ? "configuration" : source;
        if (line != 0)
            text += ':' + std::to_string(line) + ':' + std::to_string(column);
        text += names[static_cast<std::uint32_t>(level) % 3] + (path.empty() ? "" : path + ": ") + message;
        for (char &character : text) {
            if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F)
                character = '?';
        }
        return text;
    }
};

/// All problems of a document, in document order: a range of Problem, and the error of a Result.
class Problems {
public:
    /// None.
    Problems() = default;
    /// One.
    explicit Problems(Problem problem) { list_.push_back(std::move(problem)); }
    /// Copies of those of a list of the C interface, which stays the caller's; NULL: none.
    explicit Problems(const YamlProblems *list)
    {
        const std::uint32_t count = ZRYAML_ProblemCountGet(list);
        list_.reserve(count);
        for (std::uint32_t index = 0; index < count; ++index) {
            const YamlProblem &from = *ZRYAML_ProblemGet(list, index);
            list_.push_back({static_cast<Level>(from.uiLevel), from.uiCode, from.uiLine, from.uiColumn,
                             from.uiFirstLine, from.uiFirstColumn, from.pcSource, from.pcPath, from.pcMessage,
                             from.pcHint});
        }
    }

    /// The first problem.
    [[nodiscard]] auto begin() const noexcept { return list_.begin(); }
    /// The end.
    [[nodiscard]] auto end() const noexcept { return list_.end(); }
    /// @return How many there are.
    [[nodiscard]] std::size_t size() const noexcept { return list_.size(); }
    /// @return Whether there are none.
    [[nodiscard]] bool empty() const noexcept { return list_.empty(); }
    /// @return Problem number `index`, which must be less than size().
    [[nodiscard]] const Problem &operator[](std::size_t index) const noexcept { return list_[index]; }
    /// Adds a problem.
    void add(Problem problem) { list_.push_back(std::move(problem)); }

    /// @return All of them, a line each, hints and second places as notes, as ZRYAML_ProblemsPrint prints them.
    [[nodiscard]] std::string what() const
    {
        std::string text;
        for (const Problem &problem : list_) {
            text += problem.what() + '\n';
            if (!problem.hint.empty())
                text += note(problem, problem.hint, problem.line, problem.column);
            if (problem.first_line != 0)
                text += note(problem, problem.code == YAML_ERR_SAME ? "the first one is here" : "it is written here",
                             problem.first_line, problem.first_column);
        }
        return text;
    }

private:
    static std::string note(Problem problem, std::string message, std::uint32_t line, std::uint32_t column)
    {
        problem.level = Level::note;
        problem.path.clear();
        problem.message = std::move(message);
        problem.line = line;
        problem.column = column;
        return problem.what() + '\n';
    }

    std::vector<Problem> list_;
};

} // namespace zryaml

#endif
