// SPDX-License-Identifier: Apache-2.0
// Random documents, about half of them valid, read by the library and by the plain reference: the same tree or the same
// refusal. The numbers of the documents are the seeds, so that a failing one comes back. All are in flow style, as
// block style gives the same events.
#include "support/load_text.h"
#include "support/recording_base.h"
#include "support/reference_tree.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace {

class Generator {
public:
    explicit Generator(uint32_t uiSeed) : m_stRandom(uiSeed) {}

    std::string Document()
    {
        // Every third document keeps to what is allowed, as far as it can tell; the others slip now and then.
        m_uiSlip = Below(3) == 0 ? 0 : 1 + Below(60);
        if (Slip())
            m_text += Pick<const char *>({"", "# nothing\n", "scalar\n", "---\n", "%YAML 1.1\n--- "});
        Flow(0);
        m_text += "\n";
        if (Slip())
            m_text += Pick<const char *>({"---\n{}\n", "...\n", "...\n---\n", "}\n", "\ta\n", "- x: y: z\n"});
        return m_text;
    }

private:
    enum Kind : char { Scalar = 's', Map = 'm', Seq = 'q', MapSeq = 'M' };

    uint32_t Below(uint32_t uiLimit) { return static_cast<uint32_t>(m_stRandom() % uiLimit); }
    bool Slip() { return m_uiSlip != 0 && Below(1000) < m_uiSlip; }
    template <typename T, size_t N> T Pick(const T (&aChoices)[N]) { return aChoices[Below(N)]; }

    // Writes an anchor now and then; its name is "" for none.
    std::string Anchor()
    {
        if (Below(4) != 0)
            return "";
        const std::string name = Pick<const char *>({"a", "b", "c", "d", "e"});
        m_text += "&" + name + " ";
        return name;
    }

    void Finish(const std::string &name, Kind eKind)
    {
        if (!name.empty())
            m_finished[name] = eKind;
    }

    // Writes an alias of something finished, if there is something; for a merge of a map or of a sequence of maps.
    bool Alias(bool bMerge)
    {
        std::vector<std::string> names;
        for (const auto &[name, eKind] : m_finished) {
            if (!bMerge || eKind == Map || eKind == MapSeq || Slip())
                names.push_back(name);
        }
        if (names.empty() && !Slip())
            return false;
        m_text += "*" + (names.empty() || Slip() ? "e" : names[Below(static_cast<uint32_t>(names.size()))]);
        return true;
    }

    void ScalarWrite()
    {
        m_text += Pick<const char *>({"1", "x y", "''", "\"q\\\"\\\\\\n\"", "~", "'<<'", "\xC3\xA9", "z"});
        if (Slip())
            m_text += Pick<const char *>({"\"\\0\"", "@", "\xFF"});
    }

    // Writes a key that its map does not have yet, except by a slip. An alias as its value is no merge, except by a
    // slip.
    bool KeyWrite(std::set<std::string> &keys)
    {
        std::string key;
        do
            key = Pick<const char *>({"k", "l", "m", "n", "o", "p", "<<", "''", "\"q\"", "f3"});
        while (!keys.insert(key).second && keys.size() < 10 && !Slip());
        const std::string name = Anchor();
        m_text += key;
        Finish(name, Scalar);
        return key != "<<" || Slip();
    }

    // Writes "<<: *name", or nothing if there is nothing to merge; the text up to its value is given.
    bool MergeWrite(const std::set<std::string> &keys)
    {
        const std::string before = m_text;
        const auto finished = m_finished;
        if (keys.count("<<") != 0)
            return false;
        const std::string name = Anchor();
        m_text += "<<: ";
        if (!Alias(true)) {
            m_text = before;
            m_finished = finished;
            return false;
        }
        if (!name.empty())
            m_finished.erase(name);
        return true;
    }

    void Flow(uint32_t uiDepth)
    {
        const std::string name = Anchor();
        const uint32_t uiKind = uiDepth == 0 ? 1 + Below(2) : Below(uiDepth > 4 ? 1 : 4);
        Kind eKind = Scalar;
        if (uiKind == 1)
            eKind = FlowMap(uiDepth);
        else if (uiKind == 2)
            eKind = FlowSeq(uiDepth);
        else
            ScalarWrite();
        Finish(name, eKind);
    }

