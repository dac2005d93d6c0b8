// SPDX-License-Identifier: Apache-2.0
// Runs the files of cases/; cases/README.md describes their form and the operations.
#include "support/case_file.h"
#include "support/case_operations.h"
#include "support/reading_check.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using std::string;

struct Fault {
    size_t ulLine;
    string text;
};

struct SwitchOff { // for as long as it lives, so that nothing counts as read
    SwitchOff() { ZRYAML_DebugSwitchSet(0); }
    ~SwitchOff() { ZRYAML_DebugSwitchSet(uiSwitch); }
    SwitchOff(const SwitchOff &) = delete;
    SwitchOff &operator=(const SwitchOff &) = delete;
    const uint32_t uiSwitch = yaml_IsDebugSwitchOpen();
};

class Runner {
public:
    Runner()
    {
        for (const auto *pOperations : {&g_loadOperations, &g_readOperations, &g_cxxOperations})
            m_operations.insert(pOperations->begin(), pOperations->end());
        ZRYAML_LimitsGet(&m_stDefault);
    }
    ~Runner()
    {
        ZRYAML_HandleFree(m_pstHandle);
        ZRYAML_DebugSwitchSet(0);
        (void)ZRYAML_LimitsSet(&m_stDefault);
    }
    Runner(const Runner &) = delete;
    Runner &operator=(const Runner &) = delete;

    std::vector<Fault> Run(const CaseBlock &stBlock)
    {
        for (const CaseStep &stStep : stBlock) {
            Base().Reset();
            try {
                StepRun(stStep);
            } catch (const std::exception &stFault) {
                m_faults.push_back({stStep.ulLine, stFault.what()});
            }
        }
        if (!m_bCompared && m_faults.empty())
            m_faults.push_back({stBlock[0].ulLine, "there is no case"});
        return m_faults;
    }

private:
    void StepRun(const CaseStep &stStep)
    {
        const auto itOperation = m_operations.find(stStep.operation);
        const bool bSetting = itOperation == m_operations.end();
        Require(bSetting != stStep.bExpects, "an operation lacks its outcome, or there is none", stStep.operation);
        if (bSetting)
            return Require(Set(stStep.operation, Unescaped(stStep.argument)), "cannot be set", Base().LogText());
        const Operation &stOperation = itOperation->second;
        if (stOperation.eTakes == Operation::Text)
            return Compare(stOperation, stStep, Unescaped(stStep.argument));
        Require(m_pstHandle != nullptr, "there is no document");
        if (stOperation.eTakes != Operation::Paths)
            return Compare(stOperation, stStep, stStep.argument);
        Require(!stStep.argument.empty(), "there is no path");
        std::istringstream words(stStep.argument);
        for (string word; words >> word;)
            Compare(stOperation, stStep, word == "\"\"" ? "" : Unescaped(word));
    }

    bool Set(const string &name, const string &argument)
    {
        std::istringstream words(argument);
        Base().bKeepNotes = false;
        if (name == "doc")
            return DocumentSet(argument);
        if (name == "switch") {
            uint32_t uiSwitch = 0;
            words >> uiSwitch;
            ZRYAML_DebugSwitchSet(uiSwitch);
            return !words.fail();
        }
        if (name == "limits") {
            YamlLimits stLimits = m_stDefault;
            words >> stLimits.uiDepth >> stLimits.uiDirectives >> stLimits.ulFileBytes >> stLimits.ulCopyBytes;
            return ZRYAML_LimitsSet(argument.empty() ? &m_stDefault : &stLimits) == YAML_OK;
        }
        return name == "damage" && m_pstHandle != nullptr && NodeDamage(*m_pstHandle, argument);
    }

    bool DocumentSet(const string &text)
    {
        ZRYAML_HandleFree(std::exchange(m_pstHandle, nullptr));
        Require(Base().lBlocks == 0, "the last document has left blocks");
        m_pstHandle = TextLoad(text);
        if (m_pstHandle == nullptr || !Base().log.empty())
            return false;
        const SwitchOff stOff;
        DocumentCheck(*m_pstHandle);
        return true;
    }

