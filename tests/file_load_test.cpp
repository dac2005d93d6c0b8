// SPDX-License-Identifier: Apache-2.0
// Loading files: every way in which the path, the file or libyaml refuses, with the exact log; what loads all the same;
// the trace of events; the depth that collections may have. Nothing may be left open or in use.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <yaml.h>

namespace {

size_t OpenFiles()
{
    const std::filesystem::directory_iterator stFiles("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(stFiles), end(stFiles)));
}

struct FileLoad : testing::Test { // every test ends with nothing in use and no file open
    void SetUp() override { Base().Reset(); }
    void TearDown() override
    {
        ZRYAML_DebugSwitchSet(0);
        EXPECT_EQ(Base().lBlocks, 0);
        EXPECT_EQ(OpenFiles(), ulFiles);
        Base().Reset();
    }
    const size_t ulFiles = OpenFiles();
};

// Expects a load to be refused, with a log.
void Refused(const char *pcPath, const std::string &log)
{
    Base().Reset();
    EXPECT_EQ(ZRYAML_FileLoad(pcPath), nullptr);
    EXPECT_EQ(Base().LogText(), log);
    EXPECT_EQ(Base().lBlocks, 0);
}

// Expects a file to load as a tree, without a word.
void Loads(const char *pcPath, const std::string &tree)
{
    Base().Reset();
    YamlHandle *pstHandle = ZRYAML_FileLoad(pcPath);
    ASSERT_NE(pstHandle, nullptr) << Base().LogText();
    EXPECT_EQ(Base().LogText(), "");
    EXPECT_EQ(TreeCheck(*pstHandle), "");
    EXPECT_EQ(TreeText(*pstHandle), tree);
    ZRYAML_HandleFree(pstHandle);
    EXPECT_EQ(Base().lBlocks, 0);
}

constexpr const char *g_pcFailed = "2 1900000f Parse file failed.\n";

struct TextCase {
    int iLine;
    std::string_view document; // may hold NUL characters
    const char *pcResult;      // the tree, or the log without its last line
};

using namespace std::string_view_literals;
using namespace std::string_literals;

constexpr TextCase g_astGood[] = {
    {__LINE__, "", ""},
    {__LINE__, "\n\n", ""},
    {__LINE__, "# only this\n", ""},
    {__LINE__, "\xEF\xBB\xBF", ""},
    {__LINE__, "\xEF\xBB\277a: 1\n", R"({"a":"1"})"},
    {__LINE__, "\xFF\376a\0:\0 \0\xE9\0\n\0"sv, "{\"a\":\"\xC3\xA9\"}"},
    {__LINE__, "\xFE\xFF\0a\0:\0 \xD8\x3D\xDE\x00\0\n"sv, "{\"a\":\"\xF0\x9F\x98\x80\"}"},
    {__LINE__, "a: 1", R"({"a":"1"})"},
    {__LINE__, "a: 1\r\nb:\r\n- 2\r\n", R"({"a":"1","b":["2"]})"},
    {__LINE__, "--- {a: 1}\n...\n", R"({"a":"1"})"},
    {__LINE__, "%YAML 1.1\n---\na: |\n  x\n  y\n", R"({"a":"x\0ay\0a"})"},
    {__LINE__, "a: !!int '1'\nb: >-\n  x\n  y\n", R"({"a":"1","b":"x y"})"},
};

constexpr TextCase g_astBad[] = {
    // reader: with the character or byte, and without
    {__LINE__, "a: \xFF\n", "2 1900000d Reader error: invalid leading UTF-8 octet: #FF at 3.\n"},
    {__LINE__, "a: \xC3(\n", "2 1900000d Reader error: invalid trailing UTF-8 octet: #28 at 4.\n"},
    {__LINE__, "a: \xC0\x80\n", "2 1900000d Reader error: invalid length of a UTF-8 sequence at 3.\n"},
    {__LINE__, "a: \xED\xA0\x80\n", "2 1900000d Reader error: invalid Unicode character: #D800 at 3.\n"},
    {__LINE__, "a: x\xE2\x82", "2 1900000d Reader error: incomplete UTF-8 octet sequence at 4.\n"},
    {__LINE__, "a: \x01\n", "2 1900000d Reader error: control characters are not allowed: #1 at 3.\n"},
    {__LINE__, "\0\0\0\0"sv, "2 1900000d Reader error: control characters are not allowed: #0 at 0.\n"},
    {__LINE__, "\177ELF\x02\x01\x01\0"sv, "2 1900000d Reader error: control characters are not allowed: #7F at 0.\n"},
    {__LINE__, "\xFF\376a"sv, "2 1900000d Reader error: incomplete UTF-16 character at 2.\n"},
    {__LINE__, "\xFE\xFF\xDC\0\0a"sv, "2 1900000d Reader error: unexpected low surrogate area: #DC00 at 2.\n"},
    {__LINE__, "\xFE\xFF\xD8\0\0a"sv, "2 1900000d Reader error: expected low surrogate area: #61 at 4.\n"},
    {__LINE__, "\xFE\xFF\xD8\0"sv, "2 1900000d Reader error: incomplete UTF-16 surrogate pair at 2.\n"},
    // scanner: with a context, and without
    {__LINE__, "a: 1\nb: 2\nc: [@x]\n",
     "2 1900000e Scanner error: while scanning for the next token at line 3, column 5\n"
     "found character that cannot start any token at line 3, column 5.\n"},
    {__LINE__, "a:\n  b: \"open\n",
     "2 1900000e Scanner error: while scanning a quoted scalar at line 2, column 6\n"
     "found unexpected end of stream at line 3, column 1.\n"},
    {__LINE__, "a: 1\n\tb: 2\n",
     "2 1900000e Scanner error: while scanning a plain scalar at line 1, column 4\n"
     "found a tab character that violates indentation at line 2, column 1.\n"},
    {__LINE__, "a: %b\n",
     "2 1900000e Scanner error: while scanning for the next token at line 1, column 4\n"
     "found character that cannot start any token at line 1, column 4.\n"},
    {__LINE__, "a: - b\n",
     "2 1900000e Scanner error: block sequence entries are not allowed in this context at line "
     "1, column 4.\n"},
    {__LINE__, "a: b: c\n",
     "2 1900000e Scanner error: mapping values are not allowed in this context at line 1, "
     "column 5.\n"},
    // parser: with a context, and without
    {__LINE__, "a: [1, 2\n",
     "2 1900000f Parser error: while parsing a flow sequence at line 1, column 4\n"
     "did not find expected ',' or ']' at line 2, column 1.\n"},
    {__LINE__, "- a\nb: 1\n",
     "2 1900000f Parser error: while parsing a block collection at line 1, column 1\n"
     "did not find expected '-' indicator at line 2, column 1.\n"},
    {__LINE__, "a: !x!y 1\n",
     "2 1900000f Parser error: while parsing a node at line 1, column 4\n"
     "found undefined tag handle at line 1, column 4.\n"},
    {__LINE__, "{a: 1}\nb: 2\n",
     "2 1900000f Parser error: did not find expected <document start> at line 2, column 1.\n"},
    {__LINE__, "%YAML 2.0\n--- {}\n",
     "2 1900000f Parser error: found incompatible YAML document at line 1, column "
     "1.\n"},
    // second documents
    {__LINE__, "a: 1\n---\nb: 2\n",
     "2 1900000f There are more than one document signs in file which is not support.\n"},
    {__LINE__, "--- []\n--- []\n", "2 1900000f There are more than one document signs in file which is not support.\n"},
    {__LINE__, "a: 1\n...\n---\n", "2 1900000f There are more than one document signs in file which is not support.\n"},
    {__LINE__, "---\n---\n", "2 1900000b Unknown last event when add scalar data. (Event=0)\n"},
    {__LINE__, "just text\n", "2 1900000b Unknown last event when add scalar data. (Event=0)\n"},
};

std::string Repeated(const char *pcText, size_t ulTimes)
{
    std::string text;
    while (ulTimes-- > 0)
        text += pcText;
    return text;
}

} // namespace

TEST_F(FileLoad, ReadsWhatIsWellFormed)
{
    for (const TextCase &stCase : g_astGood) {
        SCOPED_TRACE(stCase.iLine);
        Loads(TempFile(std::string(stCase.document)).Path(), stCase.pcResult);
    }
    Loads("/dev/null", "");
}

TEST_F(FileLoad, ReportsWhatIsNot)
{
    for (const TextCase &stCase : g_astBad) {
        SCOPED_TRACE(stCase.iLine);
        Refused(TempFile(std::string(stCase.document)).Path(), std::string(stCase.pcResult) + g_pcFailed);
        EXPECT_EQ(OpenFiles(), ulFiles);
    }
}

TEST_F(FileLoad, NamesThePathThatWasGiven)
{
    const TempFile stFile("a: 1");
    const std::string path = stFile.Path();
    const std::string longPath = "/tmp/" + std::string(5000, 'x');
    for (const std::string &wrong :
         {std::string(), "/tmp/no/such/file"s, path + "/below", "./" + path, longPath, "/proc/self/fd/77777"s})
        Refused(wrong.c_str(), "2 16 Failed to get real path. (InputFile=" + wrong + ")\n");
    Refused(nullptr, "2 16 The parameter is null.\n");
    Refused("/tmp", "2 1900000d Reader error: input error at 0.\n"s + g_pcFailed); // a folder can be opened
}

TEST_F(FileLoad, FollowsLinksAndRelativePaths)
{
    const TempFile stFile("a: 1");
    const std::string link = std::string(stFile.Path()) + "-link";
    ASSERT_EQ(symlink(stFile.Path(), link.c_str()), 0);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path("/tmp");
    for (const std::string &path : {link, "./" + link.substr(5), "../tmp//" + link.substr(5)})
        Loads(path.c_str(), R"({"a":"1"})");
    std::filesystem::current_path(before);
    unlink(link.c_str());
    ASSERT_EQ(symlink(link.c_str(), link.c_str()), 0); // leads to itself
    Refused(link.c_str(), "2 16 Failed to get real path. (InputFile=" + link + ")\n");
    unlink(link.c_str());
}

TEST_F(FileLoad, RefusesAFileThatCannotBeOpened)
{
    const TempFile stFile("a: 1");
    const std::string log = "2 19000007 Failed to open the file. (File="s + stFile.Path() + ")\n";
    struct rlimit stLimit = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &stLimit), 0);
    const struct rlimit stNone = {0, stLimit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &stNone), 0);
    Refused(stFile.Path(), log);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &stLimit), 0);

    const uid_t uiUser = geteuid();
    ASSERT_EQ(chmod(stFile.Path(), 0), 0);
    if (uiUser == 0 && seteuid(65534) != 0)
        GTEST_SKIP() << "root reads every file, and cannot become another user here";
    Refused(stFile.Path(), log);
    ASSERT_EQ(seteuid(uiUser), 0);
}

