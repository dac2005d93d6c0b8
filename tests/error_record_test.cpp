// SPDX-License-Identifier: Apache-2.0
// The error record: for a broken document it names the place where the person went wrong; for a failed read it tells
// absent from wrong and names path, document and place.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstring>
#include <gtest/gtest.h>
#include <thread>

using namespace std::string_literals;

namespace {

struct BrokenCase {
    int iLine;
    std::string text;
    uint32_t uiCode, uiLine, uiColumn;
    const char *pcHint; // a part of it
};
const BrokenCase g_astBroken[] = {
    {__LINE__, "a:\n\tb: 1\n", YAML_ERR_SCANNER, 2, 1, "a tab cannot stand here"},
    {__LINE__, "a:\n  - x\n\t- y\n", YAML_ERR_SCANNER, 3, 1, "a tab cannot stand here"},
    {__LINE__, "a: 1\nport:8080\nb: 2\n", YAML_ERR_SCANNER, 2, 5, "a space is missing after this ':'"},
    {__LINE__, "port:8080\nb: 2\n", YAML_ERR_EVENT, 1, 1, "is a space missing after a ':'"},
    {__LINE__, "a: 1\nnonsense\nb: 2\n", YAML_ERR_SCANNER, 2, 1, "neither 'key: value' nor '- item'"},
    {__LINE__, "a: b: c\n", YAML_ERR_SCANNER, 1, 5, "a second ': ' in one value"},
    {__LINE__, "- nginx:1.21\n- m: b: c\n", YAML_ERR_SCANNER, 2, 7, "a second ': ' in one value"},
    {__LINE__, "a: 1\nk\xC3\xA9\xC3\xA9:foo\nb: 2\n", YAML_ERR_SCANNER, 2, 4, "a space is missing after this ':'"},
    {__LINE__, "k\xC3\xA9: @foo\n", YAML_ERR_SCANNER, 1, 5, "begins with '@' must be quoted"},
    {__LINE__,
     "a: 1\xC2\x85"
     "b: 1\xE2\x80\xA8"
     "c: \x01\n",
     YAML_ERR_READER, 3, 4, "control character"},
    {__LINE__, "a: 1\nb: \"open\nc: 2\nd: 3\n", YAML_ERR_SCANNER, 2, 4, "quote that is opened here"},
    {__LINE__, "a: 'it's'\n", YAML_ERR_PARSE, 1, 8, "does not line up"},
    {__LINE__, "a: [1, 2\nb: 3\nc: 4\n", YAML_ERR_PARSE, 1, 4, "bracket opened at line 1, column 4"},
    {__LINE__, "a: {b: 1, c: 2\n", YAML_ERR_PARSE, 1, 4, "bracket opened at line 1, column 4"},
    {__LINE__, "a: [1 2, {x: y} z]\n", YAML_ERR_PARSE, 1, 17, "a ',' is missing"},
    {__LINE__, "a:\n    b: 1\n  c: 2\n", YAML_ERR_PARSE, 3, 3, "does not line up"},
    {__LINE__, "a:\n  - 1\n  b: 2\n", YAML_ERR_PARSE, 3, 3, "does not line up"},
    {__LINE__, "a: @x\n", YAML_ERR_SCANNER, 1, 4, "begins with '@' must be quoted"},
    {__LINE__, "a: `x`\n", YAML_ERR_SCANNER, 1, 4, "must be quoted"},
    {__LINE__, "a: %x\n", YAML_ERR_SCANNER, 1, 4, "must be quoted"},
    {__LINE__, "a: 1\nb: \"\\q\"\n", YAML_ERR_SCANNER, 2, 5, ""},
    {__LINE__, "a: 1\r\nb: x\xFFy\r\n", YAML_ERR_READER, 2, 5, "save the file as UTF-8"},
    {__LINE__, "\xC3\xA4: 1\nb: \xC3\xA4\xC3\n", YAML_ERR_READER, 2, 5, "save the file as UTF-8"},
    {__LINE__, "a: 1\nb: x\x01y\n", YAML_ERR_READER, 2, 5, "control character"},
    {__LINE__, "a: 1\nb: {a: 1,\n  c: 2, a: 3}\n", YAML_ERR_SAME, 3, 9, ""},
    {__LINE__, "a: *later\nb: &later 1\n", YAML_ERR_ALIAS, 1, 4, "'&later' must stand before this alias"},
    {__LINE__, "a: &a\n  - *a\n", YAML_ERR_ALIAS, 2, 5, ""},
    {__LINE__, "a: 1\n? [b, c]\n: 2\n", YAML_ERR_EVENT, 2, 3, "text can be a key"},
    {__LINE__, "a: 1\n---\nb: 2\n", YAML_ERR_PARSE, 2, 1, "one document"},
    {__LINE__, "v: &v 5\nm:\n  <<: *v\n", YAML_ERR_EVENT, 3, 7, ""},
    {__LINE__, "a: 1\nb: \"x\\0y\"\n", YAML_ERR_EVENT, 2, 4, ""},
    {__LINE__, "just a text\n", YAML_ERR_EVENT, 1, 1, ""},
    {__LINE__, std::string(600, '['), YAML_ERR_EVENT, 1, 513, "limit uiDepth"},
};

struct ReadCase {
    int iLine;
    const char *pcPath;
    uint32_t uiGetCode, uiSizeCode;
};
constexpr ReadCase g_astRead[] = {
    // on "s: x\nm: {k: v}\nl: [p, q]\nf:\n"
    {__LINE__, "s", 0, YAML_ERR_NODE_TYPE},
    {__LINE__, "l", YAML_ERR_NOT_SCALAR, 0},
    {__LINE__, "m", YAML_ERR_NOT_SCALAR, YAML_ERR_NODE_TYPE},
    {__LINE__, "absent", YAML_ERR_NOT_FOUND, YAML_ERR_NOT_FOUND},
    {__LINE__, "l[7]", YAML_ERR_NOT_FOUND, YAML_ERR_NOT_FOUND},
    {__LINE__, "s.k", YAML_ERR_NOT_FOUND, YAML_ERR_NOT_FOUND},
    {__LINE__, "s[0]", YAML_ERR_NODE_TYPE, YAML_ERR_NODE_TYPE},
    {__LINE__, "l.k", YAML_ERR_INDEX, YAML_ERR_INDEX},
    {__LINE__, "l[x]", YAML_ERR_INDEX, YAML_ERR_INDEX},
    {__LINE__, "m.", YAML_ERR_KEY, YAML_ERR_KEY},
    {__LINE__, "", YAML_ERR_BUF, YAML_ERR_BUF},
};

const YamlErrorInfo &Last()
{
    return *ZRYAML_LastErrorGet();
}

} // namespace