    void FlowOrAlias(uint32_t uiDepth, bool bAlias = true)
    {
        if (!bAlias || Below(4) != 0 || !Alias(false))
            Flow(uiDepth);
    }

    Kind FlowMap(uint32_t uiDepth)
    {
        std::set<std::string> keys;
        m_text += "{";
        uint32_t uiKeys = Below(5) + (uiDepth == 0 ? 3 : 0);
        if (Below(24) == 0) { // so many keys that they are searched in another way
            uiKeys = 2 + Below(8);
            keys.insert("f3");
            for (uint32_t ui = 0, uiEnd = 15 + Below(16); ui < uiEnd; ++ui)
                m_text += "f" + std::to_string(ui) + ": ,";
        }
        for (uint32_t ui = uiKeys; ui > 0; --ui) {
            if (Below(4) != 0 || !MergeWrite(keys)) {
                if (Slip())
                    m_text += Pick<const char *>({"[x]: 1, ", "{}: 1, ", "*a : 1, ", "? [] : 1, "});
                const bool bAlias = KeyWrite(keys);
                m_text += ": ";
                if (Below(8) != 0)
                    FlowOrAlias(uiDepth + 1, bAlias);
            }
            m_text += ui > 1 ? ", " : "";
        }
        m_text += "}";
        return Map;
    }

    Kind FlowSeq(uint32_t uiDepth)
    {
        const bool bMaps = Below(3) == 0; // something to merge
        m_text += "[";
        for (uint32_t ui = Below(4) + (uiDepth == 0 ? 3 : 0); ui > 0; --ui) {
            if (bMaps) {
                const std::string name = Anchor();
                Finish(name, FlowMap(uiDepth + 1));
            } else {
                FlowOrAlias(uiDepth + 1);
            }
            m_text += ui > 1 ? ", " : "";
        }
        m_text += "]";
        return bMaps ? MapSeq : Seq;
    }

    std::mt19937 m_stRandom;
    std::string m_text;
    std::map<std::string, Kind> m_finished;
    uint32_t m_uiSlip = 0; // in a thousand
};

uint32_t FirstErrorCode()
{
    for (const LogRecord &stRecord : Base().log) {
        if (stRecord.uiLevel == 2)
            return stRecord.uiCode;
    }
    return 0;
}

} // namespace

TEST(GeneratedDocument, ReadsLikeTheReference)
{
    constexpr uint32_t Documents = 20000;
    Base().Reset();
    Base().bKeepNotes = false;
    std::map<uint32_t, uint32_t> counts; // by code
    uint32_t uiDifferences = 0;
    uint32_t uiMerges = 0;
    for (uint32_t uiSeed = 0; uiSeed < Documents && uiDifferences < 3; ++uiSeed) {
        const std::string document = Generator(uiSeed).Document();
        const ReferenceResult stExpected = ReferenceLoad(document);
        ++counts[stExpected.uiCode];
        if (stExpected.uiCode == REFERENCE_TOO_LARGE)
            continue;
        if (stExpected.uiCode == 0 && document.find("<<: *") != std::string::npos)
            ++uiMerges;
        const std::string text = DocumentRead(document);
        const bool bSame = stExpected.uiCode == 0 ? text == stExpected.text
                                                  : text == Base().LogText() && FirstErrorCode() == stExpected.uiCode;
        EXPECT_TRUE(bSame) << "document " << uiSeed << ":\n"
                           << document << "read as " << text << "\nexpected " << std::hex << stExpected.uiCode << " "
                           << stExpected.text;
        uiDifferences += bSame ? 0 : 1;
    }
    Base().Reset();
    // The generator still reaches what it is for.
    EXPECT_GT(counts[0], Documents / 3);
    EXPECT_LT(counts[0], Documents / 6 * 5);
    EXPECT_GT(uiMerges, Documents / 10);
    EXPECT_LT(counts[REFERENCE_TOO_LARGE], Documents / 100);
    for (const uint32_t uiCode :
         {YAML_ERR_SAME, YAML_ERR_EVENT, YAML_ERR_READER, YAML_ERR_SCANNER, YAML_ERR_PARSE, YAML_ERR_ALIAS})
        EXPECT_GT(counts[uiCode], 20U) << std::hex << uiCode;
}
