// SPDX-License-Identifier: Apache-2.0
// How values and kinds are named in a sentence.
#include "finding.h"

#include <array>

namespace zryaml::schema {

namespace {

constexpr size_t LongestText = 60;
constexpr size_t LongestList = 200;

// Cuts between characters.
std::string Cut(std::string_view text)
{
    if (text.size() <= LongestText)
        return std::string(text);
    size_t length = LongestText;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    return std::string(text.substr(0, length)) + "...";
}

struct KindPhrase {
    uint32_t kinds;
    std::string_view phrase;
};
constexpr std::array KindPhrases = {
    KindPhrase{KindMap, "a map"},       KindPhrase{KindSequence, "a sequence"}, KindPhrase{KindString, "a string"},
    KindPhrase{KindNumber, "a number"}, KindPhrase{KindInt, "an integer"},      KindPhrase{KindFloat, "a number"},
    KindPhrase{KindBool, "a boolean"},  KindPhrase{KindNull, "null"},
};

} // namespace

std::string Shown(const Value &value)
{
    switch (value.kind) {
    case KindMap:
        return "a map";
    case KindSequence:
        return "a sequence";
    case KindNull:
        return "null";
    default: // a string that would read as something else, or as more than one, is set off
        if (value.kind == KindString && (PlainKind(value.text) != KindString || value.text.find_first_of(", '") == 0 ||
                                         value.text.find(',') != std::string_view::npos))
            return Quoted(value.text);
        return Cut(value.text);
    }
}

std::string Quoted(std::string_view text)
{
    return "'" + Cut(text) + "'";
}

std::string ShownList(const std::vector<Value> &values)
{
    std::string list;
    for (const Value &value : values) {
        if (list.size() > LongestList)
            return list + ", ...";
        list += (list.empty() ? "" : ", ") + Shown(value);
    }
    return list;
}

std::string ShownKinds(uint32_t kinds)
{
    std::vector<std::string_view> phrases;
    for (const KindPhrase &entry : KindPhrases) {
        if ((kinds & entry.kinds) == entry.kinds) {
            phrases.push_back(entry.phrase);
            kinds &= ~entry.kinds;
        }
    }
    std::string text;
    for (size_t at = 0; at < phrases.size(); ++at) {
        if (at > 0)
            text += at + 1 < phrases.size() ? ", " : " or ";
        text += phrases[at];
    }
    return text;
}

} // namespace zryaml::schema