    void Compare(const Operation &stOperation, const CaseStep &stStep, const string &argument)
    {
        const int64_t lBlocks = Base().lBlocks;
        const bool bPath = stOperation.eTakes == Operation::Paths;
        m_bCompared = true;
        Base().Reset();
        const string seen = stOperation.pfnRun(m_pstHandle, argument);
        string expected;
        for (const string &line : stStep.expected)
            expected += line + "\n";
        if (bPath)
            expected = Replaced(expected, "$", Printable(argument.substr(argument.rfind('[') + 1)));
        const string call = stStep.operation + " " + Printable(argument).substr(0, 200);
        Require(seen == expected, (call + "\nexpected:\n" + expected + "seen:\n" + seen).c_str());
        Require(Base().lBlocks == lBlocks, "blocks are left by", call);
        Require(!bPath || Base().ulAllocations <= (stStep.operation == "iterate" ? 1 : 0), "memory was taken by", call);
        const SwitchOff stOff;
        if (bPath && TreeCheck(*m_pstHandle).empty())
            PathCheck(*m_pstHandle, argument);
    }

    std::map<string, Operation> m_operations;
    YamlHandle *m_pstHandle = nullptr;
    bool m_bCompared = false;
    YamlLimits m_stDefault = YAML_LIMITS_INIT;
    std::vector<Fault> m_faults;
};

class Case : public Recorded { // one block of a file
public:
    Case(string path, CaseText text) : m_path(std::move(path)), m_text(std::move(text)) {}
    void TestBody() override
    {
        for (const Fault &stFault : Runner().Run(CaseRead(m_text)))
            ADD_FAILURE_AT(m_path.c_str(), static_cast<int>(stFault.ulLine)) << stFault.text;
    }

private:
    string m_path;
    CaseText m_text;
};

// Each block is a test named after its file and line, such as Cases_merge.line12.
[[maybe_unused]] const bool g_bRegistered = [] {
    std::vector<std::filesystem::path> files(std::filesystem::directory_iterator(ZRYAML_TEST_CASES), {});
    std::erase_if(files, [](const auto &stFile) { return stFile.extension() != ".txt"; });
    std::ranges::sort(files);
    for (const std::filesystem::path &stFile : files) {
        std::ostringstream text;
        text << std::ifstream(stFile).rdbuf();
        for (const CaseText &stCase : CaseFileSplit(text.str()))
            testing::RegisterTest(("Cases_" + stFile.stem().string()).c_str(),
                                  ("line" + std::to_string(stCase.ulLine)).c_str(), nullptr, nullptr, stFile.c_str(),
                                  static_cast<int>(stCase.ulLine),
                                  [=]() -> Recorded * { return new Case(stFile, stCase); });
    }
    return !files.empty();
}();

std::vector<Fault> FaultsOf(const string &text)
{
    return Runner().Run(CaseRead(CaseFileSplit(text).back()));
}

} // namespace

TEST(CaseRunner, FindsFaults)
{
    const string good = "let ONE =$\n\ndoc\n| a: \\(2 x#)\n| b:\n|   c: 1\nget a => ONE(x0x1)\nget b.c => =1\n";
    EXPECT_TRUE(FaultsOf(good).empty());
    for (const char *pcWrong : {"load a: 1", "load a: 1 =>", "load a: 1 => {a:2}", "load\n| a: 1\n  {a:2}",
                                "get a => =2", "get a b => =x0x1", "get a\n  =x0x1\n  more", "call Nothing a => x",
                                "unknown a => x", "switch on", "limits 513 1 1 1", "doc a: b: c", "damage badly a",
                                "get => =x0x1", "unknown a", "switch 1 => ok", "\ndoc a: 1\n", "\nget a => =1"}) {
        const std::vector<Fault> faults = FaultsOf(good + pcWrong);
        EXPECT_TRUE(faults.size() == 1 && faults[0].ulLine == (*pcWrong == '\n' ? 10 : 9)) << pcWrong;
    }
    Base().Reset();
}