TEST_F(FileLoad, RefusesWithoutMemoryForTheHandle)
{
    const TempFile stFile("a: 1");
    Base().ulFailAllocation = 1;
    EXPECT_EQ(ZRYAML_FileLoad(stFile.Path()), nullptr);
    EXPECT_EQ(Base().LogText(), "2 c Failed to allocate memory for handle.\n");
}

TEST_F(FileLoad, LogsFromItsOwnFilesAndFunctions)
{
    EXPECT_EQ(ZRYAML_FileLoad("/no/such/file"), nullptr);
    EXPECT_EQ(TextFileLoad("a: 1\na: 2"), nullptr);
    EXPECT_EQ(TextFileLoad("a: ["), nullptr);
    ASSERT_EQ(Base().log.size(), 5U);
    for (const LogRecord &stRecord : Base().log) {
        EXPECT_EQ(stRecord.file.rfind("yaml/src/zr_yaml_parse/", 0), 0U) << stRecord.file;
        EXPECT_NE(stRecord.function, "");
    }
}

TEST_F(FileLoad, RefusedSecureCallsDoNotStopIt)
{
    Base().bSecureCallsFail = true;
    YamlHandle *pstHandle = TextFileLoad("a: &x [1]\nb: *x");
    ASSERT_NE(pstHandle, nullptr);
    EXPECT_EQ(TreeText(*pstHandle), R"({"a":["1"],"b":["1"]})");
    EXPECT_GT(Base().log.size(), 10U);
    for (const LogRecord &stRecord : Base().log)
        EXPECT_EQ(std::to_string(stRecord.uiLevel) + stRecord.text + std::to_string(stRecord.uiCode),
                  "1Secure check fail.22");
    ZRYAML_HandleFree(pstHandle);
}

