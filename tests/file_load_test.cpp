// SPDX-License-Identifier: Apache-2.0
// Loading where more than the document matters: the path, the pool, libyaml itself, refused calls, long names. The
// program's own libyaml calls and getrandom stand in front of the real ones, so that they can be made to fail.
#include "support/load_text.h"

#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <yaml.h>

using namespace std::string_literals;

namespace {

bool g_bInitFails = false, g_bParseFails = false, g_bRandomFails = false;
int g_iFile = -1, g_iFileFlags = 0;

struct FileLoad : Recorded {};

const YamlErrorInfo &Last()
{
    return *ZRYAML_LastErrorGet();
}

// The pool is made once, by the first load that can. The name of an anchor is hashed without random numbers.
void FirstLoads()
{
    // What the base library's start and pool give, what comes of it, and how often both have been called then.
    const std::tuple<uint32_t, bool, std::string, uint32_t, uint32_t> astLoad[] = {
        {77, false, "2 4d Failed to initialize base module.\n", 2, 0},
        {0, true, "2 19000006 Failed to initialize memory pool.\n", 3, 1},
        {0, false, R"({"a":"1","b":"1"})", 4, 2},
        {77, true, R"({"a":"1","b":"1"})", 4, 2}};
    g_bRandomFails = true;
    ZRYAML_HandleFree(nullptr);
    EXPECT_EQ(ZRYAML_FileLoad(nullptr), nullptr);
    Base().uiBaseInitResult = 77;
    EXPECT_TRUE(ZRYAML_TextLoad("a: 1", 4, "t") == nullptr && Last().pcFile == "t"s);
    for (const auto &[uiInitResult, bPoolFails, outcome, uiInitCalls, uiPoolCalls] : astLoad) {
        Base().Reset();
        Base().uiBaseInitResult = uiInitResult;
        Base().bHandleInitFails = bPoolFails;
        EXPECT_EQ(DocumentRead("a: &x 1\nb: *x"), outcome);
        EXPECT_TRUE(Base().uiBaseInitCalls == uiInitCalls && Base().uiHandleInitCalls == uiPoolCalls);
        EXPECT_EQ(g_pstYamlMemHandle != nullptr, outcome.starts_with('{'));
        EXPECT_EQ(yaml_MemHandleGet(), g_pstYamlMemHandle);
    }
}

} // namespace

extern "C" int yaml_parser_initialize(yaml_parser_t *pstParser)
{
    static const auto pfnReal =
        reinterpret_cast<decltype(&yaml_parser_initialize)>(dlsym(RTLD_NEXT, "yaml_parser_initialize"));
    return g_bInitFails ? 0 : pfnReal(pstParser);
}

extern "C" int yaml_parser_parse(yaml_parser_t *pstParser, yaml_event_t *pstEvent)
{
    static const auto pfnReal = reinterpret_cast<decltype(&yaml_parser_parse)>(dlsym(RTLD_NEXT, "yaml_parser_parse"));
    g_iFileFlags = fcntl(g_iFile, F_GETFD);
    if (!g_bParseFails)
        return pfnReal(pstParser, pstEvent);
    *pstEvent = {};
    pstParser->error = YAML_MEMORY_ERROR;
    return 0;
}

extern "C" ssize_t getrandom(void *pBuffer, size_t ulLength, unsigned uiFlags)
{
    return g_bRandomFails ? -1 : syscall(SYS_getrandom, pBuffer, ulLength, uiFlags);
}

TEST_F(FileLoad, NamesThePathThatWasGiven)
{
    const TempFile stFile("");
    const std::string path = "/tmp/.."s + stFile.Path() + "-socket";
    ASSERT_EQ(mknod(path.c_str(), S_IFSOCK | 0600, 0), 0); // is there, but not even root can open it
    EXPECT_EQ(LoadRead([&path] { return ZRYAML_FileLoad(path.c_str()); }),
              "2 19000007 Failed to open the file. (File=" + path + ")\n");
    EXPECT_STREQ(Last().pcMessage, "the file cannot be opened: No such device or address");
    EXPECT_EQ(Last().pcFile, path);
    unlink(path.c_str());
}

TEST_F(FileLoad, ShowsTheWayToAFileThatIsNotThere)
{
    const TempFile stFile("");
    const std::string folder = std::filesystem::current_path();
    const std::pair<std::string, std::string> astHint[] = {
        {"", "the path is empty"},
        {"no.yaml", "the path is taken from the folder '" + folder + "'"},
        {"/no.yaml", ""},
        {stFile.Path() + "/a"s, "what the path goes through is a file, not a folder"}};
    for (const auto &[path, hint] : astHint) {
        EXPECT_EQ(ZRYAML_FileLoad(path.c_str()), nullptr);
        EXPECT_STREQ(Last().pcMessage, "no such file");
        EXPECT_EQ(Last().pcHint, hint);
    }
    EXPECT_EQ(ZRYAML_FileLoad("/tmp"), nullptr);
    EXPECT_STREQ(Last().pcHint, "name a file in it");
}