TEST(ErrorRecord, NamesThePlaceInABrokenDocument)
{
    for (const BrokenCase &stCase : g_astBroken) {
        SCOPED_TRACE(stCase.iLine);
        const TempFile stFile(stCase.text);
        for (const bool bFile : {true, false}) {
            SCOPED_TRACE(bFile ? "file" : "text");
            Base().Reset();
            ASSERT_EQ(bFile ? ZRYAML_FileLoad(stFile.Path())
                            : ZRYAML_TextLoad(stCase.text.data(), stCase.text.size(), "a name"),
                      nullptr);
            EXPECT_EQ(Last().uiCode, stCase.uiCode);
            EXPECT_EQ(Last().uiLine, stCase.uiLine);
            EXPECT_EQ(Last().uiColumn, stCase.uiColumn);
            EXPECT_EQ(Last().pcMessage, Base().Texts(1).front());
            EXPECT_NE(strstr(Last().pcHint, stCase.pcHint), nullptr) << Last().pcHint;
            EXPECT_STREQ(Last().pcFile, bFile ? stFile.Path() : "a name");
            EXPECT_EQ(Base().lBlocks, 0);
        }
    }
}

TEST(ErrorRecord, NamesTheFirstOfTwoEqualKeys)
{
    std::string text = "  twice: 1\n";
    for (int i = 0; i < 300; ++i)
        text += "  key" + std::to_string(i) + ": v\n";
    text += "  twice: 2\n";
    EXPECT_EQ(ZRYAML_TextLoad(text.data(), text.size(), nullptr), nullptr);
    EXPECT_EQ(Last().uiLine, 302U);
    EXPECT_EQ(Last().uiColumn, 3U);
    EXPECT_EQ(Last().uiFirstLine, 1U);
    EXPECT_EQ(Last().uiFirstColumn, 3U);
    EXPECT_STREQ(Last().pcMessage, "There is a same scalar in this list. (Scalar=twice)");
}

