// SPDX-License-Identifier: Apache-2.0
// Loading files: every way in which the path, the file or libyaml refuses, with the exact log; what loads all the same;
// the trace of events; the depth that collections may have. Nothing may be left open or in use.
#include "support/load_text.h"
#include "support/recording_base.h"

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <yaml.h>

using namespace std::string_literals;
using namespace std::string_view_literals;

namespace {

struct FileLoad : testing::Test {
    void SetUp() override { Base().Reset(); }
    void TearDown() override
    {
        ZRYAML_DebugSwitchSet(0);
        Base().Reset();
    }
};

#define READER(text) "2 1900000d Reader error: " text ".\n" PARSE_FAILED
#define SCANNER(text) "2 1900000e Scanner error: " text ".\n" PARSE_FAILED
#define PARSER(text) "2 1900000f Parser error: " text ".\n" PARSE_FAILED
#define MORE_DOCUMENTS "2 1900000f There are more than one document signs in file which is not support.\n" PARSE_FAILED

struct TextCase {
    int iLine;
    std::string_view document; // may hold NUL characters
    const char *pcResult;      // the tree, or the log
};
constexpr TextCase g_astText[] = {
    {__LINE__, "", ""},
    {__LINE__, "# only this\n", ""},
    {__LINE__, "\xEF\xBB\xBF", ""},
    {__LINE__, "\xEF\xBB\277a: 1\n", R"({"a":"1"})"},
    {__LINE__, "\xFF\376a\0:\0 \0\xE9\0\n\0"sv, "{\"a\":\"\xC3\xA9\"}"},
    {__LINE__, "\xFE\xFF\0a\0:\0 \xD8\x3D\xDE\x00\0\n"sv, "{\"a\":\"\xF0\x9F\x98\x80\"}"},
    {__LINE__, "a: 1\r\nb:\r\n- 2\r\n", R"({"a":"1","b":["2"]})"},
    {__LINE__, "%YAML 1.1\n---\na: |\n  x\n  y\n...\n", R"({"a":"x\0ay\0a"})"},
    {__LINE__, "a: !!int '1'\nb: >-\n  x\n  y", R"({"a":"1","b":"x y"})"},
    // with the character or byte, and without
    {__LINE__, "a: \xFF\n", READER("invalid leading UTF-8 octet: #FF at 3")},
    {__LINE__, "a: x\xE2\x82", READER("incomplete UTF-8 octet sequence at 4")},
    {__LINE__, "\0\0\0\0"sv, READER("control characters are not allowed: #0 at 0")},
    {__LINE__, "\xFF\376a"sv, READER("incomplete UTF-16 character at 2")},
    {__LINE__, "\xFE\xFF\xDC\0\0a"sv, READER("unexpected low surrogate area: #DC00 at 2")},
    // with a context, and without
    {__LINE__, "a: 1\nb: 2\nc: [@x]\n",
     SCANNER("while scanning for the next token at line 3, column 5\n"
             "found character that cannot start any token at line 3, column 5")},
    {__LINE__, "a:\n  b: \"open\n",
     SCANNER("while scanning a quoted scalar at line 2, column 6\nfound unexpected end of stream at line 3, column 1")},
    {__LINE__, "a: b: c\n", SCANNER("mapping values are not allowed in this context at line 1, column 5")},
    {__LINE__, "a: [1, 2\n",
     PARSER("while parsing a flow sequence at line 1, column 4\ndid not find expected ',' or ']' at line 2, column 1")},
    {__LINE__, "{a: 1}\nb: 2\n", PARSER("did not find expected <document start> at line 2, column 1")},
    {__LINE__, "a: 1\n---\nb: 2\n", MORE_DOCUMENTS},
    {__LINE__, "--- []\n...\n---\n", MORE_DOCUMENTS},
};

} // namespace

TEST_F(FileLoad, ReadsWhatIsWellFormedAndReportsWhatIsNot)
{
    for (const TextCase &stCase : g_astText) {
        EXPECT_EQ(DocumentRead(std::string(stCase.document)), stCase.pcResult) << stCase.iLine;
        for (const LogRecord &stRecord : Base().log) {
            EXPECT_EQ(stRecord.file.rfind("yaml/src/zr_yaml_parse/", 0), 0U) << stRecord.file;
            EXPECT_NE(stRecord.function, "");
        }
    }
}

TEST_F(FileLoad, NamesThePathThatWasGiven)
{
    const TempFile stFile("a: 1");
    const std::string path = stFile.Path();
    for (const std::string &wrong :
         {""s, "/tmp/no/such/file"s, path + "/below", "./" + path, "/tmp/" + Times(5000, "x"), "/proc/self/fd/77777"s})
        EXPECT_EQ(FileRead(wrong.c_str()), "2 16 Failed to get real path. (InputFile=" + wrong + ")\n");
    EXPECT_EQ(FileRead(nullptr), "2 16 The parameter is null.\n");
    EXPECT_EQ(FileRead("/tmp"), READER("input error at 0")); // a folder can be opened

    const std::string link = path + "-link";
    ASSERT_EQ(symlink(path.c_str(), link.c_str()), 0);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path("/tmp");
    for (const std::string &good : {link, "./" + link.substr(5), "../tmp//" + link.substr(5)})
        EXPECT_EQ(FileRead(good.c_str()), R"({"a":"1"})") << good;
    std::filesystem::current_path(before);
    unlink(link.c_str());

    ASSERT_EQ(mknod(link.c_str(), S_IFSOCK | 0600, 0), 0); // a socket is there, but not even root can open it
    EXPECT_EQ(FileRead(link.c_str()), "2 19000007 Failed to open the file. (File=" + link + ")\n");
    unlink(link.c_str());
}

