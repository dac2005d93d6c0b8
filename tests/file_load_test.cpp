// SPDX-License-Identifier: Apache-2.0
// Loading where more than the document matters: the path, the pool, libyaml itself, refused calls, long names. The
// program's own libyaml calls and getrandom stand in front of the real ones, so that they can be made to fail.
#include "support/load_text.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>
#include <yaml.h>

using namespace std::string_literals;

namespace {

bool g_bInitFails = false, g_bParseFails = false, g_bRandomFails = false;

template <typename Call> Call *Real(const char *pcName)
{
    return reinterpret_cast<Call *>(dlsym(RTLD_NEXT, pcName));
}

} // namespace

extern "C" int yaml_parser_initialize(yaml_parser_t *pstParser)
{
    static auto *const s_pfnReal = Real<decltype(yaml_parser_initialize)>("yaml_parser_initialize");
    return g_bInitFails ? 0 : s_pfnReal(pstParser);
}

extern "C" int yaml_parser_parse(yaml_parser_t *pstParser, yaml_event_t *pstEvent)
{
    static auto *const s_pfnReal = Real<decltype(yaml_parser_parse)>("yaml_parser_parse");
    if (!g_bParseFails)
        return s_pfnReal(pstParser, pstEvent);
    memset(pstEvent, 0, sizeof(*pstEvent));
    pstParser->error = YAML_MEMORY_ERROR;
    return 0;
}

extern "C" ssize_t getrandom(void *pBuffer, size_t ulLength, unsigned uiFlags)
{
    return g_bRandomFails ? -1 : syscall(SYS_getrandom, pBuffer, ulLength, uiFlags);
}

namespace {

struct FileLoad : Recorded {};

std::string FileRead(const std::string &path)
{
    return LoadRead([&path] { return ZRYAML_FileLoad(path.c_str()); });
}

const YamlErrorInfo &Last()
{
    return *ZRYAML_LastErrorGet();
}

} // namespace

TEST_F(FileLoad, NamesThePathThatWasGiven)
{
    const TempFile stFile("a: 1");
    const std::string path = stFile.Path(), link = path + "-link";
    for (const std::string &wrong : {""s, path + "/below", "./" + path})
        EXPECT_EQ(FileRead(wrong), "2 16 Failed to get real path. (InputFile=" + wrong + ")\n");
    ASSERT_EQ(symlink(path.c_str(), link.c_str()), 0);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path("/tmp");
    for (const std::string &good : {link, "./" + link.substr(5), "../tmp//" + link.substr(5)})
        EXPECT_EQ(FileRead(good), R"({"a":"1"})") << good;
    std::filesystem::current_path(before);
    unlink(link.c_str());
    ASSERT_EQ(mknod(link.c_str(), S_IFSOCK | 0600, 0), 0); // a socket is there, but not even root can open it
    EXPECT_EQ(FileRead(link), "2 19000007 Failed to open the file. (File=" + link + ")\n");
    EXPECT_STREQ(Last().pcHint, "No such device or address");
    EXPECT_EQ(Last().pcFile, link);
    unlink(link.c_str());
}