TEST_F(FileLoad, ParseErrorsThatNoFileCauses)
{
    struct Case {
        int iLine;
        yaml_error_type_t eError;
        const char *pcContext;
        int iValue;
        const char *pcLog;
    };
    constexpr Case g_astCase[] = {
        {__LINE__, YAML_MEMORY_ERROR, nullptr, 0, "2 c There is not enough memory for parsing.\n"},
        {__LINE__, YAML_READER_ERROR, nullptr, 0, "2 1900000d Reader error: bad: #0 at 7.\n"},
        {__LINE__, YAML_READER_ERROR, "here", -1, "2 1900000d Reader error: bad at 7.\n"},
        {__LINE__, YAML_SCANNER_ERROR, "here", 0,
         "2 1900000e Scanner error: here at line 1, column 2\nbad at line 3, column 4.\n"},
        {__LINE__, YAML_PARSER_ERROR, nullptr, 0, "2 1900000f Parser error: bad at line 3, column 4.\n"},
        {__LINE__, YAML_COMPOSER_ERROR, nullptr, 0, "2 16 There is an internal error in libYAML.\n"},
        {__LINE__, YAML_NO_ERROR, nullptr, 0, "2 16 There is an internal error in libYAML.\n"},
    };
    for (const Case &stCase : g_astCase) {
        SCOPED_TRACE(stCase.iLine);
        yaml_parser_t stParser = {};
        stParser.error = stCase.eError;
        stParser.problem = "bad";
        stParser.problem_offset = 7;
        stParser.problem_value = stCase.iValue;
        stParser.context = stCase.pcContext;
        stParser.context_mark = {0, 0, 1};
        stParser.problem_mark = {0, 2, 3};
        Base().Reset();
        yaml_ParseErrProcess(&stParser);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
    }
}