TEST_F(FileLoad, RefusedSecureCallsDoNotStopIt)
{
    Base().bSecureCallsFail = true;
    const std::string text = DocumentRead("a: &x [1]\nb: *x");
    EXPECT_EQ(text, R"({"a":["1"],"b":["1"]})" + Times(Base().log.size(), "1 16 Secure check fail.\n"));
    EXPECT_EQ(Base().log.size(), 17U); // handle and root, parser, event, 7 nodes, 4 texts, anchor, its name
}

TEST_F(FileLoad, ParseErrorsAndEventsThatNoFileCauses)
{
    yaml_parser_t stParser = {};
    stParser.error = YAML_MEMORY_ERROR;
    yaml_ParseErrProcess(&stParser);
    stParser.error = YAML_COMPOSER_ERROR;
    yaml_ParseErrProcess(&stParser);

    YamlHandle stHandle;
    yaml_HandleInit(&stHandle);
    for (const int iType : {0, 11}) {
        yaml_event_t stEvent = {};
        memcpy(&stEvent.type, &iType, sizeof(stEvent.type)); // 11 is none of the enumeration
        YamlListNode *pstCurrent = &stHandle.stRoot;
        uint32_t uiFlag = 2, uiLast = 1, uiDocuments = 0;
        EXPECT_EQ(yaml_EventAnalyze(&stEvent, &pstCurrent, &uiFlag, &uiLast, &uiDocuments, &stHandle), YAML_ERR_EVENT);
        EXPECT_EQ(uiLast, static_cast<uint32_t>(iType)); // after every event, failed or not
    }
    EXPECT_EQ(Base().LogText(), "2 c There is not enough memory for parsing.\n"
                                "2 16 There is an internal error in libYAML.\n"
                                "2 1900000b Unknown parse event. (Event=0)\n"
                                "2 1900000b Unknown parse event. (Event=11)\n");
}

TEST_F(FileLoad, TracesEventsWhileTheSwitchIsOne)
{
    std::string trace;
    for (const char *pcEvent : {"STREAM-START", "DOCUMENT-START", "MAPPING-START", "SCALAR(value=a)", "SEQUENCE-START",
                                "SCALAR(value=1)", "SCALAR(value=)", "SEQUENCE-END", "SCALAR(value=b%s)",
                                "ALIAS(anchor=x)", "MAPPING-end", "DOCUMENT-END", "STREAM-END"})
        trace += "0 0 - event type: "s + pcEvent + "\n";
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        ZRYAML_DebugSwitchSet(uiSwitch);
        EXPECT_EQ(DocumentRead("a: &x [1, '']\nb%s: *x\n"),
                  R"({"a":["1",""],"b%s":["1",""]})" + (uiSwitch == 1 ? trace : ""));
    }
}

TEST_F(FileLoad, TakesFiveHundredAndTwelveCollectionsInOneAnother)
{
    struct Case {
        int iLine;
        std::string head, open, middle, close;
        size_t ulMost; // repetitions that load
    };
    const std::string deep = Times(300, "[") + Times(300, "]");
    const Case astCase[] = {
        {__LINE__, "", "[", "x", "]", 512},
        {__LINE__, "", "{a: ", "1", "}", 512},
        {__LINE__, "", "[{a: ", "{}", "}]", 255},
        {__LINE__, "k: &x v\na: ", "[", "*x", "]", 511},
        {__LINE__, "k: &x " + deep + "\na: ", "[", "*x", "]", 211},
        {__LINE__, "k: &x " + deep + "\na: ", "{b: ", "*x", "}", 211},
        {__LINE__, "k: &x " + deep + "\nl: &y {c: *x}\na: ", "[", "*y", "]", 210},
        {__LINE__, "k: &x [{c: " + deep + "}]\na: ", "[", "{<<: *x}", "]", 210},
        {__LINE__, "k: &x {c: " + deep + "}\na: ", "[", "{<<: *x, c: 0}", "]", 210},
    };
    for (const Case &stCase : astCase) {
        for (size_t ul = stCase.ulMost - 1; ul <= stCase.ulMost + 1; ++ul) {
            const std::string text =
                DocumentRead(stCase.head + Times(ul, stCase.open) + stCase.middle + Times(ul, stCase.close));
            if (ul > stCase.ulMost)
                EXPECT_EQ(text, "2 1900000b The collections are nested too deep. (Depth=513)\n" PARSE_FAILED);
            else
                EXPECT_EQ(text.find_first_of("[{"), 0U) << stCase.iLine << text;
        }
    }
}
