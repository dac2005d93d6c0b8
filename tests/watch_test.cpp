// SPDX-License-Identifier: Apache-2.0
// A watch while its files are edited, replaced, moved, removed and linked anew; and where a call or memory is refused.
#include "support/bound_record.h"
#include "support/layer_stack.h"
#include "support/load_text.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <thread>
#include <zr_yaml_watch.h>

namespace {

using std::chrono::milliseconds, std::chrono::steady_clock;

uint64_t g_calls, g_refused; // of the system: made so far, and the one to refuse, counted from 1
bool g_deaf;                 // the kernel tells of no changes

template <auto Member> struct Refusal;
template <typename R, typename... A, R (*YamlWatchCalls::*Member)(A...)> struct Refusal<Member> {
    static R Call(A... arguments)
    {
        const bool refused = ++g_calls == g_refused;
        constexpr bool Tells = std::is_same_v<decltype(Member), int (*YamlWatchCalls::*)(int, const char *, uint32_t)>;
        if (refused || (g_deaf && Tells)) {
            if constexpr (std::is_same_v<decltype(Member), decltype(&YamlWatchCalls::pfnClose)>)
                (void)(Own->*Member)(arguments...);
            return errno = g_deaf ? ENOSPC : EIO, R{-1};
        }
        return (Own->*Member)(arguments...);
    }
    static inline const YamlWatchCalls *Own = yaml_WatchCallsSet(nullptr);
};
using C = YamlWatchCalls;
constexpr YamlWatchCalls Refusing = {
    Refusal<&C::pfnOpen>::Call,     Refusal<&C::pfnClose>::Call,       Refusal<&C::pfnRead>::Call,
    Refusal<&C::pfnFstat>::Call,    Refusal<&C::pfnStatx>::Call,       Refusal<&C::pfnStatfs>::Call,
    Refusal<&C::pfnReadlink>::Call, Refusal<&C::pfnFolderRead>::Call,  Refusal<&C::pfnWatchMake>::Call,
    Refusal<&C::pfnWatchAdd>::Call, Refusal<&C::pfnWatchRemove>::Call, Refusal<&C::pfnTimerMake>::Call,
    Refusal<&C::pfnTimerSet>::Call, Refusal<&C::pfnPollMake>::Call,    Refusal<&C::pfnPollAdd>::Call,
};

size_t Descriptors()
{
    const std::filesystem::directory_iterator open("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(open), end(open)));
}

// A folder with the files of all kinds of layers, and a watch of them.
struct Watch : Recorded {
    void SetUp() override
    {
        Recorded::SetUp();
        EXPECT_NE(mkdtemp(folder.data()), nullptr);
        descriptors = Descriptors();
        (void)yaml_WatchCallsSet(&Refusing);
        Run("mkdir sub v1; echo 'a: 1' > sub/conf.yaml; ln -s sub/../sub/conf.yaml conf.yaml; echo 'c: 1' > "
            "v1/app.yaml; ln -s v1 ..data; ln -s ..data/app.yaml app.yaml");
    }
    void TearDown() override
    {
        ZRYAML_WatchClose(watch);
        (void)yaml_WatchCallsSet(nullptr);
        std::filesystem::remove_all(folder);
        EXPECT_EQ(Descriptors(), descriptors);
        EXPECT_EQ(Base().lBlocks, 0);
        Recorded::TearDown();
    }
    void Run(const std::string &script) const
    {
        ASSERT_EQ(system(("cd " + folder + " && { " + script + "; }").c_str()), 0) << script;
    }
    void Open(uint32_t uiInterval, YamlWatchCheck pfnCheck = nullptr)
    {
        const std::string paths[] = {folder + "/conf.yaml", folder + "/app.yaml", folder + "/opt.yaml",
                                     folder + "/conf.d"};
        const YamlLayer layers[] = {{YAML_LAYER_FILE, 0, paths[0].c_str(), nullptr, 0, nullptr},
                                    {YAML_LAYER_FILE, 0, paths[1].c_str(), nullptr, 0, nullptr},
                                    {YAML_LAYER_FILE_OPTIONAL, 0, paths[2].c_str(), nullptr, 0, nullptr},
                                    {YAML_LAYER_FOLDER_OPTIONAL, 0, paths[3].c_str(), nullptr, 0, nullptr}};
        YamlWatchOptions stOptions = YAML_WATCH_OPTIONS_INIT;
        stOptions.uiInterval = uiInterval;
        stOptions.pfnCheck = pfnCheck;
        YamlProblems *pstProblems = nullptr;
        watch = ZRYAML_WatchOpen(layers, 4, &stOptions, &pstProblems);
        ASSERT_EQ(ProblemsText(pstProblems), "");
        ASSERT_NE(watch, nullptr);
    }
    // What the next poll with a result says, or nothing if none comes in time.
    std::string Next(milliseconds time) const
    {
        const auto end = steady_clock::now() + time;
        struct pollfd stPoll = {ZRYAML_WatchFdGet(watch), POLLIN, 0};
        for (milliseconds left = time; left.count() > 0;) {
            (void)poll(&stPoll, 1, static_cast<int>(left.count()));
            YamlProblems *pstProblems = nullptr;
            const uint32_t uiCode = ZRYAML_WatchPoll(watch, &pstProblems);
            std::string text = ProblemsText(pstProblems);
            ZRYAML_ProblemsFree(pstProblems);
            if (uiCode == YAML_WATCH_CHANGED)
                return text + Changes();
            if (uiCode != YAML_OK)
                return text.substr(std::min(text.size(), text.find(folder) == 1 ? folder.size() + 2 : 0));
            left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
        }
        return "";
    }
    std::string Changes() const
    {
        YamlChange stChange = YAML_CHANGE_INIT;
        std::string text;
        while (ZRYAML_WatchChangeNext(watch, &stChange) == YAML_OK) {
            const YamlListNode *pstValue = stChange.pstNew != nullptr ? stChange.pstNew : stChange.pstOld;
            char acPath[100];
            (void)ZRYAML_ValuePathGet(pstValue, sizeof(acPath), acPath);
            text = text + " +-~"[stChange.uiKind] + acPath + '=' + ZRYAML_ValueTextGet(pstValue);
        }
        return text.empty() ? "same" : text;
    }
    std::string Newest(const char *pcPath = "a") const
    {
        YamlHandle *pstHandle = ZRYAML_WatchAcquire(watch);
        const char *pcText = ZRYAML_PropertyGet(pstHandle, "%s", pcPath);
        const std::string text = pcText != nullptr ? pcText : "";
        ZRYAML_HandleRelease(pstHandle);
        return text;
    }

    std::string folder = "/tmp/zryaml_watch_XXXXXX";
    size_t descriptors = 0;
    YamlWatch *watch = nullptr;
};

struct ChangeCase {
    int iLine;
    const char *pcScript, *pcExpected; // "": nothing new
    bool bOften = true;                // also where contents are compared by the timer
};

constexpr char NoFile[] = "conf.yaml: no such file";

const ChangeCase g_changes[] = {
    {__LINE__, "printf 'a: 2' > sub/conf.yaml", "~a=2"},
    {__LINE__, "printf 'a: 2' > sub/conf.yaml; touch conf.yaml", ""},
    {__LINE__, "printf 'a: 3' > sub/.new; mv sub/.new sub/conf.yaml", "~a=3"},
    {__LINE__, "ln sub/conf.yaml hard; printf 'a: 4' > hard", "~a=4"},
    {__LINE__, "exec 3> sub/conf.yaml; printf a >&3; sleep 0.1; printf ': 5' >&3", "~a=5", false},
    {__LINE__, ": > sub/conf.yaml; sleep 0.1; printf 'a: 6' > sub/conf.yaml", "~a=6"},
    {__LINE__, "mkdir v2; echo 'c: 2' > v2/app.yaml; ln -s v2 ..new; mv -T ..new ..data; rm -r v1", "~c=2"},
    {__LINE__, "rm conf.yaml", NoFile},
    {__LINE__, "touch other", ""},
    {__LINE__, "printf 'a: 7' > conf.yaml", "~a=7"},
    {__LINE__, "rm conf.yaml; ln -s $PWD/sub/../sub/conf.yaml conf.yaml", "~a=6"},
    {__LINE__, "echo 'o: 1' > opt.yaml", "+o=1"},
    {__LINE__, "rm opt.yaml", "-o=1"},
    {__LINE__, "mkfifo opt.yaml", "opt.yaml: a pipe or socket cannot be watched"},
    {__LINE__, "rm opt.yaml; ln -s opt.yaml opt.yaml", "opt.yaml: "},
    {__LINE__, "rm -rf opt.yaml; mkdir -p conf.d; ln -s ../conf.d.a conf.d/a.yaml; echo 'd: 1' > conf.d.a", "+d=1"},
    {__LINE__, "echo 'd: 2' > conf.d.a", "~d=2"},
    {__LINE__, "echo 'd: 3' > conf.d/b.yml", "~d=3"},
    {__LINE__, "mv conf.d conf.e", "-d=3"},
    {__LINE__, "mv conf.e conf.d", "+d=3"},
    {__LINE__, "mv sub moved", NoFile},
    {__LINE__, "mv moved sub; sleep 0.1", ""},
    {__LINE__, "mv sub moved; printf 'a: 8' > moved/conf.yaml; mv moved sub", "~a=8"},
    {__LINE__, "printf 'a: [' > sub/conf.yaml", "conf.yaml:1:4: "},
    {__LINE__, "printf 'a: [' > sub/conf.yaml", ""},
    {__LINE__, "printf '# new' > sub/conf.yaml; rm -r conf.d", "-a=8-d=3"},
    {__LINE__, "printf 'a: 9' > sub/conf.yaml", "+a=9"},
    {__LINE__, ": > sub/conf.yaml", "-a=9"},
};

TEST_F(Watch, NoticesEveryKindOfChange)
{
    for (const bool deaf : {false, true}) {
        g_deaf = deaf;
        Open(deaf ? 20 : 100000);
        for (const ChangeCase &stCase : g_changes) {
            if (deaf && !stCase.bOften)
                continue;
            Run(stCase.pcScript);
            const std::string expected = stCase.pcExpected;
            const std::string seen = Next(milliseconds(expected.empty() ? 60 : 3000));
            EXPECT_EQ(expected.ends_with(": ") ? seen.substr(0, expected.size()) : seen, expected)
                << "line " << stCase.iLine << (deaf ? ", by the timer" : "");
        }
        ZRYAML_WatchClose(watch);
        watch = nullptr;
        Run("rm -rf * ..data");
        g_deaf = false;
        if (!deaf)
            Run("mkdir sub v1; echo 'a: 1' > sub/conf.yaml; ln -s sub/conf.yaml conf.yaml; echo 'c: 1' > "
                "v1/app.yaml; ln -s v1 ..data; ln -s ..data/app.yaml app.yaml");
    }
}

// One thing of a poll is refused, then the next, until nothing is left to refuse. The new version comes all the same.
TEST_F(Watch, GoesOnWhateverIsRefused)
{
    Open(5);
    for (uint64_t *refusal : {&g_refused, &Base().ulFailAllocation}) {
        uint64_t number = 0, used = 0;
        do {
            const std::string before = Newest(), after = std::to_string(number) + (refusal == &g_refused ? "c" : "m");
            Run("ln -sfn v1 ..data; mkdir -p conf.d; echo 'd: 1' > conf.d/a.yaml; echo 'a: " + after +
                "' > .new; mv -f .new sub/conf.yaml");
            Base().Reset();
            g_calls = 0;
            *refusal = ++number;
            const std::string first = Next(milliseconds(500));
            used = refusal == &g_refused ? g_calls : Base().ulAllocations;
            EXPECT_EQ(Newest(), first.find("~a=") != first.npos ? after : before) << number << first;
            *refusal = 0;
            for (int rounds = 0; rounds < 20 && Newest() != after; ++rounds)
                (void)Next(milliseconds(500));
            EXPECT_EQ(Newest(), after) << number << first;
        } while (used >= number);
        EXPECT_GT(number, 20U);
    }
}

uint32_t CheckRun(YamlHandle *pstHandle, void *, YamlProblems *pstProblems)
{
    ZRYAML_HandleFree(pstHandle); // refused
    const std::string text = ZRYAML_PropertyGet(pstHandle, "a");
    if (text == "odd")
        (void)ZRYAML_ProblemAdd(pstProblems, YAML_PROBLEM_ERROR, ZRYAML_PathFind(pstHandle, "a"), "must be even");
    if (text == "even")
        (void)ZRYAML_ProblemAdd(pstProblems, YAML_PROBLEM_NOTE, nullptr, "good");
    if (text == "bound")
        return ZRYAML_RecordCheck(pstHandle, &BoundRecord, pstProblems);
    return text == "none" ? YAML_ERR_RANGE : text == "one" ? YAML_WATCH_CHANGED : YAML_OK;
}

TEST_F(Watch, AsksTheProgramAndRefusesWrongReleases)
{
    Open(100000, CheckRun);
    const std::pair<const char *, const char *> versions[] = {
        {"odd", "conf.yaml:1:4: a: must be even"},
        {"none", "conf.yaml: the program's check refuses the document"},
        {"bound", "conf.yaml:1:1: unknown key 'a'"},
        {"one", "conf.yaml: the program's check refuses the document"},
        {"even", "\n-: good~a=even"},
    };
    YamlHandle *pstHeld = ZRYAML_WatchAcquire(watch);
    for (const auto &[pcText, pcSeen] : versions) {
        Run(std::string("echo 'a: ") + pcText + "' > sub/conf.yaml");
        EXPECT_EQ(Next(milliseconds(3000)).substr(0, strlen(pcSeen)), pcSeen);
    }
    EXPECT_EQ(Newest(), "even");
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHeld, "a"), "1");
    YamlHandle *pstNewest = ZRYAML_WatchAcquire(watch), *pstAlone = TextLoad("{a: 1}");
    ZRYAML_WatchClose(watch);
    watch = nullptr;
    Base().Reset();
    ZRYAML_HandleFree(pstHeld);
    ZRYAML_HandleRelease(pstAlone);
    EXPECT_EQ(Base().log.size(), 2U) << Base().LogText();
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHeld, "a"), "1");
    ZRYAML_HandleRelease(pstHeld);
    ZRYAML_HandleRelease(pstNewest);
    ZRYAML_HandleRelease(nullptr);
    ZRYAML_HandleFree(pstAlone);
    EXPECT_EQ(Base().log.size(), 2U);
}

TEST_F(Watch, RefusesWrongArguments)
{
    const YamlLayer layer = {YAML_LAYER_TEXT, 0, "x", "a: 1", 4, nullptr}, wrong = {9, 0, "x", nullptr, 0, nullptr};
    YamlWatchOptions slow = YAML_WATCH_OPTIONS_INIT, flagged = slow, small = slow;
    slow.uiSettle = 501;
    flagged.uiFlags = 2;
    small.uiSize = 4;
    for (const YamlWatchOptions *options : {&slow, &flagged, &small})
        EXPECT_EQ(ZRYAML_WatchOpen(&layer, 1, options, nullptr), nullptr);
    EXPECT_EQ(ZRYAML_WatchOpen(&wrong, 1, nullptr, nullptr), nullptr);
    EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_WatchPoll(nullptr, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_WatchChangeNext(nullptr, nullptr), YAML_ERR_PARAM);
    EXPECT_TRUE(ZRYAML_WatchFdGet(nullptr) == -1 && ZRYAML_WatchAcquire(nullptr) == nullptr);
    ZRYAML_WatchClose(nullptr);
}

} // namespace