// A pipe with a name is read as a file is, and what is wrong in it is told alike.
TEST_F(FileLoad, ReadsANamedPipe)
{
    const std::string blanks(40000, ' '), astText[] = {"a: 1\nb: [x, 'y']\n",
                                                       "a: @x",
                                                       "a: \xFF",
                                                       "a:\n\tb: 1",
                                                       "#" + blanks + "\nb: @x",
                                                       "a: " + std::string(40000, 'x') + "\xFF"};
    for (const std::string &text : astText) {
        const TempFile stFile(text);
        const auto Read = [](const std::string &path) {
            const std::string read = LoadRead([&path] { return ZRYAML_FileLoad(path.c_str()); });
            return std::tuple(read, Last().uiLine, Last().uiColumn, std::string(Last().pcHint));
        };
        const std::string pipe = stFile.Path() + "-pipe"s;
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        FILE *pstWriter = popen(("cat "s + stFile.Path() + " > "s + pipe).c_str(), "w");
        const auto fromPipe = Read(pipe);
        pclose(pstWriter);
        unlink(pipe.c_str());
        EXPECT_EQ(fromPipe, Read(stFile.Path()));
    }
}

TEST_F(FileLoad, LeavesNoFileToPrograms)
{
    const TempFile stFile("a: 1");
    g_iFile = dup(0); // the lowest that is free, which the load gets
    close(g_iFile);
    ZRYAML_HandleFree(ZRYAML_FileLoad(stFile.Path()));
    EXPECT_EQ(std::exchange(g_iFileFlags, 0), FD_CLOEXEC);
}

// What is wrong in a stream that cannot be read twice is told without the text.
TEST_F(FileLoad, ReadsAPipe)
{
    const std::tuple<const char *, uint32_t, const char *> astPipe[] = {
        {"printf 'a: @x'", 4, "put the text in quotes"}, {"printf 'a: \\377'", 0, "save the file as UTF-8"}};
    for (const auto &[pcCommand, uiColumn, pcHint] : astPipe) {
        FILE *pstFile = popen(pcCommand, "r");
        YamlHandle *pstHandle = TextLoad("");
        EXPECT_EQ(yaml_FileParse(pstFile, pstHandle), YAML_ERR_PARSE);
        EXPECT_EQ(Last().uiColumn, uiColumn);
        EXPECT_STREQ(Last().pcHint, pcHint);
        pclose(pstFile);
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
    g_bInitFails = true;
    EXPECT_EQ(DocumentRead("a: 1"), "2 19000008 Could not initialize the parser object.\n" PARSE_FAILED);
    g_bInitFails = false;
    g_bParseFails = true;
    EXPECT_EQ(DocumentRead("a: 1"), "2 c There is not enough memory for parsing.\n" PARSE_FAILED);
    EXPECT_EQ(Last().uiLine, 0U);
    g_bParseFails = false;
}

TEST_F(FileLoad, ErrorRecordCutsWhatIsTooLong)
{
    std::string twoBytes;
    while (twoBytes.size() < 1200)
        twoBytes += "\xC3\xA9";
    const std::pair<std::string, std::string> astName[] = {
        {std::string(1023, 'n'), std::string(1023, 'n')},
        {std::string(1024, 'n'), std::string(1020, 'n') + "..."},
        {"n" + twoBytes, "n" + twoBytes.substr(0, 1018) + "..."}, // a character is left out rather than cut in two
        {"nn" + twoBytes, "nn" + twoBytes.substr(0, 1018) + "..."},
        {std::string(1200, '\x80'), "..."}}; // no character begins
    for (const auto &[name, kept] : astName) {
        EXPECT_EQ(ZRYAML_TextLoad("x", 1, name.c_str()), nullptr);
        EXPECT_EQ(Last().pcFile, kept);
    }
    const std::string name(1000, 'n'), text = "? " + name + "\n: 1\n? " + name + "\n: 2\n";
    EXPECT_EQ(TextLoad(text), nullptr);
    EXPECT_EQ(Last().pcRecord, ("There is a same scalar in this list. (Scalar=" + name).substr(0, 1020) + "...");
}

TEST(Pool, IsMadeOnceAndAFailureIsTriedAgain)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process that has not loaded anything
    EXPECT_EXIT((FirstLoads(), exit(testing::Test::HasFailure())), testing::ExitedWithCode(0), "");
}