TEST(ErrorRecord, TellsWhatIsWrongWithTheFile)
{
    EXPECT_EQ(ZRYAML_FileLoad("/tmp"), nullptr);
    EXPECT_EQ(Last().uiCode, YAML_ERR_READER);
    EXPECT_STREQ(Last().pcHint, "this is a folder, not a file");
    EXPECT_EQ(Last().uiLine, 0U);
    EXPECT_EQ(ZRYAML_FileLoad("/nowhere/to/be/found"), nullptr);
    EXPECT_EQ(Last().uiCode, YAML_ERR_PARAM);
    EXPECT_STREQ(Last().pcHint, "No such file or directory");
    EXPECT_STREQ(Last().pcFile, "/nowhere/to/be/found");
    EXPECT_EQ(ZRYAML_FileLoad(nullptr), nullptr);
    EXPECT_EQ(Last().uiCode, YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_TextLoad(nullptr, 1, "x"), nullptr);
    EXPECT_EQ(Last().uiCode, YAML_ERR_PARAM);
    YamlHandle *pstEmpty = ZRYAML_TextLoad(nullptr, 0, nullptr);
    EXPECT_NE(pstEmpty, nullptr);
    EXPECT_EQ(Last().uiCode, 0U);
    ZRYAML_HandleFree(pstEmpty);
}

TEST(ErrorRecord, TellsAbsentFromWrong)
{
    const std::string text = "s: x\nm: {k: v}\nl: [p, q]\nf:\n";
    YamlHandle *pstHandle = ZRYAML_TextLoad(text.data(), text.size(), "conf.yaml");
    ASSERT_NE(pstHandle, nullptr);
    EXPECT_STREQ(ZRYAML_NameGet(pstHandle), "conf.yaml");
    for (const ReadCase &stCase : g_astRead) {
        SCOPED_TRACE(stCase.iLine);
        const auto *pcText = ZRYAML_PropertyGet(pstHandle, "%s", stCase.pcPath);
        EXPECT_EQ(Last().uiCode, stCase.uiGetCode);
        EXPECT_EQ(pcText == nullptr, stCase.uiGetCode != 0);
        EXPECT_STREQ(Last().pcKeyPath, stCase.uiGetCode != 0 ? stCase.pcPath : "");
        EXPECT_STREQ(Last().pcFile, stCase.uiGetCode != 0 ? "conf.yaml" : "");
        (void)ZRYAML_ArraySizeGet(pstHandle, "%s", stCase.pcPath);
        EXPECT_EQ(Last().uiCode, stCase.uiSizeCode);
    }
    EXPECT_EQ(ZRYAML_PropertyGet(pstHandle, "m"), nullptr);
    EXPECT_EQ(Last().uiLine, 2U); // the value's own place
    EXPECT_EQ(Last().uiColumn, 4U);
    EXPECT_EQ(yaml_IteratorCreate(pstHandle, "s"), nullptr);
    EXPECT_EQ(Last().uiCode, YAML_ERR_PARAM);
    EXPECT_STREQ(Last().pcKeyPath, "s");
    EXPECT_EQ(ZRYAML_PropertyGet(nullptr, "s"), nullptr);
    EXPECT_EQ(Last().uiCode, YAML_ERR_PARAM);

    std::thread([] { EXPECT_EQ(Last().uiCode, 0U); }).join(); // another thread has a record of its own
    EXPECT_EQ(Last().uiCode, YAML_ERR_PARAM);
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "f"), "");
    EXPECT_EQ(Last().uiCode, 0U);
    ZRYAML_HandleFree(pstHandle);
}

TEST(ErrorRecord, CutsWhatIsTooLong)
{
    const std::string name(3000, 'n');
    std::string text = "? " + name + "\n: 1\n? " + name + "\n: 2\n";
    EXPECT_EQ(ZRYAML_TextLoad(text.data(), text.size(), name.c_str()), nullptr);
    EXPECT_EQ(strlen(Last().pcMessage), 1023U);
    EXPECT_STREQ(Last().pcMessage + 1020, "...");
    EXPECT_EQ(std::string(Last().pcFile), name.substr(0, 1020) + "...");

    for (const std::string &start : {"n"s, "nn"s}) { // a character is left out rather than cut in two
        std::string file = start;
        for (int i = 0; i < 600; ++i)
            file += "\xC3\xA9";
        EXPECT_EQ(ZRYAML_TextLoad("x", 1, file.c_str()), nullptr);
        EXPECT_EQ(std::string(Last().pcFile), file.substr(0, start.size() == 1 ? 1019 : 1020) + "...");
    }
}
