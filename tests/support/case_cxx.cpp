// SPDX-License-Identifier: Apache-2.0
// Operations of the C++ face.
#include "case_file.h"
#include "case_operations.h"
#include "cxx_check.h"
#include "short_memory.h"

#include <span>
#include <sstream>

namespace {

using std::string;
using zryaml::Value;

template <class T> string Shown(const zryaml::Result<T> &stResult)
{
    if (!stResult.has_value())
        return Printable(stResult.error().what());
    if constexpr (zryaml::detail::Scalar<T>::readable) {
        char acText[64];
        (void)ZRYAML_ScalarWrite(&zryaml::detail::Scalar<T>::type, &*stResult, sizeof(acText), acText);
        return acText;
    } else
        return testing::PrintToString(*stResult);
}

// What a read gives, and the default if that stands in for it.
template <class T> string Read(const Value &stValue)
{
    const string seen = Shown(stValue.get<T>()), other = Shown(stValue.get_or(T{}));
    return seen + (other != seen ? " or " + other : "") + "\n";
}

template <class T> string As(YamlHandle *, const string &text)
{
    const auto stDocument = zryaml::Document::parse("[\"" + text + "\"]").or_throw();
    Base().Reset(); // the load has taken memory
    return Read<T>(stDocument[0]);
}

// The value at a path with words as arguments, at most two; "#1" is a number.
template <class... Arguments>
Value Found(const Value &stRoot, const string &path, std::span<const string> words, const Arguments &...arguments)
{
    if constexpr (sizeof...(arguments) < 2) {
        if (!words.empty() && words[0].starts_with('#'))
            return Found(stRoot, path, words.subspan(1), arguments..., std::stoi(words[0].substr(1)));
        if (!words.empty())
            return Found(stRoot, path, words.subspan(1), arguments..., words[0]);
    }
    return stRoot.at(path, arguments...);
}

// Each allocation on the way to the answer fails once, and the exception leaves nothing behind.
template <class T> string At(YamlHandle *pstHandle, const string &argument)
{
    std::istringstream stream(argument);
    std::vector<string> words;
    for (string word; stream >> word;)
        words.push_back(word == "\"\"" ? "" : Unescaped(word));
    for (size_t ulNews = 0;; ++ulNews) {
        try {
            const ShortMemory stShort(ulNews);
            return Read<T>(Found(Value(pstHandle), words.at(0), std::span(words).subspan(1))) + Base().LogText();
        } catch (const std::bad_alloc &) {
        }
    }
}

string Texts(YamlHandle *pstHandle, const string &)
{
    int32_t iRest = INT32_MAX;
    return TextsRead(Value(pstHandle), Value(pstHandle), iRest);
}

} // namespace

const std::map<string, Operation> g_cxxOperations = {
    {"ushort", {As<unsigned short>, Operation::Paths}},
    {"int", {As<int64_t>, Operation::Paths}},
    {"uint", {As<uint64_t>, Operation::Paths}},
    {"bool", {As<bool>, Operation::Paths}},
    {"double", {As<double>, Operation::Paths}},
    {"days", {As<std::chrono::days>, Operation::Paths}},
    {"seconds", {As<std::chrono::duration<unsigned long long>>, Operation::Paths}},
    {"picoseconds", {As<std::chrono::duration<int, std::pico>>, Operation::Paths}},
    {"bytes", {As<zryaml::Bytes>, Operation::Paths}},
    {"at", {At<string>, Operation::Document}},
    {"lists_at", {At<std::vector<std::vector<float>>>, Operation::Document}},
    {"texts", {Texts, Operation::Document}},
};