TEST_F(FileLoad, UnknownEventIsRefused)
{
    YamlHandle stHandle;
    yaml_HandleInit(&stHandle);
    for (const int iType : {0, 11}) {
        yaml_event_t stEvent = {};
        memcpy(&stEvent.type, &iType, sizeof(stEvent.type)); // 11 is none of the enumeration
        YamlListNode *pstCurrent = &stHandle.stRoot;
        uint32_t uiFlag = 2, uiLast = 1, uiDocuments = 0;
        Base().Reset();
        EXPECT_EQ(yaml_EventAnalyze(&stEvent, &pstCurrent, &uiFlag, &uiLast, &uiDocuments, &stHandle), YAML_ERR_EVENT);
        EXPECT_EQ(Base().LogText(), "2 1900000b Unknown parse event. (Event=" + std::to_string(iType) + ")\n");
        EXPECT_EQ(uiLast, static_cast<uint32_t>(iType)); // after every event, failed or not
    }
}

TEST_F(FileLoad, TracesEventsWhileTheSwitchIsOne)
{
    constexpr const char *pcDocument = "a: &x [1, '']\nb%s: *x\n";
    const std::vector<std::string> expected = {
        "- event type: STREAM-START",    "- event type: DOCUMENT-START", "- event type: MAPPING-START",
        "- event type: SCALAR(value=a)", "- event type: SEQUENCE-START", "- event type: SCALAR(value=1)",
        "- event type: SCALAR(value=)",  "- event type: SEQUENCE-END",   "- event type: SCALAR(value=b%s)",
        "- event type: ALIAS(anchor=x)", "- event type: MAPPING-end",    "- event type: DOCUMENT-END",
        "- event type: STREAM-END"};
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        Base().Reset();
        ZRYAML_DebugSwitchSet(uiSwitch);
        YamlHandle *pstHandle = TextFileLoad(pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        EXPECT_EQ(Base().Texts(), uiSwitch == 1 ? expected : std::vector<std::string>());
        for (const LogRecord &stRecord : Base().log)
            EXPECT_EQ(stRecord.uiLevel + stRecord.uiCode, 0U);
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST_F(FileLoad, TakesFiveHundredAndTwelveCollectionsInOneAnother)
{
    struct Case {
        int iLine;
        std::string head, open, middle, close;
        size_t ulMost; // repetitions that load
    };
    const std::string deep = Repeated("[", 300) + Repeated("]", 300);
    const Case astCase[] = {
        {__LINE__, "", "[", "", "]", 512},
        {__LINE__, "", "[", "x", "]", 512},
        {__LINE__, "", "{a: ", "1", "}", 512},
        {__LINE__, "", "[{a: ", "{}", "}]", 255},
        {__LINE__, "", "- ", "[]", "", 511},
        {__LINE__, "k: &x v\na: ", "[", "*x", "]", 511},
        {__LINE__, "k: &x " + deep + "\na: ", "[", "*x", "]", 211},
        {__LINE__, "k: &x " + deep + "\na: ", "{b: ", "*x", "}", 211},
        {__LINE__, "k: &x " + deep + "\nl: &y {c: *x}\na: ", "[", "*y", "]", 210},
        {__LINE__, "k: &x {c: " + deep + "}\na: ", "[", "{<<: *x}", "]", 210},
        {__LINE__, "k: &x [{c: " + deep + "}]\na: ", "[", "{<<: *x}", "]", 210},
        {__LINE__, "k: &x [{c: " + deep + "}]\na: ", "[", "{z: 0, <<: *x}", "]", 210},
        {__LINE__, "k: &x {c: " + deep + "}\na: ", "[", "{<<: *x, c: 0}", "]", 210},
    };
    for (const Case &stCase : astCase) {
        SCOPED_TRACE(stCase.iLine);
        for (size_t ulTimes = stCase.ulMost - 1; ulTimes <= stCase.ulMost + 1; ++ulTimes) {
            const std::string document = stCase.head + Repeated(stCase.open.c_str(), ulTimes) + stCase.middle +
                                         Repeated(stCase.close.c_str(), ulTimes);
            Base().Reset();
            YamlHandle *pstHandle = TextFileLoad(document);
            if (ulTimes > stCase.ulMost) {
                EXPECT_EQ(pstHandle, nullptr);
                EXPECT_EQ(Base().LogText(),
                          "2 1900000b The collections are nested too deep. (Depth=513)\n"s + g_pcFailed);
            } else {
                ASSERT_NE(pstHandle, nullptr) << Base().LogText();
                EXPECT_EQ(TreeCheck(*pstHandle), "");
            }
            ZRYAML_HandleFree(pstHandle);
        }
    }
}
