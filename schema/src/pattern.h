// SPDX-License-Identifier: Apache-2.0
// Regular expressions as JSON Schema means them, matched by PCRE2 within limits: whatever the pattern and the text, a
// match ends soon, with an answer or with "too costly".
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct pcre2_real_code_8;
struct pcre2_real_match_data_8;
struct pcre2_real_match_context_8;

namespace zryaml::schema {

// What matching needs besides the pattern; one for each thread that matches.
class MatchRoom {
public:
    MatchRoom();

private:
    friend class Pattern;
    struct DataFree {
        void operator()(pcre2_real_match_data_8 *data) const noexcept;
    };
    struct ContextFree {
        void operator()(pcre2_real_match_context_8 *context) const noexcept;
    };
    std::unique_ptr<pcre2_real_match_data_8, DataFree> data_;
    std::unique_ptr<pcre2_real_match_context_8, ContextFree> context_;
};

// A pattern, compiled once; any number of threads may match with it.
class Pattern {
public:
    enum class Answer { Match, NoMatch, TooCostly };

    // Compiles; null if the text is no regular expression, and then the fault says why.
    static std::unique_ptr<Pattern> Compile(std::string_view text, std::string &fault);

    // What a match of a text may cost: enough for a few passes over it.
    static uint64_t StepsFor(std::string_view text) noexcept { return text.size() * 20; }
    // Looks for the pattern anywhere in the text. The steps that it took are taken off stepsLeft.
    Answer Find(std::string_view text, MatchRoom &room, uint64_t &stepsLeft) const;
    [[nodiscard]] const std::string &Text() const noexcept { return text_; }

private:
    struct CodeFree {
        void operator()(pcre2_real_code_8 *code) const noexcept;
    };
    using CodePtr = std::unique_ptr<pcre2_real_code_8, CodeFree>;

    Pattern(std::string_view text, CodePtr code) : text_(text), code_(std::move(code)) {}

    std::string text_;
    CodePtr code_;
};

} // namespace zryaml::schema
