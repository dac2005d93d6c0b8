// SPDX-License-Identifier: Apache-2.0
// PCRE2's own match limit counts anew for each place where a match may begin, and does not count characters that a
// repetition runs over. So every item of a pattern is compiled with a callout, which counts both.
#include "pattern.h"

#include <new>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace zryaml::schema {

namespace {

constexpr size_t LongestPattern = 16384;
constexpr uint32_t MostBacktracks = 1'000'000; // from one place
constexpr uint32_t MostHeapKib = 65536;
constexpr uint64_t StepsAlways = 100'000; // for any text, however short

// PCRE2 takes its memory where the rest of the library does.
void *BlockAlloc(size_t bytes, void *)
{
    return operator new(bytes, std::nothrow);
}

void BlockFree(void *block, void *)
{
    operator delete(block);
}

template <auto Free> struct FreeBy {
    template <class T> void operator()(T *object) const noexcept { Free(object); }
};
using GeneralContext = std::unique_ptr<pcre2_general_context_8, FreeBy<pcre2_general_context_free_8>>;
using CompileContext = std::unique_ptr<pcre2_compile_context_8, FreeBy<pcre2_compile_context_free_8>>;

template <class T> T *Allocated(T *object)
{
    if (object == nullptr)
        throw std::bad_alloc();
    return object;
}

GeneralContext GeneralContextMake()
{
    return GeneralContext(Allocated(pcre2_general_context_create_8(BlockAlloc, BlockFree, nullptr)));
}

struct Count {
    uint64_t stepsLeft;
    size_t lastPlace = 0;
};

int StepsTake(pcre2_callout_block_8 *block, void *data)
{
    Count &count = *static_cast<Count *>(data);
    const size_t place = block->current_position;
    const uint64_t steps = 1 + (place > count.lastPlace ? place - count.lastPlace : 0);
    count.lastPlace = place;
    if (steps > count.stepsLeft)
        return PCRE2_ERROR_MATCHLIMIT;
    count.stepsLeft -= steps;
    return 0;
}

// What PCRE2 has beyond the expressions that JSON Schema names would mean something else to other readers of a schema:
// recursion, conditions, verbs, and escapes such as \Z. Flags such as (?i) are let pass.
const char *ForeignFault(std::string_view text) noexcept
{
    bool inClass = false; // within brackets, where a parenthesis is one
    for (size_t at = 0; at + 1 < text.size(); ++at) {
        const std::string_view rest = text.substr(at);
        if (rest[0] == '\\') {
            constexpr std::string_view Letters = "bBcdDfknpPrsStuvwWx";
            const bool isLetter = (rest[1] >= 'a' && rest[1] <= 'z') || (rest[1] >= 'A' && rest[1] <= 'Z');
            if (isLetter && Letters.find(rest[1]) == std::string_view::npos)
                return "this escape is none of ECMA 262";
            ++at;
        } else if (inClass || rest[0] == '[') {
            inClass = rest[0] != ']';
        } else if (rest.starts_with("(*")) {
            return "nothing to repeat after '('";
        } else if (rest.starts_with("(?") && rest.size() > 2) {
            const bool isName = rest[2] == '<' && rest.size() > 3;
            if (!isName && std::string_view(":=!ims-").find(rest[2]) == std::string_view::npos)
                return "a group of this kind is none of ECMA 262";
        }
    }
    return nullptr;
}

} // namespace

MatchRoom::MatchRoom()
{
    const GeneralContext general = GeneralContextMake();
    data_.reset(Allocated(pcre2_match_data_create_8(1, general.get())));
    context_.reset(Allocated(pcre2_match_context_create_8(general.get())));
    (void)pcre2_set_match_limit_8(context_.get(), MostBacktracks);
    (void)pcre2_set_depth_limit_8(context_.get(), MostBacktracks);
    (void)pcre2_set_heap_limit_8(context_.get(), MostHeapKib);
}

void MatchRoom::DataFree::operator()(pcre2_real_match_data_8 *data) const noexcept
{
    pcre2_match_data_free_8(data);
}

void MatchRoom::ContextFree::operator()(pcre2_real_match_context_8 *context) const noexcept
{
    pcre2_match_context_free_8(context);
}

void Pattern::CodeFree::operator()(pcre2_real_code_8 *code) const noexcept
{
    pcre2_code_free_8(code);
}

std::unique_ptr<Pattern> Pattern::Compile(std::string_view text, std::string &fault)
{
    const char *foreign = text.size() > LongestPattern ? "it is longer than 16384 bytes" : ForeignFault(text);
    if (foreign != nullptr) {
        fault = foreign;
        return nullptr;
    }
    const GeneralContext general = GeneralContextMake();
    const CompileContext context(Allocated(pcre2_compile_context_create_8(general.get())));
    (void)pcre2_set_compile_extra_options_8(context.get(), PCRE2_EXTRA_ALT_BSUX);
    constexpr uint32_t Options = PCRE2_UTF | PCRE2_AUTO_CALLOUT | PCRE2_DOLLAR_ENDONLY | PCRE2_ALLOW_EMPTY_CLASS |
                                 PCRE2_MATCH_UNSET_BACKREF | PCRE2_NEVER_BACKSLASH_C | PCRE2_DUPNAMES;
    int error = 0;
    size_t offset = 0;
    CodePtr code(pcre2_compile_8(reinterpret_cast<PCRE2_SPTR8>(text.data()), text.size(), Options, &error, &offset,
                                 context.get()));
    if (code != nullptr)
        return std::unique_ptr<Pattern>(new Pattern(text, std::move(code)));
    if (error == PCRE2_ERROR_HEAP_FAILED)
        throw std::bad_alloc();
    PCRE2_UCHAR8 message[256] = {};
    (void)pcre2_get_error_message_8(error, message, sizeof(message));
    fault = reinterpret_cast<const char *>(message);
    fault += " (at character " + std::to_string(offset + 1) + ")";
    return nullptr;
}

Pattern::Answer Pattern::Find(std::string_view text, MatchRoom &room, uint64_t &stepsLeft) const
{
    const uint64_t most = std::min(stepsLeft, StepsAlways + StepsFor(text));
    Count count = {most};
    (void)pcre2_set_callout_8(room.context_.get(), StepsTake, &count);
    const int result = pcre2_match_8(code_.get(), reinterpret_cast<PCRE2_SPTR8>(text.data()), text.size(), 0, 0,
                                     room.data_.get(), room.context_.get());
    stepsLeft -= most - count.stepsLeft;
    switch (result) {
    case PCRE2_ERROR_NOMEMORY:
        throw std::bad_alloc();
    case PCRE2_ERROR_MATCHLIMIT:
    case PCRE2_ERROR_DEPTHLIMIT:
    case PCRE2_ERROR_HEAPLIMIT:
        return Answer::TooCostly;
    default:
        return result >= 0 ? Answer::Match : Answer::NoMatch; // a text that is no UTF-8 matches nothing
    }
}

} // namespace zryaml::schema
