// SPDX-License-Identifier: Apache-2.0
// Random documents, read by the library and by the plain reference: the same tree or the same refusal. The numbers of
// the documents are the seeds, so that a failing one comes back. All are in flow style, as block style gives the same
// events. And all short key paths: the same value, in whatever way they are read.
#include "support/load_text.h"
#include "support/reading_check.h"
#include "support/reference_tree.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

namespace {

// A capital letter stands for one of its texts: a document, a value, its anchor, a scalar, a map, a sequence, keys, a
// merge, and so many keys that they are searched in another way. Below the anchors "a" to "d" there always is
// something.
const std::map<char, std::vector<std::string>> g_rules = {
    {'D',
     {"[&a T, &b {k: T, l: [T]}, &c [{m: T, k: 2}, {n: 3}], &d {<<: *b , l: 3}, V, V, V, V]",
      "{x: &a T, u: &b {k: 1, m: {}}, v: &c [{m: [T]}, {k: 3}], w: &d {<<: *b , k: T}, K, y: V, G, z: V}"}},
    {'V', {"T", "&a T", "&e T", "M", "AM", "AM", "S", "&e S", "AT", "*a ", "*b ", "*c ", "*d "}},
    {'A', {"&b ", "&c ", "&d ", "&e "}},
    {'T', {"1", "x y", "''", "\"q\\\"\\\\\\\n\"", "~", "'<<'", "\xC3\xA9", "z"}},
    {'M', {"{}", "{K}", "{G, K}", "{K, G}", "{G, o: V, K}", "{K, G, p: V, G}", "{F, G, K}", "{F, k: V, G, l: V}"}},
    {'S', {"[]", "[V]", "[V, V]", "[M, M]", "[V, *a , V]"}},
    {'K', {"k: V", "l: V, k: V", "&a m: V, l: V, k: V", "'': V, m: ", "\"q\": V, k: V, l: V", "<<: T, k: V"}},
    {'G', {"<<: *b ", "<<: *b ", "<<: *b ", "<<: *c ", "<<: *d ", "<<: *d ", "&e <<: *b ", "A<<: *b "}},
    {'F', {"f0: , f1: , f2: , f3: , f4: , f5: , f6: , f7: , f8: , f9: , fa: , fb: , fc: , fd: , fe: , ff: V, k1: V"}}};

class Generator {
public:
    explicit Generator(uint32_t uiSeed) : m_stRandom(uiSeed) {}

    // Every other document has something else in the place of one character.
    std::string Document()
    {
        std::string text = Expanded('D', 0);
        if (Below(2) == 0)
            text.replace(Below(text.size()), 1,
                         Pick({"{", "}", "[", "]", ", ", "k: ", "<<: ", "*a ", "*e : ", "&b ", "x ", "\n--- ",
                               "\n...\n", "%YAML 1.1\n--- ", "\"\\0\"", "@", "\xFF"}));
        return text + "\n";
    }

private:
    size_t Below(size_t ulLimit) { return m_stRandom() % ulLimit; }
    std::string Pick(const std::vector<std::string> &choices) { return choices[Below(choices.size())]; }

    std::string Expanded(char cSymbol, uint32_t uiDepth)
    {
        std::string text;
        for (const char cChar : Pick(g_rules.at(cSymbol == 'V' && uiDepth > 6 ? 'T' : cSymbol))) {
            if (g_rules.contains(cChar))
                text += Expanded(cChar, uiDepth + 1);
            else
                text += cChar;
        }
        return text;
    }

    std::mt19937 m_stRandom;
};

} // namespace

TEST(GeneratedDocument, ReadsLikeTheReference)
{
    constexpr uint32_t Documents = 8000;
    std::map<uint32_t, uint32_t> counts; // by code
    uint32_t uiMerges = 0;
    for (uint32_t uiSeed = 0; uiSeed < Documents && !HasFailure(); ++uiSeed) {
        const std::string document = Generator(uiSeed).Document();
        const ReferenceResult stExpected = ReferenceLoad(document);
        SCOPED_TRACE("document " + std::to_string(uiSeed) + ":\n" + document + "must be " + stExpected.text);
        Base().Reset();
        YamlHandle *pstHandle = TextLoad(document);
        EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, stExpected.uiCode);
        ++counts[stExpected.uiCode];
        if (pstHandle == nullptr)
            continue;
        EXPECT_EQ(TreeText(*pstHandle), stExpected.text);
        uiMerges += document.find("<<: *") != document.npos ? 1U : 0U;
        DocumentCheck(*pstHandle);
        ZRYAML_HandleFree(pstHandle);
        EXPECT_EQ(Base().lBlocks, 0);
    }
    Base().Reset();
    // The generator still reaches what it is for.
    EXPECT_GT(counts[0], Documents / 3);
    EXPECT_GT(uiMerges, Documents / 10);
    for (const uint32_t uiCode :
         {YAML_ERR_SAME, YAML_ERR_EVENT, YAML_ERR_READER, YAML_ERR_SCANNER, YAML_ERR_PARSE, YAML_ERR_ALIAS})
        EXPECT_GT(counts[uiCode], 20U) << std::hex << uiCode;
}

TEST(GeneratedPath, MeansTheSameInEveryReading)
{
    constexpr std::string_view svLetters = "{ab.[]}\\0";
    YamlHandle *pstHandle = TextLoad("{a: {a: x, b: [p, [q]]}, b: [{a: 1}], a.b: {'a[0]': 2}, '': {'': 4}, ']': 5, "
                                     "'{': 6, 'a{b': 7, '{}': 8, 'a]': 9, 'b\\': {0: c}}");
    for (size_t ulPath = 0; ulPath < 59049; ++ulPath) { // up to five letters
        std::string path;
        for (size_t ul = ulPath; ul > 0; ul /= svLetters.size())
            path += svLetters[ul % svLetters.size()];
        Base().Reset();
        PathCheck(*pstHandle, path);
    }
    ZRYAML_HandleFree(pstHandle);
    Base().Reset();
}