// What is wrong in a file that cannot be read twice is told without the text.
TEST_F(FileLoad, ReadsAPipe)
{
    for (const char *pcText : {"a: [1]", "a: @x"}) {
        int aiPipe[2];
        ASSERT_EQ(pipe(aiPipe), 0);
        ASSERT_EQ(write(aiPipe[1], pcText, strlen(pcText)), static_cast<ssize_t>(strlen(pcText)));
        close(aiPipe[1]);
        YamlHandle *pstHandle = TextFileLoad("");
        FILE *pstFile = fdopen(aiPipe[0], "r");
        const bool bGood = pcText[3] == '[';
        EXPECT_EQ(yaml_FileParse(pstFile, pstHandle), bGood ? YAML_OK : YAML_ERR_PARSE);
        EXPECT_EQ(TreeText(*pstHandle).substr(0, 5), bGood ? R"({"a":)" : "{\"a\":");
        EXPECT_STREQ(Last().pcHint, "");
        EXPECT_EQ(Last().uiColumn, bGood ? 0U : 4U);
        fclose(pstFile);
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST_F(FileLoad, RefusedSecureCallsDoNotStopIt)
{
    Base().bSecureCallsFail = true;
    std::string refusals;
    for (int i = 0; i < 17; ++i) // handle and root, parser, event, 7 nodes, 4 texts, anchor, its name
        refusals += "1 16 Secure check fail.\n";
    EXPECT_EQ(DocumentRead("a: &x [1]\nb: *x"), R"({"a":["1"],"b":["1"]})" + refusals);
}

TEST_F(FileLoad, LibyamlWithoutMemory)
{
    for (bool *pbFails : {&g_bInitFails, &g_bParseFails}) {
        *pbFails = true;
        EXPECT_EQ(DocumentRead("a: 1"), pbFails == &g_bInitFails
                                            ? "2 19000008 Could not initialize the parser object.\n" PARSE_FAILED
                                            : "2 c There is not enough memory for parsing.\n" PARSE_FAILED);
        EXPECT_EQ(Last().uiLine, 0U);
        *pbFails = false;
    }
}

TEST_F(FileLoad, ErrorRecordCutsWhatIsTooLong)
{
    const std::string name(3000, 'n'), text = "? " + name + "\n: 1\n? " + name + "\n: 2\n";
    EXPECT_EQ(ZRYAML_TextLoad(text.data(), text.size(), name.c_str()), nullptr);
    EXPECT_EQ(strlen(Last().pcMessage), 1023U);
    EXPECT_STREQ(Last().pcMessage + 1020, "...");
    EXPECT_EQ(Last().pcFile, name.substr(0, 1020) + "...");
    for (const std::string &start : {"n"s, "nn"s}) { // a character is left out rather than cut in two
        std::string file = start;
        while (file.size() < 1200)
            file += "\xC3\xA9";
        EXPECT_EQ(ZRYAML_TextLoad("x", 1, file.c_str()), nullptr);
        EXPECT_EQ(Last().pcFile, file.substr(0, start.size() == 1 ? 1019 : 1020) + "...");
    }
    EXPECT_EQ(ZRYAML_TextLoad("x", 1, std::string(1200, '\x80').c_str()), nullptr); // no character begins
    EXPECT_STREQ(Last().pcFile, "...");
}

TEST_F(FileLoad, EachThreadHasItsErrorRecord)
{
    EXPECT_EQ(ZRYAML_FileLoad(nullptr), nullptr);
    std::thread([] { EXPECT_EQ(Last().uiCode, 0U); }).join();
    EXPECT_EQ(Last().uiCode, YAML_ERR_PARAM);
}

namespace {

#define CHECK_OR_RETURN(condition)                                                          \
    if (!(condition)) {                                                                     \
        fprintf(stderr, "line %d: %s\n%s", __LINE__, #condition, Base().LogText().c_str()); \
        return 1;                                                                           \
    }

// Runs in a process of its own, since the pool is made once. 0 when all is well.
int FirstLoads()
{
    ZRYAML_HandleFree(nullptr);
    CHECK_OR_RETURN(g_pstYamlMemHandle == nullptr && yaml_MemHandleGet() == nullptr);
    CHECK_OR_RETURN(ZRYAML_FileLoad(nullptr) == nullptr && Base().uiBaseInitCalls == 0);
    Base().uiBaseInitResult = 77;
    CHECK_OR_RETURN(DocumentRead("a: 1") == "2 4d Failed to initialize base module.\n");
    CHECK_OR_RETURN(g_pstYamlMemHandle == nullptr && Base().uiBaseInitCalls == 1 && Base().uiHandleInitCalls == 0);
    Base().Reset();
    Base().bHandleInitFails = true;
    CHECK_OR_RETURN(ZRYAML_TextLoad("a: 1", 4, "t") == nullptr && Last().pcFile == "t"s);
    CHECK_OR_RETURN(Base().LogText() == "2 19000006 Failed to initialize memory pool.\n");
    CHECK_OR_RETURN(g_pstYamlMemHandle == nullptr && Base().uiBaseInitCalls == 2 && Base().uiHandleInitCalls == 1);
    Base().Reset();
    g_bRandomFails = true;                      // the hash of the names of anchors does without
    for (const uint32_t uiResult : {0U, 77U}) { // the second load finds the pool
        Base().uiBaseInitResult = uiResult;
        CHECK_OR_RETURN(DocumentRead("a: &x 1\nb: *x") == R"({"a":"1","b":"1"})");
        CHECK_OR_RETURN(g_pstYamlMemHandle != nullptr && yaml_MemHandleGet() == g_pstYamlMemHandle);
        CHECK_OR_RETURN(Base().uiBaseInitCalls == 3 && Base().uiHandleInitCalls == 2);
    }
    return 0;
}

int FirstLoadsAtOnce()
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([] { ZRYAML_HandleFree(TextFileLoad("a: &x 1\nb: *x")); });
    for (std::thread &stThread : threads)
        stThread.join();
    CHECK_OR_RETURN(Base().uiBaseInitCalls == 1 && Base().uiHandleInitCalls == 1);
    CHECK_OR_RETURN(Base().LogText().empty() && Base().lBlocks == 0);
    return 0;
}

} // namespace

TEST(Pool, IsMadeOnceAndAFailureIsTriedAgain)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process that has not loaded anything
    EXPECT_EXIT(exit(FirstLoads()), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(exit(FirstLoadsAtOnce()), testing::ExitedWithCode(0), "");
}
