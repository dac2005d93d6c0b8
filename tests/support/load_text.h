// SPDX-License-Identifier: Apache-2.0
// Loading with everything that a test wants to know of it in one text.
#pragma once

#include "recording_base.h"
#include "tree_check.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

// What a refused load logs last.
#define PARSE_FAILED "2 1900000f Parse file failed.\n"

// Writes a text to a new file of its own; the file goes with the object.
class TempFile {
public:
    explicit TempFile(const std::string &text);
    ~TempFile();
    TempFile(const TempFile &) = delete;
    TempFile &operator=(const TempFile &) = delete;
    [[nodiscard]] const char *Path() const { return m_path.c_str(); }

private:
    std::string m_path;
};

// Loads a text by the name of "doc"; the caller frees the document.
YamlHandle *TextLoad(const std::string &text);

// Loads and releases a document. The tree as fnWrite gives it, by default TreeText, then the log as
// RecordingBase::LogText gives it; of a refused load, the log alone. A fault that TreeCheck finds, a block or a file
// that is left is said in front.
std::string LoadRead(
    const std::function<YamlHandle *()> &fnLoad,
    const std::function<std::string(const YamlHandle &)> &fnWrite = [](const YamlHandle &st) { return TreeText(st); });

// The same for a text, which is written to a file first.
std::string DocumentRead(const std::string &document);

// A test that begins with an empty record, and leaves the switch off and nothing in use.
struct Recorded : testing::Test {
    Recorded() { Base().Reset(); }
    ~Recorded() override
    {
        ZRYAML_DebugSwitchSet(0);
        EXPECT_EQ(Base().lBlocks, 0);
        Base().Reset();
    }
};
